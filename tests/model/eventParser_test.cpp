#include "model/eventParser.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <limits>
#include <map>
#include <thread>

#include "model/CountedAllocations.h"
#include "model/HidUsages.h"

namespace vorn {
namespace {

using Codes = std::vector<int>;

std::string keyText(std::int64_t hid) {
  return eventParser::getStringWithHID(hid, 0);
}

PropertyList event(PropertyList command, PropertyList delay, PropertyList page, PropertyList argument) {
  return PropertyList::dictionary({{"command", command}, {"delay", delay}, {"page", page}, {"argument", argument}});
}

PropertyList lines(std::initializer_list<PropertyList> texts) {
  return PropertyList::array(texts);
}

// Every code that has a name, with it.
std::map<std::int64_t, std::string> namedKeys() {
  std::map<std::int64_t, std::string> names = {{40, "Return"},
                                               {41, "Escape"},
                                               {42, "Delete"},
                                               {43, "Tab"},
                                               {44, "Space"},
                                               {45, "-"},
                                               {46, "="},
                                               {47, "["},
                                               {48, "]"},
                                               {49, "\\"},
                                               {51, ";"},
                                               {52, "'"},
                                               {53, "`"},
                                               {54, ","},
                                               {55, "."},
                                               {56, "/"},
                                               {57, "Caps Lock"},
                                               {58, "F1"},
                                               {59, "F2"},
                                               {60, "F3"},
                                               {61, "F4"},
                                               {62, "F5"},
                                               {63, "F6"},
                                               {64, "F7"},
                                               {65, "F8"},
                                               {66, "F9"},
                                               {67, "F10"},
                                               {68, "F11"},
                                               {69, "F12"},
                                               {70, "Print Screen"},
                                               {71, "Screen Lock"},
                                               {72, "Pause"},
                                               {73, "Insert"},
                                               {74, "Home"},
                                               {75, "Page Up"},
                                               {76, "Delete"},
                                               {77, "End"},
                                               {78, "Page Down"},
                                               {79, "Right Arrow"},
                                               {80, "Left Arrow"},
                                               {81, "Down Arrow"},
                                               {82, "Up Arrow"},
                                               {83, "Clear"},
                                               {84, "Numpad /"},
                                               {85, "Numpad *"},
                                               {86, "Numpad -"},
                                               {87, "Numpad +"},
                                               {88, "Numpad Enter"},
                                               {89, "Numpad 1"},
                                               {90, "Numpad 2"},
                                               {91, "Numpad 3"},
                                               {92, "Numpad 4"},
                                               {93, "Numpad 5"},
                                               {94, "Numpad 6"},
                                               {95, "Numpad 7"},
                                               {96, "Numpad 8"},
                                               {97, "Numpad 9"},
                                               {98, "Numpad 0"},
                                               {99, "Numpad ."},
                                               {100, "|"},
                                               {101, "Menu"},
                                               {102, "Power"},
                                               {103, "Numpad ="},
                                               {104, "F13"},
                                               {105, "F14"},
                                               {106, "F15"},
                                               {107, "F16"},
                                               {108, "F17"},
                                               {109, "F18"},
                                               {110, "F19"},
                                               {111, "F20"},
                                               {112, "F21"},
                                               {113, "F22"},
                                               {114, "F23"},
                                               {115, "F24"},
                                               {224, "Left Control"},
                                               {225, "Left Shift"},
                                               {226, "Left Alt"},
                                               {227, "Left Command"},
                                               {228, "Right Control"},
                                               {229, "Right Shift"},
                                               {230, "Right Alt"},
                                               {231, "Right Command"}};
  for (int code = 4; code <= 29; ++code) names[code] = std::string(1, static_cast<char>(code + 61));
  for (int code = 30; code <= 38; ++code) names[code] = std::string(1, static_cast<char>(code + 19));
  names[39] = "0";
  return names;
}

constexpr std::array<const char*, 8> modifierNames = {"Left Control",  "Left Shift",  "Left Alt",  "Left Command",
                                                      "Right Control", "Right Shift", "Right Alt", "Right Command"};

std::string modifierText(unsigned modifier) {
  std::string text;
  for (std::size_t bit = 0; bit < 8; ++bit) {
    if ((modifier >> bit & 1U) == 0) continue;
    if (!text.empty()) text += " + ";
    text += modifierNames[bit];
  }
  return text;
}

// The keys held at the end of one test must not reach the next in the same process.
class EventParserTest : public testing::Test {
 protected:
  void SetUp() override { eventParser::getStringWithHID(0, 0); }
  void TearDown() override { eventParser::getStringWithHID(0, 0); }
};
using EventParserHeldKeysTest = EventParserTest;

TEST_F(EventParserTest, NamesEveryKeyOfTheTableAndNoOtherNumber) {
  const auto names = namedKeys();
  ASSERT_EQ(names.size(), 111U + 8U);
  for (std::int64_t code = -300; code <= 70000; ++code) {
    const auto name = names.find(code);
    ASSERT_EQ(keyText(code), name == names.end() ? "" : name->second) << code;
  }
  for (const std::int64_t code : {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
                                  std::int64_t{1} << 32 | 4, std::int64_t{1} << 31 | 4})
    EXPECT_EQ(keyText(code), "") << code;
}

TEST_F(EventParserTest, NamesBothDeleteKeysDeleteAndTheKey50Not) {
  EXPECT_EQ(keyText(42), "Delete");
  EXPECT_EQ(keyText(76), "Delete");
  EXPECT_EQ(keyText(50), "");
}

TEST_F(EventParserTest, CountsTheDigitKeysFromOneToZero) {
  EXPECT_EQ(keyText(30), "1");
  EXPECT_EQ(keyText(38), "9");
  EXPECT_EQ(keyText(39), "0");
}

TEST_F(EventParserTest, PutsTheNameOfAModifierBeforeTheKey) {
  EXPECT_EQ(eventParser::getStringWithHID(4, 2), "Left Shift + A");
  EXPECT_EQ(eventParser::getStringWithHID(225, 2), "Left Shift + Left Shift");
  EXPECT_EQ(eventParser::getStringWithHID(49, 64), "Right Alt + \\");
}

TEST_F(EventParserTest, NamesModifiersAloneWithoutATrailingSeparatorForTheNumbers0To3) {
  for (const int code : {0, 1, 2, 3})
    EXPECT_EQ(eventParser::getStringWithHID(code, 9), "Left Control + Left Command") << code;
}

TEST_F(EventParserTest, EndsInTheSeparatorForAModifierWithAKeyThatHasNoName) {
  std::vector<std::int64_t> codes = {50, 232, 235, 255, 256, 260, 70000, -1, -4};
  for (std::int64_t code = 116; code <= 223; ++code) codes.push_back(code);
  for (const std::int64_t code : codes) EXPECT_EQ(eventParser::getStringWithHID(code, 1), "Left Control + ") << code;
}

TEST_F(EventParserTest, NamesAllEightModifiersInTheOrderOfTheirBits) {
  EXPECT_EQ(eventParser::getStringWithHID(4, 255),
            "Left Control + Left Shift + Left Alt + Left Command + Right Control + Right Shift + Right Alt + "
            "Right Command + A");
}

TEST_F(EventParserTest, NamesTheModifiersOfEveryByteWithAndWithoutAKey) {
  for (unsigned modifier = 1; modifier < 256; ++modifier) {
    ASSERT_EQ(eventParser::getStringWithHID(0, modifier), modifierText(modifier));
    ASSERT_EQ(eventParser::getStringWithHID(40, modifier), modifierText(modifier) + " + Return");
    ASSERT_EQ(eventParser::getStringWithHID(50, modifier), modifierText(modifier) + " + ");
  }
}

TEST_F(EventParserTest, TakesOnlyTheLowEightBitsOfAModifier) {
  EXPECT_EQ(eventParser::getStringWithHID(4, 256), "A");
  EXPECT_EQ(eventParser::getStringWithHID(4, 0x7fff'ff00), "A");
  EXPECT_EQ(eventParser::getStringWithHID(4, 0x102), "Left Shift + A");
  EXPECT_EQ(eventParser::getStringWithHID(4, -1), eventParser::getStringWithHID(4, 255));
}

TEST_F(EventParserTest, GivesTheCharacterOfLettersAndDigitsOnly) {
  const std::string characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567890";
  for (int code = 0; code < 256; ++code) {
    const char expected = code >= 4 && code <= 39 ? characters[static_cast<std::size_t>(code - 4)] : '\0';
    ASSERT_EQ(eventParser::returnASCII(code), expected) << code;
    ASSERT_EQ(eventParser::returnASCII(code + 256), expected) << code;
    ASSERT_EQ(eventParser::returnASCII(code - 256), expected) << code;
  }
}

TEST_F(EventParserTest, AppendsTheCodeOfEachSetModifierBitToTheArray) {
  for (int modifier = 0; modifier < 256; ++modifier) {
    Codes expected = {7};
    for (int bit = 0; bit < 8; ++bit)
      if ((modifier & (1 << bit)) != 0) expected.push_back(224 + bit);
    for (const int given : {modifier, modifier + 256, modifier - 256}) {
      Codes codes = {7};
      eventParser::getModifierHID(given, codes);
      ASSERT_EQ(codes, expected) << given;
    }
  }
}

TEST_F(EventParserTest, WritesADelayInSecondsWithThreeDecimalsAndALineBreak) {
  const std::map<std::int64_t, std::string> texts = {{0, "0.000 seconds delay\n"},
                                                     {1, "0.001 seconds delay\n"},
                                                     {20, "0.020 seconds delay\n"},
                                                     {999, "0.999 seconds delay\n"},
                                                     {1500, "1.500 seconds delay\n"},
                                                     {65535, "65.535 seconds delay\n"},
                                                     {4294967295, "4294967.295 seconds delay\n"},
                                                     {-20, "-0.020 seconds delay\n"}};
  for (const auto& [delay, text] : texts) EXPECT_EQ(eventParser::parseSequence(event(1, delay, 1, 0)), lines({text}));
}

TEST_F(EventParserTest, WritesDelaysAtTheEndsOfTheNumberRangeInFull) {
  EXPECT_EQ(eventParser::parseSequence(event(1, std::numeric_limits<std::int64_t>::min(), 1, 0)),
            lines({"-9223372036854776.000 seconds delay\n"}));
  EXPECT_EQ(eventParser::parseSequence(event(1, std::numeric_limits<std::int64_t>::max(), 1, 0)),
            lines({"9223372036854776.000 seconds delay\n"}));
}

TEST_F(EventParserTest, WritesKeyLinesWithoutALineBreak) {
  for (const auto& [code, name] : namedKeys()) {
    EXPECT_EQ(eventParser::parseSequence(event(1, 20, 7, code)), lines({"0.020 seconds delay\n", "Key Press " + name}));
    EXPECT_EQ(eventParser::parseSequence(event(0, 20, 7, code)),
              lines({"0.020 seconds delay\n", "Key Release " + name}));
  }
}

TEST_F(EventParserTest, KeepsTheLineOfAKeyWithoutANameUpToItsBlank) {
  for (const PropertyList& code : {PropertyList(0), PropertyList(50), PropertyList(116), PropertyList(232),
                                   PropertyList(-1), PropertyList(std::numeric_limits<std::uint64_t>::max())}) {
    EXPECT_EQ(eventParser::parseSequence(event(1, 0, 7, code)), lines({"0.000 seconds delay\n", "Key Press "}));
    EXPECT_EQ(eventParser::parseSequence(event(0, 0, 7, code)), lines({"0.000 seconds delay\n", "Key Release "}));
  }
}

TEST_F(EventParserTest, WritesButtonLinesWithALineBreak) {
  const std::array<const char*, 10> names = {"",         "Left Button", "Right Button", "Button 3", "Button 4",
                                             "Button 5", "Button 6",    "Button 7",     "Button 8", "Button 9"};
  for (std::size_t button = 1; button < names.size(); ++button) {
    const std::string name = names[button];
    EXPECT_EQ(eventParser::parseSequence(event(1, 0, 9, button)), lines({"0.000 seconds delay\n", name + " down\n"}));
    EXPECT_EQ(eventParser::parseSequence(event(0, 0, 9, button)), lines({"0.000 seconds delay\n", name + " up\n"}));
  }
}

TEST_F(EventParserTest, GivesNoEventLineForOtherButtons) {
  for (const PropertyList& button : {PropertyList(0), PropertyList(10), PropertyList(257), PropertyList(-1),
                                     PropertyList(std::numeric_limits<std::uint64_t>::max())})
    for (const int command : {0, 1})
      EXPECT_EQ(eventParser::parseSequence(event(command, 5, 9, button)), lines({"0.005 seconds delay\n"}));
}

TEST_F(EventParserTest, GivesNoEventLineForAnyOtherPageOrCommand) {
  for (int page = 0; page < 256; ++page) {
    for (const int command : {0, 1, 2, 3, 128, 255}) {
      if ((page == 7 || page == 9) && command < 2) continue;
      ASSERT_EQ(eventParser::parseSequence(event(command, 5, page, 4)), lines({"0.005 seconds delay\n"}))
          << "page " << page << ", command " << command;
    }
  }
}

TEST_F(EventParserTest, TakesOnlyTheLowEightBitsOfCommandAndPage) {
  EXPECT_EQ(eventParser::parseSequence(event(257, 0, 263, 4)), lines({"0.000 seconds delay\n", "Key Press A"}));
  EXPECT_EQ(eventParser::parseSequence(event(-256, 0, -247, 1)), lines({"0.000 seconds delay\n", "Left Button up\n"}));
}

TEST_F(EventParserTest, ReadsMissingMembersAndMembersOfAnotherTypeAsZero) {
  EXPECT_EQ(eventParser::parseSequence(PropertyList::dictionary()), lines({"0.000 seconds delay\n"}));
  EXPECT_EQ(eventParser::parseSequence(PropertyList::dictionary({{"page", 7}, {"argument", 4}})),
            lines({"0.000 seconds delay\n", "Key Release A"}));
  EXPECT_EQ(eventParser::parseSequence(PropertyList::dictionary({{"page", 7}, {"command", 1}})),
            lines({"0.000 seconds delay\n", "Key Press "}));
  EXPECT_EQ(eventParser::parseSequence(event(PropertyList::array({1}), PropertyList::dictionary({{"delay", 1}}), 7,
                                             PropertyList::data(Bytes{4}))),
            lines({"0.000 seconds delay\n", "Key Release "}));
  EXPECT_EQ(eventParser::parseSequence(event(1, 20, PropertyList::array({7}), 4)), lines({"0.020 seconds delay\n"}));
}

TEST_F(EventParserTest, ConvertsNumbersOfAnotherKind) {
  EXPECT_EQ(eventParser::parseSequence(event(true, 20.9, "7", "4")), lines({"0.020 seconds delay\n", "Key Press A"}));
}

TEST_F(EventParserTest, GivesNothingForAnEventThatIsNoDictionary) {
  for (const PropertyList& other :
       {PropertyList(), PropertyList(1), PropertyList("Key Press A"), PropertyList::array({1, 20, 7, 4})})
    EXPECT_EQ(eventParser::parseSequence(other), PropertyList());
}

TEST_F(EventParserTest, ShowsASequenceOfOneEventAsOneLineWithoutItsDelay) {
  EXPECT_EQ(eventParser::getMessagesArray(PropertyList::array({event(1, 700, 7, 4)})), lines({"Key Press A"}));
}

TEST_F(EventParserTest, ShowsASequenceOfThreeEventsAsFiveLines) {
  EXPECT_EQ(eventParser::getMessagesArray(
                PropertyList::array({event(1, 700, 7, 225), event(1, 20, 9, 1), event(0, 1500, 7, 225)})),
            lines({"Key Press Left Shift", "0.020 seconds delay\n", "Left Button down\n", "1.500 seconds delay\n",
                   "Key Release Left Shift"}));
}

TEST_F(EventParserTest, ShowsAnEventWithoutALineOfItsOwnAsItsDelay) {
  EXPECT_EQ(eventParser::getMessagesArray(
                PropertyList::array({event(1, 5, 9, 10), event(2, 6, 7, 4), event(1, 7, 9, 0), event(1, 8, 7, 50)})),
            lines({"0.006 seconds delay\n", "0.007 seconds delay\n", "0.008 seconds delay\n", "Key Press "}));
}

TEST_F(EventParserTest, ShowsASequenceWithoutEventsAsNoLines) {
  EXPECT_EQ(eventParser::getMessagesArray(PropertyList::array()), PropertyList::array());
  EXPECT_EQ(eventParser::getMessagesArray(PropertyList()), PropertyList::array());
  EXPECT_EQ(eventParser::getMessagesArray(event(1, 20, 7, 4)), PropertyList::array());
}

TEST_F(EventParserTest, GivesNothingForASequenceWithAnEventThatIsNoDictionary) {
  EXPECT_EQ(eventParser::getMessagesArray(PropertyList::array({event(1, 20, 7, 4), 5, event(0, 20, 7, 4)})),
            PropertyList());
}

PropertyList alternatingEvents(int count) {
  std::vector<PropertyList> events;
  for (int index = 0; index < count; ++index) events.push_back(event(1 - index % 2, index, 7, 4 + index / 2 % 36));
  return PropertyList::array(events);
}

TEST_F(EventParserTest, ShowsTenThousandEventsInOrder) {
  const PropertyList shown = eventParser::getMessagesArray(alternatingEvents(10'000));
  ASSERT_EQ(shown.size(), 19'999U);
  const std::string characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567890";
  for (int index = 0; index < 10'000; ++index) {
    const std::string key(1, characters[static_cast<std::size_t>(index / 2 % 36)]);
    ASSERT_EQ(shown.at(2 * index).string(), (index % 2 == 0 ? "Key Press " : "Key Release ") + key);
    if (index == 0) continue;
    const std::string thousandths = std::to_string(1000 + index % 1000).substr(1);
    ASSERT_EQ(shown.at(2 * index - 1).string(), std::to_string(index / 1000) + "." + thousandths + " seconds delay\n");
  }
}

TEST_F(EventParserTest, TakesMemoryInProportionToTheNumberOfEvents) {
  const auto bytesFor = [](int count) {
    const PropertyList events = alternatingEvents(count);
    const std::size_t before = allocatedBytes();
    const PropertyList shown = eventParser::getMessagesArray(events);
    return allocatedBytes() - before;
  };
  const std::size_t thousand = bytesFor(1'000);
  ASSERT_GT(thousand, 0U);
  EXPECT_LT(bytesFor(10'000), 30 * thousand);  // 100 times for a copy of the lines at every event
}

TEST_F(EventParserHeldKeysTest, AreTheKeysGivenFirst) {
  Codes keys = {6, 4, 5};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{6, 4, 5}));
}

TEST_F(EventParserHeldKeysTest, KeepTheOrderInWhichTheyWentDown) {
  Codes keys = {6};
  eventParser::manageHIDStack(keys);
  keys = {4, 6};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{6, 4}));
  keys = {5, 4, 225, 6};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{6, 4, 5, 225}));
}

TEST_F(EventParserHeldKeysTest, LoseTheOnesThatWereReleased) {
  Codes keys = {6, 4, 5};
  eventParser::manageHIDStack(keys);
  keys = {5, 6};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{6, 5}));
  keys = {};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, Codes{});
  keys = {4, 6};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{4, 6}));
}

