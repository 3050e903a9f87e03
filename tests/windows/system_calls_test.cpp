// What the engines ask of the system, call by call, on a double of it: what Wine does not do, and all that can fail.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/windows/mscms_double.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/platform/files.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace ColorSystem;
using namespace tests;
using enum ColorModel;
using enum SampleType;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Engine = std::shared_ptr<ColorManagementSystem>;
using Profile = std::shared_ptr<ColorProfile>;

constexpr PixelFormat kRgb8{Rgb, UInt8}, kBgra8{Rgb, UInt8, true, true}, kRgba8{Rgb, UInt8, false, true},
  kCmyk8{Cmyk, UInt8}, kGray8{Grayscale, UInt8}, kGray16{Grayscale, UInt16}, kCmyk16{Cmyk, UInt16}, kLab8{Lab, UInt8},
  kLab16{Lab, UInt16}, kSix8{Hexachrome, UInt8};

TransformOptions From(const PixelFormat &source, const PixelFormat &destination,
                      RenderingIntent intent = RenderingIntent::RelativeColorimetric)
{
  TransformOptions options;
  options.intent = intent;
  options.precision = TransformPrecision::Exact; // no tables: each conversion is the system's
  options.source = source;
  options.destination = destination;
  return options;
}

/// The shipped profiles, as the calls name them.
constexpr const char *kOpenRgb = "OpenColorProfileW sRGB_v4.icc access 1 share 1 creation 3 = 1";
constexpr const char *kOpenPress = "OpenColorProfileW USWebCoatedSWOP.icc access 1 share 1 creation 3 = 2";

class SystemCalls : public WithMscmsDouble, public ShippedProfiles
{
protected:
  SystemCalls()
  {
    EXPECT_TRUE(icm->Activate());
    system.TakeCalls();
  }
  ~SystemCalls() override
  {
    icm->ClearTransformCache();
    wcs->ClearTransformCache();
    EXPECT_EQ(system.OpenHandles(), 0) << "a handle was not given back";
  }

  const Engine icm = ColorManagementSystem::Get(ColorManagementModule::Icm);
  const Engine wcs = ColorManagementSystem::Get(ColorManagementModule::Wcs);
};

TEST_F(SystemCalls, ActivationSelectsTheSystemsModule)
{
  const Engine lcms = ColorManagementSystem::Get(ColorManagementModule::LCMS);
  const Engine linear = ColorManagementSystem::Get(ColorManagementModule::Linear);
  for (const Engine &engine : {icm, wcs, linear, lcms}) {
    ASSERT_NE(engine, nullptr);
    EXPECT_TRUE(engine->Activate());
    engine->Deactivate();
    EXPECT_THAT(system.TakeCalls(), ElementsAre("SelectCMM Win ", "SelectCMM Win "));
    system.FailCall("SelectCMM", 1);
    EXPECT_FALSE(engine->Activate());
    EXPECT_THAT(system.TakeCalls(), ElementsAre("SelectCMM Win  fails"));
  }
}

TEST_F(SystemCalls, TransformsOpenTheirProfilesAndGiveThemBack)
{
  const auto options = From(kRgb8, kCmyk8, RenderingIntent::AbsoluteColorimetric);
  auto transform = icm->CreateTransform(*srgb, *swop, options);
  ASSERT_NE(transform, nullptr);
  EXPECT_THAT(system.TakeCalls(),
              ElementsAre(kOpenRgb, kOpenPress,
                          "CreateMultiProfileTransform profiles 1 2 intents 3 3 flags 10003 module 0 = 3",
                          "CloseColorProfile 2", "CloseColorProfile 1"));
  EXPECT_EQ(icm->CreateTransform(*srgb, *swop, options), transform);
  EXPECT_THAT(system.TakeCalls(), IsEmpty()) << "from the cache";
  icm->ClearTransformCache();
  EXPECT_THAT(system.TakeCalls(), IsEmpty()) << "it is still held";
  transform = nullptr;
  EXPECT_THAT(system.TakeCalls(), ElementsAre("DeleteColorTransform 3"));
}

