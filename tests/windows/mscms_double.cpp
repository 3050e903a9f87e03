// See mscms_double.h. MSCMS_DOUBLE_IS_OLD leaves out what came with the Windows Color System, and single colours.
#include <windows.h>

#define BUILD_ICM
#include <icm.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#define DOUBLE extern "C" __declspec(dllexport)

namespace {

std::ostringstream record;
std::map<std::string, int> failing;
std::set<std::uintptr_t> handles;
std::uintptr_t lastHandle = 0;
std::vector<std::uint8_t> madeProfile;

/// Whether the call fails.
bool Fails(const char *function)
{
  const auto entry = failing.find(function);
  return entry != failing.end() && entry->second > 0 && --entry->second == 0;
}

template <class Handle>
Handle NewHandle(bool fails)
{
  if (fails) {
    record << " fails\n";
    return Handle{};
  }
  handles.insert(++lastHandle);
  record << " = " << lastHandle << '\n';
  return reinterpret_cast<Handle>(lastHandle);
}

template <class Handle>
std::uintptr_t Number(Handle handle)
{
  return reinterpret_cast<std::uintptr_t>(handle);
}

template <class Handle>
BOOL Release(const char *function, Handle handle)
{
  const bool known = handles.erase(Number(handle)) == 1;
  record << function << ' ' << Number(handle) << (known ? "\n" : " is no handle\n");
  lastHandle = handles.empty() ? 0 : lastHandle; // numbers begin anew when all are back
  return known;
}

BOOL Ended(bool fails)
{
  record << (fails ? " fails\n" : "\n");
  return !fails;
}

/// The name of the file without its folder; the number of bytes of a buffer.
std::string Described(const PROFILE *profile)
{
  if (profile == nullptr)
    return "none";
  if (profile->dwType == PROFILE_MEMBUFFER)
    return "(" + std::to_string(profile->cbDataSize) + " bytes)";
  const std::wstring path(static_cast<const wchar_t *>(profile->pProfileData));
  const bool sized = profile->cbDataSize == (path.size() + 1) * sizeof(wchar_t);
  const bool whole = path.size() > 3 && path[1] == L':' && path[2] == L'\\' && path.find(L'/') == std::wstring::npos;
  std::string name;
  for (const wchar_t c : path.substr(path.find_last_of(L'\\') + 1))
    name += c < 128 ? static_cast<char>(c) : '?';
  return name + (sized ? "" : " of a wrong size") + (whole ? "" : " of a path that is not whole");
}

std::string Signature(DWORD signature)
{
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8)
    text += static_cast<char>(signature >> shift);
  return text;
}

/// Bytes of a pixel.
unsigned SizeOf(BMFORMAT format)
{
  switch (format) {
  case BM_GRAY:
    return 1;
  case BM_RGBTRIPLETS:
  case BM_BGRTRIPLETS:
    return 3;
  case BM_xRGBQUADS:
  case BM_xBGRQUADS:
  case BM_KYMCQUADS:
    return 4;
  default:
    return 0;
  }
}

bool HasFourthByte(BMFORMAT format)
{
  return format == BM_xRGBQUADS || format == BM_xBGRQUADS;
}

} // namespace

DOUBLE const char *TakeRecord()
{
  static std::string taken;
  taken = record.str();
  record.str("");
  return taken.c_str();
}

DOUBLE void FailCall(const char *function, int call)
{
  failing[function] = call;
}

DOUBLE int OpenHandles()
{
  return static_cast<int>(handles.size());
}

DOUBLE void SetMadeProfile(const std::uint8_t *bytes, unsigned size)
{
  madeProfile.assign(bytes, bytes + size);
}

DOUBLE WINBOOL WINAPI SelectCMM(DWORD module)
{
  record << "SelectCMM " << Signature(module);
  return Ended(Fails("SelectCMM"));
}

