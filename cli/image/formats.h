// What the three formats share: one way in and one way out to a file, checks, and samples of alpha between colours.
//
// Errors: ImageError.
#pragma once

#include "cli/image/image_file.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/replacement_file.h"

#include <csetjmp>
#include <span>

namespace cli {

std::unique_ptr<ImageReader> OpenPng(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes);
std::unique_ptr<ImageReader> OpenJpeg(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes);
std::unique_ptr<ImageReader> OpenTiff(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes);
std::unique_ptr<ImageWriter> CreatePng(ZelUtl::ReplacementFile file, const ImageInfo &info);
std::unique_ptr<ImageWriter> CreateJpeg(ZelUtl::ReplacementFile file, const ImageInfo &info, int quality);
std::unique_ptr<ImageWriter> CreateTiff(ZelUtl::ReplacementFile file, const ImageInfo &info);

/// Throws for an image of no pixels or too many.
void CheckSize(std::uint64_t width, std::uint64_t height);
/// Throws for what would have to be held whole and is too large for that.
void CheckHeld(std::uint64_t bytes, std::uint64_t mostHeldBytes, const char *what);

/// Runs calls of a C library that reports an error by jumping to `place`; false when it did. The calls must not leave
/// objects with destructors behind when they are left so: declare none in `calls`.
template <class Calls>
bool Guarded(std::jmp_buf &place, Calls calls)
{
  if (setjmp(place) != 0)
    return false;
  calls();
  return true;
}

/// Pixels with alpha as the last sample, from colours and alpha apart, and back. Samples have 1 or 2 bytes.
void JoinAlpha(std::size_t pixels, unsigned colours, unsigned bytesPerSample, const std::uint8_t *colour,
               const std::uint8_t *alpha, std::uint8_t *joined);
void SplitAlpha(std::size_t pixels, unsigned colours, unsigned bytesPerSample, const std::uint8_t *joined,
                std::uint8_t *colour, std::uint8_t *alpha);

// --- EXIF: CIPA DC-008, 4.6
// -------------------------------------------------------------------------------------------

/// Takes the orientation and, where the image has none yet, the resolution out of EXIF bytes, which begin as a TIFF
/// file does. What cannot be understood is passed over.
void ReadExif(std::span<const std::uint8_t> exif, ImageInfo &info);
/// The orientation and the resolution; empty when there is nothing to say.
std::vector<std::uint8_t> ExifOf(const ImageInfo &info);

} // namespace cli
