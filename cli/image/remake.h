// One image file made of another: what the commands that do so share.
//
// Errors: throws Failure, in one line that names the file at fault. The old output stays until the new one is whole.
#pragma once

#include "cli/image/bands.h"
#include "cli/image/image_profile.h"
#include "cli/output.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace cli {

/// Which files, and how the one is read and the other written.
struct RemakeArguments
{
  std::string input;
  std::string output;
  std::string from; ///< the profile of the input; empty: by the import policy
  int quality = 92; ///< of JPEG
};

/// IN, --output, --from and --quality; `arguments` must live as long as the command.
void AddRemakeOptions(CLI::App *command, RemakeArguments &arguments);

std::unique_ptr<ImageReader> OpenInput(const std::string &path);

/// The kind of file that `path` names, which is none of `sources`.
ImageKind KindOfOutput(const std::string &path, const std::vector<std::string> &sources);

/// Rows of the output as its writer takes them: sized by whoever makes them, who may keep what they hold.
struct MadeRows
{
  std::vector<std::uint8_t> colours;
  std::vector<std::uint8_t> alpha;
  std::uint32_t rows = 0;
};
using MakeRows = std::function<void(const Band &, MadeRows &)>;

/// Gives each band of the input to `make`, and writes what it makes of it as an image like `result`.
void RemakeImage(ImageReader &reader, const RemakeArguments &arguments, ImageKind kind, const ImageInfo &result,
                 const MakeRows &make);

inline constexpr const char *kLaidOnWhite = "JPEG holds no transparency; the image was laid on white";

/// "RGB 8 bits with alpha"
std::string WordsOfImage(const ImageInfo &info);
/// "a.png: 40 × 30 pixels, RGB 8 bits, sRGB (assumed)"
std::string WordsOfInput(const ImageInfo &info, const std::string &path, const ImageProfile &profile);
Json JsonOfInput(const ImageInfo &info, const std::string &path, const ImageProfile &profile);
/// `profile` is the one that is embedded; empty for none.
Json JsonOfOutput(const ImageInfo &info, const std::string &path, const std::string &profile, ImageKind kind);

} // namespace cli
