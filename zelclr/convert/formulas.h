// Every formula of the library on plain numbers, one header for each family; records and rows of pixels call them.
#pragma once

#include "zelclr/convert/formulas/cmyk.h"
#include "zelclr/convert/formulas/coated_press.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/convert/formulas/gray.h"
#include "zelclr/convert/formulas/hls.h"
#include "zelclr/convert/formulas/hsb.h"
#include "zelclr/convert/formulas/quotient.h"
#include "zelclr/convert/formulas/record_lab.h"
#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/convert/formulas/yiq.h"
