// XML: what is refused, what comes back, and how a tree is found, changed and written.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/xml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <stdexcept>
#include <thread>

using namespace ZelUtl;
using namespace std::string_literals;
using testing::HasSubstr;

namespace {

/// Writes down what it hears: <name attribute="value"> as "(name attribute=value", text in brackets, the end as
/// ")name".
struct Log : XmlHandler
{
  bool StartElement(std::string_view name, std::span<const XmlAttribute> attributes, std::string &reason) override
  {
    if (name == refused) {
      reason = "no " + refused + " here";
      return false;
    }
    if (name == "throw")
      throw std::out_of_range("thrown");
    heard += "(" + std::string(name);
    for (const XmlAttribute &attribute : attributes)
      heard += " " + std::string(attribute.name) + "=" + std::string(attribute.value);
    return true;
  }
  bool Text(std::string_view text, std::string &) override
  {
    heard += "[" + std::string(text) + "]";
    return true;
  }
  bool EndElement(std::string_view name, std::string &) override
  {
    heard += ")" + std::string(name);
    return true;
  }
  std::string heard, refused;
};

WXmlDoc Read(std::string_view bytes)
{
  std::string reason;
  auto document = WXmlDoc::FromBytes(bytes, reason);
  if (!document)
    throw std::runtime_error(reason);
  return *document;
}

/// Why the tree and the stream refuse it, both for the same reason; empty when they read it.
std::string WhyRefused(std::string_view bytes, std::size_t most = kMostXmlBytes)
{
  std::string ofTree, ofStream;
  Log log;
  const bool asTree = WXmlDoc::FromBytes(bytes, ofTree, most).has_value();
  const bool asStream = ReadXml(bytes, log, ofStream, most);
  EXPECT_EQ(asTree, ofTree.empty());
  EXPECT_EQ(asStream, ofStream.empty());
  EXPECT_TRUE(ofTree.starts_with(ofStream)) << ofTree << " and " << ofStream; // a tree may quote more
  return ofTree;
}

std::string Repeated(int count, const std::string &text)
{
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

TEST(Xml, IsRefusedWithLineAndReasonAndNothingIsPrinted)
{
  const struct
  {
    std::string bytes, reason;
  } kRows[] = {
    {"", "the document is empty"},
    {"text", "line 1: "},
    {"<a>\n<b>\n</a>", "line 3: "},
    {"<a>\n<b/>", "line 2: the document ends too early"},
    {"<a/>\n<b/>", "line 2: Extra content"},
    {"<a\nb='1' b='2'/>", "line 2: Attribute b redefined"},
    {"<a>&undeclared;</a>", "line 1: Entity 'undeclared' not defined"},
    {"<!DOCTYPE a SYSTEM 'a.dtd'><a>&undeclared;</a>", "undeclared"},
    {"<p:a/>", "line 1: Namespace prefix p on a is not defined"},
    {"<a>\x01</a>", "line 1: "},
    {"<a>\n\0</a>"s, "line 2: the character U+0000"},
    {"<a>\n\xFF</a>", "line 2: not valid UTF-8"},
    {"\xFF\xFE<\0a\0/\0>"s, "not valid UTF-16"},
    {"\xFE\xFF\0<\0a\0>\xD8\0\0<\0/\0a\0>"s, "not valid UTF-16"},
    {"<?xml version='1.0' encoding='EBCDIC-US'?><a/>", "line 1: the encoding \"EBCDIC-US\" is none of"},
    {"<?xml version='1.0' encoding='UTF-16'?><a/>", "line 1: the document says \"UTF-16\" and is not"},
    {"<!DOCTYPE a [<!ENTITY x 'y'>]>\n<a>&x;</a>", "line 1: a document type with declarations of its own"},
    {"\n<!DOCTYPE a SYSTEM \"[\" [<!ENTITY % x SYSTEM 'file:///etc/passwd'> %x;]><a/>", "line 2: a document type"},
    {"<a" + Repeated(257, " b='>'") + "/>", "line 1: an element has more than 256 attributes"},
    // Whoever read on behind the fault would compare 200,000 attributes with each other.
    {"<a b=\"<c" + Repeated(200'000, " d=\">\"") + "/>", "line 1: Unescaped '<'"},
    {Repeated(100'000, "<a>\n"), "line 257: elements are nested deeper than 256"},
    {"<a xmlns='u' xmlns:p='u'>" + Repeated(129, "<a xmlns='u' xmlns:p='v'>"), "in scope"},
  };
  testing::internal::CaptureStderr();
  for (const auto &row : kRows)
    EXPECT_THAT(WhyRefused(row.bytes), HasSubstr(row.reason)) << row.bytes.substr(0, 200);
  EXPECT_EQ(WhyRefused("<a>12</a>", 8), "more than 8 bytes");
  EXPECT_EQ(WhyRefused("<a>12</a>", 9), "");
  std::string reason;
  EXPECT_THAT(WhyRefused("<a>" + std::string(10'100'000, ' ') + "<!--" + std::string(10'100'000, ' ')),
              HasSubstr("10,000,000"));
  EXPECT_FALSE(WXmlDoc::FromBytes("<a>" + Repeated(1'000'000, "<b/>") + "</a>", reason));
  EXPECT_THAT(reason, HasSubstr("more than 1000000 elements"));
  for (const char *const fine : {"<!DOCTYPE a SYSTEM 'a.dtd'><a/>", "<!DOCTYPE a SYSTEM \">]a[.dtd\"><a/>",
                                 "<a xml:id='1'><b xml:id='1'/></a>", "<?xml version='1.1'?><a/>"})
    EXPECT_EQ(WhyRefused(fine), "") << fine;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Xml, LimitsAreReached)
{
  EXPECT_EQ(WhyRefused(Repeated(256, "<a>") + Repeated(256, "</a>")), "");
  std::string attributes;
  for (int i = 0; i < 256; ++i)
    attributes += " a" + std::to_string(i) + "='>'";
  EXPECT_EQ(WhyRefused("<a" + attributes + "/>"), "");
  WXmlNode node = Read("<a/>").Root();
  int depth = 1;
  for (WXmlNode child = node; child; child = child.CreateChild("a"), ++depth)
    node = child;
  EXPECT_EQ(depth - 1, kMostXmlDepth) << "what is built can be read";
}

TEST(Xml, ComesInThreeEncodings)
{
  const std::string big = "\xFE\xFF\0<\0a\0>\0\xE4\xD8\x3C\xDF\xA8\0<\0/\0a\0>"s;
  std::string little = big;
  for (std::size_t i = 0; i < little.size(); i += 2)
    std::swap(little[i], little[i + 1]);
  const struct
  {
    std::string bytes;
    const wchar_t *text;
  } kRows[] = {
    {"<a>ä\U0001F3A8</a>", L"ä\U0001F3A8"},
    {"\xEF\xBB\xBF<?xml version='1.0' encoding=\"utf-8\"?><a>ä</a>", L"ä"},
    {big, L"ä\U0001F3A8"},
    {little, L"ä\U0001F3A8"},
    {little.substr(2), L"ä\U0001F3A8"},
    {"<?xml version='1.0' encoding = 'ISO-8859-1' ?><a>\xE4\x80</a>", L"ä\u0080"},
    {"<a><![CDATA[<ä>]]>&#xE4;&amp;<!-- no text --><![CDATA[]]>&lt;</a>", L"<ä>ä&<"},
  };
  for (const auto &row : kRows)
    EXPECT_EQ(Read(row.bytes).Root().Text(), row.text) << testing::PrintToString(row.bytes);
  std::string reason;
  const auto wide = WXmlDoc::FromText(L"\uFEFF<?xml version='1.0' encoding='UTF-16'?><a>ä</a>", reason);
  ASSERT_TRUE(wide) << reason;
  EXPECT_EQ(wide->Text(), L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>ä</a>\n");
}

TEST(Xml, EveryPrefixOfADocumentIsRefused)
{
  const std::string whole = "<?xml version='1.0'?><!DOCTYPE a SYSTEM 's'><a b='&lt;1'><!--c--><![CDATA[d]]>&amp;ä</a>";
  ASSERT_EQ(WhyRefused(whole), "");
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_NE(WhyRefused(whole.substr(0, size)), "") << whole.substr(0, size);
}

void ExpectToComeBack(const std::wstring &text, const std::wstring &expected)
{
  const WXmlDoc document = Read("<a><!-- stays --></a>");
  document.Root().SetAttribute("b", text);
  document.Root().CreateChild("c").SetText(text);
  const WXmlNode root = Read(document.Bytes()).Root();
  EXPECT_EQ(root.Attribute("b"), expected);
  EXPECT_EQ(root.FirstChild("c").Text(), expected);
  // With text of its own, nothing but the element's name is between tags.
  EXPECT_EQ(Read(document.Bytes()).Bytes(), document.Bytes());
  std::string reason;
  Log log;
  ASSERT_TRUE(ReadXml(document.Text(), log, reason)) << reason;
  EXPECT_THAT(log.heard, HasSubstr("(a b=" + Utf8FromWide(expected)));
}

TEST(Xml, TextComesBackAsItWas)
{
  for (const wchar_t *const text : {L"", L" ", L"  leading and trailing\t", L"a\rb\r\nc\nd", L"]]>", L"&amp;&#38;\"'",
                                    L"<![CDATA[x]]>", L"<!-- -->", L"\U0001F3A8\u007F\u0085\u2028\uFFFD\uFEFF"})
    ExpectToComeBack(text, text);
}

RC_GTEST_PROP(Xml, AnyTextComesBack, (const std::vector<std::uint16_t> &units))
{
  const std::wstring text = WideFromUtf16(std::u16string(units.begin(), units.end()));
  std::wstring expected = text;
  for (wchar_t &c : expected) {
    if ((c < L' ' && c != L'\t' && c != L'\n' && c != L'\r') || c == L'\xFFFE' || c == L'\xFFFF')
      c = L'\uFFFD';
  }
  ExpectToComeBack(text, expected);
}

TEST(Xml, IsLaidOutAnewAndKeepsWhatPeopleWrote)
{
  const WXmlDoc document = Read("<?xml version='1.0'?>\n<!-- mine -->\n<!DOCTYPE a SYSTEM 's'>\n"
                                "<a  z='1' b='2'>\n\n\t<!-- of\n two lines --><unknown>  blanks </unknown><?p i?>\n"
                                "<mixed>some <b>bold</b> text</mixed><keep xml:space='preserve'> <b/></keep>\n"
                                "<empty> </empty><list>\n <!-- none yet -->\n</list></a><!-- end -->");
  EXPECT_TRUE(document.Root().FirstChild("list").CreateChild("item"));
  const std::string expected = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<!-- mine -->\n"
                               "<!DOCTYPE a SYSTEM \"s\">\n"
                               "<a z=\"1\" b=\"2\">\n"
                               "  <!-- of\n two lines -->\n"
                               "  <unknown>  blanks </unknown>\n"
                               "  <?p i?>\n"
                               "  <mixed>some <b>bold</b> text</mixed>\n"
                               "  <keep xml:space=\"preserve\"> <b/></keep>\n"
                               "  <empty> </empty>\n"
                               "  <list>\n"
                               "    <!-- none yet -->\n"
                               "    <item/>\n"
                               "  </list>\n"
                               "</a>\n"
                               "<!-- end -->\n";
  EXPECT_EQ(document.Bytes(), expected);
  const tests::TemporaryFolder folder;
  std::string reason;
  ASSERT_TRUE(document.Save(folder.Path("a.xml"), reason)) << reason;
  const auto again = WXmlDoc::FromFile(folder.Path("a.xml"), reason);
  ASSERT_TRUE(again) << reason;
  EXPECT_EQ(again->Bytes(), expected);
  EXPECT_FALSE(WXmlDoc::FromFile(folder.Path("none.xml"), reason));
  EXPECT_NE(reason, "");
  EXPECT_FALSE(document.Save(folder.Path("none/a.xml"), reason));
}

TEST(XmlNode, IsFoundAndChanged)
{
  const WXmlDoc document = Read("<a xmlns='' xmlns:p='urn:p'><b id='1' p:id='2'>x<!-- c --><i>y</i></b><p:b/><c/>"
                                "<b id='3'/></a>");
  WXmlNode root = document.Root();
  WXmlNode b = root.FirstChild("b");
  EXPECT_EQ(b.Text(), L"xy");
  EXPECT_EQ(b.Attributes(), (std::vector<std::pair<std::string, std::wstring>>{{"id", L"1"}, {"p:id", L"2"}}));
  EXPECT_EQ(b.Attribute("p:id"), L"2");
  EXPECT_FALSE(b.Attribute("i"));
  EXPECT_EQ(b.Next().Name(), "p:b");
  EXPECT_EQ(b.Next("b").Attribute("id"), L"3");
  EXPECT_EQ(root.FirstChild("p:b").Name(), "p:b");
  EXPECT_EQ(b.Parent(), root);
  EXPECT_FALSE(root.Parent());
  EXPECT_EQ(root.Children().size(), 4u);

  EXPECT_TRUE(b.SetText(L"new"));
  EXPECT_TRUE(b.SetAttribute("id", L"<2>"));
  EXPECT_TRUE(b.SetAttribute("xml:lang", L"de"));
  EXPECT_TRUE(b.RemoveAttribute("p:id"));
  EXPECT_FALSE(b.RemoveAttribute("p:id"));
  EXPECT_TRUE(root.FirstChild("c").Remove());
  EXPECT_FALSE(root.Remove());
  EXPECT_TRUE(root.CreateChild("p:d").SetAttribute("p:e", L""));
  for (const auto name : {"", "1", "a b", "q:a", "xmlns:q", ":a", "a:", "a\xFF"}) {
    EXPECT_FALSE(root.CreateChild(name)) << name;
    EXPECT_FALSE(root.SetAttribute(name, L"")) << name;
  }
  EXPECT_FALSE(root.SetAttribute("xmlns", L"urn:x"));
  EXPECT_EQ(document.Bytes(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<a xmlns=\"\" xmlns:p=\"urn:p\">\n"
                              "  <b id=\"&lt;2&gt;\" xml:lang=\"de\">new<!-- c --></b>\n"
                              "  <p:b/>\n  <b id=\"3\"/>\n  <p:d p:e=\"\"/>\n</a>\n");
  EXPECT_EQ(Read("<a xmlns='urn:a'/>").Root().CreateChild("b").SelectNode("self::b"), WXmlNode())
    << "a child is in the default namespace, as it will be when it is read";
}

TEST(XmlNode, IsHarmlessWhenEmpty)
{
  WXmlNode none;
  EXPECT_EQ(none.Name(), "");
  EXPECT_EQ(none.Text(), L"");
  EXPECT_TRUE(none.Attributes().empty() && none.Children().empty());
  EXPECT_FALSE(none || none.Attribute("a") || none.SetText(L"") || none.SetAttribute("a", L"") ||
               none.RemoveAttribute("a") || none.Parent() || none.FirstChild() || none.Next() || none.SelectNode(".") ||
               none.CreateChild("a") || none.Remove());
  std::wstring text;
  EXPECT_FALSE(WXmlValueAccessor(none).ReadText("a", text) || WXmlValueAccessor(none).WriteText("a", L""));
}

TEST(XmlNode, OutlivesItsDocumentAndItsRemoval)
{
  // With a document type, and prefixes that are declared on another piece than the one that uses them.
  WXmlNode outer, inner;
  {
    const WXmlDoc document =
      Read("<!DOCTYPE a SYSTEM 's'><a><o xmlns:p='urn:p'><i p:id='1' xml:id='n'><p:k/></i></o></a>");
    outer = document.Root().FirstChild();
    inner = outer.FirstChild();
    EXPECT_TRUE(outer.Remove());
    EXPECT_FALSE(outer.Remove());
    EXPECT_TRUE(inner.Remove());
    EXPECT_EQ(document.Root().Children().size(), 0u);
    EXPECT_TRUE(document.Root().SetText(L"t"));
    EXPECT_TRUE(inner.RemoveAttribute("xml:id"));
    EXPECT_FALSE(document.Root().SelectNode("id('n')"));
  }
  EXPECT_EQ(inner.Attribute("p:id"), L"1");
  EXPECT_EQ(inner.FirstChild().Name(), "p:k");
  EXPECT_TRUE(inner.CreateChild("more").SetText(L"x"));
  EXPECT_EQ(outer.Children().size(), 0u);
  EXPECT_TRUE(outer.SelectNodes("//*").size() == 1) << "of the document: its root";
}

TEST(XmlNode, SelectsByXPathInDocumentOrder)
{
  const WXmlDoc regions = Read("<regions><region name='x'><geoID ID='AA'/><geoID ID=\"O'N &quot;\"/></region>"
                               "<region name='y'><geoID ID='BB'/></region></regions>");
  constexpr const char *kRegion = "//geoID[@ID=$code]/..";
  EXPECT_EQ(regions.Root().SelectNode(kRegion, {{"code", L"BB"}}).Attribute("name"), L"y");
  EXPECT_EQ(regions.Root().SelectNode(kRegion, {{"code", L"O'N \""}}).Attribute("name"), L"x");
  EXPECT_FALSE(regions.Root().SelectNode(kRegion, {{"code", L"'] | //*['"}}));
  std::string ids;
  for (const WXmlNode &node : regions.Root().SelectNodes("//geoID[@ID='BB'] | //geoID"))
    ids += Utf8FromWide(*node.Attribute("ID")) + ";";
  EXPECT_EQ(ids, "AA;O'N \";BB;");
  testing::internal::CaptureStderr();
  for (const char *const xpath :
       {"", "//[", "1 + 1", "//@ID", "$unknown", "q:a", "\xFF", "nothing()", "q:f()", "$q:v", "/"})
    EXPECT_TRUE(regions.Root().SelectNodes(xpath).empty()) << xpath;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

  WXmlDoc model = Read("<m:Model xmlns:m='urn:cdm' xmlns:w='urn:wcs'><m:ProfileName><w:Text>Screen</w:Text>"
                       "</m:ProfileName></m:Model>");
  model.DeclareNamespace("cdm", "urn:cdm");
  model.DeclareNamespace("wcs", "urn:wcs");
  EXPECT_EQ(model.Root().SelectNode("//cdm:ProfileName/wcs:Text").Text(), L"Screen");
}

TEST(XmlValueAccessor, ReadsAndWritesTypedValues)
{
  const WXmlDoc document =
    Read("<s><t> a b </t><n/><b> true\n</b><b id='1'>1</b><b id='0'>0</b><b id='x'>True</b>"
         "<d> 0.1 </d><d id='c'>0,1</d><d id='inf'>inf</d><i>-7</i><i id='big'>2147483648</i></s>");
  WXmlValueAccessor values(document.Root());
  std::wstring text = L"before";
  EXPECT_FALSE(values.ReadText("missing", text) || values.ReadText("t", text, L""));
  EXPECT_EQ(text, L"before");
  EXPECT_TRUE(values.ReadText("t", text));
  EXPECT_EQ(text, L" a b ");
  EXPECT_TRUE(values.ReadText("n", text));
  EXPECT_EQ(text, L"");

  bool flag = false;
  EXPECT_TRUE(values.ReadBool("b", flag) && flag);
  EXPECT_TRUE(values.ReadBool("b", flag, L"0") && !flag);
  EXPECT_TRUE(values.ReadBool("b", flag, L"1") && flag);
  EXPECT_FALSE(values.ReadBool("b", flag, L"x") || values.ReadBool("n", flag));

  double number = 5;
  EXPECT_FALSE(values.ReadDouble("d", number, L"c") || values.ReadDouble("d", number, L"inf"));
  EXPECT_EQ(number, 5);
  EXPECT_TRUE(values.ReadDouble("d", number));
  EXPECT_EQ(number, 0.1);
  std::int32_t whole = 5;
  EXPECT_FALSE(values.ReadInteger("i", whole, L"big") || values.ReadInteger("d", whole));
  EXPECT_TRUE(values.ReadInteger("i", whole));
  EXPECT_EQ(whole, -7);
  std::int64_t large = 0;
  EXPECT_TRUE(values.ReadInteger("i", large, L"big"));
  EXPECT_EQ(large, 2147483648);

  const WXmlDoc fresh = Read("<s><b id='kept'>x</b></s>");
  WXmlValueAccessor writer(fresh.Root());
  EXPECT_TRUE(writer.WriteBool("b", true, L"kept") && writer.WriteBool("c", false) && writer.WriteDouble("d", 0.1) &&
              writer.WriteInteger("i", -7) && writer.WriteText("t", L"a<b", L"n"));
  EXPECT_FALSE(writer.WriteDouble("d", HUGE_VAL) || writer.WriteDouble("e", NAN) || writer.WriteText("a b", L""));
  EXPECT_EQ(fresh.Bytes(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<s>\n  <b id=\"kept\">true</b>\n  <c>false</c>\n"
            "  <d>0.1</d>\n  <i>-7</i>\n  <t id=\"n\">a&lt;b</t>\n</s>\n");
}

TEST(XmlValueAccessor, TellsApartChildrenByAnyId)
{
  const WXmlDoc document = Read("<s/>");
  WXmlValueAccessor values(document.Root());
  const std::wstring ids[] = {
    L"",         L"a",  L"O'Neil", L"\"A\"", L"O'Neil \"A\"", L"$id",
    L"']|//*['", L" a", L"a\nb",   L"\x01",  L"日本",         std::wstring(3000, L'\'') + std::wstring(3000, L'"')};
  for (const std::wstring &id : ids)
    EXPECT_TRUE(values.WriteText("p", L"first " + id, id));
  for (const std::wstring &id : ids)
    EXPECT_TRUE(values.WriteText("p", id, id));
  ASSERT_EQ(document.Root().Children().size(), std::size(ids)) << "each is written once and then reused";
  const WXmlDoc again = Read(document.Bytes());
  for (const std::wstring &id : ids) {
    std::wstring text;
    EXPECT_TRUE(WXmlValueAccessor(again.Root()).ReadText("p", text, id));
    EXPECT_EQ(text, id == L"\x01" ? L"\uFFFD" : id);
  }
  WXmlNode old = values.Find("p", L"a");
  EXPECT_NE(values.Recreate("p", L"a"), old);
  EXPECT_EQ(document.Root().Children().back().Attribute("id"), L"a");
  EXPECT_TRUE(values.Remove("p", L"O'Neil"));
  EXPECT_FALSE(values.Remove("p", L"O'Neil"));
  EXPECT_EQ(document.Root().Children().size(), std::size(ids) - 1);
}

TEST(ReadXml, TellsEverythingInOrderAndTextInOnePiece)
{
  Log log;
  std::string reason;
  const std::string longText = Repeated(50'000, "&amp;ä");
  ASSERT_TRUE(ReadXml("<p:a xmlns:p='u' b='&amp;&#38;&quot;1\n2' p:c=''>t<!-- c -->&lt;<![CDATA[<]]><?p?>u<d/> </p:a>"s,
                      log, reason))
    << reason;
  EXPECT_EQ(log.heard, "(p:a b=&&\"1 2 p:c=[t<<u](d)d[ ])p:a");
  log.heard.clear();
  ASSERT_TRUE(ReadXml("<a b='" + longText + "'>" + longText + "</a>", log, reason)) << reason;
  EXPECT_EQ(log.heard, "(a b=" + Repeated(50'000, "&ä") + "[" + Repeated(50'000, "&ä") + "])a");
}

TEST(ReadXml, EndsWhenItsHandlerSaysOrThrows)
{
  Log log;
  std::string reason;
  log.refused = "no";
  EXPECT_FALSE(ReadXml("<a>\nb<c/>\n<no/><d/></a>"s, log, reason));
  EXPECT_EQ(reason, "line 3: no no here");
  EXPECT_EQ(log.heard, "(a[\nb](c)c[\n]");
  EXPECT_THROW(ReadXml("<a><throw/><b/></a>"s, log, reason), std::out_of_range);
  EXPECT_THAT(log.heard, testing::EndsWith("(a"));
}

TEST(ValidateXml, SaysWhereADocumentIsNotWhatTheSchemaSays)
{
  const tests::TemporaryFolder folder;
  const auto schema = [&folder](const std::string &text) {
    return folder.Write("schema.xsd", {text.begin(), text.end()});
  };
  const std::string path = schema("<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema'><s:element name='a'>"
                                  "<s:complexType><s:sequence><s:element name='b' type='s:int'/></s:sequence>"
                                  "</s:complexType></s:element></s:schema>");
  testing::internal::CaptureStderr();
  std::string reason;
  EXPECT_TRUE(ValidateXml("<a>\n<b>1</b>\n</a>", path, reason)) << reason;
  EXPECT_FALSE(ValidateXml("<a>\n<b>x</b></a>", path, reason));
  EXPECT_THAT(reason, testing::StartsWith("line 2: Element 'b'"));
  EXPECT_FALSE(ValidateXml("<a>" + Repeated(70'000, "\n") + "<c/></a>", path, reason));
  EXPECT_THAT(reason, testing::StartsWith("beyond line 65534: Element 'c'"));
  EXPECT_FALSE(ValidateXml("<a>", path, reason));
  EXPECT_THAT(reason, HasSubstr("ends too early"));
  for (const char *const bad : {"", "<a/>",
                                "<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema'><s:element name='a' "
                                "type='none'/></s:schema>"})
  {
    EXPECT_FALSE(ValidateXml("<a/>", schema(bad), reason)) << bad;
    EXPECT_THAT(reason, HasSubstr("schema.xsd: ")) << bad;
  }
  EXPECT_FALSE(ValidateXml("<a/>", folder.Path("missing.xsd"), reason));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Xml, ManyThreadsReadAtOnce)
{
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([i] {
      for (int round = 0; round < 50; ++round) {
        const WXmlDoc document = Read("<a>" + Repeated(i + 1, "<b id='x'>1</b>") + "</a>");
        EXPECT_EQ(document.Root().SelectNodes("./b[@id='x']").size(), static_cast<std::size_t>(i) + 1);
        EXPECT_NE(WhyRefused("<a>"), "");
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
}

} // namespace
