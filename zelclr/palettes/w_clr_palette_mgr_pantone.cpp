// PANTONE colours in the books that are installed.

#include "zelclr/colour/palette_types.h"
#include "zelclr/palettes/pantone.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"

using ZelUtils::Guid;

namespace {

/// -1 when the book does not have it.
int IndexOfNumber(const WClrPalette &book, int number)
{
  if (number < 0)
    return -1;
  for (const wchar_t *suffix : {L" C", L" CVC", L" U", L" CVU"}) { // the usual names are indexed
    if (const int index = book.GetColorIndex(L"PANTONE " + std::to_wstring(number) + suffix); index >= 0)
      return index;
  }
  for (int i = 0; i < book.GetPaletteSize(); ++i) {
    if (ZelClr::PantoneNumberOfName(book.GetColorName(i)) == number)
      return i;
  }
  return -1;
}

/// The same name, else the same number.
int IndexOfColor(const WClrPalette &book, const std::wstring &name)
{
  const int index = book.GetColorIndex(name);
  return index < 0 ? IndexOfNumber(book, ZelClr::PantoneNumberOfName(name)) : index;
}

bool TakeColor(const WClrPalette &book, int index, int density, CLR_COLORSPEC &color)
{
  CLR_COLORSPEC found;
  if (index < 0 || density < 0 || density > 100 || !book.GetPaletteColor(index, found))
    return false;
  found.SetDensity(static_cast<std::uint16_t>(density));
  color = found;
  return true;
}

} // namespace

int WClrPaletteMgr::GetPantoneID(const std::wstring &name)
{
  return ZelClr::PantoneNumberOfName(name);
}

int WClrPaletteMgr::Pantone4ToPantone5(int place)
{
  const WClrPalette *const book = GetPaletteIDFromGuidWithoutDiscovery(ZelClr::kPantonePaletteIdentifier);
  if (book == nullptr || place < 1 || place > book->GetPaletteSize())
    return -1;
  return ZelClr::PantoneNumberOfName(book->GetColorName(place - 1));
}

int WClrPaletteMgr::Pantone5ToPantoneID4(int number)
{
  const WClrPalette *const book = GetPaletteIDFromGuidWithoutDiscovery(ZelClr::kPantonePaletteIdentifier);
  const int index = book == nullptr ? -1 : IndexOfNumber(*book, number);
  return index < 0 ? -1 : index + 1;
}

bool WClrPaletteMgr::GetPantoneColor(int number, int density, CLR_COLORSPEC &color)
{
  for (const Guid &guid : ZelClr::CoatedPantoneBooks()) {
    const WClrPalette *const book = GetPaletteIDFromGuidWithoutDiscovery(guid);
    if (book != nullptr && TakeColor(*book, IndexOfNumber(*book, number), density, color))
      return true;
  }
  return false;
}

Guid WClrPaletteMgr::MapPantoneToPreviousVersions(const Guid &book)
{
  return ZelClr::PreviousPantoneBook(book);
}

bool WClrPaletteMgr::MapPantoneToPreviousVersions(CLR_COLORSPEC &color)
{
  const std::wstring name = color.GetSpotColorName();
  if (name.empty())
    return false;
  for (Guid guid = ZelClr::PreviousPantoneBook(color.GetPaletteGuid()); !guid.IsNull();
       guid = ZelClr::PreviousPantoneBook(guid))
  {
    const WClrPalette *const book = GetPaletteIDFromGuidWithoutDiscovery(guid);
    if (book != nullptr && TakeColor(*book, IndexOfColor(*book, name), color.GetDensity(), color))
      return true;
  }
  return false;
}

bool WClrPaletteMgr::IsPantoneTransWhite(const std::wstring &name)
{
  return ZelClr::IsPantoneTransparentWhite(name);
}

bool WClrPaletteMgr::IsPantoneTransWhite(const CLR_COLORSPEC &color)
{
  return ZelClr::IsPantoneTransparentWhite(color.GetSpotColorName());
}
