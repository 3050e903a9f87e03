// zelclr profile list|info|compare|path

#include "cli/command.h"
#include "cli/profile/comparison.h"
#include "cli/profile/forms.h"
#include "cli/profile/gamut_drawing.h"
#include "cli/profile/profile_facts.h"
#include "cli/profile/profile_list.h"
#include "zelclr/platform/files.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace cli {

namespace {

constexpr const char *kProfileHelp = "An installed profile by its file's name or its description, or any file";
constexpr const char *kGamutHelp =
  "A gamut is measured in CIE Lab on D50: the device's colours are cut into small cells (32 along each side of RGB, "
  "16\n"
  "of CMYK, 8 of six inks; of inks every three that vary, with the others at none and at full), each cell into six\n"
  "tetrahedra, whose corners the engine in force converts to Lab; its volume is what lies in any of them, counted in\n"
  "cells of one L*, one a* and one b*. White is the device's, black what becomes of L* 0.";

const Choices<RenderingIntent> kIntents = {{"relative", RenderingIntent::RelativeColorimetric},
                                           {"absolute", RenderingIntent::AbsoluteColorimetric}};

struct PictureOptions
{
  std::string svg;
  RenderingIntent intent = RenderingIntent::RelativeColorimetric;
};

/// An option that takes one of some words, whose value goes to `chosen`.
template <class Value, class Target>
void AddChoice(CLI::App *command, const std::string &option, const std::string &help, const char *type,
               const Choices<Value> &choices, Target &chosen)
{
  std::string words;
  for (const auto &choice : choices)
    words += (words.empty() ? "" : ", ") + choice.first;
  const auto choose = [option, words, choices, &chosen](const std::string &word) {
    const auto choice = std::find_if(choices.begin(), choices.end(),
                                     [&word](const auto &row) { return row.first == CLI::detail::to_lower(word); });
    if (choice == choices.end())
      throw CLI::ValidationError(option, "there is no \"" + word + "\", only " + words);
    chosen = choice->second;
  };
  command->add_option_function<std::string>(option, choose, help + ": " + words)->type_name(type);
}

void AddPictureOptions(CLI::App *command, PictureOptions &options)
{
  command->add_option("--svg", options.svg, "Draw the gamut on an A4 page; - prints it")
    ->check([](const std::string &path) { return path.empty() ? "the name of the picture is empty" : ""; })
    ->type_name("FILE");
  AddChoice(command, "--intent", "Of the gamut that is drawn or compared, to its white or to the perfect one", "INTENT",
            kIntents, options.intent);
  command->footer(kGamutHelp);
}

/// Before anything is computed.
void CheckPicture(const PictureOptions &options, std::initializer_list<const ProfileFile *> profiles,
                  const Output &output)
{
  if (output.json && options.svg == "-")
    throw Failure(ExitCode::Usage, "--json and --svg - both print to standard output");
  for (const ProfileFile *profile : profiles) {
    if (!options.svg.empty() && ZelUtl::IsSameFile(options.svg, profile->path))
      throw Failure(ExitCode::Usage, Harmless(options.svg) + " is the profile itself");
  }
}

void WritePicture(const std::string &picture, const std::string &path)
{
  std::string reason;
  if (path == "-")
    std::fwrite(picture.data(), 1, picture.size(), stdout);
  else if (!ZelUtl::ReplaceFile(path, picture, reason))
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + reason);
}

/// Prints what there is to say, and draws the picture; Missing where that was asked for and there is no gamut.
template <class Subject, class Draw>
ExitCode Present(const Subject &subject, const std::string &noPicture, const char *schema,
                 const PictureOptions &options, const Output &output, Draw draw)
{
  if (!options.svg.empty() && noPicture.empty())
    WritePicture(draw(), options.svg);
  if (output.json)
    PrintJson(schema, JsonOf(subject));
  else if (options.svg != "-")
    std::fputs(TextOf(subject, output).c_str(), stdout);
  if (options.svg.empty() || noPicture.empty())
    return ExitCode::Fine;
  std::fflush(stdout);
  std::fprintf(stderr, "zelclr: no picture is drawn: %s\n", noPicture.c_str());
  return ExitCode::Missing;
}

