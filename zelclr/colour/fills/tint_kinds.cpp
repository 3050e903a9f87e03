#include "zelclr/colour/fills/tint_kinds.h"

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colour/fills/internal/blend_space.h"
#include "zelclr/colour/fills/internal/tint_rows.h"
#include "zelclr/colour/scaling.h"
#include "zelclr/convert/w_clr_convert.h"

#include <cstdlib>
#include <iterator>
#include <limits>
#include <optional>
#include <vector>

namespace ZelClr {

namespace {

using Context = ColorSystem::ColorContext;
using namespace TintFormulas;
using Ramp = std::shared_ptr<const TintRamp>;

// --- What a tint leads to --------------------------------------------------------------------------------------------

constexpr Rgb kBlack = {0, 0, 0}, kWhite = {255, 255, 255};

int Level256Of(const TINT &tint)
{
  return std::clamp(tint.level256, -256, 256);
}

/// |level256| of the other colour, |complement256| of the own one.
Shares SharesOf(const TINT &tint)
{
  const int other = std::abs(Level256Of(tint));
  return {256 - other, other};
}

bool ChangesNothing(const TINT &tint)
{
  return Level256Of(tint) == 0;
}

/// The colour, or for a level below 0 the second one.
const CLR_COLORSPEC &AimOf(const TINT &tint)
{
  return tint.level < 0 ? tint.secondColour : tint.colour;
}

/// White where there is no colour. Without a context, only what needs no conversion.
std::optional<Rgb> RgbOf(const CLR_COLORSPEC &colour, Context *context)
{
  if (colour.IsInvalid())
    return kWhite;
  CLR_COLORSPEC converted;
  const bool isRgb = colour.GetType() == ClrModel::Rgb255;
  if (!isRgb && (context == nullptr || !ToModel(colour, ClrModel::Rgb255, *context, converted)))
    return std::nullopt;
  const CLR_COLORSPEC &rgb = isRgb ? colour : converted;
  return Rgb{rgb.GetRed(), rgb.GetI255(), rgb.GetBlue()};
}

Ramp ToneRampOf(const TINT &tint, Context *context)
{
  const auto aim = RgbOf(AimOf(tint), context);
  return aim ? ToneRamp(*aim) : nullptr;
}

Ramp MapRampOf(const TINT &tint, Context *context)
{
  const bool turned = tint.level < 0;
  const auto black = RgbOf(turned ? tint.secondColour : tint.colour, context);
  const auto white = RgbOf(turned ? tint.colour : tint.secondColour, context);
  return black && white ? BlendRamp(*black, *white, static_cast<ClrBlendMode>(tint.kind - 8)) : nullptr;
}
static_assert(ClrBlendMode_Straight == 0 && ClrBlendMode_Hue == 1 && ClrBlendMode_HueBack == 2);

/// The ramp of a tint whose colours are known beforehand: a reference may yet change, others depend on the context.
template <Ramp (*kRampOf)(const TINT &, Context *)>
Ramp KnownRamp(const TINT &tint)
{
  return tint.colour.IsReference() || tint.secondColour.IsReference() ? nullptr : kRampOf(tint, nullptr);
}

// --- Formulas of the kinds; empty where a colour has no appearance ---------------------------------------------------

std::optional<Mixed> TowardsAim(const TINT &tint, Context &context)
{
  const auto aim = RgbOf(AimOf(tint), &context);
  return aim ? std::optional(Mixed{*aim, SharesOf(tint)}) : std::nullopt;
}

std::optional<Mixed> TowardsWhiteOrBlack(const TINT &tint, Context &)
{
  return Mixed{tint.level < 0 ? kBlack : kWhite, SharesOf(tint)};
}

std::optional<Shifted> Brightness(const TINT &tint, Context &)
{
  return Shifted{MulDiv(Level256Of(tint), 255, 256)};
}

std::optional<Lit> Light(const TINT &tint, Context &context)
{
  const auto light = RgbOf(tint.colour, &context);
  return light ? std::optional(Lit{*light, tint.level >= 0, SharesOf(tint)}) : std::nullopt;
}

std::optional<Inverted> Inversion(const TINT &tint, Context &)
{
  return Inverted{tint.level < 0, SharesOf(tint)};
}

template <Ramp (*kRampOf)(const TINT &, Context *)>
std::optional<Ramped> GrayRamp(const TINT &tint, Context &context)
{
  Ramp ramp = tint.privateData ? tint.privateData : kRampOf(tint, &context);
  return ramp ? std::optional(Ramped{std::move(ramp), SharesOf(tint)}) : std::nullopt;
}

// --- Pixels, and colours as pixels -----------------------------------------------------------------------------------

template <auto kFormula>
bool TintPixels(const TINT &tint, std::uint8_t *pixels, std::size_t count, Context &context)
{
  if (ChangesNothing(tint))
    return true;
  const auto formula = kFormula(tint, context);
  if (!formula)
    return false;
  TintRow(*formula, pixels, count);
  return true;
}

template <auto kFormula>
bool TintInRgb(const TINT &tint, CLR_COLORSPEC &colour, Context &context)
{
  CLR_COLORSPEC rgb;
  if (!ToModel(colour.Resolved(), ClrModel::Rgb255, context, rgb))
    return false;
  std::uint8_t pixel[] = {rgb.GetBlue(), rgb.GetI255(), rgb.GetRed()};
  if (!TintPixels<kFormula>(tint, pixel, 1, context))
    return false;
  CLR_COLORSPEC::MakeRGB(colour, pixel[2], pixel[1], pixel[0]);
  return true;
}

// --- Colours in their own model --------------------------------------------------------------------------------------

/// White of the colour's own model, or a lack of its ink.
CLR_COLORSPEC WhiteOf(const CLR_COLORSPEC &colour)
{
  switch (colour.GetType()) {
  case ClrModel::DeviceN: // its plates know what white is on them
    return CLR_COLORSPEC::MakeRGB(255, 255, 255);
  case ClrModel::BlackWhite:
    return CLR_COLORSPEC::MakeBW(1);
  default:
    CLR_COLORSPEC white(colour);
    WClrConvert::ApplyDensity(&white, 0);
    return white;
  }
}

/// Mixes in what the colour blends in by itself: its process model, with its alpha and density kept; or its ink or
/// plates, where they can hold the other colour, too, else what both blend in.
bool MixInOwnModel(CLR_COLORSPEC &colour, const CLR_COLORSPEC &aim, Shares shares, Context &context)
{
  const CLR_COLORSPEC own(colour.Resolved());
  const unsigned model = own.GetType();
  const CLR_COLORSPEC *const colours[] = {&own, &aim.Resolved()};
  auto space = BlendSpace::For(std::span(colours).first(1), true);
  const bool isProcess = space && WClrConvert::IsBasicType(space->Model());
  if (!isProcess)
    space = BlendSpace::For(colours, true);
  if (!space)
    return false;
  std::vector<double> from(space->Size()), to(space->Size());
  if (!space->Load(*colours[0], context, from) || !space->Load(*colours[1], context, to))
    return false;
  for (std::size_t i = 0; i < from.size(); ++i) {
    const std::string_view name = isProcess ? FindColourModel(space->Model())->components[i].name : std::string_view();
    if (name != "alpha" && name != "density")
      from[i] = (from[i] * shares.own + to[i] * shares.other) / 256.0;
  }
  CLR_COLORSPEC mixed;
  space->Store(from, std::span(&mixed, 1));
  // HSB, HLS and black-and-white blend in another model than their own.
  if (isProcess && mixed.GetType() != model && !WClrConvert::ConvertToBasicType(&mixed, model, &mixed))
    return false;
  colour = std::move(mixed);
  return true;
}

bool MixTowardsAim(const TINT &tint, CLR_COLORSPEC &colour, Context &context)
{
  if (colour.GetType() == ClrModel::Rgb255)
    return TintInRgb<TowardsAim>(tint, colour, context);
  const CLR_COLORSPEC &aim = AimOf(tint);
  return ChangesNothing(tint) ||
         MixInOwnModel(colour, aim.IsInvalid() ? WhiteOf(colour.Resolved()) : aim, SharesOf(tint), context);
}

bool LightenOrDarken(const TINT &tint, CLR_COLORSPEC &colour, Context &context)
{
  if (tint.level < 0 || colour.GetType() == ClrModel::Rgb255)
    return TintInRgb<TowardsWhiteOrBlack>(tint, colour, context);
  return ChangesNothing(tint) || MixInOwnModel(colour, WhiteOf(colour.Resolved()), SharesOf(tint), context);
}

/// The models whose components are lights, or lack of them, and so are inverted as they are.
struct LightModel
{
  std::uint16_t model;
  std::uint8_t offsets[3];
  bool isDeep; ///< 16 bits
};

constexpr LightModel kLightModels[] = {
  {ClrModel::Rgb255, {2, 1, 0}, false}, {ClrModel::Cmy255, {0, 1, 2}, false}, {ClrModel::Gray255, {0, 0, 0}, false},
  {ClrModel::Rgba, {0, 1, 2}, false},   {ClrModel::Bgra, {2, 1, 0}, false},   {ClrModel::Rgb48, {6, 4, 2}, true},
  {ClrModel::Gray16, {0, 0, 0}, true},
};

template <class Component>
void InvertComponents(CLR_COLORSPEC &colour, const std::uint8_t (&offsets)[3], Inverted formula)
{
  formula.full = std::numeric_limits<Component>::max();
  const auto at = [&](int i) { return colour.GetComponent<Component>(offsets[i]); };
  const Rgb inverted = formula(at(0), at(1), at(2));
  colour.SetComponent(offsets[0], static_cast<Component>(inverted.red));
  colour.SetComponent(offsets[1], static_cast<Component>(inverted.green));
  colour.SetComponent(offsets[2], static_cast<Component>(inverted.blue));
}

bool InvertLights(CLR_COLORSPEC &colour, const Inverted &formula)
{
  for (const LightModel &row : kLightModels) {
    if (row.model != colour.GetType())
      continue;
    if (row.isDeep)
      InvertComponents<std::uint16_t>(colour, row.offsets, formula);
    else
      InvertComponents<std::uint8_t>(colour, row.offsets, formula);
    colour.SetPaletteGuid({});
    return true;
  }
  return false;
}

/// An ink by its density, lights as they are, all else by way of RGB48 and back.
bool Invert(const TINT &tint, CLR_COLORSPEC &colour, Context &context)
{
  if (ChangesNothing(tint))
    return true;
  CLR_COLORSPEC own(colour.Resolved());
  const Inverted formula = *Inversion(tint, context);
  if (IsInk(own)) {
    const int density = std::min<int>(own.GetDensity(), 100);
    own.SetDensity(static_cast<std::uint16_t>(Mix(density, 100 - density, formula.shares)));
  } else if (!InvertLights(own, formula)) {
    CLR_COLORSPEC lights;
    if (!ToModel(own, ClrModel::Rgb48, context, lights) || !InvertLights(lights, formula) ||
        !MixInOwnModel(own, lights, {0, 256}, context))
      return false;
  }
  colour = std::move(own);
  return true;
}

// --- The table -------------------------------------------------------------------------------------------------------

constexpr TintKind kKinds[] = {
  {0, "tint", MixTowardsAim, TintPixels<TowardsAim>, TintModel::Own, true, nullptr},
  {1, "brightness", TintInRgb<Brightness>, TintPixels<Brightness>, TintModel::Rgb, true, nullptr},
  {2, "cover", TintInRgb<TowardsAim>, TintPixels<TowardsAim>, TintModel::Rgb, true, nullptr},
  {3, "light", TintInRgb<Light>, TintPixels<Light>, TintModel::Rgb, true, nullptr},
  {4, "lightness", LightenOrDarken, TintPixels<TowardsWhiteOrBlack>, TintModel::RgbWhenNegative, true, nullptr},
  {5, "inversion", Invert, TintPixels<Inversion>, TintModel::Own, false, nullptr},
  {6, "cover", TintInRgb<TowardsAim>, TintPixels<TowardsAim>, TintModel::Rgb, true, nullptr},
  {7, "tone", TintInRgb<GrayRamp<ToneRampOf>>, TintPixels<GrayRamp<ToneRampOf>>, TintModel::Rgb, false,
   KnownRamp<ToneRampOf>},
  {8, "colour map", TintInRgb<GrayRamp<MapRampOf>>, TintPixels<GrayRamp<MapRampOf>>, TintModel::Rgb, false,
   KnownRamp<MapRampOf>},
  {9, "colour map by hue", TintInRgb<GrayRamp<MapRampOf>>, TintPixels<GrayRamp<MapRampOf>>, TintModel::Rgb, false,
   KnownRamp<MapRampOf>},
  {10, "colour map by hue, backwards", TintInRgb<GrayRamp<MapRampOf>>, TintPixels<GrayRamp<MapRampOf>>, TintModel::Rgb,
   false, KnownRamp<MapRampOf>},
};

} // namespace

std::span<const TintKind> TintKinds()
{
  return kKinds;
}

TintKind FindTintKind(std::uint8_t number)
{
  if (number < std::size(kKinds))
    return kKinds[number];
  TintKind kind = kKinds[2];
  kind.number = number;
  // KEPT: it counts as one that keeps the model (see the header).
  kind.model = TintModel::Own;
  return kind;
}

} // namespace ZelClr