TEST_F(EventParserHeldKeysTest, ExchangeAReleasedKeyForANewOneBehindTheRest) {
  Codes keys = {6, 4};
  eventParser::manageHIDStack(keys);
  keys = {7, 4};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{4, 7}));
  keys = {8, 9};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{8, 9}));
}

TEST_F(EventParserHeldKeysTest, TakeAKeyThatIsReportedTwiceOnceWhenOthersAreHeld) {
  Codes keys = {6};
  eventParser::manageHIDStack(keys);
  keys = {6, 4, 4};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{6, 4}));
}

TEST_F(EventParserHeldKeysTest, StayInOrderWhenTheyOutnumberTheReportedOnes) {
  Codes keys = {4, 4, 6};
  eventParser::manageHIDStack(keys);
  keys = {6, 4};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{4, 4, 6}));
}

TEST_F(EventParserHeldKeysTest, OutlastATextWithAModifier) {
  Codes keys = {6};
  eventParser::manageHIDStack(keys);
  eventParser::getStringWithHID(4, 2);
  keys = {4, 6};
  eventParser::manageHIDStack(keys);
  EXPECT_EQ(keys, (Codes{6, 4}));
}

TEST_F(EventParserHeldKeysTest, AreForgottenWithATextWithoutAModifier) {
  for (const std::int64_t modifier : {0, 256}) {
    Codes keys = {6};
    eventParser::manageHIDStack(keys);
    eventParser::getStringWithHID(4, modifier);
    keys = {4, 6};
    eventParser::manageHIDStack(keys);
    EXPECT_EQ(keys, (Codes{4, 6})) << modifier;
    eventParser::getStringWithHID(0, 0);
  }
}

