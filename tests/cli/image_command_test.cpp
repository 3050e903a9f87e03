// zelclr image, and the readers and writers below it: against the formats' own libraries, on right files and wrong
// ones.

#include "cli/image/image_file.h"
#include "tests/support/icc_profile.h"
#include "tests/support/pixels.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/platform/file_faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <nlohmann/json.hpp>
#include <png.h>
#include <stdio.h> // jpeglib.h needs it
#include <tiffio.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace cli;
using namespace ColorSystem;
using nlohmann::json;
using testing::HasSubstr;
using tests::Bytes;
using tests::kAdobe;
using tests::kGray;
using tests::kPress;
using tests::kSrgb;
using tests::Picture;
using tests::Pixels;
using tests::Read;
using tests::Write;

class ImageFile : public tests::ImageFiles
{};

TEST_F(ImageFile, WhatIsWrittenIsReadBack)
{
  const Bytes profile = tests::ReadBytes(kAdobe);
  for (const char *name : {"a.png", "a.tif", "a.JPG"}) {
    for (const ColorModel model : {ColorModel::Grayscale, ColorModel::Rgb, ColorModel::Cmyk}) {
      for (const SampleType type : {SampleType::UInt8, SampleType::UInt16}) {
        for (const bool alpha : {false, true}) {
          for (const auto &[width, height] : {std::pair{1u, 1u}, {13u, 7u}, {20'001u, 2u}, {3u, 401u}}) {
            SCOPED_TRACE(testing::Message() << name << " " << NameOfColorModel(model) << " " << static_cast<int>(type)
                                            << (alpha ? " alpha " : " ") << width << " x " << height);
            Pixels image = Picture(width, height, model, type, alpha);
            image.info.horizontalResolution = 300;
            image.info.verticalResolution = 150;
            image.info.orientation = 6;
            if (model == ColorModel::Rgb)
              image.info.profile = profile;
            const ImageKind kind = *ImageKindFromPath(name);
            if (!WhyNotWritable(kind, image.info).empty()) {
              EXPECT_THROW(Write(Path(name), image), ImageError);
              continue;
            }
            Write(Path(name), image, 100);
            const Pixels read = Read(Path(name));
            EXPECT_EQ(read.info.format, image.info.format);
            EXPECT_EQ(read.info.profile, image.info.profile);
            EXPECT_NEAR(read.info.horizontalResolution, 300, 0.02);
            EXPECT_NEAR(read.info.verticalResolution, 150, 0.02);
            EXPECT_EQ(read.info.orientation, 6u);
            EXPECT_EQ(read.alpha, image.alpha);
            if (kind != ImageKind::Jpeg) {
              EXPECT_EQ(read.colours, image.colours);
              continue;
            }
            int worst = 0;
            for (std::size_t i = 0; i < image.colours.size(); ++i)
              worst = std::max(worst, std::abs(read.colours[i] - image.colours[i]));
            EXPECT_LE(worst, 4) << "the best JPEG rounds a few times";
          }
        }
      }
    }
  }
}

/// One way of libtiff to lay out 37 x 21 pixels.
struct TiffLayout
{
  const char *what;
  int photometric, bits, samples, planar, tile, compression;
  int extra = -1;
};

TEST_F(ImageFile, EveryLayoutOfTiffGivesTheSameRows)
{
  constexpr std::uint32_t kWidth = 37;
  constexpr std::uint32_t kHeight = 21;
  const TiffLayout layouts[] = {
    {"strips", PHOTOMETRIC_RGB, 8, 3, PLANARCONFIG_CONTIG, 0, COMPRESSION_NONE},
    {"planes", PHOTOMETRIC_RGB, 8, 3, PLANARCONFIG_SEPARATE, 0, COMPRESSION_LZW},
    {"tiles", PHOTOMETRIC_RGB, 16, 3, PLANARCONFIG_CONTIG, 16, COMPRESSION_LZW},
    {"tiles of planes", PHOTOMETRIC_SEPARATED, 16, 4, PLANARCONFIG_SEPARATE, 32, COMPRESSION_PACKBITS},
    {"white is zero", PHOTOMETRIC_MINISWHITE, 8, 1, PLANARCONFIG_CONTIG, 0, COMPRESSION_NONE},
    {"bits", PHOTOMETRIC_MINISBLACK, 1, 1, PLANARCONFIG_CONTIG, 0, COMPRESSION_NONE},
    {"bits, white is zero, tiles", PHOTOMETRIC_MINISWHITE, 1, 1, PLANARCONFIG_CONTIG, 16, COMPRESSION_NONE},
    {"four bits", PHOTOMETRIC_MINISBLACK, 4, 1, PLANARCONFIG_CONTIG, 0, COMPRESSION_LZW},
    {"palette", PHOTOMETRIC_PALETTE, 8, 1, PLANARCONFIG_CONTIG, 0, COMPRESSION_LZW},
    {"palette of four", PHOTOMETRIC_PALETTE, 2, 1, PLANARCONFIG_CONTIG, 16, COMPRESSION_NONE},
    {"alpha", PHOTOMETRIC_RGB, 8, 4, PLANARCONFIG_CONTIG, 0, COMPRESSION_NONE, EXTRASAMPLE_UNASSALPHA},
    {"alpha in planes", PHOTOMETRIC_MINISBLACK, 16, 2, PLANARCONFIG_SEPARATE, 0, COMPRESSION_LZW,
     EXTRASAMPLE_UNASSALPHA},
    {"alpha multiplied in", PHOTOMETRIC_RGB, 8, 4, PLANARCONFIG_CONTIG, 0, COMPRESSION_NONE, EXTRASAMPLE_ASSOCALPHA},
    {"a spot channel", PHOTOMETRIC_SEPARATED, 8, 5, PLANARCONFIG_CONTIG, 0, COMPRESSION_NONE, EXTRASAMPLE_UNSPECIFIED},
  };
  for (const TiffLayout &layout : layouts) {
    SCOPED_TRACE(layout.what);
    const auto value = [&layout](std::uint32_t x, std::uint32_t y, int sample) -> unsigned {
      const unsigned full = (1u << layout.bits) - 1;
      if (layout.extra == EXTRASAMPLE_ASSOCALPHA) // 51 of 255 opaque: colours can be no more
        return sample == 3 ? 51 : (x + y + static_cast<unsigned>(sample)) % 52;
      return (x * 7 + y * 31 + static_cast<unsigned>(sample) * 77) * (layout.bits == 16 ? 257 : 1) & full;
    };
    const auto palette = [](unsigned entry, int channel) {
      return static_cast<std::uint16_t>((entry * 37 + static_cast<unsigned>(channel) * 50) % 256 * 257);
    };
    const std::string path = Path("layout.tif");
    TIFF *const tiff = TIFFOpen(path.c_str(), "w");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, layout.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, layout.samples);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, layout.photometric);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, layout.planar);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, layout.compression);
    const auto extra = static_cast<std::uint16_t>(layout.extra);
    if (layout.extra >= 0)
      TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
    std::vector<std::uint16_t> maps[3];
    for (int channel = 0; channel < 3; ++channel) {
      for (unsigned entry = 0; entry < 1u << layout.bits; ++entry)
        maps[channel].push_back(palette(entry, channel));
    }
    if (layout.photometric == PHOTOMETRIC_PALETTE)
      TIFFSetField(tiff, TIFFTAG_COLORMAP, maps[0].data(), maps[1].data(), maps[2].data());
    if (layout.tile > 0) {
      TIFFSetField(tiff, TIFFTAG_TILEWIDTH, layout.tile);
      TIFFSetField(tiff, TIFFTAG_TILELENGTH, layout.tile);
    } else {
      TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 4);
    }
    const bool separate = layout.planar == PLANARCONFIG_SEPARATE;
    const auto fill = [&](Bytes &bytes, std::uint32_t left, std::uint32_t top, std::uint32_t columns,
                          std::uint32_t rows, int plane) {
      for (std::uint32_t y = 0; y < rows; ++y) {
        unsigned bits = 0;
        for (std::uint32_t x = 0; x < columns; ++x) {
          for (int sample = separate ? plane : 0; sample < (separate ? plane + 1 : layout.samples); ++sample) {
            const unsigned number = value(left + x, top + y, sample);
            if (layout.bits == 16)
              bytes.push_back(static_cast<std::uint8_t>(number));
            if (layout.bits >= 8) {
              bytes.push_back(static_cast<std::uint8_t>(layout.bits == 16 ? number >> 8 : number));
              continue;
            }
            if (bits % 8 == 0)
              bytes.push_back(0);
            bytes.back() |= static_cast<std::uint8_t>(number << (8 - static_cast<unsigned>(layout.bits) - bits % 8));
            bits += static_cast<unsigned>(layout.bits);
          }
        }
      }
    };
    const auto tile = static_cast<std::uint32_t>(layout.tile);
    for (int plane = 0; plane < (separate ? layout.samples : 1); ++plane) {
      for (std::uint32_t y = 0; y<kHeight; y += tile> 0 ? tile : 1) {
        Bytes bytes;
        if (tile == 0) {
          fill(bytes, 0, y, kWidth, 1, plane);
          TIFFWriteScanline(tiff, bytes.data(), y, static_cast<std::uint16_t>(plane));
        }
        for (std::uint32_t x = 0; tile > 0 && x < kWidth; x += tile) {
          bytes.clear();
          fill(bytes, x, y, tile, tile, plane);
          TIFFWriteTile(tiff, bytes.data(), x, y, 0, static_cast<std::uint16_t>(plane));
        }
      }
    }
    TIFFClose(tiff);

    const Pixels read = Read(path);
    const bool palettes = layout.photometric == PHOTOMETRIC_PALETTE;
    const auto colours = static_cast<int>(read.info.format.ColourChannels());
    const unsigned bytes = read.info.format.BytesPerSample();
    const bool alpha = layout.extra == EXTRASAMPLE_UNASSALPHA || layout.extra == EXTRASAMPLE_ASSOCALPHA;
    EXPECT_EQ(bytes, layout.bits == 16 ? 2u : 1u);
    EXPECT_EQ(read.info.hasAlpha, alpha);
    EXPECT_EQ(read.notes.size(), layout.extra == EXTRASAMPLE_ASSOCALPHA || layout.extra == 0 ? 1u : 0u);
    const unsigned full = (1u << layout.bits) - 1;
    const auto sampleOf = [bytes](const Bytes &from, std::size_t index) -> unsigned {
      return bytes == 1 ? from[index] : from[2 * index] | static_cast<unsigned>(from[2 * index + 1]) << 8;
    };
    int wrong = 0;
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      for (std::uint32_t x = 0; x < kWidth; ++x) {
        const std::size_t pixel = std::size_t{y} * kWidth + x;
        for (int channel = 0; channel < colours; ++channel) {
          unsigned expected = palettes ? palette(value(x, y, 0), channel) / 257u : value(x, y, channel);
          if (layout.photometric == PHOTOMETRIC_MINISWHITE)
            expected = full - expected;
          if (layout.bits < 8 && !palettes)
            expected = expected * 255 / full;
          if (layout.extra == EXTRASAMPLE_ASSOCALPHA)
            expected *= 5;
          wrong +=
            sampleOf(read.colours, pixel * static_cast<unsigned>(colours) + static_cast<unsigned>(channel)) != expected;
        }
        if (alpha)
          wrong += sampleOf(read.alpha, pixel) != value(x, y, colours);
      }
    }
    EXPECT_EQ(wrong, 0);
  }
}

