// Work on every instruction set that this processor has and the sources are compiled for.
#pragma once

#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace tests {

template <class Work>
void ForEachTarget(Work work)
{
  const std::int64_t all = hwy::SupportedTargets() & HWY_TARGETS;
  for (std::int64_t rest = all; rest != 0; rest &= rest - 1) {
    const std::int64_t target = rest & -rest;
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::GetChosenTarget().Update(target);
    work();
  }
  hwy::GetChosenTarget().Update(all);
}

} // namespace tests