DOUBLE HPROFILE WINAPI OpenColorProfileW(PPROFILE profile, DWORD access, DWORD share, DWORD creation)
{
  record << "OpenColorProfileW " << Described(profile) << " access " << access << " share " << share << " creation "
         << creation;
  return NewHandle<HPROFILE>(Fails("OpenColorProfileW"));
}

DOUBLE WINBOOL WINAPI CloseColorProfile(HPROFILE profile)
{
  return Release("CloseColorProfile", profile);
}

DOUBLE HTRANSFORM WINAPI CreateMultiProfileTransform(PHPROFILE profiles, DWORD profileCount, PDWORD intents,
                                                     DWORD intentCount, DWORD flags, DWORD preferredModule)
{
  record << "CreateMultiProfileTransform profiles";
  for (DWORD i = 0; i < profileCount; ++i)
    record << ' ' << Number(profiles[i]);
  record << " intents";
  for (DWORD i = 0; i < intentCount; ++i)
    record << ' ' << intents[i];
  record << " flags " << std::hex << flags << std::dec << " module " << preferredModule;
  return NewHandle<HTRANSFORM>(Fails("CreateMultiProfileTransform"));
}

DOUBLE WINBOOL WINAPI DeleteColorTransform(HTRANSFORM transform)
{
  return Release("DeleteColorTransform", transform);
}

DOUBLE WINBOOL WINAPI TranslateBitmapBits(HTRANSFORM transform, PVOID source, BMFORMAT sourceFormat, DWORD width,
                                          DWORD height, DWORD sourceStride, PVOID destination,
                                          BMFORMAT destinationFormat, DWORD destinationStride, PBMCALLBACKFN callback,
                                          LPARAM)
{
  record << "TranslateBitmapBits " << Number(transform) << ' ' << width << 'x' << height << " format " << std::hex
         << sourceFormat << std::dec << " stride " << sourceStride << " to format " << std::hex << destinationFormat
         << std::dec << " stride " << destinationStride << (callback == nullptr ? "" : " with a callback");
  const unsigned from = SizeOf(sourceFormat), to = SizeOf(destinationFormat);
  const bool fails = Fails("TranslateBitmapBits") || from == 0 || to == 0;
  for (DWORD row = 0; row < height && !fails; ++row) {
    const auto *const in = static_cast<const std::uint8_t *>(source) + std::size_t{row} * sourceStride;
    auto *const out = static_cast<std::uint8_t *>(destination) + std::size_t{row} * destinationStride;
    for (DWORD column = 0; column < width; ++column) {
      std::array<std::uint8_t, 4> pixel{};
      std::memcpy(pixel.data(), in + column * from, from);
      const std::uint8_t fourth = pixel[3];
      for (unsigned i = 0; i < to; ++i)
        out[column * to + i] = static_cast<std::uint8_t>(255 - pixel[std::min(i, from - 1)]);
      if (HasFourthByte(destinationFormat)) // kept from quads to quads, as documented
        out[column * to + 3] = HasFourthByte(sourceFormat) ? fourth : 0;
    }
    for (DWORD end = width * to; end % 4 != 0; ++end) // rows are padded, as documented, the last one, too
      out[end] = 0xEE;
  }
  return Ended(fails);
}

DOUBLE WINBOOL WINAPI CheckBitmapBits(HTRANSFORM transform, PVOID source, BMFORMAT format, DWORD width, DWORD height,
                                      DWORD stride, PBYTE result, PBMCALLBACKFN, LPARAM)
{
  record << "CheckBitmapBits " << Number(transform) << ' ' << width << 'x' << height << " format " << std::hex << format
         << std::dec << " stride " << stride;
  const bool fails = Fails("CheckBitmapBits") || SizeOf(format) == 0;
  for (DWORD row = 0; row < height && !fails; ++row) {
    for (DWORD column = 0; column < width; ++column) {
      const std::uint8_t first =
        static_cast<const std::uint8_t *>(source)[std::size_t{row} * stride + column * SizeOf(format)];
      *result++ = first < 128 ? 0 : static_cast<BYTE>(first - 127); // farther out, the more
    }
  }
  return Ended(fails);
}

