// Kills the real engine at random moments under a stream of changes, and looks each time whether every change that it
// has acknowledged is there when it starts again, and whether its settings file is readable.
//
//   engine-kills [COUNT [SEED]]      20 kills with a random seed unless told otherwise
//
// Prints what it found; the exit status is 0 where nothing was lost, 1 where something was, 2 for a wrong command line.
#include <algorithm>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <thread>

#include "e2e/EngineClient.h"
#include "e2e/KillableEngine.h"
#include "model/SettingsKeys.h"
#include "support/PrivateBus.h"

namespace {

using namespace vorn;

constexpr std::string_view namePrefix = "Change ";
// Some changes take place before most kills, and a kill may meet the very start.
constexpr int longestLifeInMicroseconds = 40'000;

std::string nameOfChange(int number) {
  return std::string(namePrefix) + std::to_string(number);
}

// The last change that a bundle holds; 0 for the factory's name.
int changeIn(const PropertyList& bundle) {
  const std::string_view name = bundle[keys::Profiles].at(0)[keys::ProfileName].string();
  int number = 0;
  if (name.starts_with(namePrefix)) {
    std::from_chars(name.data() + namePrefix.size(), name.data() + name.size(), number);
  }
  return number;
}

class Kills {
 public:
  explicit Kills(std::uint32_t seed) : mRandom(seed) {}

  // One life of the engine, from its start to its kill. False when it did not start.
  bool kill() {
    const auto engine = mEngine.start();
    if (!engine) return false;
    checkEngine();
    std::jthread killer([&engine, delay = randomDelay()] {
      std::this_thread::sleep_for(delay);
      ::kill(engine->id(), SIGKILL);
    });
    while (sendChange()) {
    }
    engine->waitForEnd();
    checkFile();
    return true;
  }

  // Starts it once more for the last look.
  bool finish() {
    const auto engine = mEngine.start();
    if (!engine) return false;
    checkEngine();
    return true;
  }

  int answered() const { return mAnswered; }
  int lost() const { return mLost; }
  int unreadable() const { return mUnreadable + mEngine.damaged(); }

 private:
  // Returns when its answer has come. False when the engine is gone.
  bool sendChange() {
    ++mSent;
    const PropertyList settings = PropertyList::dictionary({{keys::ProfileName, nameOfChange(mSent)}});
    const auto answer = mClient.ask(
        MessageID::UpdateProfile,
        PropertyList::dictionary({{requestKeys::ProfileID, 0}, {requestKeys::DeviceSettingsDictionary, settings}}));
    if (!answer) return false;
    if ((*answer)[replyKeys::ReturnStatus].toInt() == 0) {
      ++mAnswered;
      mAcknowledged = changeIn((*answer)[replyKeys::ReturnDictionary]);
    }
    return true;
  }

  void checkEngine() {
    const auto answer = mClient.ask(MessageID::GetAllSettings);
    const int inForce = answer ? changeIn((*answer)[replyKeys::AllDevSettings]) : -1;
    checkChange("the engine has", inForce);
    // A change that was on the disk without having been acknowledged is in force now.
    mAcknowledged = std::max(mAcknowledged, inForce);
  }

  void checkFile() {
    if (mAcknowledged == 0) return;
    if (const auto settings = mEngine.settingsOnDisk()) {
      checkChange("the file has", changeIn(*settings));
      return;
    }
    ++mUnreadable;
    std::printf("no readable settings after change %d\n", mSent);
  }

  void checkChange(const char* what, int change) {
    if (change >= mAcknowledged && change <= mSent) return;
    ++mLost;
    std::printf("%s change %d, acknowledged was %d of %d\n", what, change, mAcknowledged, mSent);
  }

  std::chrono::microseconds randomDelay() {
    return std::chrono::microseconds(std::uniform_int_distribution(0, longestLifeInMicroseconds)(mRandom));
  }

  test::KillableEngine mEngine;
  test::EngineClient mClient{"EngineKillsReplyPort"};
  std::mt19937 mRandom;
  int mSent = 0;
  int mAcknowledged = 0;
  int mAnswered = 0;
  int mLost = 0;
  int mUnreadable = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const auto count = argc > 1 ? test::numberIn(argv[1]) : 20;
  const auto seed = argc > 2 ? test::numberIn(argv[2]) : std::random_device()();
  if (argc > 3 || !count || !seed) {
    std::fputs("Usage: engine-kills [COUNT [SEED]]\n", stderr);
    return 2;
  }
  std::printf("seed %u\n", *seed);
  const test::PrivateBus bus;
  Kills kills(*seed);
  const auto begin = std::chrono::steady_clock::now();
  std::uint32_t killed = 0;
  while (killed < *count && kills.kill()) ++killed;
  const bool hasStarted = killed == *count && kills.finish();
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  std::printf("kills %u, changes acknowledged %d, lost %d, unreadable %d, %.1f s\n", killed, kills.answered(),
              kills.lost(), kills.unreadable(), seconds.count());
  if (!hasStarted) std::puts("the engine did not start");
  const bool isGood = hasStarted && kills.lost() == 0 && kills.unreadable() == 0 && kills.answered() > 0;
  return isGood ? EXIT_SUCCESS : EXIT_FAILURE;
}
