#include "zelclr/platform/folder_watch.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/thread_lock.h"
#include "zelclr/platform/windows/native_path.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <list>
#include <map>
#include <set>
#include <utility>

namespace ZelUtl {

namespace {

constexpr DWORD kSettleMilliseconds = 100;
constexpr std::chrono::seconds kMostWait(1); // changes that never settle are told all the same
constexpr DWORD kNames = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME;
constexpr DWORD kContents = FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_CREATION;

HANDLE OpenFolder(const std::string &path)
{
  return ::CreateFileW(NativePath(path).c_str(), FILE_LIST_DIRECTORY,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED, nullptr);
}

/// An open folder, of which the system is asked for changes. The system writes into it until the answer has come.
struct OpenedFolder : OVERLAPPED
{
  OpenedFolder(HANDLE open, std::string ofPath, std::string ofRoot, int subfolders)
    : OVERLAPPED{},
      handle(open),
      path(std::move(ofPath)),
      root(std::move(ofRoot)),
      depth(subfolders)
  {}
  ~OpenedFolder() { ::CloseHandle(handle); }
  OpenedFolder(const OpenedFolder &) = delete;
  OpenedFolder &operator=(const OpenedFolder &) = delete;

  bool IsParent() const { return path != root; }
  /// Asks for the next changes; false when the folder is gone.
  bool Ask()
  {
    return ::ReadDirectoryChangesW(handle, buffer.data(), static_cast<DWORD>(buffer.size()), depth > 0,
                                   IsParent() ? DWORD{FILE_NOTIFY_CHANGE_DIR_NAME} : kNames | kContents, nullptr, this,
                                   nullptr) != 0;
  }
  /// Whether the path still leads to this folder: it may have been deleted, or renamed with the handle following it.
  bool IsStillThere() const
  {
    BY_HANDLE_FILE_INFORMATION mine = {}, named = {};
    const HANDLE now = OpenFolder(path);
    const bool same = now != INVALID_HANDLE_VALUE && ::GetFileInformationByHandle(handle, &mine) != 0 &&
                      ::GetFileInformationByHandle(now, &named) != 0 &&
                      mine.dwVolumeSerialNumber == named.dwVolumeSerialNumber &&
                      mine.nFileIndexHigh == named.nFileIndexHigh && mine.nFileIndexLow == named.nFileIndexLow;
    if (now != INVALID_HANDLE_VALUE)
      ::CloseHandle(now);
    return same;
  }
  bool IsWithinDepth(std::wstring_view name) const { return std::count(name.begin(), name.end(), L'\\') <= depth; }
  /// Whether the answer tells of anything that is watched here.
  bool TellsOfChanges(DWORD size) const
  {
    if (size == 0) // there were more than the buffer holds
      return true;
    FILE_NOTIFY_INFORMATION change = {};
    constexpr std::size_t kName = offsetof(FILE_NOTIFY_INFORMATION, FileName);
    for (std::size_t at = 0; at + kName <= size; at += change.NextEntryOffset) {
      std::memcpy(&change, buffer.data() + at, kName);
      std::wstring name(std::min<std::size_t>(change.FileNameLength, size - at - kName) / sizeof(wchar_t), L'\0');
      std::memcpy(name.data(), buffer.data() + at + kName, name.size() * sizeof(wchar_t));
      // A folder that is "modified" is one in which something changed that is told by itself where it is watched.
      if (IsWithinDepth(name) &&
          (change.Action != FILE_ACTION_MODIFIED || !IsFolder(JoinPath(path, Utf8FromWide(name)))))
        return true;
      if (change.NextEntryOffset == 0)
        break;
    }
    return false;
  }

