// The colour record: one colour in one of about thirty models, optionally tied to a palette, optionally a shared
// reference to another colour. The value that every other part of the library passes.
//
// Threads: a value; distinct records may be used from any thread, also when they share a reference (the count of its
// holders is atomic). SetReferenceColorValue and SetDensity on a reference change what other holders read, so the
// caller sees to it that nobody reads at that moment.
// Errors: none are reported. A colour that is no colour is model 0; a model number without meaning has no components.
// Every operation is safe for every model number from 0 to 65535.
#pragma once

#include "zelclr/colour/colour_models.h"
#include "zelclr/platform/guid.h"

#include <compare>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>

class SpotColorDefinition;
class WClrColorDeviceN;
struct CLR_COLORSPEC_125X;

/// A colour with alpha, each 0 to 255.
struct ARGB
{
  std::uint8_t alpha;
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
};

/// The components of model 4, each 0 to 255.
struct CLR_CMY
{
  std::uint8_t cyan;
  std::uint8_t magenta;
  std::uint8_t yellow;
};

/// A colour.
///
/// Data: 16 bytes of components whose meaning the model decides (the table is in colour_models.h; numbers of more than
/// one byte stand as the processor stores them), the 16-byte identifier of the palette that the colour belongs to (all
/// zero when none), and the 16-bit model number.
///
/// Ownership: model 26 owns a WClrColorDeviceN, which a copy copies; model 28 holds a share of a colour elsewhere,
/// which a copy shares. Model 25 points at a SpotColorDefinition that it does not own.
class ZELCLR_API CLR_COLORSPEC
{
public:
  using Guid = ZelUtils::Guid;
  using Byte = std::uint8_t;
  using Word = std::uint16_t;
  using SignedWord = std::int16_t;

  /// An invalid colour.
  CLR_COLORSPEC() = default;
  /// RGB255; the alpha is dropped.
  explicit CLR_COLORSPEC(const ARGB &argb) { MakeRGB(*this, argb.red, argb.green, argb.blue); }
  /// The colour of an older record; see clr_colorspec_125x.h.
  explicit CLR_COLORSPEC(const CLR_COLORSPEC_125X &older);
  CLR_COLORSPEC &operator=(const CLR_COLORSPEC_125X &older);

  /// Copies the value; shares the colour of a reference.
  ///
  /// KEPT: a copy of a DeviceN colour has the all-zero palette identifier, and a copy of a reference to one is a
  /// DeviceN colour of its own, where one would expect the identifier and the reference to be copied; stored data
  /// depends on it.
  CLR_COLORSPEC(const CLR_COLORSPEC &other)
  {
    if (other.IsPlain()) [[likely]]
      TakeBits(other);
    else
      CopyOwning(other);
  }
  CLR_COLORSPEC &operator=(const CLR_COLORSPEC &other)
  {
    if (IsPlain() && other.IsPlain()) [[likely]]
      TakeBits(other);
    else if (this != &other)
      *this = CLR_COLORSPEC(other);
    return *this;
  }
  /// Leaves the other colour invalid.
  CLR_COLORSPEC(CLR_COLORSPEC &&other) noexcept
  {
    TakeBits(other);
    other.Forget();
  }
  CLR_COLORSPEC &operator=(CLR_COLORSPEC &&other) noexcept
  {
    if (this == &other)
      return *this;
    // What this colour owned goes last: the other colour may be part of it.
    CLR_COLORSPEC old;
    old.TakeBits(*this);
    TakeBits(other);
    other.Forget();
    return *this;
  }
  ~CLR_COLORSPEC() { Release(); }

  // --- Making -------------------------------------------------------------------------------------------------------
  // Each operation has two forms: one fills a given colour, whose former value it releases, one returns a new colour.
  // Both write the model's own bytes, clear the palette identifier unless they set it, and leave the other bytes as
  // they are. Components are stored as given; Validate tells whether they are in range.

