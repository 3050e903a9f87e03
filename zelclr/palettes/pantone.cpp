#include "zelclr/palettes/pantone.h"

#include "zelclr/palettes/fixed_palettes.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace ZelClr {

using ZelUtils::Guid;

namespace {

struct Succession
{
  std::string_view newer;
  std::string_view previous;
};

// Paths of fixed_palettes.h.
constexpr std::array<Succession, 19> kSuccessions = {{
  {"Spot/PANTONE/PANTONE+/PantonePlusSolidCoated.xml", "Spot/PANTONE/Previous Version/pantonec.xml"},
  {"Spot/PANTONE/PANTONE+/PantonePlusSolidUncoated.xml", "Spot/PANTONE/Previous Version/pantoneu.xml"},
  {"Spot/PANTONE/PANTONE+/PantonePlusMetallicCoated.xml", "Spot/PANTONE/Previous Version/panmetlc.xml"},
  {"Spot/PANTONE/PANTONE+/PantonePlusPastelNeonCoated.xml", "Spot/PANTONE/Previous Version/panpasc.xml"},
  {"Spot/PANTONE/PANTONE+/PantonePlusPastelNeonUncoated.xml", "Spot/PANTONE/Previous Version/panpasu.xml"},
  {"Spot/PANTONE/Previous Version/pantonec.xml", "Spot/PANTONE/Previous Version/panguidc.xml"},
  {"Spot/PANTONE/Previous Version/pantoneu.xml", "Spot/PANTONE/Previous Version/panguidu.xml"},
  {"Spot/PANTONE/Previous Version/panguidc.xml", "Spot/PANTONE/Previous Version/pantone8.xml"},
  {"Spot/PANTONE/Previous Version/panpasc.xml", "Spot/PANTONE/Previous Version/panpastc.xml"},
  {"Spot/PANTONE/Previous Version/panpasu.xml", "Spot/PANTONE/Previous Version/panpastu.xml"},
  {"Process/PANTONE/PANTONE+/PantonePlusCMYKCoated.xml", "Process/PANTONE/Previous Version/pantone.xml"},
  {"Process/PANTONE/PANTONE+/PantonePlusColorBridgeCoated.xml",
   "Process/PANTONE/Previous Version/PantoneColorBridgeCoated.xml"},
  {"Process/PANTONE/PANTONE+/PantonePlusColorBridgeUncoated.xml",
   "Process/PANTONE/Previous Version/PantoneColorBridgeUncoated.xml"},
  {"Process/PANTONE/Previous Version/PantoneColorBridgeEuro.xml", "Process/PANTONE/Previous Version/pans2pec.xml"},
  {"Process/PANTONE/Previous Version/panhexac.xml", "Process/PANTONE/Previous Version/panhexc.xml"},
  {"Process/PANTONE/Previous Version/panhexau.xml", "Process/PANTONE/Previous Version/panhexu.xml"},
  {"Spot/PANTONE/PantoneFHICottonTCX2801.xml", "Spot/PANTONE/PantoneFHICottonTCX.xml"},
  {"Spot/PANTONE/PantoneFHICottonTCX.xml", "Spot/PANTONE/PantoneFashionHomeCotton.xml"},
  {"Spot/PANTONE/PantoneFHITPGPaper.xml", "Spot/PANTONE/PantoneFashionHomePaper.xml"},
}};

Guid IdentifierOfPath(std::string_view path)
{
  const FixedPalette *const row = FindFixedPalette(path);
  return row == nullptr ? Guid() : row->identifier;
}

bool IsLetter(wchar_t c)
{
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

bool IsDigit(wchar_t c)
{
  return c >= L'0' && c <= L'9';
}

/// The words of a name behind the maker's, in small letters, without marks and points; empty for another maker's.
std::vector<std::wstring> WordsOfName(std::wstring_view name)
{
  std::vector<std::wstring> words;
  std::wstring word;
  for (const wchar_t c : ZelUtl::FoldedCase(std::wstring(name)) + L' ') {
    if (c == L'\u00AE' || c == L'\u2122' || c == L'.')
      continue;
    if (c != L' ' && c != L'\t' && c != L'\u00A0') {
      word += c;
      continue;
    }
    if (!word.empty())
      words.push_back(word);
    word.clear();
  }
  if (words.empty() || (words.front() != L"pantone" && words.front() != L"pantone+"))
    return {};
  words.erase(words.begin());
  return words;
}

} // namespace

int PantoneNumberOfName(std::wstring_view name)
{
  constexpr std::size_t kMostDigits = 5;
  const std::vector<std::wstring> words = WordsOfName(name);
  if (words.empty() || words.size() > 2)
    return -1;
  const std::wstring &first = words.front();
  const auto digits = static_cast<std::size_t>(std::find_if_not(first.begin(), first.end(), IsDigit) - first.begin());
  const std::wstring suffix = first.substr(digits) + (words.size() > 1 ? words.back() : std::wstring());
  if (digits == 0 || digits > kMostDigits || !std::all_of(suffix.begin(), suffix.end(), IsLetter))
    return -1;
  int number = 0;
  for (const wchar_t c : first.substr(0, digits))
    number = number * 10 + (c - L'0');
  return number;
}

bool IsPantoneTransparentWhite(std::wstring_view name)
{
  const std::vector<std::wstring> words = WordsOfName(name);
  return words.size() >= 2 && words.size() <= 3 && (words[0] == L"trans" || words[0] == L"transparent") &&
         words[1] == L"white";
}

Guid PreviousPantoneBook(const Guid &book)
{
  const FixedPalette *const row = FindFixedPalette(book);
  if (row == nullptr)
    return {};
  const auto succession =
    std::find_if(kSuccessions.begin(), kSuccessions.end(), [=](const Succession &s) { return s.newer == row->path; });
  return succession == kSuccessions.end() ? Guid() : IdentifierOfPath(succession->previous);
}

std::span<const Guid> CoatedPantoneBooks()
{
  static const std::array<Guid, 4> books = {IdentifierOfPath("Spot/PANTONE/Previous Version/pantone8.xml"),
                                            IdentifierOfPath("Spot/PANTONE/Previous Version/panguidc.xml"),
                                            IdentifierOfPath("Spot/PANTONE/Previous Version/pantonec.xml"),
                                            IdentifierOfPath("Spot/PANTONE/PANTONE+/PantonePlusSolidCoated.xml")};
  return books;
}

} // namespace ZelClr
