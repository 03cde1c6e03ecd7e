#include "core-engine/focus/X11Authority.h"

#include <gtest/gtest.h>

namespace vorn::engine::test {
namespace {

void addNumber(Bytes& file, unsigned value) {
  file.push_back(static_cast<std::uint8_t>(value >> 8U));
  file.push_back(static_cast<std::uint8_t>(value));
}

void addText(Bytes& file, std::string_view text) {
  addNumber(file, static_cast<unsigned>(text.size()));
  file.insert(file.end(), text.begin(), text.end());
}

Bytes entry(unsigned family, std::string_view address, std::string_view display, std::string_view data,
            std::string_view name = "MIT-MAGIC-COOKIE-1") {
  Bytes file;
  addNumber(file, family);
  for (const std::string_view text : {address, display, name, data}) addText(file, text);
  return file;
}

Bytes fileOf(const std::vector<Bytes>& entries) {
  Bytes file;
  for (const Bytes& each : entries) file.insert(file.end(), each.begin(), each.end());
  return file;
}

std::string keyIn(const Bytes& file, int display = 0) {
  const auto key = x11KeyIn(file, "host", display);
  return key ? key->data : "none";
}

TEST(X11AuthorityTest, FindsTheKeyOfThisMachineAndDisplay) {
  const Bytes file = fileOf({entry(0, "\x7f", "0", "internet"), entry(256, "other", "0", "elsewhere"),
                             entry(256, "host", "1", "one"), entry(256, "host", "0", "unknown", "XDM"),
                             entry(256, "host", "0", "zero"), entry(256, "host", "0", "later")});
  EXPECT_EQ(keyIn(file), "zero");
  EXPECT_EQ(keyIn(file, 1), "one");
  EXPECT_EQ(keyIn(file, 2), "none");
}

TEST(X11AuthorityTest, TakesAKeyOfAnyMachineAndAnyDisplay) {
  EXPECT_EQ(keyIn(entry(65535, "", "", "wild"), 7), "wild");
  EXPECT_EQ(keyIn(entry(256, "host", "", "any display"), 7), "any display");
}

TEST(X11AuthorityTest, FindsNothingInWhatIsCutOff) {
  const Bytes whole = entry(256, "host", "0", "zero");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(keyIn(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))), "none") << length;
  }
  EXPECT_EQ(keyIn(whole), "zero");
}

}  // namespace
}  // namespace vorn::engine::test