TEST_F(SystemCalls, TheWindowsColorSystemHasItsOwnOpeningAndFlag)
{
  EXPECT_NE(wcs->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8)), nullptr);
  EXPECT_THAT(system.TakeCalls(),
              ElementsAre("WcsOpenColorProfileW sRGB_v4.icc none none access 1 share 1 creation 3 flags 1 = 1",
                          "WcsOpenColorProfileW USWebCoatedSWOP.icc none none access 1 share 1 creation 3 flags 1 = 2",
                          "CreateMultiProfileTransform profiles 1 2 intents 1 1 flags 210003 module 0 = 3",
                          "CloseColorProfile 2", "CloseColorProfile 1"));
}

TEST_F(SystemCalls, TheModuleIsSelectedAgainWhenTheLastSelectionFailed)
{
  system.FailCall("SelectCMM", 1);
  EXPECT_FALSE(wcs->Activate());
  system.TakeCalls();
  EXPECT_NE(icm->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8)), nullptr);
  EXPECT_EQ(system.TakeCalls().at(2), "SelectCMM Win ");
  system.FailCall("SelectCMM", 1);
  EXPECT_FALSE(icm->Activate());
  system.FailCall("SelectCMM", 1);
  EXPECT_EQ(icm->CreateTransform(*srgb, *gray, From(kRgb8, kGray8)), nullptr);
  EXPECT_TRUE(icm->Activate());
}

TEST_F(SystemCalls, WhatFailsLeavesNothingOpenAndIsTriedAgain)
{
  const struct
  {
    const char *function;
    int call;
  } rows[] = {{"OpenColorProfileW", 1}, {"OpenColorProfileW", 2}, {"CreateMultiProfileTransform", 1}};
  for (const auto &[function, call] : rows) {
    system.FailCall(function, call);
    EXPECT_EQ(icm->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8)), nullptr) << function << call;
    EXPECT_EQ(system.OpenHandles(), 0) << function << call;
  }
  const auto transform = icm->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8));
  ASSERT_NE(transform, nullptr) << "a failure is not kept";
  const auto source = CreateColorData(kRgb8, 4, 2), destination = CreateColorData(kCmyk8, 4, 2);
  system.FailCall("TranslateBitmapBits", 1);
  EXPECT_FALSE(transform->Convert(*source, *destination));
  EXPECT_TRUE(transform->Convert(*source, *destination));
}

// --- Pixels ----------------------------------------------------------------------------------------------------------

TEST_F(SystemCalls, BitmapsGoAsTheyAreWithTheirFormatsAndStrides)
{
  const struct
  {
    PixelFormat from, to;
    const char *call;
  } rows[] = {
    {kRgb8, kCmyk8, "4x3 format 4 stride 12 to format 305 stride 16"},
    {{Rgb, UInt8, true}, kCmyk8, "4x3 format 2 stride 12 to format 305 stride 16"},
    {kRgba8, kCmyk8, "4x3 format 10 stride 16 to format 305 stride 16"},
    {kBgra8, kCmyk8, "4x3 format 8 stride 16 to format 305 stride 16"},
    {{Rgb, Packed32}, {Cmyk, Packed32, true, true}, "4x3 format 4 stride 12 to format 305 stride 16"},
  };
  for (const auto &row : rows) {
    const auto transform = icm->CreateTransform(*srgb, *swop, From(row.from, row.to));
    ASSERT_NE(transform, nullptr);
    system.TakeCalls();
    const auto source = CreateColorData(row.from, 4, 3), destination = CreateColorData(row.to, 4, 3);
    ASSERT_TRUE(transform->Convert(*source, *destination));
    const auto calls = system.TakeCalls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_THAT(calls[0], HasSubstr(row.call));
    for (int i = 0; i < 3 * 16; ++i)
      ASSERT_EQ(destination->GetRow(0)[i], 255); // the complement of 0
  }
  const auto transform = icm->CreateTransform(*gray, *srgb, From(kGray8, kRgb8));
  system.TakeCalls();
  ASSERT_TRUE(transform->Convert(*CreateColorData(kGray8, 8, 2), *CreateColorData(kRgb8, 8, 2)));
  EXPECT_THAT(system.TakeCalls().at(0), HasSubstr("8x2 format 209 stride 8 to format 4 stride 24"));
}

