// zelclr harmony COLOUR

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "cli/harmony/harmonies.h"
#include "cli/harmony/wheel_drawing.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/harmony/wheel.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/palette_exchange.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>

namespace cli {

namespace {

using ColorSystem::ColorContext;
using ColorSystem::ColorConverter;

struct Arguments
{
  std::string colour;
  std::string rule = "triad";
  bool all = false;
  std::optional<std::size_t> count;
  std::optional<double> step;
  std::string model;
  std::string path;
};

std::vector<ShownHarmony> HarmoniesFrom(const Arguments &arguments)
{
  const ColorContext context = ColorContext::GetApplicationDefaultColorContext();
  const ColorConverter converter(context, context);
  const CLR_COLORSPEC colour = ColourFromInput(arguments.colour);
  const unsigned model = arguments.model.empty() ? 0 : ModelFromInput(arguments.model);
  std::vector<const RuleWords *> rules = {&RuleFromInput(arguments.rule)};
  const bool hasNeighbours =
    rules[0]->rule == Harmony::RuleType::Analogous || rules[0]->rule == Harmony::RuleType::AccentedAnalogous;
  if (arguments.step && !arguments.all && !hasNeighbours)
    throw Failure(ExitCode::Usage, "--step is between the neighbours of the analogous rules");
  if (arguments.all) {
    rules.clear();
    for (const RuleWords &words : HarmonyRules()) {
      if (words.rule != Harmony::RuleType::Custom)
        rules.push_back(&words);
    }
  }
  std::vector<ShownHarmony> harmonies;
  for (const RuleWords *const words : rules)
    harmonies.push_back(HarmonyOf(colour, *words, model, arguments.count, arguments.step, converter));
  return harmonies;
}

// --- As a palette ----------------------------------------------------------------------------------------------------

ZelClr::SwatchBook BookOf(const std::vector<ShownHarmony> &harmonies, const std::string &base)
{
  ZelClr::SwatchBook book;
  book.name = (harmonies.size() == 1 ? std::string(harmonies.front().words->title) : "Harmonies") + " of " + base;
  for (const ShownHarmony &harmony : harmonies) {
    if (harmonies.size() > 1)
      book.groups.push_back({harmony.words->title, book.swatches.size()});
    for (std::size_t i = 0; i < harmony.colours.size(); ++i)
      book.swatches.push_back(ZelClr::RecordSwatch(std::string(harmony.words->title) + " " + std::to_string(i + 1),
                                                   harmony.colours[i].colour));
  }
  return book;
}

/// A palette of our own, with the identifier that the same harmony gets again.
ZelClr::WrittenPalette OwnPalette(const ZelClr::SwatchBook &book)
{
  ZelClr::WrittenPalette written;
  WXmlColorPalette palette = ZelClr::PaletteFromSwatchBook(book, written.notes);
  WXmlColorPalette::Header header = palette.GetHeader();
  header.guid = ZelClr::IdentifierOfBytes(palette.Bytes(false));
  palette.SetHeader(std::move(header));
  written.bytes = palette.Bytes(false);
  return written;
}

bool HasExtension(const std::string &path, std::string_view extension)
{
  return ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path)) == extension;
}

/// How the file is written; null for our own pictures and palettes. Settled before anything is worked out.
const ZelClr::PaletteFormat *FormatOf(const std::string &path)
{
  if (path.empty() || HasExtension(path, ".svg") || HasExtension(path, ".xml"))
    return nullptr;
  const ZelClr::PaletteFormat *const format = ZelClr::PaletteFormatOfFileName(path);
  if (format == nullptr || format->write == nullptr)
    throw Failure(ExitCode::Usage,
                  Harmless(path) + ": the name ends neither in .svg nor as that of a palette that can be written");
  return format;
}

