#include "core-engine/history/HistoryService.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "protocol/History.h"

namespace vorn::engine {

namespace {

namespace words = history::keys;
namespace methods = history::methods;
using Outcome = History::Outcome;

// nothingLeft: the text of the error where there is nothing to do.
BusReply failure(Outcome outcome, const char* nothingLeft) {
  switch (outcome) {
    case Outcome::NothingLeft:
      return BusReply::failure(history::errors::NothingLeft, nothingLeft);
    case Outcome::ChangedSince:
      return BusReply::failure(history::errors::ChangedSince,
                               "All that it changed has been changed again since; nothing has been changed now");
    case Outcome::NotSaved:
      return BusReply::failure(history::errors::NotSaved,
                               "The settings cannot be saved, so nothing has been changed; the engine's log says why");
    case Outcome::Outdated:
      return BusReply::failure(history::errors::Outdated,
                               "Another change comes next than the one that is meant; nothing has been changed");
    case Outcome::Done:
      break;
  }
  return BusReply::success();
}

}  // namespace

bool HistoryService::start(std::string& error) {
  BusObjectDescription description{history::busName, history::objectPath, history::interface, {}, {}};
  const auto one = [this](const char* nothingLeft) {
    return [this, nothingLeft](const History::Result& result) {
      if (result.outcome != Outcome::Done) return failure(result.outcome, nothingLeft);
      return BusReply::success({told(result.entry), result.conflicts});
    };
  };
  const auto several = [](const History::Result& result) {
    if (result.outcome != Outcome::Done) return failure(result.outcome, "There is no such change");
    return BusReply::success({result.entries, result.conflicts});
  };
  const std::vector<BusArgument> changed = {{"a{sv}", "entry"}, {"u", "conflicts"}};
  description.methods = {
      change(
          methods::Undo, {{"t", "id"}}, changed,
          [this](const Values& given, const History::Done& done) { mHistory.undo(given[0].toUnsigned(), done); },
          one("No change is left to be undone")),
      change(
          methods::Redo, {{"t", "id"}}, changed,
          [this](const Values& given, const History::Done& done) { mHistory.redo(given[0].toUnsigned(), done); },
          one("No change is left to be made again")),
      change(
          methods::GoTo, {{"t", "id"}}, {{"u", "changes"}, {"u", "conflicts"}},
          [this](const Values& given, const History::Done& done) { mHistory.goTo(given[0].toUnsigned(), done); },
          several),
      method(methods::Entries, {}, {{"aa{sv}", "entries"}},
             [this](const Values&, const BusReturn& reply) { reply(BusReply::success({entries()})); }),
      method(methods::Backups, {}, {{"aa{sv}", "backups"}},
             [this](const Values&, const BusReturn& reply) { tellBackups(reply); }),
      method(methods::RestoreBackup, {{"s", "date"}}, {},
             [this](const Values& given, const BusReturn& reply) { restoreBackup(given[0].toString(), reply); }),
  };
  description.signals.push_back({history::signalNames::Changed, {}});
  mObject = BusObject::create(std::move(description), &error);
  if (!mObject) return false;
  mHistory.setChangeHandler([this] { mObject->emit(history::signalNames::Changed, {}); });
  return true;
}

BusMethod HistoryService::method(const char* name, std::vector<BusArgument> inputs, std::vector<BusArgument> outputs,
                                 const Served& serve) const {
  BusMethod result{name, std::move(inputs), std::move(outputs), {}};
  result.callLater = [this, serve](const Values& given, const std::string& connection, const BusReturn& reply) {
    const auto work = [serve, given, reply](const std::function<void()>& ended) {
      serve(given, [reply, ended](const BusReply& answer) {
        reply(answer);
        ended();
      });
    };
    if (!mInTurn(connection, work)) {
      reply(BusReply::failure(history::errors::LimitsExceeded, "Too many requests of this program wait already"));
    }
  };
  return result;
}

BusMethod HistoryService::change(const char* name, std::vector<BusArgument> inputs, std::vector<BusArgument> outputs,
                                 const Operation& operation, const Answer& answer) const {
  return method(name, std::move(inputs), std::move(outputs),
                [operation, answer](const Values& given, const BusReturn& reply) {
                  operation(given, [answer, reply](const History::Result& result) { reply(answer(result)); });
                });
}

void HistoryService::tellBackups(const BusReturn& reply) {
  const auto found = std::make_shared<std::vector<SettingsBackups::Backup>>();
  const auto look = [this, found] { *found = mBackups.list(); };
  mStore.useDisk(look, [found, reply] {
    std::vector<PropertyList> backups;
    for (const SettingsBackups::Backup& each : *found) {
      backups.push_back(PropertyList::dictionary(
          {{words::Date, each.date}, {history::backupKeys::Time, each.time}, {history::backupKeys::Size, each.size}}));
    }
    reply(BusReply::success({PropertyList::array(std::move(backups))}));
  });
}

void HistoryService::restoreBackup(const std::string& date, const BusReturn& reply) {
  struct Found {
    std::optional<PropertyList> bundle;
    std::string error;
  };
  const auto found = std::make_shared<Found>();
  const auto look = [this, found, date] { found->bundle = mBackups.read(date, found->error); };
  mStore.useDisk(look, [this, found, date, reply] {
    if (!found->bundle) return reply(BusReply::failure(history::errors::NoBackup, found->error));
    mHistory.putBackup(*found->bundle, date,
                       [reply](const History::Result& result) { reply(failure(result.outcome, "")); });
  });
}

PropertyList HistoryService::told(const History::Entry& entry) const {
  const auto& entries = mHistory.entries().all();
  const auto standing = static_cast<std::ptrdiff_t>(mHistory.entries().standing());
  const bool isUndone = std::any_of(entries.begin() + standing, entries.end(),
                                    [&](const History::Entry& each) { return each.id == entry.id; });
  const PropertyList result = entry.description.merging(
      PropertyList::dictionary({{words::ID, entry.id}, {words::Time, entry.time}, {words::IsUndone, isUndone}}));
  return entry.sourceApp.empty() ? result : result.with(words::SourceApp, entry.sourceApp);
}

PropertyList HistoryService::entries() const {
  const auto& entries = mHistory.entries().all();
  std::vector<PropertyList> newestFirst;
  std::transform(entries.rbegin(), entries.rend(), std::back_inserter(newestFirst),
                 [this](const History::Entry& each) { return told(each); });
  return PropertyList::array(std::move(newestFirst));
}

}  // namespace vorn::engine
