// Pieces that text palettes share: names on one line, colours as "#rrggbb", XML.
//
// Threads: plain functions. Errors: empty results.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/platform/xml_reader.h"

#include <array>
#include <cstdint>
#include <unordered_map>

namespace ZelClr {

/// Whether the bytes are UTF-8 without NULs; else the problem says so.
bool IsText(std::string_view bytes, ReadProblem &problem);
/// The text with each run of blanks and control characters as one blank, and none at both ends; at most 3,900 bytes,
/// so that the line can be read again.
std::string OneLine(std::string_view text);

/// 0 to 1 as a byte; what lies beyond is cut off, and a NaN is 0.
std::uint8_t ByteOfChannel(double value);
/// "#rrggbb" of 0 to 1.
std::string HexOfRgb(const std::array<double, 4> &rgb);
/// So many bytes of as many pairs of hexadecimal digits; empty when the text is anything else.
std::optional<std::vector<std::uint8_t>> BytesOfHex(std::string_view digits, std::size_t count);

/// For element text and attribute values; what XML cannot hold becomes U+FFFD.
std::string EscapedXml(std::string_view text);
/// The name of the root element as written; empty when the bytes are no XML.
std::string RootOfXml(std::string_view bytes);
/// The name without its prefix.
std::string_view LocalName(std::string_view name);
/// ReadXml whose reason goes with its line into the problem.
bool ReadXmlPalette(std::string_view bytes, ZelUtl::XmlHandler &handler, ReadProblem &problem);
/// The value of an attribute, null when it is not there.
const std::string_view *FindAttribute(std::span<const ZelUtl::XmlAttribute> attributes, std::string_view name);

/// Names for formats in which no two may be the same.
class UniqueNames
{
public:
  /// The name, made different from all before with a number behind it: "Red", "Red-2". An empty one becomes `empty`.
  std::string Make(std::string name, std::string_view empty);

private:
  std::unordered_map<std::string, std::size_t> times_; // that a name was wanted
};

/// "more than 100000 colours"
std::string TooManySwatches();

} // namespace ZelClr