void WriteFile(const std::string &path, const ZelClr::PaletteFormat *format, const std::vector<ShownHarmony> &harmonies,
               const std::string &base)
{
  std::string reason;
  ZelClr::WrittenPalette written;
  if (HasExtension(path, ".svg")) {
    written.bytes = SvgOfHarmonies(harmonies, base);
  } else if (format == nullptr) {
    written = OwnPalette(BookOf(harmonies, base));
  } else {
    auto foreign = format->write(BookOf(harmonies, base), reason);
    if (!foreign)
      throw Failure(ExitCode::Usage, Harmless(path) + ": " + Harmless(reason));
    written = std::move(*foreign);
  }
  if (!ZelUtl::ReplaceFile(path, written.bytes, reason))
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + reason);
  SayNotes(path, written.notes);
}

// --- Saying what came out --------------------------------------------------------------------------------------------

Json JsonOf(const ShownHarmony &harmony)
{
  Json colours = Json::array();
  for (const HarmonyColour &colour : harmony.colours)
    colours.push_back({{"value", ZelClr::TextFromColorSpec(colour.colour)},
                       {"screen", HexOf(colour.screen)},
                       {"wheelHue", ZelClr::WithinTurn(colour.place.hue)},
                       {"saturation", colour.place.saturation},
                       {"brightness", colour.place.brightness}});
  return {{"rule", harmony.words->option}, {"arms", harmony.arms}, {"colours", colours}};
}

void PrintText(const ShownHarmony &harmony, const Output &output)
{
  std::printf("%s\n", output.Bold(harmony.words->title).c_str());
  for (const HarmonyColour &colour : harmony.colours)
    std::printf("%s%s  %s  %s\n", output.Swatch(CLR_COLORSPEC::MakeCOLORREF(colour.screen), 8).c_str(),
                Fitted(ZelClr::TextFromColorSpec(colour.colour), 26).c_str(), HexOf(colour.screen).c_str(),
                output.Faint(std::to_string(ZelClr::WithinTurn(colour.place.hue)) + "\u00B0").c_str());
}

void ShowHarmonies(const Arguments &arguments, const Output &output)
{
  const ZelClr::PaletteFormat *const format = FormatOf(arguments.path);
  const std::vector<ShownHarmony> harmonies = HarmoniesFrom(arguments);
  const std::string base = ZelClr::TextFromColorSpec(harmonies.front().colours.front().colour);
  if (!arguments.path.empty())
    WriteFile(arguments.path, format, harmonies, base);
  if (output.json) {
    Json content = {{"base", base}, {"harmonies", Json::array()}};
    for (const ShownHarmony &harmony : harmonies)
      content["harmonies"].push_back(JsonOf(harmony));
    PrintJson("zelclr.harmony", content);
    return;
  }
  for (const ShownHarmony &harmony : harmonies) {
    if (&harmony != &harmonies.front())
      std::printf("\n");
    PrintText(harmony, output);
  }
}

} // namespace

void AddHarmony(CLI::App &app, Output &output, ExitCode & /*exitCode*/)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("harmony", "Find colours that go with one, on the artist's wheel");
  command->add_option("colour", arguments->colour, "The base, from which the others are worked out")
    ->required()
    ->type_name("COLOUR");
  command
    ->add_option("--rule", arguments->rule,
                 "complementary, triad, tetrad, analogous, accented-analogous, monochromatic or custom")
    ->capture_default_str()
    ->type_name("RULE");
  command->add_flag("--all", arguments->all, "Every rule, side by side")->excludes("--rule");
  command
    ->add_option("--count", arguments->count,
                 "How many colours; those beyond the places of the rule are tints and shades")
    ->check(CLI::Range(1, 100).description(""))
    ->type_name("NUMBER");
  command->add_option("--step", arguments->step, "Between neighbours of the analogous rules, in degrees; else 30")
    ->check(CLI::Range(-180.0, 180.0).description(""))
    ->type_name("DEGREES");
  command->add_option("--to", arguments->model, "The model of the colours; else that of the base")->type_name("MODEL");
  command
    ->add_option("-o,--output", arguments->path,
                 "Draw the wheel (.svg), or write a palette: .xml is our own, others by their names")
    ->type_name("FILE");
  command->footer("Degrees are those of the wheel: red 0, yellow 108, green 168, blue 275. Colours are converted by\n"
                  "the profiles of the settings in force.");
  command->callback([arguments, &output] { ShowHarmonies(*arguments, output); });
}

} // namespace cli
