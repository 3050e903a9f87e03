#include "zelclr/colour/clr_colorspec.h"

#include "zelclr/colour/palette_types.h"
#include "zelclr/colour/scaling.h"

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
  return IsReference() && other.IsReference() && GetReference() == other.GetReference();
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

// --- Making ---------------------------------------------------------------------------------------------------------

void CLR_COLORSPEC::MakeCOLORREF(CLR_COLORSPEC &colour, COLORREF value)
{
  MakeRGB(colour, static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
          static_cast<std::uint8_t>(value >> 16));
}

void CLR_COLORSPEC::MakeFromRGB(CLR_COLORSPEC &colour, std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
  MakeRGB(colour, red, green, blue);
}

void CLR_COLORSPEC::MakeCMY(CLR_COLORSPEC &colour, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow)
{
  colour.Begin(Model::Cmy255);
  colour.Store(0, CLR_CMY{cyan, magenta, yellow});
}

void CLR_COLORSPEC::MakeCMYK(CLR_COLORSPEC &colour, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                             std::uint8_t black)
{
  colour.Begin(Model::Cmyk);
  colour.Store(0, CLR_CMY{cyan, magenta, yellow});
  colour.Store(3, black);
}

void CLR_COLORSPEC::MakeCMYK255(CLR_COLORSPEC &colour, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                                std::uint8_t black)
{
  MakeCMYK(colour, cyan, magenta, yellow, black);
  colour.model_ = Model::Cmyk255;
}

void CLR_COLORSPEC::MakeCMYK100(CLR_COLORSPEC &colour, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                                std::uint8_t black)
{
  MakeCMYK(colour, cyan, magenta, yellow, black);
  colour.model_ = Model::Cmyk100;
}

void CLR_COLORSPEC::MakeREGCOLOR(CLR_COLORSPEC &colour)
{
  MakeCMYK(colour, 100, 100, 100, 100);
  colour.Store(4, std::uint8_t{100});
  colour.model_ = Model::Registration;
}

void CLR_COLORSPEC::MakeHSB(CLR_COLORSPEC &colour, std::int16_t hue, std::uint8_t saturation, std::uint8_t brightness)
{
  colour.Begin(Model::Hsb);
  colour.Store(0, hue);
  colour.Store(2, saturation);
  colour.Store(3, brightness);
}

void CLR_COLORSPEC::MakeHLS(CLR_COLORSPEC &colour, std::int16_t hue, std::uint8_t lightness, std::uint8_t saturation)
{
  MakeHSB(colour, hue, lightness, saturation);
  colour.model_ = Model::Hls;
}

void CLR_COLORSPEC::MakeUSERINKS(CLR_COLORSPEC &colour, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                                 std::uint8_t density)
{
  MakeRGB(colour, red, green, blue);
  colour.Store(3, density);
  colour.model_ = Model::UserInks;
}

void CLR_COLORSPEC::MakeINDEXEDUSERINKS(CLR_COLORSPEC &colour, std::int16_t ink, std::uint8_t density)
{
  colour.Begin(Model::IndexedUserInk);
  colour.Store(0, ink);
  colour.Store(2, density);
}

void CLR_COLORSPEC::MakeYIQ255(CLR_COLORSPEC &colour, std::uint8_t y, std::uint8_t i, std::uint8_t q)
{
  MakeCMY(colour, y, i, q);
  colour.model_ = Model::Yiq255;
}

void CLR_COLORSPEC::MakeLAB(CLR_COLORSPEC &colour, std::uint8_t l, std::int8_t a, std::int8_t b)
{
  MakeCMY(colour, l, static_cast<std::uint8_t>(a), static_cast<std::uint8_t>(b));
  colour.model_ = Model::Lab;
}

void CLR_COLORSPEC::MakeLAB255(CLR_COLORSPEC &colour, std::uint8_t l, std::uint8_t a, std::uint8_t b)
{
  MakeCMY(colour, l, a, b);
  colour.model_ = Model::Lab255;
}

void CLR_COLORSPEC::MakeXYZ(CLR_COLORSPEC &colour, std::uint8_t x, std::uint8_t y, std::uint8_t z)
{
  MakeCMY(colour, x, y, z);
  colour.model_ = Model::Xyz;
}

void CLR_COLORSPEC::MakeGRAY(CLR_COLORSPEC &colour, std::uint8_t gray)
{
  colour.Begin(Model::Gray255);
  colour.Store(0, gray);
}

void CLR_COLORSPEC::MakeBW(CLR_COLORSPEC &colour, std::int32_t white)
{
  colour.Begin(Model::BlackWhite);
  colour.Store(0, white);
}

void CLR_COLORSPEC::MakeHEX(CLR_COLORSPEC &colour, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                            std::uint8_t black, std::uint8_t orange, std::uint8_t green)
{
  colour.Begin(Model::Hexachrome);
  colour.Store(0, std::uint8_t{100});
  const std::uint8_t inks[] = {cyan, magenta, yellow, black, orange, green};
  std::memcpy(colour.components_ + 2, inks, sizeof inks);
}

void CLR_COLORSPEC::MakePANTONEHEX(CLR_COLORSPEC &colour, std::uint16_t paletteType, std::int16_t number,
                                   std::uint16_t density)
{
  MakePANTONE(colour, number, density);
  colour.model_ = Model::PantoneHex;
  colour.palette_ = ZelClr::PaletteIdentifierFromType(paletteType);
}

void CLR_COLORSPEC::MakePANTONE(CLR_COLORSPEC &colour, std::int16_t number, std::uint16_t density)
{
  colour.Begin(Model::Pantone);
  colour.Store(0, number);
  colour.Store(2, density);
  colour.palette_ = ZelClr::kPantonePaletteIdentifier;
}

