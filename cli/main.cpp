// zelclr: the command line of the colour library.

#include "cli/command.h"
#include "zelclr/platform/console.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

int Complain(const std::string &message, cli::ExitCode code)
{
  std::cerr << "zelclr: " << message << '\n';
  return static_cast<int>(code);
}

/// Reads the command line and runs the command that it names.
int RunTool(const std::vector<std::string> &arguments)
{
  cli::Output output;
  auto exitCode = cli::ExitCode::Fine;

  CLI::App app{"Colours: convert them, know them, and see whether they will print."};
  app.name("zelclr");
  app.set_version_flag("--version", ZELCLR_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  app.allow_windows_style_options(false); // "/" begins paths
  app.add_flag("--json", output.json, "Print JSON instead of text");
  app.add_option("--color", output.colour, "Draw colours: auto (on a terminal), always, never")
    ->transform(CLI::CheckedTransformer(std::map<std::string, cli::ColourUse>{{"auto", cli::ColourUse::Auto},
                                                                              {"always", cli::ColourUse::Always},
                                                                              {"never", cli::ColourUse::Never}})
                  .description(""))
    ->type_name("WHEN");
  app.footer("A colour is #ff8000, a name such as tomato, or a model with its components: RGB255(255,128,0),\n"
             "CMYK100(0,50,100,0), LAB(67,45,60), HSB(30,100,100).\n"
             "Exit status: 0 fine, 1 findings, 2 wrong use, 3 a file that cannot be read or written,\n"
             "4 something missing.");
  cli::AddContrast(app, output, exitCode);
  cli::AddConvert(app, output, exitCode);
  cli::AddGradient(app, output, exitCode);
  cli::AddHarmony(app, output, exitCode);
  cli::AddImage(app, output, exitCode);
  cli::AddInfo(app, output, exitCode);
  cli::AddPalette(app, output, exitCode);
  cli::AddProfile(app, output, exitCode);
  cli::AddProof(app, output, exitCode);
  cli::AddReport(app, output, exitCode);
  cli::AddSettings(app, output, exitCode);

  try {
    app.parse(std::vector(arguments.rbegin(), arguments.rend() - 1)); // the last one first, without the program
  } catch (const CLI::Success &asked) {                               // help, version
    return app.exit(asked);
  } catch (const CLI::ParseError &error) {
    return Complain(cli::Harmless(error.what()) + "; see zelclr --help", cli::ExitCode::Usage);
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
    return Complain("cannot write to standard output", cli::ExitCode::Unreadable);
  return static_cast<int>(exitCode);
}

} // namespace

int main(int argc, char **argv)
{
  try {
    ZelUtl::PrepareStandardStreams();
    return RunTool(ZelUtl::ProgramArguments(argc, argv));
  } catch (const cli::Failure &failure) {
    return Complain(failure.what(), failure.code);
  } catch (const std::exception &error) {
    return Complain(error.what(), cli::ExitCode::Missing);
  }
}
