// Any bytes as a zip archive: refused with a reason, or entries that are no larger than was asked for and can be packed
// again.

#include "zelclr/platform/zip_archive.h"

#include <cstdlib>
#include <set>

namespace {

using namespace ZelUtl;

constexpr std::size_t kMost = 1 << 16;

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  const std::string_view archive(reinterpret_cast<const char *>(data), size);
  const std::vector<std::string> names = ZipEntryNames(archive);
  Demand(names.size() <= kMostZipEntries);
  std::set<std::string> read;
  for (const std::string &name : names) {
    if (read.size() == 16 || !read.insert(name).second)
      continue;
    std::string reason;
    const auto bytes = ReadZipEntry(archive, name, kMost, reason);
    Demand(bytes.has_value() == reason.empty() && (!bytes || bytes->size() <= kMost));
    if (!bytes)
      continue;
    const ZipEntry entry{"entry", *bytes};
    const auto written = WriteZip({&entry, 1}, reason);
    Demand(written && ReadZipEntry(*written, "entry", kMost, reason) == bytes);
  }
  return 0;
}
