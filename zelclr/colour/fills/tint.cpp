#include "zelclr/colour/fills/tint.h"

#include "zelclr/colour/fills/tint_kinds.h"

#include <algorithm>
#include <utility>

TINT *TNTGetNewTint(const CLR_COLORSPEC &colour, int level, unsigned char kind)
{
  return TNTGetNewTintFor6(colour, level, kind, CLR_COLORSPEC());
}

TINT *TNTGetNewTintFor6(const CLR_COLORSPEC &colour, int level, unsigned char kind, const CLR_COLORSPEC &secondColour)
{
  auto tint = std::make_unique<TINT>();
  TNTSetTint(tint.get(), &colour, level, kind, &secondColour);
  return tint.release();
}

TINT *TNTCopyTint(const TINT *tint)
{
  return tint != nullptr ? new TINT(*tint) : nullptr;
}

void TNTDestroyTint(TINT *tint)
{
  delete tint;
}

int TNTSetTint(TINT *tint, const CLR_COLORSPEC *colour, int level, unsigned char kind,
               const CLR_COLORSPEC *secondColour)
{
  if (tint == nullptr)
    return 0;
  TINT set; // aside: the colours may be the tint's own
  set.colour = colour != nullptr ? *colour : CLR_COLORSPEC::MakeRGB(128, 128, 128);
  if (secondColour != nullptr)
    set.secondColour = *secondColour;
  set.level = level;
  set.kind = kind;
  TNTUpdatePrivateTintData(&set);
  *tint = std::move(set);
  return 1;
}

void TNTClearTint(TINT *tint)
{
  if (tint != nullptr)
    tint->Clear();
}

void TNTUpdatePrivateTintData(TINT *tint)
{
  if (tint == nullptr)
    return;
  tint->level256 = std::clamp(tint->level, -1000, 1000) * 256 / 1000;
  tint->complement256 = (tint->level256 >= 0 ? 256 : -256) - tint->level256;
  const ZelClr::TintKind kind = ZelClr::FindTintKind(tint->kind);
  tint->colourOperation = kind.colourOperation;
  tint->pixelOperation = kind.pixelOperation;
  tint->privateData = kind.privateData != nullptr ? kind.privateData(*tint) : nullptr;
}

int TNTApplyTintToRGB(const TINT *tint, int *red, int *green, int *blue, ColorSystem::ColorContext &context)
{
  if (tint == nullptr || tint->pixelOperation == nullptr || red == nullptr || green == nullptr || blue == nullptr)
    return 0;
  std::uint8_t pixel[] = {static_cast<std::uint8_t>(*blue), static_cast<std::uint8_t>(*green),
                          static_cast<std::uint8_t>(*red)};
  if (!tint->pixelOperation(*tint, pixel, 1, context))
    return 0;
  *blue = pixel[0];
  *green = pixel[1];
  *red = pixel[2];
  return 1;
}
