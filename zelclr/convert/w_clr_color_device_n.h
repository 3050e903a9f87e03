// A DeviceN colour: one value for each plate of a DeviceN space.
//
// Threads: a value; distinct colours may be used from any thread, also when they share a space.
// Errors: bool results are false and leave everything as it was.
#pragma once

#include "zelclr/convert/w_clr_color_space_device_n.h"

#include <memory>
#include <string>
#include <string_view>

/// Values stand in plate order, each from 0 to its plate's divisor. The space is shared between copies and not changed
/// through a colour: what needs other plates gives the colour a space of its own.
class ZELCLR_API WClrColorDeviceN
{
public:
  /// A colour of CMYK100, RGB255 or HEXA on the plates of a base of its own.
  static std::unique_ptr<WClrColorDeviceN> OnProcessPlates(const CLR_COLORSPEC &process,
                                                           DeviceN_Process_Type processType);
  /// Separates the space's process plates and starts every value at 0. Without a space there are no values. The
  /// identifier is the caller's own and only kept.
  ///
  /// KEPT: of an RGB-based space the first red plate starts at 255, where one would expect green and blue to start
  /// there, too (white) or none (black); stored data depends on it.
  WClrColorDeviceN(std::shared_ptr<WClrColorSpaceDeviceN> space, int identifier);
  WClrColorDeviceN(const WClrColorDeviceN &) = default;
  WClrColorDeviceN &operator=(const WClrColorDeviceN &) = default;
  virtual ~WClrColorDeviceN() = default;

  int GetIdentifier() const { return identifier_; }
  const WClrColorSpaceDeviceN *GetColorSpace() const { return space_.get(); }
  bool IsRGBBased() const { return space_ && space_->IsRGBBased(); }
  bool IsCMYKBased() const { return space_ && space_->IsCMYKBased(); }
  bool IsHexBased() const { return space_ && space_->IsHexBased(); }

  /// Total order: no space first, then the spaces, the values one by one, the identifiers.
  int CompareTo(const WClrColorDeviceN &other) const;
  /// Whether there is a space of a known base with a value for each plate, each within its scale.
  bool Validate() const;

  const std::vector<std::uint32_t> &GetValues() const { return values_; }
  /// 255 for the plates of types 6, 7, 8 and 17, else 100.
  int GetPlateDivisor(int index) const;

  /// Sets a value, or adds to it up to a maximum. Nothing for an index that no value has.
  void SetColorComponent(int index, std::uint32_t value, std::uint32_t maximum, bool add);
  /// value = ceil(old * oldFactor + value * newFactor - 1e-9), low 8 bits. Nothing for an index that no value has; what
  /// is no number or beyond 2^53 gives 0.
  void BlendColorComponent(int index, std::uint32_t value, double oldFactor, double newFactor);
  /// Each value becomes (density * value + 50) / 100, density cut off to 0 to 100. Always true.
  bool ApplyDensity(int density);

  // The forms that take a colour of any model bring it into the space's base through a context. Defined with the colour
  // converters, in colorsystem/.
  bool SetColorComponent(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context);
  bool SetColorComponent(const CLR_COLORSPEC &colour, int index, const ColorSystem::ColorContext &context);
  bool MergeColorComponent(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context);
  bool BlendColorComponent(const CLR_COLORSPEC &colour, double oldFactor, double newFactor,
                           const ColorSystem::ColorContext &context);
  bool SetProcessColor(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context, bool add);
  bool Overprint(CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context) const;
  bool Overprint(CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context, unsigned model) const;

  /// What the process plates hold, without any other plate: CMYK100, RGB255 or HEXA, by the base; a plate that the
  /// space lacks counts as no ink, or as full light. False without a base.
  bool GetProcessColor(CLR_COLORSPEC &colour) const;
  /// Moves the process plates to another base by formula. Other plates stay, but for an ink that the new base has,
  /// which is overprinted into it, and lights, which did not print. False, with nothing changed, without a base on
  /// either side and where the plates would be too many.
  bool ConvertToProcessType(DeviceN_Process_Type processType);
  /// Drops the plates that print nothing and are not of the base: those with value 0 and those of type 0.
  void SimplifyColor();

  // All plates over each other by formula. The process plates are taken as they are when they are of the wanted base
  // and converted from the plates' own base otherwise; every further plate's colour, thinned to its value, prints on
  // top: OverprintCMYK ink by ink, OverprintRGB light by light. Soft masks and empty plates print nothing; red, green
  // and blue plates count only in an RGB base. False for an ink that has a value but no known appearance.
  bool OverprintToCMYK(CLR_COLORSPEC &colour) const; ///< CMYK100
  bool OverprintToRGB(CLR_COLORSPEC &colour) const;  ///< RGB255
  bool OverprintToHex(CLR_COLORSPEC &colour) const;  ///< HEXA

  /// Two inks on top of each other, in percent: 100 - (100 - a)(100 - b) / 100, truncated toward zero.
  static constexpr int OverprintCMYK(int a, int b) { return 100 - (100 - a) * (100 - b) / 100; }
  /// Two layers of light multiplied: a b / 255, truncated toward zero.
  static constexpr int OverprintRGB(int a, int b) { return a * b / 255; }

  // Persistence, with the space: docs/device_n_format.md. Reading is all or nothing, as for the space.
  std::size_t GetSizeBuf() const;
  bool SaveInBuf(std::span<std::uint8_t> buffer) const;
  bool LoadFromBuf(std::span<const std::uint8_t> buffer);
  bool SaveIn(std::ostream &stream) const;
  bool LoadFrom(std::istream &stream);
  /// The text form, ASCII: DEVICEN/1(7 CMYK 0 unique; 2 CMYK100(100,0,0,0) 40; 15 SPOT(17,100)@{...} 80)
  /// Empty when a plate's colour has no text: an scRGB colour that is not finite.
  std::string SaveInStr() const;
  bool LoadFromStr(std::string_view text);

private:
  std::uint32_t ValueAt(std::size_t index) const { return index < values_.size() ? values_[index] : 0; }
  bool HasValue(int index) const { return index >= 0 && static_cast<std::size_t>(index) < values_.size(); }
  bool OverprintTo(DeviceN_Process_Type base, CLR_COLORSPEC &colour) const;
  /// Takes the values of the base's plates from a colour of the base's model; the inverse of GetProcessColor.
  void SetProcessPlates(const CLR_COLORSPEC &process);
  std::vector<std::uint8_t> Form() const;

  std::shared_ptr<const WClrColorSpaceDeviceN> space_;
  std::vector<std::uint32_t> values_;
  std::int32_t identifier_;
};
