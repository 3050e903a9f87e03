// The installed profiles: which are found where and under which name, what is added, what is watched.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/engines/color_management_system.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

using namespace ColorSystem;
using namespace tests;

namespace {

constexpr const char *kUser = "user/color/profiles/";
constexpr const char *kLibrary = "data/color/profiles/";
constexpr const char *kAdobe = "programs/Adobe/Color/Profiles/";

std::wstring NameOf(const std::shared_ptr<ColorProfile> &profile)
{
  return profile == nullptr ? L"(none)" : profile->GetDisplayName();
}

/// Counts what it hears.
struct Ear
{
  Ear() { ColorProfileManager::GetInstance().RegisterToColorProfilesChange(ZelUtl::Delegate::To<&Ear::Hear>(*this)); }
  ~Ear()
  {
    ColorProfileManager::GetInstance().UnRegisterToColorProfilesChange(ZelUtl::Delegate::To<&Ear::Hear>(*this));
  }
  void Hear() { ++heard; }
  std::atomic<int> heard{0};
};

bool SoonTrue(const std::function<bool()> &condition)
{
  for (int i = 0; i < 400 && !condition(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return condition();
}

class ProfileManager : public OwnFolders
{
protected:
  std::wstring Found(const std::wstring &name) const { return NameOf(Manager().GetColorProfile(name.c_str())); }
  void Install(const std::string &path, const std::string &description) const
  {
    folder.Write(path, NamedProfile(description));
  }
  /// The display names of all RGB profiles.
  std::vector<std::wstring> Collection() const
  {
    std::vector<std::wstring> names;
    for (const auto &profile : Manager().GetColorProfiles(false, ColorModel::Rgb))
      names.push_back(profile->GetDisplayName());
    return names;
  }
};

TEST_F(ProfileManager, TakesTheFirstOfOneNameInTheOrderOfTheFolders)
{
  const std::string places[] = {
    std::string(kUser),           std::string(kLibrary),      std::string(kAdobe) + "Recommended/deep/",
    std::string(kAdobe) + "a/b/", "system1/1/2/3/4/5/6/7/8/", "system2/"};
  for (const std::string &place : places)
    Install(place + "same.icc", place);
  Install(std::string(kUser) + "sub/hidden.icc", "Too deep");
  Install(std::string(kLibrary) + "sub/hidden.icc", "Too deep");
  Install("system1/1/2/3/4/5/6/7/8/9/hidden.icc", "Too deep");
  folder.Write("system1/broken.icc", TextTag("no profile"));
  Install("system2/broken.icc", "Behind a broken one");
  tests::LinkFolder(folder.Path("system2"), folder.Path("system2/loop"));
  for (const std::string &place : places) {
    EXPECT_TRUE(Manager().Reload());
    const std::wstring expected = ZelUtl::WideFromUtf8(place);
    EXPECT_EQ(Found(L"same.icc"), expected);
    EXPECT_EQ(Collection(), (std::vector<std::wstring>{L"Behind a broken one", expected}));
    std::filesystem::remove(folder.Path(place + "same.icc"));
  }
}

TEST_F(ProfileManager, FindsByFileNameBeforeDisplayNameAndExactlyBeforeRoughly)
{
  Install("system1/a.icc", "b.icc");
  Install("system1/B.icc", "d.icc");
  Install("system1/D.ICC", "Name");
  Install("system1/e.icc", "name");
  Install(std::string(kLibrary) + "b.icc", "Library's");
  Install(std::string(kUser) + "B.ICC", "\xC3\x84hnlich");
  Install("elsewhere/p.icc", "By its path");
  folder.Write("elsewhere/broken.icc", {});
  const bool exact = tests::NamesAreBytes(); // else the user's file has all of these names
  const std::pair<std::wstring, const wchar_t *> kRows[] = {
    {L"b.icc", exact ? L"Library's" : L"\u00C4hnlich"},
    {L"B.icc", exact ? L"d.icc" : L"\u00C4hnlich"},
    {L"B.ICC", L"\u00C4hnlich"},
    {L"A.ICC", L"b.icc"},
    {L"d.icc", L"Name"},
    {L"Name", L"Name"},
    {L"name", L"name"},
    {L"NAME", L"Name"},
    {L"\u00E4HNLICH", L"\u00C4hnlich"},
    {folder.Wide("elsewhere/p.icc"), L"By its path"},
    {folder.Wide("elsewhere/broken.icc"), L"(none)"},
    {folder.Wide("elsewhere"), L"(none)"},
    {L"p.icc", L"(none)"},
    {L"", L"(none)"},
  };
  for (const bool afresh : {false, true}) { // whatever was asked for before
    for (const auto &[name, expected] : kRows) {
      if (afresh)
        ColorProfileManager::Shutdown();
      EXPECT_EQ(Found(name), expected) << ZelUtl::Utf8FromWide(name) << (afresh ? ", first" : "");
      EXPECT_EQ(Manager().GetColorProfile(name.c_str()), Manager().GetColorProfile(name.c_str()));
    }
  }
  EXPECT_EQ(Manager().GetColorProfile(nullptr), nullptr);
}

TEST_F(ProfileManager, KnowsTheRgbProfilesOfTheLibraryAndTheSystem)
{
  constexpr const wchar_t *kSystemFile = L"sRGB Color Space Profile.icm";
  const std::string own = std::string(kLibrary) + "sRGB_IEC61966-2-1_no_black_scaling.icc";
  Install(own, "Own");
  EXPECT_EQ(ColorProfileManager::GetRgbProfileName(), L"sRGB_IEC61966-2-1_no_black_scaling.icc");
  EXPECT_EQ(ColorProfileManager::GetRgbProfile(), folder.Wide(own));
  EXPECT_EQ(ColorProfileManager::GetRgbSystemProfile() + ColorProfileManager::GetRgbSystemProfileName(), L"");
  EXPECT_EQ(Found(L"sRGB-Placeholder!"), L"Own");
  EXPECT_EQ(Found(L"sRGB-System-Placeholder!"), L"Own") << "in place of the system's";

  ColorProfileManager::Shutdown();
  Install("system2/sRGB Color Space Profile.icm", "The system's");
  EXPECT_EQ(ColorProfileManager::GetRgbProfileName(), kSystemFile);
  EXPECT_EQ(ColorProfileManager::GetRgbSystemProfileName(), kSystemFile);
  EXPECT_EQ(ColorProfileManager::GetRgbProfile(), folder.Wide("system2/sRGB Color Space Profile.icm"));
  EXPECT_EQ(ColorProfileManager::GetRgbSystemProfile(), ColorProfileManager::GetRgbProfile());
  EXPECT_EQ(Found(L"sRGB-Placeholder!"), L"The system's");
  EXPECT_EQ(Found(L"sRGB-System-Placeholder!"), L"The system's");

  ColorProfileManager::Shutdown();
  ZelUtl::SetFolders({});
  EXPECT_EQ(ColorProfileManager::GetRgbProfile(), L"") << "no folder, no path";
}

TEST_F(ProfileManager, KeepsItsFolders)
{
  EXPECT_EQ(ColorProfileManager::GetZelanColorDir(), folder.Wide("data/color/profiles"));
  EXPECT_EQ(ColorProfileManager::GetZelanUserColorDirPtr(), folder.Wide("user/color/profiles"));
  EXPECT_EQ(ColorProfileManager::GetAdobeColorDir(), folder.Wide("programs/Adobe/Color/Profiles"));
  EXPECT_EQ(ColorProfileManager::GetAdobeRecommendedColorDir(),
            folder.Wide("programs/Adobe/Color/Profiles/Recommended"));
  EXPECT_EQ(ColorProfileManager::GetSystemColorDirsPtr()->at(1), folder.Wide("system2"));
  Install("other/own.icc", "Own");
  EXPECT_EQ(Found(L"own.icc"), L"(none)");
  ColorProfileManager::SetZelanColorDir(folder.Wide("other"));
  EXPECT_EQ(Found(L"own.icc"), L"Own");
  ZelUtl::SetFolders({});
  EXPECT_EQ(ColorProfileManager::GetZelanColorDir(), folder.Wide("other")) << "until it is shut down";
  ColorProfileManager::Shutdown();
  EXPECT_EQ(ColorProfileManager::GetZelanColorDirPtr(), nullptr);
  EXPECT_EQ(ColorProfileManager::GetZelanUserColorDirPtr(), nullptr);
  EXPECT_EQ(ColorProfileManager::GetAdobeColorDirPtr(), nullptr);
  EXPECT_EQ(ColorProfileManager::GetAdobeRecommendedColorDirPtr(), nullptr);
  EXPECT_EQ(ColorProfileManager::GetSystemColorDirsPtr(), nullptr);
  EXPECT_FALSE(Manager().Reload());
}

TEST_F(ProfileManager, ListsByModelClassAndDevice)
{
  const auto write = [&](const char *name, const char *deviceClass, const char *space, const char *maker) {
    const Bytes description = DescTag(name);
    folder.Write(std::string("system1/") + name + ".icc",
                 IccProfile{deviceClass, space, "XYZ ", 0, {{"desc", description}, {"dmnd", TextTag(maker)}}}.Build());
  };
  write("Zebra", "mntr", "RGB ", "Maker One");
  write("Ant", "scnr", "RGB ", "Maker Two");
  write("Press", "prtr", "CMYK", "MAKER TWO");
  write("Alien", "prtr", "XYZ ", "Nobody");
  const auto names = [](const ColorProfileManager::Profiles &profiles) {
    std::wstring all;
    for (const auto &profile : profiles)
      all += profile->GetDisplayName() + L" ";
    return all;
  };
  EXPECT_EQ(names(Manager().GetColorProfiles(false, ColorModel::Rgb)), L"Ant Zebra ");
  EXPECT_EQ(names(Manager().GetColorProfiles(true, ColorModel::Cmyk)), L"Press ");
  EXPECT_EQ(names(Manager().GetColorProfiles(true, ColorModel::Lab)), L"");
  const auto all = Manager().GetColorProfiles();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(names(all[1]), L"Press ");
  EXPECT_EQ(names(Manager().GetDisplayColorProfiles().at(0)), L"Zebra ");
  EXPECT_EQ(names(Manager().GetDeviceColorProfiles(DeviceClass::Output, nullptr)), L"Press ");
  EXPECT_EQ(names(Manager().GetDeviceColorProfiles(DeviceClass::Output, L"maker two")), L"Press ");
  EXPECT_EQ(names(Manager().GetDeviceColorProfiles(DeviceClass::Output, L"maker one")), L"");
  for (const char *name : {"b.cc", "A.ICM", "c.cdmp", "d.tmp", "e.txt", "icc"})
    folder.Write(std::string("many/") + name, {});
  std::vector<std::wstring> expected = {L"A.ICM", L"b.cc"};
  if (ColorManagementSystem::Get(ColorManagementModule::Wcs) != nullptr)
    expected.push_back(L"c.cdmp"); // device models
  EXPECT_EQ(Manager().EnumerateProfilesOnDisk(folder.Wide("many")), expected);
  EXPECT_TRUE(Manager().EnumerateProfilesOnDisk(folder.Wide("nowhere")).empty());
}

TEST_F(ProfileManager, AddsProfilesWhereTheyAreOrUnderTheirDisplayName)
{
  const Ear ear;
  Install("docs/one.icm", "One");
  Install("docs/TWO.ICC", "Two");
  Install("docs/three.cc", "Three/../of: them");
  Install("docs/three again.cc", "Three/../of: them");
  Install("docs/four", "Four");
  Install("docs/model.cdmp", "A model");
  folder.Write("docs/other.cc", MatrixProfile("Four").Build());
  folder.Write("docs/text.xml", TextTag("no profile"));
  folder.Write("docs/text.cc", TextTag("no profile"));
  const std::string user = folder.Path(kUser);
  const std::pair<const char *, std::string> kRows[] = {
    {"one.icm", folder.Path("docs/one.icm")},
    {"TWO.ICC", folder.Path("docs/TWO.ICC")},
    {"three.cc", user + "Three..of them.icc"},
    {"three again.cc", user + "Three..of them.icc"}, // the same bytes
    {"four", user + "Four.icc"},
    {"model.cdmp", user + "A model.icc"},
    {"other.cc", user + "Four 2.icc"}, // other bytes under one name
    {"other.cc", user + "Four 2.icc"},
    {"text.xml", ""},
    {"text.cc", ""},
    {"missing.icc", ""},
    {"missing", ""},
  };
  int told = 0;
  for (const auto &[name, path] : kRows) {
    const auto profile = Manager().AddColorProfile(folder.Wide(std::string("docs/") + name));
    ASSERT_EQ(profile != nullptr, !path.empty()) << name;
    if (profile == nullptr)
      continue;
    EXPECT_EQ(profile->GetPath(), ZelUtl::WideFromUtf8(path)) << name;
    EXPECT_EQ(ReadBytes(path), ReadBytes(folder.Path(std::string("docs/") + name))) << name;
    EXPECT_EQ(Manager().GetColorProfile(profile->GetName().c_str()), profile) << name;
    EXPECT_GE(ear.heard, ++told) << name;
  }
  EXPECT_TRUE(Manager().Reload());
  EXPECT_EQ(Collection(),
            (std::vector<std::wstring>{L"A model", L"Four", L"Four", L"One", L"Three/../of: them", L"Two"}));
}

TEST_F(ProfileManager, AddsProfilesOfLongNamesInAnyScript)
{
  std::string name;
  for (int i = 0; i < 120; ++i)
    name += "\xE4\xB8\xAD";
  Install("docs/long.cc", name);
  const auto profile = Manager().AddColorProfile(folder.Wide("docs/long.cc"));
  ASSERT_NE(profile, nullptr);
  EXPECT_EQ(profile->GetDisplayName(), ZelUtl::WideFromUtf8(name));
}

TEST_F(ProfileManager, ForgetsTransientProfilesThatNobodyHolds)
{
  Install("doc/embedded.tmp", "Embedded");
  Install("doc/held.icc", "Held");
  auto embedded = Manager().CreateColorProfile(folder.Wide("doc/embedded.tmp"), true);
  const auto held = Manager().CreateColorProfile(folder.Wide("doc/held.icc"), true);
  ASSERT_TRUE(embedded != nullptr && held != nullptr);
  EXPECT_TRUE(embedded->IsTransient());
  EXPECT_EQ(Manager().GetColorProfile(L"embedded.tmp"), embedded);
  EXPECT_EQ(Manager().GetColorProfile(embedded->GetPath().c_str()), embedded);
  EXPECT_EQ(Manager().GetColorProfiles(true, ColorModel::Rgb).size(), 2u);
  EXPECT_EQ(Manager().GetColorProfiles(false, ColorModel::Rgb).size(), 0u);
  Manager().DeleteUnusedTransientProfiles();
  EXPECT_EQ(Found(L"embedded.tmp"), L"Embedded");
  ColorProfile handle(*embedded);
  embedded.reset();
  Manager().DeleteUnusedTransientProfiles();
  EXPECT_TRUE(std::filesystem::exists(folder.Path("doc/embedded.tmp"))) << "a handle holds it, too";
  handle = *held;
  Manager().DeleteUnusedTransientProfiles();
  EXPECT_FALSE(std::filesystem::exists(folder.Path("doc/embedded.tmp")));
  EXPECT_EQ(Found(L"embedded.tmp"), L"(none)");
  EXPECT_EQ(Found(L"held.icc"), L"Held");
  EXPECT_EQ(Manager().CreateColorProfile(folder.Wide("doc/missing.icc"), true), nullptr);
  folder.Write("doc/foreign.xyz", NamedProfile("Foreign"));
  EXPECT_EQ(Manager().CreateColorProfile(folder.Wide("doc/foreign.xyz"), true), nullptr);
}

TEST_F(ProfileManager, GivesLegacyProfilesNewNames)
{
  const std::string legacy = "COPYRIGHT (c) Zelan";
  folder.Write("system1/Old_press_1.icc", NamedProfile(legacy, "CMYK", "prtr"));
  folder.Write("system1/zelan copyright.icc", MatrixProfile(legacy).Build());
  Install("system1/Known.icc", "Known as it is");
  Install("doc/Known as_it_is.icc", legacy);
  Install("system1/half.icc", "Copyright nobody");
  const auto fixed = [&](const std::wstring &name) {
    auto profile = Manager().GetColorProfile(name.c_str());
    EXPECT_TRUE(Manager().FixLegacyProfileDisplayName(profile));
    return profile;
  };
  const auto press = fixed(L"Old_press_1.icc");
  EXPECT_EQ(press->GetDisplayName(), L"Old press 1");
  EXPECT_EQ(press->GetPath(), folder.Wide(std::string(kUser) + "Old press 1.icc"));
  EXPECT_EQ(press->GetColorModel(), ColorModel::Cmyk);
  EXPECT_EQ(fixed(L"Old_press_1.icc"), press) << "and not another copy";
  EXPECT_EQ(Found(L"Old_press_1.icc"), ZelUtl::WideFromUtf8(legacy)) << "the old one stays";
  const auto size = std::filesystem::file_size(folder.Path("system1/zelan copyright.icc"));
  EXPECT_EQ(NameOf(fixed(L"zelan copyright.icc")), L"Legacy Rgb " + std::to_wstring(size));
  EXPECT_EQ(fixed(folder.Wide("doc/Known as_it_is.icc")), Manager().GetColorProfile(L"Known.icc"));
  EXPECT_EQ(fixed(L"half.icc"), Manager().GetColorProfile(L"half.icc"));
  std::shared_ptr<ColorProfile> none;
  EXPECT_TRUE(Manager().FixLegacyProfileDisplayName(none));

  ColorProfileManager::Shutdown();
  folder.Write("blocked", {});
  ZelUtl::Folders folders;
  folders.user = folder.Path("blocked");
  ZelUtl::SetFolders(folders);
  auto profile = Manager().GetColorProfile(folder.Wide("system1/Old_press_1.icc").c_str());
  const auto before = profile;
  EXPECT_FALSE(Manager().FixLegacyProfileDisplayName(profile));
  EXPECT_EQ(profile, before);
}

TEST_F(ProfileManager, FollowsTheFilesWhenItReloads)
{
  const Ear ear;
  EXPECT_FALSE(Manager().Reload());
  std::filesystem::create_directories(folder.Path("system1"));
  EXPECT_TRUE(Manager().Reload()) << "a folder that can be read, if empty";
  Install("system1/a.icc", "First");
  EXPECT_EQ(Found(L"a.icc"), L"(none)") << "not asked to look again";
  Manager().UpdateProfilesCollection(folder.Wide("system1"));
  const auto profile = Manager().GetColorProfile(L"a.icc");
  ASSERT_NE(profile, nullptr);
  Install("system1/a.icc", "The second one");
  Install("system1/b.icc", "Other");
  EXPECT_TRUE(Manager().Reload());
  EXPECT_EQ(Manager().GetColorProfile(L"The second one"), profile) << "one object for one path";
  EXPECT_EQ(Manager().GetColorProfile(L"First"), nullptr);
  std::filesystem::remove(folder.Path("system1/a.icc"));
  EXPECT_TRUE(Manager().Reload());
  EXPECT_EQ(Collection(), (std::vector<std::wstring>{L"Other"}));
  Install("system1/a.icc", "Back");
  EXPECT_TRUE(Manager().Reload());
  EXPECT_EQ(Manager().GetColorProfile(L"Back"), profile);
  EXPECT_EQ(ear.heard, 5);
}

TEST_F(ProfileManager, SeesNewProfilesWhileItWatches)
{
  for (const char *path : {kUser, kLibrary, "system1/"})
    std::filesystem::create_directories(folder.Path(path));
  EXPECT_TRUE(Collection().empty());
  Ear ear;
  Manager().StartTrackingProfileNameChanges();
  std::vector<std::wstring> expected;
  for (const char *path : {kLibrary, "system1/", kUser}) {
    const int before = ear.heard;
    const std::string name = std::to_string(expected.size());
    Install(path + name + ".icc", name);
    expected.push_back(ZelUtl::WideFromUtf8(name));
    EXPECT_TRUE(SoonTrue([&] { return ear.heard > before && Collection() == expected; })) << path;
  }
  std::filesystem::rename(folder.Path(std::string(kUser) + "2.icc"), folder.Path("gone.icc"));
  expected.pop_back();
  EXPECT_TRUE(SoonTrue([&] { return Collection() == expected; }));
  Manager().StopTrackingProfileNameChanges();
  const int before = ear.heard;
  Install("system1/late.icc", "Late");
  std::this_thread::sleep_for(std::chrono::milliseconds(300)); // three times what the watch waits for more changes
  EXPECT_EQ(ear.heard, before);
  EXPECT_EQ(Collection(), expected);
  Manager().StartTrackingProfileNameChanges(); // again, and shut down with the watch running
}

TEST_F(ProfileManager, SeesNewProfilesInSubfoldersAndInFoldersOfTheirOwnWhileItWatches)
{
  std::filesystem::create_directories(folder.Path("system1"));
  EXPECT_TRUE(Collection().empty());
  Manager().StartTrackingProfileNameChanges();
  std::filesystem::create_directories(folder.Path("system1/sub"));
  Install("system1/sub/a.icc", "In a subfolder");
  EXPECT_TRUE(SoonTrue([&] { return Collection().size() == 1; })) << "which the search looks into";
  Install(std::string(kUser) + "b.icc", "The user's first");
  EXPECT_TRUE(SoonTrue([&] { return Collection().size() == 2; })) << "in a folder that was not there";
}

TEST_F(ProfileManager, ListenersMayStopTheWatch)
{
  struct Stopper
  {
    void Stop()
    {
      ColorProfileManager::GetInstance().StopTrackingProfileNameChanges();
      stopped = true;
    }
    std::atomic<bool> stopped{false};
  } stopper;
  const auto delegate = ZelUtl::Delegate::To<&Stopper::Stop>(stopper);
  std::filesystem::create_directories(folder.Path("system1"));
  Manager().RegisterToColorProfilesChange(delegate);
  Manager().StartTrackingProfileNameChanges();
  Install("system1/a.icc", "A");
  EXPECT_TRUE(SoonTrue([&] { return stopper.stopped.load(); }));
  Manager().UnRegisterToColorProfilesChange(delegate);
  std::this_thread::sleep_for(std::chrono::milliseconds(50)); // the watch's thread ends by itself
}

TEST_F(ProfileManager, ReadsAThousandProfilesAtOnceAndOnlyOnce)
{
  for (int i = 0; i < 1000; ++i)
    Install("system1/" + std::to_string(i) + ".icc", "Profile " + std::to_string(i));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Collection().size(), 1000u);
  EXPECT_EQ(Found(L"profile 999"), L"Profile 999");
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  EXPECT_LT(seconds.count(), 10.0) << "some 20 ms by itself; the rest is for slow and busy machines";
  const auto profile = Manager().GetColorProfile(L"500.icc");
  const std::uint64_t number = profile->GetContentNumber();
  EXPECT_TRUE(Manager().Reload());
  EXPECT_EQ(profile->GetContentNumber(), number) << "files that did not change are not read again";
}

TEST_F(ProfileManager, ServesManyThreads)
{
  for (int i = 0; i < 20; ++i)
    Install("system1/" + std::to_string(i) + ".icc", "Profile " + std::to_string(i));
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&, number] {
      for (int i = 0; i < 50; ++i) {
        const std::wstring digits = std::to_wstring((i + number) % 20);
        ASSERT_EQ(Found(L"Profile " + digits), L"Profile " + digits);
        ASSERT_EQ(Found(digits + L".icc"), L"Profile " + digits);
        if (i % 10 == number)
          Manager().Reload();
        Manager().DeleteUnusedTransientProfiles();
        ASSERT_EQ(Collection().size(), 20u);
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
}

} // namespace
