// Which profile the numbers of an image are read by.
//
// Threads: one at a time.
#pragma once

#include "cli/image/image_file.h"
#include "cli/profile/profile_file.h"
#include "zelclr/colorsystem/color_profile.h"

#include <memory>
#include <string>
#include <vector>

namespace cli {

/// The profile in an image, as a file of its own for as long as this lives; hold the profile no longer.
class EmbeddedProfile
{
public:
  /// Holds no profile when the image has none, or a damaged one or one for other colours: `fault` says so then.
  /// Throws Failure when the file cannot be written.
  EmbeddedProfile(const ImageInfo &image, std::string &fault);
  ~EmbeddedProfile();
  EmbeddedProfile(const EmbeddedProfile &) = delete;
  EmbeddedProfile &operator=(const EmbeddedProfile &) = delete;

  const std::shared_ptr<ColorSystem::ColorProfile> &Get() const { return profile_; }

private:
  std::string path_; // empty when there is no file
  std::shared_ptr<ColorSystem::ColorProfile> profile_;
};

struct ImageProfile
{
  std::shared_ptr<ColorSystem::ColorProfile> profile; ///< never null
  std::string name;                                   ///< for people, in one harmless line
  std::string origin;                                 ///< "embedded", "sRGB by the file's word", "assumed", "given"
};

/// By the import policy of the application's settings: the embedded profile, which may be null, or the one that the
/// settings have for such colours. A file that says sRGB counts as one with that profile embedded.
/// Throws Failure when there is no profile at all.
ImageProfile ProfileByPolicy(const ImageInfo &image, const std::shared_ptr<ColorSystem::ColorProfile> &embedded);

/// The profile of an image, settled and held. What uses it must not outlive this.
class SourceProfile
{
public:
  /// `given` on the command line, which must be for such colours; empty for the import policy's choice. Throws Failure.
  SourceProfile(const ImageInfo &image, const std::string &given);

  const ImageProfile &Get() const { return profile_; }
  /// Once an embedded profile has turned out to be of no use: chooses again without it; false when none was chosen.
  bool IgnoreEmbedded();
  /// What a person should know of the choice, one line each.
  std::vector<std::string> Notes() const;

private:
  const ImageInfo &image_;
  std::string fault_;
  std::unique_ptr<const EmbeddedProfile> embedded_; // null when a profile was given
  ImageProfile profile_;
};

/// To be embedded; throws Failure when the file cannot be read.
std::vector<std::uint8_t> BytesOfProfile(const ProfileFile &profile);

} // namespace cli
