#include "icc_file.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using Bytes = std::vector<char>;

// Where things lie in a header: ICC.1:2022, 7.2.
constexpr std::size_t kMajorVersionAt = 8;
constexpr std::size_t kDateAt = 24;
constexpr std::size_t kHeaderSize = 128;

constexpr std::array<unsigned, 6> kDate = {2026, 1, 1, 0, 0, 0};

void StampBytes(Bytes &bytes)
{
  if (bytes.size() < kHeaderSize)
    throw ProfileError("the profile is shorter than its header");
  for (std::size_t i = 0; i < kDate.size(); ++i) {
    bytes[kDateAt + 2 * i] = static_cast<char>(kDate[i] >> 8);
    bytes[kDateAt + 2 * i + 1] = static_cast<char>(kDate[i] & 0xff);
  }
}

Bytes BytesOf(const Profile &profile)
{
  cmsUInt32Number size = 0;
  if (!cmsSaveProfileToMem(profile.get(), nullptr, &size))
    throw ProfileError("the profile cannot be written");
  Bytes bytes(size);
  if (!cmsSaveProfileToMem(profile.get(), bytes.data(), &size))
    throw ProfileError("the profile cannot be written");
  return bytes;
}

void WriteFile(const std::filesystem::path &file, const Bytes &bytes)
{
  const std::filesystem::path aside = file.string() + ".new";
  std::ofstream stream(aside, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream)
    throw ProfileError("cannot write " + aside.string());
  std::filesystem::rename(aside, file);
}

void WriteText(const Profile &profile, cmsTagSignature tag, std::initializer_list<Translation> translations)
{
  const std::unique_ptr<cmsMLU, void (*)(cmsMLU *)> texts(
    cmsMLUalloc(nullptr, static_cast<cmsUInt32Number>(translations.size())), cmsMLUfree);
  for (const Translation &translation : translations) {
    if (!cmsMLUsetWide(texts.get(), translation.language, translation.country, translation.text))
      throw ProfileError("Little CMS refuses a text");
  }
  WriteTag(profile, tag, texts.get());
}

} // namespace

Profile NewProfile(const Header &header, std::initializer_list<Translation> description, const wchar_t *copyright)
{
  Profile profile(cmsCreateProfilePlaceholder(nullptr));
  cmsSetProfileVersion(profile.get(), header.version);
  cmsSetDeviceClass(profile.get(), header.deviceClass);
  cmsSetColorSpace(profile.get(), header.space);
  cmsSetPCS(profile.get(), header.connection);
  WriteText(profile, cmsSigProfileDescriptionTag, description);
  WriteText(profile, cmsSigCopyrightTag, {{"en", "US", copyright}});
  WriteTag(profile, cmsSigMediaWhitePointTag, cmsD50_XYZ());
  return profile;
}

Curve SampledCurve(std::size_t points, const std::function<double(double)> &function)
{
  std::vector<cmsUInt16Number> table(points);
  for (std::size_t i = 0; i < points; ++i) {
    const double value = function(static_cast<double>(i) / static_cast<double>(points - 1));
    table[i] = static_cast<cmsUInt16Number>(std::lround(value * 65535.0));
  }
  return Curve(cmsBuildTabulatedToneCurve16(nullptr, static_cast<cmsUInt32Number>(points), table.data()));
}

void WriteTag(const Profile &profile, cmsTagSignature tag, const void *value)
{
  if (!cmsWriteTag(profile.get(), tag, value))
    throw ProfileError("Little CMS refuses a tag");
}

void ShareTag(const Profile &profile, cmsTagSignature tag, cmsTagSignature with)
{
  if (!cmsLinkTag(profile.get(), tag, with))
    throw ProfileError("Little CMS refuses to share a tag");
}

void Save(const Profile &profile, const std::filesystem::path &file)
{
  Bytes bytes = BytesOf(profile);
  StampBytes(bytes);
  if (bytes[kMajorVersionAt] >= 4) {
    const Profile stamped(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
    if (!stamped || !cmsMD5computeID(stamped.get()))
      throw ProfileError("no profile ID for " + file.string());
    bytes = BytesOf(stamped);
  }
  WriteFile(file, bytes);
}

void StampFile(const std::filesystem::path &file)
{
  std::ifstream stream(file, std::ios::binary);
  Bytes bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  if (!stream)
    throw ProfileError("cannot read " + file.string());
  StampBytes(bytes);
  if (bytes[kMajorVersionAt] >= 4)
    throw ProfileError(file.string() + " carries a profile ID");
  WriteFile(file, bytes);
}
