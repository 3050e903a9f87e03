// What panels bind to: objects with a caption that tell which of their properties changed.
//
// Threads: one at a time. Errors: none.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace ZelUtl {

/// The suite's root of objects that are handed about without their class being known.
class IZelanGeneric
{
public:
  virtual ~IZelanGeneric() = default;
};

/// Hears the names of the properties that changed, separated by commas: "Locked,CanDeleteColor,CanEditColor".
class IPropertyListener
{
public:
  virtual ~IPropertyListener() = default;
  virtual void OnPropertiesChanged(std::wstring_view names) = 0;
  /// The broadcaster is going: it must not be asked anything any more, and is unregistered from.
  virtual void OnBroadcasterGone() noexcept {}
};

/// Tells its listeners, in the order of their registration. They are not owned and must unregister before they go; they
/// may do so while they are told. Whoever is still registered when the broadcaster goes hears of that.
class PropertyBroadcaster
{
public:
  void RegisterListener(IPropertyListener &listener)
  {
    if (std::find(listeners_.begin(), listeners_.end(), &listener) == listeners_.end())
      listeners_.push_back(&listener);
  }
  void UnregisterListener(IPropertyListener &listener) { std::erase(listeners_, &listener); }

protected:
  PropertyBroadcaster() = default;
  PropertyBroadcaster(const PropertyBroadcaster &) = delete;
  PropertyBroadcaster &operator=(const PropertyBroadcaster &) = delete;
  ~PropertyBroadcaster()
  {
    while (!listeners_.empty()) {
      IPropertyListener *const listener = listeners_.back();
      listeners_.pop_back();
      listener->OnBroadcasterGone();
    }
  }

  void Broadcast(std::wstring_view names) const
  {
    const auto told = listeners_;
    for (IPropertyListener *listener : told) {
      if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end())
        listener->OnPropertiesChanged(names);
    }
  }

private:
  std::vector<IPropertyListener *> listeners_;
};

/// What every source of data has.
class PartialDataSource
{
public:
  virtual ~PartialDataSource() = default;
  virtual std::wstring GetCaption_Property() const = 0;
  virtual std::wstring GetCueText_Property() const = 0;
};

/// The base of a class that panels know by `Source::GetRegisteredDataSourceName()`.
template <class Source>
class DataSource : public PartialDataSource
{};

} // namespace ZelUtl
