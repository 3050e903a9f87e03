#include "plain_profiles.h"

#include "zelclr/convert/formulas/coated_press.h"

#include <lcms2_plugin.h>

#include <cmath>

namespace {

constexpr std::size_t kCurvePoints = 1024;

struct Chromaticity
{
  double x;
  double y;
};

constexpr Chromaticity kD65 = {0.3127, 0.3290};

struct Primaries
{
  Chromaticity red;
  Chromaticity green;
  Chromaticity blue;
};

// IEC 61966-2-1:1999, table 1; Adobe RGB (1998) Color Image Encoding, 4.3.1.1. Both on D65.
constexpr Primaries kSrgb = {{0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}};
constexpr Primaries kAdobeRgb = {{0.64, 0.33}, {0.21, 0.71}, {0.15, 0.06}};

cmsMAT3 Matrix(const cmsVEC3 &row0, const cmsVEC3 &row1, const cmsVEC3 &row2)
{
  return {{row0, row1, row2}};
}

cmsMAT3 Product(const cmsMAT3 &a, const cmsMAT3 &b)
{
  cmsMAT3 product;
  _cmsMAT3per(&product, &a, &b);
  return product;
}

cmsMAT3 Inverse(const cmsMAT3 &matrix)
{
  cmsMAT3 inverse;
  if (!_cmsMAT3inverse(&matrix, &inverse))
    throw ProfileError("the matrix has no inverse");
  return inverse;
}

cmsVEC3 Applied(const cmsMAT3 &matrix, const cmsVEC3 &vector)
{
  cmsVEC3 product;
  _cmsMAT3eval(&product, &matrix, &vector);
  return product;
}

cmsMAT3 Diagonal(const cmsVEC3 &scale)
{
  return Matrix({{scale.n[0], 0, 0}}, {{0, scale.n[1], 0}}, {{0, 0, scale.n[2]}});
}

/// XYZ of light of a chromaticity; Y = 1.
cmsVEC3 XyzOf(const Chromaticity &light)
{
  return {{light.x / light.y, 1.0, (1.0 - light.x - light.y) / light.y}};
}

/// XYZ of the white from XYZ of linear RGB 1, 1, 1: the columns are the primaries, each scaled so that they add up to
/// the white. P S 1 = W, so S = P^-1 W.
cmsMAT3 XyzFromRgb(const Primaries &primaries, const cmsVEC3 &white)
{
  const cmsVEC3 r = XyzOf(primaries.red);
  const cmsVEC3 g = XyzOf(primaries.green);
  const cmsVEC3 b = XyzOf(primaries.blue);
  const cmsMAT3 columns = Matrix({{r.n[0], g.n[0], b.n[0]}}, {{r.n[1], g.n[1], b.n[1]}}, {{r.n[2], g.n[2], b.n[2]}});
  return Product(columns, Diagonal(Applied(Inverse(columns), white)));
}

/// D65 to D50 by the linear Bradford transform, ICC.1:2022 Annex E: M^-1 diag(M D50 / M D65) M.
cmsMAT3 D50FromD65()
{
  const cmsMAT3 bradford =
    Matrix({{0.8951, 0.2664, -0.1614}}, {{-0.7502, 1.7135, 0.0367}}, {{0.0389, -0.0685, 1.0296}});
  const cmsCIEXYZ &d50 = *cmsD50_XYZ();
  const cmsVEC3 to = Applied(bradford, {{d50.X, d50.Y, d50.Z}});
  const cmsVEC3 from = Applied(bradford, XyzOf(kD65));
  const cmsMAT3 scale = Diagonal({{to.n[0] / from.n[0], to.n[1] / from.n[1], to.n[2] / from.n[2]}});
  return Product(Inverse(bradford), Product(scale, bradford));
}

/// What a colorant tag stores: whole 65536ths.
cmsCIEXYZ Stored(const cmsCIEXYZ &xyz)
{
  const auto stored = [](double value) { return std::floor(value * 65536.0 + 0.5) / 65536.0; };
  return {stored(xyz.X), stored(xyz.Y), stored(xyz.Z)};
}

Curve Gamma(double gamma)
{
  return Curve(cmsBuildGamma(nullptr, gamma));
}

/// A device whose light is linear in `xyz`, on D65. The white of the medium is D50, as for every display whose eye is
/// adapted to it, so that absolute white stays white; the adaptation from D65 is in a tag of its own.
Profile MatrixProfile(double version, std::initializer_list<Translation> description, const cmsMAT3 &xyz,
                      const Curve &curve)
{
  Profile profile = NewProfile({version, cmsSigDisplayClass, cmsSigRgbData, cmsSigXYZData}, description, kPublicDomain);

  const cmsMAT3 adapted = Product(D50FromD65(), xyz);
  const auto column = [&](int i) { return Stored({adapted.v[0].n[i], adapted.v[1].n[i], adapted.v[2].n[i]}); };
  const cmsCIEXYZ red = column(0);
  const cmsCIEXYZ blue = column(2);
  const cmsCIEXYZ white = Stored(*cmsD50_XYZ());
  // Green takes what the rounding of the others leaves, so that the three add up to the white exactly.
  const cmsCIEXYZ green = {white.X - red.X - blue.X, white.Y - red.Y - blue.Y, white.Z - red.Z - blue.Z};

  WriteTag(profile, cmsSigRedColorantTag, &red);
  WriteTag(profile, cmsSigGreenColorantTag, &green);
  WriteTag(profile, cmsSigBlueColorantTag, &blue);
  WriteTag(profile, cmsSigRedTRCTag, curve.get());
  ShareTag(profile, cmsSigGreenTRCTag, cmsSigRedTRCTag);
  ShareTag(profile, cmsSigBlueTRCTag, cmsSigRedTRCTag);
  const cmsMAT3 adaptation = D50FromD65();
  WriteTag(profile, cmsSigChromaticAdaptationTag, &adaptation);
  return profile;
}

Profile GrayProfile(cmsProfileClassSignature deviceClass, const wchar_t *description, const Curve &curve)
{
  Profile profile =
    NewProfile({2.4, deviceClass, cmsSigGrayData, cmsSigXYZData}, {{"en", "US", description}}, kPublicDomain);
  WriteTag(profile, cmsSigGrayTRCTag, curve.get());
  return profile;
}

/// The light that a tone value of black lets the eye see, 1 for the paper and 0 for the solid:
///
///   R = (1 - t (1 - s^(1/n)))^n     Yule and Nielsen: t the tone value, s the light of the solid on the paper as 1
///   Y = (R - s) / (1 - s)           Murray and Davies, solved for the paper that the dots seem to leave
///
/// The solid is the black of FOGRA39L. That both ends are those of the medium is on purpose: black is then the black of
/// every destination, and text that is converted stays black.
double SeenPaper(double tone, double n)
{
  using ZelClr::Formulas::kCoatedSolids;
  constexpr double kSolid = kCoatedSolids[8].y / kCoatedSolids[0].y;
  const double light = std::pow(1.0 - tone * (1.0 - std::pow(kSolid, 1.0 / n)), n);
  return (light - kSolid) / (1.0 - kSolid);
}

/// The n by which a tone value of a half looks larger by `gain`. SeenPaper falls with n.
double YuleNielsenFactor(double gain)
{
  double low = 1.0;
  double high = 100.0;
  for (int i = 0; i < 60; ++i) {
    const double middle = (low + high) / 2.0;
    (SeenPaper(0.5, middle) > 0.5 - gain ? low : high) = middle;
  }
  return low;
}

} // namespace

