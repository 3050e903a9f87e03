// Palettes, styles and spot colours of open documents; PANTONE colours.
#include "tests/palettes/support/palette_folders.h"
#include "zelclr/palettes/fixed_palettes.h"
#include "zelclr/palettes/pantone.h"
#include "zelclr/palettes/spot_color_definition_manager.h"

#include <filesystem>
#include <set>

using namespace ZelClr;
using ZelUtils::Guid;

namespace {

class DocumentPalettes : public tests::PaletteFolders
{
protected:
  std::size_t TemporaryFolders() const
  {
    std::size_t count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(folder.Path()))
      count += entry.path().filename().string().starts_with("zelclr-") ? 1 : 0;
    return count;
  }
  /// An ink of a palette that nobody has.
  static CLR_COLORSPEC UnknownInk(const std::wstring &name, const CLR_COLORSPEC &look, int palette = 77)
  {
    const auto definition = SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(name, name, look);
    return CLR_COLORSPEC::MakeSPOT(tests::GuidOf(palette), 5, 40, definition.get());
  }
  /// A palette file of inks, in RGB.
  static std::string Inks(const std::vector<std::string> &names)
  {
    std::string spaces;
    std::string colors;
    for (const std::string &name : names) {
      spaces += "<cs name=\"" + name + "\" fixedID=\"" + std::to_string(spaces.size() + 1) +
                "\"><color cs=\"RGB\" tints=\"0.2,0.4," + (name == names.front() ? "0" : "1") + "\"/></cs>";
      colors += "<color cs=\"" + name + "\" name=\"" + name + "\"/>";
    }
    return "<colorspaces>" + spaces + "</colorspaces><colors><page>" + colors + "</page></colors>";
  }
  static std::string PathOf(const Guid &guid) { return std::string(FindFixedPalette(guid)->path); }
  void InstallBook(const Guid &guid, const std::vector<std::string> &names) const
  {
    WriteAs(installed + PathOf(guid), guid.ToText(), "book", Inks(names));
  }

  ZelUtl::Document one, two;
};

TEST_F(DocumentPalettes, LiveFromTheirMakingToTheEndOfTheDocument)
{
  ZelUtl::SetFolders([folders = ZelUtl::GetFolders()]() mutable {
    folders.data = ZelUtl::Folders().data; // without texts
    return folders;
  }());
  host.active = &one;
  EXPECT_EQ(Manager().GetActiveDocumentPaletteID(), nullptr);
  EXPECT_EQ(TemporaryFolders(), 0u);
  WClrPalette *first = Manager().CreateDocumentPalette(one);
  WClrPalette *second = Manager().CreateDocumentPalette(two);
  WClrPalette *styles = Manager().CreateStylesPalette(one);
  ASSERT_TRUE(first != nullptr && second != nullptr && styles != nullptr);
  EXPECT_EQ(Manager().CreateDocumentPalette(one), first);
  EXPECT_EQ(first->GetPaletteName(), L"Document Palette");
  EXPECT_FALSE(first->IsCustomPalette());
  EXPECT_EQ(std::set<Guid>({first->GetPaletteGuid(), second->GetPaletteGuid(), styles->GetPaletteGuid(), {}}).size(),
            4u);
  EXPECT_NE(first->GetFileName(), second->GetFileName());
  EXPECT_EQ(TemporaryFolders(), 1u);
  EXPECT_EQ(Manager().GetActiveDocumentPaletteID(), first);
  EXPECT_EQ(Manager().GetActiveStylesPaletteID(), styles);
  EXPECT_EQ(Manager().FindStylesPaletteID(two), nullptr);
  EXPECT_EQ(Manager().FindDocumentFromPaletteID(styles), &one);
  EXPECT_EQ(Manager().FindDocumentFromPaletteID(second), &two);

  first->AddColor({CLR_COLORSPEC::MakeGRAY(9), L"Gray"});
  EXPECT_EQ(Manager().WritePalette(first), ePaletteWriteResult::Ok);
  EXPECT_TRUE(std::filesystem::exists(ZelUtl::Utf8FromWide(first->GetFileName())));
  Manager().MapPaletteGuid(one, tests::GuidOf(1), tests::GuidOf(2));
  Manager().CloseDocument(one);
  EXPECT_FALSE(Manager().HasPalette(first));
  EXPECT_FALSE(Manager().HasPalette(styles));
  EXPECT_EQ(Manager().GetMappedPaletteGuid(one, tests::GuidOf(1)), tests::GuidOf(1));

  host.open = 2; // one of two closes
  ZelUtl::ReportCloseDocument();
  EXPECT_EQ(Manager().FindDocumentPaletteID(two), second);
  EXPECT_TRUE(Manager().RemoveDocumentPalette(two));
  EXPECT_FALSE(Manager().RemoveDocumentPalette(two));
  EXPECT_EQ(Manager().FindDocumentPaletteID(two), nullptr);
  Manager().CreateDocumentPalette(two)->AddColor({CLR_COLORSPEC::MakeGRAY(9), L"Gray"});
  WClrPaletteMgr::Shutdown();
  EXPECT_EQ(TemporaryFolders(), 0u) << "with every file";
}

