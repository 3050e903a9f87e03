// The palettes of open documents, and the mapping of identifiers in each.

#include "zelclr/palettes/internal/temporary_palette.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

using ZelUtils::Guid;

/// Without a file where no temporary folder can be made.
WClrPalette *WClrPaletteMgr::MakeTemporaryPalette(const std::wstring &name, const wchar_t *fileName)
{
  const Guid guid = ZelUtils::NewGuid();
  std::string untold;
  if (temporaryFolder_.empty())
    temporaryFolder_ = ZelUtl::MakeTemporaryFolder(untold);
  const std::string folder = ZelUtl::JoinPath(temporaryFolder_, guid.ToText().substr(1, 36));
  std::wstring path;
  if (!temporaryFolder_.empty() && ZelUtl::MakeFolders(folder, untold))
    path = ZelUtl::WideFromUtf8(ZelUtl::JoinPath(folder, ZelUtl::Utf8FromWide(fileName)));
  auto palette = std::make_unique<ZelClr::TemporaryPalette>(path);
  palette->SetPaletteName(name);
  palette->SetPaletteGuid(guid);
  return Hold(std::move(palette));
}

WClrPalette *WClrPaletteMgr::PaletteOf(const Document *document, Kind kind) const
{
  const auto palettes = documents_.find(const_cast<Document *>(document));
  return palettes == documents_.end() ? nullptr : palettes->second.*kind;
}

WClrPalette *WClrPaletteMgr::CreatePaletteOf(Document &document, Kind kind, const Guid &paletteClass)
{
  if (WClrPalette *const known = PaletteOf(&document, kind))
    return known;
  return documents_[&document].*kind = LoadPalette({}, paletteClass);
}

bool WClrPaletteMgr::RemovePaletteOf(Document &document, Kind kind)
{
  return DeletePaletteID(PaletteOf(&document, kind));
}

WClrPalette *WClrPaletteMgr::CreateDocumentPalette(Document &document)
{
  return CreatePaletteOf(document, &DocumentPalettes::colors, DocumentPaletteClass());
}

WClrPalette *WClrPaletteMgr::CreateStylesPalette(Document &document)
{
  return CreatePaletteOf(document, &DocumentPalettes::styles, StylesPaletteClass());
}

WClrPalette *WClrPaletteMgr::FindDocumentPaletteID(const Document &document) const
{
  return PaletteOf(&document, &DocumentPalettes::colors);
}

WClrPalette *WClrPaletteMgr::FindStylesPaletteID(const Document &document) const
{
  return PaletteOf(&document, &DocumentPalettes::styles);
}

ZelUtl::Document *WClrPaletteMgr::FindDocumentFromPaletteID(const WClrPalette *palette) const
{
  const auto owner = std::find_if(documents_.begin(), documents_.end(), [=](const auto &entry) {
    return palette != nullptr && (entry.second.colors == palette || entry.second.styles == palette);
  });
  return owner == documents_.end() ? nullptr : owner->first;
}

bool WClrPaletteMgr::RemoveDocumentPalette(Document &document)
{
  return RemovePaletteOf(document, &DocumentPalettes::colors);
}

bool WClrPaletteMgr::RemoveStylesPalette(Document &document)
{
  return RemovePaletteOf(document, &DocumentPalettes::styles);
}

WClrPalette *WClrPaletteMgr::GetActiveDocumentPaletteID() const
{
  return PaletteOf(ZelUtl::GetActiveDocument(), &DocumentPalettes::colors);
}

WClrPalette *WClrPaletteMgr::GetActiveStylesPaletteID() const
{
  return PaletteOf(ZelUtl::GetActiveDocument(), &DocumentPalettes::styles);
}

bool WClrPaletteMgr::CopyDocumentPalette(const Document &source, Document &target)
{
  const WClrPalette *const from = FindDocumentPaletteID(source);
  if (from == nullptr)
    return false;
  WClrPalette *const to = CreateDocumentPalette(target);
  if (to == from)
    return true;
  const Guid guid = to->GetPaletteGuid();
  if (!to->RestoreFromPalette(*from))
    return false;
  to->SetPaletteGuid(guid);
  MapPaletteGuid(target, from->GetPaletteGuid(), guid);
  return true;
}

void WClrPaletteMgr::CloseDocument(Document &document)
{
  RemoveDocumentPalette(document);
  RemoveStylesPalette(document);
  documents_.erase(&document);
}

void WClrPaletteMgr::OnCloseDocument()
{
  if (ZelUtl::GetOpenDocumentCount() > 1)
    return;
  while (!documents_.empty())
    CloseDocument(*documents_.begin()->first);
}

// --- Identifiers ----------------------------------------------------------------------------------------------------

void WClrPaletteMgr::MapPaletteGuid(Document &document, const Guid &guid, const Guid &replacement)
{
  if (!guid.IsNull() && !replacement.IsNull())
    documents_[&document].mapped[guid] = replacement;
}

Guid WClrPaletteMgr::GetMappedPaletteGuid(const Document &document, const Guid &guid) const
{
  const auto palettes = documents_.find(const_cast<Document *>(&document));
  if (palettes == documents_.end())
    return guid;
  const auto mapping = palettes->second.mapped.find(guid);
  return mapping == palettes->second.mapped.end() ? guid : mapping->second;
}

bool WClrPaletteMgr::RemovePaletteGuidMapping(Document &document, const Guid &guid)
{
  const auto palettes = documents_.find(&document);
  return palettes != documents_.end() && palettes->second.mapped.erase(guid) != 0;
}

// --- Styles ---------------------------------------------------------------------------------------------------------

/// Those that have palettes or mappings, and the active one.
std::vector<ZelUtl::Document *> WClrPaletteMgr::Documents() const
{
  std::vector<Document *> documents;
  for (const auto &[document, palettes] : documents_)
    documents.push_back(document);
  Document *const active = ZelUtl::GetActiveDocument();
  if (active != nullptr && !documents_.contains(active))
    documents.push_back(active);
  return documents;
}

bool WClrPaletteMgr::IsColorStyle(const CLR_COLORSPEC &color)
{
  return !ZelClr::NameOfColorStyle(color).empty();
}
