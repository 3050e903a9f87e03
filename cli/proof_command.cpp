// zelclr proof IN -o OUT

#include "cli/command.h"
#include "cli/profile/profile_colours.h"
#include "cli/profile/words.h"
#include "cli/proof/proof_rows.h"
#include "cli/settings/options.h"
#include "cli/settings/origin.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <optional>

namespace cli {

namespace {

using namespace ColorSystem;

struct Arguments : RemakeArguments
{
  std::optional<std::string> preset;
  Edits<ProofColorSettings> edits;
  std::string display = "sRGB-Placeholder!";
  bool paper = false;
  bool mask = false;
  bool sideBySide = false;
};

struct ViewWords
{
  ProofView view;
  const char *option;
  const char *name;
};

constexpr ViewWords kViewWords[] = {{ProofView::Proof, "proof", "soft proof"},
                                    {ProofView::Mask, "mask", "gamut mask"},
                                    {ProofView::SideBySide, "side-by-side", "original and soft proof"}};

const ViewWords &WordsOfView(ProofView view)
{
  return kViewWords[static_cast<std::size_t>(view)];
}

/// A preset, else what is in force if it simulates anything, else the application's press; and the options over it.
ProofColorSettings SettingsFrom(const Arguments &arguments)
{
  ProofColorSettings settings = Kind<ProofColorSettings>().inForce();
  if (arguments.preset)
    settings = *Preset(LookAtFileInUse<ProofColorSettings>(), *arguments.preset).settings;
  else if (settings.GetEnvironmentToSimulate() == nullptr)
    settings.SetEnvironmentToSimulate(ColorContext::GetApplicationDefaultColorContext().GetCmykColorProfile());
  for (const auto &edit : arguments.edits)
    edit(settings);
  const auto device = settings.GetEnvironmentToSimulate();
  if (device == nullptr || !device->IsValid())
    throw Failure(ExitCode::Usage, "no device is simulated: name one with --profile");
  if (device->GetDeviceClass() == DeviceClass::ColorSpace)
    throw Failure(ExitCode::Usage, OneLine(device->GetDisplayName()) + " is a space of colours and no device");
  return settings;
}

/// What the command is going to do, settled before the first row is read.
struct Plan
{
  std::unique_ptr<ImageReader> reader;
  ImageKind kind;
  ProofOptions options;
  std::shared_ptr<ColorProfile> device;
  std::string deviceName;
  std::string displayName;
  ImageInfo result;
};

Plan PlanFor(const Arguments &arguments)
{
  if (EngineForProfiles() == nullptr)
    throw Failure(ExitCode::Missing, "a proof needs an engine that reads profiles: the settings in force convert by "
                                     "formula, or Little CMS 2 is not installed");
  const ProfileFile display = OpenProfile(arguments.display);
  if (display.profile == nullptr || display.profile->GetColorModel() != ColorModel::Rgb)
    throw Failure(ExitCode::Usage, display.name + " is not for RGB, in which proofs are shown");
  ProofOptions options;
  options.view = arguments.mask ? ProofView::Mask : arguments.sideBySide ? ProofView::SideBySide : ProofView::Proof;
  options.settings = SettingsFrom(arguments);
  options.display = display.profile;
  options.paper = arguments.paper;
  const auto device = options.settings.GetEnvironmentToSimulate();
  const ImageKind kind =
    KindOfOutput(arguments.output, {arguments.input, display.path, ZelUtl::Utf8FromWide(device->GetPath())});

  auto reader = OpenInput(arguments.input);
  ImageInfo result = ProofImageOf(reader->Info(), options.view, kind);
  const std::string unwritable = WhyNotWritable(kind, result);
  if (!unwritable.empty())
    throw Failure(ExitCode::Usage, Harmless(arguments.output) + ": " + unwritable);
  if (options.view != ProofView::Mask)
    result.profile = BytesOfProfile(display);
  return {std::move(reader), kind, std::move(options), device, OneLine(device->GetDisplayName()), display.name,
          std::move(result)};
}

/// What has been found out on the way.
struct Findings
{
  ImageProfile source;
  std::vector<std::string> notes;
  std::uint64_t seen;
  std::uint64_t outOfGamut;
};

Json JsonOf(const Arguments &arguments, const Plan &plan, const Findings &findings)
{
  const ProofColorSettings &settings = plan.options.settings;
  const ImageInfo &info = plan.reader->Info();
  const std::string embedded = plan.options.view == ProofView::Mask ? std::string() : plan.displayName;
  Json output = JsonOfOutput(plan.result, arguments.output, embedded, plan.kind);
  output["view"] = WordsOfView(plan.options.view).option;
  output["width"] = plan.result.width;
  output["height"] = plan.result.height;
  const double share =
    findings.seen == 0 ? 0.0 : static_cast<double>(findings.outOfGamut) / static_cast<double>(findings.seen);
  return {{"width", info.width},
          {"height", info.height},
          {"input", JsonOfInput(info, arguments.input, findings.source)},
          {"output", output},
          {"simulated",
           {{"profile", plan.deviceName},
            {"model", WordsOf(plan.device->GetColorModel()).option},
            {"intent", WordsOf(settings.GetRenderingIntent()).option},
            {"preserveNumbers", settings.GetPreserveNumbers()},
            {"paper", plan.options.paper}}},
          {"outOfGamut",
           {{"tolerance", GamutCheck::kTolerance},
            {"seenPixels", findings.seen},
            {"pixels", findings.outOfGamut},
            {"share", share}}},
          {"notes", findings.notes}};
}

/// "12.3 %"; neither none nor all are claimed that are not.
std::string PercentOf(std::uint64_t part, std::uint64_t all)
{
  const double percent = 100.0 * static_cast<double>(part) / static_cast<double>(all);
  if (part > 0 && percent < 0.05)
    return "Fewer than 0.1 %";
  if (part < all && percent >= 99.95)
    return "More than 99.9 %";
  return OneDecimal(percent) + " %";
}

void PrintText(const Arguments &arguments, const Plan &plan, const Findings &findings)
{
  std::printf("%s\n", WordsOfInput(plan.reader->Info(), arguments.input, findings.source).c_str());
  std::printf("%s: %s, %s, %s of %s, %s%s\n", Harmless(arguments.output).c_str(), NameOfImageKind(plan.kind),
              WordsOfImage(plan.result).c_str(), WordsOfView(plan.options.view).name, plan.deviceName.c_str(),
              WordsOf(plan.options.settings.GetRenderingIntent()).name,
              plan.options.paper ? ", with the white of its paper" : "");
  if (findings.outOfGamut == 0)
    std::printf("All pixels are within the gamut of %s.\n", plan.deviceName.c_str());
  else
    std::printf("%s of the pixels are beyond the gamut of %s.\n", PercentOf(findings.outOfGamut, findings.seen).c_str(),
                plan.deviceName.c_str());
}

ExitCode ProofImage(const Arguments &arguments, const Output &output)
{
  const Plan plan = PlanFor(arguments);
  const ImageInfo &info = plan.reader->Info();
  SourceProfile source(info, arguments.from);
  std::optional<ProofRows> rows;
  const auto works = [&] {
    rows.emplace(info, source.Get().profile, plan.options, plan.result);
    return rows->Works();
  };
  if (!works() && !(source.IgnoreEmbedded() && works()))
    throw Failure(ExitCode::Missing, "there is no way from " + source.Get().name + " through " + plan.deviceName +
                                       " to " + plan.displayName + " with this intent");

  Findings findings{source.Get(), plan.reader->Notes(), 0, 0};
  for (std::string &note : source.Notes())
    findings.notes.push_back(std::move(note));
  if (info.hasAlpha && plan.options.view != ProofView::Mask && !plan.result.hasAlpha)
    findings.notes.emplace_back(kLaidOnWhite);
  SayNotes(arguments.input, findings.notes);

  RemakeImage(*plan.reader, arguments, plan.kind, plan.result,
              [&](const Band &band, MadeRows &made) { rows->Make(band, made); });
  findings.seen = rows->Seen();
  findings.outOfGamut = rows->OutOfGamut();
  if (output.json)
    PrintJson("zelclr.proof", JsonOf(arguments, plan, findings));
  else
    PrintText(arguments, plan, findings);
  return findings.outOfGamut > 0 ? ExitCode::Findings : ExitCode::Fine;
}

} // namespace

void AddProof(CLI::App &app, Output &output, ExitCode &exitCode)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("proof", "Show an image as another device will, and what that cannot show");
  AddRemakeOptions(command, *arguments);
  CLI::Option *const mask =
    command->add_flag("--mask", arguments->mask, "Write a mask: white where a colour is out of gamut");
  command->add_flag("--side-by-side", arguments->sideBySide, "Write the original and the proof beside it")
    ->excludes(mask);
  command
    ->add_option("--preset", arguments->preset,
                 "Proof by this preset (zelclr settings proof list); else by the proof settings in force")
    ->type_name("NAME");
  AddValueOptions(command, arguments->edits);
  command->add_flag("--paper", arguments->paper, "Show the white of the device's paper; else it is the display's");
  command
    ->add_option("--display", arguments->display,
                 "The profile of the written image, an RGB one that is installed or in a file")
    ->type_name("PROFILE")
    ->default_str("sRGB");
  command->footer(
    "Where the proof settings simulate nothing, it is the CMYK profile of the settings. A colour is out of gamut when\n"
    "it comes back from the device changed by a \u0394E2000 of more than 2.5; what is wholly transparent does not "
    "count.\n"
    "Numbers that are preserved are always in gamut. A proof is RGB of the depth of the image, with its alpha,\n"
    "resolution and orientation; JPEG is laid on white. A mask has 8 bits and no alpha. The original is on the left, "
    "or\n"
    "on top where the orientation turns the image. Images of any size are read and written by rows, but for "
    "interlaced\n"
    "PNG and progressive JPEG. Exit status 1: something is out of gamut.");
  command->callback([arguments, &output, &exitCode] { exitCode = ProofImage(*arguments, output); });
}

} // namespace cli
