#include "zelclr/palettes/color_styles.h"

#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/text.h"

namespace ZelClr {

ColorStyleAnswer FindColorStyle(const ZelUtils::Guid &palette, std::string_view styleName, CLR_COLORSPEC &color)
{
  if (!WClrPaletteMgr::HasInstance())
    return ColorStyleAnswer::NoStyles;
  const WClrPaletteMgr &manager = WClrPaletteMgr::GetInstance();
  ZelUtl::Document *const owner = manager.FindDocumentFromPaletteID(manager.FindPalette(palette));
  const IColorStyles *const styles = owner == nullptr ? nullptr : ZelUtl::GetColorStyles(*owner);
  if (styles == nullptr)
    return ColorStyleAnswer::NoStyles;
  const CLR_COLORSPEC *const style = styles->FindColorStyle(ZelUtl::WideFromUtf8(styleName));
  if (style == nullptr)
    return ColorStyleAnswer::NoSuchStyle;
  color = *style;
  return ColorStyleAnswer::Found;
}

std::string NameOfColorStyle(const CLR_COLORSPEC &color)
{
  if (!color.IsReference() || !WClrPaletteMgr::HasInstance())
    return {};
  for (ZelUtl::Document *const document : WClrPaletteMgr::GetInstance().Documents()) {
    const IColorStyles *const styles = ZelUtl::GetColorStyles(*document);
    std::wstring name = styles == nullptr ? std::wstring() : styles->NameOfColorStyle(color);
    if (!name.empty())
      return ZelUtl::Utf8FromWide(name);
  }
  return {};
}

} // namespace ZelClr
