#include "zelclr/colorsystem/engines/icm_pixels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ColorSystem::Internal {

namespace {

using ZelUtl::SystemColourManagement::BitmapFormat;
using ZelUtl::SystemColourManagement::Colour;
using ZelUtl::SystemColourManagement::ColourType;

/// Where bytes lie: the system names a bitmap's channels from the most significant byte of a little-endian pixel to the
/// least, so that "RGB triplets" have the bytes B G R, as every 24-bit bitmap of its windows, and "KYMC quads" C M Y K.
///
/// Not among them: three channels of Lab and of other models and six inks, for which there is but one order each and
/// nothing that says which; 16 bits, which are quads of words there, and of inks not at all. They go as colours, whose
/// fields have names.
struct BitmapRow
{
  ColorModel model;
  std::array<BitmapFormat, 4> formats; // plain, reversed, with alpha, with both
};

constexpr BitmapRow kBitmaps[] = {
  {ColorModel::Rgb,
   {BitmapFormat::BgrTriplets, BitmapFormat::RgbTriplets, BitmapFormat::XBgrQuads, BitmapFormat::XRgbQuads}},
  {ColorModel::Cmyk,
   {BitmapFormat::KymcQuads, BitmapFormat::KymcQuads, BitmapFormat::KymcQuads, BitmapFormat::KymcQuads}},
  {ColorModel::Grayscale, {BitmapFormat::Gray, BitmapFormat::Gray, BitmapFormat::Gray, BitmapFormat::Gray}},
};

struct ColourRow
{
  ColorModel model;
  ColourType type;
};

constexpr ColourRow kColours[] = {
  {ColorModel::Rgb, ColourType::Rgb},           {ColorModel::Cmyk, ColourType::Cmyk},
  {ColorModel::Grayscale, ColourType::Gray},    {ColorModel::Lab, ColourType::Lab},
  {ColorModel::Cmy, ColourType::ThreeChannels}, {ColorModel::Hls, ColourType::ThreeChannels},
  {ColorModel::Hsv, ColourType::ThreeChannels}, {ColorModel::Hexachrome, ColourType::SixChannels},
};

/// Calls `visit(row, column, done, count)` for each piece of the range that lies in one row; `done` pixels were before.
template <class Visit>
void ForRuns(const ColorData &view, const PixelRange &range, Visit visit)
{
  for (std::uint32_t done = 0; done < range.count;) {
    const std::uint64_t pixel = range.first + done;
    const auto column = static_cast<std::uint32_t>(pixel % view.GetWidth());
    const std::uint32_t count = std::min(range.count - done, view.GetWidth() - column);
    visit(static_cast<std::uint32_t>(pixel / view.GetWidth()), column, done, count);
    done += count;
  }
}

/// A sample as a word of 16 bits, and back to the nearest.
template <class Sample>
std::uint16_t Load(const std::uint8_t *bytes)
{
  Sample sample;
  std::memcpy(&sample, bytes, sizeof sample);
  return static_cast<std::uint16_t>(sample * (65535u / static_cast<Sample>(~Sample{0})));
}
template <class Sample>
void Store(std::uint16_t word, std::uint8_t *bytes)
{
  constexpr unsigned kFull = static_cast<Sample>(~Sample{0});
  const auto sample = static_cast<Sample>((word * kFull + 32767u) / 65535u);
  std::memcpy(bytes, &sample, sizeof sample);
}

/// Where the samples of a pixel are and where they go.
struct Layout
{
  explicit Layout(const PixelFormat &format)
    : colours(format.ColourChannels()),
      pixelSize(format.BytesPerPixel()),
      sampleSize(format.BytesPerSample()),
      reversed(format.IsReversed()),
      alpha(format.HasAlpha()),
      asBytes(ColourTypeOf(format) == ColourType::SixChannels)
  {}
  unsigned Offset(unsigned channel) const
  {
    return (reversed && channel < colours ? colours - 1 - channel : channel) * sampleSize;
  }

