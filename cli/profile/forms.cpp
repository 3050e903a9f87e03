#include "cli/profile/forms.h"

#include "cli/profile/icc_words.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/platform/bytes.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace cli {

namespace {

constexpr std::size_t kLabelColumns = 18;
constexpr std::size_t kValueColumns = 38;
constexpr std::size_t kMostTextColumns = 2000; // of one text of a profile; JSON has all of it

double Rounded(double value)
{
  return std::round(value * 100.0) / 100.0 + 0.0;
}

std::string RightAligned(const std::string &text, std::size_t columns)
{
  const std::size_t used = TextColumns(text);
  return used < columns ? std::string(columns - used, ' ') + text : text;
}

std::string Row(const std::string &label, const std::string &value)
{
  return "  " + Fitted(label, kLabelColumns) + " " + value + "\n";
}

std::string Heading(const std::string &text, const Output &output)
{
  return "\n" + output.Bold(text) + "\n";
}

std::string LabInWords(const std::optional<Lab> &lab)
{
  if (!lab)
    return "-";
  return RightAligned(TwoDecimals(lab->l), 6) + RightAligned(TwoDecimals(lab->a), 8) +
         RightAligned(TwoDecimals(lab->b), 8);
}

Json JsonOf(const std::optional<Lab> &lab)
{
  return lab ? Json{{"l", Rounded(lab->l)}, {"a", Rounded(lab->a)}, {"b", Rounded(lab->b)}} : Json(nullptr);
}

std::string ModelInWords(const ProfileFacts &facts)
{
  return facts.model == nullptr ? ColourSpaceInWords(facts.file.icc.Header().colourSpace) : facts.model->name;
}

std::string_view NameOf(ColorSystem::ColorManagementModule module)
{
  return ColorSystem::NameOfColorManagementModule(module);
}

const EngineUse *EngineInForce(const ProfileFacts &facts)
{
  for (const EngineUse &use : facts.engines) {
    if (use.inForce)
      return &use;
  }
  return nullptr;
}

std::vector<ZelUtl::IccText> TextsOf(const ProfileFacts &facts, const TextTag &tag)
{
  return ZelUtl::TextsOfIccTag(facts.file.icc.ReadTag(tag.signature, ZelUtl::kMostIccTextBytes));
}

/// "en-US", "en"; empty where the tag does not say.
std::string LocaleOf(const ZelUtl::IccText &text)
{
  return text.country.empty() ? text.language : text.language + "-" + text.country;
}

/// "mluc": what a tag begins with.
std::string TypeOf(const std::vector<std::uint8_t> &start)
{
  ZelUtl::ByteReader reader(start);
  return ZelUtl::TextOfIccSignature(reader.ReadBig<std::uint32_t>());
}

// --- Parts of the text -----------------------------------------------------------------------------------------------

std::string HeaderText(const ProfileFacts &facts, const Output &output)
{
  std::string text = Heading("Header", output);
  for (const HeaderField &field : FieldsOf(facts.file.icc.Header()))
    text += Row(field.label, field.words);
  const std::uint64_t size = facts.file.icc.Stamp().size;
  if (size != facts.file.icc.Header().size)
    text += Row("", "the file has " + std::to_string(size) + " bytes");
  return text;
}

std::string TextsText(const ProfileFacts &facts, const Output &output)
{
  std::string text = Heading("Texts", output);
  for (const TextTag &tag : kTextTags) {
    std::string label = tag.label;
    for (const ZelUtl::IccText &said : TextsOf(facts, tag)) {
      const std::string line = OneLine(said.text);
      text += Row(label, Fitted(Harmless(LocaleOf(said)), 6) +
                           (TextColumns(line) > kMostTextColumns ? Fitted(line, kMostTextColumns) : line));
      label.clear();
    }
  }
  return text;
}

std::string TagsText(const ProfileFacts &facts, const Output &output)
{
  std::string text = Heading("Tags", output) + output.Faint("  tag   type     offset      size") + "\n";
  for (const ZelUtl::IccTag &tag : facts.file.icc.Tags()) {
    const bool outside = LiesOutside(facts.file.icc, tag);
    const auto start = facts.file.icc.ReadTag(tag, 4);
    text += "  " + ZelUtl::TextOfIccSignature(tag.signature) + "  " + (start.size() < 4 ? "    " : TypeOf(start)) +
            RightAligned(std::to_string(tag.offset), 11) + RightAligned(std::to_string(tag.size), 10) + "  " +
            std::string(TagInWords(tag.signature)) + (outside ? "  OUTSIDE THE FILE" : "") + "\n";
  }
  return text;
}

std::string ColoursText(const ProfileFacts &facts, const Output &output)
{
  if (facts.model == nullptr)
    return Heading("Colours", output) + Row("gamut", "none: " + facts.noGamut);
  const EngineUse *const engine = EngineInForce(facts);
  std::string text = Heading("Colours", output) + "  " + Fitted("", kLabelColumns + 1 + 10) +
                     output.Faint("    L*      a*      b*") + "\n";
  for (const auto &[label, colour] : {std::pair{"white", &DeviceFacts::white}, {"black", &DeviceFacts::black}}) {
    for (const DeviceFacts *by : {&facts.relative, &facts.absolute}) {
      std::string line = Fitted(WordsOf(by->intent).option, 10) + LabInWords(by->*colour);
      if (colour == &DeviceFacts::black && !facts.model->inks.empty() && !by->blackBuild.empty())
        line += "   " + BuildInWords(*facts.model, by->blackBuild);
      text += Row(by == &facts.relative ? label : "", line);
    }
  }
  if (facts.HasGamut()) {
    for (const DeviceFacts *by : {&facts.relative, &facts.absolute}) {
      text += Row(by == &facts.relative ? "gamut volume" : "",
                  Fitted(WordsOf(by->intent).option, 10) + RightAligned(VolumeInWords(by->volume->Size()), 9) +
                    " \u0394E\u00B3" + (by->gamut->cutOff ? ", cut off where a* or b* is beyond 128" : ""));
    }
  } else {
    text += Row("gamut volume", "none: " + facts.noGamut);
  }
  for (const InkTotal &total : facts.inkTotals) {
    text += Row(&total == facts.inkTotals.data() ? "most ink" : "",
                Fitted(WordsOf(total.intent).option, 10) + RightAligned(OneDecimal(total.percent), 6) + " %");
  }
  if (engine != nullptr)
    text += "  " +
            output.Faint("On D50, through " + std::string(NameOf(engine->module)) + "." +
                         (facts.inkTotals.empty() ? "" : " Most ink: of all colours of sRGB.")) +
            "\n";
  return text;
}

std::string EnginesText(const ProfileFacts &facts, const Output &output)
{
  if (facts.engines.empty())
    return {};
  std::string text = Heading("Engines", output);
  for (const EngineUse &use : facts.engines) {
    const bool formula = use.module == ColorSystem::ColorManagementModule::Linear;
    std::string words = use.toLab && use.fromLab ? "uses it both ways"
                        : use.toLab              ? "makes Lab of its colours, not its colours of Lab"
                        : use.fromLab            ? "makes its colours of Lab, not Lab of its colours"
                        : use.here               ? "cannot use it"
                                                 : "not on this system";
    if (formula)
      words = use.toLab ? "converts its model by formula, without the profile" : "has no formula for its model";
    text += Row(std::string(NameOf(use.module)), words + (use.inForce ? "; in force" : ""));
  }
  return text;
}

// --- Parts of JSON ---------------------------------------------------------------------------------------------------

Json JsonOf(const DeviceFacts &by)
{
  Json content = {{"white", JsonOf(by.white)}, {"black", JsonOf(by.black)}};
  if (!by.blackBuild.empty()) {
    content["blackChannels"] = Json::array();
    for (const float channel : by.blackBuild)
      content["blackChannels"].push_back(Rounded(100.0 * static_cast<double>(channel)));
  }
  content["gamutVolume"] = by.volume ? Json(std::round(by.volume->Size())) : Json(nullptr);
  content["gamutCutOff"] = by.gamut && by.gamut->cutOff;
  return content;
}

/// What both `info` and `compare` say of a profile.
Json BasicJsonOf(const ProfileFacts &facts)
{
  const ZelUtl::IccHeader &header = facts.file.icc.Header();
  Json content = {{"name", facts.file.name},
                  {"path", facts.file.path},
                  {"fileSize", facts.file.icc.Stamp().size},
                  {"model", facts.model == nullptr ? Json(nullptr) : Json(facts.model->option)},
                  {"class", ClassInWords(header.deviceClass)},
                  {"version", VersionInWords(header.version)},
                  {"damaged", facts.IsDamaged()}};
  content["relative"] = JsonOf(facts.relative);
  content["absolute"] = JsonOf(facts.absolute);
  if (!facts.HasGamut())
    content["noGamut"] = facts.noGamut;
  content["mostInk"] = Json::object();
  for (const InkTotal &total : facts.inkTotals)
    content["mostInk"][WordsOf(total.intent).option] = Rounded(total.percent);
  return content;
}

} // namespace

