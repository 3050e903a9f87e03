// The search for the module that other programs install, in a registry of the test's own. The answer is one for the
// process, so that each search has a process.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/children.h"
#include "tests/windows/mscms_double.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/settings/color_settings.h"

#include <gmock/gmock.h>

using namespace ColorSystem;
using namespace tests;
using testing::ElementsAre;

namespace {

constexpr const wchar_t *kModules = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ICM\\ICMatchers";

/// What is read of the machine's settings is read below a key of the test's.
class OwnRegistry
{
public:
  OwnRegistry()
  {
    if (::RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &root_, nullptr) !=
          ERROR_SUCCESS ||
        ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, root_) != ERROR_SUCCESS)
      throw std::runtime_error("no registry of its own");
  }
  ~OwnRegistry()
  {
    ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    ::RegCloseKey(root_);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
  }
  OwnRegistry(const OwnRegistry &) = delete;
  OwnRegistry &operator=(const OwnRegistry &) = delete;

  /// The library is one beside the test.
  static void Register(const std::string &name, DWORD type, const std::string &library)
  {
    std::wstring program(32768, L'\0');
    program.resize(::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    const std::wstring path = (std::filesystem::path(program).parent_path() / library).wstring();
    if (::RegSetKeyValueW(HKEY_LOCAL_MACHINE, kModules, ZelUtl::WideFromUtf8(name).c_str(), type, path.c_str(),
                          static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t))) != ERROR_SUCCESS)
      throw std::runtime_error("nothing can be registered");
  }

private:
  const std::wstring path_ = L"Software\\ZelClrTest " + std::to_wstring(::GetCurrentProcessId());
  HKEY root_ = nullptr;
};

bool IsThere()
{
  const bool there = ColorManagementSystem::Get(ColorManagementModule::Adobe) != nullptr;
  return there && ColorSettings::IsColorManagementModuleAvailable(ColorManagementModule::Adobe);
}

/// Bits of a search's answer.
enum : int
{
  kFound = 1,
  kStaysFound = 2, ///< when the module goes
  kUnloaded = 4    ///< it was only looked at
};

/// Words: name, type and library of what is registered; none.
int Search(const Words &words)
{
  const WithMscmsDouble system;
  const OwnRegistry registry;
  if (words.size() == 3)
    OwnRegistry::Register(words[0], static_cast<DWORD>(std::stoi(words[1])), words[2]);
  const bool found = IsThere();
  ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kModules);
  return (found ? kFound : 0) | (IsThere() ? kStaysFound : 0) |
         (::GetModuleHandleW(L"adobe_module.dll") == nullptr ? kUnloaded : 0);
}
const ChildWork kSearch("search", Search);

TEST(AdobeModule, IsFoundByItsValueAndItsFunctionOnceInAProcess)
{
  const std::string text = std::to_string(REG_SZ), bytes = std::to_string(REG_BINARY);
  const std::pair<Words, int> rows[] = {
    {{}, kUnloaded},
    {{"ABCD", text, "adobe_module.dll"}, kUnloaded},
    {{"ADBE", bytes, "adobe_module.dll"}, kUnloaded},
    {{"ADBE", text, "no such module.dll"}, kUnloaded},
    {{"ADBE", text, "no_module.dll"}, kUnloaded}, // a library without the function
    {{"ADBE", text, "adobe_module.dll"}, kFound | kStaysFound | kUnloaded},
  };
  for (const auto &[words, expected] : rows)
    EXPECT_EQ(WaitFor(StartChild("search", words)), expected) << testing::PrintToString(words);
}

class AdobeEngine : public WithMscmsDouble, public OwnRegistry, public ShippedProfiles
{};

TEST_F(AdobeEngine, IsSelectedWhileItsTransformsAreMade)
{
  Register("ADBE", REG_SZ, "adobe_module.dll");
  const auto adobe = ColorManagementSystem::Get(ColorManagementModule::Adobe);
  const auto icm = ColorManagementSystem::Get(ColorManagementModule::Icm);
  ASSERT_NE(adobe, nullptr);
  TransformOptions options, toGray;
  options.destination.model = ColorModel::Cmyk;
  toGray.destination.model = ColorModel::Grayscale;
  system.TakeCalls();
  EXPECT_TRUE(adobe->Activate());
  EXPECT_NE(adobe->CreateTransform(*srgb, *swop, options), nullptr);
  EXPECT_THAT(system.TakeCalls(),
              ElementsAre("SelectCMM ADBE", "OpenColorProfileW sRGB_v4.icc access 1 share 1 creation 3 = 1",
                          "OpenColorProfileW USWebCoatedSWOP.icc access 1 share 1 creation 3 = 2",
                          "CreateMultiProfileTransform profiles 1 2 intents 1 1 flags 10003 module 0 = 3",
                          "CloseColorProfile 2", "CloseColorProfile 1"));
  // Another engine's transform in between selects its own module, and this one's next its own again.
  EXPECT_NE(icm->CreateTransform(*srgb, *swop, options), nullptr);
  EXPECT_EQ(system.TakeCalls().at(2), "SelectCMM Win ");
  EXPECT_NE(adobe->CreateTransform(*srgb, *gray, toGray), nullptr);
  EXPECT_EQ(system.TakeCalls().at(2), "SelectCMM ADBE");
  adobe->Deactivate();
  EXPECT_THAT(system.TakeCalls(), ElementsAre("SelectCMM Win "));
  system.FailCall("SelectCMM", 1);
  EXPECT_FALSE(adobe->Activate());
  adobe->ClearTransformCache();
  icm->ClearTransformCache();
  EXPECT_EQ(system.OpenHandles(), 0);
}

} // namespace
