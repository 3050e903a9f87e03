// DeviceN colours of text: whatever is read can be written, and reads back as the same colour.

#include "zelclr/convert/w_clr_color_device_n.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  WClrColorDeviceN colour(nullptr, 0);
  if (!colour.LoadFromStr(std::string_view(reinterpret_cast<const char *>(data), size)))
    return 0;
  const std::string written = colour.SaveInStr();
  WClrColorDeviceN again(nullptr, 0);
  if (!again.LoadFromStr(written) || again.CompareTo(colour) != 0 || again.SaveInStr() != written)
    std::abort();
  return 0;
}
