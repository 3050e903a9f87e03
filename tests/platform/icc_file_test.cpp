// Profiles as bytes: what is read of right ones, and that wrong ones do no harm.
#include "tests/support/icc_profile.h"
#include "zelclr/platform/icc_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

using namespace ZelUtl;
using namespace tests;

namespace {

constexpr auto kDescription = IccSignature("desc");

Bytes WithNumber(Bytes bytes, std::size_t at, std::uint32_t number)
{
  for (std::size_t i = 0; i < 4; ++i)
    bytes.at(at + i) = static_cast<std::uint8_t>(number >> (24 - 8 * i));
  return bytes;
}

Bytes First(Bytes bytes, std::size_t count)
{
  bytes.resize(count);
  return bytes;
}

struct TextRow
{
  const char *name;
  Bytes tag;
  std::wstring text;
};

const std::vector<TextRow> &DescriptionRows()
{
  const std::string long300(300, 'a');
  static const std::vector<TextRow> kRows = {
    {"ASCII", DescTag("A name"), L"A name"},
    {"a count of 1 and a letter", DescTag("A", {}, 1), L""},
    {"a count beyond the tag", DescTag("A name", {}, 0xFFFFFFFF), L"A name"},
    {"a terminator within", DescTag(std::string_view("AB\0CD", 5)), L"AB"},
    {"256 characters", DescTag(long300), std::wstring(256, L'a')},
    {"separators, after the cut", DescTag("\x1E" + long300 + "\x1E"), std::wstring(255, L'a')},
    {"separators within",
     DescTag("A\x1E"
             "B\x1E"),
     L"AB"},
    {"Latin-1", DescTag("caf\xE9"), L"caf\xE9"},
    {"a Unicode form that says more", DescTag("caf?", u"caf\xE9"), L"caf\xE9"},
    {"a Unicode form that says something else", DescTag("coffee", u"caf\xE9"), L"coffee"},
    {"12 bytes", First(DescTag("A name"), 12), L""},
    {"a comment", TextTag("A text that names nothing"), L""},
    {"US before GB", MlucTag({{"deDE", u"de"}, {"enGB", u"gb"}, {"enUS", u"us"}, {"enAU", u"au"}}), L"us"},
    {"the last of several English ones", MlucTag({{"enGB", u"gb"}, {"enAU", u"au"}}), L"au"},
    {"the first of foreign ones", MlucTag({{"frFR", u"fr"}, {"deDE", u"de"}}), L"fr"},
    {"US alone is no language", MlucTag({{"frFR", u"fr"}, {"esUS", u"es"}}), L"fr"},
    {"beyond the basic plane", MlucTag({{"enUS", u"\U0001F3A8"}}), L"\U0001F3A8"},
    {"records of 16 bytes", MlucTag({{"enUS", u"us"}}, 16), L""},
    {"no records", MlucTag({}), L""},
    {"an offset of 0", WithNumber(MlucTag({{"enUS", u"us"}}), 24, 0), L""},
    {"an offset beyond the tag", WithNumber(MlucTag({{"enUS", u"us"}}), 24, 0xFFFFFFFF), L""},
    {"a length beyond the tag", WithNumber(MlucTag({{"enUS", u"us"}}), 20, 0xFFFFFFFE), L""},
    {"a count beyond the tag", WithNumber(MlucTag({{"enUS", u"us"}}), 8, 0xFFFFFFFF), L"us"},
  };
  return kRows;
}

TEST(IccText, TheDescriptionIsChosenByTheRules)
{
  for (const TextRow &row : DescriptionRows())
    EXPECT_EQ(DescriptionFromIccTag(row.tag), row.text) << row.name;
}

TEST(IccText, DeviceTextsStartBehindTheirType)
{
  EXPECT_EQ(DeviceTextFromIccTag(TextTag("Maker")), L"Maker");
  EXPECT_EQ(DeviceTextFromIccTag(DescTag("Maker")), L"Maker");
  EXPECT_EQ(DeviceTextFromIccTag(First(TextTag("Maker"), 10)), L"Ma") << "without a terminator";
  for (std::size_t size = 0; size <= 8; ++size)
    EXPECT_EQ(DeviceTextFromIccTag(First(TextTag("Maker"), size)), L"") << size;
  for (std::size_t size = 0; size <= 12; ++size)
    EXPECT_EQ(DeviceTextFromIccTag(First(DescTag("Maker"), size)), L"") << size;
}

TEST(IccText, Kept_DeviceTextsAreNotReadFromLocalisedTags)
{
  EXPECT_EQ(DeviceTextFromIccTag(MlucTag({{"enUS", u"Maker"}})), L"");
}

TEST(IccText, PrefixesAndDamageGiveSomeTextOrNone)
{
  std::mt19937 random(1);
  for (const TextRow &row : DescriptionRows()) {
    for (std::size_t size = 0; size < row.tag.size(); ++size) {
      const Bytes prefix(row.tag.begin(), row.tag.begin() + static_cast<std::ptrdiff_t>(size)); // no slack behind it
      EXPECT_LE(DescriptionFromIccTag(prefix).size(), size) << row.name;
      DeviceTextFromIccTag(prefix);
    }
    for (int round = 0; round < 200; ++round) {
      Bytes damaged = row.tag;
      for (int i = 0; i < 4; ++i)
        damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
      for (const IccText &text : TextsOfIccTag(damaged))
        EXPECT_LE(text.text.size(), damaged.size()) << row.name;
    }
  }
}

std::optional<IccFile> Opened(const std::string &path, const std::string &what)
{
  std::string reason;
  auto file = IccFile::Open(path, reason);
  EXPECT_EQ(file.has_value(), reason.empty()) << what << ": " << reason;
  return file;
}

TEST(IccFile, EveryPrefixOpensOnceItsTableIsWhole)
{
  const TemporaryFolder folder;
  const Bytes whole = MatrixProfile("A name").Build();
  const std::size_t table = 132 + 12 * MatrixProfile("").tags.size();
  const std::string path = folder.Path("prefix.icc");
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    WriteBytes(path, First(whole, size));
    const auto file = Opened(path, std::to_string(size));
    ASSERT_EQ(file.has_value(), size >= table) << size;
    if (!file)
      continue;
    EXPECT_EQ(file->Header().version, 0x02400000u);
    EXPECT_EQ(file->Header().created.year, 2024);
    EXPECT_EQ(file->Header().illuminant.y, 1.0);
    for (const IccTag &tag : file->Tags())
      ASSERT_EQ(file->ReadTag(tag, kMostIccTextBytes).empty(), tag.offset + tag.size > size) << size;
  }
}

