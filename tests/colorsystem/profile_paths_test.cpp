// Profiles are opened wherever they lie: engines are handed paths that are long or in any script.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/temporary_folder.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/platform/files.h"

#include <gtest/gtest.h>

using namespace ColorSystem;

namespace {

using ProfilePaths = tests::OwnFolders;

TEST_F(ProfilePaths, AreOpenedByEveryEngine)
{
  std::string longName = folder.Path();
  for (int i = 0; i < 8; ++i)
    longName += "/" + std::string(60, static_cast<char>('a' + i));
  const tests::Bytes content = tests::MatrixProfile("A").Build();
  for (const std::string &where : {folder.Path("plain"),
                                   folder.Path("Gr\xC3\xB6\xC3\x9F"
                                               "e"),
                                   folder.Path("\xE6\x97\xA5\xE6\x9C\xAC"), longName})
  {
    SCOPED_TRACE(where);
    const std::string path = where + "/\xE6\x97\xA5\xE6\x9C\xAC.icc";
    std::string reason;
    ASSERT_TRUE(ZelUtl::MakeFolders(where, reason)) << reason;
    ASSERT_TRUE(ZelUtl::ReplaceFile(path, {reinterpret_cast<const char *>(content.data()), content.size()}, reason));
    {
      const auto profile = Manager().CreateColorProfile(ZelUtl::WideFromUtf8(path), false);
      ASSERT_NE(profile, nullptr);
      EXPECT_EQ(profile->GetDisplayName(), L"A");
      for (const auto module : {ColorManagementModule::Icm, ColorManagementModule::LCMS}) {
        const auto engine = ColorManagementSystem::Get(module);
        if (engine == nullptr)
          continue; // another system's
        EXPECT_NE(engine->CreateTransform(*profile, *profile, TransformOptions()), nullptr) << static_cast<int>(module);
        engine->ClearTransformCache();
      }
    }
    EXPECT_TRUE(ZelUtl::DeleteFileAt(path)) << "nobody holds it open";
  }
  EXPECT_TRUE(ZelUtl::FilesOfFolder(folder.Path()).empty());
  std::vector<std::string> left;
  ZelUtl::FilesOfFolder(folder.Path(), &left);
  EXPECT_EQ(left.size(), 4u) << "no copy is left";
}

} // namespace
