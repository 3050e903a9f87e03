// The kinds of tints: one table. docs/tints.md says in words and formulas what each does.
//
// Threads: constant tables.
#pragma once

#include "zelclr/colour/fills/tint.h"

#include <span>
#include <string_view>

namespace ZelClr {

/// Of which model a tinted colour is.
enum class TintModel
{
  Own,             ///< its own, where that can hold the result
  RgbWhenNegative, ///< its own; RGB255 for a level below 0
  Rgb,             ///< RGB255
};

struct TintKind
{
  std::uint8_t number; ///< frozen: documents hold it
  std::string_view name;
  TintColourOperation *colourOperation;
  TintPixelOperation *pixelOperation;
  TintModel model;
  bool doesGradients; ///< whether the tinted stops of a gradient give the tinted gradient
  /// What can be known of a tint before it is applied; null for the kinds that need nothing.
  std::shared_ptr<const TintRamp> (*privateData)(const TINT &tint);
};

/// Kinds 0 to 10, in this order.
ZELCLR_API std::span<const TintKind> TintKinds();
/// A number without a meaning acts as kind 2.
///
/// KEPT: but its model counts as TintModel::Own, where one would expect that of kind 2; callers depend on it.
ZELCLR_API TintKind FindTintKind(std::uint8_t number);

} // namespace ZelClr
