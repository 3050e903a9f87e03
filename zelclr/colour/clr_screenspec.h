// The halftone screen of a plate: its dot, its angle, its frequency, and whether the plate overprints.
//
// Threads: a value. Errors: none are reported; numbers are stored as given.
#pragma once

#include "zelclr/platform/xml.h"

#include <compare>
#include <cstdint>

struct ZELCLR_API CLR_SCREENSPEC
{
  /// The defaults below.
  void Init() { *this = CLR_SCREENSPEC(); }

  /// Field by field in their order, each as a number.
  friend auto operator<=>(const CLR_SCREENSPEC &a, const CLR_SCREENSPEC &b) = default;
  /// 1 when the other is less, -1 when this one is, else 0. With `overprintOnly` this overprint minus the other's, cut
  /// off to 32 bits.
  ///
  /// KEPT: with `overprintOnly` two plates that both overprint may differ, 1 from 2, where one would expect a flag; and
  /// the answer may be any number; callers depend on it.
  int CompareTo(const CLR_SCREENSPEC &other, bool overprintOnly) const;

  /// Writes the attributes Spot, Overprint ("true" or "false"), Angle, Freq and UserFn of the child ScreenSpec, which
  /// is made where there is none. False where it cannot be made.
  ///
  /// KEPT: saving is given the parent of the element, loading the element itself, where one would expect the same node;
  /// callers depend on it.
  bool SaveScreenSpecIn(const ZelUtl::WXmlNode &parent) const;
  /// Sets the defaults, then each field whose attribute states a whole number that fits, or a truth ("true", "false",
  /// "1", "0"). False, with the defaults, for an element of another name.
  bool LoadScreenSpecFrom(const ZelUtl::WXmlNode &element);

  std::int16_t spot = 0;          ///< number of the function that shapes the dot
  std::int32_t overprint = 0;     ///< a flag: the plate overprints unless it is 0
  std::int32_t angle = 45000000;  ///< millionths of a degree
  std::uint16_t frequency = 60;   ///< lines per inch
  std::uint16_t userFunction = 0; ///< number of a function of the user's own
};
