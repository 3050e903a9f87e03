// Other processes that use the same settings: this program once more, without its tests.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tests {

/// The program with other words: see the table in children.cpp. Its folders are `data` and `user`.
pid_t StartChild(const std::string &data, const std::string &user, const std::vector<std::string> &words);
/// The status that waitpid gives.
int WaitForChild(pid_t child);

} // namespace tests
