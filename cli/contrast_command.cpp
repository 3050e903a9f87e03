// zelclr contrast COLOUR COLOUR

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "cli/profile/profile_colours.h"
#include "cli/profile/profile_file.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/formulas/srgb_lab.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>

namespace cli {

namespace {

using namespace ColorSystem;
namespace ClrModel = ZelClr::ClrModel;

/// Web Content Accessibility Guidelines 2.2: 1.4.3, 1.4.6 and 1.4.11. Large text is 18 points and more, or 14 in bold.
struct Level
{
  const char *option;
  const char *key;
  const char *heading;
  double least;
};
constexpr std::array kLevels = {
  Level{"aa", "textAA", "text AA", 4.5},         Level{"aaa", "textAAA", "text AAA", 7.0},
  Level{"aa-large", "largeAA", "large AA", 3.0}, Level{"aaa-large", "largeAAA", "large AAA", 4.5},
  Level{"ui", "controls", "controls", 3.0},
};

struct Arguments
{
  std::array<std::string, 2> colours;
  std::string need = "aa";
  std::string profile;
  bool paper = false;
};

/// Two colours as they are seen.
struct Pair
{
  std::string name;
  std::array<COLORREF, 2> screen;
  double ratio = 1.0;

  bool Reaches(const Level &level) const { return ratio >= level.least; }
};

double LuminanceOf(COLORREF rgb)
{
  const auto light = [rgb](int shift) {
    return ZelClr::Formulas::LinearFromSrgb(static_cast<double>(rgb >> shift & 255) / 255.0);
  };
  return 0.2126 * light(0) + 0.7152 * light(8) + 0.0722 * light(16);
}

double RatioOf(COLORREF a, COLORREF b)
{
  const double first = LuminanceOf(a);
  const double second = LuminanceOf(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Pair PairThrough(const ColorConverter &converter, const std::array<CLR_COLORSPEC, 2> &colours, const std::string &name)
{
  Pair pair = {name, {}, 1.0};
  for (std::size_t i = 0; i < colours.size(); ++i) {
    CLR_COLORSPEC rgb;
    if (!converter.Convert(colours[i], rgb, ClrModel::Rgb255, 0) || rgb.GetType() != ClrModel::Rgb255)
      throw Failure(ExitCode::Missing,
                    ZelClr::TextFromColorSpec(colours[i]) + " cannot be converted without its palette");
    pair.screen[i] = rgb.GetCOLORREF();
  }
  pair.ratio = RatioOf(pair.screen[0], pair.screen[1]);
  return pair;
}

/// Contrast is defined on sRGB.
ColorContext Screen(RenderingIntent intent)
{
  const auto srgb = ColorProfileManager::GetInstance().GetColorProfile(L"sRGB-Placeholder!");
  if (srgb == nullptr)
    throw Failure(ExitCode::Missing, "the library's own sRGB profile is not installed");
  return {*srgb, intent};
}

Pair PrintedPair(const Arguments &arguments, const std::array<CLR_COLORSPEC, 2> &colours, const ColorContext &context)
{
  if (EngineForProfiles() == nullptr)
    throw Failure(ExitCode::Missing, "a proof needs an engine that reads profiles: the settings in force convert by "
                                     "formula, or Little CMS 2 is not installed");
  const ProfileFile press = OpenProfile(arguments.profile);
  if (press.profile == nullptr || press.profile->GetDeviceClass() == DeviceClass::ColorSpace)
    throw Failure(ExitCode::Usage, press.name + " is no profile of a device");
  ProofColorSettings settings;
  settings.SetEnvironmentToSimulate(press.profile);
  settings.SetRenderingIntent(context.GetRenderingIntent());
  settings.SetPreserveNumbers(press.profile->GetColorModel() == ColorModel::Cmyk);
  settings.SetDisplayGamutWarning(false);
  const auto intent = arguments.paper ? RenderingIntent::AbsoluteColorimetric : RenderingIntent::RelativeColorimetric;
  return PairThrough(ProofColorConverter(context, settings, Screen(intent)), colours, press.name);
}

/// Two decimals, cut off: a ratio is not said to reach what it does not.
std::string InWords(double ratio)
{
  char text[16];
  std::snprintf(text, sizeof text, "%.2f:1", std::floor(ratio * 100.0 + 1e-9) / 100.0);
  return text;
}

/// Whether the pair reaches in print all that it reaches on screen.
bool Survives(const Pair &screen, const Pair &print)
{
  return std::all_of(kLevels.begin(), kLevels.end(),
                     [&](const Level &level) { return !screen.Reaches(level) || print.Reaches(level); });
}

Json JsonOf(const Pair &pair)
{
  Json levels = Json::object();
  for (const Level &level : kLevels)
    levels[level.key] = pair.Reaches(level);
  Json colours = Json::array();
  for (const COLORREF rgb : pair.screen)
    colours.push_back(HexFromColorSpec(CLR_COLORSPEC::MakeCOLORREF(rgb)));
  return {{"colours", colours}, {"ratio", std::floor(pair.ratio * 1000.0 + 1e-9) / 1000.0}, {"levels", levels}};
}

/// "Text" in the one colour on the other.
std::string Sample(const Pair &pair)
{
  const auto code = [](COLORREF rgb) {
    return std::to_string(rgb & 255) + ";" + std::to_string(rgb >> 8 & 255) + ";" + std::to_string(rgb >> 16 & 255);
  };
  return "\x1b[38;2;" + code(pair.screen[0]) + ";48;2;" + code(pair.screen[1]) + "m Text \x1b[0m ";
}

void PrintText(const std::vector<Pair> &pairs, const Output &output)
{
  std::size_t width = 0;
  for (const Pair &pair : pairs)
    width = std::max(width, TextColumns(pair.name));
  std::string heading = std::string(output.DrawsColour() ? 7 : 0, ' ') + Fitted("", width + 2) + Fitted("contrast", 10);
  for (const Level &level : kLevels)
    heading += Fitted(level.heading, 11);
  std::printf("%s\n", output.Faint(heading.substr(0, heading.find_last_not_of(' ') + 1)).c_str());
  for (const Pair &pair : pairs) {
    std::string row = Fitted(pair.name, width + 2) + Fitted(InWords(pair.ratio), 10);
    for (const Level &level : kLevels)
      row += Fitted(pair.Reaches(level) ? "yes" : "no", 11);
    row.erase(row.find_last_not_of(' ') + 1);
    std::printf("%s%s\n", output.DrawsColour() ? Sample(pair).c_str() : "", row.c_str());
  }
}

ExitCode CompareColours(const Arguments &arguments, const Output &output)
{
  const auto *const need =
    std::find_if(kLevels.begin(), kLevels.end(), [&](const Level &level) { return arguments.need == level.option; });
  if (need == kLevels.end())
    throw Failure(ExitCode::Usage, "--need " + Harmless(arguments.need) + ": aa, aaa, aa-large, aaa-large or ui");
  const std::array<CLR_COLORSPEC, 2> colours = {ColourFromInput(arguments.colours[0]),
                                                ColourFromInput(arguments.colours[1])};
  const ColorContext context = ColorContext::GetApplicationDefaultColorContext();
  const ColorConverter converter(context, Screen(RenderingIntent::RelativeColorimetric));
  std::vector<Pair> pairs = {PairThrough(converter, colours, "screen")};
  if (!arguments.profile.empty())
    pairs.push_back(PrintedPair(arguments, colours, context));
  const bool survives = Survives(pairs.front(), pairs.back());

  if (output.json) {
    Json content = {{"colours", {ZelClr::TextFromColorSpec(colours[0]), ZelClr::TextFromColorSpec(colours[1])}},
                    {"need", need->option},
                    {"screen", JsonOf(pairs.front())},
                    {"print", Json()}};
    if (pairs.size() > 1) {
      content["print"] = {{"profile", pairs.back().name}, {"paper", arguments.paper}, {"survives", survives}};
      content["print"].update(JsonOf(pairs.back()));
    }
    PrintJson("zelclr.contrast", content);
  } else {
    PrintText(pairs, output);
    if (pairs.size() > 1)
      std::printf("%s\n", survives ? "In print the pair reaches all that it reaches on screen."
                                   : "In print the pair loses what it reaches on screen.");
  }
  const bool reachesAll =
    std::all_of(pairs.begin(), pairs.end(), [need](const Pair &pair) { return pair.Reaches(*need); });
  return reachesAll && survives ? ExitCode::Fine : ExitCode::Findings;
}

} // namespace

void AddContrast(CLI::App &app, Output &output, ExitCode &exitCode)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("contrast", "See whether text can be read, on screen and in print");
  command->add_option("text", arguments->colours[0], "The colour of the text")->required()->type_name("COLOUR");
  command->add_option("ground", arguments->colours[1], "The colour behind it")->required()->type_name("COLOUR");
  command->add_option("--need", arguments->need, "What the pair must reach: aa, aaa, aa-large, aaa-large or ui")
    ->capture_default_str()
    ->type_name("LEVEL");
  CLI::Option *const profile =
    command
      ->add_option("--profile", arguments->profile,
                   "The press: an installed profile by its file's name or its description, or any file")
      ->type_name("PROFILE");
  command->add_flag("--paper", arguments->paper, "Count the paper's own white; else the eye takes it for white")
    ->needs(profile);
  command->footer(
    "The ratio of WCAG 2, 1:1 to 21:1, of the colours as sRGB shows them. Normal text needs 4.5:1 for AA and\n"
    "7:1 for AAA, large text 3:1 and 4.5:1, controls 3:1. In print the pair is soft-proofed; CMYK\n"
    "colours go to a CMYK press as they are. Exit status 1: the level is not reached, or print loses one.");
  command->callback([arguments, &output, &exitCode] { exitCode = CompareColours(*arguments, output); });
}

} // namespace cli
