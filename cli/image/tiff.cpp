// TIFF, by libtiff: TIFF 6.0 with its technical notes, BigTIFF, and the profile's tag 34675 (ICC.1:2022 annex B.3).

#include "cli/image/formats.h"

#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace cli {

namespace {

using ColorSystem::ColorModel;
using ColorSystem::SampleType;

constexpr double kCentimetresPerInch = 2.54;
constexpr std::size_t kStripBytes = std::size_t{256} << 10;
/// Beyond it the offsets of a classic file may not suffice.
constexpr std::uint64_t kMostClassicBytes = std::uint64_t{3} << 30;

/// A file as libtiff sees it, for reading or for writing, with its own place in it.
struct Stream
{
  const ZelUtl::RegularFile *source = nullptr;
  ZelUtl::ReplacementFile *target = nullptr;
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  std::string reason;       ///< the first error
  bool lostProfile = false; ///< an embedded profile cannot be read
};

tmsize_t OnRead(thandle_t handle, void *bytes, tmsize_t wanted)
{
  auto &stream = *static_cast<Stream *>(handle);
  const std::uint64_t left = stream.size - std::min(stream.size, stream.offset);
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(static_cast<std::uint64_t>(wanted), left));
  const std::span span(static_cast<std::uint8_t *>(bytes), count);
  const bool read =
    stream.source != nullptr ? stream.source->ReadAt(stream.offset, span) : stream.target->ReadAt(stream.offset, span);
  if (!read)
    return -1;
  stream.offset += count;
  return static_cast<tmsize_t>(count);
}

tmsize_t OnWrite(thandle_t handle, void *bytes, tmsize_t count)
{
  auto &stream = *static_cast<Stream *>(handle);
  const std::span span(static_cast<const std::uint8_t *>(bytes), static_cast<std::size_t>(count));
  std::string reason;
  if (stream.target == nullptr || !stream.target->WriteAt(stream.offset, span, reason)) {
    stream.reason = reason;
    return -1;
  }
  stream.offset += span.size();
  stream.size = std::max(stream.size, stream.offset);
  return count;
}

toff_t OnSeek(thandle_t handle, toff_t offset, int whence)
{
  auto &stream = *static_cast<Stream *>(handle);
  stream.offset = offset + (whence == SEEK_CUR ? stream.offset : whence == SEEK_END ? stream.size : 0);
  return stream.offset;
}

int OnClose(thandle_t /*handle*/)
{
  return 0;
}

toff_t OnSize(thandle_t handle)
{
  return static_cast<Stream *>(handle)->size;
}

int OnError(TIFF * /*tiff*/, void *data, const char * /*place*/, const char *format, std::va_list arguments)
{
  auto &stream = *static_cast<Stream *>(data);
  if (stream.reason.empty()) {
    std::array<char, 256> text{};
    std::vsnprintf(text.data(), text.size(), format, arguments);
    stream.reason = text.data();
  }
  return 1;
}

/// libtiff drops what it cannot read of a directory with a warning.
int OnWarning(TIFF * /*tiff*/, void *data, const char * /*place*/, const char *format, std::va_list arguments)
{
  std::array<char, 256> text{};
  std::vsnprintf(text.data(), text.size(), format, arguments);
  if (std::strstr(text.data(), "ICC") != nullptr)
    static_cast<Stream *>(data)->lostProfile = true;
  return 1;
}

struct Close
{
  void operator()(TIFF *tiff) const { TIFFClose(tiff); }
};
using Handle = std::unique_ptr<TIFF, Close>;

Handle Open(Stream &stream, const char *mode, std::uint64_t mostHeldBytes)
{
  TIFFOpenOptions *const options = TIFFOpenOptionsAlloc();
  if (options == nullptr)
    return nullptr;
  TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(mostHeldBytes));
  TIFFOpenOptionsSetErrorHandlerExtR(options, OnError, &stream);
  TIFFOpenOptionsSetWarningHandlerExtR(options, OnWarning, &stream);
  Handle tiff(
    TIFFClientOpenExt("image", mode, &stream, OnRead, OnWrite, OnSeek, OnClose, OnSize, nullptr, nullptr, options));
  TIFFOpenOptionsFree(options);
  return tiff;
}

