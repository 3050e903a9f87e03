// The engines: which there are, what they keep, and what their transforms do to pixels.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/platform/application.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <thread>

using namespace ColorSystem;
using namespace tests;
using enum ColorModel;
using enum SampleType;

namespace {

using Engine = std::shared_ptr<ColorManagementSystem>;
using Transform = std::shared_ptr<ColorTransform>;
using Samples = std::vector<float>;

constexpr PixelFormat kRgb8{Rgb, UInt8}, kRgba8{Rgb, UInt8, false, true}, kCmyk8{Cmyk, UInt8}, kGray8{Grayscale, UInt8},
  kRgb16{Rgb, UInt16};

TransformOptions From(const PixelFormat &source, const PixelFormat &destination,
                      RenderingIntent intent = RenderingIntent::RelativeColorimetric)
{
  TransformOptions options;
  options.intent = intent;
  options.source = source;
  options.destination = destination;
  return options;
}

/// One pixel through a transform.
Samples Converted(const Transform &transform, const PixelFormat &from, const PixelFormat &to, const Samples &samples)
{
  const auto source = CreateColorData(from, 1, 1), destination = CreateColorData(to, 1, 1);
  for (unsigned i = 0; i < from.ChannelsPerPixel(); ++i)
    source->SetSample(0, 0, i, samples.at(i));
  Samples result;
  if (transform != nullptr && transform->Convert(*source, *destination)) {
    for (unsigned i = 0; i < to.ChannelsPerPixel(); ++i)
      result.push_back(destination->GetSample(0, 0, i));
  }
  return result;
}

void ExpectNear(const Samples &actual, const Samples &expected, double tolerance, const std::string &what)
{
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (std::size_t i = 0; i < actual.size(); ++i)
    EXPECT_NEAR(actual[i], expected[i], tolerance) << what << " " << i;
}

std::unique_ptr<ColorData> RandomPixels(const PixelFormat &format, std::uint32_t width, std::uint32_t height)
{
  auto data = CreateColorData(format, width, height);
  std::mt19937 random(1);
  for (std::size_t i = 0; i < std::size_t{data->GetRowStride()} * height; ++i)
    data->GetRow(0)[i] = static_cast<std::uint8_t>(random());
  return data;
}

Bytes BytesOf(const ColorData &data)
{
  return {data.GetRow(0), data.GetRow(0) + std::size_t{data.GetRowStride()} * data.GetHeight()};
}

class Engines : public ShippedProfiles
{
protected:
  const Engine linear = ColorManagementSystem::Get(ColorManagementModule::Linear);
  const Engine lcms = ColorManagementSystem::Get(ColorManagementModule::LCMS);
};

TEST_F(Engines, AreThoseOfThisSystem)
{
#ifdef _WIN32
  constexpr bool kSystemsOwn = true;
#else
  constexpr bool kSystemsOwn = false;
#endif
  constexpr std::pair<const char *, bool> kRows[] = {
    {"Icm", kSystemsOwn}, {"Wcs", kSystemsOwn}, {"Adobe", false}, {"Linear", true}, {"LCMS", true}};
  ColorProfileManager::LoadColorManagementModules();
  for (unsigned number = 0; number < 5; ++number) {
    const auto module = static_cast<ColorManagementModule>(number);
    const auto &[name, exists] = kRows[number];
    EXPECT_EQ(NameOfColorManagementModule(module), name);
    EXPECT_EQ(ColorManagementModuleFromName(name), module);
    const Engine engine = ColorManagementSystem::Get(module);
    ASSERT_EQ(engine != nullptr, exists) << name;
    EXPECT_EQ(ColorManagementSystem::Get(module), engine);
    if (engine != nullptr) {
      EXPECT_EQ(engine->GetModule(), module);
      EXPECT_EQ(engine->GetProfileFilePatterns(),
                module == ColorManagementModule::Wcs ? L"*.icc;*.icm;*.cdmp" : L"*.icc;*.icm;*.cc");
      EXPECT_TRUE(engine->Activate());
      engine->Deactivate();
    }
  }
  EXPECT_EQ(ColorManagementSystem::Get(static_cast<ColorManagementModule>(5)), nullptr);
  EXPECT_EQ(NameOfColorManagementModule(static_cast<ColorManagementModule>(5)), "");
  EXPECT_EQ(ColorManagementModuleFromName("lcms"), std::nullopt);
  EXPECT_EQ(ColorManagementSystem::GetCurrent(),
            kSystemsOwn ? ColorManagementSystem::Get(ColorManagementModule::Icm) : lcms);
}

TEST_F(Engines, MakeProfilesOfTheirExtensions)
{
  const Bytes bytes = NamedProfile("A name");
  constexpr std::pair<const char *, bool> kRows[] = {
    {"a.icc", true},   {"a.ICM", true},      {"a.cc", true},   {"a.Tmp", true}, {"a.cdmp", false},
    {"a.txt", false},  {"a.c", false},       {"icc", false},   {"a.", false},   {"a.ic", false},
    {"a.icc ", false}, {"a.icc.bak", false}, {"a.icc;", false}};
  for (const auto &[name, accepted] : kRows) {
    folder.Write(name, bytes);
    for (const Engine &engine : {linear, lcms})
      EXPECT_EQ(engine->CreateProfile(folder.Wide(name), false) != nullptr, accepted) << name;
  }
  EXPECT_TRUE(linear->CreateProfile(folder.Wide("a.Tmp"), true)->IsTransient());
  folder.Write("broken.icc", {1, 2, 3});
  for (const char *name : {"broken.icc", "missing.icc", ""})
    EXPECT_EQ(linear->CreateProfile(folder.Wide(name), false), nullptr) << name;
}

// --- The cache -------------------------------------------------------------------------------------------------------

TEST(UsageCountedItemCache, RandomUseFollowsAList)
{
  struct Entry
  {
    int key, item, uses;
  };
  UsageCountedItemCache<int, int, 5> cache;
  std::vector<Entry> model; // in the order of arrival
  std::mt19937 random(1);
  for (int step = 0; step < 50000; ++step) {
    const int key = static_cast<int>(random() % 9);
    const auto entry = std::find_if(model.begin(), model.end(), [key](const Entry &e) { return e.key == key; });
    if (random() % 2 == 0) {
      ASSERT_EQ(cache.Find(key), entry == model.end() ? std::nullopt : std::optional(entry->item)) << step;
      if (entry != model.end())
        ++entry->uses;
    } else if (random() % 500 == 0) {
      cache.Clear();
      model.clear();
    } else {
      cache.Add(key, step);
      if (entry != model.end())
        model.erase(entry);
      else if (model.size() == 5) {
        model.erase(
          std::min_element(model.begin(), model.end(), [](const Entry &a, const Entry &b) { return a.uses < b.uses; }));
        for (Entry &other : model)
          other.uses /= 2;
      }
      model.push_back({key, step, 1});
    }
    ASSERT_EQ(cache.GetCount(), model.size());
  }
}

TEST(UsageCountedItemCache, MakesRoomForNewcomers)
{
  UsageCountedItemCache<int, int, 5> cache;
  for (int key = 0; key < 5; ++key) {
    cache.Add(key, key);
    for (int use = 0; use < 1000000; ++use)
      cache.Find(key);
  }
  int missed = 0;
  for (int round = 0; round < 1000; ++round) {
    for (const int key : {10, 11}) {
      if (!cache.Find(key)) {
        ++missed;
        cache.Add(key, key);
      }
    }
  }
  EXPECT_LT(missed, 30);
}

std::vector<TransformOptions> DifferingOptions(const TransformOptions &options)
{
  std::vector<TransformOptions> others(9, options);
  others[0].intent = RenderingIntent::Saturation;
  others[1].displayIntent = RenderingIntent::Saturation;
  others[2].blackPointCompensation = true;
  others[3].gamutCheck = true;
  others[4].source.type = Packed32;
  others[5].source.reversed = true;
  others[6].destination.alpha = true;
  others[7].destination.reversed = true;
  others[8].destination.type = UInt16;
  return others;
}

TEST_F(Engines, KeepATransformForEachSetOfOptions)
{
  for (const Engine &engine : {linear, lcms}) {
    const TransformOptions options = From(kRgb8, kCmyk8);
    std::vector<Transform> all;
    all.push_back(engine->CreateTransform(*srgb, *swop, options));
    TransformOptions proofing = From(kRgb8, kRgb8);
    all.push_back(engine->CreateProofTransform(*srgb, *swop, srgb.get(), proofing));
    all.push_back(engine->CreateTransform(*Shipped(L"CompatibleWithAdobeRGB1998.icc"), *swop, options));
    for (TransformOptions other : DifferingOptions(options)) {
      other.destination.alpha = false; // 16 bits do not have it
      if (other != options)
        all.push_back(engine->CreateTransform(*srgb, *swop, other));
    }
    for (const TransformOptions &other : DifferingOptions(proofing)) {
      if (other.destination.type == UInt8)
        all.push_back(engine->CreateProofTransform(*srgb, *swop, srgb.get(), other));
    }
    EXPECT_EQ(std::count(all.begin(), all.end(), nullptr), 0);
    std::sort(all.begin(), all.end());
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end()) << "all differ";
    EXPECT_TRUE(std::binary_search(all.begin(), all.end(), engine->CreateTransform(*srgb, *swop, options)));
    const ColorProfile handle(*srgb);
    EXPECT_TRUE(std::binary_search(all.begin(), all.end(), engine->CreateTransform(handle, *swop, options)));
    engine->ClearTransformCache();
    EXPECT_FALSE(std::binary_search(all.begin(), all.end(), engine->CreateTransform(*srgb, *swop, options)));
  }
}

