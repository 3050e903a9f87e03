#include <zelclr/zelclr.h>

int main()
{
  const CLR_COLORSPEC orange = CLR_COLORSPEC::MakeRGB(255, 128, 0);
  return orange.GetRed() == 255 ? 0 : 1;
}
