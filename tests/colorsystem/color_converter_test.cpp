// Converters of colours: by formula, between contexts, one by one, as lists and from many threads.
#include "tests/settings/support/settings_folders.h"
#include "tests/support/colours.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/spot_color_definition.h"
#include "zelclr/platform/application.h"

#include <algorithm>
#include <random>
#include <thread>

using namespace ColorSystem;
using C = CLR_COLORSPEC;
using enum ColorModel;
using enum SampleType;

namespace {

namespace ClrModel = ZelClr::ClrModel;
namespace Formulas = ZelClr::Formulas;

class Converters : public tests::ShippedProfiles
{
protected:
  static ColorContext Of(const std::shared_ptr<ColorProfile> &profile,
                         RenderingIntent intent = RenderingIntent::RelativeColorimetric)
  {
    return {*profile, intent};
  }
  const std::shared_ptr<ColorProfile> adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc"),
                                      fogra = Shipped(L"ISO Coated FOGRA39.icc"),
                                      gray18 = Shipped(L"Gray Gamma 18.icc");
  const ColorContext here{srgb, swop, gray, Rgb, RenderingIntent::RelativeColorimetric},
    there{adobe, fogra, gray18, Cmyk, RenderingIntent::RelativeColorimetric};
};

/// The record's own bytes through a bare transform of 16 bits, rounded to its 8: what a managed conversion must give.
C Bare(const std::shared_ptr<ColorProfile> &from, const std::shared_ptr<ColorProfile> &to, const C &record)
{
  TransformOptions options;
  options.source = {from->GetColorModel(), UInt16};
  options.destination = {to->GetColorModel(), UInt16};
  const auto source = CreateColorData(options.source, 1, 1), made = CreateColorData(options.destination, 1, 1);
  const bool isRgb = record.GetType() == ClrModel::Rgb255;
  for (unsigned i = 0; i < options.source.ColourChannels(); ++i)
    source->SetSample(0, 0, i, record.GetComponent<std::uint8_t>(isRgb ? 2 - i : i) / 255.0f);
  const auto transform = ColorManagementSystem::GetCurrent()->CreateTransform(*from, *to, options);
  if (transform == nullptr || !transform->Convert(*source, *made))
    return {};
  const auto byte = [&](unsigned i) {
    return static_cast<std::uint8_t>(std::lround(made->GetSample(0, 0, i) * 255.0f));
  };
  return to->GetColorModel() == Rgb ? C::MakeRGB(byte(0), byte(1), byte(2))
                                    : C::MakeCMYK255(byte(0), byte(1), byte(2), byte(3));
}

TEST_F(Converters, ByFormulaFollowTheRules)
{
  const SimpleColorConverter converter(here);
  const std::pair<C, C> kRows[] = {{C::MakeRGB(255, 0, 0), C::MakeCMYK255(0, 255, 255, 0)},
                                   {C::MakeRGB(128, 128, 128), C::MakeCMYK255(0, 0, 0, 127)},
                                   {C::MakeCMYK255(0, 0, 0, 255), C::MakeRGB(0, 0, 0)},
                                   {C::MakeCMYK100(60, 0, 0, 60), C::MakeRGB(0, 102, 102)},
                                   {C::MakeHSB(120, 255, 255), C::MakeCMYK100(100, 0, 100, 0)},
                                   {C::MakeGRAY16(65535), C::MakeRGB(255, 255, 255)},
                                   {C::MakeRGB(255, 255, 255), C::MakeLAB255(255, 128, 128)},
                                   {C::MakeRGB(255, 255, 255), C::MakeXYZ(246, 255, 210)},
                                   {C::MakeRGB(0, 0, 0), C::MakeBW(0)},
                                   {C::MakeBGRA(9, 8, 7, 6), C::MakeRGBA(9, 8, 7, 6)},
                                   {C::MakeRGBA(9, 8, 7, 6), C::MakeRGB(9, 8, 7)}};
  for (const auto &[source, expected] : kRows) {
    C target;
    EXPECT_TRUE(converter.Convert(source, target, expected.GetType(), 0));
    EXPECT_EQ(target, expected) << source.GetType() << " to " << expected.GetType();
  }
  EXPECT_TRUE(converter.GetColorConversionRequired(Rgb, Cmyk));
  EXPECT_FALSE(converter.GetColorConversionRequired(3u, 3u));
  EXPECT_TRUE(converter.IsColorInGamut(C::MakeRGB(0, 255, 0)));
  EXPECT_EQ(converter.ConvertToColorRef(C::MakeRGB(1, 2, 3), false), 0x030201u);
  EXPECT_EQ(converter.ConvertToColorRef(C::CLRMakeIndex(5), true), 0u);
}

// Step by step: what stays, what is converted, and into what.
TEST_F(Converters, KeepTheFamilyOfAColour)
{
  ColorConverter converter(here, there);
  const C before = C::MakeHSB(7, 8, 9);
  const auto converted = [&](const C &source) {
    C target = before;
    EXPECT_TRUE(converter.Convert(source, target)) << source.GetType();
    return target;
  };
  EXPECT_EQ(converted(C()), before); // an invalid colour touches nothing
  const C staying[] = {C::MakeREGCOLOR(), C::MakePANTONE(3, 50), C::MakeSPOT(23, 5, 40, nullptr), C::CLRMakeIndex(4),
                       C::MakeUserInks(1, 2, 3, 4)};
  for (const C &colour : staying) {
    EXPECT_EQ(converted(colour), colour) << colour.GetType();
    const C through = converted(C::MakeReference(colour));
    EXPECT_EQ(through, colour) << colour.GetType();
    EXPECT_FALSE(through.IsReference());
  }
  const C orange = C::MakeRGB(255, 128, 0), ink = C::MakeCMYK255(20, 200, 250, 10);
  EXPECT_EQ(converted(orange), Bare(srgb, adobe, orange));
  EXPECT_EQ(converted(C::MakeReference(orange)), Bare(srgb, adobe, orange));
  EXPECT_EQ(converted(ink), Bare(swop, fogra, ink));
  EXPECT_NE(converted(ink), ink);
  EXPECT_EQ(converted(C::MakeHSB(120, 255, 255)).GetType(), ClrModel::Rgb255);
  EXPECT_EQ(converted(C::MakeGRAY(128)).GetType(), ClrModel::Gray16);
  EXPECT_EQ(converted(C::MakeLAB255(100, 120, 140)), C::MakeLAB255(100, 120, 140));
  C itself = orange;
  EXPECT_TRUE(converter.Convert(itself, itself));
  EXPECT_EQ(itself, Bare(srgb, adobe, orange));

  // A target without a profile for the model takes the model in which it mixes.
  const ColorConverter toPress(here, Of(swop)), toGray(here, Of(gray));
  C target;
  EXPECT_TRUE(toPress.Convert(orange, target));
  EXPECT_EQ(target, Bare(srgb, swop, orange));
  EXPECT_TRUE(toGray.Convert(orange, target));
  EXPECT_EQ(target.GetType(), ClrModel::Gray255);
  EXPECT_TRUE(ColorConverter(here, ColorContext()).Convert(orange, target)); // none at all: it stays
  EXPECT_EQ(target, orange);

  // One profile on both sides.
  const ColorConverter same(here, Of(srgb));
  EXPECT_FALSE(same.GetColorConversionRequired(Rgb, Rgb));
  EXPECT_FALSE(same.GetColorConversionRequired(5u, 6u)); // no profile of Hsv
  EXPECT_FALSE(same.GetColorConversionRequired(5u, 13u));
  EXPECT_TRUE(converter.GetColorConversionRequired(5u, 23u));
  EXPECT_TRUE(converter.GetColorConversionRequired(Rgb, Cmyk));
  const C scene = C::MakeSCRGB(1.5f, -0.25f, 0.5f);
  EXPECT_TRUE(same.Convert(scene, target, ClrModel::ScRgb, 0)); // copied, not cut off
  EXPECT_EQ(target, scene);
}

TEST_F(Converters, ConvertInksOnlyWhenTold)
{
  const SpotColorDefinition definition(
    L"Warm", L"inks",
    {{ClrModel::Cmyk255, C::MakeCMYK255(0, 200, 255, 0)}, {ClrModel::Rgb255, C::MakeRGB(255, 90, 10)}});
  const C ink = C::MakeSPOT(23, 5, 50, &definition);
  ColorConverter converter(here, there);
  C target;
  EXPECT_FALSE(converter.GetConvertSpotColors().first);
  converter.SetConvertSpotColors({true, Cmyk});
  ASSERT_TRUE(converter.Convert(ink, target));
  EXPECT_EQ(target, Bare(swop, fogra, C::MakeCMYK255(0, 100, 128, 0)));
  converter.SetConvertSpotColors({true, Rgb}); // its other alternative, at half the density
  ASSERT_TRUE(converter.Convert(C::MakeReference(ink), target));
  C thinned = C::MakeRGB(255, 90, 10);
  WClrConvert::ApplyDensity(&thinned, 50);
  EXPECT_EQ(target, Bare(srgb, adobe, thinned));
  C same = C::MakeRGB(1, 2, 3);
  EXPECT_FALSE(converter.Convert(C::MakeSPOT(23, 5, 50, nullptr), same)); // without a definition
  EXPECT_EQ(same, C::MakeRGB(1, 2, 3));

  // Process and spot plates: only the process plates change, unless inks are converted, too.
  auto space = std::make_shared<WClrColorSpaceDeviceN>(1, DeviceN_Process_CMYK);
  space->AddColorPlate(DeviceN_Plate_Process);
  space->AddSpotColorPlate(ink);
  auto *const value = new WClrColorDeviceN(space, 7);
  constexpr std::uint32_t kValues[] = {10, 80, 90, 5, 40};
  for (int i = 0; i < 5; ++i)
    value->SetColorComponent(i, kValues[i], 100, false);
  const C mixture = C::MakeDEVICEN(value);
  for (const C &source : {mixture, C::MakeReference(mixture)}) {
    converter.SetConvertSpotColors({false, Cmyk});
    ASSERT_TRUE(converter.Convert(source, target));
    ASSERT_EQ(target.GetType(), ClrModel::DeviceN);
    C process, expected;
    ASSERT_TRUE(target.GetDeviceN()->GetProcessColor(process));
    ASSERT_TRUE(converter.Convert(C::MakeCMYK100(10, 80, 90, 5), expected, ClrModel::Cmyk100, 0));
    EXPECT_EQ(process, expected);
    EXPECT_NE(process, C::MakeCMYK100(10, 80, 90, 5));
    EXPECT_EQ(target.GetDeviceN()->GetValues().at(4), 40u);
    EXPECT_EQ(target.GetDeviceN()->GetIdentifier(), 7);
    EXPECT_EQ(mixture.GetDeviceN()->GetValues().at(0), 10u); // the source keeps its own
    converter.SetConvertSpotColors({true, Cmyk});
    ASSERT_TRUE(converter.Convert(source, target));
    EXPECT_EQ(target.GetType(), ClrModel::Cmyk255);
  }
  C itself(mixture);
  converter.SetConvertSpotColors({false, Cmyk});
  ASSERT_TRUE(converter.Convert(itself, itself));
  EXPECT_NE(itself, mixture);
  // No CMYK in the target: the process plates become lights, the ink stays.
  ASSERT_TRUE(ColorConverter(here, Of(srgb)).Convert(mixture, target));
  ASSERT_EQ(target.GetType(), ClrModel::DeviceN);
  EXPECT_TRUE(target.GetDeviceN()->IsRGBBased());
  EXPECT_TRUE(target.GetDeviceN()->GetColorSpace()->HasSpotColorPlate(ink));
  // Without a base, and without a space: a copy.
  for (const DeviceN_Process_Type base : {DeviceN_Process_None, DeviceN_Process_Hexachrome}) {
    const C other = tests::DeviceNColour(base, 30);
    ASSERT_TRUE(converter.Convert(other, target));
    EXPECT_EQ(target, other) << base;
  }
}

TEST_F(Converters, TakeEveryModelToEveryModel)
{
  const std::vector<C> colours = tests::NastyColours();
  const SimpleColorConverter simple(here);
  const ColorConverter managed(here, there);
  for (const SimpleColorConverter *converter : {&simple, static_cast<const SimpleColorConverter *>(&managed)}) {
    for (const C &colour : colours) {
      for (unsigned type = 0; type <= 31; ++type) {
        C target = C::MakeYIQ255(1, 2, 3);
        if (converter->Convert(colour, target, type, type % 2)) {
          if (colour.GetType() != ClrModel::Invalid) {
            EXPECT_EQ(target.GetType(), type) << colour.GetType();
          }
        } else
          EXPECT_EQ(target, C::MakeYIQ255(1, 2, 3)) << colour.GetType() << ' ' << type;
      }
      C target;
      converter->Convert(colour, target);
      converter->ConvertToColorRef(colour, true);
      converter->IsColorInGamut(colour);
    }
  }
}

// There and back within what their components can tell apart.
TEST_F(Converters, ComeBackFromEveryModel)
{
  const SimpleColorConverter simple(here);
  const ColorConverter managed(here, here);
  const auto labOf = [](const C &rgb) {
    return Formulas::CieLabFromXyz(
      Formulas::XyzFromSrgb(rgb.GetRed() / 255.0, rgb.GetI255() / 255.0, rgb.GetBlue() / 255.0));
  };
  constexpr std::pair<unsigned, double> kWorst[] = {
    {ClrModel::Cmyk255, 2.5}, {ClrModel::Cmyk100, 3.5}, {ClrModel::Cmyk, 3.5},
    {ClrModel::Cmy255, 9.0}, // black has no place there
    {ClrModel::Hsb, 1.5},     {ClrModel::Hls, 1.5},     {ClrModel::Rgb48, 0.01},
    {ClrModel::ScRgb, 0.6},   {ClrModel::Lab255, 1.5},  {ClrModel::Xyz, 3.0},
    {ClrModel::Rgba, 0.01},   {ClrModel::Bgra, 0.01}};
  for (const auto &[type, worst] : kWorst) {
    for (const C &rgb : {C::MakeRGB(180, 110, 100), C::MakeRGB(255, 255, 255), C::MakeRGB(120, 140, 130),
                         C::MakeRGB(200, 180, 90), C::MakeRGB(90, 110, 160)})
    {
      for (const SimpleColorConverter *converter : {&simple, static_cast<const SimpleColorConverter *>(&managed)}) {
        C taken, back;
        ASSERT_TRUE(converter->Convert(rgb, taken, type, 0)) << type;
        ASSERT_TRUE(converter->Convert(taken, back, ClrModel::Rgb255, 0)) << type;
        EXPECT_LT(Formulas::Ciede2000(labOf(rgb), labOf(back)), worst)
          << type << (converter == &simple ? " by formula" : " managed") << ' ' << int{rgb.GetRed()};
      }
    }
  }
  // White and black of grays are white and black.
  for (const unsigned type : {unsigned{ClrModel::Gray255}, unsigned{ClrModel::Gray16}, unsigned{ClrModel::BlackWhite}})
    for (const C &rgb : {C::MakeRGB(255, 255, 255), C::MakeRGB(0, 0, 0)}) {
      for (const SimpleColorConverter *converter : {&simple, static_cast<const SimpleColorConverter *>(&managed)}) {
        C taken, back;
        ASSERT_TRUE(converter->Convert(rgb, taken, type, 0));
        ASSERT_TRUE(converter->Convert(taken, back, ClrModel::Rgb255, 0));
        EXPECT_EQ(back, rgb) << type << (converter == &simple ? " by formula" : " managed");
      }
    }
}

TEST_F(Converters, TreatBlackAndGrayAndNumbersAsTold)
{
  ColorConverter converter(here, there);
  const auto converted = [&](const C &source, unsigned type) {
    C target;
    EXPECT_TRUE(converter.Convert(source, target, type, 0));
    return target;
  };
  constexpr unsigned kInks = ClrModel::Cmyk255;
  const C black = C::MakeCMYK255(0, 0, 0, 255), rich = C::MakeCMYK255(255, 255, 255, 255);
  EXPECT_NE(converted(C::MakeRGB(0, 0, 0), kInks), black); // what profiles make of it
  converter.SetPreservePureBlack(true);
  for (const C &pure : {black, C::MakeRGB(0, 0, 0), C::MakeGRAY(0), C::MakeBW(0), C::MakeCMYK100(0, 0, 0, 100),
                        C::MakeHSB(100, 0, 0), C::MakeRGBA(0, 0, 0, 9)})
    EXPECT_EQ(converted(pure, kInks), black) << pure.GetType();
  EXPECT_NE(converted(rich, kInks), black);
  EXPECT_NE(converted(C::MakeRGB(0, 0, 1), kInks), black);
  EXPECT_EQ(converted(black, ClrModel::Rgb255), Bare(swop, adobe, black)); // only towards inks
  converter.SetPreservePureBlack(false);

  converter.SetMapGrayscalToBlackChannel(true);
  for (unsigned v = 0; v <= 255; v += 15)
    EXPECT_EQ(converted(C::MakeGRAY16(static_cast<std::uint16_t>(v * 257)), kInks),
              C::MakeCMYK255(0, 0, 0, static_cast<std::uint8_t>(255 - v)));
  EXPECT_EQ(converted(C::MakeGRAY(255), kInks), C::MakeCMYK255(0, 0, 0, 0));
  EXPECT_EQ(converted(C::MakeRGB(128, 128, 128), kInks), Bare(srgb, fogra, C::MakeRGB(128, 128, 128)));

  const C ink = C::MakeCMYK255(20, 200, 250, 10), orange = C::MakeRGB(255, 128, 0);
  converter.SetPreserveNumbers({true, Cmyk});
  EXPECT_EQ(converted(ink, kInks), ink);
  EXPECT_EQ(converted(orange, ClrModel::Rgb255), Bare(srgb, adobe, orange));
  EXPECT_EQ(converted(orange, kInks), Bare(srgb, fogra, orange));
  converter.SetPreserveNumbers({true, Rgb});
  EXPECT_EQ(converted(orange, ClrModel::Rgb255), orange);
  EXPECT_EQ(converted(ink, kInks), Bare(swop, fogra, ink));
}

/// With more neighbours than an engine converts exactly at once.
TEST_F(Converters, ConvertListsAsOneByOne)
{
  ColorConverter converter(here, there);
  converter.SetPreservePureBlack(true);
  std::vector<C> list = tests::NastyColours();
  std::mt19937 random(3);
  const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
  for (int i = 0; i < (tests::kSanitized ? 2000 : 70000); ++i)
    list.push_back(C::MakeRGB(byte(), byte(), byte()));
  for (int i = 0; i < 300; ++i) {
    const C some[] = {C::MakeCMYK255(byte(), byte(), byte(), byte()), C::MakeRGBA(byte(), byte(), byte(), byte()),
                      C::MakeRGB48(byte(), byte(), byte()), C::MakeReference(C::MakeRGB(byte(), byte(), byte())),
                      C::MakeHSB(byte(), byte(), byte())};
    list.push_back(some[random() % 5]);
    list.push_back(list.back());
  }
  for (const unsigned type : {unsigned{ClrModel::Cmyk255}, unsigned{ClrModel::Rgb255}, unsigned{ClrModel::Bgra},
                              unsigned{ClrModel::Registration}, 0u})
  {
    std::vector<C> one(list.size(), C::MakeYIQ255(1, 2, 3)), all = one, inPlace = list;
    bool succeeded = true;
    for (std::size_t i = 0; i < list.size(); ++i)
      succeeded = converter.Convert(list[i], one[i], type, 0) && succeeded;
    EXPECT_EQ(converter.ConvertList(list, all, type), succeeded);
    converter.ConvertList(inPlace, inPlace, type);
    std::size_t different = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
      different += one[i] != all[i];
      const bool failed = one[i] == C::MakeYIQ255(1, 2, 3);
      different += !failed && inPlace[i] != one[i] && list[i].GetType() != ClrModel::Invalid;
    }
    EXPECT_EQ(different, 0u) << type;
  }
  std::vector<C> shorter(list.size() - 1);
  EXPECT_FALSE(converter.ConvertList(list, shorter, 5));
  EXPECT_TRUE(converter.ConvertList({}, {}, 5));
}

