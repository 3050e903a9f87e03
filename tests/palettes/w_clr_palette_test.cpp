#include "tests/palettes/support/palette_folders.h"
#include "tests/palettes/support/sample_palettes.h"
#include "tests/support/colours.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/generated_color_name.h"

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <random>
#include <set>

using namespace tests;
using Colour = CLR_COLORSPEC;
using ZelClr::PaletteEntry;
using ZelClr::PaletteResult;
namespace Model = ZelClr::ClrModel;

namespace {

ZelClr::SpotColorDefinitionLookupData LookupOf(const wchar_t *name, const Colour &look)
{
  return {name, name, {{look.GetType(), look}}};
}

struct Listener : ZelUtl::IPropertyListener
{
  void OnPropertiesChanged(std::wstring_view names) override { heard.emplace_back(names); }
  std::vector<std::wstring> heard;
};

} // namespace

// --- State and news -------------------------------------------------------------------------------------------------

TEST(WClrPalette, TellsWhatChangedInOrderAndOnce)
{
  using Heard = std::vector<std::wstring>;
  const std::wstring changed = L"Changed,CanResetPalette";
  const std::wstring colors = L"Colors,ColorSpaces,CanAddColor,CanDeleteColor,CanResetPalette";
  struct Row
  {
    const char *what;
    std::function<void(WClrPalette &)> act;
    Heard heard;
    bool isChanged;
  };
  const Row rows[] = {
    {"same name", [](auto &p) { p.SetPaletteName(L"Mine"); }, {}, false},
    {"guid", [](auto &p) { p.SetPaletteGuid(kStranger); }, {changed, L"ShowColorNames,CanResetPalette"}, true},
    {"same guid", [](auto &p) { p.SetPaletteGuid(kGuid); }, {}, false},
    {"changed", [](auto &p) { p.SetChanged(true); }, {changed}, true},
    {"unchanged", [](auto &p) { p.SetChanged(false); }, {}, false},
    {"lock", [](auto &p) { p.SetLocked(true); }, {changed, L"Locked,CanDeleteColor,CanEditColor"}, true},
    {"no lock", [](auto &p) { p.SetLocked(false); }, {}, false},
    {"file", [](auto &p) { p.SetFileName(L"/nowhere/p.xml"); }, {L"Filename,CanResetPalette"}, false},
    {"many",
     [](auto &p) {
       p.InsertColors(1, std::vector<PaletteEntry>(9, {kRed, L"r"}));
     },
     {changed, colors},
     true},
    {"none", [](auto &p) { p.InsertColors(1, {}); }, {}, false},
    {"limit",
     [](auto &p) { p.SetPaletteSizeLimit(2); },
     {changed, L"SizeLimit,Colors,CanAddColor,CanDeleteColor,CanResetPalette"},
     true},
    {"sorted already", [](auto &p) { p.SortByName(); }, {}, false},
    {"reversed", [](auto &p) { p.SortReverse(); }, {changed, L"Colors,CanResetPalette"}, true},
    {"moved nowhere", [](auto &p) { p.MoveColor(2, 2); }, {}, false},
    {"refused",
     [](auto &p) {
       p.AddColor({Colour(), L"none"});
     },
     {},
     false},
    {"frequency", [](auto &p) { p.SetColorFrequencyOrder(1, 5); }, {}, false},
  };
  for (const Row &row : rows) {
    SCOPED_TRACE(row.what);
    WClrPalette palette;
    Fill(palette, 4);
    Listener listener;
    palette.RegisterListener(listener);
    row.act(palette);
    EXPECT_EQ(listener.heard, row.heard);
    EXPECT_EQ(palette.IsChanged(), row.isChanged);
    palette.SetFileName(L"");
    palette.UnregisterListener(listener);
  }
}

TEST(WClrPalette, Kept_ANewNameDoesNotCountAsAChange)
{
  Listener listener; // outlives whom it listens to
  WClrPalette palette;
  Fill(palette, 1);
  palette.RegisterListener(listener);
  palette.SetPaletteName(L"Other");
  EXPECT_EQ(listener.heard, std::vector<std::wstring>{L"PaletteName"});
  EXPECT_EQ(palette.GetPaletteName(), L"Other");
  EXPECT_EQ(palette.GetCaption_Property(), L"Other");
  EXPECT_FALSE(palette.IsChanged());
}

