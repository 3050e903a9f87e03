#include "zelclr/colour/fills/internal/blend_space.h"

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

namespace ZelClr {

namespace {

using Colours = std::span<const CLR_COLORSPEC *const>;

// --- Models ----------------------------------------------------------------------------------------------------------

/// In ascending order of what holds what: colours of several families blend in the highest. The press decides over
/// inks, so these come last.
enum class Family
{
  Gray,
  Rgb,
  Lab,
  Cmyk,
  Hexachrome
};

struct ProcessRow
{
  std::uint16_t model;
  Family family;
  std::uint16_t alone; ///< what colours of this model blend in
  std::uint16_t mixed; ///< what they ask for among others of the family
};

// Hue and saturation are no straight way from colour to colour, black and white have nothing between them.
constexpr ProcessRow kProcessRows[] = {
  {ClrModel::BlackWhite, Family::Gray, ClrModel::Gray255, ClrModel::Gray255},
  {ClrModel::Gray255, Family::Gray, ClrModel::Gray255, ClrModel::Gray255},
  {ClrModel::Gray16, Family::Gray, ClrModel::Gray16, ClrModel::Gray16},
  {ClrModel::Rgb255, Family::Rgb, ClrModel::Rgb255, ClrModel::Rgb255},
  {ClrModel::Hsb, Family::Rgb, ClrModel::Rgb255, ClrModel::Rgb255},
  {ClrModel::Hls, Family::Rgb, ClrModel::Rgb255, ClrModel::Rgb255},
  {ClrModel::Yiq255, Family::Rgb, ClrModel::Yiq255, ClrModel::Rgb255},
  {ClrModel::Rgba, Family::Rgb, ClrModel::Rgba, ClrModel::Rgb255},
  {ClrModel::Bgra, Family::Rgb, ClrModel::Bgra, ClrModel::Rgb255},
  {ClrModel::Rgb48, Family::Rgb, ClrModel::Rgb48, ClrModel::Rgb48},
  {ClrModel::ScRgb, Family::Rgb, ClrModel::ScRgb, ClrModel::Rgb48},
  {ClrModel::Lab, Family::Lab, ClrModel::Lab, ClrModel::Lab255},
  {ClrModel::Lab255, Family::Lab, ClrModel::Lab255, ClrModel::Lab255},
  {ClrModel::Xyz, Family::Lab, ClrModel::Xyz, ClrModel::Lab255},
  {ClrModel::Cmyk, Family::Cmyk, ClrModel::Cmyk, ClrModel::Cmyk255},
  {ClrModel::Cmyk255, Family::Cmyk, ClrModel::Cmyk255, ClrModel::Cmyk255},
  {ClrModel::Cmyk100, Family::Cmyk, ClrModel::Cmyk100, ClrModel::Cmyk255},
  {ClrModel::Cmy255, Family::Cmyk, ClrModel::Cmy255, ClrModel::Cmyk255},
  {ClrModel::Hexachrome, Family::Hexachrome, ClrModel::Hexachrome, ClrModel::Hexachrome},
};

const ProcessRow *FindProcessRow(unsigned model)
{
  const auto *const row = std::find_if(std::begin(kProcessRows), std::end(kProcessRows),
                                       [model](const ProcessRow &candidate) { return candidate.model == model; });
  return row == std::end(kProcessRows) ? nullptr : row;
}

/// The model of a colour's appearance in process colours; 0 where it has none.
unsigned ProcessModelOf(const CLR_COLORSPEC &colour)
{
  CLR_COLORSPEC appearance;
  switch (colour.GetType()) {
  case ClrModel::Registration:
    return ClrModel::Cmyk255;
  case ClrModel::UserInks:
  case ClrModel::IndexedUserInk:
    return CLR_COLORSPEC::MakeProcessFromUserInks(colour, appearance) ? appearance.GetType() : 0u;
  case ClrModel::Spot:
    return colour.GetSpotAppearance(ClrModel::Cmyk255, appearance) ? appearance.GetType() : 0u;
  case ClrModel::DeviceN: {
    const WClrColorDeviceN *const value = colour.GetDeviceN();
    if (value == nullptr || value->GetColorSpace() == nullptr)
      return 0;
    return value->IsRGBBased()   ? unsigned{ClrModel::Rgb255}
           : value->IsHexBased() ? unsigned{ClrModel::Hexachrome}
                                 : unsigned{ClrModel::Cmyk255};
  }
  default:
    return colour.GetType();
  }
}

} // namespace

// --- Inks ------------------------------------------------------------------------------------------------------------

bool IsInk(const CLR_COLORSPEC &colour)
{
  switch (colour.GetType()) {
  case ClrModel::Pantone:
  case ClrModel::PantoneHex:
  case ClrModel::Spot:
  case ClrModel::Registration:
  case ClrModel::UserInks:
  case ClrModel::IndexedUserInk:
    return true;
  default:
    return false;
  }
}

namespace {

bool IsSameInk(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b)
{
  if (a.GetType() != b.GetType())
    return false;
  CLR_COLORSPEC solidA(a), solidB(b);
  solidA.SetDensity(100);
  solidB.SetDensity(100);
  return solidA == solidB;
}

/// Plates whose values can be counted on.
const WClrColorSpaceDeviceN *SpaceOf(const CLR_COLORSPEC &colour)
{
  const WClrColorDeviceN *const value = colour.GetType() == ClrModel::DeviceN ? colour.GetDeviceN() : nullptr;
  const WClrColorSpaceDeviceN *const space = value == nullptr ? nullptr : value->GetColorSpace();
  return space != nullptr && !value->GetValues().empty() && value->GetValues().size() == space->GetColorPlates().size()
           ? space
           : nullptr;
}

// --- Conversion ------------------------------------------------------------------------------------------------------

bool IsCmyk(unsigned model)
{
  return model == ClrModel::Cmyk || model == ClrModel::Cmyk255 || model == ClrModel::Cmyk100;
}

/// Between process models. Of the CMYK family by scale: ConvertColorSpec relabels some of it, and 100 % would become
/// 100 of 255.
bool Convert(const CLR_COLORSPEC &colour, unsigned model, ColorSystem::ColorContext &context, CLR_COLORSPEC &result)
{
  if (IsCmyk(colour.GetType()) && IsCmyk(model))
    return WClrConvert::ConvertToBasicType(&result, model, &colour);
  return WClrConvert::ConvertColorSpec(&result, model, &colour, context) && result.GetType() == model;
}

} // namespace

bool ToModel(const CLR_COLORSPEC &colour, unsigned model, ColorSystem::ColorContext &context, CLR_COLORSPEC &result)
{
  CLR_COLORSPEC source(colour);
  if (!IsInk(source))
    source.SetPaletteGuid({}); // a colour of a spot palette would be looked for among inks
  if (Convert(source, model, context, result))
    return true;
  // Plates without a process base are read by formula only.
  CLR_COLORSPEC process;
  return source.GetType() == ClrModel::DeviceN &&
         WClrConvert::ConvertToBasicType(&process, ClrModel::Cmyk255, &source) &&
         Convert(process, model, context, result);
}

// --- Numbers ---------------------------------------------------------------------------------------------------------

namespace {

double NumberOf(const CLR_COLORSPEC &colour, const ColourComponent &component)
{
  const double number = WithComponentType(component.type, [&](auto zero) {
    return static_cast<double>(colour.GetComponent<decltype(zero)>(component.offset));
  });
  return std::isfinite(number) ? number : 0.0;
}

template <class T>
T Stored(double number)
{
  constexpr double kLeast = std::numeric_limits<T>::lowest();
  constexpr double kMost = std::numeric_limits<T>::max();
  const double within = std::min(std::max(number, kLeast), kMost);
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(within);
  else // cutting off the fraction rounds, once everything is positive
    return static_cast<T>(static_cast<std::int64_t>(within - kLeast + 0.5) + static_cast<std::int64_t>(kLeast));
}

} // namespace

// --- The choice ------------------------------------------------------------------------------------------------------

std::optional<BlendSpace> BlendSpace::For(Colours colours, bool keepInks)
{
  if (keepInks) {
    if (auto ink = OfOneInk(colours))
      return ink;
    if (auto plates = OfPlates(colours))
      return plates;
  }
  return OfProcess(colours);
}

std::optional<BlendSpace> BlendSpace::OfOneInk(Colours colours)
{
  const auto ink = std::find_if(colours.begin(), colours.end(), [](const auto *colour) { return IsInk(*colour); });
  if (ink == colours.end() || !std::all_of(colours.begin(), colours.end(), [ink](const CLR_COLORSPEC *colour) {
        return IsInk(*colour) ? IsSameInk(*colour, **ink) : WClrConvert::IsAchromaticWhite(*colour);
      }))
    return std::nullopt;
  const auto all = FindColourModel((*ink)->GetType())->components;
  const auto density =
    std::find_if(all.begin(), all.end(), [](const ColourComponent &component) { return component.name == "density"; });
  BlendSpace space;
  space.prototype_ = **ink;
  space.isInk_ = true;
  space.components_ = all.subspan(static_cast<std::size_t>(density - all.begin()), 1);
  return space;
}

std::optional<BlendSpace> BlendSpace::OfPlates(Colours colours)
{
  const auto first =
    std::find_if(colours.begin(), colours.end(), [](const auto *colour) { return SpaceOf(*colour) != nullptr; });
  if (first == colours.end())
    return std::nullopt;
  const WClrColorSpaceDeviceN *const plates = SpaceOf(**first);
  const bool allFit = std::all_of(colours.begin(), colours.end(), [plates](const CLR_COLORSPEC *colour) {
    if (colour->GetType() == ClrModel::DeviceN)
      return SpaceOf(*colour) != nullptr && *SpaceOf(*colour) == *plates;
    return (plates->HasProcess() && FindProcessRow(ProcessModelOf(*colour)) != nullptr) ||
           (colour->IsSpot() && plates->HasSpotColorPlate(*colour)) || WClrConvert::IsAchromaticWhite(*colour);
  });
  if (!allFit)
    return std::nullopt;
  BlendSpace space;
  space.prototype_ = **first;
  space.plates_ = (*first)->GetDeviceN()->GetValues().size();
  return space;
}

std::optional<BlendSpace> BlendSpace::OfProcess(Colours colours)
{
  const ProcessRow *first = nullptr;
  const ProcessRow *highest = nullptr;
  bool alike = true;
  bool deep = false; // more than 8 bits
  for (const CLR_COLORSPEC *const colour : colours) {
    const ProcessRow *const row = FindProcessRow(ProcessModelOf(*colour));
    if (row == nullptr)
      return std::nullopt;
    first = first == nullptr ? row : first;
    highest = highest == nullptr || row->family > highest->family ? row : highest;
    alike = alike && row == first && !IsInk(*colour) && colour->GetType() != ClrModel::DeviceN;
    deep = deep || row->mixed == ClrModel::Gray16 || row->mixed == ClrModel::Rgb48;
  }
  if (highest == nullptr)
    return std::nullopt;
  unsigned model = alike ? highest->alone : highest->mixed;
  if (!alike && deep && highest->family == Family::Gray)
    model = ClrModel::Gray16;
  if (!alike && deep && highest->family == Family::Rgb)
    model = ClrModel::Rgb48;
  BlendSpace space;
  space.prototype_.SetType(static_cast<std::uint16_t>(model));
  space.components_ = FindColourModel(model)->components;
  return space;
}

bool BlendSpace::HasHue() const
{
  const ProcessRow *const row = FindProcessRow(Model());
  return row != nullptr && row->family != Family::Gray;
}

double BlendSpace::FullScale() const
{
  const unsigned model = Model();
  return model == ClrModel::Cmyk || model == ClrModel::Cmyk100 ? 100.0 : std::numeric_limits<double>::max();
}

// --- Colours and numbers ---------------------------------------------------------------------------------------------

bool BlendSpace::Load(const CLR_COLORSPEC &colour, ColorSystem::ColorContext &context, std::span<double> numbers) const
{
  if (plates_ != 0)
    return LoadPlates(colour, context, numbers);
  if (isInk_) { // what is not the ink is white
    numbers[0] = IsInk(colour) ? colour.GetDensity() : 0.0;
    return true;
  }
  CLR_COLORSPEC converted;
  const bool isPlain = colour.GetType() == Model();
  if (!isPlain && !ToModel(colour, Model(), context, converted))
    return false;
  for (std::size_t i = 0; i < components_.size(); ++i)
    numbers[i] = NumberOf(isPlain ? colour : converted, components_[i]);
  return true;
}

bool BlendSpace::LoadPlates(const CLR_COLORSPEC &colour, ColorSystem::ColorContext &context,
                            std::span<double> numbers) const
{
  if (const WClrColorDeviceN *const value = colour.GetDeviceN()) {
    std::copy(value->GetValues().begin(), value->GetValues().end(), numbers.begin());
    return true;
  }
  WClrColorDeviceN brought(*prototype_.GetDeviceN());
  const WClrColorSpaceDeviceN &space = *brought.GetColorSpace();
  CLR_COLORSPEC source(colour);
  if (WClrConvert::IsAchromaticWhite(colour)) {
    if (!space.HasProcess()) {
      std::fill(numbers.begin(), numbers.end(), 0.0);
      return true;
    }
    space.MakeDeviceWhiteCS(source);
  }
  if (!brought.SetColorComponent(source, context))
    return false;
  std::copy(brought.GetValues().begin(), brought.GetValues().end(), numbers.begin());
  return true;
}

void BlendSpace::Store(std::span<const double> columns, std::span<CLR_COLORSPEC> colours) const
{
  if (plates_ != 0)
    return StorePlates(columns, colours);
  using Bytes = std::array<std::uint8_t, 16>;
  Bytes common;
  std::memcpy(common.data(), prototype_.GetRAWColor(), common.size());
  std::vector<Bytes> bytes(colours.size(), common);
  bool isLong = false;
  for (const ColourComponent &component : components_) {
    const auto column = columns.first(colours.size());
    columns = columns.subspan(colours.size());
    isLong = isLong || component.offset >= sizeof(std::uint64_t);
    WithComponentType(component.type, [&](auto zero) {
      for (std::size_t i = 0; i < column.size(); ++i) {
        const auto stored = Stored<decltype(zero)>(column[i]);
        std::memcpy(bytes[i].data() + component.offset, &stored, sizeof stored);
      }
    });
  }
  for (std::size_t i = 0; i < colours.size(); ++i) {
    std::uint64_t halves[2];
    std::memcpy(halves, bytes[i].data(), sizeof halves);
    colours[i] = prototype_;
    colours[i].SetComponent(0, halves[0]);
    if (isLong)
      colours[i].SetComponent(sizeof halves[0], halves[1]);
  }
}

void BlendSpace::StorePlates(std::span<const double> columns, std::span<CLR_COLORSPEC> colours) const
{
  for (std::size_t i = 0; i < colours.size(); ++i) {
    auto value = std::make_unique<WClrColorDeviceN>(*prototype_.GetDeviceN());
    for (std::size_t plate = 0; plate < plates_; ++plate)
      value->SetColorComponent(static_cast<int>(plate), Stored<std::uint32_t>(columns[plate * colours.size() + i]), 0,
                               false);
    CLR_COLORSPEC::MakeDEVICEN(colours[i], value.release());
  }
}

} // namespace ZelClr
