// The owner of all palettes of the process: finds their files, loads each once, knows them by identifier, and keeps the
// default palettes and those of open documents. A palette is named by the pointer to its WClrPalette, its palette ID,
// which is good until the palette is deleted, its document closes or the manager is shut down.
//
// A palette is in the list once: a file that is loaded already, or whose identifier a palette of the list has, answers
// the palette that is there. The identifiers of fixed palettes (fixed_palettes.h) belong to the files of the table: a
// copy of one, wherever it is found, answers the palette of the table when that is installed. What the user changes in
// a palette of the installation is saved under the same name below GetPalettesDir, and found there from then on
// (palette_folders.h); nothing but the ".xml" of a ".cpl" that was put there is ever written into the installation.
// Palettes of other programs are read, locked, into palettes of our own.
//
// Threads: creation is safe from any thread; all else is for the main thread. Errors: null, false and -1, as said; null
// and strangers are taken for palettes everywhere (palette_operations.h). Nothing throws.
#pragma once

#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/palette_operations.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/singleton.h"

#include <map>
#include <optional>
#include <set>

namespace ZelClr {
struct FixedPalette;
}

class ZELCLR_API WClrPaletteMgr : public ZelClr::PaletteOperations
{
public:
  using Document = ZelUtl::Document;
  using PaletteResult = ZelClr::PaletteResult;
  using Palettes = std::vector<WClrPalette *>;

  /// The one manager, created by the first call.
  static WClrPaletteMgr &GetInstance();
  static bool HasInstance();
  /// Destroys the manager and its palettes; those that changed are saved. The next GetInstance starts anew.
  static void Shutdown();
  ~WClrPaletteMgr();

  // --- Finding files ------------------------------------------------------------------------------------------------

  /// One step of the discovery of palettes, so that the application stays responsive; true, or false when all were
  /// done. With `reset` no step: the next call begins anew. Palettes that are in the list stay.
  bool DiscoverPalettes(bool reset);
  /// All steps that are left.
  void DiscoverAllPalettes();
  /// Every palette of a folder; a ".cpl" beside its ".xml" and a ".zip" beside what it holds are passed over. Files
  /// that are no palettes, and folders that are not there, contribute nothing. Folders within are entered to a depth
  /// of 16.
  void LoadPalettes(const std::wstring &folder, bool recursive);
  /// The palette of a file, put into the list; null when it cannot be read. `validate` checks XML palettes against
  /// their schema. The class says what is made: GenericPaletteClass what the file is, DocumentPaletteClass and
  /// StylesPaletteClass an empty palette of that kind with a fresh identifier and a file of its own in a temporary
  /// folder, whatever the path; null for another.
  WClrPalette *LoadPalette(const std::wstring &path, const Guid &paletteClass = GenericPaletteClass(),
                           bool validate = false);
  /// A palette of a file that is in nobody's list; null when it cannot be read.
  static std::unique_ptr<WClrPalette> InstantiatePalette(const std::wstring &path, bool validate = false);
  static Guid GenericPaletteClass();
  static Guid DocumentPaletteClass();
  static Guid StylesPaletteClass();

  // --- The list -----------------------------------------------------------------------------------------------------

  /// In the order in which they came, those of documents too.
  Palettes GetPaletteList() const;
  /// Of the list: the palette of this file or of the user's version of it, of this name, of this identifier; the first
  /// of several, null when none is.
  WClrPalette *GetPaletteID(const std::wstring &path) const;
  WClrPalette *FindPalette(const std::wstring &name) const;
  WClrPalette *FindPalette(const Guid &guid) const;
  /// Of the list, else the file that the table of fixed palettes names, else what all steps of discovery find; null
  /// when none has it. What was not there is looked for again after DiscoverPalettes(true).
  WClrPalette *GetPaletteIDFromGuid(const Guid &guid);
  /// The same without discovery: no folder is listed.
  WClrPalette *GetPaletteIDFromGuidWithoutDiscovery(const Guid &guid);

  // --- Making, saving, deleting -------------------------------------------------------------------------------------

