// A palette as a sheet of swatches: what every form of it says.
//
// Threads: values. Errors: throws Failure, in one line.
#pragma once

#include "cli/palette_input.h"

#include <string>
#include <vector>

namespace cli {

struct SheetColour
{
  ZelClr::Swatch swatch;
  CLR_COLORSPEC screen; ///< RGB255; invalid for an ink whose looks nobody knows
  bool inGamut = true;  ///< true without a press, too
};

/// Colours that belong together; without a name those that belong to no group.
struct SheetGroup
{
  std::string name;
  std::vector<SheetColour> colours;
};

struct Sheet
{
  std::string name;
  std::string description;
  std::string path;
  std::string_view format;
  std::string_view title; ///< of the format
  std::string identifier; ///< of a palette of our own; else empty
  bool locked = false;
  std::size_t columns = 0; ///< 0 when the palette does not say
  std::string press;       ///< empty for none
  std::vector<SheetGroup> groups;
  std::vector<std::string> notes; ///< of the reader

  std::size_t CountColours() const;
  std::size_t CountSpots() const;
  std::size_t CountBeyond() const;
  bool HasTints() const;
};

/// `profile` names the press as OpenProfile takes it; empty for none. A tint is judged as it looks.
Sheet SheetOf(const LoadedPalette &palette, const std::string &profile);

/// "32 colours, 4 of them spot"
std::string SummaryOf(const Sheet &sheet);
/// "2 are beyond the gamut of ISO Coated"; empty without a press.
std::string GamutInWords(const Sheet &sheet);

// --- Its forms -------------------------------------------------------------------------------------------------------

std::string TableOf(const Sheet &sheet, const Output &output);
Json JsonOf(const Sheet &sheet);
/// A picture, in millimetres, as wide as A4.
std::string SvgOf(const Sheet &sheet);
/// One self-contained HTML page: no script, nothing loaded, swatches as inline SVG.
std::string PageOf(const Sheet &sheet);

/// The drawing of a swatch within a picture, in units of which it is 100 wide and `height` high: the colour, a mark for
/// an ink of its own, and the corner cut off of what the press cannot print.
std::string SwatchSvg(const SheetColour &colour, double height);

/// A mark of SwatchSvg and what it means.
struct SheetMark
{
  std::string words;
  std::string drawing; ///< of a whole swatch, of which `viewBox` shows the part with the mark
  const char *viewBox; ///< 30 wide, 20 high
};
/// Those that the sheet has.
std::vector<SheetMark> MarksOf(const Sheet &sheet);

} // namespace cli
