#include "zelclr/settings/color_policy.h"

#include <algorithm>
#include <iterator>

namespace ColorSystem {

namespace {

constexpr std::string_view kActionNames[] = {"AssignEmbeddedProfile", "ConvertToEmbeddedProfile",
                                             "AssignBaselineProfile", "ConvertToBaselineProfile"};

struct Contexts
{
  ColorContext &source;
  ColorContext &target;
  ColorContext &result;
};

using Profile = std::shared_ptr<ColorProfile>;

void ApplyTo(ColorModel model, ColorPolicyAction action, bool hasResultModel, Contexts contexts)
{
  auto &[source, target, result] = contexts;
  const Profile embedded = source.GetColorProfile(model);
  const Profile receiving = target.GetColorProfile(model);
  const auto set = [model](ColorContext &context, const Profile &profile) { context.SetColorProfile(model, profile); };
  const auto baseline = [model] { return ColorContext::GetApplicationDefaultColorContext().GetColorProfile(model); };

  if (embedded == nullptr && action == ColorPolicyAction::AssignEmbeddedProfile)
    action = ColorPolicyAction::AssignBaselineProfile;
  if (embedded == nullptr && action == ColorPolicyAction::ConvertToEmbeddedProfile)
    action = ColorPolicyAction::ConvertToBaselineProfile;
  switch (action) {
  case ColorPolicyAction::AssignEmbeddedProfile:
    set(target, embedded);
    set(result, embedded);
    break;
  case ColorPolicyAction::ConvertToEmbeddedProfile:
    set(result, embedded);
    break;
  case ColorPolicyAction::AssignBaselineProfile:
    if (embedded != nullptr && receiving == nullptr) {
      set(result, embedded);
    } else if (embedded == nullptr && hasResultModel) {
      const Profile profile = baseline();
      set(source, profile);
      set(target, profile);
      set(result, profile);
    } else {
      set(source, receiving);
      set(result, receiving);
    }
    break;
  case ColorPolicyAction::ConvertToBaselineProfile:
    if (embedded == nullptr)
      set(source, hasResultModel ? baseline() : receiving);
    set(result, embedded != nullptr && receiving == nullptr ? embedded : receiving);
    break;
  }
}

/// A context that uses one model only keeps no profile of another.
void Restrict(ColorContext &context, const ColorModel *only, ColorModel model)
{
  if (only != nullptr && *only != model)
    context.SetColorProfile(model, nullptr);
}

} // namespace

std::string_view NameOfColorPolicyAction(ColorPolicyAction action)
{
  const auto number = static_cast<std::size_t>(action);
  return number < std::size(kActionNames) ? kActionNames[number] : std::string_view();
}

std::optional<ColorPolicyAction> ColorPolicyActionFromName(std::string_view name)
{
  const auto *const row = std::find(std::begin(kActionNames), std::end(kActionNames), name);
  if (row == std::end(kActionNames))
    return std::nullopt;
  return static_cast<ColorPolicyAction>(row - std::begin(kActionNames));
}

ColorPolicy::~ColorPolicy() = default;

bool ColorPolicy::operator==(const ColorPolicy &other) const
{
  return rgb_ == other.rgb_ && cmyk_ == other.cmyk_ && grayscale_ == other.grayscale_ &&
         warnOnMismatch_ == other.warnOnMismatch_ && warnOnMissing_ == other.warnOnMissing_;
}

ColorContext ColorPolicy::Apply(ColorContext &source, ColorContext &target, const ColorModel *sourceModel,
                                const ColorModel *targetModel, const ColorModel *resultModel) const
{
  const std::pair<ColorModel, ColorPolicyAction> steps[] = {
    {ColorModel::Rgb, rgb_}, {ColorModel::Cmyk, cmyk_}, {ColorModel::Grayscale, grayscale_}};
  ColorContext result;
  for (const auto &[model, action] : steps) {
    ApplyTo(model, action, resultModel != nullptr, {source, target, result});
    Restrict(target, targetModel, model);
    Restrict(source, sourceModel, model);
    Restrict(result, resultModel, model);
  }
  const ColorModel blending = target.GetBlendingColorModel();
  const RenderingIntent intent = target.GetRenderingIntent();
  for (ColorContext *context : {&source, &result}) {
    context->SetBlendingColorModel(blending);
    context->SetRenderingIntent(intent);
  }
  return result;
}

} // namespace ColorSystem