  const HANDLE handle;
  const std::string path;
  const std::string root;
  const int depth;

private:
  alignas(DWORD) std::array<std::byte, 16384> buffer;
};

using Opened = std::unique_ptr<OpenedFolder>;

std::string NearestFolderAbove(const std::string &folder)
{
  std::string parent = FolderOfPath(folder);
  for (std::string below = folder; !parent.empty() && parent != below && !IsFolder(parent);)
    below = std::exchange(parent, FolderOfPath(parent));
  return parent.ends_with(':') ? parent + "\\" : parent;
}

} // namespace

struct FolderWatch::State
{
  explicit State(Listener call)
    : listener(std::move(call)),
      port(::CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1))
  {}
  ~State()
  {
    if (thread != nullptr)
      ::CloseHandle(thread);
    if (port != nullptr)
      ::CloseHandle(port);
  }
  State(const State &) = delete;
  State &operator=(const State &) = delete;

  struct Root
  {
    int depth;
    Opened folder; // itself; none when it is missing
    Opened parent; // the nearest folder above, in which it may appear, go and be renamed
  };

  void AskToStop() const { ::PostQueuedCompletionStatus(port, 0, 0, nullptr); }
  void Start(const std::shared_ptr<State> &self);
  void Run();
  bool TakeChanges(DWORD milliseconds, std::set<std::string> &changed);
  void Arm(const std::string &path, Root &root, std::set<std::string> &changed) ZELCLR_REQUIRES(lock);
  Opened Open(const std::string &path, const std::string &root, int depth) const;
  void Retire(Opened folder) ZELCLR_REQUIRES(lock);
  void ArmAll(std::set<std::string> &changed);
  void RetireAll();

  const Listener listener;
  const HANDLE port; // of all answers; one without a folder asks to stop
  HANDLE thread = nullptr;
  DWORD threadNumber = 0;
  bool stopping = false; // of the thread
  ThreadLock lock;
  std::map<std::string, Root> roots ZELCLR_GUARDED_BY(lock);
  std::list<Opened> retired ZELCLR_GUARDED_BY(lock); // until their last answer has come
};

Opened FolderWatch::State::Open(const std::string &path, const std::string &root, int depth) const
{
  const HANDLE handle = path.empty() ? INVALID_HANDLE_VALUE : OpenFolder(path);
  if (handle == INVALID_HANDLE_VALUE)
    return nullptr;
  auto folder = std::make_unique<OpenedFolder>(handle, path, root, depth);
  const bool asked = ::CreateIoCompletionPort(handle, port, 0, 0) == port && folder->Ask();
  return asked ? std::move(folder) : nullptr;
}

/// It stays until the answer to what was asked last has come.
void FolderWatch::State::Retire(Opened folder)
{
  if (!folder)
    return;
  ::CancelIoEx(folder->handle, folder.get());
  retired.push_back(std::move(folder));
}

/// Watches a root that is there now, and the folder above it; told as changed when it came or went.
void FolderWatch::State::Arm(const std::string &path, Root &root, std::set<std::string> &changed)
{
  if (root.folder && !root.folder->IsStillThere()) {
    Retire(std::move(root.folder));
    changed.insert(path);
  }
  // It may appear before the folder above is watched: looked for again until no nearer one has come meanwhile.
  for (std::string nearest = NearestFolderAbove(path);;) {
    if (!root.parent || root.parent->path != nearest || !root.parent->IsStillThere()) {
      Retire(std::move(root.parent));
      root.parent = Open(nearest, path, 0);
    }
    if (!root.folder) {
      root.folder = Open(path, path, root.depth);
      if (root.folder)
        changed.insert(path);
    }
    if (root.folder || NearestFolderAbove(path) == nearest)
      return;
    nearest = NearestFolderAbove(path);
  }
}

/// Waits for one answer and adds the root that it belongs to; false when none came in that time, or the end is near.
bool FolderWatch::State::TakeChanges(DWORD milliseconds, std::set<std::string> &changed)
{
  DWORD size = 0;
  ULONG_PTR unused = 0;
  OVERLAPPED *answer = nullptr;
  const bool fine = ::GetQueuedCompletionStatus(port, &size, &unused, &answer, milliseconds) != 0;
  if (answer == nullptr) {
    stopping |= fine;
    return false;
  }
  auto *const folder = static_cast<OpenedFolder *>(answer);
  const WriteLock guard(lock);
  if (std::erase_if(retired, [folder](const Opened &old) { return old.get() == folder; }) > 0)
    return true;
  const std::string path = folder->root;
  Root &root = roots.at(path);
  // Without an answer something was lost: the thread that asked has ended, or the folder has.
  const bool isParent = folder->IsParent();
  if (!isParent && (!fine || folder->TellsOfChanges(size)))
    changed.insert(path);
  if (!folder->Ask())
    (isParent ? root.parent : root.folder).reset();
  if (isParent || !root.folder)
    Arm(path, root, changed);
  return true;
}

