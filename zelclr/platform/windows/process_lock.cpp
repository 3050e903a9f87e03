#include "zelclr/platform/internal/process_lock.h"

#include "zelclr/platform/text.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace ZelUtl {

namespace {

DWORD MillisecondsUntil(const Deadline &deadline)
{
  if (!deadline)
    return INFINITE;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - std::chrono::steady_clock::now()).count();
  return static_cast<DWORD>(std::clamp<long long>(left, 0, INFINITE - 1));
}

} // namespace

ProcessLock::~ProcessLock()
{
  LeaveToParent();
}

bool ProcessLock::Take(const Deadline &deadline)
{
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, (L"Local\\" + WideFromUtf8(name_)).c_str());
  if (mutex == nullptr)
    return true;
  switch (::WaitForSingleObject(mutex, MillisecondsUntil(deadline))) {
  case WAIT_OBJECT_0:
  case WAIT_ABANDONED: // its holder died: it is ours, and files are whole at every instant
    handle_ = reinterpret_cast<std::intptr_t>(mutex);
    return true;
  case WAIT_TIMEOUT:
    ::CloseHandle(mutex);
    return false;
  default:
    ::CloseHandle(mutex);
    return true;
  }
}

void ProcessLock::Release()
{
  if (!IsHeld())
    return;
  ::ReleaseMutex(reinterpret_cast<HANDLE>(handle_));
  LeaveToParent();
}

void ProcessLock::LeaveToParent()
{
  if (IsHeld())
    ::CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle_, kNone)));
}

std::uint64_t CurrentProcess()
{
  return ::GetCurrentProcessId();
}

} // namespace ZelUtl
