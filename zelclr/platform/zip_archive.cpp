#include "zelclr/platform/zip_archive.h"

#include "zelclr/platform/bytes.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <memory>

namespace ZelUtl {

namespace {

constexpr std::uint16_t kFirstDosDay = (1 << 5) | 1; // 1 January 1980
constexpr std::uint32_t kPlainFile = 0100644u << 16;

/// The bytes of the directory, which kMostZipEntries entries with names of some length do not reach.
constexpr std::size_t kMostDirectoryBytes = std::size_t{256} << 10;
constexpr std::size_t kEndRecordSize = 22;
constexpr std::size_t kLocatorSize = 20; // of the 64-bit form, before the end record
constexpr std::size_t kMostCommentSize = 65536;

struct Discard
{
  void operator()(zip_t *archive) const { zip_discard(archive); }
};
struct Close
{
  void operator()(zip_file_t *file) const { zip_fclose(file); }
};
struct Free
{
  void operator()(zip_source_t *source) const { zip_source_free(source); }
};
using Archive = std::unique_ptr<zip_t, Discard>;
using Source = std::unique_ptr<zip_source_t, Free>;

struct Error : zip_error_t
{
  Error() { zip_error_init(this); }
  ~Error() { zip_error_fini(this); }
  Error(const Error &) = delete;
  Error &operator=(const Error &) = delete;

  std::string Text() { return zip_error_strerror(this); }
};

/// The archive takes a share of the source.
Archive Open(const Source &source, int flags, Error &error)
{
  if (source == nullptr)
    return nullptr;
  Archive archive(zip_open_from_source(source.get(), flags, &error));
  if (archive != nullptr)
    zip_source_keep(source.get());
  return archive;
}

/// Whether the directory is of an archive that is read here. To be asked before libzip is, which takes in a directory
/// of any length, however many entries it has. Every record is looked at that may be the one it takes for the end.
bool IsDirectorySmall(std::string_view bytes)
{
  constexpr std::size_t kMostTail = kMostCommentSize + kEndRecordSize + kLocatorSize;
  const std::string_view tail = bytes.substr(bytes.size() - std::min(bytes.size(), kMostTail));
  for (auto at = tail.find("PK\5\6"); at != std::string_view::npos; at = tail.find("PK\5\6", at + 1)) {
    const std::string_view record = tail.substr(at, kEndRecordSize);
    ByteReader reader({reinterpret_cast<const std::uint8_t *>(record.data()), record.size()});
    reader.Take(10);
    const std::size_t entries = reader.Read<std::uint16_t>();
    const std::size_t size = reader.Read<std::uint32_t>();
    const bool hasLocator = at >= kLocatorSize && tail.substr(at - kLocatorSize).starts_with("PK\6\7");
    if (entries > kMostZipEntries || size > kMostDirectoryBytes || hasLocator)
      return false;
  }
  return true;
}

Archive OpenForReading(std::string_view bytes, std::string &reason)
{
  const std::string tooMany = "a zip archive of more than " + std::to_string(kMostZipEntries) + " entries";
  if (!IsDirectorySmall(bytes)) {
    reason = tooMany;
    return nullptr;
  }
  Error error;
  const Source source(zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error));
  Archive archive = Open(source, ZIP_RDONLY, error);
  if (archive == nullptr) {
    reason = "not a zip archive: " + error.Text();
  } else if (zip_get_num_entries(archive.get(), 0) > static_cast<zip_int64_t>(kMostZipEntries)) {
    reason = tooMany;
    archive.reset();
  }
  return archive;
}

std::string NameOf(zip_t *archive, zip_uint64_t index)
{
  const char *const name = zip_get_name(archive, index, ZIP_FL_ENC_RAW);
  return name == nullptr ? std::string() : name;
}

/// The one entry of that name.
std::optional<zip_uint64_t> IndexOf(zip_t *archive, std::string_view name, std::string &reason)
{
  std::optional<zip_uint64_t> found;
  const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0));
  for (zip_uint64_t i = 0; i < count; ++i) {
    if (NameOf(archive, i) != name)
      continue;
    if (found) {
      reason = "two entries of the zip archive are called \"" + std::string(name) + "\"";
      return std::nullopt;
    }
    found = i;
  }
  if (!found)
    reason = "the zip archive has no \"" + std::string(name) + "\"";
  return found;
}

