// Visitors that convert colours from one colour context to another: of an object, or of a palette.
//
// Named and special colours survive a change of context: only process colours of device models, and DeviceN colours,
// are converted; references, spot and PANTONE colours, registration, user inks, BW, YIQ, LAB and the others stay.
// Threads and errors: as traverse_color.h. Copies share one converter, which lives as long as the last of them.
#pragma once

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/convert/visitors/traverse_color.h"

#include <memory>

namespace ColorSystem {
class ColorConverter;
}

class ZELCLR_API CColorConverterBase : public virtual CTraverseColorBase
{
public:
  CColorConverterBase();
  ~CColorConverterBase() override;
  CColorConverterBase(const CColorConverterBase &);
  CColorConverterBase &operator=(const CColorConverterBase &);

  /// Before the first colour. The contexts are copied.
  void CColorConverterBaseInit(const ColorSystem::ColorContext &source, const ColorSystem::ColorContext &target);

  const ColorSystem::ColorContext &GetSourceColorContext() const { return source_; }
  const ColorSystem::ColorContext &GetTargetColorContext() const { return target_; }
  /// Null until initialised.
  const std::shared_ptr<ColorSystem::ColorConverter> &GetColorConverter() const { return converter_; }

private:
  ColorSystem::ColorContext source_;
  ColorSystem::ColorContext target_;
  std::shared_ptr<ColorSystem::ColorConverter> converter_;
};

class ZELCLR_API CColorSpecConverter : public virtual CColorConverterBase, public virtual CTraverseColorSpec
{
public:
  /// In the colour's own model. kEFail, with the colour as it was, when it cannot be converted or nothing is
  /// initialised; kSFalse also for a colour that comes out the same.
  ZelClr::HResult ProcessColorspec(CLR_COLORSPEC &color) override;
};

class ZELCLR_API CPaletteColorsConverter : public CColorSpecConverter, public CTraversePaletteColors
{
public:
  CPaletteColorsConverter() = default;
  // Copied, never moved: a move would go through the shared bases twice.
  CPaletteColorsConverter(const CPaletteColorsConverter &) = default;
  CPaletteColorsConverter &operator=(const CPaletteColorsConverter &) = default;
};
