// zelclr gradient COLOUR...

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "cli/gradient/drawing.h"
#include "cli/gradient/strips.h"
#include "cli/image/image_file.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>

namespace cli {

namespace {

using namespace ColorSystem;

struct BlendWords
{
  ClrBlendMode mode;
  const char *option;
};
constexpr BlendWords kBlendWords[] = {
  {ClrBlendMode_Straight, "straight"}, {ClrBlendMode_Hue, "hue"}, {ClrBlendMode_HueBack, "hue-back"}};

struct Arguments
{
  std::vector<std::string> colours;
  std::string blend = "straight";
  std::string model;
  std::string profile;
  std::string picture;
  int samples = 11;
  double midpoint = 50.0;
  ClrBlendRateMethod method = ClrBlendRateMethod_Steady;
  double acceleration = 0.0;
};

// --- Reading the arguments -------------------------------------------------------------------------------------------

struct Stop
{
  CLR_COLORSPEC colour;
  std::optional<double> percent;
};

/// "red" or "red 30%".
Stop StopFromInput(const std::string &argument)
{
  const std::string_view text = ZelUtl::Trimmed(argument);
  const auto blank = text.find_last_of(" \t");
  if (text.empty() || text.back() != '%' || blank == std::string_view::npos)
    return {ColourFromInput(text), std::nullopt};
  const auto percent = ZelUtl::DoubleFromText(text.substr(blank + 1, text.size() - blank - 2));
  if (!percent || *percent < 0.0 || *percent > 100.0)
    throw Failure(ExitCode::Usage, Harmless(argument) + ": a position is 0% to 100%");
  return {ColourFromInput(text.substr(0, blank)), percent};
}

/// The first stop is at 0 % and the last at 100 %, others evenly between their neighbours, where they do not say.
void Place(std::vector<Stop> &stops)
{
  stops.front().percent = stops.front().percent.value_or(0.0);
  stops.back().percent = stops.back().percent.value_or(100.0);
  std::size_t placed = 0;
  for (std::size_t i = 1; i < stops.size(); ++i) {
    if (!stops[i].percent)
      continue;
    const double from = *stops[placed].percent;
    const double step = (*stops[i].percent - from) / static_cast<double>(i - placed);
    if (step < 0.0)
      throw Failure(ExitCode::Usage, "the positions of the colours must rise");
    for (std::size_t between = placed + 1; between < i; ++between)
      stops[between].percent = from + step * static_cast<double>(between - placed);
    placed = i;
  }
}

std::vector<Stop> StopsOf(const Arguments &arguments, ColorContext &context)
{
  std::vector<Stop> stops;
  if (arguments.colours.size() < 2)
    throw Failure(ExitCode::Usage, "a gradient needs two colours or more");
  for (const std::string &argument : arguments.colours)
    stops.push_back(StopFromInput(argument));
  Place(stops);
  if (!arguments.model.empty()) {
    const unsigned model = ModelFromInput(arguments.model);
    for (Stop &stop : stops) {
      CLR_COLORSPEC converted;
      if (!WClrConvert::ConvertColorSpec(&converted, model, &stop.colour, context))
        throw Failure(ExitCode::Missing,
                      ZelClr::TextFromColorSpec(stop.colour) + " cannot be converted without its palette");
      stop.colour = std::move(converted);
    }
  }
  return stops;
}

/// The modes of the segments, one list for each strip.
std::vector<std::vector<ClrBlendMode>> BlendsFromInput(const std::string &text, std::size_t segments)
{
  std::vector<std::vector<ClrBlendMode>> blends;
  if (text == "all") {
    for (const BlendWords &words : kBlendWords)
      blends.emplace_back(segments, words.mode);
    return blends;
  }
  std::vector<ClrBlendMode> modes;
  for (std::string_view rest = text;;) {
    const auto comma = rest.find(',');
    const auto *const row = std::find_if(std::begin(kBlendWords), std::end(kBlendWords), [&](const BlendWords &words) {
      return rest.substr(0, comma) == words.option;
    });
    if (row == std::end(kBlendWords))
      throw Failure(ExitCode::Usage, "--blend " + Harmless(text) + ": straight, hue, hue-back or all");
    modes.push_back(row->mode);
    if (comma == std::string_view::npos)
      break;
    rest.remove_prefix(comma + 1);
  }
  if (modes.size() != 1 && modes.size() != segments)
    throw Failure(ExitCode::Usage, "--blend names " + std::to_string(modes.size()) + " blends for " +
                                     std::to_string(segments) + " segments");
  if (modes.size() == 1)
    modes.assign(segments, modes.front());
  return {modes};
}

/// "straight", or one word for each segment where they differ.
std::string NameOf(const std::vector<ClrBlendMode> &modes)
{
  const auto word = [](ClrBlendMode mode) { return kBlendWords[static_cast<std::size_t>(mode)].option; };
  std::string name = word(modes.front());
  if (std::count(modes.begin(), modes.end(), modes.front()) == static_cast<std::ptrdiff_t>(modes.size()))
    return name;
  for (std::size_t i = 1; i < modes.size(); ++i)
    name += std::string(",") + word(modes[i]);
  return name;
}

CLR_FOUNTCOLOR_ARRAY FountainOf(const std::vector<Stop> &stops, const std::vector<ClrBlendMode> &modes,
                                const Arguments &arguments)
{
  CLR_FOUNTCOLOR_ARRAY fountain;
  for (std::size_t i = 0; i < stops.size(); ++i) {
    CLR_FOUNTCOLOR stop;
    stop.colour = stops[i].colour;
    stop.position = static_cast<std::uint16_t>(std::lround(*stops[i].percent * kPositionsPerPercent));
    stop.SetBlendMode(i < modes.size() ? modes[i] : ClrBlendMode_Straight);
    stop.SetBlendRateValue(arguments.midpoint / 100.0);
    fountain.Add(stop);
  }
  fountain.SetBlendRateMethod(arguments.method);
  fountain.SetBlendRateAcceleration(arguments.acceleration);
  return fountain;
}

// --- Saying what came out --------------------------------------------------------------------------------------------

Json JsonOf(const Strip &strip, bool judged)
{
  Json samples = Json::array();
  for (const Shade &shade : strip.listed) {
    Json sample = {{"position", shade.percent}, {"value", ZelClr::TextFromColorSpec(shade.colour)}};
    sample["screen"] = shade.screen ? Json(HexFromColorSpec(CLR_COLORSPEC::MakeCOLORREF(*shade.screen))) : Json();
    if (judged)
      sample["inGamut"] = shade.holds;
    samples.push_back(std::move(sample));
  }
  Json content = {{"blend", strip.blend},
                  {"model", ZelClr::FindColourModel(strip.model)->textName},
                  {"stops", strip.stops},
                  {"samples", samples}};
  if (judged)
    content["gamutEdges"] = strip.edges;
  return content;
}

/// The strip on a terminal, and below it the stops (▲) and what the press cannot print (×).
std::string BarOf(const Strip &strip)
{
  constexpr std::size_t kColumns = 64;
  std::string bar, marks;
  for (std::size_t column = 0; column < kColumns; ++column) {
    const Shade &shade = strip.drawn[(2 * column + 1) * strip.drawn.size() / (2 * kColumns)];
    const COLORREF rgb = shade.screen.value_or(0xFFFFFF);
    const auto byte = [rgb](int shift) { return std::to_string(rgb >> shift & 255); };
    bar += "\x1b[48;2;" + byte(0) + ";" + byte(8) + ";" + byte(16) + "m ";
    const bool isStop = std::any_of(strip.stops.begin(), strip.stops.end(), [&](double stop) {
      const double length = std::max(strip.stops.back() - strip.stops.front(), 1e-9);
      return std::lround((stop - strip.stops.front()) / length * (kColumns - 1)) == static_cast<long>(column);
    });
    marks += isStop ? "\u25B2" : shade.holds ? " " : "\u00D7";
  }
  return bar + "\x1b[0m\n" + marks + "\n";
}

std::string WordsOfGamut(const Strip &strip, const std::string &press)
{
  const bool startsOut = !strip.drawn.front().holds;
  if (strip.edges.empty())
    return (startsOut ? "All of it is beyond the gamut of " : "All of it is within the gamut of ") + press + ".";
  std::string words = "Beyond the gamut of " + press + ":";
  double from = strip.stops.front();
  bool isOut = startsOut;
  for (std::size_t i = 0; i <= strip.edges.size(); ++i) {
    const double edge = i < strip.edges.size() ? strip.edges[i] : strip.stops.back();
    if (isOut)
      words += " " + OneDecimal(from) + " to " + OneDecimal(edge) + " %,";
    isOut = !isOut;
    from = edge;
  }
  words.back() = '.';
  return words;
}

void PrintText(const Strip &strip, const GradientPress *press, const Output &output)
{
  std::printf("%s, in %s\n", output.Bold(strip.blend).c_str(),
              std::string(ZelClr::FindColourModel(strip.model)->textName).c_str());
  if (output.DrawsColour())
    std::fputs(BarOf(strip).c_str(), stdout);
  for (const Shade &shade : strip.listed) {
    const std::string swatch =
      shade.screen ? output.Swatch(CLR_COLORSPEC::MakeCOLORREF(*shade.screen), 4) : std::string();
    std::printf("%6s %%  %s%s%s\n", OneDecimal(shade.percent).c_str(), swatch.c_str(),
                ZelClr::TextFromColorSpec(shade.colour).c_str(), shade.holds ? "" : "  out of gamut");
  }
  if (press != nullptr)
    std::printf("%s\n", WordsOfGamut(strip, press->name).c_str());
}

/// Checks an option's number, and that it is one.
auto Within(double least, double most)
{
  return [least, most](const std::string &text) {
    const auto number = ZelUtl::DoubleFromText(text);
    const bool fits = number && *number >= least && *number <= most;
    return fits ? std::string()
                : Harmless(text) + " is no number from " + ZelUtl::TextFromNumber(least) + " to " +
                    ZelUtl::TextFromNumber(most);
  };
}

enum class Picture
{
  None,
  Svg,
  Png
};

Picture PictureFrom(const std::string &path)
{
  if (path.empty())
    return Picture::None;
  if (path.size() > 4 && ZelUtl::LowerAscii(path.substr(path.size() - 4)) == ".svg")
    return Picture::Svg;
  if (ImageKindFromPath(path) == ImageKind::Png)
    return Picture::Png;
  throw Failure(ExitCode::Usage, Harmless(path) + ": the name of the picture ends in neither .svg nor .png");
}

void WritePicture(Picture picture, const std::string &path, const std::vector<Strip> &strips, const std::string &press)
{
  std::string reason;
  if (picture == Picture::Svg && !ZelUtl::ReplaceFile(path, SvgOfStrips(strips, press), reason))
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + reason);
  if (picture != Picture::Png)
    return;
  try {
    WriteStripsAsPng(strips, path);
  } catch (const ImageError &error) {
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + Harmless(error.what()));
  }
}

