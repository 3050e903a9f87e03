#include "cli/image/remake.h"

#include "cli/command.h"
#include "cli/profile/words.h"
#include "zelclr/platform/files.h"

#include <cstdio>

namespace cli {

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

void RemakeImage(ImageReader &reader, const Remake &remake, const MakeRows &make)
{
  const std::string *path = &remake.output; // whose fault an error is
  try {
    const auto writer = CreateImage(remake.output, remake.kind, remake.result, remake.quality);
    MadeRows made;
    path = &remake.input;
    ForEachBand(reader, Harmless(remake.input), [&](const Band &band) {
      made.rows = band.rows;
      make(band, made);
      path = &remake.output;
      writer->WriteRows(made.rows, made.colours.data(), made.alpha.data());
      path = &remake.input;
    });
    path = &remake.output;
    writer->Finish();
  } catch (const ImageError &error) {
    throw Failure(ExitCode::Unreadable, Harmless(*path) + ": " + Harmless(error.what()));
  }
}

void SayNotes(const std::string &path, const std::vector<std::string> &notes)
{
  std::fflush(stdout);
  for (const std::string &note : notes)
    std::fprintf(stderr, "zelclr: %s: %s\n", Harmless(path).c_str(), Harmless(note).c_str());
}

std::string WordsOfImage(const ImageInfo &info)
{
  return std::string(WordsOf(info.format.model).name) + " " + std::to_string(8 * info.format.BytesPerSample()) +
         " bits" + (info.hasAlpha ? " with alpha" : "");
}

Json JsonOfImage(const ImageInfo &info, const std::string &path, const std::string &profile)
{
  return {{"file", Harmless(path)},
          {"model", WordsOf(info.format.model).option},
          {"bits", 8 * info.format.BytesPerSample()},
          {"alpha", info.hasAlpha},
          {"profile", profile}};
}

} // namespace cli
