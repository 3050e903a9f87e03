// The palette manager: which files become palettes, under which identifiers, and where changes go.
#include "tests/palettes/support/palette_folders.h"
#include "zelclr/palettes/fixed_palettes.h"
#include "zelclr/palettes/palette_folders.h"
#include "zelclr/platform/preferences.h"
#include "zelclr/platform/zip_archive.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>

using namespace ZelClr;
using testing::ElementsAre;
using testing::IsEmpty;
using ZelUtils::Guid;

namespace {

class PaletteMgr : public tests::PaletteFolders
{
protected:
  std::string FixedPath(const std::string &row) const { return installed + row; }
  static std::string FixedGuid(const std::string &row) { return FindFixedPalette(row)->identifier.ToText(); }
  static const CLR_COLORSPEC red;
};

const CLR_COLORSPEC PaletteMgr::red = CLR_COLORSPEC::MakeRGB(255, 0, 0);

// --- Discovery ------------------------------------------------------------------------------------------------------

TEST_F(PaletteMgr, DiscoversAFolderAtEachStep)
{
  int guid = 1;
  for (const char *path : {"top", "Other/none", "Process/plain", "Process/Deep/none", "Spot/ink", "Spot/HKS/deep ink",
                           "Process/PANTONE/A/pantone", "Process/CMYK/A/cmyk", "Process/RGB/A/rgb"})
    Write(installed + path + ".xml", guid++);
  Write(custom + "a/b/own.xml", guid++);
  folder.WriteText(installed + "README.txt", "no palette");
  folder.WriteText(installed + "broken.xml", "<palette");
  folder.WriteText(installed + "other.xml", "<gallery/>");
  tests::LinkFolder("..", folder.Path(custom + "ring"));

  const std::vector<std::vector<std::string>> found = {{"top"},  {"plain"}, {"ink", "deep ink"}, {"pantone"}, {"own"},
                                                       {"cmyk"}, {"rgb"}};
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(Manager().DiscoverPalettes(true));
    std::vector<std::string> all;
    for (const auto &step : found) {
      EXPECT_TRUE(Manager().DiscoverPalettes(false));
      all.insert(all.end(), step.begin(), step.end());
      if (round == 0) {
        EXPECT_EQ(Names(), all);
      }
    }
    EXPECT_FALSE(Manager().DiscoverPalettes(false));
    EXPECT_FALSE(Manager().DiscoverPalettes(false));
    EXPECT_EQ(Names(), all) << "each is loaded once";
  }
}

TEST_F(PaletteMgr, FindsNothingInMissingFolders)
{
  Manager().DiscoverAllPalettes();
  Manager().LoadPalettes(folder.Wide("nowhere"), true);
  Manager().LoadPalettes(L"", true);
  ZelUtl::SetFolders({});
  Manager().DiscoverPalettes(true);
  Manager().DiscoverAllPalettes();
  EXPECT_THAT(Names(), IsEmpty());
  EXPECT_EQ(Manager().GetDefaultPalette(), nullptr);
}

TEST_F(PaletteMgr, LoadsEachOfTwinsOnce)
{
  Write("f/a.xml", 1);
  folder.WriteText("f/a.cpl", "never read");
  Write("f/b.xml", 2);
  folder.WriteText("f/b.xml.zip", "never read");
  std::string reason;
  const std::string packed = tests::PaletteText(tests::GuidText(3), "c");
  const ZelUtl::ZipEntry entries[] = {{"c.xml", packed}};
  folder.WriteText("f/c.xml.zip", ZelUtl::WriteZip(entries, reason).value());
  folder.WriteText("f/d.gpl", "GIMP Palette\nName: d\n255 0 0 Red\n");
  Manager().LoadPalettes(folder.Wide("f"), false);
  EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(Manager().GetPaletteID(folder.Wide("f/c.xml.zip")), Manager().FindPalette(L"c"));
  EXPECT_EQ(Manager().GetPaletteID(folder.Wide("f/a.cpl")), Manager().FindPalette(L"a"));
}

