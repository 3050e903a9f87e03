// Image files by rows: PNG, JPEG and TIFF, with the profiles embedded in them.
//
// Rows go from the first to the last as the file has them (orientation is told, never applied). The samples of a row
// stand one behind the other without gaps, in the processor's byte order: colours as ImageInfo::format says, inks with
// full scale for a solid, gray and RGB with full scale for white; alpha apart, one sample of the same size to a pixel,
// and never multiplied into the colours.
//
//         read                                                        written
//   PNG   every kind: palettes and 1, 2 and 4 bits are expanded to 8  gray and RGB, alpha, 8 and 16 bits
//   JPEG  gray, RGB, CMYK of 8 bits; Adobe's inverted inks as inks    gray, RGB, CMYK of 8 bits; inks as Adobe has them
//   TIFF  gray, RGB, CMYK, palettes of 8 and 16 bits, gray and        gray, RGB, CMYK, alpha, 8 and 16 bits;
//         palettes of 1, 2 and 4; strips, tiles, planes; the first    LZW; beyond 4 GB as BigTIFF
//         page; alpha that is multiplied in is divided out
//
// Memory: some rows, a row of tiles. Interlaced PNG and JPEG of several scans are held whole, up to `mostHeldBytes`.
// Threads: one object, one thread.
// Errors: ImageError, whose text is one line without the path; the bytes of a file are never trusted. A writer that is
// destroyed without Finish leaves the old file as it was.
#pragma once

#include "zelclr/colorsystem/pixel_format.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace cli {

struct ImageError : std::runtime_error
{
  using std::runtime_error::runtime_error;
};

/// No image has more along a side, nor more pixels in all.
inline constexpr std::uint32_t kMostImageSide = 1'000'000;
inline constexpr std::uint64_t kMostImagePixels = std::uint64_t{1} << 32;
inline constexpr std::size_t kMostProfileBytes = std::size_t{64} << 20;
inline constexpr std::uint64_t kMostHeldBytes = std::uint64_t{512} << 20;

struct ImageInfo
{
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  /// Rgb, Cmyk or Grayscale of UInt8 or UInt16; neither reversed nor with alpha.
  ColorSystem::PixelFormat format;
  bool hasAlpha = false;
  std::vector<std::uint8_t> profile; ///< the bytes of the embedded profile; empty when there is none
  /// The file says that its colours are sRGB, without a profile: the chunk sRGB of PNG. Its chunks gAMA and cHRM alone
  /// are not honoured.
  bool isSrgb = false;
  /// Pixels to the inch; 0 when the file does not say.
  double horizontalResolution = 0;
  double verticalResolution = 0;
  /// Where the first row and column belong, as TIFF and EXIF number it: 1 is top left.
  unsigned orientation = 1;

  std::size_t ColourBytesPerRow() const { return std::size_t{width} * format.BytesPerPixel(); }
  std::size_t AlphaBytesPerRow() const { return hasAlpha ? std::size_t{width} * format.BytesPerSample() : 0; }
};

class ImageReader
{
public:
  virtual ~ImageReader() = default;

  const ImageInfo &Info() const { return info_; }
  /// What a person should know of the file, one line each: what was ignored, what was changed.
  const std::vector<std::string> &Notes() const { return notes_; }
  /// The next rows: `count` rows of colours, and of alpha where the image has it. Never more than are left. Reading the
  /// last row also checks the end of the file.
  virtual void ReadRows(std::uint32_t count, std::uint8_t *colours, std::uint8_t *alpha) = 0;

protected:
  ImageInfo info_;
  std::vector<std::string> notes_;
};

class ImageWriter
{
public:
  virtual ~ImageWriter() = default;

  /// The next rows, laid out as a reader gives them.
  virtual void WriteRows(std::uint32_t count, const std::uint8_t *colours, const std::uint8_t *alpha) = 0;
  /// Once all rows are written: the file takes its place.
  virtual void Finish() = 0;
};

enum class ImageKind
{
  Png,
  Jpeg,
  Tiff
};

/// By the extension, in upper or lower case; empty for any other than .png, .jpg, .jpeg, .tif and .tiff.
std::optional<ImageKind> ImageKindFromPath(const std::string &path);
const char *NameOfImageKind(ImageKind kind);
/// Why a kind of file cannot hold such an image; empty when it can.
std::string WhyNotWritable(ImageKind kind, const ImageInfo &info);

/// The kind is told by the file's first bytes.
std::unique_ptr<ImageReader> OpenImage(const std::string &path, std::uint64_t mostHeldBytes = kMostHeldBytes);
/// `quality` of JPEG, 1 to 100; from 90 on colours have the full resolution.
std::unique_ptr<ImageWriter> CreateImage(const std::string &path, ImageKind kind, const ImageInfo &info,
                                         int quality = 92);

} // namespace cli
