#include "zelclr/palettes/internal/temporary_palette.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <utility>

namespace ZelClr {

TemporaryPalette::TemporaryPalette(std::wstring path) : path_(std::move(path))
{
  SetFileName(path_);
}

TemporaryPalette::~TemporaryPalette()
{
  if (path_.empty())
    return;
  if (GetFileName() == path_)
    SetFileName({}); // nothing is saved into a file that goes
  else if (IsChanged() && !IsLocked())
    Save({}); // here, where references to colour styles are saved as such
  const std::string path = ZelUtl::Utf8FromWide(path_);
  ZelUtl::DeleteFileAt(path);
  ZelUtl::DeleteFileAt(ZelUtl::FolderOfPath(path));
}

} // namespace ZelClr
