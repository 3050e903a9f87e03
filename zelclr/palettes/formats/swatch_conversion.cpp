// The colours of swatches in other models and by other profiles.
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"
#include "zelclr/settings/color_settings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <map>
#include <random>

namespace ZelClr {

namespace {

using ColorSystem::ColorConverter;
using ColorSystem::ColorModel;
using Values = std::array<double, 4>;

constexpr std::size_t kMostProfileBytes = std::size_t{64} << 20;

/// One row for each swatch model, in its order.
struct ModelRow
{
  ColorModel managed;
  unsigned record; ///< the finest record model of it
  unsigned channels;
  std::string_view name;
};

constexpr ModelRow kModels[] = {{ColorModel::Rgb, ClrModel::Rgb48, 3, "RGB"},
                                {ColorModel::Cmyk, ClrModel::Cmyk255, 4, "CMYK"},
                                {ColorModel::Grayscale, ClrModel::Gray16, 1, "gray"},
                                {ColorModel::Lab, ClrModel::Lab255, 3, "Lab"}};

const ModelRow &RowOf(SwatchModel model)
{
  return kModels[static_cast<std::size_t>(model)];
}

double Clipped(double value)
{
  return value > 0.0 ? std::min(value, 1.0) : 0.0; // a NaN becomes 0
}

/// The application's converter, with what its settings say of black. `source` is what the numbers are meant by.
class Converter
{
public:
  explicit Converter(const ColorSystem::ColorContext &source, const ColorSystem::ColorContext &target)
    : converter_(source, target)
  {
    try {
      const auto &settings = ColorSystem::ColorSettings::GetApplicationColorSettings();
      converter_.SetPreservePureBlack(settings.GetPreservePureBlack());
      converter_.SetMapGrayscalToBlackChannel(settings.GetMapGrayToCmykBlackChannel());
    } catch (const ColorSystem::ColorSystemError &) {
      // An installation without settings: black is what the formulas make of it.
    }
  }

  const ColorConverter &Get() const { return converter_; }

  /// False, with the values as they were, when there is no way.
  bool Convert(std::vector<Values> &values, SwatchModel from, SwatchModel to) const
  {
    const ModelRow &source = RowOf(from);
    const ModelRow &target = RowOf(to);
    const auto count = static_cast<std::uint32_t>(values.size());
    const auto pixels =
      ColorSystem::CreateColorData({source.managed, ColorSystem::SampleType::UInt16}, count, 1, 0, nullptr);
    const auto converted =
      ColorSystem::CreateColorData({target.managed, ColorSystem::SampleType::UInt16}, count, 1, 0, nullptr);
    for (std::uint32_t i = 0; i < count; ++i) {
      const Values channels = from == SwatchModel::Lab ? LabChannels(values[i]) : values[i];
      for (unsigned c = 0; c < source.channels; ++c)
        pixels->SetSample(0, i, c, static_cast<float>(Clipped(channels[c])));
    }
    if (!converter_.ConvertColorData(*pixels, *converted))
      return false;
    for (std::uint32_t i = 0; i < count; ++i) {
      Values channels{};
      for (unsigned c = 0; c < target.channels; ++c)
        channels[c] = converted->GetSample(0, i, c);
      values[i] = to == SwatchModel::Lab ? LabValues(channels) : channels;
    }
    return true;
  }

private:
  static Values LabChannels(const Values &lab)
  {
    return {lab[0] / 100.0, (lab[1] + 128.0) / 255.0, (lab[2] + 128.0) / 255.0, 0.0};
  }
  static Values LabValues(const Values &channels)
  {
    return {channels[0] * 100.0, channels[1] * 255.0 - 128.0, channels[2] * 255.0 - 128.0, 0.0};
  }