TEST_F(Converters, ServeEveryCallerOfTheLibrary)
{
  ColorContext context = here, other = there;
  const C orange = C::MakeRGB(255, 128, 0), ink = C::MakeCMYK255(200, 0, 0, 0);
  C target;
  EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, ClrModel::Cmyk255, &orange, context));
  EXPECT_EQ(target, Bare(srgb, swop, orange));
  EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, ClrModel::Cmyk255, other, &orange, context));
  EXPECT_EQ(target, Bare(srgb, fogra, orange));
  EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, ClrModel::Cmyk100, &ink, context)); // relabelled
  EXPECT_EQ(target.GetType(), ClrModel::Cmyk100);
  EXPECT_EQ(target.GetComponent<std::uint8_t>(0), 200);
  for (const unsigned type : {1u, 13u, 20u, 21u, 22u, 0u, 31u}) {
    target = orange;
    EXPECT_FALSE(WClrConvert::ConvertColorSpec(&target, type, &ink, context)) << type;
    EXPECT_EQ(target, orange) << type;
  }
  for (const C &own : {C::MakePANTONE(3, 4), C::CLRMakeIndex(5), C::MakeREGCOLOR(), C::MakeUserInks(1, 2, 3, 4)}) {
    EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, own.GetType(), &own, context));
    EXPECT_EQ(target, own);
  }
  EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, ClrModel::Gray255, &ink, context));
  C itself = orange;
  EXPECT_TRUE(WClrConvert::ConvertColorSpec(&itself, ClrModel::Cmyk255, &itself, context));
  EXPECT_EQ(itself, Bare(srgb, swop, orange));
}

