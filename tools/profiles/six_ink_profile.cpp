#include "six_ink_profile.h"

#include "six_ink_rendering.h"
#include "six_ink_separation.h"

#include <algorithm>
#include <cmath>
#include <functional>

using ZelClr::Formulas::Lab;

namespace {

constexpr std::size_t kInkNodes = 6;
constexpr std::size_t kLabNodes = 33;

cmsUInt16Number Word(double share)
{
  return static_cast<cmsUInt16Number>(std::lround(std::clamp(share, 0.0, 1.0) * 65535.0));
}

Pipeline Table(std::size_t inputs, std::size_t nodes, std::size_t outputs, const std::vector<cmsUInt16Number> &values)
{
  const auto inputCount = static_cast<cmsUInt32Number>(inputs);
  const auto outputCount = static_cast<cmsUInt32Number>(outputs);
  Pipeline pipeline(cmsPipelineAlloc(nullptr, inputCount, outputCount));
  cmsPipelineInsertStage(
    pipeline.get(), cmsAT_END,
    cmsStageAllocCLut16bit(nullptr, static_cast<cmsUInt32Number>(nodes), inputCount, outputCount, values.data()));
  return pipeline;
}

// Device to Lab: one table, as what inks look like does not depend on the intent.
void WriteLooks(const Profile &profile)
{
  std::size_t count = 1;
  for (std::size_t i = 0; i < kInks; ++i)
    count *= kInkNodes;
  std::vector<cmsUInt16Number> values;
  for (std::size_t node = 0; node < count; ++node) {
    Inks inks;
    for (std::size_t ink = kInks, left = node; ink-- > 0; left /= kInkNodes)
      inks[ink] = static_cast<double>(left % kInkNodes) / (kInkNodes - 1);
    const Lab lab = LabFromSixInks(inks);
    const cmsCIELab pcs = {lab.l, lab.a, lab.b};
    cmsUInt16Number encoded[3];
    cmsFloat2LabEncodedV2(encoded, &pcs);
    values.insert(values.end(), encoded, encoded + 3);
  }
  WriteTag(profile, cmsSigAToB0Tag, Table(kInks, kInkNodes, 3, values).get());
  ShareTag(profile, cmsSigAToB1Tag, cmsSigAToB0Tag);
  ShareTag(profile, cmsSigAToB2Tag, cmsSigAToB0Tag);
}

/// A table from Lab. Lightness 100 is 0xff00 of 0xffff; a curve brings it to the last node, so that white is free of
/// ink.
void WriteTableFromLab(const Profile &profile, cmsTagSignature tag, std::size_t outputs,
                       const std::vector<cmsUInt16Number> &values)
{
  const Curve lightness = SampledCurve(256, [](double encoded) { return std::min(encoded * 65535.0 / 65280.0, 1.0); });
  const Curve opponent = SampledCurve(256, [](double encoded) { return encoded; });
  const std::array<cmsToneCurve *, 3> curves = {lightness.get(), opponent.get(), opponent.get()};
  const Pipeline table = Table(curves.size(), kLabNodes, outputs, values);
  cmsPipelineInsertStage(table.get(), cmsAT_BEGIN, cmsStageAllocToneCurves(nullptr, curves.size(), curves.data()));
  WriteTag(profile, tag, table.get());
}

/// The Lab of a node of B2A, from each of its coordinates.
Lab LabOfNode(std::size_t l, std::size_t a, std::size_t b)
{
  const auto share = [](std::size_t i) { return static_cast<double>(i) / (kLabNodes - 1); };
  const auto opponent = [&](std::size_t i) { return share(i) * 65535.0 / 256.0 - 128.0; };
  return {share(l) * 100.0, opponent(a), opponent(b)};
}

using Target = std::function<Lab(const Lab &)>;

// Lab to device, and with `gamut` how far from reach each node is: 0 within, 1 for a Delta E of 100.
void WriteBuilds(const Profile &profile, cmsTagSignature tag, const Target &target, bool gamut)
{
  std::vector<cmsUInt16Number> values(kLabNodes * kLabNodes * kLabNodes * kInks);
  std::vector<cmsUInt16Number> misses(kLabNodes * kLabNodes * kLabNodes);
  for (std::size_t a = 0; a < kLabNodes; ++a) {
    for (std::size_t b = 0; b < kLabNodes; ++b) {
      Inks inks = {}; // the neighbour above, from white down
      for (std::size_t l = kLabNodes; l-- > 0;) {
        const Lab wanted = target(LabOfNode(l, a, b));
        inks = SixInksFor(wanted, inks);
        const std::size_t node = (l * kLabNodes + a) * kLabNodes + b;
        for (std::size_t ink = 0; ink < kInks; ++ink)
          values[node * kInks + ink] = Word(inks[ink]);
        const double miss = Miss(wanted, inks);
        misses[node] = Word(miss < 1.0 ? 0.0 : miss / 100.0);
      }
    }
  }
  WriteTableFromLab(profile, tag, kInks, values);
  if (gamut)
    WriteTableFromLab(profile, cmsSigGamutTag, 1, misses);
}

void WriteInkNames(const Profile &profile)
{
  const std::unique_ptr<cmsNAMEDCOLORLIST, void (*)(cmsNAMEDCOLORLIST *)> names(
    cmsAllocNamedColorList(nullptr, kInks, 0, "", ""), cmsFreeNamedColorList);
  for (std::size_t ink = 0; ink < kInks; ++ink) {
    Inks inks = {};
    inks[ink] = 1.0;
    const Lab lab = LabFromSixInks(inks);
    const cmsCIELab solid = {lab.l, lab.a, lab.b};
    cmsUInt16Number encoded[3];
    cmsFloat2LabEncodedV2(encoded, &solid);
    if (!cmsAppendNamedColor(names.get(), kInkNames[ink], encoded, nullptr))
      throw ProfileError("Little CMS refuses the name of an ink");
  }
  WriteTag(profile, cmsSigColorantTableTag, names.get());
}

} // namespace

Profile Hexachrome()
{
  Profile profile = NewProfile({2.4, cmsSigOutputClass, cmsSig6colorData, cmsSigLabData},
                               {{"en", "US", L"Hexachrome, coated paper (modelled)"}}, kPublicDomain);
  const auto paper = PaperOfSixInks();
  const cmsCIEXYZ white = {paper.x, paper.y, paper.z};
  WriteTag(profile, cmsSigMediaWhitePointTag, &white);
  WriteInkNames(profile);
  WriteLooks(profile);
  const SixInkRendering rendering;
  WriteBuilds(
    profile, cmsSigBToA0Tag, [&](const Lab &lab) { return rendering.Perceptual(lab); }, false);
  WriteBuilds(
    profile, cmsSigBToA1Tag, [](const Lab &lab) { return lab; }, true);
  WriteBuilds(
    profile, cmsSigBToA2Tag, [&](const Lab &lab) { return rendering.Saturation(lab); }, false);
  return profile;
}
