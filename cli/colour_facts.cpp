#include "cli/colour_facts.h"

#include "cli/failure.h"
#include "cli/output.h"
#include "zelclr/colour/colour_names.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/formats/colour_list.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/text.h"

namespace cli {

CLR_COLORSPEC ColourFromInput(std::string_view text)
{
  std::string reason;
  const auto colour = ZelClr::ColorSpecFromInput(ZelUtl::Trimmed(text), reason);
  if (!colour)
    throw Failure(ExitCode::Usage, Harmless(reason));
  return *colour;
}

unsigned ModelFromInput(const std::string &name)
{
  const std::string lower = ZelUtl::LowerAscii(name);
  // The exact name of a model goes before the name that it shares with others: "CMYK" is 2 and not any CMYK.
  for (const auto naming : {&ZelClr::ColourModel::textName, &ZelClr::ColourModel::spaceName}) {
    for (const ZelClr::ColourModel &model : ZelClr::ColourModels()) {
      if (WClrConvert::IsBasicType(model.number) && !lower.empty() && ZelUtl::LowerAscii(model.*naming) == lower)
        return model.number;
    }
  }
  throw Failure(ExitCode::Usage, "\"" + Harmless(name) + "\" is no model that colours can be converted to");
}

std::optional<NearestName> NearestNameOf(const CLR_COLORSPEC &colour)
{
  const auto lab = WClrConvert::GetLab(colour);
  if (!lab)
    return std::nullopt;
  std::optional<NearestName> nearest;
  for (const ZelClr::NamedRgb &row : ZelClr::SvgColourNames()) {
    const double distance = ZelClr::Formulas::Ciede2000(*lab, *WClrConvert::GetLab(row.Colour()));
    if (!nearest || distance < nearest->distance)
      nearest = NearestName{row.name, distance};
  }
  return nearest;
}

std::string ReadInput(const std::string &path)
{
  constexpr std::size_t kMostBytes = 64u << 20;
  std::string reason;
  auto bytes = path == "-" ? ZelUtl::ReadStandardInput(kMostBytes, reason) : ZelUtl::ReadFile(path, kMostBytes, reason);
  if (!bytes)
    throw Failure(ExitCode::Unreadable, Harmless(path == "-" ? "standard input" : path) + ": " + reason);
  return std::move(*bytes);
}

} // namespace cli