class Host final : public ZelUtl::ApplicationHost
{
public:
  Host() { ZelUtl::SetApplicationHost(this); }
  ~Host() override { ZelUtl::SetApplicationHost(nullptr); }
  unsigned GetOpenDocumentCount() const override { return 1; }
  const ColorContext *GetActiveColorContext() const override { return context; }
  const ColorContext *context = nullptr;
};

TEST_F(Converters, MakeColoursInTheDocumentsModel)
{
  Host host;
  EXPECT_EQ(C::MakeFromRGB(255, 128, 0), C::MakeRGB(255, 128, 0)); // no document
  const std::pair<std::shared_ptr<ColorProfile>, C> kRows[] = {{srgb, C::MakeRGB(255, 128, 0)},
                                                               {swop, C::MakeCMYK255(0, 127, 255, 0)}, // by formula
                                                               {gray, C::MakeGRAY(151)}};
  for (const auto &[profile, expected] : kRows) {
    const ColorContext context = Of(profile);
    host.context = &context;
    EXPECT_EQ(C::MakeFromRGB(255, 128, 0), expected);
    host.context = nullptr;
  }
  ColorContext hls;
  hls.SetBlendingColorModel(Hls);
  host.context = &hls;
  EXPECT_EQ(C::MakeFromRGB(255, 0, 0).GetType(), ClrModel::Hls);
}

