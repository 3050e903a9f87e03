#include "zelclr/palettes/formats/palette_format.h"

#include "zelclr/palettes/formats/acb_palette.h"
#include "zelclr/palettes/formats/aco_palette.h"
#include "zelclr/palettes/formats/act_palette.h"
#include "zelclr/palettes/formats/ase_palette.h"
#include "zelclr/palettes/formats/colour_list.h"
#include "zelclr/palettes/formats/css_palette.h"
#include "zelclr/palettes/formats/gpl_palette.h"
#include "zelclr/palettes/formats/icc_palette.h"
#include "zelclr/palettes/formats/jasc_palette.h"
#include "zelclr/palettes/formats/kpl_palette.h"
#include "zelclr/palettes/formats/riff_palette.h"
#include "zelclr/palettes/formats/scribus_palette.h"
#include "zelclr/palettes/formats/soc_palette.h"
#include "zelclr/palettes/formats/svg_palette.h"
#include "zelclr/palettes/formats/tokens_palette.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ZelClr {

namespace {

constexpr std::string_view kAseExtensions[] = {".ase"};
constexpr std::string_view kAcbExtensions[] = {".acb"};
constexpr std::string_view kKplExtensions[] = {".kpl"};
constexpr std::string_view kRiffExtensions[] = {".pal"};
constexpr std::string_view kIccExtensions[] = {".icc", ".icm"};
constexpr std::string_view kAcoExtensions[] = {".aco"};
constexpr std::string_view kActExtensions[] = {".act"};
constexpr std::string_view kGplExtensions[] = {".gpl"};
constexpr std::string_view kJascExtensions[] = {".pal"};
constexpr std::string_view kScribusExtensions[] = {".xml"};
constexpr std::string_view kSocExtensions[] = {".soc"};
constexpr std::string_view kTokensExtensions[] = {".tokens.json", ".tokens", ".json"};
constexpr std::string_view kCssExtensions[] = {".css"};
constexpr std::string_view kSvgExtensions[] = {".svg"};
constexpr std::string_view kListExtensions[] = {".txt"};

// In the order in which a file's content is tried: signatures first, then roots, then what is any text, then what is
// any bytes of a size. JASC stands before RIFF, whose extension is the same and rarer.
constexpr PaletteFormat kFormats[] = {
  {"ase", "Swatch exchange", kAseExtensions, RecognisesAse, ReadAse, WriteAse},
  {"acb", "Colour book", kAcbExtensions, RecognisesAcb, ReadAcb, nullptr},
  {"kpl", "KPL palette", kKplExtensions, RecognisesKpl, ReadKpl, WriteKpl},
  {"icc", "ICC profile of named colours", kIccExtensions, RecognisesIcc, ReadIcc, nullptr},
  {"aco", "Image editor swatches", kAcoExtensions, RecognisesAco, ReadAco, WriteAco},
  {"gpl", "GPL palette", kGplExtensions, RecognisesGpl, ReadGpl, WriteGpl},
  {"jasc", "JASC palette", kJascExtensions, RecognisesJasc, ReadJasc, WriteJasc},
  {"riff", "RIFF palette", kRiffExtensions, RecognisesRiff, ReadRiff, WriteRiff},
  {"scribus", "Scribus colours", kScribusExtensions, RecognisesScribus, ReadScribus, WriteScribus},
  {"soc", "Office colour table", kSocExtensions, RecognisesSoc, ReadSoc, WriteSoc},
  {"tokens", "Design tokens", kTokensExtensions, RecognisesTokens, ReadTokens, WriteTokens},
  {"css", "CSS custom properties", kCssExtensions, nullptr, nullptr, WriteCss},
  {"svg", "Sheet of swatches", kSvgExtensions, nullptr, nullptr, WriteSvg},
  {"list", "List of colours", kListExtensions, RecognisesColourList, ReadColourList, WriteColourList},
  {"act", "Colour table", kActExtensions, RecognisesAct, ReadAct, WriteAct},
};

} // namespace

std::span<const PaletteFormat> PaletteFormats()
{
  return kFormats;
}

const PaletteFormat *FindPaletteFormat(std::string_view key)
{
  const auto *const found =
    std::find_if(std::begin(kFormats), std::end(kFormats), [&](const PaletteFormat &row) { return row.key == key; });
  return found == std::end(kFormats) ? nullptr : found;
}

const PaletteFormat *PaletteFormatOfFileName(std::string_view fileName)
{
  const std::string name = ZelUtl::LowerAscii(ZelUtl::FileNameOfPath(fileName));
  const PaletteFormat *best = nullptr;
  std::size_t longest = 0; // ".tokens.json" goes before ".json"
  for (const PaletteFormat &row : kFormats) {
    for (const std::string_view extension : row.extensions) {
      if (row.write != nullptr && extension.size() > longest && name.size() > extension.size() &&
          name.ends_with(extension)) {
        best = &row;
        longest = extension.size();
      }
    }
  }
  return best;
}

const PaletteFormat *RecognisePaletteFormat(std::string_view bytes)
{
  const auto *const found = std::find_if(std::begin(kFormats), std::end(kFormats), [&](const PaletteFormat &row) {
    return row.recognises != nullptr && row.recognises(bytes);
  });
  return found == std::end(kFormats) ? nullptr : found;
}

std::optional<SwatchBook> ReadSwatchBook(std::string_view bytes, ReadProblem &problem)
{
  const auto refuse = [&problem](std::string reason) {
    problem = {0, std::move(reason)};
    return std::nullopt;
  };
  if (bytes.size() > kMostPaletteBytes)
    return refuse("more than " + std::to_string(kMostPaletteBytes >> 20) + " MiB");
  if (bytes.empty())
    return refuse("no colours");
  const PaletteFormat *const format = RecognisePaletteFormat(bytes);
  if (format == nullptr)
    return refuse("no palette of a known format");
  auto book = format->read(bytes, problem);
  if (book && book->swatches.empty())
    return refuse("no colours");
  return book;
}

} // namespace ZelClr
