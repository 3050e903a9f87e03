// zelclr info COLOUR

#include "cli/colour_facts.h"
#include "cli/command.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/colour/palette_types.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>

namespace cli {

namespace {

struct Fact
{
  const char *name;
  bool holds;
};

void Print(const char *label, const std::string &value)
{
  std::printf("%-14s %s\n", label, value.c_str());
}

void Info(const std::string &argument, const Output &output)
{
  const CLR_COLORSPEC colour = ColourFromInput(argument);
  const ZelClr::ColourModel &model = *ZelClr::FindColourModel(colour.GetType());
  const auto nearest = NearestNameOf(colour);
  const auto lab = WClrConvert::GetLab(colour);
  const Fact facts[] = {
    {"valid", colour.Validate()},
    {"CMYK", colour.IsCMYK()},
    {"spot", colour.IsSpot()},
    {"tintable", colour.IsTintable()},
    {"achromatic", WClrConvert::IsAchromaticColor(colour)},
    {"white", WClrConvert::IsAchromaticWhite(colour)},
    {"prints as gray", WClrConvert::CanTreatColorAsGrayscale(colour)},
  };
  Json models = Json::object();
  for (const ZelClr::ColourModel &row : ZelClr::ColourModels()) {
    CLR_COLORSPEC reading;
    if (WClrConvert::ConvertToBasicType(&reading, row.number, &colour))
      models[std::string(row.textName)] = ZelClr::TextFromColorSpec(reading);
  }

  if (output.json) {
    Json content = {
      {"colour", ZelClr::TextFromColorSpec(colour)}, {"model", {{"number", model.number}, {"name", model.textName}}},
      {"screen", HexFromColorSpec(colour)},          {"density", colour.GetDensity()},
      {"palette", colour.GetPaletteGuid().ToText()}, {"paletteType", ZelClr::PaletteTypeName(colour.GetPaletteType())}};
    for (const Fact &fact : facts)
      content["is"][fact.name] = fact.holds;
    if (lab)
      content["lab"] = {{"l", lab->l}, {"a", lab->a}, {"b", lab->b}, {"white", "D50"}};
    if (nearest)
      content["nearestName"] = {{"name", nearest->name}, {"deltaE2000", nearest->distance}};
    content["models"] = {{"method", "formula"}, {"values", models}};
    PrintJson("zelclr.info", content);
    return;
  }

  std::printf("%s%s\n\n", output.Swatch(colour, 12).c_str(), output.Bold(ZelClr::TextFromColorSpec(colour)).c_str());
  Print("model", std::to_string(model.number) + " " + std::string(model.textName));
  std::string kinds;
  for (const Fact &fact : facts) {
    if (fact.holds)
      kinds += (kinds.empty() ? "" : ", ") + std::string(fact.name);
  }
  Print("is", kinds.empty() ? "-" : kinds);
  Print("density", std::to_string(colour.GetDensity()));
  if (!colour.GetPaletteGuid().IsNull()) {
    Print("palette",
          colour.GetPaletteGuid().ToText() + " " + std::string(ZelClr::PaletteTypeName(colour.GetPaletteType())));
  }
  if (nearest) {
    Print("nearest name",
          std::string(nearest->name) +
            (nearest->distance < 0.005 ? ", exactly" : ", \u0394E2000 " + OneDecimal(nearest->distance)));
  }
  if (lab) {
    Print("L* a* b* (D50)", ZelUtl::TextFromNumber(lab->l, 2) + "  " + ZelUtl::TextFromNumber(lab->a, 2) + "  " +
                              ZelUtl::TextFromNumber(lab->b, 2));
  }
  if (models.empty()) {
    std::printf("\nWithout its palette this colour has no reading in another model.\n");
    return;
  }
  std::printf("\n%s\n", output.Faint("In every model, by formula").c_str());
  for (const auto &[name, value] : models.items())
    std::printf("  %s\n", value.get<std::string>().c_str());
}

} // namespace

void AddInfo(CLI::App &app, Output &output, ExitCode & /*exitCode*/)
{
  auto argument = std::make_shared<std::string>();
  CLI::App *command = app.add_subcommand("info", "Everything about one colour");
  command->add_option("colour", *argument, "The colour")->required()->type_name("COLOUR");
  command->callback([argument, &output] { Info(*argument, output); });
}

} // namespace cli
