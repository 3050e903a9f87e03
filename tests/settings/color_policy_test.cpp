// What opening and importing do to the profiles of both sides: every case of every action, written out by hand.
#include "tests/settings/support/settings_folders.h"

#include <gtest/gtest.h>

using namespace ColorSystem;

namespace {

using Profile = std::shared_ptr<ColorProfile>;

constexpr ColorModel kModels[] = {ColorModel::Rgb, ColorModel::Cmyk, ColorModel::Grayscale};
constexpr auto kNoAction = static_cast<ColorPolicyAction>(7);

class ColorPolicyTest : public tests::SettingsFolders
{
protected:
  ColorPolicyTest()
  {
    ColorSettings settings;
    settings.SetDefaultColorContext(Context(baseline, ColorModel::Rgb, RenderingIntent::Perceptual));
    Settings().SetApplicationColorSettings(settings);
  }

  using Three = std::map<ColorModel, Profile>;
  static ColorContext Context(const Three &profiles, ColorModel blending, RenderingIntent intent)
  {
    return {profiles.at(ColorModel::Rgb), profiles.at(ColorModel::Cmyk), profiles.at(ColorModel::Grayscale), blending,
            intent};
  }
  static ColorContext Empty() { return {nullptr, nullptr, nullptr, ColorModel::Rgb, RenderingIntent::Perceptual}; }
  /// 'S', 'T', 'B' or '-', and '?' for what stood nowhere before.
  char Letter(const ColorContext &context, ColorModel model) const
  {
    const Profile profile = context.GetColorProfile(model);
    return profile == nullptr               ? '-'
           : profile == embedded.at(model)  ? 'S'
           : profile == receiving.at(model) ? 'T'
           : profile == baseline.at(model)  ? 'B'
                                            : '?';
  }
  std::string Letters(const ColorContext &context) const
  {
    std::string letters;
    for (const ColorModel model : kModels)
      letters += Letter(context, model);
    return letters;
  }
  static ColorPolicy PolicyOf(ColorPolicyAction rgb, ColorPolicyAction cmyk, ColorPolicyAction grayscale)
  {
    ColorPolicy policy;
    policy.SetRgbPolicyAction(rgb);
    policy.SetCmykPolicyAction(cmyk);
    policy.SetGrayscalePolicyAction(grayscale);
    return policy;
  }

