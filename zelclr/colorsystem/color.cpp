#include "zelclr/colorsystem/color.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/internal/color_family.h"
#include "zelclr/colorsystem/typed_colors.h"

#include <algorithm>

namespace ColorSystem {

namespace {

constexpr const wchar_t *kLabProfile = L"CIE Lab.icc";

ColorSpace Fitting(ColorModel model, const ColorSpace &space)
{
  if (!space.GetValidModel(model))
    throw ColorSystemError("Color: Failed to get color model");
  return ColorSpace(model, space.GetColorProfile());
}

/// The channels that a transform between the profiles makes of these, both in the models of their profiles.
bool Transformed(const ColorProfile &source, const ColorProfile &destination, RenderingIntent intent,
                 ColorModel sourceModel, ColorModel destinationModel, Internal::Channels &channels)
{
  const auto engine = ColorManagementSystem::GetCurrent();
  if (engine == nullptr)
    return false;
  // The finest samples that the engines take.
  const auto formatOf = [](ColorModel model) {
    return PixelFormat{model, model == ColorModel::Hexachrome ? SampleType::UInt8 : SampleType::UInt16};
  };
  TransformOptions options;
  options.intent = intent;
  options.source = formatOf(sourceModel);
  options.destination = formatOf(destinationModel);
  const auto transform = engine->CreateTransform(source, destination, options);
  if (transform == nullptr)
    return false;
  std::array<std::uint16_t, 6> from{}, to{}; // one pixel each, and no heap
  const auto fromData = CreateColorData(options.source, 1, 1, 0, from.data());
  const auto toData = CreateColorData(options.destination, 1, 1, 0, to.data());
  for (unsigned i = 0; i < options.source.ColourChannels(); ++i)
    fromData->SetSample(0, 0, i, static_cast<float>(channels[i]));
  if (!transform->Convert(*fromData, *toData))
    return false;
  for (unsigned i = 0; i < options.destination.ColourChannels(); ++i)
    channels[i] = toData->GetSample(0, 0, i);
  return true;
}

} // namespace

Color::Color(const ColorSpace &space) : Color(space.GetColorModel(), space) {}

Color::Color(const Color &other) : Shared<ColorChannelArray>(), space_(other.space_)
{
  GetDataRef() = other.GetDataRef();
}

Color::Color(ColorModel model, const ColorSpace &space) : Color(AnySpace(), Fitting(model, space)) {}

Color::Color(AnySpace, const ColorSpace &space) : space_(space)
{
  GetDataRef().Init(space_.GetChannelCount(), 0.0);
}

Color::Color(ColorModel model, const std::wstring &profileName) : Color(model, ColorSpace(model, profileName)) {}

Color::~Color() = default;

Color &Color::operator=(const Color &other)
{
  if (this != &other) {
    space_ = other.space_;
    GetDataRef() = other.GetDataRef();
  }
  return *this;
}

bool Color::Reference(ZelUtl::Shared<ColorChannelArray> &other)
{
  const auto *const color = dynamic_cast<const Color *>(&other);
  return color != nullptr && color->GetColorModel() == GetColorModel() && Shared::Reference(other);
}

ColorModel Color::GetColorModel() const
{
  return space_.GetColorModel();
}

double Color::GetCompositeDensity() const
{
  const unsigned count = GetChannelCount();
  double sum = 0.0;
  for (unsigned i = 0; i < count; ++i)
    sum += (*this)[i];
  return sum / count;
}

void Color::MultiplyChannels(double factor)
{
  for (unsigned i = 0; i < GetChannelCount(); ++i)
    (*this)[i] *= factor;
}

Color &Color::operator*=(double factor)
{
  MultiplyChannels(factor);
  return *this;
}

Color Color::operator*(double factor) const
{
  Color product(*this);
  product.Detach();
  return product *= factor;
}

bool Color::operator==(const Color &other) const
{
  return space_ == other.space_ && GetDataRef() == other.GetDataRef();
}

bool Color::AssignColorProfile(const ColorProfile &profile)
{
  auto shared = profile.GetSafePtr();
  if (shared == nullptr || shared->GetColorModel() != GetColorModel())
    return false;
  space_.SetColorProfile(std::move(shared));
  return true;
}

bool Color::AssignColorSpace(const ColorSpace &space)
{
  if (space.GetColorModel() != GetColorModel())
    return false;
  space_.SetColorProfile(space.GetColorProfile());
  return true;
}

void Color::SetChannels(std::initializer_list<double> values)
{
  unsigned index = 0;
  for (const double value : values)
    SetChannel(index++, value);
}

LabColor Color::ConvertToLabColor() const
{
  return LabColor(*this);
}

std::shared_ptr<Color> Color::ConvertToColorProfile(const ColorProfile &profile, RenderingIntent intent) const
{
  const auto shared = profile.GetSafePtr();
  return shared == nullptr ? nullptr : ConvertToColorSpace(ColorSpace(*shared), intent);
}

std::shared_ptr<Color> Color::ConvertToColorSpace(const ColorSpace &space, RenderingIntent intent) const
{
  const auto source = GetColorProfile();
  const auto destination = space.GetColorProfile();
  if (source == nullptr || destination == nullptr || !source->IsValid() || !destination->IsValid())
    return nullptr;
  Internal::Channels channels{};
  for (unsigned i = 0; i < GetChannelCount(); ++i)
    channels[i] = (*this)[i];

  // What a profile knows is its own model; its family is reached by formula on both sides.
  const ColorModel sourceModel = source->GetColorModel();
  const ColorModel destinationModel = destination->GetColorModel();
  if (*source == *destination) {
    channels = Internal::WithinFamily(GetColorModel(), space.GetColorModel(), channels);
  } else {
    channels = Internal::WithinFamily(GetColorModel(), sourceModel, channels);
    if (!Transformed(*source, *destination, intent, sourceModel, destinationModel, channels))
      return nullptr;
    channels = Internal::WithinFamily(destinationModel, space.GetColorModel(), channels);
  }
  auto converted = std::make_shared<Color>(space);
  for (unsigned i = 0; i < converted->GetChannelCount(); ++i)
    converted->SetChannel(i, channels[i]);
  return converted;
}

LabColor::LabColor()
  : Color(AnySpace(), ColorSpace(ColorModel::Lab, ColorProfileManager::GetInstance().GetColorProfile(kLabProfile)))
{}

LabColor::LabColor(double l, double a, double b) : LabColor()
{
  SetChannels({l, a, b});
}

LabColor::LabColor(const Color &other) : LabColor()
{
  if (other.GetColorModel() == ColorModel::Lab)
    Color::operator=(other);
  else if (const auto converted = other.ConvertToColorSpace(GetColorSpace(), RenderingIntent::AbsoluteColorimetric))
    Color::operator=(*converted);
}

} // namespace ColorSystem