TEST_F(Engines, MakeTransformsAnewFromProfilesThatChange)
{
  for (const Engine &engine : {linear, lcms}) {
    const auto profile = ProfileOf("a.icc", MatrixProfile("A name").Build());
    const TransformOptions options = From(kRgb8, kRgb8);
    const Transform old = engine->CreateTransform(*profile, *srgb, options);
    ASSERT_NE(old, nullptr);
    IccProfile brighter = MatrixProfile("A name");
    for (std::size_t i = 5; i < 8; ++i)
      brighter.tags[i].second = CurveTag({0x0100});
    folder.Write("a.icc", brighter.Build());
    EXPECT_EQ(engine->CreateTransform(*profile, *srgb, options), old) << "nobody has looked";
    profile->UpdateFromDisk();
    const Transform fresh = engine->CreateTransform(*profile, *srgb, options);
    EXPECT_NE(fresh, old);
    if (engine == lcms) {
      const auto half = Converted(fresh, kRgb8, kRgb8, {0.5f, 0.5f, 0.5f});
      ExpectNear(half, Samples(3, 188 / 255.0f), 0.6 / 255, "sRGB of half the light");
    }
    std::filesystem::remove(folder.Path("a.icc"));
    profile->UpdateFromDisk();
    EXPECT_EQ(engine->CreateTransform(*profile, *srgb, options), nullptr);
    EXPECT_EQ(engine->CreateTransform(*srgb, *profile, options), nullptr);
    EXPECT_EQ(engine->CreateProofTransform(*srgb, *profile, srgb.get(), options), nullptr);
    EXPECT_EQ(engine->CreateProofTransform(*srgb, *swop, profile.get(), options), nullptr);
    EXPECT_EQ(engine->CreateProofTransform(*srgb, *swop, nullptr, options), nullptr) << "neither display nor check";
  }
}

