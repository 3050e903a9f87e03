// Named sets of settings, those in force, and the file that holds them: what the managers of colour settings and of
// proof settings have in common.
//
// The file: a root; under it an element for the presets of the factory (id "Factory") and one for those of each
// application (id: its name), and one element for the defaults, with an entry for each application's settings in force
// and perhaps one of the factory's.
//
// Threads: all operations may be called by many threads. The file's mutex, then the lock, then those of the settings.
// Errors: false and null, and what SettingsForm::builtIn throws.
#pragma once

#include "zelclr/platform/application.h"
#include "zelclr/platform/thread_lock.h"
#include "zelclr/settings/internal/settings_file.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ColorSystem {

/// What one kind of settings has of its own.
template <class Settings>
struct SettingsForm
{
  using Presets = std::map<std::wstring, std::shared_ptr<Settings>>;

  const char *root;
  const char *presets;
  const char *defaults;
  const char *element;
  const char *mutex;
  std::string (*userPath)();
  std::string (*factoryPath)();
  /// One element under a parent; read is all or nothing to the caller.
  bool (*read)(Settings &settings, const ZelUtl::WXmlNode &parent, std::wstring_view id);
  bool (*write)(const Settings &settings, const ZelUtl::WXmlNode &parent, std::wstring_view id);
  /// What is in force where the file does not say, and where there is no file.
  std::shared_ptr<Settings> (*standard)(const Presets &presets);
  std::shared_ptr<Settings> (*builtIn)();
  /// After a file was read; after other settings have come into force, with the store's lock held; after that because
  /// of another process, without.
  void (*onRead)();
  void (*onApplication)(const Settings &application);
  void (*onForeignApplication)();
};

template <class Settings>
class SettingsStore
{
public:
  using Form = SettingsForm<Settings>;
  using Presets = typename Form::Presets;

  explicit SettingsStore(const Form &form)
    : form_(form),
      file_(form.userPath(), form.factoryPath(), form.root, form.mutex)
  {
    {
      const auto bracket = file_.Lock();
      if (!Read()) // of a damaged file nothing comes into force, and something must be
        PutInForce(*form_.builtIn(), true);
      if (!ZelUtl::IsConfigurationInitialized())
        return;
      if (!file_.HasUserFile())
        file_.Change([](auto) { return true; }, [this](auto root) { return WriteAll(root); });
    }
    file_.Watch([this] { OnFolderChange(); });
  }

  const Settings &Application() const { return application_; }
  bool IsFromDefaults() const
  {
    const ZelUtl::ReadLock guard(lock_);
    return fromDefaults_;
  }
  std::vector<std::shared_ptr<Settings>> Enumerate() const
  {
    std::vector<std::shared_ptr<Settings>> all;
    for (const auto &[name, preset] : CopyOfPresets())
      all.push_back(preset);
    return all;
  }
  std::shared_ptr<Settings> Find(const std::wstring &name) const
  {
    const ZelUtl::ReadLock guard(lock_);
    const auto preset = presets_.find(name);
    return preset == presets_.end() ? nullptr : preset->second;
  }
  bool CanRemove(const std::wstring &name) const
  {
    const auto preset = Find(name);
    return preset != nullptr && !preset->IsFactory();
  }
  /// What is in force where nothing else is said.
  std::shared_ptr<Settings> Standard() const { return form_.standard(CopyOfPresets()); }

  /// False when it could not be written; it is in force all the same.
  bool SetApplication(const Settings &settings)
  {
    Settings copy(settings);
    copy.SetFactory(false);
    const auto bracket = file_.Lock();
    PutInForce(copy, false);
    return Save([&](const ZelUtl::WXmlNode &root) { return WriteDefaults(root); });
  }
  bool Add(const Settings &settings)
  {
    auto copy = std::make_shared<Settings>(settings);
    copy->SetFactory(false);
    const auto bracket = file_.Lock();
    {
      const ZelUtl::WriteLock guard(lock_);
      presets_[copy->GetName()] = copy;
    }
    Save([&](const ZelUtl::WXmlNode &root) { return WritePreset(root, *copy); });
    return true;
  }
  bool Remove(const std::wstring &name)
  {
    const auto bracket = file_.Lock();
    bool removed = false;
    {
      const ZelUtl::WriteLock guard(lock_);
      removed = presets_.erase(name) != 0;
    }
    Save([&](const ZelUtl::WXmlNode &root) {
      ZelUtl::WXmlValueAccessor list(ListOf(root, ZelUtl::GetApplicationName()));
      list.Remove(form_.element, name);
      return true;
    });
    return removed;
  }
  void Reload()
  {
    const auto bracket = file_.Lock();
    Read();
  }

private:
  Presets CopyOfPresets() const
  {
    const ZelUtl::ReadLock guard(lock_);
    return presets_;
  }

