// One drag of a style's colour over the wheel, its harmony with it: all who hold the colours see every step, and the
// palette is changed once, at the end.
//
// Each step is worked out from the start of the drag. The style sheet must outlive the drag; what is edited in it
// meanwhile counts at the end, and styles that are gone by then are passed over.
// Threads: the main thread. Errors: as said.
#pragma once

#include "zelclr/harmony/color_style_sheet.h"
#include "zelclr/harmony/harmony_rules.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

class ZELCLR_API HarmonyDrag
{
public:
  using HSB = Harmony::HSB;

  /// Of a style that has an appearance, in a palette that can be edited; else IsValid is false and nothing happens. A
  /// style without a harmony moves alone.
  HarmonyDrag(ColorStyleSheet &sheet, std::wstring_view style);
  /// Cancels, unless the drag was finished.
  ~HarmonyDrag();
  HarmonyDrag(const HarmonyDrag &) = delete;
  HarmonyDrag &operator=(const HarmonyDrag &) = delete;

  bool IsValid() const { return !colours_.empty(); }
  /// Where the colours are by now, and which of them is dragged.
  const std::vector<HSB> &GetPositions() const { return positions_; }
  std::size_t GetIndex() const { return index_; }

  /// A step: the rule brings the place into the harmony, and tells where the others go. A dragged ink becomes a colour
  /// of the context's blending model; others are left alone.
  void MoveTo(const HSB &place);
  /// Keeps the colours as they are now. False, with the colours as they were, when the palette was locked meanwhile.
  bool Finish();
  /// Back to the start.
  void Cancel();

private:
  struct Colour
  {
    std::wstring name;
    CLR_COLORSPEC reference; // shared with the style
    CLR_COLORSPEC start;
  };

  ColorStyleSheet &sheet_;
  std::shared_ptr<const ColorSystem::ColorConverter> converter_;
  std::unique_ptr<const HarmonyRule> rule_;
  std::vector<Colour> colours_; // empty once the drag is over
  std::vector<HSB> start_;
  std::vector<HSB> positions_;
  std::size_t index_ = 0;
};

} // namespace ZelClr
