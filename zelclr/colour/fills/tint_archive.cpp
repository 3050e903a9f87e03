#include "zelclr/colour/fills/tint_archive.h"

#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/w_clr_color_device_n.h"

#include <limits>

namespace ZelClr {

namespace {

// Frozen: documents hold these numbers.
constexpr std::uint32_t kTint = 0x544E545A; // "ZTNT"
constexpr std::uint16_t kVersion = 1;
constexpr std::size_t kHeader = 10; // signature, length, version
constexpr std::size_t kMostText = 65535;

/// Empty for an invalid colour; nothing where the colour has no text.
std::optional<std::string> TextOf(const CLR_COLORSPEC &colour)
{
  if (colour.GetType() == ClrModel::Invalid)
    return std::string();
  const WClrColorDeviceN *const plates = colour.GetDeviceN();
  std::string text = plates != nullptr ? plates->SaveInStr() : TextFromColorSpec(colour);
  return text.empty() || text.size() > kMostText ? std::nullopt : std::optional(std::move(text));
}

std::optional<CLR_COLORSPEC> ColourOf(std::string_view text)
{
  if (text.empty())
    return CLR_COLORSPEC();
  auto plates = std::make_unique<WClrColorDeviceN>(nullptr, 0);
  if (plates->LoadFromStr(text))
    return CLR_COLORSPEC::MakeDEVICEN(plates.release());
  return ColorSpecFromText(text);
}

void WriteText(ZelUtl::ByteWriter &writer, std::string_view text)
{
  writer.Write(static_cast<std::uint32_t>(text.size()));
  for (const char letter : text)
    writer.Write(static_cast<std::uint8_t>(letter));
}

std::optional<CLR_COLORSPEC> ReadColour(ZelUtl::ByteReader &reader)
{
  const std::size_t size = reader.Read<std::uint32_t>();
  const auto text = reader.Take(size);
  if (!reader.Ok() || size > kMostText)
    return std::nullopt;
  return ColourOf(std::string(text.begin(), text.end()));
}

/// The bytes of the whole form that comes first; empty when there is none.
std::span<const std::uint8_t> FirstForm(std::span<const std::uint8_t> bytes)
{
  ZelUtl::ByteReader reader(bytes);
  reader.Read<std::uint32_t>();
  const std::size_t length = reader.Read<std::uint32_t>();
  return reader.Ok() && length >= kHeader && length <= bytes.size() ? bytes.first(length)
                                                                    : std::span<const std::uint8_t>();
}

} // namespace

void OutputArchive::Add(std::uint32_t signature, std::uint16_t version, std::span<const std::uint8_t> content)
{
  bytes_.Write(signature);
  bytes_.Write(static_cast<std::uint32_t>(kHeader + content.size()));
  bytes_.Write(version);
  bytes_.Write(content);
}

std::optional<std::span<const std::uint8_t>> InputArchive::Next(std::uint32_t signature, std::uint16_t version) const
{
  ZelUtl::ByteReader reader(FirstForm(rest_));
  const bool isKnown = reader.Read<std::uint32_t>() == signature;
  reader.Read<std::uint32_t>();
  const bool isCurrent = reader.Read<std::uint16_t>() == version;
  if (!reader.Ok() || !isKnown || !isCurrent)
    return std::nullopt;
  return reader.Take(reader.Remaining());
}

bool InputArchive::Skip()
{
  const std::size_t length = FirstForm(rest_).size();
  rest_ = rest_.subspan(length);
  return length != 0;
}

} // namespace ZelClr

bool TINT::SaveIn(ZelClr::OutputArchive &archive) const
{
  const auto text = ZelClr::TextOf(colour), secondText = ZelClr::TextOf(secondColour);
  if (!text || !secondText)
    return false;
  ZelUtl::ByteWriter content;
  content.Write(kind);
  content.Write(std::uint8_t{0});
  content.Write(level);
  ZelClr::WriteText(content, *text);
  ZelClr::WriteText(content, *secondText);
  archive.Add(ZelClr::kTint, ZelClr::kVersion, content.Bytes());
  return true;
}

bool TINT::LoadFrom(ZelClr::InputArchive &archive)
{
  const auto content = archive.Next(ZelClr::kTint, ZelClr::kVersion);
  if (!content)
    return false;
  ZelUtl::ByteReader reader(*content);
  const auto storedKind = reader.Read<std::uint8_t>();
  const auto zero = reader.Read<std::uint8_t>();
  const auto storedLevel = reader.Read<std::int32_t>();
  const auto first = ZelClr::ReadColour(reader);
  const auto second = ZelClr::ReadColour(reader);
  if (!reader.Ok() || !reader.AtEnd() || zero != 0 || !first || !second)
    return false;
  TNTSetTint(this, &*first, storedLevel, storedKind, &*second);
  return archive.Skip();
}
