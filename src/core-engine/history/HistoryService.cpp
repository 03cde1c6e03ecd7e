#include "core-engine/history/HistoryService.h"

#include <algorithm>
#include <cstddef>
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
  const std::vector<BusArgument> change = {{"a{sv}", "entry"}, {"u", "conflicts"}};
  description.methods = {
      method(
          methods::Undo, {}, change, [this](const Values&, const History::Done& done) { mHistory.undo(done); },
          one("No change is left to be undone")),
      method(
          methods::Redo, {}, change, [this](const Values&, const History::Done& done) { mHistory.redo(done); },
          one("No change is left to be made again")),
      method(
          methods::GoTo, {{"t", "id"}}, {{"u", "changes"}, {"u", "conflicts"}},
          [this](const Values& given, const History::Done& done) { mHistory.goTo(given[0].toUnsigned(), done); },
          several),
      method(
          methods::Entries, {}, {{"aa{sv}", "entries"}},
          [](const Values&, const History::Done& done) { done({Outcome::Done}); },
          [this](const History::Result&) { return BusReply::success({entries()}); }),
  };
  description.signals.push_back({history::signals::Changed, {}});
  mObject = BusObject::create(std::move(description), &error);
  if (!mObject) return false;
  mHistory.setChangeHandler([this] { mObject->emit(history::signals::Changed, {}); });
  return true;
}

BusMethod HistoryService::method(const char* name, std::vector<BusArgument> inputs, std::vector<BusArgument> outputs,
                                 const Operation& operation, const Answer& answer) const {
  BusMethod result{name, std::move(inputs), std::move(outputs), {}};
  result.callLater = [this, operation, answer](const Values& given, const std::string& connection,
                                               const BusReturn& reply) {
    const auto work = [operation, answer, given, reply](const std::function<void()>& ended) {
      operation(given, [answer, reply, ended](const History::Result& outcome) {
        reply(answer(outcome));
        ended();
      });
    };
    if (!mInTurn(connection, work)) {
      reply(BusReply::failure(history::errors::LimitsExceeded, "Too many requests of this program wait already"));
    }
  };
  return result;
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
