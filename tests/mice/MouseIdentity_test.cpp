#include "mice/MouseIdentity.h"

#include <gtest/gtest.h>
#include <linux/input.h>

namespace vorn {
namespace {

TEST(MouseIdentityTest, ANameHasNothingThatForgesWhatAPersonReads) {
  EXPECT_EQ(cleanName("  Acme\tMouse\n\x1b[2J \xe2\x80\xae "), "AcmeMouse[2J");
  EXPECT_EQ(cleanName("Sch\xc3\xb6n \xff\xfe"), "Sch\xc3\xb6n");
  EXPECT_EQ(cleanName(" \n "), "");
}

TEST(MouseIdentityTest, ALongNameIsCutBetweenCharacters) {
  std::string name;
  for (int count = 0; count < 100; ++count) name += "\xe2\x82\xac";
  const std::string cut = cleanName(name);
  EXPECT_EQ(cut, name.substr(0, 126));
}

TEST(MouseIdentityTest, ASerialNumberOfZerosIsNone) {
  EXPECT_EQ(markOf("A1B2", "place"), "A1B2");
  EXPECT_EQ(markOf("", "place"), "place");
  EXPECT_EQ(markOf("000000000000", "place"), "place");
  EXPECT_EQ(markOf("00:00:00:00:00:00", "place"), "place");
  EXPECT_EQ(markOf("\x01\x02", "place"), "place");
}

TEST(MouseIdentityTest, AnIdTellsBusNumbersAndMark) {
  EXPECT_EQ(mouseId(BUS_USB, 0x16c0, 0x27db, "A1B2"), "usb-16c0:27db-A1B2");
  EXPECT_EQ(mouseId(BUS_BLUETOOTH, 0x16c0, 0x0001, "aa:bb:cc:dd:ee:ff"), "bluetooth-16c0:0001-aa:bb:cc:dd:ee:ff");
  EXPECT_EQ(mouseId(BUS_USB, 1, 2, "a b/c\n"), "usb-0001:0002-a_b_c_");
  EXPECT_EQ(mouseId(BUS_USB, 1, 2, std::string(500, 'x')).size(), 114u);
}

TEST(MouseIdentityTest, NodesAreToldApartByInterfaceNameAndCount) {
  EXPECT_EQ(nodeName("01", "Acme Mouse Keyboard", {}), "01 Acme Mouse Keyboard");
  EXPECT_EQ(nodeName("", "Acme Mouse", {"01 Acme Mouse"}), "Acme Mouse");
  EXPECT_EQ(nodeName("01", "Acme", {"01 Acme"}), "01 Acme 2");
  EXPECT_EQ(nodeName("01", "Acme", {"01 Acme", "01 Acme 2"}), "01 Acme 3");
}

TEST(MouseIdentityTest, TheRevisionOfUsbIsADecimalFraction) {
  EXPECT_EQ(firmwareText("0123"), "1.23");
  EXPECT_EQ(firmwareText("1200"), "12.00");
  EXPECT_EQ(firmwareText("0001"), "0.01");
  for (const char* wrong : {"", "123", "01230", "0a23"}) EXPECT_EQ(firmwareText(wrong), "") << wrong;
}

TEST(MouseIdentityTest, TheResolutionIsTheUsualOneOfTheList) {
  EXPECT_EQ(resolutionOf("1000"), 1000);
  EXPECT_EQ(resolutionOf("1600@1000"), 1600);
  EXPECT_EQ(resolutionOf("400@125 *800@125 1600@125"), 800);
  EXPECT_EQ(resolutionOf("400@125 800@125"), 400);
  for (const char* wrong : {"", "many", "0@125", "-5", "100001", "8x0", "99999999999999"})
    EXPECT_EQ(resolutionOf(wrong), 0) << wrong;
}

}  // namespace
}  // namespace vorn