TEST_F(DocumentPalettes, CopiesKeepTheirIdentifierAndAreFoundUnderTheOld)
{
  EXPECT_FALSE(Manager().CopyDocumentPalette(one, two));
  WClrPalette *source = Manager().CreateDocumentPalette(one);
  const Guid old = source->GetPaletteGuid();
  CLR_COLORSPEC ink;
  ASSERT_EQ(source->AddSpotColor({L"Ink", L"", {{5, CLR_COLORSPEC::MakeRGB(1, 2, 3)}}}, ink), PaletteResult::Ok);
  ASSERT_TRUE(Manager().CopyDocumentPalette(one, two));
  WClrPalette *copy = Manager().FindDocumentPaletteID(two);
  EXPECT_NE(copy->GetPaletteGuid(), old);
  EXPECT_EQ(Manager().GetMappedPaletteGuid(two, old), copy->GetPaletteGuid());
  EXPECT_EQ(Manager().GetMappedPaletteGuid(one, old), old);
  EXPECT_FALSE(Manager().RemovePaletteGuidMapping(one, old));

  Manager().CloseDocument(one);
  ink.SetDensity(30);
  ASSERT_TRUE(Manager().RemapUnknownSpotToDocumentPalette(two, ink));
  EXPECT_EQ(ink.GetPaletteGuid(), copy->GetPaletteGuid());
  EXPECT_EQ(ink.GetDensity(), 30);
  EXPECT_EQ(copy->GetPaletteSize(), 1) << "the copy of it, no further one";
  EXPECT_FALSE(Manager().RemapUnknownSpotToDocumentPalette(two, ink));
  EXPECT_TRUE(Manager().RemovePaletteGuidMapping(two, old));
}

TEST_F(DocumentPalettes, TakeInTheInksOfUnknownPalettes)
{
  CLR_COLORSPEC ink = UnknownInk(L"House Red", CLR_COLORSPEC::MakeCMYK255(0, 255, 255, 0));
  CLR_COLORSPEC shared = CLR_COLORSPEC::MakeReference(ink);
  const CLR_COLORSPEC other = shared;
  ASSERT_TRUE(Manager().RemapUnknownSpotToDocumentPalette(one, ink));
  const WClrPalette *palette = Manager().FindDocumentPaletteID(one);
  ASSERT_NE(palette, nullptr);
  EXPECT_EQ(ink.GetPaletteGuid(), palette->GetPaletteGuid());
  EXPECT_EQ(ink.GetSpotColorName(), L"House Red");
  EXPECT_EQ(ink.GetDensity(), 40);
  ASSERT_TRUE(Manager().RemapUnknownSpotToDocumentPalette(one, shared));
  EXPECT_TRUE(shared.IsSameReference(other));
  EXPECT_EQ(other.GetPaletteGuid(), palette->GetPaletteGuid());
  EXPECT_EQ(palette->GetPaletteSize(), 1) << "one ink";

  CLR_COLORSPEC same = UnknownInk(L"House Red", CLR_COLORSPEC::MakeCMYK255(255, 0, 0, 0), 78);
  ASSERT_TRUE(Manager().RemapUnknownSpotToDocumentPalette(one, same));
  EXPECT_NE(same.GetSpotColorName(), L"House Red") << "another look is another ink";
  CLR_COLORSPEC blind = CLR_COLORSPEC::MakeSPOT(tests::GuidOf(77), 5, 40, nullptr);
  CLR_COLORSPEC process = CLR_COLORSPEC::MakeRGB(1, 2, 3);
  EXPECT_FALSE(Manager().RemapUnknownSpotToDocumentPalette(one, blind));
  EXPECT_FALSE(Manager().RemapUnknownSpotToDocumentPalette(one, process));
}