  /// RGB255 from 0x00BBGGRR; the top byte is dropped.
  static void MakeCOLORREF(CLR_COLORSPEC &colour, COLORREF value);
  static CLR_COLORSPEC MakeCOLORREF(COLORREF value);
  /// Components 0 to 255.
  static void MakeRGB(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue)
  {
    colour.Begin(ZelClr::ClrModel::Rgb255);
    colour.Store(0, blue);
    colour.Store(1, green);
    colour.Store(2, red);
  }
  static CLR_COLORSPEC MakeRGB(Byte red, Byte green, Byte blue)
  {
    CLR_COLORSPEC colour;
    MakeRGB(colour, red, green, blue);
    return colour;
  }
  /// RGB255 (components 0 to 255), then converted into the blending model of the active document's colour context.
  /// Without a document, as in a host that has none, the colour stays RGB255.
  static void MakeFromRGB(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue);
  static CLR_COLORSPEC MakeFromRGB(Byte red, Byte green, Byte blue);
  /// CMY255, components 0 to 255.
  static void MakeCMY(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow);
  static CLR_COLORSPEC MakeCMY(Byte cyan, Byte magenta, Byte yellow);
  /// Model 2, percentages 0 to 100.
  static void MakeCMYK(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black);
  static CLR_COLORSPEC MakeCMYK(Byte cyan, Byte magenta, Byte yellow, Byte black);
  /// Components 0 to 255.
  static void MakeCMYK255(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black);
  static CLR_COLORSPEC MakeCMYK255(Byte cyan, Byte magenta, Byte yellow, Byte black);
  /// Model 17, percentages 0 to 100.
  static void MakeCMYK100(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black);
  static CLR_COLORSPEC MakeCMYK100(Byte cyan, Byte magenta, Byte yellow, Byte black);
  /// The registration colour, all inks and the density 100.
  static void MakeREGCOLOR(CLR_COLORSPEC &colour);
  static CLR_COLORSPEC MakeREGCOLOR();
  /// Hue in degrees 0 to 359, saturation and brightness 0 to 255.
  static void MakeHSB(CLR_COLORSPEC &colour, SignedWord hue, Byte saturation, Byte brightness);
  static CLR_COLORSPEC MakeHSB(SignedWord hue, Byte saturation, Byte brightness);
  /// Hue in degrees 0 to 359, lightness and saturation 0 to 255.
  static void MakeHLS(CLR_COLORSPEC &colour, SignedWord hue, Byte lightness, Byte saturation);
  static CLR_COLORSPEC MakeHLS(SignedWord hue, Byte lightness, Byte saturation);
  /// A user's ink: its appearance on screen (red, green, blue, 0 to 255) and its density, 0 to 100.
  static void MakeUSERINKS(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue, Byte density);
  static CLR_COLORSPEC MakeUserInks(Byte red, Byte green, Byte blue, Byte density);
  /// A user's ink by its index, density 0 to 100.
  static void MakeINDEXEDUSERINKS(CLR_COLORSPEC &colour, SignedWord ink, Byte density);
  static CLR_COLORSPEC MakeIndexedUserInks(SignedWord ink, Byte density);
  /// Y 0 to 255; I and Q halved and offset so that 100 is neutral.
  static void MakeYIQ255(CLR_COLORSPEC &colour, Byte y, Byte i, Byte q);
  static CLR_COLORSPEC MakeYIQ255(Byte y, Byte i, Byte q);
  /// L* = l * 100 / 255, a* = a * 60 / 127, b* = b * 60 / 127.
  static void MakeLAB(CLR_COLORSPEC &colour, Byte l, std::int8_t a, std::int8_t b);
  static CLR_COLORSPEC MakeLAB(Byte l, std::int8_t a, std::int8_t b);
  /// As MakeLAB, with 128 added to a and b.
  static void MakeLAB255(CLR_COLORSPEC &colour, Byte l, Byte a, Byte b);
  static CLR_COLORSPEC MakeLAB255(Byte l, Byte a, Byte b);
  /// Three bytes of XYZ.
  static void MakeXYZ(CLR_COLORSPEC &colour, Byte x, Byte y, Byte z);
  static CLR_COLORSPEC MakeXYZ(Byte x, Byte y, Byte z);
  /// 0 black to 255 white.
  static void MakeGRAY(CLR_COLORSPEC &colour, Byte gray);
  static CLR_COLORSPEC MakeGRAY(Byte gray);
  /// 1 white, 0 black.
  static void MakeBW(CLR_COLORSPEC &colour, std::int32_t white);
  static CLR_COLORSPEC MakeBW(std::int32_t white);
  /// Six inks, 0 to 255; the density is 100.
  ///
  /// KEPT: the accessors GetHEXMagenta, GetHEXCyan, GetHEXGreen and GetHEXBlack read bytes 4 to 7, where this order
  /// puts yellow, black, orange and green; filters depend on both. All arithmetic of the library follows this order.
  static void MakeHEX(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black, Byte orange, Byte green);
  static CLR_COLORSPEC MakeHEX(Byte cyan, Byte magenta, Byte yellow, Byte black, Byte orange, Byte green);
  /// The palette identifier is that of the palette type, all zero when the type has none. Density 0 to 100.
  static void MakePANTONEHEX(CLR_COLORSPEC &colour, Word paletteType, SignedWord number, Word density);
  static CLR_COLORSPEC MakePANTONEHEX(Word paletteType, SignedWord number, Word density);
  /// In the fixed Pantone palette. Density 0 to 100.
  static void MakePANTONE(CLR_COLORSPEC &colour, SignedWord number, Word density);
  static CLR_COLORSPEC MakePANTONE(SignedWord number, Word density);
  /// Components 0 to 65535; the density is 100.
  static void MakeRGB48(CLR_COLORSPEC &colour, Word red, Word green, Word blue);
  static CLR_COLORSPEC MakeRGB48(Word red, Word green, Word blue);
  /// 0 black to 65535 white.
  static void MakeGRAY16(CLR_COLORSPEC &colour, Word gray);
  static CLR_COLORSPEC MakeGRAY16(Word gray);
  /// Takes ownership of the value, which may be null and which nobody else may own; the colour's own value stays, and
  /// the one of the colour that it refers to is copied.
  static void MakeDEVICEN(CLR_COLORSPEC &colour, WClrColorDeviceN *value);
  static CLR_COLORSPEC MakeDEVICEN(WClrColorDeviceN *value);
  /// A spot colour of a palette. Density 0 to 100. The definition is not owned; null when it is not known.
  static void MakeSPOT(CLR_COLORSPEC &colour, const Guid &palette, SignedWord number, Word density,
                       const SpotColorDefinition *definition);
  static CLR_COLORSPEC MakeSPOT(const Guid &palette, SignedWord number, Word density,
                                const SpotColorDefinition *definition);
  /// The same by palette type; the identifier is all zero when the type has none.
  static void MakeSPOT(CLR_COLORSPEC &colour, Word paletteType, SignedWord number, Word density,
                       const SpotColorDefinition *definition);
  static CLR_COLORSPEC MakeSPOT(Word paletteType, SignedWord number, Word density,
                                const SpotColorDefinition *definition);
  /// An index into a palette.
  static void MakeINDEX(CLR_COLORSPEC &colour, Word index);
  static CLR_COLORSPEC CLRMakeIndex(Word index);
  static void MakeINVALID(CLR_COLORSPEC &colour) { colour.Begin(ZelClr::ClrModel::Invalid); }
  static CLR_COLORSPEC MakeInvalid() { return CLR_COLORSPEC(); }
  /// 0 black to 1 white; values beyond are kept.
  static void MakeSCRGB(CLR_COLORSPEC &colour, float red, float green, float blue);
  static CLR_COLORSPEC MakeSCRGB(float red, float green, float blue);
  /// Bytes in memory: red, green, blue, alpha.
  static void MakeRGBA(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue, Byte alpha);
  static CLR_COLORSPEC MakeRGBA(Byte red, Byte green, Byte blue, Byte alpha);
  /// Bytes in memory: blue, green, red, alpha.
  static void MakeBGRA(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue, Byte alpha);
  static CLR_COLORSPEC MakeBGRA(Byte red, Byte green, Byte blue, Byte alpha);
  /// A reference. Where the source is a reference, both share its colour and the palette identifier is the source's; a
  /// reference to nothing makes the colour invalid. Otherwise a copy of the source becomes the shared colour.
  ///
  /// KEPT: in the last case the filled colour keeps its own palette identifier, where one would expect it cleared; it
  /// never shows, because reading follows the reference.
  static void MakeReference(CLR_COLORSPEC &target, const CLR_COLORSPEC &source);
  static CLR_COLORSPEC MakeReference(const CLR_COLORSPEC &source);
  /// White of the colour's own model, in place, for models 2 to 24 that have components; others are left as they are.
  /// White of model 14 is density 0. Does nothing to a reference's bytes: it whitens the colour that is referred to.
  static void MakeWhite(CLR_COLORSPEC &colour);
  /// The process colour that a user's ink looks like, RGB255 or CMYK100; false, with the result untouched, for a colour
  /// that is no user ink or cannot be known here.
  ///
  /// USERINK is its red, green and blue, thinned towards white by the density: c' = 255 - (255 - c) * density / 100,
  /// rounded. IDXUSRINK without a palette counts the process inks, 0 cyan to 3 black, as CMYK100 at its density; any
  /// other index, and any index of a palette, needs that palette.
  static bool MakeProcessFromUserInks(const CLR_COLORSPEC &userInk, CLR_COLORSPEC &process);

