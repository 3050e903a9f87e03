// Archives from anybody: what is read of right ones, and that wrong ones do no harm.
#include "tests/support/hex.h"
#include "zelclr/platform/zip_archive.h"

#include <gtest/gtest.h>

using namespace ZelUtl;
using namespace tests;

namespace {

constexpr std::size_t kMost = 1 << 20;

/// An entry as the documentation of the format lays it out, stored, and what may be wrong with it.
struct Entry
{
  std::string name;
  std::string bytes;
  std::uint32_t crc = 0;
  std::uint32_t flags = 0;
  std::uint32_t method = 0;
  std::optional<std::uint32_t> statedSize = {}; // when unpacked
  std::uint32_t attributes = 0;
};

const Entry kHello = {"hello.txt", "hello", 0x3610A686};

std::string Built(const std::vector<Entry> &entries)
{
  std::string archive, directory;
  for (const Entry &entry : entries) {
    const auto size = static_cast<std::uint32_t>(entry.bytes.size());
    const std::string common = Little(entry.flags, 2) + Little(entry.method, 2) + Hex("0000 2100") +
                               Little(entry.crc, 4) + Little(size, 4) + Little(entry.statedSize.value_or(size), 4) +
                               Little(static_cast<std::uint32_t>(entry.name.size()), 2) + Hex("0000");
    directory += Hex("'PK' 0102 1403 1400") + common + Hex("0000 0000 0000") + Little(entry.attributes, 4) +
                 Little(static_cast<std::uint32_t>(archive.size()), 4) + entry.name;
    archive += Hex("'PK' 0304 1400") + common + entry.name + entry.bytes;
  }
  const auto count = static_cast<std::uint32_t>(entries.size());
  return archive + directory + Hex("'PK' 0506 0000 0000") + Little(count, 2) + Little(count, 2) +
         Little(static_cast<std::uint32_t>(directory.size()), 4) +
         Little(static_cast<std::uint32_t>(archive.size()), 4) + Hex("0000");
}

/// The bytes, or "refused".
std::string Read(std::string_view archive, std::string_view name, std::size_t most = kMost)
{
  std::string reason;
  const auto bytes = ReadZipEntry(archive, name, most, reason);
  EXPECT_EQ(bytes.has_value(), reason.empty()) << name;
  return bytes.value_or("refused");
}

} // namespace

TEST(ZipArchive, ReadsEntriesByTheirExactNameAndFollowsNone)
{
  const std::uint32_t link = 0120777u << 16;
  const std::string archive = Built({kHello,
                                     {"../hello.txt", "hello", kHello.crc},
                                     {"/etc/hello", "hello", kHello.crc, 0, 0, {}, link},
                                     {"empty", ""}});
  EXPECT_EQ(ZipEntryNames(archive), (std::vector<std::string>{"hello.txt", "../hello.txt", "/etc/hello", "empty"}));
  for (const char *const name : {"hello.txt", "../hello.txt", "/etc/hello"})
    EXPECT_EQ(Read(archive, name), "hello") << name; // of a link, its text
  EXPECT_EQ(Read(archive, "empty"), "");
  for (const char *const name : {"", "Hello.txt", "hello.txt/", "./hello.txt", "etc/hello"})
    EXPECT_EQ(Read(archive, name), "refused") << name;
  EXPECT_EQ(Read(archive, "hello.txt", 5), "hello");
  EXPECT_EQ(Read(archive, "hello.txt", 4), "refused");
}

