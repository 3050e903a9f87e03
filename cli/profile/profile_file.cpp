#include "cli/profile/profile_file.h"

#include "cli/failure.h"
#include "cli/output.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/icc_color_profile.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

namespace cli {

ProfileFile OpenProfile(const std::string &nameOrPath)
{
  if (nameOrPath.empty())
    throw Failure(ExitCode::Usage, "the name of the profile is empty");
  // The library's names are wide text, which cannot hold any other bytes.
  if (ZelUtl::Utf8FromWide(ZelUtl::WideFromUtf8(nameOrPath)) != nameOrPath)
    throw Failure(ExitCode::Unreadable, Harmless(nameOrPath) + ": the name is not UTF-8");
  // What has a folder in front and is there is that file, whatever is installed.
  const bool bare = ZelUtl::FileNameOfPath(nameOrPath) == nameOrPath;
  const auto installed =
    bare || !ZelUtl::StampOfFile(nameOrPath)
      ? ColorSystem::ColorProfileManager::GetInstance().GetColorProfile(ZelUtl::WideFromUtf8(nameOrPath).c_str())
      : nullptr;
  const std::string path = installed == nullptr ? nameOrPath : ZelUtl::Utf8FromWide(installed->GetPath());

  std::string reason;
  auto icc = ZelUtl::IccFile::Open(path, reason);
  if (!icc) {
    throw Failure(ExitCode::Unreadable, Harmless(nameOrPath) + (bare ? ": not installed; as a file: " : ": ") + reason);
  }
  auto profile = std::make_shared<ColorSystem::IccColorProfile>(ZelUtl::WideFromUtf8(path), false);
  const std::wstring described =
    profile->IsValid()
      ? profile->GetDisplayName()
      : ZelUtl::DescriptionFromIccTag(icc->ReadTag(ZelUtl::IccSignature("desc"), ZelUtl::kMostIccTextBytes));
  std::string name = OneLine(described);
  if (name.empty())
    name = Harmless(ZelUtl::FileNameOfPath(path));
  return {path, std::move(*icc), std::move(name), profile->IsValid() ? profile : nullptr};
}

std::string OneLine(std::wstring_view text)
{
  std::string line;
  for (const char c : ZelUtl::Utf8FromWide(text)) {
    const bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
    if (!blank)
      line += c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  return Harmless(ZelUtl::Trimmed(line));
}

} // namespace cli
