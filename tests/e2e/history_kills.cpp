// Kills the real engine again and again while two clients change settings at random, undo and redo, and looks whether
// each state is the one that it should be, and whether all that can be undone leads to the first settings, exactly.
//
//   history-kills [ROUNDS [SEED]]    60 rounds with a random seed unless told otherwise; a round is a change and an
//                                    undo or a redo
//
// The engine is killed while it saves: when it has done so many things to its files, a random number of them. Prints
// what it found; the exit status is 0 where all was right, 1 where something was not, 2 for a wrong command line.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "core-engine/history/RandomChanges.h"
#include "e2e/EngineClient.h"
#include "e2e/FolderWatch.h"
#include "e2e/KillableEngine.h"
#include "model/SettingsKeys.h"
#include "support/PrivateBus.h"

namespace {

using namespace vorn;
namespace words = history::keys;
namespace methods = history::methods;

// A save does some eight things to the files.
constexpr int longestLifeInFileSteps = 120;
// The engine forgets the oldest of more than 200 changes; what is forgotten cannot be undone.
constexpr std::size_t mostStanding = 100;

class HistoryKills {
 public:
  explicit HistoryKills(std::uint32_t seed) : mSeed(seed), mRandom(seed) {}

  bool run(std::uint32_t rounds) {
    if (!begin()) return false;
    for (std::uint32_t round = 0; round < rounds && mIsGood; ++round) {
      if (standing() < mostStanding) {
        change();
        ++mChanges;
      }
      mRandom.number(2) == 0 || standing() >= mostStanding ? undo() : redo();
    }
    while (mIsGood && standing() > 0) undo();
    return mIsGood && finish();
  }

  void print(double seconds) const {
    std::printf("rounds with %d changes, %d undone, %d made again, kills %d, of these %d before an answer, %.1f s\n",
                mChanges, mUndone, mRedone, mKills, mKillsBeforeAnswer, seconds);
  }
  int kills() const { return mKills; }

 private:
  struct States {
    PropertyList before;
    PropertyList after;
  };
  // Asks for something. False when no answer came.
  using Work = std::function<bool(test::EngineClient&)>;

  bool begin() {
    mProcess = mEngine.start();
    if (!mProcess || !look()) return fail("the engine did not start");
    mFirst = mNow;
    const auto onDisk = mEngine.settingsOnDisk();
    if (!onDisk || *onDisk != mFirst) return fail("the first settings are not on the disk");
    mRandom = engine::test::RandomChanges(mSeed, mFirst[keys::Profiles].at(0));
    letLive();
    return true;
  }

  bool finish() {
    if (!mNow.isDictionary() || mNow != mFirst) return fail("all is undone, and the settings are not the first ones");
    mWatch.reset();
    ::kill(mProcess->id(), SIGKILL);
    mProcess->waitForEnd();
    const auto onDisk = mEngine.settingsOnDisk();
    if (!onDisk || *onDisk != mFirst) return fail("all is undone, and the first settings are not on the disk");
    return mEngine.damaged() == 0 || fail("the engine found damaged settings");
  }

  bool fail(const std::string& what) {
    mIsGood = false;
    std::printf("%s; after %d changes, %d undone, %d made again\n", what.c_str(), mChanges, mUndone, mRedone);
    return false;
  }

  // --- Lives of the engine

  // Until its files have been touched so often.
  void letLive() {
    mIsKilled = false;
    mWatch = std::make_unique<test::FolderWatch>(mEngine.folder(), mRandom.number(longestLifeInFileSteps) + 1,
                                                 [this, id = mProcess->id()] {
                                                   mIsKilled = true;
                                                   ::kill(id, SIGKILL);
                                                 });
  }

  // What a client can see of it.
  bool look() {
    const auto settings = client().ask(MessageID::GetAllSettings);
    const BusAnswer entries = client().callHistory(methods::Entries);
    if (!settings || entries.status != BusAnswer::Status::Success) return false;
    mNow = (*settings)[replyKeys::AllDevSettings];
    mEntries = entries.values.at(0);
    return true;
  }

  test::EngineClient& client() { return mClients.at(static_cast<std::size_t>(mRandom.number(2))); }

