// Files for libraries that know of no wide characters.
//
// Threads: a plain function. Errors: empty where a file cannot be named.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace ZelUtl {

/// What `fopen` takes for a file.
struct NarrowPath
{
  std::string path;
  std::shared_ptr<void> keeper; ///< to be held until the file has been closed; null where that is needless
};

/// In posix/ and windows/. The path itself on systems whose file names are bytes. On Windows the path in the code page
/// of the process; where that has not every letter, the file's short name, and else that of a copy in the temporary
/// folder, which goes with its keeper.
std::optional<NarrowPath> NarrowPathOf(const std::string &path);

} // namespace ZelUtl
