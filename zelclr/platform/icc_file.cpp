#include "zelclr/platform/icc_file.h"

#include "zelclr/platform/bytes.h"

#include <algorithm>

namespace ZelUtl {

namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kTagEntrySize = 12;
/// Real profiles have some dozens.
constexpr std::uint32_t kMostTags = 1024;

double ReadS15Fixed16(ByteReader &reader)
{
  return reader.ReadBig<std::int32_t>() / 65536.0;
}

IccXyz ReadXyz(ByteReader &reader)
{
  const double x = ReadS15Fixed16(reader);
  const double y = ReadS15Fixed16(reader);
  return {x, y, ReadS15Fixed16(reader)};
}

/// ICC.1:2022, table 17; empty when the bytes are not those of a profile.
std::optional<IccHeader> HeaderFrom(std::span<const std::uint8_t> bytes)
{
  ByteReader reader(bytes);
  const auto number = [&reader] { return reader.ReadBig<std::uint32_t>(); };
  const auto shortNumber = [&reader] { return reader.ReadBig<std::uint16_t>(); };
  IccHeader header = {};
  header.size = number();
  header.preferredModule = number();
  header.version = number();
  header.deviceClass = number();
  header.colourSpace = number();
  header.connectionSpace = number();
  for (std::uint16_t *part : {&header.created.year, &header.created.month, &header.created.day, &header.created.hour,
                              &header.created.minute, &header.created.second})
    *part = shortNumber();
  const std::uint32_t signature = number();
  header.platform = number();
  header.flags = number();
  header.manufacturer = number();
  header.model = number();
  header.attributes = reader.ReadBig<std::uint64_t>();
  header.renderingIntent = number();
  header.illuminant = ReadXyz(reader);
  header.creator = number();
  const auto identifier = reader.Take(header.identifier.size());
  std::copy(identifier.begin(), identifier.end(), header.identifier.begin());
  if (!reader.Ok() || signature != IccSignature("acsp"))
    return std::nullopt;
  return header;
}

/// The table of tags behind its count.
std::vector<IccTag> TagsFrom(std::span<const std::uint8_t> table)
{
  std::vector<IccTag> tags;
  ByteReader reader(table);
  while (reader.Remaining() >= kTagEntrySize) {
    const auto signature = reader.ReadBig<std::uint32_t>();
    const auto offset = reader.ReadBig<std::uint32_t>();
    tags.push_back({signature, offset, reader.ReadBig<std::uint32_t>()});
  }
  return tags;
}

/// Where the data of a profile with so many tags begin: behind the table.
std::size_t DataStart(std::size_t tags)
{
  return kHeaderSize + 4 + tags * kTagEntrySize;
}

bool LiesWithin(const IccTag &tag, std::size_t dataStart, std::uint64_t size)
{
  return tag.offset >= dataStart && std::uint64_t{tag.offset} + tag.size <= size;
}

} // namespace

std::string TextOfIccSignature(std::uint32_t signature)
{
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto character = static_cast<char>((signature >> shift) & 0xFFu);
    text += character >= ' ' && character <= '~' ? character : '?';
  }
  return text;
}

std::optional<IccFile> IccFile::Open(const std::string &path, std::string &reason)
{
  auto file = RegularFile::Open(path, reason);
  if (!file)
    return std::nullopt;
  std::array<std::uint8_t, kHeaderSize + 4> start;
  const auto header = file->ReadAt(0, start) ? HeaderFrom(start) : std::nullopt;
  const std::uint32_t count = ByteReader(std::span(start).last(4)).ReadBig<std::uint32_t>();
  if (!header || count > kMostTags) {
    reason = "not an ICC profile";
    return std::nullopt;
  }
  std::vector<std::uint8_t> table(count * kTagEntrySize);
  if (!file->ReadAt(start.size(), table)) {
    reason = "an ICC profile that ends within its table of tags";
    return std::nullopt;
  }
  return IccFile(std::move(*file), *header, TagsFrom(table));
}

const IccTag *IccFile::Find(std::uint32_t signature) const
{
  const auto tag = std::find_if(tags_.begin(), tags_.end(), [&](const IccTag &t) { return t.signature == signature; });
  return tag == tags_.end() ? nullptr : &*tag;
}

std::vector<std::uint8_t> IccFile::ReadTag(const IccTag &tag, std::size_t most) const
{
  std::vector<std::uint8_t> bytes;
  if (LiesWithin(tag, DataStart(tags_.size()), Stamp().size)) {
    bytes.resize(std::min<std::size_t>(tag.size, most));
    if (!file_.ReadAt(tag.offset, bytes))
      bytes.clear();
  }
  return bytes;
}

