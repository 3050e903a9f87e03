#include "zelclr/platform/file_faults.h"

#include "zelclr/platform/thread_lock.h"

#include <atomic>
#include <utility>

namespace ZelUtl {

namespace {

struct Injected
{
  std::atomic<bool> any{false};
  ThreadLock lock;
  FileFaults faults ZELCLR_GUARDED_BY(lock);

  FileFaults Faults() const
  {
    const ReadLock guard(lock);
    return faults;
  }
};

Injected &TheInjected()
{
  static auto &injected = *new Injected; // never destroyed: files are written when the process ends, too
  return injected;
}

} // namespace

void SetFileFaults(FileFaults faults)
{
  Injected &injected = TheInjected();
  const WriteLock guard(injected.lock);
  injected.any = faults != nullptr;
  injected.faults = std::move(faults);
}

int FaultOfFileStep(FileStep step)
{
  const Injected &injected = TheInjected();
  if (!injected.any)
    return 0;
  const FileFaults faults = injected.Faults();
  return faults ? faults(step) : 0;
}

} // namespace ZelUtl
