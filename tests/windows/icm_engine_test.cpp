// The system's engines on the system itself: Wine's and Windows' alike. Wine's Image Color Management is Little CMS
// without its tables, so that its pixels are known to the last bit; Windows' own are near them, and the tolerance is
// chosen by what is here.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/settings/color_settings.h"

#define CMS_NO_REGISTER_KEYWORD
#include <lcms2.h>
#include <windows.h>

#include <cstring>
#include <random>
#include <thread>

using namespace ColorSystem;
using namespace tests;
using enum ColorModel;
using enum SampleType;

namespace {

using Profile = std::shared_ptr<ColorProfile>;

constexpr PixelFormat kRgb8{Rgb, UInt8}, kBgr8{Rgb, UInt8, true}, kRgba8{Rgb, UInt8, false, true},
  kBgra8{Rgb, UInt8, true, true}, kCmyk8{Cmyk, UInt8}, kGray8{Grayscale, UInt8}, kLab8{Lab, UInt8}, kRgb16{Rgb, UInt16},
  kBgra16{Rgb, UInt16, true, true}, kCmyk16{Cmyk, UInt16}, kKymc16{Cmyk, UInt16, true}, kGray16{Grayscale, UInt16},
  kLab16{Lab, UInt16};

bool IsWine()
{
  return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

TransformOptions From(const PixelFormat &source, const PixelFormat &destination)
{
  TransformOptions options;
  options.precision = TransformPrecision::Exact; // every pixel is the system's
  options.source = source;
  options.destination = destination;
  return options;
}

Bytes RandomBytes(std::size_t size)
{
  Bytes bytes(size);
  std::mt19937 random(1);
  for (std::uint8_t &byte : bytes)
    byte = static_cast<std::uint8_t>(random());
  return bytes;
}

/// Little CMS's layout of a format; samples of both flags are of its own making.
cmsUInt32Number LayoutOf(const PixelFormat &format)
{
  constexpr std::pair<ColorModel, cmsUInt32Number> kSpaces[] = {
    {Rgb, PT_RGB}, {Cmyk, PT_CMYK}, {Grayscale, PT_GRAY}, {Lab, PT_Lab}};
  cmsUInt32Number space = 0;
  for (const auto &[model, number] : kSpaces)
    space = model == format.model ? number : space;
  const bool bgra = format.IsReversed() && format.HasAlpha(); // B G R A: the swap, and the alpha back behind it
  return COLORSPACE_SH(space) | CHANNELS_SH(format.ColourChannels()) | BYTES_SH(format.BytesPerSample()) |
         EXTRA_SH(format.HasAlpha() ? 1u : 0u) | DOSWAP_SH(format.IsReversed() ? 1u : 0u) |
         SWAPFIRST_SH(bgra ? 1u : 0u);
}

class SystemEngine : public ShippedProfiles
{
protected:
  static Bytes WitnessOf(const Profile &source, const PixelFormat &from, const Profile &destination,
                         const PixelFormat &to, const Bytes &pixels, std::uint32_t count)
  {
    const auto open = [](const Profile &profile) { // from memory: the library opens files by the ANSI code page
      const Bytes bytes = ReadBytes(ZelUtl::Utf8FromWide(profile->GetPath()));
      return cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size()));
    };
    const cmsHPROFILE a = open(source), b = open(destination);
    const cmsHTRANSFORM transform =
      cmsCreateTransform(a, LayoutOf(from), b, LayoutOf(to), INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOOPTIMIZE);
    Bytes result(std::size_t{count} * to.BytesPerPixel());
    cmsDoTransform(transform, pixels.data(), result.data(), count);
    cmsDeleteTransform(transform);
    cmsCloseProfile(a);
    cmsCloseProfile(b);
    return result;
  }

  const std::shared_ptr<ColorManagementSystem> icm = ColorManagementSystem::Get(ColorManagementModule::Icm);
};