ExitCode MakeGradient(const Arguments &arguments, const Output &output)
{
  const Picture picture = PictureFrom(arguments.picture);
  ColorContext context = ColorContext::GetApplicationDefaultColorContext();
  std::optional<GradientPress> press;
  if (!arguments.profile.empty())
    press = GradientPressFrom(arguments.profile);
  const GradientPress *const judge = press ? &*press : nullptr;
  const std::vector<Stop> stops = StopsOf(arguments, context);
  std::vector<Strip> strips;
  for (const auto &modes : BlendsFromInput(arguments.blend, stops.size() - 1))
    strips.push_back(StripOf(FountainOf(stops, modes, arguments), NameOf(modes), arguments.samples, context, judge));

  WritePicture(picture, arguments.picture, strips, press ? press->name : std::string());
  if (output.json) {
    Json content = {{"press", press ? Json(press->name) : Json()}, {"strips", Json::array()}};
    if (press)
      content["tolerance"] = GamutCheck::kTolerance;
    for (const Strip &strip : strips)
      content["strips"].push_back(JsonOf(strip, press.has_value()));
    PrintJson("zelclr.gradient", content);
  } else {
    for (const Strip &strip : strips)
      PrintText(strip, judge, output);
  }
  const bool allHold = std::all_of(strips.begin(), strips.end(), [](const Strip &strip) { return strip.HoldsAll(); });
  return allHold ? ExitCode::Fine : ExitCode::Findings;
}

} // namespace

