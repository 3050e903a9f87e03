// What colours blend in: the components that are interpolated, and how colours become such numbers and back.
//
// One of three: the tints of one ink, by their density; the plates of one DeviceN space; a process model, by all of its
// components. docs/fountains.md has the rules of the choice.
//
// Threads: a value; a const space may be used by many threads. Errors: empty results and false.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <memory>
#include <optional>
#include <span>

namespace ColorSystem {
class ColorContext;
}

namespace ZelClr {

/// Whether the colour is one that has nothing to blend but a density.
bool IsInk(const CLR_COLORSPEC &colour);
/// A process colour, or an ink by its appearance, in another process model; false where it has none.
bool ToModel(const CLR_COLORSPEC &colour, unsigned model, ColorSystem::ColorContext &context, CLR_COLORSPEC &result);

class BlendSpace
{
public:
  /// Empty for no colours, and where one has no appearance that could be blended with the others. No colour is null or
  /// a reference.
  static std::optional<BlendSpace> For(std::span<const CLR_COLORSPEC *const> colours, bool keepInks);

  unsigned Model() const { return prototype_.GetType(); }
  /// How many numbers stand for a colour.
  std::size_t Size() const { return plates_ != 0 ? plates_ : components_.size(); }
  /// Whether its colours may have a hue: gray, tints and plates have none.
  bool HasHue() const;
  /// No number of a valid colour is above.
  double FullScale() const;

  /// The numbers of a colour, converted through the context where it is none of the space. They are finite.
  bool Load(const CLR_COLORSPEC &colour, ColorSystem::ColorContext &context, std::span<double> numbers) const;
  /// Colours of numbers, rounded to the nearest and cut off to what the record holds. All first numbers stand first,
  /// then all second ones: Size() * colours.size() in all.
  void Store(std::span<const double> columns, std::span<CLR_COLORSPEC> colours) const;

private:
  static std::optional<BlendSpace> OfOneInk(std::span<const CLR_COLORSPEC *const> colours);
  static std::optional<BlendSpace> OfPlates(std::span<const CLR_COLORSPEC *const> colours);
  static std::optional<BlendSpace> OfProcess(std::span<const CLR_COLORSPEC *const> colours);
  bool LoadPlates(const CLR_COLORSPEC &colour, ColorSystem::ColorContext &context, std::span<double> numbers) const;
  void StorePlates(std::span<const double> columns, std::span<CLR_COLORSPEC> colours) const;

  CLR_COLORSPEC prototype_; // all that its colours have in common
  bool isInk_ = false;
  std::span<const ColourComponent> components_;
  std::size_t plates_ = 0;
};

} // namespace ZelClr
