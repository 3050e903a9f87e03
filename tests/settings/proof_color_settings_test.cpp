// Soft proofs: one set-up, the manager of the named ones, and what a view carries.
#include "tests/settings/support/settings_folders.h"
#include "zelclr/colorsystem/typed_colors.h"
#include "zelclr/platform/text.h"

#include <gmock/gmock.h>

using namespace ColorSystem;

namespace {

class ProofColorSettingsTest : public tests::SettingsFolders
{
protected:
  static ProofColorSettingsManager &Proofs() { return ProofColorSettingsManager::GetInstance(); }
  static std::string Preserved(const ProofColorSettings &settings)
  {
    return {settings.GetPreserveRgbNumbers() ? 'R' : '-', settings.GetPreserveCmykNumbers() ? 'C' : '-',
            settings.GetPreserveGrayscaleNumbers() ? 'G' : '-'};
  }
  ProofColorSettings Press() const
  {
    ProofColorSettings press(L"Press");
    press.SetEnvironmentToSimulate(Shipped(L"ISO Coated FOGRA39.icc"));
    press.SetRenderingIntent(RenderingIntent::AbsoluteColorimetric);
    press.SetPreserveNumbers(true);
    press.SetDisplayGamutWarning(true);
    press.SetGamutWarningLabelTransparency(0.3);
    press.SetGamutWarningLabelColor(
      CmykColor(0.125, 0.25, 1.0 / 3.0, 1.0, ColorSpace(*Shipped(L"USWebCoatedSWOP.icc"))));
    return press;
  }
};

TEST_F(ProofColorSettingsTest, NewOnesSimulateNothingAndWarnInGreen)
{
  const ProofColorSettings settings;
  EXPECT_EQ(Preserved(settings), "---");
  EXPECT_FALSE(settings.GetDisplayGamutWarning() || settings.GetPreserveNumbers() || settings.IsFactory());
  EXPECT_EQ(settings.GetGamutWarningLabelTransparency(), 0.0);
  EXPECT_EQ(settings.GetEnvironmentToSimulate(), nullptr);
  const auto green = settings.GetGamutWarningLabelColor();
  ASSERT_EQ(green->GetChannelCount(), 3u);
  EXPECT_EQ(green->GetColorModel(), ColorModel::Rgb);
  EXPECT_EQ(double{(*green)[0]}, 0.0);
  EXPECT_EQ(double{(*green)[1]}, 1.0);
  EXPECT_EQ(double{(*green)[2]}, 0.0);
}

TEST_F(ProofColorSettingsTest, Kept_TheLocalisedNameIsEmpty)
{
  EXPECT_EQ(ProofColorSettings(L"Europe Web").GetLocalizedName(), L"");
}

TEST_F(ProofColorSettingsTest, OneProfileAtMostIsSimulatedAndItsNumbersMayBePreserved)
{
  struct Row
  {
    const wchar_t *profile;
    ColorModel model;
    const char *preserved;
  };
  constexpr Row kRows[] = {{L"USWebCoatedSWOP.icc", ColorModel::Cmyk, "-C-"},
                           {L"sRGB_v4.icc", ColorModel::Rgb, "R--"},
                           {L"Gray Gamma 22.icc", ColorModel::Grayscale, "--G"},
                           {L"Hexachrome.icc", ColorModel::Hexachrome, "---"},
                           {L"ISO Coated FOGRA39.icc", ColorModel::Cmyk, "-C-"}};
  ProofColorSettings settings;
  settings.SetRenderingIntent(RenderingIntent::AbsoluteColorimetric);
  for (const Row &row : kRows) {
    settings.SetEnvironmentToSimulate(Shipped(row.profile));
    EXPECT_EQ(settings.GetEnvironmentToSimulate(), Shipped(row.profile));
    EXPECT_EQ(settings.GetColorContext().GetColorProfiles().size(), 1u);
    EXPECT_EQ(settings.GetColorContext().GetBlendingColorModel(), row.model);
    settings.SetPreserveNumbers(false);
    EXPECT_EQ(Preserved(settings), "---");
    settings.SetPreserveNumbers(true);
    EXPECT_EQ(Preserved(settings), row.preserved);
  }
  settings.SetEnvironmentToSimulate(nullptr);
  EXPECT_TRUE(settings.GetColorContext().GetColorProfiles().empty());
  EXPECT_EQ(settings.GetRenderingIntent(), RenderingIntent::AbsoluteColorimetric);
}

TEST_F(ProofColorSettingsTest, OnlyWhatIsSimulatedCountsInComparingAndAllIsCopied)
{
  struct Row
  {
    void (*change)(ProofColorSettings &);
    bool counts;
  };
  constexpr Row kRows[] = {
    {[](ProofColorSettings &s) { s.SetName(L"x"); }, false},
    {[](ProofColorSettings &s) { s.SetDisplayGamutWarning(false); }, false},
    {[](ProofColorSettings &s) { s.SetGamutWarningLabelTransparency(0.7); }, false},
    {[](ProofColorSettings &s) { s.SetGamutWarningLabelColor(LabColor(0.5, 0.5, 0.5)); }, false},
    {[](ProofColorSettings &s) { s.SetFactory(true); }, false},
    {[](ProofColorSettings &s) { s.SetPreserveNumbers(false); }, true},
    {[](ProofColorSettings &s) { s.SetRenderingIntent(RenderingIntent::Perceptual); }, true},
    {[](ProofColorSettings &s) { s.SetEnvironmentToSimulate(nullptr); }, true},
  };
  const ProofColorSettings press = Press();
  for (const Row &row : kRows) {
    SCOPED_TRACE(&row - kRows);
    ProofColorSettings changed(press);
    row.change(changed);
    EXPECT_EQ(changed != press, row.counts);
    const ProofColorSettings copy(changed);
    EXPECT_EQ(copy, changed);
    EXPECT_EQ(copy.GetName(), changed.GetName());
    EXPECT_EQ(copy.GetDisplayGamutWarning(), changed.GetDisplayGamutWarning());
    EXPECT_EQ(copy.GetGamutWarningLabelTransparency(), changed.GetGamutWarningLabelTransparency());
    EXPECT_EQ(copy.GetGamutWarningLabelColor()->GetColorModel(), changed.GetGamutWarningLabelColor()->GetColorModel());
    EXPECT_EQ(copy.IsFactory(), changed.IsFactory());
  }
}

TEST_F(ProofColorSettingsTest, ThePresetsLiveInTheirOwnFile)
{
  EXPECT_EQ(Proofs().GetApplicationProofColorSettings(), ProofColorSettings());
  EXPECT_TRUE(Proofs().AreApplicationProofColorSettingsDefaults());
  const auto factory = Proofs().EnumerateProofColorSettings();
  EXPECT_FALSE(factory.empty());
  for (const auto &preset : factory) {
    EXPECT_FALSE(Proofs().CanRemoveColorSetting(preset->GetName()));
    EXPECT_NE(preset->GetEnvironmentToSimulate(), nullptr) << ZelUtl::Utf8FromWide(preset->GetName());
  }
  const ProofColorSettings press = Press();
  EXPECT_TRUE(Proofs().AddProofColorSettings(press));
  EXPECT_TRUE(Proofs().SetApplicationProofColorSettings(press));
  Restart();
  EXPECT_EQ(Proofs().EnumerateProofColorSettings().size(), factory.size() + 1);
  EXPECT_FALSE(Proofs().AreApplicationProofColorSettingsDefaults());
  for (const ProofColorSettings &read :
       {*Proofs().GetProofColorSettings(L"Press"), ProofColorSettings(Proofs().GetApplicationProofColorSettings())})
  {
    EXPECT_EQ(read, press);
    EXPECT_TRUE(read.GetDisplayGamutWarning());
    EXPECT_EQ(read.GetGamutWarningLabelTransparency(), 0.3);
    const auto color = read.GetGamutWarningLabelColor();
    ASSERT_EQ(color->GetChannelCount(), 4u);
    EXPECT_EQ(color->GetColorProfile(), Shipped(L"USWebCoatedSWOP.icc"));
    for (unsigned i = 0; i < 4; ++i)
      EXPECT_EQ(double{(*color)[i]}, double{(*press.GetGamutWarningLabelColor())[i]}) << "to the last bit";
  }
  EXPECT_TRUE(Proofs().RemoveColorSetting(L"Press"));
  EXPECT_FALSE(Proofs().RemoveColorSetting(L"Press"));
  EXPECT_FALSE(std::filesystem::exists(file)) << "not in that of the colour settings";
}

TEST_F(ProofColorSettingsTest, AnElementIsReadWholeOrLeftOut)
{
  Proofs().AddProofColorSettings(Press());
  const std::string text = tests::TextOf(proofFile);
  const std::size_t presets = Proofs().EnumerateProofColorSettings().size();
  const std::string start = text.substr(0, text.find("<ProofColorSettings id=\"Press\">"));
  const std::string preset = text.substr(start.size());
  struct Row
  {
    const char *from, *to;
    bool read;
  };
  constexpr Row kRows[] = {
    {"USWebCoatedSWOP.icc", "nobody has this.icc", false},
    {"USWebCoatedSWOP.icc", "sRGB_v4.icc", false},
    {"<ColorModel>Cmyk", "<ColorModel>Spot", false},
    {"<ColorChannel>1</ColorChannel>", "", false},
    {"<ColorChannel>1</ColorChannel>", "<ColorChannel>1</ColorChannel><ColorChannel>1</ColorChannel>", false},
    {"<ColorChannel>1</ColorChannel>", "<ColorChannel>nan</ColorChannel>", false},
    {">0.3<", ">inf<", false},
    {"<PreserveNumbers>true", "<PreserveNumbers>", false},
    {"AbsoluteColorimetric", "Absolute", false},
    {"<ColorContext id=\"ProofColorContext\">", "<ColorContext>", false},
    {"<WarningLabelTransparency>0.3</WarningLabelTransparency>", "", true},
    {"id=\"GamutWarningLabelColor\"", "id=\"Later\"", true},
  };
  for (const Row &row : kRows) {
    SCOPED_TRACE(testing::Message() << row.from << " -> " << row.to);
    tests::WriteBytes(proofFile, tests::BytesOf(start + tests::Replaced(preset, row.from, row.to)));
    ProofColorSettingsManager::ReLoad();
    EXPECT_EQ(Proofs().GetProofColorSettings(L"Press") != nullptr, row.read);
    EXPECT_EQ(Proofs().EnumerateProofColorSettings().size(), row.read ? presets : presets - 1);
  }
}

TEST_F(ProofColorSettingsTest, WithoutAnythingInstalledTheyWorkAllTheSame)
{
  ZelUtl::Folders folders = ZelUtl::GetFolders();
  folders.data = folder.Path("none");
  ZelUtl::SetFolders(folders);
  ColorProfileManager::Shutdown();
  EXPECT_TRUE(Proofs().EnumerateProofColorSettings().empty());
  EXPECT_TRUE(Proofs().AddProofColorSettings(ProofColorSettings(L"Nothing")));
  Restart();
  EXPECT_NE(Proofs().GetProofColorSettings(L"Nothing"), nullptr);
}

TEST_F(ProofColorSettingsTest, AViewShowsItsProofWhenItIsOnAndThereAreProfilesToProofWith)
{
  EXPECT_FALSE(GetDisplayProofPref());
  EXPECT_FALSE(ViewProofSettings().GetDisplayProof());
  EXPECT_TRUE(SetDisplayProofPref(true));
  ViewProofSettings view;
  EXPECT_TRUE(view.GetDisplayProof());
  EXPECT_EQ(ViewProofSettings::GetSafeProofSettings(nullptr), nullptr);
  EXPECT_EQ(ViewProofSettings::GetSafeActiveProofSettings(nullptr), nullptr);
  EXPECT_EQ(ViewProofSettings::GetSafeActiveProofSettings(&view), &view.GetProofSettings());

  ColorSettings formulas;
  formulas.SetColorManagementModule(ColorManagementModule::Linear);
  Settings().SetApplicationColorSettings(formulas);
  EXPECT_FALSE(view.GetDisplayProof()) << "there are no profiles to proof with";
  EXPECT_EQ(ViewProofSettings::GetSafeActiveProofSettings(&view), nullptr);
  EXPECT_EQ(ViewProofSettings::GetSafeProofSettings(&view), &view.GetProofSettings());
  Settings().SetApplicationColorSettings(*Settings().GetColorSettings(L"Europe Web"));
  EXPECT_TRUE(view.GetDisplayProof());
  view.SetDisplayProof(false);
  EXPECT_EQ(ViewProofSettings::GetSafeActiveProofSettings(&view), nullptr);
}

TEST_F(ProofColorSettingsTest, TheHostSaysWhichViewProofs)
{
  ViewProofSettings first, second;
  int documents[2] = {};
  auto *const one = reinterpret_cast<ZelUtl::Document *>(&documents[0]);
  auto *const two = reinterpret_cast<ZelUtl::Document *>(&documents[1]);
  host.view = &first;
  host.other = &second;
  EXPECT_EQ(ViewProofSettings::GetActiveViewSettings(), nullptr) << "no document";
  EXPECT_EQ(ViewProofSettings::GetActiveViewSettings(two), &second);
  host.active = one;
  EXPECT_EQ(ViewProofSettings::GetActiveViewSettings(), &first);
  EXPECT_EQ(ViewProofSettings::GetActiveViewSettings(two), &second);

  Settings().SetApplicationColorSettings(*Settings().GetColorSettings(L"Europe Prepress"));
  ViewProofSettings &standard = ViewProofSettings::GetDefaultViewSettings();
  EXPECT_EQ(standard.GetProofSettings().GetEnvironmentToSimulate()->GetName(),
            InForce().GetDefaultColorContext().GetBlendingColorProfile()->GetName());
  EXPECT_EQ(&ViewProofSettings::GetDefaultViewSettings(), &standard);
}

} // namespace