TEST_F(SystemCalls, TheSystemPadsNoRowsOfOurs)
{
  // A view into the middle of a larger image, and one that ends where its last row ends.
  const struct
  {
    std::uint32_t width, height, stride;
  } rows[] = {{3, 4, 30}, {5, 2, 15}, {1, 1, 3}, {7, 3, 21}, {4, 3, 13}};
  const auto transform = icm->CreateTransform(*srgb, *Shipped(L"CompatibleWithAdobeRGB1998.icc"), From(kRgb8, kRgb8));
  ASSERT_NE(transform, nullptr);
  for (const auto &[width, height, stride] : rows) {
    Bytes source(std::size_t{stride} * height), destination(source.size() + 8, 0xCD);
    for (std::size_t i = 0; i < source.size(); ++i)
      source[i] = static_cast<std::uint8_t>(7 * i);
    const auto from = CreateColorData(kRgb8, width, height, stride, source.data());
    const auto to = CreateColorData(kRgb8, width, height, stride, destination.data());
    ASSERT_TRUE(transform->Convert(*from, *to));
    for (std::size_t i = 0; i < destination.size(); ++i) {
      const bool pixel = i < source.size() && i % stride < width * 3;
      ASSERT_EQ(destination[i], pixel ? 255 - source[i] : 0xCD) << width << "x" << height << " at " << i;
    }
    for (const std::string &call : system.TakeCalls())
      EXPECT_THAT(call, testing::AnyOf(StartsWith("OpenColor"), StartsWith("Create"), StartsWith("Close"),
                                       HasSubstr("x1 format 4 stride ")));
  }
}

TEST_F(SystemCalls, AlphaIsCopiedElseFull)
{
  const Profile adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  const PixelFormat formats[] = {kRgba8, kBgra8, {Rgb, UInt16, false, true}};
  for (const PixelFormat &from : {kRgba8, kRgb8, PixelFormat{Rgb, UInt16, true, true}}) {
    for (const PixelFormat &to : formats) {
      for (const std::uint32_t width : {4u, 300u}) {
        const auto source = CreateColorData(from, width, 100), destination = CreateColorData(to, width, 100);
        for (std::uint32_t x = 0; x < width && from.HasAlpha(); ++x)
          source->SetSample(99, x, 3, static_cast<float>(x % 256) / 255.0f);
        const auto transform = icm->CreateTransform(*srgb, *adobe, From(from, to));
        ASSERT_TRUE(transform->Convert(*source, *destination));
        for (std::uint32_t x = 0; x < width; ++x) {
          ASSERT_FLOAT_EQ(destination->GetSample(99, x, 3),
                          from.HasAlpha() ? static_cast<float>(x % 256) / 255.0f : 1.0f);
          ASSERT_EQ(destination->GetSample(99, x, 0), 1.0f);
        }
      }
    }
  }
}

