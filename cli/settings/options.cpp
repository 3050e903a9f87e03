#include "cli/settings/options.h"

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "cli/profile/profile_file.h"
#include "cli/settings/words.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace cli {

namespace {

using ColorSystem::ColorModel;
using ColorSystem::ColorPolicy;

/// A profile by name or file, which settings name by its path when it is not installed.
std::shared_ptr<ColorSystem::ColorProfile> ProfileFromInput(const std::string &name)
{
  const ProfileFile file = OpenProfile(name);
  const std::string path = ZelUtl::AbsolutePath(file.path);
  auto profile = ColorSystem::ColorProfileManager::GetInstance().GetColorProfile(ZelUtl::WideFromUtf8(path).c_str());
  if (file.profile == nullptr || profile == nullptr)
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": this is no profile that settings can hold");
  return profile;
}

/// An option that takes one of the words of a table, whose row goes to `set`.
template <class Settings, class Row, std::size_t extent, class Set>
void AddChoice(CLI::App *command, const std::string &option, const std::string &help, const char *type,
               std::span<const Row, extent> rows, Edits<Settings> &edits, Set set)
{
  std::string words;
  for (const Row &row : rows)
    words += (words.empty() ? "" : ", ") + std::string(row.option);
  const auto choose = [=, &edits](const std::string &word) {
    const auto row =
      std::find_if(rows.begin(), rows.end(), [&](const Row &r) { return r.option == ZelUtl::LowerAscii(word); });
    if (row == rows.end())
      throw CLI::ValidationError(option, "there is no \"" + word + "\", only " + words);
    edits.push_back([set, row](Settings &settings) { set(settings, *row); });
  };
  command->add_option_function<std::string>(option, choose, help + ": " + words)->type_name(type);
}

/// "--name" and "--no-name".
template <class Settings, class Set>
void AddSwitch(CLI::App *command, const std::string &name, const std::string &help, Edits<Settings> &edits, Set set)
{
  command->add_flag_function(
    "--" + name + ",!--no-" + name,
    [set, &edits](std::int64_t times) {
      edits.push_back([set, on = times > 0](Settings &settings) { set(settings, on); });
    },
    help);
}

template <class Settings, class Set>
void AddProfileOption(CLI::App *command, const std::string &option, const std::string &help, Edits<Settings> &edits,
                      Set set)
{
  const auto choose = [set, &edits](const std::string &name) {
    edits.push_back([set, name](Settings &settings) { set(settings, name); });
  };
  command->add_option_function<std::string>(option, choose, help)->type_name("PROFILE");
}

/// Contexts and policies are read, changed and stored as a whole.
void EditContext(ColorSettings &settings, const std::function<void(ColorSystem::ColorContext &)> &edit)
{
  ColorSystem::ColorContext context = settings.GetDefaultColorContext();
  edit(context);
  settings.SetDefaultColorContext(context);
}

struct PolicyOptions
{
  const char *word;
  const char *when;
  ColorPolicy (ColorSettings::*get)() const;
  void (ColorSettings::*set)(const ColorPolicy &);
};

constexpr PolicyOptions kPolicies[] = {
  {"open", "is opened", &ColorSettings::GetColorPolicyForOpen, &ColorSettings::SetColorPolicyForOpen},
  {"import", "is imported", &ColorSettings::GetColorPolicyForImport, &ColorSettings::SetColorPolicyForImport},
};

struct PolicyAction
{
  const char *word;
  const char *name;
  void (ColorPolicy::*set)(ColorSystem::ColorPolicyAction);
};

constexpr PolicyAction kPolicyActions[] = {
  {"rgb", "RGB", &ColorPolicy::SetRgbPolicyAction},
  {"cmyk", "CMYK", &ColorPolicy::SetCmykPolicyAction},
  {"gray", "Gray", &ColorPolicy::SetGrayscalePolicyAction},
};

struct PolicyWarning
{
  const char *word;
  const char *when;
  void (ColorPolicy::*set)(bool);
};

constexpr PolicyWarning kPolicyWarnings[] = {
  {"mismatch", "has another profile", &ColorPolicy::SetWarnOnProfileMismatch},
  {"missing", "has no profile", &ColorPolicy::SetWarnOnMissingProfile},
};

void AddPolicyOptions(CLI::App *command, Edits<ColorSettings> &edits)
{
  const auto edit = [](ColorSettings &settings, const PolicyOptions &policy, auto change) {
    ColorPolicy changed = (settings.*policy.get)();
    change(changed);
    (settings.*policy.set)(changed);
  };
  for (const PolicyOptions &policy : kPolicies) {
    for (const PolicyAction &action : kPolicyActions) {
      AddChoice(command, std::string("--") + policy.word + "-" + action.word,
                std::string("The colours of a file in ") + action.name + " that " + policy.when, "POLICY",
                std::span(kPolicyWords), edits, [=, &policy, &action](ColorSettings &settings, const PolicyWords &row) {
                  edit(settings, policy, [&](ColorPolicy &changed) { (changed.*action.set)(row.action); });
                });
    }
    for (const PolicyWarning &warning : kPolicyWarnings) {
      AddSwitch(command, std::string("warn-") + policy.word + "-" + warning.word,
                std::string("Warn when a file that ") + policy.when + " " + warning.when, edits,
                [=, &policy, &warning](ColorSettings &settings, bool warn) {
                  edit(settings, policy, [&](ColorPolicy &changed) { (changed.*warning.set)(warn); });
                });
    }
  }
}

