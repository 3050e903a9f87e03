// A conversion through ICC profiles as a list of steps in floats, evaluated for many pixels at once.
//
// The steps are those that Little CMS takes, rounded where it rounds, so that results agree with its own float pipeline
// to about a hundredth of a step of 8 bits. Known are profiles of three curves and a matrix and those with tables of
// the types 8 and 16; whoever makes a pipeline compares it with the engine before trusting it, since adaptations of
// white and black, and other kinds of table, are not known.
// Source: ICC.1:2022, annexes A, D and F; CIE 15:2004 (Lab).
//
// Threads: values. Errors: an empty result for what is not known.
#pragma once

#include "zelclr/colorsystem/color_model.h"
#include "zelclr/platform/icc_file.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace ColorSystem::Internal {

/// y = scale * max(a x + b, 0)^gamma + e from d on, c x + f below; or a table, linear between its entries.
struct CurveStep
{
  float scale = 1, a = 1, b = 0, gamma = 1, e = 0, d = 0, c = 0, f = 0;
  std::vector<float> table; ///< of x from 0 to 1; empty for a formula
};

struct CurvesStep
{
  std::vector<CurveStep> curves;
};

struct MatrixStep
{
  std::array<float, 9> rows;
};

/// Both with XYZ divided by 1 + 32767/32768, and Lab by the scale of version 4.
struct LabFromXyzStep
{};
struct XyzFromLabStep
{};

struct GridStep
{
  unsigned inputs, outputs; ///< 3 or 4, 1 to 4
  unsigned grid;
  /// Between nodes linear along each of three inputs, as Little CMS does from Lab; else by tetrahedra of the last three
  /// inputs, and linear along the first of four.
  bool isTrilinear;
  std::vector<std::uint16_t> nodes; ///< four numbers each, the last input counts fastest
};

using PipelineStep = std::variant<CurvesStep, MatrixStep, LabFromXyzStep, XyzFromLabStep, GridStep>;

struct IccPipeline
{
  unsigned inputs = 0, outputs = 0; ///< up to 4
  std::vector<PipelineStep> steps;
};

struct PipelineProfile
{
  const ZelUtl::IccFile *file;
  RenderingIntent intent;
};

/// From the first profile to the last; of four, those between are one device, entered and left.
std::optional<IccPipeline> PipelineThrough(std::span<const PipelineProfile> chain);

/// Converts samples of 16 bits, pixel by pixel; several pixels a call, and the more the better. Both may be one.
void RunPipeline(const IccPipeline &pipeline, const std::uint16_t *source, std::uint16_t *destination,
                 std::size_t pixels);

} // namespace ColorSystem::Internal
