// ICC profile files as bytes: header, table of tags, texts. Both what the library needs of a profile and what a person
// wants to know of it is read here, on every system.
// Source: ICC.1:2022, clauses 7.2 (header), 7.3 (tag table), 10.15 (multiLocalizedUnicodeType), 10.24 (textType);
// ICC.1:2001-04, 6.5.17 (textDescriptionType). All numbers are big-endian.
//
// Threads: values; an IccFile may be read by many threads at once.
// Errors: empty results. Nothing that the bytes say is believed before it is checked against their length: any bytes
// whatever give a failure or a profile, in time and memory in proportion to what was asked for.
#pragma once

#include "zelclr/platform/export.h"
#include "zelclr/platform/regular_file.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ZelUtl {

/// Four characters as a number: 'mntr' is IccSignature("mntr").
constexpr std::uint32_t IccSignature(const char (&text)[5])
{
  std::uint32_t signature = 0;
  for (int i = 0; i < 4; ++i)
    signature = (signature << 8) | static_cast<std::uint8_t>(text[i]);
  return signature;
}
/// The four characters; those that are not printable ASCII as '?'.
ZELCLR_API std::string TextOfIccSignature(std::uint32_t signature);

struct IccDate
{
  std::uint16_t year, month, day, hour, minute, second;
};

struct IccXyz
{
  double x, y, z;
};

struct IccHeader
{
  std::uint32_t size; ///< as the file states it
  std::uint32_t preferredModule;
  std::uint32_t version; ///< 0x04300000 is 4.3.0
  std::uint32_t deviceClass;
  std::uint32_t colourSpace;
  std::uint32_t connectionSpace;
  IccDate created;
  std::uint32_t platform;
  std::uint32_t flags;
  std::uint32_t manufacturer;
  std::uint32_t model;
  std::uint64_t attributes;
  std::uint32_t renderingIntent;
  IccXyz illuminant;
  std::uint32_t creator;
  std::array<std::uint8_t, 16> identifier;
};

struct IccTag
{
  std::uint32_t signature;
  std::uint32_t offset;
  std::uint32_t size;
};

class ZELCLR_API IccFile
{
public:
  /// Reads the header and the table of tags and keeps the file open. A file that does not begin as a profile, or whose
  /// table does not fit into it, is refused.
  static std::optional<IccFile> Open(const std::string &path, std::string &reason);

  const IccHeader &Header() const { return header_; }
  /// As the file has them, in its order: a tag may lie outside the file, and then cannot be read.
  const std::vector<IccTag> &Tags() const { return tags_; }
  const FileStamp &Stamp() const { return file_.Stamp(); }

  /// Null when there is none.
  const IccTag *Find(std::uint32_t signature) const;
  /// The first bytes of a tag, with its type signature: `most` or, when it is shorter, all of it. Empty for a tag that
  /// lies outside the file or cannot be read.
  std::vector<std::uint8_t> ReadTag(const IccTag &tag, std::size_t most) const;
  /// The same; empty also when there is no such tag.
  std::vector<std::uint8_t> ReadTag(std::uint32_t signature, std::size_t most) const;

private:
  IccFile(RegularFile file, const IccHeader &header, std::vector<IccTag> tags)
    : file_(std::move(file)),
      header_(header),
      tags_(std::move(tags))
  {}

  RegularFile file_;
  IccHeader header_;
  std::vector<IccTag> tags_;
};

/// The header of a profile that is in memory; empty when the bytes do not begin as one.
ZELCLR_API std::optional<IccHeader> IccHeaderOf(std::span<const std::uint8_t> profile);
/// The bytes of the first tag of that signature, with its type signature; empty when there is none or it lies outside.
ZELCLR_API std::span<const std::uint8_t> IccTagOf(std::span<const std::uint8_t> profile, std::uint32_t signature);

/// Whether the tables that transforms are made of have the sizes that they claim, and sizes that a profile may have. A
/// library that believes the claims may be given the file then.
bool AreIccTablesSound(const IccFile &file);

// --- Texts in tags ---------------------------------------------------------------------------------------------------

/// More than any text of a tag has.
inline constexpr std::size_t kMostIccTextBytes = 256 * 1024;

struct IccText
{
  std::string language; ///< "en"; empty where the tag does not say
  std::string country;  ///< "US"; likewise
  std::wstring text;
};

/// Every text of a tag of type 'desc' (its ASCII form; the Unicode form where that says more), 'mluc' or 'text', in the
/// order of the tag. Empty for another type and for a tag that contradicts itself.
ZELCLR_API std::vector<IccText> TextsOfIccTag(std::span<const std::uint8_t> tag);

/// The one text that names the profile, by the rules of the library: of 'mluc' the first record, before that one in
/// "en", before that one in "en" for "US"; of 'desc' at most 256 characters, without U+001E. Empty when there is none.
ZELCLR_API std::wstring DescriptionFromIccTag(std::span<const std::uint8_t> tag);

/// ASCII text up to its end or a NUL: 8 bytes into a tag of type 'text', 12 bytes into any other.
///
/// KEPT: of an 'mluc' tag this reads nothing, where one would expect its text; callers depend on it.
ZELCLR_API std::wstring DeviceTextFromIccTag(std::span<const std::uint8_t> tag);

/// A 'desc' tag that TextsOfIccTag reads back: 'mluc' with one record en-US when `localised`, else 'desc' with its
/// ASCII and its Unicode form.
ZELCLR_API std::vector<std::uint8_t> IccDescriptionTag(std::wstring_view description, bool localised);

/// The bytes of the profile with another description, in the type that it had ('mluc' for a profile that had none and
/// is of version 4): ASCII and Unicode in 'desc', the one record en-US in 'mluc'. All other tags stay as they are; the
/// identifier, a digest of the former bytes, is cleared. Empty when the bytes are no profile.
ZELCLR_API std::vector<std::uint8_t> WithIccDescription(std::span<const std::uint8_t> profile,
                                                        std::wstring_view description);

} // namespace ZelUtl
