#include "six_ink_separation.h"

#include <algorithm>
#include <cmath>

using ZelClr::Formulas::Lab;

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

/// 0 below `from`, 1 above `to`, smooth between.
double Ramp(double from, double to, double x)
{
  const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
  return t * t * (3.0 - 2.0 * t);
}

/// What the separation would like for a colour, apart from meeting it.
struct Wish
{
  Lab lab;
  double cosine, sine; // of its hue
  double chromaWeight, hueWeight;
  Inks most;  // the bound of each ink
  Inks liked; // what each would be if it were free
};

// Weights of the wishes against a Delta E of 1: strong enough to decide between builds of the same colour, and so weak
// that they move it by some hundredths.
constexpr Inks kInsistence = {0.7, 0.7, 0.7, 3.0, 0.5, 0.5};

// What the press likes for its deepest neutral. Black rises towards it slowly, the others at once, so that shadows stay
// deep and their inks grow steadily.
constexpr double kLightestDark = 75.0;
constexpr double kDarkest = 10.0;
constexpr Inks kShadow = {0.85, 0.72, 0.62, 0.85, 0.0, 0.0};

// The total stays a little below the limit: the penalty gives way by that much.
constexpr double kPenalty = 200.0;
constexpr double kPenaltyFrom = kInkLimit - 0.01;

Wish WishFor(const Lab &lab)
{
  const double chroma = std::hypot(lab.a, lab.b);
  double hue = std::atan2(lab.b, lab.a) / kDegree;
  if (hue < -60.0)
    hue += 360.0;
  // Sectors by hue: orange's own is 55, yellow's 95, magenta's -2; green's own is 163, cyan's 234.
  const double warm = Ramp(-5, 45, hue) * (1.0 - Ramp(75, 110, hue));
  const double leafy = Ramp(100, 145, hue) * (1.0 - Ramp(180, 230, hue));
  const double coloured = Ramp(8, 45, chroma);

  Wish wish = {};
  wish.lab = lab;
  wish.cosine = chroma > 0 ? lab.a / chroma : 1.0;
  wish.sine = chroma > 0 ? lab.b / chroma : 0.0;
  wish.chromaWeight = 1.0 - 0.5 * Ramp(0, 20, chroma);
  wish.hueWeight = 1.0 + Ramp(0, 20, chroma);
  wish.most = {1.0, 1.0, 1.0, 1.0, warm * coloured, leafy * coloured};
  const double dark = std::clamp((kLightestDark - lab.l) / (kLightestDark - kDarkest), 0.0, 1.0);
  const double gray = 1.0 - 0.8 * Ramp(10, 80, chroma);
  for (const Ink ink : {kCyan, kMagenta, kYellow})
    wish.liked[ink] = kShadow[ink] * dark * gray;
  wish.liked[kBlack] = kShadow[kBlack] * dark * dark * gray;
  return wish;
}

constexpr std::size_t kResiduals = 3 + kInks + 1;
using Residuals = std::array<double, kResiduals>;

Residuals ResidualsOf(const Wish &wish, const Inks &inks)
{
  const Lab lab = LabFromSixInks(inks);
  const double a = lab.a - wish.lab.a;
  const double b = lab.b - wish.lab.b;
  Residuals residuals = {lab.l - wish.lab.l, wish.chromaWeight * (wish.cosine * a + wish.sine * b),
                         wish.hueWeight * (wish.cosine * b - wish.sine * a)};
  double total = 0;
  for (std::size_t i = 0; i < kInks; ++i) {
    residuals[3 + i] = kInsistence[i] * (inks[i] - wish.liked[i]);
    total += inks[i];
  }
  residuals.back() = kPenalty * std::max(0.0, total - kPenaltyFrom);
  return residuals;
}

double SquareOf(const Residuals &residuals)
{
  double sum = 0;
  for (const double residual : residuals)
    sum += residual * residual;
  return sum;
}

using Square = std::array<std::array<double, kInks>, kInks>;

