#include "cli/profile/icc_words.h"

#include "cli/profile/words.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

using ZelUtl::IccSignature;

struct SignatureWords
{
  std::uint32_t signature;
  const char *words;
};

constexpr SignatureWords kClasses[] = {
  {IccSignature("scnr"), "input device"},  {IccSignature("mntr"), "display"},
  {IccSignature("prtr"), "output device"}, {IccSignature("link"), "device link"},
  {IccSignature("spac"), "colour space"},  {IccSignature("abst"), "abstract"},
  {IccSignature("nmcl"), "named colours"},
};

constexpr SignatureWords kColourSpaces[] = {
  {IccSignature("XYZ "), "XYZ"},        {IccSignature("Lab "), "Lab"},        {IccSignature("Luv "), "Luv"},
  {IccSignature("YCbr"), "YCbCr"},      {IccSignature("Yxy "), "Yxy"},        {IccSignature("RGB "), "RGB"},
  {IccSignature("GRAY"), "gray"},       {IccSignature("HSV "), "HSV"},        {IccSignature("HLS "), "HLS"},
  {IccSignature("CMYK"), "CMYK"},       {IccSignature("CMY "), "CMY"},        {IccSignature("2CLR"), "2 colours"},
  {IccSignature("3CLR"), "3 colours"},  {IccSignature("4CLR"), "4 colours"},  {IccSignature("5CLR"), "5 colours"},
  {IccSignature("6CLR"), "6 colours"},  {IccSignature("MCH6"), "6 colours"},  {IccSignature("7CLR"), "7 colours"},
  {IccSignature("8CLR"), "8 colours"},  {IccSignature("9CLR"), "9 colours"},  {IccSignature("ACLR"), "10 colours"},
  {IccSignature("BCLR"), "11 colours"}, {IccSignature("CCLR"), "12 colours"}, {IccSignature("DCLR"), "13 colours"},
  {IccSignature("ECLR"), "14 colours"}, {IccSignature("FCLR"), "15 colours"},
};

constexpr SignatureWords kPlatforms[] = {
  {IccSignature("APPL"), "Apple"},
  {IccSignature("MSFT"), "Microsoft"},
  {IccSignature("SGI "), "Silicon Graphics"},
  {IccSignature("SUNW"), "Sun Microsystems"},
};

