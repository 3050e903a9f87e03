#include "zelclr/palettes/internal/loaded_palettes.h"

#include "zelclr/palettes/w_clr_palette_mgr.h"

namespace ZelClr {

WClrPalette *FindLoadedPalette(const ZelUtils::Guid &identifier)
{
  return WClrPaletteMgr::HasInstance() ? WClrPaletteMgr::GetInstance().FindPalette(identifier) : nullptr;
}

} // namespace ZelClr
