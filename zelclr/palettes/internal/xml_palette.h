// What an XML palette holds, with what is worked out of it; how it is read and written.
//
// Threads: one at a time. Errors: false, with the reason in English; indices must be in range.
#pragma once

#include "zelclr/palettes/internal/ordered_positions.h"
#include "zelclr/palettes/internal/palette_pages.h"
#include "zelclr/palettes/xml_color_palette.h"
#include "zelclr/platform/xml.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZelClr::Internal {

inline constexpr int kMostGridWidth = 10'000;

struct PaletteSpace
{
  WXmlColorSpace space;
  const SpotColorDefinition *definition = nullptr; // once a colour asked for it
  mutable std::size_t place = 0;
};

struct PaletteColor
{
  WXmlColor color;
  // Worked out of the texts and the colour space when first asked for:
  CLR_COLORSPEC record;
  int colorID = -1;
  bool isWorkedOut = false;
  mutable std::size_t place = 0;
};

struct NameOfSpace
{
  std::string_view operator()(const PaletteSpace &space) const { return space.space.name; }
};
struct IDOfSpace
{
  int operator()(const PaletteSpace &space) const { return space.space.fixedID; }
};
struct NameOfColor
{
  std::string_view operator()(const PaletteColor &color) const { return color.color.name; }
};
struct SpaceOfColor
{
  std::string_view operator()(const PaletteColor &color) const { return color.color.colorSpace; }
};
struct RecordOfColor
{
  const CLR_COLORSPEC &operator()(const PaletteColor &color) const { return color.record; }
};
struct IDOfColor
{
  int operator()(const PaletteColor &color) const { return color.colorID; }
};

struct XmlPalette
{
  XmlPalette() = default;
  /// Of what the file holds; the rest is worked out anew.
  XmlPalette(const XmlPalette &other);
  XmlPalette &operator=(const XmlPalette &) = delete;

  WXmlColorPalette::Header header;
  std::vector<WXmlColorPalette::Resource> resources;
  PlacedList<PaletteSpace> spaces;
  PlacedList<PaletteColor> colors;
  PalettePages pages;
  int gridWidth = WXmlColorPalette::kDefaultGridWidth;
  /// Ordered by index; the index of each counts colours only, and those of one index stand in this order.
  std::vector<WXmlColorPalette::UnresolvedStyle> waiting;

  OrderedPositions<PaletteSpace, NameOfSpace> spacesByName{spaces};
  OrderedPositions<PaletteSpace, IDOfSpace> spacesByID{spaces};
  OrderedPositions<PaletteColor, NameOfColor> byName{colors};
  OrderedPositions<PaletteColor, SpaceOfColor> bySpace{colors};
  OrderedPositions<PaletteColor, RecordOfColor> byRecord{colors}; // only with all of them worked out
  OrderedPositions<PaletteColor, IDOfColor> byID{colors};         // likewise

  /// By the identifier of a resource, in the language of the user interface.
  std::unordered_map<std::string, std::string> texts;
  void ChooseTexts(std::string_view language);
  /// The text of the resource, else the plain one.
  const std::string &DisplayText(const std::string &resid, const std::string &plain) const;

  /// The colour space that a colour refers to; null when it names a model, or none that is there.
  PaletteSpace *FindSpace(const WXmlColor &color);
  void WorkOut(PaletteColor &color);
  std::span<PaletteColor *const> FindRecord(const CLR_COLORSPEC &record);
  std::span<PaletteColor *const> FindID(int colorID);
  /// Before and after a change of what the indices of a colour go by.
  void TakeOutOfIndices(PaletteColor &color);
  void PutIntoIndices(PaletteColor &color);
  void ForgetIndices();
  /// All records are worked out anew.
  void ForgetRecords();
  /// Those of the colours of this colour space are.
  void ForgetRecordsOfSpace(std::string_view name);

  void Insert(std::size_t index, std::size_t page, std::vector<WXmlColor> added);
  void Remove(std::size_t index);
  /// The page on which a waiting colour would stand: its own, as far as its neighbours' allow.
  std::size_t PageOfWaiting(const WXmlColorPalette::UnresolvedStyle &colour) const;
};

/// 0 to 1.
double TintOfText(std::string_view tints);

/// Gives a look the colour that its texts state; where its model has no values, it keeps its own.
void ReadDefinitionColor(WXmlDefinitionColor &definition);

/// Into a new palette. On failure it is as far as the file is good.
bool ReadXmlPalette(XmlPalette &palette, std::string_view xml, std::string &reason);
bool ReadXmlPalette(XmlPalette &palette, std::wstring_view xml, std::string &reason);
ZelUtl::WXmlDoc XmlFromPalette(const XmlPalette &palette, bool styleReferences);

} // namespace ZelClr::Internal