constexpr SignatureWords kTags[] = {
  {IccSignature("A2B0"), "device to connection space, perceptual"},
  {IccSignature("A2B1"), "device to connection space, colorimetric"},
  {IccSignature("A2B2"), "device to connection space, saturation"},
  {IccSignature("B2A0"), "connection space to device, perceptual"},
  {IccSignature("B2A1"), "connection space to device, colorimetric"},
  {IccSignature("B2A2"), "connection space to device, saturation"},
  {IccSignature("B2D0"), "connection space to device in floats, perceptual"},
  {IccSignature("B2D1"), "connection space to device in floats, relative"},
  {IccSignature("B2D2"), "connection space to device in floats, saturation"},
  {IccSignature("B2D3"), "connection space to device in floats, absolute"},
  {IccSignature("D2B0"), "device to connection space in floats, perceptual"},
  {IccSignature("D2B1"), "device to connection space in floats, relative"},
  {IccSignature("D2B2"), "device to connection space in floats, saturation"},
  {IccSignature("D2B3"), "device to connection space in floats, absolute"},
  {IccSignature("DevD"), "measurements of the device"},
  {IccSignature("CIED"), "measurements of colour"},
  {IccSignature("Pmtr"), "parameters of the profile's making"},
  {IccSignature("bTRC"), "blue curve"},
  {IccSignature("bXYZ"), "blue primary"},
  {IccSignature("bfd "), "black generation and undercolour removal"},
  {IccSignature("bkpt"), "media black point"},
  {IccSignature("calt"), "calibration date"},
  {IccSignature("chad"), "chromatic adaptation"},
  {IccSignature("chrm"), "chromaticities of the primaries"},
  {IccSignature("cicp"), "coding-independent code points"},
  {IccSignature("ciis"), "colorimetric intent image state"},
  {IccSignature("clot"), "colorant table of the output"},
  {IccSignature("clro"), "colorant order"},
  {IccSignature("clrt"), "colorant table"},
  {IccSignature("cprt"), "copyright"},
  {IccSignature("crdi"), "rendering dictionary information"},
  {IccSignature("desc"), "profile description"},
  {IccSignature("devs"), "device settings"},
  {IccSignature("dmdd"), "device model"},
  {IccSignature("dmnd"), "device manufacturer"},
  {IccSignature("gTRC"), "green curve"},
  {IccSignature("gXYZ"), "green primary"},
  {IccSignature("gamt"), "gamut check"},
  {IccSignature("kTRC"), "gray curve"},
  {IccSignature("lumi"), "luminance"},
  {IccSignature("meas"), "measuring conditions"},
  {IccSignature("meta"), "metadata"},
  {IccSignature("mmod"), "make and model"},
  {IccSignature("ncl2"), "named colours"},
  {IccSignature("ncol"), "named colours, old form"},
  {IccSignature("pre0"), "preview, perceptual"},
  {IccSignature("pre1"), "preview, colorimetric"},
  {IccSignature("pre2"), "preview, saturation"},
  {IccSignature("ps2i"), "PostScript rendering intent"},
  {IccSignature("ps2s"), "PostScript colour space"},
  {IccSignature("psd0"), "PostScript rendering dictionary, perceptual"},
  {IccSignature("psd1"), "PostScript rendering dictionary, colorimetric"},
  {IccSignature("psd2"), "PostScript rendering dictionary, saturation"},
  {IccSignature("psd3"), "PostScript rendering dictionary, absolute"},
  {IccSignature("pseq"), "sequence of profiles"},
  {IccSignature("psid"), "identifiers of the sequence"},
  {IccSignature("rTRC"), "red curve"},
  {IccSignature("rXYZ"), "red primary"},
  {IccSignature("resp"), "output response"},
  {IccSignature("rig0"), "gamut of the perceptual intent"},
  {IccSignature("rig2"), "gamut of the saturation intent"},
  {IccSignature("scrd"), "screening, described"},
  {IccSignature("scrn"), "screening"},
  {IccSignature("targ"), "characterisation target"},
  {IccSignature("tech"), "technology"},
  {IccSignature("vcgt"), "curves of the video card"},
  {IccSignature("view"), "viewing conditions"},
  {IccSignature("vued"), "viewing conditions, described"},
  {IccSignature("wtpt"), "media white point"},
};

template <std::size_t kCount>
const char *Find(const SignatureWords (&table)[kCount], std::uint32_t signature)
{
  const auto *const row = std::find_if(std::begin(table), std::end(table),
                                       [signature](const SignatureWords &r) { return r.signature == signature; });
  return row == std::end(table) ? nullptr : row->words;
}

template <std::size_t kCount>
std::string FoundOrQuoted(const SignatureWords (&table)[kCount], std::uint32_t signature)
{
  const char *const found = Find(table, signature);
  return found == nullptr ? SignatureInWords(signature) : found;
}

/// One bit of a set of flags, and what it says when it is not set and when it is.
struct FlagWords
{
  unsigned bit;
  const char *key;
  const char *unset;
  const char *set;
};
constexpr FlagWords kFlags[] = {{0, "embedded", "not embedded", "embedded"},
                                {1, "dependent", "may be used by itself", "not without the embedding file"}};
constexpr FlagWords kAttributes[] = {{0, "transparency", "reflective", "transparency"},
                                     {1, "matte", "glossy", "matte"},
                                     {2, "negative", "positive", "negative"},
                                     {3, "blackAndWhite", "colour", "black and white"}};

template <std::size_t kCount>
HeaderField FlagField(const char *key, const char *label, const FlagWords (&table)[kCount], std::uint64_t flags)
{
  HeaderField field = {key, label, "", {{"number", flags}}};
  for (const FlagWords &row : table) {
    const bool set = (flags >> row.bit & 1) != 0;
    field.words += std::string(field.words.empty() ? "" : ", ") + (set ? row.set : row.unset);
    field.value[row.key] = set;
  }
  return field;
}

