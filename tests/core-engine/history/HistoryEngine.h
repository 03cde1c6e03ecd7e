// The settings and their history as they are after a start of the engine on a disk.
#pragma once

#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/history/HistoryJournal.h"
#include "core-engine/rules/ProfileRules.h"

namespace vorn::engine::test {

// A request of the first of the clients, and what no client asked for.
inline const ChangeOrigin client{ChangeOrigin::Kind::Request, ":1.1", "org.example.Tool", MessageID::UpdateProfile};
inline const ChangeOrigin mouse;

struct HistoryEngine {
  explicit HistoryEngine(MemoryFileSystem& disk) : file(disk, log, "/state"), journal(disk, log, "/state", history) {
    store.addKeeper(journal);
    store.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
      history.note(before, after, origin);
    });
    store.load([] { return PropertyList(); });
    journal.load(file.loadedFingerprint());
  }

  SettingsStore::Outcome change(const PropertyList& bundle, const ChangeOrigin& origin = client) {
    return store.apply([&](const PropertyList&) { return bundle; }, origin);
  }
  SettingsStore::Outcome rename(const std::string& name, int profileID = 0, const ChangeOrigin& origin = client) {
    const PropertyList settings = PropertyList::dictionary({{"ProfileName", name}});
    return change(*withUpdatedProfile(now(), profileID, settings).bundle, origin);
  }
  // Without a disk thread these are done within the call.
  History::Result undoResult() {
    return resultOf([this](const History::Done& done) { history.undo(0, done); });
  }
  History::Result redoResult() {
    return resultOf([this](const History::Done& done) { history.redo(0, done); });
  }
  History::Outcome undo() { return undoResult().outcome; }
  History::Outcome redo() { return redoResult().outcome; }
  History::Outcome goTo(std::uint64_t id) {
    return resultOf([this, id](const History::Done& done) { history.goTo(id, done); }).outcome;
  }
  void undoAll() {
    while (undo() == History::Outcome::Done) {
    }
  }
  const PropertyList& now() const { return store.bundle(); }
  std::vector<HistoryEntry> entries() const { return {history.entries().all().begin(), history.entries().all().end()}; }

  std::vector<std::string> lines;
  Log log{[this](const std::string& line) { lines.push_back(line); }};
  ManualScheduler scheduler;
  std::int64_t time = 1'700'000'000;
  SettingsFile file;
  History history{store, scheduler, [this] { return ++time; }};
  HistoryJournal journal;
  SettingsStore store{file, log};

 private:
  template <typename Operation>
  static History::Result resultOf(const Operation& operation) {
    History::Result told{};
    operation([&told](const History::Result& result) { told = result; });
    return told;
  }
};

}  // namespace vorn::engine::test