std::string SizeInWords(std::uint64_t bytes)
{
  double size = static_cast<double>(bytes);
  const char *unit = "B";
  for (const char *const larger : {"kB", "MB", "GB"}) {
    if (size < 1000.0)
      break;
    size /= 1000.0;
    unit = larger;
  }
  return (unit[0] == 'B' ? std::to_string(bytes) : OneDecimal(size)) + " " + unit;
}

std::string VolumeInWords(double volume)
{
  const double step = volume < 100'000.0 ? 100.0 : 1000.0;
  std::string text = std::to_string(std::llround(volume / step) * std::llround(step));
  for (std::size_t i = text.size(); i > 3; i -= 3)
    text.insert(i - 3, ",");
  return text;
}

std::string ShareInWords(double share)
{
  return OneDecimal(100.0 * share) + " %";
}

std::string TwoDecimals(double number)
{
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", Rounded(number));
  return text;
}

std::string BuildInWords(const ModelWords &model, const Channels &build)
{
  std::string text;
  for (std::size_t i = 0; i < model.inks.size(); ++i)
    text += std::string(i == 0 ? "" : "  ") + model.inks[i] + " " + std::to_string(std::lround(build[i] * 100.0f));
  return text;
}

std::string TextOf(const ProfileFacts &facts, const Output &output)
{
  return output.Bold(facts.file.name) + "\n" + Harmless(facts.file.path) + "\n" + HeaderText(facts, output) +
         TextsText(facts, output) + TagsText(facts, output) + ColoursText(facts, output) + EnginesText(facts, output);
}

