// mscms.dll, found at run time: a system without it has no engines of its own, and the library works all the same.
#include "zelclr/platform/system_colour_management.h"

#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <windows.h>
#undef ReplaceFile

#include <icm.h>

#include <algorithm>
#include <limits>
#include <mutex>
#include <optional>

namespace ZelUtl::SystemColourManagement {

namespace {

/// A profile of this size is none that anyone uses.
constexpr std::size_t kMostProfileBytes = std::size_t{64} << 20;
constexpr std::size_t kMostPostScriptBytes = std::size_t{64} << 20;
/// Those of a file name that older functions of the system take, with the terminator.
constexpr std::size_t kMostPathCharacters = 260;

// Names that not every edition of the header has.
constexpr DWORD kDontUseEmbeddedWcsProfiles = 1;
constexpr DWORD kWithDeviceModelInside = 0;

static_assert(static_cast<BMFORMAT>(BitmapFormat::RgbTriplets) == BM_RGBTRIPLETS);
static_assert(static_cast<BMFORMAT>(BitmapFormat::BgrTriplets) == BM_BGRTRIPLETS);
static_assert(static_cast<BMFORMAT>(BitmapFormat::XRgbQuads) == BM_xRGBQUADS);
static_assert(static_cast<BMFORMAT>(BitmapFormat::XBgrQuads) == BM_xBGRQUADS);
static_assert(static_cast<BMFORMAT>(BitmapFormat::Gray) == BM_GRAY);
static_assert(static_cast<BMFORMAT>(BitmapFormat::KymcQuads) == BM_KYMCQUADS);
static_assert(static_cast<COLORTYPE>(ColourType::Gray) == COLOR_GRAY);
static_assert(static_cast<COLORTYPE>(ColourType::Rgb) == COLOR_RGB);
static_assert(static_cast<COLORTYPE>(ColourType::Lab) == COLOR_Lab);
static_assert(static_cast<COLORTYPE>(ColourType::ThreeChannels) == COLOR_3_CHANNEL);
static_assert(static_cast<COLORTYPE>(ColourType::Cmyk) == COLOR_CMYK);
static_assert(static_cast<COLORTYPE>(ColourType::SixChannels) == COLOR_6_CHANNEL);
static_assert(sizeof(Colour) == sizeof(COLOR) && alignof(Colour) >= alignof(COLOR));

/// The functions, under their own names. The first list must be there whole; of the second, each that is.
struct Functions
{
#define ZELCLR_ICM_FUNCTIONS(DO)                                                                                       \
  DO(OpenColorProfileW)                                                                                                \
  DO(CloseColorProfile)                                                                                                \
  DO(CreateMultiProfileTransform)                                                                                      \
  DO(DeleteColorTransform)                                                                                             \
  DO(TranslateBitmapBits)                                                                                              \
  DO(CheckBitmapBits)                                                                                                  \
  DO(SelectCMM)
#define ZELCLR_MORE_ICM_FUNCTIONS(DO)                                                                                  \
  DO(TranslateColors)                                                                                                  \
  DO(CheckColors)                                                                                                      \
  DO(GetPS2ColorSpaceArray)                                                                                            \
  DO(GetColorProfileFromHandle)                                                                                        \
  DO(WcsOpenColorProfileW)                                                                                             \
  DO(WcsCreateIccProfile)

#define ZELCLR_DECLARE(name) decltype(&::name) name = nullptr;
  ZELCLR_ICM_FUNCTIONS(ZELCLR_DECLARE)
  ZELCLR_MORE_ICM_FUNCTIONS(ZELCLR_DECLARE)
#undef ZELCLR_DECLARE

