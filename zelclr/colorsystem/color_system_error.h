// The exception of the colour-management layer. Only constructors throw it; its text names the class and the failure.
#pragma once

#include "zelclr/platform/export.h"

#include <stdexcept>

namespace ColorSystem {

class ZELCLR_API ColorSystemError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

} // namespace ColorSystem
