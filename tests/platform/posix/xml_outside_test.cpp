// What XML names outside of its document, watched through a pipe and a port.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/xml.h"
#include "zelclr/platform/xml_reader.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ZelUtl;
using testing::HasSubstr;

namespace {

struct Nobody : XmlHandler
{
  bool StartElement(std::string_view, std::span<const XmlAttribute>, std::string &) override { return true; }
  bool Text(std::string_view, std::string &) override { return true; }
  bool EndElement(std::string_view, std::string &) override { return true; }
};

/// Read as a tree and as a stream.
std::string WhyRefused(std::string_view bytes)
{
  std::string ofTree, ofStream;
  Nobody nobody;
  WXmlDoc::FromBytes(bytes, ofTree);
  ReadXml(bytes, nobody, ofStream);
  return ofTree + ofStream;
}

TEST(XmlOutside, OfTheDocumentIsNeverOpened)
{
  // To open the pipe would block for ever, to fetch from the port would leave a connection waiting.
  const tests::TemporaryFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto *const any = reinterpret_cast<sockaddr *>(&address);
  ASSERT_EQ(::bind(listener, any, size), 0);
  ASSERT_EQ(::listen(listener, 5), 0);
  ASSERT_EQ(::getsockname(listener, any, &size), 0);
  const std::string port = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/x";

  const std::string schema = folder.Path("schema.xsd");
  for (const std::string &place : {pipe, "file://" + pipe, port}) {
    for (const std::string &begin :
         {"<!DOCTYPE a SYSTEM '" + place + "'>", "<!DOCTYPE a [<!ENTITY % x SYSTEM '" + place + "'> %x;]>"})
      EXPECT_NE(WhyRefused(begin + "<a>&x;</a>"), "") << begin;
    EXPECT_EQ(WhyRefused("<!DOCTYPE a SYSTEM '" + place + "'><a/>"), "");
    EXPECT_EQ(WhyRefused("<?xml-stylesheet href='" + place +
                         "'?><a xmlns:i='http://www.w3.org/2001/XInclude'>"
                         "<i:include href='" +
                         place + "'/></a>"),
              "");
    std::string reason;
    for (const char *const taking : {"import", "include", "redefine"}) {
      const std::string text = "<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema'><s:" + std::string(taking) +
                               " schemaLocation='" + place + "'/><s:element name='a'/></s:schema>";
      folder.WriteText("schema.xsd", text);
      EXPECT_FALSE(ValidateXml("<a/>", schema, reason));
      EXPECT_THAT(reason, HasSubstr("takes in other files"));
    }
    const std::string plain = "<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema'><s:element name='a'/></s:schema>";
    folder.WriteText("schema.xsd", plain);
    EXPECT_TRUE(ValidateXml("<a xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:schemaLocation='u " + place +
                              "' i:noNamespaceSchemaLocation='" + place + "'/>",
                            schema, reason))
      << reason;
  }
  EXPECT_EQ(::accept(listener, nullptr, nullptr), -1);
  ::close(listener);
}

} // namespace
