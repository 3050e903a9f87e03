// XML documents as trees, and typed values in them.
//
// Names and expressions are UTF-8, values wide, or UTF-8 where they are set. Characters that XML cannot hold (controls
// but tab and line ends, lone surrogates, U+FFFE, U+FFFF, malformed UTF-8) are written as U+FFFD; every other text
// comes back as it was. What is refused in reading stands in xml_reader.h.
// Threads: a document and its nodes belong to one thread at a time; different documents may be used at once.
// Errors: false, nothing or an empty node, and nothing changed; reading and saving say why, in English, with the line.
#pragma once

#include "zelclr/platform/text.h"
#include "zelclr/platform/xml_reader.h"

#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace ZelUtl {

/// What `$name` stands for in an XPath expression. The value needs no quoting, whatever it holds.
struct XPathVariable
{
  const char *name;
  std::wstring_view value;
};

/// An element of a document: a handle that keeps the document alive. An empty one is harmless: it has no text, children
/// or attributes, and every change of it fails. Names are as written, with their prefix.
class ZELCLR_API WXmlNode
{
public:
  WXmlNode() = default;

  explicit operator bool() const { return node_ != nullptr; }
  bool operator==(const WXmlNode &other) const { return node_ == other.node_; }

  std::string Name() const;
  /// All text within, that of inner elements too.
  std::wstring Text() const;
  /// Replaces the text and the inner elements; comments stay.
  bool SetText(std::wstring_view text);
  bool SetText(std::string_view utf8);

  std::optional<std::wstring> Attribute(std::string_view name) const;
  /// In the order of the document, without the declarations of namespaces.
  std::vector<std::pair<std::string, std::wstring>> Attributes() const;
  /// A prefix must be declared.
  bool SetAttribute(std::string_view name, std::wstring_view value);
  bool SetAttribute(std::string_view name, std::string_view utf8);
  /// Whether it was there.
  bool RemoveAttribute(std::string_view name);

  WXmlNode Parent() const;
  std::vector<WXmlNode> Children() const;
  /// The first inner element, or the next one beside this; of that name when one is given.
  WXmlNode FirstChild(std::string_view name = {}) const;
  WXmlNode Next(std::string_view name = {}) const;

  /// The first element, or all elements in the order of the document, that an XPath 1.0 expression selects from here.
  /// What it selects beside elements is left out; a bad expression selects nothing.
  WXmlNode SelectNode(std::string_view xpath, std::initializer_list<XPathVariable> variables = {}) const;
  std::vector<WXmlNode> SelectNodes(std::string_view xpath, std::initializer_list<XPathVariable> variables = {}) const;

  /// A new last child. Empty when the name is none, its prefix is not declared or it would be too deep to be read
  /// again.
  WXmlNode CreateChild(std::string_view name);
  /// Takes the element out of the document; never the root. Handles on it stay good and see the loose piece.
  bool Remove();

private:
  friend class WXmlDoc;
  explicit WXmlNode(std::shared_ptr<void> node) : node_(std::move(node)) {}

  std::shared_ptr<void> node_; // shares the document and points to the element
};

/// A document with its root. Copies are the same document. A tree has at most a million elements, attributes and
/// comments.
class ZELCLR_API WXmlDoc
{
public:
  static std::optional<WXmlDoc> FromBytes(std::string_view bytes, std::string &reason,
                                          std::size_t most = kMostXmlBytes);
  /// Whatever encoding the declaration names.
  static std::optional<WXmlDoc> FromText(std::wstring_view text, std::string &reason, std::size_t most = kMostXmlBytes);
  /// The path is UTF-8.
  static std::optional<WXmlDoc> FromFile(const std::string &path, std::string &reason,
                                         std::size_t most = kMostXmlBytes);

  WXmlNode Root() const;

  /// UTF-8, a line to an element and two blanks to a level, for which blanks between elements are laid out anew.
  /// Elements with text of their own and those under xml:space="preserve" keep their blanks. CDATA sections come out as
  /// plain text.
  std::string Bytes() const;
  std::wstring Text() const;
  /// Writes Bytes through ReplaceFile.
  bool Save(const std::string &path, std::string &reason) const;

  /// Makes a prefix known to the XPath expressions of this document, whatever prefixes it uses itself.
  void DeclareNamespace(const std::string &prefix, const std::string &uri);

private:
  explicit WXmlDoc(std::shared_ptr<void> tree) : tree_(std::move(tree)) {}
  static std::optional<WXmlDoc> FromUtf8(std::string_view text, std::string &reason);

  std::shared_ptr<void> tree_;
};

/// Typed values of the children of one element, each found by its name ("./name") or by its name and its attribute `id`
/// ("./name[@id='...']"); the first one counts. Reading answers whether the child is there and holds such a value, and
/// leaves the variable alone if not. Writing takes the child that is there or makes one.
class ZELCLR_API WXmlValueAccessor
{
public:
  using Id = std::optional<std::wstring_view>;

  explicit WXmlValueAccessor(WXmlNode parent) : parent_(std::move(parent)) {}

  WXmlNode Find(std::string_view name, Id id = {}) const;
  WXmlNode FindOrCreate(std::string_view name, Id id = {});
  /// A new child at the end, in place of the one that was there.
  WXmlNode Recreate(std::string_view name, Id id = {});
  /// Whether it was there.
  bool Remove(std::string_view name, Id id = {});

  bool ReadText(std::string_view name, std::wstring &value, Id id = {}) const;
  bool WriteText(std::string_view name, std::wstring_view value, Id id = {});
  /// "true" and "false"; "1" and "0" are read, too.
  bool ReadBool(std::string_view name, bool &value, Id id = {}) const;
  bool WriteBool(std::string_view name, bool value, Id id = {});
  /// Finite numbers, in the C locale; they come back to the last bit.
  bool ReadDouble(std::string_view name, double &value, Id id = {}) const;
  bool WriteDouble(std::string_view name, double value, Id id = {});
  /// Whole numbers that fit.
  template <std::integral Integer>
  bool ReadInteger(std::string_view name, Integer &value, Id id = {}) const
  {
    const auto number = IntegerFromText<Integer>(ReadWord(name, id));
    value = number.value_or(value);
    return number.has_value();
  }
  template <std::integral Integer>
  bool WriteInteger(std::string_view name, Integer value, Id id = {})
  {
    return WriteText(name, std::to_wstring(value), id);
  }

private:
  /// The text without blanks around it; empty when there is none.
  std::string ReadWord(std::string_view name, Id id) const;

  WXmlNode parent_;
};

} // namespace ZelUtl
