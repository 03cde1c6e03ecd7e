// What the history costs: the time of a change of the settings, saved on the disk, with and without it in turn, and the
// memory of a full history while the engine runs and after it has been started again. Prints medians; the folder of the
// settings is made in TMPDIR. Ends with a failure where the history costs more than its budgets.
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/history/HistoryJournal.h"
#include "core-engine/rules/ProfileRules.h"
#include "core-engine/storage/PosixFileSystem.h"
#include "core-engine/storage/SettingsBackups.h"
#include "model/SettingsKeys.h"
#include "support/StandardBundle.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace vorn::engine;
using vorn::PropertyList;
using Clock = std::chrono::steady_clock;

constexpr int changes = 200;
constexpr long memoryBudget = 2048;  // kB
constexpr double timeBudget = 5;     // %
// Between two medians of the same thing lies so much on a machine that does nothing else.
constexpr double timeNoise = 5;  // %

class RealTime : public Scheduler {
 public:
  Duration now() const override { return std::chrono::duration_cast<Duration>(Clock::now().time_since_epoch()); }
  Ticket after(Duration, std::function<void()>) override { return 0; }
  void cancel(Ticket) override {}
};

// The settings of an engine, with what goes along with each change or without.
class Settings {
 public:
  // What the folder holds is taken in the place of the bundle.
  Settings(const vorn::engine::test::TemporaryFolder& folder, const PropertyList& bundle, bool hasHistory)
      : mFolder(folder.path("state")) {
    if (hasHistory) {
      mStore.addKeeper(mBackups);
      mStore.addKeeper(mJournal);
      mStore.setChangeHandler([this](const PropertyList& before, const PropertyList& after,
                                     const ChangeOrigin& origin) { mHistory.note(before, after, origin); });
    }
    mStore.load([] { return PropertyList(); });
    if (hasHistory) mJournal.load(mFile.loadedFingerprint());
    mStore.fill(bundle);
  }

  // Another assignment of a control; each is an entry of its own.
  void assign(int number) {
    const PropertyList record = PropertyList::dictionary(
        {{vorn::keys::Command, 16}, {vorn::keys::Param1, 4 + number % 200}, {vorn::keys::Param2, number / 200}});
    const PropertyList settings =
        PropertyList::dictionary({{vorn::keys::Keys, PropertyList::dictionary({{"43", record}})}});
    put(withUpdatedProfile(mStore.bundle(), number % 4, settings).bundle, vorn::MessageID::UpdateProfile);
  }

  // A copy of the first profile in the place of the fifth, in two changes.
  void copyOrDelete(int number) {
    const PropertyList& bundle = mStore.bundle();
    const PropertyList& profiles = bundle[vorn::keys::Profiles];
    if (profiles.size() == 5) {
      put(withoutProfile(bundle, 4).bundle, vorn::MessageID::DeleteProfile);
    } else {
      const PropertyList copy = profiles.at(0).with(vorn::keys::ProfileName, "Copy " + std::to_string(number));
      put(withAddedProfile(bundle, copy, profiles.at(0)).bundle, vorn::MessageID::AddProfile);
    }
  }

 private:
  void put(const std::optional<PropertyList>& bundle, vorn::MessageID message) {
    const ChangeOrigin origin{ChangeOrigin::Kind::Request, ":1.1", "org.example.Tool", message};
    mStore.put(
        bundle, [](SettingsStore::Outcome) {}, origin);
    mStore.settle();
  }

  std::string mFolder;
  Log mLog{[](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); }};
  PosixFileSystem mFiles;
  RealTime mTime;
  SettingsFile mFile{mFiles, mLog, mFolder};
  History mHistory{mStore, mTime, [] { return std::int64_t{0}; }};
  HistoryJournal mJournal{mFiles, mLog, mFolder, mHistory};
  SettingsBackups mBackups{mFiles, mLog, mFolder, [] { return std::string("2026-01-01"); }};
  DiskThread mDisk{[] {}};
  SettingsStore mStore{mFile, mLog, &mDisk};
};

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