TEST(WClrPalette, ALockedPaletteRefusesEveryEdit)
{
  const std::vector<std::function<bool(WClrPalette &)>> edits = {
    [](auto &p) {
      return p.InsertColor(0, {kRed, L"r"}) >= 0;
    },
    [](auto &p) {
      return p.InsertColors(0, {{kRed, L"r"}});
    },
    [](auto &p) {
      return p.AddColor({kRed, L"r"}) >= 0;
    },
    [](auto &p) {
      return p.ChangeColor(0, {kRed, L"r"});
    },
    [](auto &p) { return p.ChangeColorName(0, L"r"); },
    [](auto &p) { return p.RemoveColor(0); },
    [](auto &p) { return p.RemoveAllColors(), false; },
    [](auto &p) { return p.MoveColor(0, 1); },
    [](auto &p) { return p.ClearPalette(), false; },
    [](auto &p) { return p.FlattenPages(), false; },
    [](auto &p) {
      int id;
      return p.AddColorSpace(L"Ink", {kRed}, false, id) != PaletteResult::Locked;
    },
    [](auto &p) {
      Colour colour;
      return p.AddSpotColor(LookupOf(L"Ink", kRed), colour) != PaletteResult::Locked;
    },
    [](auto &p) { return p.ConvertToProcess(2); },
    [](auto &p) { return p.ConvertToSpot(0); },
    [](auto &p) { return p.SetPaletteGuid(kStranger), false; },
    [](auto &p) { return p.SetPaletteSizeLimit(1), false; },
    [](auto &p) { return p.SortReverse(); },
    [](auto &p) { return p.SortColors(ZelClr::SortRGB, ColorSystem::ColorContext()); },
    [](auto &p) { return p.RestoreFromString(ZelUtl::WideFromUtf8(XmlOf(1))); },
  };
  WClrPalette palette;
  Fill(palette, 2);
  ASSERT_EQ(palette.AddColor({SpotOf(L"Gold", kGold), L"Gold"}), 2);
  palette.SetLocked(true);
  palette.SetChanged(false);
  const std::wstring before = palette.SaveAsString();
  for (std::size_t i = 0; i < edits.size(); ++i) {
    EXPECT_FALSE(edits[i](palette)) << i;
    EXPECT_EQ(palette.SaveAsString(), before) << i;
    EXPECT_FALSE(palette.IsChanged()) << i;
  }
  palette.SetLocked(false);
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_TRUE(edits[i](palette)) << i;
}

TEST(WClrPalette, TheSizeLimitCutsFromTheEndAndIsKept)
{
  WClrPalette palette;
  Fill(palette, 5);
  palette.SetPaletteSizeLimit(-5);
  EXPECT_EQ(palette.GetPaletteSizeLimit(), -1);
  EXPECT_FALSE(palette.IsChanged());
  EXPECT_TRUE(palette.CanAddMoreColors());
  palette.SetPaletteSizeLimit(3);
  EXPECT_EQ(NamesOf(palette), (std::vector<std::wstring>{L"0", L"1", L"2"}));
  EXPECT_FALSE(palette.CanAddMoreColors());
  EXPECT_EQ(palette.AddColor({kRed, L"r"}), -1);
  Colour colour;
  EXPECT_EQ(palette.AddSpotColor(LookupOf(L"Ink", kRed), colour), PaletteResult::Full);
  ASSERT_TRUE(palette.RemoveColor(0));
  EXPECT_FALSE(palette.InsertColors(0, {{kRed, L"r"}, {kRed, L"r"}})) << "all or none";
  EXPECT_EQ(palette.GetPaletteSize(), 2);
  EXPECT_EQ(palette.AddColor({kRed, L"r"}), 2);
  WClrPalette again;
  ASSERT_TRUE(again.RestoreFromString(palette.SaveAsString()));
  EXPECT_EQ(again.GetPaletteSizeLimit(), -1) << "its own stays";
}

// --- Editing --------------------------------------------------------------------------------------------------------

RC_GTEST_PROP(WClrPaletteProperty, RandomEditsDoWhatTheyDoToAList,
              (std::vector<std::tuple<std::uint8_t, int, int>> edits))
{
  struct Item
  {
    Colour color;
    std::wstring name;
  };
  std::vector<Item> model;
  WClrPalette palette;
  palette.SetPaletteGuid(kGuid);
  int made = 0;
  for (const auto &[kind, rawFirst, rawSecond] : edits) {
    const int size = static_cast<int>(model.size());
    const int first = rawFirst % (size + 2); // often just outside
    const int second = rawSecond % (size + 2);
    const auto valid = [size](int i) { return i >= 0 && i < size; };
    const Item item{Colour::MakeRGB(static_cast<std::uint8_t>(made), 1, 2), std::to_wstring(++made % 7)};
    const auto at = [&](int i) { return model.begin() + i; };
    switch (kind % 7) {
    case 0:
      RC_ASSERT(palette.InsertColor(first, {item.color, item.name}) == (first >= 0 && first <= size ? first : -1));
      if (first >= 0 && first <= size)
        model.insert(at(first), item);
      break;
    case 1:
      RC_ASSERT(palette.RemoveColor(first) == valid(first));
      if (valid(first))
        model.erase(at(first));
      break;
    case 2:
      RC_ASSERT(palette.MoveColor(first, second) == (valid(first) && valid(second)));
      if (valid(first) && valid(second)) {
        const Item moved = model[static_cast<std::size_t>(first)];
        model.erase(at(first));
        model.insert(at(second), moved);
      }
      break;
    case 3:
      RC_ASSERT(palette.ChangeColor(first, {item.color, item.name}) == valid(first));
      if (valid(first))
        *at(first) = item;
      break;
    case 4:
      RC_ASSERT(palette.ChangeColorName(first, item.name) == valid(first));
      if (valid(first))
        at(first)->name = item.name;
      break;
    case 5:
      RC_ASSERT(palette.InsertColors(first, {{item.color, item.name}, {item.color, L"twin"}}) ==
                (first >= 0 && first <= size));
      if (first >= 0 && first <= size) {
        model.insert(at(first), {item.color, L"twin"});
        model.insert(at(first), item);
      }
      break;
    default:
      RC_ASSERT(palette.SortReverse());
      std::reverse(model.begin(), model.end());
      break;
    }
    RC_ASSERT(palette.GetPaletteSize() == static_cast<int>(model.size()));
    for (std::size_t i = 0; i < model.size(); ++i) {
      RC_ASSERT(palette.GetColorSpec(static_cast<int>(i)) == model[i].color);
      RC_ASSERT(palette.GetColorName(static_cast<int>(i)) == model[i].name);
      const auto firstOf = std::find_if(model.begin(), model.end(), [&](const Item &m) {
        return m.name == model[i].name && m.color == model[i].color;
      });
      RC_ASSERT(palette.GetColorIndex(model[i].color, model[i].name) == firstOf - model.begin());
    }
  }
}

