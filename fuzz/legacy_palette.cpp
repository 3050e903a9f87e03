// Any bytes as an older palette: refused with a reason, or colours that become an XML palette which keeps them all. The
// first byte is the palette type that the file's name stands for.

#include "zelclr/palettes/legacy_palette_file.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  if (size == 0)
    return 0;
  std::string reason;
  const std::string_view bytes(reinterpret_cast<const char *>(data) + 1, size - 1);
  const auto file = ZelClr::ReadLegacyPalette(bytes, data[0], reason);
  Demand(file || !reason.empty());
  if (!file)
    return 0;
  const WXmlColorPalette palette = ZelClr::XmlPaletteFromLegacy(*file, "palette");
  Demand(palette.GetColorCount() == file->colors.size());
  for (std::size_t i = 0; i < palette.GetColorCount(); ++i) {
    Demand(palette.GetColorID(i) == file->colors[i].number);
    Demand(!palette.GetColorSpec(i).IsInvalid());
  }
  WXmlColorPalette again;
  Demand(again.LoadFromBytes(palette.Bytes(false), reason));
  Demand(again.GetColorCount() == palette.GetColorCount());
  for (std::size_t i = 0; i < again.GetColorCount(); ++i)
    Demand(again.GetColorSpec(i) == palette.GetColorSpec(i) && again.GetColorID(i) == palette.GetColorID(i));
  return 0;
}
