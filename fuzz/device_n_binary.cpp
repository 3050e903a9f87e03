// DeviceN forms of bytes: whatever is read is whole, safe to use, and written as the bytes that give it again.

#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <cstdlib>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  const std::span bytes(data, size);
  WClrColorSpaceDeviceN space(0, DeviceN_Process_None);
  if (space.LoadFromBuf(bytes) && space.GetSizeBuf() != size)
    std::abort();

  WClrColorDeviceN colour(nullptr, 0);
  std::istringstream stream(std::string(bytes.begin(), bytes.end()));
  WClrColorDeviceN fromStream(nullptr, 0);
  const bool read = colour.LoadFromBuf(bytes);
  if (read && (!fromStream.LoadFrom(stream) || fromStream.CompareTo(colour) != 0))
    std::abort();
  if (!read)
    return 0;

  std::vector<std::uint8_t> written(colour.GetSizeBuf());
  WClrColorDeviceN again(nullptr, 0);
  if (written.size() != size || !colour.SaveInBuf(written) || !again.LoadFromBuf(written) ||
      again.CompareTo(colour) != 0)
    std::abort();

  CLR_COLORSPEC mixed;
  colour.OverprintToCMYK(mixed);
  colour.OverprintToRGB(mixed);
  colour.OverprintToHex(mixed);
  CLR_COLORSPEC::MakeDEVICEN(mixed, new WClrColorDeviceN(colour));
  WClrConvert::SplitDeviceN(mixed);
  WClrConvert::IsAchromaticWhite(mixed);
  colour.ConvertToProcessType(DeviceN_Process_Hexachrome);
  colour.SimplifyColor();
  return 0;
}
