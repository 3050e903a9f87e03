#include <zelclr/zelclr.h>

#include <iostream>

int main()
{
  const auto orange = CLR_COLORSPEC::MakeRGB(255, 128, 0);

  CLR_COLORSPEC inks;
  WClrConvert::ConvertToBasicType(&inks, ZelClr::ClrModel::Cmyk100, &orange);

  std::cout << ZelClr::TextFromColorSpec(orange) << " is " << ZelClr::TextFromColorSpec(inks) << '\n';
}
