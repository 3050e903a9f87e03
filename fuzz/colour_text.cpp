// A colour's text: whatever is read can be written, and reads back as the same colour.

#include "zelclr/colour/colour_text.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  const std::string_view text(reinterpret_cast<const char *>(data), size);
  std::string reason;
  const auto colour = ZelClr::ColorSpecFromText(text, &reason);
  if (!colour) {
    if (reason.empty())
      std::abort();
    return 0;
  }
  const std::string written = ZelClr::TextFromColorSpec(*colour);
  const auto again = ZelClr::ColorSpecFromText(written);
  if (!again || *again != *colour || again->GetType() != colour->GetType() ||
      again->GetPaletteGuid() != colour->GetPaletteGuid() || ZelClr::TextFromColorSpec(*again) != written)
    std::abort();
  return 0;
}
