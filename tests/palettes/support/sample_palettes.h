// Small palettes and inks for tests.
#pragma once

#include "zelclr/palettes/w_clr_palette.h"
#include "zelclr/platform/text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tests {

using namespace ZelUtils::literals;

inline constexpr auto kGuid = "{6B9C1E47-2A1F-4D0B-9E53-7C2C51D0A001}"_guid;
inline constexpr auto kStranger = "{6B9C1E47-2A1F-4D0B-9E53-7C2C51D0A002}"_guid;

/// A palette of these RGB colours, called "0", "1" and so on.
inline std::string XmlOf(int colors, const std::string &attributes = "")
{
  std::string xml = "<?xml version=\"1.0\"?><palette guid=\"" + kGuid.ToText() + "\" name=\"Mine\" " + attributes + ">";
  xml += "<colors><page>";
  for (int i = 0; i < colors; ++i)
    xml += "<color cs=\"RGB\" name=\"" + std::to_string(i) + "\" tints=\"0.2,0.4," + std::to_string(i / 255.0) + "\"/>";
  return xml + "</page></colors></palette>";
}

inline std::vector<std::wstring> NamesOf(const WClrPalette &palette)
{
  std::vector<std::wstring> names;
  for (int i = 0; i < palette.GetPaletteSize(); ++i)
    names.push_back(palette.GetColorName(i));
  return names;
}

inline void Fill(WClrPalette &palette, int colors)
{
  ASSERT_TRUE(palette.RestoreFromString(ZelUtl::WideFromUtf8(XmlOf(colors))));
  palette.SetChanged(false);
}

/// Spot colours point at it for as long as the tests run.
inline CLR_COLORSPEC SpotOf(const wchar_t *name, const CLR_COLORSPEC &look, int density = 100,
                            const ZelUtils::Guid &palette = kStranger, std::int16_t number = 900)
{
  static std::vector<std::shared_ptr<SpotColorDefinition>> kept;
  kept.push_back(look.CreateSpotDefinition(name, name));
  return CLR_COLORSPEC::MakeSPOT(palette, number, static_cast<std::uint16_t>(density), kept.back().get());
}

inline const CLR_COLORSPEC kRed = CLR_COLORSPEC::MakeRGB(255, 0, 0);
inline const CLR_COLORSPEC kGold = CLR_COLORSPEC::MakeCMYK255(0, 51, 255, 51);

} // namespace tests
