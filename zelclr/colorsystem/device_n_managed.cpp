// DeviceN spaces and colours with colours of other models, through a colour context.
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/convert/internal/device_n_base.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>

namespace {

namespace ClrModel = ZelClr::ClrModel;

/// Any colour in a record model of the base; an ink by its appearance. False for a colour without one.
bool ToModel(const CLR_COLORSPEC &colour, unsigned model, const ColorSystem::ColorContext &context,
             CLR_COLORSPEC &result)
{
  if (WClrConvert::CopyOrRelabel(&result, model, &colour) && colour.GetType() == model)
    return true;
  return ColorSystem::ColorConverter::ConvertOnce(context, context, colour, result, model) && result.GetType() == model;
}

/// Of a space without a base, CMYK100.
unsigned ModelOf(const WClrColorSpaceDeviceN &space)
{
  return space.HasProcess() ? unsigned{ZelClr::BaseOf(space.GetProcessType()).model} : unsigned{ClrModel::Cmyk100};
}

} // namespace

int WClrColorSpaceDeviceN::AddColorPlate(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour,
                                         const ColorSystem::ColorContext &context)
{
  if (type == DeviceN_Plate_Spot)
    return AddSpotColorPlate(colour);
  CLR_COLORSPEC initial;
  if (!InitializePlateColorSpec(type, initial))
    return AddColorPlate(type);
  const int there = HasUniqueColorPlates() ? GetColorPlateIndex(type) : -1;
  CLR_COLORSPEC brought;
  if (there >= 0 ||
      !ToModel(colour, initial.GetType() == ClrModel::Registration ? unsigned{ClrModel::Registration} : ModelOf(*this),
               context, brought))
    return there;
  return Insert(type, brought);
}

int WClrColorSpaceDeviceN::AddColorPlate(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context)
{
  const CLR_COLORSPEC &resolved = colour.Resolved();
  if (resolved.IsSpot())
    return AddSpotColorPlate(resolved);
  if (resolved.GetType() == ClrModel::Registration)
    return AddColorPlate(DeviceN_Plate_Registration);
  CLR_COLORSPEC brought;
  return ToModel(resolved, ModelOf(*this), context, brought) ? AddColorPlate(DeviceN_Plate_Process) : -1;
}

bool WClrColorSpaceDeviceN::GetPaintColor(int index, CLR_COLORSPEC &colour,
                                          const ColorSystem::ColorContext &context) const
{
  DeviceN_Plate_Type type = DeviceN_Plate_None;
  CLR_COLORSPEC own;
  if (!GetPlate(index, type, own) || type == DeviceN_Plate_None || type == DeviceN_Plate_SoftMask)
    return false;
  if (type == DeviceN_Plate_Process || type == DeviceN_Plate_Registration)
    return GetPaintColor(index, colour);
  CLR_COLORSPEC painted;
  if (!ToModel(own, ModelOf(*this), context, painted))
    return false;
  colour = std::move(painted);
  return true;
}

bool WClrColorDeviceN::SetProcessColor(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context, bool add)
{
  CLR_COLORSPEC process;
  if (!space_ || !space_->HasProcess() ||
      !ToModel(colour, ZelClr::BaseOf(space_->GetProcessType()).model, context, process))
    return false;
  if (!add) {
    SetProcessPlates(process);
    return true;
  }
  WClrColorDeviceN other(*this);
  other.SetProcessPlates(process);
  for (const ZelClr::BasePlate &plate : ZelClr::BaseOf(space_->GetProcessType()).plates) {
    const int index = space_->GetColorPlateIndex(plate.type);
    if (index >= 0)
      SetColorComponent(index, other.ValueAt(static_cast<std::size_t>(index)),
                        static_cast<std::uint32_t>(GetPlateDivisor(index)), true);
  }
  return true;
}

bool WClrColorDeviceN::SetColorComponent(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context)
{
  if (!space_)
    return false;
  WClrColorDeviceN made(*this);
  std::fill(made.values_.begin(), made.values_.end(), 0u);
  if (space_->HasProcess()) { // paper, or full light
    CLR_COLORSPEC white;
    space_->MakeDeviceWhiteCS(white);
    made.SetProcessPlates(white);
  }
  if (!made.MergeColorComponent(colour, context))
    return false;
  *this = made;
  return true;
}

bool WClrColorDeviceN::SetColorComponent(const CLR_COLORSPEC &colour, int index,
                                         const ColorSystem::ColorContext &context)
{
  WClrColorDeviceN made(*this);
  if (!HasValue(index) || !made.SetColorComponent(colour, context))
    return false;
  SetColorComponent(index, made.ValueAt(static_cast<std::size_t>(index)), 255, false);
  return true;
}

bool WClrColorDeviceN::MergeColorComponent(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context)
{
  if (!space_)
    return false;
  const CLR_COLORSPEC &resolved = colour.Resolved();
  const auto density = std::min<std::uint32_t>(resolved.GetDensity(), 100);
  const int plate = resolved.IsSpot() ? space_->GetSpotColorPlateIndex(resolved)
                    : resolved.GetType() == ClrModel::Registration
                      ? space_->GetColorPlateIndex(DeviceN_Plate_Registration)
                      : -1;
  if (plate >= 0) {
    SetColorComponent(plate, density, 100, false);
    return true;
  }
  return SetProcessColor(resolved, context, false);
}

bool WClrColorDeviceN::BlendColorComponent(const CLR_COLORSPEC &colour, double oldFactor, double newFactor,
                                           const ColorSystem::ColorContext &context)
{
  WClrColorDeviceN other(*this);
  if (!other.SetColorComponent(colour, context))
    return false;
  for (std::size_t i = 0; i < values_.size(); ++i)
    BlendColorComponent(static_cast<int>(i), other.values_[i], oldFactor, newFactor);
  return true;
}

bool WClrColorDeviceN::Overprint(CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context) const
{
  unsigned model = 0;
  double fullScale = 0.0;
  return ColorSystem::SimpleColorConverter::ColorModelToColorType(context.GetBlendingColorModel(), model, fullScale) &&
         Overprint(colour, context, model);
}

bool WClrColorDeviceN::Overprint(CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context, unsigned model) const
{
  CLR_COLORSPEC printed;
  if (!space_ || !OverprintTo(space_->HasProcess() ? space_->GetProcessType() : DeviceN_Process_CMYK, printed))
    return false;
  CLR_COLORSPEC brought;
  if (!ToModel(printed, model, context, brought))
    return false;
  colour = std::move(brought);
  return true;
}
