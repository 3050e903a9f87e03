#include "zelclr/convert/visitors/traverse_color.h"

#include "zelclr/palettes/w_clr_palette_mgr.h"

using ZelClr::HResult;

void CTraverseColorBase::CombineHRESULT(HResult &accumulated, HResult result)
{
  if (accumulated >= 0)
    accumulated = result < 0 ? result : accumulated != 0 && result != 0 ? ZelClr::kSFalse : ZelClr::kSOk;
}

HResult CTraverseColorSpec::CB_ProcessColorspec(CLR_COLORSPEC &color, const ColorSystem::ColorContext &, void *visitor)
{
  return visitor == nullptr ? 0 : static_cast<CTraverseColorSpec *>(visitor)->ProcessColorspec(color);
}

HResult CTraversePaletteColors::ProcessPalette(WClrPalette *palette)
{
  if (!WClrPaletteMgr::HasInstance())
    return ZelClr::kSFalse;
  WClrPaletteMgr &manager = WClrPaletteMgr::GetInstance();
  HResult walked = ZelClr::kSFalse;
  for (int i = 0; i < manager.GetPaletteSize(palette) && walked >= 0; ++i) {
    WClrPaletteMgr::PaletteEntry entry;
    if (!manager.GetPaletteColor(palette, i, entry.color))
      return ZelClr::kEFail;
    entry.name = manager.GetColorName(palette, i);
    const HResult result = ProcessColorspec(entry.color);
    CombineHRESULT(walked, result);
    if (result == ZelClr::kSOk && !manager.ChangeColor(palette, i, entry))
      walked = ZelClr::kEFail;
  }
  return walked;
}
