#include "zelclr/platform/application.h"

#include "zelclr/platform/folders.h"

#include <atomic>

namespace ZelUtl {

namespace {

std::atomic<ApplicationHost *> current_host{nullptr};

/// Never destroyed: engines unregister when the process ends, in an order that nobody knows.
Event &CloseDocument()
{
  static auto &event = *new Event;
  return event;
}

} // namespace

void SetApplicationHost(ApplicationHost *host)
{
  current_host.store(host);
}

unsigned GetOpenDocumentCount()
{
  const ApplicationHost *const host = current_host.load();
  return host == nullptr ? 0 : host->GetOpenDocumentCount();
}

std::wstring GetApplicationName()
{
  const ApplicationHost *const host = current_host.load();
  const std::wstring name = host == nullptr ? std::wstring() : host->GetApplicationName();
  return name.empty() ? L"ZelClr" : name;
}

bool IsConfigurationInitialized()
{
  const ApplicationHost *const host = current_host.load();
  return (host == nullptr || host->IsConfigurationInitialized()) && !GetUserFolder().empty();
}

Document *GetActiveDocument()
{
  const ApplicationHost *const host = current_host.load();
  return host == nullptr ? nullptr : host->GetActiveDocument();
}

const ColorSystem::ColorContext *GetActiveColorContext()
{
  const ApplicationHost *const host = current_host.load();
  return host == nullptr ? nullptr : host->GetActiveColorContext();
}

ColorSystem::ViewProofSettings *GetViewProofSettings(Document *document)
{
  const ApplicationHost *const host = current_host.load();
  if (host == nullptr)
    return nullptr;
  if (document == nullptr)
    document = host->GetActiveDocument();
  return document == nullptr ? nullptr : host->GetViewProofSettings(*document);
}

ZelClr::IColorStyles *GetColorStyles(Document &document)
{
  const ApplicationHost *const host = current_host.load();
  return host == nullptr ? nullptr : host->GetColorStyles(document);
}

void ReportCloseDocument()
{
  CloseDocument().Notify();
}

void RegisterToCloseDocument(const Delegate &listener)
{
  CloseDocument().Register(listener);
}

void UnregisterToCloseDocument(const Delegate &listener)
{
  CloseDocument().Unregister(listener);
}

} // namespace ZelUtl
