// DeviceN spaces and colours as bytes and as text; docs/device_n_format.md describes both.

#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/internal/device_n_base.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/platform/bytes.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <istream>
#include <ostream>

namespace {

// Frozen: documents hold these numbers.
constexpr std::uint32_t kSpaceSignature = 0x534E445A;  // "ZDNS"
constexpr std::uint32_t kColourSignature = 0x434E445A; // "ZDNC"
constexpr std::uint16_t kVersion = 1;
constexpr std::size_t kLengthEnd = 8; // signature and length
constexpr std::size_t kSpaceHeader = 24;
constexpr std::size_t kPlateSize = 36;
constexpr std::size_t kColourHeader = 16;
constexpr std::size_t kComponentBytes = 12;
constexpr std::size_t kMostBytes = kColourHeader + kSpaceHeader + WClrColorSpaceDeviceN::kMostPlates * (kPlateSize + 4);
constexpr std::string_view kTextStart = "DEVICEN/1(";

bool MayBePlateColour(unsigned model)
{
  return ZelClr::FindColourModel(model) && model != ZelClr::ClrModel::DeviceN && model != ZelClr::ClrModel::Reference;
}

/// Calls `use(position)` for each byte of the component data that belongs to the model.
template <class Use>
void ForEachComponentByte(unsigned model, Use use)
{
  for (const ZelClr::ColourComponent &component : ZelClr::FindColourModel(model)->components) {
    const std::size_t size = ZelClr::WithComponentType(component.type, [](auto number) { return sizeof number; });
    for (std::size_t i = 0; i < size; ++i)
      use(component.offset + i);
  }
}

void WriteColour(ZelUtl::ByteWriter &writer, const CLR_COLORSPEC &colour)
{
  const bool known = MayBePlateColour(colour.GetType());
  std::array<std::uint8_t, kComponentBytes> components{};
  if (known)
    ForEachComponentByte(colour.GetType(), [&](std::size_t at) { components[at] = colour.GetRAWColor()[at]; });
  writer.Write(known ? colour.GetType() : std::uint16_t{0});
  writer.Write(std::uint16_t{0});
  writer.Write(colour.GetPaletteGuid().bytes);
  writer.Write(components);
}

bool ReadColour(ZelUtl::ByteReader &reader, CLR_COLORSPEC &colour)
{
  const auto model = reader.Read<std::uint16_t>();
  const auto reserved = reader.Read<std::uint16_t>();
  const auto palette = reader.Take(sizeof(ZelUtils::Guid));
  const auto components = reader.Take(kComponentBytes);
  if (!reader.Ok() || reserved != 0 || !MayBePlateColour(model))
    return false;
  ZelUtils::Guid identifier;
  std::copy(palette.begin(), palette.end(), identifier.bytes.begin());
  CLR_COLORSPEC::MakeINVALID(colour);
  colour.SetType(model);
  colour.SetPaletteGuid(identifier);
  ForEachComponentByte(model, [&](std::size_t at) { colour.SetComponent(at, components[at]); });
  return true;
}

/// Reads the start of a form: the signature, a length that is the number of bytes left, the version, a count.
bool ReadHeader(ZelUtl::ByteReader &reader, std::uint32_t signature, std::uint16_t &count)
{
  const std::size_t size = reader.Remaining();
  const bool known = reader.Read<std::uint32_t>() == signature;
  const bool whole = reader.Read<std::uint32_t>() == size;
  const bool current = reader.Read<std::uint16_t>() == kVersion;
  count = reader.Read<std::uint16_t>();
  return reader.Ok() && known && whole && current && count <= WClrColorSpaceDeviceN::kMostPlates;
}

void WriteHeader(ZelUtl::ByteWriter &writer, std::uint32_t signature, std::size_t size, std::size_t count)
{
  writer.Write(signature);
  writer.Write(static_cast<std::uint32_t>(size));
  writer.Write(kVersion);
  writer.Write(static_cast<std::uint16_t>(count));
}

bool CopyInto(std::span<std::uint8_t> buffer, const std::vector<std::uint8_t> &form)
{
  if (buffer.size() < form.size())
    return false;
  std::copy(form.begin(), form.end(), buffer.begin());
  return true;
}

bool WriteTo(std::ostream &stream, const std::vector<std::uint8_t> &form)
{
  return static_cast<bool>(
    stream.write(reinterpret_cast<const char *>(form.data()), static_cast<std::streamsize>(form.size())));
}

/// The bytes of one form, as many as its length states; empty when there are not so many or it cannot be true.
std::vector<std::uint8_t> ReadForm(std::istream &stream)
{
  std::vector<std::uint8_t> form(kLengthEnd);
  const auto fill = [&](std::size_t from) {
    return static_cast<bool>(
      stream.read(reinterpret_cast<char *>(form.data() + from), static_cast<std::streamsize>(form.size() - from)));
  };
  if (!fill(0))
    return {};
  ZelUtl::ByteReader reader(std::span<const std::uint8_t>(form).subspan(4));
  const auto length = reader.Read<std::uint32_t>();
  if (length <= kLengthEnd || length > kMostBytes)
    return {};
  form.resize(length);
  return fill(kLengthEnd) ? form : std::vector<std::uint8_t>();
}

/// The parts between the separators: one more than there are separators.
std::vector<std::string_view> Split(std::string_view text, std::string_view separator)
{
  std::vector<std::string_view> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos)
      return parts;
    text.remove_prefix(end + separator.size());
  }
}

} // namespace