  /// A new, empty palette in a new file of the user's own folder, under its name or with a number behind it; null when
  /// that cannot be written.
  WClrPalette *CreateCustomPalette(const std::wstring &name);
  /// Takes the palette off the list, saved when it has changed, and destroys it; its file stays. Whether it was there.
  bool DeletePaletteID(WClrPalette *palette);
  ZelClr::ePaletteWriteResult WritePalette(WClrPalette *palette);
  /// Under a new name, as a new palette, into a new file: see WClrPalette::SaveAs. Locked palettes can be, too.
  ZelClr::ePaletteWriteResult WritePaletteAs(WClrPalette *palette, const std::wstring &path, const std::wstring &name);
  /// As it ships, for a palette of the installation, with the user's version deleted; any other palette as its file has
  /// it. False, with nothing changed, for a locked palette and where there is no such file.
  bool ResetPalette(WClrPalette *palette);

  // --- Default palettes ---------------------------------------------------------------------------------------------

  /// What documents start with; loaded by the first call. Null when not even that is installed.
  WClrPalette *GetDefaultPalette();
  /// Notes its file in the preferences, for a document palette that it is one; null takes the note away. False for a
  /// stranger.
  bool SetDefaultPalette(WClrPalette *palette);
  /// The preference's file or, where it names a document palette, that of the active document; else "dynamic.xml" of
  /// the palettes directory; else the installation's "defrgb.xml".
  WClrPalette *LoadDefaultPalette();
  /// Where spot colours are looked for first. Never null; the palette itself may not be installed.
  Guid GetDefaultSpotPaletteGuid();
  /// False, with the former one in force, when it could not be written.
  bool SetDefaultSpotPaletteGuid(const Guid &guid);

  // --- Documents ----------------------------------------------------------------------------------------------------
  // A document is told by its address; the host calls CloseDocument before one goes. When the last one closes
  // (ReportCloseDocument), the palettes of all documents go.

  /// The one that is there, else a new one.
  WClrPalette *CreateDocumentPalette(Document &document);
  WClrPalette *CreateStylesPalette(Document &document);
  WClrPalette *FindDocumentPaletteID(const Document &document) const;
  WClrPalette *FindStylesPaletteID(const Document &document) const;
  /// Whose document palette or styles palette it is; null when nobody's.
  Document *FindDocumentFromPaletteID(const WClrPalette *palette) const;
  bool RemoveDocumentPalette(Document &document);
  bool RemoveStylesPalette(Document &document);
  /// Null when no document is active or it has none.
  WClrPalette *GetActiveDocumentPaletteID() const;
  WClrPalette *GetActiveStylesPaletteID() const;
  /// The colours of one document's palette in place of another's, which keeps its identifier: the source's is mapped to
  /// it, so that colours that came along are found. False when the source has none.
  bool CopyDocumentPalette(const Document &source, Document &target);
  /// Palettes and mappings of the document; unknown ones are harmless.
  void CloseDocument(Document &document);

  /// By which identifier colours of another palette are to be found in a document; null ones are not mapped.
  void MapPaletteGuid(Document &document, const Guid &guid, const Guid &replacement);
  /// The identifier itself when it is not mapped. Mappings are not followed on.
  Guid GetMappedPaletteGuid(const Document &document, const Guid &guid) const;
  bool RemovePaletteGuidMapping(Document &document, const Guid &guid);

  /// Whether it is a reference to a colour style of an open document.
  static bool IsColorStyle(const CLR_COLORSPEC &color);

  // --- Spot colours -------------------------------------------------------------------------------------------------

  /// The palettes of the list that have a spot ink.
  Palettes EnumerateSpotColorPalettes() const;
  /// The full tint of the ink of this name and these looks: in the palette if that has it, else in the first spot
  /// palette of the list, else added to the palette. Of the looks in `lookup` each must be there, and one at least.
  PaletteResult FindOrAddSpotColor(WClrPalette *palette, const ZelClr::SpotColorDefinitionLookupData &lookup,
                                   CLR_COLORSPEC &color);
  /// A spot colour whose palette is not to be found becomes one of the document's palette, of the same name, looks and
  /// density; where its palette is mapped to one that has it, one of that. The value that a reference shares changes
  /// for all. Whether the colour changed: it stays when its palette is there, or nobody knows its looks.
  bool RemapUnknownSpotToDocumentPalette(Document &document, CLR_COLORSPEC &color);
  /// The palette that a colour was copied from into the one that it belongs to; the latter when it was not copied.
  Guid GetOriginalPaletteGuid(const CLR_COLORSPEC &color) const;
  WClrPalette *GetOriginalPalette(const CLR_COLORSPEC &color);

