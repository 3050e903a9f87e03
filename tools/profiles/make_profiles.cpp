// Makes the profiles of data/color/profiles/ that are calculated, and dates those that are built from measurements.
// build.sh calls it:
//
//   make_profiles FOLDER         makes every profile of the table below in FOLDER
//   make_profiles stamp FILE...  gives version 2 profiles of another program the fixed date
#include "plain_profiles.h"
#include "six_ink_profile.h"

#include <array>
#include <cstdio>
#include <span>
#include <string_view>

namespace {

struct Recipe
{
  const char *file;
  Profile (*make)();
};

constexpr auto kRecipes = std::to_array<Recipe>({
  {"sRGB_IEC61966-2-1_no_black_scaling.icc", SrgbVersion2},
  {"sRGB_v4.icc", SrgbVersion4},
  {"CompatibleWithAdobeRGB1998.icc", AdobeRgbCompatible},
  {"D65_XYZ.icc", XyzOnD65},
  {"Gray Gamma 18.icc", [] { return GrayGamma(1.8, L"Gray Gamma 1.8"); }},
  {"Gray Gamma 22.icc", [] { return GrayGamma(2.2, L"Gray Gamma 2.2"); }},
  {"Dot Gain 10%.icc", [] { return DotGain(0.10, L"Dot Gain 10%"); }},
  {"Dot Gain 15%.icc", [] { return DotGain(0.15, L"Dot Gain 15%"); }},
  {"Dot Gain 20%.icc", [] { return DotGain(0.20, L"Dot Gain 20%"); }},
  {"Dot Gain 25%.icc", [] { return DotGain(0.25, L"Dot Gain 25%"); }},
  {"Dot Gain 30%.icc", [] { return DotGain(0.30, L"Dot Gain 30%"); }},
  {"CIE Lab.icc", CieLab},
  {"Hexachrome.icc", Hexachrome},
});

void SayWhy(cmsContext, cmsUInt32Number, const char *text)
{
  std::fprintf(stderr, "Little CMS: %s\n", text);
}

} // namespace

int main(int count, char **values)
{
  const std::span<char *> arguments(values + 1, static_cast<std::size_t>(count - 1));
  const bool stamp = !arguments.empty() && std::string_view(arguments[0]) == "stamp";
  if (!stamp && arguments.size() != 1) {
    std::fputs("make_profiles FOLDER, or make_profiles stamp FILE...\n", stderr);
    return 2;
  }
  cmsSetLogErrorHandler(SayWhy);
  try {
    if (stamp) {
      for (const char *file : arguments.subspan(1))
        StampFile(file);
    } else {
      for (const Recipe &recipe : kRecipes)
        Save(recipe.make(), std::filesystem::path(arguments[0]) / recipe.file);
    }
  } catch (const std::exception &error) {
    std::fprintf(stderr, "make_profiles: %s\n", error.what());
    return 1;
  }
  return 0;
}