constexpr std::span<const ModelWords> kDocumentModels = std::span(kModelWords).first(3); // RGB, CMYK, gray

constexpr struct SpotWords
{
  const char *option;
  ColorModel model;
} kSpotWords[] = {{"lab", ColorModel::Lab}, {"cmyk", ColorModel::Cmyk}, {"rgb", ColorModel::Rgb}};

} // namespace

void AddValueOptions(CLI::App *command, Edits<ColorSettings> &edits)
{
  for (const ModelWords &words : kDocumentModels) {
    AddProfileOption(
      command, std::string("--") + words.option, std::string("The profile of ") + words.name + " colours", edits,
      [&words](ColorSettings &settings, const std::string &name) {
        EditContext(settings, [&](ColorSystem::ColorContext &context) {
          if (!context.SetColorProfile(words.model, ProfileFromInput(name)))
            throw Failure(ExitCode::Usage, Harmless(name) + " is no profile of " + words.name + " colours");
        });
      });
  }
  AddChoice(command, "--blend", "What colours mix in", "MODEL", kDocumentModels, edits,
            [](ColorSettings &settings, const ModelWords &row) {
              EditContext(settings, [&](auto &context) { context.SetBlendingColorModel(row.model); });
            });
  AddChoice(command, "--intent", "How colours are brought into a smaller gamut", "INTENT", std::span(kIntentWords),
            edits, [](ColorSettings &settings, const IntentWords &row) {
              EditContext(settings, [&](auto &context) { context.SetRenderingIntent(row.intent); });
            });
  AddChoice(command, "--module", "What converts colours", "MODULE", std::span(kModuleWords), edits,
            [](ColorSettings &settings, const ModuleWords &row) {
              settings.SetColorManagementModule(row.module); // Icm is stored on every system
              if (settings.GetColorManagementModule() != row.module)
                throw Failure(ExitCode::Missing, std::string("this system does not have the module ") + row.option);
            });
  AddChoice(command, "--spot", "The numbers of a palette that count for spot colours", "MODEL", std::span(kSpotWords),
            edits, [](ColorSettings &settings, const SpotWords &row) { settings.SetSpotAltColorModel(row.model); });
  AddSwitch(command, "pure-black", "Black text stays black ink alone", edits,
            [](ColorSettings &settings, bool on) { settings.SetPreservePureBlack(on); });
  AddSwitch(command, "gray-to-black", "Gray becomes black ink alone", edits,
            [](ColorSettings &settings, bool on) { settings.SetMapGrayToCmykBlackChannel(on); });
  AddPolicyOptions(command, edits);
}

void AddValueOptions(CLI::App *command, Edits<ProofColorSettings> &edits)
{
  AddProfileOption(command, "--simulate,--profile", "The device that is simulated; none for nothing", edits,
                   [](ProofColorSettings &settings, const std::string &name) {
                     settings.SetEnvironmentToSimulate(name == "none" ? nullptr : ProfileFromInput(name));
                   });
  AddChoice(command, "--intent", "How colours are brought into the device's gamut", "INTENT", std::span(kIntentWords),
            edits,
            [](ProofColorSettings &settings, const IntentWords &row) { settings.SetRenderingIntent(row.intent); });
  AddSwitch(command, "preserve-numbers", "Colours of the device's model go there with their numbers", edits,
            [](ProofColorSettings &settings, bool on) { settings.SetPreserveNumbers(on); });
  AddSwitch(command, "warning", "Mark the colours that the device does not reach", edits,
            [](ProofColorSettings &settings, bool on) { settings.SetDisplayGamutWarning(on); });
  command
    ->add_option_function<std::string>(
      "--warning-color",
      [&edits](const std::string &text) {
        edits.push_back([record = ColourFromInput(text), text](ProofColorSettings &settings) {
          const auto colour = ColorSystem::Color::ColorSpecToColor(
            record, ColorSystem::ColorContext::GetApplicationDefaultColorContext());
          if (colour == nullptr)
            throw Failure(ExitCode::Usage, Harmless(text) + " has no appearance of its own");
          settings.SetGamutWarningLabelColor(*colour);
        });
      },
      "What they are marked with")
    ->type_name("COLOUR");
  command
    ->add_option_function<std::string>(
      "--warning-transparency",
      [&edits](const std::string &text) {
        const auto transparency = ZelUtl::DoubleFromText(text);
        if (!transparency || !(*transparency >= 0 && *transparency <= 1))
          throw CLI::ValidationError("--warning-transparency", "\"" + text + "\" is no number from 0 to 1");
        edits.push_back(
          [transparency](ProofColorSettings &settings) { settings.SetGamutWarningLabelTransparency(*transparency); });
      },
      "Of the mark, from 0, opaque, to 1")
    ->type_name("NUMBER");
}

} // namespace cli