TEST_F(SystemEngine, IsThereAndIsTheDefault)
{
  ASSERT_NE(icm, nullptr);
  EXPECT_TRUE(icm->Activate());
  EXPECT_EQ(ColorSettings().GetColorManagementModule(), ColorManagementModule::Icm);
  EXPECT_EQ(ColorManagementSystem::GetCurrent(), icm);
  const auto wcs = ColorManagementSystem::Get(ColorManagementModule::Wcs);
  ASSERT_NE(wcs, nullptr);
  EXPECT_TRUE(wcs->Activate());
  EXPECT_EQ(icm->GetProfileFilePatterns(), L"*.icc;*.icm;*.cc");
  EXPECT_EQ(wcs->GetProfileFilePatterns(), L"*.icc;*.icm;*.cdmp");
}

TEST_F(SystemEngine, ConvertsAsLittleCmsDoesInEveryLayoutAndView)
{
  const Profile fogra = Shipped(L"ISO Coated FOGRA39.icc"), adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  const struct
  {
    const Profile &source;
    PixelFormat from;
    const Profile &destination;
    PixelFormat to;
  } rows[] = {
    {srgb, kRgb8, fogra, kCmyk8},   {srgb, kBgr8, fogra, kCmyk8},    {srgb, kRgba8, fogra, kCmyk8},
    {srgb, kBgra8, adobe, kRgba8},  {fogra, kCmyk8, srgb, kBgra8},   {fogra, kCmyk8, gray, kGray8},
    {gray, kGray8, srgb, kBgr8},    {adobe, kRgba8, srgb, kBgra8},   {srgb, kRgb16, fogra, kCmyk16},
    {fogra, kKymc16, srgb, kRgb16}, {srgb, kRgb16, lab, kLab16},     {lab, kLab8, fogra, kCmyk8},
    {fogra, kCmyk8, lab, kLab8},    {gray, kGray16, fogra, kKymc16}, {srgb, kRgb8, gray, kGray16},
    {srgb, kRgb8, srgb, kBgra16},   {adobe, kBgra16, srgb, kBgra8},  {fogra, kCmyk16, swop, kCmyk8},
    {swop, kCmyk8, fogra, kCmyk8},
  };
  struct View
  {
    std::uint32_t width, height, gap; // bytes between rows
  };
  for (const auto &row : rows) {
    const auto transform = icm->CreateTransform(*row.source, *row.destination, From(row.from, row.to));
    ASSERT_NE(transform, nullptr) << &row - rows;
    // Rows that the system is given as they are, rows with gaps, and rows that it would pad. Few enough pixels for the
    // engine itself to convert them.
    for (const View &view : {View{64, 3, 0}, View{61, 4, 7}, View{1, 1, 0}, View{3, 3, 0}, View{21, 11, 1}}) {
      SCOPED_TRACE(testing::Message() << "row " << &row - rows << ", " << view.width << "x" << view.height);
      const std::uint32_t fromRow = view.width * row.from.BytesPerPixel(), toRow = view.width * row.to.BytesPerPixel();
      Bytes source = RandomBytes(std::size_t{fromRow + view.gap} * view.height - view.gap);
      const std::size_t used = std::size_t{toRow + view.gap} * view.height - view.gap;
      Bytes destination(used + 16, 0xCD); // and a margin that must stay
      const auto from = CreateColorData(row.from, view.width, view.height, fromRow + view.gap, source.data());
      const auto to = CreateColorData(row.to, view.width, view.height, toRow + view.gap, destination.data());
      ASSERT_TRUE(transform->Convert(*from, *to));

      Bytes tight;
      for (std::uint32_t y = 0; y < view.height; ++y)
        tight.insert(tight.end(), from->GetRow(y), from->GetRow(y) + fromRow);
      const std::uint32_t count = view.width * view.height;
      const Bytes witness = WitnessOf(row.source, row.from, row.destination, row.to, tight, count);
      int worst = 0; // in steps of 255
      for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t y = i / view.width, x = i % view.width;
        const auto expected = CreateColorData(row.to, 1, 1, row.to.BytesPerPixel(),
                                              const_cast<std::uint8_t *>(&witness[i * row.to.BytesPerPixel()]));
        for (unsigned channel = 0; channel < row.to.ColourChannels(); ++channel)
          worst = std::max(worst, static_cast<int>(65535.0f * std::abs(to->GetSample(y, x, channel) -
                                                                       expected->GetSample(0, 0, channel))));
        if (row.to.HasAlpha()) {
          const float alpha = row.from.HasAlpha() ? from->GetSample(y, x, row.from.ColourChannels()) : 1.0f;
          ASSERT_NEAR(to->GetSample(y, x, row.to.ColourChannels()), alpha, 0.5 / 255.0 + 1e-6);
        }
      }
      EXPECT_LE(worst, IsWine() ? 0 : 3 * 257); // its module interpolates otherwise, by up to some steps
      for (std::size_t i = 0; i < destination.size(); ++i)
        ASSERT_TRUE(i % (toRow + view.gap) < toRow && i < used ? true : destination[i] == 0xCD) << i;
    }
  }
}