/// 16 x 16 pixels of one colour, written by libjpeg itself.
void WriteJpeg(const std::string &path, const std::vector<std::uint8_t> &pixel, bool adobe, J_COLOR_SPACE stored,
               bool progressive = false)
{
  jpeg_compress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg.err = jpeg_std_error(&errors);
  jpeg_create_compress(&jpeg);
  std::FILE *const file = std::fopen(path.c_str(), "wb");
  jpeg_stdio_dest(&jpeg, file);
  jpeg.image_width = jpeg.image_height = 16;
  jpeg.input_components = static_cast<int>(pixel.size());
  jpeg.in_color_space = pixel.size() == 4 ? JCS_CMYK : JCS_RGB;
  jpeg_set_defaults(&jpeg);
  jpeg_set_colorspace(&jpeg, stored);
  jpeg_set_quality(&jpeg, 100, TRUE);
  jpeg.write_Adobe_marker = adobe ? TRUE : FALSE;
  if (progressive)
    jpeg_simple_progression(&jpeg);
  jpeg_start_compress(&jpeg, TRUE);
  Bytes row;
  for (int i = 0; i < 16; ++i)
    row.insert(row.end(), pixel.begin(), pixel.end());
  for (int i = 0; i < 16; ++i) {
    JSAMPROW rows = row.data();
    jpeg_write_scanlines(&jpeg, &rows, 1);
  }
  jpeg_finish_compress(&jpeg);
  jpeg_destroy_compress(&jpeg);
  std::fclose(file);
}

