#include "model/VrCoreUtility.h"

#include <gtest/gtest.h>

#include "model/RawBinaryList.h"
#include "support/StandardBundle.h"

namespace vorn {
namespace {

TEST(VrCoreUtilityTest, OfAMissingDictionaryGivesNothing) {
  EXPECT_EQ(VrCoreUtility::convertDictionaryToData(PropertyList()), std::nullopt);
}

TEST(VrCoreUtilityTest, OfWhatCannotBeEncodedGivesNothing) {
  EXPECT_EQ(VrCoreUtility::convertDictionaryToData(PropertyList::dictionary({{"a", PropertyList()}})), std::nullopt);
}

TEST(VrCoreUtilityTest, OfAnEmptyDictionaryGivesABinaryListOfAnEmptyDictionary) {
  const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(PropertyList::dictionary());
  ASSERT_TRUE(data);
  EXPECT_EQ(std::string(data->begin(), data->begin() + 8), "bplist00");
  EXPECT_EQ(VrCoreUtility::convertDataToDictionary(*data), PropertyList::dictionary());
}

TEST(VrCoreUtilityTest, GivesEveryValueBack) {
  for (const PropertyList& value : {test::sampleOfAllKinds(), test::standardBundle()}) {
    const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(value);
    ASSERT_TRUE(data);
    EXPECT_EQ(VrCoreUtility::convertDataToDictionary(*data), value);
  }
}

TEST(VrCoreUtilityTest, ReadsAnXmlPropertyListToo) {
  EXPECT_EQ(VrCoreUtility::convertDataToDictionary(
                test::bytesOf("<?xml version=\"1.0\"?><plist><dict><key>a</key><integer>1</integer></dict></plist>")),
            PropertyList::dictionary({{"a", 1}}));
}

TEST(VrCoreUtilityTest, OfBytesThatAreNoPropertyListGivesNone) {
  EXPECT_EQ(VrCoreUtility::convertDataToDictionary({}), PropertyList());
  for (const char* text : {"garbage", "bplist00", "<plist>", "{ a = 1; }"}) {
    EXPECT_EQ(VrCoreUtility::convertDataToDictionary(test::bytesOf(text)), PropertyList()) << text;
  }
}

}  // namespace
}  // namespace vorn