  ColorConverter converter_;
};

/// The application's, made by the first that needs it.
std::optional<Converter> &MadeFor(std::optional<Converter> &converter)
{
  if (!converter) {
    const auto context = ColorSystem::ColorContext::GetApplicationDefaultColorContext();
    converter.emplace(context, context);
  }
  return converter;
}

/// The numbers thinned by the tint, as ink on paper: towards no ink, or towards white.
Values Lightened(const Swatch &swatch)
{
  Values values = swatch.values;
  const double tint = Clipped(swatch.tint);
  if (!swatch.spot || tint == 1.0)
    return values;
  const Values paper = swatch.model == SwatchModel::Cmyk  ? Values{}
                       : swatch.model == SwatchModel::Lab ? Values{100.0, 0.0, 0.0, 0.0}
                                                          : Values{1.0, 1.0, 1.0, 0.0};
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = paper[i] + (values[i] - paper[i]) * tint;
  return values;
}

/// Cuts off what lies beyond the model; a NaN becomes the least.
void ClipTo(SwatchModel model, Values &values, double rgbBeyond = 0.0)
{
  const auto clip = [](double &value, double least, double most) {
    value = value > least ? std::min(value, most) : least;
  };
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (model == SwatchModel::Lab)
      clip(values[i], i == 0 ? 0.0 : -128.0, i == 0 ? 100.0 : 127.0);
    else if (model == SwatchModel::Rgb)
      clip(values[i], -rgbBeyond, 1.0 + rgbBeyond);
    else
      clip(values[i], 0.0, 1.0);
  }
}

/// A swatch of these numbers that is otherwise the other.
Swatch WithNumbers(const Swatch &swatch, SwatchModel model, const Values &values)
{
  Swatch made = model == SwatchModel::Rgb    ? RgbSwatch(swatch.name, values[0], values[1], values[2])
                : model == SwatchModel::Cmyk ? CmykSwatch(swatch.name, values[0], values[1], values[2], values[3])
                : model == SwatchModel::Gray ? GraySwatch(swatch.name, values[0])
                                             : LabSwatch(swatch.name, values[0], values[1], values[2]);
  made.spot = swatch.spot;
  made.tint = swatch.tint;
  made.line = swatch.line;
  return made;
}

/// A profile of a file as a file of its own for as long as this lives.
class ProfileOfBook
{
public:
  explicit ProfileOfBook(std::string_view bytes) : bytes_(bytes)
  {
    std::random_device random; // nobody can guess the name
    std::string name = "zelclr-";
    for (int i = 0; i < 4; ++i) {
      char part[9];
      std::snprintf(part, sizeof part, "%08x", static_cast<unsigned>(random()));
      name += part;
    }
    path_ = ZelUtl::JoinPath(ZelUtl::GetFolders().temporary, name + ".icc");
    std::string reason;
    if (!ZelUtl::ReplaceFile(path_, bytes, reason))
      return;
    profile_ = ColorSystem::ColorProfileManager::GetInstance().CreateColorProfile(ZelUtl::WideFromUtf8(path_), true);
    if (profile_ != nullptr && !profile_->IsValid())
      profile_.reset();
  }
  ~ProfileOfBook()
  {
    profile_.reset();
    ColorSystem::ColorProfileManager::GetInstance().DeleteUnusedTransientProfiles();
    std::remove(path_.c_str()); // what was no profile
  }
  ProfileOfBook(const ProfileOfBook &) = delete;
  ProfileOfBook &operator=(const ProfileOfBook &) = delete;

  const std::shared_ptr<ColorSystem::ColorProfile> &Get() const { return profile_; }
  /// Whether it is, byte by byte, that installed profile: then numbers stay as they are, which no round trip through a
  /// press keeps.
  bool IsSameAs(const std::shared_ptr<ColorSystem::ColorProfile> &other) const
  {
    std::string reason;
    return other != nullptr &&
           ZelUtl::ReadFile(ZelUtl::Utf8FromWide(other->GetPath()), kMostProfileBytes, reason) == bytes_;
  }

private:
  std::string_view bytes_;
  std::string path_;
  std::shared_ptr<ColorSystem::ColorProfile> profile_;
};

/// The numbers of these swatches of a book, of one model, by the application's profile; false when there is no way.
bool ConvertByProfile(const ProfileOfBook &profile, SwatchModel model, const std::vector<std::size_t> &which,
                      SwatchBook &book)
{
  const auto target = ColorSystem::ColorContext::GetApplicationDefaultColorContext();
  if (profile.Get() == nullptr)
    return false;
  if (profile.IsSameAs(target.GetColorProfile(RowOf(model).managed)))
    return true;
  ColorSystem::ColorContext source;
  if (!source.SetColorProfile(RowOf(model).managed, profile.Get()))
    return false;
  std::vector<Values> values;
  for (const std::size_t i : which)
    values.push_back(book.swatches[i].values);
  if (!Converter(source, target).Convert(values, model, model))
    return false;
  for (std::size_t i = 0; i < which.size(); ++i)
    book.swatches[which[i]] = WithNumbers(book.swatches[which[i]], model, values[i]);
  return true;
}

} // namespace

