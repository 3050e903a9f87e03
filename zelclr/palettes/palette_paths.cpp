#include "zelclr/palettes/internal/palette_paths.h"

#include "zelclr/palettes/palette_folders.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"

#include <optional>
#include <string_view>

namespace ZelClr::Internal {

namespace {

bool HasExtension(std::string_view path, std::string_view extension)
{
  return ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path)) == extension;
}

bool IsFile(const std::string &path)
{
  return ZelUtl::StampOfFile(path).has_value();
}

std::string UserFolder()
{
  return ZelUtl::Utf8FromWide(GetPalettesDir());
}

std::string InstalledFolder()
{
  return ZelUtl::Utf8FromWide(GetInstalledPalettesDir());
}

/// The path from a folder on; empty when it does not lead into it.
std::optional<std::string> PathBelow(const std::string &folder, const std::string &path)
{
  if (folder.empty())
    return std::nullopt;
  const std::string parent = ZelUtl::JoinPath(ZelUtl::AbsolutePath(folder), "");
  const std::string absolute = ZelUtl::AbsolutePath(path);
  if (!absolute.starts_with(parent))
    return std::nullopt;
  return absolute.substr(parent.size());
}

} // namespace

std::string XmlPathOf(const std::string &path)
{
  const bool packed = HasExtension(path, ".zip");
  if (!packed && !HasExtension(path, ".cpl"))
    return path;
  return path.substr(0, path.size() - 4) + (packed ? "" : ".xml");
}

bool IsPaletteFile(const std::string &path)
{
  return IsFile(path) || (HasExtension(path, ".xml") && IsFile(path + ".zip"));
}

bool IsSamePath(const std::string &a, const std::string &b)
{
  // Names tell nearly all files apart, without a look at the disk.
  if (ZelUtl::LowerAscii(ZelUtl::FileNameOfPath(a)) != ZelUtl::LowerAscii(ZelUtl::FileNameOfPath(b)))
    return false;
  return ZelUtl::AbsolutePath(a) == ZelUtl::AbsolutePath(b) || ZelUtl::IsSameFile(a, b);
}

std::string PathForSaving(const std::string &path)
{
  const auto below = PathBelow(InstalledFolder(), path);
  return below ? ZelUtl::JoinPath(UserFolder(), *below) : path;
}

std::string PathInForce(const std::string &path)
{
  const auto below = PathBelow(InstalledFolder(), XmlPathOf(path));
  const std::string version = below ? ZelUtl::JoinPath(UserFolder(), *below) : std::string();
  return below && IsPaletteFile(version) ? version : path;
}

std::string InstalledPath(const std::string &path)
{
  auto below = PathBelow(InstalledFolder(), path);
  if (!below)
    below = PathBelow(UserFolder(), path);
  const std::string installed = below ? ZelUtl::JoinPath(InstalledFolder(), *below) : std::string();
  return below && IsPaletteFile(installed) ? installed : std::string();
}

std::string PathOfFixedPalette(const FixedPalette &row)
{
  const std::string folder = InstalledFolder();
  if (folder.empty())
    return {};
  const std::string xml = ZelUtl::JoinPath(folder, row.path);
  for (const std::string &path : {xml, xml.substr(0, xml.size() - 4) + ".cpl"}) {
    if (std::string inForce = PathInForce(path); IsPaletteFile(inForce))
      return inForce;
  }
  return {};
}

} // namespace ZelClr::Internal
