#include "zelclr/platform/bytes.h"

#include <gtest/gtest.h>

#include <limits>

using ZelUtl::ByteReader;
using ZelUtl::ByteWriter;

namespace {

TEST(Bytes, GoAndComeLeastSignificantByteFirst)
{
  ByteWriter writer;
  writer.Write(std::uint8_t{0xAB});
  writer.Write(std::int16_t{-2});
  writer.Write(std::uint32_t{0x01020304});
  writer.Write(std::numeric_limits<std::int64_t>::min());
  const std::uint8_t tail[] = {9, 8};
  writer.Write(tail);
  ByteReader reader(writer.Bytes());
  EXPECT_EQ(reader.Read<std::uint8_t>(), 0xAB);
  EXPECT_EQ(reader.Read<std::int16_t>(), -2);
  EXPECT_EQ(reader.Read<std::uint32_t>(), 0x01020304u);
  EXPECT_EQ(reader.Read<std::int64_t>(), std::numeric_limits<std::int64_t>::min());
  EXPECT_TRUE(reader.Ok() && !reader.AtEnd());
  EXPECT_EQ(writer.Bytes(), (std::vector<std::uint8_t>{0xAB, 0xFE, 0xFF, 4, 3, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0x80, 9, 8}));
}

TEST(Bytes, AReadBeyondTheEndIsZeroAndRememberedForGood)
{
  const std::uint8_t bytes[] = {1, 2, 3, 4, 5, 6, 7};
  const std::span<const std::uint8_t> all(bytes);
  for (std::size_t length = 0; length <= 7; ++length) {
    ByteReader reader(all.first(length));
    const auto whole = reader.Read<std::uint32_t>();
    EXPECT_EQ(whole, length >= 4 ? 0x04030201u : 0u) << length;
    EXPECT_EQ(reader.Ok(), length >= 4) << length;
    EXPECT_EQ(reader.Read<std::uint32_t>(), 0u) << length;
    EXPECT_FALSE(reader.Ok()) << length;
    EXPECT_EQ(reader.Read<std::uint8_t>(), 0u) << "after a failure nothing more is read, length " << length;
    EXPECT_TRUE(reader.Take(1).empty()) << length;
  }
  ByteReader reader(all);
  EXPECT_TRUE(reader.Take(std::numeric_limits<std::size_t>::max()).empty());
  EXPECT_FALSE(reader.Ok());
}

} // namespace
