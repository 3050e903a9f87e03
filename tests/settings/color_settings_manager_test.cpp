// The manager over its file: what is read, what comes into force, what is written, and who is told.
#include "tests/settings/support/settings_folders.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/platform/preferences.h"
#include "zelclr/platform/xml.h"

#include <gmock/gmock.h>

using namespace ColorSystem;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

const ZelUtl::CPrefObject<bool> kHasColorSettings("ColorSettingsManager", "HasColorSettings", false);

class ColorSettingsManagerTest : public tests::SettingsFolders
{
protected:
  /// The file with one preset "Case" of this application's, and one "Good" behind it.
  std::string FileWithTwoPresets()
  {
    ColorSettings settings(L"Case");
    settings.SetPreservePureBlack(true);
    settings.SetMapGrayToCmykBlackChannel(true);
    settings.SetDefaultColorContext(ColorContext(Shipped(L"sRGB_v4.icc"), Shipped(L"ISO Coated FOGRA39.icc"),
                                                 Shipped(L"Gray Gamma 22.icc"), ColorModel::Cmyk,
                                                 RenderingIntent::Saturation));
    Settings().AddColorSettings(settings);
    settings.SetName(L"Good");
    Settings().AddColorSettings(settings);
    return tests::TextOf(file);
  }
  /// The element of a preset in the application's list of the file; empty when it is not there.
  ZelUtl::WXmlNode InFile(const std::wstring &name, const std::wstring &application = L"Draw") const
  {
    std::string untold;
    const auto document = ZelUtl::WXmlDoc::FromFile(file, untold);
    return document ? document->Root().SelectNode("./ColorSettingsPresets[@id=$application]/ColorSettings[@id=$name]",
                                                  {{"application", application}, {"name", name}})
                    : ZelUtl::WXmlNode();
  }
  std::vector<std::string> DamagedKept() const
  {
    std::vector<std::string> kept;
    for (const auto &entry : std::filesystem::directory_iterator(std::filesystem::path(file).parent_path())) {
      if (entry.path().filename().string().find(".damaged") != std::string::npos)
        kept.push_back(tests::TextOf(entry.path().string()));
    }
    return kept;
  }
};

TEST_F(ColorSettingsManagerTest, AnElementIsReadWholeOrLeftOut)
{
  const std::string text = FileWithTwoPresets();
  const std::string start = text.substr(0, text.find("<ColorSettings id=\"Case\">"));
  const std::string preset = text.substr(start.size());
  struct Row
  {
    const char *from, *to;
    bool read;
  };
  constexpr Row kRows[] = {
    {">Lab<", ">lab<", false},
    {"<ColorModel id=\"SpotAltColorModel\">Lab</ColorModel>", "", true},
    {"<PreservePureBlack>true<", "<PreservePureBlack>yes<", false},
    {"<PreservePureBlack>true<", "<PreservePureBlack>1<", true},
    {"<MapGrayToCmykBlackChannel>true</MapGrayToCmykBlackChannel>", "<Later>1</Later>", true},
    {"sRGB_v4.icc", "nobody has this.icc", false},
    {"sRGB_v4.icc", "ISO Coated FOGRA39.icc", false},
    {"<ColorProfile id=\"Grayscale\">Gray Gamma 22.icc</ColorProfile>", "", true},
    {"<ColorProfile id=\"Grayscale\">", "<ColorProfile id=\"Eight inks\">", true},
    {"<ColorContext>", "<Elsewhere/><ColorContext id=\"x\">", true},
    {">Icm<", ">ICM<", false},
    {">Icm<", ">Wcs<", true},
    {"\"RgbPolicyAction\">ConvertToEmbeddedProfile", "\"RgbPolicyAction\">Ask", false},
    {"<WarnOnMissingProfile>false", "<WarnOnMissingProfile>2", false},
    {"<ColorSettings id=\"Case\">", "<ColorSettings>", false},
    {"<Name>Case</Name>", "<!-- -->", true},
  };
  for (const Row &row : kRows) {
    SCOPED_TRACE(testing::Message() << row.from << " -> " << row.to);
    tests::WriteBytes(file, tests::BytesOf(start + tests::Replaced(preset, row.from, row.to)));
    ColorSettingsManager::ReLoad();
    const std::wstring name = std::string(row.from).starts_with("<Name>") ? L"" : L"Case";
    const auto read = Settings().GetColorSettings(name);
    EXPECT_EQ(read != nullptr, row.read);
    EXPECT_NE(Settings().GetColorSettings(L"Good"), nullptr) << "the rest of the file is still read";
    EXPECT_EQ(NamesOfPresets().size(), row.read ? 14u : 13u);
    if (read != nullptr) {
      EXPECT_TRUE(read->GetUseLabPaletteNumbersForSpotColors());
      EXPECT_EQ(read->GetColorManagementModule(), ColorManagementModule::Icm);
      EXPECT_EQ(read->GetDefaultColorContext().GetColorProfiles().size(), 3u) << "gaps are filled";
    }
  }
  tests::WriteBytes(file, tests::BytesOf(start + tests::Replaced(preset, "<Name>Good<", "<Name>Case<")));
  ColorSettingsManager::ReLoad();
  EXPECT_EQ(NamesOfPresets().size(), 13u) << "the later of one name";
  const std::string good = preset.substr(preset.find("<ColorSettings id=\"Good\">"));
  tests::WriteBytes(file,
                    tests::BytesOf(start + tests::Replaced(tests::Replaced(preset, "id=\"Good\"", "id=\"Case\""),
                                                           ">true</PreservePureBlack>", ">false</PreservePureBlack>")));
  ColorSettingsManager::ReLoad();
  ASSERT_NE(Settings().GetColorSettings(L"Good"), nullptr) << "the second of one id is read itself";
  EXPECT_TRUE(Settings().GetColorSettings(L"Good")->GetPreservePureBlack());
  EXPECT_FALSE(Settings().GetColorSettings(L"Case")->GetPreservePureBlack());
}

