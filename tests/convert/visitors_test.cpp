#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/convert/visitors/color_spec_converter.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/text.h"

#include <gtest/gtest.h>

namespace {

using ZelClr::HResult;
using ZelClr::kEFail;
using ZelClr::kSFalse;
using ZelClr::kSOk;
namespace Model = ZelClr::ClrModel;

/// From the shipped RGB and press to the same RGB and the plain gray, with another press.
class Visitors : public tests::ShippedProfiles
{
protected:
  Visitors() { WClrPaletteMgr::Shutdown(); }
  ~Visitors() override { WClrPaletteMgr::Shutdown(); }

  WClrPalette *LoadedPalette(const std::string &attributes = {}) const
  {
    const std::string path = folder.WriteText(
      "palette.xml",
      "<?xml version=\"1.0\"?><palette guid=\"{00000000-0000-4000-8000-000000000001}\" name=\"P\" prefix=\"Our \"" +
        attributes +
        "><colorspaces><cs name=\"Ink\" fixedID=\"1\"><color cs=\"CMYK\" tints=\"0,1,0,0\"/></cs></colorspaces>"
        "<colors><page><color cs=\"CMYK\" name=\"Orange\" tints=\"0,0.6,1,0\"/><color cs=\"Ink\" name=\"Ink\"/>"
        "<color cs=\"LAB\" name=\"Lab\" tints=\"0.5,0.6,0.6\"/><color cs=\"CMYK\" tints=\"0,0,0,0\"/></page></colors>"
        "</palette>");
    return WClrPaletteMgr::GetInstance().LoadPalette(ZelUtl::WideFromUtf8(path));
  }
  template <class Converter = CPaletteColorsConverter>
  Converter Made() const
  {
    Converter converter;
    converter.CColorConverterBaseInit(from, to);
    return converter;
  }

  const std::shared_ptr<ColorSystem::ColorProfile> fogra = Shipped(L"ISO Coated FOGRA39.icc");
  const ColorSystem::ColorContext from{srgb, fogra, gray, ColorSystem::ColorModel::Cmyk,
                                       ColorSystem::RenderingIntent::RelativeColorimetric};
  const ColorSystem::ColorContext to{srgb, swop, gray, ColorSystem::ColorModel::Cmyk,
                                     ColorSystem::RenderingIntent::RelativeColorimetric};
};

} // namespace

TEST(Traversal, ResultsCombine)
{
  struct Row
  {
    HResult before, next, after;
  };
  for (const Row &row : {Row{kSFalse, kSOk, kSOk},
                         {kSFalse, kSFalse, kSFalse},
                         {kSOk, kSFalse, kSOk},
                         {kSOk, kSOk, kSOk},
                         {kEFail, kSOk, kEFail},
                         {kSOk, kEFail, kEFail},
                         {kEFail, -2, kEFail}})
  {
    HResult result = row.before;
    CTraverseColorBase::CombineHRESULT(result, row.next);
    EXPECT_EQ(row.after, result) << row.before << ", " << row.next;
  }
  CLR_COLORSPEC color = CLR_COLORSPEC::MakeRGB(1, 2, 3);
  EXPECT_EQ(0, CTraverseColorSpec::CB_ProcessColorspec(color, {}, nullptr));
}