void CLR_COLORSPEC::MakeRGB48(CLR_COLORSPEC &colour, std::uint16_t red, std::uint16_t green, std::uint16_t blue)
{
  colour.Begin(Model::Rgb48);
  colour.Store(0, std::uint16_t{100});
  colour.Store(2, blue);
  colour.Store(4, green);
  colour.Store(6, red);
}

void CLR_COLORSPEC::MakeGRAY16(CLR_COLORSPEC &colour, std::uint16_t gray)
{
  colour.Begin(Model::Gray16);
  colour.Store(0, gray);
}

void CLR_COLORSPEC::MakeDEVICEN(CLR_COLORSPEC &colour, WClrColorDeviceN *value)
{
  if (colour.model_ == Model::DeviceN && colour.GetDeviceN() == value)
    colour.model_ = Model::Invalid; // it is the colour's own already and must outlive the release
  colour.Begin(Model::DeviceN);
  colour.Store(0, value);
}

void CLR_COLORSPEC::MakeSPOT(CLR_COLORSPEC &colour, const Guid &palette, std::int16_t number, std::uint16_t density,
                             const SpotColorDefinition *definition)
{
  const Guid identifier = palette; // may be the colour's own
  colour.Begin(Model::Spot);
  colour.Store(0, number);
  colour.Store(2, density);
  colour.Store(8, definition);
  colour.palette_ = identifier;
}

void CLR_COLORSPEC::MakeSPOT(CLR_COLORSPEC &colour, std::uint16_t paletteType, std::int16_t number,
                             std::uint16_t density, const SpotColorDefinition *definition)
{
  MakeSPOT(colour, ZelClr::PaletteIdentifierFromType(paletteType), number, density, definition);
}

void CLR_COLORSPEC::MakeINDEX(CLR_COLORSPEC &colour, std::uint16_t index)
{
  colour.Begin(Model::Index);
  colour.Store(0, index);
}

void CLR_COLORSPEC::MakeSCRGB(CLR_COLORSPEC &colour, float red, float green, float blue)
{
  colour.Begin(Model::ScRgb);
  colour.Store(0, red);
  colour.Store(4, green);
  colour.Store(8, blue);
}

void CLR_COLORSPEC::MakeRGBA(CLR_COLORSPEC &colour, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                             std::uint8_t alpha)
{
  MakeCMYK(colour, red, green, blue, alpha);
  colour.model_ = Model::Rgba;
}

void CLR_COLORSPEC::MakeBGRA(CLR_COLORSPEC &colour, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                             std::uint8_t alpha)
{
  MakeCMYK(colour, blue, green, red, alpha);
  colour.model_ = Model::Bgra;
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

void CLR_COLORSPEC::MakeWhite(CLR_COLORSPEC &colour)
{
  if (colour.IsReference()) {
    if (CLR_COLORSPEC *end = colour.EndOfReferences())
      MakeWhite(*end);
    return;
  }
  constexpr std::uint8_t kFull = 255;
  constexpr std::uint16_t kFull16 = 65535;
  switch (colour.model_) {
  case Model::Cmyk:
  case Model::Cmyk255:
  case Model::Cmyk100:
    colour.Store(0, std::uint32_t{0});
    break;
  case Model::Cmy255:
    colour.Store(0, CLR_CMY{0, 0, 0});
    break;
  case Model::Rgb255:
    colour.Store(0, CLR_CMY{kFull, kFull, kFull});
    break;
  case Model::Hsb:
    colour.Store(2, std::uint8_t{0});
    colour.Store(3, kFull);
    break;
  case Model::Hls:
    colour.Store(2, kFull);
    break;
  case Model::BlackWhite:
    colour.Store(0, std::int32_t{1});
    break;
  case Model::Gray255:
    colour.Store(0, kFull);
    break;
  case Model::Yiq255:
    colour.Store(0, CLR_CMY{kFull, 100, 100});
    break;
  case Model::Lab:
    colour.Store(0, CLR_CMY{kFull, 0, 0});
    break;
  case Model::Lab255:
    colour.Store(0, CLR_CMY{kFull, 128, 128});
    break;
  case Model::PantoneHex:
    colour.Store(2, std::uint16_t{0});
    break;
  case Model::Hexachrome:
    std::memset(colour.components_ + 2, 0, 6);
    break;
  case Model::Rgb48:
    colour.Store(2, kFull16);
    colour.Store(4, kFull16);
    colour.Store(6, kFull16);
    break;
  case Model::Gray16:
    colour.Store(0, kFull16);
    break;
  default:
    break;
  }
}

bool CLR_COLORSPEC::MakeProcessFromUserInks(const CLR_COLORSPEC &userInk, CLR_COLORSPEC &process)
{
  const CLR_COLORSPEC &ink = userInk.Resolved();
  const int density = std::min<int>(ink.GetDensity(), 100);
  if (ink.model_ == Model::UserInks) {
    const auto thinned = [&](std::size_t offset) {
      return static_cast<std::uint8_t>(255 - ZelClr::MulDiv(255 - ink.Load<std::uint8_t>(offset), density, 100));
    };
    MakeRGB(process, thinned(2), thinned(1), thinned(0));
    return true;
  }
  const int index = ink.Load<std::int16_t>(0);
  if (ink.model_ != Model::IndexedUserInk || !ink.palette_.IsNull() || index < 0 || index > 3)
    return false;
  MakeCMYK100(process, 0, 0, 0, 0);
  process.Store(static_cast<std::size_t>(index), static_cast<std::uint8_t>(density));
  return true;
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
