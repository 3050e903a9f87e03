// Reading the settings' file, and the getters of the settings in force beside a bare lock. Folders of its own.

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/folders.h"
#include "zelclr/settings/color_settings_manager.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <shared_mutex>

namespace {

using namespace ColorSystem;

/// A user of the benchmark's own, who goes at the end.
struct User
{
  User()
  {
    ZelUtl::Folders folders = ZelUtl::GetFolders();
    folders.user = path;
    folders.systemProfiles.clear();
    ZelUtl::SetFolders(folders);
    ColorSettingsManager::GetInstance();
  }
  ~User()
  {
    ColorSettingsManager::Shutdown();
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  User(const User &) = delete;
  User &operator=(const User &) = delete;

  const std::string path =
    (std::filesystem::temp_directory_path() / ("zelclr_benchmark_" + std::to_string(::getpid()))).string();
};

ColorSettingsManager &Manager()
{
  static const User user;
  return ColorSettingsManager::GetInstance();
}

/// The factory's twelve presets, and as many of the user's as the argument says. The profiles are known.
void ReadFile(benchmark::State &state)
{
  auto &manager = Manager();
  for (std::int64_t i = 0; i < state.range(0); ++i)
    manager.AddColorSettings(ColorSettings(L"Preset " + std::to_wstring(i)));
  for (auto _ : state)
    ColorSettingsManager::ReLoad();
  for (std::int64_t i = 0; i < state.range(0); ++i)
    manager.RemoveColorSetting(L"Preset " + std::to_wstring(i));
}

void AddPreset(benchmark::State &state)
{
  auto &manager = Manager();
  const ColorSettings settings(L"Added");
  for (auto _ : state)
    manager.AddColorSettings(settings);
  manager.RemoveColorSetting(L"Added");
}

/// Read the ratio of these two.
void GetModule_Ours(benchmark::State &state)
{
  Manager();
  const ColorSettings &settings = ColorSettings::GetApplicationColorSettings();
  for (auto _ : state)
    benchmark::DoNotOptimize(settings.GetColorManagementModule());
}

void GetModule_BareLock(benchmark::State &state)
{
  static std::shared_mutex mutex;
  static auto module = ColorManagementModule::Icm;
  for (auto _ : state) {
    const std::shared_lock guard(mutex);
    benchmark::DoNotOptimize(module);
  }
}

BENCHMARK(ReadFile)->Arg(0)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(AddPreset)->Unit(benchmark::kMillisecond);
BENCHMARK(GetModule_Ours)->Threads(1)->Threads(4)->UseRealTime();
BENCHMARK(GetModule_BareLock)->Threads(1)->Threads(4)->UseRealTime();

} // namespace
