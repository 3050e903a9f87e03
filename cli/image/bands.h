// A whole image in bands of rows.
//
// Errors: what the reader and the function throw.
#pragma once

#include "cli/image/image_file.h"

#include <functional>
#include <string>

namespace cli {

struct Band
{
  std::uint32_t rows;
  std::uint8_t *colours;     ///< the function's to change
  const std::uint8_t *alpha; ///< null for an image without
};

/// Gives every row of an image to a function, in order. Each band has at least 65,536 pixels unless the whole image has
/// fewer: transforms treat larger buffers differently from smaller ones, and no seam may show where bands meet. On a
/// terminal, `what` and the progress stand on standard error meanwhile.
void ForEachBand(ImageReader &reader, const std::string &what, const std::function<void(const Band &)> &use);

} // namespace cli
