// A host that loads the library by name, uses it, and lets it go: neither that nor the end of the process may hang,
// although folders are watched. unload LIBRARY: 0 when all is well.
#include <windows.h>

#include <cstdint>
#include <cstdio>

using Recover = bool (*)(const void *source, void *destination, std::uint32_t width, std::uint32_t height);

int wmain(int count, wchar_t **words)
{
  const HMODULE library = count == 2 ? ::LoadLibraryW(words[1]) : nullptr;
  const auto recover = reinterpret_cast<Recover>(
    reinterpret_cast<void (*)()>(library == nullptr ? nullptr : ::GetProcAddress(library, "RecoverCmykPixels")));
  if (recover == nullptr) {
    std::printf("no library: %lu\n", ::GetLastError());
    return 1;
  }
  const std::uint8_t white[] = {255, 255, 255};
  std::uint8_t inks[] = {99, 99, 99, 99};
  if (!recover(white, inks, 1, 1) || inks[0] + inks[1] + inks[2] + inks[3] > 10) { // by settings, whose file is watched
    std::printf("white is %d %d %d %d\n", inks[0], inks[1], inks[2], inks[3]);
    return 2;
  }
  ::FreeLibrary(library);
  ::Sleep(300); // a thread without its code would crash now
  return 0;
}