TEST(WClrPalette, HoldsWhateverColourStatesOne)
{
  for (const Colour &colour : tests::NastyColours()) {
    WClrPalette palette;
    Fill(palette, 2);
    const int index = palette.InsertColor(1, {colour, L"it"});
    SCOPED_TRACE(testing::PrintToString(colour));
    ASSERT_EQ(palette.GetPaletteSize(), index < 0 ? 2 : 3);
    if (index < 0)
      continue;
    EXPECT_NE(colour.GetType(), Model::DeviceN);
    WClrPalette again;
    ASSERT_TRUE(again.RestoreFromString(palette.SaveAsString()));
    EXPECT_EQ(again.GetColorSpec(1), palette.GetColorSpec(1));
    EXPECT_EQ(again.GetProcessColorSpec(1), palette.GetProcessColorSpec(1));
    if (!colour.IsSpot()) {
      EXPECT_EQ(palette.GetColorIndex(colour), palette.GetColorIndex(palette.GetColorSpec(1)));
    }
  }
}

TEST(WClrPalette, ASpotColourJoinsTheInkOfItsName)
{
  WClrPalette palette;
  palette.SetPaletteGuid(kGuid);
  ASSERT_TRUE(palette.InsertColors(0, {{SpotOf(L"Gold", kGold, 100), L"Gold"},
                                       {SpotOf(L"Gold", kGold, 50), L"Pale gold"},
                                       {SpotOf(L"Bob's", kRed), L""}}));
  EXPECT_EQ(NamesOf(palette), (std::vector<std::wstring>{L"Gold", L"Pale gold", L"Bob's"}));
  const int gold = palette.GetColorID(0);
  EXPECT_EQ(palette.GetColorID(1), gold);
  EXPECT_NE(palette.GetColorID(2), gold);
  EXPECT_EQ(palette.GetColorSpaceColorID(L"Bobs"), palette.GetColorID(2));
  EXPECT_EQ(palette.GetXmlPalette().GetColor(0).originalPalette, kStranger);

  // Of the same name, with another look and from another palette: still that ink. Under another name: a new one.
  EXPECT_EQ(palette.AddColor({SpotOf(L"Gold", kRed, 20), L"Gold"}), 3);
  EXPECT_EQ(palette.GetColorID(3), gold);
  EXPECT_EQ(palette.GetColorSpec(3).GetDensity(), 20);
  EXPECT_EQ(palette.AddColor({SpotOf(L"Bob's", kRed, 20), L"twenty"}), 4);
  EXPECT_EQ(palette.GetColorID(4), palette.GetColorID(2));
  EXPECT_EQ(palette.AddColor({SpotOf(L"Silver", kGold), L"Gold"}), 5) << "called like a colour, but of another ink";
  EXPECT_NE(palette.GetColorID(5), gold);
  // One of the palette's own is of its own ink, whatever it is called.
  EXPECT_EQ(palette.AddColor({palette.GetColorSpec(5), L"Gold"}), 6);
  EXPECT_EQ(palette.GetColorID(6), palette.GetColorID(5));
  EXPECT_EQ(palette.ColorIDToIndices(kGuid, gold), (std::vector<int>{0, 1, 3}));
  EXPECT_TRUE(palette.ColorIDToIndices(kStranger, gold).empty());
  EXPECT_EQ(palette.GetColorIndex(kGuid, gold), 0);
  EXPECT_TRUE(palette.IsValidColorID(kGuid, gold));
  EXPECT_FALSE(palette.IsValidColorID(kStranger, gold) || palette.IsValidColorID(kGuid, 99) ||
               palette.IsValidColorID(kGuid, -1));

  // A process colour of a palette of inks is an ink once it has a name; without a look there is none.
  Colour ink = kRed;
  ink.SetPaletteType(23);
  EXPECT_EQ(palette.AddColor({ink, L"HKS 13"}), 7);
  EXPECT_EQ(palette.GetColorSpec(7).GetType(), Model::Spot);
  EXPECT_EQ(palette.AddColor({Colour::MakeSPOT(kStranger, 5, 100, nullptr), L"Unknown"}), -1);

  // An ink whose colours are gone keeps its ID, and has it still when it comes back.
  const int silver = palette.GetColorID(5);
  ASSERT_TRUE(palette.RemoveColor(6) && palette.RemoveColor(5));
  EXPECT_EQ(palette.ColorIDToIndex(kGuid, silver), -1);
  Colour colour;
  ASSERT_TRUE(palette.GetPaletteColorFromID(kGuid, silver, 30, colour));
  EXPECT_EQ(colour.GetSpotColorName(), L"Silver");
  EXPECT_EQ(palette.AddColor({SpotOf(L"Silver", kGold, 30), L""}), 6);
  EXPECT_EQ(palette.GetColorSpec(6), colour) << "the same definition, too";
}

