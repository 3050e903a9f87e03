#include "zelclr/platform/inter_process_mutex.h"

#include "zelclr/platform/internal/process_lock.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>

namespace ZelUtl {

namespace {

/// The name for file systems and kernels: what they might not take becomes "%2F".
std::string PlainName(std::string_view name)
{
  constexpr std::size_t kMostBytes = 60; // three times that fits into a file name
  constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string plain = "zelclr-";
  for (const char character : name.substr(0, kMostBytes)) {
    const auto byte = static_cast<unsigned char>(character);
    if (kPlain.find(character) != std::string_view::npos)
      plain += character;
    else
      plain.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
  }
  return plain;
}

} // namespace

/// Threads first agree on who may ask for the lock among processes.
struct InterProcessMutex::State
{
  explicit State(std::string name) : processes(std::move(name)) {}

  bool Lock(const Deadline &deadline)
  {
    if (!TakeAmongThreads(deadline))
      return false;
    if (processes.Take(deadline))
      return true;
    FreeAmongThreads();
    return false;
  }
  void Unlock()
  {
    processes.Release();
    FreeAmongThreads();
  }

  std::mutex mutex;
  std::condition_variable freed;
  bool held = false; // by a thread of the process `owner`
  std::uint64_t owner = CurrentProcess();
  ProcessLock processes;

private:
  bool TakeAmongThreads(const Deadline &deadline)
  {
    std::unique_lock guard(mutex);
    if (owner != CurrentProcess()) { // a fork: whoever held it does so in the parent
      processes.LeaveToParent();
      held = false;
      owner = CurrentProcess();
    }
    const auto isFree = [this] { return !held; };
    if (!deadline)
      freed.wait(guard, isFree);
    else if (!freed.wait_until(guard, *deadline, isFree))
      return false;
    held = true;
    return true;
  }
  void FreeAmongThreads()
  {
    {
      const std::lock_guard guard(mutex);
      held = false;
    }
    freed.notify_one();
  }
};

namespace {

/// The state that all objects of a name share.
std::shared_ptr<InterProcessMutex::State> StateOfName(const std::string &name)
{
  struct Known
  {
    std::mutex mutex;
    std::map<std::string, std::weak_ptr<InterProcessMutex::State>> states;
  };
  static auto &known = *new Known; // never destroyed: singletons hold such mutexes until the process ends
  const std::lock_guard guard(known.mutex);
  auto &entry = known.states[name];
  auto state = entry.lock();
  if (!state)
    entry = state = std::make_shared<InterProcessMutex::State>(name);
  return state;
}

} // namespace

InterProcessMutex::InterProcessMutex(std::string_view name) : state_(StateOfName(PlainName(name))) {}

InterProcessMutex::~InterProcessMutex() = default;

void InterProcessMutex::lock()
{
  state_->Lock(std::nullopt);
}

bool InterProcessMutex::try_lock_for(std::chrono::milliseconds time)
{
  return state_->Lock(std::chrono::steady_clock::now() + time);
}

void InterProcessMutex::unlock()
{
  state_->Unlock();
}

bool InterProcessMutex::ExcludesOtherProcesses() const
{
  return state_->processes.IsHeld();
}

} // namespace ZelUtl
