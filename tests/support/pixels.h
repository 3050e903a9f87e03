// Whole images in memory, for tests of commands that turn one file into another.
#pragma once

#include "cli/image/image_file.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tests {

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

} // namespace tests
