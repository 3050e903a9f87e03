// The forms that a report is written in.
#pragma once

#include "cli/output.h"
#include "cli/report/analysis.h"

#include <string>

namespace cli {

/// A table for the terminal; the last line is the summary.
std::string TableOf(const Report &report, const Output &output);

/// One self-contained HTML page: no script, nothing loaded, swatches as inline SVG.
std::string PageOf(const Report &report);

/// What JSON says of the report.
Json JsonOf(const Report &report);

/// "12 colours: 8 can be printed, 3 at the edge, 1 beyond the press".
std::string SummaryOf(const Report &report);

} // namespace cli
