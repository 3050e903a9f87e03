// Which palette spot colours are looked for in, by the user's file, the installation's and the preference.
#include "tests/palettes/support/palette_folders.h"
#include "zelclr/palettes/default_spot_palette.h"
#include "zelclr/platform/preferences.h"

#include <filesystem>

using namespace ZelClr;
using tests::GuidOf;
using tests::GuidText;
using ZelUtils::Guid;

namespace {

class DefaultSpotPalette : public tests::PaletteFolders
{
protected:
  static std::string Text(const std::string &guid)
  {
    return "<?xml version=\"1.0\"?>\n<ColorPaletteManager><!-- kept -->\n<defaultSpotColorPalette guid=\"" + guid +
           "\" other=\"kept\"/><later/></ColorPaletteManager>";
  }
  static std::string Preference()
  {
    return ZelUtl::CAppPrefManager::GetInstance().GetText("palettes", "DefaultSpotPalette").value_or("");
  }
  static Guid InNewProcess()
  {
    WClrPaletteMgr::Shutdown();
    return Manager().GetDefaultSpotPaletteGuid();
  }

  const std::string shipped = "data/config/ColorPaletteManager.xml";
  const std::string user = "user/config/ColorPaletteManager.xml";
  std::string reason;
};

TEST_F(DefaultSpotPalette, IsWhatTheFileSaysElseThePreferenceElseBuiltIn)
{
  EXPECT_EQ(InNewProcess(), BuiltInDefaultSpotPalette());
  EXPECT_FALSE(std::filesystem::exists(folder.Path(user))) << "there is nothing to copy";
  ZelUtl::CAppPrefManager::GetInstance().SetText("palettes", "DefaultSpotPalette", GuidText(3), reason);
  for (const std::string &silent : {Text(""), Text("{1}"), Text(Guid().ToText()), std::string("<ColorPaletteManager/>"),
                                    std::string("<other/>"), std::string("<Color")})
  {
    folder.WriteText(user, silent);
    EXPECT_EQ(InNewProcess(), GuidOf(3)) << silent;
    EXPECT_EQ(tests::TextOf(folder.Path(user)), silent);
  }
  folder.WriteText(user, Text(GuidText(4)));
  EXPECT_EQ(Manager().GetDefaultSpotPaletteGuid(), GuidOf(3)) << "the file is read once";
  EXPECT_EQ(InNewProcess(), GuidOf(4));
  EXPECT_EQ(Preference(), GuidText(4));
}

TEST_F(DefaultSpotPalette, TheUsersFileBeginsAsTheInstallations)
{
  std::filesystem::permissions(folder.WriteText(shipped, Text(GuidText(5))), std::filesystem::perms::owner_read);
  EXPECT_EQ(InNewProcess(), GuidOf(5));
  EXPECT_EQ(tests::TextOf(folder.Path(user)), Text(GuidText(5)));
  ASSERT_TRUE(Manager().SetDefaultSpotPaletteGuid(GuidOf(6)));
  EXPECT_EQ(Manager().GetDefaultSpotPaletteGuid(), GuidOf(6));
  EXPECT_EQ(Preference(), GuidText(6));
  EXPECT_EQ(InNewProcess(), GuidOf(6));
  const std::string text = tests::TextOf(folder.Path(user));
  for (const char *kept : {"<!-- kept -->", "other=\"kept\"", "<later/>"})
    EXPECT_NE(text.find(kept), std::string::npos) << text;
}

TEST_F(DefaultSpotPalette, StaysInForceWhenItCannotBeStored)
{
  EXPECT_FALSE(Manager().SetDefaultSpotPaletteGuid(GuidOf(7))) << "no file to copy";
  EXPECT_EQ(Preference(), "");
  folder.WriteText(shipped, Text(GuidText(5)));
  EXPECT_EQ(InNewProcess(), GuidOf(5));
  EXPECT_FALSE(Manager().SetDefaultSpotPaletteGuid(Guid()));
  ZelUtl::SetFileFaults([](ZelUtl::FileStep) { return ENOSPC; });
  EXPECT_FALSE(Manager().SetDefaultSpotPaletteGuid(GuidOf(7)));
  std::filesystem::remove(folder.Path(user));
  EXPECT_EQ(InNewProcess(), GuidOf(5)) << "by the preference";
  EXPECT_FALSE(Manager().SetDefaultSpotPaletteGuid(GuidOf(7)));
  ZelUtl::SetFileFaults({});
  EXPECT_EQ(Preference(), GuidText(5));

  folder.WriteText(user, "damaged");
  EXPECT_TRUE(Manager().SetDefaultSpotPaletteGuid(GuidOf(8)));
  EXPECT_EQ(tests::TextOf(folder.Path(user + ".damaged")), "damaged");
  EXPECT_EQ(InNewProcess(), GuidOf(8));
}

} // namespace
