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

#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/thread_lock.h"
#include "zelclr/settings/internal/settings_file.h"

#include <algorithm>
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
  /// Of an element, false for an empty one; what a failed reading leaves in the settings does not matter.
  bool (*read)(Settings &settings, const ZelUtl::WXmlNode &element);
  /// As an element of that id under a parent.
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
    const auto bracket = file_.Lock();
    const bool configured = ZelUtl::IsConfigurationInitialized();
    if (configured) // before the first look: no change can slip by between
      watched_ = file_.Watch([this] { OnFolderChange(); });
    if (!Read()) // of a damaged file nothing comes into force, and something must be
      PutInForce(*form_.builtIn(), true);
    if (configured && !file_.HasUserFile())
      file_.Change([](auto) { return true; }, [this](auto root) { return WriteAll(root); });
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
  /// All of them in one change of the file, or none: false where it cannot be written, and where a preset of such a
  /// name is there that is not to be replaced, which `taken` names then.
  bool AddAll(const std::vector<std::shared_ptr<Settings>> &all, bool replace, std::wstring &taken)
  {
    const auto bracket = file_.Lock();
    if (file_.HasForeignChange())
      Read();
    const Presets before = CopyOfPresets();
    Presets added;
    for (const auto &settings : all) {
      taken = settings->GetName();
      if (!replace && before.contains(taken))
        return false;
      added[taken] = std::make_shared<Settings>(*settings);
      added[taken]->SetFactory(false);
    }
    taken.clear();
    Presets after = added;
    after.insert(before.begin(), before.end());
    SetPresets(after);
    const bool saved = Save([&](const ZelUtl::WXmlNode &root) {
      return std::all_of(added.begin(), added.end(), [&](const auto &row) { return WritePreset(root, *row.second); });
    });
    if (!saved)
      SetPresets(before);
    return saved;
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
      while (list.Remove(form_.element, name)) {
      }
      return true;
    });
    return removed;
  }
  std::string WriteFailure()
  {
    const auto bracket = file_.Lock();
    return file_.Failure();
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

  void SetPresets(const Presets &presets)
  {
    const ZelUtl::WriteLock guard(lock_);
    presets_ = presets;
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
    try {
      const auto bracket = file_.Lock();
      if (!file_.HasForeignChange())
        return;
      const Settings before(application_);
      Read();
      changed = before != application_;
    } catch (const ColorSystemError &) { // nobody to tell on this thread; what is in force stays
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

  /// Without the profiles that fill gaps, what has gaps is not read completely.
  bool IsRead(Settings &settings, const ZelUtl::WXmlNode &element) const
  {
    try {
      return form_.read(settings, element);
    } catch (const ColorSystemError &) {
      return false;
    }
  }

  void ReadList(const ZelUtl::WXmlNode &root, const std::wstring &id, bool factory, Presets &presets) const
  {
    const ZelUtl::WXmlNode list = ZelUtl::WXmlValueAccessor(root).Find(form_.presets, id);
    for (auto element = list.FirstChild(form_.element); element; element = element.Next(form_.element)) {
      auto settings = std::make_shared<Settings>();
      if (!element.Attribute("id") || !IsRead(*settings, element))
        continue;
      settings->SetFactory(factory);
      presets[settings->GetName()] = settings;
    }
  }

  void ReadDefaults(const ZelUtl::WXmlNode &root, const Presets &presets)
  {
    const ZelUtl::WXmlValueAccessor defaults(ZelUtl::WXmlValueAccessor(root).Find(form_.defaults));
    for (const bool factory : {false, true}) {
      Settings settings;
      if (IsRead(settings, defaults.Find(form_.element, factory ? L"Factory" : ZelUtl::GetApplicationName()))) {
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
    bool begun = false;
    const bool saved = file_.Change(edit, [&](const ZelUtl::WXmlNode &root) {
      begun = true; // with the factory's presets
      return WritePresets(root) && (IsFromDefaults() || WriteDefaults(root));
    });
    if (saved && (begun || (!watched_ && file_.HasForeignChange()))) // the watch reads what others wrote
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
  bool WritePresets(const ZelUtl::WXmlNode &root) const
  {
    bool written = true;
    for (const auto &[name, preset] : CopyOfPresets())
      written = WritePreset(root, *preset) && written;
    return written;
  }
  bool WriteAll(const ZelUtl::WXmlNode &root) const { return WritePresets(root) && WriteDefaults(root); }

  const Form form_;
  ZelUtl::ThreadLock lock_;
  Settings application_; // its own lock guards it; it is replaced as a whole under lock_
  bool watched_ = false; // since construction
  bool fromDefaults_ ZELCLR_GUARDED_BY(lock_) = false;
  Presets presets_ ZELCLR_GUARDED_BY(lock_);
  Internal::SettingsFile file_; // last: its watch ends first
};

} // namespace ColorSystem
