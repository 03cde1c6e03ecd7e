#include "core-engine/record/HeardKeys.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

class MouseOfTheDesktop : public VirtualDevice {
 public:
  DeviceAbilities abilities() const override {
    DeviceAbilities result = VirtualDevice::abilities();
    result.reachesDesktop = reachesDesktop;
    return result;
  }
  bool reachesDesktop = true;
};

const KeyChanged pressed{7, 4, true};
const KeyChanged released{7, 4, false};

class HeardKeysTest : public testing::Test {
 protected:
  HeardKeysTest() {
    parts.recorder.start({.client = "Client", .macro = 0, .room = 100});
    parts.capture.start(KeyCapture::Purpose::Assignment, "Client");
  }
  std::size_t recorded() const { return parts.recorder.events().size(); }
  std::size_t caught() const {
    return static_cast<std::size_t>(std::count_if(parts.news.posted.begin(), parts.news.posted.end(),
                                                  [](const auto& news) { return news.name == "SingleKeyEvent273"; }));
  }

  TestParts parts;
  MouseOfTheDesktop device;
  HeardKeys heard{device, parts.scheduler, parts.recorder, parts.capture};
};

TEST_F(HeardKeysTest, NotesOnceWhatTheMouseSendsAndTheWindowReceives) {
  heard.fromDevice(pressed);
  heard.fromWindow(pressed, true, true);
  heard.fromWindow(released, true, true);
  heard.fromDevice(released);
  EXPECT_EQ(recorded(), 2U);
  EXPECT_EQ(caught(), 1U);
}

TEST_F(HeardKeysTest, NotesWhatIsTypedElsewhere) {
  heard.fromDevice(pressed);
  parts.scheduler.advance(EchoFilter::echoTime + 1us);
  heard.fromWindow(pressed, true, true);
  heard.fromWindow(pressed, true, true);
  EXPECT_EQ(recorded(), 3U);
  EXPECT_EQ(caught(), 3U);
}

TEST_F(HeardKeysTest, NotesAllThatIsTypedWhereTheMouseDoesNotReachTheDesktop) {
  device.reachesDesktop = false;
  heard.fromDevice(pressed);
  heard.fromWindow(pressed, true, true);
  EXPECT_EQ(recorded(), 2U);
  EXPECT_EQ(caught(), 2U);
}

TEST_F(HeardKeysTest, LeavesTheButtonsThatWorkTheWindowToTheWindow) {
  const KeyChanged left{9, 1, true};
  const KeyChanged right{9, 2, true};
  heard.fromDevice(left);
  heard.fromDevice(right);
  EXPECT_EQ(recorded(), 0U);
  heard.fromWindow(left, true, true);
  heard.fromDevice({9, 3, true});
  EXPECT_EQ(recorded(), 2U);
  heard.played(right);
  EXPECT_EQ(recorded(), 3U);
  device.reachesDesktop = false;
  heard.fromDevice(left);
  EXPECT_EQ(recorded(), 4U);
}

TEST_F(HeardKeysTest, NotesOnceWhatAnAssignmentSendsAndTheWindowReceives) {
  heard.played(pressed);
  heard.fromWindow(pressed, true, true);
  EXPECT_EQ(recorded(), 1U);
  EXPECT_EQ(caught(), 1U);
}

TEST_F(HeardKeysTest, KeepsTheRecordingAndTheCaptureApart) {
  heard.fromDevice(pressed);
  heard.fromWindow(pressed, true, false);
  heard.fromWindow(pressed, false, true);
  EXPECT_EQ(recorded(), 1U);
  EXPECT_EQ(caught(), 1U);
}

TEST_F(HeardKeysTest, BeginsAnewWithEachRecordingAndEachCapture) {
  heard.fromDevice(pressed);
  heard.recordingChanged();
  heard.captureChanged();
  heard.fromWindow(pressed, true, true);
  EXPECT_EQ(recorded(), 2U);
  EXPECT_EQ(caught(), 2U);
}

}  // namespace
}  // namespace vorn::engine::test