  // --- Components ---------------------------------------------------------------------------------------------------
  // Getters read the colour that a reference refers to. Setters write a byte position of this colour itself, whatever
  // its model, except where a pointer stands that the model holds: such a write is ignored.

  /// The number at a byte position, which must leave room for it: offset + sizeof(T) <= 16.
  template <class T>
  T GetComponent(std::size_t offset) const
  {
    return Resolved().Load<T>(offset);
  }
  template <class T>
  void SetComponent(std::size_t offset, T value)
  {
    if (!HoldsPointerAt(offset, sizeof(T)))
      Store(offset, value);
  }

  Byte GetBlue() const { return GetComponent<Byte>(0); }
  void SetBlue(Byte value) { SetComponent(0, value); }
  /// The second 8-bit component of any model.
  Byte GetI255() const { return GetComponent<Byte>(1); }
  void SetI255(Byte value) { SetComponent(1, value); }
  Byte GetRed() const { return GetComponent<Byte>(2); }
  void SetRed(Byte value) { SetComponent(2, value); }
  Byte GetBlack() const { return GetComponent<Byte>(3); }
  void SetBlack(Byte value) { SetComponent(3, value); }
  SignedWord GetHue() const { return GetComponent<SignedWord>(0); }
  void SetHue(SignedWord value) { SetComponent(0, value); }
  std::int32_t GetBW() const { return GetComponent<std::int32_t>(0); }
  void SetBW(std::int32_t value) { SetComponent(0, value); }
  Word GetBlue16() const { return GetComponent<Word>(2); }
  void SetBlue16(Word value) { SetComponent(2, value); }
  Word GetGreen16() const { return GetComponent<Word>(4); }
  void SetGreen16(Word value) { SetComponent(4, value); }
  Word GetRed16() const { return GetComponent<Word>(6); }
  void SetRed16(Word value) { SetComponent(6, value); }
  Byte GetHEXMagenta() const { return GetComponent<Byte>(4); }
  void SetHEXMagenta(Byte value) { SetComponent(4, value); }
  Byte GetHEXCyan() const { return GetComponent<Byte>(5); }
  void SetHEXCyan(Byte value) { SetComponent(5, value); }
  Byte GetHEXGreen() const { return GetComponent<Byte>(6); }
  void SetHEXGreen(Byte value) { SetComponent(6, value); }
  Byte GetHEXBlack() const { return GetComponent<Byte>(7); }
  void SetHEXBlack(Byte value) { SetComponent(7, value); }
  float GetSCRed() const { return GetComponent<float>(0); }
  void SetSCRed(float value) { SetComponent(0, value); }
  float GetSCGreen() const { return GetComponent<float>(4); }
  void SetSCGreen(float value) { SetComponent(4, value); }
  float GetSCBlue() const { return GetComponent<float>(8); }
  void SetSCBlue(float value) { SetComponent(8, value); }