TEST_F(Engines, KeepAHundredTransformsUntilTheLastDocumentCloses)
{
  struct Host : ZelUtl::ApplicationHost
  {
    unsigned GetOpenDocumentCount() const override { return documents; }
    unsigned documents = 2;
  } host;
  ZelUtl::SetApplicationHost(&host);
  linear->ClearTransformCache();
  std::vector<std::weak_ptr<ColorTransform>> all;
  const auto make = [&](unsigned number) {
    TransformOptions options = From(kRgb8, kCmyk8, static_cast<RenderingIntent>(number % 4));
    options.displayIntent = static_cast<RenderingIntent>(number / 4 % 4);
    options.blackPointCompensation = number / 16 % 2 != 0;
    options.gamutCheck = number / 32 % 2 != 0;
    options.source.type = static_cast<SampleType>(number / 64);
    return linear->CreateTransform(*srgb, *swop, options);
  };
  const auto kept = [&all] { return std::count_if(all.begin(), all.end(), [](auto &t) { return !t.expired(); }); };
  for (unsigned number = 0; number < 100; ++number)
    all.push_back(make(number));
  EXPECT_EQ(kept(), 100);
  make(0); // used twice
  for (unsigned number = 100; number < 110; ++number)
    all.push_back(make(number));
  EXPECT_EQ(kept(), 100);
  EXPECT_FALSE(all[0].expired());
  EXPECT_TRUE(all[1].expired()) << "the oldest of those used once";

  ZelUtl::ReportCloseDocument();
  EXPECT_EQ(kept(), 100) << "another document is open";
  host.documents = 1;
  const Transform held = make(105);
  ZelUtl::ReportCloseDocument();
  EXPECT_EQ(kept(), 1) << "what is in use lives";
  EXPECT_NE(make(105), held);
  ZelUtl::SetApplicationHost(nullptr);
}

