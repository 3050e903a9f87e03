// Rows of a soft proof: what an image looks like on another device, where the device does not reach its colours, and
// both at once. All of it comes from one converter of the library.
//
// Errors: throws Failure where the engine fails.
#pragma once

#include "cli/image/remake.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"

#include <cstdint>
#include <memory>
#include <string>

namespace cli {

enum class ProofView
{
  Proof,     ///< in the display's RGB
  Mask,      ///< gray: white where the device does not reach the colour, else black
  SideBySide ///< the image as the display shows it, and the proof
};

struct ProofOptions
{
  ProofView view = ProofView::Proof;
  /// They simulate a device; their warning is laid over the proof.
  ColorSystem::ProofColorSettings settings;
  std::shared_ptr<ColorSystem::ColorProfile> display; ///< of RGB
  bool paper = false;                                 ///< the device's white shows; else it is the display's
};

/// An image of the view: no alpha in a mask, nor in a JPEG; no profile yet.
ImageInfo ProofImageOf(const ImageInfo &image, ProofView view, ImageKind kind);

class ProofRows
{
public:
  /// `result` is what ProofImageOf gave.
  ProofRows(const ImageInfo &image, const std::shared_ptr<ColorSystem::ColorProfile> &profile,
            const ProofOptions &options, const ImageInfo &result);

  /// Whether the engine knows a way from the image through the device to the display.
  bool Works() const;
  void Make(const Band &band, MadeRows &made);

  /// Of the rows so far. Pixels that are wholly transparent are not seen and do not count.
  std::uint64_t Seen() const { return seen_; }
  std::uint64_t OutOfGamut() const { return outOfGamut_; }

private:
  std::vector<std::uint8_t> MaskOf(const Band &band);
  void PutAlpha(const Band &band, MadeRows &made) const;

  const ImageInfo &image_;
  const ImageInfo &result_;
  ProofView view_;
  bool warns_;
  ColorSystem::ProofColorConverter proof_;
  ColorSystem::ColorConverter original_;
  std::uint64_t seen_ = 0;
  std::uint64_t outOfGamut_ = 0;
};

} // namespace cli