Json JsonOf(const ProfileFacts &facts)
{
  Json content = BasicJsonOf(facts);
  for (const HeaderField &field : FieldsOf(facts.file.icc.Header()))
    content["header"][field.key] = field.value;
  for (const TextTag &tag : kTextTags) {
    content["texts"][tag.key] = Json::array();
    for (const ZelUtl::IccText &text : TextsOf(facts, tag)) {
      content["texts"][tag.key].push_back(
        {{"language", text.language}, {"country", text.country}, {"text", ZelUtl::Utf8FromWide(text.text)}});
    }
  }
  content["tags"] = Json::array();
  for (const ZelUtl::IccTag &tag : facts.file.icc.Tags()) {
    const auto start = facts.file.icc.ReadTag(tag, 4);
    content["tags"].push_back({{"signature", ZelUtl::TextOfIccSignature(tag.signature)},
                               {"words", TagInWords(tag.signature)},
                               {"type", start.size() < 4 ? Json(nullptr) : Json(TypeOf(start))},
                               {"offset", tag.offset},
                               {"size", tag.size},
                               {"outside", LiesOutside(facts.file.icc, tag)}});
  }
  content["engines"] = Json::array();
  for (const EngineUse &use : facts.engines) {
    content["engines"].push_back({{"module", NameOf(use.module)},
                                  {"here", use.here},
                                  {"inForce", use.inForce},
                                  {"byFormula", use.module == ColorSystem::ColorManagementModule::Linear},
                                  {"toLab", use.toLab},
                                  {"fromLab", use.fromLab}});
  }
  return content;
}

std::optional<double> DifferenceOf(const std::optional<Lab> &a, const std::optional<Lab> &b)
{
  return a && b ? std::optional(ZelClr::Formulas::Ciede2000(*a, *b)) : std::nullopt;
}