Json SignatureValue(std::uint32_t signature, const std::string &words)
{
  return {{"signature", ZelUtl::TextOfIccSignature(signature)}, {"number", signature}, {"words", words}};
}

HeaderField SignatureField(const char *key, const char *label, std::uint32_t signature, const std::string &words)
{
  return {key, label, words, SignatureValue(signature, words)};
}
HeaderField SignatureField(const char *key, const char *label, std::uint32_t signature)
{
  return SignatureField(key, label, signature, SignatureInWords(signature));
}

template <class... Numbers>
std::string Printed(const char *format, Numbers... numbers)
{
  char text[64];
  std::snprintf(text, sizeof text, format, numbers...);
  return text;
}

HeaderField DateField(const ZelUtl::IccDate &date)
{
  if (date.year == 0 && date.month == 0 && date.day == 0)
    return {"created", "created", "no date", nullptr};
  const std::string text =
    Printed("%04u-%02u-%02u %02u:%02u:%02u", date.year, date.month, date.day, date.hour, date.minute, date.second);
  return {"created", "created", text + " UTC", text};
}

HeaderField IlluminantField(const ZelUtl::IccXyz &xyz)
{
  return {"illuminant",
          "illuminant",
          Printed("X %.4f  Y %.4f  Z %.4f", xyz.x, xyz.y, xyz.z),
          {{"x", xyz.x}, {"y", xyz.y}, {"z", xyz.z}}};
}

HeaderField IdentifierField(const std::array<std::uint8_t, 16> &identifier)
{
  std::string text;
  for (const std::uint8_t byte : identifier)
    text += Printed("%02x", byte);
  const bool none = text.find_first_not_of('0') == std::string::npos;
  return {"identifier", "identifier", none ? "none" : text, none ? Json(nullptr) : Json(text)};
}

} // namespace

std::string SignatureInWords(std::uint32_t signature)
{
  if (signature == 0)
    return "none";
  const std::string text = ZelUtl::TextOfIccSignature(signature);
  return text.find('?') == std::string::npos ? "'" + text + "'" : Printed("0x%08x", signature);
}

std::string ClassInWords(std::uint32_t signature)
{
  return FoundOrQuoted(kClasses, signature);
}

std::string ColourSpaceInWords(std::uint32_t signature)
{
  return FoundOrQuoted(kColourSpaces, signature);
}

std::string VersionInWords(std::uint32_t version)
{
  const std::string text = std::to_string(version >> 24) + "." + std::to_string(version >> 20 & 15u);
  const std::uint32_t third = version >> 16 & 15u;
  return third == 0 ? text : text + "." + std::to_string(third);
}

std::vector<HeaderField> FieldsOf(const ZelUtl::IccHeader &header)
{
  const std::string version = VersionInWords(header.version);
  const std::string intent = header.renderingIntent < std::size(kIntentWords)
                               ? kIntentWords[header.renderingIntent].name
                               : std::to_string(header.renderingIntent);
  return {
    {"size", "size", std::to_string(header.size) + " bytes", header.size},
    SignatureField("preferredModule", "preferred module", header.preferredModule),
    {"version", "version", version, version},
    SignatureField("class", "class", header.deviceClass, ClassInWords(header.deviceClass)),
    SignatureField("colourSpace", "colour space", header.colourSpace, ColourSpaceInWords(header.colourSpace)),
    SignatureField("connectionSpace", "connection space", header.connectionSpace,
                   ColourSpaceInWords(header.connectionSpace)),
    DateField(header.created),
    SignatureField("platform", "platform", header.platform, FoundOrQuoted(kPlatforms, header.platform)),
    FlagField("flags", "flags", kFlags, header.flags),
    SignatureField("manufacturer", "manufacturer", header.manufacturer),
    SignatureField("model", "model", header.model),
    FlagField("attributes", "attributes", kAttributes, header.attributes),
    {"renderingIntent", "rendering intent", intent, intent},
    IlluminantField(header.illuminant),
    SignatureField("creator", "creator", header.creator),
    IdentifierField(header.identifier),
  };
}

std::string_view TagInWords(std::uint32_t signature)
{
  const char *const found = Find(kTags, signature);
  return found == nullptr ? std::string_view() : found;
}

} // namespace cli