  /// KEPT: through one reference the black and the density of a registration colour change places, through two they do
  /// not, and so on by turns, where one would expect the same answer as without; stored data depends on it.
  Byte GetREGCOLORBlack() const { return GetComponent<Byte>(ReferenceDepthIsOdd() ? 4 : 3); }
  Byte GetREGCOLORDensity() const { return GetComponent<Byte>(ReferenceDepthIsOdd() ? 3 : 4); }

  /// The first three bytes as a CMY record; lives as long as the colour that is read.
  const CLR_CMY &GetCMY() const { return reinterpret_cast<const CLR_CMY &>(Resolved().components_); }
  /// Bytes 2, 1, 0 as 0x00BBGGRR, whatever the model.
  COLORREF GetCOLORREF() const
  {
    return COLORREF{GetRed()} | static_cast<COLORREF>(GetI255() << 8) | static_cast<COLORREF>(GetBlue() << 16);
  }
  /// The 16 bytes of component data; they live as long as the colour that is read.
  const Byte *GetRAWColor() const { return Resolved().components_; }
  /// The value of a DeviceN colour, owned by it; null when it has none or is of another model.
  WClrColorDeviceN *GetDeviceN() const;

  // --- Model, palette, references -----------------------------------------------------------------------------------

  /// The model of the colour itself or, for a reference, of the colour referred to; never 28. A reference to nothing
  /// reads as model 0.
  Word GetType() const { return Resolved().model_; }
  /// Stores a model number and leaves the components, but for what would be read as a pointer, which becomes null.
  void SetType(Word model);

