// JPEG, by libjpeg-turbo: ISO/IEC 10918-1, JFIF 1.02, ICC.1:2022 annex B.4, and Adobe's marker APP14.

#include "cli/image/formats.h"

#include <jerror.h>
#include <jpeglib.h>
#include <stdio.h> // jpeglib.h needs it

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace cli {

namespace {

using ColorSystem::ColorModel;
using ColorSystem::SampleType;

constexpr std::size_t kBufferBytes = std::size_t{64} << 10;
/// More than a profile of 255 parts and any other sort of header need.
constexpr std::uint64_t kMostHeaderBytes = std::uint64_t{64} << 20;
constexpr int kMostScans = 200;
constexpr unsigned kMostMarkerBytes = 0xFFFF;
constexpr double kCentimetresPerInch = 2.54;
constexpr std::array<char, 6> kExifMark = {'E', 'x', 'i', 'f', '\0', '\0'};
constexpr int kFullResolutionQuality = 90;

struct Errors : jpeg_error_mgr
{
  std::jmp_buf failed;
  std::array<char, JMSG_LENGTH_MAX> reason{};
};

[[noreturn]] void Leave(j_common_ptr jpeg)
{
  auto &errors = *static_cast<Errors *>(jpeg->err);
  errors.format_message(jpeg, errors.reason.data());
  std::longjmp(errors.failed, 1);
}

[[noreturn]] void LeaveWith(j_common_ptr jpeg, const char *reason)
{
  auto &errors = *static_cast<Errors *>(jpeg->err);
  std::snprintf(errors.reason.data(), errors.reason.size(), "%s", reason);
  std::longjmp(errors.failed, 1);
}

/// Damage that the library would paper over ends the reading; oddities that lose no pixel do not.
void OnMessage(j_common_ptr jpeg, int level)
{
  constexpr std::array<int, 6> kOddities = {JWRN_EXTRANEOUS_DATA, JWRN_ADOBE_XFORM,   JWRN_BOGUS_PROGRESSION,
                                            JWRN_JFIF_MAJOR,      JWRN_TOO_MUCH_DATA, JWRN_BOGUS_ICC};
  if (level < 0 && std::find(kOddities.begin(), kOddities.end(), jpeg->err->msg_code) == kOddities.end())
    Leave(jpeg);
}

void OnOutput(j_common_ptr /*jpeg*/) {}

void Prepare(Errors &errors)
{
  jpeg_std_error(&errors);
  errors.error_exit = Leave;
  errors.emit_message = OnMessage;
  errors.output_message = OnOutput;
}

[[noreturn]] void Fail(const Errors &errors)
{
  throw ImageError(std::string("JPEG: ") + errors.reason.data());
}

// --- Reading
// ----------------------------------------------------------------------------------------------------------

struct Source : jpeg_source_mgr
{
  explicit Source(ZelUtl::RegularFile opened) : jpeg_source_mgr{}, file(std::move(opened)) {}

  ZelUtl::RegularFile file;
  std::uint64_t offset = 0;
  bool inHeader = true;
  std::array<std::uint8_t, kBufferBytes> buffer{};
};

void OnSourceStart(j_decompress_ptr /*jpeg*/) {}

boolean FillFromSource(j_decompress_ptr jpeg)
{
  auto &source = *static_cast<Source *>(jpeg->src);
  const std::uint64_t size = source.file.Stamp().size;
  const auto count =
    static_cast<std::size_t>(std::min<std::uint64_t>(kBufferBytes, size - std::min(size, source.offset)));
  if (count == 0 || !source.file.ReadAt(source.offset, {source.buffer.data(), count}))
    LeaveWith(reinterpret_cast<j_common_ptr>(jpeg), "the file ends too early");
  source.offset += count;
  if (source.inHeader && source.offset > kMostHeaderBytes)
    LeaveWith(reinterpret_cast<j_common_ptr>(jpeg), "too much stands before the image");
  source.next_input_byte = source.buffer.data();
  source.bytes_in_buffer = count;
  return TRUE;
}

void SkipInSource(j_decompress_ptr jpeg, long count)
{
  while (count > static_cast<long>(jpeg->src->bytes_in_buffer)) {
    count -= static_cast<long>(jpeg->src->bytes_in_buffer);
    FillFromSource(jpeg);
  }
  if (count > 0) {
    jpeg->src->next_input_byte += count;
    jpeg->src->bytes_in_buffer -= static_cast<std::size_t>(count);
  }
}

void OnSourceEnd(j_decompress_ptr /*jpeg*/) {}

/// Scans can be many and tiny, and each costs a walk over the whole image.
void CountScans(j_common_ptr jpeg)
{
  if (jpeg->is_decompressor != FALSE && reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number > kMostScans)
    LeaveWith(jpeg, "too many scans");
}

class JpegReader final : public ImageReader
{
public:
  JpegReader(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes) : source_(std::move(file))
  {
    Prepare(errors_);
    jpeg_.err = &errors_;
    source_.init_source = OnSourceStart;
    source_.fill_input_buffer = FillFromSource;
    source_.skip_input_data = SkipInSource;
    source_.resync_to_restart = jpeg_resync_to_restart;
    source_.term_source = OnSourceEnd;
    progress_.progress_monitor = CountScans;
    try {
      if (!Guarded(errors_.failed, [this] { ReadHeader(); }))
        Fail(errors_);
      source_.inHeader = false;
      Describe();
      CheckSize(info_.width, info_.height);
      if (jpeg_has_multiple_scans(&jpeg_) != FALSE)
        CheckHeld(CoefficientBytes(), mostHeldBytes, "a progressive JPEG");
      if (!Guarded(errors_.failed, [this] { jpeg_start_decompress(&jpeg_); }))
        Fail(errors_);
    } catch (...) {
      jpeg_destroy_decompress(&jpeg_);
      throw;
    }
  }
  ~JpegReader() override { jpeg_destroy_decompress(&jpeg_); }
  JpegReader(const JpegReader &) = delete;
  JpegReader &operator=(const JpegReader &) = delete;

  void ReadRows(std::uint32_t count, std::uint8_t *colours, std::uint8_t * /*alpha*/) override
  {
    const std::size_t rowBytes = info_.ColourBytesPerRow();
    const bool read = Guarded(errors_.failed, [this, count, rowBytes, colours] {
      for (std::uint32_t i = 0; i < count; ++i) {
        JSAMPROW row = colours + i * rowBytes;
        jpeg_read_scanlines(&jpeg_, &row, 1);
      }
      if (jpeg_.output_scanline == jpeg_.output_height)
        jpeg_finish_decompress(&jpeg_);
    });
    if (!read)
      Fail(errors_);
    if (inverted_)
      std::transform(colours, colours + count * rowBytes, colours, [](std::uint8_t v) { return std::uint8_t(~v); });
  }

private:
  void ReadHeader()
  {
    jpeg_create_decompress(&jpeg_);
    jpeg_.src = &source_;
    jpeg_.progress = &progress_;
    jpeg_save_markers(&jpeg_, JPEG_APP0 + 1, kMostMarkerBytes); // EXIF
    jpeg_save_markers(&jpeg_, JPEG_APP0 + 2, kMostMarkerBytes); // the profile
    jpeg_read_header(&jpeg_, TRUE);
    switch (jpeg_.jpeg_color_space) {
    case JCS_GRAYSCALE:
      jpeg_.out_color_space = JCS_GRAYSCALE;
      break;
    case JCS_CMYK:
    case JCS_YCCK:
      jpeg_.out_color_space = JCS_CMYK;
      break;
    default:
      jpeg_.out_color_space = JCS_RGB;
      break;
    }
    if (jpeg_read_icc_profile(&jpeg_, &profile_.bytes, &profile_.size) == FALSE)
      profile_ = {};
  }

  void Describe()
  {
    info_.width = jpeg_.image_width;
    info_.height = jpeg_.image_height;
    info_.format.model = jpeg_.out_color_space == JCS_CMYK        ? ColorModel::Cmyk
                         : jpeg_.out_color_space == JCS_GRAYSCALE ? ColorModel::Grayscale
                                                                  : ColorModel::Rgb;
    // Who writes Adobe's marker writes inks inverted, as Adobe does: 0 is a solid.
    inverted_ = info_.format.model == ColorModel::Cmyk && jpeg_.saw_Adobe_marker != FALSE;
    if (profile_.bytes != nullptr) {
      info_.profile.assign(profile_.bytes, profile_.bytes + profile_.size);
      std::free(profile_.bytes);
    } else if (HasMarker(2, "ICC_PROFILE")) {
      notes_.emplace_back("the embedded profile is damaged and was ignored");
    }
    if (jpeg_.saw_JFIF_marker != FALSE && jpeg_.density_unit != 0 && jpeg_.X_density != 0 && jpeg_.Y_density != 0) {
      const double perInch = jpeg_.density_unit == 2 ? kCentimetresPerInch : 1.0;
      info_.horizontalResolution = jpeg_.X_density * perInch;
      info_.verticalResolution = jpeg_.Y_density * perInch;
    }
    for (auto *marker = jpeg_.marker_list; marker != nullptr; marker = marker->next) {
      const std::span data(marker->data, marker->data_length);
      if (marker->marker == JPEG_APP0 + 1 && data.size() > kExifMark.size() &&
          std::memcmp(data.data(), kExifMark.data(), kExifMark.size()) == 0)
        ReadExif(data.subspan(kExifMark.size()), info_);
    }
  }

  bool HasMarker(int number, std::string_view start) const
  {
    for (auto *marker = jpeg_.marker_list; marker != nullptr; marker = marker->next) {
      if (marker->marker == JPEG_APP0 + number && marker->data_length >= start.size() &&
          std::memcmp(marker->data, start.data(), start.size()) == 0)
        return true;
    }
    return false;
  }

  std::uint64_t CoefficientBytes() const
  {
    std::uint64_t blocks = 0;
    for (int i = 0; i < jpeg_.num_components; ++i)
      blocks += std::uint64_t{jpeg_.comp_info[i].width_in_blocks} * jpeg_.comp_info[i].height_in_blocks;
    return blocks * sizeof(JBLOCK);
  }

  struct ReadProfile
  {
    JOCTET *bytes = nullptr; // of malloc
    unsigned size = 0;
  };

  Errors errors_;
  Source source_;
  jpeg_progress_mgr progress_{};
  jpeg_decompress_struct jpeg_{};
  ReadProfile profile_;
  bool inverted_ = false;
};

// --- Writing
// ----------------------------------------------------------------------------------------------------------

struct Target : jpeg_destination_mgr
{
  explicit Target(ZelUtl::ReplacementFile opened) : jpeg_destination_mgr{}, file(std::move(opened)) {}

  ZelUtl::ReplacementFile file;
  std::uint64_t offset = 0;
  std::string reason;
  std::array<std::uint8_t, kBufferBytes> buffer{};
};

void StartTarget(j_compress_ptr jpeg)
{
  auto &target = *static_cast<Target *>(jpeg->dest);
  target.next_output_byte = target.buffer.data();
  target.free_in_buffer = target.buffer.size();
}

void Drain(j_compress_ptr jpeg, std::size_t count)
{
  auto &target = *static_cast<Target *>(jpeg->dest);
  if (!target.file.WriteAt(target.offset, {target.buffer.data(), count}, target.reason))
    ERREXIT(jpeg, JERR_FILE_WRITE);
  target.offset += count;
  StartTarget(jpeg);
}

boolean EmptyTarget(j_compress_ptr jpeg)
{
  Drain(jpeg, kBufferBytes); // the whole of it, whatever the counters say
  return TRUE;
}

void EndTarget(j_compress_ptr jpeg)
{
  Drain(jpeg, kBufferBytes - jpeg->dest->free_in_buffer);
}

class JpegWriter final : public ImageWriter
{
public:
  JpegWriter(ZelUtl::ReplacementFile file, const ImageInfo &info, int quality) : target_(std::move(file)), info_(info)
  {
    Prepare(errors_);
    jpeg_.err = &errors_;
    target_.init_destination = StartTarget;
    target_.empty_output_buffer = EmptyTarget;
    target_.term_destination = EndTarget;
    const std::vector<std::uint8_t> exif = ExifOf(info);
    if (!exif.empty()) {
      exif_.assign(kExifMark.begin(), kExifMark.end());
      exif_.insert(exif_.end(), exif.begin(), exif.end());
    }
    if (!Guarded(errors_.failed, [this, quality] { WriteHeader(quality); })) {
      jpeg_destroy_compress(&jpeg_);
      FailToWrite();
    }
  }
  ~JpegWriter() override { jpeg_destroy_compress(&jpeg_); }
  JpegWriter(const JpegWriter &) = delete;
  JpegWriter &operator=(const JpegWriter &) = delete;

  void WriteRows(std::uint32_t count, const std::uint8_t *colours, const std::uint8_t * /*alpha*/) override
  {
    const std::size_t rowBytes = info_.ColourBytesPerRow();
    const bool inverted = info_.format.model == ColorModel::Cmyk;
    row_.resize(rowBytes);
    for (std::uint32_t i = 0; i < count; ++i, colours += rowBytes) {
      std::transform(colours, colours + rowBytes, row_.begin(),
                     [inverted](std::uint8_t v) { return inverted ? std::uint8_t(~v) : v; });
      const bool written = Guarded(errors_.failed, [this] {
        JSAMPROW row = row_.data();
        jpeg_write_scanlines(&jpeg_, &row, 1);
      });
      if (!written)
        FailToWrite();
    }
  }

  void Finish() override
  {
    if (!Guarded(errors_.failed, [this] { jpeg_finish_compress(&jpeg_); }))
      FailToWrite();
    if (!target_.file.Commit(target_.reason))
      throw ImageError(target_.reason);
  }

private:
  void WriteHeader(int quality)
  {
    jpeg_create_compress(&jpeg_);
    jpeg_.dest = &target_;
    jpeg_.image_width = info_.width;
    jpeg_.image_height = info_.height;
    jpeg_.input_components = static_cast<int>(info_.format.ColourChannels());
    jpeg_.in_color_space = info_.format.model == ColorModel::Cmyk        ? JCS_CMYK
                           : info_.format.model == ColorModel::Grayscale ? JCS_GRAYSCALE
                                                                         : JCS_RGB;
    jpeg_set_defaults(&jpeg_); // inks with Adobe's marker
    jpeg_set_quality(&jpeg_, quality, TRUE);
    if (quality >= kFullResolutionQuality) {
      jpeg_.comp_info[0].h_samp_factor = 1;
      jpeg_.comp_info[0].v_samp_factor = 1;
    }
    const long x = std::lround(std::min(info_.horizontalResolution, 65535.0));
    const long y = std::lround(std::min(info_.verticalResolution, 65535.0));
    if (x > 0 && y > 0) {
      jpeg_.density_unit = 1;
      jpeg_.X_density = static_cast<UINT16>(x);
      jpeg_.Y_density = static_cast<UINT16>(y);
    }
    jpeg_start_compress(&jpeg_, TRUE);
    if (!exif_.empty())
      jpeg_write_marker(&jpeg_, JPEG_APP0 + 1, exif_.data(), static_cast<unsigned>(exif_.size()));
    if (!info_.profile.empty())
      jpeg_write_icc_profile(&jpeg_, info_.profile.data(), static_cast<unsigned>(info_.profile.size()));
  }

  [[noreturn]] void FailToWrite() const
  {
    if (!target_.reason.empty())
      throw ImageError(target_.reason);
    Fail(errors_);
  }

  Errors errors_;
  Target target_;
  ImageInfo info_;
  std::vector<std::uint8_t> exif_;
  jpeg_compress_struct jpeg_{};
  std::vector<std::uint8_t> row_;
};

} // namespace

std::unique_ptr<ImageReader> OpenJpeg(ZelUtl::RegularFile file, std::uint64_t mostHeldBytes)
{
  return std::make_unique<JpegReader>(std::move(file), mostHeldBytes);
}

std::unique_ptr<ImageWriter> CreateJpeg(ZelUtl::ReplacementFile file, const ImageInfo &info, int quality)
{
  if (info.profile.size() > 255u * 65519u)
    throw ImageError("JPEG holds a profile of at most 16 MB");
  return std::make_unique<JpegWriter>(std::move(file), info, quality);
}

} // namespace cli
