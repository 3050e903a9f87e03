// Visitors of colours: of one, or of every colour of a palette.
//
// Results are those of the suite's interfaces, 32 bits: kSOk, processed and changed; kSFalse, left as it was; a
// negative one, failed. A visitor that also changes objects tells afterwards whether it did. Threads: one at a time.
// Errors: results. Nothing throws.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/platform/export.h"

#include <cstdint>

namespace ColorSystem {
class ColorContext;
}
class WClrPalette;

namespace ZelClr {

/// HRESULT where the system has that name.
using HResult = std::int32_t;
inline constexpr HResult kSOk = 0;
inline constexpr HResult kSFalse = 1;
inline constexpr HResult kEFail = static_cast<HResult>(0x80004005u);

} // namespace ZelClr

/// What every visitor knows of its work.
class ZELCLR_API CTraverseColorBase
{
public:
  virtual ~CTraverseColorBase() = default;

  /// Whether the object that was processed last was changed; any, since the visitor was made.
  bool IsObjectModified() const { return objectModified_; }
  bool AnyObjectModified() const { return anyObjectModified_; }
  void SetIsObjectModified(bool modified)
  {
    objectModified_ = modified;
    anyObjectModified_ = anyObjectModified_ || modified;
  }
  void ClearObjectModifiedFlag() { objectModified_ = false; }
  /// Whether this visitor changes what it visits.
  bool GetObjectChanger() const { return objectChanger_; }

  /// The result of a walk so far, and of one more object: the first failure stays, one change makes it kSOk.
  static void CombineHRESULT(ZelClr::HResult &accumulated, ZelClr::HResult result);

protected:
  void SetObjectChanger() { objectChanger_ = true; }

private:
  bool objectModified_ = false;
  bool anyObjectModified_ = false;
  bool objectChanger_ = false;
};

class ZELCLR_API CTraverseColorSpec : public virtual CTraverseColorBase
{
public:
  virtual ZelClr::HResult ProcessColorspec(CLR_COLORSPEC &color) = 0;
  /// For enumerators of colours that call back: `visitor` is a CTraverseColorSpec, or null, for which the answer is 0.
  static ZelClr::HResult CB_ProcessColorspec(CLR_COLORSPEC &color, const ColorSystem::ColorContext &context,
                                             void *visitor);
};

class ZELCLR_API CTraversePaletteColors : public virtual CTraverseColorSpec
{
public:
  /// Processes the colours in order and writes back those that change, under their names. kSFalse for a palette that
  /// the manager does not hold and for an empty one; the first colour that fails ends the walk, and those before it
  /// stay changed.
  virtual ZelClr::HResult ProcessPalette(WClrPalette *palette);
};