TEST(IccFile, WhatIsNoProfileIsRefusedAtOnce)
{
  const TemporaryFolder folder;
  const Bytes profile = NamedProfile("A name");
  folder.Write("signature", WithNumber(profile, 36, 0x61637371));
  folder.Write("tags", WithNumber(profile, 128, 0xFFFFFFFF));
  folder.Write("empty", {});
  for (const char *name : {"", "missing", "signature", "tags", "empty"})
    EXPECT_FALSE(Opened(folder.Path(name), name)) << name;
  for (const std::string &path : tests::PipeAndDevice(folder.Path()))
    EXPECT_FALSE(Opened(path, path)) << path;
}

TEST(IccFile, TagsAtTheFarEndOfAHugeFileAreReadAndThoseBeyondAreNot)
{
  const TemporaryFolder folder;
  IccProfile profile = MatrixProfile("A name");
  Bytes bytes = profile.Build();
  const auto setTag = [&](std::size_t index, std::uint32_t offset, std::uint32_t size) {
    bytes = WithNumber(WithNumber(bytes, 132 + 12 * index + 4, offset), 132 + 12 * index + 8, size);
  };
  setTag(1, 0xFFFFFFF0, 16);   // the last that can be addressed
  setTag(2, 0xFFFFFFF0, 0x20); // ends beyond 32 bits and in the file
  setTag(3, 0xFFFFFFF0, 0xFFFFFFF0);
  setTag(4, 1024, 0xFFFFFB00); // nearly the whole file
  setTag(5, 140, 16);          // in the table of tags
  const std::string path = folder.Write("huge.icc", bytes);
  std::filesystem::resize_file(path, (std::uintmax_t{1} << 32) + 64);
  const auto file = Opened(path, "huge");
  ASSERT_TRUE(file);
  EXPECT_EQ(file->ReadTag(IccSignature("wtpt"), 100), Bytes(16));
  EXPECT_EQ(file->ReadTag(IccSignature("rXYZ"), 100), Bytes(32));
  EXPECT_TRUE(file->ReadTag(IccSignature("gXYZ"), 100).empty());
  EXPECT_EQ(file->ReadTag(IccSignature("bXYZ"), 100).size(), 100u);
  EXPECT_TRUE(file->ReadTag(IccSignature("rTRC"), 100).empty());
  EXPECT_TRUE(file->ReadTag(IccSignature("none"), 100).empty());
}

