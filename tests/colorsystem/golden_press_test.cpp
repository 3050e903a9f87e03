// The engine against two other programs: tests/data/golden/README.md says how the values were made.
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/convert/w_clr_convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using namespace ColorSystem;

namespace {

using Channels = std::vector<double>;

struct Row
{
  std::string source, destination;
  int intent;
  Channels in, argyll, littleCms;
};

Channels ChannelsFrom(const std::string &text)
{
  std::istringstream stream(text);
  Channels channels;
  for (double channel; stream >> channel;)
    channels.push_back(channel);
  return channels;
}

std::vector<Row> GoldenRows()
{
  std::ifstream file(ZELCLR_GOLDEN "/press.csv");
  std::vector<Row> rows;
  std::string line;
  std::getline(file, line); // the heading
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    std::string part[6];
    for (std::string &field : part)
      std::getline(fields, field, ',');
    rows.push_back(
      {part[0], part[1], std::stoi(part[2]), ChannelsFrom(part[3]), ChannelsFrom(part[4]), ChannelsFrom(part[5])});
  }
  return rows;
}

Channels ByEngine(const Row &row)
{
  const auto profile = [](const std::string &name) {
    return ColorProfileManager::GetInstance().GetColorProfile(std::wstring(name.begin(), name.end()).c_str());
  };
  const auto source = profile(row.source);
  const auto destination = profile(row.destination);
  TransformOptions options;
  options.intent = static_cast<RenderingIntent>(row.intent);
  options.source = {source->GetColorModel(), SampleType::UInt16};
  options.destination = {destination->GetColorModel(), SampleType::UInt16};
  const auto transform =
    ColorManagementSystem::Get(ColorManagementModule::LCMS)->CreateTransform(*source, *destination, options);
  const auto in = CreateColorData(options.source, 1, 1);
  const auto out = CreateColorData(options.destination, 1, 1);
  for (unsigned i = 0; i < row.in.size(); ++i)
    in->SetSample(0, 0, i, static_cast<float>(row.in[i]));
  Channels result;
  for (unsigned i = 0; transform->Convert(*in, *out) && i < options.destination.ColourChannels(); ++i)
    result.push_back(out->GetSample(0, 0, i));
  return result;
}

double WorstInk(const Channels &a, const Channels &b)
{
  double worst = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i)
    worst = std::max(worst, std::abs(a[i] - b[i]));
  return worst;
}

double ScreenDifference(const Channels &a, const Channels &b)
{
  const auto lab = [](const Channels &c) {
    return ZelClr::Formulas::CieLabFromXyz(ZelClr::Formulas::XyzFromSrgb(c[0], c[1], c[2]));
  };
  const auto first = lab(a);
  const auto second = lab(b);
  return std::hypot(first.l - second.l, first.a - second.a, first.b - second.b);
}

// 0.06 % of ink and a Delta E*ab of 0.02, in which 16 bits and the programs' own rounding have room.
TEST(GoldenPress, InksAgreeWithBothPrograms)
{
  std::size_t rows = 0;
  for (const Row &row : GoldenRows()) {
    if (row.in.size() != 3)
      continue;
    ++rows;
    const Channels inks = ByEngine(row);
    ASSERT_EQ(inks.size(), 4u);
    EXPECT_LT(WorstInk(inks, row.littleCms), 0.0006) << row.destination << ' ' << row.intent << ' ' << rows;
    EXPECT_LT(WorstInk(inks, row.argyll), 0.0006) << row.destination << ' ' << row.intent << ' ' << rows;
  }
  EXPECT_GT(rows, 1000u);
}

// Argyll reads a cell of the table over four inks by another interpolation: as far as the README says they part there.
TEST(GoldenPress, ScreenColoursAgreeWithBothPrograms)
{
  std::size_t rows = 0;
  double argyll = 0.0;
  for (const Row &row : GoldenRows()) {
    if (row.in.size() != 4)
      continue;
    ++rows;
    const Channels screen = ByEngine(row);
    ASSERT_EQ(screen.size(), 3u);
    EXPECT_LT(ScreenDifference(screen, row.littleCms), 0.02) << row.source << ' ' << row.intent << ' ' << rows;
    const double difference = ScreenDifference(screen, row.argyll);
    argyll += difference;
    EXPECT_LT(difference, 0.14) << row.source << ' ' << row.intent << ' ' << rows;
  }
  EXPECT_GT(rows, 1000u);
  EXPECT_LT(argyll / static_cast<double>(rows), 0.02);
}

/// Inks, or light on its own scale, as a record of 8 bits has them.
CLR_COLORSPEC RecordOf(const Channels &c)
{
  const auto byte = [&c](std::size_t i) { return static_cast<std::uint8_t>(std::lround(c[i] * 255.0)); };
  return c.size() == 3 ? CLR_COLORSPEC::MakeRGB(byte(0), byte(1), byte(2))
                       : CLR_COLORSPEC::MakeCMYK255(byte(0), byte(1), byte(2), byte(3));
}

Channels ChannelsOf(const CLR_COLORSPEC &record)
{
  const auto channel = [&record](std::size_t i) { return record.GetComponent<std::uint8_t>(i) / 255.0; };
  return record.IsCMYK() ? Channels{channel(0), channel(1), channel(2), channel(3)}
                         : Channels{channel(2), channel(1), channel(0)};
}

// Half a step of the record, and what the programs differ by.
TEST(GoldenPress, RecordsAndPixelsAgreeWithThem)
{
  constexpr double kHalfStep = 0.5 / 255 + 0.0006;
  std::size_t rows = 0;
  for (const Row &row : GoldenRows()) {
    const auto context = [&row](const std::string &name) {
      const auto profile =
        ColorProfileManager::GetInstance().GetColorProfile(std::wstring(name.begin(), name.end()).c_str());
      return ColorContext(*profile, static_cast<RenderingIntent>(row.intent));
    };
    ColorContext from = context(row.source), to = context(row.destination);
    const CLR_COLORSPEC record = RecordOf(row.in);
    if (WorstInk(ChannelsOf(record), row.in) > 1e-5) // not of 8 bits
      continue;
    ++rows;
    const unsigned type = RecordOf(row.littleCms).GetType();
    CLR_COLORSPEC converted;
    ASSERT_TRUE(WClrConvert::ConvertColorSpec(&converted, type, to, &record, from));
    ASSERT_EQ(converted.GetType(), type);
    EXPECT_LT(WorstInk(ChannelsOf(converted), row.littleCms), kHalfStep) << row.destination << ' ' << row.intent;

    const auto in = CreateColorData({from.GetBlendingColorModel(), SampleType::UInt16}, 1, 1);
    const auto out = CreateColorData({to.GetBlendingColorModel(), SampleType::UInt16}, 1, 1);
    for (unsigned i = 0; i < row.in.size(); ++i)
      in->SetSample(0, 0, i, static_cast<float>(row.in[i]));
    ASSERT_TRUE(ColorConverter(from, to).ConvertColorData(*in, *out));
    Channels pixel;
    for (unsigned i = 0; i < row.littleCms.size(); ++i)
      pixel.push_back(out->GetSample(0, 0, i));
    EXPECT_LT(WorstInk(pixel, row.littleCms), 0.0006) << row.destination << ' ' << row.intent;
    EXPECT_LE(WorstInk(ChannelsOf(converted), pixel), 0.5001 / 255) << row.destination << ' ' << row.intent;
  }
  EXPECT_GT(rows, 1500u);
}

} // namespace