  const Three embedded = {{ColorModel::Rgb, Shipped(L"sRGB_v4.icc")},
                          {ColorModel::Cmyk, Shipped(L"ISO Coated FOGRA39.icc")},
                          {ColorModel::Grayscale, Shipped(L"Gray Gamma 22.icc")}};
  const Three receiving = {{ColorModel::Rgb, Shipped(L"CompatibleWithAdobeRGB1998.icc")},
                           {ColorModel::Cmyk, Shipped(L"GRACoL Coated TR006.icc")},
                           {ColorModel::Grayscale, Shipped(L"Dot Gain 15%.icc")}};
  const Three baseline = {{ColorModel::Rgb, Shipped(L"sRGB_IEC61966-2-1_no_black_scaling.icc")},
                          {ColorModel::Cmyk, Shipped(L"USWebCoatedSWOP.icc")},
                          {ColorModel::Grayscale, Shipped(L"Dot Gain 30%.icc")}};
};

/// Afterwards in source, target and result: the embedded profile, the receiving one, the application's, none.
struct Row
{
  ColorPolicyAction action;
  bool hasEmbedded, hasReceiving;
  const char *afterwards;
  const char *withResultModel;
};

constexpr Row kRows[] = {
  {ColorPolicyAction::AssignEmbeddedProfile, true, true, "SSS", "SSS"},
  {ColorPolicyAction::AssignEmbeddedProfile, true, false, "SSS", "SSS"},
  {ColorPolicyAction::AssignEmbeddedProfile, false, true, "TTT", "BBB"},
  {ColorPolicyAction::AssignEmbeddedProfile, false, false, "---", "BBB"},
  {ColorPolicyAction::ConvertToEmbeddedProfile, true, true, "STS", "STS"},
  {ColorPolicyAction::ConvertToEmbeddedProfile, true, false, "S-S", "S-S"},
  {ColorPolicyAction::ConvertToEmbeddedProfile, false, true, "TTT", "BTT"},
  {ColorPolicyAction::ConvertToEmbeddedProfile, false, false, "---", "B--"},
  {ColorPolicyAction::AssignBaselineProfile, true, true, "TTT", "TTT"},
  {ColorPolicyAction::AssignBaselineProfile, true, false, "S-S", "S-S"},
  {ColorPolicyAction::AssignBaselineProfile, false, true, "TTT", "BBB"},
  {ColorPolicyAction::AssignBaselineProfile, false, false, "---", "BBB"},
  {ColorPolicyAction::ConvertToBaselineProfile, true, true, "STT", "STT"},
  {ColorPolicyAction::ConvertToBaselineProfile, true, false, "S-S", "S-S"},
  {ColorPolicyAction::ConvertToBaselineProfile, false, true, "TTT", "BTT"},
  {ColorPolicyAction::ConvertToBaselineProfile, false, false, "---", "B--"},
  {kNoAction, true, true, "ST-", "ST-"},
  {kNoAction, false, false, "---", "---"},
};

TEST_F(ColorPolicyTest, Kept_EachActionHandsProfilesOnInItsOwnWay)
{
  for (const Row &row : kRows) {
    for (const ColorModel model : kModels) {
      for (const ColorModel *const resultModel : {static_cast<const ColorModel *>(nullptr), &model}) {
        SCOPED_TRACE(testing::Message() << "action " << static_cast<int>(row.action) << " model "
                                        << static_cast<int>(model) << " embedded " << row.hasEmbedded << " receiving "
                                        << row.hasReceiving << " result model " << (resultModel != nullptr));
        ColorContext source = Empty();
        ColorContext target = Empty();
        if (row.hasEmbedded)
          source.SetColorProfile(model, embedded.at(model));
        if (row.hasReceiving)
          target.SetColorProfile(model, receiving.at(model));
        ColorPolicy policy = PolicyOf(kNoAction, kNoAction, kNoAction);
        if (model == ColorModel::Rgb)
          policy.SetRgbPolicyAction(row.action);
        else if (model == ColorModel::Cmyk)
          policy.SetCmykPolicyAction(row.action);
        else
          policy.SetGrayscalePolicyAction(row.action);
        const ColorContext result = policy.Apply(source, target, nullptr, nullptr, resultModel);
        const std::string afterwards = {Letter(source, model), Letter(target, model), Letter(result, model)};
        EXPECT_EQ(afterwards, resultModel == nullptr ? row.afterwards : row.withResultModel);
        for (const ColorContext *context : std::initializer_list<const ColorContext *>{&source, &target, &result}) {
          for (const ColorModel other : kModels) {
            EXPECT_TRUE(other == model || context->GetColorProfile(other) == nullptr);
          }
        }
      }
    }
  }
}

TEST_F(ColorPolicyTest, AContextThatUsesOneModelKeepsThatModelsProfileOnly)
{
  const ColorModel rgb = ColorModel::Rgb, cmyk = ColorModel::Cmyk, grayscale = ColorModel::Grayscale;
  struct Restriction
  {
    const ColorModel *source, *target, *result;
    const char *inSource, *inTarget, *inResult;
  };
  const Restriction restrictions[] = {
    {nullptr, nullptr, nullptr, "STS", "STT", "STS"}, // assign embedded, assign baseline, convert to embedded
    {&rgb, nullptr, nullptr, "S--", "STT", "STS"},       {nullptr, &cmyk, nullptr, "STS", "-T-", "STS"},
    {nullptr, nullptr, &grayscale, "STS", "STT", "--S"}, {&cmyk, &grayscale, &rgb, "-T-", "--T", "S--"},
  };
  const ColorPolicy policy =
    PolicyOf(ColorPolicyAction::AssignEmbeddedProfile, ColorPolicyAction::AssignBaselineProfile,
             ColorPolicyAction::ConvertToEmbeddedProfile);
  for (const Restriction &row : restrictions) {
    SCOPED_TRACE(&row - restrictions);
    ColorContext source = Context(embedded, rgb, RenderingIntent::Perceptual);
    ColorContext target = Context(receiving, rgb, RenderingIntent::Perceptual);
    const ColorContext result = policy.Apply(source, target, row.source, row.target, row.result);
    EXPECT_EQ(Letters(source), row.inSource);
    EXPECT_EQ(Letters(target), row.inTarget);
    EXPECT_EQ(Letters(result), row.inResult);
  }

  const ColorPolicy assign =
    PolicyOf(ColorPolicyAction::AssignBaselineProfile, ColorPolicyAction::AssignBaselineProfile,
             ColorPolicyAction::AssignBaselineProfile);
  ColorContext source = Empty();
  ColorContext target = Empty();
  const ColorContext result = assign.Apply(source, target, nullptr, nullptr, &cmyk);
  EXPECT_EQ(Letters(source) + Letters(target) + Letters(result), "BBBBBB-B-")
    << "a result of one model brings the application's profiles into every model of the others";
}

TEST_F(ColorPolicyTest, TheReceivingSideSaysHowColoursBlendAndRender)
{
  for (const ColorModel blending : kModels) {
    ColorContext source = Context(embedded, ColorModel::Rgb, RenderingIntent::Perceptual);
    ColorContext target = Context(receiving, blending, RenderingIntent::AbsoluteColorimetric);
    const ColorContext result = ColorPolicy().Apply(source, target);
    for (const ColorContext *context : std::initializer_list<const ColorContext *>{&source, &target, &result}) {
      EXPECT_EQ(context->GetBlendingColorModel(), blending);
      EXPECT_EQ(context->GetRenderingIntent(), RenderingIntent::AbsoluteColorimetric);
    }
  }
}

TEST(ColorPolicyAction, NamesAreThoseOfTheFiles)
{
  constexpr const char *kNames[] = {"AssignEmbeddedProfile", "ConvertToEmbeddedProfile", "AssignBaselineProfile",
                                    "ConvertToBaselineProfile"};
  for (std::uint32_t i = 0; i < 4; ++i) {
    EXPECT_EQ(NameOfColorPolicyAction(static_cast<ColorPolicyAction>(i)), kNames[i]);
    EXPECT_EQ(ColorPolicyActionFromName(kNames[i]), static_cast<ColorPolicyAction>(i));
  }
  EXPECT_EQ(NameOfColorPolicyAction(kNoAction), "");
  for (const char *const name : {"", "assignEmbeddedProfile", "AssignEmbeddedProfile "})
    EXPECT_FALSE(ColorPolicyActionFromName(name)) << name;
}

} // namespace