// --- Little CMS ------------------------------------------------------------------------------------------------------

/// Three channels in, through a table of the eight corners, CIE Lab out.
Bytes TableProfile(const std::string &colourSpace)
{
  Bytes table = TagOfType("mft1");
  table.insert(table.end(), {3, 3, 2, 0}); // channels in and out, steps
  const Bytes identity = FixedTag("", {1, 0, 0, 0, 1, 0, 0, 0, 1});
  table.insert(table.end(), identity.begin() + 4, identity.end());
  const auto ramps = [&table] {
    for (int i = 0; i < 3 * 256; ++i)
      table.push_back(static_cast<std::uint8_t>(i));
  };
  ramps();
  for (int corner = 0; corner < 8; ++corner) {
    table.push_back(static_cast<std::uint8_t>(255 - 80 * ((corner & 1) + (corner >> 1 & 1) + (corner >> 2 & 1))));
    table.insert(table.end(), {128, 128});
  }
  ramps();
  return IccProfile{"scnr", colourSpace, "Lab ", 0x02400000, {{"desc", DescTag("Table")}, {"A2B0", table}}}.Build();
}

TEST_F(Engines, LittleCmsTakesTheFormatsOfItsTable)
{
  struct Row
  {
    ColorModel model;
    std::shared_ptr<ColorProfile> profile;
    const char *of8, *of16; ///< plain, reversed, alpha, both
  };
  const Row kRows[] = {
    {Rgb, srgb, "yyyy", "yy--"},       {Cmyk, swop, "yyyy", "yy--"},
    {Grayscale, gray, "yyyy", "y---"}, {Lab, lab, "yyyy", "y---"},
    {Hexachrome, six, "yyyy", "----"}, {Cmy, ProfileOf("cmy.icc", TableProfile("CMY ")), "yyyy", "y---"},
    {Spot, srgb, "----", "----"}};
  for (const Row &row : kRows) {
    for (const SampleType type : {UInt8, Packed32, UInt16, Packed64, Float32}) {
      for (unsigned flags = 0; flags < 4; ++flags) {
        const PixelFormat format{row.model, type, (flags & 1) != 0, (flags & 2) != 0};
        const bool expected = type != Float32 && (format.BytesPerSample() == 1 ? row.of8 : row.of16)[flags] == 'y';
        const std::string what = std::string(NameOfColorModel(row.model)) + " " +
                                 std::to_string(static_cast<int>(type)) + " " + std::to_string(flags);
        const Transform in = lcms->CreateTransform(*row.profile, *srgb, From(format, kRgb8));
        EXPECT_EQ(in != nullptr, expected) << what;
        const bool back = lcms->CreateTransform(*srgb, *row.profile, From(kRgb8, format)) != nullptr;
        EXPECT_EQ(back, expected && row.model != Cmy) << what << ": the profile of Cmy has no way back";
        if (in == nullptr)
          continue;
        // The same colour in every layout; a rounding of the source to 8 bits moves no channel by two steps.
        Samples pixel(format.ChannelsPerPixel(), 0.0f);
        pixel[0] = 0.8f;
        pixel[format.ColourChannels() - 1] = 0.4f;
        const PixelFormat plain{row.model, UInt8};
        const Transform first = lcms->CreateTransform(*row.profile, *srgb, From(plain, kRgb8));
        ExpectNear(Converted(in, format, kRgb8, pixel), Converted(first, plain, kRgb8, pixel), 2.0 / 255, what);
      }
    }
  }
  EXPECT_EQ(lcms->CreateTransform(*srgb, *swop, From(kCmyk8, kCmyk8)), nullptr) << "pixels of another model";
  EXPECT_EQ(lcms->CreateTransform(*srgb, *swop, From(kRgb8, kRgb8)), nullptr) << "pixels of another model";
}

