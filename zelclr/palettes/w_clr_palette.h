// One palette as the rest of the suite sees it: named colours in order, on pages of a grid, with an identifier, a file,
// a lock and a change state. What is in the file is kept by one WXmlColorPalette; this class adds the rules of editing,
// look-ups, sorting and the news for panels.
//
// A colour is addressed by its index (its place in the list, from 0), by its cell (its place in the grid, where the
// last row of a page may have gaps) or by its colour ID (that of its colour space; all tints of an ink share one),
// which means something only together with the palette's identifier. Paths and names are wide. Threads: one at a time,
// const operations included. Errors: an index or -1, false, an invalid colour, an empty name; edits of a locked palette
// are refused. Nothing throws.
#pragma once

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/palettes/palette_entry.h"
#include "zelclr/palettes/spot_color_definition_manager.h"
#include "zelclr/palettes/xml_color_palette.h"
#include "zelclr/platform/data_source.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class ZELCLR_API WClrPalette : public ZelUtl::DataSource<WClrPalette>,
                               public ZelUtl::PropertyBroadcaster,
                               public ZelUtl::IZelanGeneric
{
public:
  using Guid = ZelUtils::Guid;
  using PaletteEntry = ZelClr::PaletteEntry;
  using PaletteResult = ZelClr::PaletteResult;
  using ColorSpaceInfo = ZelClr::ColorSpaceInfo;

  WClrPalette();
  /// A palette that was changed, is not locked and has a file name saves itself there before it goes.
  ~WClrPalette() override;

  static const wchar_t *GetRegisteredDataSourceName();
  std::wstring GetCaption_Property() const override;
  std::wstring GetCueText_Property() const override;

  // --- Files --------------------------------------------------------------------------------------------------------

  /// Loads ".xml", the ".xml" in "….xml.zip", or what becomes of a ".cpl"; 1, or 0 when there is no such file, it is
  /// none of these or not what it should be. The file name is that of the XML file, set before it is read; a file that
  /// could not be read leaves an empty palette, and is kept as "….damaged" when that is saved over it. With `validate`,
  /// a file that is no archive must be what the schema says, and colours that state none go.
  virtual int LoadPalette(const std::wstring &path, bool validate);
  /// Whether an existing ".xml" palette says that it is locked; only its header is read.
  static bool IsPaletteLocked(const std::wstring &path);
  /// The colours and the header of another; file name, lock and size limit stay. What fails, more colours than the
  /// limit among it, changes nothing. A file is one that LoadPalette takes, or XML under any other name.
  virtual bool RestoreFromFile(const std::wstring &path, bool validate);
  virtual bool RestoreFromPalette(const WClrPalette &other);
  virtual bool RestoreFromString(const std::wstring &xml);
  /// Into a file ".xml", which is the palette's from then on; into its own when the path is empty. Saved, it counts as
  /// unchanged. A locked palette is saved only while it counts as changed, which no edit does: so that the lock is
  /// kept.
  virtual bool Save(const std::wstring &path);
  virtual std::wstring SaveAsString() const;
  /// Under a new name, with a new identifier, unlocked, into a new file, which is the palette's from then on.
  virtual bool SaveAs(const std::wstring &path, const std::wstring &name);
  virtual bool BackupToFile(const std::wstring &path) const;
  virtual bool BackupToPalette(WClrPalette &other) const;
  virtual std::wstring GetFileName() const;
  virtual void SetFileName(const std::wstring &path);

  // --- Editing ------------------------------------------------------------------------------------------------------

  /// At an index from 0 to the size. The index, or -1. DeviceN colours are refused; a reference into a palette is set
  /// through the palette that it names; a named spot colour joins the palette's ink of that name.
  virtual int InsertColor(int index, const PaletteEntry &entry);
  /// All of them or none.
  virtual bool InsertColors(int index, const std::vector<PaletteEntry> &entries);
  virtual int AddColor(const PaletteEntry &entry);
  virtual bool ChangeColor(int index, const PaletteEntry &entry);
  virtual bool ChangeColorName(int index, const std::wstring &name);
  virtual bool RemoveColor(int index);
  virtual void RemoveAllColors();
  virtual bool MoveColor(int from, int to);
  /// Colours, colour spaces and texts; identifier, name, file and size limit stay.
  virtual void ClearPalette();
  /// A name that the palette or a colour model has is counted up, "Ink (1)"; apostrophes go. Of several looks in one
  /// model the first counts. `colorID` is the new ID.
  virtual PaletteResult AddColorSpace(const std::wstring &name, const std::vector<CLR_COLORSPEC> &definitions,
                                      bool process, int &colorID);
  /// Finds the ink by its name and looks, or adds it; `color` is its full tint, a colour of the palette.
  virtual PaletteResult AddSpotColor(const ZelClr::SpotColorDefinitionLookupData &lookup, CLR_COLORSPEC &color);
  /// A spot colour becomes what it looks like, any other an ink of its name. False for one that is so already. The name
  /// stays; colour spaces that no colour has any more go.
  virtual bool ConvertToProcess(int index);
  virtual bool ConvertToSpot(int index);
  void FlattenPages();
  std::size_t ResolveColorStyleReferences();

  // --- State --------------------------------------------------------------------------------------------------------

  virtual std::wstring GetPaletteName() const; ///< in the language of the user interface
  /// KEPT: a new name does not make the palette count as changed, where one would expect it to; callers save after it.
  virtual void SetPaletteName(const std::wstring &name);
  virtual Guid GetPaletteGuid() const;
  virtual void SetPaletteGuid(const Guid &guid);
  virtual std::wstring GetColorNamePrefix() const;
  virtual bool IsChanged() const;
  void SetChanged(bool changed);
  virtual bool IsLocked() const;
  void SetLocked(bool locked);
  /// A palette of the user's, none of those that ship or that ink makers sell; worked out anew by every load.
  bool IsCustomPalette() const { return custom_; }
  virtual bool CalculateIfCustomPalette() const;
  int GetPaletteSizeLimit() const { return xml_.GetHeader().maxColors; }
  /// -1 for none; colours beyond it go, from the end.
  void SetPaletteSizeLimit(int limit);
  bool CanAddMoreColors() const;

  // --- Reading ------------------------------------------------------------------------------------------------------

  virtual int GetPaletteSize() const;
  /// As records have it: see WXmlColorPalette::GetColorSpec.
  virtual CLR_COLORSPEC GetColorSpec(int index) const;
  /// A colour of a colour space by its first look, tint applied; every other colour as it is, without its reference.
  virtual CLR_COLORSPEC GetProcessColorSpec(int index) const;
  virtual bool GetPaletteColor(int index, CLR_COLORSPEC &color) const;
  virtual bool GetPaletteColorAsProcess(int index, CLR_COLORSPEC &color) const;
  /// A record that names the colour by its palette and index (model 13).
  virtual bool GetIndexedPaletteColor(int index, CLR_COLORSPEC &color) const;
  virtual bool GetPaletteColorFromID(const Guid &palette, int colorID, int density, CLR_COLORSPEC &color) const;
  /// An ink of a user's inks palette by index or ID, as an indexed user ink (model 22).
  virtual bool GetUserInksColor(int index, CLR_COLORSPEC &color) const;
  virtual bool GetUserInksColorFromID(int colorID, int density, CLR_COLORSPEC &color) const;
  virtual std::wstring GetColorName(int index) const; ///< in the language of the user interface, with the prefix
  virtual int GetColorVersion(int index) const;       ///< of its colour space; 0 when it has none
  virtual std::wstring GetGeneratedName(const CLR_COLORSPEC &color) const; ///< for a colour without a name
  virtual int GetColorID(int index) const;
  virtual bool IsCMYK() const;
  virtual bool IsRGB() const;
  virtual bool IsLAB() const;
  virtual bool IsHex() const;
  int GetColorFrequencyOrder(int index) const;
  void SetColorFrequencyOrder(int index, int order);

  // --- Look-ups: -1 when there is none ------------------------------------------------------------------------------

  virtual int GetColorIndex(const CLR_COLORSPEC &color, const std::wstring &name) const;
  virtual int GetColorIndex(const std::wstring &name) const;
  virtual int GetColorIndex(const CLR_COLORSPEC &color) const;
  virtual int GetColorIndex(const Guid &palette, int colorID) const;
  /// The least CIEDE2000 away, both converted by the context; the first of several.
  virtual int FindClosestColor(const CLR_COLORSPEC &color, const ColorSystem::ColorContext &context) const;
  virtual bool IsValidColorID(const Guid &palette, int colorID) const;
  virtual int ColorIDToIndex(const Guid &palette, int colorID) const;
  virtual std::vector<int> ColorIDToIndices(const Guid &palette, int colorID) const;
  virtual int GetColorSpaceColorID(const std::wstring &name) const;
  virtual bool GetColorSpaceInfo(int colorID, ColorSpaceInfo &info) const;
  virtual bool GetColorSpaceInfo(int colorID, std::wstring &name) const;

  // --- Grid ---------------------------------------------------------------------------------------------------------

  virtual int GetGridWidth() const;
  virtual int GetNumPages() const;
  /// Whether a page but the last ends within a row.
  virtual bool HasGaps() const;
  virtual int GetColorIndexFromCellIndex(int cell) const; ///< -1 in a gap and beyond the end
  virtual int GetCellIndexFromColorIndex(int index) const;

  // --- Order --------------------------------------------------------------------------------------------------------

  /// By the colours as the context shows them; equal ones keep their order. A number that is no sort type changes
  /// nothing.
  virtual bool SortColors(int sortType, const ColorSystem::ColorContext &context);
  virtual bool SortReverse();
  virtual bool SortByName();
  virtual bool SortByFrequencyOrder();

  const WXmlColorPalette &GetXmlPalette() const { return xml_; }

protected:
  /// What derived palettes answer otherwise: whether references to colour styles are saved as such. One that does so
  /// saves itself in its own destructor.
  virtual bool SavesColorStyleReferences() const { return false; }
  /// The colour as this palette can hold it, a record of palette files or a spot colour whose looks are known; invalid
  /// when it cannot. Colours that name one of another palette are looked up there.
  virtual CLR_COLORSPEC ConvertColorToInternal(const CLR_COLORSPEC &color) const;

private:
  struct NewSpaces;
  struct Lookups;

  // w_clr_palette_loading.cpp
  bool LoadXml(const std::wstring &path, bool validate);
  bool LoadFromZip(const std::string &archive, const std::wstring &xmlPath, bool validate);
  int Loaded(bool ok, bool validate);
  void ValidatePaletteColors();
  bool Restore(WXmlColorPalette other);
  bool Write(const WXmlColorPalette &palette, const std::wstring &path) const;
  void Saved(const std::wstring &path);

  // w_clr_palette_entries.cpp
  CLR_COLORSPEC LookedUp(const CLR_COLORSPEC &color) const;
  const WClrPalette *PaletteOf(const Guid &guid) const;
  bool MakeColor(const PaletteEntry &entry, WXmlColor &made, NewSpaces &added) const;
  bool MakeColorOfInk(const CLR_COLORSPEC &color, WXmlColor &made, NewSpaces &added) const;
  std::string FindInkOfName(const std::string &name) const;
  std::string FindSpaceOfLooks(const WXmlColorSpace &space) const;
  PaletteResult AddToNew(WXmlColorSpace space, NewSpaces &added) const;
  NewSpaces NoNewSpaces() const;
  int HighestColorID() const;

  // w_clr_palette_editing.cpp
  bool IsIndex(int index) const { return index >= 0 && index < GetPaletteSize(); }
  bool HasRoomFor(std::size_t count) const;
  bool Insert(int index, std::span<const PaletteEntry> entries);
  void AddSpaces(NewSpaces &added);
  void Edited(std::wstring_view properties);

  // w_clr_palette_reading.cpp
  const WXmlColorSpace *SpaceOf(std::size_t index) const;
  CLR_COLORSPEC ColorOfSpace(const WXmlColorSpace &space, int density) const;
  CLR_COLORSPEC ProcessColor(std::size_t index) const;

  // w_clr_palette_lookup.cpp
  template <class Find>
  int FindStored(const CLR_COLORSPEC &color, Find find) const;
  const Lookups &Pages() const;

  // w_clr_palette_sorting.cpp
  bool Reorder(const std::vector<std::size_t> &order);
  std::vector<CLR_COLORSPEC> ProcessColors() const;

  std::wstring fileName_; // empty for a palette that lives only in memory
  WXmlColorPalette xml_;  // its header has the lock and the size limit, too
  bool changed_ = false;
  bool custom_ = true;
  bool isFileUnread_ = false;                // its file is there, and could not be read
  int lastColorID_ = 0;                      // the last that was given, so that none is given twice
  mutable std::unique_ptr<Lookups> lookups_; // worked out of the colours, gone with the next edit
};
