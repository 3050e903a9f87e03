#include "zelclr/settings/internal/settings_file.h"

#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"

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

bool SettingsFile::Watch(std::function<void()> onChange)
{
  watch_.emplace([onChange = std::move(onChange)](const std::string &) { onChange(); });
  return watch_->Watch(ZelUtl::FolderOfPath(userPath_));
}

bool SettingsFile::HasUserFile() const
{
  return !userPath_.empty() && ZelUtl::StampOfFile(userPath_).has_value();
}

bool SettingsFile::HasForeignChange() const
{
  std::string untold;
  const auto bytes = HasUserFile() ? ZelUtl::ReadFile(userPath_, ZelUtl::kMostXmlBytes, untold) : std::nullopt;
  return bytes && bytes != known_;
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
  std::string untold;
  const auto bytes = ZelUtl::ReadFile(path, ZelUtl::kMostXmlBytes, untold);
  if (user)
    known_ = bytes;
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
  std::string &reason = failure_;
  reason.clear();
  const bool exists = HasUserFile();
  const auto bytes = exists ? ZelUtl::ReadFile(userPath_, ZelUtl::kMostXmlBytes, reason) : std::nullopt;
  if (userPath_.empty())
    reason = "there is no folder for the user";
  if (!reason.empty())
    return false;
  auto document = bytes ? Parsed(*bytes) : std::nullopt;
  if (bytes && !document && ZelUtl::KeepDamagedBytes(userPath_, *bytes, reason).empty())
    return false;
  const bool begun = !document;
  if (begun)
    document = NewDocument();
  if ((begun && !begin(document->Root())) || !edit(document->Root())) {
    reason = "it would hold a value that has no name in files";
    return false;
  }
  if (!ZelUtl::MakeFolders(ZelUtl::FolderOfPath(userPath_), reason))
    return false;
  std::string written = document->Bytes();
  if (written.empty())
    reason = "there is not enough memory";
  if (written.empty() || !ZelUtl::ReplaceFile(userPath_, written, reason))
    return false;
  if (bytes == known_)
    known_ = std::move(written);
  else
    known_.reset();
  return true;
}

} // namespace ColorSystem::Internal
