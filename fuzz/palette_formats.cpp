// Any bytes as a palette file: refused with a reason, or a book that every format can write, read again and write the
// same.

#include "zelclr/palettes/formats/palette_format.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  ZelClr::ReadProblem problem;
  const auto book = ZelClr::ReadSwatchBook({reinterpret_cast<const char *>(data), size}, problem);
  if (!book && problem.reason.empty())
    std::abort();
  if (!book)
    return 0;
  if (book->swatches.empty())
    std::abort();
  for (const ZelClr::PaletteFormat &format : ZelClr::PaletteFormats()) {
    if (format.write == nullptr)
      continue;
    std::string reason;
    const auto written = format.write(*book, reason);
    if (!written && reason.empty())
      std::abort();
    if (!written || format.read == nullptr)
      continue;
    const auto again = ZelClr::RecognisePaletteFormat(written->bytes) == &format ? format.read(written->bytes, problem)
                                                                                 : std::optional<ZelClr::SwatchBook>();
    const auto same = again ? format.write(*again, reason) : std::optional<ZelClr::WrittenPalette>();
    if (!same || same->bytes != written->bytes) {
      std::fprintf(stderr, "%s: %s%s\n", format.key.data(), problem.reason.c_str(), reason.c_str());
      std::abort();
    }
  }
  return 0;
}