TEST_F(EventParserHeldKeysTest, AreSharedByTextsAndReportsOfSeveralThreads) {
  std::barrier start(4);
  std::array<std::atomic<int>, 4> wrong = {};
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
      threads.emplace_back([&start, &wrong, thread] {
        start.arrive_and_wait();
        for (int round = 0; round < 2'000; ++round) {
          Codes keys = {4 + thread};
          if (thread < 2) eventParser::manageHIDStack(keys);
          const bool isRight = keys == Codes{4 + thread} && keyText(4 + thread) == std::string(1, "ABCD"[thread]);
          if (!isRight) ++wrong[static_cast<std::size_t>(thread)];
        }
      });
    }
  }
  for (const std::atomic<int>& count : wrong) EXPECT_EQ(count, 0);
}

TEST(EventParserLinesTest, OfAPressLeadToThatOfItsRelease) {
  EXPECT_EQ(eventParser::releaseLineOf("Key Press Left Shift"), "Key Release Left Shift");
  EXPECT_EQ(eventParser::releaseLineOf("Key Press "), "Key Release ");
  EXPECT_EQ(eventParser::releaseLineOf("Left Button down\n"), "Left Button up\n");
  EXPECT_EQ(eventParser::releaseLineOf("Button 9 down\n"), "Button 9 up\n");
  for (const char* line : {"Key Release A", "Left Button up\n", "0.020 seconds delay\n", "", "Key Press"}) {
    EXPECT_EQ(eventParser::releaseLineOf(line), "") << line;
  }
}

