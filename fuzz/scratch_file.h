// A file in memory for inputs that the library reads by path.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

/// Writes the bytes to one file of this process, over what was there, and gives its path.
inline std::string ScratchFile(const char *extension, const std::uint8_t *data, std::size_t size)
{
  const std::string path = "/dev/shm/zelclr-fuzz-" + std::to_string(::getpid()) + extension;
  if (std::FILE *const file = std::fopen(path.c_str(), "wb")) {
    std::fwrite(data, 1, size, file);
    std::fclose(file);
  }
  return path;
}
