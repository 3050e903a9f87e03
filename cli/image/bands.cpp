#include "cli/image/bands.h"

#include "zelclr/platform/console.h"

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

constexpr std::uint32_t kBandPixels = 1u << 18;

/// One line on a terminal, renewed where it stands, and gone at the end.
class Progress
{
public:
  explicit Progress(std::string what) : what_(std::move(what)), shown_(ZelUtl::StandardErrorIsTerminal()) {}
  ~Progress()
  {
    if (shown_)
      std::fputs("\r\x1b[K", stderr);
  }
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  void Show(std::uint64_t done, std::uint64_t all)
  {
    const auto percent = static_cast<int>(100 * done / all);
    if (shown_ && percent != percent_)
      std::fprintf(stderr, "\r%s  %d %%\x1b[K", what_.c_str(), percent);
    percent_ = percent;
  }

private:
  std::string what_;
  bool shown_;
  int percent_ = -1;
};

} // namespace

void ForEachBand(ImageReader &reader, const std::string &what, const std::function<void(const Band &)> &use)
{
  const ImageInfo &info = reader.Info();
  const std::uint32_t rows = std::clamp((kBandPixels + info.width - 1) / info.width, 1u, info.height);
  const std::uint32_t last = rows + info.height % rows; // the rest joins the last band
  std::vector<std::uint8_t> colours(last * info.ColourBytesPerRow());
  std::vector<std::uint8_t> alpha(last * info.AlphaBytesPerRow());
  Progress progress(what);
  for (std::uint32_t done = 0; done < info.height;) {
    progress.Show(done, info.height);
    const std::uint32_t left = info.height - done;
    const Band band = {left < 2 * rows ? left : rows, colours.data(), info.hasAlpha ? alpha.data() : nullptr};
    reader.ReadRows(band.rows, colours.data(), info.hasAlpha ? alpha.data() : nullptr);
    use(band);
    done += band.rows;
  }
}

} // namespace cli