class Factory final : public IColorConverterFactory
{
public:
  Factory() { ColorConverter::SetColorConverterFactoryForTests(this); }
  ~Factory() override { ColorConverter::SetColorConverterFactoryForTests(nullptr); }
  std::shared_ptr<ColorConverter> Create(const ColorContext &source, const ProofColorSettings *proof,
                                         const ColorContext &target) override
  {
    ++calls;
    proofs += proof != nullptr;
    auto converter = std::make_shared<ColorConverter>(source, target);
    converter->SetPreservePureBlack(true);
    return converter;
  }
  int calls = 0, proofs = 0;
};

TEST_F(Converters, ComeFromTheFactoryOfATest)
{
  ProofColorSettings nothing, proof;
  proof.SetEnvironmentToSimulate(fogra);
  ColorContext context = here;
  const C black = C::MakeRGB(0, 0, 0);
  C target;
  {
    Factory factory;
    EXPECT_EQ(dynamic_cast<ProofColorConverter *>(ColorConverter::Create(here, &proof, there).get()), nullptr);
    EXPECT_NE(DisplayColorConverter::Create(here, nullptr), nullptr);
    EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, ClrModel::Cmyk255, &black, context));
    EXPECT_EQ(target, C::MakeCMYK255(0, 0, 0, 255));
    EXPECT_EQ(factory.calls, 3);
    EXPECT_EQ(factory.proofs, 1);
  }
  EXPECT_TRUE(WClrConvert::ConvertColorSpec(&target, ClrModel::Cmyk255, &black, context));
  EXPECT_NE(target, C::MakeCMYK255(0, 0, 0, 255));
  const auto isProof = [](const auto &made) {
    return dynamic_cast<const ProofColorConverter *>(made.get()) != nullptr;
  };
  EXPECT_TRUE(isProof(ColorConverter::Create(here, &proof, there)));
  EXPECT_FALSE(isProof(ColorConverter::Create(here, &nothing, there)));
  EXPECT_FALSE(isProof(ColorConverter::Create(here, nullptr, there)));
  EXPECT_TRUE(isProof(DisplayColorConverter::Create(here, &proof)));
  EXPECT_FALSE(isProof(DisplayColorConverter::Create(here, &nothing)));
  EXPECT_EQ(DisplayColorConverter::Create(here, nullptr)->GetTargetColorContext(),
            ColorContext::GetDisplayColorContextImp());
}

