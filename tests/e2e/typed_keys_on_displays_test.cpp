// What a person types into the window on a real display, X11 and Wayland, as the engine records and captures it.
//
// Delays are compared with the time stamps that the display itself gave the very same strokes: on X11 the server's,
// which a second client of it reads along; on Wayland those that the keyboard sent. So neither the load of the machine
// nor when a stroke was really typed makes a difference, only what the window, the bus and the engine add to it:
// nothing.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "ctl/RecordFile.h"
#include "e2e/ConfiguratorProcess.h"
#include "e2e/Display.h"
#include "e2e/Vornctl.h"
#include "model/HidUsages.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::test {
namespace {

using skarn::test::runVornctl;
using skarn::test::vornctl;
using std::chrono::milliseconds;

namespace usages {
constexpr hid::Usage a = 4, b = 5, c = 6, returnKey = 40, escape = 41, tab = 43, space = 44, pause = 72, down = 81,
                     padDivide = 84, padEnter = 88, padFive = 93, padPoint = 99, mute = 127, volumeUp = 128,
                     volumeDown = 129;
}  // namespace usages

constexpr std::chrono::seconds patience{60};

struct DisplayKind {
  const char* name;
  std::unique_ptr<Display> (*start)(const std::string& folder);
};

void PrintTo(const DisplayKind& kind, std::ostream* stream) {
  *stream << kind.name;
}

class TypedKeysOnDisplaysTest : public testing::TestWithParam<DisplayKind> {
 protected:
  void SetUp() override {
    setenv("XDG_CONFIG_HOME", mFolder.path("config").c_str(), 1);
    setenv("XDG_CACHE_HOME", mFolder.path("cache").c_str(), 1);
    // A desktop's accessibility would be asked for over the bus, and is not there.
    setenv("NO_AT_BRIDGE", "1", 1);
    mDisplay = GetParam().start(mDisplayFolder.path());
    ASSERT_TRUE(mDisplay);
    mEngine = std::make_unique<EngineProcess>(mFolder.path("state"));
    // A and its release, 20 ms later.
    const PropertyList events = PropertyList::array({eventOf(usages::a, true, 0), eventOf(usages::a, false, 20)});
    const PropertyList macro = PropertyList::dictionary(
        {{"MacroName", "Typed"}, {"sequence", PropertyList::dictionary({{"events", events}})}});
    ASSERT_FALSE(ctl::writeRecord(mFolder.path("m.SkarnMacro"), macro, RecordKind::Macro));
    ASSERT_TRUE(runVornctl({"macros", "import", mFolder.path("m.SkarnMacro")}));
    mNews = std::make_unique<ChildProcess>(std::vector<std::string>{VORNCTL_PROGRAM, "monitor"});
    ASSERT_TRUE(isTold("listening"));
  }

  void showTab(const std::string& name) {
    mWindow = std::make_unique<ConfiguratorProcess>(std::vector<std::string>{"--verbose", "--tab", name},
                                                    mDisplay->platform());
    ASSERT_TRUE(hears("request 14: "));
    ASSERT_TRUE(hasFocus(Display::Window::Main));
  }
  // Over the field that searches: the macro is selected, and the keyboard in the list of macros.
  void chooseMacro() {
    ASSERT_NO_FATAL_FAILURE(showTab("macros"));
    press({usages::tab, usages::tab, usages::down});
    ASSERT_TRUE(hears("answer 27: "));
  }
  void startRecording() {
    ASSERT_NO_FATAL_FAILURE(chooseMacro());
    press(std::vector<hid::Usage>(8, usages::tab));
    press({usages::space});
    ASSERT_TRUE(hears("answer 18: "));
  }
  bool hasFocus(Display::Window window) { return mDisplay->waitForFocus(mWindow->process().id(), window); }
  // Whether the window writes such a line, about what it asks or is answered, behind the last that was waited for.
  bool hears(const std::string& text) { return comes(mWindow->process(), text); }
  bool isTold(const std::string& news) { return comes(*mNews, news); }
  static bool comes(ChildProcess& process, const std::string& text) {
    std::string others;
    while (const auto line = process.waitForLine([](const std::string&) { return true; }, patience)) {
      if (line->find(text) != std::string::npos) return true;
      others += line->substr(0, 200) + "\n";
    }
    ADD_FAILURE() << "What came in the place of \"" << text << "\":\n" << others;
    return false;
  }
  // Returns when the window has taken all that the engine told up to now: what it is told next makes it ask.
  bool hasWindowCaughtUp() { return runVornctl({"set", "ProfileOSDOn", "0"}) && hears("answer 4: "); }

