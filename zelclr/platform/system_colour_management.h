// The colour management of the operating system: Image Color Management and the Windows Color System.
//
// Profiles and transforms are handles of the system; the last copy of one gives it back. A transform needs its profiles
// while it is made and never after. Paths are UTF-8.
//
// Threads: everything here may be called by many threads at once; a transform may be used so, too.
// Errors: null handles, false and empty results. Systems without it answer that nothing can exist.
#pragma once

#include "zelclr/platform/icc_file.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ZelUtl::SystemColourManagement {

/// Layouts of bitmaps, with the system's own numbers. The first letter stands for the most significant byte of a pixel
/// and thus comes last in memory, as in the bitmaps of the system's windows; the drawings show memory.
enum class BitmapFormat : std::uint32_t
{
  RgbTriplets = 0x0002, ///< B G R
  BgrTriplets = 0x0004, ///< R G B
  XRgbQuads = 0x0008,   ///< B G R x
  XBgrQuads = 0x0010,   ///< R G B x
  Gray = 0x0209,
  KymcQuads = 0x0305 ///< C M Y K
};

/// What the numbers of a Colour are, with the system's own numbers.
enum class ColourType : std::uint32_t
{
  Gray = 1,
  Rgb = 2,
  Lab = 5, ///< L* 0 to 100, a* and b* -128 to 127 on the whole scale
  ThreeChannels = 6,
  Cmyk = 7,
  SixChannels = 9
};

/// One colour: its channels from the front, as words of 16 bits with the full scale 65535; of SixChannels as bytes.
struct alignas(8) Colour
{
  std::array<std::uint16_t, 8> words{};
};

enum class ProfileInterface
{
  Icm,
  Wcs ///< opens device models, too; what an ICC file holds of device models is left aside
};

// Colour-matching modules, as SelectModule knows them.
inline constexpr std::uint32_t kSystemModule = IccSignature("Win ");
inline constexpr std::uint32_t kAdobeModule = IccSignature("ADBE");

using Profile = std::shared_ptr<void>;
using Transform = std::shared_ptr<void>;

bool HasIcm();
/// Whether the functions of the Windows Color System are there.
bool HasWcs();
/// Whether kAdobeModule is installed and loads. Found out once in a process.
bool HasAdobeModule();
/// Whether transforms convert single colours, too.
bool HasColours();
/// Chooses the colour-matching module of the process by its signature; where there is none to choose, nothing stands in
/// the way of engines that need none, and the answer is true.
bool SelectModule(std::uint32_t signature);

/// For reading, shared with other readers. Null for a file that is no profile, or whose tables are not what they claim.
Profile OpenProfile(const std::string &path, ProfileInterface with);
/// From the first profile to the last, one intent (0 to 3, as ICC has them) to each, made while `module` is selected.
Transform CreateTransform(std::span<const Profile> profiles, std::span<const std::uint32_t> intents,
                          std::uint32_t flags, std::uint32_t module);

/// Rows of pixels of the system: the first one's address, their layout, and bytes from one to the next. Rows that are
/// written may be padded to 4 bytes by the system, the last one, too.
struct Bitmap
{
  void *bits;
  BitmapFormat format;
  std::uint32_t stride;
};

/// Both of width times height; both may be at one address where their pixels have one size.
bool TranslateBitmap(const Transform &transform, std::uint32_t width, std::uint32_t height, const Bitmap &source,
                     const Bitmap &destination);
/// Stores a byte for each pixel, without gaps: 0 for those that the last profile can show.
bool CheckBitmap(const Transform &transform, std::uint32_t width, std::uint32_t height, const Bitmap &source,
                 std::uint8_t *distances);
/// The same for colours; `source` and `destination` may be one.
bool TranslateColours(const Transform &transform, std::span<const Colour> source, ColourType sourceType,
                      Colour *destination, ColourType destinationType);
bool CheckColours(const Transform &transform, std::span<const Colour> source, ColourType sourceType,
                  std::uint8_t *distances);

/// The PostScript array of a profile's colour space ('RGB ') for an intent.
std::string PostScriptColorSpaceArray(const std::string &path, std::uint32_t colourSpace, std::uint32_t intent);
/// The bytes of an ICC profile that the Windows Color System makes of a device model.
std::vector<std::uint8_t> IccProfileOfDeviceModel(const std::string &path);

} // namespace ZelUtl::SystemColourManagement
