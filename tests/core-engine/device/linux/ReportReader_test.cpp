#include "core-engine/device/linux/ReportReader.h"

#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "core-engine/device/linux/KernelEvents.h"

namespace vorn::engine::test {
namespace {

using Result = ReportReader::Result;
using Report = std::vector<KernelEvent>;

constexpr std::size_t enough = 1000;

// A node as libevdev reads it.
class FakeNode {
 public:
  // The report, and its end.
  void add(const Report& report, long time = 0) {
    for (const KernelEvent& event : report) add(event, time, LIBEVDEV_READ_STATUS_SUCCESS);
    add({EV_SYN, SYN_REPORT, 0}, time, LIBEVDEV_READ_STATUS_SUCCESS);
  }
  void add(const KernelEvent& event, long time, int status) {
    input_event entry{};
    entry.input_event_usec = time;
    entry.type = event.type;
    entry.code = event.code;
    entry.value = event.value;
    mEntries.push_back({status, entry});
  }
  // Instead of an event.
  void fail(int status) { mEntries.push_back({status, {}}); }
  std::size_t left() const { return mEntries.size(); }

  Result read(std::size_t maximumEvents) {
    return mReader.read(
        [this](unsigned flags, input_event& event) {
          usedFlags.push_back(flags);
          if (mEntries.empty()) return -EAGAIN;
          const auto [status, entry] = mEntries.front();
          mEntries.pop_front();
          event = entry;
          return status;
        },
        [this](std::span<const KernelEvent> report, ReportReader::Time time) {
          reports.emplace_back(report.begin(), report.end());
          times.push_back(time.count());
        },
        maximumEvents);
  }

  std::vector<Report> reports;
  std::vector<std::int64_t> times;
  std::vector<unsigned> usedFlags;

 private:
  std::deque<std::pair<int, input_event>> mEntries;
  ReportReader mReader;
};

const KernelEvent right{EV_REL, REL_X, 1};
const KernelEvent down{EV_REL, REL_Y, 1};

TEST(ReportReaderTest, TellsEachReportWithTheTimeOfItsEnd) {
  FakeNode node;
  node.add({right, down}, 7);
  node.add({down}, 9);
  EXPECT_EQ(node.read(enough), Result::Drained);
  EXPECT_EQ(node.reports, (std::vector<Report>{{right, down}, {down}}));
  EXPECT_EQ(node.times, (std::vector<std::int64_t>{7, 9}));
}

TEST(ReportReaderTest, EndsBehindAReportWhereMoreComesThanOneTurnTakes) {
  FakeNode node;
  for (int count = 0; count < 100; ++count) node.add({right, down});
  EXPECT_EQ(node.read(10), Result::More);
  EXPECT_EQ(node.reports.size(), 4U);
  EXPECT_EQ(node.left(), 288U);
  EXPECT_EQ(node.read(1), Result::More);
  EXPECT_EQ(node.reports.size(), 5U);
  EXPECT_EQ(node.read(enough), Result::Drained);
  EXPECT_EQ(node.reports, (std::vector<Report>(100, {right, down})));
}

TEST(ReportReaderTest, AFloodIsNeverReadToItsEndInOneTurn) {
  FakeNode node;
  for (int turn = 0; turn < 1000; ++turn) {
    for (int count = 0; count < 200; ++count) node.add({right});
    ASSERT_EQ(node.read(256), Result::More);
    ASSERT_EQ(node.reports.size(), 128U * (static_cast<std::size_t>(turn) + 1));
  }
}

TEST(ReportReaderTest, WhatHasNoEndYetWaitsForTheNextTurn) {
  FakeNode node;
  node.add(right, 1, LIBEVDEV_READ_STATUS_SUCCESS);
  EXPECT_EQ(node.read(1), Result::Drained);
  EXPECT_TRUE(node.reports.empty());
  node.add({down}, 2);
  EXPECT_EQ(node.read(1), Result::More);
  EXPECT_EQ(node.reports, (std::vector<Report>{{right, down}}));
}

TEST(ReportReaderTest, WhatChangedWhereTheBufferRanOverIsOneReport) {
  FakeNode node;
  node.add({EV_SYN, SYN_DROPPED, 0}, 3, LIBEVDEV_READ_STATUS_SYNC);
  node.add(right, 3, LIBEVDEV_READ_STATUS_SYNC);
  node.add(down, 3, LIBEVDEV_READ_STATUS_SYNC);
  node.fail(-EAGAIN);
  node.add({right}, 4);
  EXPECT_EQ(node.read(1), Result::More);
  EXPECT_EQ(node.reports, (std::vector<Report>{{right, down}}));
  EXPECT_EQ(node.usedFlags, (std::vector<unsigned>{LIBEVDEV_READ_FLAG_NORMAL, LIBEVDEV_READ_FLAG_SYNC,
                                                   LIBEVDEV_READ_FLAG_SYNC, LIBEVDEV_READ_FLAG_SYNC}));
  EXPECT_EQ(node.read(enough), Result::Drained);
  EXPECT_EQ(node.reports.back(), Report{right});
}

TEST(ReportReaderTest, ASignalInterruptsNothingAndTheEndOfTheNodeIsTold) {
  FakeNode node;
  node.fail(-EINTR);
  node.add({right});
  node.fail(-ENODEV);
  EXPECT_EQ(node.read(enough), Result::Gone);
  EXPECT_EQ(node.reports, (std::vector<Report>{{right}}));
}

}  // namespace
}  // namespace vorn::engine::test
