// A disk that fails on demand: the steps of replacing a file, announced to a test before each is taken.
//
// Threads: the function is called on the thread that writes, maybe on several at once. Set it while nobody writes.
// Errors: none. Without a function a step costs one look at a flag.
#pragma once

#include "zelclr/platform/export.h"

#include <functional>

namespace ZelUtl {

/// In the order in which ReplaceFile takes them.
enum class FileStep
{
  Make,       ///< the file aside
  Write,      ///< its bytes; the file aside is there and empty
  Flush,      ///< its bytes, and its permissions, to the disk
  Rename,     ///< it takes the place of the old file
  FlushFolder ///< the names to the disk; the new file is in its place
};
inline constexpr FileStep kFileSteps[] = {FileStep::Make, FileStep::Write, FileStep::Flush, FileStep::Rename,
                                          FileStep::FlushFolder};

/// Answers 0 to let a step happen, else the errno that it fails with, on every system. It may end the process, too.
using FileFaults = std::function<int(FileStep)>;

/// For tests; an empty function takes it away.
ZELCLR_API void SetFileFaults(FileFaults faults);

/// The errno that this step is to fail with; 0 for none.
int FaultOfFileStep(FileStep step);

} // namespace ZelUtl