  std::vector<milliseconds> type(const std::vector<Stroke>& strokes) {
    auto times = mDisplay->type(strokes);
    EXPECT_EQ(times.size(), strokes.size());
    times.resize(strokes.size());
    return times;
  }
  // Each key is pressed and released. Never at the same moment: that would be one that repeats.
  void press(const std::vector<hid::Usage>& keys) {
    constexpr milliseconds gap{5};
    std::vector<Stroke> strokes;
    for (const hid::Usage key : keys) strokes.insert(strokes.end(), {{key, true, gap}, {key, false, gap}});
    type(strokes);
  }

  static PropertyList eventOf(hid::Usage usage, bool isPressed, std::int64_t delay) {
    return PropertyList::dictionary(
        {{"command", isPressed ? 1 : 0}, {"delay", delay}, {"page", hid::keyboardPage}, {"argument", usage}});
  }
  // The macro of what was typed when.
  static PropertyList recorded(const std::vector<Stroke>& strokes, const std::vector<milliseconds>& times) {
    PropertyList events = PropertyList::array();
    for (std::size_t i = 0; i < strokes.size(); ++i)
      events = events.appending(
          eventOf(strokes[i].usage, strokes[i].isPressed, i == 0 ? 0 : (times[i] - times[i - 1]).count()));
    return events;
  }
  PropertyList macro() const {
    EXPECT_TRUE(runVornctl({"macros", "export", "Typed", mFolder.path("out")}));
    const auto record = ctl::readRecord(mFolder.path("out.SkarnMacro"), RecordKind::Macro);
    return record ? (*record)["sequence"]["events"] : PropertyList();
  }
  // Types into a new recording, and compares what it has become when it was ended by the Pause key.
  void recordsWhatIsTyped(const std::vector<Stroke>& strokes) {
    ASSERT_NO_FATAL_FAILURE(startRecording());
    const auto times = type(strokes);
    press({usages::pause});
    ASSERT_TRUE(hears("answer 20: "));
    EXPECT_EQ(macro().description(), recorded(strokes, times).description());
  }

