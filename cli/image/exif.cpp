#include "cli/image/formats.h"
#include "zelclr/platform/bytes.h"

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

constexpr std::uint16_t kOrientation = 0x0112;
constexpr std::uint16_t kHorizontalResolution = 0x011A;
constexpr std::uint16_t kVerticalResolution = 0x011B;
constexpr std::uint16_t kResolutionUnit = 0x0128;
constexpr std::uint16_t kShort = 3;
constexpr std::uint16_t kRational = 5;
constexpr std::uint16_t kCentimetre = 3; // of the unit; 2 is the inch
constexpr double kCentimetresPerInch = 2.54;
constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kEntryBytes = 12;
constexpr std::uint32_t kResolutionScale = 1000;

/// Numbers of EXIF at any offset, in the byte order that it states; 0 beyond its end.
class ExifBytes
{
public:
  explicit ExifBytes(std::span<const std::uint8_t> bytes) : bytes_(bytes), big_(!bytes.empty() && bytes[0] == 'M') {}

  template <class Integer>
  Integer At(std::size_t offset) const
  {
    ZelUtl::ByteReader reader(offset < bytes_.size() ? bytes_.subspan(offset) : std::span<const std::uint8_t>());
    return big_ ? reader.ReadBig<Integer>() : reader.Read<Integer>();
  }
  double RationalAt(std::size_t offset) const
  {
    const auto divisor = At<std::uint32_t>(offset + 4);
    return divisor == 0 ? 0.0 : At<std::uint32_t>(offset) / static_cast<double>(divisor);
  }

private:
  std::span<const std::uint8_t> bytes_;
  bool big_;
};

} // namespace

void ReadExif(std::span<const std::uint8_t> exif, ImageInfo &info)
{
  const ExifBytes bytes(exif);
  if (bytes.At<std::uint16_t>(2) != 42)
    return;
  const std::size_t directory = bytes.At<std::uint32_t>(4);
  const std::size_t count = bytes.At<std::uint16_t>(directory);
  double horizontal = 0;
  double vertical = 0;
  double unitsPerInch = 1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = directory + 2 + i * kEntryBytes;
    const auto type = bytes.At<std::uint16_t>(entry + 2);
    const auto number = bytes.At<std::uint16_t>(entry + 8);
    const std::size_t offset = bytes.At<std::uint32_t>(entry + 8);
    switch (bytes.At<std::uint16_t>(entry)) {
    case kOrientation:
      if (type == kShort && number >= 1 && number <= 8)
        info.orientation = number;
      break;
    case kHorizontalResolution:
      horizontal = type == kRational ? bytes.RationalAt(offset) : 0.0;
      break;
    case kVerticalResolution:
      vertical = type == kRational ? bytes.RationalAt(offset) : 0.0;
      break;
    case kResolutionUnit:
      unitsPerInch = number == kCentimetre ? kCentimetresPerInch : 1.0;
      break;
    default:
      break;
    }
  }
  if (info.horizontalResolution <= 0 && horizontal > 0 && vertical > 0) {
    info.horizontalResolution = horizontal * unitsPerInch;
    info.verticalResolution = vertical * unitsPerInch;
  }
}

std::vector<std::uint8_t> ExifOf(const ImageInfo &info)
{
  const bool resolution = info.horizontalResolution > 0 && info.verticalResolution > 0;
  if (!resolution && info.orientation == 1)
    return {};
  const auto entries = static_cast<std::uint16_t>(resolution ? 4 : 1);
  const std::size_t behind = kHeaderBytes + 2 + entries * kEntryBytes + 4;
  ZelUtl::ByteWriter writer;
  const auto entry = [&writer](std::uint16_t tag, std::uint16_t type, std::size_t value) {
    writer.Write(tag);
    writer.Write(type);
    writer.Write(std::uint32_t{1});
    writer.Write(static_cast<std::uint32_t>(value));
  };
  for (const char c : {'I', 'I'})
    writer.Write(static_cast<std::uint8_t>(c));
  writer.Write(std::uint16_t{42});
  writer.Write(static_cast<std::uint32_t>(kHeaderBytes));
  writer.Write(entries);
  entry(kOrientation, kShort, info.orientation);
  if (resolution) {
    entry(kHorizontalResolution, kRational, behind);
    entry(kVerticalResolution, kRational, behind + 8);
    entry(kResolutionUnit, kShort, 2);
  }
  writer.Write(std::uint32_t{0}); // no further directory
  if (resolution) {
    for (const double value : {info.horizontalResolution, info.verticalResolution}) {
      constexpr double kMost = 4'000'000;
      writer.Write(static_cast<std::uint32_t>(std::lround(std::min(value, kMost) * kResolutionScale)));
      writer.Write(kResolutionScale);
    }
  }
  return writer.Bytes();
}

} // namespace cli