std::optional<std::string> Bytes(zip_t *archive, zip_uint64_t index, std::size_t most, std::string &reason)
{
  zip_stat_t stat;
  if (zip_stat_index(archive, index, 0, &stat) != 0) {
    reason = zip_strerror(archive);
    return std::nullopt;
  }
  constexpr zip_uint64_t kNeeded = ZIP_STAT_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
  if ((stat.valid & kNeeded) != kNeeded || stat.encryption_method != ZIP_EM_NONE) {
    reason = "it is encrypted";
    return std::nullopt;
  }
  if (stat.comp_method != ZIP_CM_STORE && stat.comp_method != ZIP_CM_DEFLATE) {
    reason = "it is packed by other means than deflate";
    return std::nullopt;
  }
  const std::string tooLarge = "it has more than " + std::to_string(most) + " bytes";
  if (stat.size > most) {
    reason = tooLarge;
    return std::nullopt;
  }
  const std::unique_ptr<zip_file_t, Close> file(zip_fopen_index(archive, index, 0));
  if (file == nullptr) {
    reason = zip_strerror(archive);
    return std::nullopt;
  }
  std::string bytes;
  std::array<char, 65536> piece;
  for (;;) {
    const zip_int64_t count = zip_fread(file.get(), piece.data(), piece.size());
    if (count < 0) {
      reason = zip_file_strerror(file.get());
      return std::nullopt;
    }
    if (count == 0)
      break;
    if (static_cast<std::size_t>(count) > most - bytes.size()) {
      reason = tooLarge;
      return std::nullopt;
    }
    bytes.append(piece.data(), static_cast<std::size_t>(count));
  }
  if (bytes.size() != stat.size) {
    reason = "its size is not what the archive says";
    return std::nullopt;
  }
  return bytes;
}

bool Add(zip_t *archive, const ZipEntry &entry)
{
  Source source(zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0));
  if (source == nullptr)
    return false;
  const zip_int64_t added = zip_file_add(archive, std::string(entry.name).c_str(), source.get(), ZIP_FL_ENC_UTF_8);
  if (added < 0)
    return false;
  source.release(); // it is the archive's now
  const auto index = static_cast<zip_uint64_t>(added);
  return zip_set_file_compression(archive, index, entry.packed ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0) == 0 &&
         zip_file_set_dostime(archive, index, 0, kFirstDosDay, 0) == 0 &&
         zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, kPlainFile) == 0;
}

std::optional<std::string> AllOf(zip_source_t *source)
{
  zip_stat_t stat;
  if (zip_source_stat(source, &stat) != 0 || (stat.valid & ZIP_STAT_SIZE) == 0 || zip_source_open(source) != 0)
    return std::nullopt;
  std::string bytes(static_cast<std::size_t>(stat.size), '\0');
  const zip_int64_t count = zip_source_read(source, bytes.data(), bytes.size());
  zip_source_close(source);
  if (count < 0 || static_cast<zip_uint64_t>(count) != stat.size)
    return std::nullopt;
  return bytes;
}

} // namespace

std::optional<std::string> ReadZipEntry(std::string_view archive, std::string_view name, std::size_t most,
                                        std::string &reason)
{
  const Archive opened = OpenForReading(archive, reason);
  const auto index = opened == nullptr ? std::nullopt : IndexOf(opened.get(), name, reason);
  if (!index)
    return std::nullopt;
  std::string trouble;
  auto bytes = Bytes(opened.get(), *index, most, trouble);
  if (!bytes)
    reason = "\"" + std::string(name) + "\" in the zip archive cannot be read: " + trouble;
  return bytes;
}

std::vector<std::string> ZipEntryNames(std::string_view archive)
{
  std::string reason;
  const Archive opened = OpenForReading(archive, reason);
  std::vector<std::string> names;
  if (opened == nullptr)
    return names;
  const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(opened.get(), 0));
  for (zip_uint64_t i = 0; i < count; ++i)
    names.push_back(NameOf(opened.get(), i));
  return names;
}

std::optional<std::string> WriteZip(std::span<const ZipEntry> entries, std::string &reason)
{
  if (entries.empty() || entries.size() > kMostZipEntries) {
    reason = "a zip archive has from 1 to " + std::to_string(kMostZipEntries) + " entries";
    return std::nullopt;
  }
  Error error;
  const Source source(zip_source_buffer_create(nullptr, 0, 0, &error));
  Archive archive = Open(source, ZIP_CREATE | ZIP_TRUNCATE, error);
  if (archive == nullptr) {
    reason = error.Text();
    return std::nullopt;
  }
  for (const ZipEntry &entry : entries) {
    if (!Add(archive.get(), entry)) {
      reason = "\"" + std::string(entry.name) + "\" cannot be put into a zip archive: " + zip_strerror(archive.get());
      return std::nullopt;
    }
  }
  if (zip_close(archive.get()) != 0) {
    reason = zip_strerror(archive.get());
    return std::nullopt;
  }
  static_cast<void>(archive.release()); // closing took it
  auto bytes = AllOf(source.get());
  if (!bytes)
    reason = "not enough memory for a zip archive";
  return bytes;
}

} // namespace ZelUtl
