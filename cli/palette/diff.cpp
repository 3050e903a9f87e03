#include "cli/palette/commands.h"
#include "cli/palette/comparison.h"
#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace cli {

namespace {

using ZelClr::Swatch;

/// Both palettes and what differs.
struct Subject
{
  LoadedPalette a;
  LoadedPalette b;
  PaletteComparison found;

  const Swatch &A(std::size_t index) const { return a.book.swatches[index]; }
  const Swatch &B(std::size_t index) const { return b.book.swatches[index]; }
};

double Rounded(double difference)
{
  return std::round(difference * 100.0) / 100.0;
}

Json JsonOf(const Subject &subject)
{
  const PaletteComparison &found = subject.found;
  const auto places = [](const ColourPair &pair) { return Json{{"indexA", pair.a}, {"indexB", pair.b}}; };
  Json content = {{"a", JsonOfPalette(subject.a)}, {"b", JsonOfPalette(subject.b)}, {"same", found.IsSame()}};
  for (const char *const list : {"added", "removed", "renamed", "changed", "moved"})
    content[list] = Json::array();
  for (const std::size_t i : found.added)
    content["added"].push_back({{"indexB", i}, {"colour", JsonOfSwatch(subject.B(i))}});
  for (const std::size_t i : found.removed)
    content["removed"].push_back({{"indexA", i}, {"colour", JsonOfSwatch(subject.A(i))}});
  for (const ColourPair &pair : found.renamed) {
    Json entry = places(pair);
    entry.update(
      {{"from", subject.A(pair.a).name}, {"to", subject.B(pair.b).name}, {"colour", JsonOfSwatch(subject.B(pair.b))}});
    content["renamed"].push_back(std::move(entry));
  }
  for (const ChangedColour &pair : found.changed) {
    Json entry = places(pair);
    entry.update({{"deltaE2000", pair.difference ? Json(Rounded(*pair.difference)) : Json()},
                  {"from", JsonOfSwatch(subject.A(pair.a))},
                  {"to", JsonOfSwatch(subject.B(pair.b))}});
    content["changed"].push_back(std::move(entry));
  }
  for (const ColourPair &pair : found.moved) {
    Json entry = places(pair);
    entry["name"] = subject.B(pair.b).name;
    content["moved"].push_back(std::move(entry));
  }
  return content;
}

constexpr std::size_t kNameColumns = 26;
constexpr std::size_t kValueColumns = 22;

std::string Field(const Swatch &swatch, const Output &output)
{
  return output.Swatch(ScreenOf(swatch), 4);
}

std::string GivenName(const Swatch &swatch)
{
  return swatch.name.empty() ? "no name" : Harmless(swatch.name);
}

/// "CMYK 0 50 100 0, spot"
std::string Says(const Swatch &swatch)
{
  const std::string ink = InkInWords(swatch);
  return ValueInWords(swatch) + (ink.empty() ? "" : ", " + ink);
}

std::string TextOf(const Subject &subject, const Output &output)
{
  const auto palette = [&](const char *letter, const LoadedPalette &of) {
    return std::string(letter) + "  " + output.Bold(Harmless(of.Name())) + ", " +
           Counted(of.book.swatches.size(), "colour") + "  " + output.Faint(Harmless(of.path)) + "\n";
  };
  const PaletteComparison &found = subject.found;
  std::string text = palette("A", subject.a) + palette("B", subject.b);
  const auto heading = [&](std::size_t count, const char *what) {
    if (count > 0)
      text += "\n" + output.Bold(std::to_string(count) + " " + what) + "\n";
  };
  const auto line = [&](const char *sign, const Swatch &swatch) {
    text += std::string("  ") + sign + " " + Field(swatch, output) + Fitted(NameInWords(swatch), kNameColumns) + "  " +
            Says(swatch) + "\n";
  };
  heading(found.removed.size(), "removed");
  for (const std::size_t i : found.removed)
    line("-", subject.A(i));
  heading(found.added.size(), "added");
  for (const std::size_t i : found.added)
    line("+", subject.B(i));
  heading(found.changed.size(), "changed");
  for (const ChangedColour &pair : found.changed) {
    const Swatch &from = subject.A(pair.a);
    const Swatch &to = subject.B(pair.b);
    text += "  ~ " + Field(from, output) + Field(to, output) + Fitted(NameInWords(to), kNameColumns) + "  " +
            Fitted(Says(from), kValueColumns) + " \u2192 " + Fitted(Says(to), kValueColumns) + "  \u0394E2000 " +
            (pair.difference ? OneDecimal(*pair.difference) : "unknown") + "\n";
  }
  heading(found.renamed.size(), "renamed");
  for (const ColourPair &pair : found.renamed)
    text += "  = " + Field(subject.B(pair.b), output) + Fitted(GivenName(subject.A(pair.a)), kNameColumns) +
            " \u2192 " + GivenName(subject.B(pair.b)) + "\n";
  heading(found.moved.size(), "moved");
  for (const ColourPair &pair : found.moved)
    text += "  > " + Field(subject.B(pair.b), output) + Fitted(NameInWords(subject.B(pair.b)), kNameColumns) +
            "  from place " + std::to_string(pair.a + 1) + " to " + std::to_string(pair.b + 1) + "\n";
  return found.IsSame() ? text + "\nThe colours are the same.\n" : text;
}

} // namespace

ExitCode ComparePalettes(const std::string &a, const std::string &b, double tolerance, const Output &output)
{
  if (a == "-" && b == "-")
    throw Failure(ExitCode::Usage, "only one of both can be the standard input");
  Subject subject = {OpenPalette(a), OpenPalette(b), {}};
  subject.found = Compared(subject.a.book, subject.b.book, tolerance);
  if (output.json)
    PrintJson("zelclr.palette.diff", JsonOf(subject));
  else
    std::fputs(TextOf(subject, output).c_str(), stdout);
  return subject.found.IsSame() ? ExitCode::Fine : ExitCode::Findings;
}

} // namespace cli
