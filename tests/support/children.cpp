#include "tests/support/children.h"

#include <gtest/gtest.h>

#include <map>

namespace tests {

namespace {

constexpr const char *kFlag = "--child";

std::map<std::string, int (*)(const Words &)> &Works()
{
  static std::map<std::string, int (*)(const Words &)> works;
  return works;
}

} // namespace

ChildWork::ChildWork(const char *name, int (*work)(const Words &words))
{
  Works()[name] = work;
}

Process StartChild(const std::string &work, const Words &words)
{
  Words all = {kFlag, work};
  all.insert(all.end(), words.begin(), words.end());
  return StartThisProgram(all);
}

} // namespace tests

int main(int count, char **words)
{
  if (count > 2 && std::string(words[1]) == tests::kFlag)
    return tests::Works().at(words[2])({words + 3, words + count});
  testing::InitGoogleTest(&count, words);
  return RUN_ALL_TESTS();
}
