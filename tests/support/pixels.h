// Whole images in memory, for tests of commands that turn one file into another, and what such tests share.
#pragma once

#include "cli/image/image_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"
#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

namespace tests {

inline const std::string kProfiles = ZELCLR_PROFILES;
inline const std::string kSrgb = kProfiles + "/sRGB_v4.icc";
inline const std::string kAdobe = kProfiles + "/CompatibleWithAdobeRGB1998.icc";
inline const std::string kPress = kProfiles + "/USWebCoatedSWOP.icc";
inline const std::string kGray = kProfiles + "/Gray Gamma 22.icc";

inline std::shared_ptr<ColorSystem::ColorProfile> ProfileAt(const std::string &path)
{
  return ColorSystem::ColorProfileManager::GetInstance().CreateColorProfile(ZelUtl::WideFromUtf8(path), false);
}

struct Pixels
{
  cli::ImageInfo info;
  std::vector<std::string> notes;
  Bytes colours;
  Bytes alpha;
};

/// The whole image of a file.
inline Pixels Read(const std::string &path)
{
  const auto reader = cli::OpenImage(path);
  Pixels image{reader->Info(), reader->Notes(), {}, {}};
  image.colours.resize(image.info.ColourBytesPerRow() * image.info.height);
  image.alpha.resize(image.info.AlphaBytesPerRow() * image.info.height);
  for (std::uint32_t row = 0; row < image.info.height;) { // in pieces of 1, 2, 3 … rows
    const std::uint32_t rows = std::min(image.info.height - row, 1 + row % 3);
    reader->ReadRows(rows, image.colours.data() + row * image.info.ColourBytesPerRow(),
                     image.alpha.data() + row * image.info.AlphaBytesPerRow());
    row += rows;
  }
  return image;
}

inline void Write(const std::string &path, const Pixels &image, int quality = 92)
{
  const auto writer = cli::CreateImage(path, *cli::ImageKindFromPath(path), image.info, quality);
  writer->WriteRows(image.info.height, image.colours.data(), image.alpha.data());
  writer->Finish();
}

/// Smooth enough for JPEG, different in every channel, row and column.
inline Pixels Picture(std::uint32_t width, std::uint32_t height, ColorSystem::ColorModel model,
                      ColorSystem::SampleType type, bool alpha)
{
  Pixels image;
  image.info.width = width;
  image.info.height = height;
  image.info.format = {model, type};
  image.info.hasAlpha = alpha;
  const unsigned channels = image.info.format.ColourChannels();
  const auto put = [type](Bytes &bytes, unsigned value) { // of 16 bits
    if (type == ColorSystem::SampleType::UInt16)
      bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
  };
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      for (unsigned channel = 0; channel < channels; ++channel)
        put(image.colours, 4000 + 211 * (x % 97) * (channel + 1) % 30000 + 127 * (y % 89) + channel * 5003);
      if (alpha)
        put(image.alpha, 65535 - 701 * ((x + y) % 93));
    }
  }
  return image;
}

/// `colours` laid out as those of such an image.
inline std::unique_ptr<ColorSystem::ColorData> ViewOf(const cli::ImageInfo &info, Bytes &colours)
{
  return ColorSystem::CreateColorData(info.format, info.width, info.height,
                                      static_cast<std::uint32_t>(info.ColourBytesPerRow()), colours.data());
}

/// What the library itself makes of the pixels in one go; `convert(source, destination)` says whether it could.
template <class Convert>
Bytes Converted(const Pixels &image, const ColorSystem::PixelFormat &format, Convert convert)
{
  cli::ImageInfo info = image.info;
  info.format = format;
  Bytes colours = image.colours;
  Bytes converted(info.ColourBytesPerRow() * info.height);
  EXPECT_TRUE(convert(*ViewOf(image.info, colours), *ViewOf(info, converted)));
  return converted;
}

/// Words of a command that must fail.
struct Refusal
{
  std::string words;
  int exitCode;
  const char *reason;
};

/// Files of the test's own, and the tool with folders of its own.
class ImageFiles : public testing::Test
{
protected:
  std::string Path(const std::string &name) const { return folder_.Path(name); }
  ToolResult Run(const std::string &words) const
  {
    return RunTool(words, "XDG_CONFIG_HOME=" + temporary_.Path("config") + " " + UserBelow(temporary_.Path("data")) +
                            " TMPDIR=" + temporary_.Path());
  }
  /// A damaged file: the first three quarters of an image.
  void WriteCut(const std::string &name) const
  {
    Write(Path(name), Picture(400, 300, ColorSystem::ColorModel::Rgb, ColorSystem::SampleType::UInt8, false));
    Bytes cut = ReadBytes(Path(name));
    cut.resize(cut.size() * 3 / 4);
    folder_.Write(name, cut);
  }
  /// The command fails for that reason, and these outputs are what they were; nothing else comes into the folder.
  void ExpectRefused(const std::string &command, const Refusal &row, std::initializer_list<const char *> outputs) const
  {
    SCOPED_TRACE(row.words);
    const Bytes old = {'o', 'l', 'd'};
    for (const char *name : outputs)
      folder_.Write(name, old);
    const auto before = std::distance(std::filesystem::directory_iterator(folder_.Path()), {});
    const auto result = Run(command + row.words);
    EXPECT_EQ(result.exitCode, row.exitCode) << result.errors;
    EXPECT_THAT(result.errors, testing::HasSubstr(row.reason));
    for (const char *name : outputs)
      EXPECT_EQ(ReadBytes(Path(name)), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), before);
  }
  void ExpectNoProfileIsLeft() const
  {
    for (const auto &entry : std::filesystem::directory_iterator(temporary_.Path()))
      EXPECT_NE(entry.path().extension(), ".icc") << "the profile that was put aside is still there";
  }

  TemporaryFolder folder_;
  TemporaryFolder temporary_; ///< of the tool
};

} // namespace tests
