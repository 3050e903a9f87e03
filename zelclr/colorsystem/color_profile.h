// Colour profiles. A ColorProfile is a handle on a profile that it shares with others; the profile manager makes them.
//
// Threads: all operations may be called by many threads. Errors: a profile that is missing or no profile is not valid
// and answers the defaults: model Rgb, device class Display, no texts, version 0.0.
#pragma once

#include "zelclr/colorsystem/color_model.h"
#include "zelclr/platform/export.h"
#include "zelclr/platform/icc_file.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ColorSystem {

/// From the header of the profile. Frozen.
enum class DeviceClass : std::uint32_t
{
  Input = 0,     ///< 'scnr'
  Display = 1,   ///< 'mntr'
  Output = 2,    ///< 'prtr'
  ColorSpace = 3 ///< 'spac'
};

class ZELCLR_API ColorProfile
{
public:
  /// The installed profile of that name (ColorProfileManager::GetColorProfile), else the file at that path, valid or
  /// not.
  explicit ColorProfile(const wchar_t *name);
  explicit ColorProfile(const std::wstring &name);
  /// Shares the profile.
  ColorProfile(const ColorProfile &other);
  virtual ~ColorProfile();

  /// The profile itself, which all handles share.
  virtual std::shared_ptr<ColorProfile> GetSafePtr() const;
  virtual std::wstring GetPath() const;
  /// The file name.
  virtual std::wstring GetName();
  /// For people: the profile's description, else the file name without its extension.
  virtual std::wstring GetDisplayName() const;
  /// Of the file, in bytes; 0 when it is not there.
  virtual std::uint64_t GetSize() const;
  virtual std::wstring GetDeviceManufacturerDescription() const;
  virtual std::wstring GetDeviceModelDescription() const;
  virtual std::uint32_t GetChannelCount() const;
  virtual ColorModel GetColorModel();
  virtual DeviceClass GetDeviceClass();
  virtual std::uint32_t GetMajorVersionNumber() const;
  virtual std::uint32_t GetMinorVersionNumber() const;
  /// The colour space as a PostScript array, `[/CIEBasedABC ...]`; empty when the profile cannot be said so.
  virtual std::wstring CreatePsColorSourceArray(RenderingIntent intent);

  /// One profile, or one path, letter by letter.
  virtual bool operator==(const ColorProfile &other) const;
  virtual bool operator!=(const ColorProfile &other) const;
  /// Shares the other's profile from here on.
  virtual ColorProfile &operator=(const ColorProfile &other);

  virtual bool IsValid() const;
  /// KEPT: true for displays and output devices, where one would expect output devices alone; the print dialogs list
  /// both.
  virtual bool IsValidForPrinting() const;
  /// Whether the file was written for a profile embedded in a document, and goes with it.
  virtual bool IsTransient() const;
  /// Forgets what was read; the next question reads the file again.
  virtual void UpdateFromDisk();

  /// Changes whenever what is known of the file was read anew, and is never the same for two profiles; 0 for a profile
  /// that is not valid. What was computed from a profile is good for as long as this stays.
  virtual std::uint64_t GetContentNumber() const;

protected:
  friend class ColorProfileManager;
  using ProfileHandle = const ZelUtl::IccFile *;

  ColorProfile() = default;

  virtual bool Init();
  virtual ProfileHandle Open();
  virtual void Close();
  virtual bool SetDisplayName(const std::wstring &name);
  virtual void SetTransient(bool transient);

private:
  void StringInit(const std::wstring &name);

  std::shared_ptr<ColorProfile> implementation_; // null in the implementation itself
};

} // namespace ColorSystem