void ConvertProfiles(SwatchBook &book)
{
  // By profile and model, so that each pair is one conversion.
  std::map<std::pair<std::size_t, SwatchModel>, std::vector<std::size_t>> meant;
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    Swatch &swatch = book.swatches[i];
    if (swatch.profile && swatch.model < SwatchModel::Lab) // Lab means one thing only
      meant[{*swatch.profile, swatch.model}].push_back(i);
    swatch.profile.reset();
  }
  std::size_t unconverted = 0;
  for (auto group = meant.begin(); group != meant.end();) {
    const std::size_t index = group->first.first;
    const ProfileOfBook profile(index < book.profiles.size() ? std::string_view(book.profiles[index])
                                                             : std::string_view());
    for (; group != meant.end() && group->first.first == index; ++group) {
      if (!ConvertByProfile(profile, group->first.second, group->second, book))
        unconverted += group->second.size();
    }
  }
  if (unconverted > 0)
    book.notes.push_back(CountOf(unconverted, "colour keeps its", "colours keep their") +
                         " numbers, because the profile for them cannot be used");
  book.profiles.clear();
}

std::string CountOf(std::size_t count, std::string_view singular, std::string_view plural)
{
  std::string text = std::to_string(count) + " ";
  if (count == 1)
    return text.append(singular);
  return plural.empty() ? text.append(singular) + "s" : text.append(plural);
}

namespace {

Values BlackOf(SwatchModel model)
{
  return model == SwatchModel::Cmyk ? Values{0.0, 0.0, 0.0, 1.0} : Values{};
}

/// What a record looks like, as the canonical record of its family.
bool NormalizedRecord(const CLR_COLORSPEC &record, CLR_COLORSPEC &normalized)
{
  using ColorSystem::SimpleColorConverter;
  return record.IsSpot() ? SimpleColorConverter::NormalizeSpotColorSpecToProcess(record, ColorModel::Lab, normalized)
                         : SimpleColorConverter::NormalizeColorSpec(record, normalized);
}

/// The swatch with numbers; a record that none of the four models states, six inks, through its profile as `model`.
/// Still a record where nobody knows how it looks.
Swatch WithAppearance(const Swatch &swatch, SwatchModel model, std::optional<Converter> &converter)
{
  if (swatch.model != SwatchModel::Record)
    return swatch;
  CLR_COLORSPEC full(swatch.record), normalized;
  if (swatch.spot)
    full.SetDensity(100); // the tint of the swatch says it
  if (!NormalizedRecord(full, normalized))
    return swatch;
  Swatch made = RecordSwatch(swatch.name, normalized);
  if (made.model == SwatchModel::Record) {
    CLR_COLORSPEC converted;
    if (!MadeFor(converter)->Get().Convert(normalized, converted, RowOf(model).record, 0))
      return swatch;
    made = RecordSwatch(swatch.name, converted);
  }
  return made.model == SwatchModel::Record ? swatch : WithNumbers(swatch, made.model, made.values);
}

bool Holds(const FormatLimits &limits, SwatchModel model)
{
  switch (model) {
  case SwatchModel::Rgb:
    return limits.rgb;
  case SwatchModel::Cmyk:
    return limits.cmyk;
  case SwatchModel::Gray:
    return limits.gray;
  case SwatchModel::Lab:
    return limits.lab;
  case SwatchModel::Record:
    break;
  }
  return false;
}

/// Records of spot colours count, too, whose model is what they look like.
bool KeepsRecord(const FormatLimits &limits, const Swatch &swatch)
{
  return limits.keepsRecord != nullptr && limits.keepsRecord(swatch.record) &&
         (swatch.model == SwatchModel::Record || swatch.record.IsSpot());
}

bool IsOnSteps(const Values &values, double steps)
{
  return std::all_of(values.begin(), values.end(), [steps](double value) {
    return std::abs(value * steps - std::round(value * steps)) < 1e-6 * steps;
  });
}

/// The book without the swatches that nobody can show, its groups moved along; how many those were.
std::size_t LeaveOutUnknown(SwatchBook &book, const FormatLimits &limits)
{
  std::vector<Swatch> kept;
  std::size_t group = 0;
  for (std::size_t i = 0; i <= book.swatches.size(); ++i) {
    for (; group < book.groups.size() && book.groups[group].first <= i; ++group)
      book.groups[group].first = kept.size();
    if (i < book.swatches.size() && (HasAppearance(book.swatches[i]) || KeepsRecord(limits, book.swatches[i])))
      kept.push_back(std::move(book.swatches[i]));
  }
  const std::size_t unknown = book.swatches.size() - kept.size();
  book.swatches = std::move(kept);
  return unknown;
}

/// Takes away what the format has no place for beside the colours.
void LeaveOutTexts(SwatchBook &book, const FormatLimits &limits, std::vector<std::string> &notes)
{
  const auto leaveOut = [&notes](bool held, auto &what, std::string_view words) {
    if (!held && what != std::decay_t<decltype(what)>())
      notes.push_back(std::string(words) + " was left out");
    if (!held)
      what = {};
  };
  leaveOut(limits.bookName, book.name, "the name of the palette");
  leaveOut(limits.description, book.description, "the description");
  leaveOut(limits.columns, book.columns, "the number of columns");
  if (!limits.groups && !book.groups.empty()) {
    notes.push_back(CountOf(book.groups.size(), "group was", "groups were") + " left out");
    book.groups.clear();
  }
  const auto makeValid = [](std::string &text) {
    if (!ZelUtl::IsValidUtf8(text))
      text = ZelUtl::Utf8FromWide(ZelUtl::WideFromUtf8(text));
  };
  makeValid(book.name);
  makeValid(book.description);
  for (SwatchGroup &group : book.groups)
    makeValid(group.name);
  std::size_t names = 0;
  for (Swatch &swatch : book.swatches) {
    makeValid(swatch.name);
    if (limits.names || swatch.name.empty())
      continue;
    ++names;
    swatch.name.clear();
  }
  if (names > 0)
    notes.push_back(CountOf(names, "name of a colour was", "names of colours were") + " left out");
}

} // namespace

