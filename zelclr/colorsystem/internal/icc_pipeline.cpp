#include "zelclr/colorsystem/internal/icc_pipeline.h"

#include "zelclr/colorsystem/internal/matrices.h"
#include "zelclr/platform/icc_lut.h"
#include "zelclr/platform/icc_matrix.h"

#include <algorithm>
#include <cmath>

namespace ColorSystem::Internal {

namespace {

using ZelUtl::IccFile;
using ZelUtl::IccSignature;

/// What XYZ of 1 is divided by in a pipeline.
constexpr double kXyzScale = 1.0 + 32767.0 / 32768.0;
/// From the Lab of version 2, whose 100 is FF00, to that of version 4, and back.
constexpr double kLabOf4 = 65535.0 / 65280.0;

constexpr std::size_t kMostTagBytes = std::size_t{1} << 24;

// --- Curves ----------------------------------------------------------------------------------------------------------

CurveStep TableCurve(std::vector<float> table)
{
  CurveStep step;
  step.table = std::move(table);
  return step;
}

std::vector<float> Floats(const std::vector<double> &numbers)
{
  return {numbers.begin(), numbers.end()};
}

CurveStep Forward(const ZelUtl::IccCurve &curve)
{
  if (!curve.table.empty())
    return TableCurve(Floats(curve.table));
  const auto f = [](double number) { return static_cast<float>(number); };
  return {1, f(curve.a), f(curve.b), f(curve.gamma), f(curve.e), f(curve.d), f(curve.c), f(curve.f), {}};
}

/// A table of as many entries as Little CMS gives the inverse of one, rounded to 16 bits.
std::optional<CurveStep> InverseOfTable(const std::vector<double> &table)
{
  if (!std::is_sorted(table.begin(), table.end()) || table.front() == table.back())
    return std::nullopt;
  constexpr std::size_t kEntries = 4096;
  std::vector<float> inverse(kEntries);
  const double last = static_cast<double>(table.size() - 1);
  for (std::size_t i = 0; i < kEntries; ++i) {
    const double y = static_cast<double>(i) / (kEntries - 1);
    const auto above = std::lower_bound(table.begin(), table.end(), y);
    double x = 1.0;
    if (above == table.begin()) {
      x = 0.0;
    } else if (above != table.end()) {
      const double low = above[-1];
      x = (static_cast<double>(above - table.begin() - 1) + (y - low) / (*above - low)) / last;
    }
    inverse[i] = static_cast<float>(std::round(x * 65535.0) / 65535.0);
  }
  return TableCurve(std::move(inverse));
}

std::optional<CurveStep> Inverse(const ZelUtl::IccCurve &curve)
{
  if (!curve.table.empty())
    return InverseOfTable(curve.table);
  if (!(curve.gamma > 0.0) || !(curve.a > 0.0))
    return std::nullopt;
  const double bend = std::pow(std::max(curve.a * curve.d + curve.b, 0.0), curve.gamma) + curve.e;
  const bool isLinearBelow = curve.c > 0.0;
  const auto f = [](double number) { return static_cast<float>(number); };
  return CurveStep{f(1.0 / curve.a),
                   1.0f,
                   f(-curve.e),
                   f(1.0 / curve.gamma),
                   f(-curve.b / curve.a),
                   f(bend),
                   isLinearBelow ? f(1.0 / curve.c) : 0.0f,
                   isLinearBelow ? f(-curve.f / curve.c) : 0.0f,
                   {}};
}

// --- Profiles --------------------------------------------------------------------------------------------------------

MatrixStep Scaled(const Matrix &matrix, double scale)
{
  MatrixStep step;
  for (std::size_t i = 0; i < 9; ++i)
    step.rows[i] = static_cast<float>(matrix[i / 3][i % 3] * scale);
  return step;
}

MatrixStep Scale(double scale)
{
  return Scaled({{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, scale);
}

bool IsLab(std::uint32_t space)
{
  return space == IccSignature("Lab ");
}

/// Of the device; 0 for one that is not known here.
unsigned ChannelsOf(const IccFile &file)
{
  switch (file.Header().colourSpace) {
  case IccSignature("RGB "):
  case IccSignature("Lab "):
    return 3;
  case IccSignature("CMYK"):
    return 4;
  default:
    return 0;
  }
}

bool AddMatrixToXyz(const IccFile &file, std::vector<PipelineStep> &steps)
{
  const auto profile = ZelUtl::IccMatrixOf(file);
  if (!profile)
    return false;
  CurvesStep curves;
  for (const ZelUtl::IccCurve &curve : profile->curves)
    curves.curves.push_back(Forward(curve));
  steps.emplace_back(std::move(curves));
  steps.emplace_back(Scaled(ColumnsOf(profile->colorants), 1.0 / kXyzScale));
  return true;
}

bool AddMatrixFromXyz(const IccFile &file, std::vector<PipelineStep> &steps)
{
  const auto profile = ZelUtl::IccMatrixOf(file);
  if (!profile)
    return false;
  const Matrix inverse = InverseOf(ColumnsOf(profile->colorants));
  if (!IsFinite(inverse))
    return false;
  CurvesStep curves;
  for (const ZelUtl::IccCurve &curve : profile->curves) {
    auto step = Inverse(curve);
    if (!step)
      return false;
    curves.curves.push_back(*std::move(step));
  }
  steps.emplace_back(Scaled(inverse, kXyzScale));
  steps.emplace_back(std::move(curves));
  return true;
}

CurvesStep CurvesOf(std::vector<std::vector<float>> tables)
{
  CurvesStep step;
  for (auto &table : tables)
    step.curves.push_back(TableCurve(std::move(table)));
  return step;
}

/// The table of a tag, for up to four channels each way.
bool AddLut(ZelUtl::IccLut lut, bool isTrilinear, std::vector<PipelineStep> &steps)
{
  constexpr std::array<double, 9> kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  const bool hasMatrix = lut.inputs == 3 && lut.matrix != kIdentity;
  if (hasMatrix || (lut.inputs != 3 && lut.inputs != 4) || lut.outputs > 4)
    return false;
  steps.emplace_back(CurvesOf(std::move(lut.inputCurves)));
  GridStep grid = {lut.inputs, lut.outputs, lut.grid, isTrilinear && lut.inputs == 3, {}};
  grid.nodes.resize(lut.table.size() / lut.outputs * 4);
  for (std::size_t i = 0; i < lut.table.size(); ++i)
    grid.nodes[i / lut.outputs * 4 + i % lut.outputs] = static_cast<std::uint16_t>(lut.table[i] * 65535.0f + 0.5f);
  steps.emplace_back(std::move(grid));
  steps.emplace_back(CurvesOf(std::move(lut.outputCurves)));
  return true;
}

/// The tag of an intent, else that of the perceptual one; null when there is neither.
const ZelUtl::IccTag *TableTag(const IccFile &file, bool toConnection, RenderingIntent intent)
{
  constexpr std::uint32_t kTo[] = {IccSignature("A2B0"), IccSignature("A2B1"), IccSignature("A2B2")};
  constexpr std::uint32_t kFrom[] = {IccSignature("B2A0"), IccSignature("B2A1"), IccSignature("B2A2")};
  const auto &names = toConnection ? kTo : kFrom;
  const bool isAbsolute = intent == RenderingIntent::AbsoluteColorimetric; // the relative one, and white besides
  const auto *const tag = file.Find(names[isAbsolute ? 1 : static_cast<std::size_t>(intent) % 3]);
  return tag != nullptr ? tag : file.Find(names[0]);
}

std::optional<ZelUtl::IccLut> LutOf(const IccFile &file, const ZelUtl::IccTag &tag)
{
  return tag.size > kMostTagBytes ? std::nullopt : ZelUtl::IccLutFromTag(file.ReadTag(tag, tag.size));
}

bool AddToConnection(const IccFile &file, RenderingIntent intent, std::vector<PipelineStep> &steps)
{
  const auto *const tag = TableTag(file, true, intent);
  if (tag == nullptr)
    return AddMatrixToXyz(file, steps);
  auto lut = LutOf(file, *tag);
  if (!lut || lut->inputs != ChannelsOf(file) || lut->outputs != 3)
    return false;
  const bool isOldLab = lut->isWide && IsLab(file.Header().connectionSpace);
  if (isOldLab && IsLab(file.Header().colourSpace))
    steps.emplace_back(Scale(1.0 / kLabOf4));
  if (!AddLut(*std::move(lut), false, steps))
    return false;
  if (isOldLab)
    steps.emplace_back(Scale(kLabOf4));
  return true;
}

bool AddFromConnection(const IccFile &file, RenderingIntent intent, std::vector<PipelineStep> &steps)
{
  const auto *const tag = TableTag(file, false, intent);
  if (tag == nullptr)
    return AddMatrixFromXyz(file, steps);
  auto lut = LutOf(file, *tag);
  if (!lut || lut->inputs != 3 || lut->outputs != ChannelsOf(file))
    return false;
  const bool isLab = IsLab(file.Header().connectionSpace);
  const bool isOldLab = lut->isWide && isLab;
  if (isOldLab)
    steps.emplace_back(Scale(1.0 / kLabOf4));
  if (!AddLut(*std::move(lut), isLab, steps))
    return false;
  if (isOldLab && IsLab(file.Header().colourSpace))
    steps.emplace_back(Scale(kLabOf4));
  return true;
}

bool IsKnown(const IccFile &file)
{
  const bool hasElements = std::any_of(file.Tags().begin(), file.Tags().end(), [](const ZelUtl::IccTag &tag) {
    const std::uint32_t kind = tag.signature >> 8;
    return kind == IccSignature("D2B ") >> 8 || kind == IccSignature("B2D ") >> 8;
  });
  const std::uint32_t space = file.Header().connectionSpace;
  return !hasElements && (IsLab(space) || space == IccSignature("XYZ ")) && AreIccTablesSound(file);
}

} // namespace

std::optional<IccPipeline> PipelineThrough(std::span<const PipelineProfile> chain)
{
  IccPipeline pipeline;
  pipeline.inputs = ChannelsOf(*chain.front().file);
  pipeline.outputs = ChannelsOf(*chain.back().file);
  if (pipeline.inputs == 0 || pipeline.outputs == 0 || chain.size() % 2 != 0)
    return std::nullopt;
  for (std::size_t i = 0; i + 1 < chain.size(); i += 2) {
    const IccFile &from = *chain[i].file, &to = *chain[i + 1].file;
    if (!IsKnown(from) || !IsKnown(to) || !AddToConnection(from, chain[i].intent, pipeline.steps))
      return std::nullopt;
    const bool isFromLab = IsLab(from.Header().connectionSpace), isToLab = IsLab(to.Header().connectionSpace);
    if (isFromLab && !isToLab)
      pipeline.steps.emplace_back(XyzFromLabStep());
    else if (!isFromLab && isToLab)
      pipeline.steps.emplace_back(LabFromXyzStep());
    if (!AddFromConnection(to, chain[i + 1].intent, pipeline.steps))
      return std::nullopt;
  }
  return pipeline;
}

} // namespace ColorSystem::Internal