TEST_F(SystemEngine, ProofsAreOneTransformAfterTheOther)
{
  // Wine makes no chain of three profiles.
  for (const PixelFormat &to : {kRgb8, kBgra8}) {
    const auto transform = icm->CreateProofTransform(*srgb, *swop, srgb.get(), From(kRgba8, to));
    ASSERT_NE(transform, nullptr);
    constexpr std::uint32_t kCount = 50 * 5;
    const Bytes pixels = RandomBytes(kCount * 4);
    const auto from = CreateColorData(kRgba8, 50, 5), shown = CreateColorData(to, 50, 5, 50 * to.BytesPerPixel());
    std::memcpy(from->GetRow(0), pixels.data(), pixels.size());
    ASSERT_TRUE(transform->Convert(*from, *shown));
    const Bytes inks = WitnessOf(srgb, kRgba8, swop, kCmyk16, pixels, kCount);
    const Bytes witness = WitnessOf(swop, kCmyk16, srgb, to, inks, kCount);
    int worst = 0;
    for (std::uint32_t i = 0; i < kCount * to.BytesPerPixel(); ++i) {
      const bool alpha = to.HasAlpha() && i % 4 == 3;
      worst = std::max(worst, std::abs(shown->GetRow(0)[i] - (alpha ? pixels[i] : witness[i])));
    }
    EXPECT_LE(worst, IsWine() ? 0 : 3);
  }
}

TEST_F(SystemEngine, ConvertsInPlace)
{
  for (const std::uint32_t width : {16u, 5u}) { // as the rows lie, and by a block of our own
    for (const PixelFormat &to : {kBgr8, kRgb8}) {
      Bytes pixels = RandomBytes(std::size_t{width} * 3 * 4), copy = pixels, apart(pixels.size());
      const auto transform = icm->CreateTransform(*srgb, *Shipped(L"CompatibleWithAdobeRGB1998.icc"), From(kRgb8, to));
      ASSERT_NE(transform, nullptr);
      const auto from = CreateColorData(kRgb8, width, 4, width * 3, pixels.data());
      const auto same = CreateColorData(to, width, 4, width * 3, pixels.data());
      const auto other = CreateColorData(to, width, 4, width * 3, apart.data());
      ASSERT_TRUE(transform->Convert(*from, *other));
      ASSERT_TRUE(transform->Convert(*from, *same));
      EXPECT_EQ(pixels, apart) << width;
      EXPECT_NE(pixels, copy);
    }
  }
}