[[noreturn]] void Fail(const Stream &stream)
{
  throw ImageError("TIFF: " + (stream.reason.empty() ? std::string("the file is damaged") : stream.reason));
}

template <class Number>
Number Get(TIFF *tiff, std::uint32_t tag, Number otherwise)
{
  Number value = otherwise;
  return TIFFGetFieldDefaulted(tiff, tag, &value) != 0 ? value : otherwise;
}

// --- Reading
// ----------------------------------------------------------------------------------------------------------

/// How the samples of a file lie, before they are brought into the form of a reader's rows.
struct Layout
{
  unsigned bits = 1;
  unsigned samples = 1; ///< to a pixel, alpha and what nobody knows included
  unsigned colours = 1; ///< of them
  int alpha = -1;       ///< its place behind the colours; -1 for none
  bool associated = false;
  bool whiteIsZero = false;
  bool palette = false;
  bool planar = false; ///< one plane to a sample
  bool tiled = false;
  std::uint32_t tileWidth = 0;
  std::uint32_t tileHeight = 0;

  unsigned PartSamples() const { return planar ? 1 : samples; }
  unsigned Parts() const { return planar ? samples : 1; }
};

struct ColourKind
{
  std::uint16_t photometric;
  ColorModel model;
  unsigned colours;
};

constexpr ColourKind kColourKinds[] = {
  {PHOTOMETRIC_MINISWHITE, ColorModel::Grayscale, 1}, {PHOTOMETRIC_MINISBLACK, ColorModel::Grayscale, 1},
  {PHOTOMETRIC_PALETTE, ColorModel::Rgb, 1},          {PHOTOMETRIC_RGB, ColorModel::Rgb, 3},
  {PHOTOMETRIC_SEPARATED, ColorModel::Cmyk, 4},       {PHOTOMETRIC_YCBCR, ColorModel::Rgb, 3},
};

/// The sample of a row in one part of a file: `index` counts from the row's first.
unsigned SampleAt(const std::uint8_t *row, std::size_t index, unsigned bits)
{
  if (bits == 8)
    return row[index];
  if (bits == 16) {
    std::uint16_t sample;
    std::memcpy(&sample, row + 2 * index, sizeof sample);
    return sample;
  }
  const std::size_t bit = index * bits;
  return row[bit / 8] >> (8 - bits - bit % 8) & ((1u << bits) - 1u);
}

void Store(std::uint8_t *samples, std::size_t index, unsigned bytesPerSample, unsigned value)
{
  if (bytesPerSample == 1) {
    samples[index] = static_cast<std::uint8_t>(value);
    return;
  }
  const auto sample = static_cast<std::uint16_t>(value);
  std::memcpy(samples + 2 * index, &sample, sizeof sample);
}

class TiffReader final : public ImageReader
{
public:
  TiffReader(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes) : file_(std::move(file))
  {
    OpenPart(mostHeldBytes);
    TIFF *const tiff = parts_[0].tiff.get();
    Describe(tiff);
    ReadLayout(tiff);
    if (layout_.palette)
      ReadPalette(tiff);
    // Each plane is read from its own first row to its last, so that none is decoded twice.
    while (parts_.size() < layout_.Parts())
      OpenPart(mostHeldBytes);
    Reserve(mostHeldBytes);
    if (TIFFLastDirectory(tiff) == 0)
      notes_.emplace_back("only the first of its pages was read");
  }

  void ReadRows(std::uint32_t count, std::uint8_t *colours, std::uint8_t *alpha) override
  {
    for (std::uint32_t i = 0; i < count; ++i, ++row_) {
      for (std::size_t part = 0; part < parts_.size(); ++part)
        ReadPart(part);
      Unpack(colours, alpha);
      colours += info_.ColourBytesPerRow();
      alpha += info_.AlphaBytesPerRow();
    }
  }

private:
  /// One way into the file, and the rows that came out of it: one row, or a row of tiles.
  struct Part
  {
    std::unique_ptr<Stream> stream;
    Handle tiff;
    std::vector<std::uint8_t> rows;
    const std::uint8_t *row = nullptr; ///< the one that is due
  };

