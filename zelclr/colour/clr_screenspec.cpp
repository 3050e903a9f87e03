#include "zelclr/colour/clr_screenspec.h"

#include <algorithm>
#include <limits>

namespace {

// Frozen: documents hold these names.
constexpr std::string_view kElement = "ScreenSpec";
constexpr std::string_view kSpot = "Spot", kOverprint = "Overprint", kAngle = "Angle", kFrequency = "Freq",
                           kUserFunction = "UserFn";

std::string WordOf(const ZelUtl::WXmlNode &element, std::string_view name)
{
  const std::string text = ZelUtl::Utf8FromWide(element.Attribute(name).value_or(L""));
  return std::string(ZelUtl::Trimmed(text));
}

template <std::integral Integer>
void Read(const ZelUtl::WXmlNode &element, std::string_view name, Integer &field)
{
  field = ZelUtl::IntegerFromText<Integer>(WordOf(element, name)).value_or(field);
}

void ReadFlag(const ZelUtl::WXmlNode &element, std::string_view name, std::int32_t &field)
{
  const std::string word = WordOf(element, name);
  if (word == "true" || word == "1")
    field = 1;
  else if (word == "false" || word == "0")
    field = 0;
}

} // namespace

int CLR_SCREENSPEC::CompareTo(const CLR_SCREENSPEC &other, bool overprintOnly) const
{
  if (overprintOnly) {
    // KEPT: a difference, not a sign (see the header).
    using Int = std::numeric_limits<int>;
    const std::int64_t difference = std::int64_t{overprint} - other.overprint;
    return static_cast<int>(std::clamp<std::int64_t>(difference, Int::min(), Int::max()));
  }
  return other < *this ? 1 : *this < other ? -1 : 0;
}

bool CLR_SCREENSPEC::SaveScreenSpecIn(const ZelUtl::WXmlNode &parent) const
{
  ZelUtl::WXmlNode element = ZelUtl::WXmlValueAccessor(parent).FindOrCreate(kElement);
  return element.SetAttribute(kSpot, std::to_string(spot)) &&
         element.SetAttribute(kOverprint, overprint != 0 ? "true" : "false") &&
         element.SetAttribute(kAngle, std::to_string(angle)) &&
         element.SetAttribute(kFrequency, std::to_string(frequency)) &&
         element.SetAttribute(kUserFunction, std::to_string(userFunction));
}

bool CLR_SCREENSPEC::LoadScreenSpecFrom(const ZelUtl::WXmlNode &element)
{
  Init();
  if (element.Name() != kElement)
    return false;
  Read(element, kSpot, spot);
  ReadFlag(element, kOverprint, overprint);
  Read(element, kAngle, angle);
  Read(element, kFrequency, frequency);
  Read(element, kUserFunction, userFunction);
  return true;
}
