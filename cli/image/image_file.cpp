#include "cli/image/image_file.h"

#include "cli/image/formats.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace cli {

namespace {

using ColorSystem::ColorModel;

struct KindWords
{
  ImageKind kind;
  const char *name;
  std::array<const char *, 2> extensions;
  std::uint32_t mostSide;
};

constexpr std::uint32_t kMostJpegSide = 65'500; // of the library; the format ends at 65,535

constexpr KindWords kKinds[] = {
  {ImageKind::Png, "PNG", {".png", ".png"}, kMostImageSide},
  {ImageKind::Jpeg, "JPEG", {".jpg", ".jpeg"}, kMostJpegSide},
  {ImageKind::Tiff, "TIFF", {".tif", ".tiff"}, kMostImageSide},
};

const KindWords &WordsOf(ImageKind kind)
{
  return *std::find_if(std::begin(kKinds), std::end(kKinds), [kind](const KindWords &row) { return row.kind == kind; });
}

struct Signature
{
  std::array<std::uint8_t, 4> bytes;
  unsigned length;
  decltype(&OpenPng) open;
};

constexpr Signature kSignatures[] = {
  {{0x89, 'P', 'N', 'G'}, 4, OpenPng}, {{0xFF, 0xD8, 0xFF}, 3, OpenJpeg}, {{'I', 'I', 42, 0}, 4, OpenTiff},
  {{'M', 'M', 0, 42}, 4, OpenTiff},    {{'I', 'I', 43, 0}, 4, OpenTiff},  {{'M', 'M', 0, 43}, 4, OpenTiff},
};

} // namespace

std::optional<ImageKind> ImageKindFromPath(const std::string &path)
{
  const std::string extension = ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path));
  for (const KindWords &row : kKinds) {
    if (std::find(row.extensions.begin(), row.extensions.end(), extension) != row.extensions.end())
      return row.kind;
  }
  return std::nullopt;
}

const char *NameOfImageKind(ImageKind kind)
{
  return WordsOf(kind).name;
}

std::string WhyNotWritable(ImageKind kind, const ImageInfo &info)
{
  const KindWords &words = WordsOf(kind);
  if (kind == ImageKind::Png && info.format.model == ColorModel::Cmyk)
    return "PNG holds no CMYK; TIFF and JPEG do";
  if (kind == ImageKind::Jpeg && info.format.BytesPerSample() != 1)
    return "JPEG holds 8 bits only; PNG and TIFF hold 16";
  if (kind == ImageKind::Jpeg && info.hasAlpha)
    return "JPEG holds no transparency; PNG and TIFF do";
  if (std::max(info.width, info.height) > words.mostSide)
    return std::string(words.name) + " holds at most " + std::to_string(words.mostSide) + " pixels along a side";
  return {};
}

std::unique_ptr<ImageReader> OpenImage(const std::string &path, std::uint64_t mostHeldBytes)
{
  std::string reason;
  auto file = ZelUtl::RegularFile::Open(path, reason);
  if (!file)
    throw ImageError(reason);
  std::array<std::uint8_t, 4> start{};
  if (file->ReadAt(0, start)) {
    for (const Signature &signature : kSignatures) {
      if (std::memcmp(start.data(), signature.bytes.data(), signature.length) == 0)
        return signature.open(std::move(*file), mostHeldBytes);
    }
  }
  throw ImageError("neither PNG nor JPEG nor TIFF");
}

std::unique_ptr<ImageWriter> CreateImage(const std::string &path, ImageKind kind, const ImageInfo &info, int quality)
{
  std::string reason = WhyNotWritable(kind, info);
  if (!reason.empty())
    throw ImageError(reason);
  auto file = ZelUtl::ReplacementFile::Create(path, reason);
  if (!file)
    throw ImageError(reason);
  switch (kind) {
  case ImageKind::Png:
    return CreatePng(std::move(*file), info);
  case ImageKind::Jpeg:
    return CreateJpeg(std::move(*file), info, quality);
  case ImageKind::Tiff:
    break;
  }
  return CreateTiff(std::move(*file), info);
}

// --- What the formats share
// -------------------------------------------------------------------------------------------

void CheckSize(std::uint64_t width, std::uint64_t height)
{
  if (width == 0 || height == 0)
    throw ImageError("an image without pixels");
  if (width > kMostImageSide || height > kMostImageSide || width * height > kMostImagePixels)
    throw ImageError(std::to_string(width) + " by " + std::to_string(height) + " pixels are too many");
}

void CheckHeld(std::uint64_t bytes, std::uint64_t mostHeldBytes, const char *what)
{
  if (bytes > mostHeldBytes) {
    throw ImageError(std::string(what) + " must be held whole, and this one takes " + std::to_string(bytes >> 20) +
                     " MiB, more than " + std::to_string(mostHeldBytes >> 20));
  }
}

void JoinAlpha(std::size_t pixels, unsigned colours, unsigned bytesPerSample, const std::uint8_t *colour,
               const std::uint8_t *alpha, std::uint8_t *joined)
{
  const std::size_t colourBytes = std::size_t{colours} * bytesPerSample;
  for (std::size_t i = 0; i < pixels; ++i) {
    joined = std::copy_n(colour + i * colourBytes, colourBytes, joined);
    joined = std::copy_n(alpha + i * bytesPerSample, bytesPerSample, joined);
  }
}

void SplitAlpha(std::size_t pixels, unsigned colours, unsigned bytesPerSample, const std::uint8_t *joined,
                std::uint8_t *colour, std::uint8_t *alpha)
{
  const std::size_t colourBytes = std::size_t{colours} * bytesPerSample;
  for (std::size_t i = 0; i < pixels; ++i, joined += colourBytes + bytesPerSample) {
    colour = std::copy_n(joined, colourBytes, colour);
    alpha = std::copy_n(joined + colourBytes, bytesPerSample, alpha);
  }
}

} // namespace cli
