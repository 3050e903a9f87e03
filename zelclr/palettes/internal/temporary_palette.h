// A palette that belongs to an open document: its file is a scratch file, gone with the palette.
//
// Threads: as WClrPalette. Errors: none.
#pragma once

#include "zelclr/palettes/w_clr_palette.h"

#include <string>

namespace ZelClr {

class TemporaryPalette : public WClrPalette
{
public:
  /// In a folder of its own, which is there; an empty path is a palette without a file.
  explicit TemporaryPalette(std::wstring path);
  /// A palette that was saved elsewhere meanwhile keeps that file.
  ~TemporaryPalette() override;

  /// It is neither the user's nor one that ships.
  bool CalculateIfCustomPalette() const override { return false; }

protected:
  bool SavesColorStyleReferences() const override { return true; }

private:
  const std::wstring path_;
};

} // namespace ZelClr