bool IsRegistration(const CLR_COLORSPEC &record)
{
  return record.GetType() == ClrModel::Registration;
}

bool HasAppearance(const Swatch &swatch)
{
  CLR_COLORSPEC process;
  return swatch.model != SwatchModel::Record || NormalizedRecord(swatch.record, process);
}

std::vector<Values> ValuesOfSwatches(std::span<const Swatch> swatches, SwatchModel model)
{
  std::vector<Values> result(swatches.size());
  std::vector<std::size_t> from[std::size(kModels)];
  std::optional<Converter> converter; // made for the first that needs it
  for (std::size_t i = 0; i < swatches.size(); ++i) {
    const Swatch swatch = WithAppearance(swatches[i], model, converter);
    result[i] = Lightened(swatch);
    if (swatch.model == SwatchModel::Record)
      result[i] = BlackOf(model);
    else if (swatch.model == SwatchModel::Gray && model == SwatchModel::Rgb)
      result[i] = {result[i][0], result[i][0], result[i][0], 0.0};
    else if (swatch.model != model)
      from[static_cast<std::size_t>(swatch.model)].push_back(i);
  }
  for (std::size_t source = 0; source < std::size(from); ++source) {
    if (from[source].empty())
      continue;
    std::vector<Values> values;
    for (const std::size_t i : from[source])
      values.push_back(result[i]);
    if (!MadeFor(converter)->Convert(values, static_cast<SwatchModel>(source), model))
      std::fill(values.begin(), values.end(), BlackOf(model));
    for (std::size_t i = 0; i < values.size(); ++i)
      result[from[source][i]] = values[i];
  }
  for (Values &values : result)
    ClipTo(model, values);
  return result;
}

std::array<double, 3> RgbOfSwatch(const Swatch &swatch)
{
  const Values values = ValuesOfSwatches({&swatch, 1}, SwatchModel::Rgb).front();
  return {values[0], values[1], values[2]};
}

std::array<double, 4> CmykOfSwatch(const Swatch &swatch)
{
  return ValuesOfSwatches({&swatch, 1}, SwatchModel::Cmyk).front();
}

std::array<double, 3> LabOfSwatch(const Swatch &swatch)
{
  const Values values = ValuesOfSwatches({&swatch, 1}, SwatchModel::Lab).front();
  return {values[0], values[1], values[2]};
}