TEST(EventParserLinesTest, OfDelaysAreReadBackAsTheirMilliseconds) {
  for (const int delay : {0, 1, 20, 999, 1500, 999'999}) {
    const PropertyList lines = eventParser::parseSequence(PropertyList::dictionary({{"delay", delay}}));
    EXPECT_EQ(eventParser::delayOfLine(lines.at(0).string()), delay);
  }
  for (const char* line :
       {"Key Press A", "x seconds delay\n", " seconds delay\n", "1.0 seconds delay", "1.0x seconds delay\n"}) {
    EXPECT_EQ(eventParser::delayOfLine(line), std::nullopt) << line;
  }
}

TEST(EventParserKeyNamesTest, LeadBackToTheirKeyWhateverTheirCase) {
  for (const auto& [code, name] : namedKeys()) {
    EXPECT_EQ(hid::keyName(code), name);
    const hid::Usage expected = code == 76 ? 42 : static_cast<hid::Usage>(code);
    std::string lower = name;
    std::string upper = name;
    for (char& character : lower)
      if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
    for (char& character : upper)
      if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 32);
    for (const std::string& spelling : {name, lower, upper}) EXPECT_EQ(hid::keyNamed(spelling), expected) << spelling;
  }
}

TEST(EventParserKeyNamesTest, TellTheTwoDeleteKeysApartByTheirOtherNames) {
  EXPECT_EQ(hid::keyNamed("delete"), hid::Usage{42});
  EXPECT_EQ(hid::keyNamed("backspace"), hid::Usage{42});
  EXPECT_EQ(hid::keyNamed("DELETE FORWARD"), hid::Usage{76});
}

TEST(EventParserKeyNamesTest, AreMatchedWhole) {
  using namespace std::string_view_literals;
  for (const std::string_view name :
       {""sv, " "sv, "A "sv, "AA"sv, "F25"sv, "LeftShift"sv, "Left"sv, "Numpad"sv, "{"sv, "A\0"sv, "\xc3\xa4"sv})
    EXPECT_EQ(hid::keyNamed(name), std::nullopt) << name;
}

TEST(EventParserKeyUsagesTest, OfTheModifiersFollowTheBitsOfAKeyboardReport) {
  const Codes usages = {hid::leftControl,  hid::leftShift,  hid::leftAlt,  hid::leftCommand,
                        hid::rightControl, hid::rightShift, hid::rightAlt, hid::rightCommand};
  Codes all;
  eventParser::getModifierHID(255, all);
  EXPECT_EQ(usages, all);
  for (std::size_t bit = 0; bit < 8; ++bit) EXPECT_EQ(hid::keyName(usages[bit]), modifierNames[bit]);
}

}  // namespace
}  // namespace vorn
