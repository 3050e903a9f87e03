// A palette as its XML file has it: header, colour spaces, colours page by page, and texts in other languages.
//
// Texts are UTF-8, as in the file; the suite's wide strings begin at WClrPalette, which owns one of these.
// Indices count from 0. Look-ups by identifier, name and value are indexed: the first look-up of a kind orders the
// colours, later edits keep that order up to date instead of making it anew (Reorder alone starts over).
// A name of a model (ModelFromSpaceName) is that model wherever it stands, and never a colour space of that name.
// Threads: one at a time, const operations included (records are made when first asked for).
// Errors: false with a reason in English; a failed load leaves an empty palette; an index out of range gives an empty
// value and edits nothing. Files may have at most 100,000 colours, as many colour spaces and as many pages.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/platform/guid.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The look of a colour space in one model, texts as held.
struct WXmlDefinitionColor
{
  std::string model; ///< "CMYK", or a name that no model has
  std::string tints;
  CLR_COLORSPEC color; ///< invalid when the texts state none
};

/// An ink, or a process colour with several looks, that palette colours refer to by name.
struct WXmlColorSpace
{
  std::string name;
  int version = 0;
  int fixedID = -1;     ///< the colour ID of its colours; -1 for none
  bool process = false; ///< a process colour; else a spot ink
  std::vector<WXmlDefinitionColor> definitions;
};

/// One colour of a palette, texts as held. What the palette works out of them is asked of the palette.
struct WXmlColor
{
  std::string name;
  std::string resid;              ///< of the name; empty when it has none
  std::string colorSpace;         ///< "cs": the name of a model or of a colour space
  std::string tints = "1";        ///< values of the model, or the tint of the colour space
  CLR_COLORSPEC styleColor;       ///< the reference to a style that the colour follows; invalid for every other colour
  ZelUtils::Guid originalPalette; ///< where it was copied from; null when nowhere
  int frequencyOrder = 0;         ///< what sorting by frequency goes by; not in the file
};

class ZELCLR_API WXmlColorPalette
{
public:
  struct Header
  {
    ZelUtils::Guid guid;
    int fixedID = -1; ///< -1 for none
    std::string name;
    std::string resid;  ///< of the name; empty when it has none
    std::string prefix; ///< of the colours' names
    bool locked = false;
    int maxColors = -1; ///< -1 for no limit

    bool operator==(const Header &) const = default;
  };
  struct Resource
  {
    std::string id;
    std::vector<std::pair<std::string, std::string>> texts; ///< language tag and text, in order

    bool operator==(const Resource &) const = default;
  };
  /// A colour that waits for its style.
  struct UnresolvedStyle
  {
    WXmlColor color;
    std::string style;
    std::size_t index = 0; ///< where it would stand
    int page = 0;
  };

  static constexpr int kDefaultGridWidth = 8;

  WXmlColorPalette();
  ~WXmlColorPalette();
  WXmlColorPalette(const WXmlColorPalette &);
  WXmlColorPalette &operator=(const WXmlColorPalette &);
  /// What was moved from may only be assigned to or destroyed.
  WXmlColorPalette(WXmlColorPalette &&) noexcept;
  WXmlColorPalette &operator=(WXmlColorPalette &&) noexcept;

  // --- File ---------------------------------------------------------------------------------------------------------

  /// Validation is against ColorPaletteSchema.xsd in the installation's colour folder, else against the fall-back file;
  /// without either it fails. Paths are UTF-8.
  bool LoadFromFile(const std::string &path, bool validate, std::string &reason);
  bool LoadFromBytes(std::string_view xml, std::string &reason);
  bool LoadFromString(std::wstring_view xml, std::string &reason);
  static void SetColorPaletteSchemaFallbackPath(const std::wstring &path);
  /// UTF-8. Colours that follow a style, or wait for one, name it when `styleReferences` is set; else they are plain
  /// colours. Texts whose language tag is no XML name are left out.
  std::string Bytes(bool styleReferences) const;
  std::wstring Text(bool styleReferences) const;
  /// Through ZelUtl::ReplaceFile.
  bool SaveToFile(const std::string &path, bool styleReferences, std::string &reason) const;
  void Clear();

  // --- Header and texts ---------------------------------------------------------------------------------------------

