// What a profile's tables claim, checked before a library that allocates by those claims reads them.
// Source: ICC.1:2022, 10.10 (lut8Type), 10.11 (lut16Type), 10.12 (lutAToBType), 10.13 (lutBToAType), 10.16
// (multiProcessElementsType).
#include "zelclr/platform/bytes.h"
#include "zelclr/platform/icc_file.h"

#include <algorithm>

namespace ZelUtl {

namespace {

/// The largest tables of real profiles, 33 steps of four inks, have 7 MiB.
constexpr std::uint64_t kMostTableBytes = std::uint64_t{12} << 20;
/// Elements have curves and tables of their own; a chain of them is evaluated for each of its samples.
constexpr std::uint64_t kMostElementBytes = std::uint64_t{1} << 20;
constexpr std::uint32_t kMostElements = 64;
constexpr std::uint8_t kMostChannels = 16;

struct Claim
{
  std::span<const std::uint8_t> start; ///< the first bytes of the tag
  const IccFile &file;
  const IccTag &tag;
};

constexpr std::size_t kStart = 64;

/// Samples times outputs, or more than any tag may have.
std::uint64_t TableCells(std::span<const std::uint8_t> grid, unsigned outputs)
{
  std::uint64_t cells = outputs;
  for (const std::uint8_t points : grid)
    cells = std::min(cells * points, kMostTableBytes + 1);
  return cells;
}

bool IsLutSound(const Claim &claim, unsigned bytes)
{
  const std::uint8_t inputs = claim.start[8];
  const std::uint8_t outputs = claim.start[9];
  if (inputs == 0 || inputs > kMostChannels || outputs == 0 || outputs > kMostChannels)
    return false;
  const std::vector<std::uint8_t> grid(inputs, claim.start[10]);
  std::uint64_t inputEntries = 256, outputEntries = 256, header = 48;
  if (bytes == 2) {
    ByteReader reader(claim.start.subspan(48));
    inputEntries = reader.ReadBig<std::uint16_t>();
    outputEntries = reader.ReadBig<std::uint16_t>();
    header = 52;
  }
  const std::uint64_t claimed =
    header + bytes * (inputs * inputEntries + TableCells(grid, outputs) + outputs * outputEntries);
  return claimed <= claim.tag.size && claimed * (bytes == 1 ? 2 : 1) <= kMostTableBytes; // bytes are held as words
}

bool IsLutOfCurvesSound(const Claim &claim)
{
  const std::uint8_t inputs = claim.start[8];
  const std::uint8_t outputs = claim.start[9];
  if (inputs == 0 || inputs > kMostChannels || outputs == 0 || outputs > kMostChannels)
    return false;
  const auto offset = ByteReader(claim.start.subspan(24)).ReadBig<std::uint32_t>();
  if (offset == 0)
    return true;
  constexpr std::uint32_t kGridHeader = 20;
  if (std::uint64_t{offset} + kGridHeader > claim.tag.size)
    return false;
  const auto grid = claim.file.ReadTag({0, claim.tag.offset + offset, kGridHeader}, kGridHeader);
  if (grid.size() != kGridHeader)
    return false;
  const unsigned bytes = grid[16] == 1 ? 1 : 2;
  const std::uint64_t cells = TableCells(std::span(grid).first(inputs), outputs);
  return cells * bytes <= claim.tag.size - offset - kGridHeader && cells * 2 <= kMostTableBytes;
}

bool AreElementsSound(const Claim &claim)
{
  return claim.tag.size <= kMostElementBytes &&
         ByteReader(claim.start.subspan(12)).ReadBig<std::uint32_t>() <= kMostElements;
}

bool IsTagSound(const IccFile &file, const IccTag &tag)
{
  const auto start = file.ReadTag(tag, kStart);
  if (start.size() < kStart)
    return tag.size < kStart; // a table has more; a file that ends within is none
  const Claim claim = {start, file, tag};
  switch (ByteReader(start).ReadBig<std::uint32_t>()) {
  case IccSignature("mft1"):
    return IsLutSound(claim, 1);
  case IccSignature("mft2"):
    return IsLutSound(claim, 2);
  case IccSignature("mAB "):
  case IccSignature("mBA "):
    return IsLutOfCurvesSound(claim);
  case IccSignature("mpet"):
    return AreElementsSound(claim);
  default:
    return true;
  }
}

/// A2B0 to A2B2, B2A0 to B2A2, D2B0 to D2B3, B2D0 to B2D3.
bool IsTransformTag(std::uint32_t signature)
{
  const std::uint32_t kind = signature >> 8;
  return kind == IccSignature("A2B ") >> 8 || kind == IccSignature("B2A ") >> 8 || kind == IccSignature("D2B ") >> 8 ||
         kind == IccSignature("B2D ") >> 8;
}

} // namespace

bool AreIccTablesSound(const IccFile &file)
{
  return std::all_of(file.Tags().begin(), file.Tags().end(),
                     [&file](const IccTag &tag) { return !IsTransformTag(tag.signature) || IsTagSound(file, tag); });
}

} // namespace ZelUtl
