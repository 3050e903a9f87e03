// Swatches of records, their colours in other models, and what becomes of a book in a format that holds less.
#include "tests/support/swatch_listing.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/palettes/spot_color_definition.h"
#include "zelclr/platform/files.h"

#include <cmath>
#include <limits>

using namespace ZelClr;
using namespace tests;
using Record = CLR_COLORSPEC;

namespace {

std::string BytesOfProfile(const std::shared_ptr<ColorSystem::ColorProfile> &profile)
{
  std::string reason;
  return profile == nullptr ? ""
                            : ZelUtl::ReadFile(ZelUtl::Utf8FromWide(profile->GetPath()), 1u << 26, reason).value_or("");
}

} // namespace

TEST(SwatchBook, RecordsStateTheNumbersOfTheirFamily)
{
  const SpotColorDefinition ink(L"Ink", L"", Record::MakeCMYK100(0, 50, 100, 0));
  const SpotColorDefinition unknown(L"Unknown", L"", SpotColorDefinition::Alternatives{});
  const CLR_COLORSPEC::Guid palette{};
  const struct
  {
    Record record;
    const char *listing;
  } kRows[] = {
    {Record::MakeRGB(255, 51, 0), "=RGB(1,0.2,0) "},
    {Record::MakeRGB48(65535, 1, 0), "=RGB(1,0,0) "},
    {Record::MakeSCRGB(1.5f, -0.25f, std::numeric_limits<float>::quiet_NaN()), "=RGB(1.5,-0.25,0) "},
    {Record::MakeRGBA(255, 51, 0, 7), "=RGB(1,0.2,0) "},
    {Record::MakeBGRA(0, 51, 255, 7), "=RGB(0,0.2,1) "},
    {Record::MakeHSB(240, 255, 51), "=RGB(0,0,0.2) "},
    {Record::MakeCMYK(10, 20, 30, 40), "=CMYK(0.1,0.2,0.3,0.4) "},
    {Record::MakeCMYK100(10, 20, 30, 200), "=CMYK(0.1,0.2,0.3,1) "},
    {Record::MakeCMYK255(51, 0, 255, 102), "=CMYK(0.2,0,1,0.4) "},
    {Record::MakeCMY(51, 0, 255), "=CMYK(0.2,0,1,0) "},
    {Record::MakeBW(1), "=Gray(1) "},
    {Record::MakeGRAY(51), "=Gray(0.2) "},
    {Record::MakeGRAY16(13107), "=Gray(0.2) "},
    {Record::MakeLAB(255, -127, 127), "=Lab(100,-60,60) "},
    {Record::MakeLAB255(255, 0, 255), "=Lab(100,-128,127) "},
    {Record::MakeXYZ(246, 255, 210), "=Lab(100,0.087,0.111) "},
    {Record::MakeReference(Record::MakeGRAY(51)), "=Gray(0.2) "},
    {Record::MakeSPOT(palette, 1, 50, &ink), "!Ink=CMYK(0,0.5,1,0)*0.5 "},
    {Record::MakeHEX(1, 2, 3, 4, 5, 6), "=HEXA(1,2,3,4,5,6) "},
    {Record::MakeREGCOLOR(), "=REGCOLOR(100,100,100,100) "},
  };
  for (const auto &row : kRows)
    EXPECT_EQ(Listing(BookOf({RecordSwatch("", row.record)})), row.listing);
  EXPECT_TRUE(HasAppearance(RecordSwatch("", Record::MakeREGCOLOR())));
  EXPECT_TRUE(HasAppearance(RecordSwatch("", Record::MakeHEX(1, 2, 3, 4, 5, 6))));
  EXPECT_FALSE(HasAppearance(RecordSwatch("", Record::MakeSPOT(palette, 1, 50, &unknown))));
  EXPECT_FALSE(HasAppearance(RecordSwatch("", Record::CLRMakeIndex(3))));
  // And the other way: what records hold of the numbers, cut off and rounded.
  EXPECT_EQ(RgbSwatch("", 2, -1, std::nan("")).record, Record::MakeRGB(255, 0, 0));
  EXPECT_EQ(LabSwatch("", 50, -200, 127).record, Record::MakeLAB255(128, 0, 255));
}

