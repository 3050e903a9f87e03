#include "zelclr/palettes/formats/palette_reading.h"

#include "zelclr/palettes/formats/colour_list.h"
#include "zelclr/palettes/formats/gpl_palette.h"
#include "zelclr/platform/text.h"

namespace ZelClr {

std::optional<ReadPalette> ReadPaletteText(std::string_view bytes, ReadProblem &problem)
{
  if (!ZelUtl::IsValidUtf8(bytes) || bytes.find('\0') != std::string_view::npos) {
    problem = {0, "not a text file in UTF-8"};
    return std::nullopt;
  }
  auto palette = IsGplPalette(bytes) ? ReadGplPalette(bytes, problem) : ReadColourList(bytes, problem);
  if (palette && palette->colours.empty()) {
    problem = {0, "no colours"};
    return std::nullopt;
  }
  return palette;
}

} // namespace ZelClr
