// PNG, by libpng: ISO/IEC 15948:2004 and its extensions (eXIf).

#include "cli/image/formats.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace cli {

namespace {

using ColorSystem::ColorModel;
using ColorSystem::SampleType;

constexpr double kMetresPerInch = 0.0254;
constexpr std::size_t kBufferBytes = std::size_t{256} << 10;
/// What images do without here: of each chunk there can be many, and each unfolds to a hundred times its size or more.
constexpr png_byte kIgnoredChunks[] = "tEXt\0zTXt\0iTXt\0sPLT";

/// What libpng's callbacks work on, and the way back out of it.
struct Exchange
{
  std::jmp_buf failed;
  std::string reason;
  std::string profileFault; ///< libpng drops a broken profile with a warning
  std::optional<ZelUtl::RegularFile> source;
  std::optional<ZelUtl::ReplacementFile> target;
  std::uint64_t offset = 0;
};

[[noreturn]] void OnError(png_structp png, png_const_charp message)
{
  auto &exchange = *static_cast<Exchange *>(png_get_error_ptr(png));
  if (exchange.reason.empty())
    exchange.reason = message;
  std::longjmp(exchange.failed, 1);
}

void OnWarning(png_structp png, png_const_charp message)
{
  auto &exchange = *static_cast<Exchange *>(png_get_error_ptr(png));
  // Some are about alignment and the like, which the profile survives; whether it does is asked afterwards.
  if (exchange.target || std::strncmp(message, "iCCP", 4) == 0)
    exchange.profileFault = message;
}

void OnRead(png_structp png, png_bytep bytes, std::size_t count)
{
  auto &exchange = *static_cast<Exchange *>(png_get_io_ptr(png));
  if (!exchange.source->ReadAt(exchange.offset, {bytes, count}))
    png_error(png, "the file ends too early");
  exchange.offset += count;
}

void OnWrite(png_structp png, png_bytep bytes, std::size_t count)
{
  auto &exchange = *static_cast<Exchange *>(png_get_io_ptr(png));
  if (!exchange.target->WriteAt(exchange.offset, {bytes, count}, exchange.reason))
    png_error(png, "cannot be written");
  exchange.offset += count;
}

void OnFlush(png_structp /*png*/) {}

[[noreturn]] void Fail(const Exchange &exchange)
{
  throw ImageError("PNG: " + exchange.reason);
}

class PngReader final : public ImageReader
{
public:
  PngReader(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes)
  {
    exchange_.source = std::move(file);
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, &exchange_, OnError, OnWarning);
    chunks_ = png_ == nullptr ? nullptr : png_create_info_struct(png_);
    try {
      if (chunks_ == nullptr || !Guarded(exchange_.failed, [this] { ReadHeader(); }))
        Fail(exchange_);
      Describe();
      CheckSize(info_.width, info_.height);
      rowBytes_ = png_get_rowbytes(png_, chunks_);
      if (png_get_interlace_type(png_, chunks_) != PNG_INTERLACE_NONE)
        ReadInterlaced(mostHeldBytes);
      else
        row_.resize(rowBytes_);
    } catch (...) {
      png_destroy_read_struct(&png_, &chunks_, nullptr);
      throw;
    }
  }
  ~PngReader() override { png_destroy_read_struct(&png_, &chunks_, nullptr); }
  PngReader(const PngReader &) = delete;
  PngReader &operator=(const PngReader &) = delete;

