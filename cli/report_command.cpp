// zelclr report FILE [-o report.html]

#include "cli/command.h"
#include "cli/palette_input.h"
#include "cli/profile/words.h"
#include "cli/report/forms.h"
#include "zelclr/platform/files.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <map>
#include <memory>

namespace cli {

namespace {

struct Arguments
{
  std::string file;
  std::string page;
  PressOptions press;
};

ExitCode MakeReport(const Arguments &arguments, const Output &output)
{
  if (output.json && arguments.page == "-")
    throw Failure(ExitCode::Usage, "--json and -o - both print to standard output");
  if (ZelUtl::IsSameFile(arguments.file, arguments.page))
    throw Failure(ExitCode::Usage, Harmless(arguments.page) + " is the palette itself");
  const LoadedPalette palette = LoadPalette(arguments.file);
  if (palette.book.swatches.empty())
    throw Failure(ExitCode::Unreadable, InWords(arguments.file, {0, "no colours"}));
  const Report report = Analyse(palette.book, palette.Name(), arguments.press);

  if (arguments.page == "-") {
    const std::string page = PageOf(report);
    std::fwrite(page.data(), 1, page.size(), stdout);
  } else if (!arguments.page.empty()) {
    std::string reason;
    if (!ZelUtl::ReplaceFile(arguments.page, PageOf(report), reason))
      throw Failure(ExitCode::Unreadable, Harmless(arguments.page) + ": " + reason);
  }
  if (output.json)
    PrintJson("zelclr.report", JsonOf(report), kReportSchemaVersion);
  else if (arguments.page != "-")
    std::fputs(TableOf(report, output).c_str(), stdout);
  return report.HasFindings() ? ExitCode::Findings : ExitCode::Fine;
}

} // namespace

void AddReport(CLI::App &app, Output &output, ExitCode &exitCode)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("report", "Will these colours print, and what will they become?");
  command
    ->add_option("file", arguments->file, "A palette of any format, or a list of colours, one to a line; - reads it")
    ->required()
    ->type_name("FILE");
  command->add_option("-o,--output", arguments->page, "Write the report as an HTML page; - prints it")
    ->check([](const std::string &path) { return path.empty() ? "the name of the page is empty" : ""; })
    ->type_name("PAGE");
  PressOptions &press = arguments->press;
  command
    ->add_option("--profile", press.profile,
                 "The press: an installed CMYK profile by its file's name or its "
                 "description, or any file; else the settings'")
    ->check([](const std::string &name) { return name.empty() ? "the name of the profile is empty" : ""; })
    ->type_name("PROFILE");
  std::map<std::string, RenderingIntent> intents;
  for (const IntentWords &row : kIntentWords)
    intents.emplace(row.option, row.intent);
  command->add_option("--intent", press.intent, "perceptual, relative, saturation or absolute; else the settings'")
    ->transform(CLI::CheckedTransformer(intents, CLI::ignore_case).description(""))
    ->type_name("INTENT");
  command->add_flag_function(
    "--preserve-black,!--no-preserve-black", [&press](std::int64_t times) { press.preserveBlack = times > 0; },
    "Print pure black as black ink alone; else as the settings say");
  command
    ->add_option("--ink-limit", press.inkLimit,
                 "The most ink that the paper takes, in percent of one solid; else the most that the profile builds")
    ->check(CLI::Range(1, 400))
    ->type_name("PERCENT");
  command->footer(
    "RGB and CMYK are read by the profiles of the settings in force (zelclr settings show). CMYK is so the numbers of\n"
    "the press, and prints as it is, unless --profile names another press: then it is built anew. A spot colour whose\n"
    "appearance is known is judged by it; without, it is an ink of its own. Builds are whole percents. A colour is "
    "out\n"
    "of gamut when it comes back from the press changed by a \u0394E2000 of more than 2.5; then, and where there is "
    "too\n"
    "much ink, the nearest colour that prints within the limit is searched. By the absolute intent the paper's white "
    "is\n"
    "simulated and measured, else the paper counts as white. Exit status 1: something will not print as it is.");
  command->callback([arguments, &output, &exitCode] { exitCode = MakeReport(*arguments, output); });
}

} // namespace cli