TEST_F(Engines, Kept_LittleCmsRefusesProfilesOfHuesAsInks)
{
  for (const auto &[space, model] : {std::pair("HLS ", Hls), std::pair("HSV ", Hsv)}) {
    const auto profile = ProfileOf("hue.icc", TableProfile(space));
    EXPECT_EQ(profile->GetColorModel(), model);
    EXPECT_EQ(lcms->CreateTransform(*profile, *srgb, From({model, UInt8}, kRgb8)), nullptr) << space;
    // There is no formula: the system's own engine is asked, where there is one.
    EXPECT_EQ(linear->CreateTransform(*profile, *srgb, From({model, UInt8}, kRgb8)) != nullptr,
              ColorManagementSystem::Get(ColorManagementModule::Icm) != nullptr)
      << space;
  }
}

TEST_F(Engines, ConvertOnlyWhatFits)
{
  for (const Engine &engine : {linear, lcms}) {
    const Transform transform = engine->CreateTransform(*srgb, *swop, From(kRgb8, kCmyk8));
    ASSERT_NE(transform, nullptr);
    const auto rgb = CreateColorData(kRgb8, 3, 2), cmyk = CreateColorData(kCmyk8, 3, 2);
    EXPECT_TRUE(transform->Convert(*rgb, *cmyk));
    EXPECT_FALSE(transform->Convert(*cmyk, *rgb));
    EXPECT_FALSE(transform->Convert(*CreateColorData({Rgb, UInt8, true}, 3, 2), *cmyk));
    EXPECT_FALSE(transform->Convert(*rgb, *CreateColorData({Cmyk, UInt16}, 3, 2)));
    EXPECT_FALSE(transform->Convert(*rgb, *CreateColorData(kCmyk8, 2, 2)));
    EXPECT_FALSE(transform->Convert(*rgb, *CreateColorData(kCmyk8, 3, 3)));
    for (const auto &[width, height] : {std::pair(0u, 0u), std::pair(0u, 3u), std::pair(3u, 0u)})
      EXPECT_TRUE(transform->Convert(*CreateColorData(kRgb8, width, height), *CreateColorData(kCmyk8, width, height)));

    // Strides of both views, and nothing is written between the rows.
    const auto source = RandomPixels(kRgb8, 5, 4);
    const auto tight = CreateColorData(kCmyk8, 5, 4), wide = CreateColorData(kCmyk8, 5, 4, 27);
    const Bytes before(27 * 4, 0xEE);
    std::copy(before.begin(), before.end(), wide->GetRow(0));
    ASSERT_TRUE(transform->Convert(*source, *tight) && transform->Convert(*source, *wide));
    for (std::uint32_t row = 0; row < 4; ++row) {
      EXPECT_TRUE(std::equal(tight->GetRow(row), tight->GetRow(row) + 20, wide->GetRow(row)));
      EXPECT_EQ(std::count(wide->GetRow(row) + 20, wide->GetRow(row) + 27, 0xEE), 7);
    }
  }
  const auto source = RandomPixels(kRgb8, 2, 2), destination = CreateColorData(kRgb8, 2, 2);
  EXPECT_TRUE(NullColorTransform().Convert(*source, *destination));
  EXPECT_EQ(BytesOf(*destination), Bytes(BytesOf(*source).size())) << "nothing is copied";
}

TEST_F(Engines, CarryAlphaOrFillItAlsoInPlace)
{
  constexpr PixelFormat kBgra8{Rgb, UInt8, true, true};
  for (const Engine &engine : {linear, lcms}) {
    const auto adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
    const struct
    {
      std::shared_ptr<ColorProfile> source, destination;
      PixelFormat from, to;
      Samples pixel;
      float alpha; ///< below 0: the destination has none
    } kRows[] = {
      {srgb, adobe, kRgba8, kBgra8, {0.2f, 0.4f, 0.6f, 0.2f}, 0.2f},
      {srgb, adobe, kBgra8, kRgba8, {0.2f, 0.4f, 0.6f, 0.0f}, 0.0f},
      {srgb, adobe, kRgb8, kRgba8, {0.2f, 0.4f, 0.6f}, 1.0f},
      {swop, srgb, kCmyk8, kRgba8, {0.2f, 0.4f, 0.6f, 0.2f}, 1.0f},
      {srgb, swop, kRgba8, kCmyk8, {0.2f, 0.4f, 0.6f, 0.2f}, -1.0f},
    };
    for (const auto &row : kRows) {
      const Transform transform = engine->CreateTransform(*row.source, *row.destination, From(row.from, row.to));
      const Samples result = Converted(transform, row.from, row.to, row.pixel);
      ASSERT_EQ(result.size(), row.to.ChannelsPerPixel());
      EXPECT_TRUE(row.alpha < 0.0f || result.back() == row.alpha) << result.back();
      if (row.from.BytesPerPixel() != row.to.BytesPerPixel())
        continue;
      // Two views of one buffer, small and large.
      for (const std::uint32_t width : {3u, 300u}) {
        const auto apart = RandomPixels(row.from, width, 300), result2 = CreateColorData(row.to, width, 300);
        const auto before = CreateColorData(row.from, width, 300, 0, apart->GetRow(0));
        ASSERT_TRUE(transform->Convert(*before, *result2));
        const auto after = CreateColorData(row.to, width, 300, 0, apart->GetRow(0));
        ASSERT_TRUE(transform->Convert(*before, *after));
        EXPECT_TRUE(BytesOf(*after) == BytesOf(*result2)) << NameOfColorModel(row.from.model) << " " << width;
      }
    }
  }
}

