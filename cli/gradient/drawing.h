// Strips of gradients as pictures: the colours as they are on screen, ticks at the stops below, and a dark bar wherever
// the press cannot print them.
//
// Threads: plain functions. Errors: WriteStripsAsPng throws ImageError.
#pragma once

#include "cli/gradient/strips.h"

#include <string>
#include <vector>

namespace cli {

/// An SVG document; `press` names the press, empty for none.
std::string SvgOfStrips(const std::vector<Strip> &strips, const std::string &press);

/// An sRGB image of kDrawn pixels across. The old file stays until the new one is whole.
void WriteStripsAsPng(const std::vector<Strip> &strips, const std::string &path);

} // namespace cli
