#include "zelclr/convert/w_clr_color_space_device_n.h"

#include "zelclr/convert/internal/device_n_base.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>

namespace Model = ZelClr::ClrModel;

namespace {

int Sign(std::int64_t difference)
{
  return (difference > 0) - (difference < 0);
}

} // namespace

// Programs that import the class take this by its address where they are not optimised.
constexpr std::size_t WClrColorSpaceDeviceN::kMostPlates;

WClrColorSpaceDeviceN::WClrColorSpaceDeviceN(int identifier, DeviceN_Process_Type processType)
  : processType_(ZelClr::IsKnownBase(processType) ? processType : DeviceN_Process_None),
    identifier_(identifier)
{}

void WClrColorSpaceDeviceN::SetProcessType(DeviceN_Process_Type processType)
{
  if (ZelClr::IsKnownBase(processType))
    processType_ = processType;
}

int WClrColorSpaceDeviceN::CompareTo(const WClrColorSpaceDeviceN &other) const
{
  if (this == &other)
    return 0;
  if (processType_ != other.processType_)
    return processType_ < other.processType_ ? -1 : 1;
  if (plates_.size() != other.plates_.size())
    return plates_.size() < other.plates_.size() ? -1 : 1;
  for (std::size_t i = 0; i < plates_.size(); ++i) {
    if (plates_[i].type != other.plates_[i].type)
      return plates_[i].type < other.plates_[i].type ? -1 : 1;
    if (const int sign = plates_[i].colour.CompareTo(other.plates_[i].colour))
      return sign;
  }
  if (uniquePlates_ != other.uniquePlates_)
    return uniquePlates_ ? 1 : -1;
  return Sign(std::int64_t{identifier_} - other.identifier_);
}

bool WClrColorSpaceDeviceN::GetPlate(int index, DeviceN_Plate_Type &type, CLR_COLORSPEC &colour) const
{
  if (index < 0 || index >= GetNumPlates())
    return false;
  const DeviceN_Plate &plate = plates_[static_cast<std::size_t>(index)];
  type = plate.type;
  colour = plate.colour;
  return true;
}

int WClrColorSpaceDeviceN::GetColorPlateIndex(DeviceN_Plate_Type type) const
{
  const auto plate = std::find_if(plates_.begin(), plates_.end(), [&](const auto &p) { return p.type == type; });
  return plate == plates_.end() ? -1 : static_cast<int>(plate - plates_.begin());
}

int WClrColorSpaceDeviceN::GetColorPlateIndex(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour) const
{
  // A spot plate is its ink, whatever tint of it is asked for.
  CLR_COLORSPEC ink;
  ink.Copy(colour);
  if (type == DeviceN_Plate_Spot)
    ink.SetDensity(100);
  const ZelUtils::Guid &palette = ink.GetPaletteGuid();
  const auto plate = std::find_if(plates_.begin(), plates_.end(), [&](const auto &p) {
    return p.type == type && p.colour == ink && (type != DeviceN_Plate_Spot || p.colour.GetPaletteGuid() == palette);
  });
  return plate == plates_.end() ? -1 : static_cast<int>(plate - plates_.begin());
}

int WClrColorSpaceDeviceN::FindBestPositionFor(DeviceN_Plate_Type type) const
{
  const auto behind = std::find_if(plates_.begin(), plates_.end(), [&](const auto &p) { return p.type > type; });
  return static_cast<int>(behind - plates_.begin());
}

int WClrColorSpaceDeviceN::Insert(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour)
{
  if (plates_.size() >= kMostPlates)
    return -1;
  const int index = FindBestPositionFor(type);
  plates_.insert(plates_.begin() + index, {type, colour});
  return index;
}

int WClrColorSpaceDeviceN::AddColorPlate(DeviceN_Plate_Type type)
{
  CLR_COLORSPEC colour;
  if (type != DeviceN_Plate_Process && !InitializePlateColorSpec(type, colour))
    return -1;
  const int present = uniquePlates_ ? GetColorPlateIndex(type) : -1;
  return present >= 0 ? present : Insert(type, colour);
}

