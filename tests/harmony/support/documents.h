// Documents with style sheets: palettes in folders of the test's own, profiles of the installation.
#pragma once

#include "tests/palettes/support/palette_folders.h"

namespace tests {

class Documents : public PaletteFolders
{
protected:
  Documents()
  {
    ZelUtl::Folders folders = ZelUtl::GetFolders();
    ZelUtl::ResetFolders();
    folders.data = ZelUtl::GetFolders().data;
    ZelUtl::SetFolders(folders);
  }
};

} // namespace tests
