// Any bytes as an ICC profile: read within their bounds; renamed, they keep every other tag.

#include "zelclr/platform/icc_file.h"

#include "fuzz/scratch_file.h"

#include <cstdlib>

namespace {

using namespace ZelUtl;

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

void CheckRenamed(const IccFile &before, const std::vector<std::uint8_t> &bytes)
{
  const std::wstring name = L"Gr\u00f6\u00dfe";
  std::string reason;
  const auto after = IccFile::Open(ScratchFile("-renamed.icc", bytes.data(), bytes.size()), reason);
  Demand(after && after->Header().size == bytes.size());
  Demand(DescriptionFromIccTag(after->ReadTag(IccSignature("desc"), kMostIccTextBytes)) == name);
  for (std::size_t i = 0; i < before.Tags().size(); ++i) {
    if (before.Tags()[i].signature != IccSignature("desc"))
      Demand(before.ReadTag(before.Tags()[i], 1 << 20) == after->ReadTag(after->Tags()[i], 1 << 20));
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  TextsOfIccTag({data, size});
  DescriptionFromIccTag({data, size});
  DeviceTextFromIccTag({data, size});

  std::string reason;
  const auto file = IccFile::Open(ScratchFile(".icc", data, size), reason);
  const auto renamed = WithIccDescription({data, size}, L"Gr\u00f6\u00dfe");
  Demand(file ? !renamed.empty() || file->Tags().size() == 1024 : !reason.empty());
  if (file && !renamed.empty())
    CheckRenamed(*file, renamed);
  return 0;
}
