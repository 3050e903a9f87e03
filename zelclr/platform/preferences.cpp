#include "zelclr/platform/preferences.h"

#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/inter_process_mutex.h"
#include "zelclr/platform/internal/json_text.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/thread_lock.h"

#include <map>
#include <mutex>

namespace ZelUtl {

namespace {

constexpr std::size_t kMostBytes = std::size_t{16} << 20;

/// A value is found under its section and key.
using Place = std::pair<std::string, std::string>;

/// The file at a path as it was at a moment.
struct Contents
{
  std::string path;
  std::optional<FileStamp> stamp; // none where no file stands
  std::string bytes;
  Json values = Json::object();
  bool damaged = false; // the bytes are no preferences; `values` is empty
};

bool IsPreferences(const Json &json)
{
  if (!json.is_object())
    return false;
  for (const Json &section : json) {
    if (!section.is_object())
      return false;
  }
  return true;
}

/// False when a file stands there that cannot be read.
bool Read(const std::string &path, Contents &contents, std::string &reason)
{
  contents = Contents{};
  contents.path = path;
  if (path.empty() || !StampOfFile(path))
    return true;
  const auto file = RegularFile::Open(path, reason);
  if (!file)
    return false;
  if (file->Stamp().size > kMostBytes) {
    reason = "larger than " + std::to_string(kMostBytes) + " bytes";
    return false;
  }
  contents.bytes.resize(static_cast<std::size_t>(file->Stamp().size));
  if (!file->ReadAt(0, {reinterpret_cast<std::uint8_t *>(contents.bytes.data()), contents.bytes.size()})) {
    reason = "cannot be read";
    return false;
  }
  contents.stamp = file->Stamp();
  std::string untold;
  auto json = JsonFromText(contents.bytes, untold);
  contents.damaged = !json || !IsPreferences(*json);
  if (!contents.damaged)
    contents.values = std::move(*json);
  return true;
}

std::optional<std::string> TextAt(const Json &values, std::string_view section, std::string_view key)
{
  const auto keys = values.find(std::string(section));
  if (keys == values.end())
    return std::nullopt;
  const auto value = keys->find(std::string(key));
  if (value == keys->end() || value->is_structured() || value->is_null())
    return std::nullopt;
  return value->is_string() ? value->get<std::string>() : value->dump();
}

void Put(Json &values, const Place &place, const std::optional<std::string> &text)
{
  if (text)
    values[place.first][place.second] = *text;
  else if (const auto section = values.find(place.first); section != values.end())
    section->erase(place.second);
}

std::string PathOfPreferences()
{
  const std::string folder = GetUserFolder();
  return folder.empty() ? "" : JoinPath(folder, "preferences.json");
}

/// Text that JSON can hold.
std::string ValidUtf8(std::string_view text)
{
  return IsValidUtf8(text) ? std::string(text) : Utf8FromWide(WideFromUtf8(text));
}

/// Replaces the file by these values, unless it holds them already; `contents` is then the new file.
bool Save(Contents &contents, const Json &values, std::string &reason)
{
  if (values == contents.values)
    return true;
  if (!MakeFolders(FolderOfPath(contents.path), reason))
    return false;
  if (contents.damaged && KeepDamagedBytes(contents.path, contents.bytes, reason).empty())
    return false;
  if (!ReplaceFile(contents.path, values.dump(2) + "\n", reason))
    return false;
  std::string untold; // the next look reads it again
  Read(std::string(contents.path), contents, untold);
  return true;
}

} // namespace

struct CAppPrefManager::State
{
  InterProcessMutex fileMutex{"b0c4b5a2-6c1d-4a7e-9e1f-6c0f6a7d5e21"}; // before the lock
  ThreadLock lock;
  Contents contents ZELCLR_GUARDED_BY(lock);
  std::map<Place, std::optional<std::string>> unsaved ZELCLR_GUARDED_BY(lock);

  bool IsCurrent(const std::string &path) const ZELCLR_REQUIRES_SHARED(lock)
  {
    return contents.path == path && (path.empty() || contents.stamp == StampOfFile(path));
  }
  std::optional<std::string> Find(std::string_view section, std::string_view key) const ZELCLR_REQUIRES_SHARED(lock)
  {
    const auto own = unsaved.find(Place(section, key));
    return own != unsaved.end() ? own->second : TextAt(contents.values, section, key);
  }
};

CAppPrefManager::CAppPrefManager() : state_(std::make_unique<State>()) {}

CAppPrefManager::~CAppPrefManager() = default;

CAppPrefManager &CAppPrefManager::GetInstance()
{
  static auto &manager = *new CAppPrefManager; // never destroyed: it is asked while the process ends, too
  return manager;
}

std::optional<std::string> CAppPrefManager::GetText(std::string_view section, std::string_view key)
{
  const std::string path = PathOfPreferences();
  {
    const ReadLock guard(state_->lock);
    if (state_->IsCurrent(path))
      return state_->Find(section, key);
  }
  const WriteLock guard(state_->lock);
  std::string untold;
  if (!state_->IsCurrent(path))
    Read(path, state_->contents, untold);
  return state_->Find(section, key);
}

bool CAppPrefManager::SetText(std::string_view section, std::string_view key, std::string_view text,
                              std::string &reason)
{
  return Change(section, key, ValidUtf8(text), reason);
}

bool CAppPrefManager::Remove(std::string_view section, std::string_view key, std::string &reason)
{
  return Change(section, key, std::nullopt, reason);
}

bool CAppPrefManager::Change(std::string_view section, std::string_view key, std::optional<std::string> text,
                             std::string &reason)
{
  const std::string path = PathOfPreferences();
  const std::lock_guard exclusive(state_->fileMutex);
  std::map<Place, std::optional<std::string>> unsaved;
  {
    const WriteLock guard(state_->lock);
    state_->unsaved[Place(ValidUtf8(section), ValidUtf8(key))] = std::move(text);
    unsaved = state_->unsaved;
  }
  if (path.empty())
    return true;
  // Readers go on meanwhile: a disk takes its time.
  Contents contents;
  if (!Read(path, contents, reason))
    return false;
  Json values = contents.values;
  for (const auto &[place, value] : unsaved)
    Put(values, place, value);
  if (!Save(contents, values, reason))
    return false;
  const WriteLock guard(state_->lock);
  state_->contents = std::move(contents);
  state_->unsaved.clear(); // whoever changes more waits for the mutex
  return true;
}

} // namespace ZelUtl
