// What the colours of a document mean, for those who must ask again at every use: the host changes it at any time.
//
// Threads: the main thread. Errors: none.
#pragma once

#include "zelclr/colorsystem/color_context.h"

namespace ZelClr {

class IColorContextProvider
{
public:
  virtual ~IColorContextProvider() = default;
  virtual ColorSystem::ColorContext GetColorContext() const = 0;
};

} // namespace ZelClr