  void ReadRows(std::uint32_t count, std::uint8_t *colours, std::uint8_t *alpha) override
  {
    for (std::uint32_t i = 0; i < count; ++i) {
      const std::uint8_t *row = NextRow();
      if (info_.hasAlpha)
        SplitAlpha(info_.width, info_.format.ColourChannels(), info_.format.BytesPerSample(), row, colours, alpha);
      else
        std::copy_n(row, info_.ColourBytesPerRow(), colours);
      colours += info_.ColourBytesPerRow();
      alpha += info_.AlphaBytesPerRow();
    }
  }

private:
  void ReadHeader()
  {
    png_set_read_fn(png_, &exchange_, OnRead);
    png_set_user_limits(png_, kMostImageSide, kMostImageSide);
    png_set_chunk_malloc_max(png_, kMostProfileBytes);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, kIgnoredChunks, sizeof kIgnoredChunks / 5);
    png_set_compression_buffer_size(png_, kBufferBytes);
    png_read_info(png_, chunks_);
    if (png_get_color_type(png_, chunks_) == PNG_COLOR_TYPE_PALETTE)
      png_set_palette_to_rgb(png_);
    png_set_expand_gray_1_2_4_to_8(png_);
    if (png_get_valid(png_, chunks_, PNG_INFO_tRNS) != 0)
      png_set_tRNS_to_alpha(png_);
    png_set_swap(png_); // of 16 bits, which PNG has with the most significant byte first
    png_set_interlace_handling(png_);
    png_read_update_info(png_, chunks_);
  }

  /// Plain questions to libpng, which fail for nothing.
  void Describe()
  {
    info_.width = png_get_image_width(png_, chunks_);
    info_.height = png_get_image_height(png_, chunks_);
    const unsigned channels = png_get_channels(png_, chunks_);
    info_.format = {channels >= 3 ? ColorModel::Rgb : ColorModel::Grayscale,
                    png_get_bit_depth(png_, chunks_) == 16 ? SampleType::UInt16 : SampleType::UInt8};
    info_.hasAlpha = channels % 2 == 0;

    png_charp name = nullptr;
    png_bytep bytes = nullptr;
    png_uint_32 size = 0;
    int method = 0;
    int intent = 0;
    if (png_get_iCCP(png_, chunks_, &name, &method, &bytes, &size) != 0)
      info_.profile.assign(bytes, bytes + size);
    else if (png_get_sRGB(png_, chunks_, &intent) != 0)
      info_.isSrgb = true;
    else if (!exchange_.profileFault.empty())
      notes_.push_back("the embedded profile is damaged and was ignored (" + exchange_.profileFault + ")");
    else if (png_get_valid(png_, chunks_, PNG_INFO_gAMA | PNG_INFO_cHRM) != 0)
      notes_.emplace_back("its chunks gAMA and cHRM are no profile and were ignored");

    png_uint_32 x = 0;
    png_uint_32 y = 0;
    int unit = 0;
    if (png_get_pHYs(png_, chunks_, &x, &y, &unit) != 0 && unit == PNG_RESOLUTION_METER) {
      info_.horizontalResolution = x * kMetresPerInch;
      info_.verticalResolution = y * kMetresPerInch;
    }
    png_uint_32 exifSize = 0;
    png_bytep exif = nullptr;
    if (png_get_eXIf_1(png_, chunks_, &exifSize, &exif) != 0)
      ReadExif({exif, exifSize}, info_);
  }

  void ReadInterlaced(std::uint64_t mostHeldBytes)
  {
    CheckHeld(std::uint64_t{rowBytes_} * info_.height, mostHeldBytes, "an interlaced PNG");
    held_.resize(rowBytes_ * info_.height);
    std::vector<png_bytep> rows(info_.height);
    for (std::size_t i = 0; i < rows.size(); ++i)
      rows[i] = held_.data() + i * rowBytes_;
    if (!Guarded(exchange_.failed, [this, &rows] { png_read_image(png_, rows.data()); }))
      Fail(exchange_);
  }

  const std::uint8_t *NextRow()
  {
    const bool last = ++rowsRead_ == info_.height;
    const bool read = Guarded(exchange_.failed, [this, last] {
      if (held_.empty())
        png_read_row(png_, row_.data(), nullptr);
      if (last)
        png_read_end(png_, nullptr);
    });
    if (!read)
      Fail(exchange_);
    return held_.empty() ? row_.data() : held_.data() + std::size_t{rowsRead_ - 1} * rowBytes_;
  }

  Exchange exchange_;
  png_structp png_ = nullptr;
  png_infop chunks_ = nullptr;
  std::size_t rowBytes_ = 0;
  std::uint32_t rowsRead_ = 0;
  std::vector<std::uint8_t> row_;
  std::vector<std::uint8_t> held_; // the whole image, when it is interlaced
};

