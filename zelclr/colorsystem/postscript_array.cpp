#include "zelclr/colorsystem/internal/postscript_array.h"

#include "zelclr/platform/icc_matrix.h"
#include "zelclr/platform/text.h"

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

// Profiles speak of the white D50.
constexpr const char *kWhite =
  "/RangeLMN [0 0.9642 0 1 0 0.8249]\n/WhitePoint [0.9642 1 0.8249]\n/BlackPoint [0 0 0]\n";

} // namespace

std::string PostScriptArrayOf(const ZelUtl::IccFile &file)
{
  if (file.Header().colourSpace == IccSignature("GRAY")) {
    const auto curve = ZelUtl::IccCurveFromTag(file.ReadTag(IccSignature("kTRC"), ZelUtl::kMostIccCurveBytes));
    return curve ? "[/CIEBasedA\n<<\n/DecodeA " + Procedure(*curve) + " bind\n/MatrixA [0.9642 1 0.8249]\n" + kWhite +
                     ">>\n]\n"
                 : std::string();
  }
  const auto profile = ZelUtl::IccMatrixOf(file);
  if (!profile)
    return {};
  std::string decode, matrix;
  for (const ZelUtl::IccCurve &curve : profile->curves)
    decode += Procedure(curve) + " bind\n";
  for (const ZelUtl::IccXyz &xyz : profile->colorants)
    matrix += Number(xyz.x) + " " + Number(xyz.y) + " " + Number(xyz.z) + " ";
  return "[/CIEBasedABC\n<<\n/DecodeABC [" + decode + "]\n/MatrixABC [" + matrix + "]\n" + kWhite + ">>\n]\n";
}

} // namespace ColorSystem::Internal