TEST_F(ColorSettingsManagerTest, AFileThatNobodyUnderstandsIsKeptAndNothingElseIsLost)
{
  const std::string whole = FileWithTwoPresets();
  std::string deep;
  for (int i = 0; i < 100'000; ++i)
    deep += "<a>";
  const std::string secret = folder.Write("secret", tests::BytesOf("<secret/>"));
  const std::string damaged[] = {
    "",
    whole.substr(0, whole.size() / 2),
    "<?xml version='1.0'?><ProofColorSettingsCollection/>",
    tests::Replaced(whole, "Case", "C\xFF\xFE"),
    deep,
    "<!DOCTYPE a [<!ENTITY b \"bb\"><!ENTITY c \"&b;&b;&b;\">]><ColorManagementSettingsCollection>&c;"
    "</ColorManagementSettingsCollection>",
    "<!DOCTYPE a [<!ENTITY b SYSTEM \"file://" + secret +
      "\">]><ColorManagementSettingsCollection>&b;</ColorManagementSettingsCollection>",
  };
  for (const std::string &text : damaged) {
    SCOPED_TRACE(text.substr(0, 100));
    Restart();
    std::filesystem::remove_all(user);
    FileWithTwoPresets();
    ColorSettings chosen(*Settings().GetColorSettings(L"Case"));
    Settings().SetApplicationColorSettings(chosen);
    tests::WriteBytes(file, tests::BytesOf(text));
    ColorSettingsManager::ReLoad();
    EXPECT_TRUE(NamesOfPresets().empty());
    EXPECT_EQ(InForce(), chosen) << "what is in force stays";
    Restart(); // and so it is found at the next start
    EXPECT_EQ(InForce(), *ColorSettingsManager::GetFactoryColorSettings());
    EXPECT_EQ(tests::TextOf(file), text) << "looking at it changes nothing";
    EXPECT_THAT(DamagedKept(), ElementsAre());

    Settings().AddColorSettings(ColorSettings(L"New"));
    EXPECT_THAT(DamagedKept(), ElementsAre(text));
    EXPECT_EQ(NamesOfPresets().size(), 13u) << "the factory's come back with it";
    Restart();
    EXPECT_THAT(NamesOfPresets(), Contains(L"New"));
    EXPECT_EQ(NamesOfPresets().size(), 13u);
  }
}

TEST_F(ColorSettingsManagerTest, TheCountryChoosesWhatANewUserStartsWith)
{
  struct Row
  {
    const char *country;
    const wchar_t *name;
  };
  constexpr Row kRows[] = {{"US", L"North America Web"}, {"CA", L"North America Web"}, {"DE", L"Europe Web"},
                           {"SA", L"Europe Web"},        {"JP", L"Japan Web"},         {"CN", L"Japan Web"},
                           {"ZZ", L"North America Web"}, {"", L"North America Web"},   {"']", L"North America Web"}};
  for (const Row &row : kRows) {
    SCOPED_TRACE(row.country);
    Restart();
    std::filesystem::remove_all(user);
    ZelLocale::SetLocale({row.country, "en"});
    EXPECT_EQ(ColorSettingsManager::GetLocaleDefaultSettingsName(), row.name);
    EXPECT_EQ(InForce().GetName(), row.name);
    EXPECT_TRUE(Settings().AreApplicationColorSettingsDefaults());
    EXPECT_EQ(InForce(), *Settings().GetColorSettings(row.name));
    EXPECT_EQ(Settings().EnumerateColorSettings().size(), 12u);
    EXPECT_TRUE(std::filesystem::exists(file)) << "the first start writes it";
  }
  ZelLocale::SetLocale({"DE", "de"});
  const std::string data = UseOwnData();
  EXPECT_EQ(ColorSettingsManager::GetLocaleDefaultSettingsName(), L"North America Web") << "without a regions file";
  std::filesystem::create_directory(data + "/config");
  constexpr std::pair<const char *, const wchar_t *> kRegions[] = {
    {"<r><region name=\"Asia\"><geoID ID=\"FR\"/><geoID ID=\"DE\"/></region></r>", L"Japan Web"},
    {"<r><region><geoID ID=\"DE\"/></region></r>", L"North America Web"},
    {"<geoID ID=\"DE\"/>", L"North America Web"},
    {"<r><region name=\"Asia\"><geoID ID=\"DE\"/></region>", L"North America Web"}};
  for (const auto &[text, name] : kRegions) {
    tests::WriteBytes(data + "/config/ColorManagementRegions.xml", tests::BytesOf(text));
    EXPECT_EQ(ColorSettingsManager::GetLocaleDefaultSettingsName(), name) << text;
  }
}

TEST_F(ColorSettingsManagerTest, SettingsThatAreNotThereAreNotLookedForAtEveryColour)
{
  const ZelUtl::Folders installed = ZelUtl::GetFolders();
  ZelUtl::Folders bare = installed;
  bare.data = folder.Path("bare");
  ZelUtl::SetFolders(bare);
  ColorProfileManager::Shutdown();
  EXPECT_THROW(InForce(), ColorSystemError);
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 200; ++i)
    EXPECT_EQ(ColorContext::GetActiveColorContext().GetCmykColorProfile(), nullptr);
  // Each look takes 20 ms and more, of which there is one a second; all of them would take four seconds.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));

  ZelUtl::SetFolders(installed); // at once
  ColorProfileManager::Shutdown();
  EXPECT_NE(ColorContext::GetActiveColorContext().GetCmykColorProfile(), nullptr);
}

