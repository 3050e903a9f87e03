#include "tests/support/colours.h"
#include "zelclr/colour/palette_types.h"
#include "zelclr/palettes/legacy_palette_file.h"
#include "zelclr/platform/bytes.h"
#include "zelclr/platform/text.h"

#include <gtest/gtest.h>

using Colour = CLR_COLORSPEC;
using namespace ZelClr;
namespace Model = ZelClr::ClrModel;

namespace {

/// What wrote such files, as docs/legacy_palette_format.md has it.
class LegacyWriter
{
public:
  explicit LegacyWriter(unsigned type, const std::wstring &name, std::uint32_t count, unsigned version = 1)
  {
    for (const char c : {'Z', 'C', 'P', 'L'})
      bytes_.Write(static_cast<std::uint8_t>(c));
    Word(version);
    Word(type);
    Text(name);
    bytes_.Write(count);
  }
  void Word(unsigned value) { bytes_.Write(static_cast<std::uint16_t>(value)); }
  void Text(const std::wstring &text)
  {
    const auto units = ZelUtl::Utf16FromWide(text);
    Word(static_cast<unsigned>(units.size()));
    for (const char16_t unit : units)
      Word(unit);
  }
  void Bytes(std::initializer_list<int> values)
  {
    for (const int value : values)
      bytes_.Write(static_cast<std::uint8_t>(value));
  }
  std::string Written() const { return {bytes_.Bytes().begin(), bytes_.Bytes().end()}; }

private:
  ZelUtl::ByteWriter bytes_;
};

struct Sample
{
  unsigned type;
  std::vector<int> body; // one colour behind its name
  int number;
  Colour look;
  unsigned stored; // model in the XML palette
};

std::vector<Sample> Samples()
{
  return {{1, {10, 20, 30, 40}, -1, Colour::MakeCMYK(10, 20, 30, 40), Model::Cmyk255},
          {7, {1, 2, 3}, -1, Colour::MakeRGB(1, 2, 3), Model::Rgb255},
          {13, {128, 255, 1}, -1, Colour::MakeLAB(128, -1, 1), Model::Lab},
          {12, {0x39, 0x05, 100, 0, 20, 0, 0, 40}, 1337, Colour::MakeHEX(255, 0, 51, 0, 0, 102), Model::Hexachrome},
          {23, {13, 0, 0, 100, 50, 0}, 13, Colour::MakeCMYK(0, 100, 50, 0), Model::Spot},
          {16, {2, 0, 9, 8, 7}, 2, Colour::MakeUserInks(9, 8, 7, 100), Model::Spot},
          {5, {2, 128, 255, 1}, -1, Colour::MakeLAB(128, -1, 1), Model::Lab},
          {5, {3, 100, 0, 20, 0, 0, 40}, -1, Colour::MakeHEX(255, 0, 51, 0, 0, 102), Model::Hexachrome}};
}

std::string FileOf(const Sample &sample, const std::wstring &name = L"Größe 1")
{
  LegacyWriter writer(sample.type, L"Mein 🎨", 1);
  writer.Text(name);
  for (const int byte : sample.body)
    writer.Bytes({byte});
  return writer.Written();
}

} // namespace

TEST(LegacyPaletteFile, EveryKindOfPaletteIsReadAndBecomesXml)
{
  for (const Sample &sample : Samples()) {
    SCOPED_TRACE(sample.type);
    std::string reason;
    const auto file = ReadLegacyPalette(FileOf(sample), sample.type, reason);
    ASSERT_TRUE(file) << reason;
    EXPECT_EQ(file->name, "Mein 🎨");
    ASSERT_EQ(file->colors.size(), 1u);
    EXPECT_EQ(file->colors[0].number, sample.number);
    EXPECT_EQ(file->colors[0].look, sample.look);

    const WXmlColorPalette palette = XmlPaletteFromLegacy(*file, "unused");
    EXPECT_EQ(palette.GetHeader().name, "Mein 🎨");
    const auto identifier = PaletteIdentifierFromType(sample.type);
    EXPECT_TRUE(sample.type == 5 ? !palette.GetHeader().guid.IsNull() : palette.GetHeader().guid == identifier);
    ASSERT_EQ(palette.GetColorCount(), 1u);
    EXPECT_EQ(palette.GetColor(0).name, "Größe 1");
    EXPECT_EQ(palette.GetColorID(0), sample.number);
    const Colour &colour = palette.GetColorSpec(0);
    ASSERT_EQ(colour.GetType(), sample.stored);
    Colour look = colour;
    if (colour.GetType() == Model::Spot) {
      ASSERT_TRUE(colour.GetSpotAppearance(sample.look.GetType(), look));
    }
    EXPECT_EQ(look, sample.look) << "in the one family of CMYK, too";
  }
}

TEST(LegacyPaletteFile, AnyPartOfAFileAndAnythingBehindItIsRefused)
{
  for (const Sample &sample : Samples()) {
    const std::string bytes = FileOf(sample);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      std::string reason;
      EXPECT_FALSE(ReadLegacyPalette(bytes.substr(0, length), sample.type, reason)) << sample.type << ", " << length;
      EXPECT_FALSE(reason.empty());
    }
    std::string reason;
    EXPECT_FALSE(ReadLegacyPalette(bytes + '\0', sample.type, reason));
    EXPECT_EQ(reason, "bytes behind the last colour");
  }
}