// --- The space as bytes ---------------------------------------------------------------------------------------------

std::size_t WClrColorSpaceDeviceN::GetSizeBuf() const
{
  return kSpaceHeader + plates_.size() * kPlateSize;
}

void WClrColorSpaceDeviceN::Write(ZelUtl::ByteWriter &writer) const
{
  WriteHeader(writer, kSpaceSignature, GetSizeBuf(), plates_.size());
  writer.Write(identifier_);
  writer.Write(static_cast<std::int32_t>(processType_));
  writer.Write(std::uint32_t{uniquePlates_});
  for (const DeviceN_Plate &plate : plates_) {
    writer.Write(plate.type);
    WriteColour(writer, plate.colour);
  }
}

bool WClrColorSpaceDeviceN::Read(ZelUtl::ByteReader &reader)
{
  std::uint16_t count = 0;
  if (!ReadHeader(reader, kSpaceSignature, count) || reader.Remaining() != kSpaceHeader - 12 + count * kPlateSize)
    return false;
  const auto identifier = reader.Read<std::int32_t>();
  const auto processType = reader.Read<std::int32_t>();
  const auto unique = reader.Read<std::uint32_t>();
  if (!ZelClr::IsKnownBase(processType) || unique > 1)
    return false;
  WClrColorSpaceDeviceN space(identifier, static_cast<DeviceN_Process_Type>(processType));
  space.EnableUniqueColorPlates(unique != 0);
  for (std::size_t i = 0; i < count; ++i) {
    const auto type = reader.Read<DeviceN_Plate_Type>();
    CLR_COLORSPEC colour;
    if (!ReadColour(reader, colour) || !space.AppendInOrder(type, colour))
      return false;
  }
  *this = space;
  return true;
}

bool WClrColorSpaceDeviceN::AppendInOrder(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour)
{
  return FindBestPositionFor(type) == GetNumPlates() && Insert(type, colour) >= 0;
}

bool WClrColorSpaceDeviceN::SaveInBuf(std::span<std::uint8_t> buffer) const
{
  ZelUtl::ByteWriter writer;
  Write(writer);
  return CopyInto(buffer, writer.Bytes());
}

bool WClrColorSpaceDeviceN::LoadFromBuf(std::span<const std::uint8_t> buffer)
{
  ZelUtl::ByteReader reader(buffer);
  return Read(reader);
}

bool WClrColorSpaceDeviceN::SaveIn(std::ostream &stream) const
{
  ZelUtl::ByteWriter writer;
  Write(writer);
  return WriteTo(stream, writer.Bytes());
}

bool WClrColorSpaceDeviceN::LoadFrom(std::istream &stream)
{
  return LoadFromBuf(ReadForm(stream));
}

// --- The colour as bytes --------------------------------------------------------------------------------------------

std::size_t WClrColorDeviceN::GetSizeBuf() const
{
  if (!space_)
    return kColourHeader;
  return kColourHeader + space_->GetColorPlates().size() * sizeof(std::uint32_t) + space_->GetSizeBuf();
}

std::vector<std::uint8_t> WClrColorDeviceN::Form() const
{
  const std::size_t count = space_ ? space_->GetColorPlates().size() : 0;
  ZelUtl::ByteWriter writer;
  WriteHeader(writer, kColourSignature, GetSizeBuf(), count);
  writer.Write(identifier_);
  for (std::size_t i = 0; i < count; ++i)
    writer.Write(ValueAt(i));
  if (space_)
    space_->Write(writer);
  return writer.Bytes();
}