TEST_F(Visitors, ConvertProcessColoursAndNothingElse)
{
  auto converter = Made<CColorSpecConverter>();
  EXPECT_TRUE(converter.GetObjectChanger());

  // By the converter that they hold, in the colour's own model.
  CLR_COLORSPEC inks = CLR_COLORSPEC::MakeCMYK255(0, 153, 255, 0);
  CLR_COLORSPEC expected;
  ASSERT_TRUE(ColorSystem::ColorConverter(from, to).Convert(inks, expected));
  ASSERT_NE(expected, inks);
  CTraverseColorSpec &visitor = converter;
  EXPECT_EQ(kSOk, CTraverseColorSpec::CB_ProcessColorspec(inks, from, &visitor));
  EXPECT_EQ(expected, inks);
  EXPECT_TRUE(converter.IsObjectModified());
  converter.ClearObjectModifiedFlag();
  EXPECT_FALSE(converter.IsObjectModified());
  EXPECT_TRUE(converter.AnyObjectModified());

  auto fresh = Made<CColorSpecConverter>();
  CLR_COLORSPEC reference;
  CLR_COLORSPEC::MakeReference(reference, CLR_COLORSPEC::MakeCMYK255(0, 153, 255, 0));
  for (const CLR_COLORSPEC &kept :
       {CLR_COLORSPEC::MakePANTONE(185, 100), CLR_COLORSPEC::MakeREGCOLOR(), CLR_COLORSPEC::MakeLAB(128, 20, 20),
        CLR_COLORSPEC::MakeBW(0), CLR_COLORSPEC::MakeYIQ255(10, 100, 100), CLR_COLORSPEC::MakeUserInks(1, 2, 3, 50),
        CLR_COLORSPEC::MakeRGB(10, 20, 30), CLR_COLORSPEC(), reference})
  {
    CLR_COLORSPEC color = kept;
    EXPECT_EQ(kSFalse, fresh.ProcessColorspec(color)) << kept.GetType();
    EXPECT_EQ(kept, color);
  }
  EXPECT_FALSE(fresh.AnyObjectModified());

  CLR_COLORSPEC lost = CLR_COLORSPEC::MakeRGB(1, 2, 3);
  EXPECT_EQ(kEFail, CColorSpecConverter().ProcessColorspec(lost)) << "not initialised";
}

TEST_F(Visitors, CopiesShareOneConverterThatLastsAsLongAsOneOfThem)
{
  std::weak_ptr<ColorSystem::ColorConverter> shared;
  CPaletteColorsConverter last;
  {
    const auto first = Made();
    shared = first.GetColorConverter();
    const CPaletteColorsConverter second(first);
    last = second;
    EXPECT_EQ(first.GetColorConverter(), last.GetColorConverter());
    EXPECT_EQ(to, last.GetTargetColorContext());
    EXPECT_TRUE(last.GetObjectChanger());
  }
  CLR_COLORSPEC color = CLR_COLORSPEC::MakeCMYK255(0, 153, 255, 0);
  EXPECT_EQ(kSOk, last.ProcessColorspec(color));
  last = CPaletteColorsConverter();
  EXPECT_TRUE(shared.expired());
}

TEST_F(Visitors, ConvertPalettesThatTheManagerHolds)
{
  auto converter = Made();
  WClrPalette stranger;
  EXPECT_EQ(kSFalse, converter.ProcessPalette(nullptr));
  EXPECT_EQ(kSFalse, converter.ProcessPalette(&stranger));

  WClrPalette *const palette = LoadedPalette();
  ASSERT_NE(nullptr, palette);
  const CLR_COLORSPEC ink = palette->GetColorSpec(1);
  const CLR_COLORSPEC keptLab = palette->GetColorSpec(2);
  CLR_COLORSPEC expected;
  ASSERT_TRUE(ColorSystem::ColorConverter(from, to).Convert(palette->GetColorSpec(0), expected));
  EXPECT_EQ(kSOk, converter.ProcessPalette(palette));
  EXPECT_EQ(expected, palette->GetColorSpec(0));
  EXPECT_EQ(L"Our Orange", palette->GetColorName(0)) << "the prefix is not doubled";
  EXPECT_EQ(ink, palette->GetColorSpec(1));
  EXPECT_EQ(keptLab, palette->GetColorSpec(2));
  EXPECT_TRUE(palette->IsChanged());

  palette->RemoveAllColors();
  EXPECT_EQ(kSFalse, converter.ProcessPalette(palette));
}

TEST_F(Visitors, AColourThatCannotBeWrittenBackEndsTheWalk)
{
  WClrPalette *const palette = LoadedPalette(" locked=\"true\"");
  ASSERT_NE(nullptr, palette);
  const CLR_COLORSPEC before = palette->GetColorSpec(0);
  EXPECT_EQ(kEFail, Made().ProcessPalette(palette));
  EXPECT_EQ(before, palette->GetColorSpec(0));
}