TEST_F(DocumentPalettes, InksAreFoundBeforeTheyAreAdded)
{
  const CLR_COLORSPEC look = CLR_COLORSPEC::MakeRGB(51, 102, 0);
  WClrPalette *inks = Manager().LoadPalette(Write("inks.xml", 1, Inks({"Red", "Blue"})));
  WClrPalette *plain = Manager().LoadPalette(Write("plain.xml", 2));
  EXPECT_EQ(Manager().EnumerateSpotColorPalettes(), WClrPaletteMgr::Palettes{inks});
  CLR_COLORSPEC color;
  EXPECT_EQ(Manager().FindOrAddSpotColor(plain, {L"Red", L"", {{5, look}}}, color), PaletteResult::AlreadyThere);
  EXPECT_EQ(color.GetPaletteGuid(), tests::GuidOf(1));
  EXPECT_EQ(color.GetDensity(), 100);
  EXPECT_EQ(plain->GetPaletteSize(), 1);
  EXPECT_EQ(Manager().FindOrAddSpotColor(plain, {L"Red", L"", {{5, CLR_COLORSPEC::MakeRGB(9, 9, 9)}}}, color),
            PaletteResult::Ok);
  EXPECT_EQ(color.GetPaletteGuid(), tests::GuidOf(2)) << "another look";
  EXPECT_EQ(Manager().FindOrAddSpotColor(nullptr, {L"New", L"", {{5, look}}}, color), PaletteResult::BadArgument);

  // Where a colour was copied from.
  WClrPalette *document = Manager().CreateDocumentPalette(one);
  const int index = document->AddColor({inks->GetColorSpec(1), L"Blue"});
  ASSERT_EQ(index, 0);
  EXPECT_EQ(Manager().GetOriginalPalette(document->GetColorSpec(index)), inks);
  EXPECT_EQ(Manager().GetOriginalPaletteGuid(inks->GetColorSpec(1)), tests::GuidOf(1));
  EXPECT_EQ(Manager().GetOriginalPalette(CLR_COLORSPEC::MakeRGB(1, 2, 3)), nullptr);
}

// --- Styles ---------------------------------------------------------------------------------------------------------

struct Styles : IColorStyles
{
  const CLR_COLORSPEC *FindColorStyle(std::wstring_view name) const override
  {
    return name == L"Head" ? &head : nullptr;
  }
  std::wstring NameOfColorStyle(const CLR_COLORSPEC &reference) const override
  {
    return reference.IsSameReference(head) ? L"Head" : L"";
  }
  CLR_COLORSPEC head = CLR_COLORSPEC::MakeReference(CLR_COLORSPEC::MakeRGB(10, 20, 30));
};

TEST_F(DocumentPalettes, FollowTheStylesOfTheirDocument)
{
  Styles styles;
  CLR_COLORSPEC color;
  EXPECT_EQ(FindColorStyle(tests::GuidOf(1), "Head", color), ColorStyleAnswer::NoStyles) << "without a manager";
  WClrPalette *palette = Manager().CreateDocumentPalette(one);
  EXPECT_EQ(FindColorStyle(palette->GetPaletteGuid(), "Head", color), ColorStyleAnswer::NoStyles);
  host.styled = &one;
  host.styles = &styles;
  EXPECT_EQ(FindColorStyle(palette->GetPaletteGuid(), "Foot", color), ColorStyleAnswer::NoSuchStyle);
  EXPECT_EQ(FindColorStyle(tests::GuidOf(1), "Head", color), ColorStyleAnswer::NoStyles) << "nobody's palette";
  EXPECT_EQ(FindColorStyle(palette->GetPaletteGuid(), "Head", color), ColorStyleAnswer::Found);
  EXPECT_TRUE(WClrPaletteMgr::IsColorStyle(color));
  EXPECT_FALSE(WClrPaletteMgr::IsColorStyle(CLR_COLORSPEC::MakeReference(color.Resolved())));

  palette->AddColor({color, L"Heading"});
  EXPECT_TRUE(palette->GetColorSpec(0).IsSameReference(styles.head));
  const std::wstring xml = palette->SaveAsString();
  EXPECT_NE(xml.find(L"colorStyleRef=\"Head\""), std::wstring::npos) << ZelUtl::Utf8FromWide(xml);
  WClrPalette *other = Manager().CreateDocumentPalette(two);
  ASSERT_TRUE(palette->RestoreFromString(xml));
  EXPECT_TRUE(palette->GetColorSpec(0).IsSameReference(styles.head));
  ASSERT_TRUE(other->RestoreFromString(xml)) << "its identifier is that of the first document's palette";
}

// --- PANTONE --------------------------------------------------------------------------------------------------------

