// Everything that the library offers.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/clr_colorspec_125x.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/colour/colour_names.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/colour/palette_types.h"
#include "zelclr/convert/formula_rows.h"
#include "zelclr/convert/formulas.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_color_space_device_n.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/formats/colour_list.h"
#include "zelclr/palettes/formats/gpl_palette.h"
#include "zelclr/palettes/formats/palette_reading.h"
#include "zelclr/palettes/spot_color_definition.h"
