// zelclr image IN -o OUT --to PROFILE

#include "cli/command.h"
#include "cli/image/alpha.h"
#include "cli/image/remake.h"
#include "cli/profile/profile_colours.h"
#include "cli/profile/words.h"
#include "zelclr/colorsystem/color_context.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <map>
#include <memory>

namespace cli {

namespace {

using namespace ColorSystem;

struct Arguments : RemakeArguments
{
  std::string to;
  std::optional<RenderingIntent> intent;
  bool blackPointCompensation = true;
  unsigned depth = 0; ///< 0: that of the input where the output can hold it
};

/// Rows of one profile into rows of another.
struct Conversion
{
  std::shared_ptr<ColorTransform> transform;
  PixelFormat from;
  PixelFormat to;

  void Run(std::uint32_t width, std::uint32_t rows, std::uint8_t *source, std::uint8_t *destination) const
  {
    const auto in = CreateColorData(from, width, rows, width * from.BytesPerPixel(), source);
    const auto out = CreateColorData(to, width, rows, width * to.BytesPerPixel(), destination);
    if (!transform->Convert(*in, *out))
      throw Failure(ExitCode::Missing, "the engine could not convert the colours");
  }
};

/// What the command is going to do, settled before the first row is read.
struct Plan
{
  std::unique_ptr<ImageReader> reader;
  ImageKind kind;
  ImageInfo result;
  bool flattens = false;
  std::string toName;
  TransformOptions options;
};

Plan PlanFor(const Arguments &arguments)
{
  const ProfileFile to = OpenProfile(arguments.to);
  const ImageKind kind = KindOfOutput(arguments.output, {arguments.input, to.path});
  const ColorModel model = to.profile == nullptr ? ColorModel::Indexed : to.profile->GetColorModel();
  if (model != ColorModel::Rgb && model != ColorModel::Cmyk && model != ColorModel::Grayscale)
    throw Failure(ExitCode::Usage, to.name + " is for neither RGB nor CMYK nor gray, and an image must be one of them");

  Plan plan{OpenInput(arguments.input), kind, {}, false, to.name, {}};
  const ImageInfo &info = plan.reader->Info();
  plan.result = info;
  plan.result.isSrgb = false;
  plan.result.format.model = model;
  plan.flattens = info.hasAlpha && kind == ImageKind::Jpeg;
  plan.result.hasAlpha = info.hasAlpha && !plan.flattens;
  if (arguments.depth != 0)
    plan.result.format.type = arguments.depth == 16 ? SampleType::UInt16 : SampleType::UInt8;
  else if (kind == ImageKind::Jpeg)
    plan.result.format.type = SampleType::UInt8;
  const std::string unwritable = WhyNotWritable(kind, plan.result);
  if (!unwritable.empty())
    throw Failure(ExitCode::Usage, Harmless(arguments.output) + ": " + unwritable);
  plan.result.profile = BytesOfProfile(to);

  plan.options.source = info.format;
  plan.options.destination = plan.result.format;
  // Settled for the whole image, so that it does not depend on how its rows are parted.
  const bool isLarge = std::uint64_t{info.width} * info.height >= BakingColorTransform::kPixelsBeforeBaking;
  plan.options.precision = isLarge ? TransformPrecision::Baked : TransformPrecision::Exact;
  plan.options.intent =
    arguments.intent.value_or(ColorContext::GetApplicationDefaultColorContext().GetRenderingIntent());
  // The absolute intent shows the source's own black and white.
  plan.options.blackPointCompensation =
    arguments.blackPointCompensation && plan.options.intent != RenderingIntent::AbsoluteColorimetric;
  return plan;
}

/// From the image's profile to the destination's; null when the engine knows no way.
std::shared_ptr<ColorTransform> TransformFrom(const ImageProfile &source, const ColorProfile &destination,
                                              const TransformOptions &options)
{
  const auto engine = EngineForProfiles();
  if (engine == nullptr)
    throw Failure(ExitCode::Missing, "no engine of this system reads profiles; install Little CMS 2");
  return engine->CreateTransform(*source.profile, destination, options);
}

void WriteImage(const Arguments &arguments, const Plan &plan, const Conversion &conversion)
{
  const ImageInfo &info = plan.reader->Info();
  const ImageInfo &result = plan.result;
  RemakeImage(*plan.reader, arguments, plan.kind, result, [&](const Band &band, MadeRows &made) {
    const std::size_t pixels = std::size_t{band.rows} * info.width;
    made.colours.resize(band.rows * result.ColourBytesPerRow());
    conversion.Run(info.width, band.rows, band.colours, made.colours.data());
    if (info.hasAlpha) {
      made.alpha.resize(pixels * result.format.BytesPerSample());
      ConvertAlpha(pixels, info.format.BytesPerSample(), result.format.BytesPerSample(), band.alpha, made.alpha.data());
    }
    if (plan.flattens)
      FlattenOnWhite(pixels, result.format, made.alpha.data(), made.colours.data());
  });
}

Json JsonOf(const Arguments &arguments, const Plan &plan, const ImageProfile &source,
            const std::vector<std::string> &notes)
{
  return {{"width", plan.result.width},
          {"height", plan.result.height},
          {"input", JsonOfInput(plan.reader->Info(), arguments.input, source)},
          {"output", JsonOfOutput(plan.result, arguments.output, plan.toName, plan.kind)},
          {"intent", WordsOf(plan.options.intent).option},
          {"blackPointCompensation", plan.options.blackPointCompensation},
          {"notes", notes}};
}

void PrintText(const Arguments &arguments, const Plan &plan, const ImageProfile &source)
{
  std::printf("%s\n", WordsOfInput(plan.reader->Info(), arguments.input, source).c_str());
  std::printf("%s: %s, %s, %s, %s%s\n", Harmless(arguments.output).c_str(), NameOfImageKind(plan.kind),
              WordsOfImage(plan.result).c_str(), plan.toName.c_str(), WordsOf(plan.options.intent).option,
              plan.options.blackPointCompensation ? ", black point compensated" : "");
}

ExitCode ConvertImage(const Arguments &arguments, const Output &output)
{
  const Plan plan = PlanFor(arguments);
  const ImageInfo &info = plan.reader->Info();
  const auto destination = OpenProfile(arguments.to).profile;
  std::vector<std::string> notes = plan.reader->Notes();

  SourceProfile chosen(info, arguments.from);
  auto transform = TransformFrom(chosen.Get(), *destination, plan.options);
  if (transform == nullptr && chosen.IgnoreEmbedded())
    transform = TransformFrom(chosen.Get(), *destination, plan.options);
  const ImageProfile &source = chosen.Get();
  if (transform == nullptr)
    throw Failure(ExitCode::Missing,
                  "there is no way from " + source.name + " to " + plan.toName + " with this intent");
  for (std::string &note : chosen.Notes())
    notes.push_back(std::move(note));
  if (plan.flattens)
    notes.emplace_back(kLaidOnWhite);
  SayNotes(arguments.input, notes);

  WriteImage(arguments, plan, {transform, info.format, plan.result.format});
  if (output.json)
    PrintJson("zelclr.image", JsonOf(arguments, plan, source, notes));
  else
    PrintText(arguments, plan, source);
  return ExitCode::Fine;
}

} // namespace

void AddImage(CLI::App &app, Output &output, ExitCode &exitCode)
{
  auto arguments = std::make_shared<Arguments>();
  CLI::App *command = app.add_subcommand("image", "Convert an image to a profile, which is embedded in it");
  AddRemakeOptions(command, *arguments);
  command->add_option("--to", arguments->to, "An installed profile by its file's name or its description, or any file")
    ->required()
    ->type_name("PROFILE");
  std::map<std::string, RenderingIntent> intents;
  for (const IntentWords &row : kIntentWords)
    intents.emplace(row.option, row.intent);
  command->add_option("--intent", arguments->intent, "perceptual, relative, saturation or absolute; else the settings'")
    ->transform(CLI::CheckedTransformer(intents, CLI::ignore_case).description(""))
    ->type_name("INTENT");
  command->add_flag("--bpc,!--no-bpc", arguments->blackPointCompensation,
                    "Map black to black (unless the intent is absolute), which is the rule; --no-bpc does not");
  command->add_option("--depth", arguments->depth, "Bits of a sample, 8 or 16; else the input's, and 8 in JPEG")
    ->check(CLI::IsMember({8u, 16u}).description(""))
    ->type_name("BITS");
  command->footer("Alpha, resolution and orientation are kept. JPEG has no alpha: the image is laid on white there.\n"
                  "Inks of JPEG are written as Adobe does, inverted and marked. Of PNG the chunk sRGB is believed;\n"
                  "gAMA and cHRM alone are not. An interlaced PNG or a progressive JPEG may take 512 MiB of memory;\n"
                  "everything else is read and written by rows.");
  command->callback([arguments, &output, &exitCode] { exitCode = ConvertImage(*arguments, output); });
}

} // namespace cli