  void OpenPart(std::uint64_t mostHeldBytes)
  {
    Part part;
    part.stream = std::make_unique<Stream>();
    part.stream->source = &file_;
    part.stream->size = file_.Stamp().size;
    part.tiff = Open(*part.stream, "rm", mostHeldBytes);
    if (part.tiff == nullptr)
      Fail(*part.stream);
    if (Get<std::uint16_t>(part.tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_NONE) == COMPRESSION_JPEG)
      TIFFSetField(part.tiff.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    parts_.push_back(std::move(part));
  }

  void Describe(TIFF *tiff)
  {
    info_.width = Get<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH, 0);
    info_.height = Get<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH, 0);
    CheckSize(info_.width, info_.height);
    std::uint32_t size = 0;
    const std::uint8_t *profile = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &size, &profile) != 0 && size > 0) {
      if (size > kMostProfileBytes)
        notes_.emplace_back("the embedded profile is too large and was ignored");
      else
        info_.profile.assign(profile, profile + size);
    } else if (parts_[0].stream->lostProfile) {
      notes_.emplace_back("the embedded profile is damaged and was ignored");
    }
    const auto x = static_cast<double>(Get<float>(tiff, TIFFTAG_XRESOLUTION, 0));
    const auto y = static_cast<double>(Get<float>(tiff, TIFFTAG_YRESOLUTION, 0));
    const auto unit = Get<std::uint16_t>(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    if (std::isfinite(x) && std::isfinite(y) && x > 0 && y > 0 && unit != RESUNIT_NONE) {
      const double perInch = unit == RESUNIT_CENTIMETER ? kCentimetresPerInch : 1.0;
      info_.horizontalResolution = x * perInch;
      info_.verticalResolution = y * perInch;
    }
    const auto orientation = Get<std::uint16_t>(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    if (orientation >= ORIENTATION_TOPLEFT && orientation <= ORIENTATION_LEFTBOT)
      info_.orientation = orientation;
  }

  void ReadLayout(TIFF *tiff)
  {
    std::uint16_t photometric = 0;
    if (TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric) == 0)
      throw ImageError("TIFF: it does not say what its colours are");
    const auto *const kind = std::find_if(std::begin(kColourKinds), std::end(kColourKinds),
                                          [&](const ColourKind &row) { return row.photometric == photometric; });
    const auto compression = Get<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    layout_.samples = Get<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    layout_.planar = layout_.samples > 1 &&
                     Get<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    const bool undone = compression == COMPRESSION_JPEG && !layout_.planar; // into RGB, by libtiff
    if (kind == std::end(kColourKinds) || (photometric == PHOTOMETRIC_YCBCR && !undone)) {
      throw ImageError("TIFF: only gray, RGB, CMYK and palettes are read, and this is photometric interpretation " +
                       std::to_string(photometric));
    }
    if (kind->model == ColorModel::Cmyk && Get<std::uint16_t>(tiff, TIFFTAG_INKSET, INKSET_CMYK) != INKSET_CMYK)
      throw ImageError("TIFF: its inks are not CMYK");
    layout_.bits = Get<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout_.colours = kind->colours;
    layout_.palette = photometric == PHOTOMETRIC_PALETTE;
    layout_.whiteIsZero = photometric == PHOTOMETRIC_MINISWHITE;
    const bool few = layout_.colours == 1 && (layout_.bits == 1 || layout_.bits == 2 || layout_.bits == 4);
    const auto sampleFormat = Get<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (!(few || layout_.bits == 8 || layout_.bits == 16) || (layout_.palette && layout_.bits == 16) ||
        (sampleFormat != SAMPLEFORMAT_UINT && sampleFormat != SAMPLEFORMAT_VOID))
      throw ImageError("TIFF: samples of this kind, of " + std::to_string(layout_.bits) + " bits, are not read");
    constexpr unsigned kMostSamples = 16;
    if (layout_.samples < layout_.colours || layout_.samples > kMostSamples)
      throw ImageError("TIFF: " + std::to_string(layout_.samples) + " samples to a pixel do not fit its colours");
    info_.format = {kind->model, layout_.bits == 16 ? SampleType::UInt16 : SampleType::UInt8};
    ReadAlphaKind(tiff);
    layout_.tiled = TIFFIsTiled(tiff) != 0;
    if (layout_.tiled) {
      layout_.tileWidth = Get<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH, 0);
      layout_.tileHeight = Get<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0);
      if (layout_.tileWidth == 0 || layout_.tileHeight == 0)
        throw ImageError("TIFF: tiles without pixels");
    }
  }

  void ReadAlphaKind(TIFF *tiff)
  {
    std::uint16_t count = 0;
    const std::uint16_t *kinds = nullptr;
    if (TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 0)
      count = 0;
    const unsigned extra = layout_.samples - layout_.colours;
    for (unsigned i = 0; i < std::min<unsigned>(count, extra) && layout_.alpha < 0; ++i) {
      if (kinds[i] == EXTRASAMPLE_ASSOCALPHA || kinds[i] == EXTRASAMPLE_UNASSALPHA) {
        layout_.alpha = static_cast<int>(layout_.colours + i);
        layout_.associated = kinds[i] == EXTRASAMPLE_ASSOCALPHA;
      }
    }
    if (layout_.palette || layout_.bits < 8)
      layout_.alpha = -1;
    info_.hasAlpha = layout_.alpha >= 0;
    layout_.associated = layout_.associated && info_.hasAlpha;
    if (layout_.associated)
      notes_.emplace_back("its colours were multiplied by their alpha, which was divided out");
    if (extra > (info_.hasAlpha ? 1u : 0u))
      notes_.emplace_back("samples beside its colours, such as spot channels, were ignored");
  }

  void ReadPalette(TIFF *tiff)
  {
    std::array<const std::uint16_t *, 3> map{};
    if (TIFFGetField(tiff, TIFFTAG_COLORMAP, &map[0], &map[1], &map[2]) == 0)
      throw ImageError("TIFF: its palette is missing");
    // Of 16 bits, but old programs wrote 8.
    const std::size_t entries = std::size_t{1} << layout_.bits;
    const bool narrow = std::all_of(map.begin(), map.end(), [entries](const std::uint16_t *channel) {
      return std::all_of(channel, channel + entries, [](std::uint16_t value) { return value < 256; });
    });
    for (std::size_t i = 0; i < entries; ++i) {
      for (std::size_t channel = 0; channel < 3; ++channel)
        palette_[i][channel] = static_cast<std::uint8_t>(narrow ? map[channel][i] : (map[channel][i] + 128u) / 257u);
    }
  }

  void Reserve(std::uint64_t mostHeldBytes)
  {
    TIFF *const first = parts_[0].tiff.get();
    // What libtiff states follows from the layout, unless the file's tags contradict each other.
    const std::uint64_t samples =
      std::uint64_t{layout_.tiled ? layout_.tileWidth : info_.width} * layout_.PartSamples();
    const std::uint64_t rowBytes = layout_.tiled ? TIFFTileRowSize64(first) : TIFFScanlineSize64(first);
    if (rowBytes < (samples * layout_.bits + 7) / 8)
      Fail(*parts_[0].stream);
    std::uint64_t bytes = rowBytes;
    if (layout_.tiled) {
      tileBytes_ = TIFFTileSize64(first);
      if (tileBytes_ < rowBytes * layout_.tileHeight)
        Fail(*parts_[0].stream);
      bytes = tileBytes_ * TilesAcross() + rowBytes * TilesAcross();
    }
    CheckHeld(bytes * parts_.size(), mostHeldBytes, layout_.tiled ? "a row of tiles" : "a row");
    tileRowBytes_ = static_cast<std::size_t>(rowBytes);
    for (Part &part : parts_) {
      // The file may have been changed between two ways into it.
      TIFF *const tiff = part.tiff.get();
      if ((TIFFIsTiled(tiff) != 0) != layout_.tiled || TIFFScanlineSize64(tiff) != TIFFScanlineSize64(first) ||
          (layout_.tiled && (TIFFTileSize64(tiff) != tileBytes_ || TIFFTileRowSize64(tiff) != rowBytes)))
        Fail(*part.stream);
      part.rows.resize(static_cast<std::size_t>(layout_.tiled ? tileBytes_ * TilesAcross() : rowBytes));
    }
    if (layout_.tiled)
      assembled_.resize(parts_.size() * TilesAcross() * tileRowBytes_);
  }

  std::size_t TilesAcross() const { return (std::size_t{info_.width} + layout_.tileWidth - 1) / layout_.tileWidth; }

  /// Makes `row` of a part that of the row that is due.
  void ReadPart(std::size_t number)
  {
    Part &part = parts_[number];
    const auto plane = static_cast<std::uint16_t>(number);
    if (!layout_.tiled) {
      if (TIFFReadScanline(part.tiff.get(), part.rows.data(), row_, plane) < 0 || !part.stream->reason.empty())
        Fail(*part.stream);
      part.row = part.rows.data();
      return;
    }
    const std::uint32_t rowInTile = row_ % layout_.tileHeight;
    for (std::size_t tile = 0; rowInTile == 0 && tile < TilesAcross(); ++tile) {
      const auto left = static_cast<std::uint32_t>(tile * layout_.tileWidth);
      std::uint8_t *const pixels = part.rows.data() + tile * tileBytes_;
      const auto index = TIFFComputeTile(part.tiff.get(), left, row_, 0, plane);
      if (TIFFReadEncodedTile(part.tiff.get(), index, pixels, static_cast<tmsize_t>(tileBytes_)) < 0 ||
          !part.stream->reason.empty())
        Fail(*part.stream);
    }
    // A tile is a multiple of 16 wide, so that its rows end at whole bytes and can be put side by side.
    if (layout_.tileWidth % 8 != 0 && layout_.bits < 8)
      Fail(*part.stream);
    std::uint8_t *const row = assembled_.data() + number * TilesAcross() * tileRowBytes_;
    for (std::size_t tile = 0; tile < TilesAcross(); ++tile)
      std::copy_n(part.rows.data() + tile * tileBytes_ + rowInTile * tileRowBytes_, tileRowBytes_,
                  row + tile * tileRowBytes_);
    part.row = row;
  }

  unsigned Sample(std::size_t pixel, unsigned sample) const
  {
    return layout_.planar ? SampleAt(parts_[sample].row, pixel, layout_.bits)
                          : SampleAt(parts_[0].row, pixel * layout_.samples + sample, layout_.bits);
  }

  void Unpack(std::uint8_t *colours, std::uint8_t *alpha) const
  {
    const unsigned bytes = info_.format.BytesPerSample();
    const bool plain = !layout_.planar && layout_.samples == layout_.colours && layout_.bits >= 8 && !layout_.palette &&
                       !layout_.whiteIsZero;
    if (plain) {
      std::copy_n(parts_[0].row, info_.ColourBytesPerRow(), colours);
      return;
    }
    const unsigned fullScale = (1u << layout_.bits) - 1;
    const unsigned spread = layout_.bits < 8 ? 255 / fullScale : 1; // 1, 2 and 4 bits to 8
    for (std::size_t pixel = 0; pixel < info_.width; ++pixel) {
      if (layout_.palette) {
        std::copy_n(palette_[Sample(pixel, 0)].data(), 3, colours + 3 * pixel);
        continue;
      }
      const unsigned opacity = layout_.alpha < 0 ? fullScale : Sample(pixel, static_cast<unsigned>(layout_.alpha));
      for (unsigned channel = 0; channel < layout_.colours; ++channel) {
        unsigned value = Sample(pixel, channel);
        if (layout_.associated) // what is invisible has no colour that could be told
          value = opacity == 0 ? 0 : std::min(fullScale, (value * fullScale + opacity / 2) / opacity);
        if (layout_.whiteIsZero)
          value = fullScale - value;
        Store(colours, pixel * layout_.colours + channel, bytes, value * spread);
      }
      if (layout_.alpha >= 0)
        Store(alpha, pixel, bytes, opacity);
    }
  }

  ZelUtl::RegularFile file_;
  Layout layout_;
  std::vector<Part> parts_; // one, or one to a plane
  std::array<std::array<std::uint8_t, 3>, 256> palette_{};
  std::size_t tileRowBytes_ = 0;
  std::uint64_t tileBytes_ = 0;
  std::vector<std::uint8_t> assembled_; // of tiles: the row that is due, of each part
  std::uint32_t row_ = 0;
};

