// What can be known of one profile.
//
// Threads: values. Errors: facts that the engine in force cannot give are empty.
#pragma once

#include "cli/profile/gamut.h"
#include "cli/profile/profile_file.h"
#include "cli/profile/words.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// What the device's colours are by one intent.
struct DeviceFacts
{
  RenderingIntent intent;
  std::optional<Lab> white = {}; ///< the device's: all light, no ink
  std::optional<Lab> black = {}; ///< what becomes of L* 0; where colours cannot be sent to the device, its darkest
  Channels blackBuild = {};      ///< the device's channels for it; empty where colours cannot be sent to the device
  std::optional<Gamut> gamut = {};
  std::optional<GamutVolume> volume = {};
};

/// The most ink that any colour of sRGB gets.
struct InkTotal
{
  RenderingIntent intent;
  double percent; ///< of one ink in full
};

struct EngineUse
{
  ColorSystem::ColorManagementModule module;
  bool here;    ///< on this system
  bool inForce; ///< what the facts come from
  bool toLab;   ///< makes Lab of the profile's colours
  bool fromLab;
};

struct ProfileFacts
{
  ProfileFile file;
  const ModelWords *model = nullptr; ///< null for a profile of no device
  DeviceFacts relative = {RenderingIntent::RelativeColorimetric};
  DeviceFacts absolute = {RenderingIntent::AbsoluteColorimetric};
  std::string noGamut = {}; ///< why there is none
  std::vector<InkTotal> inkTotals = {};
  std::vector<EngineUse> engines = {};

  const DeviceFacts &By(RenderingIntent intent) const
  {
    return intent == RenderingIntent::AbsoluteColorimetric ? absolute : relative;
  }
  bool HasGamut() const { return noGamut.empty(); }
  /// What is missing where the file is shorter than its header says, or a tag lies outside it; else empty.
  std::string Damage() const;
  bool IsDamaged() const { return !Damage().empty(); }
};

ProfileFacts FactsOf(ProfileFile file);

/// Whether a tag lies outside the file or over its header, in full or in part.
bool LiesOutside(const ZelUtl::IccFile &file, const ZelUtl::IccTag &tag);

/// A tag that holds texts, and what it is called.
struct TextTag
{
  std::uint32_t signature;
  const char *key; ///< in JSON
  const char *label;
};
inline constexpr TextTag kTextTags[] = {
  {ZelUtl::IccSignature("desc"), "description", "description"},
  {ZelUtl::IccSignature("cprt"), "copyright", "copyright"},
  {ZelUtl::IccSignature("dmnd"), "manufacturer", "manufacturer"},
  {ZelUtl::IccSignature("dmdd"), "deviceModel", "device model"},
};

} // namespace cli