TEST_F(SystemCalls, WhatIsNoBitmapGoesAsColours)
{
  const struct
  {
    const Profile &source;
    PixelFormat from;
    const Profile &destination;
    PixelFormat to;
    const char *call;
  } rows[] = {
    {srgb, {Rgb, UInt16, true}, swop, kCmyk16, "6 type 2 to type 7"},
    {srgb, kRgb8, lab, kLab16, "6 type 2 to type 5"},
    {lab, kLab8, swop, {Cmyk, UInt16, true, true}, "6 type 5 to type 7"},
    {gray, kGray16, six, kSix8, "6 type 1 to type 9"},
    {six, kSix8, gray, kGray8, "6 type 9 to type 1"},
    {swop, {Cmyk, Packed64}, srgb, kBgra8, "6 type 7 to type 2"},
  };
  for (const auto &row : rows) {
    const auto transform = icm->CreateTransform(*row.source, *row.destination, From(row.from, row.to));
    ASSERT_NE(transform, nullptr) << row.call;
    system.TakeCalls();
    const auto source = CreateColorData(row.from, 3, 2), destination = CreateColorData(row.to, 3, 2);
    const auto value = [](unsigned x, unsigned channel) { return static_cast<float>(x * 40 + channel * 21) / 255.0f; };
    for (std::uint32_t x = 0; x < 3; ++x) {
      for (unsigned channel = 0; channel < row.from.ColourChannels(); ++channel)
        source->SetSample(1, x, channel, value(x, channel));
    }
    ASSERT_TRUE(transform->Convert(*source, *destination)) << row.call;
    const auto calls = system.TakeCalls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_THAT(calls[0], testing::AllOf(StartsWith("TranslateColors "), HasSubstr(row.call)));
    const unsigned common = std::min(row.from.ColourChannels(), row.to.ColourChannels());
    const bool bytesToWords = (row.from.model == Hexachrome) != (row.to.model == Hexachrome);
    for (std::uint32_t x = 0; x < 3 && !bytesToWords; ++x) {
      for (unsigned channel = 0; channel < common; ++channel)
        EXPECT_NEAR(destination->GetSample(1, x, channel), 1.0f - value(x, channel), 1e-5) << row.call << channel;
    }
  }
  // Six inks are six bytes from the front: the complement of their first two is a gray word's.
  const auto transform = icm->CreateTransform(*six, *gray, From(kSix8, kGray16));
  Bytes inks = {1, 2, 3, 4, 5, 6};
  const auto source = CreateColorData(kSix8, 1, 1, 6, inks.data()), destination = CreateColorData(kGray16, 1, 1);
  ASSERT_TRUE(transform->Convert(*source, *destination));
  EXPECT_EQ(destination->GetRow(0)[0], 254);
  EXPECT_EQ(destination->GetRow(0)[1], 253);
  system.FailCall("TranslateColors", 1);
  EXPECT_FALSE(transform->Convert(*source, *destination));
}

TEST_F(SystemCalls, LargeViewsGoInBands)
{
  const auto transform = icm->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk16));
  const auto source = CreateColorData(kRgb8, 333, 101), destination = CreateColorData(kCmyk16, 333, 101);
  for (std::uint32_t y = 0; y < 101; ++y) {
    for (std::uint32_t x = 0; x < 333; ++x)
      source->SetSample(y, x, 1, static_cast<float>((x + y) % 256) / 255.0f);
  }
  system.TakeCalls();
  ASSERT_TRUE(transform->Convert(*source, *destination));
  auto calls = system.TakeCalls();
  ASSERT_GE(calls.size(), 3u);
  calls.erase(calls.begin(), calls.end() - 3); // before them may be a probe of what the engine does
  EXPECT_THAT(calls, ElementsAre("TranslateColors 3 16384 type 2 to type 7", "TranslateColors 3 16384 type 2 to type 7",
                                 "TranslateColors 3 865 type 2 to type 7"));
  for (std::uint32_t y = 0; y < 101; ++y) {
    for (std::uint32_t x = 0; x < 333; ++x)
      ASSERT_FLOAT_EQ(destination->GetSample(y, x, 1), 1.0f - static_cast<float>((x + y) % 256) / 255.0f) << x << y;
  }
  system.FailCall("TranslateColors", 2);
  EXPECT_FALSE(transform->Convert(*source, *destination)) << "the second band fails";
}

