// A DeviceN colour space: the named inks (plates) that its colours are mixed from, in printing order.
//
// Threads: a value; a space that colours share is not changed any more.
// Errors: index results are -1 for "none"; bool results are false and leave everything as it was.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <iosfwd>
#include <span>
#include <vector>

namespace ColorSystem {
class ColorContext;
}
namespace ZelUtl {
class ByteReader;
class ByteWriter;
} // namespace ZelUtl

/// The process inks that a space is based on. Frozen: documents hold the numbers.
enum DeviceN_Process_Type : std::int32_t
{
  DeviceN_Process_None = 0,
  DeviceN_Process_RGB = 1,
  DeviceN_Process_CMYK = 2,
  DeviceN_Process_Hexachrome = 3,
};

/// What a plate prints. Frozen: documents hold the numbers. A number without a meaning is kept, is an ink of its own
/// colour, and counts in percent.
///
/// | code   | plate                                   | scale | colour that InitializePlateColorSpec gives it       |
/// |--------|-----------------------------------------|-------|------------------------------------------------------|
/// | 0      | none: prints nothing                    | 100   | invalid                                              |
/// | 1      | the whole process base as one plate     | 100   | invalid; SeparateProcess replaces it by the plates   |
/// | 2 - 5  | cyan, magenta, yellow, black            | 100   | CMYK100, that ink at 100                             |
/// | 6 - 8  | red, green, blue light                  | 255   | RGB255, that light at 255                            |
/// | 9, 10  | orange, green ink of six                | 100   | HEXA, that ink at 255                                |
/// | 15     | a spot ink                              | 100   | the ink's own                                        |
/// | 16     | registration: every plate               | 100   | REGCOLOR                                             |
/// | 17     | soft mask: transparency, prints nothing | 255   | GRAY255 white                                        |
using DeviceN_Plate_Type = std::int32_t;
enum : DeviceN_Plate_Type
{
  DeviceN_Plate_None = 0,
  DeviceN_Plate_Process = 1,
  DeviceN_Plate_Cyan = 2,
  DeviceN_Plate_Magenta = 3,
  DeviceN_Plate_Yellow = 4,
  DeviceN_Plate_Black = 5,
  DeviceN_Plate_Red = 6,
  DeviceN_Plate_Green = 7,
  DeviceN_Plate_Blue = 8,
  DeviceN_Plate_HexOrange = 9,
  DeviceN_Plate_HexGreen = 10,
  DeviceN_Plate_Spot = 15,
  DeviceN_Plate_Registration = 16,
  DeviceN_Plate_SoftMask = 17,
};

struct DeviceN_Plate
{
  DeviceN_Plate_Type type = DeviceN_Plate_None;
  CLR_COLORSPEC colour; ///< never a DeviceN colour, never a reference
};

class ZELCLR_API WClrColorSpaceDeviceN
{
public:
  /// More plates than any press has; adding beyond is refused.
  static constexpr std::size_t kMostPlates = 255;

  /// No plates; an unknown process type counts as none; the identifier is the caller's own and only kept.
  WClrColorSpaceDeviceN(int identifier, DeviceN_Process_Type processType);
  WClrColorSpaceDeviceN(const WClrColorSpaceDeviceN &) = default;
  WClrColorSpaceDeviceN &operator=(const WClrColorSpaceDeviceN &) = default;
  virtual ~WClrColorSpaceDeviceN() = default;

  int GetIdentifier() const { return identifier_; }

  /// Total order: process type, number of plates, plate by plate its type and then its colour, unique-plates flag,
  /// identifier.
  int CompareTo(const WClrColorSpaceDeviceN &other) const;
  friend bool operator==(const WClrColorSpaceDeviceN &a, const WClrColorSpaceDeviceN &b) { return a.CompareTo(b) == 0; }

  DeviceN_Process_Type GetProcessType() const { return processType_; }
  /// An unknown type is ignored.
  void SetProcessType(DeviceN_Process_Type processType);
  bool IsRGBBased() const { return processType_ == DeviceN_Process_RGB; }
  bool IsCMYKBased() const { return processType_ == DeviceN_Process_CMYK; }
  bool IsHexBased() const { return processType_ == DeviceN_Process_Hexachrome; }
  bool HasProcess() const { return processType_ != DeviceN_Process_None; }

  /// With unique plates (as after construction), adding a plate that the space has answers the index that it has: a
  /// spot plate is the same when its colour and that colour's palette are, any other when its type is.
  void EnableUniqueColorPlates(bool unique) { uniquePlates_ = unique; }
  bool HasUniqueColorPlates() const { return uniquePlates_; }

