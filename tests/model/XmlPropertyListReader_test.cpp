#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/PropertyListCodec.h"
#include "model/RawBinaryList.h"

namespace vorn {
namespace {

using test::bytesOf;

std::string document(const std::string& value) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n" +
         value + "\n</plist>\n";
}

// The value of a document, or a string that cannot be mistaken for one.
PropertyList valueOf(const std::string& value) {
  std::string error;
  const std::optional<PropertyList> decoded = decodeXmlPropertyList(bytesOf(document(value)), &error);
  return decoded ? *decoded : PropertyList("error: " + error);
}

std::string errorOf(const std::string& text) {
  std::string error;
  const std::optional<PropertyList> value = decodeXmlPropertyList(bytesOf(text), &error);
  return value ? "decoded to " + value->description() : error;
}

TEST(XmlPropertyListReaderTest, HoldsEveryType) {
  const PropertyList expected =
      PropertyList::dictionary({{"array", PropertyList::array({1, PropertyList::array(), PropertyList::dictionary()})},
                                {"data", PropertyList::data(bytesOf("Hello"))},
                                {"date", PropertyList::Date{0}},
                                {"false", false},
                                {"real", 2.5},
                                {"string", "text"},
                                {"true", true}});
  EXPECT_EQ(valueOf("<dict>"
                    "<key>array</key><array><integer>1</integer><array/><dict></dict></array>"
                    "<key>data</key><data>SGVsbG8=</data>"
                    "<key>date</key><date>2001-01-01T00:00:00Z</date>"
                    "<key>false</key><false/>"
                    "<key>real</key><real>2.5</real>"
                    "<key>string</key><string>text</string>"
                    "<key>true</key><true></true>"
                    "</dict>"),
            expected);
}

TEST(XmlPropertyListReaderTest, MayLackItsHeaderAndItsRootElement) {
  EXPECT_EQ(decodeXmlPropertyList(bytesOf("<plist><true/></plist>")), PropertyList(true));
  EXPECT_EQ(decodeXmlPropertyList(bytesOf("<dict><key>a</key><integer>1</integer></dict>")),
            PropertyList::dictionary({{"a", 1}}));
}

TEST(XmlPropertyListReaderTest, KeepsTheBlanksAndLinesOfAString) {
  EXPECT_EQ(valueOf("<string> a\n\tb </string>"), PropertyList(" a\n\tb "));
  EXPECT_EQ(valueOf("<string/>"), PropertyList(""));
  EXPECT_EQ(valueOf("<string>a&lt;b&amp;c&#233;&#x20AC;<![CDATA[<d>&amp;]]></string>"),
            PropertyList("a<b&c\u00e9\u20ac<d>&amp;"));
  EXPECT_EQ(valueOf("<string>a<!-- comment -->b</string>"), PropertyList("ab"));
}

TEST(XmlPropertyListReaderTest, KeepsTheLastValueOfAKeyGivenTwice) {
  EXPECT_EQ(valueOf("<dict><key>a</key><integer>1</integer><key>a</key><integer>2</integer></dict>"),
            PropertyList::dictionary({{"a", 2}}));
}

TEST(XmlPropertyListReaderTest, ReadsIntegersInDecimalAndHexadecimal) {
  const std::vector<std::pair<const char*, PropertyList>> table = {
      {"0", 0},
      {"-0", 0},
      {"+12", 12},
      {" 42\n", 42},
      {"007", 7},
      {"0x1F", 31},
      {"0Xff", 255},
      {"-0x10", -16},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
      {"18446744073709551615", std::numeric_limits<std::uint64_t>::max()},
      {"0xFFFFFFFFFFFFFFFF", std::numeric_limits<std::uint64_t>::max()}};
  for (const auto& [text, value] : table) {
    EXPECT_EQ(valueOf("<integer>" + std::string(text) + "</integer>"), value) << text;
  }
}

TEST(XmlPropertyListReaderTest, RefusesWhatIsNoInteger) {
  for (const char* text : {"", " ", "-", "+-1", "--1", "1.5", "1e3", "0x", "0xG", "12a", "1 2", "18446744073709551616",
                           "-9223372036854775809", "0x10000000000000000"}) {
    EXPECT_EQ(errorOf("<integer>" + std::string(text) + "</integer>"), "line 1: an integer is malformed") << text;
  }
}

TEST(XmlPropertyListReaderTest, ReadsReals) {
  const std::vector<std::pair<const char*, double>> table = {{"0.1", 0.1},
                                                             {"-2.5e-3", -0.0025},
                                                             {"+7", 7},
                                                             {" 1E10 ", 1e10},
                                                             {".5", 0.5},
                                                             {"-0", -0.0},
                                                             {"inf", std::numeric_limits<double>::infinity()},
                                                             {"-infinity", -std::numeric_limits<double>::infinity()},
                                                             {"nan", std::nan("")}};
  for (const auto& [text, value] : table) {
    const PropertyList decoded = valueOf("<real>" + std::string(text) + "</real>");
    EXPECT_EQ(decoded, PropertyList(value)) << text;
    EXPECT_EQ(std::signbit(decoded.toDouble()), std::signbit(value)) << text;
  }
  for (const char* text : {"", "1,5", "0x10", "1.5f", "--1", "e5"}) {
    EXPECT_EQ(errorOf("<real>" + std::string(text) + "</real>"), "line 1: a real is malformed") << text;
  }
}

TEST(XmlPropertyListReaderTest, ReadsDatesBeforeAndAfterTheReferenceDate) {
  const std::vector<std::pair<const char*, double>> table = {{"2001-01-01T00:00:00Z", 0},
                                                             {"2001-01-01T00:00:01Z", 1},
                                                             {"2000-12-31T23:59:59Z", -1},
                                                             {"1970-01-01T00:00:00Z", -978307200},
                                                             {"1969-12-31T23:59:59Z", -978307201},
                                                             {"2012-02-29T13:05:07Z", 352213507},
                                                             {"2000-02-29T00:00:00Z", -26524800},
                                                             {"1900-03-01T00:00:00Z", -3182198400},
                                                             {"0001-01-01T00:00:00Z", -63113904000},
                                                             {"9999-12-31T23:59:59Z", 252423993599}};
  for (const auto& [text, seconds] : table) {
    EXPECT_EQ(valueOf("<date>" + std::string(text) + "</date>"), PropertyList(PropertyList::Date{seconds})) << text;
    EXPECT_EQ(PropertyList(PropertyList::Date{seconds}).description(), text);
  }
}

TEST(XmlPropertyListReaderTest, RefusesWhatIsNoDate) {
  for (const char* text :
       {"", "2001-01-01", "2001-01-01T00:00:00", "2001-13-01T00:00:00Z", "2001-00-01T00:00:00Z", "2001-02-29T00:00:00Z",
        "1900-02-29T00:00:00Z", "2001-01-32T00:00:00Z", "2001-01-01T24:00:00Z", "2001-01-01T00:60:00Z",
        "2001-01-01T00:00:61Z", "2001-01-01 00:00:00Z", "2001-1-1T00:00:00Z", "+001-01-01T00:00:00Z"}) {
    EXPECT_EQ(errorOf("<date>" + std::string(text) + "</date>"), "line 1: a date is malformed") << text;
  }
}

TEST(XmlPropertyListReaderTest, ReadsDataAsBase64) {
  const std::vector<std::pair<const char*, std::string>> table = {{"", ""},
                                                                  {"QQ==", "A"},
                                                                  {"QQ", "A"},
                                                                  {"QUI=", "AB"},
                                                                  {"QUJD", "ABC"},
                                                                  {"\n\tQU\n\tJD\n", "ABC"},
                                                                  {"+/8=", "\xFB\xFF"}};
  for (const auto& [text, bytes] : table) {
    EXPECT_EQ(valueOf("<data>" + std::string(text) + "</data>"), PropertyList::data(bytesOf(bytes))) << text;
  }
  for (const char* text : {"Q", "QUJDR", "Q*==", "QQ==QQ==", "Q-_="}) {
    EXPECT_EQ(errorOf("<data>" + std::string(text) + "</data>"), "line 1: data is malformed") << text;
  }
}

TEST(XmlPropertyListReaderTest, RefusesAMalformedStructure) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"<plist/>", "there is no value"},
      {"<plist><true/><true/></plist>", "true is not expected here"},
      {"<plist><plist><true/></plist></plist>", "plist is not expected here"},
      {"<array><plist/></array>", "plist is not expected here"},
      {"<key>a</key>", "key is not expected here"},
      {"<array><key>a</key></array>", "key is not expected here"},
      {"<plist><key>a</key></plist>", "key is not expected here"},
      {"<dict><true/></dict>", "true is not expected here"},
      {"<dict><key>a</key></dict>", "a key has no value"},
      {"<dict><key>a</key><key>b</key><true/></dict>", "key is not expected here"},
      {"<dict><key>a</key><true/><true/></dict>", "true is not expected here"},
      {"<dict>text</dict>", "there is text between the elements"},
      {"<array>text<true/></array>", "there is text between the elements"},
      {"<plist>text</plist>", "there is text between the elements"},
      {"<string><true/></string>", "a value holds an element"},
      {"<true><true/></true>", "a value holds an element"},
      {"<html/>", "html is no element of a property list"},
      {"<Dict/>", "Dict is no element of a property list"}};
  for (const auto& [text, error] : table) EXPECT_EQ(errorOf(text), "line 1: " + std::string(error)) << text;
}

