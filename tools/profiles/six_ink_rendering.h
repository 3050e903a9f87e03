// What a colour of a screen is to become on the six-ink press: the perceptual and the saturation intent.
//
// Both first lift black to the press's blackest (black point compensation, ISO 18619:2015). Then they move a colour to
// or from a middle gray, in the plane of its hue. Of the way that the press reaches in its direction, the
//   perceptual intent   leaves the first 70 % alone, and fits what the screen has beyond into the rest;
//   saturation intent   takes as large a part as the colour takes of what the screen reaches.
//
// Threads: constant after construction.
#pragma once

#include "zelclr/convert/formulas/srgb_lab.h"

#include <array>
#include <functional>

/// How far a gamut reaches from the middle gray in every direction.
class Reach
{
public:
  using Contains = std::function<bool(const ZelClr::Formulas::Lab &)>;

  explicit Reach(const Contains &contains);

  /// In the direction of a colour: Delta E*ab from the middle gray.
  double Towards(const ZelClr::Formulas::Lab &lab) const;

private:
  static constexpr std::size_t kElevations = 61;
  static constexpr std::size_t kHues = 90;

  std::array<std::array<double, kHues>, kElevations> reached_ = {};
};

class SixInkRendering
{
public:
  SixInkRendering();

  ZelClr::Formulas::Lab Perceptual(const ZelClr::Formulas::Lab &lab) const;
  ZelClr::Formulas::Lab Saturation(const ZelClr::Formulas::Lab &lab) const;

private:
  double blackest_; // Y
  Reach screen_;    // with its black lifted
  Reach press_;

  ZelClr::Formulas::Lab Lifted(const ZelClr::Formulas::Lab &lab) const;
  bool OnScreen(const ZelClr::Formulas::Lab &lifted) const;
};
