#include "zelclr/colour/clr_colorspec_125x.h"

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/palette_types.h"

#include <bit>

namespace Model = ZelClr::ClrModel;

// Components of the older record are copied as they stand; on a processor of the other byte order they would need
// turning by the table of models.
static_assert(std::endian::native == std::endian::little);

CLR_COLORSPEC::CLR_COLORSPEC(const CLR_COLORSPEC_125X &older)
{
  *this = older;
}

CLR_COLORSPEC &CLR_COLORSPEC::operator=(const CLR_COLORSPEC_125X &older)
{
  const auto model = std::bit_cast<std::uint16_t>(older.model);
  MakeINVALID(*this);
  if (model >= Model::DeviceN || !ZelClr::FindColourModel(model))
    return *this;
  SetType(model);
  std::memcpy(components_, older.components.data(), older.components.size());
  if (model != Model::Invalid && older.paletteType[0] != ZelClr::PaletteType::None)
    SetPaletteType(older.paletteType[0]);
  return *this;
}