// --- Proofs ----------------------------------------------------------------------------------------------------------

TEST_F(SystemCalls, ProofsGoThroughTheProofProfileToTheDisplay)
{
  const Profile adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  TransformOptions options = From(kRgb8, kBgra8, RenderingIntent::Saturation);
  options.displayIntent = RenderingIntent::AbsoluteColorimetric;
  const std::string openDisplay = "OpenColorProfileW CompatibleWithAdobeRGB1998.icc access 1 share 1 creation 3 = ";
  EXPECT_NE(icm->CreateProofTransform(*srgb, *swop, adobe.get(), options), nullptr);
  EXPECT_THAT(system.TakeCalls(),
              ElementsAre(kOpenRgb, kOpenPress, openDisplay + "3",
                          "CreateMultiProfileTransform profiles 1 2 3 intents 2 2 3 flags 10003 module 0 = 4",
                          "CloseColorProfile 1", "CloseColorProfile 2", "CloseColorProfile 3"));
  icm->ClearTransformCache();
  system.TakeCalls();

  options.gamutCheck = true;
  const auto transform = icm->CreateProofTransform(*srgb, *swop, adobe.get(), options);
  ASSERT_NE(transform, nullptr);
  EXPECT_THAT(system.TakeCalls(),
              ElementsAre(kOpenRgb, kOpenPress, openDisplay + "3",
                          "CreateMultiProfileTransform profiles 1 2 intents 2 2 flags 10003 module 0 = 4",
                          "CreateMultiProfileTransform profiles 1 2 3 intents 2 2 3 flags 10003 module 0 = 5",
                          "CloseColorProfile 1", "CloseColorProfile 2", "CloseColorProfile 3"));
  for (const std::uint32_t width : {4u, 3u}) { // the system's check sees them as they lie, and packed
    const auto source = CreateColorData(kRgb8, width, 2), destination = CreateColorData(kBgra8, width, 2);
    source->SetSample(1, 1, 0, 130.0f / 255.0f); // outside for the double
    source->SetSample(1, 2, 0, 127.0f / 255.0f);
    ASSERT_TRUE(transform->Convert(*source, *destination));
    EXPECT_THAT(system.TakeCalls(),
                ElementsAre(StartsWith("CheckBitmapBits 4 "), StartsWith("TranslateBitmapBits 5 ")));
    EXPECT_THAT(std::vector(destination->GetRow(1) + 4, destination->GetRow(1) + 8), testing::Each(255)) << "marked";
    EXPECT_NE(destination->GetRow(1)[8], 255);
    system.FailCall("CheckBitmapBits", 1);
    EXPECT_FALSE(transform->Convert(*source, *destination));
    system.TakeCalls();
  }
}

TEST_F(SystemCalls, ProofsGoInTwoStepsWhereThereIsNoChainOfThree)
{
  TransformOptions options = From(kRgba8, kBgra8, RenderingIntent::Saturation);
  options.displayIntent = RenderingIntent::AbsoluteColorimetric;
  system.FailCall("CreateMultiProfileTransform", 1);
  const auto transform = icm->CreateProofTransform(*srgb, *swop, srgb.get(), options);
  ASSERT_NE(transform, nullptr);
  std::vector<std::string> made;
  for (const std::string &call : system.TakeCalls()) {
    if (call.starts_with("Create"))
      made.push_back(call.substr(call.find("intents")));
  }
  EXPECT_THAT(made, ElementsAre("intents 2 2 3 flags 10003 module 0 fails", "intents 2 2 flags 10003 module 0 = 6",
                                "intents 3 3 flags 10003 module 0 = 9"));
  const auto source = CreateColorData(kRgba8, 5, 2), shown = CreateColorData(kBgra8, 5, 2);
  source->SetSample(1, 4, 1, 0.4f);
  source->SetSample(1, 4, 3, 0.6f);
  ASSERT_TRUE(transform->Convert(*source, *shown));
  EXPECT_THAT(system.TakeCalls(),
              ElementsAre("TranslateColors 6 10 type 2 to type 7", "TranslateColors 9 10 type 7 to type 2"));
  EXPECT_FLOAT_EQ(shown->GetSample(1, 4, 1), 0.4f) << "the complement of the complement";
  EXPECT_FLOAT_EQ(shown->GetSample(1, 4, 3), 0.6f);
  for (const int failing : {1, 2}) {
    system.FailCall("TranslateColors", failing);
    EXPECT_FALSE(transform->Convert(*source, *shown));
  }
  options.intent = RenderingIntent::Perceptual;
  system.FailCall("OpenColorProfileW", 3);
  EXPECT_EQ(icm->CreateProofTransform(*srgb, *swop, srgb.get(), options), nullptr);
  EXPECT_EQ(system.OpenHandles(), 2) << "those of the transform above";
}