TEST_F(ColorSettingsManagerTest, WithoutAnyFileTheBuiltInSettingsAreInForceAndAFileIsBegun)
{
  UseOwnData();
  const auto builtIn = ColorSettingsManager::GetFactoryColorSettings();
  EXPECT_EQ(builtIn->GetName(), L"");
  EXPECT_TRUE(builtIn->GetMapGrayToCmykBlackChannel() && builtIn->GetUseLabPaletteNumbersForSpotColors());
  EXPECT_FALSE(builtIn->GetPreservePureBlack());
  EXPECT_EQ(builtIn->GetDefaultColorContext(),
            ColorContext(Shipped(L"sRGB-Placeholder!"), Shipped(L"USWebCoatedSWOP.icc"), Shipped(L"Dot Gain 20%.icc"),
                         ColorModel::Rgb, RenderingIntent::RelativeColorimetric));
  EXPECT_EQ(builtIn->GetColorPolicyForOpen(), ColorPolicy());
  EXPECT_EQ(builtIn->GetColorPolicyForImport().GetCmykPolicyAction(), ColorPolicyAction::ConvertToBaselineProfile);

  EXPECT_EQ(InForce(), *builtIn);
  EXPECT_TRUE(Settings().AreApplicationColorSettingsDefaults());
  EXPECT_TRUE(NamesOfPresets().empty());
  EXPECT_TRUE(std::filesystem::exists(file));
  EXPECT_FALSE(kHasColorSettings.Get()) << "nothing was read";
  Settings().ResetToFactorySettings();
  EXPECT_TRUE(kHasColorSettings.Get());
  EXPECT_FALSE(Settings().AreApplicationColorSettingsDefaults()) << "from now on they are the application's own";

  ColorSettings own;
  own.SetPreservePureBlack(true);
  Settings().SetApplicationColorSettings(own);
  Settings().ResetToFactorySettings();
  EXPECT_TRUE(InForce().GetPreservePureBlack()) << "only once";
}