/// A folder that is deleted while it is open here stays until it is closed, and older systems do not say so of it: it
/// is looked for when what was in it has gone.
void FolderWatch::State::ArmAll(std::set<std::string> &changed)
{
  const WriteLock guard(lock);
  for (const std::string &path : std::set(changed))
    Arm(path, roots.at(path), changed);
}

void FolderWatch::State::RetireAll()
{
  const WriteLock guard(lock);
  for (auto &[path, root] : roots) {
    Retire(std::move(root.folder));
    Retire(std::move(root.parent));
  }
}

void FolderWatch::State::Run()
{
  while (!stopping) {
    std::set<std::string> changed;
    TakeChanges(INFINITE, changed);
    const auto latest = std::chrono::steady_clock::now() + kMostWait;
    while (!stopping && !changed.empty() && std::chrono::steady_clock::now() < latest &&
           TakeChanges(kSettleMilliseconds, changed))
      continue;
    ArmAll(changed);
    for (const std::string &folder : changed) {
      if (!stopping)
        listener(folder);
    }
  }
  // The system writes into what it was asked with until the last answer.
  RetireAll();
  const auto none = [this] {
    const ReadLock guard(lock);
    return retired.empty();
  };
  std::set<std::string> untold;
  for (int answers = 0; answers < 100 && !none(); ++answers)
    TakeChanges(100, untold);
}

namespace {

/// The library that this code is in, held so that it cannot be unloaded.
HMODULE HoldLibrary()
{
  HMODULE library = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t *>(&HoldLibrary),
                       &library);
  return library;
}

} // namespace

/// The thread holds the library while it runs: a host that unloads it without an end to its watches leaves it loaded
/// instead of a thread without code, and nothing ever waits for a thread while a library goes.
void FolderWatch::State::Start(const std::shared_ptr<State> &self)
{
  struct Begun
  {
    std::shared_ptr<State> state;
    HMODULE library;
  };
  auto begun = std::make_unique<Begun>(Begun{self, HoldLibrary()});
  const auto run = [](void *given) -> DWORD {
    HMODULE library = nullptr;
    {
      const std::unique_ptr<Begun> mine(static_cast<Begun *>(given));
      library = mine->library;
      mine->state->Run();
    }
    ::FreeLibraryAndExitThread(library, 0);
  };
  thread = ::CreateThread(nullptr, 0, run, begun.get(), 0, &threadNumber);
  if (thread != nullptr)
    begun.release();
  else
    ::FreeLibrary(begun->library);
}

FolderWatch::FolderWatch(Listener listener) : state_(std::make_shared<State>(std::move(listener))) {}

FolderWatch::~FolderWatch()
{
  state_->AskToStop(); // the thread holds the state and ends by itself
}

bool FolderWatch::Watch(const std::string &folder, int depth)
{
  if (state_->port == nullptr || folder.empty())
    return false;
  {
    const WriteLock guard(state_->lock);
    State::Root &root = state_->roots[folder];
    state_->Retire(std::move(root.folder));
    state_->Retire(std::move(root.parent));
    root.depth = depth;
    std::set<std::string> untold;
    state_->Arm(folder, root, untold);
  }
  if (state_->thread == nullptr)
    state_->Start(state_);
  return state_->thread != nullptr;
}

void FolderWatch::Stop()
{
  state_->AskToStop();
  if (state_->thread != nullptr && state_->threadNumber != ::GetCurrentThreadId())
    ::WaitForSingleObject(state_->thread, INFINITE);
}

} // namespace ZelUtl