TEST_F(Engines, ConvertLargeBuffersAsSmallOnes)
{
  struct Row
  {
    std::shared_ptr<ColorProfile> source, destination;
    PixelFormat from, to;
  };
  const Row kRows[] = {{srgb, swop, kRgb8, kCmyk8},
                       {swop, srgb, kCmyk8, kRgb8},
                       {srgb, gray, kRgb8, kGray8},
                       {srgb, lab, kRgb16, {Lab, UInt16}}};
  for (const Row &row : kRows) {
    const Transform transform = lcms->CreateTransform(*row.source, *row.destination, From(row.from, row.to));
    const auto large = RandomPixels(row.from, 512, 256), together = CreateColorData(row.to, 512, 256);
    const auto alone = CreateColorData(row.to, 512, 256);
    ASSERT_TRUE(transform->Convert(*large, *together));
    for (std::uint32_t y = 0; y < 256; ++y) {
      const auto from = CreateColorData(row.from, 512, 1, 0, large->GetRow(y));
      const auto to = CreateColorData(row.to, 512, 1, 0, alone->GetRow(y));
      ASSERT_TRUE(transform->Convert(*from, *to));
    }
    double most = 0.0, sum = 0.0;
    for (std::uint32_t y = 0; y < 256; ++y) {
      for (std::uint32_t x = 0; x < 512; ++x) {
        for (unsigned c = 0; c < row.to.ColourChannels(); ++c) {
          const double apart = std::abs(double{together->GetSample(y, x, c)} - alone->GetSample(y, x, c));
          most = std::max(most, apart);
          sum += apart / (512 * 256 * row.to.ColourChannels());
        }
      }
    }
    // The table of the large ones is coarse in the shadows, where inks take each other's place: one colour may move
    // by a tenth of an ink, all together by no more than the rounding of a sample.
    EXPECT_LT(most, 0.11) << NameOfColorModel(row.from.model) << " to " << NameOfColorModel(row.to.model);
    EXPECT_LT(sum, 0.5 / 255) << NameOfColorModel(row.from.model) << " to " << NameOfColorModel(row.to.model);
  }
}

TEST_F(Engines, ShareATransformAmongThreads)
{
  for (const Engine &engine : {linear, lcms}) {
    for (const TransformPrecision precision : {TransformPrecision::Exact, TransformPrecision::Baked}) {
      TransformOptions options = From(kRgb8, kCmyk8);
      options.precision = precision; // the profiles themselves, and a table made by whoever comes first
      const auto source = RandomPixels(kRgb8, 256, 9);
      const auto expected = CreateColorData(kCmyk8, 256, 9);
      engine->ClearTransformCache();
      engine->CreateTransform(*srgb, *swop, options)->Convert(*source, *expected);
      engine->ClearTransformCache();
      std::vector<std::thread> threads;
      for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
          const Transform transform = engine->CreateTransform(*srgb, *swop, options);
          const auto mine = CreateColorData(kCmyk8, 256, 9);
          for (int round = 0; round < 3; ++round) {
            EXPECT_TRUE(transform->Convert(*source, *mine));
            EXPECT_TRUE(BytesOf(*mine) == BytesOf(*expected));
          }
        });
      }
      for (std::thread &thread : threads)
        thread.join();
    }
  }
}

// --- Proofs ----------------------------------------------------------------------------------------------------------

