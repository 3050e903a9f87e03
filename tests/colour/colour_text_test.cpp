#include "tests/support/colours.h"
#include "zelclr/colour/colour_text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

using C = CLR_COLORSPEC;
using tests::Bytes;
using ZelClr::ColorSpecFromText;
using ZelClr::TextFromColorSpec;

namespace {

C InPalette(C colour, unsigned paletteType)
{
  colour.SetPaletteType(static_cast<std::uint16_t>(paletteType));
  return colour;
}

const struct
{
  C colour;
  const char *text;
} kRows[] = {
  {C(), "CSINVALID()"},
  {C::MakeRGB(255, 128, 0), "RGB255(255,128,0)"},
  {InPalette(C::MakeRGB(255, 128, 0), 0), "RGB255(255,128,0,@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2})"},
  {InPalette(C(), 0), "CSINVALID(@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2})"},
  {C::MakeCMYK(0, 50, 100, 255), "CMYK(0,50,100,255)"},
  {C::MakeCMYK255(0, 50, 100, 255), "CMYK255(0,50,100,255)"},
  {C::MakeCMYK100(0, 50, 100, 0), "CMYK100(0,50,100,0)"},
  {C::MakeCMY(1, 2, 3), "CMY255(1,2,3)"},
  {C::MakeHSB(359, 255, 128), "HSB(359,100,50.2)"},
  {C::MakeHLS(-30, 128, 255), "HLS(-30,50.2,100)"},
  {C::MakeBW(-2147483647 - 1), "BW(-2147483648)"},
  {C::MakeGRAY(9), "GRAY255(9)"},
  {C::MakeYIQ255(255, 100, 100), "YIQ255(255,100,100)"},
  {C::MakeLAB(136, 127, -127), "LAB(53.33,60,-60)"},
  {C::MakeLAB255(136, 255, 1), "LAB255(136,255,1)"},
  {C::CLRMakeIndex(65535), "INDEX(65535)"},
  {C::MakeHEX(1, 2, 3, 4, 5, 6), "HEXA(1,2,3,4,5,6)"},
  {tests::ColourOfModel(15, {50, 0, 1, 2, 3, 4, 5, 6}), "HEXA(1,2,3,4,5,6,50)"},
  {C::MakeXYZ(1, 2, 3), "XYZ255(1,2,3)"},
  {C::MakeREGCOLOR(), "REGCOLOR(100,100,100,100)"},
  {tests::ColourOfModel(20, {1, 2, 3, 4, 5}), "REGCOLOR(1,2,3,4,5)"},
  {C::MakeUserInks(1, 2, 3, 100), "USERINK(1,2,3,100)"},
  {C::MakeIndexedUserInks(-1, 100), "IDXUSRINK(-1,100)@{00000000-0000-0000-0000-000000000000}"},
  {C::MakeRGB48(1, 2, 65535), "RGB48(1,2,65535)"},
  {C::MakeGRAY16(300), "GRAY16(300)"},
  {C::MakeSPOT(0, -17, 100, nullptr), "SPOT(-17,100)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}"},
  {C::MakePANTONE(-1, 100), "PANTONE(65535,100)@{A47941A5-802A-4566-8CF6-EFDE9C7E8C3D}"},
  {C::MakeSCRGB(1.5f, -0.1f, 0), "SCRGB(1.5,-0.1,0)"},
  {C::MakeRGBA(1, 2, 3, 4), "RGBA(1,2,3,4)"},
  {C::MakeBGRA(1, 2, 3, 4), "BGRA(1,2,3,4)"},
};

TEST(ColourText, WritesAndReads)
{
  for (const auto &row : kRows) {
    EXPECT_EQ(TextFromColorSpec(row.colour), row.text);
    const auto read = ColorSpecFromText(row.text);
    ASSERT_TRUE(read) << row.text;
    EXPECT_EQ(read->GetType(), row.colour.GetType()) << row.text;
    EXPECT_EQ(read->GetPaletteGuid(), row.colour.GetPaletteGuid()) << row.text;
    EXPECT_EQ(*read, row.colour) << row.text;
    EXPECT_EQ(TextFromColorSpec(C::MakeReference(row.colour)), row.text);
  }
}

TEST(ColourText, EveryProperPrefixIsRefused)
{
  for (const auto &row : kRows) {
    const std::string_view text = row.text;
    for (std::size_t length = 0; length < text.size(); ++length) {
      std::string reason;
      EXPECT_FALSE(ColorSpecFromText(text.substr(0, length), &reason)) << text.substr(0, length);
      EXPECT_FALSE(reason.empty()) << text.substr(0, length);
    }
    EXPECT_FALSE(ColorSpecFromText(std::string(text) + ")")) << text;
  }
}

TEST(ColourText, ReadsWhatPeopleType)
{
  EXPECT_EQ(ColorSpecFromText("#Ff8000"), C::MakeRGB(255, 128, 0));
  EXPECT_EQ(ColorSpecFromText("rgb255( 255 , 128,\t0 )"), C::MakeRGB(255, 128, 0));
  EXPECT_EQ(ColorSpecFromText("lab(53.4, 60, -60)"), C::MakeLAB(136, 127, -127));
  EXPECT_EQ(ColorSpecFromText("RGB48(1,2,65535,100)"), C::MakeRGB48(1, 2, 65535));
  EXPECT_EQ(ColorSpecFromText("spot(1,1)@{0af3491b-0ec0-0f94-4d60-f38448bbb5f2}"), C::MakeSPOT(0, 1, 1, nullptr));
}

TEST(ColourText, RefusesWhatTheRecordCannotHold)
{
  for (const char *text : {"RGB255(256,0,0)",
                           "RGB255(-1,0,0)",
                           "RGB255(1.5,0,0)",
                           "HSB(0,-0.1,0)",
                           "HSB(0,100.19,0)",
                           "LAB(50,60.2,0)",
                           "RGB255(1,2)",
                           "RGB255(1,2,3,4)",
                           "RGB255()",
                           "RGB255(1,2,3,)",
                           "RGB255(1,,3)",
                           "RGB255(nan,0,0)",
                           "SCRGB(inf,0,0)",
                           "SCRGB(1e39,0,0)",
                           "SCRGB(1e999,0,0)",
                           "HSB(0,101,0)",
                           "HSB(32768,0,0)",
                           "LAB(0,61,0)",
                           "RGB255(+1,2,3)",
                           "RGB255(1,2,3) ",
                           "RGB255(1,2,3)@{}",
                           "RGB255(1,2,3,@{00000000-0000-0000-0000-000000000000})",
                           "RGB(1,2,3)",
                           "DEVICEN()",
                           "DEVICEN(1)",
                           "()",
                           "",
                           "(1,2,3)",
                           "#12345",
                           "#1234567",
                           "#-12345",
                           "#+12345",
                           "#12 456",
                           "#0x1234",
                           "SPOT(1,2)",
                           "SPOT(1,2,3)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}",
                           "USERINK(1,2,3)",
                           "RGB255)1,2,3(",
                           "RGB255((1,2,3)",
                           "RGB255(0x1,2,3)",
                           "GRAY16(65536)",
                           "BW(2147483648)",
                           "HEXA(1,2,3,4,5)",
                           "CSINVALID(0)"})
  {
    std::string reason;
    EXPECT_FALSE(ColorSpecFromText(text, &reason)) << text;
    EXPECT_FALSE(reason.empty()) << text;
  }
}

TEST(ColourText, HasNoTextForColoursWithoutMeaning)
{
  for (const unsigned model : {10u, 16u, 26u, 31u, 1013u, 65535u})
    EXPECT_EQ(TextFromColorSpec(tests::ColourOfModel(model, {1})), "") << model;
  EXPECT_EQ(TextFromColorSpec(C::MakeSCRGB(NAN, 0, 0)), "");
  EXPECT_EQ(TextFromColorSpec(C::MakeSCRGB(0, 0, -INFINITY)), "");
  EXPECT_EQ(TextFromColorSpec(tests::DeviceNColour(DeviceN_Process_CMYK, 1)), "");
}

RC_GTEST_PROP(ColourText, EveryColourComesBackByteForByte, (const std::array<std::uint8_t, 16> &bytes, bool inPalette))
{
  for (const ZelClr::ColourModel &model : ZelClr::ColourModels()) {
    C colour = tests::ColourOfModel(model.number, Bytes(bytes.begin(), bytes.end()));
    colour.SetPaletteType(inPalette ? 27 : 5);
    const std::string text = TextFromColorSpec(colour);
    if (text.empty() || model.number == 28)
      continue;
    const auto read = ColorSpecFromText(text);
    if (!read)
      RC_FAIL(text);
    RC_ASSERT(read->GetType() == model.number);
    RC_ASSERT(read->GetPaletteGuid() == colour.GetPaletteGuid());
    for (const ZelClr::ColourComponent &component : model.components) {
      ZelClr::WithComponentType(component.type, [&](auto number) {
        for (std::size_t i = 0; i < sizeof number; ++i) {
          if (read->GetRAWColor()[component.offset + i] != colour.GetRAWColor()[component.offset + i])
            RC_FAIL(text);
        }
      });
    }
  }
}

} // namespace