std::string NoPictureOf(const ProfileFacts &facts)
{
  return facts.HasGamut() ? "" : facts.file.name + " has no gamut: " + facts.noGamut;
}

/// Says what is damaged, which is a finding where nothing is worse.
ExitCode WithDamage(ExitCode code, std::initializer_list<const ProfileFacts *> profiles)
{
  std::fflush(stdout);
  for (const ProfileFacts *facts : profiles) {
    if (!facts->IsDamaged())
      continue;
    std::fprintf(stderr, "zelclr: %s is damaged: %s\n", Harmless(facts->file.path).c_str(), facts->Damage().c_str());
    if (code == ExitCode::Fine)
      code = ExitCode::Findings;
  }
  return code;
}

ExitCode Info(const std::string &name, const PictureOptions &options, const Output &output)
{
  ProfileFile file = OpenProfile(name);
  CheckPicture(options, {&file}, output);
  const ProfileFacts facts = FactsOf(std::move(file));
  const ExitCode code = Present(facts, NoPictureOf(facts), "zelclr.profile.info", options, output,
                                [&] { return PictureOf(facts, options.intent); });
  return WithDamage(code, {&facts});
}

ExitCode Compare(const std::string &nameOfA, const std::string &nameOfB, const PictureOptions &options,
                 const Output &output)
{
  ProfileFile a = OpenProfile(nameOfA);
  ProfileFile b = OpenProfile(nameOfB);
  CheckPicture(options, {&a, &b}, output);
  const Comparison comparison = {FactsOf(std::move(a)), FactsOf(std::move(b)), options.intent};
  const std::string noPicture = comparison.a.HasGamut() ? NoPictureOf(comparison.b) : NoPictureOf(comparison.a);
  const ExitCode code =
    Present(comparison, noPicture, "zelclr.profile.compare", options, output, [&] { return PictureOf(comparison); });
  return WithDamage(code, {&comparison.a, &comparison.b});
}

} // namespace

void AddProfile(CLI::App &app, Output &output, ExitCode &exitCode)
{
  CLI::App *const profile = app.add_subcommand("profile", "Colour profiles: which there are, and what they can do");
  profile->require_subcommand(1);

  auto filter = std::make_shared<ProfileFilter>();
  CLI::App *command = profile->add_subcommand("list", "The installed profiles");
  AddChoice(command, "--model", "Only those of one model", "MODEL", ModelChoices(), filter->model);
  AddChoice(command, "--class", "Only those of one class", "CLASS", ClassChoices(), filter->deviceClass);
  command->callback([filter, &output] { ListProfiles(*filter, output); });

  auto names = std::make_shared<std::array<std::string, 2>>();
  auto options = std::make_shared<PictureOptions>();
  command = profile->add_subcommand("info", "Everything about one profile");
  command->add_option("profile", (*names)[0], kProfileHelp)->required()->type_name("PROFILE");
  AddPictureOptions(command, *options);
  command->callback([=, &output, &exitCode] { exitCode = Info((*names)[0], *options, output); });

  command = profile->add_subcommand("compare", "Two profiles beside each other, and what their gamuts share");
  command->add_option("a", (*names)[0], kProfileHelp)->required()->type_name("A");
  command->add_option("b", (*names)[1], "Another")->required()->type_name("B");
  AddPictureOptions(command, *options);
  command->callback([=, &output, &exitCode] { exitCode = Compare((*names)[0], (*names)[1], *options, output); });

  command = profile->add_subcommand("path", "The folders that are searched; with a profile, its file");
  command->add_option("profile", (*names)[0], kProfileHelp)->type_name("PROFILE");
  command->callback([=, &output] {
    if (command->count("profile") == 0)
      ListFolders(output);
    else
      PrintPath((*names)[0], output);
  });
}

} // namespace cli