TEST(PantoneNames, HaveTheirNumbers)
{
  const struct
  {
    const wchar_t *name;
    int number;
    bool transparentWhite;
  } rows[] = {{L"PANTONE 185 C", 185, false},
              {L"Pantone 7421 CVU", 7421, false},
              {L"PANTONE\u00AE  10101 C", 10101, false},
              {L" pantone+ 9 ", 9, false},
              {L"PANTONE 185C", 185, false},
              {L"PANTONE 185 C 50", -1, false},
              {L"PANTONE 185 185", -1, false},
              {L"PANTONE 123456 C", -1, false},
              {L"PANTONE Black 2 C", -1, false},
              {L"PANTONE 18-1664 TCX", -1, false},
              {L"PANTONE P 12-4 C", -1, false},
              {L"185 C", -1, false},
              {L"HKS 43 K", -1, false},
              {L"PANTONE", -1, false},
              {L"", -1, false},
              {L"PANTONE Trans. White", -1, true},
              {L"PANTONE Trans White C", -1, true},
              {L"PANTONE Transparent White U", -1, true},
              {L"PANTONE White", -1, false},
              {L"Trans. White", -1, false}};
  for (const auto &row : rows) {
    EXPECT_EQ(WClrPaletteMgr::GetPantoneID(row.name), row.number) << ZelUtl::Utf8FromWide(row.name);
    EXPECT_EQ(WClrPaletteMgr::IsPantoneTransWhite(row.name), row.transparentWhite) << ZelUtl::Utf8FromWide(row.name);
  }
}

TEST(PantoneBooks, EndInAFirstVersion)
{
  std::size_t newer = 0;
  for (const FixedPalette &row : FixedPalettes()) {
    int versions = 0;
    for (Guid book = row.identifier; !(book = WClrPaletteMgr::MapPantoneToPreviousVersions(book)).IsNull(); ++versions)
    {
      ASSERT_LT(versions, 5) << row.path;
      EXPECT_NE(FindFixedPalette(book), nullptr) << row.path;
    }
    newer += versions > 0 ? 1 : 0;
  }
  EXPECT_EQ(newer, 19u) << "every path of the table is one of a fixed palette";
  EXPECT_EQ(WClrPaletteMgr::MapPantoneToPreviousVersions(CoatedPantoneBooks().back()), CoatedPantoneBooks()[2]);
}

TEST_F(DocumentPalettes, PantoneColorsComeFromTheBooksThatAreInstalled)
{
  const auto books = CoatedPantoneBooks();
  CLR_COLORSPEC color;
  EXPECT_FALSE(Manager().GetPantoneColor(185, 50, color));
  EXPECT_EQ(Manager().Pantone4ToPantone5(1), -1);
  WClrPaletteMgr::Shutdown();

  InstallBook(books[0], {"PANTONE 185 CVC", "PANTONE Warm Red CVC", "PANTONE 186 CVC"});
  InstallBook(books[3], {"PANTONE 185 C", "PANTONE Warm Red CVC", "PANTONE 2001 C"});
  EXPECT_EQ(Manager().Pantone4ToPantone5(3), 186);
  EXPECT_EQ(Manager().Pantone4ToPantone5(2), -1);
  EXPECT_EQ(Manager().Pantone4ToPantone5(4), -1);
  EXPECT_EQ(Manager().Pantone5ToPantoneID4(185), 1);
  EXPECT_EQ(Manager().Pantone5ToPantoneID4(2001), -1);
  ASSERT_TRUE(Manager().GetPantoneColor(185, 50, color));
  EXPECT_EQ(color.GetPaletteGuid(), books[0]);
  EXPECT_EQ(color.GetDensity(), 50);
  EXPECT_FALSE(Manager().GetPantoneColor(185, 101, color));
  ASSERT_TRUE(Manager().GetPantoneColor(2001, 100, color));
  EXPECT_EQ(color.GetPaletteGuid(), books[3]);

  EXPECT_FALSE(Manager().MapPantoneToPreviousVersions(color)) << "2001 is new";
  const WClrPalette *book = Manager().FindPalette(books[3]);
  for (const int index : {0, 1}) {
    color = book->GetColorSpec(index);
    color.SetDensity(20);
    ASSERT_TRUE(Manager().MapPantoneToPreviousVersions(color));
    EXPECT_EQ(color.GetSpotColorName(), index == 0 ? L"PANTONE 185 CVC" : L"PANTONE Warm Red CVC");
    EXPECT_EQ(color.GetDensity(), 20);
  }
}

} // namespace