TEST_F(Engines, MarkWhatThePressCannotPrint)
{
  const Samples green = {0, 1, 0}, middle = {0.5f, 0.5f, 0.5f};
  TransformOptions options = From(kRgb8, kGray8);
  options.gamutCheck = true;
  const Transform mask = lcms->CreateProofTransform(*srgb, *swop, nullptr, options);
  EXPECT_EQ(Converted(mask, kRgb8, kGray8, green), Samples{1});
  EXPECT_EQ(Converted(mask, kRgb8, kGray8, middle), Samples{0});
  const Transform none = linear->CreateProofTransform(*srgb, *swop, nullptr, options);
  EXPECT_EQ(Converted(none, kRgb8, kGray8, green), Samples{0}) << "formulas have no gamut";

  options.destination = kRgba8;
  const Transform checked = lcms->CreateProofTransform(*srgb, *swop, srgb.get(), options);
  EXPECT_EQ(Converted(checked, kRgb8, kRgba8, green), (Samples{1, 1, 1, 1})) << "the mark";
  ExpectNear(Converted(checked, kRgb8, kRgba8, middle), {0.5f, 0.5f, 0.5f, 1.0f}, 0.03, "in gamut");
}

TEST_F(Engines, ShowThePaperWhereTheDisplayIntentAsksForIt)
{
  TransformOptions options = From(kRgb8, kRgb8);
  ExpectNear(Converted(lcms->CreateProofTransform(*srgb, *swop, srgb.get(), options), kRgb8, kRgb8, {1, 1, 1}),
             {1, 1, 1}, 1.01 / 255, "relative");
  options.displayIntent = RenderingIntent::AbsoluteColorimetric;
  const Samples paper =
    Converted(lcms->CreateProofTransform(*srgb, *swop, srgb.get(), options), kRgb8, kRgb8, {1, 1, 1});
  for (const float channel : paper)
    EXPECT_NEAR(channel, 0.91, 0.05) << "web coated paper has an L* of about 90";
}

TEST_F(Engines, GiveNoTransformForProfilesThatAreNotWhatTheySay)
{
  const std::shared_ptr<ColorProfile> odd[] = {
    ProfileOf("liar.icc", MatrixProfile("RGB in truth", "CMYK", "prtr").Build()),
    ProfileOf("liar6.icc", MatrixProfile("RGB in truth", "6CLR", "prtr").Build()),
    ProfileOf("grayliar.icc", MatrixProfile("RGB in truth", "GRAY", "mntr").Build()),
    ProfileOf("bare.icc", NamedProfile("No data", "CMYK", "prtr")),
    ProfileOf("barergb.icc", NamedProfile("No data")),
    ProfileOf("in.icc", TableProfile("CMY ")),
    ProfileOf("rgbin.icc", TableProfile("RGB ")),
  };
  const auto formatOf = [](ColorProfile &profile) { return PixelFormat{profile.GetColorModel(), UInt8}; };
  EXPECT_EQ(lcms->CreateTransform(*srgb, *odd[0], From(kRgb8, kCmyk8)), nullptr);
  // In every role, with every intent: no crash, neither in making nor in use.
  for (const auto &profile : odd) {
    for (const auto &other : {srgb, gray, swop}) {
      for (unsigned intent = 0; intent < (other == swop ? 1 : 4); ++intent) {
        TransformOptions options;
        options.intent = static_cast<RenderingIntent>(intent);
        options.displayIntent = static_cast<RenderingIntent>(3 - intent);
        const std::array<std::shared_ptr<ColorProfile>, 3> chains[] = {
          {other, profile, srgb},    {profile, other, srgb},    {srgb, other, profile},
          {other, profile, nullptr}, {profile, other, nullptr}, {profile, profile, profile}};
        for (const auto &[source, proof, display] : chains) {
          for (const bool check : {false, true}) {
            options.gamutCheck = check;
            options.source = formatOf(*source);
            options.destination = display == nullptr ? kGray8 : formatOf(*display);
            const Transform made = lcms->CreateProofTransform(*source, *proof, display.get(), options);
            const std::string what = ZelUtl::Utf8FromWide(profile->GetName() + L" " + other->GetName());
            EXPECT_TRUE(made == nullptr || proof != odd[0]) << what;
            EXPECT_TRUE(made == nullptr || !Converted(made, options.source, options.destination, Samples(6)).empty())
              << what;
          }
        }
        options.gamutCheck = false;
        options.source = formatOf(*profile);
        options.destination = formatOf(*other);
        Converted(lcms->CreateTransform(*profile, *other, options), options.source, options.destination, Samples(6));
        std::swap(options.source, options.destination);
        Converted(lcms->CreateTransform(*other, *profile, options), options.source, options.destination, Samples(6));
      }
    }
  }
}

