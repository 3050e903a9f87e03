#include "cli/image/remake.h"

#include "cli/command.h"
#include "cli/profile/words.h"
#include "zelclr/platform/files.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace cli {

namespace {

Json JsonOfImage(const ImageInfo &info, const std::string &path, const Json &profile)
{
  return {{"file", Harmless(path)},
          {"model", WordsOf(info.format.model).option},
          {"bits", 8 * info.format.BytesPerSample()},
          {"alpha", info.hasAlpha},
          {"profile", profile}};
}

} // namespace

void AddRemakeOptions(CLI::App *command, RemakeArguments &arguments)
{
  command
    ->add_option("input", arguments.input,
                 "PNG, JPEG or TIFF; the import policy of the settings decides on its profile")
    ->required()
    ->type_name("IN");
  command->add_option("-o,--output", arguments.output, "The image to write: .png, .jpg, .jpeg, .tif or .tiff")
    ->required()
    ->type_name("OUT");
  command->add_option("--from", arguments.from, "Read the image by this profile, whatever is embedded in it")
    ->type_name("PROFILE");
  command->add_option("--quality", arguments.quality, "Of a JPEG, 1 to 100")
    ->check(CLI::Range(1, 100).description(""))
    ->capture_default_str()
    ->type_name("NUMBER");
}

std::unique_ptr<ImageReader> OpenInput(const std::string &path)
{
  try {
    return OpenImage(path);
  } catch (const ImageError &error) {
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + Harmless(error.what()));
  }
}

ImageKind KindOfOutput(const std::string &path, const std::vector<std::string> &sources)
{
  const auto kind = ImageKindFromPath(path);
  if (!kind)
    throw Failure(ExitCode::Usage,
                  Harmless(path) + ": the name of the output ends in none of .png, .jpg, .jpeg, .tif, .tiff");
  for (const std::string &source : sources) {
    if (ZelUtl::IsSameFile(source, path))
      throw Failure(ExitCode::Usage, Harmless(path) + " is both read and written");
  }
  return *kind;
}

void RemakeImage(ImageReader &reader, const RemakeArguments &arguments, ImageKind kind, const ImageInfo &result,
                 const MakeRows &make)
{
  const std::string *path = &arguments.output; // whose fault an error is
  try {
    const auto writer = CreateImage(arguments.output, kind, result, arguments.quality);
    MadeRows made;
    path = &arguments.input;
    ForEachBand(reader, Harmless(arguments.input), [&](const Band &band) {
      made.rows = band.rows;
      make(band, made);
      path = &arguments.output;
      writer->WriteRows(made.rows, made.colours.data(), made.alpha.data());
      path = &arguments.input;
    });
    path = &arguments.output;
    writer->Finish();
  } catch (const ImageError &error) {
    throw Failure(ExitCode::Unreadable, Harmless(*path) + ": " + Harmless(error.what()));
  }
}

std::string WordsOfImage(const ImageInfo &info)
{
  return std::string(WordsOf(info.format.model).name) + " " + std::to_string(8 * info.format.BytesPerSample()) +
         " bits" + (info.hasAlpha ? " with alpha" : "");
}

std::string WordsOfInput(const ImageInfo &info, const std::string &path, const ImageProfile &profile)
{
  return Harmless(path) + ": " + std::to_string(info.width) + " \u00d7 " + std::to_string(info.height) + " pixels, " +
         WordsOfImage(info) + ", " + profile.name + " (" + profile.origin + ")";
}

Json JsonOfInput(const ImageInfo &info, const std::string &path, const ImageProfile &profile)
{
  Json input = JsonOfImage(info, path, profile.name);
  input["profileOrigin"] = profile.origin;
  return input;
}

Json JsonOfOutput(const ImageInfo &info, const std::string &path, const std::string &profile, ImageKind kind)
{
  Json output = JsonOfImage(info, path, profile.empty() ? Json() : Json(profile));
  output["format"] = NameOfImageKind(kind);
  return output;
}

} // namespace cli
