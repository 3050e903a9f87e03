#include "cli/colour_facts.h"
#include "cli/palette/commands.h"
#include "cli/palette/swatch_facts.h"
#include "cli/palette_input.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/xml_reader.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <map>

namespace cli {

namespace {

using ZelClr::ReadProblem;

struct Verdict
{
  std::string file;
  std::string title; ///< of the format; empty where it is none
  std::size_t colours = 0;
  bool read = true; ///< whether the file could be read at all
  std::vector<ReadProblem> problems;
  std::vector<std::string> notes;
};

std::string SchemaPath()
{
  const std::string folder = ZelUtl::INIGetColorDir();
  if (folder.empty())
    throw Failure(ExitCode::Missing, "the schema of palettes is not installed");
  return ZelUtl::JoinPath(folder, "ColorPaletteSchema.xsd");
}

/// What no schema can say: colours that state none, colour spaces that cannot be told apart.
std::vector<ReadProblem> ProblemsOfOwn(const WXmlColorPalette &palette)
{
  std::vector<ReadProblem> problems;
  std::map<std::string, int> names;
  std::map<int, int> identifiers;
  for (std::size_t i = 0; i < palette.GetColorSpaceCount(); ++i) {
    const WXmlColorSpace &space = palette.GetColorSpace(i);
    if (names[space.name]++ == 1)
      problems.push_back({0, "more than one colour space is called \"" + space.name + "\""});
    if (space.fixedID >= 0 && identifiers[space.fixedID]++ == 1)
      problems.push_back({0, "more than one colour space has the colour ID " + std::to_string(space.fixedID)});
  }
  for (std::size_t i = 0; i < palette.GetColorCount(); ++i) {
    if (!palette.GetColorSpec(i).IsInvalid())
      continue;
    const WXmlColor &colour = palette.GetColor(i);
    problems.push_back(
      {0, "colour " + std::to_string(i + 1) + (colour.name.empty() ? "" : ", \"" + colour.name + "\",") +
            " states no colour: no model and no colour space with a look is called \"" + colour.colorSpace + "\""});
  }
  return problems;
}

Verdict Judged(const std::string &file)
{
  Verdict verdict;
  verdict.file = file;
  std::string bytes;
  try {
    bytes = ReadInput(file);
  } catch (const Failure &failure) {
    const std::string path = Harmless(file == "-" ? "standard input" : file) + ": ";
    const std::string_view reason = failure.what();
    verdict.read = false;
    verdict.problems.push_back({0, std::string(reason.substr(reason.starts_with(path) ? path.size() : 0))});
    return verdict;
  }
  ReadProblem problem;
  const auto loaded = ReadPalette(file, bytes, problem);
  if (!loaded) {
    verdict.problems.push_back(problem);
    return verdict;
  }
  verdict.title = loaded->title;
  verdict.colours = loaded->book.swatches.size();
  verdict.notes = loaded->book.notes;
  std::string reason;
  if (const auto xml = XmlOfOwnPalette(file, bytes, reason); xml && !ZelUtl::ValidateXml(*xml, SchemaPath(), reason))
    verdict.problems.push_back(ProblemFromReason(reason));
  else if (loaded->own)
    verdict.problems = ProblemsOfOwn(*loaded->own);
  return verdict;
}

Json JsonOf(const Verdict &verdict)
{
  Json problems = Json::array();
  for (const ReadProblem &problem : verdict.problems)
    problems.push_back({{"line", problem.line == 0 ? Json() : Json(problem.line)}, {"reason", problem.reason}});
  return {{"file", verdict.file},
          {"valid", verdict.problems.empty()},
          {"format", verdict.title.empty() ? Json() : Json(verdict.title)},
          {"colours", verdict.colours},
          {"problems", problems},
          {"notes", verdict.notes}};
}

std::string TextOf(const Verdict &verdict, const Output &output)
{
  std::string text;
  for (const ReadProblem &problem : verdict.problems)
    text += InWords(verdict.file, problem) + "\n";
  if (text.empty())
    text = Harmless(verdict.file) + ": " + verdict.title + ", " + Counted(verdict.colours, "colour") + "\n";
  for (const std::string &note : verdict.notes)
    text += output.Faint("  " + Harmless(note)) + "\n";
  return text;
}

} // namespace

ExitCode ValidatePalettes(const std::vector<std::string> &files, const Output &output)
{
  Json verdicts = Json::array();
  ExitCode code = ExitCode::Fine;
  for (const std::string &file : files) {
    const Verdict verdict = Judged(file);
    if (!verdict.read)
      code = ExitCode::Unreadable;
    else if (!verdict.problems.empty() && code == ExitCode::Fine)
      code = ExitCode::Findings;
    if (output.json)
      verdicts.push_back(JsonOf(verdict));
    else
      std::fputs(TextOf(verdict, output).c_str(), stdout);
  }
  if (output.json)
    PrintJson("zelclr.palette.validate", {{"files", verdicts}});
  return code;
}

} // namespace cli
