#include "six_ink_rendering.h"

#include "six_ink_separation.h"

#include <algorithm>
#include <cmath>

using ZelClr::Formulas::kD50White;
using ZelClr::Formulas::Lab;
using ZelClr::Formulas::Xyz;

namespace {

constexpr double kTurn = 2.0 * 3.14159265358979323846;
constexpr double kMiddle = 50.0; // L
constexpr double kMostReach = 160.0;
constexpr double kLeftAlone = 0.7;

bool OnPress(const Lab &lab)
{
  return Miss(lab, SixInksFor(lab, {})) < 0.5;
}

double BlackestOfPress()
{
  return ZelClr::Formulas::XyzFromCieLab(LabFromSixInks(SixInksFor({0, 0, 0}, {1, 1, 1, 1, 0, 0}))).y;
}

double FromMiddle(const Lab &lab)
{
  return std::hypot(lab.l - kMiddle, lab.a, lab.b);
}

Lab Scaled(const Lab &lab, double factor)
{
  return {kMiddle + factor * (lab.l - kMiddle), factor * lab.a, factor * lab.b};
}

} // namespace

Reach::Reach(const Contains &contains)
{
  for (std::size_t i = 0; i < kElevations; ++i) {
    for (std::size_t j = 0; j < kHues; ++j) {
      const double elevation = kTurn / 2.0 * (static_cast<double>(i) / (kElevations - 1) - 0.5);
      const double hue = kTurn * static_cast<double>(j) / kHues;
      const Lab direction = {kMiddle + std::sin(elevation), std::cos(elevation) * std::cos(hue),
                             std::cos(elevation) * std::sin(hue)};
      double reached = 0;
      for (double step = kMostReach / 2; step > 0.1; step /= 2) {
        if (contains(Scaled(direction, reached + step)))
          reached += step;
      }
      reached_[i][j] = reached;
    }
  }
}

double Reach::Towards(const Lab &lab) const
{
  const double elevation = std::atan2(lab.l - kMiddle, std::hypot(lab.a, lab.b)) / kTurn * 2.0 + 0.5;
  const double turned = std::atan2(lab.b, lab.a) / kTurn;
  const double row = elevation * (kElevations - 1);
  const double column = (turned < 0 ? turned + 1.0 : turned) * kHues;
  const auto i = std::min(static_cast<std::size_t>(row), kElevations - 2);
  const auto j = static_cast<std::size_t>(column) % kHues;
  const auto across = [&](std::size_t r) {
    return std::lerp(reached_[r][j], reached_[r][(j + 1) % kHues], column - std::floor(column));
  };
  return std::lerp(across(i), across(i + 1), row - static_cast<double>(i));
}

SixInkRendering::SixInkRendering()
  : blackest_(BlackestOfPress()),
    screen_([this](const Lab &lab) { return OnScreen(lab); }),
    press_(OnPress)
{}

// Y' = (1 - b) Y + b, and so X and Z relative to white.
Lab SixInkRendering::Lifted(const Lab &lab) const
{
  const Xyz xyz = ZelClr::Formulas::XyzFromCieLab(lab);
  const auto lifted = [this](double t, double white) { return (1.0 - blackest_) * t + blackest_ * white; };
  return ZelClr::Formulas::CieLabFromXyz(
    {lifted(xyz.x, kD50White.x), lifted(xyz.y, kD50White.y), lifted(xyz.z, kD50White.z)});
}

bool SixInkRendering::OnScreen(const Lab &lifted) const
{
  const Xyz xyz = ZelClr::Formulas::XyzFromCieLab(lifted);
  const auto lowered = [this](double t, double white) { return (t - blackest_ * white) / (1.0 - blackest_); };
  const double x = lowered(xyz.x, kD50White.x);
  const double y = lowered(xyz.y, kD50White.y);
  const double z = lowered(xyz.z, kD50White.z);
  // Linear sRGB, the inverse of XyzFromSrgb, not cut off.
  const auto inside = [](double linear) { return linear > -1e-4 && linear < 1.0001; };
  return inside(3.1338561 * x - 1.6168667 * y - 0.4906146 * z) &&
         inside(-0.9787684 * x + 1.9161415 * y + 0.0334540 * z) &&
         inside(0.0719453 * x - 0.2289914 * y + 1.4052427 * z);
}

Lab SixInkRendering::Perceptual(const Lab &lab) const
{
  const Lab lifted = Lifted(lab);
  const double distance = FromMiddle(lifted);
  const double press = press_.Towards(lifted);
  const double screen = screen_.Towards(lifted);
  const double kept = kLeftAlone * press;
  if (screen <= press || distance <= kept)
    return lifted;
  return Scaled(lifted, (kept + (distance - kept) * (press - kept) / (screen - kept)) / distance);
}

Lab SixInkRendering::Saturation(const Lab &lab) const
{
  const Lab lifted = Lifted(lab);
  return Scaled(lifted, press_.Towards(lifted) / screen_.Towards(lifted));
}
