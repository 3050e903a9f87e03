// Division of whole numbers in a form that processors do many times at once.
//
// Threads and errors: plain arithmetic.
#pragma once

namespace ZelClr::Formulas {

/// numerator / denominator truncated toward zero, for |numerator| < 2^24 and a denominator that is not 0.
///
/// No processor divides vectors of whole numbers, all divide vectors of floats. The result is the same: the quotient q
/// of whole numbers n / d that is not whole lies at least 1/d away from the next whole number, and rounding it to a
/// float moves it by at most q * 2^-24 = n/d * 2^-24, which is less than 1/d because n < 2^24.
constexpr int Quotient(int numerator, int denominator)
{
  return static_cast<int>(static_cast<float>(numerator) / static_cast<float>(denominator));
}

/// condition ? yes : no of values that are known already, for loops: without a jump.
constexpr int Choose(bool condition, int yes, int no)
{
  return condition ? yes : no;
}

/// The same for |numerator| < 2^53.
constexpr int WideQuotient(double numerator, int denominator)
{
  return static_cast<int>(numerator / static_cast<double>(denominator));
}

} // namespace ZelClr::Formulas