TEST_F(SystemCalls, MasksAreTheSystemsCheck)
{
  for (const PixelFormat &to : {kGray8, kGray16, PixelFormat{Grayscale, UInt16, false, true}}) {
    for (const PixelFormat &from : {kRgb8, PixelFormat{Rgb, UInt16}}) {
      TransformOptions options = From(from, to);
      options.gamutCheck = true;
      system.TakeCalls();
      const auto transform = icm->CreateProofTransform(*srgb, *swop, nullptr, options);
      ASSERT_NE(transform, nullptr);
      EXPECT_THAT(system.TakeCalls(),
                  ElementsAre(kOpenRgb, kOpenPress,
                              "CreateMultiProfileTransform profiles 1 2 intents 1 1 flags 10003 module 0 = 3",
                              "CloseColorProfile 1", "CloseColorProfile 2"));
      const auto source = CreateColorData(from, 5, 2), mask = CreateColorData(to, 5, 2);
      std::memset(mask->GetRow(0), 0x5A, std::size_t{mask->GetRowStride()} * 2);
      source->SetSample(0, 3, 0, 0.6f);
      source->SetSample(1, 4, 0, 1.0f);
      ASSERT_TRUE(transform->Convert(*source, *mask));
      EXPECT_THAT(system.TakeCalls(),
                  ElementsAre(StartsWith(from.type == UInt8 ? "CheckBitmapBits 3 10x1 " : "CheckColors 3 10 type 2")));
      for (std::uint32_t i = 0; i < 10; ++i) {
        EXPECT_EQ(mask->GetSample(i / 5, i % 5, 0), i == 3 || i == 9 ? 1.0f : 0.0f) << i;
        EXPECT_TRUE(!to.HasAlpha() || mask->GetSample(i / 5, i % 5, 1) == 1.0f) << i;
      }
      icm->ClearTransformCache();
    }
  }
  TransformOptions options = From(kRgb8, kRgb8);
  options.gamutCheck = true;
  EXPECT_EQ(icm->CreateProofTransform(*srgb, *swop, nullptr, options), nullptr) << "a mask is gray";
}

// --- Profiles --------------------------------------------------------------------------------------------------------

