// One profile: what is read of its file, its names, its life on disk.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/color_profile.h"

#include <cmath>
#include <sstream>
#include <thread>

using namespace ColorSystem;
using namespace tests;

namespace {

class ColorProfiles : public OwnFolders
{
protected:
  bool Writable(const std::string &name) const
  {
    struct stat status = {};
    EXPECT_EQ(::stat(folder.Path(name).c_str(), &status), 0);
    return (status.st_mode & S_IWUSR) != 0;
  }
  std::shared_ptr<IccColorProfile> At(const std::string &name, bool transient = false) const
  {
    return std::make_shared<IccColorProfile>(folder.Wide(name), transient);
  }
};

void ExpectDefaults(IccColorProfile &profile, const std::string &what)
{
  EXPECT_FALSE(profile.IsValid()) << what;
  EXPECT_EQ(profile.GetColorModel(), ColorModel::Rgb) << what;
  EXPECT_EQ(profile.GetDeviceClass(), DeviceClass::Display) << what;
  EXPECT_EQ(profile.GetDisplayName(), profile.GetName()) << what;
  EXPECT_EQ(profile.GetDeviceManufacturerDescription() + profile.GetDeviceModelDescription(), L"") << what;
  EXPECT_EQ(profile.GetMajorVersionNumber() + profile.GetMinorVersionNumber(), 0u) << what;
  EXPECT_EQ(profile.GetContentNumber(), 0u) << what;
}

TEST_F(ColorProfiles, AnswerWhatTheirHeaderSays)
{
  struct Row
  {
    const char *deviceClass, *space;
    std::uint32_t version;
    bool valid;
    DeviceClass expected;
    unsigned major, minor;
  };
  const Row kRows[] = {
    {"scnr", "RGB ", 0x04300000, true, DeviceClass::Input, 4, 3},
    {"mntr", "RGB ", 0x02100000, true, DeviceClass::Display, 2, 1},
    {"prtr", "CMYK", 0x02FFFFFF, true, DeviceClass::Output, 2, 15},
    {"spac", "Lab ", 0xFF000000, true, DeviceClass::ColorSpace, 255, 0},
    {"link", "RGB ", 0x04300000, false, {}, 0, 0},
    {"abst", "Lab ", 0x04300000, false, {}, 0, 0},
    {"nmcl", "RGB ", 0x04300000, false, {}, 0, 0},
    {"mntr", "XYZ ", 0x04300000, false, {}, 0, 0},
    {"mntr", "YCbr", 0x04300000, false, {}, 0, 0},
    {"mntr", "7CLR", 0x04300000, false, {}, 0, 0},
    {"mntr", "\0\0\0", 0x04300000, false, {}, 0, 0},
  };
  for (const Row &row : kRows) {
    const std::string space(row.space, 4);
    const std::string what = row.deviceClass + space;
    const auto profile = ProfileOf(
      "a.icc",
      IccProfile{row.deviceClass, space, "XYZ ", row.version, {{"dmnd", DescTag("Maker")}, {"dmdd", TextTag("Press")}}}
        .Build());
    if (!row.valid) {
      ExpectDefaults(*profile, what);
      continue;
    }
    EXPECT_TRUE(profile->IsValid()) << what;
    EXPECT_EQ(profile->GetDeviceClass(), row.expected) << what;
    EXPECT_EQ(profile->GetMajorVersionNumber(), row.major) << what;
    EXPECT_EQ(profile->GetMinorVersionNumber(), row.minor) << what;
    EXPECT_EQ(profile->GetDisplayName(), L"a") << "no description";
    EXPECT_EQ(profile->GetDeviceManufacturerDescription(), L"Maker");
    EXPECT_EQ(profile->GetDeviceModelDescription(), L"Press");
    EXPECT_EQ(profile->GetSize(), std::filesystem::file_size(folder.Path("a.icc")));
  }
}

TEST_F(ColorProfiles, Kept_OfDisplaysAreValidForPrinting)
{
  for (const auto &[deviceClass, valid] :
       {std::pair("scnr", false), std::pair("mntr", true), std::pair("prtr", true), std::pair("spac", false)})
    EXPECT_EQ(ProfileOf("a.icc", NamedProfile("A", "RGB ", deviceClass))->IsValidForPrinting(), valid) << deviceClass;
}

TEST_F(ColorProfiles, OfFilesThatAreNoneAnswerTheDefaults)
{
  tests::PipeAndDevice(folder.Path());
  std::filesystem::create_directory(folder.Path("folder.icc"));
  folder.Write("text.icc", TextTag("no profile"));
  for (const char *name : {"missing.icc", "pipe.icc", "folder.icc", "text.icc", "", "a/"}) {
    const auto profile = At(name);
    ExpectDefaults(*profile, name);
    EXPECT_FALSE(profile->SetDisplayName(L"A name")) << name;
    EXPECT_EQ(profile->CreatePsColorSourceArray(RenderingIntent::Perceptual), L"") << name;
    EXPECT_EQ(profile->Open(), nullptr) << name;
  }
}

TEST_F(ColorProfiles, AreRenamedInTheirFile)
{
  IccProfile fourth = MatrixProfile("Old");
  fourth.version = 0x04300000;
  fourth.tags[0].second = MlucTag({{"deDE", u"Alt"}});
  for (const IccProfile &before : {MatrixProfile("Old"), fourth}) {
    const auto profile = ProfileOf("a.icc", before.Build());
    const auto other = At("a.icc");
    ASSERT_TRUE(profile->IsValid() && other->IsValid());
    const std::uint64_t number = profile->GetContentNumber();
    for (const std::wstring name : {L"New", L"Pr\u00FCfdruck \u4E2D \U0001F3A8"}) {
      ASSERT_TRUE(profile->SetDisplayName(name));
      EXPECT_EQ(profile->GetDisplayName(), name);
      EXPECT_EQ(At("a.icc")->GetDisplayName(), name);
    }
    EXPECT_NE(profile->GetContentNumber(), number);
    EXPECT_TRUE(profile->IsValid());
    EXPECT_NE(profile->Open(), nullptr);
    EXPECT_EQ(profile->Open()->ReadTag(ZelUtl::IccSignature("rXYZ"), 100), before.tags[2].second);
    profile->Close();
    EXPECT_NE(other->GetDisplayName(), profile->GetDisplayName()) << "not asked to look again";
    other->UpdateFromDisk();
    EXPECT_EQ(other->GetDisplayName(), profile->GetDisplayName());

    WriteBytes(folder.Path("a.icc"), {1, 2, 3});
    EXPECT_FALSE(profile->SetDisplayName(L"Newer"));
    EXPECT_EQ(ReadBytes(folder.Path("a.icc")), (Bytes{1, 2, 3}));
  }
}

TEST_F(ColorProfiles, FollowTheirFileWhenTheyAreUpdated)
{
  const auto profile = ProfileOf("a.icc", NamedProfile("First"));
  EXPECT_EQ(profile->GetDisplayName(), L"First");
  const std::uint64_t first = profile->GetContentNumber();
  folder.Write("a.icc", NamedProfile("Second", "CMYK", "prtr"));
  EXPECT_EQ(profile->GetDisplayName(), L"First") << "read once";
  EXPECT_EQ(profile->GetContentNumber(), first);
  profile->UpdateFromDisk();
  EXPECT_EQ(profile->GetDisplayName(), L"Second");
  EXPECT_EQ(profile->GetColorModel(), ColorModel::Cmyk);
  const std::uint64_t second = profile->GetContentNumber();
  EXPECT_NE(second, first);
  std::filesystem::remove(folder.Path("a.icc"));
  profile->UpdateFromDisk();
  ExpectDefaults(*profile, "gone");
  folder.Write("a.icc", NamedProfile("Second", "CMYK", "prtr"));
  profile->UpdateFromDisk();
  EXPECT_EQ(profile->GetDisplayName(), L"Second");
  EXPECT_NE(profile->GetContentNumber(), second);
}

TEST_F(ColorProfiles, AreReadAndUpdatedByManyThreads)
{
  const auto profile = ProfileOf("a.icc", NamedProfile("A name"));
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&, number] {
      for (int i = 0; i < 100; ++i) {
        if (number == 0)
          profile->UpdateFromDisk();
        const std::wstring name = profile->GetDisplayName();
        ASSERT_TRUE(name == L"A name" || name == L"a.icc");
        profile->IsValid();
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
}

TEST_F(ColorProfiles, KeepTheirFileReadOnlyWhileTheyAreTransient)
{
  const auto profile = ProfileOf("a.icc", NamedProfile("A name"));
  profile->SetTransient(false);
  EXPECT_TRUE(Writable("a.icc"));
  for (int round = 0; round < 2; ++round) {
    profile->SetTransient(true);
    profile->SetTransient(true);
    EXPECT_FALSE(Writable("a.icc"));
    EXPECT_TRUE(profile->IsTransient());
    profile->SetTransient(false);
    EXPECT_TRUE(Writable("a.icc"));
  }
  At("a.icc", true);
  EXPECT_FALSE(Writable("a.icc")) << "from the constructor, and the file stays so";
  const auto later = At("a.icc", true);
  later->SetTransient(false);
  EXPECT_FALSE(Writable("a.icc")) << "was read-only before";
  At("missing.icc", true)->SetTransient(false);
  EXPECT_TRUE(At("missing.icc", true)->IsTransient());
}

TEST_F(ColorProfiles, AreSharedByTheirHandles)
{
  const auto profile = ProfileOf("a.icc", NamedProfile("A name"));
  const ColorProfile handle(*profile), copy(handle);
  EXPECT_EQ(copy.GetSafePtr(), profile);
  EXPECT_TRUE(copy == handle && handle == *profile);
  EXPECT_TRUE(ColorProfile(folder.Wide("a.icc")) == handle) << "one path";
  ColorProfile other(folder.Wide("b.icc"));
  EXPECT_TRUE(other != handle);
  EXPECT_FALSE(other.IsValid());
  EXPECT_EQ(other.GetName(), L"b.icc");
  other = handle;
  EXPECT_TRUE(other == handle);
  EXPECT_EQ(other.GetDisplayName(), L"A name");
  EXPECT_FALSE(ColorProfile(static_cast<const wchar_t *>(nullptr)).IsValid());
}

// --- PostScript ------------------------------------------------------------------------------------------------------

/// The numbers between the n-th pair of brackets within the outer one.
std::vector<double> NumbersOfArray(const std::wstring &text, int index)
{
  std::size_t start = text.find(L"exch [");
  while (index-- > 0 && start != std::wstring::npos)
    start = text.find(L"exch [", start + 1);
  std::vector<double> numbers;
  if (start == std::wstring::npos)
    return numbers;
  std::wistringstream in(text.substr(start + 6, text.find(L']', start) - start - 6));
  for (double number = 0; in >> number;)
    numbers.push_back(number);
  return numbers;
}

TEST_F(ColorProfiles, AreSaidInPostScript)
{
  const auto plain = ProfileOf("plain.icc", MatrixProfile("A name").Build());
  EXPECT_NE(plain->CreatePsColorSourceArray(RenderingIntent::Perceptual).find(L"/CIEBasedABC"), std::wstring::npos);
  EXPECT_EQ(ProfileOf("empty.icc", NamedProfile("A name"))->CreatePsColorSourceArray({}), L"");

  // The engine refuses a profile of so many tags, and the library's own writer takes its place.
  IccProfile many = MatrixProfile("A name");
  many.tags[5].second = FixedTag("para", {0, 2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045});
  many.tags[5].second[9] = 3; // the kind of sRGB's curve
  many.tags[6].second = CurveTag({0, 0x4000, 0xFFFF});
  for (int i = 0; i < 110; ++i)
    many.tags.emplace_back("t" + std::to_string(100 + i), Bytes());
  const auto profile = ProfileOf("many.icc", many.Build());
  const std::wstring text = profile->CreatePsColorSourceArray(RenderingIntent::Perceptual);
  ASSERT_NE(text.find(L"/CIEBasedABC"), std::wstring::npos);
  EXPECT_NE(text.find(L"2.199219 exp"), std::wstring::npos) << "a gamma of 0x233 / 256";
  EXPECT_NE(text.find(L"0.436066 0.222488 0.013916"), std::wstring::npos) << "the red primary in 16 bits";
  EXPECT_NE(text.find(L"/WhitePoint [0.9642 1 0.8249]"), std::wstring::npos);
  const std::vector<double> red = NumbersOfArray(text, 0), green = NumbersOfArray(text, 1);
  ASSERT_GT(red.size(), 100u);
  for (std::size_t i = 0; i < red.size(); ++i) {
    const double x = static_cast<double>(i) / static_cast<double>(red.size() - 1);
    const double y = x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
    ASSERT_NEAR(red[i], y, 5e-5) << "parameters of 16 bits behind the point, times an exponent of 2.4";
  }
  ASSERT_EQ(green.size(), 3u);
  EXPECT_NEAR(green[1], 0x4000 / 65535.0, 1e-6);
  EXPECT_EQ(std::count(text.begin(), text.end(), L'{'), std::count(text.begin(), text.end(), L'}'));
  EXPECT_EQ(std::count(text.begin(), text.end(), L'['), std::count(text.begin(), text.end(), L']'));

  // A curve that ends too early, of an unknown kind, or of more entries than bytes.
  for (const Bytes &curve : {CurveTag({}), Bytes(many.tags[6].second.begin(), many.tags[6].second.end() - 1),
                             FixedTag("para", {9.0 * 65536}), TagOfType("curv"), TextTag("no curve")})
  {
    many.tags[6].second = curve;
    const auto damaged = ProfileOf("many.icc", many.Build());
    EXPECT_EQ(damaged->CreatePsColorSourceArray({}).empty(), curve != CurveTag({})) << curve.size();
  }
}

} // namespace