  bool IsReference() const { return model_ == ZelClr::ClrModel::Reference; }
  /// KEPT: model numbers 31 to 1013, and 10 and 16, count as valid, where one would expect only those with a meaning;
  /// callers depend on it. Validate is the strict test.
  bool IsInvalid() const { return static_cast<Word>(GetType() - 1) >= kFirstInvalidModel - 1; }
  /// The identifier of the palette of the colour itself or of the colour referred to.
  const Guid &GetPaletteGuid() const { return Resolved().palette_; }
  /// Writes this colour's own identifier.
  void SetPaletteGuid(const Guid &palette) { palette_ = palette; }
  /// The palette type that the identifier stands for; 5 (user) when none.
  Word GetPaletteType() const;
  /// Stores the identifier of a palette type; 16 (user inks) counts as 5.
  void SetPaletteType(Word paletteType);

  /// The colour itself or, for a reference, the one at the end of its references; an invalid colour for a reference to
  /// nothing. It lives as long as that colour does.
  const CLR_COLORSPEC &Resolved() const { return IsReference() ? ResolvedReference() : *this; }
  /// The colour that a reference refers to (it may be a reference, too); null for any other colour. It lives as long as
  /// some holder refers to it.
  const CLR_COLORSPEC *GetReference() const;
  /// Gives the referenced colour a new value, which every holder then reads. Does nothing when this is no reference, or
  /// when the value is a reference that leads back here: a ring of references has no colour at its end.
  /// Takes time in proportion to the value's own chain of references.
  void SetReferenceColorValue(const CLR_COLORSPEC &value);
  /// Whether both are references to one shared colour; a reference to nothing shares none.
  bool IsSameReference(const CLR_COLORSPEC &other) const;
  /// Replaces a reference by a plain copy of the colour at its end; any other colour stays.
  void BreakReference();
  /// Becomes a plain copy of the other colour, or of the colour at the end of its references.
  void Copy(const CLR_COLORSPEC &other);

  // --- Classification -----------------------------------------------------------------------------------------------

  bool IsSpot() const;
  /// Whether a density makes sense for it.
  bool IsTintable() const;
  bool IsCMYK() const
  {
    const unsigned model = GetType();
    return model == ZelClr::ClrModel::Cmyk || model == ZelClr::ClrModel::Cmyk255 || model == ZelClr::ClrModel::Cmyk100;
  }
  /// 0 to 100 in a valid colour; 100 for the models without a density.
  Word GetDensity() const;
  /// Writes the density of the colour at the end of the references; does nothing for the models without one. The models
  /// that store a byte take the low byte.
  void SetDensity(Word density);
  /// Whether the model is one that documents may hold, its palette type fits it and its components are in range.
  bool Validate() const;

  // --- Spot colours (defined in palettes/clr_colorspec_spot.cpp) ----------------------------------------------------