  PrivateBus mBus;
  engine::test::TemporaryFolder mFolder;
  engine::test::TemporaryFolder mDisplayFolder;
  std::unique_ptr<Display> mDisplay;
  std::unique_ptr<EngineProcess> mEngine;
  std::unique_ptr<ChildProcess> mNews;
  std::unique_ptr<ConfiguratorProcess> mWindow;
};

// Presses and releases one after the other, so long apart.
std::vector<Stroke> oneByOne(const std::vector<hid::Usage>& keys, milliseconds gap) {
  std::vector<Stroke> strokes;
  for (const hid::Usage key : keys) strokes.insert(strokes.end(), {{key, true, gap}, {key, false, gap / 2}});
  return strokes;
}

TEST_P(TypedKeysOnDisplaysTest, RecordsAChordWithTheTimesOfTyping) {
  recordsWhatIsTyped({{hid::leftControl, true, milliseconds(300)},
                      {hid::leftShift, true, milliseconds(35)},
                      {usages::c, true, milliseconds(70)},
                      {usages::c, false, milliseconds(55)},
                      {hid::leftShift, false, milliseconds(20)},
                      {hid::leftControl, false, milliseconds(15)}});
}

TEST_P(TypedKeysOnDisplaysTest, RecordsTheKeysThatWorkTheWindow) {
  recordsWhatIsTyped(
      oneByOne({usages::returnKey, usages::escape, usages::tab, usages::space, usages::down}, milliseconds(60)));
}

TEST_P(TypedKeysOnDisplaysTest, RecordsTheNumberPad) {
  recordsWhatIsTyped(
      oneByOne({usages::padFive, usages::padPoint, usages::padDivide, usages::padEnter}, milliseconds(30)));
}

TEST_P(TypedKeysOnDisplaysTest, RecordsMediaKeys) {
  recordsWhatIsTyped(oneByOne({usages::mute, usages::volumeUp, usages::volumeDown}, milliseconds(30)));
}

TEST_P(TypedKeysOnDisplaysTest, RecordsModifiersAlone) {
  recordsWhatIsTyped(oneByOne({hid::rightShift, hid::leftAlt, hid::leftCommand, hid::rightControl}, milliseconds(45)));
}

TEST_P(TypedKeysOnDisplaysTest, RecordsKeysThatOverlap) {
  recordsWhatIsTyped({{usages::a, true},
                      {usages::b, true, milliseconds(5)},
                      {usages::a, false, milliseconds(10)},
                      {usages::c, true, milliseconds(3)},
                      {usages::b, false, milliseconds(0)},
                      {usages::c, false, milliseconds(80)}});
}

// Both displays repeat it meanwhile: Xvfb after two thirds of a second, Sway as it is set up here, at once.
TEST_P(TypedKeysOnDisplaysTest, RecordsAKeyThatIsHeldOnce) {
  ASSERT_NO_FATAL_FAILURE(startRecording());
  const std::vector<Stroke> strokes = {{usages::a, true}, {usages::a, false, milliseconds(1000)}};
  auto times = type({strokes[0]});
  ASSERT_TRUE(isTold("MacroSequence273: "));
  times.push_back(type({strokes[1]})[0]);
  press({usages::pause});
  ASSERT_TRUE(hears("answer 20: "));
  EXPECT_EQ(macro().description(), recorded(strokes, times).description());
}

TEST_P(TypedKeysOnDisplaysTest, ReleasesWhatIsHeldAndSavesWhenAnotherWindowTakesTheKeyboard) {
  ASSERT_NO_FATAL_FAILURE(startRecording());
  const std::vector<Stroke> strokes = {{hid::leftShift, true}, {usages::a, true, milliseconds(50)}};
  const auto times = type(strokes);
  ASSERT_TRUE(mDisplay->takeFocus());
  ASSERT_TRUE(hears("answer 20: "));
  EXPECT_EQ(macro(), recorded({strokes[0], strokes[1], {usages::a, false}, {hid::leftShift, false}},
                              {times[0], times[1], times[1], times[1]}));
}

TEST_P(TypedKeysOnDisplaysTest, CapturesAChordForAControlAndReturnConfirmsIt) {
  ASSERT_NO_FATAL_FAILURE(showTab("buttons"));
  // Over the keymaps, their menu and the field that finds controls to the list of control 1, and its second entry.
  press({usages::tab, usages::tab, usages::tab, usages::tab, usages::tab, usages::space, usages::down,
         usages::returnKey});
  ASSERT_TRUE(hears("answer 29: "));
  ASSERT_TRUE(hasFocus(Display::Window::Sheet));
  type({{hid::leftControl, true}, {usages::escape, true}, {usages::escape, false}, {hid::leftControl, false}});
  ASSERT_TRUE(isTold("SingleKeyEvent273: singleKey=41, singleKeyModif=1"));
  ASSERT_TRUE(hasWindowCaughtUp());
  press({usages::returnKey});
  ASSERT_TRUE(hears("answer 6: "));
  EXPECT_EQ(vornctl({"get", "Keys/43"}), R"({"command":16,"param1":41,"param2":1})");
}

TEST_P(TypedKeysOnDisplaysTest, CapturesAKeyForAnEventAndReturnConfirmsIt) {
  ASSERT_NO_FATAL_FAILURE(chooseMacro());
  press({usages::tab, usages::tab, usages::tab, usages::tab, usages::down, usages::returnKey});
  ASSERT_TRUE(hears("answer 21: "));
  ASSERT_TRUE(hasFocus(Display::Window::Sheet));
  press({usages::tab});
  ASSERT_TRUE(isTold("SingleKeyEvent1050: singleKey=43, singleKeyModif=0"));
  ASSERT_TRUE(hasWindowCaughtUp());
  press({usages::returnKey});
  ASSERT_TRUE(hears("answer 24: "));
  // The release of the key goes with its press.
  EXPECT_EQ(macro(), PropertyList::array({eventOf(usages::tab, true, 0), eventOf(usages::tab, false, 20)}));
}

INSTANTIATE_TEST_SUITE_P(Displays, TypedKeysOnDisplaysTest,
                         testing::Values(DisplayKind{"X11", startX11Display},
                                         DisplayKind{"Wayland", startWaylandDisplay}),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace
}  // namespace vorn::test
