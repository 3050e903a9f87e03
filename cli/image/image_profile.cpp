#include "cli/image/image_profile.h"

#include "cli/failure.h"
#include "cli/output.h"
#include "cli/profile/words.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"
#include "zelclr/settings/color_settings.h"

#include <cstdio>
#include <random>

namespace cli {

namespace {

using namespace ColorSystem;

constexpr const wchar_t *kSrgbProfile = L"sRGB-Placeholder!";

/// Nobody else's, and nobody can guess it.
std::string TemporaryPath()
{
  std::random_device random;
  std::string name = "zelclr-";
  for (int i = 0; i < 4; ++i) {
    char part[9];
    std::snprintf(part, sizeof part, "%08x", static_cast<unsigned>(random()));
    name += part;
  }
  return ZelUtl::JoinPath(ZelUtl::GetFolders().temporary, name + ".icc");
}

} // namespace

EmbeddedProfile::EmbeddedProfile(const ImageInfo &image, std::string &fault)
{
  if (image.profile.empty())
    return;
  std::string reason;
  path_ = TemporaryPath();
  const std::string_view bytes(reinterpret_cast<const char *>(image.profile.data()), image.profile.size());
  if (!ZelUtl::ReplaceFile(path_, bytes, reason))
    throw Failure(ExitCode::Missing, "the embedded profile cannot be put aside: " + Harmless(path_) + ": " + reason);
  profile_ = ColorProfileManager::GetInstance().CreateColorProfile(ZelUtl::WideFromUtf8(path_), true);
  if (profile_ == nullptr || !profile_->IsValid()) {
    fault = "the embedded profile is damaged and was ignored";
    profile_.reset();
  } else if (profile_->GetColorModel() != image.format.model) {
    fault = "the embedded profile is for other colours than the image has, and was ignored";
    profile_.reset();
  }
}

EmbeddedProfile::~EmbeddedProfile()
{
  if (path_.empty())
    return;
  profile_.reset();
  ColorProfileManager::GetInstance().DeleteUnusedTransientProfiles();
  std::remove(path_.c_str()); // what was no profile
}

ImageProfile ProfileByPolicy(const ImageInfo &image, const std::shared_ptr<ColorProfile> &embedded)
{
  const ColorModel model = image.format.model;
  auto tagged = embedded;
  if (tagged == nullptr && image.isSrgb && model == ColorModel::Rgb)
    tagged = ColorProfileManager::GetInstance().GetColorProfile(kSrgbProfile);
  ColorContext source;
  source.SetColorProfile(model, tagged);
  ColorContext target = ColorContext::GetApplicationDefaultColorContext();
  ColorSettings::GetApplicationColorSettings().GetColorPolicyForImport().Apply(source, target, &model);
  const auto profile = source.GetColorProfile(model);
  if (profile == nullptr)
    throw Failure(ExitCode::Missing, "the settings have no profile for such colours");
  const char *origin = profile != tagged ? "assumed" : embedded != nullptr ? "embedded" : "sRGB by the file's word";
  return {profile, OneLine(profile->GetDisplayName()), origin};
}

SourceProfile::SourceProfile(const ImageInfo &image, const std::string &given) : image_(image)
{
  if (given.empty()) {
    embedded_ = std::make_unique<const EmbeddedProfile>(image, fault_);
    profile_ = ProfileByPolicy(image, embedded_->Get());
    return;
  }
  const ProfileFile file = OpenProfile(given);
  if (file.profile == nullptr || file.profile->GetColorModel() != image.format.model)
    throw Failure(ExitCode::Usage,
                  file.name + " is not for " + WordsOf(image.format.model).name + ", which the image has");
  profile_ = {file.profile, file.name, "given"};
}

bool SourceProfile::IgnoreEmbedded()
{
  if (embedded_ == nullptr || embedded_->Get() == nullptr || profile_.profile != embedded_->Get())
    return false;
  fault_ = "the embedded profile cannot be used and was ignored";
  profile_ = ProfileByPolicy(image_, nullptr);
  return true;
}

std::vector<std::string> SourceProfile::Notes() const
{
  std::vector<std::string> notes;
  if (!fault_.empty())
    notes.push_back(fault_);
  if (profile_.origin == "assumed") {
    notes.push_back(std::string(embedded_->Get() != nullptr && fault_.empty()
                                  ? "by the import policy its profile gives way to "
                                  : "it has no profile; assumed is ") +
                    profile_.name);
  }
  return notes;
}

std::vector<std::uint8_t> BytesOfProfile(const ProfileFile &profile)
{
  std::string reason;
  const auto bytes = ZelUtl::ReadFile(profile.path, kMostProfileBytes, reason);
  if (!bytes)
    throw Failure(ExitCode::Unreadable, Harmless(profile.path) + ": " + reason);
  return {bytes->begin(), bytes->end()};
}

} // namespace cli
