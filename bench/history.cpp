// What the history costs: the time of a change of the settings, saved on the disk, with and without it in turn, and the
// memory of a full history. Prints medians; the folder of the settings is made in TMPDIR.
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
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

class RealTime : public Scheduler {
 public:
  Duration now() const override { return std::chrono::duration_cast<Duration>(Clock::now().time_since_epoch()); }
  Ticket after(Duration, std::function<void()>) override { return 0; }
  void cancel(Ticket) override {}
};

// The settings of an engine, with what goes along with each change or without.
class Settings {
 public:
  Settings(const PropertyList& bundle, bool hasHistory) {
    if (hasHistory) {
      mStore.addKeeper(mBackups);
      mStore.addKeeper(mJournal);
      mStore.setChangeHandler([this](const PropertyList& before, const PropertyList& after,
                                     const ChangeOrigin& origin) { mHistory.note(before, after, origin); });
    }
    mStore.fill(bundle);
  }

  // Another assignment of a control; each is an entry of its own.
  void change(int number) {
    const PropertyList record = PropertyList::dictionary(
        {{vorn::keys::Command, 16}, {vorn::keys::Param1, 4 + number % 200}, {vorn::keys::Param2, number / 200}});
    const PropertyList settings =
        PropertyList::dictionary({{vorn::keys::Keys, PropertyList::dictionary({{"43", record}})}});
    const ChangeOrigin origin{ChangeOrigin::Kind::Request, ":1.1", "org.example.Tool", vorn::MessageID::UpdateProfile};
    mStore.put(
        withUpdatedProfile(mStore.bundle(), number % 5, settings).bundle, [](SettingsStore::Outcome) {}, origin);
    mStore.settle();
  }
  std::size_t entries() const { return mHistory.entries().all().size(); }

 private:
  vorn::engine::test::TemporaryFolder mFolder;
  Log mLog{[](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); }};
  PosixFileSystem mFiles;
  RealTime mTime;
  SettingsFile mFile{mFiles, mLog, mFolder.path("state")};
  History mHistory{mStore, mTime, [] { return std::int64_t{0}; }};
  HistoryJournal mJournal{mFiles, mLog, mFolder.path("state"), mHistory};
  SettingsBackups mBackups{mFiles, mLog, mFolder.path("state"), [] { return std::string("2026-01-01"); }};
  DiskThread mDisk{[] {}};
  SettingsStore mStore{mFile, mLog, &mDisk};
};

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

void compareTimes(const char* name, const PropertyList& bundle) {
  constexpr int rounds = 300;
  Settings with(bundle, true);
  Settings without(bundle, false);
  std::vector<double> times[2];
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    double pair[2];
    // The one and the other first, in turn.
    for (const int each : {round % 2, 1 - round % 2}) {
      const auto begun = Clock::now();
      (each == 0 ? without : with).change(round);
      pair[each] = std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
      times[each].push_back(pair[each]);
    }
    ratios.push_back(pair[1] / pair[0]);
  }
  std::printf("%-9s a change takes %7.3f ms, with the history %7.3f ms: %+5.1f %% (median of pairs %+5.1f %%)\n", name,
              median(times[0]), median(times[1]), 100 * (median(times[1]) / median(times[0]) - 1),
              100 * (median(ratios) - 1));
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

// In a process of its own, so that nothing of another measurement is in it.
void tellMemory(const PropertyList& bundle, bool hasHistory) {
  std::fflush(stdout);
  const pid_t child = ::fork();
  if (child == 0) {
    Settings settings(bundle, hasHistory);
    settings.change(999);
    const long before = ownMemory();
    for (int each = 0; each < 200; ++each) settings.change(each);
    std::printf("large     200 changes %s history take %5ld kB of memory, entries: %zu\n",
                hasHistory ? "with" : "without", ownMemory() - before, settings.entries());
    std::fflush(stdout);
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
}

}  // namespace

int main() {
  const PropertyList large = vorn::test::largeBundle();
  tellMemory(large, false);
  tellMemory(large, true);
  compareTimes("standard", vorn::test::standardBundle());
  compareTimes("large", large);
  return 0;
}
