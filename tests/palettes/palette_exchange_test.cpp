// Palettes of other programs into our own and back.
#include "zelclr/palettes/palette_exchange.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <set>

using namespace ZelClr;

namespace {

SwatchBook ThereAndBack(const SwatchBook &book, std::vector<std::string> *notes = nullptr)
{
  std::vector<std::string> some;
  std::string reason;
  WXmlColorPalette palette;
  const std::string xml = PaletteFromSwatchBook(book, notes == nullptr ? some : *notes).Bytes(false);
  EXPECT_TRUE(palette.LoadFromBytes(xml, reason)) << reason << xml;
  return SwatchBookFromPalette(palette);
}

Swatch Spot(Swatch swatch, double tint)
{
  swatch.spot = true;
  swatch.tint = tint;
  return swatch;
}

RC_GTEST_PROP(PaletteExchange, KeepsNumbersNamesInksAndGroups, ())
{
  const auto fraction = rc::gen::map(rc::gen::inRange(0, 1'000'001), [](int i) { return i / 1e6; });
  SwatchBook book;
  book.name = "Book";
  const int count = *rc::gen::inRange(0, 40);
  for (int i = 0; i < count; ++i) {
    const auto v = *rc::gen::container<std::vector<double>>(4, fraction);
    const std::string name = "Colour " + std::to_string(i);
    const Swatch swatches[] = {RgbSwatch(name, v[0], v[1], v[2]), CmykSwatch(name, v[0], v[1], v[2], v[3]),
                               GraySwatch(name, v[0]), LabSwatch(name, v[0] * 100, v[1] * 120 - 60, v[2] * 120 - 60)};
    Swatch swatch = swatches[*rc::gen::inRange(0, 4)];
    if (*rc::gen::arbitrary<bool>())
      swatch = Spot(swatch, v[3]);
    if (*rc::gen::inRange(0, 8) == 0)
      book.groups.push_back({"Group", book.swatches.size()});
    book.swatches.push_back(swatch);
  }
  std::vector<std::string> notes;
  const SwatchBook back = ThereAndBack(book, &notes);
  RC_ASSERT(notes.empty());
  RC_ASSERT(back.name == book.name);
  RC_ASSERT(back.swatches.size() == book.swatches.size());
  std::set<std::size_t> starts;
  for (const SwatchGroup &group : book.groups)
    starts.insert(group.first);
  starts.insert(0);
  RC_ASSERT(back.groups.size() == (starts.size() > 1 ? starts.size() : 0));
  for (const SwatchGroup &group : back.groups)
    RC_ASSERT(starts.contains(group.first));
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    const Swatch &a = book.swatches[i];
    const Swatch &b = back.swatches[i];
    RC_ASSERT(b.name == a.name);
    RC_ASSERT(b.model == a.model);
    RC_ASSERT(b.spot == a.spot);
    RC_ASSERT(b.tint == a.tint);
    RC_ASSERT(b.record == a.record);
    for (std::size_t k = 0; k < a.values.size(); ++k)
      RC_ASSERT(std::abs(b.values[k] - a.values[k]) <= 1e-12); // the scale of LAB costs a few last bits
  }
}

TEST(PaletteExchange, StatesWhatRecordsOnlyHold)
{
  SwatchBook book;
  book.swatches = {RecordSwatch("Registration", CLR_COLORSPEC::MakeREGCOLOR()),
                   RecordSwatch("Six", CLR_COLORSPEC::MakeHEX(1, 2, 3, 4, 5, 6)),
                   RecordSwatch("Hue", CLR_COLORSPEC::MakeHSB(200, 100, 50)),
                   RecordSwatch("Deep", CLR_COLORSPEC::MakeRGB48(1, 2, 60000)),
                   RecordSwatch("Index", CLR_COLORSPEC::CLRMakeIndex(3))};
  std::vector<std::string> notes;
  const SwatchBook back = ThereAndBack(book, &notes);
  ASSERT_EQ(back.swatches.size(), 4u);
  for (std::size_t i = 0; i < back.swatches.size(); ++i)
    EXPECT_EQ(back.swatches[i].record, book.swatches[i].record) << back.swatches[i].name;
  EXPECT_EQ(notes, std::vector<std::string>{"1 colour without an appearance was left out"});
}

TEST(PaletteExchange, InksAreTheSameByNameAndLook)
{
  SwatchBook book;
  book.columns = 5;
  book.swatches = {Spot(RgbSwatch("Ink", 1, 0, 0), 1), Spot(RgbSwatch("Ink", 1, 0, 0), 0.25),
                   Spot(RgbSwatch("Ink", 0, 1, 0), 1), Spot(RgbSwatch("CMYK", 0, 0, 1), 1),
                   Spot(RgbSwatch("", 0, 0, 1), 1)};
  std::vector<std::string> notes;
  const WXmlColorPalette palette = PaletteFromSwatchBook(book, notes);
  std::vector<std::string> names;
  std::set<int> ids;
  for (std::size_t i = 0; i < palette.GetColorSpaceCount(); ++i) {
    names.push_back(palette.GetColorSpace(i).name);
    ids.insert(palette.GetColorSpace(i).fixedID);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Ink", "Ink (1)", "CMYK (1)", "Spot (1)"}));
  EXPECT_EQ(ids.size(), names.size());
  EXPECT_EQ(palette.GetColorSpec(1).GetDensity(), 25);
  EXPECT_EQ(palette.GetColorID(0), palette.GetColorID(1));
  EXPECT_EQ(palette.GetGridWidth(), 5);
}

TEST(PaletteExchange, LabBeyondItsScaleIsRgb)
{
  SwatchBook book;
  book.swatches = {LabSwatch("Red", 53, 80, 67), Spot(LabSwatch("Ink", 53, 80, 67), 1), LabSwatch("Edge", 50, -60, 60)};
  const SwatchBook back = ThereAndBack(book);
  EXPECT_EQ(back.swatches[0].model, SwatchModel::Rgb);
  EXPECT_GT(back.swatches[0].values[0], 0.95);
  EXPECT_EQ(back.swatches[1].model, SwatchModel::Rgb);
  EXPECT_EQ(back.swatches[2].model, SwatchModel::Lab);
}

TEST(PaletteExchange, IdentifiersFollowTheBytes)
{
  std::set<ZelUtils::Guid> all;
  for (const char *bytes : {"", "a", "b", "ab", "ba"})
    all.insert(IdentifierOfBytes(bytes));
  EXPECT_EQ(all.size(), 5u);
  EXPECT_EQ(IdentifierOfBytes("GIMP Palette").ToText(), IdentifierOfBytes("GIMP Palette").ToText());
}

} // namespace
