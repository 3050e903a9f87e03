// What the application keeps for its user between two runs: texts under a section and a key, in the file
// preferences.json of the user's folder, which the applications of the suite share.
//
// Threads: safe from any thread. Processes keep each other's values: a change re-reads the file and alters one value.
// Errors: reading gives the default. Writing answers false with a reason; what was set holds in this process all the
// same, and is saved along with the next change.
#pragma once

#include "zelclr/platform/export.h"
#include "zelclr/platform/text.h"

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ZelUtl {

/// {"section": {"key": "text"}}, all UTF-8. Numbers and booleans that somebody wrote without quotes are read as text,
/// other values as none; all of them stay as they are. A file that is no such document counts as empty, and is kept
/// under another name (KeepDamagedBytes) before it is replaced. Without a user's folder values live as long as the
/// process.
class ZELCLR_API CAppPrefManager
{
public:
  /// The one manager, created by the first call and never destroyed.
  static CAppPrefManager &GetInstance();
  CAppPrefManager(const CAppPrefManager &) = delete;
  CAppPrefManager &operator=(const CAppPrefManager &) = delete;

  /// The stored text; costs a look at the file's date when nothing changed.
  std::optional<std::string> GetText(std::string_view section, std::string_view key);
  bool SetText(std::string_view section, std::string_view key, std::string_view text, std::string &reason);
  /// Back to the default.
  bool Remove(std::string_view section, std::string_view key, std::string &reason);

private:
  struct State;

  CAppPrefManager();
  ~CAppPrefManager();
  bool Change(std::string_view section, std::string_view key, std::optional<std::string> text, std::string &reason);

  std::unique_ptr<State> state_;
};

/// How values of a type are stored: ToText(value), and FromText(text), empty for a text that states none. A type of
/// one's own is stored by a specialisation or by a policy of the same form.
template <class T>
struct PrefConversion;

template <>
struct PrefConversion<bool>
{
  static std::string ToText(bool value) { return value ? "true" : "false"; }
  static std::optional<bool> FromText(std::string_view text)
  {
    if (text == "true" || text == "1")
      return true;
    if (text == "false" || text == "0")
      return false;
    return std::nullopt;
  }
};

template <std::integral T>
struct PrefConversion<T>
{
  static std::string ToText(T value) { return std::to_string(value); }
  static std::optional<T> FromText(std::string_view text) { return IntegerFromText<T>(text); }
};

template <>
struct PrefConversion<std::string>
{
  static std::string ToText(const std::string &value) { return value; }
  static std::optional<std::string> FromText(std::string_view text) { return std::string(text); }
};

template <>
struct PrefConversion<std::wstring>
{
  static std::string ToText(const std::wstring &value) { return Utf8FromWide(value); }
  static std::optional<std::wstring> FromText(std::string_view text) { return WideFromUtf8(text); }
};

/// One preference of a type. Cheap to make; it holds nothing but where the value lies.
template <class T, class Conversion = PrefConversion<T>>
class CPrefObject
{
public:
  CPrefObject(std::string section, std::string key, T defaultValue)
    : section_(std::move(section)),
      key_(std::move(key)),
      default_(std::move(defaultValue))
  {}

  /// The default when nothing is stored, or something that is no value of the type.
  T Get() const
  {
    const auto text = CAppPrefManager::GetInstance().GetText(section_, key_);
    const auto value = text ? Conversion::FromText(*text) : std::optional<T>();
    return value ? *value : default_;
  }
  bool Set(const T &value, std::string &reason) const
  {
    return CAppPrefManager::GetInstance().SetText(section_, key_, Conversion::ToText(value), reason);
  }
  bool Set(const T &value) const
  {
    std::string untold;
    return Set(value, untold);
  }
  const T &Default() const { return default_; }

private:
  std::string section_;
  std::string key_;
  T default_;
};

} // namespace ZelUtl
