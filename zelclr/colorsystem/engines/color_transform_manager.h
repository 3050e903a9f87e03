// The transforms that an engine has made, kept for the next one who asks.
//
// Threads: all operations may be called by many threads. Errors: none.
#pragma once

#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/colorsystem/engines/usage_counted_item_cache.h"
#include "zelclr/platform/application.h"

#include <array>
#include <cstdint>
#include <memory>

namespace ColorSystem {

/// Everything that a transform depends on.
struct ColorTransformKey
{
  /// ColorProfile::GetContentNumber of source and destination, or of source, proof and display; 0 where there is none.
  /// A profile that is read anew has another number, so that what was made from its old bytes is not found again.
  std::array<std::uint64_t, 3> contents{};
  bool proof = false;
  TransformOptions options;

  friend bool operator==(const ColorTransformKey &, const ColorTransformKey &) = default;
};

struct ColorTransformKeyHash
{
  std::size_t operator()(const ColorTransformKey &key) const
  {
    std::uint64_t hash = 14695981039346656037ull;
    const auto mix = [&hash](std::uint64_t part) { hash = (hash ^ part) * 0x9E3779B97F4A7C15ull, hash ^= hash >> 29; };
    const auto mixFormat = [&mix](const PixelFormat &format) {
      mix((static_cast<std::uint64_t>(format.model) << 32) | (static_cast<std::uint64_t>(format.type) << 2) |
          (format.reversed ? 2u : 0u) | (format.alpha ? 1u : 0u));
    };
    for (const std::uint64_t content : key.contents)
      mix(content);
    mixFormat(key.options.source);
    mixFormat(key.options.destination);
    mix((static_cast<std::uint64_t>(key.options.intent) << 32) |
        (static_cast<std::uint64_t>(key.options.displayIntent) << 3) | (key.options.blackPointCompensation ? 4u : 0u) |
        (key.options.gamutCheck ? 2u : 0u) | (key.proof ? 1u : 0u));
    mix((static_cast<std::uint64_t>(key.options.gridPoints) << 8) | static_cast<std::uint64_t>(key.options.precision));
    return static_cast<std::size_t>(hash);
  }
};

/// Empties itself when the last document closes.
template <class Transform>
class ColorTransformManager
{
public:
  using Cache = UsageCountedItemCache<ColorTransformKey, std::shared_ptr<ColorTransform>, 100, ColorTransformKeyHash>;

  ColorTransformManager() { ZelUtl::RegisterToCloseDocument(Listener()); }
  ~ColorTransformManager() { ZelUtl::UnregisterToCloseDocument(Listener()); }
  ColorTransformManager(const ColorTransformManager &) = delete;
  ColorTransformManager &operator=(const ColorTransformManager &) = delete;

  Cache &GetCache() { return cache_; }

  void OnCloseDocument()
  {
    if (ZelUtl::GetOpenDocumentCount() == 1)
      cache_.Clear();
  }

private:
  ZelUtl::Delegate Listener() { return ZelUtl::Delegate::To<&ColorTransformManager::OnCloseDocument>(*this); }

  Cache cache_;
};

} // namespace ColorSystem