TEST_F(Converters, ServeManyThreads)
{
  ProofColorSettings settings;
  settings.SetEnvironmentToSimulate(fogra);
  settings.SetDisplayGamutWarning(true);
  struct Shared
  {
    ColorConverter converter;
    ProofColorConverter proof;
  };
  const auto work = [](const Shared &shared) {
    std::mt19937 random(1);
    std::vector<C> results;
    for (int i = 0; i < 200; ++i) {
      const auto byte = [&] { return static_cast<std::uint8_t>(random() % 4 * 85); };
      const C colour = C::MakeRGB(byte(), byte(), byte());
      for (const unsigned type : {ClrModel::Cmyk255, ClrModel::Gray255, ClrModel::Lab}) {
        results.emplace_back();
        shared.converter.Convert(colour, results.back(), type, 0);
      }
      results.push_back(C::MakeCOLORREF(shared.proof.ConvertToColorRef(colour, true)));
    }
    return results;
  };
  const auto expected = work({{here, there}, {here, settings, Of(srgb)}});
  const Shared fresh{{here, there}, {here, settings, Of(srgb)}};
  std::vector<std::vector<C>> results(6);
  std::vector<std::thread> threads;
  ColorManagementSystem::GetCurrent()->ClearTransformCache();
  for (auto &result : results)
    threads.emplace_back([&] { result = work(fresh); });
  for (auto &thread : threads)
    thread.join();
  for (const auto &result : results)
    EXPECT_EQ(result, expected);
}

