// What cyan, magenta, yellow, black, orange and green look like over each other on coated paper: a model, not a
// measurement. The four process inks and their overprints are those of FOGRA39L; orange and green are two inks as they
// could be bought, and their overprints are estimated.
//
// Threads and errors: plain arithmetic.
#pragma once

#include "zelclr/convert/formulas/srgb_lab.h"

#include <array>

inline constexpr std::size_t kInks = 6;

/// Cyan, magenta, yellow, black, orange, green; 0 to 1 = solid.
using Inks = std::array<double, kInks>;

enum Ink : std::size_t
{
  kCyan,
  kMagenta,
  kYellow,
  kBlack,
  kOrange,
  kGreen
};

inline constexpr std::array<const char *, kInks> kInkNames = {"Cyan", "Magenta", "Yellow", "Black", "Orange", "Green"};

/// XYZ of the paper under D50, Y = 1 for a perfect white.
ZelClr::Formulas::Xyz PaperOfSixInks();

/// Lab relative to the paper: no ink is 100, 0, 0.
ZelClr::Formulas::Lab LabFromSixInks(const Inks &inks);
