// zelclr palette list|show|convert|sort|merge|validate|diff|find

#include "cli/command.h"
#include "cli/palette/commands.h"
#include "cli/palette/writing.h"

#include <array>
#include <memory>

namespace cli {

namespace {

constexpr const char *kPaletteHelp =
  "A file, - for the standard input, or an installed palette by its name, its file's name or its identifier";

std::string NotEmpty(const std::string &text)
{
  return text.empty() ? "the name is empty" : "";
}

/// OUT and how it is written; `destination` must live as long as the command.
void AddDestination(CLI::App *command, Destination &destination)
{
  command->add_option("-o,--output", destination.path, "The palette to write; - prints it")
    ->required()
    ->check(NotEmpty)
    ->type_name("OUT");
  command->add_option("--to", destination.format, "Its format; else by its name: " + FormatsInWords(true))
    ->check(NotEmpty)
    ->type_name("FORMAT");
  command->add_option("--name", destination.name, "What it is called; so it becomes a palette of its own")
    ->check(NotEmpty)
    ->type_name("NAME");
}

void AddShow(CLI::App *palette, Output &output, ExitCode &exitCode)
{
  const auto arguments = std::make_shared<ShowArguments>();
  CLI::App *const command = palette->add_subcommand("show", "A sheet of swatches: names, values, inks");
  command->add_option("palette", arguments->palette, kPaletteHelp)->required()->type_name("FILE|NAME");
  command->add_option("-o,--output", arguments->picture, "Draw it, too: .svg or .html")
    ->check(NotEmpty)
    ->type_name("SHEET");
  command
    ->add_option("--profile", arguments->profile,
                 "Mark what this press cannot print: an installed profile by its file's name or its description, or "
                 "any file")
    ->check(NotEmpty)
    ->type_name("PROFILE");
  command->footer(
    "Colours are shown by the profiles of the settings in force. A colour is out of gamut when it comes\n"
    "back from the press changed by a \u0394E2000 of more than 2.5; a spot colour is judged by its looks.\n"
    "Exit status 1: something is out of gamut.");
  command->callback([=, &output, &exitCode] { exitCode = ShowPalette(*arguments, output); });
}

void AddWriters(CLI::App *palette, Output &output)
{
  const auto destination = std::make_shared<Destination>();
  const auto sources = std::make_shared<std::vector<std::string>>(1);
  CLI::App *command = palette->add_subcommand("convert", "Write a palette in another format, and say what is lost");
  command->add_option("palette", sources->front(), kPaletteHelp)->required()->type_name("IN");
  AddDestination(command, *destination);
  const auto context = std::make_shared<std::string>();
  command
    ->add_option("--context", *context,
                 "Converts the colours from the profiles in force to those of a settings\n"
                 "preset, or to a profile; inks and Lab stay")
    ->type_name("PRESET|PROFILE");
  command->footer("A palette of our own that stays one keeps everything, its identifier among it, unless it gets\n"
                  "another name. Formats that are read only: " +
                  FormatsInWords(false) + ", cpl.");
  command->callback([=, &output] { ConvertPalette(sources->front(), *context, *destination, output); });

  const auto arguments = std::make_shared<SortArguments>();
  command = palette->add_subcommand("sort", "Order the colours of a palette");
  command->add_option("palette", arguments->palette, kPaletteHelp)->required()->type_name("IN");
  command->add_option("--by", arguments->by, "hue, saturation, brightness, hsb, rgb or name")
    ->required()
    ->transform(CLI::IsMember(SortKeys(), CLI::ignore_case).description(""))
    ->type_name("KEY");
  command->add_flag("--reverse", arguments->reverse, "The last one first");
  command->add_flag("--across-groups", arguments->acrossGroups, "All colours together, without their groups or pages");
  AddDestination(command, *destination);
  command->footer("Each group or page is ordered by itself. Colours are compared as they look by the profiles of the\n"
                  "settings; those without a known look come last.");
  command->callback([=, &output] { SortPalette(*arguments, *destination, output); });

  command = palette->add_subcommand("merge", "Put palettes into one, each as a group");
  const auto merged = std::make_shared<std::vector<std::string>>();
  command->add_option("palettes", *merged, kPaletteHelp)->required()->type_name("IN");
  AddDestination(command, *destination);
  command->footer(
    "A colour that is there already under the same name is left out; under another name it stays. Inks of\n"
    "one name that do not look the same are told.");
  command->callback([=, &output] { MergePalettes(*merged, *destination, output); });
}

} // namespace

void AddPalette(CLI::App &app, Output &output, ExitCode &exitCode)
{
  CLI::App *const palette = app.add_subcommand("palette", "Palettes: see, convert, order, compare and search them");
  palette->require_subcommand(1);

  CLI::App *command = palette->add_subcommand("list", "The palettes that are installed, and the user's own");
  command->callback([&output] { ListPalettes(output); });
  AddShow(palette, output, exitCode);
  AddWriters(palette, output);

  const auto names = std::make_shared<std::vector<std::string>>();
  command = palette->add_subcommand("validate", "Whether files are sound palettes, and what is wrong with those that "
                                                "are not");
  command->add_option("files", *names, "Palettes of any format; - reads standard input")->required()->type_name("FILE");
  command->footer("Exit status 1: a file is no sound palette; 3: one cannot be read at all.");
  command->callback([=, &output, &exitCode] { exitCode = ValidatePalettes(*names, output); });

  const auto pair = std::make_shared<std::array<std::string, 2>>();
  const auto tolerance = std::make_shared<double>(0.0);
  command = palette->add_subcommand("diff", "What differs between the colours of two palettes");
  command->add_option("a", (*pair)[0], kPaletteHelp)->required()->type_name("A");
  command->add_option("b", (*pair)[1], "Another")->required()->type_name("B");
  command
    ->add_option("--tolerance", *tolerance,
                 "Colours of one name that differ by no more than this \u0394E2000 count as the same, in any model")
    ->check(CLI::Range(0.0, 100.0).description(""))
    ->type_name("NUMBER");
  command->footer("Colours of one name and different values have changed, the same values under another name were\n"
                  "renamed. Exit status 1: they differ.");
  command->callback(
    [=, &output, &exitCode] { exitCode = ComparePalettes((*pair)[0], (*pair)[1], *tolerance, output); });

  const auto colour = std::make_shared<std::string>();
  const auto count = std::make_shared<std::size_t>(5);
  command = palette->add_subcommand("find", "The colours of palettes that are nearest to one");
  command->add_option("colour", *colour, "The colour")->required()->type_name("COLOUR");
  command->add_option("--in", *names, "Where to look: files or installed palettes; else all that are installed")
    ->type_name("FILE|NAME");
  command->add_option("-n,--count", *count, "How many")
    ->check(CLI::Range(std::size_t{1}, std::size_t{1000}).description(""))
    ->capture_default_str()
    ->type_name("NUMBER");
  command->callback([=, &output] { FindColour(*colour, *names, *count, output); });
}

} // namespace cli
