#include "zelclr/colorsystem/engines/baking_color_transform.h"

#include "zelclr/colorsystem/internal/baked_rows.h"
#include "zelclr/colorsystem/internal/baking.h"
#include "zelclr/colorsystem/internal/pipeline_transform.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <variant>

namespace ColorSystem {

namespace {

std::string PathOf(const ColorProfile &profile)
{
  return ZelUtl::Utf8FromWide(profile.GetPath());
}

Internal::BakedPixels PixelsOf(const PixelFormat &format)
{
  return {format.BytesPerSample(), format.HasAlpha()};
}

/// Without a table, and cheaper than any.
bool IsQuick(const Internal::IccPipeline &pipeline)
{
  return std::all_of(pipeline.steps.begin(), pipeline.steps.end(), [](const Internal::PipelineStep &step) {
    return std::holds_alternative<Internal::CurvesStep>(step) || std::holds_alternative<Internal::MatrixStep>(step);
  });
}

bool IsSolid(const ColorData &view)
{
  return view.GetRowStride() == std::uint64_t{view.GetWidth()} * view.GetPixelFormat().BytesPerPixel();
}

void ConvertBy(const Internal::IccPipeline &pipeline, const ColorData &source, ColorData &destination)
{
  Internal::ConvertByPipeline(pipeline, source, destination);
}

template <class Tables>
void ConvertBy(const Tables &tables, const ColorData &source, ColorData &destination)
{
  // Rows without gaps are one.
  const bool isSolid = IsSolid(source) && IsSolid(destination) && source.GetHeight() != 0;
  const std::uint32_t rows = isSolid ? 1 : source.GetHeight();
  const std::size_t pixels = std::size_t{source.GetWidth()} * (isSolid ? source.GetHeight() : 1);
  for (std::uint32_t row = 0; row < rows; ++row)
    Internal::ConvertBakedRow(tables, PixelsOf(source.GetPixelFormat()), source.GetRow(row),
                              PixelsOf(destination.GetPixelFormat()), destination.GetRow(row), pixels);
}

} // namespace

struct BakingColorTransform::Baked
{
  /// The pipeline itself where it is quicker and better than a table.
  std::variant<Internal::BakedTable, Internal::BakedMatrix, Internal::IccPipeline> tables;
};

BakingColorTransform::BakingColorTransform(std::shared_ptr<ColorTransform> exact, const TransformOptions &options,
                                           std::vector<ColorProfile> profiles, Make make)
  : exact_(std::move(exact)),
    options_(options),
    profiles_(std::move(profiles)),
    make_(std::move(make))
{
  for (const ColorProfile &profile : profiles_)
    stamps_.push_back(ZelUtl::StampOfFile(PathOf(profile)));
}

BakingColorTransform::~BakingColorTransform() = default;

std::shared_ptr<ColorTransform> BakingColorTransform::Around(std::shared_ptr<ColorTransform> exact,
                                                             const TransformOptions &options,
                                                             std::vector<ColorProfile> profiles, Make make)
{
  if (exact == nullptr || options.gamutCheck || !Internal::CanBake(options.source, options.destination))
    return exact;
  return std::shared_ptr<ColorTransform>(
    new BakingColorTransform(std::move(exact), options, std::move(profiles), std::move(make)));
}

std::optional<BakingColorTransform::Files> BakingColorTransform::OpenFiles() const
{
  Files files;
  for (std::size_t i = 0; i < profiles_.size(); ++i) {
    std::string reason;
    auto file = ZelUtl::IccFile::Open(PathOf(profiles_[i]), reason);
    if (!file || file->Stamp() != stamps_[i])
      return std::nullopt;
    files.push_back(*std::move(file));
  }
  return files;
}

/// Of source and destination, or of source, proof and display.
std::optional<Internal::IccPipeline> BakingColorTransform::PipelineOf(const Files &files) const
{
  std::vector<Internal::PipelineProfile> chain = {{&files[0], options_.intent}, {&files[1], options_.intent}};
  if (files.size() == 3) {
    chain.push_back({&files[1], options_.displayIntent});
    chain.push_back({&files[2], options_.displayIntent});
  }
  auto pipeline = Internal::PipelineThrough(chain);
  return pipeline && Internal::AgreesWith(*exact_, options_, *pipeline) ? std::move(pipeline) : std::nullopt;
}

std::unique_ptr<const BakingColorTransform::Baked> BakingColorTransform::Bake() const
{
  const auto files = OpenFiles();
  if (!files)
    return nullptr;
  auto pipeline = PipelineOf(*files);
  if (options_.precision == TransformPrecision::Exact)
    return pipeline ? std::make_unique<Baked>(Baked{*std::move(pipeline)}) : nullptr;

  std::shared_ptr<ColorTransform> engine;
  const auto convert = [&](const ColorData &source, ColorData &destination) {
    if (engine != nullptr)
      return engine->Convert(source, destination);
    Internal::ConvertByPipeline(*pipeline, source, destination);
    return true;
  };
  if (!pipeline) {
    TransformOptions fine = options_;
    fine.source = {options_.source.model, SampleType::UInt16};
    fine.destination = {options_.destination.model, SampleType::UInt16};
    engine = make_(fine);
    if (engine == nullptr)
      return nullptr;
  }
  if (files->size() == 2 && options_.gridPoints == 0) {
    const auto from = ZelUtl::IccMatrixOf((*files)[0]), to = ZelUtl::IccMatrixOf((*files)[1]);
    if (from && to) {
      if (auto matrix = Internal::BakeMatrix(options_.source, *from, options_.destination, *to, convert))
        return std::make_unique<Baked>(Baked{*std::move(matrix)});
    }
  }
  if (pipeline && IsQuick(*pipeline))
    return std::make_unique<Baked>(Baked{*std::move(pipeline)});
  const unsigned grid = options_.gridPoints == 0 ? Internal::StandardGrid(options_.source) : options_.gridPoints;
  auto table = Internal::BakeTable(options_.source, options_.destination, grid, convert);
  return table && IsPlausible(*table) ? std::make_unique<Baked>(Baked{*std::move(table)}) : nullptr;
}

/// Whether some colours come out as the engine has them: one that cannot convert words as it says gives no table.
bool BakingColorTransform::IsPlausible(const Internal::BakedTable &table) const
{
  constexpr std::uint32_t kColours = 128;
  const auto source = CreateColorData(options_.source, kColours, 1);
  const auto expected = CreateColorData(options_.destination, kColours, 1);
  const auto result = CreateColorData(options_.destination, kColours, 1);
  std::mt19937 random(1);
  std::generate_n(source->GetRow(0), std::size_t{kColours} * options_.source.BytesPerPixel(),
                  [&] { return static_cast<std::uint8_t>(random()); });
  if (!exact_->Convert(*source, *expected))
    return false;
  Internal::ConvertBakedRow(table, PixelsOf(options_.source), source->GetRow(0), PixelsOf(options_.destination),
                            result->GetRow(0), kColours);
  double sum = 0.0;
  for (std::uint32_t i = 0; i < kColours; ++i)
    for (unsigned channel = 0; channel < table.outputs; ++channel)
      sum += std::abs(double{expected->GetSample(0, i, channel)} - double{result->GetSample(0, i, channel)});
  return sum <= 0.05 * kColours * table.outputs;
}

const BakingColorTransform::Baked *BakingColorTransform::BakedFor(std::uint64_t pixels) const
{
  if (options_.precision != TransformPrecision::Baked && pixels < kFewPixels)
    return nullptr;
  if (options_.precision == TransformPrecision::Automatic &&
      asked_.fetch_add(pixels, std::memory_order_relaxed) + pixels < kPixelsBeforeBaking)
    return nullptr;
  std::call_once(once_, [this] { baked_ = Bake(); });
  return baked_.get();
}

bool BakingColorTransform::Convert(const ColorData &source, ColorData &destination) const
{
  if (source.GetPixelFormat() != options_.source || destination.GetPixelFormat() != options_.destination ||
      source.GetWidth() != destination.GetWidth() || source.GetHeight() != destination.GetHeight())
    return false;
  const Baked *const baked = BakedFor(std::uint64_t{source.GetWidth()} * source.GetHeight());
  if (baked == nullptr)
    return exact_->Convert(source, destination);
  std::visit([&](const auto &tables) { ConvertBy(tables, source, destination); }, baked->tables);
  return true;
}

} // namespace ColorSystem
