// The colour of a list that is least different from another, for lists that are asked often.
//
// Threads: a value; Find may be called by many threads. Errors: -1.
#pragma once

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/convert/formulas/record_lab.h"

#include <memory>
#include <span>
#include <vector>

namespace ColorSystem {
class ColorManagementSystem;
}

namespace ZelClr {

class ClosestColor
{
public:
  /// Works out the Lab of every colour once.
  ClosestColor(std::span<const CLR_COLORSPEC> colors, const ColorSystem::ColorContext &context);

  /// Whether it was made for this context, and the engine in force.
  bool IsFor(const ColorSystem::ColorContext &context) const;
  /// The index of the colour with the least CIEDE2000; the first of several. -1 when none, or the colour asked for, has
  /// an appearance.
  int Find(const CLR_COLORSPEC &color) const;

private:
  struct Candidate
  {
    Formulas::Lab lab;
    double chroma;
    int index;
  };

  std::shared_ptr<const ColorSystem::ColorManagementSystem> engine_;
  ColorSystem::ColorContext context_;
  ColorSystem::ColorConverter converter_;
  std::vector<Candidate> candidates_;
};

} // namespace ZelClr
