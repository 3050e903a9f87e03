// One set of settings: what counts in comparing and copying, and what it falls back on.
#include "tests/settings/support/settings_folders.h"
#include "zelclr/platform/text.h"

#include <gtest/gtest.h>

using namespace ColorSystem;

namespace {

class ColorSettingsTest : public tests::SettingsFolders
{};

template <auto set, auto value>
void ChangeOpen(ColorSettings &settings)
{
  ColorPolicy policy = settings.GetColorPolicyForOpen();
  (policy.*set)(value);
  settings.SetColorPolicyForOpen(policy);
}
template <auto set, auto value>
void ChangeImport(ColorSettings &settings)
{
  ColorPolicy policy = settings.GetColorPolicyForImport();
  (policy.*set)(value);
  settings.SetColorPolicyForImport(policy);
}
template <class Change>
void ChangeContext(ColorSettings &settings, Change change)
{
  ColorContext context = settings.GetDefaultColorContext();
  change(context);
  settings.SetDefaultColorContext(context);
}
void PutProfile(ColorSettings &settings, const wchar_t *name)
{
  const auto profile = ColorProfileManager::GetInstance().GetColorProfile(name);
  ChangeContext(settings, [&](ColorContext &context) { context.SetColorProfile(profile->GetColorModel(), profile); });
}

struct Change
{
  const char *what;
  void (*apply)(ColorSettings &);
  bool counts = true;
};

constexpr auto kAction = ColorPolicyAction::AssignBaselineProfile;
constexpr Change kChanges[] = {
  {"name", [](ColorSettings &s) { s.SetName(L"Another"); }, false},
  {"origin", [](ColorSettings &s) { s.SetFactory(true); }, false},
  {"spot colours", [](ColorSettings &s) { s.SetUseCmykPaletteNumbersForSpotColors(); }},
  {"pure black", [](ColorSettings &s) { s.SetPreservePureBlack(true); }},
  {"gray to black", [](ColorSettings &s) { s.SetMapGrayToCmykBlackChannel(true); }},
  {"engine", [](ColorSettings &s) { s.SetColorManagementModule(ColorManagementModule::Linear); }},
  {"RGB profile", [](ColorSettings &s) { PutProfile(s, L"sRGB_v4.icc"); }},
  {"CMYK profile", [](ColorSettings &s) { PutProfile(s, L"ISO Coated FOGRA39.icc"); }},
  {"grayscale profile", [](ColorSettings &s) { PutProfile(s, L"Gray Gamma 18.icc"); }},
  {"intent",
   [](ColorSettings &s) { ChangeContext(s, [](auto &c) { c.SetRenderingIntent(RenderingIntent::Saturation); }); }},
  {"blending", [](ColorSettings &s) { ChangeContext(s, [](auto &c) { c.SetBlendingColorModel(ColorModel::Cmyk); }); }},
  {"open, RGB", &ChangeOpen<&ColorPolicy::SetRgbPolicyAction, kAction>},
  {"open, CMYK", &ChangeOpen<&ColorPolicy::SetCmykPolicyAction, kAction>},
  {"open, grayscale", &ChangeOpen<&ColorPolicy::SetGrayscalePolicyAction, kAction>},
  {"open, mismatch", &ChangeOpen<&ColorPolicy::SetWarnOnProfileMismatch, true>},
  {"open, missing", &ChangeOpen<&ColorPolicy::SetWarnOnMissingProfile, true>},
  {"import, RGB", &ChangeImport<&ColorPolicy::SetRgbPolicyAction, kAction>},
  {"import, CMYK", &ChangeImport<&ColorPolicy::SetCmykPolicyAction, kAction>},
  {"import, grayscale", &ChangeImport<&ColorPolicy::SetGrayscalePolicyAction, kAction>},
  {"import, mismatch", &ChangeImport<&ColorPolicy::SetWarnOnProfileMismatch, true>},
  {"import, missing", &ChangeImport<&ColorPolicy::SetWarnOnMissingProfile, true>},
};

TEST_F(ColorSettingsTest, EveryChoiceCountsInComparingAndIsCopiedAndStored)
{
  const ColorContext start(nullptr, nullptr, nullptr, ColorModel::Rgb, RenderingIntent::RelativeColorimetric);
  ColorSettings plain;
  plain.SetDefaultColorContext(start);
  ColorSettings all(L"All of them");
  all.SetDefaultColorContext(start);
  for (const Change &change : kChanges) {
    SCOPED_TRACE(change.what);
    ColorSettings changed(plain);
    EXPECT_EQ(changed, plain);
    change.apply(changed);
    EXPECT_EQ(changed != plain, change.counts);
    change.apply(all);

    changed.SetName(L"Changed");
    Settings().AddColorSettings(changed);
    ColorSettingsManager::ReLoad();
    const auto stored = Settings().GetColorSettings(L"Changed");
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(*stored, changed);
    EXPECT_FALSE(stored->IsFactory());
  }
  const ColorSettings copy(all);
  EXPECT_EQ(copy, all);
  EXPECT_EQ(copy.GetName(), L"Another");
  EXPECT_TRUE(copy.IsFactory());
}

TEST_F(ColorSettingsTest, NewOnesHaveTheStatedDefaults)
{
  const ColorSettings settings;
  EXPECT_EQ(settings.GetName(), L"");
  EXPECT_TRUE(settings.GetUseLabPaletteNumbersForSpotColors());
  EXPECT_FALSE(settings.GetUseCmykPaletteNumbersForSpotColors() || settings.GetUseRgbPaletteNumbersForSpotColors());
  EXPECT_FALSE(settings.GetPreservePureBlack() || settings.GetMapGrayToCmykBlackChannel() || settings.IsFactory());
  EXPECT_EQ(settings.GetColorManagementModule(), ColorManagementModule::Icm);
  for (const ColorPolicy &policy : {settings.GetColorPolicyForOpen(), settings.GetColorPolicyForImport()}) {
    EXPECT_EQ(policy.GetRgbPolicyAction(), ColorPolicyAction::ConvertToEmbeddedProfile);
    EXPECT_EQ(policy.GetCmykPolicyAction(), ColorPolicyAction::ConvertToEmbeddedProfile);
    EXPECT_EQ(policy.GetGrayscalePolicyAction(), ColorPolicyAction::ConvertToEmbeddedProfile);
    EXPECT_FALSE(policy.GetWarnOnMissingProfile() || policy.GetWarnOnProfileMismatch());
  }
  EXPECT_TRUE(settings.GetDefaultColorContext().GetColorProfiles().empty());
}

TEST_F(ColorSettingsTest, ASpotColourHasTheNumbersOfOneModelOrNone)
{
  ColorSettings settings;
  const auto uses = [&settings] {
    return std::string{settings.GetUseCmykPaletteNumbersForSpotColors() ? 'C' : '-',
                       settings.GetUseLabPaletteNumbersForSpotColors() ? 'L' : '-',
                       settings.GetUseRgbPaletteNumbersForSpotColors() ? 'R' : '-'};
  };
  settings.SetUseCmykPaletteNumbersForSpotColors();
  EXPECT_EQ(uses(), "C--");
  settings.SetUseRgbPaletteNumbersForSpotColors();
  EXPECT_EQ(uses(), "--R");
  settings.SetUseLabPaletteNumbersForSpotColors();
  EXPECT_EQ(uses(), "-L-");
  settings.SetSpotAltColorModel(ColorModel::Hsv);
  EXPECT_EQ(uses(), "---");
}

TEST_F(ColorSettingsTest, AnEngineThatThisSystemLacksBecomesIcm)
{
  const auto available = ColorSettings::EnumAvailableColorManagementModules();
  EXPECT_NE(std::find(available.begin(), available.end(), ColorManagementModule::Linear), available.end());
  for (std::uint32_t number = 0; number < 7; ++number) {
    SCOPED_TRACE(number);
    const auto module = static_cast<ColorManagementModule>(number);
    const bool here = std::find(available.begin(), available.end(), module) != available.end();
    EXPECT_EQ(ColorSettings::IsColorManagementModuleAvailable(module), here);
    ColorSettings settings;
    settings.SetColorManagementModule(ColorManagementModule::Linear);
    settings.SetColorManagementModule(module);
    EXPECT_EQ(settings.GetColorManagementModule(), here ? module : ColorManagementModule::Icm);
  }
}

TEST_F(ColorSettingsTest, AMissingProfileIsFilledInOnceTheApplicationIsConfigured)
{
  ColorSettings settings;
  ColorContext gaps;
  gaps.SetCmykColorProfile(Shipped(L"ISO Coated FOGRA39.icc"));
  host.configured = false;
  settings.SetDefaultColorContext(gaps);
  EXPECT_EQ(settings.GetDefaultColorContext().GetColorProfiles().size(), 1u);
  host.configured = true;
  settings.SetDefaultColorContext(gaps);
  const ColorContext filled = settings.GetDefaultColorContext();
  EXPECT_EQ(filled.GetRgbColorProfile(), Shipped(L"sRGB-Placeholder!"));
  EXPECT_EQ(filled.GetCmykColorProfile(), Shipped(L"ISO Coated FOGRA39.icc")) << "what was there stays";
  EXPECT_EQ(filled.GetGrayscaleColorProfile(), Shipped(L"Dot Gain 20%.icc"));
  settings.SetDefaultColorContext(ColorContext());
  EXPECT_EQ(settings.GetDefaultColorContext().GetCmykColorProfile(), Shipped(L"USWebCoatedSWOP.icc"));
}

TEST_F(ColorSettingsTest, FactoryNamesAreSaidInTheUsersLanguageAndFollowTheName)
{
  ZelLocale::SetLocale({"DE", "de"});
  ColorSettings settings(L"Europe Prepress");
  EXPECT_EQ(settings.GetLocalizedName(), L"Europa \u2013 Druckvorstufe");
  settings.SetName(L"My press");
  EXPECT_EQ(settings.GetLocalizedName(), L"My press");
  ColorSettings assigned(L"Japan Web");
  EXPECT_EQ(assigned.GetLocalizedName(), L"Japan \u2013 Web");
  assigned = settings;
  EXPECT_EQ(assigned.GetLocalizedName(), L"My press");
  EXPECT_EQ(ColorSettings(L"europe prepress").GetLocalizedName(), L"europe prepress") << "names are exact";

  std::set<std::wstring> texts;
  for (const auto &preset : Settings().EnumerateColorSettings()) {
    EXPECT_NE(preset->GetLocalizedName(), preset->GetName());
    texts.insert(preset->GetLocalizedName());
  }
  EXPECT_EQ(texts.size(), 12u);
}

TEST_F(ColorSettingsTest, AnyNameComesBackFromTheFileAndLeavesIt)
{
  const std::wstring names[] = {L"O'Neil \"A\"",
                                L"<&>]]>",
                                L"two\nlines\tand\r\nmore",
                                L" blanks ",
                                L"  ",
                                L"",
                                L"\u65E5\u672C",
                                L"Factory",
                                L"a']/../*",
                                L"control\x01",
                                std::wstring(L"n\0l", 3),
                                std::wstring(5000, L'x')};
  const auto stored = [](std::wstring name) {
    for (wchar_t &c : name)
      c = c == L'\0' || c == L'\x01' ? L'\uFFFD' : c;
    return name;
  };
  const std::size_t before = NamesOfPresets().size();
  for (const std::wstring &name : names)
    EXPECT_TRUE(Settings().AddColorSettings(ColorSettings(name)));
  Restart();
  EXPECT_EQ(NamesOfPresets().size(), before + std::size(names));
  for (const std::wstring &name : names) {
    EXPECT_NE(Settings().GetColorSettings(stored(name)), nullptr) << ZelUtl::Utf8FromWide(name);
    EXPECT_TRUE(Settings().RemoveColorSetting(stored(name))) << ZelUtl::Utf8FromWide(name);
    ColorSettingsManager::ReLoad();
    EXPECT_EQ(Settings().GetColorSettings(stored(name)), nullptr);
  }
  EXPECT_EQ(NamesOfPresets().size(), before);
}

} // namespace
