// zelclr convert COLOUR... --to MODEL

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/formats/colour_list.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <vector>

namespace cli {

namespace {

struct Arguments
{
  std::vector<std::string> colours;
  std::string model;
};

struct Input
{
  std::string place; ///< "-:3: " for a line of the standard input
  CLR_COLORSPEC colour;
};

/// The arguments; for "-", the list of colours on the standard input.
std::vector<Input> Inputs(const std::vector<std::string> &arguments)
{
  std::vector<Input> inputs;
  for (const std::string &argument : arguments) {
    if (argument != "-") {
      inputs.push_back({{}, ColourFromInput(argument)});
      continue;
    }
    const auto place = [](std::size_t line) { return "-:" + std::to_string(line) + ": "; };
    ZelClr::ReadProblem problem;
    const auto list = ZelClr::ReadColourList(ReadInput("-"), problem);
    if (!list)
      throw Failure(ExitCode::Unreadable, place(problem.line) + Harmless(problem.reason));
    for (const ZelClr::Swatch &swatch : list->swatches)
      inputs.push_back({place(swatch.line), swatch.record});
  }
  return inputs;
}

void Convert(const Arguments &arguments, const Output &output)
{
  const unsigned model = ModelFromInput(arguments.model);
  Json results = Json::array();
  for (const auto &[place, source] : Inputs(arguments.colours)) {
    CLR_COLORSPEC target;
    if (!WClrConvert::ConvertToBasicType(&target, model, &source)) {
      throw Failure(ExitCode::Missing,
                    place + ZelClr::TextFromColorSpec(source) + " cannot be converted without its palette");
    }
    const std::string value = ZelClr::TextFromColorSpec(target);
    if (output.json)
      results.push_back(
        {{"source", ZelClr::TextFromColorSpec(source)}, {"value", value}, {"screen", HexFromColorSpec(target)}});
    else
      std::printf("%s%s\n", output.Swatch(target, 4).c_str(), value.c_str());
  }
  if (output.json)
    PrintJson("zelclr.convert", {{"method", "formula"}, {"colours", results}});
}

} // namespace

void AddConvert(CLI::App &app, Output &output, ExitCode & /*exitCode*/)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("convert", "Convert colours to another model, by formula");
  command->add_option("colours", arguments->colours, "Colours; - reads them from standard input, one to a line")
    ->required()
    ->type_name("COLOUR");
  command->add_option("--to", arguments->model, "The model: RGB255, CMYK100, HSB, LAB, GRAY255 and others")
    ->required()
    ->type_name("MODEL");
  command->callback([arguments, &output] { Convert(*arguments, output); });
}

} // namespace cli
