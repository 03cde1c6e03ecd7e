#include "model/KernelKeys.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

HidUsage key(std::string_view name) {
  return {hid::keyboardPage, hid::keyNamed(name).value_or(0)};
}

TEST(KernelKeysTest, PairEveryNamedKeyWithTheKernelsNumberOfIt) {
  const std::vector<std::pair<std::string, int>> pairs = {{"A", KEY_A},
                                                          {"Q", KEY_Q},
                                                          {"W", KEY_W},
                                                          {"Z", KEY_Z},
                                                          {"M", KEY_M},
                                                          {"1", KEY_1},
                                                          {"0", KEY_0},
                                                          {"Return", KEY_ENTER},
                                                          {"Escape", KEY_ESC},
                                                          {"Backspace", KEY_BACKSPACE},
                                                          {"Tab", KEY_TAB},
                                                          {"Space", KEY_SPACE},
                                                          {"-", KEY_MINUS},
                                                          {"=", KEY_EQUAL},
                                                          {"[", KEY_LEFTBRACE},
                                                          {"]", KEY_RIGHTBRACE},
                                                          {"\\", KEY_BACKSLASH},
                                                          {";", KEY_SEMICOLON},
                                                          {"'", KEY_APOSTROPHE},
                                                          {"`", KEY_GRAVE},
                                                          {",", KEY_COMMA},
                                                          {".", KEY_DOT},
                                                          {"/", KEY_SLASH},
                                                          {"Caps Lock", KEY_CAPSLOCK},
                                                          {"F1", KEY_F1},
                                                          {"F10", KEY_F10},
                                                          {"F11", KEY_F11},
                                                          {"F12", KEY_F12},
                                                          {"F13", KEY_F13},
                                                          {"F24", KEY_F24},
                                                          {"Print Screen", KEY_SYSRQ},
                                                          {"Screen Lock", KEY_SCROLLLOCK},
                                                          {"Pause", KEY_PAUSE},
                                                          {"Insert", KEY_INSERT},
                                                          {"Home", KEY_HOME},
                                                          {"Page Up", KEY_PAGEUP},
                                                          {"Delete Forward", KEY_DELETE},
                                                          {"End", KEY_END},
                                                          {"Page Down", KEY_PAGEDOWN},
                                                          {"Right Arrow", KEY_RIGHT},
                                                          {"Left Arrow", KEY_LEFT},
                                                          {"Down Arrow", KEY_DOWN},
                                                          {"Up Arrow", KEY_UP},
                                                          {"Clear", KEY_NUMLOCK},
                                                          {"Numpad /", KEY_KPSLASH},
                                                          {"Numpad *", KEY_KPASTERISK},
                                                          {"Numpad -", KEY_KPMINUS},
                                                          {"Numpad +", KEY_KPPLUS},
                                                          {"Numpad Enter", KEY_KPENTER},
                                                          {"Numpad 1", KEY_KP1},
                                                          {"Numpad 5", KEY_KP5},
                                                          {"Numpad 9", KEY_KP9},
                                                          {"Numpad 0", KEY_KP0},
                                                          {"Numpad .", KEY_KPDOT},
                                                          {"|", KEY_102ND},
                                                          {"Menu", KEY_COMPOSE},
                                                          {"Power", KEY_POWER},
                                                          {"Numpad =", KEY_KPEQUAL},
                                                          {"Left Control", KEY_LEFTCTRL},
                                                          {"Left Shift", KEY_LEFTSHIFT},
                                                          {"Left Alt", KEY_LEFTALT},
                                                          {"Left Command", KEY_LEFTMETA},
                                                          {"Right Control", KEY_RIGHTCTRL},
                                                          {"Right Shift", KEY_RIGHTSHIFT},
                                                          {"Right Alt", KEY_RIGHTALT},
                                                          {"Right Command", KEY_RIGHTMETA}};
  for (const auto& [name, number] : pairs) {
    EXPECT_EQ(kernelKeyOfUsage(key(name)), number) << name;
    EXPECT_EQ(usageOfKernelKey(static_cast<std::uint32_t>(number)), key(name)) << name;
  }
}

