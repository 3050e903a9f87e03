// Palettes and their files: which is read, what is written, and what becomes of those that fail.
#include "tests/palettes/support/sample_palettes.h"
#include "tests/support/colours.h"
#include "tests/support/temporary_folder.h"
#include "zelclr/colour/palette_types.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/zip_archive.h"

#include <algorithm>
#include <cerrno>

using namespace tests;
using namespace std::string_literals;
using Colour = CLR_COLORSPEC;
namespace Model = ZelClr::ClrModel;

namespace {

class WClrPaletteFiles : public testing::Test
{
protected:
  WClrPaletteFiles()
  {
    ZelUtl::Folders folders = ZelUtl::GetFolders();
    folders.data = folder_.Path("data");
    ZelUtl::SetFolders(folders);
  }
  ~WClrPaletteFiles() override
  {
    ZelUtl::SetFileFaults({});
    ZelUtl::ResetFolders();
  }

  std::string Put(const std::string &name, const std::string &bytes) const { return folder_.WriteText(name, bytes); }

  const TemporaryFolder folder_;
};

std::string ZipOf(const std::string &name, const std::string &bytes)
{
  std::string reason;
  const ZelUtl::ZipEntry entries[] = {{"other.xml", "<other/>"}, {name, bytes}};
  return ZelUtl::WriteZip(entries, reason).value();
}

} // namespace

TEST_F(WClrPaletteFiles, APathLeadsToTheXmlThenToTheArchiveThenToTheOlderFile)
{
  const std::string cpl = "ZCPL\1\0\5\0\0\0\1\0\0\0\1\0r\0\1\377\0\0"s;
  const std::vector<std::pair<std::string, std::string>> kAll = {
    {"p.xml", XmlOf(1)}, {"p.xml.zip", ZipOf("p.xml", XmlOf(2))}, {"p.cpl", cpl}};
  struct Row
  {
    std::string path;
    std::vector<int> files; // of kAll, that are there
    int colors;             // -1 when nothing is loaded
    std::string fileName;
  };
  const Row rows[] = {
    {"p.xml", {0, 1, 2}, 1, "p.xml"},  {tests::NamesAreBytes() ? "p.XML" : "q.xml", {0}, -1, ""},
    {"p.xml", {1, 2}, 2, "p.xml"},     {"p.xml", {2}, -1, ""},
    {"p.xml.zip", {0, 1}, 1, "p.xml"}, {"p.xml.zip", {1}, 2, "p.xml"},
    {"p.xml.zip", {2}, -1, ""},        {"p.cpl", {0, 1, 2}, 1, "p.xml"},
    {"p.cpl", {1, 2}, 1, "p.xml"},     {"p.cpl", {1}, -1, ""},
    {"p.gpl", {0, 1, 2}, -1, ""},      {"p", {0, 1, 2}, -1, ""},
    {"", {0, 1, 2}, -1, ""},           {"p.xml\0.xml"s, {0}, -1, ""},
  };
  for (const Row &row : rows) {
    const TemporaryFolder folder;
    for (const int i : row.files)
      folder.WriteText(kAll[static_cast<std::size_t>(i)].first, kAll[static_cast<std::size_t>(i)].second);
    WClrPalette palette;
    const std::wstring path = row.path.empty() ? L"" : folder.Wide(row.path);
    SCOPED_TRACE(row.path + ", " + std::to_string(row.files.size()) + " files");
    EXPECT_EQ(palette.LoadPalette(path, false), row.colors >= 0 ? 1 : 0);
    EXPECT_EQ(palette.GetPaletteSize(), std::max(row.colors, 0));
    EXPECT_EQ(palette.GetFileName(), row.fileName.empty() ? L"" : folder.Wide(row.fileName));
    EXPECT_FALSE(palette.IsChanged());
  }
}

TEST_F(WClrPaletteFiles, AnArchiveIsReadByTheExactNameOfItsXmlFile)
{
  for (const char *name : {"P.xml", "folder/p.xml", "../p.xml", "p.xml "}) {
    Put("p.xml.zip", ZipOf(name, XmlOf(2)));
    WClrPalette palette;
    EXPECT_EQ(palette.LoadPalette(folder_.Wide("p.xml.zip"), false), 0) << name;
    EXPECT_EQ(palette.GetFileName(), folder_.Wide("p.xml"));
  }
}

