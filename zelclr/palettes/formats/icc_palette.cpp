#include "zelclr/palettes/formats/icc_palette.h"

#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/platform/icc_file.h"
#include "zelclr/platform/text.h"

namespace ZelClr {

namespace {

using ZelUtl::ByteReader;
using ZelUtl::IccSignature;

constexpr std::size_t kNameSize = 32;
constexpr std::size_t kMostDeviceCoordinates = 15;

std::string ReadName(ByteReader &reader)
{
  std::string text = TextOf(reader.Take(kNameSize));
  text.resize(std::min(text.find('\0'), text.size()));
  if (ZelUtl::IsValidUtf8(text))
    return text;
  std::wstring latin;
  for (const char c : text)
    latin += static_cast<wchar_t>(static_cast<unsigned char>(c));
  return ZelUtl::Utf8FromWide(latin);
}

Formulas::Lab LabFrom(ByteReader &reader, bool isXyz)
{
  const double first = reader.ReadBig<std::uint16_t>();
  const double second = reader.ReadBig<std::uint16_t>();
  const double third = reader.ReadBig<std::uint16_t>();
  if (isXyz)
    return Formulas::CieLabFromXyz({first / 32768.0, second / 32768.0, third / 32768.0});
  return {std::min(first * 100.0 / 65280.0, 100.0), second / 256.0 - 128.0, third / 256.0 - 128.0};
}

} // namespace

bool RecognisesIcc(std::string_view bytes)
{
  const auto header = ZelUtl::IccHeaderOf(BytesOf(bytes));
  return header && header->deviceClass == IccSignature("nmcl");
}

std::optional<SwatchBook> ReadIcc(std::string_view bytes, ReadProblem &problem)
{
  const auto refuse = [&problem](std::string reason) {
    problem = {0, std::move(reason)};
    return std::nullopt;
  };
  const auto profile = BytesOf(bytes);
  const auto header = ZelUtl::IccHeaderOf(profile);
  if (!header || header->deviceClass != IccSignature("nmcl"))
    return refuse("not an ICC profile of named colours");
  if (header->size > bytes.size())
    return refuse("the file is shorter than it says");
  const bool isXyz = header->connectionSpace == IccSignature("XYZ ");
  if (!isXyz && header->connectionSpace != IccSignature("Lab "))
    return refuse("the colours of the profile are neither in Lab nor in XYZ");

  ByteReader reader(ZelUtl::IccTagOf(profile, IccSignature("ncl2")));
  if (reader.ReadBig<std::uint32_t>() != IccSignature("ncl2"))
    return refuse("the profile has no table of named colours");
  reader.ReadBig<std::uint32_t>();
  reader.ReadBig<std::uint32_t>();
  const std::size_t count = reader.ReadBig<std::uint32_t>();
  const std::size_t deviceCoordinates = reader.ReadBig<std::uint32_t>();
  const std::string prefix = ReadName(reader);
  const std::string suffix = ReadName(reader);
  if (count > kMostSwatches)
    return refuse("more than " + std::to_string(kMostSwatches) + " colours");
  if (deviceCoordinates > kMostDeviceCoordinates)
    return refuse("more than " + std::to_string(kMostDeviceCoordinates) + " device coordinates");
  if (!reader.Ok() || count * (kNameSize + 6 + 2 * deviceCoordinates) > reader.Remaining())
    return refuse("the profile has fewer colours than it says");

  SwatchBook book;
  book.name = ZelUtl::Utf8FromWide(ZelUtl::DescriptionFromIccTag(ZelUtl::IccTagOf(profile, IccSignature("desc"))));
  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = prefix + ReadName(reader) + suffix;
    const Formulas::Lab lab = LabFrom(reader, isXyz);
    reader.Take(2 * deviceCoordinates);
    book.swatches.push_back(LabSwatch(name, lab.l, lab.a, lab.b));
    book.swatches.back().spot = true;
  }
  if (isXyz)
    book.notes.push_back(CountOf(count, "XYZ colour") + " became Lab");
  if (deviceCoordinates > 0)
    book.notes.push_back("the device coordinates of " + CountOf(count, "colour") + " were left out");
  return Finished(std::move(book), problem);
}

} // namespace ZelClr