TEST(LegacyPaletteFile, WhatItSaysIsNotBelievedUnread)
{
  const auto withColor = [](unsigned type, std::initializer_list<int> body) {
    LegacyWriter writer(type, L"", 1);
    writer.Text(L"n");
    writer.Bytes(body);
    return writer.Written();
  };
  LegacyWriter twice(23, L"", 2);
  for (int i = 0; i < 2; ++i) {
    twice.Text(i == 0 ? L"a" : L"b");
    twice.Bytes({5, 0, 0, 0, 0, 0});
  }
  LegacyWriter longName(7, std::wstring(1025, L'x'), 0);
  const struct
  {
    std::string bytes;
    unsigned type;
    const char *reason;
  } rows[] = {
    {"", 7, "no such palette file"},
    {"<palette/>", 7, "no such palette file"},
    {LegacyWriter(7, L"", 0, 2).Written(), 7, "version 2 is not known"},
    {LegacyWriter(7, L"", 0).Written(), 25, "a palette of type 7, where type 25 belongs"},
    {LegacyWriter(5, L"", 0).Written(), 7, "a palette of type 5, where type 7 belongs"},
    {LegacyWriter(36, L"", 0).Written(), 37, "a palette of type 36, where type 37 belongs"},
    {LegacyWriter(19, L"", 0).Written(), 5, "a palette of type 19, where type 5 belongs"},
    {LegacyWriter(0xFFFF, L"", 0).Written(), 5, "a palette of type 65535, where type 5 belongs"},
    {LegacyWriter(7, L"", 0xFFFFFFFF).Written(), 7, "more than 100000 colours"},
    {LegacyWriter(7, L"", 100'000).Written(), 7, "the file is cut short"},
    {longName.Written(), 7, "a name is longer than 1024 characters"},
    {withColor(1, {0, 0, 101, 0}), 1, "colour 1: more than 100 % of an ink"},
    {withColor(12, {0, 0, 0, 0, 0, 0, 0, 101}), 12, "colour 1: more than 100 % of an ink"},
    {withColor(23, {0, 128, 0, 0, 0, 0}), 23, "colour 1: no such colour number: 32768"},
    {withColor(5, {4, 0, 0, 0, 0}), 5, "colour 1: no such kind of colour: 4"},
    {twice.Written(), 23, "colour 2: the number 5 comes twice"},
  };
  for (const auto &row : rows) {
    std::string reason;
    EXPECT_FALSE(ReadLegacyPalette(row.bytes, row.type, reason));
    EXPECT_EQ(reason, row.reason);
  }
  std::string reason;
  EXPECT_TRUE(ReadLegacyPalette(LegacyWriter(36, L"", 0).Written(), 5, reason))
    << "a name that is nobody's says nothing";
}

TEST(LegacyPaletteFile, InksOfOneNameAreToldApart)
{
  LegacyWriter writer(23, L"", 7);
  int number = 0;
  for (const wchar_t *name : {L"K", L"K", L"CMYK", L"", L"'", L"\x1", L"\x2"}) {
    writer.Text(name);
    writer.Bytes({++number, 0, 0, 0, 0, 100});
  }
  std::string reason;
  const auto file = ReadLegacyPalette(writer.Written(), 23, reason);
  ASSERT_TRUE(file) << reason;
  const WXmlColorPalette palette = XmlPaletteFromLegacy(*file, "hks");
  EXPECT_EQ(palette.GetHeader().name, "hks");
  const char *const spaces[] = {"K", "K (1)", "CMYK (1)", "4", "5", "\uFFFD", "\uFFFD (1)"};
  for (std::size_t i = 0; i < 7; ++i) {
    EXPECT_EQ(palette.GetColor(i).colorSpace, spaces[i]);
    EXPECT_EQ(palette.GetColorID(i), static_cast<int>(i) + 1);
  }
}

TEST(LegacyPaletteFile, FileNamesStandForTheirTypes)
{
  // Typed by hand.
  const std::pair<const char *, unsigned> rows[] = {{"pantone.cpl", 2},   {"pantone8.cpl", 3},
                                                    {"panguidc.cpl", 17}, {"panguidu.cpl", 18},
                                                    {"panmetlu.cpl", 20}, {"panpastc.cpl", 21},
                                                    {"panpastu.cpl", 22}, {"hks.cpl", 23},
                                                    {"hks_k.cpl", 26},    {"hks_n.cpl", 27},
                                                    {"hks_z.cpl", 28},    {"hks_e.cpl", 29},
                                                    {"panhexc.cpl", 12},  {"panhexu.cpl", 24},
                                                    {"trumatch.cpl", 1},  {"rgbstd.cpl", 7},
                                                    {"focolton.cpl", 8},  {"dupont.cpl", 9},
                                                    {"toyo.cpl", 10},     {"dic.cpl", 11},
                                                    {"labpal.cpl", 13},   {"websafe.cpl", 25},
                                                    {"pantonem.cpl", 35}, {"panmetlc.cpl", 30},
                                                    {"panpasc.cpl", 31},  {"panpasu.cpl", 32},
                                                    {"panhexac.cpl", 33}, {"panhexau.cpl", 34},
                                                    {"pantonec.cpl", 36}, {"pantoneu.cpl", 37},
                                                    {"paneuroc.cpl", 38}, {"pans2pec.cpl", 39},
                                                    {"svgcolor.cpl", 40}, {"userinks.cpl", 16},
                                                    {"PanTone.CPL", 2},   {"pantone9.cpl", 5},
                                                    {"mine.cpl", 5},      {"", 5},
                                                    {"pantone", 5},       {"xpantone.cpl", 5}};
  for (const auto &[name, type] : rows) {
    EXPECT_EQ(LegacyPaletteTypeOfFileName(name), type) << name;
    std::string reason;
    EXPECT_TRUE(ReadLegacyPalette(LegacyWriter(type, L"", 0).Written(), type, reason)) << "every type has its kind";
  }
}
