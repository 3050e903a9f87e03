// Any bytes as a style sheet in JSON: refused, with what was read before the fault kept whole, or a sheet that is the
// same once written and read again.

#include "zelclr/harmony/color_style_sheet.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

/// Every style is found, and each is in one harmony at most, and once.
void LookAt(ZelClr::ColorStyleSheet &sheet)
{
  for (const std::wstring &name : sheet.GetColorStyleNames()) {
    const CLR_COLORSPEC *const style = sheet.FindColorStyle(name);
    Demand(style != nullptr && style->IsReference() && sheet.NameOfColorStyle(*style) == name);
  }
  for (std::size_t i = 0; i < sheet.GetHarmonyCount(); ++i) {
    const ZelClr::Harmony &harmony = *sheet.GetHarmony(i);
    for (std::size_t place = 0; place < harmony.GetColorCount(); place += 1 + harmony.GetColorCount() / 16) {
      Demand(sheet.FindHarmonyOf(harmony.GetColor(place)) == static_cast<int>(i));
      Demand(harmony.FindColor(harmony.GetColor(place)) == static_cast<int>(place));
    }
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  WClrPalette palette, other;
  ZelClr::ColorStyleSheet sheet(&palette), copy(&other);
  std::string reason;
  const bool isRead = sheet.ImportJsonText({reinterpret_cast<const char *>(data), size}, reason);
  Demand(isRead == reason.empty());
  LookAt(sheet);
  const std::string text = sheet.ExportJsonText();
  Demand(copy.ImportJsonText(text, reason));
  // An external style whose identifier alone is missing is not written.
  Demand(copy.ExportJsonText() == text || sheet.GetExternalColorStyles() != copy.GetExternalColorStyles());
  LookAt(copy);

  for (std::size_t i = 0; isRead && i < sheet.GetHarmonyCount() && i < 4; ++i) {
    const auto names = sheet.GetHarmony(i)->GetColors();
    if (!names.empty() && names.size() < 100)
      sheet.ChangeColorStyle(names.front(), CLR_COLORSPEC::MakeRGB(data[0], data[size / 2], data[size - 1]));
  }
  LookAt(sheet);
  return 0;
}
