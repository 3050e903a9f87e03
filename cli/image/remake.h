// One image file made of another: what the commands that do so share.
//
// Errors: throws Failure, in one line that names the file at fault. The old output stays until the new one is whole.
#pragma once

#include "cli/image/bands.h"
#include "cli/output.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cli {

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

struct Remake
{
  std::string input;
  std::string output;
  ImageKind kind;
  ImageInfo result;
  int quality = 92; ///< of JPEG
};

/// Gives each band of the input to `make`, and writes what it makes of it.
void RemakeImage(ImageReader &reader, const Remake &remake, const MakeRows &make);

/// On standard error, one line each.
void SayNotes(const std::string &path, const std::vector<std::string> &notes);

/// "RGB 8 bits with alpha"
std::string WordsOfImage(const ImageInfo &info);
Json JsonOfImage(const ImageInfo &info, const std::string &path, const std::string &profile);

} // namespace cli