TEST_F(SystemCalls, PostScriptArraysAreTheSystemsByTheirModel)
{
  const struct
  {
    const Profile &profile;
    RenderingIntent intent;
    const char *kind;
  } rows[] = {{srgb, RenderingIntent::Perceptual, "intent 0 type 6"},
              {swop, RenderingIntent::Saturation, "intent 2 type 7"},
              {gray, RenderingIntent::AbsoluteColorimetric, "intent 3 type 5"},
              {lab, RenderingIntent::RelativeColorimetric, "intent 1 type 8"}};
  const std::string call = "GetPS2ColorSpaceArray 1 ";
  for (const auto &[profile, intent, kind] : rows) {
    EXPECT_EQ(profile->CreatePsColorSourceArray(intent), L"[/CIEBasedABC <</Of (the system)>>]");
    EXPECT_THAT(system.TakeCalls(), ElementsAre(StartsWith("OpenColorProfileW "), call + kind + " size",
                                                call + kind + " text", "CloseColorProfile 1"));
  }
  for (const int failing : {1, 2}) {
    system.FailCall("GetPS2ColorSpaceArray", failing);
    const std::wstring other = srgb->CreatePsColorSourceArray(RenderingIntent::Perceptual);
    EXPECT_THAT(ZelUtl::Utf8FromWide(other), testing::AllOf(HasSubstr("CIEBased"), testing::Not(HasSubstr("system"))));
    EXPECT_EQ(system.OpenHandles(), 0);
  }
}

TEST_F(SystemCalls, PathsBeyondTheSystemsLengthAreOpenedFromMemory)
{
  const Bytes bytes = ReadBytes(ZelUtl::Utf8FromWide(srgb->GetPath()));
  const std::string size = std::to_string(bytes.size());
  const std::string deep =
    folder.Write("deep/" + std::string(130, 'a') + "/" + std::string(130, 'b') + "/p.icc", bytes);
  const Profile profile = icm->CreateProfile(ZelUtl::WideFromUtf8(deep), false);
  ASSERT_NE(profile, nullptr);
  EXPECT_NE(icm->CreateTransform(*profile, *swop, From(kRgb8, kCmyk8)), nullptr);
  EXPECT_EQ(system.TakeCalls().at(0), "OpenColorProfileW (" + size + " bytes) access 1 share 1 creation 3 = 1");
}

constexpr const char *kDeviceModel =
  R"(<?xml version="1.0" encoding="UTF-8"?>
<m:ColorDeviceModel xmlns:m="http://schemas.microsoft.com/windows/2005/02/color/ColorDeviceModel"
    xmlns:t="http://schemas.microsoft.com/windows/2005/02/color/WcsCommonProfileTypes">
  <m:ProfileName><t:Text xml:lang="en-US"> A screen of glass </t:Text></m:ProfileName>
</m:ColorDeviceModel>)";

class DeviceModels : public SystemCalls
{
protected:
  DeviceModels() { system.SetMadeProfile(made_); }
  Profile Read(const std::string &name, bool transient, std::string_view text = kDeviceModel) const
  {
    const std::string path = folder.Write(name, {text.begin(), text.end()});
    return wcs->CreateProfile(ZelUtl::WideFromUtf8(path), transient);
  }
  /// What makes a companion, from the opening to the closing.
  static auto TheMaking(const std::string &name)
  {
    return ElementsAre("WcsOpenColorProfileW " + name + " none none access 1 share 1 creation 3 flags 1 = 1",
                       "WcsCreateIccProfile 1 options 0 = 2", "GetColorProfileFromHandle 2 size",
                       "GetColorProfileFromHandle 2 bytes", "CloseColorProfile 2", "CloseColorProfile 1");
  }

  const Bytes made_ = ReadBytes(ZelUtl::Utf8FromWide(swop->GetPath()));
};