bool WClrColorDeviceN::SaveInBuf(std::span<std::uint8_t> buffer) const
{
  return CopyInto(buffer, Form());
}

bool WClrColorDeviceN::LoadFromBuf(std::span<const std::uint8_t> buffer)
{
  ZelUtl::ByteReader reader(buffer);
  std::uint16_t count = 0;
  if (!ReadHeader(reader, kColourSignature, count))
    return false;
  WClrColorDeviceN colour(nullptr, reader.Read<std::int32_t>());
  for (std::size_t i = 0; i < count; ++i)
    colour.values_.push_back(reader.Read<std::uint32_t>());
  if (!reader.Ok())
    return false;
  if (!reader.AtEnd()) {
    auto space = std::make_shared<WClrColorSpaceDeviceN>(0, DeviceN_Process_None);
    if (!space->Read(reader))
      return false;
    colour.space_ = std::move(space);
  }
  if (colour.values_.size() != (colour.space_ ? colour.space_->GetColorPlates().size() : 0))
    return false;
  *this = colour;
  return true;
}

bool WClrColorDeviceN::SaveIn(std::ostream &stream) const
{
  return WriteTo(stream, Form());
}

bool WClrColorDeviceN::LoadFrom(std::istream &stream)
{
  return LoadFromBuf(ReadForm(stream));
}

// --- The colour as text ---------------------------------------------------------------------------------------------

std::string WClrColorDeviceN::SaveInStr() const
{
  std::string text(kTextStart);
  text += std::to_string(identifier_);
  if (space_) {
    text += ' ';
    text += ZelClr::BaseOf(space_->GetProcessType()).name;
    text += ' ' + std::to_string(space_->GetIdentifier());
    text += space_->HasUniqueColorPlates() ? " unique" : " any";
    for (std::size_t i = 0; i < space_->GetColorPlates().size(); ++i) {
      const DeviceN_Plate &plate = space_->GetColorPlates()[i];
      const std::string colour = ZelClr::TextFromColorSpec(plate.colour);
      if (colour.empty())
        return {};
      text += "; " + std::to_string(plate.type) + ' ' + colour + ' ' + std::to_string(ValueAt(i));
    }
  }
  return text + ')';
}

bool WClrColorDeviceN::LoadFromStr(std::string_view text)
{
  if (!text.starts_with(kTextStart) || !text.ends_with(')'))
    return false;
  const auto parts = Split(text.substr(kTextStart.size(), text.size() - kTextStart.size() - 1), "; ");
  const auto head = Split(parts.front(), " ");
  const auto identifier = ZelUtl::IntegerFromText<std::int32_t>(head[0]);
  if (!identifier || (head.size() == 1 && parts.size() > 1) || (head.size() != 1 && head.size() != 4))
    return false;
  WClrColorDeviceN colour(nullptr, *identifier);
  if (head.size() == 1) {
    *this = colour;
    return true;
  }

  const auto base = std::find_if(ZelClr::kDeviceNBases.begin(), ZelClr::kDeviceNBases.end(),
                                 [&](const auto &b) { return b.name == head[1]; });
  const auto spaceIdentifier = ZelUtl::IntegerFromText<std::int32_t>(head[2]);
  if (base == ZelClr::kDeviceNBases.end() || !spaceIdentifier || (head[3] != "unique" && head[3] != "any"))
    return false;
  const auto processType = static_cast<DeviceN_Process_Type>(base - ZelClr::kDeviceNBases.begin());
  auto space = std::make_shared<WClrColorSpaceDeviceN>(*spaceIdentifier, processType);
  space->EnableUniqueColorPlates(head[3] == "unique");
  for (const std::string_view part : std::span(parts).subspan(1)) {
    const auto plate = Split(part, " ");
    if (plate.size() != 3)
      return false;
    const auto type = ZelUtl::IntegerFromText<DeviceN_Plate_Type>(plate[0]);
    const auto plateColour = ZelClr::ColorSpecFromText(plate[1]);
    const auto value = ZelUtl::IntegerFromText<std::uint32_t>(plate[2]);
    if (!type || !plateColour || !value || !space->AppendInOrder(*type, *plateColour))
      return false;
    colour.values_.push_back(*value);
  }
  colour.space_ = std::move(space);
  *this = colour;
  return true;
}
