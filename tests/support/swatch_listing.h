// Swatch books as short texts, so that tests can state them in a line.
#pragma once

#include "zelclr/colour/colour_text.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/platform/text.h"

#include <gtest/gtest.h>

namespace tests {

/// "name|" of the book, "[group]" before its first swatch, "name=RGB(1,0.5,0)", "!" before a spot colour with "*0.5"
/// for its tint, "#note" at the end. Numbers have three decimals.
inline std::string Listing(const ZelClr::SwatchBook &book)
{
  constexpr std::pair<const char *, std::size_t> kModels[] = {{"RGB", 3}, {"CMYK", 4}, {"Gray", 1}, {"Lab", 3}};
  std::string text = book.name.empty() ? "" : book.name + "| ";
  std::size_t group = 0;
  for (std::size_t i = 0; i <= book.swatches.size(); ++i) {
    for (; group < book.groups.size() && book.groups[group].first == i; ++group)
      text += "[" + book.groups[group].name + "] ";
    if (i == book.swatches.size())
      break;
    const ZelClr::Swatch &swatch = book.swatches[i];
    text += (swatch.spot ? "!" : "") + swatch.name + "=";
    if (swatch.model == ZelClr::SwatchModel::Record) {
      text += ZelClr::TextFromColorSpec(swatch.record);
    } else {
      const auto &[model, count] = kModels[static_cast<std::size_t>(swatch.model)];
      text += std::string(model) + "(";
      for (std::size_t c = 0; c < count; ++c)
        text += (c > 0 ? "," : "") + ZelUtl::TextFromNumber(swatch.values[c], 3);
      text += ")";
    }
    text += swatch.tint == 1.0 ? " " : "*" + ZelUtl::TextFromNumber(swatch.tint, 3) + " ";
  }
  for (const std::string &note : book.notes)
    text += "#" + note + " ";
  return text;
}

/// The listing of what the format reads, or "line: reason".
inline std::string Read(std::string_view bytes)
{
  ZelClr::ReadProblem problem;
  const auto book = ZelClr::ReadSwatchBook(bytes, problem);
  return book ? Listing(*book) : std::to_string(problem.line) + ": " + problem.reason;
}

/// The bytes that the format writes, then "#note" for each note.
inline std::string Write(std::string_view key, const ZelClr::SwatchBook &book)
{
  std::string reason;
  const auto written = ZelClr::FindPaletteFormat(key)->write(book, reason);
  if (!written)
    return reason;
  std::string text = written->bytes;
  for (const std::string &note : written->notes)
    text += "#" + note + "\n";
  return text;
}

inline ZelClr::SwatchBook BookOf(std::vector<ZelClr::Swatch> swatches, std::vector<ZelClr::SwatchGroup> groups = {})
{
  ZelClr::SwatchBook book;
  book.swatches = std::move(swatches);
  book.groups = std::move(groups);
  return book;
}

inline ZelClr::Swatch Spot(ZelClr::Swatch swatch, double tint = 1.0)
{
  swatch.spot = true;
  swatch.tint = tint;
  return swatch;
}

} // namespace tests
