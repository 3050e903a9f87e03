#include "zelclr/colorsystem/internal/profile_files.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

namespace ColorSystem::Internal {

using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;

std::wstring Joined(const std::wstring &folder, const std::wstring &name)
{
  return WideFromUtf8(ZelUtl::JoinPath(Utf8FromWide(folder), Utf8FromWide(name)));
}

std::wstring ExtensionOf(const std::wstring &path)
{
  return WideFromUtf8(ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(Utf8FromWide(path))));
}

std::shared_ptr<ColorManagementSystem> EngineFor(const std::wstring &path)
{
  return ColorManagementSystem::Get(ExtensionOf(path) == L".cdmp" ? ColorManagementModule::Wcs
                                                                  : ColorManagementModule::Linear);
}

bool IsProfileFileName(const std::string &name)
{
  const std::wstring wide = WideFromUtf8(name);
  const auto engine = EngineFor(wide);
  return engine != nullptr && ExtensionOf(wide) != L".tmp" &&
         MatchesProfilePatterns(wide, engine->GetProfileFilePatterns());
}

} // namespace ColorSystem::Internal
