// Tints in archives: they come back, and damaged ones do not.
#include "tests/fills/support/tints.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/colour/fills/tint_archive.h"

using C = CLR_COLORSPEC;
using tests::TintOf;
using ZelClr::InputArchive;
using ZelClr::OutputArchive;

namespace {

std::vector<std::uint8_t> BytesOf(const TINT &tint)
{
  OutputArchive archive;
  EXPECT_TRUE(tint.SaveIn(archive));
  return archive.Bytes();
}

/// All of a colour that archives hold; nothing of an invalid one.
std::string TextOf(const C &colour)
{
  if (colour.GetType() == 0)
    return {};
  return colour.GetDeviceN() != nullptr ? colour.GetDeviceN()->SaveInStr() : ZelClr::TextFromColorSpec(colour);
}

bool AreSame(const TINT &a, const TINT &b)
{
  return a.kind == b.kind && a.level == b.level && TextOf(a.colour) == TextOf(b.colour) &&
         TextOf(a.secondColour) == TextOf(b.secondColour) && a.pixelOperation == b.pixelOperation &&
         a.level256 == b.level256 && (a.privateData == nullptr) == (b.privateData == nullptr);
}

TEST(TintArchive, HoldsTheFormThatDocumentsHave)
{
  const auto bytes = BytesOf(TintOf(8, -2, C::MakeRGB(1, 2, 3)));
  const std::string form("ZTNT\x27\0\0\0\x01\0\x08\0\xFE\xFF\xFF\xFF\x0D\0\0\0RGB255(1,2,3)\0\0\0\0", 37);
  std::string expected = form;
  expected[4] = static_cast<char>(form.size());
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), expected);
}

TEST(TintArchive, TintsOfEveryColourComeBack)
{
  OutputArchive archive;
  std::vector<TINT> saved;
  const auto pool = tests::NastyColours();
  for (std::size_t i = 0; i < pool.size(); ++i) {
    const TINT tint = TintOf(static_cast<int>(i % 256), static_cast<int>(i * 7919) - 2000, pool[i], pool[i / 2]);
    const auto before = archive.Bytes();
    const bool hasText = [&] {
      const auto writable = [](const C &colour) { return colour.GetType() == 0 || !TextOf(colour).empty(); };
      return writable(tint.colour) && writable(tint.secondColour);
    }();
    ASSERT_EQ(tint.SaveIn(archive), hasText) << i;
    if (hasText)
      saved.push_back(tint);
    else
      EXPECT_EQ(archive.Bytes(), before);
  }
  ASSERT_GT(saved.size(), 300u);
  const auto bytes = archive.Bytes();
  InputArchive input(bytes);
  for (std::size_t i = 0; i < saved.size(); ++i) {
    TINT loaded = TintOf(3, 3, C::MakeGRAY(3));
    ASSERT_TRUE(loaded.LoadFrom(input)) << i;
    const bool wasReference = saved[i].colour.IsReference() || saved[i].secondColour.IsReference();
    EXPECT_TRUE(wasReference || AreSame(loaded, saved[i])) << i << " " << TextOf(saved[i].colour);
    EXPECT_EQ(TextOf(loaded.colour), TextOf(saved[i].colour));
    EXPECT_FALSE(loaded.colour.IsReference());
  }
  EXPECT_TRUE(input.AtEnd());
}

TEST(TintArchive, WhatIsNotWholeIsRefusedAndChangesNothing)
{
  const TINT before = TintOf(1, 500, C::MakeGRAY(3));
  const auto bytes = BytesOf(TintOf(8, -300, tests::DeviceNColour(DeviceN_Process_CMYK, 40), C::MakeRGB(1, 2, 3)));
  const auto refused = [&](const std::vector<std::uint8_t> &form) {
    InputArchive archive(form);
    TINT tint = before;
    const bool failed = !tint.LoadFrom(archive);
    return failed && AreSame(tint, before) && (form.empty() || !archive.AtEnd());
  };
  for (std::size_t size = 0; size < bytes.size(); ++size)
    EXPECT_TRUE(refused({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)})) << "of " << size;
  // Signature, length, version, what must be zero, lengths of texts.
  for (const std::size_t at : {0u, 3u, 4u, 7u, 8u, 9u, 11u, 16u, 17u, 19u}) {
    for (const int change : {1, 0x80, 0xFF}) {
      auto form = bytes;
      form[at] = static_cast<std::uint8_t>(form[at] ^ change);
      EXPECT_TRUE(refused(form)) << "byte " << at;
    }
  }
  auto longer = bytes; // a form that holds more than a tint
  longer.push_back(0);
  ++longer[4];
  EXPECT_TRUE(refused(longer));
}

TEST(TintArchive, PassesOverOtherForms)
{
  OutputArchive archive;
  archive.Add(0x12345678, 7, {});
  ASSERT_TRUE(TintOf(2, 2, C::MakeGRAY(2)).SaveIn(archive));
  InputArchive input(archive.Bytes());
  TINT tint;
  EXPECT_FALSE(tint.LoadFrom(input));
  EXPECT_TRUE(input.Next(0x12345678, 7).has_value());
  EXPECT_FALSE(input.Next(0x12345678, 8).has_value());
  EXPECT_TRUE(input.Skip());
  EXPECT_TRUE(tint.LoadFrom(input));
  EXPECT_EQ(tint.colour, C::MakeGRAY(2));
  EXPECT_FALSE(input.Skip());
}

} // namespace