std::vector<std::uint8_t> IccFile::ReadTag(std::uint32_t signature, std::size_t most) const
{
  const IccTag *const tag = Find(signature);
  return tag == nullptr ? std::vector<std::uint8_t>() : ReadTag(*tag, most);
}

std::optional<IccHeader> IccHeaderOf(std::span<const std::uint8_t> profile)
{
  return HeaderFrom(profile);
}

std::span<const std::uint8_t> IccTagOf(std::span<const std::uint8_t> profile, std::uint32_t signature)
{
  if (profile.size() < kHeaderSize + 4)
    return {};
  ByteReader reader(profile.subspan(kHeaderSize));
  const auto count = reader.ReadBig<std::uint32_t>();
  const auto table = reader.Take(std::size_t{count} * kTagEntrySize);
  if (!reader.Ok() || count > kMostTags)
    return {};
  for (const IccTag &tag : TagsFrom(table)) {
    if (tag.signature == signature)
      return LiesWithin(tag, DataStart(count), profile.size()) ? profile.subspan(tag.offset, tag.size)
                                                               : std::span<const std::uint8_t>();
  }
  return {};
}

std::vector<std::uint8_t> WithIccDescription(std::span<const std::uint8_t> profile, std::wstring_view description)
{
  const auto header = profile.size() >= kHeaderSize + 4 ? HeaderFrom(profile) : std::nullopt;
  if (!header)
    return {};
  ByteReader reader(profile.subspan(kHeaderSize));
  const auto count = reader.ReadBig<std::uint32_t>();
  const auto table = reader.Take(std::size_t{count} * kTagEntrySize);
  if (!reader.Ok() || count > kMostTags)
    return {};
  std::vector<IccTag> tags = TagsFrom(table);
  constexpr auto kDescription = IccSignature("desc");
  auto described = std::find_if(tags.begin(), tags.end(), [](const IccTag &t) { return t.signature == kDescription; });
  const bool added = described == tags.end();
  if (added && count == kMostTags)
    return {};
  const auto dataStart = static_cast<std::uint32_t>(DataStart(count));
  const auto liesWithin = [&](const IccTag &tag) { return LiesWithin(tag, dataStart, profile.size()); };
  bool localised = header->version >= 0x04000000;
  if (!added && liesWithin(*described) && described->size >= 4)
    localised = ByteReader(profile.subspan(described->offset)).ReadBig<std::uint32_t>() == IccSignature("mluc");

  // The data stay as they are, overlapping tags and all; the new description comes behind them. Where the old one was
  // the last of them, it goes.
  auto data = profile.subspan(dataStart);
  const auto isLast = [&](const IccTag &old) {
    return liesWithin(old) && old.offset % 4 == 0 && std::uint64_t{old.offset} + old.size + 4 > profile.size() &&
           std::all_of(tags.begin(), tags.end(), [&](const IccTag &t) {
             return &t == &old || !liesWithin(t) || std::uint64_t{t.offset} + t.size <= old.offset;
           });
  };
  if (!added && isLast(*described))
    data = data.first(described->offset - dataStart);
  const auto shift = static_cast<std::uint32_t>(added ? kTagEntrySize : 0);
  for (IccTag &tag : tags) {
    if (liesWithin(tag))
      tag.offset += shift;
    else // it must not come to lie within the longer file
      tag = {tag.signature, 0, 0};
  }
  if (added)
    described = tags.insert(tags.end(), IccTag{kDescription, 0, 0});
  const auto text = IccDescriptionTag(description, localised);
  const std::uint32_t padding = (4 - (dataStart + shift + data.size()) % 4) % 4;
  *described = {kDescription, static_cast<std::uint32_t>(dataStart + shift + data.size() + padding),
                static_cast<std::uint32_t>(text.size())};
  const std::uint32_t endPadding = (4 - text.size() % 4) % 4;

  ByteWriter whole;
  const auto writeZeros = [&whole](std::size_t zeros) {
    for (std::size_t i = 0; i < zeros; ++i)
      whole.Write(std::uint8_t{0});
  };
  whole.WriteBig(static_cast<std::uint32_t>(described->offset + text.size() + endPadding));
  whole.Write(profile.subspan(4, 80));
  writeZeros(16); // the identifier
  whole.Write(profile.subspan(100, kHeaderSize - 100));
  whole.WriteBig(static_cast<std::uint32_t>(tags.size()));
  for (const IccTag &tag : tags) {
    whole.WriteBig(tag.signature);
    whole.WriteBig(tag.offset);
    whole.WriteBig(tag.size);
  }
  whole.Write(data);
  writeZeros(padding);
  whole.Write(text);
  writeZeros(endPadding);
  return whole.Bytes();
}

} // namespace ZelUtl
