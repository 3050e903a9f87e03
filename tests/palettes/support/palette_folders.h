// The palette manager on folders of the test's own: "data/color/Palettes/" is the installation's, "user/" the user's.
#pragma once

#include "tests/support/temporary_folder.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/folders.h"

#include <gtest/gtest.h>

/// The host's own class: the library tells documents by their addresses.
class ZelUtl::Document
{};

namespace tests {

/// What the manager asks of an application with two documents.
struct PalettesHost : ZelUtl::ApplicationHost
{
  unsigned GetOpenDocumentCount() const override { return open; }
  ZelUtl::Document *GetActiveDocument() const override { return active; }
  ZelClr::IColorStyles *GetColorStyles(ZelUtl::Document &document) const override
  {
    return &document == styled ? styles : nullptr;
  }

  unsigned open = 0;
  ZelUtl::Document *active = nullptr;
  ZelUtl::Document *styled = nullptr;
  ZelClr::IColorStyles *styles = nullptr;
};

/// The text of a palette file; with one white where no colours are given.
inline std::string PaletteText(const std::string &guid, const std::string &name, const std::string &colors = {})
{
  return "<?xml version=\"1.0\"?><palette guid=\"" + guid + "\" name=\"" + name + "\">" +
         (colors.empty() ? "<colors><page><color cs=\"RGB\" name=\"White\" tints=\"1,1,1\"/></page></colors>"
                         : colors) +
         "</palette>";
}

/// "{00000000-0000-4000-8000-0000000000NN}".
inline std::string GuidText(int number)
{
  const std::string digits = std::to_string(number);
  return "{00000000-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits + "}";
}
inline ZelUtils::Guid GuidOf(int number)
{
  return ZelUtils::Guid::FromText(std::string_view(GuidText(number))).value();
}

class PaletteFolders : public testing::Test
{
protected:
  PaletteFolders()
  {
    SetVariable("XDG_RUNTIME_DIR", folder.Path()); // mutexes are the test's own
    ZelUtl::Folders folders;
    folders.data = folder.Path("data");
    folders.user = folder.Path("user");
    folders.temporary = folder.Path();
    ZelUtl::SetFolders(folders);
    ZelUtl::SetApplicationHost(&host);
    WClrPaletteMgr::Shutdown();
  }
  ~PaletteFolders() override
  {
    WClrPaletteMgr::Shutdown();
    ZelUtl::SetFileFaults({});
    ZelUtl::SetApplicationHost(nullptr);
    ZelUtl::ResetFolders();
    UnsetVariable("XDG_RUNTIME_DIR");
  }

  static WClrPaletteMgr &Manager() { return WClrPaletteMgr::GetInstance(); }
  /// A palette file of the installation or, by "user/color/Palettes/", of the user.
  std::wstring Write(const std::string &path, int guid, const std::string &colors = {}) const
  {
    const std::string stem = path.substr(path.rfind('/') + 1);
    return WriteAs(path, guid == 0 ? std::string() : GuidText(guid), stem.substr(0, stem.find('.')), colors);
  }
  std::wstring WriteAs(const std::string &path, const std::string &guid, const std::string &name,
                       const std::string &colors = {}) const
  {
    folder.WriteText(path, PaletteText(guid, name, colors));
    return folder.Wide(path);
  }
  static std::vector<std::string> Names()
  {
    std::vector<std::string> names;
    for (const WClrPalette *palette : Manager().GetPaletteList())
      names.push_back(ZelUtl::Utf8FromWide(palette->GetPaletteName()));
    return names;
  }

  TemporaryFolder folder;
  const std::string installed = "data/color/Palettes/";
  const std::string custom = "user/color/Palettes/Custom/";
  PalettesHost host;
};

} // namespace tests
