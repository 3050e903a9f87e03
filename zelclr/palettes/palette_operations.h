// The palettes that the manager holds, and a twin of nearly every operation of theirs that takes the palette first: for
// callers that keep a palette for longer than they know it to exist.
//
// A twin never looks at what a pointer leads to before it knows that the palette is held: null, and a palette that is
// gone or somebody else's, answer -1, 0 for a count, false, an invalid colour or an empty text, and nothing happens.
// Otherwise each is the operation of its name: see w_clr_palette.h.
// Threads: the main thread. Errors: as said.
#pragma once

#include "zelclr/palettes/w_clr_palette.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace ZelClr {

class ZELCLR_API PaletteOperations
{
public:
  using Guid = ZelUtils::Guid;
  using PaletteEntry = ZelClr::PaletteEntry;
  using PalSortType = ZelClr::PalSortType;
  using ColorContext = ColorSystem::ColorContext;

  PaletteOperations(const PaletteOperations &) = delete;
  PaletteOperations &operator=(const PaletteOperations &) = delete;

  bool HasPalette(const WClrPalette *palette) const { return held_.contains(palette); }

  // --- Files --------------------------------------------------------------------------------------------------------

  bool RestoreFromFile(WClrPalette *palette, const std::wstring &path, bool validate);
  bool RestoreFromPalette(WClrPalette *palette, const WClrPalette *other);
  bool RestoreFromString(WClrPalette *palette, const std::wstring &xml);
  std::wstring SaveAsString(const WClrPalette *palette) const;
  bool BackupToFile(const WClrPalette *palette, const std::wstring &path) const;
  bool BackupToPalette(const WClrPalette *palette, WClrPalette *other) const;
  std::wstring GetFileName(const WClrPalette *palette) const;
  void SetFileName(WClrPalette *palette, const std::wstring &path);

  // --- Editing ------------------------------------------------------------------------------------------------------

  int InsertColor(WClrPalette *palette, int index, const PaletteEntry &entry);
  bool InsertColors(WClrPalette *palette, int index, const std::vector<PaletteEntry> &entries);
  int AddColor(WClrPalette *palette, const PaletteEntry &entry);
  bool ChangeColor(WClrPalette *palette, int index, const PaletteEntry &entry);
  bool ChangeColorName(WClrPalette *palette, int index, const std::wstring &name);
  bool RemoveColor(WClrPalette *palette, int index);
  void RemoveAllColors(WClrPalette *palette);
  bool MoveColor(WClrPalette *palette, int from, int to);
  void ClearPalette(WClrPalette *palette);
  PaletteResult AddColorSpace(WClrPalette *palette, const std::wstring &name,
                              const std::vector<CLR_COLORSPEC> &definitions, bool process, int &colorID);
  PaletteResult AddSpotColor(WClrPalette *palette, const SpotColorDefinitionLookupData &lookup, CLR_COLORSPEC &color);
  bool ConvertToProcess(WClrPalette *palette, int index);
  bool ConvertToSpot(WClrPalette *palette, int index);
  void FlattenPages(WClrPalette *palette);
  std::size_t ResolveColorStyleReferences(WClrPalette *palette);

  // --- State --------------------------------------------------------------------------------------------------------

  std::wstring GetPaletteName(const WClrPalette *palette) const;
  void SetPaletteName(WClrPalette *palette, const std::wstring &name);
  Guid GetPaletteGuid(const WClrPalette *palette) const;
  void SetPaletteGuid(WClrPalette *palette, const Guid &guid);
  std::wstring GetColorNamePrefix(const WClrPalette *palette) const;
  bool IsChanged(const WClrPalette *palette) const;
  void SetChanged(WClrPalette *palette, bool changed);
  bool IsLocked(const WClrPalette *palette) const;
  void SetLocked(WClrPalette *palette, bool locked);
  bool IsCustomPalette(const WClrPalette *palette) const;
  int GetPaletteSizeLimit(const WClrPalette *palette) const;
  void SetPaletteSizeLimit(WClrPalette *palette, int limit);
  bool CanAddMoreColors(const WClrPalette *palette) const;

