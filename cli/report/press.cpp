#include "cli/report/press.h"

#include "cli/failure.h"
#include "cli/profile/profile_file.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/text.h"
#include "zelclr/settings/color_settings.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cli {

namespace {

using namespace ColorSystem;

std::vector<Lab> LabsOf(const Press &press, const std::vector<Inks> &builds)
{
  Channels channels;
  for (const Inks &inks : builds) {
    for (const int ink : inks)
      channels.push_back(static_cast<float>(ink) / 100.0f);
  }
  auto labs = LabFromDevice(*press.profile, channels, press.Look());
  if (!labs)
    throw Failure(ExitCode::Missing, press.name + " does not tell how its inks look");
  return std::move(*labs);
}

/// The most ink that the profile builds of any colour by any intent, in percent, rounded up to tens: builds between
/// the points of the profile's tables, and their rounding to whole percents, differ by a few from those on them.
int MostInkOf(const Press &press)
{
  constexpr int kStep = 8;
  std::vector<Lab> colours;
  for (int l = 0; l <= 100; l += kStep / 2) {
    for (int a = -120; a <= 120; a += kStep) {
      for (int b = -120; b <= 120; b += kStep)
        colours.push_back({static_cast<double>(l), static_cast<double>(a), static_cast<double>(b)});
    }
  }
  float most = 0.0f;
  for (const auto intent :
       {RenderingIntent::Perceptual, RenderingIntent::RelativeColorimetric, RenderingIntent::Saturation})
  {
    const auto builds = DeviceFromLab(*press.profile, colours, intent);
    if (!builds)
      throw Failure(ExitCode::Missing, press.name + " builds no colours, it only tells how they look");
    for (std::size_t i = 0; i + 3 < builds->size(); i += 4)
      most = std::max(most, std::accumulate(builds->begin() + static_cast<std::ptrdiff_t>(i),
                                            builds->begin() + static_cast<std::ptrdiff_t>(i) + 4, 0.0f));
  }
  return std::clamp(static_cast<int>(std::ceil(most * 10.0f - 0.05f)) * 10, 10, 400);
}

/// Whether the file is the profile, or a copy of it under another path.
bool HasBytesOf(const ProfileFile &file, const ColorProfile &profile)
{
  if (*file.profile == profile)
    return true;
  constexpr std::size_t kMostBytes = std::size_t{64} << 20;
  std::string reason;
  const auto bytes = ZelUtl::ReadFile(file.path, kMostBytes, reason);
  return bytes && bytes == ZelUtl::ReadFile(ZelUtl::Utf8FromWide(profile.GetPath()), kMostBytes, reason);
}

/// Within 0 to 100 for each ink, and within the limit: cyan, magenta and yellow give way, black last.
Inks WithinLimit(Inks inks, int limit)
{
  for (int &ink : inks)
    ink = std::clamp(ink, 0, 100);
  const int black = std::min(inks[3], limit);
  const int colours = inks[0] + inks[1] + inks[2];
  for (int &ink : std::span(inks).first(3))
    ink = colours + black > limit ? ink * (limit - black) / colours : ink;
  inks[3] = black;
  return inks;
}

/// One step in one ink, from one ink to another, and from the three colours to black.
const std::vector<Inks> &Steps()
{
  static const std::vector<Inks> steps = [] {
    std::vector<Inks> made = {{-1, -1, -1, 1}, {1, 1, 1, -1}};
    for (std::size_t up = 0; up < 4; ++up) {
      for (const int step : {-1, 1}) {
        Inks one = {};
        one[up] = step;
        made.push_back(one);
      }
      for (std::size_t down = 0; down < 4; ++down) {
        Inks two = {};
        two[up] = 1;
        two[down] -= 1;
        if (up != down)
          made.push_back(two);
      }
    }
    return made;
  }();
  return steps;
}

} // namespace

int TotalOf(const Inks &inks)
{
  return std::accumulate(inks.begin(), inks.end(), 0);
}

Press PressFrom(const PressOptions &options, const ColorContext &settings)
{
  const ColorSettings &inForce = ColorSettings::GetApplicationColorSettings();
  if (EngineForProfiles() == nullptr)
    throw Failure(ExitCode::Missing, "a report needs an engine that reads profiles: the settings in force convert by "
                                     "formula, or Little CMS 2 is not installed");
  Press press;
  press.profile = settings.GetCmykColorProfile();
  if (!options.profile.empty()) {
    const ProfileFile file = OpenProfile(options.profile);
    if (file.profile == nullptr || file.profile->GetColorModel() != ColorModel::Cmyk)
      throw Failure(ExitCode::Usage, file.name + " is not for CMYK, and a press must be");
    if (press.profile == nullptr || !HasBytesOf(file, *press.profile))
      press.profile = file.profile;
  }
  if (press.profile == nullptr)
    throw Failure(ExitCode::Missing, "the settings in force have no CMYK profile; name one by --profile");
  press.name = OneLine(press.profile->GetDisplayName());
  press.intent = options.intent.value_or(settings.GetRenderingIntent());
  press.preserveBlack = options.preserveBlack.value_or(inForce.GetPreservePureBlack());
  press.grayIsBlackInk = inForce.GetMapGrayToCmykBlackChannel();
  press.inkLimitGiven = options.inkLimit.has_value();
  press.inkLimit = press.inkLimitGiven ? *options.inkLimit : MostInkOf(press);
  const auto paper = LabFromDevice(*press.profile, Channels(4, 0.0f), RenderingIntent::AbsoluteColorimetric);
  press.paper = paper ? paper->front() : PrintedLab(press, {});
  return press;
}

Lab PrintedLab(const Press &press, const Inks &inks)
{
  return LabsOf(press, {inks}).front();
}

PrintableColour NearestPrintable(const Press &press, const Lab &wanted, const Inks &start)
{
  using ZelClr::Formulas::Ciede2000;
  PrintableColour best;
  best.inks = WithinLimit(start, press.inkLimit);
  best.difference = Ciede2000(wanted, PrintedLab(press, best.inks));
  for (int size = 16; size > 0;) {
    std::vector<Inks> builds;
    for (Inks build : Steps()) {
      for (std::size_t i = 0; i < build.size(); ++i)
        build[i] = std::clamp(best.inks[i] + size * build[i], 0, 100);
      if (TotalOf(build) <= press.inkLimit)
        builds.push_back(build);
    }
    const std::vector<Lab> labs = LabsOf(press, builds);
    const double before = best.difference;
    for (std::size_t i = 0; i < builds.size(); ++i) {
      const double difference = Ciede2000(wanted, labs[i]);
      if (difference < best.difference)
        best = {builds[i], difference};
    }
    if (best.difference >= before)
      size /= 2;
  }
  return best;
}

} // namespace cli
