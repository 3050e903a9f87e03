// Colours into DeviceN colours and apart again.

#include "zelclr/colour/scaling.h"
#include "zelclr/convert/internal/device_n_base.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

namespace Model = ZelClr::ClrModel;
using namespace ZelClr;

namespace {

using Space = std::shared_ptr<WClrColorSpaceDeviceN>;

/// A colour with one plate, added already, at a percentage.
std::unique_ptr<WClrColorDeviceN> OnOnePlate(Space space, int percent)
{
  auto value = std::make_unique<WClrColorDeviceN>(std::move(space), 0);
  value->SetColorComponent(0, static_cast<std::uint32_t>(percent), 100, false);
  return value;
}

std::unique_ptr<WClrColorDeviceN> AsDeviceN(const CLR_COLORSPEC &source)
{
  const unsigned model = source.GetType();
  auto space = std::make_shared<WClrColorSpaceDeviceN>(0, DeviceN_Process_None);
  if (model == Model::Registration) {
    space->AddColorPlate(DeviceN_Plate_Registration);
    return OnOnePlate(space, std::min<int>(source.GetDensity(), 100));
  }
  if (source.IsSpot()) {
    return space->AddSpotColorPlate(source) >= 0 ? OnOnePlate(space, std::min<int>(source.GetDensity(), 100)) : nullptr;
  }
  CLR_COLORSPEC process;
  switch (model) {
  case Model::BlackWhite:
  case Model::Gray255:
  case Model::Gray16:
    if (!WClrConvert::ConvertToBasicType(&process, Model::Gray255, &source))
      return nullptr;
    space->AddColorPlate(DeviceN_Plate_Black);
    return OnOnePlate(space, PercentFromByte(255 - process.GetBlue()));
  case Model::Cmyk:
  case Model::Cmyk255:
  case Model::Cmyk100:
  case Model::Cmy255:
    if (!WClrConvert::ConvertToBasicType(&process, Model::Cmyk100, &source))
      return nullptr;
    return WClrColorDeviceN::OnProcessPlates(process, DeviceN_Process_CMYK);
  case Model::Hexachrome:
    process.Copy(source);
    return WClrColorDeviceN::OnProcessPlates(process, DeviceN_Process_Hexachrome);
  default:
    if (!WClrConvert::ConvertToBasicType(&process, Model::Rgb255, &source))
      return nullptr;
    return WClrColorDeviceN::OnProcessPlates(process, DeviceN_Process_RGB);
  }
}

} // namespace

bool WClrConvert::ConvertToDeviceN(CLR_COLORSPEC *destination, const CLR_COLORSPEC *source)
{
  if (source->GetType() == Model::DeviceN) {
    destination->Copy(*source);
    return true;
  }
  auto value = AsDeviceN(source->Resolved());
  if (!value)
    return false;
  CLR_COLORSPEC::MakeDEVICEN(*destination, value.release());
  return true;
}

std::vector<CLR_COLORSPEC> WClrConvert::SplitDeviceN(const CLR_COLORSPEC &colour)
{
  std::vector<CLR_COLORSPEC> parts;
  const WClrColorDeviceN *value = colour.GetDeviceN();
  if (!value) {
    parts.emplace_back().Copy(colour);
    return parts;
  }
  const WClrColorSpaceDeviceN *space = value->GetColorSpace();
  if (!space)
    return parts;
  CLR_COLORSPEC process;
  if (value->GetProcessColor(process))
    parts.push_back(process);
  const DeviceNBase &base = BaseOf(space->GetProcessType());
  for (int i = 0; i < space->GetNumPlates(); ++i) {
    const DeviceN_Plate &plate = space->GetColorPlates()[static_cast<std::size_t>(i)];
    const auto index = static_cast<std::size_t>(i);
    const std::uint32_t amount = index < value->GetValues().size() ? value->GetValues()[index] : 0;
    if (IsPlateOf(base, plate.type) || amount == 0 || plate.colour.IsInvalid() || plate.type == DeviceN_Plate_SoftMask)
      continue;
    CLR_COLORSPEC &part = parts.emplace_back(plate.colour);
    ApplyDensity(
      &part, static_cast<unsigned>(MulDiv(static_cast<int>(std::min(amount, 255u)), 100, value->GetPlateDivisor(i))));
  }
  return parts;
}
