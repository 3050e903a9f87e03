#include "zelclr/platform/folder_watch.h"

namespace ZelUtl {

struct FolderWatch::State
{};

FolderWatch::FolderWatch(Listener) {}

FolderWatch::~FolderWatch() = default;

bool FolderWatch::Watch(const std::string &, int)
{
  return false; // folders are not watched here yet
}

void FolderWatch::Stop() {}

} // namespace ZelUtl
