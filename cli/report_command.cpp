// zelclr report FILE [-o report.html]

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "cli/report/forms.h"
#include "zelclr/platform/files.h"

#include <cstdio>
#include <memory>

namespace cli {

namespace {

struct Arguments
{
  std::string file;
  std::string page;
  int inkLimit = 300;
};

/// "brand" of "examples/brand.gpl".
std::string BareName(const std::string &path)
{
  if (path == "-")
    return "Standard input";
  const auto slash = path.find_last_of("/\\");
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  const auto dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

ExitCode MakeReport(const Arguments &arguments, const Output &output)
{
  if (output.json && arguments.page == "-")
    throw Failure(ExitCode::Usage, "--json and -o - both print to standard output");
  if (ZelUtl::IsSameFile(arguments.file, arguments.page))
    throw Failure(ExitCode::Usage, Harmless(arguments.page) + " is the palette itself");
  const std::string bytes = ReadInput(arguments.file);
  ZelClr::ReadProblem problem;
  const auto palette = ZelClr::ReadPaletteText(bytes, problem);
  if (!palette) {
    throw Failure(ExitCode::Unreadable, Harmless(arguments.file) + ":" +
                                          (problem.line ? std::to_string(problem.line) + ": " : std::string(" ")) +
                                          Harmless(problem.reason));
  }
  const Report report = Analyse(*palette, BareName(arguments.file), arguments.inkLimit);

  if (arguments.page == "-") {
    const std::string page = PageOf(report);
    std::fwrite(page.data(), 1, page.size(), stdout);
  } else if (!arguments.page.empty()) {
    std::string reason;
    if (!ZelUtl::ReplaceFile(arguments.page, PageOf(report), reason))
      throw Failure(ExitCode::Unreadable, Harmless(arguments.page) + ": " + reason);
  }
  if (output.json)
    PrintJson("zelclr.report", JsonOf(report));
  else if (arguments.page != "-")
    std::fputs(TableOf(report, output).c_str(), stdout);
  return report.HasFindings() ? ExitCode::Findings : ExitCode::Fine;
}

} // namespace

void AddReport(CLI::App &app, Output &output, ExitCode &exitCode)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("report", "Will these colours print, and what will they become?");
  command->add_option("file", arguments->file, "A palette: GPL, or a list of colours, one to a line; - reads it")
    ->required()
    ->type_name("FILE");
  command->add_option("-o,--output", arguments->page, "Write the report as an HTML page; - prints it")
    ->check([](const std::string &path) { return path.empty() ? "the name of the page is empty" : ""; })
    ->type_name("PAGE");
  command->add_option("--ink-limit", arguments->inkLimit, "The most ink that the paper takes, in percent of one solid")
    ->check(CLI::Range(1, 400))
    ->capture_default_str()
    ->type_name("PERCENT");
  command->callback([arguments, &output, &exitCode] { exitCode = MakeReport(*arguments, output); });
}

} // namespace cli