TEST(XmlPropertyListReaderTest, TellsTheLineOfAnError) {
  EXPECT_EQ(errorOf(document("<array>\n<integer>1</integer>\n<integer>x</integer>\n</array>")),
            "line 6: an integer is malformed");
  EXPECT_EQ(errorOf("<array>\n</dict>"), "line 2: mismatched tag");
  EXPECT_EQ(errorOf(""), "line 1: no element found");
  EXPECT_EQ(errorOf("<array>"), "line 1: no element found");
  EXPECT_EQ(errorOf("<true/><true/>"), "line 1: junk after document element");
}

TEST(XmlPropertyListReaderTest, RefusesEntitiesOfItsOwn) {
  EXPECT_EQ(errorOf("<!DOCTYPE plist [<!ENTITY a \"x\">]><string>&a;</string>"),
            "line 1: entity declarations are not supported");
  EXPECT_EQ(errorOf("<!DOCTYPE plist [<!ENTITY % a \"x\">]><true/>"), "line 1: entity declarations are not supported");
  EXPECT_EQ(errorOf("<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/hostname\">]><string>&a;</string>"),
            "line 1: entity declarations are not supported");
  EXPECT_EQ(errorOf("<!DOCTYPE plist SYSTEM \"file:///nowhere.dtd\"><string>&a;</string>"),
            "line 1: a is no entity of a property list");
  EXPECT_EQ(errorOf("<string>&a;</string>"), "line 1: undefined entity");
}

