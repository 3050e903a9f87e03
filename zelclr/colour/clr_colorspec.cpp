#include "zelclr/colour/clr_colorspec.h"

#include "zelclr/colour/palette_types.h"

#include <atomic>
#include <utility>

namespace Model = ZelClr::ClrModel;

/// The colour that references share. The last holder destroys it.
struct CLR_COLORSPEC::SharedColour
{
  explicit SharedColour(const CLR_COLORSPEC &value) : colour(value) {}

  std::atomic<std::size_t> holders{1};
  CLR_COLORSPEC colour;
};

// --- Ownership ------------------------------------------------------------------------------------------------------

void CLR_COLORSPEC::CopyOwning(const CLR_COLORSPEC &other)
{
  const CLR_COLORSPEC &value = other.Resolved();
  if (value.model_ == Model::DeviceN) {
    const WClrColorDeviceN *deviceN = value.GetDeviceN();
    Store(0, deviceN ? CloneDeviceN(*deviceN) : nullptr);
    model_ = Model::DeviceN;
    return;
  }
  TakeBits(other);
  if (auto *shared = IsReference() ? Load<SharedColour *>(0) : nullptr)
    shared->holders.fetch_add(1, std::memory_order_relaxed);
}

void CLR_COLORSPEC::ReleaseOwned()
{
  const auto model = std::exchange(model_, std::uint16_t{Model::Invalid});
  if (model == Model::DeviceN) {
    DestroyDeviceN(Load<WClrColorDeviceN *>(0));
    return;
  }
  // A chain of references is released link by link; its length must not be limited by the stack.
  auto *shared = Load<SharedColour *>(0);
  while (shared && shared->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    SharedColour *next = nullptr;
    if (shared->colour.IsReference()) {
      next = shared->colour.Load<SharedColour *>(0);
      shared->colour.Forget();
    }
    delete shared;
    shared = next;
  }
}

bool CLR_COLORSPEC::HoldsPointerAt(std::size_t offset, std::size_t size) const
{
  if (!IsPlain())
    return offset < sizeof(void *);
  return model_ == Model::Spot && offset + size > 8;
}

// --- References -----------------------------------------------------------------------------------------------------

CLR_COLORSPEC *CLR_COLORSPEC::EndOfReferences()
{
  CLR_COLORSPEC *colour = this;
  while (colour && colour->IsReference()) {
    auto *shared = colour->Load<SharedColour *>(0);
    colour = shared ? &shared->colour : nullptr;
  }
  return colour;
}

const CLR_COLORSPEC &CLR_COLORSPEC::ResolvedReference() const
{
  static const CLR_COLORSPEC kNothing;
  const CLR_COLORSPEC *colour = this;
  while (colour && colour->IsReference())
    colour = colour->GetReference();
  return colour ? *colour : kNothing;
}

unsigned CLR_COLORSPEC::CountReferences() const
{
  unsigned count = 0;
  for (const CLR_COLORSPEC *colour = this; colour && colour->IsReference(); colour = colour->GetReference())
    ++count;
  return count;
}

const CLR_COLORSPEC *CLR_COLORSPEC::GetReference() const
{
  const auto *shared = IsReference() ? Load<SharedColour *>(0) : nullptr;
  return shared ? &shared->colour : nullptr;
}

void CLR_COLORSPEC::SetReferenceColorValue(const CLR_COLORSPEC &value)
{
  auto *shared = IsReference() ? Load<SharedColour *>(0) : nullptr;
  if (!shared)
    return;
  for (const CLR_COLORSPEC *colour = &value; colour; colour = colour->GetReference()) {
    if (colour == &shared->colour)
      return;
  }
  shared->colour = value;
}

bool CLR_COLORSPEC::IsSameReference(const CLR_COLORSPEC &other) const
{
  return GetReference() && GetReference() == other.GetReference();
}

void CLR_COLORSPEC::BreakReference()
{
  if (IsReference())
    Copy(*this);
}

void CLR_COLORSPEC::Copy(const CLR_COLORSPEC &other)
{
  *this = other.Resolved();
}

void CLR_COLORSPEC::MakeReference(CLR_COLORSPEC &target, const CLR_COLORSPEC &source)
{
  SharedColour *shared = nullptr;
  Guid palette = target.palette_;
  if (source.IsReference()) {
    shared = source.Load<SharedColour *>(0);
    palette = source.palette_;
    if (!shared)
      return MakeINVALID(target);
    shared->holders.fetch_add(1, std::memory_order_relaxed);
  } else {
    shared = new SharedColour(source);
  }
  target.Begin(Model::Reference);
  target.Store(0, shared);
  target.palette_ = palette;
}

void CLR_COLORSPEC::SetType(std::uint16_t model)
{
  Release();
  model_ = model;
  if (!IsPlain())
    Store<void *>(0, nullptr);
  else if (model == Model::Spot)
    Store<const SpotColorDefinition *>(8, nullptr);
}

