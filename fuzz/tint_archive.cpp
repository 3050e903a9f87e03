// Any bytes as an archive of tints: each is refused, or safe to apply and written as bytes that give it again.

#include "zelclr/colour/fills/tint_archive.h"

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/convert/w_clr_convert.h"

#include <cstdlib>

namespace {

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

void Use(const TINT &tint)
{
  static ColorSystem::ColorContext context;
  std::uint8_t pixels[3 * 20];
  for (std::size_t i = 0; i < sizeof pixels; ++i)
    pixels[i] = static_cast<std::uint8_t>(i * 13);
  CLR_COLORSPEC colour = CLR_COLORSPEC::MakeRGB(pixels[2], pixels[1], pixels[0]);
  const bool tinted = tint.colourOperation(tint, colour, context);
  Demand(tint.pixelOperation(tint, pixels, 20, context) == tinted);
  Demand(colour == CLR_COLORSPEC::MakeRGB(pixels[2], pixels[1], pixels[0]));
  CLR_COLORSPEC own(tint.colour);
  tint.colourOperation(tint, own, context);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  ZelClr::InputArchive archive(std::span(data, size));
  TINT tint;
  while (!archive.AtEnd()) {
    if (!tint.LoadFrom(archive)) {
      if (!archive.Skip())
        return 0;
      continue;
    }
    ZelClr::OutputArchive written;
    Demand(tint.SaveIn(written));
    ZelClr::InputArchive back(written.Bytes());
    TINT again;
    Demand(again.LoadFrom(back) && back.AtEnd());
    Demand(again.kind == tint.kind && again.level == tint.level);
    Demand(WClrConvert::ColorsAreSame(again.colour, tint.colour));
    Demand(WClrConvert::ColorsAreSame(again.secondColour, tint.secondColour));
    Use(tint);
  }
  return 0;
}