// --- Linear ----------------------------------------------------------------------------------------------------------

TEST_F(Engines, LinearConvertsByFormula)
{
  struct Row
  {
    ColorModel from;
    Samples pixel;
    std::shared_ptr<ColorProfile> profile; ///< of the destination
    ColorModel to;
    Samples expected;
  };
  // sRGB red in CIE Lab on D50 is 54.29, 80.81, 69.89.
  const float l = 54.29f / 100, a = (80.81f + 128) / 255, b = (69.89f + 128) / 255, zero = 128 / 255.0f;
  const Row kRows[] = {
    {Rgb, {0.2f, 0.4f, 0.6f}, swop, Cmyk, {0.4f, 0.2f, 0.0f, 0.4f}},
    {Cmyk, {0.4f, 0.2f, 0.0f, 0.4f}, srgb, Rgb, {0.2f, 0.4f, 0.6f}},
    {Cmyk, {0.9f, 0.2f, 0.0f, 0.4f}, srgb, Rgb, {0.0f, 0.4f, 0.6f}},
    {Rgb, {1, 0, 0}, gray, Grayscale, {0.299f}},
    {Rgb, {0, 1, 0.5f}, gray, Grayscale, {0.644f}},
    {Grayscale, {0.3f}, srgb, Rgb, {0.3f, 0.3f, 0.3f}},
    {Grayscale, {0.3f}, swop, Cmyk, {0, 0, 0, 0.7f}},
    {Rgb, {1, 0, 0}, lab, Lab, {l, a, b}},
    {Lab, {l, a, b}, srgb, Rgb, {1, 0, 0}},
    {Lab, {1, zero, zero}, swop, Cmyk, {0, 0, 0, 0}},
    {Lab, {0.5f, 1, 1}, srgb, Rgb, {1, 0, 0}}, // far out of gamut, cut off
    {Cmyk, {0.1f, 0.2f, 0.3f, 0.4f}, six, Hexachrome, {0.1f, 0.2f, 0.3f, 0.4f, 0, 0}},
    {Hexachrome, {0.1f, 0.2f, 0.3f, 0.4f, 0.2f, 0.6f}, swop, Cmyk, {0.7f, 0.3f, 1.0f, 0.4f}},
    {Hexachrome, {0, 0, 0, 0, 1, 0}, srgb, Rgb, {1, 0.5f, 0}},
    {Rgb, {1, 0, 0}, six, Hexachrome, {0, 1, 1, 0, 0, 0}},
    {Rgb, {1, 0, 0}, gray, Rgb, {0.299f, 0.299f, 0.299f}}, // by way of the profile's model
    {Rgb, {0.2f, 0.4f, 0.6f}, srgb, Rgb, {0.2f, 0.4f, 0.6f}},
  };
  for (const Row &row : kRows) {
    for (const SampleType from : {UInt8, UInt16, Float32, Packed32, Packed64}) {
      for (const SampleType to : {UInt8, UInt16, Float32}) {
        const PixelFormat source{row.from, from, from == UInt16}, destination{row.to, to, to == UInt8, to == UInt16};
        Samples pixel = row.pixel, expected = row.expected;
        if (destination.HasAlpha())
          expected.push_back(1.0f);
        const Transform transform = linear->CreateTransform(*srgb, *row.profile, From(source, destination));
        // Half a step of 8 bits on either side, steep near black in Lab.
        ExpectNear(Converted(transform, source, destination, pixel), expected, row.from == Lab ? 0.03 : 0.008,
                   std::string(NameOfColorModel(row.from)) + " to " + std::string(NameOfColorModel(row.to)));
      }
    }
  }
  for (const ColorModel model : {Cmy, Hls, Hsv, Spot, Xyz})
    EXPECT_EQ(linear->CreateTransform(*srgb, *swop, From({model, UInt8}, kCmyk8)), nullptr) << NameOfColorModel(model);
  // A proof goes by way of the proof's model.
  const Transform proof = linear->CreateProofTransform(*srgb, *gray, srgb.get(), From(kRgb8, kRgb8));
  ExpectNear(Converted(proof, kRgb8, kRgb8, {1, 0, 0}), Samples(3, 0.299f), 0.003, "in gray");
}

} // namespace
