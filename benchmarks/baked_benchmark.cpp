// Pixels through baked transforms beside bare Little CMS, in one process and in turn, so that a slow spell of the
// machine hits both. Prints how many times as fast ours are: the median of all rounds, and their middle half.
//
//   baked_benchmark [ROUNDS [NAME]]     only rows whose name contains NAME
//   valgrind --tool=callgrind baked_benchmark 1 NAME     instructions, for a history of our own

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/platform/text.h"

#define CMS_NO_REGISTER_KEYWORD // C++17 has none
#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace ColorSystem;

constexpr const wchar_t *kSrgb = L"sRGB_v4.icc";
constexpr const wchar_t *kWide = L"CompatibleWithAdobeRGB1998.icc";
constexpr const wchar_t *kPress = L"USWebCoatedSWOP.icc";
constexpr const wchar_t *kLab = L"CIE Lab.icc";

constexpr PixelFormat kRgb8 = {ColorModel::Rgb, SampleType::UInt8};
constexpr PixelFormat kBgra8 = {ColorModel::Rgb, SampleType::UInt8, true, true};
constexpr PixelFormat kRgb16 = {ColorModel::Rgb, SampleType::UInt16};
constexpr PixelFormat kCmyk8 = {ColorModel::Cmyk, SampleType::UInt8};
constexpr PixelFormat kCmyk16 = {ColorModel::Cmyk, SampleType::UInt16};
constexpr PixelFormat kLab8 = {ColorModel::Lab, SampleType::UInt8};

constexpr std::uint32_t kWidth = 1240, kHeight = 877; // half a page of A4 at 150 dpi

std::shared_ptr<ColorProfile> Installed(const wchar_t *name)
{
  return ColorProfileManager::GetInstance().GetColorProfile(name);
}

std::string PathOf(const wchar_t *name)
{
  return ZelUtl::Utf8FromWide(Installed(name)->GetPath());
}

// --- Pictures --------------------------------------------------------------------------------------------------------

using Picture = std::unique_ptr<ColorData> (*)(const PixelFormat &format);

std::unique_ptr<ColorData> Noise(const PixelFormat &format)
{
  auto picture = CreateColorData(format, kWidth, kHeight);
  std::mt19937 random(1);
  for (std::uint32_t row = 0; row < kHeight; ++row)
    std::generate_n(picture->GetRow(row), picture->GetRowStride(), [&] { return static_cast<std::uint8_t>(random()); });
  return picture;
}

/// Colours that change from pixel to pixel by a few steps, as in photographs.
std::unique_ptr<ColorData> Smooth(const PixelFormat &format)
{
  auto picture = CreateColorData(format, kWidth, kHeight);
  for (std::uint32_t row = 0; row < kHeight; ++row)
    for (std::uint32_t column = 0; column < kWidth; ++column)
      for (unsigned channel = 0; channel < format.ColourChannels(); ++channel) {
        const float phase = static_cast<float>(column) / (23.0f + 7.0f * static_cast<float>(channel));
        const float drift = static_cast<float>(row) / (60.0f + 20.0f * static_cast<float>(channel));
        picture->SetSample(row, column, channel, 0.5f + 0.4f * std::sin(phase) * std::cos(drift));
      }
  return picture;
}

/// A page: white paper with lines of text, flat boxes, and a photograph.
std::unique_ptr<ColorData> Page(const PixelFormat &format)
{
  auto picture = CreateColorData(format, kWidth, kHeight);
  const bool inks = format.model == ColorModel::Cmyk;
  std::mt19937 random(2);
  for (std::uint32_t row = 0; row < kHeight; ++row)
    for (std::uint32_t column = 0; column < kWidth; ++column) {
      const bool isPhoto = row > 500 && row < 800 && column > 80 && column < 560;
      const bool isBox = row > 500 && row < 800 && column > 640 && column < 1160;
      const bool isText = row < 440 && row % 22 < 12 && column > 80 && column < 1160 && random() % 5 == 0;
      for (unsigned channel = 0; channel < format.ColourChannels(); ++channel) {
        float value = inks ? 0.0f : 1.0f;
        if (isPhoto)
          value = static_cast<float>((row * (channel + 2) + column * (4 - channel) + random() % 16) % 256) / 255.0f;
        else if (isBox)
          value = 0.2f + 0.2f * static_cast<float>((channel + column / 130) % 4);
        else if (isText)
          value = inks ? (channel == 3 ? 1.0f : 0.0f) : 0.1f;
        picture->SetSample(row, column, channel, value);
      }
    }
  return picture;
}

// --- Rows of the table -----------------------------------------------------------------------------------------------

struct Bare
{
  explicit Bare(const wchar_t *name) : profile(cmsOpenProfileFromFile(PathOf(name).c_str(), "r")) {}
  ~Bare() { cmsCloseProfile(profile); }
  Bare(const Bare &) = delete;
  Bare &operator=(const Bare &) = delete;

