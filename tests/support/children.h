// Work for other processes: this program once more, without its tests.
#pragma once

#include "tests/support/system.h"

#include <string>
#include <vector>

namespace tests {

using Words = std::vector<std::string>;

/// Names what a child can be asked to do; the answer is its exit code. Declared once, at the level of a source.
struct ChildWork
{
  ChildWork(const char *name, int (*work)(const Words &words));
};

/// See WaitFor and Kill.
Process StartChild(const std::string &work, const Words &words = {});

} // namespace tests
