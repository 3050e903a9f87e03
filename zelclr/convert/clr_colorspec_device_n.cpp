// What the colour record asks of the DeviceN value that it owns.

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/convert/w_clr_color_device_n.h"

WClrColorDeviceN *CLR_COLORSPEC::CloneDeviceN(const WClrColorDeviceN &value)
{
  return new WClrColorDeviceN(value);
}

void CLR_COLORSPEC::DestroyDeviceN(WClrColorDeviceN *value)
{
  delete value;
}

bool CLR_COLORSPEC::ValidateDeviceN(const WClrColorDeviceN &value)
{
  return value.Validate();
}

int CLR_COLORSPEC::CompareDeviceN(const WClrColorDeviceN &a, const WClrColorDeviceN &b)
{
  return a.CompareTo(b);
}
