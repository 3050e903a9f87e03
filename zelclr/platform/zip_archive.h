// Zip archives in memory: single entries are read, whole archives written. Nothing is ever unpacked to disk, so a name
// is only a name: it is compared to the last byte and never followed as a path or a link. Source: APPNOTE.TXT - .ZIP
// File Format Specification, 6.3.10.
//
// Threads: plain functions.
// Errors: empty results, with the reason in English. Archives of more than kMostZipEntries entries, with a directory of
// more than 256 KiB or in the 64-bit form are refused, and so are entries that are encrypted, packed by other means
// than deflate, named twice, larger than asked for (counted while unpacking, whatever their header says), or not what
// their size and checksum say.
#pragma once

#include "zelclr/platform/export.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZelUtl {

inline constexpr std::size_t kMostZipEntries = 1000;

/// The bytes of one entry; at most `most`.
ZELCLR_API std::optional<std::string> ReadZipEntry(std::string_view archive, std::string_view name, std::size_t most,
                                                   std::string &reason);

/// The names as they stand, in the order of the archive; empty for what is no archive or has too many entries.
ZELCLR_API std::vector<std::string> ZipEntryNames(std::string_view archive);

struct ZipEntry
{
  std::string_view name; ///< UTF-8, with '/' between folders
  std::string_view bytes;
  bool packed = true; ///< some formats want a first entry that is stored as it is
};

/// An archive of these entries, in their order. The same entries give the same bytes: all are of 1 January 1980.
ZELCLR_API std::optional<std::string> WriteZip(std::span<const ZipEntry> entries, std::string &reason);

} // namespace ZelUtl
