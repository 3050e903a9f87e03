#include "zelclr/convert/w_clr_color_device_n.h"

#include "zelclr/colour/scaling.h"
#include "zelclr/convert/internal/device_n_base.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <cmath>

using ZelClr::BaseOf;
using ZelClr::BasePlate;
using ZelClr::DeviceNBase;
using ZelClr::IsPlateOf;

namespace {

std::shared_ptr<const WClrColorSpaceDeviceN> Separated(std::shared_ptr<WClrColorSpaceDeviceN> space)
{
  if (space)
    space->SeparateProcess();
  return space;
}

bool IsLight(DeviceN_Plate_Type type)
{
  return IsPlateOf(BaseOf(DeviceN_Process_RGB), type);
}

} // namespace

WClrColorDeviceN::WClrColorDeviceN(std::shared_ptr<WClrColorSpaceDeviceN> space, int identifier)
  : space_(Separated(std::move(space))),
    identifier_(identifier)
{
  if (!space_)
    return;
  values_.resize(space_->GetColorPlates().size());
  if (IsRGBBased())
    SetColorComponent(space_->GetColorPlateIndex(DeviceN_Plate_Red), 255, 255, false);
}

std::unique_ptr<WClrColorDeviceN> WClrColorDeviceN::OnProcessPlates(const CLR_COLORSPEC &process,
                                                                    DeviceN_Process_Type processType)
{
  auto space = std::make_shared<WClrColorSpaceDeviceN>(0, processType);
  space->AddColorPlate(DeviceN_Plate_Process);
  auto value = std::make_unique<WClrColorDeviceN>(space, 0);
  value->SetProcessPlates(process);
  return value;
}

int WClrColorDeviceN::CompareTo(const WClrColorDeviceN &other) const
{
  if (!space_ || !other.space_) {
    if (space_ || other.space_)
      return space_ ? 1 : -1;
  } else if (const int sign = space_->CompareTo(*other.space_)) {
    return sign;
  }
  if (values_ != other.values_)
    return values_ < other.values_ ? -1 : 1;
  return (identifier_ > other.identifier_) - (identifier_ < other.identifier_);
}

bool WClrColorDeviceN::Validate() const
{
  if (!space_ || !ZelClr::IsKnownBase(space_->GetProcessType()) || values_.size() != space_->GetColorPlates().size())
    return false;
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (values_[i] > static_cast<std::uint32_t>(GetPlateDivisor(static_cast<int>(i))))
      return false;
  }
  return true;
}

int WClrColorDeviceN::GetPlateDivisor(int index) const
{
  const bool known = space_ && index >= 0 && index < space_->GetNumPlates();
  return ZelClr::DivisorOfPlate(known ? space_->GetColorPlates()[static_cast<std::size_t>(index)].type
                                      : DeviceN_Plate_None);
}

// --- Values ---------------------------------------------------------------------------------------------------------

void WClrColorDeviceN::SetColorComponent(int index, std::uint32_t value, std::uint32_t maximum, bool add)
{
  if (!HasValue(index))
    return;
  std::uint32_t &current = values_[static_cast<std::size_t>(index)];
  current = add ? static_cast<std::uint32_t>(std::min<std::uint64_t>(maximum, std::uint64_t{current} + value)) : value;
}

void WClrColorDeviceN::BlendColorComponent(int index, std::uint32_t value, double oldFactor, double newFactor)
{
  if (!HasValue(index))
    return;
  constexpr double kMostExact = 9007199254740992.0; // 2^53
  std::uint32_t &current = values_[static_cast<std::size_t>(index)];
  const double blended = std::ceil(current * oldFactor + value * newFactor - 0.000000001);
  current = std::abs(blended) <= kMostExact ? static_cast<std::uint32_t>(static_cast<std::int64_t>(blended) & 255) : 0;
}

bool WClrColorDeviceN::ApplyDensity(int density)
{
  const auto percent = static_cast<std::uint64_t>(std::clamp(density, 0, 100));
  for (std::uint32_t &value : values_)
    value = static_cast<std::uint32_t>((percent * value + 50) / 100);
  return true;
}

// --- Mixing ---------------------------------------------------------------------------------------------------------

bool WClrColorDeviceN::GetProcessColor(CLR_COLORSPEC &colour) const
{
  if (!space_ || !space_->HasProcess() || !ZelClr::IsKnownBase(space_->GetProcessType()))
    return false;
  const DeviceNBase &base = BaseOf(space_->GetProcessType());
  CLR_COLORSPEC mixed;
  space_->MakeDeviceWhiteCS(mixed);
  for (const BasePlate &plate : base.plates) {
    const int index = space_->GetColorPlateIndex(plate.type);
    if (!HasValue(index))
      continue;
    const auto value = std::min(values_[static_cast<std::size_t>(index)], static_cast<std::uint32_t>(base.divisor));
    mixed.SetComponent(plate.offset,
                       static_cast<std::uint8_t>(ZelClr::MulDiv(static_cast<int>(value), base.full, base.divisor)));
  }
  colour = std::move(mixed);
  return true;
}

