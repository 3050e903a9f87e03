#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/spot_color_definition.h"

#include <gtest/gtest.h>

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