TEST_F(WClrPaletteFiles, AnOlderPaletteIsWrittenAsXmlBesideItAndReadFromThere)
{
  const std::string pantone = "ZCPL\1\0\3\0\2\0G\0o\0\1\0\0\0\1\0g\0\x11\0\0\12\144\0"s;
  Put("PANTONE8.CPL", pantone);
  WClrPalette palette;
  ASSERT_EQ(palette.LoadPalette(folder_.Wide("PANTONE8.CPL"), false), 1);
  EXPECT_EQ(palette.GetFileName(), folder_.Wide("PANTONE8.xml"));
  EXPECT_EQ(palette.GetPaletteGuid(), ZelClr::kPantonePaletteIdentifier);
  EXPECT_FALSE(palette.IsCustomPalette()) << "by its identifier";
  Colour colour;
  ASSERT_TRUE(palette.GetPaletteColorFromID(ZelClr::kPantonePaletteIdentifier, 0x11, 40, colour));
  EXPECT_EQ(colour.GetType(), Model::Spot);
  EXPECT_EQ(colour.GetDensity(), 40);
  EXPECT_EQ(colour.GetSpotColorName(), L"g");
  // What the manager's callers have of old documents: a colour by its number.
  EXPECT_EQ(palette.AddColor({Colour::MakePANTONE(0x11, 30), L""}), 1);
  EXPECT_EQ(palette.GetColorID(1), 0x11);

  // A disk that is full leaves no palette, and nothing beside the old file.
  Put("toyo.cpl", "ZCPL\1\0\12\0\0\0\0\0\0\0"s);
  ZelUtl::SetFileFaults([](ZelUtl::FileStep step) { return step == ZelUtl::FileStep::Write ? ENOSPC : 0; });
  EXPECT_EQ(WClrPalette().LoadPalette(folder_.Wide("toyo.cpl"), false), 0);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("toyo.xml")));
}

TEST_F(WClrPaletteFiles, AFileThatCannotBeReadKeepsItsNameAndIsNotLost)
{
  const std::string damaged = XmlOf(3).substr(0, 150);
  const std::string path = Put("p.xml", damaged);
  WClrPalette palette;
  Fill(palette, 2);
  EXPECT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), false), 0);
  EXPECT_EQ(palette.GetFileName(), folder_.Wide("p.xml"));
  EXPECT_EQ(palette.GetPaletteSize(), 0);
  EXPECT_FALSE(palette.IsChanged());
  ASSERT_EQ(palette.AddColor({kRed, L"red"}), 0);
  ASSERT_TRUE(palette.Save(L""));
  EXPECT_EQ(TextOf(path + ".damaged"), damaged);
  ASSERT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), false), 1);
  EXPECT_EQ(NamesOf(palette), std::vector<std::wstring>{L"red"});
}

TEST_F(WClrPaletteFiles, ValidationTakesTheSchemaAndDropsColoursThatStateNone)
{
  Put("p.xml", "<palette guid=\"" + kGuid.ToText() +
                 "\" name=\"n\"><colors><page><color cs=\"RGB\" name=\"a\" tints=\"1,0,0\"/>"
                 "<color cs=\"Missing\" name=\"b\" tints=\"1\"/></page></colors></palette>");
  WClrPalette palette;
  EXPECT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), true), 0) << "no schema is installed";
  EXPECT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), false), 1);
  EXPECT_EQ(palette.GetPaletteSize(), 2);
  const auto putSchema = [this](const std::string &root) {
    Put("data/color/ColorPaletteSchema.xsd",
        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"><xs:element name=\"" + root + "\"/></xs:schema>");
  };
  putSchema("gallery");
  EXPECT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), true), 0);
  putSchema("palette");
  EXPECT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), true), 1);
  EXPECT_EQ(NamesOf(palette), std::vector<std::wstring>{L"a"});
  EXPECT_FALSE(palette.IsChanged());
}

