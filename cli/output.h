// Standard output: swatches where a terminal shows colours, JSON where it is asked for, plain text otherwise.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

using Json = nlohmann::ordered_json;

enum class ColourUse
{
  Auto,
  Always,
  Never
};

struct Output
{
  bool json = false;
  ColourUse colour = ColourUse::Auto;

  /// Whether swatches are drawn: as asked for; by itself on a terminal that is not "dumb" and without NO_COLOR.
  bool DrawsColour() const;
  /// `columns` blanks on the colour's background and a blank behind; nothing where no colours are drawn, or where the
  /// colour has no appearance.
  std::string Swatch(const CLR_COLORSPEC &colour, int columns) const;
  /// Emphasis on a terminal, the bare text elsewhere.
  std::string Bold(std::string_view text) const;
  std::string Faint(std::string_view text) const;
};

/// Writes one JSON document with the schema's name and version in front.
void PrintJson(std::string_view schema, const Json &content, int schemaVersion = 1);

/// On standard error, one line each.
void SayNotes(const std::string &path, const std::vector<std::string> &notes);

/// "#ff8000"; empty for a colour without an appearance on screen.
std::string HexFromColorSpec(const CLR_COLORSPEC &colour);

/// "4.0"
std::string OneDecimal(double number);

/// The number of columns that UTF-8 text takes on a terminal, wide characters counted as two.
std::size_t TextColumns(std::string_view utf8);
/// The text cut off or filled up with blanks to a number of columns.
std::string Fitted(std::string_view utf8, std::size_t columns);
/// Text from outside without what would steer a terminal or break a page: control characters, those that turn the
/// direction of writing, bad UTF-8 and what is no character become U+FFFD.
std::string Harmless(std::string_view bytes);
/// The same between the tags and in the attributes of HTML and XML.
std::string Escaped(std::string_view bytes);

} // namespace cli