  // wanted: the settings afterwards. Where the engine is killed meanwhile, they may be the ones of before too, unless
  // it has answered.
  void perform(const Work& work, const PropertyList& wanted) {
    const PropertyList before = mNow;
    const bool isAnswered = work(client());
    if (!mIsGood) return;
    if ((!isAnswered || !look()) && !restart(isAnswered)) return;
    const bool isRight = mNow == wanted || (!isAnswered && mNow == before);
    if (!isRight) {
      fail(isAnswered ? "what was answered is not in force" : "the settings are neither the old nor the new ones");
    }
    note(before);
  }

  bool restart(bool isAnswered) {
    if (!mIsKilled) return fail("the engine gave no answer");
    mWatch.reset();
    mProcess->waitForEnd();
    ++mKills;
    if (!isAnswered) ++mKillsBeforeAnswer;
    const auto onDisk = mEngine.settingsOnDisk();
    if (!onDisk) return fail("the settings on the disk are not whole");
    mProcess = mEngine.start();
    if (!mProcess || !look()) return fail("the engine did not start again");
    if (mNow != *onDisk) return fail("the engine has other settings than the disk");
    letLive();
    return true;
  }

  // --- The history

  std::size_t undone() const {
    const auto entries = mEntries.elements();
    return static_cast<std::size_t>(std::count_if(entries.begin(), entries.end(),
                                                  [](const auto& entry) { return entry[words::IsUndone].toBool(); }));
  }
  std::size_t standing() const { return mEntries.size() - undone(); }

  // Which settings are before and after the newest change.
  void note(const PropertyList& before) {
    if (mEntries.isEmpty() || undone() > 0) return;
    const std::int64_t id = mEntries.at(0)[words::ID].toInt64();
    if (!mStates.contains(id)) mStates[id].before = before;
    mStates[id].after = mNow;
  }

  void change() {
    const engine::test::RandomChange change = mRandom.next(mNow);
    perform([&change](test::EngineClient& client) { return client.ask(change.request, change.keys).has_value(); },
            change.bundle);
  }
  void undo() {
    if (standing() == 0) return;
    const std::int64_t id = mEntries.at(static_cast<std::int64_t>(undone()))[words::ID].toInt64();
    ++mUndone;
    perform([this, id](test::EngineClient& client) { return step(client, methods::Undo, id); }, mStates.at(id).before);
  }
  void redo() {
    if (undone() == 0) return;
    const std::int64_t id = mEntries.at(static_cast<std::int64_t>(undone()) - 1)[words::ID].toInt64();
    ++mRedone;
    perform([this, id](test::EngineClient& client) { return step(client, methods::Redo, id); }, mStates.at(id).after);
  }

  bool step(test::EngineClient& client, const char* method, std::int64_t id) {
    const BusAnswer answer = client.callHistory(method, {{"t", id}});
    if (answer.status == BusAnswer::Status::Success) {
      return answer.values.at(1).toInt64() == 0 || fail("values conflict that nobody has changed");
    }
    return mIsKilled ? false : fail(std::string(method) + ": " + answer.error);
  }

  std::uint32_t mSeed;
  engine::test::RandomChanges mRandom;
  test::KillableEngine mEngine;
  std::array<test::EngineClient, 2> mClients{
      {test::EngineClient("HistoryKillsOne"), test::EngineClient("HistoryKillsTwo")}};
  std::unique_ptr<test::ChildProcess> mProcess;
  std::atomic<bool> mIsKilled = false;
  std::unique_ptr<test::FolderWatch> mWatch;
  PropertyList mFirst;
  PropertyList mNow;
  PropertyList mEntries;                   // the newest first
  std::map<std::int64_t, States> mStates;  // of the entries, by their IDs
  bool mIsGood = true;
  int mChanges = 0;
  int mUndone = 0;
  int mRedone = 0;
  int mKills = 0;
  int mKillsBeforeAnswer = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const auto rounds = argc > 1 ? test::numberIn(argv[1]) : 60;
  const auto seed = argc > 2 ? test::numberIn(argv[2]) : std::random_device()();
  if (argc > 3 || !rounds || !seed) {
    std::fputs("Usage: history-kills [ROUNDS [SEED]]\n", stderr);
    return 2;
  }
  std::printf("seed %u\n", *seed);
  const test::PrivateBus bus;
  HistoryKills kills(*seed);
  const auto begin = std::chrono::steady_clock::now();
  const bool isGood = kills.run(*rounds);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  kills.print(seconds.count());
  if (kills.kills() == 0) std::puts("the engine was never killed");
  return isGood && kills.kills() > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
