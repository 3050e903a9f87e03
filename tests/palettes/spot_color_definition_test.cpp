#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/legacy_palette.h"
#include "zelclr/palettes/spot_color_definition_manager.h"

#include <gtest/gtest.h>

#include <algorithm>

using Colour = CLR_COLORSPEC;
namespace Model = ZelClr::ClrModel;

TEST(SpotColorDefinition, GivesASpotColourItsNameAndItsAppearance)
{
  const auto orange = Colour::MakeCMYK100(0, 50, 100, 0);
  const auto definition = orange.CreateSpotDefinition(L"House orange", L"Inks");
  ASSERT_TRUE(definition);
  EXPECT_EQ(definition->GetColorSpaceName(), L"Inks");
  const auto spot = Colour::MakeSPOT(ZelUtils::Guid{}, 17, 100, definition.get());
  EXPECT_EQ(spot.GetSpotDefinition(), definition.get());
  EXPECT_EQ(Colour::MakeReference(spot).GetSpotColorName(), L"House orange");

  Colour process;
  ASSERT_TRUE(WClrConvert::ConvertToBasicType(&process, Model::Cmyk100, &spot));
  EXPECT_EQ(process, orange);
  const auto tint = Colour::MakeSPOT(ZelUtils::Guid{}, 17, 50, definition.get());
  ASSERT_TRUE(WClrConvert::ConvertToBasicType(&process, Model::Cmyk100, &tint));
  EXPECT_EQ(process, Colour::MakeCMYK100(0, 25, 50, 0));
}

TEST(SpotColorDefinition, PrefersTheAppearanceOfTheWantedModel)
{
  const auto red = Colour::MakeRGB(255, 0, 0);
  const auto cmyk = Colour::MakeCMYK255(0, 240, 240, 10);
  const SpotColorDefinition definition(L"Red", L"Inks", {{Model::Rgb255, red}, {Model::Cmyk255, cmyk}});
  const auto spot = Colour::MakeSPOT(ZelUtils::Guid{}, 1, 100, &definition);
  Colour appearance;
  ASSERT_TRUE(spot.GetSpotAppearance(Model::Rgb255, appearance));
  EXPECT_EQ(appearance, red);
  ASSERT_TRUE(spot.GetSpotAppearance(Model::Lab, appearance));
  EXPECT_EQ(appearance, cmyk) << "the first by model number";
}

TEST(SpotColorDefinition, IsMadeOnlyOfColoursWithAnAppearance)
{
  EXPECT_FALSE(Colour().CreateSpotDefinition(L"", L""));
  EXPECT_FALSE(Colour::MakePANTONE(1, 100).CreateSpotDefinition(L"", L""));
  EXPECT_FALSE(Colour::MakeSPOT(ZelUtils::Guid{}, 1, 100, nullptr).CreateSpotDefinition(L"", L""));
  Colour untouched = Colour::MakeGRAY(7);
  const auto unresolved = Colour::MakeSPOT(ZelUtils::Guid{}, 1, 100, nullptr);
  EXPECT_FALSE(WClrConvert::ConvertToBasicType(&untouched, Model::Rgb255, &unresolved));
  EXPECT_EQ(untouched, Colour::MakeGRAY(7));
  EXPECT_EQ(unresolved.GetSpotColorName(), L"");
}

TEST(SpotColorDefinition, ReferencesAreResolvedInADefinition)
{
  const auto definition = Colour::MakeReference(Colour::MakeRGB(1, 2, 3)).CreateSpotDefinition(L"", L"");
  ASSERT_TRUE(definition);
  EXPECT_FALSE(definition->GetAlternativeColors().at(Model::Rgb255).IsReference());
}

TEST(SpotColorDefinition, ContentStringNamesEachAlternativeByModel)
{
  const struct
  {
    SpotColorDefinition::Alternatives alternatives;
    const wchar_t *text;
  } kRows[] = {
    {{}, L"Name : Ink"},
    {{{Model::Cmyk, Colour::MakeCMYK(0, 50, 100, 1)}}, L"Name : Ink : CMYK : 0 50 100 1"},
    {{{Model::Cmyk100, Colour::MakeCMYK100(0, 50, 100, 1)}}, L"Name : Ink : CMYK : 0 50 100 1"},
    {{{Model::Rgb255, Colour::MakeRGB(1, 2, 3)}}, L"Name : Ink : RGB : 3 2 1"},
    {{{Model::Lab, Colour::MakeLAB(255, -128, 127)}, {Model::Cmyk255, Colour::MakeCMYK255(255, 0, 0, 0)}},
     L"Name : Ink : CMYK : 255 0 0 0 : LAB : 255 -128 127"},
    {{{Model::Lab255, Colour::MakeLAB255(255, 128, 0)}}, L"Name : Ink : LAB : 255 128 0"},
    {{{Model::UserInks, Colour::MakeUserInks(1, 2, 3, 4)}}, L"Name : Ink :  : 3 2 1"},
    {{{Model::Rgb48, Colour::MakeRGB48(1, 2, 65535)}}, L"Name : Ink :  : 65535 2 1"},
    {{{Model::ScRgb, Colour::MakeSCRGB(-0.5f, 0.1f, 2)}}, L"Name : Ink :  : -0.5 0.1 2"},
  };
  for (const auto &row : kRows) {
    SpotColorDefinition definition(L"Name", L"Ink", row.alternatives);
    EXPECT_EQ(definition.GetContentString(), row.text);
    SpotColorDefinition later(L"", L"", Colour());
    EXPECT_NE(later, definition);
    later.SetAlternativeColors(row.alternatives);
    later.SetColorSpaceName(L"Ink");
    later.SetColorName(L"Name");
    EXPECT_EQ(later, definition);
    EXPECT_FALSE(later < definition || definition < later);
  }
  const SpotColorDefinition::Alternatives two = {{0, Colour()},
                                                 {Model::Cmyk, Colour::MakeCMYK(1, 2, 3, 4)},
                                                 {Model::Gray255, Colour::MakeGRAY(7)},
                                                 {Model::Lab, Colour::MakeLAB(1, -2, 3)}};
  EXPECT_EQ(SpotColorDefinition::GenerateColorSpaceName(L"Ink", two), L"Ink : 1 2 3 4 :  : 1 -2 3");
}

