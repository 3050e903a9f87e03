// Properties over random values, as far as the tests use RapidCheck, of which there is no package for Windows: the same
// words, small values and edges often, a hundred cases from a fixed seed, and no search for smaller counterexamples.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iostream>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace rc {

inline constexpr int kNominalSize = 100; // of the values in the last of the cases
inline constexpr int kCases = 100;

namespace detail {

/// A case that its own precondition rules out.
struct Discarded
{};

inline std::mt19937_64 &Random()
{
  static std::mt19937_64 random(20240131);
  return random;
}

inline int &Size()
{
  static int size = kNominalSize;
  return size;
}

inline std::uint64_t Below(std::uint64_t end)
{
  return std::uniform_int_distribution<std::uint64_t>(0, end - 1)(Random());
}

[[noreturn]] inline void Fail(const char *file, int line, const std::string &what)
{
  throw std::runtime_error(std::string(file) + ":" + std::to_string(line) + ": " + what);
}

template <class T>
struct Arbitrary
{
  static_assert(std::is_integral_v<T>);
  /// Every second one is as large as the size allows, the others are of any size.
  static T Make()
  {
    if constexpr (std::is_same_v<T, bool>)
      return Below(2) == 1;
    if (Below(2) == 0)
      return static_cast<T>(Random()());
    const auto small = static_cast<std::int64_t>(Below(static_cast<std::uint64_t>(Size()) + 1));
    return static_cast<T>(std::is_signed_v<T> && Below(2) == 0 ? -small : small);
  }
};

template <class T>
std::remove_cvref_t<T> MakeArbitrary()
{
  return Arbitrary<std::remove_cvref_t<T>>::Make();
}

template <class T>
struct Arbitrary<std::vector<T>>
{
  static std::vector<T> Make()
  {
    std::vector<T> values(Below(static_cast<std::uint64_t>(Size()) + 1));
    std::generate(values.begin(), values.end(), MakeArbitrary<T>);
    return values;
  }
};

template <>
struct Arbitrary<std::string>
{
  static std::string Make()
  {
    const auto bytes = MakeArbitrary<std::vector<char>>();
    return {bytes.begin(), bytes.end()};
  }
};

template <class T, std::size_t count>
struct Arbitrary<std::array<T, count>>
{
  static std::array<T, count> Make()
  {
    std::array<T, count> values;
    std::generate(values.begin(), values.end(), MakeArbitrary<T>);
    return values;
  }
};

template <class... T>
struct Arbitrary<std::tuple<T...>>
{
  static std::tuple<T...> Make() { return {MakeArbitrary<T>()...}; }
};

/// Says why a case fails; false then.
template <class Property>
bool Holds(Property property)
{
  for (int i = 0; i < kCases; ++i) {
    Size() = i;
    try {
      property();
    } catch (const Discarded &) {
    } catch (const std::exception &failure) {
      std::cerr << "Falsifiable in case " << i << ": " << failure.what() << '\n';
      return false;
    }
  }
  Size() = kNominalSize;
  return true;
}

template <class... Arguments>
bool HoldsForAny(void (*property)(Arguments...))
{
  return Holds([property] { property(MakeArbitrary<Arguments>()...); });
}

} // namespace detail

template <class T>
class Gen
{
public:
  explicit Gen(std::function<T()> make) : make_(std::move(make)) {}
  T operator*() const { return make_(); }

private:
  std::function<T()> make_;
};

namespace gen {

template <class T>
Gen<T> arbitrary()
{
  return Gen<T>(detail::MakeArbitrary<T>);
}

template <class T>
Gen<T> inRange(T first, T end)
{
  return Gen<T>([first, end] {
    return static_cast<T>(first + static_cast<T>(detail::Below(static_cast<std::uint64_t>(end - first))));
  });
}

template <class Container>
auto elementOf(const Container &container)
{
  using T = std::remove_cvref_t<decltype(*std::begin(container))>;
  return Gen<T>([values = std::vector<T>(std::begin(container), std::end(container))] {
    return values[detail::Below(values.size())];
  });
}

template <class T, class... More>
Gen<T> element(T first, More... more)
{
  return elementOf(std::vector<T>{first, more...});
}

template <class Container, class T>
Gen<Container> container(std::size_t count, Gen<T> each)
{
  return Gen<Container>([count, each] {
    Container values;
    for (std::size_t i = 0; i < count; ++i)
      values.push_back(*each);
    return values;
  });
}

template <class T, class Change>
auto map(Gen<T> from, Change change)
{
  return Gen<std::invoke_result_t<Change, T>>([from, change] { return change(*from); });
}

template <class Make, class... T>
auto apply(Make make, Gen<T>... parts)
{
  return Gen<std::invoke_result_t<Make, T...>>([make, parts...] { return make(*parts...); });
}

/// Ranges have no size here.
template <class T>
Gen<T> resize(int /*size*/, Gen<T> made)
{
  return made;
}

} // namespace gen

template <class Property>
bool check(Property property)
{
  return detail::Holds(property);
}

} // namespace rc

#define RC_ASSERT(...)                                                                                                 \
  do {                                                                                                                 \
    if (!(__VA_ARGS__))                                                                                                \
      ::rc::detail::Fail(__FILE__, __LINE__, #__VA_ARGS__);                                                            \
  } while (false)
#define RC_FAIL(text) ::rc::detail::Fail(__FILE__, __LINE__, text)
#define RC_PRE(...)                                                                                                    \
  do {                                                                                                                 \
    if (!(__VA_ARGS__))                                                                                                \
      throw ::rc::detail::Discarded();                                                                                 \
  } while (false)