TEST_F(WClrPaletteFiles, TellsTheLockFromTheHeaderAlone)
{
  const std::string locked = XmlOf(1, "locked=\"true\"");
  std::string many; // whose characters of two bytes are cut anywhere
  while (many.size() < 9000)
    many += "é";
  const std::vector<std::tuple<std::string, std::string, bool>> rows = {
    {"a.xml", locked, true},
    {"a.XML", locked, true},
    {"b.xml", locked.substr(0, locked.find("<colors>")) + "<<<", true},
    {"c.xml", XmlOf(1, "locked=\"True\""), false},
    {"d.xml", XmlOf(1), false},
    {"e.xml", "<other locked=\"true\"/>", false},
    {"f.xml", "locked", false},
    {"g.xml", "", false},
    {"h.cpl", locked, false},
    {"i.xml.zip", ZipOf("i.xml", locked), false},
    {"j.xml", "<!-- " + std::string(100'000, 'x') + " -->" + locked.substr(locked.find("<palette")), true},
    {"k.xml", "<palette name=\"" + many + "\" locked=\"true\"/>", true},
  };
  for (const auto &[name, bytes, isLocked] : rows) {
    Put(name, bytes);
    EXPECT_EQ(WClrPalette::IsPaletteLocked(folder_.Wide(name)), isLocked) << name;
  }
  EXPECT_FALSE(WClrPalette::IsPaletteLocked(folder_.Wide("missing.xml")));
  EXPECT_FALSE(WClrPalette::IsPaletteLocked(folder_.Wide()));
}

TEST_F(WClrPaletteFiles, APaletteThatGoesSavesWhatChanged)
{
  enum class State
  {
    Changed,
    Unchanged,
    Locked,
    Faulty
  };
  for (const State state : {State::Changed, State::Unchanged, State::Locked, State::Faulty}) {
    const std::string path = Put("p.xml", XmlOf(2));
    {
      WClrPalette palette;
      ASSERT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), false), 1);
      ASSERT_TRUE(palette.RemoveColor(0));
      palette.SetChanged(state != State::Unchanged);
      palette.SetLocked(state == State::Locked);
      if (state == State::Faulty)
        ZelUtl::SetFileFaults([](ZelUtl::FileStep) { return EIO; });
    }
    ZelUtl::SetFileFaults({});
    WClrPalette again;
    ASSERT_EQ(again.LoadPalette(folder_.Wide("p.xml"), false), 1);
    EXPECT_EQ(again.GetPaletteSize(), state == State::Changed ? 1 : 2) << static_cast<int>(state);
  }
}