  void PutInForce(const Settings &settings, bool fromDefaults)
  {
    const ZelUtl::WriteLock guard(lock_);
    application_ = settings;
    fromDefaults_ = fromDefaults;
    form_.onApplication(application_);
  }

  void OnFolderChange()
  {
    bool changed = false;
    {
      const auto bracket = file_.Lock();
      if (!file_.HasForeignChange())
        return;
      const Settings before(application_);
      Read();
      changed = before != application_;
    }
    if (changed)
      form_.onForeignApplication();
  }

  // --- Reading, with the file locked --------------------------------------------------------------------------------

  /// Whether what is in force was set.
  bool Read()
  {
    const auto [source, root] = file_.Load();
    Presets presets;
    if (root) {
      ReadList(root, L"Factory", true, presets);
      ReadList(root, ZelUtl::GetApplicationName(), false, presets);
    }
    {
      const ZelUtl::WriteLock guard(lock_);
      presets_ = presets;
    }
    if (source == Internal::SettingsFile::Source::Damaged)
      return false;
    if (source == Internal::SettingsFile::Source::None) {
      PutInForce(*form_.builtIn(), true);
    } else {
      ReadDefaults(root, presets);
      form_.onRead();
    }
    return true;
  }

  void ReadList(const ZelUtl::WXmlNode &root, const std::wstring &id, bool factory, Presets &presets) const
  {
    const ZelUtl::WXmlNode list = ZelUtl::WXmlValueAccessor(root).Find(form_.presets, id);
    for (auto element = list.FirstChild(form_.element); element; element = element.Next(form_.element)) {
      auto settings = std::make_shared<Settings>();
      const auto name = element.Attribute("id");
      if (!name || !form_.read(*settings, list, *name))
        continue;
      settings->SetFactory(factory);
      presets[settings->GetName()] = settings;
    }
  }

  void ReadDefaults(const ZelUtl::WXmlNode &root, const Presets &presets)
  {
    const ZelUtl::WXmlNode defaults = ZelUtl::WXmlValueAccessor(root).Find(form_.defaults);
    for (const bool factory : {false, true}) {
      Settings settings;
      if (form_.read(settings, defaults, factory ? L"Factory" : ZelUtl::GetApplicationName())) {
        settings.SetFactory(factory);
        return PutInForce(settings, factory);
      }
    }
    PutInForce(*form_.standard(presets), true);
  }

  // --- Writing, with the file locked --------------------------------------------------------------------------------

  /// A user's file that is not there stays so.
  bool Save(const Internal::SettingsFile::Edit &edit)
  {
    if (!file_.HasUserFile())
      return false;
    const bool foreign = file_.HasForeignChange();
    const bool saved = file_.Change(edit, [this](const ZelUtl::WXmlNode &root) { return WriteAll(root); });
    if (saved && foreign) // what another process wrote is read together with what this one did
      Read();
    return saved;
  }

  ZelUtl::WXmlNode ListOf(const ZelUtl::WXmlNode &root, const std::wstring &id) const
  {
    return ZelUtl::WXmlValueAccessor(root).FindOrCreate(form_.presets, id);
  }
  bool WritePreset(const ZelUtl::WXmlNode &root, const Settings &settings) const
  {
    const std::wstring list = settings.IsFactory() ? L"Factory" : ZelUtl::GetApplicationName();
    return form_.write(settings, ListOf(root, list), settings.GetName());
  }
  bool WriteDefaults(const ZelUtl::WXmlNode &root) const
  {
    const std::wstring id = application_.IsFactory() ? L"Factory" : ZelUtl::GetApplicationName();
    return form_.write(application_, ZelUtl::WXmlValueAccessor(root).FindOrCreate(form_.defaults), id);
  }
  bool WriteAll(const ZelUtl::WXmlNode &root) const
  {
    bool written = true;
    for (const auto &[name, preset] : CopyOfPresets())
      written = WritePreset(root, *preset) && written;
    return WriteDefaults(root) && written;
  }

  const Form form_;
  ZelUtl::ThreadLock lock_;
  Settings application_; // its own lock guards it; it is replaced as a whole under lock_
  bool fromDefaults_ ZELCLR_GUARDED_BY(lock_) = false;
  Presets presets_ ZELCLR_GUARDED_BY(lock_);
  Internal::SettingsFile file_; // last: its watch ends first
};

} // namespace ColorSystem