  unsigned colours, pixelSize, sampleSize;
  bool reversed, alpha, asBytes;
};

template <class Sample>
void LoadRun(const Layout &layout, const std::uint8_t *pixel, std::uint32_t count, Colour *colour, std::uint16_t *alpha)
{
  for (std::uint32_t i = 0; i < count; ++i, pixel += layout.pixelSize, ++colour) {
    *colour = {};
    if (layout.asBytes)
      std::memcpy(colour->words.data(), pixel, layout.colours);
    for (unsigned channel = 0; !layout.asBytes && channel < layout.colours; ++channel)
      colour->words[channel] = Load<Sample>(pixel + layout.Offset(channel));
    if (layout.alpha && alpha != nullptr)
      alpha[i] = Load<Sample>(pixel + layout.Offset(layout.colours));
  }
}

template <class Sample>
void StoreRun(const Layout &layout, const Colour *colour, std::uint32_t count, const std::uint16_t *alpha,
              std::uint8_t *pixel)
{
  for (std::uint32_t i = 0; i < count; ++i, pixel += layout.pixelSize, ++colour) {
    if (layout.asBytes)
      std::memcpy(pixel, colour->words.data(), layout.colours);
    for (unsigned channel = 0; !layout.asBytes && channel < layout.colours; ++channel)
      Store<Sample>(colour->words[channel], pixel + layout.Offset(channel));
    if (layout.alpha)
      Store<Sample>(alpha[i], pixel + layout.Offset(layout.colours));
  }
}

} // namespace

std::optional<BitmapFormat> BitmapFormatOf(const PixelFormat &format)
{
  const auto *const row = std::find_if(std::begin(kBitmaps), std::end(kBitmaps),
                                       [&](const BitmapRow &candidate) { return candidate.model == format.model; });
  return format.BytesPerSample() == 1 && row != std::end(kBitmaps)
           ? std::optional(row->formats[(format.reversed ? 1u : 0u) + (format.alpha ? 2u : 0u)])
           : std::nullopt;
}

std::optional<ColourType> ColourTypeOf(const PixelFormat &format)
{
  const auto *const row = std::find_if(std::begin(kColours), std::end(kColours),
                                       [&](const ColourRow &candidate) { return candidate.model == format.model; });
  const bool found = row != std::end(kColours);
  const unsigned finest = found && row->type == ColourType::SixChannels ? 1 : 2; // bytes for a sample
  return found && format.BytesPerSample() <= finest ? std::optional(row->type) : std::nullopt;
}

void CopyPixels(const ColorData &view, const PixelRange &range, std::uint8_t *block)
{
  const std::size_t size = view.GetPixelFormat().BytesPerPixel();
  ForRuns(view, range, [&](std::uint32_t row, std::uint32_t column, std::uint32_t done, std::uint32_t count) {
    std::memcpy(block + done * size, view.GetRow(row) + column * size, count * size);
  });
}

void CopyPixels(const std::uint8_t *block, const PixelRange &range, ColorData &view)
{
  const std::size_t size = view.GetPixelFormat().BytesPerPixel();
  ForRuns(view, range, [&](std::uint32_t row, std::uint32_t column, std::uint32_t done, std::uint32_t count) {
    std::memcpy(view.GetRow(row) + column * size, block + done * size, count * size);
  });
}

void LoadColours(const ColorData &view, const PixelRange &range, Colour *colours, std::vector<std::uint16_t> &alpha)
{
  const Layout layout(view.GetPixelFormat());
  const auto load = layout.sampleSize == 1 ? LoadRun<std::uint8_t> : LoadRun<std::uint16_t>;
  ForRuns(view, range, [&](std::uint32_t row, std::uint32_t column, std::uint32_t done, std::uint32_t count) {
    load(layout, view.GetRow(row) + std::size_t{column} * layout.pixelSize, count, colours + done,
         alpha.empty() ? nullptr : alpha.data() + done);
  });
}

void StoreColours(const Colour *colours, const std::vector<std::uint16_t> &alpha, const PixelRange &range,
                  ColorData &view)
{
  const Layout layout(view.GetPixelFormat());
  const auto store = layout.sampleSize == 1 ? StoreRun<std::uint8_t> : StoreRun<std::uint16_t>;
  ForRuns(view, range, [&](std::uint32_t row, std::uint32_t column, std::uint32_t done, std::uint32_t count) {
    store(layout, colours + done, count, alpha.empty() ? nullptr : alpha.data() + done,
          view.GetRow(row) + std::size_t{column} * layout.pixelSize);
  });
}

} // namespace ColorSystem::Internal
