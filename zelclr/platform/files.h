// Whole files in and out. Paths are UTF-8; "-" means nothing special here.
//
// Threads: plain functions. Errors: an empty result or false, with the reason in English.
#pragma once

#include "zelclr/platform/export.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ZelUtl {

/// The bytes of a file, read to its end; a folder, a file of more than `most` bytes and one that cannot be read fail.
/// Pipes and devices are read until they end or exceed `most`.
ZELCLR_API std::optional<std::string> ReadFile(const std::string &path, std::size_t most, std::string &reason);

/// The bytes of the standard input, under the same bound.
ZELCLR_API std::optional<std::string> ReadStandardInput(std::size_t most, std::string &reason);

/// Replaces a file by these bytes, or makes it: they are written aside in the same folder, flushed and renamed over the
/// old file, and the folder is flushed, so that at every instant the old or the new file is there, whole. A symbolic
/// link stays and the file that it leads to is replaced; the permissions of an old file stay, its owner where the
/// system allows that. A pipe or a device is simply written to. On failure the old file is as it was and nothing is
/// left beside it; only when the folder's flush fails is the new file in place, whole, but maybe not after a loss of
/// power. A process that is killed meanwhile leaves a file ".zelclr-..." behind at worst.
ZELCLR_API bool ReplaceFile(const std::string &path, std::string_view bytes, std::string &reason);

/// Keeps bytes that nobody understands, before the file at `path` is replaced: in a file beside it that is named like
/// it with ".damaged", ".damaged-2" and so on behind, the first name that is free or holds these bytes already. The
/// path of that file; empty, with a reason, when it could not be written.
ZELCLR_API std::string KeepDamagedBytes(const std::string &path, std::string_view bytes, std::string &reason);

/// Whether both paths lead to one existing file.
ZELCLR_API bool IsSameFile(const std::string &a, const std::string &b);

/// Whether anything has this name, a link that leads nowhere among them.
bool IsNameTaken(const std::string &path);

} // namespace ZelUtl
