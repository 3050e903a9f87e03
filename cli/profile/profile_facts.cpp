#include "cli/profile/profile_facts.h"

#include "zelclr/colorsystem/color_profile_manager.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace cli {

namespace {

using ColorSystem::ColorManagementModule;
using ColorSystem::ColorManagementSystem;

void AddDeviceFacts(DeviceFacts &facts, const ColorSystem::ColorProfile &profile, const ModelWords &model,
                    std::string &noGamut)
{
  if (!model.white) {
    facts.gamut = GamutOf(profile, facts.intent, noGamut);
    return;
  }
  const auto lookOf = [&](const Channels &device) {
    const auto look = LabFromDevice(profile, device, facts.intent);
    return look ? std::optional(look->front()) : std::nullopt;
  };
  facts.white = lookOf(Channels(profile.GetChannelCount(), *model.white));
  const Lab darkest = {0, 0, 0};
  if (auto build = DeviceFromLab(profile, {&darkest, 1}, facts.intent)) {
    facts.black = lookOf(*build);
    facts.blackBuild = std::move(*build);
  }
  facts.gamut = GamutOf(profile, facts.intent, noGamut);
  if (!facts.gamut)
    return;
  facts.volume.emplace(*facts.gamut);
  if (!facts.black) {
    facts.black = *std::min_element(facts.gamut->corners.begin(), facts.gamut->corners.end(),
                                    [](const Lab &a, const Lab &b) { return a.l < b.l; });
  }
}

/// 33 steps of each component: every colour that most tables of profiles are made of, and some between.
Channels SrgbLattice()
{
  constexpr int kSteps = 32;
  Channels colours;
  for (int red = 0; red <= kSteps; ++red) {
    for (int green = 0; green <= kSteps; ++green) {
      for (int blue = 0; blue <= kSteps; ++blue) {
        for (const int component : {red, green, blue})
          colours.push_back(static_cast<float>(component) / kSteps);
      }
    }
  }
  return colours;
}

std::vector<InkTotal> InkTotalsOf(const ColorSystem::ColorProfile &profile, const ModelWords &model)
{
  std::vector<InkTotal> totals;
  if (model.inks.empty())
    return totals;
  const Channels screen = SrgbLattice();
  for (const IntentWords &row : kIntentWords) {
    const auto inks = DeviceFromSrgb(profile, screen, row.intent);
    if (!inks)
      continue;
    float most = 0;
    for (auto build = inks->begin(); build != inks->end(); build += static_cast<std::ptrdiff_t>(model.inks.size()))
      most = std::max(most, std::accumulate(build, build + static_cast<std::ptrdiff_t>(model.inks.size()), 0.0f));
    totals.push_back({row.intent, 100.0 * static_cast<double>(most)});
  }
  return totals;
}

std::vector<EngineUse> EnginesFor(const ColorSystem::ColorProfile &profile)
{
  const auto lab = ColorSystem::ColorProfileManager::GetInstance().GetColorProfile(L"CIE Lab.icc");
  const auto current = ColorManagementSystem::GetCurrent();
  ColorSystem::TransformOptions in;
  in.source.model = ColorSystem::ColorProfile(profile).GetColorModel();
  in.destination.model = ColorSystem::ColorModel::Lab;
  ColorSystem::TransformOptions out;
  std::tie(out.source, out.destination) = std::tie(in.destination, in.source);

  std::vector<EngineUse> uses;
  for (std::uint32_t number = 0;; ++number) {
    const auto module = static_cast<ColorManagementModule>(number);
    if (ColorSystem::NameOfColorManagementModule(module).empty())
      return uses;
    const auto engine = ColorManagementSystem::Get(module);
    const bool able = engine != nullptr && lab != nullptr;
    uses.push_back({module, engine != nullptr, engine == current,
                    able && engine->CreateTransform(profile, *lab, in) != nullptr,
                    able && engine->CreateTransform(*lab, profile, out) != nullptr});
  }
}

} // namespace

bool LiesOutside(const ZelUtl::IccFile &file, const ZelUtl::IccTag &tag)
{
  constexpr std::uint32_t kHeaderSize = 128;
  return tag.offset < kHeaderSize || std::uint64_t{tag.offset} + tag.size > file.Stamp().size;
}

std::string ProfileFacts::Damage() const
{
  if (file.icc.Header().size > file.icc.Stamp().size) {
    return "it has " + std::to_string(file.icc.Stamp().size) + " bytes of the " +
           std::to_string(file.icc.Header().size) + " that its header says";
  }
  for (const ZelUtl::IccTag &tag : file.icc.Tags()) {
    if (LiesOutside(file.icc, tag))
      return "its tag '" + ZelUtl::TextOfIccSignature(tag.signature) + "' lies outside the file";
  }
  return {};
}

ProfileFacts FactsOf(ProfileFile file)
{
  ProfileFacts facts = {std::move(file)};
  if (facts.file.profile == nullptr) {
    facts.noGamut = "such a profile is not of one device";
    return facts;
  }
  const ColorSystem::ColorProfile &profile = *facts.file.profile;
  facts.model = &WordsOf(facts.file.profile->GetColorModel());
  AddDeviceFacts(facts.relative, profile, *facts.model, facts.noGamut);
  AddDeviceFacts(facts.absolute, profile, *facts.model, facts.noGamut);
  facts.inkTotals = InkTotalsOf(profile, *facts.model);
  facts.engines = EnginesFor(profile);
  return facts;
}

} // namespace cli
