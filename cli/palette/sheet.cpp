#include "cli/palette/sheet.h"

#include "cli/gradient/strips.h"
#include "cli/palette/commands.h"
#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"
#include "cli/profile/svg.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <optional>

namespace cli {

namespace {

template <class Predicate>
std::size_t Count(const Sheet &sheet, Predicate predicate)
{
  std::size_t count = 0;
  for (const SheetGroup &group : sheet.groups)
    count += static_cast<std::size_t>(std::count_if(group.colours.begin(), group.colours.end(), predicate));
  return count;
}

/// How a sheet is written to a file.
struct PictureForm
{
  const char *extension;
  std::string (*draw)(const Sheet &sheet);
};
constexpr PictureForm kPictureForms[] = {{".svg", &SvgOf}, {".html", &PageOf}, {".htm", &PageOf}};

/// Null when no picture is asked for.
const PictureForm *PictureFormOf(const std::string &path)
{
  const std::string extension = ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path));
  const auto *const form = std::find_if(std::begin(kPictureForms), std::end(kPictureForms),
                                        [&](const PictureForm &row) { return row.extension == extension; });
  if (form != std::end(kPictureForms))
    return form;
  if (path.empty())
    return nullptr;
  throw Failure(ExitCode::Usage, Harmless(path) + ": the name of the sheet ends in neither .svg nor .html");
}

} // namespace

std::size_t Sheet::CountColours() const
{
  return Count(*this, [](const SheetColour &) { return true; });
}

std::size_t Sheet::CountSpots() const
{
  return Count(*this, [](const SheetColour &colour) { return colour.swatch.spot; });
}

std::size_t Sheet::CountBeyond() const
{
  return Count(*this, [](const SheetColour &colour) { return !colour.inGamut; });
}

bool Sheet::HasTints() const
{
  return Count(*this, [](const SheetColour &colour) { return colour.swatch.spot && colour.swatch.tint != 1.0; }) > 0;
}

Sheet SheetOf(const LoadedPalette &palette, const std::string &profile)
{
  const ZelClr::SwatchBook &book = palette.book;
  std::optional<GradientPress> press;
  if (!profile.empty())
    press = GradientPressFrom(profile);
  const auto context = ColorSystem::ColorContext::GetApplicationDefaultColorContext();
  Sheet sheet;
  sheet.name = palette.Name();
  sheet.description = book.description;
  sheet.path = palette.path;
  sheet.format = palette.format;
  sheet.title = palette.title;
  if (palette.own) {
    sheet.identifier = palette.own->GetHeader().guid.ToText();
    sheet.locked = palette.own->GetHeader().locked;
  }
  sheet.columns = book.columns;
  sheet.press = press ? press->name : std::string();
  sheet.notes = book.notes;
  sheet.groups.emplace_back();
  auto group = book.groups.begin();
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    for (; group != book.groups.end() && group->first <= i; ++group)
      sheet.groups.push_back({group->name, {}});
    SheetColour colour = {book.swatches[i], ScreenOf(book.swatches[i]), true};
    const bool isTint = colour.swatch.spot && colour.swatch.tint != 1.0;
    if (press && !colour.screen.IsInvalid())
      colour.inGamut = press->Holds(isTint ? colour.screen : colour.swatch.record, context);
    sheet.groups.back().colours.push_back(std::move(colour));
  }
  std::erase_if(sheet.groups, [](const SheetGroup &row) { return row.colours.empty(); });
  return sheet;
}

std::string SummaryOf(const Sheet &sheet)
{
  const std::size_t colours = sheet.CountColours();
  const std::size_t spots = sheet.CountSpots();
  std::string words = Counted(colours, "colour");
  if (spots > 0)
    words += spots == colours ? colours == 1 ? ", spot" : ", all of them spot"
                              : ", " + std::to_string(spots) + " of them spot";
  return words;
}

std::string GamutInWords(const Sheet &sheet)
{
  if (sheet.press.empty())
    return {};
  const std::size_t beyond = sheet.CountBeyond();
  if (beyond == 0)
    return "All are within the gamut of " + sheet.press;
  return std::to_string(beyond) + (beyond == 1 ? " is" : " are") + " beyond the gamut of " + sheet.press;
}

std::string SwatchSvg(const SheetColour &colour, double height)
{
  using svg::Number;
  const std::string h = Number(height);
  const bool isKnown = !colour.screen.IsInvalid();
  std::string drawing = "<rect width=\"100\" height=\"" + h + "\" fill=\"" +
                        (isKnown ? HexFromColorSpec(colour.screen) : std::string("#fff")) + "\"/>";
  if (!isKnown)
    drawing += "<path d=\"M0 " + h + "L100 0\" stroke=\"#a0a0a4\" stroke-width=\".8\"/>";
  if (!colour.inGamut)
    drawing += "<path d=\"M76 0H100V24Z\" fill=\"#fff\"/><path d=\"M76 0L100 24\" stroke=\"#1d1d1f\" "
               "stroke-width=\"1\"/><path d=\"M93.6 3.6V9M93.6 10.9V12.7\" stroke=\"#a3241c\" stroke-width=\"1.7\"/>";
  drawing += "<rect x=\".3\" y=\".3\" width=\"99.4\" height=\"" + Number(height - 0.6) +
             "\" fill=\"none\" stroke=\"#000\" stroke-opacity=\".16\" stroke-width=\".6\"/>";
  if (colour.swatch.spot)
    drawing += "<circle cx=\"9\" cy=\"" + Number(height - 9) +
               "\" r=\"4.6\" fill=\"#fff\" stroke=\"#1d1d1f\" stroke-width=\".9\"/><circle cx=\"9\" cy=\"" +
               Number(height - 9) + "\" r=\"1.9\" fill=\"#1d1d1f\"/>";
  return drawing;
}

std::vector<SheetMark> MarksOf(const Sheet &sheet)
{
  constexpr double kHeight = 64.0;
  SheetColour spot;
  spot.screen = CLR_COLORSPEC::MakeRGB(0xC8, 0xC8, 0xCC);
  SheetColour beyond = spot;
  spot.swatch.spot = true;
  beyond.inGamut = false;
  std::vector<SheetMark> marks;
  if (sheet.CountSpots() > 0)
    marks.push_back({sheet.HasTints() ? "an ink of its own, or a tint of one" : "an ink of its own",
                     SwatchSvg(spot, kHeight), "0 44 30 20"});
  if (sheet.CountBeyond() > 0)
    marks.push_back({"beyond the gamut of " + sheet.press, SwatchSvg(beyond, kHeight), "70 0 30 20"});
  return marks;
}

ExitCode ShowPalette(const ShowArguments &arguments, const Output &output)
{
  const PictureForm *const form = PictureFormOf(arguments.picture);
  const LoadedPalette palette = OpenPalette(arguments.palette);
  if (ZelUtl::IsSameFile(palette.path, arguments.picture))
    throw Failure(ExitCode::Usage, Harmless(arguments.picture) + " is the palette itself");
  const Sheet sheet = SheetOf(palette, arguments.profile);
  std::string reason;
  if (form != nullptr && !ZelUtl::ReplaceFile(arguments.picture, form->draw(sheet), reason))
    throw Failure(ExitCode::Unreadable, Harmless(arguments.picture) + ": " + reason);
  SayNotes(palette.path, sheet.notes);
  if (output.json)
    PrintJson("zelclr.palette.show", JsonOf(sheet));
  else
    std::fputs(TableOf(sheet, output).c_str(), stdout);
  return sheet.CountBeyond() == 0 ? ExitCode::Fine : ExitCode::Findings;
}

} // namespace cli