// Whether the history keeps within its budget.
bool compareTimes(const char* name, const PropertyList& bundle) {
  constexpr int rounds = 300;
  const vorn::engine::test::TemporaryFolder folders[2];
  Settings without(folders[0], bundle, false);
  Settings with(folders[1], bundle, true);
  std::vector<double> times[2];
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    double pair[2];
    // The one and the other first, in turn.
    for (const int each : {round % 2, 1 - round % 2}) {
      const auto begun = Clock::now();
      (each == 0 ? without : with).assign(round);
      pair[each] = std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
      times[each].push_back(pair[each]);
    }
    ratios.push_back(pair[1] / pair[0]);
  }
  const double more = 100 * (median(ratios) - 1);
  std::printf(
      "%-15s a change takes %7.3f ms, with the history %7.3f ms: %+5.1f %% (median of pairs %+5.1f %%, budget %.0f "
      "and %.0f of noise)\n",
      name, median(times[0]), median(times[1]), 100 * (median(times[1]) / median(times[0]) - 1), more, timeBudget,
      timeNoise);
  return more <= timeBudget + timeNoise;
}

long ownMemory() {
  malloc_trim(0);
  std::ifstream rollup("/proc/self/smaps_rollup");
  for (std::string word; rollup >> word;) {
    long size = 0;
    if (word == "Pss:" && rollup >> size) return size;
  }
  return 0;
}

// One of the changes that fill the history.
using Step = void (Settings::*)(int number);

// What the changes take while the engine runs, and in one that has been started again; in kB.
struct Memory {
  long running = 0;
  long restarted = 0;
};

// In a process of its own, so that nothing of another measurement is in it.
template <typename Measure>
long measured(const Measure& measure) {
  std::fflush(stdout);
  int ends[2];
  if (::pipe(ends) != 0) return 0;
  const pid_t child = ::fork();
  if (child == 0) {
    const long result = measure();
    const bool isWritten = ::write(ends[1], &result, sizeof result) == sizeof result;
    ::_exit(isWritten ? 0 : 1);
  }
  long result = 0;
  const bool isRead = ::read(ends[0], &result, sizeof result) == sizeof result;
  for (const int end : ends) ::close(end);
  ::waitpid(child, nullptr, 0);
  return isRead ? result : 0;
}

Memory memoryOf(const PropertyList& bundle, Step step, bool hasHistory) {
  const vorn::engine::test::TemporaryFolder folder;
  Memory memory;
  memory.running = measured([&] {
    Settings settings(folder, bundle, hasHistory);
    settings.assign(999);
    const long before = ownMemory();
    for (int each = 0; each < changes; ++each) (settings.*step)(each);
    return ownMemory() - before;
  });
  memory.restarted = measured([&] {
    const long before = ownMemory();
    const Settings settings(folder, bundle, hasHistory);
    return ownMemory() - before;
  });
  return memory;
}

// Whether the history keeps within its budget.
bool tellMemory(const char* name, const PropertyList& bundle, Step step) {
  const Memory without = memoryOf(bundle, step, false);
  const Memory with = memoryOf(bundle, step, true);
  const long running = with.running - without.running;
  const long restarted = with.restarted - without.restarted;
  std::printf("%-15s the history of %d changes takes %5ld kB of memory, after a start %5ld kB (budget %ld)\n", name,
              changes, running, restarted, memoryBudget);
  return running <= memoryBudget && restarted <= memoryBudget;
}

}  // namespace

int main() {
  const PropertyList large = vorn::test::largeBundle();
  bool isWithin = tellMemory("assignments", large, &Settings::assign);
  isWithin &= tellMemory("profile copies", large, &Settings::copyOrDelete);
  isWithin &= compareTimes("standard", vorn::test::standardBundle());
  isWithin &= compareTimes("large", large);
  if (!isWithin) std::puts("over the budget");
  return isWithin ? 0 : 1;
}
