// An ICC profile in the making: Little CMS writes the tags, and the file comes out the same, byte for byte, whenever it
// is made.
//
// Errors: ProfileError, with the reason. Nothing is left behind under the file's name then.
#pragma once

#include <lcms2.h>

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>

struct ProfileError : std::runtime_error
{
  using std::runtime_error::runtime_error;
};

struct CloseProfile
{
  void operator()(void *profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

struct FreeCurve
{
  void operator()(cmsToneCurve *curve) const { cmsFreeToneCurve(curve); }
};
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

struct FreePipeline
{
  void operator()(cmsPipeline *pipeline) const { cmsPipelineFree(pipeline); }
};
using Pipeline = std::unique_ptr<cmsPipeline, FreePipeline>;

/// A text in one language: ISO 639 and ISO 3166 codes, and Unicode.
struct Translation
{
  const char *language;
  const char *country;
  const wchar_t *text;
};

struct Header
{
  double version; // 2.4 or 4.3
  cmsProfileClassSignature deviceClass;
  cmsColorSpaceSignature space;
  cmsColorSpaceSignature connection; // XYZ or Lab
};

inline constexpr const wchar_t *kPublicDomain = L"Public domain (CC0 1.0)";

/// The header, the description, the copyright, and D50 as the white of the medium, which every profile must have.
Profile NewProfile(const Header &header, std::initializer_list<Translation> description, const wchar_t *copyright);

/// `function`, from 0 to 1 to 0 to 1, at so many even points.
Curve SampledCurve(std::size_t points, const std::function<double(double)> &function);

void WriteTag(const Profile &profile, cmsTagSignature tag, const void *value);

/// A second tag that shares the bytes of the first.
void ShareTag(const Profile &profile, cmsTagSignature tag, cmsTagSignature with);

void Save(const Profile &profile, const std::filesystem::path &file);

/// Gives a profile that another program wrote our date. Version 2 only: it has no profile ID to keep true.
void StampFile(const std::filesystem::path &file);