Profile SrgbVersion2()
{
  return MatrixProfile(2.4, {{"en", "US", L"sRGB IEC61966-2-1 no black scaling"}}, XyzFromRgb(kSrgb, XyzOf(kD65)),
                       SampledCurve(kCurvePoints, ZelClr::Formulas::LinearFromSrgb));
}

Profile SrgbVersion4()
{
  // Y = (a X + b)^g from d on, c X below: ICC.1:2022, 10.18, function type 3.
  constexpr std::array<double, 5> kParameters = {2.4, 1.0 / 1.055, 0.055 / 1.055, 1.0 / 12.92, 0.04045};
  return MatrixProfile(4.3,
                       {{"en", "US", L"sRGB (ICC version 4)"},
                        {"de", "DE", L"sRGB (ICC-Version 4)"},
                        {"fr", "FR", L"sRVB (ICC version 4)"},
                        {"es", "ES", L"sRGB (ICC versión 4)"},
                        {"ja", "JP", L"sRGB (ICC バージョン 4)"},
                        {"zh", "CN", L"sRGB (ICC 第 4 版)"}},
                       XyzFromRgb(kSrgb, XyzOf(kD65)),
                       Curve(cmsBuildParametricToneCurve(nullptr, 4, kParameters.data())));
}

Profile AdobeRgbCompatible()
{
  return MatrixProfile(2.4, {{"en", "US", L"Compatible with Adobe RGB (1998)"}}, XyzFromRgb(kAdobeRgb, XyzOf(kD65)),
                       Gamma(563.0 / 256.0));
}

// Channels 0 to 1 are X / 0.95046, Y and Z / 1.08906 of a colour as it is on the D65 white, so white is 1, 1, 1 and
// every colour of a surface lies within. The colorants are the axes of that space, adapted to D50.
Profile XyzOnD65()
{
  return MatrixProfile(2.4, {{"en", "US", L"XYZ on D65, linear"}}, Diagonal(XyzOf(kD65)), Gamma(1.0));
}

Profile GrayGamma(double gamma, const wchar_t *description)
{
  return GrayProfile(cmsSigDisplayClass, description, Gamma(gamma));
}

Profile DotGain(double gain, const wchar_t *description)
{
  const double n = YuleNielsenFactor(gain);
  return GrayProfile(cmsSigOutputClass, description,
                     SampledCurve(kCurvePoints, [n](double gray) { return SeenPaper(1.0 - gray, n); }));
}

Profile CieLab()
{
  Profile profile =
    NewProfile({2.4, cmsSigColorSpaceClass, cmsSigLabData, cmsSigLabData}, {{"en", "US", L"CIE Lab"}}, kPublicDomain);

  // The corners of a cube: each node holds its own coordinates.
  constexpr std::array<cmsUInt16Number, 24> kCorners = {0, 0,     0,     0,     0,     65535, 0,     65535,
                                                        0, 0,     65535, 65535, 65535, 0,     0,     65535,
                                                        0, 65535, 65535, 65535, 0,     65535, 65535, 65535};
  const Pipeline identity(cmsPipelineAlloc(nullptr, 3, 3));
  cmsPipelineInsertStage(identity.get(), cmsAT_END, cmsStageAllocCLut16bit(nullptr, 2, 3, 3, kCorners.data()));
  WriteTag(profile, cmsSigAToB0Tag, identity.get());
  ShareTag(profile, cmsSigBToA0Tag, cmsSigAToB0Tag);
  return profile;
}
