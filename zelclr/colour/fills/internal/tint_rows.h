// Rows of pixels by the formulas of tints, many pixels at once.
//
// Threads: plain functions. Errors: none; every byte is a component.
#pragma once

#include "zelclr/colour/fills/internal/tint_formulas.h"

#include <cstddef>

namespace ZelClr {

// Tint packed pixels (blue, green, red) in place; bit by bit as the formula does each, whatever instructions the
// processor has.
void TintRow(const TintFormulas::Mixed &formula, std::uint8_t *pixels, std::size_t count);
void TintRow(const TintFormulas::Shifted &formula, std::uint8_t *pixels, std::size_t count);
void TintRow(const TintFormulas::Lit &formula, std::uint8_t *pixels, std::size_t count);
void TintRow(const TintFormulas::Inverted &formula, std::uint8_t *pixels, std::size_t count);
void TintRow(const TintFormulas::Ramped &formula, std::uint8_t *pixels, std::size_t count);

} // namespace ZelClr
