#include "zelclr/palettes/palette_operations.h"

#include <algorithm>

namespace ZelClr {

PaletteOperations::PaletteOperations() = default;

PaletteOperations::~PaletteOperations() = default;

WClrPalette *PaletteOperations::Hold(std::unique_ptr<WClrPalette> palette)
{
  held_.insert(palette.get());
  return palettes_.emplace_back(std::move(palette)).get();
}

std::unique_ptr<WClrPalette> PaletteOperations::LetGo(const WClrPalette *palette)
{
  const auto place =
    std::find_if(palettes_.begin(), palettes_.end(), [=](const auto &p) { return p.get() == palette; });
  if (place == palettes_.end())
    return nullptr;
  std::unique_ptr<WClrPalette> gone = std::move(*place);
  palettes_.erase(place);
  held_.erase(palette);
  return gone;
}

bool PaletteOperations::RestoreFromFile(WClrPalette *palette, const std::wstring &path, bool validate)
{
  return HasPalette(palette) && palette->RestoreFromFile(path, validate);
}

bool PaletteOperations::RestoreFromPalette(WClrPalette *palette, const WClrPalette *other)
{
  return HasPalette(palette) && HasPalette(other) && palette->RestoreFromPalette(*other);
}

bool PaletteOperations::RestoreFromString(WClrPalette *palette, const std::wstring &xml)
{
  return HasPalette(palette) && palette->RestoreFromString(xml);
}

std::wstring PaletteOperations::SaveAsString(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->SaveAsString() : std::wstring();
}

bool PaletteOperations::BackupToFile(const WClrPalette *palette, const std::wstring &path) const
{
  return HasPalette(palette) && palette->BackupToFile(path);
}

bool PaletteOperations::BackupToPalette(const WClrPalette *palette, WClrPalette *other) const
{
  return HasPalette(palette) && HasPalette(other) && palette->BackupToPalette(*other);
}

std::wstring PaletteOperations::GetFileName(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetFileName() : std::wstring();
}

void PaletteOperations::SetFileName(WClrPalette *palette, const std::wstring &path)
{
  if (HasPalette(palette))
    palette->SetFileName(path);
}

int PaletteOperations::InsertColor(WClrPalette *palette, int index, const PaletteEntry &entry)
{
  return HasPalette(palette) ? palette->InsertColor(index, entry) : -1;
}

bool PaletteOperations::InsertColors(WClrPalette *palette, int index, const std::vector<PaletteEntry> &entries)
{
  return HasPalette(palette) && palette->InsertColors(index, entries);
}

int PaletteOperations::AddColor(WClrPalette *palette, const PaletteEntry &entry)
{
  return HasPalette(palette) ? palette->AddColor(entry) : -1;
}

bool PaletteOperations::ChangeColor(WClrPalette *palette, int index, const PaletteEntry &entry)
{
  return HasPalette(palette) && palette->ChangeColor(index, entry);
}

bool PaletteOperations::ChangeColorName(WClrPalette *palette, int index, const std::wstring &name)
{
  return HasPalette(palette) && palette->ChangeColorName(index, name);
}

bool PaletteOperations::RemoveColor(WClrPalette *palette, int index)
{
  return HasPalette(palette) && palette->RemoveColor(index);
}

void PaletteOperations::RemoveAllColors(WClrPalette *palette)
{
  if (HasPalette(palette))
    palette->RemoveAllColors();
}

bool PaletteOperations::MoveColor(WClrPalette *palette, int from, int to)
{
  return HasPalette(palette) && palette->MoveColor(from, to);
}

void PaletteOperations::ClearPalette(WClrPalette *palette)
{
  if (HasPalette(palette))
    palette->ClearPalette();
}

PaletteResult PaletteOperations::AddColorSpace(WClrPalette *palette, const std::wstring &name,
                                               const std::vector<CLR_COLORSPEC> &definitions, bool process,
                                               int &colorID)
{
  return HasPalette(palette) ? palette->AddColorSpace(name, definitions, process, colorID) : PaletteResult::BadArgument;
}

PaletteResult PaletteOperations::AddSpotColor(WClrPalette *palette, const SpotColorDefinitionLookupData &lookup,
                                              CLR_COLORSPEC &color)
{
  return HasPalette(palette) ? palette->AddSpotColor(lookup, color) : PaletteResult::BadArgument;
}

bool PaletteOperations::ConvertToProcess(WClrPalette *palette, int index)
{
  return HasPalette(palette) && palette->ConvertToProcess(index);
}

bool PaletteOperations::ConvertToSpot(WClrPalette *palette, int index)
{
  return HasPalette(palette) && palette->ConvertToSpot(index);
}

void PaletteOperations::FlattenPages(WClrPalette *palette)
{
  if (HasPalette(palette))
    palette->FlattenPages();
}

std::size_t PaletteOperations::ResolveColorStyleReferences(WClrPalette *palette)
{
  return HasPalette(palette) ? palette->ResolveColorStyleReferences() : 0;
}

std::wstring PaletteOperations::GetPaletteName(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetPaletteName() : std::wstring();
}

void PaletteOperations::SetPaletteName(WClrPalette *palette, const std::wstring &name)
{
  if (HasPalette(palette))
    palette->SetPaletteName(name);
}

PaletteOperations::Guid PaletteOperations::GetPaletteGuid(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetPaletteGuid() : Guid();
}

void PaletteOperations::SetPaletteGuid(WClrPalette *palette, const Guid &guid)
{
  if (HasPalette(palette))
    palette->SetPaletteGuid(guid);
}

std::wstring PaletteOperations::GetColorNamePrefix(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetColorNamePrefix() : std::wstring();
}

bool PaletteOperations::IsChanged(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsChanged();
}

void PaletteOperations::SetChanged(WClrPalette *palette, bool changed)
{
  if (HasPalette(palette))
    palette->SetChanged(changed);
}

bool PaletteOperations::IsLocked(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsLocked();
}

void PaletteOperations::SetLocked(WClrPalette *palette, bool locked)
{
  if (HasPalette(palette))
    palette->SetLocked(locked);
}

bool PaletteOperations::IsCustomPalette(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsCustomPalette();
}

int PaletteOperations::GetPaletteSizeLimit(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetPaletteSizeLimit() : -1;
}

void PaletteOperations::SetPaletteSizeLimit(WClrPalette *palette, int limit)
{
  if (HasPalette(palette))
    palette->SetPaletteSizeLimit(limit);
}

bool PaletteOperations::CanAddMoreColors(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->CanAddMoreColors();
}

int PaletteOperations::GetPaletteSize(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetPaletteSize() : 0;
}

CLR_COLORSPEC PaletteOperations::GetColorSpec(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetColorSpec(index) : CLR_COLORSPEC();
}

CLR_COLORSPEC PaletteOperations::GetProcessColorSpec(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetProcessColorSpec(index) : CLR_COLORSPEC();
}

bool PaletteOperations::GetPaletteColor(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const
{
  return HasPalette(palette) && palette->GetPaletteColor(index, color);
}

bool PaletteOperations::GetPaletteColorAsProcess(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const
{
  return HasPalette(palette) && palette->GetPaletteColorAsProcess(index, color);
}

bool PaletteOperations::GetIndexedPaletteColor(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const
{
  return HasPalette(palette) && palette->GetIndexedPaletteColor(index, color);
}

bool PaletteOperations::GetPaletteColorFromID(const WClrPalette *palette, const Guid &guid, int colorID, int density,
                                              CLR_COLORSPEC &color) const
{
  return HasPalette(palette) && palette->GetPaletteColorFromID(guid, colorID, density, color);
}

bool PaletteOperations::GetUserInksColor(const WClrPalette *palette, int index, CLR_COLORSPEC &color) const
{
  return HasPalette(palette) && palette->GetUserInksColor(index, color);
}

bool PaletteOperations::GetUserInksColorFromID(const WClrPalette *palette, int colorID, int density,
                                               CLR_COLORSPEC &color) const
{
  return HasPalette(palette) && palette->GetUserInksColorFromID(colorID, density, color);
}

std::wstring PaletteOperations::GetColorName(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetColorName(index) : std::wstring();
}

int PaletteOperations::GetColorVersion(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetColorVersion(index) : 0;
}

std::wstring PaletteOperations::GetGeneratedName(const WClrPalette *palette, const CLR_COLORSPEC &color) const
{
  return HasPalette(palette) ? palette->GetGeneratedName(color) : std::wstring();
}

int PaletteOperations::GetColorID(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetColorID(index) : -1;
}

bool PaletteOperations::IsCMYK(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsCMYK();
}

bool PaletteOperations::IsRGB(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsRGB();
}

bool PaletteOperations::IsLAB(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsLAB();
}

bool PaletteOperations::IsHex(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->IsHex();
}

int PaletteOperations::GetColorFrequencyOrder(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetColorFrequencyOrder(index) : 0;
}

void PaletteOperations::SetColorFrequencyOrder(WClrPalette *palette, int index, int order)
{
  if (HasPalette(palette))
    palette->SetColorFrequencyOrder(index, order);
}

int PaletteOperations::GetColorIndex(const WClrPalette *palette, const CLR_COLORSPEC &color,
                                     const std::wstring &name) const
{
  return HasPalette(palette) ? palette->GetColorIndex(color, name) : -1;
}

int PaletteOperations::GetColorIndex(const WClrPalette *palette, const std::wstring &name) const
{
  return HasPalette(palette) ? palette->GetColorIndex(name) : -1;
}

int PaletteOperations::GetColorIndex(const WClrPalette *palette, const CLR_COLORSPEC &color) const
{
  return HasPalette(palette) ? palette->GetColorIndex(color) : -1;
}

int PaletteOperations::GetColorIndex(const WClrPalette *palette, const Guid &guid, int colorID) const
{
  return HasPalette(palette) ? palette->GetColorIndex(guid, colorID) : -1;
}

int PaletteOperations::FindClosestColor(const WClrPalette *palette, const CLR_COLORSPEC &color,
                                        const ColorContext &context) const
{
  return HasPalette(palette) ? palette->FindClosestColor(color, context) : -1;
}

bool PaletteOperations::IsValidColorID(const WClrPalette *palette, const Guid &guid, int colorID) const
{
  return HasPalette(palette) && palette->IsValidColorID(guid, colorID);
}

int PaletteOperations::ColorIDToIndex(const WClrPalette *palette, const Guid &guid, int colorID) const
{
  return HasPalette(palette) ? palette->ColorIDToIndex(guid, colorID) : -1;
}

std::vector<int> PaletteOperations::ColorIDToIndices(const WClrPalette *palette, const Guid &guid, int colorID) const
{
  return HasPalette(palette) ? palette->ColorIDToIndices(guid, colorID) : std::vector<int>();
}

int PaletteOperations::GetColorSpaceColorID(const WClrPalette *palette, const std::wstring &name) const
{
  return HasPalette(palette) ? palette->GetColorSpaceColorID(name) : -1;
}

bool PaletteOperations::GetColorSpaceInfo(const WClrPalette *palette, int colorID, ColorSpaceInfo &info) const
{
  return HasPalette(palette) && palette->GetColorSpaceInfo(colorID, info);
}

bool PaletteOperations::GetColorSpaceInfo(const WClrPalette *palette, int colorID, std::wstring &name) const
{
  return HasPalette(palette) && palette->GetColorSpaceInfo(colorID, name);
}

int PaletteOperations::GetGridWidth(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetGridWidth() : 0;
}

int PaletteOperations::GetNumPages(const WClrPalette *palette) const
{
  return HasPalette(palette) ? palette->GetNumPages() : 0;
}

bool PaletteOperations::HasGaps(const WClrPalette *palette) const
{
  return HasPalette(palette) && palette->HasGaps();
}

int PaletteOperations::GetColorIndexFromCellIndex(const WClrPalette *palette, int cell) const
{
  return HasPalette(palette) ? palette->GetColorIndexFromCellIndex(cell) : -1;
}

int PaletteOperations::GetCellIndexFromColorIndex(const WClrPalette *palette, int index) const
{
  return HasPalette(palette) ? palette->GetCellIndexFromColorIndex(index) : -1;
}

bool PaletteOperations::SortColors(WClrPalette *palette, int sortType, const ColorContext &context)
{
  return HasPalette(palette) && palette->SortColors(sortType, context);
}

bool PaletteOperations::SortReverse(WClrPalette *palette)
{
  return HasPalette(palette) && palette->SortReverse();
}

bool PaletteOperations::SortByName(WClrPalette *palette)
{
  return HasPalette(palette) && palette->SortByName();
}

bool PaletteOperations::SortByFrequencyOrder(WClrPalette *palette)
{
  return HasPalette(palette) && palette->SortByFrequencyOrder();
}

} // namespace ZelClr
