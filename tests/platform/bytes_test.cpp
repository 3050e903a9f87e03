#include "zelclr/platform/bytes.h"

#include <gtest/gtest.h>

#include <limits>

using ZelUtl::ByteReader;
using ZelUtl::ByteWriter;

namespace {

TEST(Bytes, WritesLeastSignificantByteFirst)
{
  ByteWriter writer;
  writer.Write(std::uint8_t{0xAB});
  writer.Write(std::int16_t{-2});
  writer.Write(std::uint32_t{0x01020304});
  writer.Write(std::numeric_limits<std::int64_t>::min());
  const std::uint8_t tail[] = {9, 8};
  writer.Write(tail);
  EXPECT_EQ(writer.Bytes(), (std::vector<std::uint8_t>{0xAB, 0xFE, 0xFF, 4, 3, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0x80, 9, 8}));
}

template <class Integer>
void ExpectRoundTrip()
{
  using Limits = std::numeric_limits<Integer>;
  for (const Integer value :
       {Limits::min(), Limits::max(), Integer{0}, Integer{1}, static_cast<Integer>(Limits::max() / 3)})
  {
    ByteWriter writer;
    writer.Write(value);
    ByteReader reader(writer.Bytes());
    EXPECT_EQ(reader.Read<Integer>(), value);
    EXPECT_TRUE(reader.Ok() && reader.AtEnd()) << value;
  }
}

TEST(Bytes, EveryIntegerTypeComesBack)
{
  ExpectRoundTrip<std::int8_t>();
  ExpectRoundTrip<std::uint8_t>();
  ExpectRoundTrip<std::int16_t>();
  ExpectRoundTrip<std::uint16_t>();
  ExpectRoundTrip<std::int32_t>();
  ExpectRoundTrip<std::uint32_t>();
  ExpectRoundTrip<std::int64_t>();
  ExpectRoundTrip<std::uint64_t>();
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
