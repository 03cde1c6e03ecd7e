// Our codec beside two others: Python's plistlib and plistutil. Each test is skipped where its tool is missing.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>

#include "model/PropertyListCodec.h"
#include "model/RawBinaryList.h"
#include "support/StandardBundle.h"

namespace vorn {
namespace {

using Type = PropertyList::Type;

std::string hexadecimal(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned>(static_cast<std::uint8_t>(byte)));
    text += digits.data();
  }
  return text;
}

std::string bitsOf(double value) {
  std::array<char, 17> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx",
                static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(value)));
  return digits.data();
}

// The notation of plistlib_oracle.py.
std::string notation(const PropertyList& value) {
  std::string text;
  switch (value.type()) {
    case Type::None:
      return "none";
    case Type::Boolean:
      return value.toBool() ? "b1" : "b0";
    case Type::Integer:
      return "i" + std::to_string(value.toInt64());
    case Type::Unsigned:
      return "i" + std::to_string(value.toUnsigned());
    case Type::Real:
      return "r" + bitsOf(value.toDouble());
    case Type::Date:
      return "t" + bitsOf(value.date().seconds);
    case Type::String:
      return "s" + hexadecimal(value.string());
    case Type::Data:
      return "d" + hexadecimal({reinterpret_cast<const char*>(value.bytes().data()), value.bytes().size()});
    case Type::Uid:
      return "u" + std::to_string(value.uid().value);
    case Type::Array:
      for (const PropertyList& element : value.elements()) text += notation(element) + " ";
      return "[ " + text + "]";
    case Type::Dictionary:
      for (std::size_t i = 0; i < value.size(); ++i) {
        text += "s" + hexadecimal(value.keyAt(i)) + " " + notation(value.valueAt(i)) + " ";
      }
      return "{ " + text + "}";
  }
  return text;
}

class Oracle : public testing::Test {
 protected:
  Oracle() {
    std::string pattern = (std::filesystem::temp_directory_path() / "skarn-oracle-XXXXXX").string();
    mFolder = ::mkdtemp(pattern.data());
  }
  ~Oracle() override { std::filesystem::remove_all(mFolder); }

  std::string path(const std::string& name) const { return (mFolder / name).string(); }

