// The header and the tags of an ICC profile in words.
// Source: ICC.1:2022, clauses 7.2 and 9.
//
// Threads and errors: plain functions; what a table does not know is said by its signature or its number.
#pragma once

#include "cli/output.h"
#include "zelclr/platform/icc_file.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// "'lcms'"; "0x00000001" for a number that is no text; "none" for 0.
std::string SignatureInWords(std::uint32_t signature);
/// "device link" of 'link'; the class and the colour space of a header.
std::string ClassInWords(std::uint32_t signature);
std::string ColourSpaceInWords(std::uint32_t signature);
/// "4.3"
std::string VersionInWords(std::uint32_t version);

struct HeaderField
{
  const char *key; ///< in JSON
  const char *label;
  std::string words;
  Json value;
};
/// Every field of the header in its order.
std::vector<HeaderField> FieldsOf(const ZelUtl::IccHeader &header);

/// "profile description" of 'desc'; empty for a tag that the ICC does not know.
std::string_view TagInWords(std::uint32_t signature);

} // namespace cli