TEST(KernelKeysTest, PairTheKeysWithoutANameToo) {
  const std::vector<std::pair<hid::Usage, int>> pairs = {{117, KEY_HELP},
                                                         {121, KEY_AGAIN},
                                                         {122, KEY_UNDO},
                                                         {123, KEY_CUT},
                                                         {124, KEY_COPY},
                                                         {125, KEY_PASTE},
                                                         {126, KEY_FIND},
                                                         {127, KEY_MUTE},
                                                         {128, KEY_VOLUMEUP},
                                                         {129, KEY_VOLUMEDOWN},
                                                         {133, KEY_KPCOMMA},
                                                         {135, KEY_RO},
                                                         {136, KEY_KATAKANAHIRAGANA},
                                                         {137, KEY_YEN},
                                                         {138, KEY_HENKAN},
                                                         {139, KEY_MUHENKAN},
                                                         {144, KEY_HANGEUL},
                                                         {145, KEY_HANJA},
                                                         {148, KEY_ZENKAKUHANKAKU},
                                                         {182, KEY_KPLEFTPAREN},
                                                         {183, KEY_KPRIGHTPAREN}};
  for (const auto& [usage, number] : pairs) {
    EXPECT_EQ(kernelKeyOfUsage({hid::keyboardPage, usage}), number) << usage;
    EXPECT_EQ(usageOfKernelKey(static_cast<std::uint32_t>(number)), (HidUsage{hid::keyboardPage, usage})) << usage;
  }
}

TEST(KernelKeysTest, TakeTheLowestOfTheUsagesThatHaveOneNumber) {
  EXPECT_EQ(kernelKeyOfUsage({hid::keyboardPage, 50}), KEY_BACKSLASH);
  EXPECT_EQ(usageOfKernelKey(KEY_BACKSLASH), (HidUsage{hid::keyboardPage, 49}));
  EXPECT_EQ(kernelKeyOfUsage({hid::keyboardPage, 216}), KEY_DELETE);
  EXPECT_EQ(usageOfKernelKey(KEY_DELETE), (HidUsage{hid::keyboardPage, 76}));
}

TEST(KernelKeysTest, PairTheButtonsOfAMouse) {
  EXPECT_EQ(usageOfKernelKey(BTN_LEFT), (HidUsage{hid::buttonPage, 1}));
  EXPECT_EQ(usageOfKernelKey(BTN_RIGHT), (HidUsage{hid::buttonPage, 2}));
  EXPECT_EQ(usageOfKernelKey(BTN_MIDDLE), (HidUsage{hid::buttonPage, 3}));
  EXPECT_EQ(usageOfKernelKey(BTN_SIDE), (HidUsage{hid::buttonPage, 4}));
  EXPECT_EQ(kernelKeyOfUsage({hid::buttonPage, 9}), BTN_MOUSE + 8);
  EXPECT_EQ(usageOfKernelKey(BTN_MOUSE + 9), std::nullopt);
}

TEST(KernelKeysTest, KnowNoOtherNumberAndNoOtherUsage) {
  for (const std::uint32_t number : {0U, 84U, 255U, 0x10fU, 0x2ffU, 0xffffffffU})
    EXPECT_EQ(usageOfKernelKey(number), std::nullopt) << number;
  EXPECT_EQ(usageOfKernelKey(KEY_PLAYPAUSE), std::nullopt);
  for (const HidUsage usage : {HidUsage{7, 0}, HidUsage{7, 3}, HidUsage{7, 130}, HidUsage{7, 232}, HidUsage{9, 0},
                               HidUsage{9, 10}, HidUsage{12, 4}, HidUsage{1, 0x38}})
    EXPECT_EQ(kernelKeyOfUsage(usage), std::nullopt) << usage.page << '/' << usage.usage;
}

}  // namespace
}  // namespace vorn
