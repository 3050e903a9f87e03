// A transform of any engine that turns itself into tables when it is asked for enough pixels, or, where it is to be
// exact, into steps of floats for many pixels at a time. Either is compared with the engine before it is used.
//
// Threads: as ColorTransform; whoever asks first bakes, others that need the table wait. Errors: as ColorTransform;
// what cannot be baked is converted by the engine.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/platform/icc_file.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ColorSystem {

namespace Internal {
struct BakedTable;
struct IccPipeline;
} // namespace Internal

class BakingColorTransform final : public ColorTransform
{
public:
  /// Makes the engine's transform of the same profiles for other formats; null when there is none.
  using Make = std::function<std::shared_ptr<ColorTransform>(const TransformOptions &options)>;

  /// A buffer of fewer pixels is converted by the engine; others are counted.
  static constexpr std::uint64_t kFewPixels = 256;
  /// With so many pixels asked for, a transform bakes itself. A table costs as much as 10,000 pixels or so; a tile of
  /// 128 x 128 is converted by the table from the first one on.
  static constexpr std::uint64_t kPixelsBeforeBaking = 16384;

  /// The transform itself where tables cannot do its work.
  static std::shared_ptr<ColorTransform> Around(std::shared_ptr<ColorTransform> exact, const TransformOptions &options,
                                                std::vector<ColorProfile> profiles, Make make);

  ~BakingColorTransform() override;

  bool Convert(const ColorData &source, ColorData &destination) const override;

private:
  struct Baked;
  using Files = std::vector<ZelUtl::IccFile>;

  BakingColorTransform(std::shared_ptr<ColorTransform> exact, const TransformOptions &options,
                       std::vector<ColorProfile> profiles, Make make);
  const Baked *BakedFor(std::uint64_t pixels) const;
  std::unique_ptr<const Baked> Bake() const;
  /// Empty when one cannot be read, or is no longer what the exact transform was made of.
  std::optional<Files> OpenFiles() const;
  std::optional<Internal::IccPipeline> PipelineOf(const Files &files) const;
  bool IsPlausible(const Internal::BakedTable &table) const;

  std::shared_ptr<ColorTransform> exact_;
  TransformOptions options_;
  std::vector<ColorProfile> profiles_;
  std::vector<std::optional<ZelUtl::FileStamp>> stamps_; // of the profiles' files when the exact transform was made
  Make make_;
  mutable std::atomic<std::uint64_t> asked_{0};
  mutable std::once_flag once_;
  mutable std::unique_ptr<const Baked> baked_; // null when there is none
};

} // namespace ColorSystem