TEST_F(SystemEngine, SharesATransformAmongThreads)
{
  for (const PixelFormat &to : {kCmyk8, kCmyk16}) { // bitmaps and colours
    const auto transform = icm->CreateTransform(*srgb, *swop, From(kRgb8, to));
    const auto source = CreateColorData(kRgb8, 50, 5), expected = CreateColorData(to, 50, 5);
    const Bytes pixels = RandomBytes(50 * 5 * 3);
    std::memcpy(source->GetRow(0), pixels.data(), pixels.size());
    ASSERT_TRUE(transform->Convert(*source, *expected));
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
      threads.emplace_back([&] {
        const auto mine = CreateColorData(to, 50, 5);
        for (int round = 0; round < 20; ++round) {
          EXPECT_TRUE(transform->Convert(*source, *mine));
          EXPECT_EQ(std::memcmp(mine->GetRow(0), expected->GetRow(0), 50u * 5u * to.BytesPerPixel()), 0);
        }
      });
    }
    for (std::thread &thread : threads)
      thread.join();
  }
}

TEST_F(SystemEngine, RefusesWhatItCannotConvert)
{
  const PixelFormat floats{Rgb, Float32}, six16{Hexachrome, UInt16};
  EXPECT_EQ(icm->CreateTransform(*srgb, *swop, From(floats, kCmyk8)), nullptr);
  EXPECT_EQ(icm->CreateTransform(*srgb, *six, From(kRgb16, six16)), nullptr);
  EXPECT_EQ(icm->CreateTransform(*srgb, *swop, From(kCmyk8, kCmyk8)), nullptr) << "a format of another model";
  EXPECT_EQ(icm->CreateTransform(*srgb, *swop, From(kRgb8, kRgb8)), nullptr) << "a format of another model";
  const auto transform = icm->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8));
  ASSERT_NE(transform, nullptr);
  const auto two = CreateColorData(kRgb8, 2, 1), one = CreateColorData(kCmyk8, 1, 1),
             wrong = CreateColorData(kRgb8, 2, 1);
  EXPECT_FALSE(transform->Convert(*two, *one));
  EXPECT_FALSE(transform->Convert(*two, *wrong));

  // Hostile bytes: a table that claims more than the file has never reaches the system.
  Bytes broken = ReadBytes(ZelUtl::Utf8FromWide(swop->GetPath()));
  broken.resize(broken.size() / 2);
  const Profile cut = icm->CreateProfile(ZelUtl::WideFromUtf8(folder.Write("cut.icc", broken)), false);
  if (cut != nullptr) {
    EXPECT_EQ(icm->CreateTransform(*srgb, *cut, From(kRgb8, kCmyk8)), nullptr);
  }
}

TEST_F(SystemEngine, OpensNamesOfEveryScriptAndLength)
{
  const Bytes bytes = ReadBytes(ZelUtl::Utf8FromWide(srgb->GetPath()));
  const std::string deep = "deep/" + std::string(120, 'a') + "/" + std::string(120, 'b') + "/profile.icc";
  for (const std::string &name : {std::string("Größe/日本.icc"), std::string("a b %25 (1).icm"), deep}) {
    const std::string path = folder.Write(name, bytes);
    const Profile profile = icm->CreateProfile(ZelUtl::WideFromUtf8(path), false);
    ASSERT_NE(profile, nullptr) << name;
    const auto usual = icm->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8));
    const auto transform = icm->CreateTransform(*profile, *swop, From(kRgb8, kCmyk8));
    ASSERT_NE(transform, nullptr) << name;
    Bytes source = RandomBytes(300);
    const auto from = CreateColorData(kRgb8, 100, 1, 300, source.data());
    const auto made = CreateColorData(kCmyk8, 100, 1), expected = CreateColorData(kCmyk8, 100, 1);
    ASSERT_TRUE(transform->Convert(*from, *made));
    ASSERT_TRUE(usual->Convert(*from, *expected));
    EXPECT_EQ(std::memcmp(made->GetRow(0), expected->GetRow(0), 400), 0) << name;
  }
}

TEST_F(SystemEngine, PostScriptArraysAreThereWhereTheSystemHasNone)
{
  for (const Profile &profile : {srgb, gray, swop}) {
    const std::wstring array = profile->CreatePsColorSourceArray(RenderingIntent::Perceptual);
    EXPECT_EQ(array.find(L"[ /CIEBased"), array.find(L"/CIEBased") - 2) << ZelUtl::Utf8FromWide(array.substr(0, 80));
  }
}

} // namespace