/// x of A x = b for a positive definite A: Gauss' elimination needs no pivots then.
Inks Solved(Square a, Inks b)
{
  for (std::size_t i = 0; i < kInks; ++i) {
    for (std::size_t j = i + 1; j < kInks; ++j) {
      const double factor = a[j][i] / a[i][i];
      for (std::size_t k = i; k < kInks; ++k)
        a[j][k] -= factor * a[i][k];
      b[j] -= factor * b[i];
    }
  }
  for (std::size_t i = kInks; i-- > 0;) {
    for (std::size_t k = i + 1; k < kInks; ++k)
      b[i] -= a[i][k] * b[k];
    b[i] /= a[i][i];
  }
  return b;
}

Inks Within(Inks inks, const Inks &most)
{
  for (std::size_t i = 0; i < kInks; ++i)
    inks[i] = std::clamp(inks[i], 0.0, most[i]);
  return inks;
}

struct Build
{
  Inks inks;
  double cost;
};

/// Least squares by Levenberg and Marquardt, within bounds: an ink at a bound that wants to go beyond it is left out of
/// the step.
Build Descended(const Wish &wish, const Inks &start)
{
  Inks inks = Within(start, wish.most);
  Residuals residuals = ResidualsOf(wish, inks);
  double cost = SquareOf(residuals);
  double damping = 1e-2;
  for (int i = 0; i < 60 && damping < 1e8; ++i) {
    std::array<Residuals, kInks> slopes;
    Inks gradient = {};
    for (std::size_t ink = 0; ink < kInks; ++ink) {
      constexpr double kStep = 1e-5;
      Inks moved = inks;
      moved[ink] += kStep;
      const Residuals ahead = ResidualsOf(wish, moved);
      for (std::size_t r = 0; r < kResiduals; ++r) {
        slopes[ink][r] = (ahead[r] - residuals[r]) / kStep;
        gradient[ink] += slopes[ink][r] * residuals[r];
      }
    }
    Square normal = {};
    Inks down = {};
    for (std::size_t row = 0; row < kInks; ++row) {
      const bool stuck = (inks[row] <= 0.0 && gradient[row] > 0) || (inks[row] >= wish.most[row] && gradient[row] < 0);
      normal[row][row] = 1.0;
      if (stuck) {
        slopes[row] = {};
        continue;
      }
      down[row] = -gradient[row];
      for (std::size_t column = 0; column < row; ++column) {
        double sum = 0;
        for (std::size_t r = 0; r < kResiduals; ++r)
          sum += slopes[row][r] * slopes[column][r];
        normal[row][column] = normal[column][row] = sum;
      }
      normal[row][row] = SquareOf(slopes[row]);
    }
    bool better = false;
    double moved = 0;
    while (!better && damping < 1e8) {
      Square damped = normal;
      for (std::size_t row = 0; row < kInks; ++row)
        damped[row][row] *= 1.0 + damping;
      const Inks step = Solved(damped, down);
      Inks tried = inks;
      for (std::size_t ink = 0; ink < kInks; ++ink)
        tried[ink] += step[ink];
      tried = Within(tried, wish.most);
      const Residuals there = ResidualsOf(wish, tried);
      better = SquareOf(there) < cost;
      if (better) {
        for (std::size_t ink = 0; ink < kInks; ++ink)
          moved = std::max(moved, std::abs(tried[ink] - inks[ink]));
        inks = tried;
        residuals = there;
        cost = SquareOf(there);
        damping /= 5.0;
      } else {
        damping *= 4.0;
      }
    }
    if (moved < 1e-6)
      break;
  }
  return {inks, cost};
}

} // namespace

Inks SixInksFor(const Lab &wanted, const Inks &near)
{
  const Wish wish = WishFor(wanted);
  Build best = Descended(wish, near);
  for (const Inks &start : {Inks{0.3, 0.3, 0.3, 0.1, 0.3, 0.3}, Inks{0.6, 0.6, 0.6, 0.6, 0, 0}}) {
    const Build other = Descended(wish, start);
    if (other.cost < best.cost)
      best = other;
  }
  return best.inks;
}

double Miss(const Lab &wanted, const Inks &inks)
{
  const Lab lab = LabFromSixInks(inks);
  return std::sqrt((lab.l - wanted.l) * (lab.l - wanted.l) + (lab.a - wanted.a) * (lab.a - wanted.a) +
                   (lab.b - wanted.b) * (lab.b - wanted.b));
}
