// A tint: one effect that alters colours and pixels. docs/tints.md says what each kind does and draws it.
//
// Pixels of tints are three bytes each, blue, green, red, of 0 to 255, packed.
// A colour and a pixel of the same RGB255 components come out the same, whatever the tint.
//
// Threads: a value; a tint may be applied by many threads at once. Errors: 0 or false, and then what was to be tinted
// stays as it was. Null pointers are answered so, too.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <memory>

namespace ColorSystem {
class ColorContext;
}

namespace ZelClr {
class InputArchive;
class OutputArchive;
struct TintRamp;
} // namespace ZelClr

struct TINT;

/// Tints a colour; the result belongs to no palette, but that of its ink. What needs to be converted is so through the
/// context. False for a colour, or a tint's colour, without an appearance.
using TintColourOperation = bool(const TINT &tint, CLR_COLORSPEC &colour, ColorSystem::ColorContext &context);
/// Tints pixels in place. With a count of 0 the pixels may be null, and the answer says whether it could.
using TintPixelOperation = bool(const TINT &tint, std::uint8_t *pixels, std::size_t count,
                                ColorSystem::ColorContext &context);

/// A tint, as TNTSetTint makes it. Whoever writes a field calls TNTUpdatePrivateTintData before the tint is applied.
struct ZELCLR_API TINT
{
  /// Everything 0, both colours invalid, no operations: such a tint cannot be applied.
  void Clear() { *this = TINT(); }

  // The form of a tint in archives: tint_archive.h.
  /// False, with nothing written, for a colour that has no text form (colour_text.h).
  bool SaveIn(ZelClr::OutputArchive &archive) const;
  /// False, with tint and archive as they were, where the archive's next form is not a whole tint.
  bool LoadFrom(ZelClr::InputArchive &archive);

  std::uint64_t callersOwn = 0; ///< setting and clearing make it 0; neither archived nor otherwise looked at
  std::uint8_t kind = 0;
  CLR_COLORSPEC colour;
  CLR_COLORSPEC secondColour; ///< invalid where there is none; then it counts as white
  std::int32_t level = 0;     ///< -1000 to 1000; 0 has no effect, numbers beyond act as the ends
  std::int32_t level256 = 0;  ///< the level in 256ths, truncated toward zero
  std::int32_t complement256 =
    0; ///< what is left of the colour itself: the rest to 256, or for a level below 0 to -256
  TintColourOperation *colourOperation = nullptr;
  TintPixelOperation *pixelOperation = nullptr;
  /// What the kind knows beforehand; copies share it, for nobody changes it.
  std::shared_ptr<const ZelClr::TintRamp> privateData;
};

/// A new tint, set as TNTSetTint does. The caller owns it, until a list does.
ZELCLR_API TINT *TNTGetNewTint(const CLR_COLORSPEC &colour, int level, unsigned char kind);
/// The same with a second colour, for the kinds that read one; an invalid colour is none.
ZELCLR_API TINT *TNTGetNewTintFor6(const CLR_COLORSPEC &colour, int level, unsigned char kind,
                                   const CLR_COLORSPEC &secondColour);
/// A tint of the caller's own; null for null.
ZELCLR_API TINT *TNTCopyTint(const TINT *tint);
/// Of a tint that no list owns.
ZELCLR_API void TNTDestroyTint(TINT *tint);

/// Sets everything anew. Without a colour it is RGB255 (128, 128, 128); the colours may be the tint's own. Any kind is
/// stored; docs/tints.md says what one without a meaning does.
ZELCLR_API int TNTSetTint(TINT *tint, const CLR_COLORSPEC *colour, int level, unsigned char kind,
                          const CLR_COLORSPEC *secondColour);
ZELCLR_API void TNTClearTint(TINT *tint);
/// Derives level256, complement256, the operations and the private data from the other fields.
ZELCLR_API void TNTUpdatePrivateTintData(TINT *tint);

/// Tints one RGB colour: the low bytes of the three numbers.
ZELCLR_API int TNTApplyTintToRGB(const TINT *tint, int *red, int *green, int *blue, ColorSystem::ColorContext &context);
