// zelclr settings [proof] list|show|use|add|remove|export|import|where

#include "cli/command.h"
#include "cli/settings/commands.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/text.h"

#include <memory>

namespace cli {

namespace {

constexpr const char *kNameHelp = "The name of a preset, as written or in your language";

/// The tool speaks for one application of the suite: each has its own presets and its own settings in force.
class NamedHost : public ZelUtl::ApplicationHost
{
public:
  explicit NamedHost(std::wstring name) : name_(std::move(name)) {}
  unsigned GetOpenDocumentCount() const override { return 0; }
  std::wstring GetApplicationName() const override { return name_; }

private:
  std::wstring name_;
};

void SpeakFor(const std::string &application)
{
  if (ZelUtl::Trimmed(application).empty() || application == "Factory" || Harmless(application) != application)
    throw Failure(ExitCode::Usage, "\"" + Harmless(application) + "\" is no name of an application");
  static NamedHost host(ZelUtl::WideFromUtf8(application));
  ZelUtl::SetApplicationHost(&host);
}

struct Arguments
{
  std::string name;
  std::vector<std::string> words;
  std::string file;
  bool all = false;
  bool replace = false;
  Addition addition;
};

/// The eight commands on settings of one kind; `begin` goes before each.
template <class Settings>
void AddCommands(CLI::App *parent, const std::function<void()> &begin, Output &output, ExitCode &exitCode)
{
  const auto arguments = std::make_shared<Arguments>();
  const auto optional = [](const CLI::App *command, const char *option, const std::string &value) {
    return command->count(option) == 0 ? std::optional<std::string>() : value;
  };

  CLI::App *command = parent->add_subcommand("list", "The presets, and which of them is in force");
  command->callback([=, &output, &exitCode] {
    begin();
    exitCode = ListSettings<Settings>(output);
  });

  command = parent->add_subcommand("show", "Every value of what is in force, or of a preset, and where it comes from");
  command->add_option("name", arguments->name, kNameHelp)->type_name("NAME");
  command->callback([=, &output, &exitCode] {
    begin();
    exitCode = ShowSettings<Settings>(optional(command, "name", arguments->name), output);
  });

  command = parent->add_subcommand("use", "Put a preset in force");
  command->add_option("name", arguments->name, kNameHelp)->required()->type_name("NAME");
  command->callback([=, &output] {
    begin();
    UsePreset<Settings>(arguments->name, output);
  });

  command = parent->add_subcommand("add", "Make a preset: what is in force, or another preset, with other values");
  const auto edits = std::make_shared<Edits<Settings>>();
  const auto from = std::make_shared<std::string>();
  command->add_option("name", arguments->addition.name, "The name of the new preset")->required()->type_name("NAME");
  command->add_option("--from", *from, "Start as this preset, not as what is in force")->type_name("NAME");
  command->add_flag("--replace", arguments->addition.replace, "In place of a preset of that name");
  command->add_flag("--use", arguments->addition.use, "Put it in force, too");
  AddValueOptions(command, *edits);
  command->callback([=, &output] {
    begin();
    arguments->addition.from = optional(command, "--from", *from);
    AddPreset(arguments->addition, *edits, output);
  });

  command = parent->add_subcommand("remove", "Remove a preset of the user");
  command->add_option("name", arguments->name, kNameHelp)->required()->type_name("NAME");
  command->callback([=, &output] {
    begin();
    RemovePreset<Settings>(arguments->name, output);
  });

  command = parent->add_subcommand("export", "Write what is in force, or a preset, to a file of its own");
  command->add_option("words", arguments->words, "A preset, if any, and the file; - prints it")
    ->required()
    ->expected(1, 2)
    ->type_name("[NAME] FILE");
  command->add_flag("--all", arguments->all, "All presets of the user");
  command->callback([=, &output] {
    const auto &words = arguments->words;
    if (words.back().empty() || (arguments->all && words.size() == 2))
      throw Failure(ExitCode::Usage,
                    words.back().empty() ? "the name of the file is empty" : "--all exports every preset of the user");
    begin();
    ExportSettings<Settings>(words.size() == 2 ? std::optional(words[0]) : std::nullopt, arguments->all, words.back(),
                             output);
  });

  command = parent->add_subcommand("import", "Add the presets of a file that was exported: all of them or none");
  command->add_option("file", arguments->file, "The file; - reads standard input")->required()->type_name("FILE");
  command->add_flag("--replace", arguments->replace, "In place of presets of the same names");
  command->callback([=, &output] {
    begin();
    ImportSettings<Settings>(arguments->file, arguments->replace, output);
  });

  command = parent->add_subcommand("where", "The files that settings are kept in, and in what state they are");
  command->callback([=, &output, &exitCode] {
    begin();
    exitCode = ShowFiles<Settings>(output);
  });
}

} // namespace

void AddSettings(CLI::App &app, Output &output, ExitCode &exitCode)
{
  CLI::App *const settings =
    app.add_subcommand("settings", "Colour settings: what the suite will do, and to change it");
  settings->require_subcommand(1);
  const auto application = std::make_shared<std::string>("ZelClr");
  settings->add_option("--application", *application, "The application of the suite whose settings are meant")
    ->type_name("NAME")
    ->capture_default_str();
  const auto begin = [application] { SpeakFor(*application); };
  AddCommands<ColorSettings>(settings, begin, output, exitCode);

  CLI::App *const proof = settings->add_subcommand("proof", "The same for what soft proofs simulate");
  proof->require_subcommand(1);
  AddCommands<ProofColorSettings>(proof, begin, output, exitCode);
}

} // namespace cli
