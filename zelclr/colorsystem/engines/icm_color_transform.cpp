#include "zelclr/colorsystem/engines/icm_color_transform.h"

namespace ColorSystem {

// The platform offers no transforms of the system yet: the engines cannot exist, and nothing is made.

std::shared_ptr<ColorTransform> IcmColorTransform::Create(const ColorProfile & /*source*/,
                                                          const ColorProfile & /*destination*/,
                                                          const TransformOptions & /*options*/)
{
  return nullptr;
}

std::shared_ptr<ColorTransform> IcmColorTransform::CreateProof(const ColorProfile & /*source*/,
                                                               const ColorProfile & /*proof*/,
                                                               const ColorProfile * /*display*/,
                                                               const TransformOptions & /*options*/)
{
  return nullptr;
}

bool IcmColorTransform::Convert(const ColorData & /*source*/, ColorData & /*destination*/) const
{
  return false;
}

} // namespace ColorSystem
