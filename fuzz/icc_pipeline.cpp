// Any bytes as a profile whose steps are taken apart: no step reaches beyond its tables, whatever they hold, and a
// pixel becomes the same in any company.

#include "zelclr/colorsystem/internal/icc_pipeline.h"

#include "zelclr/platform/icc_lut.h"

#include "fuzz/scratch_file.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

namespace {

using namespace ColorSystem;
using ColorSystem::Internal::PipelineProfile;
using ZelUtl::IccFile;

constexpr std::size_t kPixels = 300; // more than are converted at once

/// The corners, then noise.
std::vector<std::uint16_t> Pixels(unsigned inputs)
{
  std::vector<std::uint16_t> words(kPixels * inputs);
  std::mt19937 random(1);
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool isCorner = i / inputs < 16;
    words[i] = static_cast<std::uint16_t>(isCorner ? ((i / inputs) >> (i % inputs) & 1) * 65535 : random());
  }
  return words;
}

void RunThrough(std::initializer_list<PipelineProfile> chain)
{
  const auto pipeline = Internal::PipelineThrough({chain.begin(), chain.size()});
  if (!pipeline)
    return;
  const auto words = Pixels(pipeline->inputs);
  std::vector<std::uint16_t> together(kPixels * pipeline->outputs), alone(together.size());
  RunPipeline(*pipeline, words.data(), together.data(), kPixels);
  for (std::size_t first = 0; first < kPixels; first += 60)
    RunPipeline(*pipeline, words.data() + first * pipeline->inputs, alone.data() + first * pipeline->outputs, 60);
  if (together != alone)
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  ZelUtl::IccLutFromTag({data, size});

  std::string reason;
  // One of the seeds, which is whole.
  static const auto other = IccFile::Open("fuzz/corpus/fuzz_icc_transform/rgb_matrix.icc", reason);
  const auto file = IccFile::Open(ScratchFile(".icc", data, size), reason);
  if (!file || !other)
    return 0;
  for (const auto intent : {RenderingIntent::Perceptual, RenderingIntent::RelativeColorimetric}) {
    const PipelineProfile own = {&*file, intent}, rgb = {&*other, intent};
    RunThrough({own, rgb});
    RunThrough({rgb, own});
    RunThrough({own, own});
    RunThrough({rgb, own, own, rgb});
  }
  return 0;
}