TEST_F(WClrPaletteFiles, SavesAsAnotherAndBacksUpAndComesBack)
{
  Put("p.xml", XmlOf(3, "maxColors=\"5\" resid=\"r\" fixedID=\"7\""));
  WClrPalette palette;
  ASSERT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), false), 1);
  ASSERT_EQ(palette.AddColor({SpotOf(L"Gold", kGold), L"Gold"}), 3);
  ASSERT_TRUE(palette.BackupToFile(folder_.Wide("p.bak")));
  EXPECT_TRUE(palette.IsChanged()) << "a copy is not the palette's file";
  const std::wstring text = palette.SaveAsString();

  ZelUtl::SetFileFaults([](ZelUtl::FileStep) { return EIO; });
  EXPECT_FALSE(palette.SaveAs(folder_.Wide("q.xml"), L"Other"));
  EXPECT_FALSE(palette.Save(L""));
  ZelUtl::SetFileFaults({});
  EXPECT_EQ(palette.SaveAsString(), text);
  EXPECT_TRUE(palette.IsChanged());
  for (const wchar_t *name : {L"q.gpl", L"q", L""})
    EXPECT_FALSE(palette.SaveAs(*name ? folder_.Wide() + L"/" + name : L"", L"Other")) << "no palette file";

  palette.SetLocked(true);
  ASSERT_TRUE(palette.SaveAs(folder_.Wide("q.xml"), L"Other"));
  EXPECT_EQ(palette.GetFileName(), folder_.Wide("q.xml"));
  EXPECT_EQ(palette.GetPaletteName(), L"Other");
  EXPECT_NE(palette.GetPaletteGuid(), kGuid);
  EXPECT_FALSE(palette.IsLocked() || palette.IsChanged());
  EXPECT_EQ(palette.GetColorSpec(3).GetPaletteGuid(), palette.GetPaletteGuid()) << "its inks are its own";
  WClrPalette saved;
  ASSERT_EQ(saved.LoadPalette(folder_.Wide("q.xml"), false), 1);
  EXPECT_EQ(saved.SaveAsString(), palette.SaveAsString());
  EXPECT_EQ(TextOf(folder_.Path("p.xml")), XmlOf(3, "maxColors=\"5\" resid=\"r\" fixedID=\"7\""));

  // What comes back brings colours and header; lock, file and size limit stay.
  WClrPalette other;
  Fill(other, 1);
  other.SetPaletteSizeLimit(3);
  EXPECT_FALSE(other.RestoreFromFile(folder_.Wide("p.bak"), false)) << "more colours than it may have";
  EXPECT_FALSE(other.RestoreFromFile(folder_.Wide("missing.xml"), false));
  EXPECT_FALSE(other.RestoreFromString(text.substr(0, text.size() / 2)));
  EXPECT_EQ(other.GetPaletteSize(), 1);
  other.SetPaletteSizeLimit(10);
  other.SetChanged(false);
  ASSERT_TRUE(other.RestoreFromFile(folder_.Wide("p.bak"), false));
  EXPECT_EQ(NamesOf(other), (std::vector<std::wstring>{L"0", L"1", L"2", L"Gold"}));
  EXPECT_EQ(other.GetPaletteGuid(), kGuid);
  EXPECT_EQ(other.GetPaletteSizeLimit(), 10);
  EXPECT_EQ(other.GetFileName(), L"");
  EXPECT_TRUE(other.IsChanged());
  ASSERT_TRUE(palette.BackupToPalette(other));
  EXPECT_EQ(other.GetPaletteName(), L"Other");
  other.SetLocked(true);
  EXPECT_FALSE(saved.BackupToPalette(other));
}

TEST_F(WClrPaletteFiles, ALockIsSavedAndALockedPaletteIsNotSavedAgain)
{
  Put("p.xml", XmlOf(1));
  WClrPalette palette;
  ASSERT_EQ(palette.LoadPalette(folder_.Wide("p.xml"), false), 1);
  palette.SetLocked(true);
  ASSERT_TRUE(palette.Save(L""));
  EXPECT_TRUE(WClrPalette::IsPaletteLocked(folder_.Wide("p.xml")));
  EXPECT_FALSE(palette.Save(L""));
  palette.SetLocked(false);
  ASSERT_TRUE(palette.Save(L""));
  EXPECT_FALSE(WClrPalette::IsPaletteLocked(folder_.Wide("p.xml")));
}

TEST_F(WClrPaletteFiles, OnlyPalettesThatDoNotShipAreTheUsers)
{
  const auto fixed = ZelClr::PaletteIdentifierFromType(25); // web-safe colours
  const auto isCustom = [&](const std::string &file, const ZelUtils::Guid &guid) {
    Put(file, "<palette guid=\"" + guid.ToText() + "\" name=\"n\"/>");
    WClrPalette palette;
    EXPECT_EQ(palette.LoadPalette(folder_.Wide(file), false), 1);
    EXPECT_EQ(palette.IsCustomPalette(), palette.CalculateIfCustomPalette());
    return palette.IsCustomPalette();
  };
  EXPECT_TRUE(isCustom("user/p.xml", kGuid));
  EXPECT_FALSE(isCustom("user/p.xml", fixed)) << "wherever it is";
  EXPECT_FALSE(isCustom("data/color/Palettes/p.xml", kGuid));
  EXPECT_FALSE(isCustom("data/color/Palettes/Spot/Deep/p.xml", kGuid));
  EXPECT_TRUE(isCustom("data/color/PalettesOfMine/p.xml", kGuid));
  EXPECT_TRUE(WClrPalette().IsCustomPalette());
}