void AddGradient(CLI::App &app, Output &output, ExitCode &exitCode)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("gradient", "Blend colours, and see where a press cannot follow");
  command
    ->add_option("colours", arguments->colours, "Two colours or more, each with its position or without: 'red 30%'")
    ->required()
    ->type_name("COLOUR");
  command
    ->add_option("--blend", arguments->blend,
                 "straight, hue (red, yellow, green), hue-back or all; or one for each segment, with commas between")
    ->capture_default_str()
    ->type_name("BLEND");
  command->add_option("--midpoint", arguments->midpoint, "Where half of a segment's blend is reached, in percent of it")
    ->check(Within(1.0, 99.0))
    ->capture_default_str()
    ->type_name("PERCENT");
  command
    ->add_option("--acceleration", arguments->acceleration,
                 "-1 to 1: how much faster a blend becomes, by the method; below 0, how much slower")
    ->check(Within(-1.0, 1.0))
    ->capture_default_str()
    ->type_name("NUMBER");
  command
    ->add_option("--method", arguments->method,
                 "Of the acceleration: steady from stop to stop, eased at both stops, or smooth at both")
    ->transform(
      CLI::CheckedTransformer(std::map<std::string, ClrBlendRateMethod>{{"steady", ClrBlendRateMethod_Steady},
                                                                        {"eased", ClrBlendRateMethod_Eased},
                                                                        {"smooth", ClrBlendRateMethod_Smooth}})
        .description(""))
    ->default_str("steady")
    ->type_name("METHOD");
  command->add_option("--model", arguments->model, "Convert the colours to this model first; else their own decide")
    ->type_name("MODEL");
  command->add_option("--samples", arguments->samples, "How many colours are listed")
    ->check(CLI::Range(1, kMostFountainSamples).description(""))
    ->capture_default_str()
    ->type_name("NUMBER");
  command
    ->add_option("--profile", arguments->profile,
                 "The press: an installed profile by its file's name or its description, or any file")
    ->type_name("PROFILE");
  command->add_option("-o,--output", arguments->picture, "Draw the strips: .svg or .png")->type_name("PICTURE");
  command->footer("Colours are converted by the profiles of the settings in force. Colours of one model blend in it;\n"
                  "others in the highest of gray, RGB, Lab, CMYK, six inks. Tints of one ink blend as tints. A colour\n"
                  "is out of gamut when it comes back from the press changed by a \u0394E2000 of more than 2.5.\n"
                  "Exit status 1: something is out of gamut.");
  command->callback([arguments, &output, &exitCode] { exitCode = MakeGradient(*arguments, output); });
}

} // namespace cli
