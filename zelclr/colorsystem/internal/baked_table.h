// A conversion that is known at the nodes of a grid: what is between them is interpolated by rows of pixels at a time.
//
// Three and four inputs are cut into simplices (tetrahedra of three): the inputs' places within their cell, in falling
// order, say which corners of the cell lie around a colour, one for each input and one more. On the diagonal of a cell
// only its two ends count, so that neutrals between neutral nodes are neutral. One input is a line between nodes.
// Source: S. Kasson, S. Nin, W. Plouffe, J. Hafner, "Performing color space conversions with three-dimensional linear
// interpolation", Journal of Electronic Imaging 4(3), 1995; for four inputs the same by ordering.
//
// Threads: values. Errors: said at the functions.
#pragma once

#include <cstdint>
#include <vector>

namespace ColorSystem::Internal {

struct BakedTable
{
  unsigned inputs = 0;  ///< 1, 3 or 4
  unsigned outputs = 0; ///< 1 to 4
  unsigned grid = 0;    ///< nodes along each input, 2 to 256
  /// Four numbers to a node, 32767 full scale, unused ones zero. The nodes count by their last input fastest: that of
  /// inputs i, j, k is number (i * grid + j) * grid + k. Inputs and outputs have the order of the pixels' memory.
  std::vector<std::uint16_t> nodes;
};

} // namespace ColorSystem::Internal
