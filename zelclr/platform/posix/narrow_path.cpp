#include "zelclr/platform/narrow_path.h"

namespace ZelUtl {

std::optional<NarrowPath> NarrowPathOf(const std::string &path)
{
  return NarrowPath{path, nullptr};
}

} // namespace ZelUtl
