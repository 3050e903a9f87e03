// The colour styles of documents, as far as palettes must know them.
//
// Threads: the main thread. Errors: as each function says.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/platform/guid.h"

#include <string>
#include <string_view>

namespace ZelClr {

/// What a document's style sheet answers; the host hands it out (ApplicationHost::GetColorStyles).
class IColorStyles
{
public:
  virtual ~IColorStyles() = default;
  /// The colour of the style of this name, whatever its case: a reference that all who use the style share, or a
  /// DeviceN colour. Null when there is no such style; gone with the next change of the styles.
  virtual const CLR_COLORSPEC *FindColorStyle(std::wstring_view name) const = 0;
  /// The name of the style whose colour a reference shares; empty when it is none.
  virtual std::wstring NameOfColorStyle(const CLR_COLORSPEC &reference) const = 0;
};

enum class ColorStyleAnswer
{
  Found,
  NoSuchStyle, ///< yet: the palette keeps the colour aside
  NoStyles     ///< no document owns the palette, or it has no style sheet
};

/// The style of the document that owns a palette, found without discovery. A style's reference is shared, a DeviceN
/// colour copied. Defined with the palette manager.
ZELCLR_API ColorStyleAnswer FindColorStyle(const ZelUtils::Guid &palette, std::string_view styleName,
                                           CLR_COLORSPEC &color);
/// UTF-8; empty when the colour is no reference to a style of an open document.
ZELCLR_API std::string NameOfColorStyle(const CLR_COLORSPEC &color);

} // namespace ZelClr
