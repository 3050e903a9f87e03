#include "zelclr/platform/resources.h"

#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/internal/json_text.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/thread_lock.h"

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace Framework::Resources {

namespace {

using Texts = std::map<std::string, std::wstring>;

std::string PlainIdentifier(std::string_view identifier)
{
  if (identifier.size() >= 2 && identifier.front() == '{' && identifier.back() == '}')
    identifier = identifier.substr(1, identifier.size() - 2);
  return ZelUtl::LowerAscii(identifier);
}

Texts ReadTexts(const std::string &path)
{
  constexpr std::size_t kMostBytes = std::size_t{4} << 20;
  Texts texts;
  std::string untold;
  const auto bytes = ZelUtl::StampOfFile(path) ? ZelUtl::ReadFile(path, kMostBytes, untold) : std::nullopt;
  const auto json = bytes ? ZelUtl::JsonFromText(*bytes, untold) : std::nullopt;
  if (!json || !json->is_object())
    return texts;
  for (const auto &[identifier, text] : json->items()) {
    if (text.is_string())
      texts[PlainIdentifier(identifier)] = ZelUtl::WideFromUtf8(text.get<std::string>());
  }
  return texts;
}

/// The texts of a file, read by whoever asks first.
std::shared_ptr<const Texts> TextsAt(const std::string &path)
{
  struct Known
  {
    ZelUtl::ThreadLock lock;
    std::map<std::string, std::shared_ptr<const Texts>> texts ZELCLR_GUARDED_BY(lock);
  };
  static auto &known = *new Known; // never destroyed: threads may still ask when the process ends
  {
    const ZelUtl::ReadLock guard(known.lock);
    if (const auto found = known.texts.find(path); found != known.texts.end())
      return found->second;
  }
  const ZelUtl::WriteLock guard(known.lock);
  auto &texts = known.texts[path];
  if (texts == nullptr)
    texts = std::make_shared<const Texts>(ReadTexts(path));
  return texts;
}

/// Whether it is made like a language tag, and so a file name.
bool IsLanguageTag(std::string_view text)
{
  constexpr std::size_t kMostCharacters = 35; // RFC 5646, 4.4.1
  const auto mayStand = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
  };
  return !text.empty() && text.size() <= kMostCharacters && std::all_of(text.begin(), text.end(), mayStand);
}

/// The languages to look in, the best first: each tag, then it without its last part, as in RFC 4647, 3.4.
std::vector<std::string> LanguagesFor(std::string tag)
{
  // What stands for a language of which we have one variety.
  constexpr std::pair<std::string_view, std::string_view> kVarieties[] = {{"pt", "pt-BR"}, {"zh", "zh-Hans"}};
  std::vector<std::string> languages;
  while (IsLanguageTag(tag)) {
    languages.push_back(tag);
    for (const auto &[language, variety] : kVarieties) {
      if (tag == language)
        languages.emplace_back(variety);
    }
    const auto hyphen = tag.rfind('-');
    tag.resize(hyphen == std::string::npos ? 0 : hyphen);
  }
  languages.emplace_back("en");
  return languages;
}

} // namespace

std::wstring GetString(std::string_view identifier)
{
  const std::string data = ZelUtl::GetFolders().data;
  if (data.empty())
    return {};
  const std::string plain = PlainIdentifier(identifier);
  for (const std::string &language : LanguagesFor(ZelLocale::GetUILanguage())) {
    const auto texts = TextsAt(ZelUtl::JoinPath(data, "strings/" + language + ".json"));
    if (const auto text = texts->find(plain); text != texts->end())
      return text->second;
  }
  return {};
}

} // namespace Framework::Resources
