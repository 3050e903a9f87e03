#include "zelclr/colour/fills/clr_fountcolor_array.h"

#include "zelclr/colour/fills/internal/fixed_point.h"

#include <algorithm>
#include <span>

namespace {

/// Those that a segment starts at.
std::span<const CLR_FOUNTCOLOR> Starts(const std::vector<CLR_FOUNTCOLOR> &stops)
{
  return std::span(stops).first(stops.empty() ? 0 : stops.size() - 1);
}

ClrBlendMode TurnedRound(ClrBlendMode mode)
{
  switch (mode) {
  case ClrBlendMode_Hue:
    return ClrBlendMode_HueBack;
  case ClrBlendMode_HueBack:
    return ClrBlendMode_Hue;
  default:
    return mode;
  }
}

} // namespace

// Programs that import the class take this by its address where they are not optimised.
constexpr int CLR_FOUNTCOLOR_ARRAY::kMostStops;

void CLR_FOUNTCOLOR_ARRAY::SetSize(int size)
{
  stops_.resize(static_cast<std::size_t>(std::clamp(size, 0, kMostStops)));
}

CLR_FOUNTCOLOR &CLR_FOUNTCOLOR_ARRAY::operator[](int index)
{
  if (index < 0 || index >= kMostStops) {
    thread_local CLR_FOUNTCOLOR nowhere;
    nowhere = CLR_FOUNTCOLOR();
    return nowhere;
  }
  if (index >= GetSize())
    SetSize(index + 1);
  return stops_[static_cast<std::size_t>(index)];
}

const CLR_FOUNTCOLOR &CLR_FOUNTCOLOR_ARRAY::operator[](int index) const
{
  static const CLR_FOUNTCOLOR none;
  return index >= 0 && index < GetSize() ? stops_[static_cast<std::size_t>(index)] : none;
}

void CLR_FOUNTCOLOR_ARRAY::Insert(int index, const CLR_FOUNTCOLOR &stop)
{
  if (index >= 0 && index <= GetSize() && GetSize() < kMostStops)
    stops_.insert(stops_.begin() + index, stop);
}

void CLR_FOUNTCOLOR_ARRAY::Insert(int index, const CLR_COLORSPEC &colour, std::uint16_t position)
{
  Insert(index, {colour, position, ClrBlendMode_Straight, 50, 255});
}

void CLR_FOUNTCOLOR_ARRAY::Delete(int index)
{
  if (index >= 0 && index < GetSize())
    stops_.erase(stops_.begin() + index);
}

std::pair<int, bool> CLR_FOUNTCOLOR_ARRAY::SetColorAtPosition(std::uint16_t position, const CLR_COLORSPEC &colour)
{
  const auto stop = std::find_if(stops_.begin(), stops_.end(),
                                 [position](const CLR_FOUNTCOLOR &reached) { return reached.position >= position; });
  const auto index = static_cast<int>(stop - stops_.begin());
  if (stop != stops_.end() && stop->position == position) {
    stop->colour = colour;
    return {index, false};
  }
  if (GetSize() == kMostStops)
    return {-1, false};
  Insert(index, colour, position);
  return {index, true};
}

void CLR_FOUNTCOLOR_ARRAY::Reverse()
{
  if (stops_.size() < 2)
    return;
  const int first = stops_.front().position;
  const int last = stops_.back().position;
  std::reverse(stops_.begin(), stops_.end());
  for (std::size_t i = 0; i + 1 < stops_.size(); ++i) {
    // What was the end of a segment is its start now.
    stops_[i].position = static_cast<std::uint16_t>(last - stops_[i].position + first);
    stops_[i].blendMode = TurnedRound(stops_[i + 1].blendMode);
    stops_[i].blendRate = static_cast<std::int16_t>(100 - stops_[i + 1].blendRate);
  }
  stops_.back().position = static_cast<std::uint16_t>(last);
}

void CLR_FOUNTCOLOR_ARRAY::SortByIndex()
{
  std::stable_sort(stops_.begin(), stops_.end(),
                   [](const CLR_FOUNTCOLOR &a, const CLR_FOUNTCOLOR &b) { return a.position < b.position; });
}

void CLR_FOUNTCOLOR_ARRAY::SetBlendRateAcceleration(double acceleration)
{
  blendRateAcceleration_ = ZelClr::FixedFromReal(acceleration, 10000.0);
}

bool CLR_FOUNTCOLOR_ARRAY::HasHSBBlends() const
{
  const auto starts = Starts(stops_);
  return std::any_of(starts.begin(), starts.end(), [](const CLR_FOUNTCOLOR &stop) {
    return stop.blendMode == ClrBlendMode_Hue || stop.blendMode == ClrBlendMode_HueBack;
  });
}

bool CLR_FOUNTCOLOR_ARRAY::HasMovedMidpoint() const
{
  const auto starts = Starts(stops_);
  return std::any_of(starts.begin(), starts.end(), [](const CLR_FOUNTCOLOR &stop) { return stop.blendRate != 50; });
}

bool CLR_FOUNTCOLOR_ARRAY::HasNonLinearBlends(bool ignoreAcceleration) const
{
  return HasMovedMidpoint() || (stops_.size() >= 2 && !ignoreAcceleration && blendRateAcceleration_ != 0);
}

bool CLR_FOUNTCOLOR_ARRAY::IsTransparent() const
{
  return rasterOperation_ != 0 ||
         std::any_of(stops_.begin(), stops_.end(), [](const CLR_FOUNTCOLOR &stop) { return stop.opacity < 255; });
}