bool WClrColorDeviceN::OverprintTo(DeviceN_Process_Type wanted, CLR_COLORSPEC &colour) const
{
  if (!space_)
    return false;
  const DeviceNBase &base = BaseOf(wanted);
  const DeviceNBase &own = BaseOf(space_->GetProcessType());
  const WClrColorSpaceDeviceN target(0, wanted);

  CLR_COLORSPEC mixed;
  if (!GetProcessColor(mixed))
    target.MakeDeviceWhiteCS(mixed);
  else if (!WClrConvert::ConvertToBasicType(&mixed, base.model, &mixed))
    return false;

  const auto &plates = space_->GetColorPlates();
  for (std::size_t i = 0; i < plates.size(); ++i) {
    const DeviceN_Plate_Type type = plates[i].type;
    const int divisor = ZelClr::DivisorOfPlate(type);
    const int value = static_cast<int>(std::min(ValueAt(i), static_cast<std::uint32_t>(divisor)));
    if (value == 0 || IsPlateOf(own, type) || IsLight(type) || type == DeviceN_Plate_None ||
        type == DeviceN_Plate_Process || type == DeviceN_Plate_SoftMask)
      continue;
    CLR_COLORSPEC ink;
    if (type == DeviceN_Plate_Registration)
      target.MakeRegEquivalentCS(ink);
    else if (!WClrConvert::ConvertToBasicType(&ink, base.model, &plates[i].colour))
      return false;
    WClrConvert::ApplyDensity(&ink, static_cast<unsigned>(value));
    for (const BasePlate &plate : base.plates) {
      const int below = mixed.GetComponent<std::uint8_t>(plate.offset);
      const int above = ink.GetComponent<std::uint8_t>(plate.offset);
      const int both = base.light         ? OverprintRGB(below, above)
                       : base.full == 100 ? OverprintCMYK(below, above)
                                          : 255 - OverprintRGB(255 - below, 255 - above);
      mixed.SetComponent(plate.offset, static_cast<std::uint8_t>(both));
    }
  }
  colour = std::move(mixed);
  return true;
}

bool WClrColorDeviceN::OverprintToCMYK(CLR_COLORSPEC &colour) const
{
  return OverprintTo(DeviceN_Process_CMYK, colour);
}

bool WClrColorDeviceN::OverprintToRGB(CLR_COLORSPEC &colour) const
{
  return OverprintTo(DeviceN_Process_RGB, colour);
}

bool WClrColorDeviceN::OverprintToHex(CLR_COLORSPEC &colour) const
{
  return OverprintTo(DeviceN_Process_Hexachrome, colour);
}

bool WClrColorDeviceN::ConvertToProcessType(DeviceN_Process_Type processType)
{
  const DeviceNBase &base = BaseOf(processType);
  CLR_COLORSPEC process;
  if (base.plates.empty() || !GetProcessColor(process) ||
      !WClrConvert::ConvertToBasicType(&process, base.model, &process))
    return false;

  const DeviceNBase &own = BaseOf(space_->GetProcessType());
  auto space = std::make_shared<WClrColorSpaceDeviceN>(space_->GetIdentifier(), processType);
  space->EnableUniqueColorPlates(space_->HasUniqueColorPlates());
  space->AddColorPlate(DeviceN_Plate_Process);
  WClrColorDeviceN converted(space, identifier_);
  converted.SetProcessPlates(process);

  // A plate of the former base is spent, and so is a light that did not print; the others keep their order.
  const auto &plates = space_->GetColorPlates();
  for (std::size_t i = 0; i < plates.size(); ++i) {
    const DeviceN_Plate_Type type = plates[i].type;
    if (IsPlateOf(own, type) || (IsPlateOf(base, type) && IsLight(type)))
      continue;
    if (IsPlateOf(base, type)) {
      // It printed on top of the former base and now is a plate of the base.
      std::uint32_t &value = converted.values_[static_cast<std::size_t>(space->GetColorPlateIndex(type))];
      value = static_cast<std::uint32_t>(
        OverprintCMYK(static_cast<int>(value), static_cast<int>(std::min(ValueAt(i), 100u))));
      continue;
    }
    const int index = space->Insert(type, plates[i].colour);
    if (index < 0)
      return false;
    converted.values_.insert(converted.values_.begin() + index, ValueAt(i));
  }
  *this = converted;
  return true;
}

void WClrColorDeviceN::SetProcessPlates(const CLR_COLORSPEC &process)
{
  const DeviceNBase &base = BaseOf(space_->GetProcessType());
  for (const BasePlate &plate : base.plates) {
    const int component = std::min<int>(process.GetComponent<std::uint8_t>(plate.offset), base.full);
    SetColorComponent(space_->GetColorPlateIndex(plate.type),
                      static_cast<std::uint32_t>(ZelClr::MulDiv(component, base.divisor, base.full)), 255, false);
  }
}

void WClrColorDeviceN::SimplifyColor()
{
  if (!space_)
    return;
  const DeviceNBase &own = BaseOf(space_->GetProcessType());
  auto space = std::make_shared<WClrColorSpaceDeviceN>(*space_);
  std::vector<std::uint32_t> values;
  std::size_t index = 0;
  std::erase_if(space->plates_, [&](const DeviceN_Plate &plate) {
    const std::uint32_t value = ValueAt(index++);
    const bool prints = plate.type != DeviceN_Plate_None && value != 0;
    if (!prints && !IsPlateOf(own, plate.type))
      return true;
    values.push_back(value);
    return false;
  });
  space_ = std::move(space);
  values_ = std::move(values);
}