TEST_F(PaletteMgr, NeverWritesToForeignFiles)
{
  const std::string text = "GIMP Palette\n255 128 0 Orange\n";
  const std::string path = folder.WriteText("brand.gpl", text);
  WClrPalette *palette = Manager().LoadPalette(folder.Wide("brand.gpl"));
  ASSERT_NE(palette, nullptr);
  EXPECT_EQ(palette->GetPaletteName(), L"brand");
  EXPECT_EQ(palette->GetColorSpec(0), CLR_COLORSPEC::MakeRGB(255, 128, 0));
  EXPECT_FALSE(palette->RemoveColor(0));
  palette->SetChanged(true);
  EXPECT_NE(Manager().WritePalette(palette), ePaletteWriteResult::Ok);
  const Guid guid = palette->GetPaletteGuid();
  EXPECT_FALSE(guid.IsNull());
  WClrPaletteMgr::Shutdown();
  EXPECT_EQ(tests::TextOf(path), text);
  std::filesystem::rename(path, folder.Path("renamed.gpl"));
  EXPECT_EQ(Manager().LoadPalette(folder.Wide("renamed.gpl"))->GetPaletteGuid(), guid) << "for documents";
}

// --- Identity -------------------------------------------------------------------------------------------------------

TEST_F(PaletteMgr, HoldsAFileAndAnIdentifierOnce)
{
  WClrPalette *first = Manager().LoadPalette(Write("a.xml", 1));
  Write("b.xml", 1);
  std::filesystem::create_directory(folder.Path("sub"));
  const bool linked = tests::LinkFolder(".", folder.Path("ring"));
  for (const char *same : {"a.xml", "./a.xml", linked ? "ring/a.xml" : "sub/../a.xml", "b.xml"})
    EXPECT_EQ(Manager().LoadPalette(folder.Wide(same)), first) << same;
  EXPECT_NE(Manager().LoadPalette(Write("c.xml", 0)), nullptr);
  EXPECT_NE(Manager().LoadPalette(Write("d.xml", 0)), nullptr) << "no identifier is no one's";
  EXPECT_THAT(Names(), ElementsAre("a", "c", "d"));
  EXPECT_EQ(Manager().FindPalette(Guid()), nullptr);
  EXPECT_EQ(Manager().LoadPalette(folder.Wide("a.xml"), tests::GuidOf(9)), nullptr) << "an unknown class";
}

TEST_F(PaletteMgr, FixedIdentifiersBelongToTheTable)
{
  const std::string row = "Process/rgbstd.xml";
  const Guid guid = FindFixedPalette(row)->identifier;
  EXPECT_EQ(Manager().GetPaletteIDFromGuid(guid), nullptr) << "not installed";
  WClrPalette *book = Manager().LoadPalette(WriteAs(custom + "bought.xml", guid.ToText(), "bought"));
  EXPECT_EQ(Manager().GetPaletteIDFromGuid(guid), book) << "where the user has it";
  WClrPaletteMgr::Shutdown();

  WriteAs(FixedPath(row), guid.ToText(), "shipped");
  Write(installed + "other.xml", 1);
  WClrPalette *shipped = Manager().LoadPalette(folder.Wide(custom + "bought.xml"));
  EXPECT_EQ(shipped->GetPaletteName(), L"shipped");
  WClrPaletteMgr::Shutdown();

  shipped = Manager().GetPaletteIDFromGuidWithoutDiscovery(guid);
  EXPECT_THAT(Names(), ElementsAre("shipped")) << "no folder is listed";
  Manager().DiscoverAllPalettes();
  EXPECT_THAT(Names(), ElementsAre("shipped", "other"));
  WClrPaletteMgr::Shutdown();

  WriteAs(FixedPath(row), tests::GuidText(7), "another");
  EXPECT_EQ(Manager().GetPaletteIDFromGuidWithoutDiscovery(guid), nullptr) << "its file holds another palette";
}

TEST_F(PaletteMgr, DiscoversForAnIdentifierAndLooksAgainOnlyWhenReset)
{
  Write(custom + "own.xml", 1);
  const std::string row = "Spot/toyo.xml";
  const Guid toyo = FindFixedPalette(row)->identifier;
  EXPECT_EQ(Manager().GetPaletteIDFromGuidWithoutDiscovery(tests::GuidOf(1)), nullptr);
  EXPECT_EQ(Manager().GetPaletteIDFromGuid(toyo), nullptr);
  ASSERT_NE(Manager().GetPaletteIDFromGuid(tests::GuidOf(1)), nullptr);
  WriteAs(FixedPath(row), toyo.ToText(), "toyo");
  EXPECT_EQ(Manager().GetPaletteIDFromGuid(toyo), nullptr);
  Manager().DiscoverPalettes(true);
  EXPECT_NE(Manager().GetPaletteIDFromGuidWithoutDiscovery(toyo), nullptr);
}