std::string nested(std::size_t levels) {
  std::string text;
  for (std::size_t i = 0; i < levels; ++i) text += "<array>";
  for (std::size_t i = 0; i < levels; ++i) text += "</array>";
  return text;
}

TEST(XmlPropertyListReaderTest, IsTakenUpToTheGreatestDepthOnly) {
  const PropertyList deepest = valueOf(nested(maximumDepth));
  EXPECT_TRUE(deepest.isArray());
  EXPECT_TRUE(encodeBinaryPropertyList(deepest));
  EXPECT_EQ(errorOf("<plist>" + nested(maximumDepth + 1) + "</plist>"),
            "line 1: the property list is nested too deeply");
  EXPECT_EQ(errorOf(nested(maximumDepth + 1)), "line 1: the property list is nested too deeply");
  EXPECT_EQ(errorOf(nested(200000)), "line 1: the property list is nested too deeply");
}

TEST(XmlPropertyListReaderTest, ReadsScalarsAtTheGreatestDepth) {
  std::string text = "<true/>";
  for (std::size_t i = 0; i < maximumDepth; ++i) text = "<array>" + text + "</array>";
  EXPECT_TRUE(decodeXmlPropertyList(bytesOf("<plist>" + text + "</plist>")));
  EXPECT_TRUE(decodeXmlPropertyList(bytesOf(text)));
}

TEST(XmlPropertyListReaderTest, OfMoreThanTheGreatestSizeIsRefused) {
  EXPECT_EQ(errorOf(std::string(maximumSize + 1, ' ')), "the property list is too large");
}

TEST(XmlPropertyListReaderTest, MayBeUtf16WithAByteOrderMark) {
  const std::string text = "<plist><string>\u00e9</string></plist>";
  Bytes big{0xFE, 0xFF};
  Bytes little{0xFF, 0xFE};
  for (const char character : std::string("<plist><string>\xE9</string></plist>")) {
    const auto byte = static_cast<std::uint8_t>(character);
    big.insert(big.end(), {0, byte});
    little.insert(little.end(), {byte, 0});
  }
  EXPECT_EQ(decodePropertyList(big), PropertyList("\u00e9"));
  EXPECT_EQ(decodePropertyList(little), PropertyList("\u00e9"));
  EXPECT_EQ(decodePropertyList(bytesOf("\xEF\xBB\xBF" + text)), PropertyList("\u00e9"));
}

TEST(XmlPropertyListReaderTest, TruncatedAnywhereDecodesToNothing) {
  const std::string whole = document(
      "<dict><key>a</key><array><integer>1</integer><real>0.5</real><data>QUJD</data></array>"
      "<key>b</key><date>2001-01-01T00:00:00Z</date><key>c</key><string>&amp;</string></dict>");
  const std::size_t end = whole.rfind("</plist>") + 8;
  for (std::size_t size = 0; size < end; ++size) {
    EXPECT_FALSE(decodeXmlPropertyList(bytesOf(whole.substr(0, size)))) << size;
  }
}

TEST(XmlPropertyListReaderTest, WithAnyOneByteChangedIsHarmless) {
  const std::string whole =
      "<plist><dict><key>a</key><array><integer>1</integer><real>.5</real><data>QUJD</data>"
      "<date>2001-01-01T00:00:00Z</date><string>&amp;</string><true/></array></dict></plist>";
  for (std::size_t place = 0; place < whole.size(); ++place) {
    for (int value = 0; value < 256; ++value) {
      std::string changed = whole;
      changed[place] = static_cast<char>(value);
      std::string error;
      const std::optional<PropertyList> decoded = decodePropertyList(bytesOf(changed), &error);
      if (!decoded) {
        ASSERT_FALSE(error.empty());
        continue;
      }
      const std::optional<Bytes> bytes = encodeBinaryPropertyList(*decoded);
      ASSERT_TRUE(bytes);
      ASSERT_EQ(decodeBinaryPropertyList(*bytes), *decoded);
    }
  }
}

}  // namespace
}  // namespace vorn
