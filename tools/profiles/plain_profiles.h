// The profiles that a few numbers define: RGB and gray working spaces, dot gains, Lab.
//
// Errors: ProfileError.
#pragma once

#include "icc_file.h"

Profile SrgbVersion2();
Profile SrgbVersion4();
Profile AdobeRgbCompatible();

/// The working space whose three channels are X, Y and Z as shares of the D65 white: see the source.
Profile XyzOnD65();

Profile GrayGamma(double gamma, const wchar_t *description);

/// `gain`: the tone value increase at a tone value of 50 %, 0 to below 0.35.
Profile DotGain(double gain, const wchar_t *description);

Profile CieLab();
