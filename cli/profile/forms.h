// What `profile` says, as text for people and as JSON for programs.
//
// Threads and errors: plain functions. Whatever comes from a profile is harmless on a terminal.
#pragma once

#include "cli/output.h"
#include "cli/profile/comparison.h"
#include "cli/profile/profile_facts.h"

#include <string>

namespace cli {

std::string TextOf(const ProfileFacts &facts, const Output &output);
Json JsonOf(const ProfileFacts &facts);

std::string TextOf(const Comparison &comparison, const Output &output);
Json JsonOf(const Comparison &comparison);

/// "2.6 kB"
std::string SizeInWords(std::uint64_t bytes);
/// "833,000": to the nearest thousand, below a hundred thousand to the nearest hundred.
std::string VolumeInWords(double volume);
/// "46.3 %" of 0.463
std::string ShareInWords(double share);
/// Two decimals, never "-0.00".
std::string TwoDecimals(double number);
/// "C 72  M 65  Y 66  K 90"
std::string BuildInWords(const ModelWords &model, const Channels &build);

} // namespace cli
