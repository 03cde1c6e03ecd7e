#include "app/SettingsHistory.h"

#include <QPointer>
#include <algorithm>
#include <utility>

#include "protocol/EngineProtocol.h"
#include "protocol/History.h"

namespace skarn {

namespace kinds = vorn::history::kinds;
namespace words = vorn::history::keys;
using vorn::HistoryAnswer;
using vorn::HistoryCall;
using vorn::PropertyList;
using Outcome = HistoryAnswer::Outcome;
using Result = HistoryReport::Result;

namespace {

std::int64_t idOf(const PropertyList& entry) {
  return entry[words::ID].toInt64();
}

bool isOfThisWindow(const PropertyList& entry) {
  return entry[words::SourceApp].string() == vorn::configuratorIdentifier;
}

Result resultOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Done:
      return Result::Done;
    case Outcome::NothingLeft:
      return Result::NothingLeft;
    case Outcome::ChangedSince:
      return Result::ChangedSince;
    case Outcome::Outdated:
      return Result::OtherCameBetween;
    case Outcome::NotSaved:
      return Result::NotSaved;
    case Outcome::NoHistory:
      return Result::NoHistory;
    case Outcome::NoAnswer:
    case Outcome::NoEngine:
      break;
  }
  return Result::NoAnswer;
}

}  // namespace

SettingsHistory::SettingsHistory(vorn::EngineLink& link) : mLink(link) {
  mRest.setSingleShot(true);
  connect(&mRest, &QTimer::timeout, this, [this] {
    if (mMustFetch) fetch();
  });
  mLink.watchHistory([this] { refresh(); });
}

SettingsHistory::~SettingsHistory() {
  mLink.watchHistory({});
}

template <typename Done>
void SettingsHistory::ask(const vorn::HistoryRequest& request, Done done) {
  mLink.askHistory(request, [history = QPointer(this), session = mSession, done](const HistoryAnswer& answer) {
    if (history && history->mSession == session) done(answer);
  });
}

// --- What is known

void SettingsHistory::begin() {
  if (mIsThere) return;
  mIsThere = true;
  ++mSession;
  refresh();
}

void SettingsHistory::end() {
  if (!std::exchange(mIsThere, false)) return;
  ++mSession;
  mIsKnown = false;
  mIsKept = false;
  mEntries = PropertyList::array();
  mNewestSeen.reset();
  mRest.stop();
  mIsFetching = false;
  mMustFetch = false;
  mSteps.clear();
  mStep.reset();
  mReport = {};
  emit changed();
}

std::int64_t SettingsHistory::undoneCount() const {
  const auto entries = mEntries.elements();
  const auto done = std::find_if(entries.begin(), entries.end(),
                                 [](const PropertyList& entry) { return !entry[words::IsUndone].toBool(); });
  return done - entries.begin();
}

void SettingsHistory::refresh() {
  if (!mIsThere) return;
  if (mIsFetching || mRest.isActive()) {
    mMustFetch = true;
  } else {
    fetch();
  }
}

void SettingsHistory::fetch() {
  mIsFetching = true;
  mMustFetch = false;
  ask({HistoryCall::Entries}, [this](const HistoryAnswer& answer) {
    mIsFetching = false;
    mRest.start(newsRest);
    take(answer);
  });
}

void SettingsHistory::take(const HistoryAnswer& answer) {
  // What came without an answer is told with the next change.
  if (answer.outcome != Outcome::Done && answer.outcome != Outcome::NoHistory) return;
  mIsKnown = true;
  mIsKept = answer.outcome == Outcome::Done;
  mEntries = answer.value.arrayOrEmpty();
  emit changed();
  noteNewest();
}

void SettingsHistory::noteNewest() {
  const PropertyList& newest = mEntries.at(0);
  const std::optional<std::int64_t> before = std::exchange(mNewestSeen, idOf(newest));
  const std::string_view kind = newest[words::Kind].string();
  const bool isDeletion =
      kind == kinds::ProfileDeleted || kind == kinds::MacroDeleted || kind == kinds::MacroEventsRemoved;
  // What was there when the list was first told is old.
  const bool isNew = before && idOf(newest) > *before && !newest[words::IsUndone].toBool();
  if (isNew && isOfThisWindow(newest) && isDeletion) emit deleted(newest);
}

// --- Steps

void SettingsHistory::goTo(std::int64_t id) {
  const auto entries = mEntries.elements();
  const auto isUndone = [id](const PropertyList& entry) {
    return idOf(entry) == id && entry[words::IsUndone].toBool();
  };
  const bool isRedo = std::any_of(entries.begin(), entries.end(), isUndone);
  add({.request = {HistoryCall::GoTo, id}, .isRedo = isRedo, .next = isRedo ? nextRedo() : nextUndo()});
}

