/* Pixels of renderers, without classes: callable from C.
 *
 * Threads: plain functions, safe from any thread. Errors: false, with the destination unspecified, when a profile is
 * not installed, a buffer cannot be (null, or a stride too small for a row) or nothing converts; nothing is thrown.
 * Nothing beyond the rows is read or written. A buffer without pixels succeeds. */
#ifndef ZELCLR_COLORSYSTEM_PROOFING_PIXEL_CONVERSION_H
#define ZELCLR_COLORSYSTEM_PROOFING_PIXEL_CONVERSION_H

#include "zelclr/platform/export.h"

#include <stdbool.h>
#include <stdint.h>
#include <wchar.h>

#ifdef __cplusplus
extern "C" {
#endif

enum
{
  kSourceHasAlpha = 1,          /* bit 0 of `flags` */
  kSourceIsRenderingOfCmyk = 2, /* bit 1: RGB that is turned back into CMYK first */
  kDestinationHasAlpha = 1      /* bit 0 of `destinationAlpha` */
};

/* Converts pixels of a record model (colourType, a number of clr_colorspec.h) for the display.
 *
 * profileName: the source profile as the profile manager finds it; null or empty for the usual one of the model, which
 * Rgb, Cmyk and Grayscale have: "sRGB-Placeholder!", "USWebCoatedSWOP.icc", "Gray Gamma 22.icc".
 * Samples: 8 bits, 0 to 255 (0 to 100 for the models in percent); 16 bits for RGB48 and GRAY16; floats for scRGB.
 * RGB of every kind lies as B G R or B G R A, in the source (by the flags, also where its model has alpha of its own)
 * as in the destination, which has 8 bits. RGB and models of 16 bits can have alpha, no others.
 * Strides are in bytes; 0 stands for rows padded to 4 bytes. The buffers may be one where their pixels have one size
 * and their rows one stride.
 * A rendering of CMYK is read as RecoverCmykPixels reads it, rows of 3 * width bytes without padding, whatever the
 * stride says. */
ZELCLR_API bool ConvertPixelsForDisplay(const wchar_t *profileName, const void *source, uint32_t colourType,
                                        uint32_t sourceStride, uint32_t flags, void *destination,
                                        uint32_t destinationStride, uint8_t destinationAlpha, uint32_t width,
                                        uint32_t height);

/* Turns an RGB rendering (B G R, 3 bytes to a pixel, rows of 3 * width bytes) back into CMYK (C M Y K, 4 bytes to a
 * pixel, rows of 4 * width bytes): from sRGB to "USWebCoatedSWOP.icc", with the intent and the treatment of black of
 * the application's colour settings. */
ZELCLR_API bool RecoverCmykPixels(const void *source, void *destination, uint32_t width, uint32_t height);

#ifdef __cplusplus
}
#endif

#endif
