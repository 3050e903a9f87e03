// The order of colours. Documents and palettes are sorted by it, so it is frozen.

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/scaling.h"

#include <functional>

namespace Model = ZelClr::ClrModel;

namespace {

template <class T>
constexpr int Sign(const T &a, const T &b)
{
  return (a > b) - (a < b);
}

template <class T>
int Identity(const T *a, const T *b)
{
  return std::less<const T *>{}(b, a) - std::less<const T *>{}(a, b);
}

constexpr int FirstDifference(std::initializer_list<int> signs)
{
  for (const int sign : signs) {
    if (sign != 0)
      return sign;
  }
  return 0;
}

/// A pair of colours of one model, compared place by place.
struct Pair
{
  const CLR_COLORSPEC &a;
  const CLR_COLORSPEC &b;

  template <class T>
  int At(std::size_t offset) const
  {
    return Sign(a.GetComponent<T>(offset), b.GetComponent<T>(offset));
  }
  int Bytes(std::size_t offset, std::size_t count) const
  {
    return std::memcmp(a.GetRAWColor() + offset, b.GetRAWColor() + offset, count);
  }
  int Percent(std::size_t offset) const
  {
    return Sign(ZelClr::PercentFromByte(a.GetComponent<std::uint8_t>(offset)),
                ZelClr::PercentFromByte(b.GetComponent<std::uint8_t>(offset)));
  }
  int Palette() const { return Sign(a.GetPaletteGuid(), b.GetPaletteGuid()); }
};

constexpr bool IsCmykFamily(unsigned model)
{
  return model == Model::Cmyk || model == Model::Cmyk255 || model == Model::Cmyk100;
}

/// The number by which an ink of the CMYK family is compared: a percentage of model 2 on the scale of 255, any other
/// byte as it stands. A percentage above 100 is not cut off here, so that the order stays total for every byte.
///
/// KEPT: CMYK100 bytes stand unscaled beside those of model 2, where one would expect both to count as percentages;
/// stored data depends on it.
int InkOnCommonScale(const CLR_COLORSPEC &colour, std::size_t ink)
{
  const int byte = colour.GetComponent<std::uint8_t>(ink);
  return colour.GetType() == Model::Cmyk ? ZelClr::MulDiv(byte, 255, 100) : byte;
}

int CompareCmykFamily(const Pair &pair)
{
  for (std::size_t ink = 0; ink < 4; ++ink) {
    if (const int sign = Sign(InkOnCommonScale(pair.a, ink), InkOnCommonScale(pair.b, ink)))
      return sign;
  }
  return 0;
}

} // namespace

int CLR_COLORSPEC::CompareTo(const CLR_COLORSPEC &other) const
{
  if (IsReference() || other.IsReference()) {
    if (IsReference() && other.IsReference())
      return Identity(GetReference(), other.GetReference());
    return IsReference() ? 1 : -1;
  }
  if (IsCmykFamily(model_) || IsCmykFamily(other.model_)) {
    if (IsCmykFamily(model_) && IsCmykFamily(other.model_))
      return CompareCmykFamily({*this, other});
    return Sign<unsigned>(IsCmykFamily(model_) ? unsigned{Model::Cmyk} : model_,
                          IsCmykFamily(other.model_) ? unsigned{Model::Cmyk} : other.model_);
  }
  if (model_ != other.model_)
    return Sign(model_, other.model_);

  const Pair pair{*this, other};
  switch (model_) {
  case Model::Pantone:
  case Model::PantoneHex:
    return FirstDifference({pair.Palette(), pair.Bytes(0, 4)});
  case Model::Cmy255:
  case Model::Yiq255:
  case Model::Lab255:
  case Model::Xyz:
    return pair.Bytes(0, 3);
  case Model::Rgb255:
    return FirstDifference({pair.At<std::uint8_t>(2), pair.At<std::uint8_t>(1), pair.At<std::uint8_t>(0)});
  case Model::Hsb:
  case Model::Hls:
    return FirstDifference({pair.At<std::int16_t>(0), pair.Percent(2), pair.Percent(3)});
  case Model::Lab:
    return FirstDifference({pair.At<std::uint8_t>(0), pair.At<std::int8_t>(1), pair.At<std::int8_t>(2)});
  case Model::BlackWhite:
    return pair.At<std::int32_t>(0);
  case Model::Gray255:
    return pair.At<std::uint8_t>(0);
  case Model::Index:
  case Model::Gray16:
    return pair.At<std::uint16_t>(0);
  case Model::Registration:
    return Sign(GetDensity(), other.GetDensity());
  case Model::UserInks:
  case Model::Rgba:
  case Model::Bgra:
    return pair.Bytes(0, 4);
  case Model::IndexedUserInk:
    return FirstDifference({pair.Palette(), pair.At<std::uint16_t>(0), pair.At<std::uint8_t>(2)});
  case Model::Hexachrome: // byte 1 is no part of the model
    return FirstDifference({pair.At<std::uint8_t>(0), pair.Bytes(2, 6)});
  case Model::Rgb48:
    return pair.Bytes(0, 8);
  case Model::Spot:
    return FirstDifference({pair.Palette(), pair.At<std::int16_t>(0), pair.At<std::uint16_t>(2),
                            Identity(GetSpotDefinition(), other.GetSpotDefinition())});
  case Model::DeviceN: {
    const WClrColorDeviceN *left = GetDeviceN();
    const WClrColorDeviceN *right = other.GetDeviceN();
    return left && right ? CompareDeviceN(*left, *right) : Identity(left, right);
  }
  case Model::ScRgb:
    // KEPT: the floats compare as bytes in memory, where one would expect numerical order; stored data depends on it.
    return pair.Bytes(0, 12);
  default:
    return 0;
  }
}
