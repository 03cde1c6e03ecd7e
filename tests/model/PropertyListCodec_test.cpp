#include "model/PropertyListCodec.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "model/RawBinaryList.h"

namespace vorn {
namespace {

using test::bytesOf;

std::string errorOf(std::string_view text) {
  std::string error;
  EXPECT_FALSE(decodePropertyList(bytesOf(text), &error));
  return error;
}

TEST(PropertyListCodecTest, IsToldByTheFirstBytes) {
  const Bytes binary = encodeBinaryPropertyList(test::sampleOfAllKinds()).value();
  EXPECT_EQ(decodePropertyList(binary), test::sampleOfAllKinds());
  EXPECT_EQ(decodePropertyList(bytesOf("<true/>")), PropertyList(true));
  EXPECT_EQ(decodePropertyList(bytesOf(" \r\n\t<true/>")), PropertyList(true));
}

TEST(PropertyListCodecTest, OfTheOlderTextFormIsRefusedClearly) {
  const std::string refusal = "neither a binary nor an XML property list; the older text format is not supported";
  for (const char* text : {"{ a = 1; }", "( 1, 2 )", "\"text\"", "// comment\n{}", "word", "a = b;"}) {
    EXPECT_EQ(errorOf(text), refusal) << text;
  }
}

TEST(PropertyListCodecTest, OfAnotherBinaryVersionIsRefusedClearly) {
  EXPECT_EQ(errorOf("bplist15 and so on"), "this version of the binary property-list format is not supported");
  EXPECT_EQ(errorOf("bplist"), "this version of the binary property-list format is not supported");
}

TEST(PropertyListCodecTest, OfNothingIsRefusedClearly) {
  EXPECT_EQ(errorOf(""), "there are no bytes");
}

class PropertyListCodecFileTest : public testing::Test {
 protected:
  PropertyListCodecFileTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "skarn-files-XXXXXX").string();
    mFolder = ::mkdtemp(pattern.data());
  }
  ~PropertyListCodecFileTest() override { std::filesystem::remove_all(mFolder); }

  std::string path(const std::string& name) const { return (mFolder / name).string(); }

  std::string write(const std::string& name, const Bytes& bytes) const {
    std::ofstream(path(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path(name);
  }

  // The error without the path that it starts with.
  std::string errorOfReading(const std::string& name) const {
    std::string error;
    EXPECT_FALSE(readPropertyListFile(path(name), &error));
    EXPECT_EQ(error.substr(0, path(name).size() + 2), path(name) + ": ");
    return error.substr(std::min(error.size(), path(name).size() + 2));
  }

  std::filesystem::path mFolder;
};

TEST_F(PropertyListCodecFileTest, IsReadInEitherFormat) {
  const std::string binary = write("binary.plist", encodeBinaryPropertyList(test::sampleOfAllKinds()).value());
  EXPECT_EQ(readPropertyListFile(binary), test::sampleOfAllKinds());
  EXPECT_EQ(readPropertyListFile(write("xml.plist", bytesOf("<plist><integer>5</integer></plist>"))), PropertyList(5));
}

TEST_F(PropertyListCodecFileTest, ThatDoesNotExistIsAnError) {
  EXPECT_EQ(errorOfReading("missing.plist"), "No such file or directory");
}

TEST_F(PropertyListCodecFileTest, ThatIsAFolderIsAnError) {
  std::filesystem::create_directory(path("folder.plist"));
  EXPECT_EQ(errorOfReading("folder.plist"), "not a regular file");
}

TEST_F(PropertyListCodecFileTest, ThatIsAPipeIsAnErrorAndNotWaitedFor) {
  ASSERT_EQ(::mkfifo(path("pipe.plist").c_str(), 0600), 0);
  EXPECT_EQ(errorOfReading("pipe.plist"), "not a regular file");
}

TEST_F(PropertyListCodecFileTest, ThatIsEmptyIsAnError) {
  write("empty.plist", {});
  EXPECT_EQ(errorOfReading("empty.plist"), "there are no bytes");
}

TEST_F(PropertyListCodecFileTest, ThatIsTooLargeIsAnErrorBeforeItIsRead) {
  write("large.plist", bytesOf("bplist00"));
  std::filesystem::resize_file(path("large.plist"), std::uintmax_t{1} << 40);  // sparse
  EXPECT_EQ(errorOfReading("large.plist"), "File too large");
}

TEST_F(PropertyListCodecFileTest, ThatIsNoPropertyListGivesItsReason) {
  write("text.plist", bytesOf("{ a = 1; }"));
  EXPECT_EQ(errorOfReading("text.plist"),
            "neither a binary nor an XML property list; the older text format is not supported");
  write("xml.plist", bytesOf("<plist>\n<integer>x</integer></plist>"));
  EXPECT_EQ(errorOfReading("xml.plist"), "line 2: an integer is malformed");
}

}  // namespace
}  // namespace vorn