int WClrColorSpaceDeviceN::AddSpotColorPlate(const CLR_COLORSPEC &colour)
{
  CLR_COLORSPEC ink;
  ink.Copy(colour);
  if (ink.GetType() == Model::Invalid || ink.GetType() == Model::DeviceN || !ZelClr::FindColourModel(ink.GetType()))
    return -1;
  ink.SetDensity(100);
  const int present = uniquePlates_ ? GetSpotColorPlateIndex(ink) : -1;
  return present >= 0 ? present : Insert(DeviceN_Plate_Spot, ink);
}

bool WClrColorSpaceDeviceN::RemovePlates(DeviceN_Plate_Type type)
{
  return std::erase_if(plates_, [&](const auto &plate) { return plate.type == type; }) > 0;
}

void WClrColorSpaceDeviceN::SeparateProcess()
{
  if (!RemovePlates(DeviceN_Plate_Process))
    return;
  for (const ZelClr::BasePlate &plate : ZelClr::BaseOf(processType_).plates) {
    if (!HasColorPlate(plate.type))
      AddColorPlate(plate.type);
  }
}

bool WClrColorSpaceDeviceN::InitializePlateColorSpec(DeviceN_Plate_Type type, CLR_COLORSPEC &colour)
{
  for (const std::int32_t processType : {DeviceN_Process_CMYK, DeviceN_Process_RGB, DeviceN_Process_Hexachrome}) {
    const ZelClr::DeviceNBase &base = ZelClr::BaseOf(processType);
    for (const ZelClr::BasePlate &plate : base.plates) {
      if (plate.type != type)
        continue;
      WClrColorSpaceDeviceN(0, static_cast<DeviceN_Process_Type>(processType)).MakeDeviceWhiteCS(colour);
      if (base.light)
        CLR_COLORSPEC::MakeRGB(colour, 0, 0, 0);
      colour.SetComponent(plate.offset, static_cast<std::uint8_t>(base.full));
      return true;
    }
  }
  switch (type) {
  case DeviceN_Plate_Registration:
    CLR_COLORSPEC::MakeREGCOLOR(colour);
    return true;
  case DeviceN_Plate_SoftMask:
    CLR_COLORSPEC::MakeGRAY(colour, 255);
    return true;
  default:
    CLR_COLORSPEC::MakeINVALID(colour);
    return false;
  }
}

void WClrColorSpaceDeviceN::MakeDeviceWhiteCS(CLR_COLORSPEC &colour) const
{
  switch (processType_) {
  case DeviceN_Process_RGB:
    CLR_COLORSPEC::MakeRGB(colour, 255, 255, 255);
    break;
  case DeviceN_Process_CMYK:
    CLR_COLORSPEC::MakeCMYK100(colour, 0, 0, 0, 0);
    break;
  case DeviceN_Process_Hexachrome:
    CLR_COLORSPEC::MakeHEX(colour, 0, 0, 0, 0, 0, 0);
    break;
  default:
    CLR_COLORSPEC::MakeGRAY(colour, 255);
    break;
  }
}

void WClrColorSpaceDeviceN::MakeRegEquivalentCS(CLR_COLORSPEC &colour) const
{
  switch (processType_) {
  case DeviceN_Process_RGB:
    CLR_COLORSPEC::MakeRGB(colour, 0, 0, 0);
    break;
  case DeviceN_Process_CMYK:
    CLR_COLORSPEC::MakeCMYK100(colour, 100, 100, 100, 100);
    break;
  case DeviceN_Process_Hexachrome:
    CLR_COLORSPEC::MakeHEX(colour, 255, 255, 255, 255, 255, 255);
    break;
  default:
    CLR_COLORSPEC::MakeGRAY(colour, 0);
    break;
  }
}

bool WClrColorSpaceDeviceN::GetPaintColor(int index, CLR_COLORSPEC &colour) const
{
  if (index < 0 || index >= GetNumPlates())
    return false;
  const DeviceN_Plate &plate = plates_[static_cast<std::size_t>(index)];
  switch (plate.type) {
  case DeviceN_Plate_None:
  case DeviceN_Plate_Process:
  case DeviceN_Plate_SoftMask:
    return false;
  case DeviceN_Plate_Registration:
    MakeRegEquivalentCS(colour);
    return true;
  default: {
    const unsigned model = HasProcess() ? ZelClr::BaseOf(processType_).model : unsigned{Model::Cmyk100};
    return WClrConvert::ConvertToBasicType(&colour, model, &plate.colour);
  }
  }
}