  bool Resolve(HMODULE library)
  {
#define ZELCLR_RESOLVE(name)                                                                                           \
  name = reinterpret_cast<decltype(name)>(reinterpret_cast<void (*)()>(::GetProcAddress(library, #name)));
    ZELCLR_ICM_FUNCTIONS(ZELCLR_RESOLVE)
    ZELCLR_MORE_ICM_FUNCTIONS(ZELCLR_RESOLVE)
#undef ZELCLR_RESOLVE
#define ZELCLR_IS_THERE(name) name != nullptr &&
    return ZELCLR_ICM_FUNCTIONS(ZELCLR_IS_THERE) true;
#undef ZELCLR_IS_THERE
  }
#undef ZELCLR_ICM_FUNCTIONS
#undef ZELCLR_MORE_ICM_FUNCTIONS
};

/// Null when the library is not there. It is looked for in the system's folder alone, once, and stays loaded:
/// transforms that it made may be held for as long as the process lives.
const Functions *System()
{
  static const std::optional<Functions> functions = []() -> std::optional<Functions> {
    Functions found;
    const HMODULE library = ::LoadLibraryExW(L"mscms.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library != nullptr && found.Resolve(library) ? std::optional(found) : std::nullopt;
  }();
  return functions ? &*functions : nullptr;
}

/// The module that this library selected last. The choice is one for the process, so that it is made and used at once.
struct SelectedModule
{
  std::mutex mutex;
  std::optional<std::uint32_t> signature;

  bool Select(const Functions &system, std::uint32_t wanted)
  {
    signature = system.SelectCMM(wanted) != 0 ? std::optional(wanted) : std::nullopt;
    return signature.has_value();
  }
};

SelectedModule &TheSelectedModule()
{
  static auto &module = *new SelectedModule; // may be asked for while the process ends
  return module;
}

/// An open profile, with the bytes that it was opened from, if any.
struct OpenedProfile
{
  OpenedProfile() = default;
  OpenedProfile(const OpenedProfile &) = delete;
  OpenedProfile &operator=(const OpenedProfile &) = delete;
  ~OpenedProfile()
  {
    if (handle != nullptr)
      System()->CloseColorProfile(handle);
  }

  HPROFILE handle = nullptr;
  std::string bytes;
};

bool IsDeviceModel(const std::string &path)
{
  return LowerAscii(ExtensionOfPath(path)) == ".cdmp";
}

/// Shares what it holds, and points to the handle.
Profile ProfileFrom(std::shared_ptr<OpenedProfile> opened)
{
  void *const handle = opened->handle;
  return handle == nullptr ? nullptr : Profile(std::move(opened), handle);
}

BMFORMAT Number(BitmapFormat format)
{
  return static_cast<BMFORMAT>(format);
}

COLORTYPE Number(ColourType type)
{
  return static_cast<COLORTYPE>(type);
}

COLOR *ColoursOf(const Colour *colours)
{
  return reinterpret_cast<COLOR *>(const_cast<Colour *>(colours));
}

DWORD ArrayTypeFor(std::uint32_t colourSpace)
{
  constexpr std::pair<std::uint32_t, DWORD> kTypes[] = {{IccSignature("RGB "), CSA_RGB},
                                                        {IccSignature("CMYK"), CSA_CMYK},
                                                        {IccSignature("GRAY"), CSA_GRAY},
                                                        {IccSignature("Lab "), CSA_Lab}};
  const auto *const row =
    std::find_if(std::begin(kTypes), std::end(kTypes), [&](const auto &type) { return type.first == colourSpace; });
  return row == std::end(kTypes) ? 0 : row->second;
}

} // namespace

bool HasIcm()
{
  return System() != nullptr;
}

bool HasWcs()
{
  return System() != nullptr && System()->WcsOpenColorProfileW != nullptr && System()->WcsCreateIccProfile != nullptr &&
         System()->GetColorProfileFromHandle != nullptr;
}

bool HasColours()
{
  return System() != nullptr && System()->TranslateColors != nullptr && System()->CheckColors != nullptr;
}

bool SelectModule(std::uint32_t signature)
{
  const Functions *const system = System();
  if (system == nullptr)
    return signature == kSystemModule;
  SelectedModule &selected = TheSelectedModule();
  const std::lock_guard guard(selected.mutex);
  return selected.Select(*system, signature);
}

Profile OpenProfile(const std::string &path, ProfileInterface with)
{
  if (System() == nullptr || (with == ProfileInterface::Wcs && !HasWcs()))
    return nullptr;
  std::string reason;
  const auto file = IsDeviceModel(path) ? std::nullopt : IccFile::Open(path, reason);
  if (!IsDeviceModel(path) && (!file || !AreIccTablesSound(*file)))
    return nullptr;
  auto opened = std::make_shared<OpenedProfile>();
  // A relative name would be looked for in the system's folder of colours, and a slash is not everywhere a backslash.
  std::wstring name = WideFromUtf8(AbsolutePath(path));
  std::replace(name.begin(), name.end(), L'/', L'\\');
  PROFILE source = {PROFILE_FILENAME, name.data(), static_cast<DWORD>((name.size() + 1) * sizeof(wchar_t))};
  if (name.size() + 1 > kMostPathCharacters) {
    auto bytes = ReadFile(path, kMostProfileBytes, reason);
    if (!bytes || bytes->empty())
      return nullptr;
    opened->bytes = *std::move(bytes);
    source = {PROFILE_MEMBUFFER, opened->bytes.data(), static_cast<DWORD>(opened->bytes.size())};
  }
  opened->handle = with == ProfileInterface::Wcs
                     ? System()->WcsOpenColorProfileW(&source, nullptr, nullptr, PROFILE_READ, FILE_SHARE_READ,
                                                      OPEN_EXISTING, kDontUseEmbeddedWcsProfiles)
                     : System()->OpenColorProfileW(&source, PROFILE_READ, FILE_SHARE_READ, OPEN_EXISTING);
  return ProfileFrom(std::move(opened));
}

Transform CreateTransform(std::span<const Profile> profiles, std::span<const std::uint32_t> intents,
                          std::uint32_t flags, std::uint32_t module)
{
  const Functions *const system = System();
  if (system == nullptr || profiles.size() != intents.size() ||
      std::find(profiles.begin(), profiles.end(), nullptr) != profiles.end())
    return nullptr;
  std::vector<HPROFILE> handles;
  for (const Profile &profile : profiles)
    handles.push_back(profile.get());
  std::vector<DWORD> numbers(intents.begin(), intents.end());
  SelectedModule &selected = TheSelectedModule();
  const std::lock_guard guard(selected.mutex);
  if (selected.signature != module && !selected.Select(*system, module))
    return nullptr;
  const HTRANSFORM handle =
    system->CreateMultiProfileTransform(handles.data(), static_cast<DWORD>(handles.size()), numbers.data(),
                                        static_cast<DWORD>(numbers.size()), flags, INDEX_DONT_CARE);
  return handle == nullptr ? nullptr
                           : Transform(handle, [system](void *transform) { system->DeleteColorTransform(transform); });
}

bool TranslateBitmap(const Transform &transform, std::uint32_t width, std::uint32_t height, const Bitmap &source,
                     const Bitmap &destination)
{
  return transform != nullptr && System()->TranslateBitmapBits(
                                   transform.get(), source.bits, Number(source.format), width, height, source.stride,
                                   destination.bits, Number(destination.format), destination.stride, nullptr, 0) != 0;
}

bool CheckBitmap(const Transform &transform, std::uint32_t width, std::uint32_t height, const Bitmap &source,
                 std::uint8_t *distances)
{
  return transform != nullptr && System()->CheckBitmapBits(transform.get(), source.bits, Number(source.format), width,
                                                           height, source.stride, distances, nullptr, 0) != 0;
}

bool TranslateColours(const Transform &transform, std::span<const Colour> source, ColourType sourceType,
                      Colour *destination, ColourType destinationType)
{
  return transform != nullptr && HasColours() &&
         System()->TranslateColors(transform.get(), ColoursOf(source.data()), static_cast<DWORD>(source.size()),
                                   Number(sourceType), ColoursOf(destination), Number(destinationType)) != 0;
}

bool CheckColours(const Transform &transform, std::span<const Colour> source, ColourType sourceType,
                  std::uint8_t *distances)
{
  return transform != nullptr && HasColours() &&
         System()->CheckColors(transform.get(), ColoursOf(source.data()), static_cast<DWORD>(source.size()),
                               Number(sourceType), distances) != 0;
}

std::string PostScriptColorSpaceArray(const std::string &path, std::uint32_t colourSpace, std::uint32_t intent)
{
  const DWORD type = ArrayTypeFor(colourSpace);
  const Functions *const system = System();
  if (system == nullptr || system->GetPS2ColorSpaceArray == nullptr || type == 0)
    return {};
  const Profile profile = OpenProfile(path, ProfileInterface::Icm);
  DWORD size = 0;
  BOOL binary = FALSE; // as text, please
  if (profile == nullptr || system->GetPS2ColorSpaceArray(profile.get(), intent, type, nullptr, &size, &binary) == 0 ||
      size == 0 || size > kMostPostScriptBytes)
    return {};
  std::string text(size, '\0');
  binary = FALSE;
  if (system->GetPS2ColorSpaceArray(profile.get(), intent, type, reinterpret_cast<BYTE *>(text.data()), &size,
                                    &binary) == 0 ||
      binary != FALSE || size > text.size())
    return {};
  text.resize(std::min<std::size_t>(size, text.find('\0')));
  return text;
}

std::vector<std::uint8_t> IccProfileOfDeviceModel(const std::string &path)
{
  const Profile model = HasWcs() ? OpenProfile(path, ProfileInterface::Wcs) : nullptr;
  if (model == nullptr)
    return {};
  auto made = std::make_shared<OpenedProfile>();
  made->handle = System()->WcsCreateIccProfile(model.get(), kWithDeviceModelInside);
  const Profile profile = ProfileFrom(std::move(made));
  DWORD size = 0;
  if (profile == nullptr)
    return {};
  System()->GetColorProfileFromHandle(profile.get(), nullptr, &size); // answers false where it says the size
  if (size == 0 || size > kMostProfileBytes)
    return {};
  std::vector<std::uint8_t> bytes(size);
  if (System()->GetColorProfileFromHandle(profile.get(), bytes.data(), &size) == 0 || size > bytes.size())
    return {};
  bytes.resize(size);
  return bytes;
}

} // namespace ZelUtl::SystemColourManagement
