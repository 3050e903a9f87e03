// Numbers in bytes from outside and to outside: least significant byte first, or most significant byte first (Big).
//
// Threads: values. Errors: a read beyond the end reads zeros and is remembered; ask Ok() before believing what was
// read.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

namespace ZelUtl {

/// Reads numbers one after the other from bytes that it does not own.
class ByteReader
{
public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

  template <std::integral Integer>
  Integer Read()
  {
    std::make_unsigned_t<Integer> value = 0;
    const auto bytes = Take(sizeof value);
    for (std::size_t i = bytes.size(); i-- > 0;)
      value = static_cast<std::make_unsigned_t<Integer>>((static_cast<std::uint64_t>(value) << 8) | bytes[i]);
    return static_cast<Integer>(value);
  }
  template <std::integral Integer>
  Integer ReadBig()
  {
    std::make_unsigned_t<Integer> value = 0;
    for (const std::uint8_t byte : Take(sizeof value))
      value = static_cast<std::make_unsigned_t<Integer>>((static_cast<std::uint64_t>(value) << 8) | byte);
    return static_cast<Integer>(value);
  }
  /// The next bytes; empty when there are not so many.
  std::span<const std::uint8_t> Take(std::size_t count)
  {
    ok_ = ok_ && count <= rest_.size();
    const auto taken = ok_ ? rest_.first(count) : std::span<const std::uint8_t>();
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

  bool Ok() const { return ok_; }
  bool AtEnd() const { return rest_.empty(); }
  std::size_t Remaining() const { return rest_.size(); }

private:
  std::span<const std::uint8_t> rest_;
  bool ok_ = true;
};

/// Appends numbers to bytes that it owns.
class ByteWriter
{
public:
  template <std::integral Integer>
  void Write(Integer value)
  {
    auto bits = static_cast<std::make_unsigned_t<Integer>>(value);
    for (std::size_t i = 0; i < sizeof bits; ++i) {
      bytes_.push_back(static_cast<std::uint8_t>(bits));
      bits = static_cast<std::make_unsigned_t<Integer>>(static_cast<std::uint64_t>(bits) >> 8);
    }
  }
  template <std::integral Integer>
  void WriteBig(Integer value)
  {
    const auto bits = static_cast<std::make_unsigned_t<Integer>>(value);
    for (std::size_t i = sizeof bits; i-- > 0;)
      bytes_.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(bits) >> (8 * i)));
  }
  void Write(std::span<const std::uint8_t> bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }

  const std::vector<std::uint8_t> &Bytes() const { return bytes_; }

private:
  std::vector<std::uint8_t> bytes_;
};

} // namespace ZelUtl
