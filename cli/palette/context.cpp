#include "cli/palette/context.h"

#include "cli/failure.h"
#include "cli/output.h"
#include "cli/palette/swatch_facts.h"
#include "cli/profile/profile_file.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/visitors/color_spec_converter.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/text.h"
#include "zelclr/settings/color_settings_manager.h"

namespace cli {

namespace {

using ColorSystem::ColorContext;
using ZelClr::Swatch;

/// Whether it changed; false too for a colour that stays what it is in any context.
bool Convert(CColorSpecConverter &converter, CLR_COLORSPEC &colour, const std::string &name)
{
  const ZelClr::HResult result = converter.ProcessColorspec(colour);
  if (result < 0)
    throw Failure(ExitCode::Missing, Harmless(name) + " cannot be converted to that context");
  return result == ZelClr::kSOk;
}

void MoveOwn(WXmlColorPalette &palette, CColorSpecConverter &converter)
{
  for (std::size_t i = 0; i < palette.GetColorCount(); ++i) {
    CLR_COLORSPEC colour = palette.GetColorSpec(i);
    WXmlColor moved = palette.GetColor(i);
    if (!Convert(converter, colour, moved.name))
      continue;
    colour = ZelClr::StorableColor(colour);
    moved.colorSpace = ZelClr::SpaceNameFromModel(colour.GetType());
    moved.tints = ZelClr::PaletteValuesFromColor(colour);
    palette.ReplaceColor(i, std::move(moved));
  }
}

} // namespace

ColorContext ContextFrom(const std::string &presetOrProfile)
{
  const std::wstring name = ZelUtl::WideFromUtf8(presetOrProfile);
  if (const auto preset = ColorSystem::ColorSettingsManager::GetInstance().GetColorSettings(name))
    return preset->GetDefaultColorContext();
  const ProfileFile file = OpenProfile(presetOrProfile);
  ColorContext context = ColorContext::GetApplicationDefaultColorContext();
  if (file.profile == nullptr || !context.SetColorProfile(file.profile->GetColorModel(), file.profile))
    throw Failure(ExitCode::Usage, Harmless(presetOrProfile) + ": colours of documents do not go by such a profile");
  return context;
}

std::vector<MovedColour> MoveToContext(LoadedPalette &palette, const ColorContext &context)
{
  CColorSpecConverter converter;
  converter.CColorConverterBaseInit(ColorContext::GetApplicationDefaultColorContext(), context);
  const std::vector<Swatch> before = palette.book.swatches;
  if (palette.own) {
    MoveOwn(*palette.own, converter);
    std::vector<std::string> notes = std::move(palette.book.notes);
    palette = LoadedFromOwn(std::move(*palette.own), palette.path);
    palette.book.notes = std::move(notes);
  } else {
    for (Swatch &swatch : palette.book.swatches) {
      CLR_COLORSPEC colour = swatch.record;
      if (swatch.spot || !Convert(converter, colour, swatch.name))
        continue;
      const std::size_t line = swatch.line;
      swatch = ZelClr::RecordSwatch(swatch.name, colour);
      swatch.line = line;
    }
  }
  std::vector<MovedColour> moved;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const Swatch &after = palette.book.swatches[i];
    if (ValueInWords(before[i]) != ValueInWords(after))
      moved.push_back({before[i].name, before[i], after});
  }
  return moved;
}

} // namespace cli
