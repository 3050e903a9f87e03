#include "zelclr/palettes/w_clr_palette_mgr.h"

#include "zelclr/palettes/internal/palette_paths.h"
#include "zelclr/palettes/palette_folders.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"

#include <algorithm>

using ZelClr::ePaletteWriteResult;
using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;

namespace {

/// Where the user's version of a palette goes, so that the installation is never written to; false without a folder.
bool PrepareSaving(WClrPalette &palette)
{
  const std::string path = Utf8FromWide(palette.GetFileName());
  const std::string saved = ZelClr::Internal::PathForSaving(path);
  if (saved != path)
    palette.SetFileName(WideFromUtf8(saved));
  std::string untold;
  return ZelUtl::MakeFolders(ZelUtl::FolderOfPath(saved), untold);
}

/// A path in a folder that no file has.
std::string FreePath(const std::string &folder, const std::string &stem, const char *extension)
{
  for (int number = 1;; ++number) {
    std::string path =
      ZelUtl::JoinPath(folder, stem + (number == 1 ? "" : " (" + std::to_string(number) + ")") + extension);
    if (!ZelUtl::StampOfFile(path))
      return path;
  }
}

} // namespace

ZelUtl::Singleton<WClrPaletteMgr> WClrPaletteMgr::instance_;

WClrPaletteMgr::WClrPaletteMgr()
{
  ZelUtl::RegisterToCloseDocument(ZelUtl::Delegate::To<&WClrPaletteMgr::OnCloseDocument>(*this));
}

WClrPaletteMgr::~WClrPaletteMgr()
{
  ZelUtl::UnregisterToCloseDocument(ZelUtl::Delegate::To<&WClrPaletteMgr::OnCloseDocument>(*this));
  while (!Held().empty())
    Discard(Held().back().get());
  if (!temporaryFolder_.empty())
    ZelUtl::DeleteFileAt(temporaryFolder_);
}

WClrPaletteMgr &WClrPaletteMgr::GetInstance()
{
  return instance_.Get([] { return std::unique_ptr<WClrPaletteMgr>(new WClrPaletteMgr); });
}

bool WClrPaletteMgr::HasInstance()
{
  return instance_.HasInstance();
}

void WClrPaletteMgr::Shutdown()
{
  instance_.Release();
}

// --- The list -------------------------------------------------------------------------------------------------------

WClrPaletteMgr::Palettes WClrPaletteMgr::GetPaletteList() const
{
  Palettes list;
  list.reserve(Held().size());
  for (const auto &palette : Held())
    list.push_back(palette.get());
  return list;
}

WClrPalette *WClrPaletteMgr::GetPaletteID(const std::wstring &path) const
{
  if (path.empty())
    return nullptr;
  const std::string wanted = ZelClr::Internal::XmlPathOf(Utf8FromWide(path));
  const std::string version = ZelClr::Internal::PathForSaving(wanted);
  const auto palette = std::find_if(Held().begin(), Held().end(), [&](const auto &p) {
    const std::string file = Utf8FromWide(p->GetFileName());
    return ZelClr::Internal::IsSamePath(file, wanted) || ZelClr::Internal::IsSamePath(file, version);
  });
  return palette == Held().end() ? nullptr : palette->get();
}

WClrPalette *WClrPaletteMgr::FindPalette(const std::wstring &name) const
{
  const auto palette =
    std::find_if(Held().begin(), Held().end(), [&](const auto &p) { return p->GetPaletteName() == name; });
  return palette == Held().end() ? nullptr : palette->get();
}

WClrPalette *WClrPaletteMgr::FindPalette(const Guid &guid) const
{
  if (guid.IsNull())
    return nullptr;
  const auto palette =
    std::find_if(Held().begin(), Held().end(), [&](const auto &p) { return p->GetPaletteGuid() == guid; });
  return palette == Held().end() ? nullptr : palette->get();
}

// --- Making, saving, deleting ---------------------------------------------------------------------------------------

WClrPalette *WClrPaletteMgr::CreateCustomPalette(const std::wstring &name)
{
  const std::string folder = Utf8FromWide(ZelClr::GetUserCustomPalettesDir());
  std::string untold;
  if (folder.empty() || !ZelUtl::MakeFolders(folder, untold))
    return nullptr;
  auto palette = std::make_unique<WClrPalette>();
  palette->SetPaletteGuid(ZelUtils::NewGuid());
  palette->SetPaletteName(name);
  const std::string path = FreePath(folder, ZelUtl::ValidFileName(Utf8FromWide(name)), ".xml");
  if (!palette->Save(WideFromUtf8(path)))
    return nullptr;
  palette->SetFileName(WideFromUtf8(path));
  return Hold(std::move(palette));
}

void WClrPaletteMgr::Discard(WClrPalette *palette)
{
  if (default_ == palette)
    default_ = nullptr;
  for (auto &[document, palettes] : documents_) {
    for (const Kind kind : {&DocumentPalettes::colors, &DocumentPalettes::styles}) {
      if (palettes.*kind == palette)
        palettes.*kind = nullptr;
    }
  }
  if (palette->IsChanged() && !palette->IsLocked() && !palette->GetFileName().empty())
    PrepareSaving(*palette);
  LetGo(palette);
}

bool WClrPaletteMgr::DeletePaletteID(WClrPalette *palette)
{
  if (!HasPalette(palette))
    return false;
  Discard(palette);
  return true;
}

ePaletteWriteResult WClrPaletteMgr::WritePalette(WClrPalette *palette)
{
  if (!HasPalette(palette))
    return ePaletteWriteResult::Failed;
  if (palette->IsLocked() && !palette->IsChanged()) // the lock itself is saved
    return ePaletteWriteResult::Locked;
  if (palette->GetFileName().empty())
    return ePaletteWriteResult::NoFileName;
  return PrepareSaving(*palette) && palette->Save({}) ? ePaletteWriteResult::Ok : ePaletteWriteResult::Failed;
}

ePaletteWriteResult WClrPaletteMgr::WritePaletteAs(WClrPalette *palette, const std::wstring &path,
                                                   const std::wstring &name)
{
  if (!HasPalette(palette))
    return ePaletteWriteResult::Failed;
  if (path.empty())
    return ePaletteWriteResult::NoFileName;
  std::string untold;
  const std::string folder = ZelUtl::FolderOfPath(Utf8FromWide(path));
  if (!folder.empty() && !ZelUtl::MakeFolders(folder, untold))
    return ePaletteWriteResult::Failed;
  return palette->SaveAs(path, name) ? ePaletteWriteResult::Ok : ePaletteWriteResult::Failed;
}

bool WClrPaletteMgr::ResetPalette(WClrPalette *palette)
{
  if (!HasPalette(palette) || palette->IsLocked())
    return false;
  const std::string path = Utf8FromWide(palette->GetFileName());
  const std::string installed = ZelClr::Internal::InstalledPath(path);
  if (!palette->RestoreFromFile(WideFromUtf8(installed.empty() ? path : installed), false))
    return false;
  if (!installed.empty()) {
    palette->SetFileName(WideFromUtf8(installed));
    if (const std::string version = ZelClr::Internal::PathForSaving(installed); version != installed)
      ZelUtl::DeleteFileAt(version);
  }
  palette->SetChanged(false);
  return true;
}
