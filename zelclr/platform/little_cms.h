// Little CMS 2, found at run time: the library is neither linked nor needed.
//
// Threads: everything here may be used by many threads at once; a transform, too.
// Errors: null handles and empty texts.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace ZelUtl {

/// Layouts of pixels, with the library's own numbers.
enum class LittleCmsFormat : std::uint32_t
{
  None = 0,
  Rgb8 = 0x40019,
  Bgr8 = 0x40419,
  Rgba8 = 0x40099,
  Bgra8 = 0x44499,
  Rgb16 = 0x4001A,
  Bgr16 = 0x4041A,
  Cmyk8 = 0x60021,
  Cmyk16 = 0x60022,
  Kymc16 = 0x60422,
  Gray8 = 0x30009,
  Gray16 = 0x3000A,
  Lab8 = 0xA0019,
  Lab16 = 0xA001A,
  Cmy8 = 0x50019,
  Cmy16 = 0x5001A,
  Cmyk6_8 = 0x140031
};

/// How a transform is made. All evaluate the profiles themselves and not a table sampled from them: at most half a step
/// off the float result, and made in microseconds.
struct LittleCmsOptions
{
  bool blackPointCompensation = false;
  /// Copy the alpha of the source where both formats have one; without, the destination's alpha stays as it is.
  bool copyAlpha = false;
};

class LittleCms
{
public:
  /// A profile that is open, or a transform. It holds the library, too.
  using Profile = std::shared_ptr<void>;
  using Transform = std::shared_ptr<void>;

  /// One profile of a chain and the intent by which the chain enters it.
  struct Step
  {
    Profile profile;
    std::uint32_t intent;
  };

  /// Loads the library with every function that is used, by the first call in the process; null, then and ever after,
  /// when that fails. Pixels out of gamut are marked with all channels full from then on.
  static std::shared_ptr<const LittleCms> Load();

  virtual ~LittleCms() = default;

  /// `path` in UTF-8. Null for a file that is no profile, or whose tables are not what they claim.
  virtual Profile OpenProfile(const std::string &path) const = 0;
  /// The output of gamut checks: one gray channel, 0 for what is in gamut and full for what is not.
  virtual Profile NullProfile() const = 0;
  /// The PostScript colour-space array for an intent (0 to 3); empty when the profile gives none.
  virtual std::string PostScriptColorSpaceArray(const Profile &profile, std::uint32_t intent) const = 0;

  virtual Transform CreateTransform(const Profile &source, LittleCmsFormat sourceFormat, const Profile &destination,
                                    LittleCmsFormat destinationFormat, std::uint32_t intent,
                                    const LittleCmsOptions &options) const = 0;
  /// From the first profile to the last through those between.
  virtual Transform CreateChain(std::span<const Step> chain, LittleCmsFormat sourceFormat,
                                LittleCmsFormat destinationFormat, const LittleCmsOptions &options) const = 0;
  /// The chain source, proof, proof, display, with what the proof profile cannot show marked.
  virtual Transform CreateCheckedChain(std::span<const Step, 4> chain, LittleCmsFormat sourceFormat,
                                       LittleCmsFormat destinationFormat, const LittleCmsOptions &options) const = 0;
  /// From the source to a gray mask of what the proof profile cannot show.
  virtual Transform CreateGamutMask(const Step &source, LittleCmsFormat sourceFormat, const Step &proof,
                                    LittleCmsFormat maskFormat, const LittleCmsOptions &options) const = 0;

  /// Converts rows of pixels; strides in bytes.
  virtual void Run(const Transform &transform, const void *source, void *destination, std::uint32_t width,
                   std::uint32_t height, std::uint32_t sourceStride, std::uint32_t destinationStride) const = 0;
};

} // namespace ZelUtl
