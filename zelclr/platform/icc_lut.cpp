#include "zelclr/platform/icc_lut.h"

#include "zelclr/platform/bytes.h"
#include "zelclr/platform/icc_file.h"

namespace ZelUtl {

namespace {

constexpr std::uint64_t kMostNumbers = std::uint64_t{1} << 23;

class NumberReader
{
public:
  NumberReader(ByteReader &reader, bool isWide) : reader_(reader), isWide_(isWide) {}

  /// Empty when there are not so many.
  std::vector<float> Read(std::uint64_t count)
  {
    if (count > reader_.Remaining() / (isWide_ ? 2 : 1))
      return {};
    std::vector<float> numbers(static_cast<std::size_t>(count));
    for (float &number : numbers)
      number = isWide_ ? static_cast<float>(reader_.ReadBig<std::uint16_t>()) / 65535.0f
                       : static_cast<float>(reader_.ReadBig<std::uint8_t>()) / 255.0f;
    return numbers;
  }
  bool ReadCurves(unsigned channels, unsigned entries, std::vector<std::vector<float>> &curves)
  {
    for (unsigned channel = 0; channel < channels; ++channel) {
      curves.push_back(Read(entries));
      if (curves.back().size() < 2)
        return false;
    }
    return true;
  }

private:
  ByteReader &reader_;
  bool isWide_;
};

} // namespace

std::optional<IccLut> IccLutFromTag(std::span<const std::uint8_t> tag)
{
  ByteReader reader(tag);
  const auto type = reader.ReadBig<std::uint32_t>();
  reader.Take(4);
  if (type != IccSignature("mft1") && type != IccSignature("mft2"))
    return std::nullopt;
  IccLut lut;
  lut.isWide = type == IccSignature("mft2");
  lut.inputs = reader.ReadBig<std::uint8_t>();
  lut.outputs = reader.ReadBig<std::uint8_t>();
  lut.grid = reader.ReadBig<std::uint8_t>();
  reader.Take(1);
  for (double &number : lut.matrix)
    number = reader.ReadBig<std::int32_t>() / 65536.0;
  const unsigned inputEntries = lut.isWide ? reader.ReadBig<std::uint16_t>() : 256;
  const unsigned outputEntries = lut.isWide ? reader.ReadBig<std::uint16_t>() : 256;
  if (lut.inputs == 0 || lut.inputs > 15 || lut.outputs == 0 || lut.outputs > 15 || lut.grid < 2)
    return std::nullopt;

  std::uint64_t cells = lut.outputs;
  for (unsigned input = 0; input < lut.inputs && cells <= kMostNumbers; ++input)
    cells *= lut.grid;
  NumberReader numbers(reader, lut.isWide);
  if (cells > kMostNumbers || !numbers.ReadCurves(lut.inputs, inputEntries, lut.inputCurves))
    return std::nullopt;
  lut.table = numbers.Read(cells);
  if (lut.table.empty() || !numbers.ReadCurves(lut.outputs, outputEntries, lut.outputCurves) || !reader.Ok())
    return std::nullopt;
  return lut;
}

} // namespace ZelUtl