  cmsHPROFILE profile;
};

cmsUInt32Number BareFormat(const PixelFormat &format)
{
  if (format == kRgb8)
    return TYPE_RGB_8;
  if (format == kBgra8)
    return TYPE_BGRA_8;
  if (format == kRgb16)
    return TYPE_RGB_16;
  if (format == kCmyk8)
    return TYPE_CMYK_8;
  return format == kCmyk16 ? TYPE_CMYK_16 : TYPE_Lab_8;
}

enum class Kind
{
  Plain,
  Exact,
  Proof,
  ProofWithWarning
};

struct Row
{
  const char *name;
  Kind kind;
  const wchar_t *source;
  PixelFormat from;
  const wchar_t *destination;
  PixelFormat to;
  Picture picture;
};

constexpr Row kRows[] = {
  {"RGB8 to RGB8, matrices, noise", Kind::Plain, kSrgb, kRgb8, kWide, kRgb8, Noise},
  {"RGB8 to RGB8, matrices, smooth", Kind::Plain, kSrgb, kRgb8, kWide, kRgb8, Smooth},
  {"BGRA8 to BGRA8, matrices, noise", Kind::Plain, kSrgb, kBgra8, kWide, kBgra8, Noise},
  {"RGB8 to CMYK8, noise", Kind::Plain, kSrgb, kRgb8, kPress, kCmyk8, Noise},
  {"RGB8 to CMYK8, smooth", Kind::Plain, kSrgb, kRgb8, kPress, kCmyk8, Smooth},
  {"RGB8 to CMYK8, page", Kind::Plain, kSrgb, kRgb8, kPress, kCmyk8, Page},
  {"CMYK8 to RGB8, noise", Kind::Plain, kPress, kCmyk8, kSrgb, kRgb8, Noise},
  {"CMYK8 to RGB8, smooth", Kind::Plain, kPress, kCmyk8, kSrgb, kRgb8, Smooth},
  {"CMYK8 to RGB8, page", Kind::Plain, kPress, kCmyk8, kSrgb, kRgb8, Page},
  {"RGB16 to CMYK16, noise", Kind::Plain, kSrgb, kRgb16, kPress, kCmyk16, Noise},
  {"RGB8 to Lab8, noise", Kind::Plain, kSrgb, kRgb8, kLab, kLab8, Noise},
  {"soft proof, RGB8, noise", Kind::Proof, kSrgb, kRgb8, kWide, kRgb8, Noise},
  {"soft proof, RGB8, smooth", Kind::Proof, kSrgb, kRgb8, kWide, kRgb8, Smooth},
  {"soft proof with gamut warning, noise", Kind::ProofWithWarning, kSrgb, kRgb8, kWide, kRgb8, Noise},
  {"soft proof with gamut warning, smooth", Kind::ProofWithWarning, kSrgb, kRgb8, kWide, kRgb8, Smooth},
  {"exact RGB8 to CMYK8, noise", Kind::Exact, kSrgb, kRgb8, kPress, kCmyk8, Noise},
  {"exact CMYK8 to RGB8, noise", Kind::Exact, kPress, kCmyk8, kSrgb, kRgb8, Noise},
  {"exact RGB8 to RGB8, noise", Kind::Exact, kSrgb, kRgb8, kWide, kRgb8, Noise},
};

using Work = std::function<void(const ColorData &from, ColorData &to)>;

std::shared_ptr<ColorManagementSystem> Engine()
{
  return ColorManagementSystem::Get(ColorManagementModule::LCMS);
}

Work OurWork(const Row &row)
{
  if (row.kind == Kind::ProofWithWarning) {
    ColorContext source, target;
    source.SetColorProfile(ColorModel::Rgb, Installed(row.source));
    target.SetColorProfile(ColorModel::Rgb, Installed(row.destination));
    ProofColorSettings proof;
    proof.SetEnvironmentToSimulate(Installed(kPress));
    proof.SetDisplayGamutWarning(true);
    const auto converter = std::make_shared<ProofColorConverter>(source, proof, target);
    return [converter](const ColorData &from, ColorData &to) { converter->ConvertColorData(from, to); };
  }
  TransformOptions options;
  options.source = row.from;
  options.destination = row.to;
  if (row.kind == Kind::Exact)
    options.precision = TransformPrecision::Exact;
  const auto transform = row.kind == Kind::Proof
                           ? Engine()->CreateProofTransform(*Installed(row.source), *Installed(kPress),
                                                            Installed(row.destination).get(), options)
                           : Engine()->CreateTransform(*Installed(row.source), *Installed(row.destination), options);
  return [transform](const ColorData &from, ColorData &to) { transform->Convert(from, to); };
}

