// Any bytes as an image: read within their bounds, or refused with a reason.

#include "cli/image/image_file.h"

#include "fuzz/scratch_file.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace cli;

constexpr std::uint64_t kHeldBytes = 1 << 22;
constexpr std::uint32_t kRows = 64;
constexpr std::size_t kPixels = 1 << 20;

void ReadAll(const std::string &path)
{
  const auto reader = OpenImage(path, kHeldBytes);
  const ImageInfo &info = reader->Info();
  const auto rows = static_cast<std::uint32_t>(std::min<std::size_t>(kPixels / info.width + 1, kRows));
  std::vector<std::uint8_t> colours(rows * info.ColourBytesPerRow());
  std::vector<std::uint8_t> alpha(rows * info.AlphaBytesPerRow());
  std::size_t pixels = 0;
  for (std::uint32_t row = 0; row < info.height && pixels < kPixels; row += rows, pixels += rows * info.width)
    reader->ReadRows(std::min(rows, info.height - row), colours.data(), alpha.data());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  try {
    ReadAll(ScratchFile(".image", data, size));
  } catch (const ImageError &error) {
    if (error.what()[0] == '\0')
      std::abort();
  }
  return 0;
}