TEST_F(ColorSettingsManagerTest, WithoutProfilesThereIsAnErrorOrWhatNeedsNone)
{
  ZelUtl::Folders folders = ZelUtl::GetFolders();
  folders.data = folder.Path("none");
  ZelUtl::SetFolders(folders);
  ColorProfileManager::Shutdown();
  try {
    Settings();
    FAIL() << "nothing can be in force";
  } catch (const ColorSystemError &error) {
    EXPECT_STREQ(error.what(), "ColorSettingsManager: Failed to find color profile");
  }
  EXPECT_EQ(ColorContext::GetApplicationDefaultColorContext().GetColorProfiles().size(), 0u);
  EXPECT_NE(ColorManagementSystem::GetCurrent(), nullptr);
}

TEST_F(ColorSettingsManagerTest, ReadingNeverWritesWithoutAConfiguration)
{
  host.configured = false;
  EXPECT_EQ(Settings().EnumerateColorSettings().size(), 12u);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_TRUE(Settings().AddColorSettings(ColorSettings(L"In memory")));
  EXPECT_NE(Settings().GetColorSettings(L"In memory"), nullptr);
  EXPECT_FALSE(Settings().SetApplicationColorSettings(*Settings().GetColorSettings(L"Europe Web")));
  EXPECT_EQ(InForce().GetName(), L"Europe Web");
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(ColorSettingsManagerTest, TheEnvironmentNamesAnotherFactoryFile)
{
  const std::string data = UseOwnData();
  std::filesystem::create_directory(data + "/color/Settings");
  std::filesystem::copy(shipped + "/color/Settings/ColorSettings.xml", data + "/color/Settings/ColorSettings.xml");
  tests::WriteBytes(data + "/color/Settings/House.xml",
                    tests::BytesOf(tests::Replaced(tests::TextOf(shipped + "/color/Settings/ColorSettings.xml"),
                                                   "<Name>Europe Web</Name>", "<Name>House</Name>")));
  for (const auto &[value, hasHouse] : {std::pair("House.xml", true), std::pair("", false)}) {
    Restart();
    std::filesystem::remove_all(user);
    tests::SetVariable("ZELCLR_COLORSETTINGS_XML", value);
    EXPECT_EQ(Settings().GetColorSettings(L"House") != nullptr, hasHouse);
    EXPECT_EQ(Settings().GetColorSettings(L"Europe Web") != nullptr, !hasHouse);
    tests::UnsetVariable("ZELCLR_COLORSETTINGS_XML");
  }
}

TEST_F(ColorSettingsManagerTest, WhatTheUserAddsIsHisAndWhatTheFactoryMadeStays)
{
  EXPECT_FALSE(Settings().CanRemoveColorSetting(L"Europe Web"));
  EXPECT_FALSE(Settings().CanRemoveColorSetting(L"Mine"));
  ColorSettings mine(L"Europe Web");
  mine.SetFactory(true);
  mine.SetPreservePureBlack(true);
  EXPECT_TRUE(Settings().AddColorSettings(mine));
  EXPECT_TRUE(Settings().CanRemoveColorSetting(L"Europe Web"));
  Restart();
  EXPECT_TRUE(Settings().GetColorSettings(L"Europe Web")->GetPreservePureBlack()) << "the application's list wins";
  EXPECT_TRUE(Settings().CanRemoveColorSetting(L"Europe Web"));
  EXPECT_TRUE(Settings().RemoveColorSetting(L"Europe Web"));
  EXPECT_EQ(Settings().GetColorSettings(L"Europe Web"), nullptr);
  Restart();
  EXPECT_FALSE(Settings().CanRemoveColorSetting(L"Europe Web"));
  ASSERT_NE(Settings().GetColorSettings(L"Europe Web"), nullptr) << "the factory's was there all the time";
  EXPECT_FALSE(Settings().GetColorSettings(L"Europe Web")->GetPreservePureBlack());
}

TEST_F(ColorSettingsManagerTest, Kept_RemovingAnUnknownNameErasesItFromTheFileAllTheSame)
{
  const std::string text = FileWithTwoPresets();
  const std::string broken = tests::Replaced(text, "<ColorSettings id=\"Case\">",
                                             "<ColorSettings id=\"Case\"/>"
                                             "<ColorSettings id=\"Case\">");
  tests::WriteBytes(file, tests::BytesOf(tests::Replaced(broken, "<Name>Case<", "<Name>Other<")));
  ColorSettingsManager::ReLoad();
  ASSERT_EQ(Settings().GetColorSettings(L"Case"), nullptr);
  EXPECT_TRUE(InFile(L"Case"));
  EXPECT_FALSE(Settings().RemoveColorSetting(L"Case"));
  EXPECT_FALSE(InFile(L"Case")) << "every element of that name";
  EXPECT_TRUE(InFile(L"Good"));
  EXPECT_FALSE(Settings().RemoveColorSetting(L"Case"));
}

TEST_F(ColorSettingsManagerTest, TwoApplicationsKeepTheirListsAndWhatIsInForce)
{
  const auto start = [this](const wchar_t *application) {
    Restart();
    host.name = application;
  };
  ColorSettings settings(L"Shared name");
  settings.SetPreservePureBlack(true);
  Settings().AddColorSettings(settings);
  Settings().SetApplicationColorSettings(settings);

  start(L"Layout \"1\"");
  EXPECT_EQ(Settings().GetColorSettings(L"Shared name"), nullptr);
  EXPECT_TRUE(Settings().AreApplicationColorSettingsDefaults());
  EXPECT_EQ(InForce().GetName(), L"North America Web");
  settings.SetPreservePureBlack(false);
  settings.SetUseRgbPaletteNumbersForSpotColors();
  Settings().AddColorSettings(settings);
  Settings().SetApplicationColorSettings(*Settings().GetColorSettings(L"Japan Web"));
  EXPECT_FALSE(Settings().RemoveColorSetting(L"Nobody's"));

  start(L"Draw");
  EXPECT_TRUE(Settings().GetColorSettings(L"Shared name")->GetPreservePureBlack());
  EXPECT_EQ(InForce().GetName(), L"Shared name");
  EXPECT_FALSE(Settings().AreApplicationColorSettingsDefaults());
  EXPECT_TRUE(Settings().RemoveColorSetting(L"Shared name"));

  start(L"Layout \"1\"");
  EXPECT_TRUE(Settings().GetColorSettings(L"Shared name")->GetUseRgbPaletteNumbersForSpotColors());
  EXPECT_EQ(InForce().GetName(), L"Japan Web");
  EXPECT_FALSE(InForce().IsFactory()) << "a choice is the application's own";
}

TEST_F(ColorSettingsManagerTest, WhatAnotherVersionWroteStaysInTheFile)
{
  Settings();
  tests::WriteBytes(file, tests::BytesOf(tests::Replaced(tests::TextOf(file), "<ColorSettingsPresets",
                                                         "<Later x=\"1\">text</Later><ColorSettingsPresets")));
  Settings().SetApplicationColorSettings(ColorSettings());
  EXPECT_NE(tests::TextOf(file).find("<Later x=\"1\">text</Later>"), std::string::npos);
}

TEST_F(ColorSettingsManagerTest, TheEntryOfTheApplicationComesBeforeThatOfTheFactory)
{
  Settings();
  const std::string text = tests::TextOf(shipped + "/color/Settings/ColorSettings.xml");
  const auto defaults = [&](const std::string &entries) {
    tests::WriteBytes(file, tests::BytesOf(tests::Replaced(text, "<ColorSettingsPresets",
                                                           "<ColorSettingsDefaults>" + entries +
                                                             "</ColorSettingsDefaults><ColorSettingsPresets")));
    ColorSettingsManager::ReLoad();
    return InForce().GetName();
  };
  const auto entry = [&](const std::string &id, const std::string &name, const std::string &module = "Icm") {
    const auto at = text.find("<ColorSettings id=\"Japan Prepress\">");
    std::string element = text.substr(at, text.find("</ColorSettings>", at) + 16 - at);
    element = tests::Replaced(element, "id=\"Japan Prepress\"", "id=\"" + id + "\"");
    element = tests::Replaced(element, ">Icm<", ">" + module + "<");
    return tests::Replaced(element, "<Name>Japan Prepress", "<Name>" + name);
  };
  EXPECT_EQ(defaults(entry("Factory", "F") + entry("Draw", "D")), L"D");
  EXPECT_FALSE(Settings().AreApplicationColorSettingsDefaults());
  EXPECT_EQ(defaults(entry("Layout", "L") + entry("Factory", "F")), L"F");
  EXPECT_TRUE(Settings().AreApplicationColorSettingsDefaults());
  EXPECT_EQ(defaults(entry("Draw", "D", "No engine") + entry("Factory", "F")), L"F") << "an entry that does not read";
  EXPECT_TRUE(Settings().AreApplicationColorSettingsDefaults());
  EXPECT_EQ(defaults(entry("Layout", "L")), L"North America Web");
  EXPECT_TRUE(Settings().AreApplicationColorSettingsDefaults());
}

struct Ear
{
  void Hear()
  {
    ++calls;
    heard = ColorSettings::GetApplicationColorSettings().GetName();
    ColorSettingsManager::GetInstance().EnumerateColorSettings(); // no lock is held
  }
  int calls = 0;
  std::wstring heard;
};

TEST_F(ColorSettingsManagerTest, WhatComesIntoForceIsToldOnceAndFollowedAtOnce)
{
  const auto manager = &Settings();
  Ear ear;
  const auto listener = ZelUtl::Delegate::To<&Ear::Hear>(ear);
  Manager().RegisterToColorProfilesChange(listener);
  ColorSettings settings(L"Press");
  ColorContext context = manager->GetColorSettings(L"Europe Prepress")->GetDefaultColorContext();
  context.SetBlendingColorModel(ColorModel::Cmyk);
  context.SetRenderingIntent(RenderingIntent::Saturation);
  settings.SetDefaultColorContext(context);
  settings.SetFactory(true);
  settings.SetColorManagementModule(ColorManagementModule::Linear);
  EXPECT_TRUE(manager->SetApplicationColorSettings(settings));
  EXPECT_EQ(ear.calls, 1);
  EXPECT_EQ(ear.heard, L"Press");
  EXPECT_FALSE(InForce().IsFactory());
  EXPECT_EQ(ColorSettingsManager::GetApplicationBlendingColorModel(), ColorModel::Cmyk);
  EXPECT_EQ(ColorSettingsManager::GetApplicationRenderingIntent(), RenderingIntent::Saturation);
  EXPECT_EQ(ColorContext().GetRenderingIntent(), RenderingIntent::Saturation);
  EXPECT_EQ(ColorContext::GetApplicationDefaultColorContext(), context);
  EXPECT_EQ(ColorManagementSystem::GetCurrent()->GetModule(), ColorManagementModule::Linear);
  for (const auto module : {ColorManagementModule::LCMS, ColorManagementModule::Linear, ColorManagementModule::LCMS}) {
    settings.SetColorManagementModule(module);
    manager->SetApplicationColorSettings(settings);
    EXPECT_EQ(ColorManagementSystem::GetCurrent()->GetModule(), module);
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(400)); // the watch has seen what was written
  EXPECT_EQ(ear.calls, 4) << "and knows it for our own";
  Manager().UnRegisterToColorProfilesChange(listener);
}

} // namespace