TEST(IccFile, AFileThatShrinksOrGoesLosesItsTagsAndNothingElse)
{
  const TemporaryFolder folder;
  const std::string path = folder.Write("a.icc", NamedProfile("A name"));
  const auto file = Opened(path, "a");
  ASSERT_TRUE(file);
  std::filesystem::remove(path);
  EXPECT_EQ(DescriptionFromIccTag(file->ReadTag(kDescription, 1000)), L"A name") << "others may delete it";
  folder.Write("a.icc", NamedProfile("Another"));
  const auto shrinking = Opened(path, "a");
  std::filesystem::resize_file(path, 150);
  EXPECT_TRUE(shrinking->ReadTag(kDescription, 1000).empty());
}

// --- Renaming --------------------------------------------------------------------------------------------------------

std::vector<std::pair<IccTag, Bytes>> TagsOf(const TemporaryFolder &folder, const Bytes &profile)
{
  std::vector<std::pair<IccTag, Bytes>> tags;
  if (const auto file = Opened(folder.Write("tags.icc", profile), "to list its tags")) {
    for (const IccTag &tag : file->Tags())
      tags.emplace_back(tag, file->ReadTag(tag, 1 << 20));
  }
  return tags;
}

TEST(WithIccDescription, ChangesTheDescriptionAndNothingElse)
{
  const TemporaryFolder folder;
  IccProfile second = MatrixProfile("Old");
  IccProfile fourth = second;
  fourth.version = 0x04300000;
  fourth.tags[0].second = MlucTag({{"deDE", u"Alt"}, {"enUS", u"Old"}});
  IccProfile nameless = fourth;
  nameless.tags.erase(nameless.tags.begin());
  // Two tags share bytes, and one shares those of the description.
  Bytes shared = second.Build();
  std::memcpy(&shared[132 + 12 * 6 + 4], &shared[132 + 12 * 5 + 4], 8);
  std::memcpy(&shared[132 + 12 * 7 + 4], &shared[132 + 4], 8);

  for (const Bytes &before : {second.Build(), fourth.Build(), nameless.Build(), shared}) {
    const auto old = TagsOf(folder, before);
    for (const std::wstring &name : {std::wstring(L"New"), std::wstring(L"\u00C4\u4E2D\U0001F3A8 ?"), std::wstring(),
                                     std::wstring(300, L'\u4E2D')})
    {
      const Bytes after = WithIccDescription(before, name);
      ASSERT_GE(after.size(), 132u);
      EXPECT_EQ(Bytes(after.begin() + 4, after.begin() + 84), Bytes(before.begin() + 4, before.begin() + 84));
      EXPECT_EQ(Bytes(after.begin() + 84, after.begin() + 100), Bytes(16)) << "the identifier";
      EXPECT_EQ(ByteReader(after).ReadBig<std::uint32_t>(), after.size());
      const auto tags = TagsOf(folder, after);
      ASSERT_EQ(tags.size(), before == nameless.Build() ? old.size() + 1 : old.size());
      for (std::size_t i = 0; i < tags.size(); ++i) {
        EXPECT_EQ(tags[i].first.offset % 4, 0u);
        if (tags[i].first.signature == kDescription) {
          const bool cut = tags[i].second[0] == 'd';
          EXPECT_EQ(DescriptionFromIccTag(tags[i].second), cut ? name.substr(0, 256) : name);
        } else {
          EXPECT_EQ(tags[i].second, old[i].second) << TextOfIccSignature(tags[i].first.signature);
        }
      }
      EXPECT_TRUE(before != shared || tags[5].first.offset == tags[6].first.offset) << "go on sharing";
    }
  }
}

TEST(WithIccDescription, BytesThatAreNoProfileGiveNone)
{
  const Bytes profile = NamedProfile("Old");
  for (std::size_t size = 0; size < 144; ++size)
    EXPECT_TRUE(WithIccDescription(First(profile, size), L"New").empty()) << size;
  EXPECT_TRUE(WithIccDescription(WithNumber(profile, 128, 0xFFFFFFFF), L"New").empty());
}

TEST(WithIccDescription, TagsThatOverlapDoNotMultiplyTheFile)
{
  IccProfile profile;
  for (int i = 0; i < 1000; ++i)
    profile.tags.emplace_back("tag" + std::string(1, static_cast<char>('a' + i % 26)), Bytes());
  Bytes bytes = profile.Build();
  const std::size_t start = bytes.size();
  bytes.resize(start + 20000);
  for (std::uint32_t i = 0; i < 1000; ++i) {
    bytes = WithNumber(bytes, 132 + 12 * i + 4, static_cast<std::uint32_t>(start) + i);
    bytes = WithNumber(bytes, 132 + 12 * i + 8, 20000 - i);
  }
  EXPECT_LT(WithIccDescription(bytes, L"New").size(), 2 * bytes.size());
}

} // namespace
