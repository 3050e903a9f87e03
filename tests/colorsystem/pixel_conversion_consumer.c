/* A renderer written in C: 0 when all is well, else the number of what is not. */
#include "zelclr/colorsystem/proofing/pixel_conversion.h"

#include <string.h>

int ConvertPixelsFromC(void);

int ConvertPixelsFromC(void)
{
  const uint8_t white[] = {0, 0, 0, 0};
  const uint8_t rgb[] = {255, 255, 255};
  uint8_t shown[4];
  uint8_t inks[4];
  memset(shown, 1, sizeof shown);
  memset(inks, 99, sizeof inks);
  if (!ConvertPixelsForDisplay(L"", white, 3, 4, 0, shown, 4, kDestinationHasAlpha, 1, 1))
    return 1;
  if (shown[0] < 250 || shown[1] < 250 || shown[2] < 250 || shown[3] != 255)
    return 2;
  if (!RecoverCmykPixels(rgb, inks, 1, 1))
    return 3;
  if (inks[0] + inks[1] + inks[2] + inks[3] > 10)
    return 4;
  return ConvertPixelsForDisplay(L"", white, 10, 0, 0, shown, 0, 0, 1, 1) ? 5 : 0;
}
