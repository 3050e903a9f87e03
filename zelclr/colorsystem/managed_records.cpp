// What records leave to the colour-managed converters.
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/platform/application.h"

namespace ColorSystem {

namespace {

bool Managed(CLR_COLORSPEC *destination, unsigned model, const ColorContext &destinationContext,
             const CLR_COLORSPEC *source, const ColorContext &sourceContext)
{
  if (ColorConverter::GetColorConverterFactoryForTests() != nullptr)
    return ColorConverter::Create(sourceContext, nullptr, destinationContext)->Convert(*source, *destination, model, 0);
  return ColorConverter::ConvertOnce(sourceContext, destinationContext, *source, *destination, model);
}

} // namespace

} // namespace ColorSystem

bool WClrConvert::ConvertColorSpec(CLR_COLORSPEC *destination, unsigned model, const CLR_COLORSPEC *source,
                                   ColorSystem::ColorContext &context)
{
  return CopyOrRelabel(destination, model, source) ||
         ColorSystem::Managed(destination, model, context, source, context);
}

bool WClrConvert::ConvertColorSpec(CLR_COLORSPEC *destination, unsigned model,
                                   ColorSystem::ColorContext &destinationContext, const CLR_COLORSPEC *source,
                                   ColorSystem::ColorContext &sourceContext)
{
  return ColorSystem::Managed(destination, model, destinationContext, source, sourceContext);
}

void CLR_COLORSPEC::MakeFromRGB(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue)
{
  MakeRGB(colour, red, green, blue);
  const ColorSystem::ColorContext *const context = ZelUtl::GetActiveColorContext();
  unsigned type = 0;
  double fullScale = 0.0;
  if (context != nullptr &&
      ColorSystem::SimpleColorConverter::ColorModelToColorType(context->GetBlendingColorModel(), type, fullScale))
    ColorSystem::SimpleColorConverter(*context).Convert(colour, colour, type, 0);
}
