// The forms that a report is written in, which all say the same.
#pragma once

#include "cli/output.h"
#include "cli/report/analysis.h"

#include <string>

namespace cli {

/// A table for the terminal; the summary comes first.
std::string TableOf(const Report &report, const Output &output);

/// One self-contained HTML page: no script, nothing loaded, swatches as inline SVG.
std::string PageOf(const Report &report);

/// 2: builds through profiles; version 1 had them by formula.
inline constexpr int kReportSchemaVersion = 2;
/// What JSON says of the report.
Json JsonOf(const Report &report);

/// "4 of 32 colours will not print as they are"; "All 32 colours print"
std::string HeadlineOf(const Report &report);
/// "32 colours: 28 in gamut, 4 out of gamut, 1 with too much ink"
std::string SummaryOf(const Report &report);
/// "0.023"
std::string DistanceText(const Print &print);
/// "330 %, the most that the profile builds"
std::string InkLimitWords(const Press &press);
/// "the paper counts as white"
std::string WhiteWords(const Press &press);
/// "as the profile builds it; gray is black ink alone"
std::string BlackWords(const Press &press);
/// "triad, the colours are 5.2° off on average; 3 are nearly neutral and do not count"
std::string HarmonyWords(const Report &report);
/// "sRGB (RGB), ISO Coated (FOGRA39) (CMYK)"
std::string ReadByWords(const Report &report);

} // namespace cli