TEST(PaletteFolderIdentifier, IsKnownForEightFolders)
{
  std::set<Guid> known;
  for (const wchar_t *name :
       {L"Misc", L"Nature", L"People", L"Things", L"Spot", L"Previous Version", L"Process", L"256 Colors"})
    known.insert(PaletteFolderIdentifier(name));
  EXPECT_EQ(known.size(), 8u);
  EXPECT_FALSE(known.contains(Guid()));
  EXPECT_EQ(PaletteFolderIdentifier(L"misc"), Guid());
}

// --- Saving ---------------------------------------------------------------------------------------------------------

TEST_F(PaletteMgr, KeepsTheInstallationAsItIs)
{
  const std::string path = FixedPath("Process/RGB/Misc/rReds.xml");
  const std::string guid = FixedGuid("Process/RGB/Misc/rReds.xml");
  const std::wstring file = WriteAs(path, guid, "Reds");
  const std::string shipped = tests::TextOf(folder.Path(path));
  const std::string version = folder.Path("user/color/Palettes/Process/RGB/Misc/rReds.xml");

  // Saved when it goes, and when it is asked for.
  for (const bool asked : {false, true}) {
    WClrPalette *reds = Manager().LoadPalette(file);
    EXPECT_EQ(reds->GetFileName(), asked ? ZelUtl::WideFromUtf8(version) : file);
    EXPECT_NE(Manager().AddColor(reds, {red, L"Red"}), -1);
    if (asked) {
      EXPECT_EQ(Manager().WritePalette(reds), ePaletteWriteResult::Ok);
      EXPECT_EQ(Manager().GetPaletteID(file), reds);
    }
    WClrPaletteMgr::Shutdown();
    EXPECT_EQ(tests::TextOf(folder.Path(path)), shipped);
    EXPECT_TRUE(std::filesystem::exists(version));
  }
  WClrPalette *reds = Manager().GetPaletteIDFromGuidWithoutDiscovery(*Guid::FromText(std::string_view(guid)));
  ASSERT_NE(reds, nullptr);
  EXPECT_EQ(reds->GetPaletteSize(), 3) << "the user's version is in force";
  Manager().DiscoverAllPalettes();
  EXPECT_THAT(Names(), ElementsAre("Reds"));
  EXPECT_TRUE(Manager().ResetPalette(reds));
  EXPECT_EQ(reds->GetPaletteSize(), 1);
  WClrPaletteMgr::Shutdown();
  EXPECT_FALSE(std::filesystem::exists(version));
  EXPECT_EQ(Manager().LoadPalette(file)->GetPaletteSize(), 1);
}

TEST_F(PaletteMgr, SaysWhatWritingCameTo)
{
  WClrPalette *palette = Manager().LoadPalette(Write("a.xml", 1));
  Manager().AddColor(palette, {red, L"Red"});
  ZelUtl::SetFileFaults([](ZelUtl::FileStep) { return EIO; });
  EXPECT_EQ(Manager().WritePalette(palette), ePaletteWriteResult::Failed);
  EXPECT_EQ(Manager().CreateCustomPalette(L"New"), nullptr);
  ZelUtl::SetFileFaults({});
  EXPECT_EQ(tests::TextOf(folder.Path("a.xml")), tests::PaletteText(tests::GuidText(1), "a"));
  EXPECT_EQ(Manager().WritePalette(palette), ePaletteWriteResult::Ok);
  EXPECT_FALSE(palette->IsChanged());

  EXPECT_EQ(Manager().WritePaletteAs(palette, L"", L"B"), ePaletteWriteResult::NoFileName);
  EXPECT_EQ(Manager().WritePaletteAs(palette, folder.Wide("new/b.xml"), L"B"), ePaletteWriteResult::Ok);
  EXPECT_NE(palette->GetPaletteGuid(), tests::GuidOf(1));
  EXPECT_EQ(Manager().GetPaletteID(folder.Wide("new/b.xml")), palette);
  palette->SetLocked(true);
  EXPECT_EQ(Manager().WritePalette(palette), ePaletteWriteResult::Ok) << "the lock is saved";
  EXPECT_EQ(Manager().WritePalette(palette), ePaletteWriteResult::Locked);
  palette->SetLocked(false);
  palette->SetFileName({});
  EXPECT_EQ(Manager().WritePalette(palette), ePaletteWriteResult::NoFileName);
}

