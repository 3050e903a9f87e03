// Small values that palettes and their manager share.
//
// Threads: values. Errors: none.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <string>
#include <vector>

namespace ZelClr {

/// One colour offered to or taken from a palette: `WClrPaletteMgr::PaletteEntry`.
struct PaletteEntry
{
  CLR_COLORSPEC color;
  std::wstring name;
};

/// `WClrPaletteMgr::PalSortType`. Panels and scripts hold the numbers.
enum PalSortType : int
{
  SortHue = 0,
  SortSaturation = 1,
  SortBrightness = 2,
  SortHSB = 3,
  SortRGB = 4,
};

/// What adding an ink or a colour space came to.
enum class PaletteResult
{
  Ok,
  AlreadyThere, ///< the palette had it: what is given back is the one that was there
  Locked,
  Full,        ///< the size limit, or all colour IDs are in use
  BadArgument, ///< no name, no look, or a look that palettes cannot hold
};

/// What writing a palette came to.
enum class ePaletteWriteResult
{
  Ok,
  Locked,
  NoFileName,
  Failed, ///< the old file, if any, is as it was
};

/// A colour space as palettes tell of it.
struct ColorSpaceInfo
{
  std::wstring name;
  int colorID = -1;
  int version = 0;
  bool process = false;
  std::vector<CLR_COLORSPEC> definitions; ///< one look for each model, in the order of the file
};

} // namespace ZelClr