TEST(SpotColorDefinition, Kept_SixInkAndGrayAppearancesHaveNoValuesInTheContentString)
{
  const SpotColorDefinition six(L"Name", L"Ink", Colour::MakeHEX(1, 2, 3, 4, 5, 6));
  EXPECT_EQ(six.GetContentString(), L"Name : Ink :  : ");
  EXPECT_EQ(six, SpotColorDefinition(L"Name", L"Ink", Colour::MakeGRAY(7)));
}

TEST(SpotColorDefinitionManager, EqualDefinitionsAreOneAndLast)
{
  auto &manager = SpotColorDefinitionManager::GetInstance();
  const auto first = manager.CreateSpotColorDefinition(L"Teal", L"Inks A", Colour::MakeCMYK(1, 2, 3, 4));
  EXPECT_EQ(manager.CreateSpotColorDefinition({L"Teal", L"Inks A", {{2, Colour::MakeCMYK(1, 2, 3, 4)}}}), first);
  const auto other = manager.CreateSpotColorDefinition(L"Teal", L"Inks B", Colour::MakeCMYK(1, 2, 3, 5));
  EXPECT_NE(other, first);
  EXPECT_EQ(manager.GetSpotColorDefinitionByContentString(L"Teal : Inks A : CMYK : 1 2 3 4"), first);
  EXPECT_EQ(manager.GetSpotColorDefinitionByContentString(L"Teal"), nullptr);
  using Definitions = SpotColorDefinitionManager::Definitions;
  EXPECT_EQ(manager.GetSpotColorDefinitionsOfColor(L"Teal"), (Definitions{first, other}));
  EXPECT_EQ(manager.GetSpotColorDefinitionsOfColorSpace(L"Inks B"), Definitions{other});
  const auto all = manager.GetSpotColorDefinitions();
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), [](const auto &a, const auto &b) { return *a < *b; }));
  EXPECT_NE(std::find(all.begin(), all.end(), first), all.end());

  EXPECT_TRUE(SpotColorDefinitionManager::HasInstance());
  SpotColorDefinitionManager::ReleaseInstance();
  EXPECT_FALSE(SpotColorDefinitionManager::HasInstance());
  EXPECT_EQ(SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(L"Teal", L"Inks A",
                                                                                Colour::MakeCMYK(1, 2, 3, 4)),
            first);
}

TEST(LegacyPalette, TypesAndIdentifiersStandForEachOther)
{
  using namespace ZelClr::LegacyPalette;
  for (unsigned type = 0; type <= 40; ++type) {
    const auto guid = PaletteTypeToGuid(type);
    EXPECT_EQ(guid.IsNull(), type == 4 || type == 5 || type == 6 || type == 14 || type == 15) << type;
    EXPECT_EQ(PaletteGuidToType(guid), guid.IsNull() ? 5u : type);
  }
  EXPECT_TRUE(PaletteTypeToGuid(41).IsNull());
  const struct
  {
    std::uint16_t type, origin;
  } kOrigins[] = {{0x0210, 2}, {0x0010, 16}, {0x0003, 3}, {0x1105, 17}, {0x0005, 5}, {0x0203, 3}};
  for (const auto &[type, origin] : kOrigins)
    EXPECT_EQ(GetOriginPaletteType(type), origin);
  EXPECT_TRUE(IsLegacySpotPaletteType(3) && !IsLegacySpotPaletteType(5));
  EXPECT_TRUE(IsLegacyUserInksPaletteType(16) && IsLegacyUserInksPaletteType(0x0210));
  EXPECT_FALSE(IsLegacyUserInksPaletteType(5));

  Colour red = Colour::MakeRGB(255, 0, 0);
  EXPECT_FALSE(IsLegacyUserInks(red));
  red.SetPaletteGuid(PaletteTypeToGuid(16));
  EXPECT_TRUE(IsLegacyUserInks(red));
  EXPECT_TRUE(IsLegacyUserInks(Colour::MakeUserInks(1, 2, 3, 4)));
  Colour indexed = Colour::MakeIndexedUserInks(1, 100);
  indexed.SetPaletteGuid(PaletteTypeToGuid(16));
  EXPECT_FALSE(IsLegacyUserInks(indexed));
}
