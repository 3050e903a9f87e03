// Any bytes as a palette file: refused with a line and a reason, or colours that all can be written down again.

#include "zelclr/colour/colour_text.h"
#include "zelclr/palettes/formats/palette_reading.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  ZelClr::ReadProblem problem;
  const auto palette = ZelClr::ReadPaletteText({reinterpret_cast<const char *>(data), size}, problem);
  if (!palette && problem.reason.empty())
    std::abort();
  if (palette && palette->colours.empty())
    std::abort();
  for (const ZelClr::NamedColour &entry : palette ? palette->colours : std::vector<ZelClr::NamedColour>()) {
    const auto again = ZelClr::ColorSpecFromText(ZelClr::TextFromColorSpec(entry.colour));
    if (!again || *again != entry.colour || entry.line == 0)
      std::abort();
  }
  return 0;
}
