// Sampling a conversion into tables, and the tables' choice for a buffer.
//
// Threads: plain functions. Errors: an empty result where the conversion cannot be had by table.
#pragma once

#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colorsystem/internal/baked_matrix.h"
#include "zelclr/colorsystem/internal/baked_table.h"
#include "zelclr/platform/icc_matrix.h"

#include <functional>
#include <memory>
#include <optional>

namespace ColorSystem::Internal {

/// Converts samples of 16 bits, without flags, as exactly as the engine can.
using FineConversion = std::function<bool(const ColorData &source, ColorData &destination)>;

/// Whether pixels of these formats can be converted by a table: 8 or 16 bits, one, three or four inputs, up to four
/// outputs.
bool CanBake(const PixelFormat &source, const PixelFormat &destination);

/// The nodes along each input where nobody asks for another number: what Little CMS uses for its own tables, and for
/// one input as many as it has values.
unsigned StandardGrid(const PixelFormat &source);

/// The places of a table's nodes: a pixel of 16 bits, without flags, for each.
struct BakedNodes
{
  unsigned grid; ///< what was asked for, cut off to what a table can have
  std::unique_ptr<ColorData> pixels;
};
BakedNodes NodesFor(const PixelFormat &source, unsigned grid);

/// Samples at every node.
std::optional<BakedTable> BakeTable(const PixelFormat &source, const PixelFormat &destination, unsigned grid,
                                    const FineConversion &convert);

/// From one profile to another, both curves and a matrix; empty when `convert` shows that more is between them (an
/// adaptation of white or black), and for any format but Rgb of 8 bits.
std::optional<BakedMatrix> BakeMatrix(const PixelFormat &source, const ZelUtl::IccMatrix &from,
                                      const PixelFormat &destination, const ZelUtl::IccMatrix &to,
                                      const FineConversion &convert);

} // namespace ColorSystem::Internal
