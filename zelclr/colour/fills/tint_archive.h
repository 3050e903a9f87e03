// Archives of tints: forms one behind the other, each with its signature, its length and its version.
//
// | offset | size | content                                                                                 |
// |--------|------|-----------------------------------------------------------------------------------------|
// | 0      | 4    | signature: of a tint "ZTNT"                                                             |
// | 4      | 4    | length of the whole form                                                                |
// | 8      | 2    | version, 1                                                                              |
// | 10     | 1    | kind                                                                                    |
// | 11     | 1    | zero                                                                                    |
// | 12     | 4    | level, signed                                                                           |
// | 16     |      | the colour, then the second one: each the length of its text (4) and the text, no more  |
// |        |      | than 65,535 bytes: that of colour_text.h or of a DeviceN colour; none where it is       |
// |        |      | invalid                                                                                 |
//
// Numbers stand least significant byte first. A reference is stored as the colour that it refers to. A form that is not
// whole, of a later version, or that states what cannot be is refused.
//
// Threads: values, but for the bytes that an InputArchive reads and does not own. Errors: empty and false.
#pragma once

#include "zelclr/colour/fills/tint.h"
#include "zelclr/platform/bytes.h"

#include <optional>

namespace ZelClr {

class ZELCLR_API OutputArchive
{
public:
  void Add(std::uint32_t signature, std::uint16_t version, std::span<const std::uint8_t> content);
  const std::vector<std::uint8_t> &Bytes() const { return bytes_.Bytes(); }

private:
  ZelUtl::ByteWriter bytes_;
};

class ZELCLR_API InputArchive
{
public:
  explicit InputArchive(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

  /// What the next form holds behind its version, where it has the signature, is whole and of this version. It stays
  /// the next one until it is skipped.
  std::optional<std::span<const std::uint8_t>> Next(std::uint32_t signature, std::uint16_t version) const;
  /// Passes over a whole form, whatever it holds; false, without a step, where there is none.
  bool Skip();
  bool AtEnd() const { return rest_.empty(); }

private:
  std::span<const std::uint8_t> rest_;
};

} // namespace ZelClr
