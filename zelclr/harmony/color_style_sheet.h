// The colour styles of a document: their palette, the harmonies that group them, and where styles from outside came
// from.
//
// The styles palette (WClrPalette) holds names and colours; every named colour of it is a style, whose colour the sheet
// shares as a reference, so that all who hold it follow. Names are looked for whatever their case; of several colours
// of one name the first is the style. What is edited in the palette itself the sheet follows: a colour that is renamed
// there keeps its holders, a base colour that is changed there takes its harmony along.
//
// Threads: the main thread. Errors: false, -1 or null, with nothing changed, but for ImportJson as it says. A locked
// palette, or none, refuses every change of styles.
#pragma once

#include "zelclr/harmony/color_context_provider.h"
#include "zelclr/harmony/harmony.h"
#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/w_clr_palette.h"
#include "zelclr/platform/data_source.h"
#include "zelclr/platform/json_reader.h"

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ColorSystem {
class ColorConverter;
}

namespace ZelClr {

/// A style that came from another style sheet.
struct ExternalColorStyle
{
  std::wstring alias;    ///< the name of the style here
  std::wstring id;       ///< what the other sheet calls it for ever
  std::wstring original; ///< its name there

  bool operator==(const ExternalColorStyle &) const = default;
};

class ZELCLR_API ColorStyleSheet final : public IColorStyles,
                                         public ZelUtl::PropertyBroadcaster,
                                         private ZelUtl::IPropertyListener
{
public:
  using HSB = Harmony::HSB;
  using RuleType = Harmony::RuleType;

  /// The palette is not owned. When it goes before the sheet does, the sheet is without one from then on.
  explicit ColorStyleSheet(WClrPalette *palette = nullptr);
  ~ColorStyleSheet() override;
  ColorStyleSheet(const ColorStyleSheet &) = delete;
  ColorStyleSheet &operator=(const ColorStyleSheet &) = delete;

  WClrPalette *GetStylesPalette() const { return palette_; }
  /// Styles of the same names keep their holders; harmonies lose what has no style any more. Null takes it away.
  void SetStylesPalette(WClrPalette *palette);
  /// Not owned. Without one, colours mean what the active colour context says.
  void SetColorContextProvider(const IColorContextProvider *provider) { provider_ = provider; }
  ColorSystem::ColorContext GetColorContext() const;

  // --- News ---------------------------------------------------------------------------------------------------------
  // Listeners hear of these, once for each operation, separated by commas. Frozen: panels bind to them.

  static constexpr std::wstring_view kStylesChanged = L"ColorStyles"; ///< names, colours or order
  static constexpr std::wstring_view kHarmoniesChanged = L"Harmonies";
  static constexpr std::wstring_view kExternalStylesChanged = L"ExternalColorStyles";
  static constexpr std::wstring_view kExternalIDChanged = L"ExternalID";

  // --- Styles -------------------------------------------------------------------------------------------------------

  std::size_t GetColorStyleCount() const { return styles_.size(); }
  /// In the order of the palette.
  std::vector<std::wstring> GetColorStyleNames() const;
  /// A style's own name goes first, then what it was called in the sheet that it came from, or its identifier there.
  const CLR_COLORSPEC *FindColorStyle(std::wstring_view name) const override;
  std::wstring NameOfColorStyle(const CLR_COLORSPEC &reference) const override;
  /// The name, else "name (2)", "name (3)" and so on: the first that no style has.
  std::wstring UniqueColorStyleName(const std::wstring &name) const;

  /// At an index of the palette, -1 for its end; under a name that no style has. A reference counts as its colour.
  /// DeviceN colours are refused, as by every palette.
  bool AddColorStyle(const std::wstring &name, const CLR_COLORSPEC &color, int index = -1);
  /// In a harmony it goes where its rule lets it: the base anywhere, and the others follow; another colour keeps the
  /// saturation and brightness given, and takes the hue that the rule constrains it to. One that the rule lets be is
  /// kept as given. A colour without saturation keeps the hue that it had. Others that follow stay in their model, but
  /// for grays that get a hue: those go to the context's blending model. Inks (spot, registration and user inks) do
  /// not follow.
  bool ChangeColorStyle(std::wstring_view name, const CLR_COLORSPEC &color);
  /// Its holders, its harmony and its alias follow.
  bool RenameColorStyle(std::wstring_view name, const std::wstring &newName);
  /// Whoever holds its colour keeps it as it is now.
  bool RemoveColorStyle(std::wstring_view name);
  /// Harmony by harmony, in their order, and all others behind them in the order that they have.
  bool SortColorStylesByHarmony();

  // --- Harmonies ----------------------------------------------------------------------------------------------------
  // A style is in one harmony at most, and once. Harmonies may name styles that are not there (yet): rules pass over
  // those.

  std::size_t GetHarmonyCount() const { return harmonies_.size(); }
  /// Null when there is none; good until it is deleted.
  const Harmony *GetHarmony(std::size_t index) const;
  /// The harmony of a style; -1 when it is in none.
  int FindHarmonyOf(std::wstring_view style) const;
  /// A custom harmony without colours, at 0 to the count, -1 for the end. Its index.
  int CreateHarmony(int index);
  /// Its styles stay.
  bool DeleteHarmony(std::size_t index);
  bool MoveHarmony(std::size_t from, std::size_t to);
  /// A style joins at a place among the colours, -1 for the last, and leaves the harmony that it was in. Its colour
  /// stays.
  bool AddToHarmony(std::size_t index, std::wstring_view style, int place = -1);
  bool RemoveFromHarmony(std::wstring_view style);
  /// Brings the colours to the places of the rule; the base stays.
  bool SetHarmonyRule(std::size_t index, RuleType rule);
  /// A new harmony of a style and, behind it in the palette, so many new styles less one, called after it. The index
  /// of the harmony.
  int GenerateHarmony(RuleType rule, std::wstring_view baseStyle, std::size_t count);
  /// The places of a harmony's colours on the wheel; empty for those that are no styles, or have no appearance.
  std::vector<std::optional<HSB>> GetPositions(std::size_t index);

  // --- Outside ------------------------------------------------------------------------------------------------------

  const std::wstring &GetExternalID() const { return externalID_; }
  void SetExternalID(const std::wstring &id);
  const std::vector<ExternalColorStyle> &GetExternalColorStyles() const { return external_; }
  /// In place of the one of its alias, if there is one. An alias is not empty; the style may come later.
  bool SetExternalColorStyle(const ExternalColorStyle &style);
  bool RemoveExternalColorStyle(std::wstring_view alias);

  // --- JSON (color_style_sheet_json.cpp, docs/color_style_sheet.md) -------------------------------------------------

  /// Puts the sheet into the members of an object; what is no object becomes one, members that are not the sheet's
  /// stay. False without a palette.
  bool ExportJson(ZelUtl::JsonValue &value) const;
  /// The sheet that an object states in place of this one; false at the first failure. What was changed before stays:
  /// the external identifier, then palette, harmonies and aliases, each one after the other. A failed palette, list of
  /// older harmonies or list of aliases changes nothing of its part; a failed list of harmonies leaves those before
  /// the fault, unless older ones take their place.
  bool ImportJson(const ZelUtl::JsonValue &value);
  /// The same as text; an empty text without a palette. The reason is in English.
  std::string ExportJsonText() const;
  bool ImportJsonText(std::string_view text, std::string &reason);

private:
  friend class HarmonyDrag;

  struct Style
  {
    std::wstring name;
    CLR_COLORSPEC reference;     // what all holders share
    CLR_COLORSPEC value;         // what the palette has
    std::optional<HSB> position; // on the wheel, once it was asked for; of a moved colour exactly where it was put
  };
  /// A colour of the palette; the style is null where it has no name, or one that an earlier colour has.
  struct Place
  {
    std::string name;
    Style *style;
  };
  /// A colour of a harmony that is a style with an appearance.
  struct Member
  {
    Style *style;
    HSB position;
  };
  using Members = std::vector<Member>;

  // color_style_sheet.cpp
  void OnPropertiesChanged(std::wstring_view names) override;
  void OnBroadcasterGone() noexcept override;
  template <class Work>
  auto Edit(Work work);
  void Settle();
  void Tell(std::wstring_view news);
  bool CanEdit() const { return palette_ != nullptr && !palette_->IsLocked(); }
  void Follow(bool isReload);
  bool HasNames() const;
  void FollowRename();
  void ReadNames();
  void ReadValues(bool isReload);
  void ResolveWaiting() const;
  Style *FindStyle(std::wstring_view name);
  int PlaceOf(const Style &style) const;
  void SetValue(Style &style, const CLR_COLORSPEC &value);
  bool Store(Style &style, const CLR_COLORSPEC &color, const std::optional<HSB> &position);
  void Forget(const std::map<std::wstring, Style> &gone);
  void IndexAliases();

  // color_style_sheet_harmonies.cpp
  const ColorSystem::ColorConverter &Converter();
  std::optional<HSB> PositionOf(Style &style);
  Members MembersOf(const Harmony &harmony);
  std::optional<HSB> Target(const CLR_COLORSPEC &color, const HSB &former);
  void MoveOthers(const Members &members, std::span<const HSB> to, std::size_t dragged);
  Harmony *HarmonyOf(std::wstring_view style) const;
  bool Join(Harmony &harmony, std::size_t place, const std::wstring &name);
  void Leave(const std::wstring &key);
  int IndexOf(const Harmony &harmony) const;

  // color_style_sheet_json.cpp
  ZelUtl::JsonValue ExportRuledHarmoniesJson() const;
  ZelUtl::JsonValue ExportExternalInfoJson() const;
  bool ImportPaletteJson(const ZelUtl::JsonValue &palette);
  void TakeIdentifier(const ZelUtils::Guid &former, const std::optional<ZelUtils::Guid> &stated);
  void NameColors();
  bool ImportHarmoniesJson(const ZelUtl::JsonValue &value);
  bool ImportRuledHarmoniesJson(const ZelUtl::JsonValue &value);
  bool ImportLegacyHeronHarmoniesJson(const ZelUtl::JsonValue &value);
  bool ImportExternalInfoJson(const ZelUtl::JsonValue &value);

  WClrPalette *palette_ = nullptr;
  const IColorContextProvider *provider_ = nullptr;
  std::map<std::wstring, Style> styles_; // by their names, folded
  std::vector<Place> places_;            // one for each colour of the palette
  std::unordered_map<const CLR_COLORSPEC *, const Style *> styleOfCell_;
  std::vector<std::unique_ptr<Harmony>> harmonies_;
  std::map<std::wstring, Harmony *> harmonyOf_; // by the names of colours, folded
  std::vector<ExternalColorStyle> external_;
  std::map<std::wstring, std::wstring> aliasOf_; // by outer names and identifiers, folded; folded
  std::wstring externalID_;
  std::shared_ptr<const ColorSystem::ColorConverter> converter_; // of the context as it was last
  int editing_ = 0;
  std::vector<std::wstring_view> news_; // of this edit
};

} // namespace ZelClr
