#include "core-engine/history/HistoryService.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "protocol/History.h"

namespace vorn::engine {

namespace {

namespace words = history::keys;

PropertyList told(const History::Entry& entry, bool isUndone) {
  const PropertyList result = entry.description.merging(
      PropertyList::dictionary({{words::ID, entry.id}, {words::Time, entry.time}, {words::IsUndone, isUndone}}));
  return entry.sourceApp.empty() ? result : result.with(words::SourceApp, entry.sourceApp);
}

}  // namespace

bool HistoryService::start(std::string& error) {
  BusObjectDescription description{history::busName, history::objectPath, history::interface, {}, {}};
  const auto change = [this](const char* name, History::Result (History::*operation)(), const char* nothingLeft) {
    return BusMethod{name, {}, {{"a{sv}", "entry"}, {"u", "conflicts"}}, [this, operation, nothingLeft](const auto&) {
                       return answer((mHistory.*operation)(), nothingLeft);
                     }};
  };
  description.methods.push_back(change(history::methods::Undo, &History::undo, "No change is left to be undone"));
  description.methods.push_back(change(history::methods::Redo, &History::redo, "No change is left to be made again"));
  description.methods.push_back(
      {history::methods::Entries, {}, {{"aa{sv}", "entries"}}, [this](const auto&) { return entries(); }});
  description.signals.push_back({history::signals::Changed, {}});
  mObject = BusObject::create(std::move(description), &error);
  if (!mObject) return false;
  mHistory.setChangeHandler([this] { mObject->emit(history::signals::Changed, {}); });
  return true;
}

BusReply HistoryService::answer(const History::Result& result, const char* nothingLeft) const {
  switch (result.outcome) {
    case History::Outcome::NothingLeft:
      return BusReply::failure(history::errors::NothingLeft, nothingLeft);
    case History::Outcome::ChangedSince:
      return BusReply::failure(history::errors::ChangedSince, "All that it changed has been changed again since");
    case History::Outcome::NotSaved:
      return BusReply::failure(history::errors::NotSaved, "The settings cannot be saved");
    case History::Outcome::Done:
      break;
  }
  const auto& entries = mHistory.entries();
  const bool isUndone = std::any_of(entries.begin() + static_cast<std::ptrdiff_t>(mHistory.undoneFrom()), entries.end(),
                                    [&](const History::Entry& each) { return each.id == result.entry.id; });
  return BusReply::success({told(result.entry, isUndone), result.conflicts.size()});
}

BusReply HistoryService::entries() const {
  std::vector<PropertyList> newestFirst;
  const auto& entries = mHistory.entries();
  for (std::size_t position = entries.size(); position-- > 0;) {
    newestFirst.push_back(told(entries[position], position >= mHistory.undoneFrom()));
  }
  return BusReply::success({PropertyList::array(std::move(newestFirst))});
}

}  // namespace vorn::engine
