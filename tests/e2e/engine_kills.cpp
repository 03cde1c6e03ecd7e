// Kills the real engine at random moments under a stream of changes, and looks each time whether every change that it
// has acknowledged is there when it starts again, and whether its settings file is readable.
//
//   engine-kills [COUNT [SEED]]      20 kills with a random seed unless told otherwise
//
// Prints what it found; the exit status is 0 where nothing was lost, 1 where something was, 2 for a wrong command line.
#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>

#include "core-engine/rules/BundleRules.h"
#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"
#include "ports/MessagePort.h"
#include "protocol/EngineProtocol.h"
#include "support/ChildProcess.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace vorn;
using test::ChildProcess;

constexpr std::string_view replyPortName = "EngineKillsReplyPort";
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
  explicit Kills(std::uint32_t seed) : mRandom(seed) {
    mLoop.run([this] {
      mPort = LocalMessagePort::create(replyPortName,
                                       [this](const LocalMessagePort::Message& message) { return receive(message); });
    });
  }
  ~Kills() {
    mLoop.run([this] { mPort.reset(); });
  }
  Kills(const Kills&) = delete;
  Kills& operator=(const Kills&) = delete;

  // One life of the engine, from its start to its kill. False when it did not start.
  bool kill() {
    const auto engine = start();
    if (!engine) return false;
    checkEngine();
    std::jthread killer([&engine, delay = randomDelay()] {
      std::this_thread::sleep_for(delay);
      ::kill(engine->id(), SIGKILL);
    });
    while (sendChange()) {
    }
    engine->waitForEnd();
    fence();
    checkFile();
    return true;
  }

  // Starts it once more for the last look.
  bool finish() {
    const auto engine = start();
    if (!engine) return false;
    checkEngine();
    return true;
  }

  int answered() const { return mAnswered; }
  int lost() const { return mLost; }
  int unreadable() const { return mUnreadable; }

 private:
  std::unique_ptr<ChildProcess> start() {
    auto engine = std::make_unique<ChildProcess>(
        std::vector<std::string>{"sh", "-c", "exec \"$@\" 2>&1", "sh", ENGINE_PROGRAM, "--state-dir",
                                 mFolder.path("state"), "--defaults", BUILT_DEFAULTS});
    const auto line = engine->waitForLine([&](const std::string& each) {
      if (each.find("damaged") != std::string::npos) ++mUnreadable;
      return each.find("ready, ") != std::string::npos;
    });
    return line ? std::move(engine) : nullptr;
  }

  PropertyList request() const {
    return PropertyList::dictionary(
        {{requestKeys::ProductID, wiredProductID}, {requestKeys::ResponseMsgPortName, replyPortName}});
  }

  // Returns when its answer has come. False when the engine is gone.
  bool send(MessageID messageID, const PropertyList& body) {
    const auto port = RemoteMessagePort::lookUp(enginePortName);
    const auto bytes = encodeBinaryPropertyList(body);
    const int answersBefore = mAnswers;
    if (!port || !bytes ||
        port->sendRequest(static_cast<std::int32_t>(messageID), *bytes, sendTimeout) !=
            RemoteMessagePort::Status::Success)
      return false;
    constexpr std::chrono::milliseconds lookInterval{5};
    std::unique_lock lock(mMutex);
    while (!mAnswerCame.wait_for(lock, lookInterval, [&] { return mAnswers > answersBefore; })) {
      if (!RemoteMessagePort::lookUp(enginePortName)) return false;
    }
    return true;
  }

  bool sendChange() {
    ++mSent;
    return send(MessageID::UpdateProfile,
                request()
                    .with(requestKeys::ProfileID, 0)
                    .with(requestKeys::DeviceSettingsDictionary,
                          PropertyList::dictionary({{keys::ProfileName, nameOfChange(mSent)}})));
  }

  // On the loop's thread.
  Bytes receive(const LocalMessagePort::Message& message) {
    const auto answer = decodeBinaryPropertyList(message.data);
    if (!answer) return {};
    if (message.messageID == static_cast<std::int32_t>(MessageID::GetAllSettings)) {
      mInForce = changeIn((*answer)[replyKeys::AllDevSettings]);
    } else if ((*answer)[replyKeys::ReturnStatus].toInt() == 0) {
      const int change = changeIn((*answer)[replyKeys::ReturnDictionary]);
      if (change > mAcknowledged) ++mAnswered;
      mAcknowledged = std::max(mAcknowledged.load(), change);
    }
    {
      const std::lock_guard lock(mMutex);
      ++mAnswers;
    }
    mAnswerCame.notify_all();
    return {};
  }

  // Returns when everything has been received that was sent to us before.
  static void fence() {
    if (const auto port = RemoteMessagePort::lookUp(replyPortName)) port->sendRequest(-1, {}, sendTimeout);
  }

  void checkEngine() {
    mInForce = -1;
    send(MessageID::GetAllSettings, request());
    fence();
    checkChange("the engine has", mInForce);
    // A change that was on the disk without having been acknowledged is in force now.
    mAcknowledged = std::max(mAcknowledged.load(), mInForce.load());
  }

  // The file in force, or the one before it where the kill came between the two renames of a save.
  void checkFile() {
    if (mAcknowledged == 0) return;
    for (const char* name : {"state/settings.plist", "state/settings.last-good.plist"}) {
      const auto contents = readPropertyListFile(mFolder.path(name));
      if (!contents) continue;
      if (!engine::isCompleteBundle(*contents)) break;
      checkChange("the file has", changeIn(*contents));
      return;
    }
    ++mUnreadable;
    std::printf("no readable settings after change %d\n", mSent);
  }

  void checkChange(const char* what, int change) {
    if (change >= mAcknowledged && change <= mSent) return;
    ++mLost;
    std::printf("%s change %d, acknowledged was %d of %d\n", what, change, mAcknowledged.load(), mSent);
  }

  std::chrono::microseconds randomDelay() {
    return std::chrono::microseconds(std::uniform_int_distribution(0, longestLifeInMicroseconds)(mRandom));
  }

  engine::test::TemporaryFolder mFolder;
  test::LoopThread mLoop;
  std::unique_ptr<LocalMessagePort> mPort;
  std::mt19937 mRandom;
  int mSent = 0;
  std::atomic<int> mAcknowledged = 0;
  std::atomic<int> mAnswered = 0;
  std::atomic<int> mInForce = -1;
  std::mutex mMutex;
  std::condition_variable mAnswerCame;
  std::atomic<int> mAnswers = 0;
  int mLost = 0;
  int mUnreadable = 0;
};

std::optional<std::uint32_t> number(std::string_view text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

int main(int argc, char** argv) {
  const auto count = argc > 1 ? number(argv[1]) : 20;
  const auto seed = argc > 2 ? number(argv[2]) : std::random_device()();
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
