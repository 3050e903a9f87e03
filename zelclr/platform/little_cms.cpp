#include "zelclr/platform/little_cms.h"

#include "zelclr/platform/dynamic_library.h"
#include "zelclr/platform/icc_file.h"
#include "zelclr/platform/narrow_path.h"

#define CMS_NO_REGISTER_KEYWORD // C++17 has none
#include <lcms2.h>

#include <array>
#include <utility>
#include <vector>

namespace ZelUtl {

namespace {

constexpr const char *kNames[] = {"liblcms2.so.2", "lcms2.dll"};

// clang-format off
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Rgb8) == TYPE_RGB_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Bgr8) == TYPE_BGR_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Rgba8) == TYPE_RGBA_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Bgra8) == TYPE_BGRA_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Rgb16) == TYPE_RGB_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Bgr16) == TYPE_BGR_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Cmyk8) == TYPE_CMYK_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Cmyk16) == TYPE_CMYK_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Kymc16) == TYPE_KYMC_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Gray8) == TYPE_GRAY_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Gray16) == TYPE_GRAY_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Lab8) == TYPE_Lab_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Lab16) == TYPE_Lab_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Cmy8) == TYPE_CMY_8);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Cmy16) == TYPE_CMY_16);
static_assert(static_cast<std::uint32_t>(LittleCmsFormat::Cmyk6_8) == TYPE_CMYK6_8);
// clang-format on

/// The functions, under their own names. All must be there.
struct Functions
{
#define ZELCLR_LITTLE_CMS_FUNCTIONS(DO)                                                                                \
  DO(cmsCreateTransform)                                                                                               \
  DO(cmsCreateProofingTransform)                                                                                       \
  DO(cmsCreateExtendedTransform)                                                                                       \
  DO(cmsDoTransform)                                                                                                   \
  DO(cmsDoTransformLineStride)                                                                                         \
  DO(cmsDeleteTransform)                                                                                               \
  DO(cmsOpenProfileFromFile)                                                                                           \
  DO(cmsCreateNULLProfile)                                                                                             \
  DO(cmsCloseProfile)                                                                                                  \
  DO(cmsSetAlarmCodes)                                                                                                 \
  DO(cmsGetColorSpace)                                                                                                 \
  DO(cmsGetDeviceClass)                                                                                                \
  DO(cmsGetProfileContextID)                                                                                           \
  DO(cmsGetProfileVersion)                                                                                             \
  DO(cmsReadTag)                                                                                                       \
  DO(cmsWriteTag)                                                                                                      \
  DO(cmsMLUalloc)                                                                                                      \
  DO(cmsMLUfree)                                                                                                       \
  DO(cmsMLUgetWide)                                                                                                    \
  DO(cmsMLUsetWide)                                                                                                    \
  DO(cmsGetPostScriptCSA)                                                                                              \
  DO(cmsGetPostScriptCRD)

#define ZELCLR_DECLARE(name) decltype(&::name) name = nullptr;
  ZELCLR_LITTLE_CMS_FUNCTIONS(ZELCLR_DECLARE)
#undef ZELCLR_DECLARE

  bool Resolve(const DynamicLibrary &library)
  {
#define ZELCLR_RESOLVE(name) library.Resolve(#name, name) &&
    return ZELCLR_LITTLE_CMS_FUNCTIONS(ZELCLR_RESOLVE) true;
#undef ZELCLR_RESOLVE
  }
#undef ZELCLR_LITTLE_CMS_FUNCTIONS
};

cmsUInt32Number Number(LittleCmsFormat format)
{
  return static_cast<cmsUInt32Number>(format);
}

cmsUInt32Number Flags(const LittleCmsOptions &options)
{
  // Without the library's cache of one pixel, which threads would share.
  return cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE | (options.copyAlpha ? cmsUInt32Number{cmsFLAGS_COPY_ALPHA} : 0u) |
         (options.blackPointCompensation ? cmsUInt32Number{cmsFLAGS_BLACKPOINTCOMPENSATION} : 0u);
}

class LoadedLittleCms : public LittleCms, public std::enable_shared_from_this<LoadedLittleCms>
{
public:
  LoadedLittleCms(std::shared_ptr<const DynamicLibrary> library, const Functions &functions)
    : library_(std::move(library)),
      call_(functions)
  {
    std::array<cmsUInt16Number, cmsMAXCHANNELS> full;
    full.fill(0xFFFF);
    call_.cmsSetAlarmCodes(full.data());
  }

  Profile OpenProfile(const std::string &path) const override
  {
    std::string reason;
    const auto file = IccFile::Open(path, reason);
    if (!file || !AreIccTablesSound(*file))
      return nullptr;
    const auto name = NarrowPathOf(path);
    return name ? ProfileFrom(call_.cmsOpenProfileFromFile(name->path.c_str(), "r"), name->keeper) : nullptr;
  }

