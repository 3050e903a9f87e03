#include "zelclr/platform/folder_watch.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/thread_lock.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace ZelUtl {

namespace {

constexpr int kSettleMilliseconds = 100;
constexpr std::chrono::seconds kMostWait(1); // changes that never settle are told all the same
constexpr std::uint32_t kChanges =
  IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_MOVE_SELF | IN_ONLYDIR;

/// Within that time, or, when it is negative, however long it takes. Signals that come to this thread end no wait.
bool HasInput(pollfd (&channels)[2], int milliseconds)
{
  using Clock = std::chrono::steady_clock;
  const auto latest = Clock::now() + std::chrono::milliseconds(milliseconds);
  int count = ::poll(channels, 2, milliseconds);
  while (count < 0 && errno == EINTR) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(latest - Clock::now()).count();
    count = ::poll(channels, 2, milliseconds < 0 ? -1 : std::max(static_cast<int>(left), 0));
  }
  return count > 0;
}

} // namespace

struct FolderWatch::State
{
  explicit State(Listener call)
    : listener(std::move(call)),
      events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      stop(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
  {}
  ~State()
  {
    ::close(events);
    ::close(stop);
  }
  State(const State &) = delete;
  State &operator=(const State &) = delete;

  void AskToStop() const
  {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(stop, &one, sizeof one);
  }
  void Run();
  std::set<std::string> TakeChanges();
  void Arm(std::set<std::string> &appeared) ZELCLR_REQUIRES(lock);
  std::string ArmParent(const std::string &folder) ZELCLR_REQUIRES(lock);
  bool ArmTree(const std::string &root, const std::string &folder, int depth) ZELCLR_REQUIRES(lock);

  struct Root
  {
    int depth;
    bool present; // when it was looked for last
  };

  const Listener listener;
  const int events;
  const int stop;
  std::thread thread; // owned by the watch, which alone touches it
  ThreadLock lock;
  std::map<std::string, Root> roots ZELCLR_GUARDED_BY(lock);
  /// By the system's number: the roots that a watched folder belongs to; none for a parent of one that is missing.
  std::map<int, std::set<std::string>> watched ZELCLR_GUARDED_BY(lock);
};

/// Folders are watched before they are listed, so that none can appear between.
bool FolderWatch::State::ArmTree(const std::string &root, const std::string &folder, int depth)
{
  const int number = ::inotify_add_watch(events, folder.c_str(), kChanges);
  if (number < 0)
    return false;
  watched[number].insert(root);
  if (depth > 0) {
    std::vector<std::string> subfolders;
    FilesOfFolder(folder, &subfolders);
    for (const std::string &name : subfolders)
      ArmTree(root, JoinPath(folder, name), depth - 1);
  }
  return true;
}

/// The nearest folder above that exists, watched for what appears in it; empty when there is none.
std::string FolderWatch::State::ArmParent(const std::string &folder)
{
  for (std::string parent = FolderOfPath(folder), below = folder; !parent.empty() && parent != below;
       below = std::exchange(parent, FolderOfPath(parent)))
  {
    const int number = ::inotify_add_watch(events, parent.c_str(), kChanges);
    if (number < 0)
      continue;
    watched[number];
    return parent;
  }
  return {};
}

/// Watches what is there of the roots now; of one that is missing, the nearest folder in which it may appear.
void FolderWatch::State::Arm(std::set<std::string> &appeared)
{
  for (auto &[folder, root] : roots) {
    bool present = ArmTree(folder, folder, root.depth);
    // It may have appeared before its parent was watched: looked for again until no nearer parent has come meanwhile.
    for (std::string parent, nearest; !present; parent = nearest) {
      nearest = ArmParent(folder);
      present = ArmTree(folder, folder, root.depth);
      if (nearest == parent)
        break;
    }
    if (present && !root.present)
      appeared.insert(folder);
    root.present = present;
  }
}

/// The roots that the events that wait belong to.
std::set<std::string> FolderWatch::State::TakeChanges()
{
  std::set<std::string> changed;
  bool foldersChanged = false;
  alignas(inotify_event) std::array<char, 16384> buffer;
  const WriteLock guard(lock);
  for (;;) {
    const auto size = ::read(events, buffer.data(), buffer.size());
    if (size <= 0)
      break;
    for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(size);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + at, sizeof event);
      at += sizeof event + event.len;
      foldersChanged |= (event.mask & (IN_ISDIR | IN_IGNORED | IN_MOVE_SELF | IN_Q_OVERFLOW)) != 0;
      if ((event.mask & IN_Q_OVERFLOW) != 0) { // some were lost: all may have changed
        for (const auto &[folder, root] : roots)
          changed.insert(folder);
      } else if (const auto folder = watched.find(event.wd); folder != watched.end()) {
        changed.insert(folder->second.begin(), folder->second.end());
        if ((event.mask & IN_MOVE_SELF) != 0) // what stands under its name from now on is another folder
          ::inotify_rm_watch(events, event.wd);
        if ((event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0)
          watched.erase(folder);
      }
    }
  }
  if (foldersChanged)
    Arm(changed);
  return changed;
}

void FolderWatch::State::Run()
{
  pollfd channels[] = {{events, POLLIN, 0}, {stop, POLLIN, 0}};
  while (HasInput(channels, -1) && channels[1].revents == 0) {
    std::set<std::string> changed = TakeChanges();
    const auto latest = std::chrono::steady_clock::now() + kMostWait;
    while (std::chrono::steady_clock::now() < latest && HasInput(channels, kSettleMilliseconds) &&
           channels[1].revents == 0)
      changed.merge(TakeChanges());
    for (const std::string &folder : changed) {
      if (channels[1].revents == 0)
        listener(folder);
    }
  }
}

FolderWatch::FolderWatch(Listener listener) : state_(std::make_shared<State>(std::move(listener))) {}

FolderWatch::~FolderWatch()
{
  state_->AskToStop();
  if (state_->thread.joinable())
    state_->thread.detach(); // it holds the state and ends by itself
}

bool FolderWatch::Watch(const std::string &folder, int depth)
{
  if (state_->events < 0 || folder.empty())
    return false;
  {
    const WriteLock guard(state_->lock);
    state_->roots[folder] = {depth, false};
    std::set<std::string> appeared;
    state_->Arm(appeared);
  }
  if (!state_->thread.joinable())
    state_->thread = std::thread([state = state_] { state->Run(); });
  return true;
}

void FolderWatch::Stop()
{
  state_->AskToStop();
  if (!state_->thread.joinable())
    return;
  if (state_->thread.get_id() == std::this_thread::get_id())
    state_->thread.detach();
  else
    state_->thread.join();
}

} // namespace ZelUtl
