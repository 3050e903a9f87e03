// The report as JSON, and the words that its other forms share.

#include "cli/profile/words.h"
#include "cli/report/forms.h"
#include "zelclr/colour/colour_text.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace cli {

namespace {

void Put(Json &entry, const Print &print)
{
  entry["cmyk"] = print.inks;
  entry["ink"] = print.Total();
  entry["paper"] = HexFromColorSpec(print.paper);
  entry["deltaE2000"] = print.difference;
  entry["libraryDistance"] = print.libraryDistance;
}

double Tenths(double value)
{
  return std::round(value * 10.0) / 10.0;
}

Json JsonOf(const RuleFit &fit)
{
  return {{"rule", fit.words->option},
          {"near", fit.IsNear()},
          {"arms", fit.arms},
          {"distance", Tenths(fit.distance)},
          {"unused", Tenths(fit.unused)}};
}

/// The rules are ordered, the nearest first; none without a colour that has a hue.
Json WheelJson(const Report &report)
{
  Json rules = Json::array();
  for (const RuleFit &fit : report.harmonies)
    rules.push_back(JsonOf(fit));
  return {{"nearlyNeutral", report.CountNearNeutral()}, {"rules", rules}};
}

} // namespace

std::string HeadlineOf(const Report &report)
{
  const std::size_t count = report.rows.size();
  const std::size_t bad = report.CountWillNotPrint();
  const std::size_t unknown = report.Count(Verdict::Unknown);
  if (bad > 0)
    return std::to_string(bad) + " of " + std::to_string(count) + (count == 1 ? " colour" : " colours") +
           " will not print as " + (bad == 1 ? "it is" : "they are");
  if (unknown > 0)
    return std::to_string(unknown) + " of " + std::to_string(count) + (count == 1 ? " colour" : " colours") +
           " cannot be judged";
  return count == 1 ? "The colour prints" : "All " + std::to_string(count) + " colours print";
}

std::string SummaryOf(const Report &report)
{
  const auto counted = [](std::size_t count, const char *what) { return std::to_string(count) + ' ' + what; };
  std::string parts;
  for (const Verdict verdict : kVerdicts) {
    if (const std::size_t count = report.Count(verdict))
      parts += (parts.empty() ? "" : ", ") + counted(count, WordsOf(verdict).label);
  }
  if (const std::size_t count = report.CountTooMuchInk())
    parts += ", " + counted(count, "with too much ink");
  return counted(report.rows.size(), report.rows.size() == 1 ? "colour: " : "colours: ") + parts;
}

std::string DistanceText(const Print &print)
{
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", print.libraryDistance);
  return text;
}

std::string InkLimitWords(const Press &press)
{
  return std::to_string(press.inkLimit) + (press.inkLimitGiven ? " %" : " %, the most that the profile builds");
}

std::string WhiteWords(const Press &press)
{
  return press.SimulatesPaper() ? "the paper\u2019s own white is simulated" : "the paper counts as white";
}

std::string BlackWords(const Press &press)
{
  return std::string(press.preserveBlack ? "pure black is black ink alone" : "as the profile builds it") +
         (press.grayIsBlackInk ? "; gray is black ink alone" : "");
}

std::string HarmonyWords(const Report &report)
{
  if (report.harmonies.empty())
    return "none, no colour has a hue";
  const RuleFit &nearest = report.harmonies.front();
  std::string title = nearest.words->title;
  title[0] = static_cast<char>(title[0] - 'A' + 'a');
  std::string words = (nearest.IsNear() ? title + ", " : "none; " + title + " comes nearest, ") + "the colours are " +
                      OneDecimal(nearest.distance) + "\u00B0 off on average";
  if (const std::size_t count = report.CountNearNeutral())
    words += "; " + std::to_string(count) +
             (count == 1 ? " is nearly neutral and does not count" : " are nearly neutral and do not count");
  return words;
}

std::string ReadByWords(const Report &report)
{
  return report.rgbProfile + " (RGB), " + report.cmykProfile + " (CMYK)";
}

Json JsonOf(const Report &report)
{
  const Press &press = report.press;
  Json summary = {{"colours", report.rows.size()}, {"willNotPrint", report.CountWillNotPrint()}};
  for (const Verdict verdict : kVerdicts)
    summary[WordsOf(verdict).key] = report.Count(verdict);
  summary["tooMuchInk"] = report.CountTooMuchInk();

  Json rows = Json::array();
  for (const ReportRow &row : report.rows) {
    Json entry = {{"name", row.source.name},
                  {"line", row.source.line},
                  {"source", ZelClr::TextFromColorSpec(row.source.record)},
                  {"verdict", WordsOf(row.verdict).key}};
    if (row.HasBuild()) {
      entry["screen"] = HexFromColorSpec(row.screen);
      entry["wheel"] = {{"hue", row.wheel.position.hue},
                        {"saturation", row.wheel.position.saturation},
                        {"nearlyNeutral", row.wheel.IsNearNeutral()}};
      Put(entry, row.build);
      entry["tooMuchInk"] = row.tooMuchInk;
      if (row.nearest)
        Put(entry["nearest"], *row.nearest);
    }
    rows.push_back(std::move(entry));
  }
  return {{"palette", report.name},
          {"press",
           {{"profile", press.name},
            {"intent", WordsOf(press.intent).option},
            {"preserveBlack", press.preserveBlack},
            {"grayIsBlackInk", press.grayIsBlackInk},
            {"inkLimit", press.inkLimit},
            {"inkLimitFrom", press.inkLimitGiven ? "given" : "profile"},
            {"paperLab", {Tenths(press.paper.l), Tenths(press.paper.a), Tenths(press.paper.b)}},
            {"paperWhite", press.SimulatesPaper() ? "simulated" : "adapted"}}},
          {"readBy", {{"rgb", report.rgbProfile}, {"cmyk", report.cmykProfile}}},
          {"summary", summary},
          {"wheel", WheelJson(report)},
          {"colours", rows}};
}

} // namespace cli