  Profile NullProfile() const override { return ProfileFrom(call_.cmsCreateNULLProfile()); }

  std::string PostScriptColorSpaceArray(const Profile &profile, std::uint32_t intent) const override
  {
    const auto make = [&](void *bytes, cmsUInt32Number size) {
      return call_.cmsGetPostScriptCSA(nullptr, profile.get(), intent, 0, bytes, size);
    };
    std::string text(make(nullptr, 0), '\0');
    text.resize(text.empty() ? 0 : make(text.data(), static_cast<cmsUInt32Number>(text.size())));
    return text;
  }

  Transform CreateTransform(const Profile &source, LittleCmsFormat sourceFormat, const Profile &destination,
                            LittleCmsFormat destinationFormat, std::uint32_t intent,
                            const LittleCmsOptions &options) const override
  {
    return TransformFrom(call_.cmsCreateTransform(source.get(), Number(sourceFormat), destination.get(),
                                                  Number(destinationFormat), intent, Flags(options)));
  }

  Transform CreateChain(std::span<const Step> chain, LittleCmsFormat sourceFormat, LittleCmsFormat destinationFormat,
                        const LittleCmsOptions &options) const override
  {
    return ChainFrom(chain, sourceFormat, destinationFormat, options, nullptr, 0, 0);
  }

  Transform CreateCheckedChain(std::span<const Step, 4> chain, LittleCmsFormat sourceFormat,
                               LittleCmsFormat destinationFormat, const LittleCmsOptions &options) const override
  {
    return ChainFrom(chain, sourceFormat, destinationFormat, options, chain[1].profile.get(), 1, cmsFLAGS_GAMUTCHECK);
  }

  Transform CreateGamutMask(const Step &source, LittleCmsFormat sourceFormat, const Step &proof,
                            LittleCmsFormat maskFormat, const LittleCmsOptions &options) const override
  {
    const Profile null = NullProfile();
    return TransformFrom(call_.cmsCreateProofingTransform(source.profile.get(), Number(sourceFormat), null.get(),
                                                          Number(maskFormat), proof.profile.get(), source.intent,
                                                          proof.intent, Flags(options) | cmsFLAGS_GAMUTCHECK));
  }

  void Run(const Transform &transform, const void *source, void *destination, std::uint32_t width, std::uint32_t height,
           std::uint32_t sourceStride, std::uint32_t destinationStride) const override
  {
    call_.cmsDoTransformLineStride(transform.get(), source, destination, width, height, sourceStride, destinationStride,
                                   0, 0);
  }

private:
  /// `keeper` is of the profile's file, if any.
  Profile ProfileFrom(void *handle, std::shared_ptr<void> keeper = nullptr) const
  {
    if (handle == nullptr)
      return nullptr;
    return Profile(handle, [self = shared_from_this(), keeper = std::move(keeper)](void *profile) mutable {
      self->call_.cmsCloseProfile(profile);
      keeper.reset();
    });
  }
  Transform TransformFrom(void *handle) const
  {
    return handle == nullptr ? nullptr : Transform(handle, [self = shared_from_this()](void *transform) {
      self->call_.cmsDeleteTransform(transform);
    });
  }
  Transform ChainFrom(std::span<const Step> chain, LittleCmsFormat sourceFormat, LittleCmsFormat destinationFormat,
                      const LittleCmsOptions &options, void *gamut, cmsUInt32Number gamutPosition,
                      cmsUInt32Number moreFlags) const
  {
    std::vector<cmsHPROFILE> profiles;
    std::vector<cmsUInt32Number> intents;
    for (const Step &step : chain) {
      profiles.push_back(step.profile.get());
      intents.push_back(step.intent);
    }
    std::vector<cmsBool> compensation(chain.size(), options.blackPointCompensation ? TRUE : FALSE);
    std::vector<cmsFloat64Number> adaptation(chain.size(), 1.0);
    return TransformFrom(call_.cmsCreateExtendedTransform(nullptr, static_cast<cmsUInt32Number>(chain.size()),
                                                          profiles.data(), compensation.data(), intents.data(),
                                                          adaptation.data(), gamut, gamutPosition, Number(sourceFormat),
                                                          Number(destinationFormat), Flags(options) | moreFlags));
  }

  std::shared_ptr<const DynamicLibrary> library_;
  Functions call_;
};

std::shared_ptr<const LittleCms> LoadOnce()
{
  for (const char *name : kNames) {
    auto library = DynamicLibrary::Load(name);
    Functions functions;
    if (library != nullptr && functions.Resolve(*library))
      return std::make_shared<LoadedLittleCms>(std::move(library), functions);
  }
  return nullptr;
}

} // namespace

std::shared_ptr<const LittleCms> LittleCms::Load()
{
  static const auto library = LoadOnce();
  return library;
}

} // namespace ZelUtl
