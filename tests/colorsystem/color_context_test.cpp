// Colour contexts: the profile for each model, and the blending model.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/settings/color_settings_manager.h"

#include <map>
#include <random>
#include <thread>

using namespace ColorSystem;

namespace {

using enum ColorModel;
using Profile = std::shared_ptr<ColorProfile>;

class ColorContexts : public tests::ShippedProfiles
{};

TEST_F(ColorContexts, BringBuiltInProfilesForThreeModels)
{
  const ColorContext empty;
  EXPECT_EQ(empty.GetColorProfile(Lab), lab);
  EXPECT_EQ(empty.GetColorProfile(Hexachrome), six);
  EXPECT_EQ(empty.GetColorProfile(Xyz), Shipped(L"D65_XYZ.icc"));
  for (const ColorModel model : {Rgb, Cmyk, Grayscale, Cmy, Hls, Hsv, Spot, Indexed, Registration})
    EXPECT_EQ(empty.GetColorProfile(model), nullptr) << NameOfColorModel(model);
  EXPECT_EQ(empty.GetBlendingColorProfile(), nullptr);
  EXPECT_EQ(empty.GetBlendingColorModel(), ColorSettingsManager::GetApplicationBlendingColorModel());
  EXPECT_EQ(empty.GetRenderingIntent(), ColorSettingsManager::GetApplicationRenderingIntent());

  ColorContext context;
  const Profile own = ProfileOf("own.icc", tests::NamedProfile("Own", "Lab "));
  EXPECT_TRUE(context.SetColorProfile(Lab, own));
  EXPECT_EQ(context.GetColorProfile(Lab), own);
  EXPECT_TRUE(context.SetColorProfile(Lab, nullptr));
  EXPECT_EQ(context.GetColorProfile(Lab), lab);
}

TEST_F(ColorContexts, RandomEditsFollowAMap)
{
  const Profile cmy = ProfileOf("cmy.icc", tests::NamedProfile("Inks", "CMY "));
  const Profile invalid = std::make_shared<IccColorProfile>(folder.Wide("missing.icc"), false);
  const Profile profiles[] = {srgb, swop, gray, lab, six, cmy, invalid, nullptr};
  const std::map<ColorModel, Profile> builtIn = {{Lab, lab}, {Hexachrome, six}, {Xyz, Shipped(L"D65_XYZ.icc")}};
  ColorContext context;
  std::map<ColorModel, Profile> model;
  ColorModel blending = context.GetBlendingColorModel();
  std::mt19937 random(1);
  for (int step = 0; step < 3000; ++step) {
    const auto number = static_cast<ColorModel>(random() % 13);
    if (random() % 4 == 0) {
      context.SetBlendingColorModel(number);
      blending = number;
    } else {
      const Profile &profile = profiles[random() % std::size(profiles)];
      const bool fits = profile == nullptr || (profile != invalid && profile->GetColorModel() == number);
      ASSERT_EQ(context.SetColorProfile(number, profile), fits) << static_cast<int>(number);
      if (fits && profile != nullptr)
        model[number] = profile;
      else if (fits)
        model.erase(number);
    }
    const ColorContext copy(context);
    for (unsigned i = 0; i <= 13; ++i) {
      const auto at = static_cast<ColorModel>(i);
      const Profile expected = model.contains(at) ? model[at] : builtIn.contains(at) ? builtIn.at(at) : nullptr;
      ASSERT_EQ(copy.GetColorProfile(at), expected) << i;
    }
    Profile mixed = copy.GetColorProfile(blending);
    if (mixed == nullptr && !model.empty())
      mixed = model.begin()->second;
    ASSERT_EQ(copy.GetBlendingColorProfile(), mixed) << step;
    ASSERT_EQ(copy.GetBlendingColorModel(), mixed == nullptr ? blending : mixed->GetColorModel()) << step;
  }
}

TEST_F(ColorContexts, AreBuiltFromWhatFits)
{
  const ColorContext one(*gray, RenderingIntent::Saturation);
  EXPECT_EQ(one.GetGrayscaleColorProfile(), gray);
  EXPECT_EQ(one.GetBlendingColorModel(), Grayscale);
  EXPECT_EQ(one.GetRenderingIntent(), RenderingIntent::Saturation);

  const ColorContext three(swop, swop, nullptr, Cmyk, RenderingIntent::AbsoluteColorimetric);
  EXPECT_EQ(three.GetRgbColorProfile(), nullptr) << "of another model";
  EXPECT_EQ(three.GetCmykColorProfile(), swop);
  EXPECT_EQ(three.GetGrayscaleColorProfile(), nullptr);

  ColorContext other;
  other = three;
  EXPECT_EQ(other.GetCmykColorProfile(), swop);
  EXPECT_EQ(other.GetBlendingColorModel(), Cmyk);
  EXPECT_EQ(other.GetRenderingIntent(), RenderingIntent::AbsoluteColorimetric);
  EXPECT_TRUE(other.SetCmykColorProfile(nullptr));
  EXPECT_EQ(three.GetCmykColorProfile(), swop) << "a copy";
}

TEST_F(ColorContexts, AreChangedAndAssignedByManyThreads)
{
  ColorContext first, second;
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&, number] {
      for (int i = 0; i < 200; ++i) {
        ColorContext &mine = number % 2 == 0 ? first : second;
        mine.SetRgbColorProfile(i % 2 == 0 ? srgb : nullptr);
        mine = number % 2 == 0 ? second : first;
        mine.GetBlendingColorModel();
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
}

} // namespace