// --- Reading --------------------------------------------------------------------------------------------------------

WClrColorDeviceN *CLR_COLORSPEC::GetDeviceN() const
{
  const CLR_COLORSPEC &colour = Resolved();
  return colour.model_ == Model::DeviceN ? colour.Load<WClrColorDeviceN *>(0) : nullptr;
}

std::uint16_t CLR_COLORSPEC::GetPaletteType() const
{
  return ZelClr::PaletteTypeFromIdentifier(GetPaletteGuid());
}

void CLR_COLORSPEC::SetPaletteType(std::uint16_t paletteType)
{
  using namespace ZelClr::PaletteType;
  palette_ = ZelClr::PaletteIdentifierFromType(paletteType == UserInks ? std::uint16_t{User} : paletteType);
}

bool CLR_COLORSPEC::IsSpot() const
{
  const CLR_COLORSPEC &colour = Resolved();
  if (colour.model_ == Model::Spot)
    return true;
  const unsigned paletteType = colour.GetPaletteType();
  if (paletteType == ZelClr::PaletteType::User)
    return colour.model_ == Model::Pantone;
  return ZelClr::IsSpotPaletteType(paletteType);
}

bool CLR_COLORSPEC::IsTintable() const
{
  const unsigned model = GetType();
  return model == Model::Registration || model == Model::UserInks || model == Model::IndexedUserInk || IsSpot() ||
         ZelClr::IsPantoneHexachromePaletteType(GetPaletteType());
}

namespace {

/// Where a model keeps its density; size 0 for a model without one.
struct DensityPlace
{
  std::uint8_t offset = 0;
  std::uint8_t size = 0;
};

constexpr DensityPlace PlaceOfDensity(unsigned model)
{
  switch (model) {
  case Model::Pantone:
  case Model::PantoneHex:
  case Model::Spot:
    return {2, 2};
  case Model::Hexachrome:
  case Model::Rgb48:
    return {0, 1};
  case Model::Registration:
    return {4, 1};
  case Model::UserInks:
    return {3, 1};
  case Model::IndexedUserInk:
    return {2, 1};
  default:
    return {};
  }
}

} // namespace

std::uint16_t CLR_COLORSPEC::GetDensity() const
{
  const CLR_COLORSPEC &colour = Resolved();
  const auto place = PlaceOfDensity(colour.model_);
  if (place.size == 0)
    return 100;
  if (colour.model_ == Model::Registration)
    return GetREGCOLORDensity();
  return place.size == 2 ? colour.Load<std::uint16_t>(place.offset) : colour.Load<std::uint8_t>(place.offset);
}

void CLR_COLORSPEC::SetDensity(std::uint16_t density)
{
  CLR_COLORSPEC *colour = EndOfReferences();
  if (!colour)
    return;
  const auto place = PlaceOfDensity(colour->model_);
  if (place.size == 2)
    colour->Store(place.offset, density);
  else if (place.size == 1)
    colour->Store(place.offset, static_cast<std::uint8_t>(density));
}

bool CLR_COLORSPEC::Validate() const
{
  using namespace ZelClr;
  const CLR_COLORSPEC &colour = Resolved();
  const unsigned model = colour.model_;
  const unsigned paletteType = colour.GetPaletteType();
  if (paletteType == PaletteType::None || paletteType == PaletteType::PantoneMetallicVarnished ||
      paletteType > PaletteType::Last)
    return false;

  const std::uint8_t *bytes = colour.components_;
  switch (model) {
  case Model::Pantone:
    return paletteType == PaletteType::PantoneSpot && colour.GetDensity() <= 100;
  case Model::Cmyk:
  case Model::Registration:
    return bytes[0] <= 100 && bytes[1] <= 100 && bytes[2] <= 100 && bytes[3] <= 100;
  case Model::Hsb:
  case Model::Hls:
    return colour.Load<std::uint16_t>(0) <= 360;
  case Model::BlackWhite:
    return colour.Load<std::uint32_t>(0) <= 1;
  case Model::PantoneHex:
    return IsPantoneHexachromePaletteType(paletteType) && colour.GetDensity() <= 100;
  case Model::UserInks:
  case Model::IndexedUserInk:
  case Model::Spot:
    return colour.GetDensity() <= 100;
  case Model::DeviceN: {
    const WClrColorDeviceN *deviceN = colour.GetDeviceN();
    return deviceN && ValidateDeviceN(*deviceN);
  }
  case Model::Cmyk255:
  case Model::Cmy255:
  case Model::Rgb255:
  case Model::Gray255:
  case Model::Yiq255:
  case Model::Lab:
  case Model::Index:
  case Model::Hexachrome:
  case Model::Cmyk100:
  case Model::Lab255:
  case Model::Rgb48:
  case Model::Gray16:
    return true;
  default:
    return false;
  }
}