  void write(const std::string& name, const Bytes& bytes) const {
    std::ofstream(path(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
  Bytes read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  static bool run(const std::string& command) { return std::system(command.c_str()) == 0; }

  std::filesystem::path mFolder;
};

class PropertyListCodecPythonTest : public Oracle {
 protected:
  void SetUp() override {
    if (::access("/usr/bin/python3", X_OK) != 0) GTEST_SKIP() << "/usr/bin/python3 is not installed";
  }

  static std::string script() { return "/usr/bin/python3 " SKARN_ORACLE_SCRIPT " "; }

  // What plistlib finds in bytes that we wrote.
  std::string described(const Bytes& bytes) const {
    write("ours.plist", bytes);
    EXPECT_TRUE(run(script() + "describe " + path("ours.plist") + " > " + path("described")));
    const Bytes text = read("described");
    return {text.begin(), text.end() - (text.empty() ? 0 : 1)};
  }

  // What plistlib makes of a value.
  Bytes written(const PropertyList& value, const std::string& format) const {
    write("notation", test::bytesOf(notation(value)));
    EXPECT_TRUE(run(script() + "write " + format + " " + path("theirs.plist") + " < " + path("notation")));
    return read("theirs.plist");
  }
};

// Values that the binary form tells apart and the XML form does, too, the UID excepted.
PropertyList manyValues() {
  std::vector<PropertyList> integers;
  for (int bit = 0; bit < 64; ++bit) {
    const std::uint64_t power = std::uint64_t{1} << bit;
    for (const std::uint64_t number : {power - 1, power, power + 1}) {
      integers.emplace_back(number);
      integers.emplace_back(-static_cast<std::int64_t>(number >> 1));
    }
  }
  std::vector<PropertyList> texts;
  for (const std::size_t length : {0u, 1u, 14u, 15u, 16u, 254u, 255u, 256u, 300u, 70000u}) {
    texts.emplace_back(std::string(length, 'x'));
    std::string letters;
    for (std::size_t i = 0; i < length; ++i) letters += "\u20ac";
    texts.emplace_back(letters);
    texts.push_back(PropertyList::data(Bytes(length, 0x80)));
    texts.push_back(PropertyList::array(std::vector<PropertyList>(std::min<std::size_t>(length, 300), 7)));
  }
  return PropertyList::dictionary(
      {{"", "empty key"},
       {"dates",
        PropertyList::array({PropertyList::Date{0}, PropertyList::Date{-978307200}, PropertyList::Date{352213507},
                             PropertyList::Date{-63113904000}, PropertyList::Date{252423993599}})},
       {"integers", PropertyList::array(integers)},
       {"k\u00e9y \U0001F600", PropertyList::array({true, false, PropertyList::array(), PropertyList::dictionary()})},
       {"reals", PropertyList::array({0.0, -0.0, 0.1, 1e300, 5e-324, -1.5, std::numeric_limits<double>::infinity()})},
       {"texts", PropertyList::array(texts)},
       {"unicode", "z\u00e9\u20ac\U0001F600\u0301 \"<&>'"}});
}

TEST_F(PropertyListCodecPythonTest, ReadsWhatWeWrite) {
  for (const PropertyList& value : {manyValues(), test::standardBundle()}) {
    EXPECT_EQ(described(encodeBinaryPropertyList(value).value()), notation(value));
  }
  const PropertyList sample = test::sampleOfAllKinds();
  EXPECT_EQ(described(encodeBinaryPropertyList(sample).value()), notation(sample));
}

TEST_F(PropertyListCodecPythonTest, WritesTheSameBytesAsWe) {
  for (const PropertyList& value :
       {test::sampleOfAllKinds(), test::standardBundle(), test::bundleWithMacros(400), PropertyList::dictionary()}) {
    EXPECT_TRUE(written(value, "binary") == encodeBinaryPropertyList(value)) << value.description(200);
  }
}

TEST_F(PropertyListCodecPythonTest, WritesBinaryListsThatWeRead) {
  for (const PropertyList& value : {manyValues(), test::sampleOfAllKinds()}) {
    std::string error;
    EXPECT_EQ(decodeBinaryPropertyList(written(value, "binary"), &error), value) << error;
  }
}

TEST_F(PropertyListCodecPythonTest, WritesXmlListsThatWeRead) {
  std::string error;
  EXPECT_EQ(decodeXmlPropertyList(written(manyValues(), "xml"), &error), manyValues()) << error;
  EXPECT_EQ(decodeXmlPropertyList(written(test::standardBundle(), "xml"), &error), test::standardBundle()) << error;
}

// A value of at most so many levels, of every type that both formats hold.
PropertyList randomValue(std::mt19937_64& random, int levels) {
  const auto text = [&random] {
    static const std::vector<std::string> letters = {"a", "Z", " ", "\u00e9", "\u20ac", "\U0001F600", "\"", "<"};
    std::string result;
    for (std::size_t i = random() % 20; i > 0; --i) result += letters[random() % letters.size()];
    return result;
  };
  switch (random() % (levels > 0 ? 8 : 6)) {
    case 0:
      return (random() & 1) != 0;
    case 1:
      return static_cast<std::int64_t>(random()) >> (random() % 64);
    case 2:
      return random() >> (random() % 64);
    case 3:
      return static_cast<double>(static_cast<std::int64_t>(random())) / 1024;
    case 4:
      return text();
    case 5:
      return PropertyList::data(Bytes(random() % 40, static_cast<std::uint8_t>(random())));
    case 6: {
      std::vector<PropertyList> elements(random() % 20);
      for (PropertyList& element : elements) element = randomValue(random, levels - 1);
      return PropertyList::array(elements);
    }
    default: {
      PropertyList dictionary = PropertyList::dictionary();
      for (std::size_t i = random() % 20; i > 0; --i)
        dictionary = dictionary.with(text(), randomValue(random, levels - 1));
      return dictionary;
    }
  }
}

TEST_F(PropertyListCodecPythonTest, AgreesOnRandomValuesBothWays) {
  std::mt19937_64 random(273);
  for (int round = 0; round < 12; ++round) {
    std::vector<PropertyList> elements(50);
    for (PropertyList& element : elements) element = randomValue(random, 4);
    const PropertyList value = PropertyList::array(elements);
    const Bytes ours = encodeBinaryPropertyList(value).value();
    EXPECT_EQ(described(ours), notation(value));
    EXPECT_TRUE(written(value, "binary") == ours);
    EXPECT_EQ(decodeXmlPropertyList(written(value, "xml")), value);
  }
}

class PropertyListCodecPlistutilTest : public Oracle {
 protected:
  void SetUp() override {
    if (::access("/usr/bin/plistutil", X_OK) != 0) GTEST_SKIP() << "/usr/bin/plistutil is not installed";
  }

  Bytes converted(const Bytes& bytes, const std::string& format) const {
    write("from.plist", bytes);
    EXPECT_TRUE(run("/usr/bin/plistutil -f " + format + " -i " + path("from.plist") + " -o " + path("to.plist")));
    return read("to.plist");
  }
};

// Without infinite reals, which it does not write, and the far dates, which it does not hold.
PropertyList valuesForPlistutil() {
  return manyValues().without("dates").with("reals", PropertyList::array({0.0, 0.5, -1.5, 1024.25}));
}

TEST_F(PropertyListCodecPlistutilTest, ReadsWhatWeWriteAndWritesXmlThatWeRead) {
  for (const PropertyList& value : {valuesForPlistutil(), test::standardBundle()}) {
    std::string error;
    const std::optional<PropertyList> back =
        decodeXmlPropertyList(converted(encodeBinaryPropertyList(value).value(), "xml"), &error);
    EXPECT_TRUE(back == value) << error << (back ? back->description() : "");
  }
}

TEST_F(PropertyListCodecPlistutilTest, WritesBinaryListsThatWeRead) {
  for (const PropertyList& value : {valuesForPlistutil(), test::standardBundle()}) {
    const Bytes xml = converted(encodeBinaryPropertyList(value).value(), "xml");
    std::string error;
    const std::optional<PropertyList> back = decodeBinaryPropertyList(converted(xml, "bin"), &error);
    EXPECT_TRUE(back == value) << error << (back ? back->description() : "");
  }
}

}  // namespace
}  // namespace vorn
