// What tests ask of the operating system, in posix/ and windows/.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

/// A new folder in the temporary one, from the root on, with "/" in its path.
std::string MakeFolderAside();
/// With all that is in it, as far as that goes at once: on Windows somebody may still have a part of it open.
void RemoveFolder(const std::string &path);

/// A variable of this process's environment, as the library and children see it.
void SetVariable(const char *name, const std::string &value);
void UnsetVariable(const char *name);

/// The variable that says where the user's files are, "NAME=value", for these to be below this folder.
std::string UserBelow(const std::string &folder);

/// The name of our folder there.
std::string UsersFolderName();

/// What is there, can be opened and is no regular file: a pipe, made in this folder where they live in folders, and a
/// device without an end.
std::vector<std::string> PipeAndDevice(const std::string &folder);
/// A device that is always full; empty where the system has none.
std::string FullDevice();

/// Whether names of files and words of command lines are any bytes, and not text.
bool NamesAreBytes();

/// A link to a folder, where the system lets everybody make one; false, and none, on Windows, which does not.
bool LinkFolder(const std::string &target, const std::string &link);

using Process = std::intptr_t;
inline constexpr int kKilled = -1;

/// This program once more with these words.
Process StartThisProgram(const std::vector<std::string> &words);
/// Its exit code, or kKilled.
int WaitFor(Process process);
void Kill(Process process);
/// Ends this process at once, as Kill does.
[[noreturn]] void KillThisProcess();

} // namespace tests