TEST_F(PaletteMgr, MakesCustomPalettesInFilesOfTheirOwn)
{
  WClrPalette *first = Manager().CreateCustomPalette(L"Brand: \"2024\"");
  WClrPalette *second = Manager().CreateCustomPalette(L"Brand: \"2024\"");
  ASSERT_TRUE(first != nullptr && second != nullptr);
  EXPECT_EQ(first->GetPaletteName(), L"Brand: \"2024\"");
  EXPECT_TRUE(first->IsCustomPalette());
  EXPECT_NE(first->GetPaletteGuid(), second->GetPaletteGuid());
  EXPECT_NE(first->GetFileName(), second->GetFileName());
  const Guid guid = second->GetPaletteGuid();
  Manager().AddColor(second, {red, L"Red"});
  EXPECT_TRUE(Manager().ResetPalette(second));
  EXPECT_EQ(second->GetPaletteSize(), 0) << "as its file has it";
  Manager().AddColor(second, {red, L"Red"});
  EXPECT_TRUE(Manager().DeletePaletteID(second));
  EXPECT_FALSE(Manager().DeletePaletteID(second));
  second = Manager().GetPaletteIDFromGuid(guid);
  ASSERT_NE(second, nullptr) << "its file stays";
  EXPECT_EQ(second->GetPaletteSize(), 1) << "saved when it went";
}

TEST_F(PaletteMgr, TwinsAreHarmlessToStrangersAndWorkForPalettes)
{
  WClrPaletteMgr &manager = Manager();
  WClrPalette local;
  WClrPalette *gone = manager.LoadPalette(Write("a.xml", 1));
  ASSERT_TRUE(manager.DeletePaletteID(gone));
  CLR_COLORSPEC color;
  for (WClrPalette *stranger : {static_cast<WClrPalette *>(nullptr), gone, &local}) {
    EXPECT_FALSE(manager.HasPalette(stranger));
    EXPECT_EQ(manager.InsertColor(stranger, 0, {red, L"Red"}), -1);
    EXPECT_EQ(manager.GetColorIndex(stranger, red), -1);
    EXPECT_EQ(manager.GetPaletteSize(stranger), 0);
    EXPECT_EQ(manager.GetPaletteName(stranger), L"");
    EXPECT_TRUE(manager.GetColorSpec(stranger, 0).IsInvalid());
    EXPECT_FALSE(manager.GetPaletteColor(stranger, 0, color));
    EXPECT_FALSE(manager.RestoreFromString(stranger, L"<palette/>"));
    EXPECT_EQ(manager.AddSpotColor(stranger, {L"Ink", L"", {{5, red}}}, color), PaletteResult::BadArgument);
    EXPECT_EQ(manager.WritePalette(stranger), ePaletteWriteResult::Failed);
    EXPECT_FALSE(manager.ResetPalette(stranger));
    EXPECT_EQ(manager.FindDocumentFromPaletteID(stranger), nullptr);
    EXPECT_EQ(manager.SetDefaultPalette(stranger), stranger == nullptr);
  }
  EXPECT_EQ(local.GetPaletteSize(), 0);

  WClrPalette *palette = manager.LoadPalette(folder.Wide("a.xml"));
  EXPECT_EQ(manager.InsertColor(palette, 0, {red, L"Red"}), 0);
  EXPECT_EQ(manager.GetColorIndex(palette, red), 0);
  EXPECT_EQ(manager.GetPaletteSize(palette), 2);
  EXPECT_TRUE(manager.SortReverse(palette));
  EXPECT_EQ(manager.GetColorName(palette, 1), L"Red");
  EXPECT_FALSE(manager.RestoreFromPalette(palette, &local));
}

// --- Default palettes -----------------------------------------------------------------------------------------------

TEST_F(PaletteMgr, StartsDocumentsWithTheFirstPaletteThatThereIs)
{
  ZelUtl::Document document;
  const auto nameOfDefault = [] {
    WClrPaletteMgr::Shutdown();
    const WClrPalette *palette = Manager().GetDefaultPalette();
    return palette == nullptr ? std::string() : ZelUtl::Utf8FromWide(palette->GetPaletteName());
  };
  EXPECT_EQ(nameOfDefault(), "");
  Write(installed + "defrgb.xml", 1);
  EXPECT_EQ(nameOfDefault(), "defrgb");
  WriteAs(installed + "dynamic.xml", FixedGuid("dynamic.xml"), "dynamic");
  EXPECT_EQ(nameOfDefault(), "dynamic");
  WriteAs("user/color/Palettes/dynamic.xml", FixedGuid("dynamic.xml"), "my dynamic");
  EXPECT_EQ(nameOfDefault(), "my dynamic");

  EXPECT_TRUE(Manager().SetDefaultPalette(Manager().LoadPalette(Write("chosen.xml", 2))));
  EXPECT_EQ(nameOfDefault(), "chosen");
  host.active = &document;
  WClrPalette *own = Manager().CreateDocumentPalette(document);
  EXPECT_TRUE(Manager().SetDefaultPalette(own));
  EXPECT_EQ(Manager().LoadDefaultPalette(), own);
  host.open = 1;
  ZelUtl::ReportCloseDocument();
  EXPECT_EQ(ZelUtl::Utf8FromWide(Manager().GetDefaultPalette()->GetPaletteName()), "my dynamic");
  EXPECT_EQ(nameOfDefault(), "my dynamic") << "the document has no palette in a new process";
  EXPECT_EQ(Manager().GetDefaultPalette()->GetFileName(), folder.Wide("user/color/Palettes/dynamic.xml"));
  own = Manager().CreateDocumentPalette(document);
  EXPECT_EQ(Manager().LoadDefaultPalette(), own) << "the preference still names the document's";
}