TEST(SwatchBook, ColoursChangeModelThroughTheApplicationsContext)
{
  const auto near = [](auto found, std::initializer_list<double> wanted, double tolerance, const char *what) {
    std::size_t i = 0;
    for (const double value : wanted)
      EXPECT_NEAR(found[i++], value, tolerance) << what;
  };
  near(RgbOfSwatch(GraySwatch("", 0.3)), {0.3, 0.3, 0.3}, 0, "gray is a neutral");
  near(RgbOfSwatch(RgbSwatch("", 1.5, -1, 0.123)), {1, 0, 0.123}, 0, "clipped");
  near(RgbOfSwatch(Spot(RgbSwatch("", 1, 0, 0.5), 0.5)), {1, 0.5, 0.75}, 1e-12, "a tint");
  near(CmykOfSwatch(Spot(CmykSwatch("", 1, 0, 0.5, 0), 0.5)), {0.5, 0, 0.25, 0}, 1e-12, "a tint");
  near(LabOfSwatch(Spot(LabSwatch("", 40, 20, -10), 0.5)), {70, 10, -5}, 1e-12, "a tint");
  // A step of 16 bits, and what the engine rounds: sRGB red by the formula of srgb_lab.h.
  near(LabOfSwatch(RgbSwatch("", 1, 0, 0)), {54.29, 80.80, 69.89}, 0.15, "sRGB red");
  near(RgbOfSwatch(LabSwatch("", 54.29, 80.80, 69.89)), {1, 0, 0}, 0.01, "and back");
  near(RgbOfSwatch(CmykSwatch("", 0, 0, 0, 0)), {1, 1, 1}, 0.02, "paper");
  near(LabOfSwatch(RecordSwatch("", Record::MakeREGCOLOR())), {0, 0, 0}, 20, "all inks are dark");
  const SpotColorDefinition six(L"Six", L"", Record::MakeHEX(0, 0, 0, 255, 0, 0));
  const Swatch sixInks = RecordSwatch("", Record::MakeSPOT(CLR_COLORSPEC::Guid{}, 1, 50, &six));
  const auto full = LabOfSwatch(Spot(sixInks))[0];
  near(LabOfSwatch(sixInks), {(100 + full) / 2}, 0.5, "a tint lightens once");
  near(CmykOfSwatch(RecordSwatch("", Record::CLRMakeIndex(1))), {0, 0, 0, 1}, 0, "nobody knows");

  // A record and a swatch of its numbers are one colour for the converter of records.
  const auto context = ColorSystem::ColorContext::GetApplicationDefaultColorContext();
  const ColorSystem::ColorConverter converter(context, context);
  for (const auto &[c, m, y, k] : {std::array{255, 0, 0, 0}, std::array{30, 200, 90, 40}, std::array{0, 0, 0, 255}}) {
    const auto byte = [](int ink) { return static_cast<std::uint8_t>(ink); };
    const Record record = Record::MakeCMYK255(byte(c), byte(m), byte(y), byte(k));
    Record rgb;
    ASSERT_TRUE(converter.Convert(record, rgb, ClrModel::Rgb255, 0));
    const auto swatch = RgbOfSwatch(RecordSwatch("", record));
    EXPECT_NEAR(swatch[0] * 255, rgb.GetRed(), 1.01);
    EXPECT_NEAR(swatch[1] * 255, rgb.GetI255(), 1.01);
    EXPECT_NEAR(swatch[2] * 255, rgb.GetBlue(), 1.01);
  }
}

TEST(SwatchBook, NumbersOfAProfileBecomeThoseOfTheApplications)
{
  const auto context = ColorSystem::ColorContext::GetApplicationDefaultColorContext();
  const std::string press = BytesOfProfile(context.GetCmykColorProfile());
  const std::string wide =
    BytesOfProfile(ColorSystem::ColorProfileManager::GetInstance().GetColorProfile(L"CompatibleWithAdobeRGB1998.icc"));
  ASSERT_FALSE(press.empty());
  ASSERT_FALSE(wide.empty());
  SwatchBook book =
    BookOf({CmykSwatch("same", 0.25, 0.5, 0, 1), RgbSwatch("broken", 0.25, 0.5, 0), RgbSwatch("none", 0.1, 0.2, 0.3),
            LabSwatch("Lab", 50, 0, 0), Spot(RgbSwatch("wide", 0.858592, 0, 0), 0.5), CmykSwatch("wrong", 0, 0, 0, 0)});
  book.profiles = {press, "no profile", wide};
  book.swatches[0].profile = 0;
  book.swatches[1].profile = 1;
  book.swatches[3].profile = 7;
  book.swatches[4].profile = book.swatches[5].profile = 2;
  ConvertProfiles(book);
  // The red of sRGB in the wide space: CSS Color 4.
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_NEAR(book.swatches[4].values[i], i == 0 ? 1.0 : 0.0, 0.01);
  EXPECT_EQ(book.swatches[4].record, Record::MakeRGB(255, 0, 0));
  book.swatches[4].values = {1, 0, 0};
  EXPECT_EQ(Listing(book), "same=CMYK(0.25,0.5,0,1) broken=RGB(0.25,0.5,0) none=RGB(0.1,0.2,0.3) Lab=Lab(50,0,0) "
                           "!wide=RGB(1,0,0)*0.5 wrong=CMYK(0,0,0,0) "
                           "#2 colours keep their numbers, because the profile for them cannot be used ");
  EXPECT_TRUE(book.profiles.empty());
  for (const Swatch &swatch : book.swatches)
    EXPECT_FALSE(swatch.profile);
}

TEST(SwatchBook, WhatAFormatCannotHoldIsSaidOnce)
{
  SwatchBook book =
    BookOf({RecordSwatch("", Record::CLRMakeIndex(1)), CmykSwatch("a", 0, 0, 0, 0), CmykSwatch("b", 0, 0, 0, 0),
            Spot(RgbSwatch("c", 1, 1, 1), 0.5), RecordSwatch("", Record::CLRMakeIndex(2)), GraySwatch("\xFF", 0)},
           {{"one", 0}, {"two", 2}, {"three", 5}, {"four", 6}});
  EXPECT_EQ(
    Write("css", book),
    "@charset \"UTF-8\";\n:root {\n  /* one */\n  --a: #ffffff;\n  /* two */\n  --b: #ffffff;\n  --c: #ffffff;\n"
    "  /* three */\n  --\xEF\xBF\xBD: #000000;\n}\n"
    "#2 colours were left out, because nobody knows here what they look like\n"
    "#2 CMYK colours became RGB\n#1 gray colour became RGB\n#1 spot colour became a process colour\n");
  // Nothing at all is no palette in any format.
  book = BookOf({RecordSwatch("", Record::CLRMakeIndex(1))});
  for (const PaletteFormat &format : PaletteFormats()) {
    if (format.write == nullptr || format.key == "list") // which holds the record
      continue;
    EXPECT_EQ(Write(format.key, book), "no colours") << format.key;
  }
}
