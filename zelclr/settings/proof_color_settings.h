// How a document would look on another device: one named set-up of a soft proof, and what a view of a document carries.
//
// Threads: ProofColorSettings has its own lock, which every accessor takes. ViewProofSettings belongs to its view.
// Errors: as the contexts and colours that they hold.
#pragma once

#include "zelclr/colorsystem/color.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/thread_lock.h"

#include <memory>
#include <string>

namespace ColorSystem {

class ZELCLR_API ProofColorSettings
{
public:
  ProofColorSettings();
  explicit ProofColorSettings(const std::wstring &name);
  ProofColorSettings(const ProofColorSettings &other);
  virtual ~ProofColorSettings();
  /// A source without a colour for the warning gives the target the standard one as its own.
  ProofColorSettings &operator=(const ProofColorSettings &other);
  std::shared_ptr<ProofColorSettings> GetCopy() const;

  /// What is simulated, and whether numbers are preserved; neither the name nor how warnings are drawn.
  bool operator==(const ProofColorSettings &other) const;
  bool operator!=(const ProofColorSettings &other) const { return !(*this == other); }

  std::wstring GetName() const;
  void SetName(const std::wstring &name);
  /// KEPT: always empty, where one would expect a text as ColorSettings has it; callers show the name then.
  std::wstring GetLocalizedName() const;

  /// It holds the simulated profile, and the intent by which colours go there.
  ColorContext GetColorContext() const;
  void SetColorContext(const ColorContext &context);
  RenderingIntent GetRenderingIntent() const;
  void SetRenderingIntent(RenderingIntent intent);
  /// Null when nothing is simulated.
  std::shared_ptr<ColorProfile> GetEnvironmentToSimulate() const;
  /// Takes every profile out of the context and puts this one in, when it is valid; its model becomes the context's
  /// blending model.
  void SetEnvironmentToSimulate(const std::shared_ptr<ColorProfile> &profile);

  /// Whether numbers of the simulated model go to the device as they are. The three say for which model that holds.
  bool GetPreserveNumbers() const;
  void SetPreserveNumbers(bool preserve);
  bool GetPreserveCmykNumbers() const { return PreservesNumbersOf(ColorModel::Cmyk); }
  bool GetPreserveRgbNumbers() const { return PreservesNumbersOf(ColorModel::Rgb); }
  bool GetPreserveGrayscaleNumbers() const { return PreservesNumbersOf(ColorModel::Grayscale); }

  /// How colours that the device does not reach are marked.
  bool GetDisplayGamutWarning() const;
  void SetDisplayGamutWarning(bool display);
  /// Never null: pure green of sRGB where none was set.
  std::shared_ptr<const Color> GetGamutWarningLabelColor() const;
  /// Keeps a copy.
  void SetGamutWarningLabelColor(const Color &color);
  /// 0 (opaque) to 1.
  double GetGamutWarningLabelTransparency() const;
  void SetGamutWarningLabelTransparency(double transparency);

  /// Whether it came with the library. Copies keep it; no file stores it.
  bool IsFactory() const;
  void SetFactory(bool factory);

private:
  bool PreservesNumbersOf(ColorModel model) const;

  ZelUtl::ThreadLock lock_;
  std::wstring name_ ZELCLR_GUARDED_BY(lock_);
  std::wstring localizedName_ ZELCLR_GUARDED_BY(lock_);
  ColorContext context_ ZELCLR_GUARDED_BY(lock_);
  std::shared_ptr<const Color> warningColor_ ZELCLR_GUARDED_BY(lock_);
  double warningTransparency_ ZELCLR_GUARDED_BY(lock_) = 0.0;
  bool displayGamutWarning_ ZELCLR_GUARDED_BY(lock_) = false;
  bool preserveNumbers_ ZELCLR_GUARDED_BY(lock_) = false;
  bool factory_ ZELCLR_GUARDED_BY(lock_) = false;
};

/// Whether new views show proofs: the preference "ColorProofing" of "Options - Display"; off by default.
ZELCLR_API bool GetDisplayProofPref();
/// False when it could not be written; it holds in this process all the same.
ZELCLR_API bool SetDisplayProofPref(bool display);

class ZELCLR_API ViewProofSettings
{
public:
  /// The preference, and default settings.
  ViewProofSettings();
  ViewProofSettings(const ViewProofSettings &other) = default;
  ViewProofSettings &operator=(const ViewProofSettings &other);
  virtual ~ViewProofSettings();

  /// Whether it is switched on, and there are profiles to proof with: never while the application converts by formula.
  bool GetDisplayProof() const;
  void SetDisplayProof(bool display) { displayProof_ = display; }
  ProofColorSettings &GetProofSettings() { return settings_; }
  const ProofColorSettings &GetProofSettings() const { return settings_; }

  /// Null for a null view; the second also while the view shows no proof.
  static ProofColorSettings *GetSafeProofSettings(ViewProofSettings *view);
  static ProofColorSettings *GetSafeActiveProofSettings(ViewProofSettings *view);
  /// Those of the document's active view, else of the active document's, from the host; null when there is none.
  static ViewProofSettings *GetActiveViewSettings(ZelUtl::Document *document = nullptr);
  /// For what is shown without a document, built by the first call: default settings that simulate the application's
  /// blending profile.
  static ViewProofSettings &GetDefaultViewSettings();

private:
  ProofColorSettings *GetActiveProofSettings();

  bool displayProof_;
  ProofColorSettings settings_;
};

} // namespace ColorSystem