TEST(WClrPalette, InksAreCalledLikeNoOtherAndLikeNoModel)
{
  WClrPalette palette;
  palette.SetPaletteGuid(kGuid);
  const auto add = [&](const wchar_t *name, const Colour &look) {
    Colour colour;
    const PaletteResult result = palette.AddSpotColor(LookupOf(name, look), colour);
    ZelClr::ColorSpaceInfo info;
    palette.GetColorSpaceInfo(colour.GetComponent<std::int16_t>(0), info);
    return std::pair(result, info.name);
  };
  using Answer = std::pair<PaletteResult, std::wstring>;
  EXPECT_EQ(add(L"RGB", kRed), Answer(PaletteResult::Ok, L"RGB (1)"));
  EXPECT_EQ(add(L"RGB", kRed), Answer(PaletteResult::AlreadyThere, L"RGB (1)"));
  EXPECT_EQ(add(L"RGB", kGold), Answer(PaletteResult::Ok, L"RGB (2)"));
  EXPECT_EQ(add(L"RGB", kGold), Answer(PaletteResult::AlreadyThere, L"RGB (2)"));
  EXPECT_EQ(add(L"R'GB'", kRed), Answer(PaletteResult::AlreadyThere, L"RGB (1)"));
  EXPECT_EQ(add(L"CMYK", kGold), Answer(PaletteResult::Ok, L"CMYK (1)"));
  EXPECT_EQ(add(L"Ink", kGold), Answer(PaletteResult::Ok, L"Ink"));
  EXPECT_EQ(add(L"'''", kGold).first, PaletteResult::BadArgument);
  EXPECT_EQ(add(L"Look", Colour()).first, PaletteResult::BadArgument);
  EXPECT_EQ(palette.GetPaletteSize(), 4);
  // By the colour's name, which is not the ink's.
  EXPECT_EQ(palette.AddColor({SpotOf(L"RGB", kRed, 30), L"RGB"}), 4);
  EXPECT_EQ(palette.GetColorID(4), palette.GetColorID(0));

  int id = 0;
  EXPECT_EQ(palette.AddColorSpace(L"Ink", {kRed, kGold, Colour::MakeCMYK(1, 2, 3, 4)}, true, id), PaletteResult::Ok);
  ZelClr::ColorSpaceInfo info;
  ASSERT_TRUE(palette.GetColorSpaceInfo(id, info));
  EXPECT_EQ(info.name, L"Ink (1)");
  EXPECT_TRUE(info.process);
  EXPECT_EQ(info.definitions, (std::vector<Colour>{kRed, kGold})) << "one look for each model";
  EXPECT_EQ(palette.AddColorSpace(L"", {kRed}, false, id), PaletteResult::BadArgument);
  EXPECT_EQ(palette.AddColorSpace(L"x", {}, false, id), PaletteResult::BadArgument);
  EXPECT_EQ(palette.AddColorSpace(L"x", {kRed, Colour()}, false, id), PaletteResult::BadArgument);

  std::set<int> ids;
  for (std::size_t i = 0; i < palette.GetXmlPalette().GetColorSpaceCount(); ++i)
    ids.insert(palette.GetXmlPalette().GetColorSpace(i).fixedID);
  EXPECT_EQ(ids.size(), palette.GetXmlPalette().GetColorSpaceCount()) << "each has its own ID";
}

