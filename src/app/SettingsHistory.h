// The engine's history of changes as the window knows it: what can be taken back and made again, and the taking back
// itself, one change after the other. Nothing here waits: the list follows the engine's news, and what is asked for
// quickly is done in its order. Main thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <deque>
#include <optional>

#include "link/EngineLink.h"
#include "model/PropertyList.h"

namespace skarn {

// How taking changes back, or making them again, ended.
struct HistoryReport {
  enum class Result {
    Done,
    NothingLeft,
    ChangedSince,
    NotSaved,
    NoHistory,
    NoAnswer,
    OtherCameBetween,  // another change than the one that was named came next: nothing is done
  };
  Result result = Result::Done;
  bool isRedo = false;
  std::int64_t steps = 0;      // changes that were taken back or made again before it ended
  vorn::PropertyList last{};   // the last of them
  std::int64_t conflicts = 0;  // how many of their values stay as they are, since others have changed them
};

class SettingsHistory : public QObject {
  Q_OBJECT

 public:
  // Where goTo leads to the settings before the oldest change.
  static constexpr std::int64_t beforeAll = 0;

  // The link outlives the history.
  explicit SettingsHistory(vorn::EngineLink& link);
  ~SettingsHistory() override;

  // From now on there is an engine to ask. Does nothing while there was one.
  void begin();
  // There is none any more: nothing is known, and what was still to be done is not done.
  void end();

  // Whether the engine has told its changes; isKept: whether it keeps any history, as far as it has said.
  bool isKnown() const { return mIsKnown; }
  bool isKept() const { return mIsKept; }
  // The newest first, with the keys of protocol/History.h; those that are undone come before the others.
  const vorn::PropertyList& entries() const { return mEntries; }
  // None where there is none.
  const vorn::PropertyList& nextUndo() const { return mEntries.at(undoneCount()); }
  const vorn::PropertyList& nextRedo() const { return mEntries.at(undoneCount() - 1); }

  // Takes the change back, or makes it again, that nextUndo() or nextRedo() names after what is still to be done, and
  // no other one; but for one that this window has made since.
  void undo() { addNext(vorn::HistoryCall::Undo); }
  void redo() { addNext(vorn::HistoryCall::Redo); }
  // Takes this change back, or none.
  void undoExactly(std::int64_t id) { add({.request = {vorn::HistoryCall::Undo, id}, .isExact = true}); }
  // Takes all changes back that came after this one, or makes the undone ones again up to it.
  void goTo(std::int64_t id);

 signals:
  void changed();
  void stepsEnded(const skarn::HistoryReport& report);
  // A change of this window that is the newest deleted something.
  void deleted(const vorn::PropertyList& entry);

 private:
  static constexpr std::chrono::milliseconds newsRest{100};

  struct Step {
    vorn::HistoryRequest request;  // of Undo and Redo with the change that is meant, or 0 where none is known
    bool isRedo = request.call == vorn::HistoryCall::Redo;
    vorn::PropertyList next{};     // of several changes the first
    bool isExact = false;          // no other change can be meant
    std::int64_t newestKnown = 0;  // when it was asked for
  };

  std::int64_t undoneCount() const;
  void refresh();
  void fetch();
  void take(const vorn::HistoryAnswer& answer);
  void noteNewest();
  void addNext(vorn::HistoryCall call);
  // Which change comes next after the steps that are still to be done; 0 where that is not known.
  std::int64_t nextAfterSteps(bool isRedo) const;
  void add(const Step& step);
  void goOn();
  void perform(const Step& step);
  void stepEnded(const Step& step, const vorn::HistoryAnswer& answer);
  // The change that is meant does not come next, as far as is known: looks which one does.
  void look(const Step& step);
  void lookEnded(Step step, const vorn::HistoryAnswer& answer);
  // The step takes a change of this window back that was not known when it was asked for, nor when those behind it
  // were: each of them means the next one then.
  void nameStepsAfter(const Step& step);
  // What the engine has done is known before it tells its changes anew.
  void noteDone(std::int64_t id, bool isRedo);
  // Ends the steps without the one under way.
  void stop(HistoryReport::Result result);
  void reportSteps(HistoryReport::Result result);
  // Asks in this session of the engine; an answer in another one is nobody's.
  template <typename Done>
  void ask(const vorn::HistoryRequest& request, Done done);

  vorn::EngineLink& mLink;
  bool mIsThere = false;
  unsigned mSession = 0;
  bool mIsKnown = false;
  bool mIsKept = false;
  vorn::PropertyList mEntries = vorn::PropertyList::array();
  std::optional<std::int64_t> mNewestSeen;

  QTimer mRest;  // runs for newsRest after a fetch
  bool mIsFetching = false;
  bool mMustFetch = false;

  std::deque<Step> mSteps;
  std::optional<Step> mStep;  // under way
  HistoryReport mReport;
};

}  // namespace skarn