  // --- PANTONE colours: by names and numbers only -------------------------------------------------------------------

  /// The number in a name such as "PANTONE 185 C"; -1 when it has none (Warm Red) or is of another scheme (18-1664).
  static int GetPantoneID(const std::wstring &name);
  /// Records of version 4 state a colour by its place in the book, from 1; later ones by its number. -1 when the book
  /// is not installed or does not have it.
  int Pantone4ToPantone5(int place);
  int Pantone5ToPantoneID4(int number);
  /// The spot colour of a number in the first installed coated book, the oldest first; false, with the colour as it
  /// was, when none has it. Density 0 to 100.
  bool GetPantoneColor(int number, int density, CLR_COLORSPEC &color);
  /// The identifier of the book that a newer book took the place of; null when it took none's.
  static Guid MapPantoneToPreviousVersions(const Guid &book);
  /// The ink of the same name or number in the nearest previous version that is installed and has it, of the same
  /// density; false, with the colour as it was, when there is none.
  bool MapPantoneToPreviousVersions(CLR_COLORSPEC &color);
  /// Whether it is the transparent white that metallic and opaque inks are mixed with: "PANTONE Trans. White".
  static bool IsPantoneTransWhite(const std::wstring &name);
  static bool IsPantoneTransWhite(const CLR_COLORSPEC &color);

  // --- Lists --------------------------------------------------------------------------------------------------------

  /// The distinct valid colours, each with its first name, in order.
  static std::vector<PaletteEntry> BuildUniqueColorList(const std::vector<PaletteEntry> &entries);
  std::vector<PaletteEntry> BuildUniqueColorList(const Palettes &palettes) const;
  /// Paths, the newest first, ten at most; kept in the preferences.
  static std::vector<std::wstring> GetRecentPalettes();
  static void AddRecentPalette(const std::wstring &path);
  /// Paths of palettes that the user loaded from elsewhere, in order; kept in the preferences. The application loads
  /// them when it starts.
  static std::vector<std::wstring> GetUserLoadedCustomPalettesList();
  static void AddUserLoadedCustomPalette(const std::wstring &path);
  static void RemoveUserLoadedCustomPalette(const std::wstring &path);

private:
  template <class T>
  friend class ZelUtl::Singleton;
  friend ZelClr::ColorStyleAnswer ZelClr::FindColorStyle(const Guid &, std::string_view, CLR_COLORSPEC &);
  friend std::string ZelClr::NameOfColorStyle(const CLR_COLORSPEC &);

  static constexpr const wchar_t *kDocumentPaletteFileName = L"DocumentPalette.xml";

  struct DocumentPalettes
  {
    WClrPalette *colors = nullptr;
    WClrPalette *styles = nullptr;
    std::map<Guid, Guid> mapped;
  };
  using Kind = WClrPalette *DocumentPalettes::*;

  WClrPaletteMgr();
  static ZelUtl::Singleton<WClrPaletteMgr> instance_;

  void LoadPalettesWithin(const std::string &folder, int depth);
  WClrPalette *LoadFixedPalette(const ZelClr::FixedPalette &row);
  /// Saves and destroys; what points at the palette is forgotten first.
  void Discard(WClrPalette *palette);
  WClrPalette *MakeTemporaryPalette(const std::wstring &name, const wchar_t *fileName);
  WClrPalette *PaletteOf(const Document *document, Kind kind) const;
  WClrPalette *CreatePaletteOf(Document &document, Kind kind, const Guid &paletteClass);
  bool RemovePaletteOf(Document &document, Kind kind);
  std::vector<Document *> Documents() const;
  void OnCloseDocument();
  bool FindSpotColor(const WClrPalette &palette, const ZelClr::SpotColorDefinitionLookupData &lookup,
                     CLR_COLORSPEC &color) const;

  std::size_t nextStep_ = 0;
  std::set<Guid> missing_; // looked for in the table, and not there
  WClrPalette *default_ = nullptr;
  std::optional<Guid> defaultSpotPalette_; // once it was read
  std::map<Document *, DocumentPalettes> documents_;
  std::string temporaryFolder_; // of the palettes of documents; empty until the first
};