DOUBLE WINBOOL WINAPI GetPS2ColorSpaceArray(HPROFILE profile, DWORD intent, DWORD type, PBYTE buffer, PDWORD size,
                                            PBOOL binary)
{
  static const std::string kArray = "[/CIEBasedABC <</Of (the system)>>]";
  record << "GetPS2ColorSpaceArray " << Number(profile) << " intent " << intent << " type " << type
         << (buffer == nullptr ? " size" : " text") << (*binary ? " as binary" : "");
  const bool fails = Fails("GetPS2ColorSpaceArray") || (buffer != nullptr && *size < kArray.size() + 1);
  *size = static_cast<DWORD>(kArray.size() + 1);
  *binary = FALSE;
  if (buffer != nullptr && !fails)
    std::memcpy(buffer, kArray.c_str(), kArray.size() + 1);
  return Ended(fails);
}

#ifndef MSCMS_DOUBLE_IS_OLD

namespace {

std::uint16_t *WordsOf(COLOR *colour)
{
  return reinterpret_cast<std::uint16_t *>(colour);
}

} // namespace

DOUBLE WINBOOL WINAPI TranslateColors(HTRANSFORM transform, PCOLOR source, DWORD count, COLORTYPE sourceType,
                                      PCOLOR destination, COLORTYPE destinationType)
{
  record << "TranslateColors " << Number(transform) << ' ' << count << " type " << sourceType << " to type "
         << destinationType;
  const bool fails = Fails("TranslateColors");
  for (DWORD i = 0; i < count && !fails; ++i) {
    for (int word = 0; word < 4; ++word) // the complement of a word is that of its bytes
      WordsOf(destination + i)[word] = static_cast<std::uint16_t>(65535 - WordsOf(source + i)[word]);
  }
  return Ended(fails);
}

DOUBLE WINBOOL WINAPI CheckColors(HTRANSFORM transform, PCOLOR source, DWORD count, COLORTYPE type, PBYTE result)
{
  record << "CheckColors " << Number(transform) << ' ' << count << " type " << type;
  const bool fails = Fails("CheckColors");
  for (DWORD i = 0; i < count && !fails; ++i)
    result[i] = WordsOf(source + i)[0] < 32768 ? 0 : 1;
  return Ended(fails);
}

DOUBLE HPROFILE WINAPI WcsOpenColorProfileW(PPROFILE deviceModel, PPROFILE appearance, PPROFILE gamutMap, DWORD access,
                                            DWORD share, DWORD creation, DWORD flags)
{
  record << "WcsOpenColorProfileW " << Described(deviceModel) << ' ' << Described(appearance) << ' '
         << Described(gamutMap) << " access " << access << " share " << share << " creation " << creation << " flags "
         << flags;
  return NewHandle<HPROFILE>(Fails("WcsOpenColorProfileW"));
}

DOUBLE HPROFILE WINAPI WcsCreateIccProfile(HPROFILE deviceModel, DWORD options)
{
  record << "WcsCreateIccProfile " << Number(deviceModel) << " options " << options;
  return NewHandle<HPROFILE>(Fails("WcsCreateIccProfile"));
}

DOUBLE WINBOOL WINAPI GetColorProfileFromHandle(HPROFILE profile, PBYTE buffer, PDWORD size)
{
  record << "GetColorProfileFromHandle " << Number(profile) << (buffer == nullptr ? " size" : " bytes");
  const bool fails = Fails("GetColorProfileFromHandle") || (buffer != nullptr && *size < madeProfile.size());
  *size = fails ? 0 : static_cast<DWORD>(madeProfile.size());
  if (buffer != nullptr && !fails)
    std::memcpy(buffer, madeProfile.data(), madeProfile.size());
  Ended(fails);
  return buffer != nullptr && !fails; // false where it says the size, as documented
}

#endif
