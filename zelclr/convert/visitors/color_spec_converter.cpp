#include "zelclr/convert/visitors/color_spec_converter.h"

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colour/colour_models.h"

#include <algorithm>

namespace Model = ZelClr::ClrModel;

namespace {

constexpr std::uint16_t kConverted[] = {Model::Cmyk,  Model::Cmyk255, Model::Cmy255,  Model::Rgb255,
                                        Model::Hsb,   Model::Hls,     Model::Gray255, Model::Cmyk100,
                                        Model::Rgb48, Model::Gray16,  Model::DeviceN, Model::ScRgb};

} // namespace

CColorConverterBase::CColorConverterBase() = default;
CColorConverterBase::~CColorConverterBase() = default;
CColorConverterBase::CColorConverterBase(const CColorConverterBase &) = default;
CColorConverterBase &CColorConverterBase::operator=(const CColorConverterBase &) = default;

void CColorConverterBase::CColorConverterBaseInit(const ColorSystem::ColorContext &source,
                                                  const ColorSystem::ColorContext &target)
{
  SetObjectChanger();
  source_ = source;
  target_ = target;
  converter_ = std::make_shared<ColorSystem::ColorConverter>(source, target);
}

ZelClr::HResult CColorSpecConverter::ProcessColorspec(CLR_COLORSPEC &color)
{
  if (color.IsReference() ||
      std::find(std::begin(kConverted), std::end(kConverted), color.GetType()) == std::end(kConverted))
    return ZelClr::kSFalse;
  const CLR_COLORSPEC before = color;
  if (GetColorConverter() == nullptr || !GetColorConverter()->Convert(color, color))
    return ZelClr::kEFail;
  if (color == before)
    return ZelClr::kSFalse;
  SetIsObjectModified(true);
  return ZelClr::kSOk;
}