SwatchBook Fitted(SwatchBook book, const FormatLimits &limits, std::vector<std::string> &notes)
{
  const std::size_t notesOfReader = book.notes.size();
  ConvertProfiles(book);
  notes.insert(notes.end(), book.notes.begin() + static_cast<std::ptrdiff_t>(notesOfReader), book.notes.end());
  if (const std::size_t unknown = LeaveOutUnknown(book, limits))
    notes.push_back(CountOf(unknown, "colour was", "colours were") +
                    " left out, because nobody knows here what they look like");

  std::optional<Converter> converter;
  std::vector<Swatch> foreign; // those whose model the format does not hold
  std::vector<std::size_t> places;
  std::size_t changed[std::size(kModels)][std::size(kModels)] = {}; // by model, from and to
  std::size_t others[std::size(kModels)] = {};                      // records, by what they become
  std::size_t spots = 0, tints = 0, clipped = 0, rounded = 0;
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    Swatch &swatch = book.swatches[i];
    if (KeepsRecord(limits, swatch))
      continue;
    const bool isOther = swatch.model == SwatchModel::Record;
    swatch = WithAppearance(swatch, limits.otherwise, converter);
    if (!swatch.spot)
      swatch.tint = 1.0;
    const bool isInk = limits.spot && !swatch.name.empty(); // an ink without a name is none
    if (swatch.spot && (!isInk || (!limits.tints && swatch.tint < 1.0))) {
      ++(isInk ? tints : spots);
      const Values values = Lightened(swatch);
      swatch.spot = false;
      swatch.tint = 1.0;
      swatch = WithNumbers(swatch, swatch.model, values);
    }
    const SwatchModel target = Holds(limits, swatch.model) ? swatch.model : limits.otherwise;
    if (isOther)
      ++others[static_cast<std::size_t>(target)];
    else if (target != swatch.model)
      ++changed[static_cast<std::size_t>(swatch.model)][static_cast<std::size_t>(target)];
    if (target != swatch.model) {
      places.push_back(i);
      foreign.push_back(swatch);
      foreign.back().tint = 1.0; // full ink; the tint stays beside it
      continue;
    }
    Values values = swatch.values;
    ClipTo(target, values, limits.rgbBeyond);
    const bool isRounded = target == SwatchModel::Rgb && limits.rgbSteps > 0 && !IsOnSteps(values, limits.rgbSteps);
    clipped += values != swatch.values;
    rounded += values == swatch.values && isRounded;
    if (values != swatch.values)
      swatch = WithNumbers(swatch, target, values);
  }
  const auto values = ValuesOfSwatches(foreign, limits.otherwise);
  for (std::size_t i = 0; i < places.size(); ++i)
    book.swatches[places[i]] = WithNumbers(book.swatches[places[i]], limits.otherwise, values[i]);

  for (std::size_t to = 0; to < std::size(kModels); ++to) {
    const std::string became = std::string(" became ").append(kModels[to].name);
    for (std::size_t from = 0; from < std::size(kModels); ++from) {
      if (changed[from][to] > 0)
        notes.push_back(CountOf(changed[from][to], std::string(kModels[from].name) + " colour") + became);
    }
    if (others[to] > 0)
      notes.push_back(CountOf(others[to], "colour of another model", "colours of other models") + became);
  }
  if (spots > 0)
    notes.push_back(CountOf(spots, "spot colour became a process colour", "spot colours became process colours"));
  if (tints > 0)
    notes.push_back(
      CountOf(tints, "tint of a spot colour became a process colour", "tints of spot colours became process colours"));
  if (clipped > 0)
    notes.push_back(CountOf(clipped, "colour was", "colours were") + " clipped to the range of the model");
  if (rounded > 0)
    notes.push_back(CountOf(rounded, "RGB colour was", "RGB colours were") + " rounded");
  LeaveOutTexts(book, limits, notes);
  return book;
}

bool IsWritable(const SwatchBook &book, std::size_t most, std::string &reason)
{
  if (book.swatches.empty())
    reason = "no colours";
  else if (book.swatches.size() > most)
    reason = "more than " + std::to_string(most) + " colours, which is the most that this format holds";
  else
    return true;
  return false;
}

} // namespace ZelClr
