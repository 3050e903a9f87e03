#include "zelclr/palettes/formats/internal/binary_palette.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace ZelClr {

std::string ReadUtf16(ZelUtl::ByteReader &reader, std::size_t units)
{
  ZelUtl::ByteReader text(reader.Take(units * 2));
  std::u16string wide;
  while (!text.AtEnd()) {
    const auto unit = text.ReadBig<std::uint16_t>();
    if (unit == 0)
      break;
    wide += static_cast<char16_t>(unit);
  }
  return ZelUtl::Utf8FromWide(ZelUtl::WideFromUtf16(wide));
}

std::u16string Utf16FromUtf8(std::string_view text)
{
  std::u16string wide = ZelUtl::Utf16FromWide(ZelUtl::WideFromUtf8(text));
  std::erase(wide, u'\0');
  return wide;
}

void WriteUtf16(ZelUtl::ByteWriter &writer, std::u16string_view text)
{
  for (const char16_t unit : text)
    writer.WriteBig(static_cast<std::uint16_t>(unit));
  writer.WriteBig(std::uint16_t{0});
}

float ReadBigFloat(ZelUtl::ByteReader &reader)
{
  return std::bit_cast<float>(reader.ReadBig<std::uint32_t>());
}

void WriteBigFloat(ZelUtl::ByteWriter &writer, double value)
{
  writer.WriteBig(std::bit_cast<std::uint32_t>(static_cast<float>(value)));
}

std::uint16_t Scaled(double value, double most)
{
  return value > 0.0 ? static_cast<std::uint16_t>(std::lround(std::min(value, 1.0) * most)) : std::uint16_t{0};
}

std::optional<double> WithinRange(double value, double least, double most)
{
  const double slack = (most - least) * 1e-4;
  if (!(value >= least - slack && value <= most + slack))
    return std::nullopt;
  return std::clamp(value, least, most);
}

Swatch SwatchOfValues(std::string name, SwatchModel model, const std::array<double, 4> &values)
{
  switch (model) {
  case SwatchModel::Cmyk:
    return CmykSwatch(std::move(name), values[0], values[1], values[2], values[3]);
  case SwatchModel::Gray:
    return GraySwatch(std::move(name), values[0]);
  case SwatchModel::Lab:
    return LabSwatch(std::move(name), values[0], values[1], values[2]);
  default:
    return RgbSwatch(std::move(name), values[0], values[1], values[2]);
  }
}

std::optional<SwatchBook> Finished(SwatchBook book, ReadProblem &problem)
{
  if (book.swatches.empty()) {
    problem = {0, "no colours"};
    return std::nullopt;
  }
  for (std::size_t i = 0; i < book.swatches.size(); ++i)
    book.swatches[i].line = i + 1;
  return book;
}

} // namespace ZelClr