Work BareWork(const Row &row)
{
  const Bare source(row.source), destination(row.destination), press(kPress);
  cmsHTRANSFORM made = nullptr;
  if (row.kind == Kind::Plain || row.kind == Kind::Exact)
    made = cmsCreateTransform(source.profile, BareFormat(row.from), destination.profile, BareFormat(row.to),
                              INTENT_RELATIVE_COLORIMETRIC,
                              (row.kind == Kind::Exact ? cmsUInt32Number{cmsFLAGS_NOOPTIMIZE} : 0u) |
                                (row.from == kBgra8 ? cmsUInt32Number{cmsFLAGS_COPY_ALPHA} : 0u));
  else
    made = cmsCreateProofingTransform(
      source.profile, BareFormat(row.from), destination.profile, BareFormat(row.to), press.profile,
      INTENT_RELATIVE_COLORIMETRIC, INTENT_RELATIVE_COLORIMETRIC,
      cmsFLAGS_SOFTPROOFING | (row.kind == Kind::ProofWithWarning ? cmsUInt32Number{cmsFLAGS_GAMUTCHECK} : 0u));
  const std::shared_ptr<void> transform(made, cmsDeleteTransform);
  return [transform](const ColorData &from, ColorData &to) {
    cmsDoTransformLineStride(transform.get(), from.GetRow(0), to.GetRow(0), from.GetWidth(), from.GetHeight(),
                             from.GetRowStride(), to.GetRowStride(), 0, 0);
  };
}

// --- Measuring -------------------------------------------------------------------------------------------------------

/// Of the processor, so that what else runs on the machine does not count.
double Seconds(const std::function<void()> &work)
{
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Measured
{
  std::vector<double> ours, ratios;

  void Print(const char *name, double unit, const char *unitName)
  {
    std::sort(ours.begin(), ours.end());
    std::sort(ratios.begin(), ratios.end());
    const auto at = [](const std::vector<double> &numbers, double share) {
      return numbers[static_cast<std::size_t>(share * static_cast<double>(numbers.size() - 1) + 0.5)];
    };
    std::printf("%-40s %7.2f times (%.2f to %.2f)  %8.2f %s\n", name, at(ratios, 0.5), at(ratios, 0.25),
                at(ratios, 0.75), at(ours, 0.5) * unit, unitName);
    std::fflush(stdout);
  }
};

/// `ours` and `theirs` in turn; the first round is not counted.
Measured InTurn(int rounds, const std::function<void()> &ours, const std::function<void()> &theirs)
{
  Measured measured;
  for (int round = 0; round <= rounds; ++round) {
    const double mine = Seconds(ours), other = Seconds(theirs);
    if (round == 0)
      continue;
    measured.ours.push_back(mine);
    measured.ratios.push_back(other / mine);
  }
  return measured;
}

void MeasurePixels(const Row &row, int rounds)
{
  const auto from = row.picture(row.from);
  const auto to = CreateColorData(row.to, kWidth, kHeight), other = CreateColorData(row.to, kWidth, kHeight);
  const Work ours = OurWork(row), bare = BareWork(row);
  InTurn(
    row.kind == Kind::Exact ? (rounds + 3) / 4 : rounds, [&] { ours(*from, *to); }, [&] { bare(*from, *other); })
    .Print(row.name, 1e9 / (double{kWidth} * kHeight), "ns a pixel");
}

/// Until the first pixel is converted by the table, files opened and all; Little CMS makes its table at once.
void MeasureMaking(const Row &row, const char *name, int rounds)
{
  const auto pixel = CreateColorData(row.from, 1, 1), result = CreateColorData(row.to, 1, 1);
  TransformOptions options;
  options.source = row.from;
  options.destination = row.to;
  options.precision = TransformPrecision::Baked;
  const auto ours = [&] {
    Engine()->ClearTransformCache();
    const auto source = Installed(row.source), destination = Installed(row.destination), press = Installed(kPress);
    (row.kind == Kind::Proof ? Engine()->CreateProofTransform(*source, *press, destination.get(), options)
                             : Engine()->CreateTransform(*source, *destination, options))
      ->Convert(*pixel, *result);
  };
  InTurn(rounds, ours, [&] { BareWork(row); }).Print(name, 1e3, "ms");
}

} // namespace

int main(int argc, char **argv)
{
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 15;
  const std::string wanted = argc > 2 ? argv[2] : "";
  for (const Row &row : kRows) {
    if (std::string(row.name).find(wanted) != std::string::npos)
      MeasurePixels(row, rounds);
  }
  for (const Row &row : kRows) {
    const std::string name = std::string("making ") + row.name;
    const bool isFirst = row.picture == Noise && (row.kind == Kind::Plain || row.kind == Kind::Proof);
    if (isFirst && name.find(wanted) != std::string::npos)
      MeasureMaking(row, name.c_str(), rounds);
  }
}
