// The profile of the six-ink press: both directions, all intents, and the gamut.
//
// Errors: ProfileError.
#pragma once

#include "icc_file.h"

Profile Hexachrome();