void SettingsHistory::addNext(HistoryCall call) {
  const std::int64_t id = nextAfterSteps(call == HistoryCall::Redo);
  add({.request = {call, id}, .newestKnown = idOf(mEntries.at(0))});
}

std::int64_t SettingsHistory::nextAfterSteps(bool isRedo) const {
  std::int64_t position = undoneCount();
  std::deque<Step> steps = mSteps;
  if (mStep) steps.push_front(*mStep);
  for (const Step& step : steps) {
    if (step.request.call == HistoryCall::GoTo) return 0;
    position += step.isRedo ? -1 : 1;
  }
  return idOf(mEntries.at(isRedo ? position - 1 : position));
}

void SettingsHistory::add(const Step& step) {
  if (!mIsThere) return;
  mSteps.push_back(step);
  goOn();
}

void SettingsHistory::goOn() {
  if (mStep || mSteps.empty()) return;
  mStep = mSteps.front();
  mSteps.pop_front();
  const Step step = *mStep;
  mReport.isRedo = step.isRedo;
  const bool isNamed = step.request.call == HistoryCall::GoTo || step.request.change != 0;
  isNamed ? perform(step) : look(step);
}

void SettingsHistory::perform(const Step& step) {
  ask(step.request, [this, step](const HistoryAnswer& answer) { stepEnded(step, answer); });
}

void SettingsHistory::stepEnded(const Step& step, const HistoryAnswer& answer) {
  if (answer.outcome == Outcome::Outdated && !step.isExact) return look(step);
  if (answer.outcome != Outcome::Done) {
    stop(resultOf(answer.outcome));
    // Whatever it has done.
    refresh();
    return;
  }
  const bool isOne = step.request.call != HistoryCall::GoTo;
  if (isOne) noteDone(step.request.change, step.isRedo);
  mReport.steps += isOne ? 1 : answer.value.toInt64();
  mReport.last = isOne ? answer.value : step.next;
  mReport.conflicts += answer.conflicts;
  if (mSteps.empty() || mSteps.front().isRedo != step.isRedo) {
    reportSteps(Result::Done);
  } else {
    mStep.reset();
  }
  goOn();
}

void SettingsHistory::look(const Step& step) {
  ask({HistoryCall::Entries}, [this, step](const HistoryAnswer& answer) {
    take(answer);
    lookEnded(step, answer);
  });
}

void SettingsHistory::lookEnded(Step step, const HistoryAnswer& answer) {
  if (answer.outcome != Outcome::Done) return stop(resultOf(answer.outcome));
  const PropertyList next = step.isRedo ? nextRedo() : nextUndo();
  if (next.isNone()) return stop(Result::NothingLeft);
  // The person may have changed something before its name stood anywhere, but nobody else's change is meant.
  const bool isMeant = !step.isRedo && isOfThisWindow(next) && idOf(next) > step.newestKnown;
  if (!isMeant) return stop(Result::OtherCameBetween);
  step.request.change = idOf(next);
  step.isExact = true;
  nameStepsAfter(step);
  perform(step);
}

void SettingsHistory::nameStepsAfter(const Step& step) {
  std::int64_t position = undoneCount() + 1;
  for (Step& each : mSteps) {
    if (each.request.call == HistoryCall::GoTo) return;
    const PropertyList& next = mEntries.at(each.isRedo ? position - 1 : position);
    position += each.isRedo ? -1 : 1;
    if (each.isExact || each.newestKnown >= step.request.change) continue;
    // What nobody has seen here is not meant, unless it was made here.
    if (idOf(next) <= each.newestKnown || isOfThisWindow(next)) each.request.change = idOf(next);
  }
}

void SettingsHistory::noteDone(std::int64_t id, bool isRedo) {
  const std::int64_t position = isRedo ? undoneCount() - 1 : undoneCount();
  const PropertyList& entry = mEntries.at(position);
  if (entry.isNone() || idOf(entry) != id) return;
  mEntries = mEntries.replacing(position, entry.with(words::IsUndone, !isRedo));
  emit changed();
}

void SettingsHistory::stop(Result result) {
  mSteps.clear();
  reportSteps(result);
}

void SettingsHistory::reportSteps(Result result) {
  mStep.reset();
  HistoryReport report = std::exchange(mReport, {});
  report.result = result;
  emit stepsEnded(report);
}

}  // namespace skarn