// --- Writing
// ----------------------------------------------------------------------------------------------------------

class TiffWriter final : public ImageWriter
{
public:
  TiffWriter(ZelUtl::ReplacementFile file, const ImageInfo &info) : file_(std::move(file)), info_(info)
  {
    stream_.target = &file_;
    const std::uint64_t rowBytes = info.ColourBytesPerRow() + info.AlphaBytesPerRow();
    const bool big = rowBytes * info.height + info.profile.size() > kMostClassicBytes;
    tiff_ = Open(stream_, big ? "w8" : "w", kMostHeldBytes);
    if (tiff_ == nullptr)
      Fail(stream_);
    Describe();
    row_.resize(static_cast<std::size_t>(rowBytes));
  }

  void WriteRows(std::uint32_t count, const std::uint8_t *colours, const std::uint8_t *alpha) override
  {
    for (std::uint32_t i = 0; i < count; ++i) {
      // libtiff makes its differences between neighbours in place.
      if (info_.hasAlpha) {
        JoinAlpha(info_.width, info_.format.ColourChannels(), info_.format.BytesPerSample(), colours, alpha,
                  row_.data());
      } else {
        std::copy_n(colours, row_.size(), row_.data());
      }
      if (TIFFWriteScanline(tiff_.get(), row_.data(), rowsWritten_++, 0) < 0 || !stream_.reason.empty())
        Fail(stream_);
      colours += info_.ColourBytesPerRow();
      alpha += info_.AlphaBytesPerRow();
    }
  }

