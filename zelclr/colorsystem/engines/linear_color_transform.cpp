#include "zelclr/colorsystem/engines/linear_color_transform.h"

#include "zelclr/colorsystem/formula_pixels.h"

#include <cstring>

namespace ColorSystem {

namespace {

/// Xyz stays inside the library: formulas there are, transforms none.
bool Leads(ColorModel from, ColorModel to)
{
  return HasFormula(from, to) && from != ColorModel::Xyz && to != ColorModel::Xyz;
}

} // namespace

std::shared_ptr<ColorTransform> LinearColorTransform::Create(const ColorProfile &source,
                                                             const ColorProfile &destination,
                                                             const TransformOptions &options)
{
  const ColorModel between = ColorProfile(destination).GetColorModel();
  if (!Leads(options.source.model, between) || !Leads(between, options.destination.model))
    return IcmColorTransform::Create(source, destination, options);
  return std::shared_ptr<ColorTransform>(new LinearColorTransform(options, between, false));
}

std::shared_ptr<ColorTransform> LinearColorTransform::CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                                  const ColorProfile *display,
                                                                  const TransformOptions &options)
{
  const ColorModel between = ColorProfile(proof).GetColorModel();
  if (!Leads(options.source.model, between) || !Leads(between, options.destination.model))
    return IcmColorTransform::CreateProof(source, proof, display, options);
  return std::shared_ptr<ColorTransform>(new LinearColorTransform(options, between, display == nullptr));
}

bool LinearColorTransform::Convert(const ColorData &source, ColorData &destination) const
{
  if (!Fits(source, destination))
    return false;
  if (mask_) {
    for (std::uint32_t row = 0; row < destination.GetHeight(); ++row)
      std::memset(destination.GetRow(row), 0,
                  std::size_t{destination.GetWidth()} * options_.destination.BytesPerPixel());
    destination.FillAlpha();
    return true;
  }
  if (between_ == options_.destination.model || between_ == options_.source.model)
    return ConvertByFormula(source, destination);
  const auto buffer = CreateColorData({between_, SampleType::Float32}, source.GetWidth(), source.GetHeight());
  return ConvertByFormula(source, *buffer) && ConvertByFormula(*buffer, destination);
}

} // namespace ColorSystem
