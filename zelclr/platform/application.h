// The application that the library works for, as far as it must know it: its name, which documents are open, how their
// views proof and what colour styles they have, and what happens.
//
// Threads: plain functions, safe from any thread, which call the host on the caller's; listeners run on the thread that
// reports the event.
// Errors: none. Without a host no document is open.
#pragma once

#include "zelclr/platform/event.h"
#include "zelclr/platform/export.h"

#include <string>

namespace ColorSystem {
class ColorContext;
class ViewProofSettings;
} // namespace ColorSystem

namespace ZelClr {
class IColorStyles;
}

namespace ZelUtl {

class Document; // the host's own; the library hands it back and never looks inside

/// What the host application answers. Derive from it and set it once; it must outlive its use.
class ApplicationHost
{
public:
  virtual ~ApplicationHost() = default;
  virtual unsigned GetOpenDocumentCount() const = 0;
  /// What settings files call it; the same for ever.
  virtual std::wstring GetApplicationName() const { return L"ZelClr"; }
  /// Whether it has set the folders and its name; false while it starts.
  virtual bool IsConfigurationInitialized() const { return true; }
  /// Null when none is active.
  virtual Document *GetActiveDocument() const { return nullptr; }
  /// What its colours mean, owned by it; null when none is active.
  virtual const ColorSystem::ColorContext *GetActiveColorContext() const { return nullptr; }
  /// Those of the document's active view, owned by it; null when it has none.
  virtual ColorSystem::ViewProofSettings *GetViewProofSettings(Document &) const { return nullptr; }
  /// The document's colour style sheet, owned by it; null when it has none.
  virtual ZelClr::IColorStyles *GetColorStyles(Document &) const { return nullptr; }
};

/// Null takes the host away.
ZELCLR_API void SetApplicationHost(ApplicationHost *host);
/// 0 without a host.
ZELCLR_API unsigned GetOpenDocumentCount();

/// "ZelClr" without a host, and with one that has no name.
ZELCLR_API std::wstring GetApplicationName();
/// Whether a user's folder is known and the host, if any, says so.
ZELCLR_API bool IsConfigurationInitialized();
/// Null when none is active.
ZELCLR_API Document *GetActiveDocument();
/// Of the active document; null when there is none.
ZELCLR_API const ColorSystem::ColorContext *GetActiveColorContext();
/// Those of this document, else of the active one; null when there is none.
ZELCLR_API ColorSystem::ViewProofSettings *GetViewProofSettings(Document *document = nullptr);
/// Null when the document has none, and without a host.
ZELCLR_API ZelClr::IColorStyles *GetColorStyles(Document &document);

/// "CloseDocument": the host reports it while the closing document still counts as open.
ZELCLR_API void ReportCloseDocument();
ZELCLR_API void RegisterToCloseDocument(const Delegate &listener);
ZELCLR_API void UnregisterToCloseDocument(const Delegate &listener);

} // namespace ZelUtl