  /// The definition that a spot colour points at, not owned; null for other colours and for an unresolved one.
  const SpotColorDefinition *GetSpotDefinition() const;
  /// The name in the definition; empty when there is none.
  std::wstring GetSpotColorName() const;
  /// A definition that has this colour, without its reference, as its one appearance; null for the colours that have no
  /// appearance of their own (invalid, Pantone, index, indexed ink, spot and DeviceN colours, models without a
  /// meaning).
  std::shared_ptr<SpotColorDefinition> CreateSpotDefinition(const std::wstring &name,
                                                            const std::wstring &spaceName) const;
  /// The appearance of a spot colour at full density, from its definition: the alternative of the wanted model, else
  /// the first one; false, with the result untouched, when no definition is known.
  bool GetSpotAppearance(unsigned wantedModel, CLR_COLORSPEC &appearance) const;

  // --- Order --------------------------------------------------------------------------------------------------------

  /// Negative, zero or positive: one total preorder over all colours.
  ///
  /// References follow every other colour and are ordered by the identity of the colours that they share. Others are
  /// ordered by model number, then by their components as described at each model in clr_colorspec_order.cpp; the three
  /// CMYK models are one family. The palette identifier counts only for models 1, 14, 22 and 25.
  int CompareTo(const CLR_COLORSPEC &other) const;

  friend bool operator==(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b) { return a.CompareTo(b) == 0; }
  friend std::weak_ordering operator<=>(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b) { return a.CompareTo(b) <=> 0; }

private:
  struct SharedColour; // the colour of a reference with the count of its holders; one allocation

  static constexpr unsigned kFirstInvalidModel = 1014;

  template <class... Formal, class... Actual>
  static CLR_COLORSPEC Made(void (*make)(CLR_COLORSPEC &, Formal...), Actual... components)
  {
    CLR_COLORSPEC colour;
    make(colour, components...);
    return colour;
  }

  template <class T>
  T Load(std::size_t offset) const
  {
    static_assert(std::is_trivially_copyable_v<T>);
    T value;
    std::memcpy(&value, components_ + offset, sizeof value);
    return value;
  }
  template <class T>
  void Store(std::size_t offset, T value)
  {
    static_assert(std::is_trivially_copyable_v<T>);
    std::memcpy(components_ + offset, &value, sizeof value);
  }

  /// Owns nothing.
  bool IsPlain() const { return model_ != ZelClr::ClrModel::DeviceN && model_ != ZelClr::ClrModel::Reference; }
  void TakeBits(const CLR_COLORSPEC &other)
  {
    std::memcpy(components_, other.components_, sizeof components_);
    palette_ = other.palette_;
    model_ = other.model_;
  }
  void Forget()
  {
    model_ = ZelClr::ClrModel::Invalid;
    palette_ = Guid{};
  }
  void Release()
  {
    if (!IsPlain()) [[unlikely]]
      ReleaseOwned();
  }
  /// Releases the former value; the colour is then of the model, without palette, its bytes as they were.
  void Begin(Word model)
  {
    Release();
    model_ = model;
    palette_ = Guid{};
  }
  bool ReferenceDepthIsOdd() const { return IsReference() && CountReferences() % 2 != 0; }
  bool HoldsPointerAt(std::size_t offset, std::size_t size) const;
  void CopyOwning(const CLR_COLORSPEC &other);
  void ReleaseOwned();
  const CLR_COLORSPEC &ResolvedReference() const;
  /// The colour itself or the one at the end of its references, null when there is none.
  CLR_COLORSPEC *EndOfReferences();
  unsigned CountReferences() const;

  // What the record asks of a DeviceN value: defined in convert/clr_colorspec_device_n.cpp.
  static WClrColorDeviceN *CloneDeviceN(const WClrColorDeviceN &value);
  static void DestroyDeviceN(WClrColorDeviceN *value);
  static bool ValidateDeviceN(const WClrColorDeviceN &value);
  static int CompareDeviceN(const WClrColorDeviceN &a, const WClrColorDeviceN &b);

  alignas(8) Byte components_[16]{};
  Guid palette_;
  Word model_ = ZelClr::ClrModel::Invalid;
};

static_assert(sizeof(CLR_COLORSPEC) == 40);