TEST_F(ImageFile, InksOfJpegAreInvertedWhereAdobesMarkerStands)
{
  const std::vector<std::uint8_t> stored = {255, 200, 100, 0};
  const std::string path = Path("inks.jpg");
  for (const bool adobe : {true, false}) {
    for (const J_COLOR_SPACE space : {JCS_CMYK, JCS_YCCK}) {
      if (!adobe && space == JCS_YCCK)
        continue; // only the marker tells it from CMYK
      WriteJpeg(path, stored, adobe, space);
      const Pixels read = Read(path);
      ASSERT_EQ(read.info.format.model, ColorModel::Cmyk);
      for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(read.colours[i], adobe ? 255 - stored[i] : stored[i], 2) << adobe << " " << space << " " << i;
    }
  }
  // What we write is inverted and marked, too.
  Pixels image = Picture(16, 16, ColorModel::Cmyk, SampleType::UInt8, false);
  Write(path, image, 100);
  const Bytes bytes = tests::ReadBytes(path);
  EXPECT_NE(std::string(bytes.begin(), bytes.end()).find("Adobe"), std::string::npos);
}

/// libpng's own writer: `rows` as the format has them, and what is to stand before them.
template <class Before>
void WritePng(const std::string &path, std::uint32_t side, int bits, int type, int interlace, const Bytes &row,
              Before before)
{
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  std::FILE *const file = std::fopen(path.c_str(), "wb");
  png_init_io(png, file);
  png_set_IHDR(png, info, side, side, bits, type, interlace, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  before(png, info);
  png_write_info(png, info);
  const int passes = png_set_interlace_handling(png);
  for (int pass = 0; pass < passes; ++pass) {
    for (std::uint32_t y = 0; y < side; ++y)
      png_write_row(png, row.data());
  }
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  std::fclose(file);
}

TEST_F(ImageFile, KindsOfPngAreExpanded)
{
  const std::string path = Path("kind.png");
  const auto nothing = [](png_structp, png_infop) {};
  WritePng(path, 4, 2, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, {0b00011011}, nothing);
  EXPECT_EQ(Read(path).colours, (Bytes{0, 85, 170, 255, 0, 85, 170, 255, 0, 85, 170, 255, 0, 85, 170, 255}));

  WritePng(path, 2, 1, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_ADAM7, {0b01000000}, [](png_structp png, png_infop info) {
    const png_color colours[] = {{1, 2, 3}, {4, 5, 6}};
    const png_byte alpha[] = {7};
    png_set_PLTE(png, info, colours, 2);
    png_set_tRNS(png, info, alpha, 1, nullptr);
    png_set_sRGB(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
  });
  const Pixels palette = Read(path);
  EXPECT_EQ(palette.colours, (Bytes{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(palette.alpha, (Bytes{7, 255, 7, 255}));
  EXPECT_TRUE(palette.info.isSrgb);

  WritePng(path, 1, 16, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC},
           [](png_structp png, png_infop info) { png_set_gAMA(png, info, 0.5); });
  const Pixels deep = Read(path);
  EXPECT_EQ(deep.colours, (Bytes{0x34, 0x12, 0x78, 0x56, 0xBC, 0x9A}));
  EXPECT_FALSE(deep.info.isSrgb);
  EXPECT_THAT(deep.notes, testing::ElementsAre(HasSubstr("gAMA")));
}

TEST_F(ImageFile, PngHasTheWholeProfileOrThereIsAnError)
{
  Pixels image = Picture(2, 2, ColorModel::Rgb, SampleType::UInt8, false);
  image.info.profile = tests::ReadBytes(kSrgb);
  image.info.profile[67] = 7; // an intent that there is not: odd, and no obstacle
  Write(Path("odd.png"), image);
  EXPECT_EQ(Read(Path("odd.png")).info.profile, image.info.profile);
  image.info.profile.push_back(0);
  EXPECT_THROW(Write(Path("unfit.png"), image), ImageError);
}

TEST_F(ImageFile, WhatMustBeHeldWholeIsBounded)
{
  WritePng(Path("held.png"), 64, 8, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_ADAM7, Bytes(64), [](png_structp, png_infop) {});
  WriteJpeg(Path("held.jpg"), {1, 2, 3}, false, JCS_YCbCr, true);
  for (const char *name : {"held.png", "held.jpg"}) {
    EXPECT_NO_THROW(OpenImage(Path(name), 4096)) << name;
    EXPECT_THROW(OpenImage(Path(name), 500), ImageError) << name;
  }
}

/// Whether a file can be read, a hundred rows at most, without an error and without a note.
bool ReadsWhole(const std::string &path)
{
  try {
    const auto reader = OpenImage(path, 1 << 20);
    const ImageInfo &info = reader->Info();
    Bytes colours(info.ColourBytesPerRow());
    Bytes alpha(info.AlphaBytesPerRow() + 1);
    for (std::uint32_t row = 0; row < std::min(info.height, 100u); ++row)
      reader->ReadRows(1, colours.data(), alpha.data());
    return reader->Notes().empty();
  } catch (const ImageError &error) {
    EXPECT_STRNE(error.what(), "");
    return false;
  }
}

TEST_F(ImageFile, CutAndDamagedFilesAreErrors)
{
  for (const char *name : {"cut.png", "cut.jpg", "cut.tif"}) {
    Pixels image = Picture(40, 30, ColorModel::Rgb, SampleType::UInt8, false);
    image.info.profile = tests::ReadBytes(kAdobe);
    Write(Path(name), image);
    const Bytes whole = tests::ReadBytes(Path(name));
    ASSERT_TRUE(ReadsWhole(Path(name)));
    for (std::size_t size = 0; size < whole.size(); size += size < 100 ? 1 : 61) {
      const std::string path = folder_.Write(std::string("part-") + name,
                                             Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
      EXPECT_FALSE(ReadsWhole(path)) << name << " cut to " << size << " of " << whole.size();
    }
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
      Bytes bytes = whole;
      for (int j = 0; j < 1 + i % 4; ++j)
        bytes[i % 2 == 0 ? random() % bytes.size() : random() % std::min<std::size_t>(bytes.size(), 100)] =
          static_cast<std::uint8_t>(random());
      ReadsWhole(folder_.Write(std::string("damaged-") + name, bytes));
    }
  }
}

TEST_F(ImageFile, ADiskThatFailsLeavesTheOldFile)
{
  for (const char *name : {"full.png", "full.jpg", "full.tif"}) {
    for (const ZelUtl::FileStep failing :
         {ZelUtl::FileStep::Make, ZelUtl::FileStep::Write, ZelUtl::FileStep::Flush, ZelUtl::FileStep::Rename})
    {
      SCOPED_TRACE(testing::Message() << name << " " << static_cast<int>(failing));
      const tests::TemporaryFolder folder;
      const std::string path = folder.Write(name, {'o', 'l', 'd'});
      ZelUtl::SetFileFaults([failing](ZelUtl::FileStep step) { return step == failing ? ENOSPC : 0; });
      std::string reason;
      try {
        Write(path, Picture(300, 400, ColorModel::Rgb, SampleType::UInt8, false));
      } catch (const ImageError &error) {
        reason = error.what();
      }
      ZelUtl::SetFileFaults({});
      EXPECT_THAT(reason, HasSubstr("No space left on device"));
      EXPECT_EQ(tests::ReadBytes(path), (Bytes{'o', 'l', 'd'}));
      EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
    }
  }
}

/// What the library itself makes of the pixels.
Bytes Converted(const Pixels &image, const std::string &from, const std::string &to, const PixelFormat &format,
                RenderingIntent intent, bool blackPoint)
{
  TransformOptions options;
  options.intent = intent;
  options.blackPointCompensation = blackPoint;
  const bool isLarge = std::uint64_t{image.info.width} * image.info.height >= BakingColorTransform::kPixelsBeforeBaking;
  options.precision = isLarge ? TransformPrecision::Baked : TransformPrecision::Exact;
  options.source = image.info.format;
  options.destination = format;
  const auto transform = ColorManagementSystem::Get(ColorManagementModule::LCMS)
                           ->CreateTransform(*tests::ProfileAt(from), *tests::ProfileAt(to), options);
  return tests::Converted(image, format,
                          [&](const ColorData &source, ColorData &made) { return transform->Convert(source, made); });
}

TEST_F(ImageFile, TheToolConvertsAsTheLibraryDoesAndEmbedsTheProfile)
{
  struct Row
  {
    const char *in, *out;
    std::uint32_t width, height;
    ColorModel model;
    SampleType type;
    bool alpha;
    std::string embedded, to, options;
    RenderingIntent intent = RenderingIntent::RelativeColorimetric;
    bool blackPoint = true;
    SampleType outType = SampleType::UInt8;
  };
  const Row rows[] = {
    {"a.png", "b.tif", 1, 1, ColorModel::Rgb, SampleType::UInt8, false, kAdobe, kPress, ""},
    {"a.png", "b.tiff", 31, 17, ColorModel::Rgb, SampleType::UInt8, true, kAdobe, kPress, "--no-bpc",
     RenderingIntent::RelativeColorimetric, false},
    {"a.tif", "b.png", 50'000, 3, ColorModel::Cmyk, SampleType::UInt16, true, kPress, kSrgb, "--intent perceptual",
     RenderingIntent::Perceptual, true, SampleType::UInt16},
    {"a.tif", "b.tif", 300, 1200, ColorModel::Rgb, SampleType::UInt8, false, kSrgb, kPress, // several bands
     "--depth 16 --intent absolute", RenderingIntent::AbsoluteColorimetric, false, SampleType::UInt16},
    {"a.tif", "b.png", 701, 700, ColorModel::Rgb, SampleType::UInt16, false, kAdobe, kGray, "--depth 8"},
    {"a.jpg", "b.png", 64, 64, ColorModel::Cmyk, SampleType::UInt8, false, kPress, kSrgb, ""},
    {"a.png", "b.png", 13, 11, ColorModel::Grayscale, SampleType::UInt16, true, kGray, kSrgb, "",
     RenderingIntent::RelativeColorimetric, true, SampleType::UInt16},
  };
  for (const Row &row : rows) {
    SCOPED_TRACE(std::string(row.in) + " " + std::to_string(row.width) + " " + row.options);
    Pixels image = Picture(row.width, row.height, row.model, row.type, row.alpha);
    image.info.profile = tests::ReadBytes(row.embedded);
    image.info.horizontalResolution = image.info.verticalResolution = 72;
    Write(Path(row.in), image);
    image = Read(Path(row.in)); // as JPEG has it
    const std::string intent = row.options.find("--intent") == std::string::npos ? " --intent relative" : "";
    const auto run =
      Run("image " + Path(row.in) + " -o " + Path(row.out) + " --json --to '" + row.to + "' " + row.options + intent);
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(json::parse(run.output)["input"]["profileOrigin"], "embedded");
    const Pixels written = Read(Path(row.out));
    EXPECT_EQ(written.info.profile, tests::ReadBytes(row.to));
    EXPECT_NEAR(written.info.horizontalResolution, 72, 0.02);
    EXPECT_EQ(written.info.format.type, row.outType);
    EXPECT_TRUE(written.colours ==
                Converted(image, row.embedded, row.to, written.info.format, row.intent, row.blackPoint));
    EXPECT_EQ(written.alpha, image.alpha);
  }
  ExpectNoProfileIsLeft();
}

TEST_F(ImageFile, TheImportPolicyDecidesAndTheToolSaysSo)
{
  Pixels image = Picture(5, 4, ColorModel::Rgb, SampleType::UInt8, false);
  const auto convert = [&](const Pixels &pixels, const std::string &options = "") {
    Write(Path("in.png"), pixels);
    auto result =
      Run("image " + Path("in.png") + " -o " + Path("out.png") + " --json --to '" + kAdobe + "' " + options);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    return std::pair(json::parse(result.output), result.errors);
  };
  auto [untagged, said] = convert(image);
  EXPECT_EQ(untagged["input"]["profileOrigin"], "assumed");
  EXPECT_THAT(said, HasSubstr("no profile; assumed is sRGB"));
  EXPECT_EQ(convert(image, "--from '" + kSrgb + "'").first["input"]["profileOrigin"], "given");
  image.info.isSrgb = true;
  EXPECT_THAT(convert(image).first["input"]["profileOrigin"], HasSubstr("sRGB"));

  // Broken ones, in a format whose library looks into none.
  image.info.isSrgb = false;
  for (const Bytes &broken : {Bytes(300, 7), tests::ReadBytes(kPress), tests::NamedProfile("Nothing in it")}) {
    image.info.profile = broken;
    Write(Path("in.tif"), image);
    const auto result = Run("image " + Path("in.tif") + " -o " + Path("out.tif") + " --to '" + kAdobe + "'");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_THAT(result.errors, testing::AllOf(HasSubstr("ignored"), HasSubstr("assumed is sRGB")));
    EXPECT_EQ(Read(Path("out.tif")).info.profile, tests::ReadBytes(kAdobe));
  }
}

TEST_F(ImageFile, JpegIsLaidOnWhiteWhereItWasTransparent)
{
  Pixels image = Picture(16, 16, ColorModel::Rgb, SampleType::UInt16, true);
  std::fill(image.alpha.begin(), image.alpha.end(), std::uint8_t{0});
  Write(Path("in.png"), image);
  for (const auto &[profile, white] : {std::pair{kSrgb, 255}, {kPress, 0}}) {
    const auto result = Run("image " + Path("in.png") + " -o " + Path("out.jpg") + " --to '" + profile + "'");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.errors, HasSubstr("laid on white"));
    EXPECT_THAT(Read(Path("out.jpg")).colours, testing::Each(white));
  }
}

TEST_F(ImageFile, WhatCannotBeDoneIsSaidAndTheOldFileStays)
{
  Write(Path("in.tif"), Picture(40, 300, ColorModel::Rgb, SampleType::UInt8, false));
  folder_.Write("garbage.png", {0x89, 'P', 'N', 'G', 1, 2, 3});
  folder_.Write("text.tif", {'h', 'i'});
  WriteCut("cut.jpg");
  const std::string to = " --to '" + kSrgb + "'";
  const tests::Refusal rows[] = {
    {Path("cut.jpg") + " -o " + Path("out.tif") + to, 3, "ends too early"},
    {Path("garbage.png") + " -o " + Path("out.png") + to, 3, "PNG"},
    {Path("text.tif") + " -o " + Path("out.png") + to, 3, "neither PNG nor JPEG nor TIFF"},
    {Path("nothing.tif") + " -o " + Path("out.png") + to, 3, "No such file"},
    {folder_.Path() + " -o " + Path("out.png") + to, 3, "a folder"},
    {Path("in.tif") + " -o " + Path("none/out.png") + to, 3, "No such file"},
    {Path("in.tif") + " -o " + Path("out.gif") + to, 2, ".png"},
    {Path("in.tif") + " -o " + Path("in.tif") + to, 2, "both read and written"},
    {Path("in.tif") + " -o " + Path("out.png") + " --to '" + kPress + "'", 2, "no CMYK"},
    {Path("in.tif") + " -o " + Path("out.jpg") + " --depth 16" + to, 2, "8 bits only"},
    {Path("in.tif") + " -o " + Path("out.tif") + " --to 'Hexachrome.icc'", 2, "neither RGB"},
    {Path("in.tif") + " -o " + Path("out.tif") + " --from '" + kPress + "'" + to, 2, "not for RGB"},
  };
  for (const tests::Refusal &row : rows)
    ExpectRefused("image ", row, {"out.png", "out.tif", "out.jpg"});
}

} // namespace
