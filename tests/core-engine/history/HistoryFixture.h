// The history over settings in memory, changed by the rules of the engine, in the time of the test.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/TestBundle.h"
#include "core-engine/TestParts.h"
#include "core-engine/history/History.h"
#include "core-engine/rules/MacroRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "support/StandardBundle.h"

namespace vorn::engine::test {

// Who changes something.
inline const ChangeOrigin mouse;
inline const ChangeOrigin window{ChangeOrigin::Kind::Request, ":1.1", "org.vorn.SkarnConfigurator",
                                 MessageID::UpdateProfile};
inline const ChangeOrigin other{ChangeOrigin::Kind::Request, ":1.2", "org.vorn.vornctl", MessageID::UpdateProfile};

inline ChangeOrigin asking(ChangeOrigin origin, MessageID request) {
  origin.request = request;
  return origin;
}

inline PropertyList setting(std::string_view key, const PropertyList& value) {
  return PropertyList::dictionary({{key, value}});
}

class HistoryFixture : public testing::Test {
 protected:
  HistoryFixture() {
    mStore.fill(bundleWithMacros(3));
    mStore.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
      mHistory.note(before, after, origin);
    });
    mHistory.setChangeHandler([this] { ++mTold; });
  }

  // A request of the author that makes the new bundle.
  template <typename Change>
  void request(const ChangeOrigin& origin, const Change& change) {
    const auto outcome =
        mStore.apply([&](const PropertyList& bundle) { return std::optional(change(bundle)); }, origin);
    EXPECT_EQ(outcome, SettingsStore::Outcome::Done);
  }
  // What an operation of the history comes to, which is done within the call without a disk thread.
  template <typename Operation>
  static History::Result resultOf(const Operation& operation) {
    std::vector<History::Result> told;
    operation([&told](const History::Result& result) { told.push_back(result); });
    EXPECT_EQ(told.size(), 1U);
    return told.empty() ? History::Result{} : told.front();
  }
  History::Result undo() {
    return resultOf([this](const auto& done) { mHistory.undo(0, done); });
  }
  History::Result redo() {
    return resultOf([this](const auto& done) { mHistory.redo(0, done); });
  }
  History::Result goTo(std::uint64_t id) {
    return resultOf([this, id](const auto& done) { mHistory.goTo(id, done); });
  }
  void update(const ChangeOrigin& origin, const PropertyList& settings, std::int32_t profileID = 0) {
    request(origin,
            [&](const PropertyList& bundle) { return *withUpdatedProfile(bundle, profileID, settings).bundle; });
  }
  void deleteMacro(const ChangeOrigin& origin, std::int32_t macroID) {
    request(asking(origin, MessageID::DeleteMacro),
            [&](const PropertyList& bundle) { return withoutMacro(bundle, macroID).value; });
  }
  // What a client sends after a deletion.
  void cleanUp(const ChangeOrigin& origin) {
    request(asking(origin, MessageID::ReplaceAllProfiles), [](const PropertyList& bundle) {
      const PropertyList keys = setting("Keys", setting("43", assignment(45, 43)));
      return *withUpdatedProfile(bundle, 1, keys).bundle;
    });
  }
  void addProfile(const ChangeOrigin& origin, const std::string& name, bool isContinuation = false) {
    ChangeOrigin adding = asking(origin, MessageID::AddProfile);
    adding.isContinuation = isContinuation;
    request(adding, [&](const PropertyList& bundle) {
      return *withAddedProfile(bundle, bundle["Profiles"].at(0).with("ProfileName", name), PropertyList()).bundle;
    });
  }
  void switchProfile(const ChangeOrigin& origin, std::int64_t position) {
    request(asking(origin, MessageID::SwitchProfile),
            [&](const PropertyList& bundle) { return *withActiveProfile(bundle, position).bundle; });
  }
  void deleteProfile(const ChangeOrigin& origin, std::int64_t position) {
    request(asking(origin, MessageID::DeleteProfile),
            [&](const PropertyList& bundle) { return *withoutProfile(bundle, position).bundle; });
  }
  // So many profiles are left, without an entry.
  void makeRoom(std::size_t count) {
    while (now()["Profiles"].size() > count) deleteProfile(mouse, static_cast<std::int64_t>(count));
  }
  void letPass(std::chrono::milliseconds time) { mScheduler.advance(time); }

  const PropertyList& now() const { return mStore.bundle(); }
  std::vector<std::string> entries() const {
    std::vector<std::string> result;
    for (const History::Entry& each : mHistory.entries().all()) result.push_back(each.description["kind"].toString());
    return result;
  }

  using Outcome = History::Outcome;
  using Kinds = std::vector<std::string>;

  MemoryFileSystem mDisk;
  Log mLog{[](const std::string&) {}};
  SettingsFile mFile{mDisk, mLog, "/state"};
  SettingsStore mStore{mFile, mLog};
  ManualScheduler mScheduler;
  std::int64_t mTime = 1'700'000'000;
  History mHistory{mStore, mScheduler, [this] { return mTime; }};
  int mTold = 0;
};

}  // namespace vorn::engine::test
