// Numbers as palette files have them: read as far as they are numbers, in the C locale, and never refused.
//
// Threads: plain functions. Errors: what does not begin with a number is 0.
#pragma once

#include <string>
#include <string_view>

namespace ZelClr::Internal {

/// The decimal fraction up to the next comma, which is taken out of `rest` with it. One that no number of its type
/// holds is the nearest that it does; "inf" and "nan" are no numbers.
double NextFraction(std::string_view &rest);
float NextFloat(std::string_view &rest);
/// A whole number; one beyond the range of int is the nearest end of it.
int WholeNumber(std::string_view text);

/// 0 to 1 on a scale of whole units, rounded half up; what is beyond is the nearest end.
int UnitOfFraction(double fraction, int scale);
/// The shortest decimals that UnitOfFraction makes this unit of again, 0 to scale; of those, the nearest to the unit.
std::string ShortestFraction(int unit, int scale);

} // namespace ZelClr::Internal