  const Header &GetHeader() const;
  void SetHeader(Header header);
  /// In the language of the user interface at the time of loading, else plain.
  const std::string &GetDisplayName() const;
  const std::vector<Resource> &GetResources() const;
  void SetResources(std::vector<Resource> resources);

  // --- Colour spaces ------------------------------------------------------------------------------------------------

  std::size_t GetColorSpaceCount() const;
  const WXmlColorSpace &GetColorSpace(std::size_t index) const;
  /// The first of this name or colour ID; -1 when there is none. Both are indexed.
  int FindColorSpace(std::string_view name) const;
  int FindColorSpaceOfID(int colorID) const;
  /// A look's colour is worked out of its texts; only where its model has no values, it stays as given.
  void AddColorSpace(WXmlColorSpace space);
  /// Colours that refer to the old name follow to the new one. False, and nothing changed, when the new name is that of
  /// another colour space or of a model.
  bool ReplaceColorSpace(std::size_t index, WXmlColorSpace space);
  /// Those that no colour refers to.
  void RemoveUnusedColorSpaces();

  // --- Colours ------------------------------------------------------------------------------------------------------

  std::size_t GetColorCount() const;
  const WXmlColor &GetColor(std::size_t index) const;
  /// As records have it: a style's reference; a colour of a model by its values; of a spot space a SPOT of this palette
  /// with the space's ID, tint and interned definition; of a process space its first definition, with the tint as
  /// density. Invalid when the texts state none. Good until the palette changes.
  const CLR_COLORSPEC &GetColorSpec(std::size_t index) const;
  /// The colour in one model, as the file states it: its own values, or the definition of its colour space with the
  /// tint as density ("sRGB" serves for RGB, too). Invalid when it states none.
  CLR_COLORSPEC GetColorSpecInModel(std::size_t index, unsigned model) const;
  const std::string &GetColorDisplayName(std::size_t index) const;
  /// The fixed ID of its colour space; -1 when it has none.
  int GetColorID(std::size_t index) const;
  /// 0 to 1: of a colour of a colour space, else 1.
  double GetTint(std::size_t index) const;

  /// An index from 0 to the count; the new colour joins the page of the colour before it, at the end the last page.
  void InsertColor(std::size_t index, WXmlColor color);
  void InsertColors(std::size_t index, std::vector<WXmlColor> colors);
  void ReplaceColor(std::size_t index, WXmlColor color);
  /// A page without colours left goes, too, unless it is the only one.
  void RemoveColor(std::size_t index);
  /// Those that wait for a style, too.
  void RemoveAllColors();
  /// The colour comes to stand at `to`. Places keep their pages.
  void MoveColor(std::size_t from, std::size_t to);
  /// order[i] is the index of the colour that comes to stand at i; a permutation. Places keep their pages.
  void Reorder(std::span<const std::size_t> order);

  // --- Look-ups; -1 or nothing when there is none -------------------------------------------------------------------

  int FindName(std::string_view name) const;
  int FindColor(const CLR_COLORSPEC &color) const; ///< equal by CLR_COLORSPEC::CompareTo
  int FindColor(const CLR_COLORSPEC &color, std::string_view name) const;
  /// In order; only when the identifier is this palette's.
  std::vector<int> FindColorID(const ZelUtils::Guid &palette, int colorID) const;
  /// Whether a colour, or a definition of a colour space, is of this model by its name.
  bool HasModel(unsigned model) const;

  // --- Pages --------------------------------------------------------------------------------------------------------

  int GetGridWidth() const;
  void SetGridWidth(int width); ///< 1 to 10,000; what is beyond is the nearest end
  int GetPageCount() const;     ///< at least 1
  int GetPage(std::size_t index) const;
  int GetIndexOnPage(std::size_t index) const;
  /// Starts a new page behind the last colour: what is appended from now on stands on it.
  void AddPage();
  void FlattenPages();

  // --- Styles -------------------------------------------------------------------------------------------------------

  /// Kept aside when the document had no such style yet. They are written back where they stood.
  const std::vector<UnresolvedStyle> &GetUnresolvedStyles() const;
  /// Puts those into the palette whose style exists by now, where they stood; how many those were.
  std::size_t ResolveColorStyleReferences();

private:
  struct State;
  std::unique_ptr<State> state_;
};
