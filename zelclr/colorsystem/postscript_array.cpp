#include "zelclr/colorsystem/internal/postscript_array.h"

#include "zelclr/platform/bytes.h"
#include "zelclr/platform/icc_curve.h"
#include "zelclr/platform/text.h"

#include <optional>

namespace ColorSystem::Internal {

namespace {

using ZelUtl::IccSignature;

constexpr int kDecimals = 6;

std::string Number(double number)
{
  return ZelUtl::TextFromNumber(number, kDecimals);
}

/// A procedure of the curve, with the interpolation of its table spelled out.
std::string Procedure(const ZelUtl::IccCurve &curve)
{
  const bool power = curve.table.empty() && curve.a == 1.0 && curve.b == 0.0 && curve.d == 0.0 && curve.e == 0.0;
  if (power)
    return curve.gamma == 1.0 ? "{}" : "{0 max 1 min " + Number(curve.gamma) + " exp}";

  const std::size_t last = curve.table.empty() ? 1023 : curve.table.size() - 1;
  std::string values;
  for (std::size_t i = 0; i <= last; ++i)
    values += Number(curve.At(static_cast<double>(i) / static_cast<double>(last))) + (i % 16 == 15 ? "\n" : " ");
  // place; place and index, at most last - 1; fraction and index; value and next value; value + fraction * difference
  return "{dup 0 lt {pop 0} if dup 1 gt {pop 1} if " + std::to_string(last) + " mul dup cvi dup " +
         std::to_string(last - 1) + " gt {pop " + std::to_string(last - 1) + "} if\ndup 3 1 roll sub exch [" + values +
         "]\n2 copy exch get 3 1 roll exch 1 add get 1 index sub 3 2 roll mul add}";
}

std::optional<std::string> CurveOf(const ZelUtl::IccFile &file, std::uint32_t signature)
{
  const auto curve = ZelUtl::IccCurveFromTag(file.ReadTag(signature, ZelUtl::kMostIccCurveBytes));
  return curve ? std::optional(Procedure(*curve)) : std::nullopt;
}

/// "X Y Z" of an XYZ tag.
std::optional<std::string> XyzOf(const ZelUtl::IccFile &file, std::uint32_t signature)
{
  const auto bytes = file.ReadTag(signature, 20);
  ZelUtl::ByteReader reader(bytes);
  const bool isXyz = reader.ReadBig<std::uint32_t>() == IccSignature("XYZ ");
  reader.Take(4);
  std::string text;
  for (int i = 0; i < 3; ++i)
    text += (i == 0 ? "" : " ") + Number(reader.ReadBig<std::int32_t>() / 65536.0);
  return isXyz && reader.Ok() ? std::optional(text) : std::nullopt;
}

// Profiles speak of the white D50.
constexpr const char *kWhite =
  "/RangeLMN [0 0.9642 0 1 0 0.8249]\n/WhitePoint [0.9642 1 0.8249]\n/BlackPoint [0 0 0]\n";

} // namespace

std::string PostScriptArrayOf(const ZelUtl::IccFile &file)
{
  if (file.Header().connectionSpace != IccSignature("XYZ ") && file.Header().colourSpace == IccSignature("RGB "))
    return {};
  if (file.Header().colourSpace == IccSignature("GRAY")) {
    const auto curve = CurveOf(file, IccSignature("kTRC"));
    return curve ? "[/CIEBasedA\n<<\n/DecodeA " + *curve + " bind\n/MatrixA [0.9642 1 0.8249]\n" + kWhite + ">>\n]\n"
                 : std::string();
  }
  std::string decode, matrix;
  for (const auto &[colorant, curve] :
       {std::pair(IccSignature("rXYZ"), IccSignature("rTRC")), std::pair(IccSignature("gXYZ"), IccSignature("gTRC")),
        std::pair(IccSignature("bXYZ"), IccSignature("bTRC"))})
  {
    const auto procedure = CurveOf(file, curve);
    const auto xyz = XyzOf(file, colorant);
    if (!procedure || !xyz)
      return {};
    decode += *procedure + " bind\n";
    matrix += *xyz + " ";
  }
  return "[/CIEBasedABC\n<<\n/DecodeABC [" + decode + "]\n/MatrixABC [" + matrix + "]\n" + kWhite + ">>\n]\n";
}

} // namespace ColorSystem::Internal
