#include "zelclr/platform/thread_lock.h"

#include <windows.h>

namespace ZelUtl {

namespace {

SRWLOCK *Native(void **state)
{
  static_assert(sizeof(SRWLOCK) == sizeof *state, "a lock that is free is a null pointer");
  return reinterpret_cast<SRWLOCK *>(state);
}

} // namespace

void SystemLock::lock()
{
  ::AcquireSRWLockExclusive(Native(&state_));
}
void SystemLock::unlock()
{
  ::ReleaseSRWLockExclusive(Native(&state_));
}
void SystemLock::lock_shared()
{
  ::AcquireSRWLockShared(Native(&state_));
}
void SystemLock::unlock_shared()
{
  ::ReleaseSRWLockShared(Native(&state_));
}

} // namespace ZelUtl
