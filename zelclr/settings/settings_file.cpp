#include "zelclr/settings/internal/settings_file.h"

#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"

namespace ColorSystem::Internal {

using ZelUtl::WXmlDoc;

SettingsFile::SettingsFile(std::string userPath, std::string factoryPath, const char *root, const char *mutex)
  : userPath_(std::move(userPath)),
    factoryPath_(std::move(factoryPath)),
    root_(root),
    mutex_(mutex)
{}

SettingsFile::~SettingsFile()
{
  if (watch_)
    watch_->Stop();
}

void SettingsFile::Watch(std::function<void()> onChange)
{
  watch_.emplace([onChange = std::move(onChange)](const std::string &) { onChange(); });
  watch_->Watch(ZelUtl::FolderOfPath(userPath_));
}

bool SettingsFile::HasUserFile() const
{
  return !userPath_.empty() && ZelUtl::StampOfFile(userPath_).has_value();
}

bool SettingsFile::HasForeignChange() const
{
  return HasUserFile() && ZelUtl::StampOfFile(userPath_) != known_;
}

/// Empty when it is not well-formed, or something else.
std::optional<WXmlDoc> SettingsFile::Parsed(const std::string &bytes) const
{
  std::string untold;
  auto document = WXmlDoc::FromBytes(bytes, untold);
  return document && document->Root().Name() == root_ ? document : std::nullopt;
}

std::pair<SettingsFile::Source, ZelUtl::WXmlNode> SettingsFile::Load()
{
  const bool user = HasUserFile();
  const std::string &path = user ? userPath_ : factoryPath_;
  if (path.empty() || !ZelUtl::StampOfFile(path))
    return {Source::None, {}};
  if (user)
    known_ = ZelUtl::StampOfFile(path);
  std::string untold;
  const auto bytes = ZelUtl::ReadFile(path, ZelUtl::kMostXmlBytes, untold);
  const auto document = bytes ? Parsed(*bytes) : std::nullopt;
  if (!document)
    return {Source::Damaged, {}};
  return {user ? Source::User : Source::Factory, document->Root()};
}

WXmlDoc SettingsFile::NewDocument() const
{
  std::string untold;
  const auto bytes = ZelUtl::ReadFile(factoryPath_, ZelUtl::kMostXmlBytes, untold);
  if (const auto factory = bytes ? Parsed(*bytes) : std::nullopt)
    return *factory;
  return *Parsed("<?xml version='1.0'?><" + root_ + "/>");
}

bool SettingsFile::Change(const Edit &edit, const Edit &begin)
{
  std::string untold;
  const auto stamp = ZelUtl::StampOfFile(userPath_);
  const auto bytes = stamp ? ZelUtl::ReadFile(userPath_, ZelUtl::kMostXmlBytes, untold) : std::nullopt;
  if (userPath_.empty() || (stamp && !bytes))
    return false;
  auto document = bytes ? Parsed(*bytes) : std::nullopt;
  if (bytes && !document && ZelUtl::KeepDamagedBytes(userPath_, *bytes, untold).empty())
    return false;
  if (!document) {
    document = NewDocument();
    if (!begin(document->Root()))
      return false;
  }
  if (!edit(document->Root()) || !ZelUtl::MakeFolders(ZelUtl::FolderOfPath(userPath_), untold) ||
      !document->Save(userPath_, untold))
    return false;
  known_ = ZelUtl::StampOfFile(userPath_);
  return true;
}

} // namespace ColorSystem::Internal
