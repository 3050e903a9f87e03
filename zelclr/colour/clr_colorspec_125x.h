// The colour record of older documents: fixed layout, twelve bytes, no pointers.
//
// Threads: a value. Errors: a record that cannot be a colour becomes an invalid colour.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// An older colour record as it stands in files, least significant byte first.
///
/// | bytes | meaning                                                                            |
/// |-------|------------------------------------------------------------------------------------|
/// | 0-1   | model number, as today; 26 and above did not exist                                  |
/// | 2-3   | palette type (palette_types.h) in the low byte, 0 for no palette; the high byte,        |
/// |       | type of the palette that a user ink was made from, says nothing of the colour itself |
/// | 4-11  | bytes 0 to 7 of today's component data                                              |
///
/// A spot colour comes without its definition. Frozen: documents hold these records.
struct CLR_COLORSPEC_125X
{
  std::array<std::uint8_t, 2> model{};
  std::array<std::uint8_t, 2> paletteType{};
  std::array<std::uint8_t, 8> components{};
};

static_assert(sizeof(CLR_COLORSPEC_125X) == 12);
static_assert(offsetof(CLR_COLORSPEC_125X, components) == 4);