class HeldConverters : public tests::SettingsFolders
{
protected:
  HeldConverters() { Restart(); } // other tests have left theirs
};

// What a converter has used before is used again only while it is still right.
TEST_F(HeldConverters, FollowProfilesAndEnginesThatChange)
{
  const std::shared_ptr<ColorProfile> originals[] = {Shipped(L"sRGB_v4.icc"),
                                                     Shipped(L"CompatibleWithAdobeRGB1998.icc")};
  const auto swop = Shipped(L"USWebCoatedSWOP.icc");
  const auto bytesOf = [](const ColorProfile &profile) {
    return tests::ReadBytes(ZelUtl::Utf8FromWide(profile.GetPath()));
  };
  const auto path = ZelUtl::WideFromUtf8(folder.Write("changing.icc", bytesOf(*originals[0])));
  const auto changing = Manager().CreateColorProfile(path, false);
  const ColorConverter converter({*changing, RenderingIntent::RelativeColorimetric},
                                 {*swop, RenderingIntent::RelativeColorimetric});
  const C green = C::MakeRGB(40, 220, 90);
  const auto converted = [&] {
    C made;
    EXPECT_TRUE(converter.Convert(green, made, ClrModel::Cmyk255, 0));
    return made;
  };
  const C expected[] = {Bare(originals[0], swop, green), Bare(originals[1], swop, green)};
  ASSERT_NE(expected[0], expected[1]);
  for (std::size_t i = 0; i < 20; ++i) { // more often than a converter keeps transforms
    EXPECT_EQ(converted(), expected[i % 2]) << i;
    folder.Write("changing.icc", bytesOf(*originals[(i + 1) % 2]));
    changing->UpdateFromDisk();
  }
  C byFormula;
  ASSERT_TRUE(SimpleColorConverter(ColorContext()).Convert(green, byFormula, ClrModel::Cmyk255, 0));
  ColorSettings settings(InForce());
  for (const auto module : {ColorManagementModule::Linear, ColorManagementModule::LCMS}) {
    settings.SetColorManagementModule(module);
    ASSERT_TRUE(Settings().SetApplicationColorSettings(settings));
    EXPECT_EQ(converted(), module == ColorManagementModule::Linear ? byFormula : expected[0]);
  }
}

} // namespace
