// The application that the library works for, as far as it must know it: which documents are open, and what happens.
//
// Threads: plain functions, safe from any thread; listeners run on the thread that reports the event.
// Errors: none. Without a host no document is open.
#pragma once

#include "zelclr/platform/event.h"
#include "zelclr/platform/export.h"

namespace ZelUtl {

/// What the host application answers. Derive from it and set it once; it must outlive its use.
class ApplicationHost
{
public:
  virtual ~ApplicationHost() = default;
  virtual unsigned GetOpenDocumentCount() const = 0;
};

/// Null takes the host away.
ZELCLR_API void SetApplicationHost(ApplicationHost *host);
/// 0 without a host.
ZELCLR_API unsigned GetOpenDocumentCount();

/// "CloseDocument": the host reports it while the closing document still counts as open.
ZELCLR_API void ReportCloseDocument();
ZELCLR_API void RegisterToCloseDocument(const Delegate &listener);
ZELCLR_API void UnregisterToCloseDocument(const Delegate &listener);

} // namespace ZelUtl
