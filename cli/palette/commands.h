// What the commands on palettes do.
//
// Errors: throws Failure, in one line; a file that could not be written whole is as it was.
#pragma once

#include "cli/failure.h"
#include "cli/output.h"

#include <string>
#include <vector>

namespace cli {

/// The palettes that are installed, and the user's own.
void ListPalettes(const Output &output);

struct ShowArguments
{
  std::string palette;
  std::string picture; ///< .svg or .html; empty for none
  std::string profile; ///< of the press that must print the colours; empty for none
};
/// A sheet of swatches. Findings where a press was named and something is beyond its gamut.
ExitCode ShowPalette(const ShowArguments &arguments, const Output &output);

/// Where a palette is written to.
struct Destination
{
  std::string path;   ///< "-" prints it
  std::string format; ///< a key; empty: by the path
  std::string name;   ///< what the palette is called from then on; empty: as it was
};
/// `context`: a settings preset or a profile that the colours are converted to (ContextFrom); empty for none.
void ConvertPalette(const std::string &palette, const std::string &context, const Destination &destination,
                    const Output &output);

struct SortArguments
{
  std::string palette;
  std::string by;
  bool reverse = false;
  bool acrossGroups = false;
};
void SortPalette(const SortArguments &arguments, const Destination &destination, const Output &output);
/// By what palettes are sorted.
std::vector<std::string> SortKeys();

void MergePalettes(const std::vector<std::string> &palettes, const Destination &destination, const Output &output);

/// Findings where a file is no sound palette, Unreadable where one cannot be read at all.
ExitCode ValidatePalettes(const std::vector<std::string> &files, const Output &output);

/// Findings where the colours differ. `tolerance`: what a colour may change by in CIEDE2000 and count as the same.
ExitCode ComparePalettes(const std::string &a, const std::string &b, double tolerance, const Output &output);

/// The nearest colours of some palettes, of all that are installed where none is given.
void FindColour(const std::string &colour, const std::vector<std::string> &palettes, std::size_t count,
                const Output &output);

} // namespace cli
