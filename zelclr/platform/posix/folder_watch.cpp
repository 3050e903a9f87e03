#include "zelclr/platform/folder_watch.h"

#include "zelclr/platform/thread_lock.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <map>
#include <set>
#include <thread>
#include <utility>

namespace ZelUtl {

namespace {

constexpr int kSettleMilliseconds = 100;

bool HasInput(pollfd (&channels)[2], int timeout)
{
  return ::poll(channels, 2, timeout) > 0;
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

  const Listener listener;
  const int events;
  const int stop;
  std::thread thread; // owned by the watch, which alone touches it
  ThreadLock lock;
  std::map<int, std::string> folders ZELCLR_GUARDED_BY(lock);
};

/// The folders of the events that wait.
std::set<std::string> FolderWatch::State::TakeChanges()
{
  std::set<std::string> changed;
  alignas(inotify_event) std::array<char, 16384> buffer;
  for (;;) {
    const auto size = ::read(events, buffer.data(), buffer.size());
    if (size <= 0)
      return changed;
    const ReadLock guard(lock);
    for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(size);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + at, sizeof event);
      at += sizeof event + event.len;
      if ((event.mask & IN_Q_OVERFLOW) != 0) { // some were lost: all may have changed
        for (const auto &[number, folder] : folders)
          changed.insert(folder);
      } else if (const auto folder = folders.find(event.wd); folder != folders.end()) {
        changed.insert(folder->second);
      }
    }
  }
}

void FolderWatch::State::Run()
{
  pollfd channels[] = {{events, POLLIN, 0}, {stop, POLLIN, 0}};
  while (HasInput(channels, -1) && channels[1].revents == 0) {
    std::set<std::string> changed = TakeChanges();
    while (HasInput(channels, kSettleMilliseconds) && channels[1].revents == 0)
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

bool FolderWatch::Watch(const std::string &folder)
{
  const int number = ::inotify_add_watch(
    state_->events, folder.c_str(), IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_ONLYDIR);
  if (number < 0)
    return false;
  {
    const WriteLock guard(state_->lock);
    state_->folders[number] = folder;
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