TEST_F(DeviceModels, HaveACompanionThatIsMadeOnce)
{
  const std::string companion = folder.Path("user/color/profiles/Screen 1.icc");
  const Profile profile = Read("Screen 1.CDMP", false);
  ASSERT_NE(profile, nullptr);
  EXPECT_THAT(system.TakeCalls(), TheMaking("Screen 1.CDMP"));
  EXPECT_EQ(ReadBytes(companion), made_);
  EXPECT_EQ(profile->GetDisplayName(), L"A screen of glass");
  EXPECT_EQ(profile->GetName(), L"Screen 1.CDMP");
  EXPECT_EQ(profile->GetColorModel(), Cmyk);
  EXPECT_EQ(profile->GetDeviceClass(), swop->GetDeviceClass());
  EXPECT_EQ(profile->GetMajorVersionNumber(), swop->GetMajorVersionNumber());

  // The array is the companion's; a transform is made of the device model itself.
  EXPECT_THAT(profile->CreatePsColorSourceArray(RenderingIntent::Perceptual), testing::Not(IsEmpty()));
  EXPECT_THAT(system.TakeCalls().at(0), StartsWith("OpenColorProfileW Screen 1.icc "));
  EXPECT_NE(wcs->CreateTransform(*profile, *srgb, From(kCmyk8, kRgb8)), nullptr);
  EXPECT_THAT(system.TakeCalls().at(0), StartsWith("WcsOpenColorProfileW Screen 1.CDMP none none "));

  profile->UpdateFromDisk();
  EXPECT_TRUE(profile->IsValid());
  EXPECT_NE(Read("Screen 1.cdmp", false), nullptr);
  EXPECT_THAT(system.TakeCalls(), IsEmpty()) << "the companion is there";
}

TEST_F(DeviceModels, TransientOnesHaveTheirsInTheTemporaryFolder)
{
  ASSERT_NE(Read("aside/Embedded.cdmp", true), nullptr);
  EXPECT_THAT(system.TakeCalls(), TheMaking("Embedded.cdmp"));
  EXPECT_EQ(ReadBytes(folder.Path("Embedded.icc")), made_);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("user/color/profiles/Embedded.icc")));
}

TEST_F(DeviceModels, AreFoundAndAddedByTheManager)
{
  const std::string_view text = kDeviceModel;
  const Bytes bytes(text.begin(), text.end());
  const Profile added = Manager().AddColorProfile(ZelUtl::WideFromUtf8(folder.Write("docs/b.cdmp", bytes)));
  ASSERT_NE(added, nullptr);
  EXPECT_EQ(added->GetPath(), folder.Wide("user/color/profiles/A screen of glass.icc"));
  EXPECT_EQ(ReadBytes(folder.Path("user/color/profiles/A screen of glass.icc")), made_);
  folder.Write("system1/deep/c.cdmp", bytes);
  Manager().Reload();
  const Profile found = Manager().GetColorProfile(L"c.cdmp");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->GetDisplayName(), L"A screen of glass");
  folder.Write("docs/d.cdmp", {'<', 'a'});
  EXPECT_EQ(Manager().AddColorProfile(folder.Wide("docs/d.cdmp")), nullptr);
}

TEST_F(DeviceModels, AreNoneWhereAStepFails)
{
  const std::string companion = folder.Path("user/color/profiles/a.icc");
  for (const auto &[function, call] :
       {std::pair("WcsOpenColorProfileW", 1), std::pair("WcsCreateIccProfile", 1),
        std::pair("GetColorProfileFromHandle", 1), std::pair("GetColorProfileFromHandle", 2)})
  {
    system.FailCall(function, call);
    EXPECT_EQ(Read("a.cdmp", false), nullptr) << function << call;
    EXPECT_EQ(system.OpenHandles(), 0) << function << call;
    EXPECT_FALSE(std::filesystem::exists(companion)) << function << call;
  }
  system.TakeCalls();
  EXPECT_EQ(Read("a.cdmp", true, "no XML"), nullptr);
  EXPECT_THAT(system.TakeCalls(), IsEmpty());
  EXPECT_EQ(icm->CreateProfile(folder.Wide("a.cdmp"), false), nullptr) << "only one engine reads them";
  const Profile nameless = Read("No name.cdmp", false, "<a/>");
  ASSERT_NE(nameless, nullptr);
  EXPECT_EQ(nameless->GetDisplayName(), L"No name");
  system.SetMadeProfile({1, 2, 3});
  EXPECT_EQ(Read("b.cdmp", false), nullptr) << "what was made is no profile";
}

} // namespace