  void Finish() override
  {
    if (TIFFFlush(tiff_.get()) == 0 || !stream_.reason.empty())
      Fail(stream_);
    tiff_.reset();
    if (!stream_.reason.empty())
      Fail(stream_);
    std::string reason;
    if (!file_.Commit(reason))
      throw ImageError(reason);
  }

private:
  void Describe()
  {
    TIFF *const tiff = tiff_.get();
    const unsigned colours = info_.format.ColourChannels();
    bool set = true;
    const auto put = [&set, tiff](std::uint32_t tag, auto... values) {
      set = TIFFSetField(tiff, tag, values...) != 0 && set;
    };
    put(TIFFTAG_IMAGEWIDTH, info_.width);
    put(TIFFTAG_IMAGELENGTH, info_.height);
    put(TIFFTAG_BITSPERSAMPLE, static_cast<int>(8 * info_.format.BytesPerSample()));
    put(TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(colours + (info_.hasAlpha ? 1 : 0)));
    put(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    put(TIFFTAG_PHOTOMETRIC, info_.format.model == ColorModel::Cmyk  ? PHOTOMETRIC_SEPARATED
                             : info_.format.model == ColorModel::Rgb ? PHOTOMETRIC_RGB
                                                                     : PHOTOMETRIC_MINISBLACK);
    if (info_.format.model == ColorModel::Cmyk)
      put(TIFFTAG_INKSET, INKSET_CMYK);
    std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
    if (info_.hasAlpha)
      put(TIFFTAG_EXTRASAMPLES, 1, &alpha);
    put(TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    put(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    put(TIFFTAG_ORIENTATION, static_cast<int>(info_.orientation));
    if (info_.horizontalResolution > 0 && info_.verticalResolution > 0) {
      put(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
      put(TIFFTAG_XRESOLUTION, info_.horizontalResolution);
      put(TIFFTAG_YRESOLUTION, info_.verticalResolution);
    }
    if (!info_.profile.empty())
      put(TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(info_.profile.size()), info_.profile.data());
    const std::size_t rowBytes = info_.ColourBytesPerRow() + info_.AlphaBytesPerRow();
    const auto rows = static_cast<std::uint32_t>(std::clamp<std::size_t>(kStripBytes / rowBytes, 1, info_.height));
    put(TIFFTAG_ROWSPERSTRIP, rows);
    if (!set)
      Fail(stream_);
  }

  ZelUtl::ReplacementFile file_;
  Stream stream_;
  ImageInfo info_;
  std::vector<std::uint8_t> row_;
  std::uint32_t rowsWritten_ = 0;
  Handle tiff_; // behind what it works on
};

} // namespace

std::unique_ptr<ImageReader> OpenTiff(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes)
{
  return std::make_unique<TiffReader>(std::move(file), mostHeldBytes);
}

std::unique_ptr<ImageWriter> CreateTiff(ZelUtl::ReplacementFile file, const ImageInfo &info)
{
  return std::make_unique<TiffWriter>(std::move(file), info);
}

} // namespace cli
