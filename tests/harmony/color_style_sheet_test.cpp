// The style sheet: styles, their holders, and harmonies that move.
#include "tests/harmony/support/documents.h"
#include "tests/support/colours.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/harmony/color_style_sheet.h"
#include "zelclr/harmony/harmony_drag.h"
#include "zelclr/harmony/wheel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

using namespace ZelClr;
using Colour = CLR_COLORSPEC;
using HSB = Harmony::HSB;
using RuleType = Harmony::RuleType;
using Texts = std::vector<std::wstring>;
namespace Model = ZelClr::ClrModel;

namespace {

struct Listener : ZelUtl::IPropertyListener
{
  void OnPropertiesChanged(std::wstring_view names) override { heard.emplace_back(names); }
  Texts Heard() { return std::exchange(heard, {}); }
  Texts heard;
};

/// A colour of full brightness at a hue of the wheel; multiples of 30 come back exactly.
Colour AtHue(int wheelHue, int saturation = 255)
{
  return HSB(wheelHue, saturation, 255).GetColorSpec(Model::Hsb);
}

struct StyleSheet : tests::Documents
{
  StyleSheet() : palette(Manager().CreateStylesPalette(document)), sheet(palette)
  {
    host.styled = &document;
    host.styles = &sheet;
    sheet.RegisterListener(listener);
  }
  ~StyleSheet() override { sheet.SetStylesPalette(nullptr); }

  /// Styles "0", "1", … at these hues, in one harmony.
  void MakeHarmony(RuleType rule, const std::vector<int> &hues)
  {
    const int harmony = sheet.CreateHarmony(-1);
    for (const int hue : hues) {
      const std::wstring name = std::to_wstring(sheet.GetColorStyleCount());
      ASSERT_TRUE(sheet.AddColorStyle(name, AtHue(hue)));
      ASSERT_TRUE(sheet.AddToHarmony(static_cast<std::size_t>(harmony), name));
    }
    ASSERT_TRUE(sheet.SetHarmonyRule(static_cast<std::size_t>(harmony), rule));
    listener.Heard();
  }
  std::vector<int> Hues(std::size_t harmony = 0)
  {
    std::vector<int> hues;
    for (const auto &position : sheet.GetPositions(harmony))
      hues.push_back(position ? position->hue : -1);
    return hues;
  }
  /// As the records say that all see.
  std::vector<int> RecordHues()
  {
    std::vector<int> hues;
    for (const std::wstring &name : sheet.GetHarmony(0)->GetColors())
      hues.push_back(HSB(*sheet.FindColorStyle(name)).hue);
    return hues;
  }