  int GetNumPlates() const { return static_cast<int>(plates_.size()); }
  const std::vector<DeviceN_Plate> &GetColorPlates() const { return plates_; }
  bool GetPlate(int index, DeviceN_Plate_Type &type, CLR_COLORSPEC &colour) const;

  bool HasColorPlate(DeviceN_Plate_Type type) const { return GetColorPlateIndex(type) >= 0; }
  bool HasSpotColorPlate(const CLR_COLORSPEC &colour) const { return GetSpotColorPlateIndex(colour) >= 0; }
  bool HasAnySpotPlate() const { return HasColorPlate(DeviceN_Plate_Spot); }
  /// The first plate of the type.
  int GetColorPlateIndex(DeviceN_Plate_Type type) const;
  /// The first plate of the type and of this colour.
  int GetColorPlateIndex(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour) const;
  int GetSpotColorPlateIndex(const CLR_COLORSPEC &colour) const
  {
    return GetColorPlateIndex(DeviceN_Plate_Spot, colour);
  }

  /// Adds a plate with the colour of its type where FindBestPositionFor says; answers its index. -1 for types 0 and 15,
  /// which need a colour, for a type without a meaning, and for a full space.
  int AddColorPlate(DeviceN_Plate_Type type);
  /// Adds a spot plate, its colour at density 100; -1 for a DeviceN colour, one of no known model, and a full space.
  int AddSpotColorPlate(const CLR_COLORSPEC &colour);
  /// Adds a plate of the type whose colour is brought into the space's base through the context. Defined with the
  /// colour converters, in colorsystem/.
  int AddColorPlate(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context);
  /// The same with the type that fits the colour: spot, registration or the process base. Defined in colorsystem/.
  int AddColorPlate(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context);
  /// False when there is none.
  bool RemoveRegistrationPlate() { return RemovePlates(DeviceN_Plate_Registration); }
  bool RemoveSoftMaskPlate() { return RemovePlates(DeviceN_Plate_SoftMask); }
  /// Plates stand in ascending order of type: the index behind all plates of the same or a lower type.
  int FindBestPositionFor(DeviceN_Plate_Type type) const;
  /// Replaces a plate of type 1 by those plates of the base that the space lacks. Without such a plate nothing changes.
  void SeparateProcess();

  /// The colour that a plate of the type starts with, by the table above; false and an invalid colour when it has none.
  static bool InitializePlateColorSpec(DeviceN_Plate_Type type, CLR_COLORSPEC &colour);
  /// Paper or full light in the base: CMYK100, RGB255 or HEXA; GRAY255 without a base.
  void MakeDeviceWhiteCS(CLR_COLORSPEC &colour) const;
  /// What the registration colour looks like in the base: all inks at full, no light at all; GRAY255 black without one.
  void MakeRegEquivalentCS(CLR_COLORSPEC &colour) const;
  /// The colour that a plate paints at full strength, as a colour of the base by formula (of CMYK without one); false
  /// for a plate that paints nothing or whose ink has no known appearance.
  bool GetPaintColor(int index, CLR_COLORSPEC &colour) const;
  /// The same through a colour context. Defined in colorsystem/.
  bool GetPaintColor(int index, CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context) const;

  // Persistence: docs/device_n_format.md. Reading is all or nothing and refuses every form that is not whole, has
  // trailing bytes, states impossible numbers or is of a later version.
  std::size_t GetSizeBuf() const;
  /// False when the buffer is smaller than GetSizeBuf.
  bool SaveInBuf(std::span<std::uint8_t> buffer) const;
  bool LoadFromBuf(std::span<const std::uint8_t> buffer);
  bool SaveIn(std::ostream &stream) const;
  bool LoadFrom(std::istream &stream);

private:
  friend class WClrColorDeviceN;

  int Insert(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour);
  bool RemovePlates(DeviceN_Plate_Type type);
  void Write(ZelUtl::ByteWriter &writer) const;
  bool Read(ZelUtl::ByteReader &reader);
  /// Adds a plate that comes in order, as forms hold them; false when it does not or the space is full.
  bool AppendInOrder(DeviceN_Plate_Type type, const CLR_COLORSPEC &colour);

  std::vector<DeviceN_Plate> plates_;
  DeviceN_Process_Type processType_;
  std::int32_t identifier_;
  bool uniquePlates_ = true;
};