  // --- Reading ------------------------------------------------------------------------------------------------------

  int GetPaletteSize(const WClrPalette *palette) const;
  CLR_COLORSPEC GetColorSpec(const WClrPalette *palette, int index) const;
  CLR_COLORSPEC GetProcessColorSpec(const WClrPalette *palette, int index) const;
  bool GetPaletteColor(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const;
  bool GetPaletteColorAsProcess(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const;
  bool GetIndexedPaletteColor(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const;
  bool GetPaletteColorFromID(const WClrPalette *palette, const Guid &guid, int colorID, int density,
                             CLR_COLORSPEC &color) const;
  bool GetUserInksColor(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const;
  bool GetUserInksColorFromID(const WClrPalette *palette, int colorID, int density, CLR_COLORSPEC &color) const;
  std::wstring GetColorName(const WClrPalette *palette, int index) const;
  int GetColorVersion(const WClrPalette *palette, int index) const;
  std::wstring GetGeneratedName(const WClrPalette *palette, const CLR_COLORSPEC &color) const;
  int GetColorID(const WClrPalette *palette, int index) const;
  bool IsCMYK(const WClrPalette *palette) const;
  bool IsRGB(const WClrPalette *palette) const;
  bool IsLAB(const WClrPalette *palette) const;
  bool IsHex(const WClrPalette *palette) const;
  int GetColorFrequencyOrder(const WClrPalette *palette, int index) const;
  void SetColorFrequencyOrder(WClrPalette *palette, int index, int order);

  // --- Look-ups -----------------------------------------------------------------------------------------------------

  int GetColorIndex(const WClrPalette *palette, const CLR_COLORSPEC &color, const std::wstring &name) const;
  int GetColorIndex(const WClrPalette *palette, const std::wstring &name) const;
  int GetColorIndex(const WClrPalette *palette, const CLR_COLORSPEC &color) const;
  int GetColorIndex(const WClrPalette *palette, const Guid &guid, int colorID) const;
  int FindClosestColor(const WClrPalette *palette, const CLR_COLORSPEC &color, const ColorContext &context) const;
  bool IsValidColorID(const WClrPalette *palette, const Guid &guid, int colorID) const;
  int ColorIDToIndex(const WClrPalette *palette, const Guid &guid, int colorID) const;
  std::vector<int> ColorIDToIndices(const WClrPalette *palette, const Guid &guid, int colorID) const;
  int GetColorSpaceColorID(const WClrPalette *palette, const std::wstring &name) const;
  bool GetColorSpaceInfo(const WClrPalette *palette, int colorID, ColorSpaceInfo &info) const;
  bool GetColorSpaceInfo(const WClrPalette *palette, int colorID, std::wstring &name) const;

  // --- Grid and order -----------------------------------------------------------------------------------------------

  int GetGridWidth(const WClrPalette *palette) const;
  int GetNumPages(const WClrPalette *palette) const;
  bool HasGaps(const WClrPalette *palette) const;
  int GetColorIndexFromCellIndex(const WClrPalette *palette, int cell) const;
  int GetCellIndexFromColorIndex(const WClrPalette *palette, int index) const;
  bool SortColors(WClrPalette *palette, int sortType, const ColorContext &context);
  bool SortReverse(WClrPalette *palette);
  bool SortByName(WClrPalette *palette);
  bool SortByFrequencyOrder(WClrPalette *palette);

protected:
  PaletteOperations();
  ~PaletteOperations();

  WClrPalette *Hold(std::unique_ptr<WClrPalette> palette);
  /// Null when the palette is not held.
  std::unique_ptr<WClrPalette> LetGo(const WClrPalette *palette);
  const std::vector<std::unique_ptr<WClrPalette>> &Held() const { return palettes_; }

private:
  std::vector<std::unique_ptr<WClrPalette>> palettes_; // in the order in which they came
  std::unordered_set<const WClrPalette *> held_;       // the same
};

} // namespace ZelClr
