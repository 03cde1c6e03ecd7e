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

Result resultOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Done:
      return Result::Done;
    case Outcome::NothingLeft:
      return Result::NothingLeft;
    case Outcome::ChangedSince:
      return Result::ChangedSince;
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
  mIsStepping = false;
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
  const bool isOurs = newest[words::SourceApp].string() == vorn::configuratorIdentifier;
  const std::string_view kind = newest[words::Kind].string();
  const bool isDeletion =
      kind == kinds::ProfileDeleted || kind == kinds::MacroDeleted || kind == kinds::MacroEventsRemoved;
  // What was there when the list was first told is old.
  const bool isNew = before && idOf(newest) > *before && !newest[words::IsUndone].toBool();
  if (isNew && isOurs && isDeletion) emit deleted(newest);
}

// --- Steps

void SettingsHistory::goTo(std::int64_t id) {
  const auto entries = mEntries.elements();
  const auto isUndone = [id](const PropertyList& entry) {
    return idOf(entry) == id && entry[words::IsUndone].toBool();
  };
  const bool isRedo = std::any_of(entries.begin(), entries.end(), isUndone);
  add({{HistoryCall::GoTo, id}, std::nullopt, isRedo, isRedo ? nextRedo() : nextUndo()});
}

void SettingsHistory::add(const Step& step) {
  if (!mIsThere) return;
  mSteps.push_back(step);
  goOn();
}

void SettingsHistory::goOn() {
  if (mIsStepping || mSteps.empty()) return;
  mIsStepping = true;
  const Step step = mSteps.front();
  mSteps.pop_front();
  mReport.isRedo = step.isRedo;
  ask(step.request, [this, step](const HistoryAnswer& answer) { stepEnded(step, answer); });
}

void SettingsHistory::stepEnded(const Step& step, const HistoryAnswer& answer) {
  if (answer.outcome != Outcome::Done) {
    mSteps.clear();
    reportSteps(resultOf(answer.outcome));
    // Whatever it has done.
    refresh();
    return;
  }
  if (step.id && idOf(answer.value) != *step.id) return putBack();
  const bool isOne = step.request.call != HistoryCall::GoTo;
  mReport.steps += isOne ? 1 : answer.value.toInt64();
  mReport.last = isOne ? answer.value : step.next;
  mReport.conflicts += answer.conflicts;
  if (mSteps.empty() || mSteps.front().isRedo != step.isRedo) {
    reportSteps(Result::Done);
  } else {
    mIsStepping = false;
  }
  goOn();
}

void SettingsHistory::putBack() {
  mSteps.clear();
  ask({HistoryCall::Redo}, [this](const HistoryAnswer&) { reportSteps(Result::OtherCameBetween); });
}

void SettingsHistory::reportSteps(Result result) {
  mIsStepping = false;
  HistoryReport report = std::exchange(mReport, {});
  report.result = result;
  emit stepsEnded(report);
}

}  // namespace skarn
