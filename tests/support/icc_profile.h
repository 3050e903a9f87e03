// ICC profiles built byte by byte, right ones and wrong ones.
#pragma once

#include "tests/support/temporary_folder.h"
#include "zelclr/platform/bytes.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

inline void Append(Bytes &bytes, std::string_view text)
{
  bytes.insert(bytes.end(), text.begin(), text.end());
}
inline void AppendNumber(Bytes &bytes, std::uint32_t number, int size = 4)
{
  for (int i = size; i-- > 0;)
    bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}
inline Bytes TagOfType(std::string_view type)
{
  Bytes tag;
  Append(tag, type);
  AppendNumber(tag, 0);
  return tag;
}

inline Bytes TextTag(std::string_view text)
{
  Bytes tag = TagOfType("text");
  Append(tag, text);
  tag.push_back(0);
  return tag;
}

/// textDescriptionType; the count includes the terminator and is that of the text unless it is stated.
inline Bytes DescTag(std::string_view ascii, std::u16string_view unicode = {}, std::uint32_t count = 0)
{
  Bytes tag = TagOfType("desc");
  AppendNumber(tag, count == 0 ? static_cast<std::uint32_t>(ascii.size()) + 1 : count);
  Append(tag, ascii);
  tag.push_back(0);
  AppendNumber(tag, 0);
  AppendNumber(tag, static_cast<std::uint32_t>(unicode.size()));
  for (const char16_t unit : unicode)
    AppendNumber(tag, unit, 2);
  tag.resize(tag.size() + 70);
  return tag;
}

struct LocalisedText
{
  const char *locale; ///< "enUS"
  std::u16string text;
};

inline Bytes MlucTag(const std::vector<LocalisedText> &texts, std::uint32_t recordSize = 12)
{
  Bytes tag = TagOfType("mluc");
  AppendNumber(tag, static_cast<std::uint32_t>(texts.size()));
  AppendNumber(tag, recordSize);
  auto offset = static_cast<std::uint32_t>(16 + texts.size() * recordSize);
  for (const LocalisedText &text : texts) {
    Append(tag, text.locale);
    AppendNumber(tag, static_cast<std::uint32_t>(text.text.size() * 2));
    AppendNumber(tag, offset);
    tag.resize(tag.size() + recordSize - 12);
    offset += static_cast<std::uint32_t>(text.text.size() * 2);
  }
  for (const LocalisedText &text : texts) {
    for (const char16_t unit : text.text)
      AppendNumber(tag, unit, 2);
  }
  return tag;
}

inline Bytes FixedTag(std::string_view type, const std::vector<double> &numbers)
{
  Bytes tag = TagOfType(type);
  for (const double number : numbers)
    AppendNumber(tag, static_cast<std::uint32_t>(std::llround(number * 65536.0)));
  return tag;
}

inline Bytes CurveTag(const std::vector<std::uint16_t> &entries)
{
  Bytes tag = TagOfType("curv");
  AppendNumber(tag, static_cast<std::uint32_t>(entries.size()));
  for (const std::uint16_t entry : entries)
    AppendNumber(tag, entry, 2);
  return tag;
}

/// Header and tags; each tag begins on a multiple of four.
struct IccProfile
{
  std::string deviceClass = "mntr";
  std::string colourSpace = "RGB ";
  std::string connectionSpace = "XYZ ";
  std::uint32_t version = 0x02400000;
  std::vector<std::pair<std::string, Bytes>> tags;

  Bytes Build() const
  {
    Bytes table, data;
    const std::size_t start = 132 + 12 * tags.size();
    AppendNumber(table, static_cast<std::uint32_t>(tags.size()));
    for (const auto &[signature, bytes] : tags) {
      Append(table, signature);
      AppendNumber(table, static_cast<std::uint32_t>(start + data.size()));
      AppendNumber(table, static_cast<std::uint32_t>(bytes.size()));
      data.insert(data.end(), bytes.begin(), bytes.end());
      data.resize((data.size() + 3) / 4 * 4);
    }
    Bytes profile;
    AppendNumber(profile, static_cast<std::uint32_t>(start + data.size()));
    Append(profile, "test");
    AppendNumber(profile, version);
    Append(profile, deviceClass);
    Append(profile, colourSpace);
    Append(profile, connectionSpace);
    for (const std::uint32_t part : {2024u, 1u, 2u, 3u, 4u, 5u})
      AppendNumber(profile, part, 2);
    Append(profile, "acsp");
    profile.resize(68);
    for (const std::uint32_t part : {0xF6D6u, 0x10000u, 0xD32Du}) // the white D50
      AppendNumber(profile, part);
    profile.resize(84);
    profile.resize(100, 0xDD); // the identifier
    profile.resize(128);
    profile.insert(profile.end(), table.begin(), table.end());
    profile.insert(profile.end(), data.begin(), data.end());
    return profile;
  }
};

/// sRGB's primaries with a gamma of 2.2, and a header that may claim something else.
inline IccProfile MatrixProfile(const std::string &description, const std::string &colourSpace = "RGB ",
                                const std::string &deviceClass = "mntr")
{
  const Bytes gamma = CurveTag({0x0233});
  return {deviceClass,
          colourSpace,
          "XYZ ",
          0x02400000,
          {{"desc", DescTag(description)},
           {"wtpt", FixedTag("XYZ ", {0.9642, 1.0, 0.8249})},
           {"rXYZ", FixedTag("XYZ ", {0.43607, 0.22249, 0.01392})},
           {"gXYZ", FixedTag("XYZ ", {0.38515, 0.71687, 0.09708})},
           {"bXYZ", FixedTag("XYZ ", {0.14307, 0.06061, 0.71410})},
           {"rTRC", gamma},
           {"gTRC", gamma},
           {"bTRC", gamma}}};
}

/// Nothing but a header and a description.
inline Bytes NamedProfile(const std::string &description, const std::string &colourSpace = "RGB ",
                          const std::string &deviceClass = "mntr")
{
  return IccProfile{deviceClass, colourSpace, "XYZ ", 0x02400000, {{"desc", DescTag(description)}}}.Build();
}

} // namespace tests