TEST(ZipArchive, RefusesWhatIsNotAsItSays)
{
  const auto with = [](auto change) {
    Entry entry = kHello;
    change(entry);
    return Built({entry});
  };
  const std::pair<const char *, std::string> kCases[] = {
    {"a wrong checksum", with([](Entry &e) { e.crc ^= 1; })},
    {"less than it says", with([](Entry &e) { e.statedSize = 6; })},
    {"more than it says", with([](Entry &e) { e.statedSize = 4; })},
    {"encrypted", with([](Entry &e) { e.flags = 1; })},
    {"encrypted strongly", with([](Entry &e) { e.flags = 0x41; })},
    {"packed by bzip2", with([](Entry &e) { e.method = 12; })},
    {"no deflate", with([](Entry &e) { e.method = 8; })},
    {"named twice", Built({kHello, kHello})},
    {"no archive", "hello"},
    {"nothing", ""},
  };
  for (const auto &[name, archive] : kCases)
    EXPECT_EQ(Read(archive, "hello.txt"), "refused") << name;

  const std::string good = Built({kHello});
  for (std::size_t size = 0; size < good.size(); ++size)
    EXPECT_EQ(Read(good.substr(0, size), "hello.txt"), "refused") << size;
}

TEST(ZipArchive, EntriesAreCountedWhileTheyAreUnpacked)
{
  const std::string zeros(std::size_t{8} << 20, '\0');
  std::string reason;
  const ZipEntry entry{"bomb", zeros};
  auto archive = WriteZip({&entry, 1}, reason);
  ASSERT_TRUE(archive) << reason;
  EXPECT_LT(archive->size(), zeros.size() / 500);
  EXPECT_EQ(Read(*archive, "bomb", kMost), "refused");
  EXPECT_EQ(Read(*archive, "bomb", zeros.size()), zeros);
  const auto directory = archive->find(Hex("'PK' 0102"));
  archive->replace(directory + 24, 4, Little(10, 4)); // what it says to hold
  EXPECT_EQ(Read(*archive, "bomb", kMost), "refused");
}

TEST(ZipArchive, HasAtMostAThousandEntries)
{
  std::vector<Entry> entries(kMostZipEntries - 1, {"x", "", 0});
  entries.push_back(kHello);
  EXPECT_EQ(ZipEntryNames(Built(entries)).size(), kMostZipEntries);
  EXPECT_EQ(Read(Built(entries), "hello.txt"), "hello");
  entries.push_back({"y", "", 0});
  std::string archive = Built(entries);
  EXPECT_TRUE(ZipEntryNames(archive).empty());
  EXPECT_EQ(Read(archive, "hello.txt"), "refused");
  for (const std::size_t offset : {14u, 12u}) // the count at the end says one
    archive.replace(archive.size() - offset, 2, Little(1, 2));
  EXPECT_TRUE(ZipEntryNames(archive).empty());
  EXPECT_TRUE(ZipEntryNames(Built({{std::string(0xFFFF, 'n'), ""},
                                   {std::string(0xFFFE, 'n'), ""},
                                   {std::string(0xFFFD, 'n'), ""},
                                   {std::string(0xFFFC, 'n'), ""},
                                   kHello}))
                .empty());
}

TEST(ZipArchive, WritesTheSameBytesOfTheSameEntries)
{
  const std::string text(10000, 'a');
  const ZipEntry entries[] = {{"mimetype", "text/plain", false}, {"folder/gr\xC3\xBCn.txt", text}, {"empty", ""}};
  std::string reason;
  const auto archive = WriteZip(entries, reason);
  ASSERT_TRUE(archive) << reason;
  EXPECT_EQ(WriteZip(entries, reason), archive);
  // Stored, of 1 January 1980, so that the type stands at a fixed place.
  EXPECT_EQ(archive->substr(8, 6), Hex("0000 0000 2100"));
  EXPECT_EQ(archive->substr(30, 18), "mimetypetext/plain");
  EXPECT_LT(archive->size(), text.size() / 10);
  for (const ZipEntry &entry : entries)
    EXPECT_EQ(Read(*archive, entry.name), entry.bytes) << entry.name;

  EXPECT_FALSE(WriteZip({}, reason));
  const ZipEntry twice[] = {{"a", "1"}, {"a", "2"}};
  EXPECT_FALSE(WriteZip(twice, reason));
  EXPECT_FALSE(reason.empty());
}
