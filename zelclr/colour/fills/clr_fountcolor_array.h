// The stops of a fountain (gradient) fill in their order, with the settings of the whole fill.
//
// Threads: a value. Errors: none are reported. An index that no stop has is ignored or reads as a default stop, and a
// fill never grows beyond kMostStops, more than there are positions.
#pragma once

#include "zelclr/colour/fills/clr_fountcolor.h"

#include <utility>
#include <vector>

/// By which curve the acceleration bends the blend of every segment: docs/fountains.md. Without acceleration there is
/// no difference. Frozen: documents hold the numbers; an unknown one acts as 0.
enum ClrBlendRateMethod : std::uint16_t
{
  ClrBlendRateMethod_Steady = 0, ///< slower at the start and faster at the end by the same amount all the way
  ClrBlendRateMethod_Eased = 1,  ///< slower at both stops; at full acceleration it stands still there
  ClrBlendRateMethod_Smooth = 2, ///< the same, without a bend at the stops that the eye would see as a band
};

class ZELCLR_API CLR_FOUNTCOLOR_ARRAY
{
public:
  static constexpr int kMostStops = 1 << 17;

  CLR_FOUNTCOLOR_ARRAY() = default;
  /// So many default stops; none for a negative size.
  explicit CLR_FOUNTCOLOR_ARRAY(int size) { SetSize(size); }

  // --- Stops --------------------------------------------------------------------------------------------------------

  int GetSize() const { return static_cast<int>(stops_.size()); }
  bool IsEmpty() const { return stops_.empty(); }
  void Clear() { stops_.clear(); }
  /// Drops stops from the end or adds default ones; a size below 0 counts as 0.
  void SetSize(int size);
  auto begin() { return stops_.begin(); }
  auto end() { return stops_.end(); }
  auto begin() const { return stops_.begin(); }
  auto end() const { return stops_.end(); }

  /// Grows the array to `index` + 1 stops where it has fewer. For an index below 0, or of more stops than an array can
  /// have, a stop of the calling thread's own that belongs to no array. It lives until the array changes its size.
  CLR_FOUNTCOLOR &operator[](int index);
  /// A default stop where there is none.
  const CLR_FOUNTCOLOR &operator[](int index) const;

  void Add(const CLR_FOUNTCOLOR &stop) { Insert(GetSize(), stop); }
  /// Straight blend, midpoint in the centre, opaque.
  void Add(const CLR_COLORSPEC &colour, std::uint16_t position) { Insert(GetSize(), colour, position); }
  /// Before the stop of that index, which may be the size; any other index is ignored.
  void Insert(int index, const CLR_FOUNTCOLOR &stop);
  void Insert(int index, const CLR_COLORSPEC &colour, std::uint16_t position);
  /// An index that no stop has is ignored.
  void Delete(int index);
  /// In stops sorted by position: gives the stop at this position the colour, or inserts one as Add makes it. Answers
  /// its index and whether it is new; (-1, false) where there is no room for a new one.
  std::pair<int, bool> SetColorAtPosition(std::uint16_t position, const CLR_COLORSPEC &colour);

  /// The same fill from its other end, between the same two positions: stops, midpoints and directions of hue change
  /// places. Twice gives the fill back, but for the blend of the last stop, which has no effect. Sums beyond 16 bits,
  /// of unsorted stops, wrap. Acceleration is not turned round: a fill accelerates in its own direction.
  void Reverse();
  /// By position as a number; stops of one position keep their order.
  void SortByIndex();

  // --- The whole fill -----------------------------------------------------------------------------------------------

  /// The raster operation by which the fill is laid over what is below; one other than 0 makes it transparent.
  std::int32_t GetROP() const { return rasterOperation_; }
  void SetROP(std::int32_t operation) { rasterOperation_ = operation; }
  ClrBlendRateMethod GetBlendRateMethod() const { return blendRateMethod_; }
  void SetBlendRateMethod(ClrBlendRateMethod method) { blendRateMethod_ = method; }
  /// -1 to 1 have an effect, 0 has none.
  double GetBlendRateAcceleration() const { return blendRateAcceleration_ / 10000.0; }
  /// Stored in ten-thousandths, rounded half away from zero and cut off to 16 bits; what is no number is 0.
  void SetBlendRateAcceleration(double acceleration);

  // Of the stops that a segment starts at: none, for fewer than two stops.
  bool HasHSBBlends() const;
  /// Some midpoint off the centre.
  bool HasMovedMidpoint() const;
  /// Whether a blend is not even all the way: some moved midpoint, or an acceleration, unless that is ignored.
  bool HasNonLinearBlends(bool ignoreAcceleration) const;
  /// A raster operation, or any stop that is not opaque.
  bool IsTransparent() const;

  /// As many stops, equal in pairs, and equal settings.
  friend bool operator==(const CLR_FOUNTCOLOR_ARRAY &a, const CLR_FOUNTCOLOR_ARRAY &b) = default;

private:
  std::vector<CLR_FOUNTCOLOR> stops_;
  std::int32_t rasterOperation_ = 0;
  ClrBlendRateMethod blendRateMethod_ = ClrBlendRateMethod_Steady;
  std::int16_t blendRateAcceleration_ = 0; // ten-thousandths
};