std::string TextOf(const Comparison &comparison, const Output &output)
{
  const ProfileFacts &a = comparison.a;
  const ProfileFacts &b = comparison.b;
  const RenderingIntent intent = comparison.intent;
  const auto both = [](const std::string &label, const std::string &ofA, const std::string &ofB,
                       const std::string &behind = "") {
    return Row(label, Fitted(ofA, kValueColumns) + " " + (behind.empty() ? ofB : Fitted(ofB, kValueColumns) + behind));
  };
  std::string text = output.Bold(both("", "A  " + a.file.name, "B  " + b.file.name));
  const auto fact = [&](const char *label, const auto &wordsOf) { text += both(label, wordsOf(a), wordsOf(b)); };
  using Facts = const ProfileFacts &;
  fact("model", [](Facts facts) { return ModelInWords(facts); });
  fact("class", [](Facts facts) { return ClassInWords(facts.file.icc.Header().deviceClass); });
  fact("version", [](Facts facts) { return VersionInWords(facts.file.icc.Header().version); });
  fact("connection space", [](Facts facts) { return ColourSpaceInWords(facts.file.icc.Header().connectionSpace); });
  fact("size", [](Facts facts) { return SizeInWords(facts.file.icc.Stamp().size); });
  fact("file", [](Facts facts) { return Harmless(ZelUtl::FileNameOfPath(facts.file.path)); });

  text += "\n" + output.Faint(both("", "    L*      a*      b*", "    L*      a*      b*", "\u0394E2000"));
  for (const RenderingIntent by : {RenderingIntent::RelativeColorimetric, RenderingIntent::AbsoluteColorimetric}) {
    for (const auto &[label, colour] : {std::pair{"white, ", &DeviceFacts::white}, {"black, ", &DeviceFacts::black}}) {
      const auto difference = DifferenceOf(a.By(by).*colour, b.By(by).*colour);
      text += both(std::string(label) + WordsOf(by).option, LabInWords(a.By(by).*colour), LabInWords(b.By(by).*colour),
                   difference ? TwoDecimals(*difference) : "-");
    }
  }
  text += "\n";
  const auto volume = [intent = intent](Facts facts) {
    return facts.HasGamut() ? VolumeInWords(facts.By(intent).volume->Size()) + " \u0394E\u00B3" : "none";
  };
  text += both("gamut volume", volume(a), volume(b));
  for (const auto &[letter, facts] : {std::pair{"A", &a}, {"B", &b}}) {
    if (!facts->HasGamut())
      text += Row("", std::string(letter) + ": " + facts->noGamut);
  }
  if (comparison.HasGamuts()) {
    const double common = comparison.CommonVolume();
    text += Row("shared by both", VolumeInWords(common) + " \u0394E\u00B3");
    text += both("share of it all", ShareInWords(ShareOf(common, comparison.VolumeOfA())) + " of A is within B",
                 ShareInWords(ShareOf(common, comparison.VolumeOfB())) + " of B is within A");
    text += "  " + output.Faint(std::string("Gamuts are ") + WordsOf(intent).name + ", in CIE Lab on D50.") + "\n";
  }
  return text;
}

Json JsonOf(const Comparison &comparison)
{
  const auto &[a, b, intent] = comparison;
  Json content = {{"a", BasicJsonOf(a)}, {"b", BasicJsonOf(b)}, {"intent", WordsOf(intent).option}};
  for (const RenderingIntent by : {RenderingIntent::RelativeColorimetric, RenderingIntent::AbsoluteColorimetric}) {
    for (const auto &[key, colour] : {std::pair{"white", &DeviceFacts::white}, {"black", &DeviceFacts::black}}) {
      const auto difference = DifferenceOf(a.By(by).*colour, b.By(by).*colour);
      content["deltaE2000"][key][WordsOf(by).option] = difference ? Json(Rounded(*difference)) : Json(nullptr);
    }
  }
  content["gamut"] = nullptr;
  if (comparison.HasGamuts()) {
    const double common = comparison.CommonVolume();
    const auto share = [](double part, double whole) { return std::round(ShareOf(part, whole) * 1e4) / 1e4; };
    content["gamut"] = {{"volumeOfA", std::round(comparison.VolumeOfA())},
                        {"volumeOfB", std::round(comparison.VolumeOfB())},
                        {"commonVolume", std::round(common)},
                        {"shareOfAWithinB", share(common, comparison.VolumeOfA())},
                        {"shareOfBWithinA", share(common, comparison.VolumeOfB())}};
  }
  return content;
}

} // namespace cli