// --- Lists ----------------------------------------------------------------------------------------------------------

TEST_F(PaletteMgr, ListsDistinctColorsInOrder)
{
  const CLR_COLORSPEC blue = CLR_COLORSPEC::MakeRGB(0, 0, 255);
  const auto unique = WClrPaletteMgr::BuildUniqueColorList(
    {{red, L"first"}, {blue, L"b"}, {CLR_COLORSPEC(), L"none"}, {red, L"second"}, {CLR_COLORSPEC::MakeGRAY(0), L"g"}});
  ASSERT_EQ(unique.size(), 3u);
  EXPECT_EQ(unique[0].name, L"first");
  EXPECT_EQ(unique[1].name, L"b");
  EXPECT_EQ(unique[2].color, CLR_COLORSPEC::MakeGRAY(0));
  WClrPalette *a = Manager().LoadPalette(Write("a.xml", 1));
  WClrPalette *b = Manager().LoadPalette(Write("b.xml", 2));
  Manager().AddColor(b, {red, L"Red"});
  EXPECT_EQ(Manager().BuildUniqueColorList({a, nullptr, b}).size(), 2u);
}

TEST_F(PaletteMgr, RemembersRecentAndLoadedPalettes)
{
  for (int i = 0; i < 12; ++i)
    WClrPaletteMgr::AddRecentPalette(L"/p" + std::to_wstring(i));
  WClrPaletteMgr::AddRecentPalette(L"/p5");
  WClrPaletteMgr::AddRecentPalette(L"");
  WClrPaletteMgr::AddRecentPalette(L"/two\nlines");
  EXPECT_THAT(WClrPaletteMgr::GetRecentPalettes(),
              ElementsAre(L"/p5", L"/p11", L"/p10", L"/p9", L"/p8", L"/p7", L"/p6", L"/p4", L"/p3", L"/p2"));
  for (const wchar_t *path : {L"/b \u00E4", L"/a", L"/b \u00E4"})
    WClrPaletteMgr::AddUserLoadedCustomPalette(path);
  EXPECT_THAT(WClrPaletteMgr::GetUserLoadedCustomPalettesList(), ElementsAre(L"/b \u00E4", L"/a"));
  WClrPaletteMgr::RemoveUserLoadedCustomPalette(L"/b \u00E4");
  EXPECT_THAT(WClrPaletteMgr::GetUserLoadedCustomPalettesList(), ElementsAre(L"/a"));
}

// --- What ships -----------------------------------------------------------------------------------------------------

TEST(ShippedPalettes, AreAllFoundAndKnownByTheirIdentifiers)
{
  ZelUtl::ResetFolders();
  ZelUtl::Folders folders = ZelUtl::GetFolders();
  const tests::TemporaryFolder user;
  folders.user = user.Path();
  ZelUtl::SetFolders(folders);
  WClrPaletteMgr::Shutdown();
  std::size_t count = 1; // defrgb.xml is in no table
  for (const FixedPalette &row : FixedPalettes()) {
    const std::string path = ZelUtl::Utf8FromWide(GetInstalledPalettesDir()) + "/" + std::string(row.path);
    if (!std::filesystem::exists(path))
      continue;
    const WClrPalette *palette = WClrPaletteMgr::GetInstance().GetPaletteIDFromGuidWithoutDiscovery(row.identifier);
    ASSERT_NE(palette, nullptr) << row.path;
    EXPECT_FALSE(palette->IsCustomPalette()) << row.path;
    ++count;
  }
  EXPECT_GT(count, 100u);
  WClrPaletteMgr::GetInstance().DiscoverAllPalettes();
  EXPECT_EQ(WClrPaletteMgr::GetInstance().GetPaletteList().size(), count);
  WClrPaletteMgr::Shutdown();
  ZelUtl::ResetFolders();
}

} // namespace