class PngWriter final : public ImageWriter
{
public:
  PngWriter(ZelUtl::ReplacementFile file, const ImageInfo &info) : info_(info), exif_(ExifOf(info))
  {
    exchange_.target.emplace(std::move(file));
    png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, &exchange_, OnError, OnWarning);
    chunks_ = png_ == nullptr ? nullptr : png_create_info_struct(png_);
    if (chunks_ == nullptr || !Guarded(exchange_.failed, [this] { WriteHeader(); })) {
      png_destroy_write_struct(&png_, &chunks_);
      Fail(exchange_);
    }
    if (info_.hasAlpha)
      row_.resize(info_.ColourBytesPerRow() + info_.AlphaBytesPerRow());
  }
  ~PngWriter() override { png_destroy_write_struct(&png_, &chunks_); }
  PngWriter(const PngWriter &) = delete;
  PngWriter &operator=(const PngWriter &) = delete;

  void WriteRows(std::uint32_t count, const std::uint8_t *colours, const std::uint8_t *alpha) override
  {
    for (std::uint32_t i = 0; i < count; ++i) {
      if (info_.hasAlpha) {
        JoinAlpha(info_.width, info_.format.ColourChannels(), info_.format.BytesPerSample(), colours, alpha,
                  row_.data());
      }
      const std::uint8_t *const row = info_.hasAlpha ? row_.data() : colours;
      if (!Guarded(exchange_.failed, [this, row] { png_write_row(png_, row); }))
        Fail(exchange_);
      colours += info_.ColourBytesPerRow();
      alpha += info_.AlphaBytesPerRow();
    }
  }

  void Finish() override
  {
    if (!Guarded(exchange_.failed, [this] { png_write_end(png_, chunks_); }))
      Fail(exchange_);
    if (!exchange_.target->Commit(exchange_.reason))
      throw ImageError(exchange_.reason);
  }

private:
  void WriteHeader()
  {
    png_set_write_fn(png_, &exchange_, OnWrite, OnFlush);
    png_set_user_limits(png_, kMostImageSide, kMostImageSide);
    png_set_compression_buffer_size(png_, kBufferBytes);
    const int type = (info_.format.model == ColorModel::Rgb ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY) |
                     (info_.hasAlpha ? PNG_COLOR_MASK_ALPHA : 0);
    const auto bits = static_cast<int>(8 * info_.format.BytesPerSample());
    png_set_IHDR(png_, chunks_, info_.width, info_.height, bits, type, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!info_.profile.empty()) {
      png_set_benign_errors(png_, 1); // so that libpng warns of oddities only, and leaves out a profile that is unfit
      png_set_iCCP(png_, chunks_, "ICC profile", PNG_COMPRESSION_TYPE_BASE, info_.profile.data(),
                   static_cast<png_uint_32>(info_.profile.size()));
      if (png_get_valid(png_, chunks_, PNG_INFO_iCCP) == 0)
        png_error(png_, exchange_.profileFault.c_str());
    } else if (info_.isSrgb) {
      png_set_sRGB(png_, chunks_, PNG_sRGB_INTENT_RELATIVE);
    }
    if (info_.horizontalResolution > 0 && info_.verticalResolution > 0) {
      png_set_pHYs(png_, chunks_, PixelsPerMetre(info_.horizontalResolution), PixelsPerMetre(info_.verticalResolution),
                   PNG_RESOLUTION_METER);
    }
    if (info_.orientation != 1)
      png_set_eXIf_1(png_, chunks_, static_cast<png_uint_32>(exif_.size()), exif_.data());
    png_write_info(png_, chunks_);
    png_set_swap(png_);
  }

  static png_uint_32 PixelsPerMetre(double resolution)
  {
    constexpr double kMost = 0x7FFFFFFF;
    return static_cast<png_uint_32>(std::llround(std::min(resolution / kMetresPerInch, kMost)));
  }

  Exchange exchange_;
  ImageInfo info_;
  std::vector<std::uint8_t> exif_;
  png_structp png_ = nullptr;
  png_infop chunks_ = nullptr;
  std::vector<std::uint8_t> row_;
};

} // namespace

std::unique_ptr<ImageReader> OpenPng(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes)
{
  return std::make_unique<PngReader>(std::move(file), mostHeldBytes);
}

std::unique_ptr<ImageWriter> CreatePng(ZelUtl::ReplacementFile file, const ImageInfo &info)
{
  return std::make_unique<PngWriter>(std::move(file), info);
}

} // namespace cli
