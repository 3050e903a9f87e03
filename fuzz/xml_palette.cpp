// Any bytes as an XML palette: refused with a reason and empty, or a palette that is the same once written and read
// again, and whose look-ups find what a scan finds.

#include "zelclr/palettes/xml_color_palette.h"
#include "zelclr/platform/text.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

/// The values of a few colours; they are looked up by scanning, and a large palette has many.
void LookUp(const WXmlColorPalette &palette)
{
  const std::size_t count = palette.GetColorCount();
  for (std::size_t i = 0; i < count; i += 1 + count / 16) {
    std::size_t name = 0, value = 0, both = 0;
    const auto isNamed = [&](std::size_t j) { return palette.GetColor(j).name == palette.GetColor(i).name; };
    const auto isEqual = [&](std::size_t j) { return palette.GetColorSpec(j) == palette.GetColorSpec(i); };
    while (!isNamed(name))
      ++name;
    while (!isEqual(value))
      ++value;
    while (!isNamed(both) || !isEqual(both))
      ++both;
    const std::string &text = palette.GetColor(i).name;
    Demand(palette.FindName(text) == static_cast<int>(name));
    Demand(palette.FindColor(palette.GetColorSpec(i)) == static_cast<int>(value));
    Demand(palette.FindColor(palette.GetColorSpec(i), text) == static_cast<int>(both));
    bool isListed = false;
    for (const int index : palette.FindColorID(palette.GetHeader().guid, palette.GetColorID(i)))
      isListed = isListed || index == static_cast<int>(i);
    Demand(isListed);
    Demand(palette.GetPage(i) < palette.GetPageCount() && palette.GetIndexOnPage(i) >= 0);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  std::string reason;
  WXmlColorPalette palette;
  const bool isRead = palette.LoadFromBytes({reinterpret_cast<const char *>(data), size}, reason);
  Demand(isRead == reason.empty() && ZelUtl::IsValidUtf8(reason));
  if (!isRead) {
    Demand(palette.GetColorCount() == 0 && palette.GetColorSpaceCount() == 0 && palette.GetResources().empty() &&
           palette.GetHeader() == WXmlColorPalette::Header{} && palette.GetPageCount() == 1);
    return 0;
  }
  LookUp(palette);

  const std::string written = palette.Bytes(true);
  WXmlColorPalette again;
  Demand(again.LoadFromBytes(written, reason) && again.Bytes(true) == written);
  Demand(again.GetColorCount() == palette.GetColorCount() && again.GetHeader() == palette.GetHeader());
  for (std::size_t i = 0; i < palette.GetColorCount(); ++i)
    Demand(again.GetColorSpec(i) == palette.GetColorSpec(i));

  for (std::size_t i = 0; i < size && i < 64 && palette.GetColorCount() > 0; ++i) {
    const std::size_t at = data[i] % palette.GetColorCount();
    if (i % 4 == 0)
      palette.InsertColor(at, palette.GetColor(at));
    else if (i % 4 == 1)
      palette.MoveColor(at, palette.GetColorCount() - 1 - at);
    else if (i % 4 == 2)
      palette.RemoveColor(at);
    else
      palette.AddPage();
  }
  LookUp(palette);
  return 0;
}
