// Colours for tests: how they print, what they hold, and a pool of the nastiest ones.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/palette_types.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/palettes/spot_color_definition.h"

#include <cstdio>
#include <ostream>
#include <vector>

namespace tests {

using Bytes = std::vector<std::uint8_t>;

inline Bytes BytesOf(const CLR_COLORSPEC &colour, std::size_t count = 16)
{
  return Bytes(colour.GetRAWColor(), colour.GetRAWColor() + count);
}

/// A colour of any model number; the pattern fills those bytes that the model does not read as a pointer.
inline CLR_COLORSPEC ColourOfModel(unsigned model, const Bytes &pattern)
{
  CLR_COLORSPEC colour;
  for (std::size_t i = 0; i < 16; ++i)
    colour.SetComponent(i, pattern[i % pattern.size()]);
  colour.SetType(static_cast<std::uint16_t>(model));
  return colour;
}

/// A chain of so many references that ends at the colour. Built from the end on, so that no step walks the chain.
inline CLR_COLORSPEC Chain(const CLR_COLORSPEC &end, int links)
{
  CLR_COLORSPEC first = CLR_COLORSPEC::MakeReference(end);
  CLR_COLORSPEC last(first);
  for (int i = 1; i < links; ++i) {
    const CLR_COLORSPEC next = CLR_COLORSPEC::MakeReference(end);
    last.SetReferenceColorValue(next);
    last = next;
  }
  return first;
}

inline CLR_COLORSPEC DeviceNColour(DeviceN_Process_Type process, std::uint32_t spotValue)
{
  auto space = std::make_shared<WClrColorSpaceDeviceN>(1, process);
  space->AddColorPlate(DeviceN_Plate_Process);
  space->AddSpotColorPlate(CLR_COLORSPEC::MakeUserInks(1, 2, 3, 100));
  auto *value = new WClrColorDeviceN(space, 7);
  value->SetColorComponent(space->GetColorPlateIndex(DeviceN_Plate_Spot), spotValue, 100, false);
  return CLR_COLORSPEC::MakeDEVICEN(value);
}

/// Every model number of interest with several fillings and palettes, and every kind of owning colour.
inline std::vector<CLR_COLORSPEC> NastyColours()
{
  static const SpotColorDefinition kDefinitions[] = {{L"one", L"ink", CLR_COLORSPEC::MakeRGB(1, 2, 3)},
                                                     {L"two", L"ink", CLR_COLORSPEC::MakeCMYK(100, 0, 50, 0)}};
  const Bytes patterns[] = {{0}, {255}, {100}, {0x80, 0x7F}, {0x7F, 0x80, 1}, {0, 0, 254, 255}, {1, 0, 0, 0xC0, 0x7F}};
  std::vector<CLR_COLORSPEC> pool;
  for (unsigned model = 0; model <= 35; ++model) {
    for (const Bytes &pattern : patterns) {
      pool.push_back(ColourOfModel(model, pattern));
      pool.push_back(pool.back());
      pool.back().SetPaletteType(3);
    }
  }
  for (const unsigned model : {1013u, 1014u, 65535u}) {
    for (const Bytes &pattern : patterns)
      pool.push_back(ColourOfModel(model, pattern));
  }
  for (const int byte : {0, 1, 50, 51, 100, 101, 127, 128, 254}) {
    const auto b = static_cast<std::uint8_t>(byte);
    for (const unsigned model : {2u, 3u, 17u, 6u, 7u})
      pool.push_back(ColourOfModel(model, {b, 0, b, 128}));
  }
  for (const SpotColorDefinition &definition : kDefinitions)
    pool.push_back(CLR_COLORSPEC::MakeSPOT(3, 17, 100, &definition));
  for (const auto process : {DeviceN_Process_None, DeviceN_Process_RGB, DeviceN_Process_CMYK}) {
    pool.push_back(DeviceNColour(process, 0));
    pool.push_back(DeviceNColour(process, 40));
  }
  pool.push_back(CLR_COLORSPEC::MakeDEVICEN(new WClrColorDeviceN(nullptr, 3)));
  CLR_COLORSPEC registration = CLR_COLORSPEC::MakeREGCOLOR();
  registration.SetBlack(80);
  registration.SetDensity(40);
  pool.push_back(registration);
  const std::size_t plain = pool.size();
  for (std::size_t i = 0; i < plain; i += 40) {
    pool.push_back(Chain(pool[i], 1));
    pool.push_back(pool.back());
    pool.push_back(Chain(pool[i], 3));
  }
  pool.push_back(Chain(registration, 1));
  pool.push_back(Chain(registration, 2));
  pool.push_back(Chain(DeviceNColour(DeviceN_Process_CMYK, 10), 2));
  return pool;
}

} // namespace tests

/// For gtest: the model number, the component bytes and the palette type.
inline void PrintTo(const CLR_COLORSPEC &colour, std::ostream *out)
{
  *out << (colour.IsReference() ? "reference to model " : "model ") << colour.GetType() << " [";
  for (const std::uint8_t byte : tests::BytesOf(colour)) {
    char hex[4];
    std::snprintf(hex, sizeof hex, "%02X ", byte);
    *out << hex;
  }
  *out << "] palette " << colour.GetPaletteGuid().ToText();
}
