// The colour-management engines: each makes the profiles and the transforms of its kind.
//
// Threads: all operations may be called by many threads; taking a transform from the cache does not wait for others.
// Errors: null and false.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/colorsystem/engines/baking_color_transform.h"
#include "zelclr/colorsystem/engines/color_transform_manager.h"
#include "zelclr/platform/thread_lock.h"

#include <optional>
#include <string>
#include <string_view>

namespace ColorSystem {

/// Frozen: settings files hold the names, callers the numbers.
enum class ColorManagementModule : std::uint32_t
{
  Icm = 0,    ///< Windows Image Color Management
  Wcs = 1,    ///< Windows Color System
  Adobe = 2,  ///< a module that other programs install for Image Color Management
  Linear = 3, ///< by formula, without profiles; everywhere
  LCMS = 4    ///< Little CMS 2, where it is installed
};

/// "Icm"; empty for a number beyond 4.
ZELCLR_API std::string_view NameOfColorManagementModule(ColorManagementModule module);
ZELCLR_API std::optional<ColorManagementModule> ColorManagementModuleFromName(std::string_view name);

class ZELCLR_API ColorManagementSystem
{
public:
  virtual ~ColorManagementSystem();
  ColorManagementSystem(const ColorManagementSystem &) = delete;
  ColorManagementSystem &operator=(const ColorManagementSystem &) = delete;

  ColorManagementModule GetModule() const { return module_; }

  /// Makes this engine the one in force; false when it cannot work.
  virtual bool Activate();
  virtual void Deactivate();
  virtual void ClearTransformCache() = 0;
  /// The profiles that CreateProfile takes, as "*.icc;*.icm;*.cc".
  virtual std::wstring GetProfileFilePatterns() const;
  /// The profile of a file; null for an extension that is neither in the patterns nor ".tmp", and for a file that is no
  /// profile of this engine's kind. Upper and lower case are the same.
  virtual std::shared_ptr<ColorProfile> CreateProfile(const std::wstring &path, bool transient) = 0;
  /// From the cache, else made; null when there is no way from one profile to the other in these formats.
  virtual std::shared_ptr<ColorTransform> CreateTransform(const ColorProfile &source, const ColorProfile &destination,
                                                          const TransformOptions &options) = 0;
  /// How `source` looks on `display` when it is printed by `proof`. Without a display: the mask of what `proof` cannot
  /// show, in a Grayscale destination; `options.gamutCheck` must be set then.
  virtual std::shared_ptr<ColorTransform> CreateProofTransform(const ColorProfile &source, const ColorProfile &proof,
                                                               const ColorProfile *display,
                                                               const TransformOptions &options) = 0;

  /// The one engine of a module; null when it cannot exist here.
  static std::shared_ptr<ColorManagementSystem> Get(ColorManagementModule module);
  /// The engine of the application's colour settings, active: defined in settings/application_settings.cpp.
  static std::shared_ptr<ColorManagementSystem> GetCurrent();

protected:
  explicit ColorManagementSystem(ColorManagementModule module) : module_(module) {}

  const ColorManagementModule module_;
  ZelUtl::ThreadLock lock_;
};

/// An engine of a kind of profile and a kind of transform. A transform class offers
///   static std::shared_ptr<ColorTransform> Create(source, destination, options)
///   static std::shared_ptr<ColorTransform> CreateProof(source, proof, display, options)
/// which answer null for what they cannot convert.
template <class Profile, class Transform>
class TColorManagementSystem : public ColorManagementSystem
{
public:
  void ClearTransformCache() override { transforms_.GetCache().Clear(); }
  std::shared_ptr<ColorProfile> CreateProfile(const std::wstring &path, bool transient) override;
  std::shared_ptr<ColorTransform> CreateTransform(const ColorProfile &source, const ColorProfile &destination,
                                                  const TransformOptions &options) override;
  std::shared_ptr<ColorTransform> CreateProofTransform(const ColorProfile &source, const ColorProfile &proof,
                                                       const ColorProfile *display,
                                                       const TransformOptions &options) override;

protected:
  using ColorManagementSystem::ColorManagementSystem;

private:
  /// Formulas are as quick as tables, which are made of them on request only.
  bool PaysToBake(const TransformOptions &options) const
  {
    return module_ != ColorManagementModule::Linear || options.precision == TransformPrecision::Baked;
  }
  template <class Make>
  std::shared_ptr<ColorTransform> FindOrMake(const ColorTransformKey &key, Make make);

  ColorTransformManager<Transform> transforms_;
};

/// Whether a path's extension is in a list of patterns, or is ".tmp".
bool MatchesProfilePatterns(const std::wstring &path, const std::wstring &patterns);

template <class Profile, class Transform>
std::shared_ptr<ColorProfile> TColorManagementSystem<Profile, Transform>::CreateProfile(const std::wstring &path,
                                                                                        bool transient)
{
  if (!MatchesProfilePatterns(path, GetProfileFilePatterns()))
    return nullptr;
  const ZelUtl::WriteLock guard(lock_);
  auto profile = std::make_shared<Profile>(path, transient);
  if (profile->Init())
    return profile;
  profile->SetTransient(false); // the file is none of ours, and stays as it was
  return nullptr;
}

template <class Profile, class Transform>
template <class Make>
std::shared_ptr<ColorTransform> TColorManagementSystem<Profile, Transform>::FindOrMake(const ColorTransformKey &key,
                                                                                       Make make)
{
  auto &cache = transforms_.GetCache();
  if (auto found = cache.Find(key))
    return *std::move(found);
  const ZelUtl::WriteLock guard(lock_);
  if (auto found = cache.Find(key)) // another thread was faster
    return *std::move(found);
  std::shared_ptr<ColorTransform> made = make();
  if (made != nullptr)
    cache.Add(key, made);
  return made;
}

template <class Profile, class Transform>
std::shared_ptr<ColorTransform>
TColorManagementSystem<Profile, Transform>::CreateTransform(const ColorProfile &source, const ColorProfile &destination,
                                                            const TransformOptions &options)
{
  ColorTransformKey key{{source.GetContentNumber(), destination.GetContentNumber(), 0}, false, options};
  if (key.contents[0] == 0 || key.contents[1] == 0)
    return nullptr;
  return FindOrMake(key, [&] {
    auto made = Transform::Create(source, destination, options);
    if (!PaysToBake(options))
      return made;
    return BakingColorTransform::Around(
      std::move(made), options, {source, destination},
      [source, destination](const TransformOptions &other) { return Transform::Create(source, destination, other); });
  });
}

template <class Profile, class Transform>
std::shared_ptr<ColorTransform> TColorManagementSystem<Profile, Transform>::CreateProofTransform(
  const ColorProfile &source, const ColorProfile &proof, const ColorProfile *display, const TransformOptions &options)
{
  const std::uint64_t shown = display == nullptr ? 0 : display->GetContentNumber();
  ColorTransformKey key{{source.GetContentNumber(), proof.GetContentNumber(), shown}, true, options};
  if (key.contents[0] == 0 || key.contents[1] == 0 || (shown == 0 && (display != nullptr || !options.gamutCheck)))
    return nullptr;
  return FindOrMake(key, [&] {
    auto made = Transform::CreateProof(source, proof, display, options);
    if (display == nullptr || !PaysToBake(options))
      return made;
    return BakingColorTransform::Around(std::move(made), options, {source, proof, *display},
                                        [source, proof, shown = *display](const TransformOptions &other) {
                                          return Transform::CreateProof(source, proof, &shown, other);
                                        });
  });
}

} // namespace ColorSystem