TEST(WClrPalette, ColourIDsEndWhereRecordsEnd)
{
  WClrPalette palette;
  ASSERT_TRUE(palette.RestoreFromString(L"<palette><colorspaces><cs name=\"high\" fixedID=\"32767\"/>"
                                        L"<cs name=\"beyond\" fixedID=\"2000000000\"/><cs name=\"one\" fixedID=\"1\"/>"
                                        L"</colorspaces></palette>"));
  int id = 0;
  ASSERT_EQ(palette.AddColorSpace(L"a", {kRed}, false, id), PaletteResult::Ok);
  EXPECT_EQ(id, 2) << "the first that is free";
  ASSERT_EQ(palette.AddColorSpace(L"b", {kRed}, false, id), PaletteResult::Ok);
  EXPECT_EQ(id, 3);
  std::vector<PaletteEntry> many;
  for (int i = 0; i < 32'767; ++i)
    many.push_back({SpotOf(std::to_wstring(i).c_str(), kRed), L""});
  EXPECT_FALSE(palette.InsertColors(0, many)) << "more than there are IDs";
  EXPECT_EQ(palette.GetXmlPalette().GetColorSpaceCount(), 5u);
  many.resize(32'762);
  EXPECT_TRUE(palette.InsertColors(0, many));
  EXPECT_EQ(palette.AddColorSpace(L"c", {kRed}, false, id), PaletteResult::Full);
}

TEST(WClrPalette, RefusesDeviceNAndReferencesIntoNowhere)
{
  WClrPalette palette;
  Fill(palette, 2);
  const auto deviceN = tests::DeviceNColour(DeviceN_Process_CMYK, 40);
  Colour own = palette.GetColorSpec(1);
  own.SetPaletteGuid(kGuid);
  Colour strange = own;
  strange.SetPaletteGuid(kStranger);
  for (const Colour &refused :
       {deviceN, Colour::MakeReference(deviceN), Colour::MakeReference(strange), Colour::MakeReference(kRed), Colour()})
  {
    EXPECT_FALSE(palette.ChangeColor(0, {refused, L"x"})) << testing::PrintToString(refused);
    EXPECT_EQ(palette.InsertColor(0, {refused, L"x"}), -1);
    EXPECT_FALSE(palette.InsertColors(0, {{kRed, L"a"}, {refused, L"x"}}));
  }
  EXPECT_FALSE(palette.ChangeColor(-1, {kRed, L"x"}) || palette.ChangeColor(2, {kRed, L"x"}));
  EXPECT_EQ(NamesOf(palette), (std::vector<std::wstring>{L"0", L"1"}));
  EXPECT_TRUE(palette.ChangeColor(0, {Colour::MakeReference(own), L"x"}));
  EXPECT_EQ(palette.GetColorSpec(0), own);

  Colour indexed;
  ASSERT_TRUE(palette.GetIndexedPaletteColor(1, indexed));
  EXPECT_EQ(palette.GetColorIndex(indexed), 1);
  EXPECT_EQ(palette.AddColor({indexed, L"again"}), 2);
  EXPECT_EQ(palette.GetColorSpec(2), palette.GetColorSpec(1));
}

class PalettesOfThePaletteManager : public tests::PaletteFolders
{};

TEST_F(PalettesOfThePaletteManager, AColourOfAnotherPaletteIsTakenAsItStandsThere)
{
  const std::wstring path = Write(custom + "inks.xml", 1,
                                  "<colorspaces><cs name=\"Gold\" fixedID=\"7\"><color cs=\"CMYK\" "
                                  "tints=\"0,0.2,1,0.2\"/></cs></colorspaces><colors><page><color cs=\"Gold\" "
                                  "name=\"Gold\"/><color cs=\"RGB\" name=\"r\" tints=\"1,0,0\"/></page></colors>");
  const WClrPalette *const inks = Manager().LoadPalette(path);
  ASSERT_NE(inks, nullptr);
  const ZelUtils::Guid guid = tests::GuidOf(1);
  WClrPalette palette;
  palette.SetPaletteGuid(kGuid);

  Colour indexed = Colour::CLRMakeIndex(1);
  indexed.SetPaletteGuid(guid);
  Colour userInk = Colour::MakeIndexedUserInks(7, 30);
  userInk.SetPaletteGuid(guid);
  const Colour unresolved = Colour::MakeSPOT(guid, 7, 60, nullptr);
  const Colour plain = inks->GetColorSpec(1);
  Colour stamped = plain;
  stamped.SetPaletteGuid(guid);
  for (const Colour &color : {indexed, userInk, unresolved, Colour::MakeReference(unresolved),
                              Colour::MakeReference(stamped), Colour::MakeReference(inks->GetColorSpec(0))})
    EXPECT_GE(palette.AddColor({color, L""}), 0) << testing::PrintToString(color);
  ASSERT_EQ(palette.GetPaletteSize(), 6);
  EXPECT_EQ(palette.GetXmlPalette().GetColorSpaceCount(), 1u) << "one ink";
  const int densities[] = {100, 30, 60, 60, 100, 100};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(palette.GetColorSpec(i).GetDensity(), densities[i]) << i;
    EXPECT_EQ(palette.GetXmlPalette().GetColor(static_cast<std::size_t>(i)).originalPalette, guid);
  }
  EXPECT_EQ(palette.GetColorSpec(4), plain);
  EXPECT_EQ(palette.GetColorSpec(5).GetSpotColorName(), L"Gold");
  EXPECT_EQ(palette.GetColorIndex(indexed), 0);
  indexed = Colour::CLRMakeIndex(2);
  indexed.SetPaletteGuid(guid);
  EXPECT_EQ(palette.AddColor({indexed, L""}), -1);
}

TEST(WClrPalette, TurnsInksIntoProcessColoursAndBack)
{
  WClrPalette palette;
  palette.SetPaletteGuid(kGuid);
  palette.AddColor({SpotOf(L"Gold", Colour::MakeCMYK(0, 20, 100, 20), 50), L"Pale"});
  EXPECT_FALSE(palette.ConvertToSpot(0));
  ASSERT_TRUE(palette.ConvertToProcess(0));
  EXPECT_EQ(palette.GetColorSpec(0), Colour::MakeCMYK(0, 10, 50, 10));
  EXPECT_EQ(palette.GetColorName(0), L"Pale");
  EXPECT_EQ(palette.GetXmlPalette().GetColorSpaceCount(), 0u);
  EXPECT_FALSE(palette.ConvertToProcess(0));
  ASSERT_TRUE(palette.ConvertToSpot(0));
  EXPECT_EQ(palette.GetColorSpec(0).GetType(), Model::Spot);
  EXPECT_EQ(palette.GetColorSpec(0).GetSpotColorName(), L"Pale");
  EXPECT_EQ(palette.GetProcessColorSpec(0), Colour::MakeCMYK(0, 10, 50, 10));
  palette.AddColor({kRed, L""});
  ASSERT_TRUE(palette.ConvertToSpot(1));
  EXPECT_EQ(palette.GetColorName(1), L"R255 G0 B0") << "an ink needs a name";
  palette.AddColor({Colour::MakeCMYK(0, 10, 50, 10), L"Pale"});
  ASSERT_TRUE(palette.ConvertToSpot(2));
  EXPECT_EQ(palette.GetColorID(2), palette.GetColorID(0)) << "the ink of this name and look is there";
  EXPECT_FALSE(palette.ConvertToSpot(3) || palette.ConvertToProcess(-1));
}

TEST(WClrPalette, TellsOfItsColours)
{
  WClrPalette palette;
  ASSERT_TRUE(palette.RestoreFromString(
    L"<palette guid=\"" + kGuid.ToWideText() +
    L"\" name=\"n\" prefix=\"MY \"><colorspaces>"
    L"<cs name=\"Ink\" fixedID=\"12\" version=\"3\"><color cs=\"LAB\" tints=\"0.6,0.5,0.6\"/>"
    L"<color cs=\"CMYK\" tints=\"0,0.2,1,0\"/></cs><cs name=\"Mix\" fixedID=\"13\" process=\"true\">"
    L"<color cs=\"RGB\" tints=\"1,0,0\"/></cs></colorspaces><colors><page>"
    L"<color cs=\"Ink\" name=\"Ink\" resid=\"r\" tints=\"0.4\"/><color cs=\"Mix\" name=\"Mix\"/>"
    L"<color cs=\"Gray\" tints=\"0.2\"/></page></colors><localization><resource id=\"r\"><xx>Tinte</xx></resource>"
    L"</localization></palette>"));
  EXPECT_EQ(NamesOf(palette), (std::vector<std::wstring>{L"MY Tinte", L"MY Mix", L""}));
  EXPECT_EQ(palette.GetColorNamePrefix(), L"MY ");
  for (const wchar_t *name : {L"MY Tinte", L"Tinte", L"Ink"})
    EXPECT_EQ(palette.GetColorIndex(name), 0) << testing::PrintToString(std::wstring(name));
  EXPECT_EQ(palette.GetColorIndex(L"MY Mix"), 1);
  EXPECT_EQ(palette.GetColorIndex(L"None"), -1);
  EXPECT_EQ(palette.GetColorVersion(0), 3);
  EXPECT_EQ(palette.GetColorVersion(2), 0);
  EXPECT_EQ(palette.GetColorID(0), 12);
  EXPECT_EQ(palette.GetColorID(2), -1);
  EXPECT_TRUE(palette.IsLAB() && palette.IsCMYK() && palette.IsRGB());
  EXPECT_FALSE(palette.IsHex());
  Colour look = Colour::MakeLAB(153, 0, 25);
  WClrConvert::ApplyDensity(&look, 40);
  EXPECT_EQ(palette.GetProcessColorSpec(0), look);
  EXPECT_EQ(palette.GetProcessColorSpec(1), kRed);
  EXPECT_EQ(palette.GetProcessColorSpec(2), Colour::MakeGRAY(51));
  std::wstring name;
  EXPECT_TRUE(palette.GetColorSpaceInfo(13, name));
  EXPECT_EQ(name, L"Mix");
  EXPECT_FALSE(palette.GetColorSpaceInfo(14, name));

  Colour ink;
  ASSERT_TRUE(palette.GetUserInksColor(0, ink));
  EXPECT_EQ(ink.GetType(), Model::IndexedUserInk);
  EXPECT_EQ(ink.GetDensity(), 40);
  EXPECT_EQ(ink.GetPaletteGuid(), kGuid);
  EXPECT_EQ(palette.AddColor({ink, L"as an ink"}), 3);
  EXPECT_EQ(palette.GetColorSpec(3), palette.GetColorSpec(0));
  EXPECT_FALSE(palette.GetUserInksColor(2, ink));

  // Out of range, everything answers and nothing happens.
  for (const int index : {-1, 4, 1 << 30}) {
    Colour colour = kRed;
    EXPECT_TRUE(palette.GetColorSpec(index).IsInvalid() && palette.GetProcessColorSpec(index).IsInvalid());
    EXPECT_FALSE(palette.GetPaletteColor(index, colour) || palette.GetPaletteColorAsProcess(index, colour) ||
                 palette.GetIndexedPaletteColor(index, colour) || palette.GetUserInksColor(index, colour) ||
                 palette.GetPaletteColorFromID(kGuid, index, 1, colour));
    EXPECT_EQ(colour, kRed);
    EXPECT_EQ(palette.GetColorName(index), L"");
    EXPECT_EQ(palette.GetColorVersion(index) + palette.GetColorFrequencyOrder(index), 0);
    EXPECT_EQ(palette.GetCellIndexFromColorIndex(index), -1);
    palette.SetColorFrequencyOrder(index, 1);
  }
}

TEST(WClrPalette, CellsHaveGapsWhereAPageEndsWithinARow)
{
  std::string xml = "<palette><colors>";
  bool isFirst = true;
  for (const int size : {4, 3, 1, 5}) {
    xml += isFirst ? "<page width=\"4\">" : "<page>";
    isFirst = false;
    for (int i = 0; i < size; ++i)
      xml += "<color cs=\"Gray\" tints=\"0\"/>";
    xml += "</page>";
  }
  WClrPalette palette;
  EXPECT_FALSE(palette.HasGaps());
  EXPECT_EQ(palette.GetColorIndexFromCellIndex(0), -1);
  ASSERT_TRUE(palette.RestoreFromString(ZelUtl::WideFromUtf8(xml + "</colors></palette>")));
  EXPECT_EQ(palette.GetGridWidth(), 4);
  EXPECT_EQ(palette.GetNumPages(), 4);
  EXPECT_TRUE(palette.HasGaps());
  const int cells[] = {0, 1, 2, 3, 4, 5, 6, -1, 7, -1, -1, -1, 8, 9, 10, 11, 12, -1, -1};
  for (int cell = 0; cell < static_cast<int>(std::size(cells)); ++cell) {
    EXPECT_EQ(palette.GetColorIndexFromCellIndex(cell), cells[cell]) << cell;
    if (cells[cell] >= 0) {
      EXPECT_EQ(palette.GetCellIndexFromColorIndex(cells[cell]), cell);
    }
  }
  EXPECT_EQ(palette.GetColorIndexFromCellIndex(-1), -1);
  palette.FlattenPages();
  EXPECT_FALSE(palette.HasGaps());
  EXPECT_EQ(palette.GetNumPages(), 1);
  EXPECT_EQ(palette.GetCellIndexFromColorIndex(12), 12);
}

TEST(WClrPalette, SortsByFrequencyAndNameAndLeavesUnknownOrdersAlone)
{
  WClrPalette palette;
  Fill(palette, 12);
  const auto names = NamesOf(palette);
  EXPECT_FALSE(palette.SortColors(7, ColorSystem::ColorContext()));
  EXPECT_FALSE(palette.SortColors(-1, ColorSystem::ColorContext()));
  EXPECT_EQ(NamesOf(palette), names);
  for (int i = 0; i < 12; ++i)
    palette.SetColorFrequencyOrder(i, i == 5 ? -1 : i / 6);
  ASSERT_TRUE(palette.SortReverse());
  ASSERT_TRUE(palette.SortByFrequencyOrder());
  EXPECT_EQ(palette.GetColorName(0), L"5");
  EXPECT_EQ(palette.GetColorName(1), L"4") << "equal ones stay as they were";
  ASSERT_TRUE(palette.SortByName());
  EXPECT_EQ(NamesOf(palette), names) << "10 after 9";
  ASSERT_TRUE(palette.SortReverse());
  ASSERT_TRUE(palette.SortColors(ZelClr::SortRGB, ColorSystem::ColorContext()));
  EXPECT_EQ(NamesOf(palette), names);
}

TEST(WClrPalette, FindsTheColourThatDiffersLeast)
{
  // Against a look at every colour, in the order of the palette: pruning and caching change no answer.
  std::mt19937 random(7);
  const auto byte = [&] { return static_cast<std::uint8_t>(random() % 64 * 4); };
  std::vector<PaletteEntry> entries;
  std::vector<std::optional<ZelClr::Formulas::Lab>> labs;
  for (int i = 0; i < 3000; ++i) {
    entries.push_back({Colour::MakeRGB(byte(), byte(), byte()), L""});
    labs.push_back(WClrConvert::GetLab(entries.back().color));
  }
  WClrPalette palette;
  ASSERT_TRUE(palette.InsertColors(0, entries));
  const ColorSystem::ColorContext formulas(nullptr, nullptr, nullptr, ColorSystem::ColorModel::Rgb,
                                           ColorSystem::RenderingIntent::RelativeColorimetric);
  const auto distance = [&](int index, const ZelClr::Formulas::Lab &wanted) {
    return ZelClr::Formulas::Ciede2000(*labs[static_cast<std::size_t>(index)], wanted);
  };
  for (int i = 0; i < 300; ++i) {
    const Colour wanted = i % 3 == 0 ? entries[random() % 3000].color : Colour::MakeRGB(byte(), byte(), byte());
    const auto lab = *WClrConvert::GetLab(wanted);
    double least = 1e9;
    for (int other = 0; other < 3000; ++other)
      least = std::min(least, distance(other, lab));
    const int found = palette.FindClosestColor(wanted, formulas);
    ASSERT_GE(found, 0);
    // Two that differ by less than the profiles' rounding may change places.
    EXPECT_NEAR(distance(found, lab), least, 0.02) << testing::PrintToString(wanted);
    if (i % 3 == 0) {
      EXPECT_EQ(found, palette.GetColorIndex(wanted)) << "the first of equal ones";
    }
  }
  // An edit is seen at once, colours without a look never win, and an ink counts as it looks.
  WClrPalette few;
  few.SetPaletteGuid(kGuid);
  EXPECT_EQ(few.FindClosestColor(kRed, formulas), -1);
  few.AddColor({Colour::MakeRGB(0, 0, 255), L"blue"});
  EXPECT_EQ(few.FindClosestColor(kRed, formulas), 0);
  few.AddColor({SpotOf(L"Ink", kRed), L"Ink"});
  EXPECT_EQ(few.FindClosestColor(Colour::MakeRGB(250, 5, 5), formulas), 1);
  EXPECT_EQ(few.FindClosestColor(SpotOf(L"Pale", kRed, 60), formulas), 1);
  EXPECT_EQ(few.FindClosestColor(Colour(), formulas), -1);
  EXPECT_EQ(few.FindClosestColor(Colour::MakeSPOT(kStranger, 1, 100, nullptr), formulas), -1);
}

TEST(GeneratedColorName, NamesComponentsInShort)
{
  const std::pair<Colour, const wchar_t *> rows[] = {
    {Colour::MakeCMYK(0, 100, 5, 0), L"C0 M100 Y5 K0"},
    {Colour::MakeCMYK100(1, 2, 3, 4), L"C1 M2 Y3 K4"},
    {Colour::MakeCMYK255(0, 255, 128, 1), L"C0 M100 Y50 K0"},
    {Colour::MakeCMY(255, 0, 51), L"C100 M0 Y20"},
    {Colour::MakeRGB(255, 128, 0), L"R255 G128 B0"},
    {Colour::MakeBGRA(1, 2, 3, 4), L"R1 G2 B3"},
    {Colour::MakeRGB48(65535, 32896, 0), L"R255 G128 B0"},
    {Colour::MakeSCRGB(1, 0.5f, -1), L"R255 G128 B-255"},
    {Colour::MakeHSB(120, 128, 255), L"H120 S50 B100"},
    {Colour::MakeHLS(359, 255, 0), L"H359 L100 S0"},
    {Colour::MakeLAB(128, 21, -42), L"L50 A10 B-20"},
    {Colour::MakeLAB255(128, 138, 108), L"L50 A10 B-20"},
    {Colour::MakeGRAY(128), L"K50 %"},
    {Colour::MakeGRAY16(0), L"K100 %"},
    {Colour::MakeBW(1), L"K0 %"},
    {Colour::MakeHEX(255, 0, 51, 0, 0, 102), L"C100 M0 Y20 K0 O0 G40"},
    {Colour::MakeREGCOLOR(), L"Registration"},
    {Colour::MakeUserInks(1, 2, 3, 50), L"R1 G2 B3 50 %"},
    {SpotOf(L"Gold", kGold), L"Gold"},
    {Colour::MakeReference(SpotOf(L"Gold", kGold, 50)), L"Gold 50 %"},
    {Colour::MakeSPOT(kStranger, 17, 50, nullptr), L"Spot 17 50 %"},
    {Colour::MakePANTONE(185, 100), L"Pantone 185"},
    {Colour(), L""},
  };
  for (const auto &[colour, name] : rows)
    EXPECT_EQ(ZelClr::GeneratedColorName(colour), name) << testing::PrintToString(colour);
  for (const Colour &colour : tests::NastyColours())
    EXPECT_LE(ZelClr::GeneratedColorName(colour).size(), 80u);
}