  ZelUtl::Document document;
  WClrPalette *palette;
  ColorStyleSheet sheet;
  Listener listener;
};

// --- Styles ---------------------------------------------------------------------------------------------------------

TEST_F(StyleSheet, SharesItsColoursWithAllWhoHoldThem)
{
  ASSERT_TRUE(sheet.AddColorStyle(L"Brand", Colour::MakeRGB(10, 20, 30)));
  EXPECT_FALSE(sheet.AddColorStyle(L"bRAND", Colour::MakeRGB(1, 2, 3)));
  EXPECT_FALSE(sheet.AddColorStyle(L"", Colour::MakeRGB(1, 2, 3)));
  EXPECT_FALSE(sheet.AddColorStyle(L"N", tests::DeviceNColour(DeviceN_Process_CMYK, 10)));
  EXPECT_FALSE(sheet.AddColorStyle(L"I", Colour()));
  EXPECT_FALSE(sheet.AddColorStyle(L"P", Colour::MakeRGB(1, 2, 3), 5));
  const Colour holder = *sheet.FindColorStyle(L"BRAND");
  ASSERT_TRUE(holder.IsReference());
  EXPECT_EQ(sheet.NameOfColorStyle(holder), L"Brand");
  EXPECT_EQ(sheet.NameOfColorStyle(Colour::MakeReference(holder.Resolved())), L"") << "a reference of its own";
  EXPECT_EQ(sheet.NameOfColorStyle(Colour()), L"");

  ASSERT_TRUE(sheet.ChangeColorStyle(L"brand", Colour::MakeCMYK255(1, 2, 3, 4)));
  EXPECT_EQ(holder.GetType(), Model::Cmyk255);
  ASSERT_TRUE(sheet.RenameColorStyle(L"brand", L"House"));
  EXPECT_EQ(sheet.NameOfColorStyle(holder), L"House");
  EXPECT_EQ(sheet.FindColorStyle(L"Brand"), nullptr);
  ASSERT_TRUE(sheet.AddColorStyle(L"Alias", holder));
  ASSERT_TRUE(sheet.ChangeColorStyle(L"House", Colour::MakeRGB(1, 1, 1)));
  EXPECT_EQ(sheet.FindColorStyle(L"Alias")->GetType(), Model::Cmyk255) << "made of a reference's colour";
  EXPECT_FALSE(sheet.RenameColorStyle(L"House", L"ALIAS"));
  EXPECT_TRUE(sheet.RenameColorStyle(L"House", L"HOUSE")) << "its own name in capitals";
  EXPECT_EQ(sheet.GetColorStyleNames(), (Texts{L"HOUSE", L"Alias"}));
  EXPECT_EQ(sheet.UniqueColorStyleName(L"house"), L"house (2)");

  ASSERT_TRUE(sheet.RemoveColorStyle(L"house"));
  EXPECT_EQ(holder.GetType(), Model::Rgb255) << "as it was";
  EXPECT_EQ(sheet.NameOfColorStyle(holder), L"");
  EXPECT_FALSE(sheet.RemoveColorStyle(L"house"));
  palette->SetLocked(true);
  EXPECT_FALSE(sheet.AddColorStyle(L"X", Colour::MakeRGB(1, 2, 3)));
  EXPECT_FALSE(sheet.ChangeColorStyle(L"Alias", Colour::MakeRGB(1, 2, 3)));
  EXPECT_FALSE(sheet.RemoveColorStyle(L"Alias"));
}

TEST(StyleSheetAlone, IsWithoutAPaletteOnceThatIsGone)
{
  Listener listener; // outlives whom it listens to
  auto palette = std::make_unique<WClrPalette>();
  ColorStyleSheet sheet(palette.get());
  sheet.RegisterListener(listener);
  ASSERT_TRUE(sheet.AddColorStyle(L"A", AtHue(30)));
  ASSERT_EQ(sheet.GenerateHarmony(RuleType::Triad, L"A", 3), 0);
  const Colour holder = *sheet.FindColorStyle(L"A");
  HarmonyDrag drag(sheet, L"A");
  drag.MoveTo(HSB(90, 200, 200));
  listener.Heard();
  palette.reset();
  EXPECT_EQ(listener.Heard(), (Texts{L"ColorStyles,Harmonies"}));
  EXPECT_EQ(sheet.GetStylesPalette(), nullptr);
  EXPECT_EQ(sheet.GetColorStyleCount(), 0u);
  EXPECT_EQ(sheet.GetHarmony(0)->GetColorCount(), 0u);
  EXPECT_EQ(sheet.ExportJsonText(), "");
  EXPECT_FALSE(sheet.AddColorStyle(L"A", AtHue(30)));
  EXPECT_FALSE(drag.Finish());
  EXPECT_EQ(holder.GetType(), Model::Hsb) << "holders keep their colour";
  WClrPalette other;
  sheet.SetStylesPalette(&other);
  EXPECT_TRUE(sheet.AddColorStyle(L"A", AtHue(30)));
}

TEST_F(StyleSheet, FollowsWhatItsPaletteRefersTo)
{
  // A palette may hold references; they count as what they stand for, and are no news at every look.
  ASSERT_TRUE(sheet.AddColorStyle(L"A", AtHue(30)));
  ASSERT_GE(palette->AddColor({*sheet.FindColorStyle(L"A"), L"B"}), 0);
  listener.Heard();
  sheet.CreateHarmony(-1);
  EXPECT_EQ(listener.Heard(), (Texts{L"Harmonies"}));
}

TEST_F(StyleSheet, TellsOfEachOperationOnce)
{
  sheet.AddColorStyle(L"A", AtHue(10));
  EXPECT_EQ(listener.Heard(), (Texts{L"ColorStyles"}));
  sheet.ChangeColorStyle(L"A", AtHue(10));
  listener.Heard();
  sheet.AddColorStyle(L"a", AtHue(10));
  EXPECT_EQ(listener.Heard(), Texts()) << "refused";
  sheet.CreateHarmony(-1);
  EXPECT_EQ(listener.Heard(), (Texts{L"Harmonies"}));
  EXPECT_EQ(sheet.GenerateHarmony(RuleType::Triad, L"A", 3), 1);
  EXPECT_EQ(listener.Heard(), (Texts{L"Harmonies,ColorStyles"}));
  sheet.ChangeColorStyle(L"A", AtHue(50));
  EXPECT_EQ(listener.Heard(), (Texts{L"ColorStyles"})) << "three colours";
  sheet.SetExternalID(L"x");
  sheet.SetExternalID(L"x");
  EXPECT_EQ(listener.Heard(), (Texts{L"ExternalID"}));
  sheet.SetExternalColorStyle({L"A", L"1", L"B"});
  EXPECT_EQ(listener.Heard(), (Texts{L"ExternalColorStyles"}));
  palette->RemoveColor(palette->GetColorIndex(L"A"));
  EXPECT_EQ(listener.Heard(), (Texts{L"ColorStyles,Harmonies,ExternalColorStyles"}));
  palette->SetPaletteName(L"Other");
  EXPECT_EQ(listener.Heard(), Texts());
}

TEST_F(StyleSheet, FollowsItsPalette)
{
  MakeHarmony(RuleType::Triad, {0, 120, 240});
  const Colour holder = *sheet.FindColorStyle(L"1");
  sheet.SetExternalColorStyle({L"1", L"id", L"outer"});
  ASSERT_TRUE(palette->ChangeColorName(1, L"One"));
  EXPECT_EQ(sheet.NameOfColorStyle(holder), L"One") << "renamed there";
  EXPECT_EQ(sheet.GetHarmony(0)->GetColors(), (Texts{L"0", L"One", L"2"}));
  EXPECT_EQ(sheet.GetExternalColorStyles().front().alias, L"One");
  EXPECT_TRUE(sheet.FindColorStyle(L"OUTER")->IsSameReference(holder)) << "by its alias";
  EXPECT_TRUE(sheet.FindColorStyle(L"id")->IsSameReference(holder));

  ASSERT_TRUE(palette->ChangeColor(0, {AtHue(30), L"0"}));
  EXPECT_EQ(Hues(), (std::vector<int>{30, 150, 270})) << "a base takes its harmony along";
  ASSERT_TRUE(palette->ChangeColor(2, {AtHue(200), L"2"}));
  EXPECT_LE(std::abs(Hues()[2] - 200), 1) << "others go where they are put";
  ASSERT_TRUE(palette->SortReverse());
  EXPECT_EQ(sheet.GetColorStyleNames(), (Texts{L"2", L"One", L"0"}));
  EXPECT_EQ(sheet.NameOfColorStyle(holder), L"One");

  ASSERT_GE(palette->AddColor({Colour::MakeRGB(1, 2, 3), L"ONE"}), 0);
  ASSERT_GE(palette->AddColor({Colour::MakeRGB(1, 2, 3), L""}), 0);
  EXPECT_EQ(sheet.GetColorStyleCount(), 3u) << "neither a second of one name nor one without";
  const std::wstring saved = palette->SaveAsString();
  palette->RemoveAllColors();
  EXPECT_EQ(sheet.GetColorStyleCount(), 0u);
  EXPECT_EQ(sheet.GetHarmony(0)->GetColorCount(), 0u);
  ASSERT_TRUE(palette->RestoreFromString(saved));
  EXPECT_EQ(sheet.GetColorStyleCount(), 3u);
  sheet.SetStylesPalette(nullptr);
  EXPECT_EQ(sheet.GetColorStyleCount(), 0u);
}

TEST_F(StyleSheet, ResolvesWhatPalettesReferTo)
{
  WClrPalette *const colors = Manager().CreateDocumentPalette(document);
  ASSERT_TRUE(sheet.AddColorStyle(L"Head", Colour::MakeRGB(10, 20, 30)));
  colors->AddColor({*sheet.FindColorStyle(L"Head"), L"Heading"});
  colors->AddColor({*sheet.FindColorStyle(L"Head"), L"Again"});
  const std::wstring saved = colors->SaveAsString();
  ASSERT_NE(saved.find(L"colorStyleRef=\"Head\""), std::wstring::npos);
  ASSERT_TRUE(sheet.RemoveColorStyle(L"Head"));
  ASSERT_TRUE(colors->RestoreFromString(saved));
  EXPECT_EQ(colors->GetPaletteSize(), 0) << "they wait";
  ASSERT_TRUE(sheet.AddColorStyle(L"Foot", Colour::MakeRGB(1, 1, 1)));
  EXPECT_EQ(colors->GetPaletteSize(), 0);
  ASSERT_TRUE(sheet.SetExternalColorStyle({L"Foot", L"", L"head"}));
  EXPECT_EQ(colors->GetPaletteSize(), 2) << "by an alias";
  ASSERT_TRUE(sheet.ChangeColorStyle(L"Foot", Colour::MakeGRAY(7)));
  EXPECT_EQ(colors->GetColorSpec(1), Colour::MakeReference(colors->GetColorSpec(0)));
  EXPECT_EQ(colors->GetColorSpec(0).GetType(), Model::Gray255);
  EXPECT_NE(colors->SaveAsString().find(L"colorStyleRef=\"Foot\""), std::wstring::npos);
  EXPECT_EQ(palette->SaveAsString().find(L"colorStyleRef"), std::wstring::npos) << "styles are no references";
}

// --- Harmonies ------------------------------------------------------------------------------------------------------

TEST_F(StyleSheet, GroupsEachStyleOnce)
{
  EXPECT_EQ(sheet.CreateHarmony(1), -1);
  EXPECT_EQ(sheet.CreateHarmony(-2), -1);
  EXPECT_EQ(sheet.CreateHarmony(-1), 0);
  EXPECT_EQ(sheet.CreateHarmony(0), 0);
  for (const wchar_t *name : {L"A", L"B", L"C"})
    ASSERT_TRUE(sheet.AddColorStyle(name, AtHue(20)));
  EXPECT_FALSE(sheet.AddToHarmony(0, L"D"));
  EXPECT_FALSE(sheet.AddToHarmony(2, L"A"));
  EXPECT_FALSE(sheet.AddToHarmony(0, L"A", 1));
  ASSERT_TRUE(sheet.AddToHarmony(0, L"a"));
  ASSERT_TRUE(sheet.AddToHarmony(0, L"B"));
  ASSERT_TRUE(sheet.AddToHarmony(1, L"C"));
  ASSERT_TRUE(sheet.AddToHarmony(1, L"A", 0));
  EXPECT_EQ(sheet.GetHarmony(0)->GetColors(), (Texts{L"B"}));
  EXPECT_EQ(sheet.GetHarmony(1)->GetColors(), (Texts{L"A", L"C"}));
  EXPECT_TRUE(sheet.AddToHarmony(1, L"A", 1)) << "within one harmony";
  EXPECT_EQ(sheet.GetHarmony(1)->GetColors(), (Texts{L"C", L"A"}));
  ASSERT_TRUE(sheet.MoveHarmony(1, 0));
  EXPECT_EQ(sheet.FindHarmonyOf(L"a"), 0);
  EXPECT_EQ(sheet.FindHarmonyOf(L"X"), -1);
  ASSERT_TRUE(sheet.RemoveFromHarmony(L"C"));
  EXPECT_FALSE(sheet.RemoveFromHarmony(L"C"));
  ASSERT_TRUE(sheet.AddColorStyle(L"D", AtHue(0)));
  ASSERT_TRUE(sheet.AddToHarmony(0, L"D", 0));
  ASSERT_TRUE(sheet.SortColorStylesByHarmony());
  EXPECT_EQ(sheet.GetColorStyleNames(), (Texts{L"D", L"A", L"B", L"C"}));
  ASSERT_TRUE(sheet.DeleteHarmony(0));
  EXPECT_EQ(sheet.FindHarmonyOf(L"A"), -1);
  EXPECT_EQ(sheet.GetColorStyleCount(), 4u);
  EXPECT_FALSE(sheet.DeleteHarmony(1));
  EXPECT_EQ(sheet.GetHarmony(1), nullptr);
}

TEST_F(StyleSheet, MovesAHarmonyWithItsBase)
{
  MakeHarmony(RuleType::Triad, {30, 0, 210});
  EXPECT_EQ(Hues(), (std::vector<int>{30, 150, 270})) << "arranged by the rule";
  const Colour holder = *sheet.FindColorStyle(L"2");
  ASSERT_TRUE(sheet.ChangeColorStyle(L"0", AtHue(20, 100)));
  const int base = Hues()[0];
  EXPECT_LE(std::abs(base - 20), 1);
  EXPECT_EQ(Hues(), (std::vector<int>{base, base + 120, base + 240}));
  EXPECT_LE(std::abs(HSB(holder).hue - (base + 240)), 1);
  EXPECT_EQ(HSB(holder).saturation, 255) << "its own";

  // Another colour goes to its arm, and keeps what it was given when it is there.
  ASSERT_TRUE(sheet.ChangeColorStyle(L"1", AtHue(base + 230, 50)));
  EXPECT_EQ(Hues(), (std::vector<int>{base, base + 240, base + 240}));
  EXPECT_EQ(sheet.FindColorStyle(L"1")->GetRed(), 50);
  ASSERT_TRUE(sheet.ChangeColorStyle(L"1", Colour::MakeGRAY(100)));
  EXPECT_EQ(sheet.FindColorStyle(L"1")->GetType(), Model::Gray255);
  ASSERT_TRUE(sheet.ChangeColorStyle(L"0", Colour::MakeGRAY(100)));
  EXPECT_EQ(Hues(), (std::vector<int>{base, base + 240, base + 240})) << "a gray has no hue to turn to";

  // An ink is never turned into a mixture.
  const auto ink = SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(L"Gold", L"Gold", AtHue(90));
  ASSERT_TRUE(sheet.AddColorStyle(L"Gold", Colour::MakeSPOT(tests::GuidOf(9), 1, 50, ink.get())));
  ASSERT_TRUE(sheet.AddToHarmony(0, L"Gold"));
  ASSERT_TRUE(sheet.ChangeColorStyle(L"0", AtHue(300)));
  EXPECT_EQ(sheet.FindColorStyle(L"Gold")->GetType(), Model::Spot);
  EXPECT_EQ(sheet.FindColorStyle(L"Gold")->GetDensity(), 50);
}

TEST_F(StyleSheet, DoesNotDriftHoweverOftenItTurns)
{
  for (const wchar_t *name : {L"A", L"B", L"C"})
    ASSERT_TRUE(sheet.AddColorStyle(name, Colour::MakeCMYK255(0, 60, 120, 30)));
  sheet.CreateHarmony(-1);
  for (const wchar_t *name : {L"A", L"B", L"C"})
    sheet.AddToHarmony(0, name);
  sheet.SetHarmonyRule(0, RuleType::Triad);
  const auto before = sheet.GetPositions(0);
  for (int turn = 1; turn <= 36; ++turn) {
    HSB to = *before[0];
    to.hue += 10 * turn;
    HarmonyDrag drag(sheet, L"A");
    drag.MoveTo(to);
    ASSERT_TRUE(drag.Finish());
  }
  EXPECT_EQ(sheet.GetPositions(0), before);
  for (const wchar_t *name : {L"A", L"B", L"C"})
    EXPECT_EQ(sheet.FindColorStyle(name)->GetType(), Model::Cmyk255);
}

TEST_F(StyleSheet, GeneratesHarmonies)
{
  ASSERT_TRUE(sheet.AddColorStyle(L"Red", Colour::MakeRGB48(65535, 0, 0)));
  ASSERT_TRUE(sheet.AddColorStyle(L"Red 2", Colour::MakeRGB(1, 1, 1)));
  EXPECT_EQ(sheet.GenerateHarmony(RuleType::Triad, L"none", 3), -1);
  EXPECT_EQ(sheet.GenerateHarmony(RuleType::Triad, L"Red", 0), -1);
  ASSERT_EQ(sheet.GenerateHarmony(RuleType::Triad, L"red", 5), 0);
  EXPECT_EQ(sheet.GetColorStyleNames(), (Texts{L"Red", L"Red 3", L"Red 4", L"Red 5", L"Red 6", L"Red 2"}));
  EXPECT_EQ(sheet.GetHarmony(0)->GetColors(), (Texts{L"Red", L"Red 3", L"Red 4", L"Red 5", L"Red 6"}));
  EXPECT_EQ(Hues(), (std::vector<int>{0, 120, 240, 0, 120}));
  EXPECT_EQ(sheet.FindColorStyle(L"Red 6")->GetType(), Model::Rgb48);
  palette->SetPaletteSizeLimit(7);
  EXPECT_EQ(sheet.GenerateHarmony(RuleType::Triad, L"Red 2", 3), -1);
  EXPECT_EQ(sheet.GetHarmonyCount(), 1u);
  EXPECT_EQ(sheet.GetColorStyleCount(), 6u);
}

// --- Drags ----------------------------------------------------------------------------------------------------------

TEST_F(StyleSheet, IsSeenDraggedAndEditedOnce)
{
  MakeHarmony(RuleType::Complementary, {100, 280});
  palette->SetChanged(false);
  const Colour holder = *sheet.FindColorStyle(L"1");
  {
    HarmonyDrag drag(sheet, L"0");
    ASSERT_TRUE(drag.IsValid());
    drag.MoveTo({150, 255, 255});
    EXPECT_EQ(drag.GetPositions()[1].hue, 330);
    EXPECT_LE(std::abs(HSB(holder).hue - 330), 1) << "seen at once";
    EXPECT_FALSE(palette->IsChanged());
    EXPECT_EQ(Hues(), (std::vector<int>{100, 280}));
  }
  EXPECT_EQ(RecordHues(), (std::vector<int>{100, 280})) << "cancelled";
  EXPECT_FALSE(palette->IsChanged());

  HarmonyDrag drag(sheet, L"1");
  drag.MoveTo({90, 100, 200});
  drag.MoveTo({290, 99, 201});
  EXPECT_EQ(drag.GetPositions()[drag.GetIndex()], HSB(280, 99, 201)) << "on its arm";
  listener.Heard();
  ASSERT_TRUE(drag.Finish());
  EXPECT_EQ(listener.Heard(), (Texts{L"ColorStyles"}));
  EXPECT_FALSE(drag.Finish());
  EXPECT_EQ(Hues(), (std::vector<int>{100, 280}));
  EXPECT_EQ(holder.GetRed(), 99);
  EXPECT_TRUE(palette->IsChanged());

  HarmonyDrag overtaken(sheet, L"0");
  overtaken.MoveTo({30, 255, 255});
  ASSERT_TRUE(sheet.ChangeColorStyle(L"1", AtHue(280, 51)));
  overtaken.MoveTo(HSB(100, 255, 255)); // back to its start
  ASSERT_TRUE(overtaken.Finish());
  EXPECT_EQ(holder.GetRed(), 51) << "what was edited meanwhile counts";

  HarmonyDrag lost(sheet, L"0");
  lost.MoveTo({30, 255, 255});
  ASSERT_TRUE(sheet.RemoveColorStyle(L"1"));
  EXPECT_TRUE(lost.Finish()) << "passes over what is gone";
  EXPECT_EQ(Hues(), (std::vector<int>{30}));
  HarmonyDrag locked(sheet, L"0");
  locked.MoveTo({99, 255, 255});
  palette->SetLocked(true);
  EXPECT_FALSE(locked.Finish());
  EXPECT_EQ(RecordHues(), (std::vector<int>{30}));
  EXPECT_FALSE(HarmonyDrag(sheet, L"0").IsValid());
  EXPECT_FALSE(HarmonyDrag(sheet, L"none").IsValid());
}

TEST_F(StyleSheet, DragsInksAndGraysIntoTheBlendingModel)
{
  const auto ink = SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(L"Gold", L"Gold", AtHue(90));
  ASSERT_TRUE(sheet.AddColorStyle(L"Gold", Colour::MakeSPOT(tests::GuidOf(9), 1, 100, ink.get())));
  ASSERT_TRUE(sheet.AddColorStyle(L"Gray", Colour::MakeGRAY(100)));
  struct Provider : IColorContextProvider
  {
    ColorSystem::ColorContext GetColorContext() const override
    {
      ColorSystem::ColorContext context;
      context.SetBlendingColorModel(model);
      return context;
    }
    ColorSystem::ColorModel model = ColorSystem::ColorModel::Cmyk;
  } provider;
  sheet.SetColorContextProvider(&provider);
  for (const wchar_t *name : {L"Gold", L"Gray"}) {
    HarmonyDrag drag(sheet, name);
    drag.MoveTo({200, 255, 200});
    ASSERT_TRUE(drag.Finish());
  }
  EXPECT_EQ(sheet.FindColorStyle(L"Gold")->GetType(), Model::Cmyk255);
  EXPECT_EQ(sheet.FindColorStyle(L"Gray")->GetType(), Model::Cmyk255);
  provider.model = ColorSystem::ColorModel::Grayscale;
  ASSERT_TRUE(sheet.ChangeColorStyle(L"Gray", Colour::MakeGRAY(100)));
  HarmonyDrag drag(sheet, L"Gray");
  drag.MoveTo({200, 255, 200});
  ASSERT_TRUE(drag.Finish());
  EXPECT_EQ(sheet.FindColorStyle(L"Gray")->GetType(), Model::Rgb255);
}

// --- Any edits ------------------------------------------------------------------------------------------------------

TEST_F(StyleSheet, StaysWholeUnderAnyEdits)
{
  std::mt19937 random(7);
  const auto below = [&](std::size_t count) { return count == 0 ? 0 : static_cast<std::size_t>(random() % count); };
  const auto name = [&] { return std::wstring(1, static_cast<wchar_t>((random() % 2 ? L'a' : L'A') + random() % 8)); };
  const auto colour = [&] { return AtHue(static_cast<int>(random() % 360), static_cast<int>(random() % 256)); };
  const auto rule = [&] { return static_cast<RuleType>(random() % 7); };
  for (int step = 0; step < 3000; ++step) {
    const std::size_t harmony = below(sheet.GetHarmonyCount());
    const auto place = static_cast<int>(below(static_cast<std::size_t>(palette->GetPaletteSize())));
    switch (random() % 14) {
    case 0:
      sheet.AddColorStyle(name(), colour());
      break;
    case 1:
      sheet.ChangeColorStyle(name(), colour());
      break;
    case 2:
      sheet.RenameColorStyle(name(), name());
      break;
    case 3:
      sheet.RemoveColorStyle(name());
      break;
    case 4:
      sheet.GetHarmonyCount() < 4 ? sheet.CreateHarmony(static_cast<int>(harmony)) : 0;
      break;
    case 5:
      sheet.AddToHarmony(harmony, name());
      break;
    case 6:
      sheet.RemoveFromHarmony(name());
      break;
    case 7:
      sheet.SetHarmonyRule(harmony, rule());
      break;
    case 8:
      random() % 4 == 0 ? sheet.DeleteHarmony(harmony) : sheet.SortColorStylesByHarmony();
      break;
    case 9:
      palette->ChangeColorName(place, name());
      break;
    case 10:
      palette->InsertColor(place, {colour(), name()});
      break;
    case 11:
      palette->ChangeColor(place, {colour(), name()});
      break;
    case 12:
      palette->RemoveColor(place);
      break;
    default: {
      HarmonyDrag drag(sheet, name());
      drag.MoveTo({static_cast<std::int32_t>(random() % 360), 200, 200});
      if (random() % 2)
        drag.Finish();
    }
    }
    // The styles are the first colours of their names, and all see what the palette has.
    std::set<std::wstring> names;
    for (int i = 0; i < palette->GetPaletteSize(); ++i) {
      const std::wstring folded = ZelUtl::FoldedCase(palette->GetColorName(i));
      if (!names.insert(folded).second)
        continue;
      const Colour *style = sheet.FindColorStyle(folded);
      ASSERT_TRUE(style != nullptr && style->IsReference()) << step;
      ASSERT_EQ(ZelUtl::FoldedCase(sheet.NameOfColorStyle(*style)), folded) << step;
      ASSERT_EQ(style->Resolved(), palette->GetColorSpec(i).Resolved()) << step;
    }
    ASSERT_EQ(sheet.GetColorStyleCount(), names.size()) << step;
    std::set<std::wstring> grouped;
    for (std::size_t i = 0; i < sheet.GetHarmonyCount(); ++i) {
      for (const std::wstring &color : sheet.GetHarmony(i)->GetColors()) {
        ASSERT_TRUE(grouped.insert(ZelUtl::FoldedCase(color)).second) << step;
        ASSERT_TRUE(names.contains(ZelUtl::FoldedCase(color))) << step;
        ASSERT_EQ(sheet.FindHarmonyOf(color), static_cast<int>(i)) << step;
      }
    }
  }
}

} // namespace
