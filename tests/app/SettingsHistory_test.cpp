#include "app/SettingsHistory.h"

#include <QSignalSpy>
#include <QTest>

#include "app/HistoryFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::HistoryAnswer;
using vorn::PropertyList;
namespace kinds = vorn::history::kinds;
namespace words = vorn::history::keys;

namespace {

using Call = vorn::HistoryCall;
using Request = vorn::HistoryRequest;
using Outcome = HistoryAnswer::Outcome;
using Result = HistoryReport::Result;

HistoryAnswer listed(std::vector<PropertyList> entries) {
  return {Outcome::Done, PropertyList::array(std::move(entries))};
}

// So many, the newest first.
std::vector<PropertyList> macrosDeleted(int count) {
  std::vector<PropertyList> entries;
  for (int id = count; id > 0; --id) entries.push_back(macroDeleted(id, "M"));
  return entries;
}

PropertyList ofAnother(const PropertyList& entry) {
  return entry.with(words::SourceApp, "org.vorn.vornctl");
}

// A history over a scripted link, and what it has told.
struct Listened {
  // With these changes, as the engine told them first.
  explicit Listened(std::vector<PropertyList> entries = {}) {
    listen();
    history.begin();
    link.answerHistory(listed(std::move(entries)));
    link.historyRequests.clear();
  }
  void listen() {
    QObject::connect(&history, &SettingsHistory::stepsEnded,
                     [this](const HistoryReport& report) { reports.push_back(report); });
    QObject::connect(&history, &SettingsHistory::deleted,
                     [this](const PropertyList& entry) { deletions.push_back(entry); });
  }
  void tell(std::vector<PropertyList> entries) {
    link.historyChanged();
    QTRY_COMPARE(link.unansweredHistory(), 1U);
    link.answerHistory(listed(std::move(entries)));
  }

  ScriptedLink link;
  SettingsHistory history{link};
  std::vector<HistoryReport> reports;
  std::vector<PropertyList> deletions;
};

}  // namespace

class SettingsHistoryTest : public QObject {
  Q_OBJECT

 private slots:
  void nothing_is_asked_before_it_begins_and_after_it_ended() {
    ScriptedLink link;
    SettingsHistory history(link);
    link.historyChanged();
    history.undo();
    QVERIFY(link.historyRequests.empty());
    history.begin();
    history.begin();
    QCOMPARE(link.historyRequests, std::vector{Request{Call::Entries}});
    history.end();
    link.historyChanged();
    history.redo();
    history.goTo(1);
    QCOMPARE(link.historyRequests.size(), 1U);
  }

  void what_comes_next_is_known_from_the_list() {
    Listened one(
        {undone(macroDeleted(4, "D")), undone(macroDeleted(3, "C")), macroDeleted(2, "B"), macroDeleted(1, "A")});
    QVERIFY(one.history.isKnown() && one.history.isKept());
    QVERIFY(one.history.nextUndo() == macroDeleted(2, "B"));
    QVERIFY(one.history.nextRedo() == undone(macroDeleted(3, "C")));
    one.tell({macroDeleted(1, "A")});
    QVERIFY(one.history.nextUndo() == macroDeleted(1, "A"));
    QVERIFY(one.history.nextRedo().isNone());
    one.tell({});
    QVERIFY(one.history.nextUndo().isNone());
  }

  void an_engine_without_a_history_is_known_as_one() {
    ScriptedLink link;
    SettingsHistory history(link);
    history.begin();
    QVERIFY(!history.isKnown());
    link.answerHistory({Outcome::NoHistory});
    QVERIFY(history.isKnown() && !history.isKept());
  }

  void many_news_at_once_are_one_question_more() {
    Listened one;
    for (int count = 0; count < 20; ++count) one.link.historyChanged();
    QTRY_COMPARE(one.link.historyRequests.size(), 1U);
    for (int count = 0; count < 20; ++count) one.link.historyChanged();
    one.link.answerHistory(listed({macroDeleted(1, "A")}));
    QTRY_COMPARE(one.link.historyRequests.size(), 2U);
    one.link.answerHistory(listed({macroDeleted(2, "B")}));
    QVERIFY(one.history.nextUndo() == macroDeleted(2, "B"));
    QCOMPARE(one.link.historyRequests.size(), 2U);
  }

  void an_answer_of_an_earlier_engine_is_nobodys() {
    ScriptedLink link;
    SettingsHistory history(link);
    history.begin();
    history.end();
    history.begin();
    link.answerHistory(listed({macroDeleted(9, "Old")}));
    QVERIFY(!history.isKnown());
    link.answerHistory(listed({macroDeleted(1, "New")}));
    QVERIFY(history.nextUndo() == macroDeleted(1, "New"));
  }

  void five_quick_undos_take_back_five_changes_one_after_the_other() {
    Listened one(macrosDeleted(5));
    for (int press = 0; press < 5; ++press) one.history.undo();
    for (int step = 5; step > 0; --step) {
      QCOMPARE(one.link.unansweredHistory(), 1U);
      QVERIFY(one.reports.empty());
      one.link.answerHistory({Outcome::Done, macroDeleted(step, "M"), 1});
    }
    QCOMPARE(
        one.link.historyRequests,
        (std::vector<Request>{{Call::Undo, 5}, {Call::Undo, 4}, {Call::Undo, 3}, {Call::Undo, 2}, {Call::Undo, 1}}));
    QCOMPARE(one.link.unansweredHistory(), 0U);
    QCOMPARE(one.reports.size(), 1U);
    QVERIFY(one.reports[0].result == Result::Done && !one.reports[0].isRedo);
    QCOMPARE(one.reports[0].steps, 5);
    QCOMPARE(one.reports[0].conflicts, 5);
    QVERIFY(one.reports[0].last == macroDeleted(1, "M"));
  }

  void undo_and_redo_are_reported_apart() {
    Listened one(macrosDeleted(1));
    one.history.undo();
    one.history.redo();
    one.link.answerHistory({Outcome::Done, macroDeleted(1, "M")});
    one.link.answerHistory({Outcome::Done, macroDeleted(1, "M")});
    QCOMPARE(one.link.historyRequests, (std::vector<Request>{{Call::Undo, 1}, {Call::Redo, 1}}));
    QCOMPARE(one.reports.size(), 2U);
    QVERIFY(!one.reports[0].isRedo && one.reports[1].isRedo);
  }

  void what_cannot_be_undone_ends_what_was_still_to_be_done_data() {
    QTest::addColumn<int>("outcome");
    QTest::addColumn<int>("result");
    const auto row = [](const char* name, Outcome outcome, Result result) {
      QTest::newRow(name) << static_cast<int>(outcome) << static_cast<int>(result);
    };
    row("nothing left", Outcome::NothingLeft, Result::NothingLeft);
    row("changed since", Outcome::ChangedSince, Result::ChangedSince);
    row("not saved", Outcome::NotSaved, Result::NotSaved);
    row("no answer", Outcome::NoAnswer, Result::NoAnswer);
    row("no engine", Outcome::NoEngine, Result::NoAnswer);
  }
  void what_cannot_be_undone_ends_what_was_still_to_be_done() {
    QFETCH(int, outcome);
    QFETCH(int, result);
    Listened one(macrosDeleted(3));
    for (int press = 0; press < 3; ++press) one.history.undo();
    one.link.answerHistory({Outcome::Done, macroDeleted(3, "M")});
    one.link.answerHistory({static_cast<Outcome>(outcome)});
    QCOMPARE(one.reports.size(), 1U);
    QCOMPARE(static_cast<int>(one.reports[0].result), result);
    QCOMPARE(one.reports[0].steps, 1);
    // The third is not asked for; what the engine has then is.
    QTRY_COMPARE(one.link.historyRequests, (std::vector<Request>{{Call::Undo, 3}, {Call::Undo, 2}, {Call::Entries}}));
  }

  void an_engine_that_goes_ends_what_was_still_to_be_done() {
    Listened one(macrosDeleted(2));
    one.history.undo();
    one.history.undo();
    one.history.end();
    one.link.answerHistory({Outcome::Done, macroDeleted(1, "M")});
    QCOMPARE(one.link.historyRequests, (std::vector<Request>{{Call::Undo, 2}}));
    QVERIFY(one.reports.empty());
  }

  void going_to_a_change_is_one_request() {
    Listened one({undone(macroDeleted(3, "C")), macroDeleted(2, "B"), macroDeleted(1, "A")});
    one.history.goTo(1);
    one.link.answerHistory({Outcome::Done, 1});
    one.history.goTo(3);
    one.link.answerHistory({Outcome::Done, 2, 4});
    one.history.goTo(SettingsHistory::beforeAll);
    one.link.answerHistory({Outcome::Done, 2});
    QCOMPARE(one.link.historyRequests, (std::vector<Request>{{Call::GoTo, 1}, {Call::GoTo, 3}, {Call::GoTo, 0}}));
    QCOMPARE(one.reports.size(), 3U);
    QVERIFY(!one.reports[0].isRedo && one.reports[1].isRedo && !one.reports[2].isRedo);
    QVERIFY(one.reports[0].last == macroDeleted(2, "B"));
    QCOMPARE(one.reports[1].steps, 2);
    QCOMPARE(one.reports[1].conflicts, 4);
  }

  void the_very_change_is_taken_back_or_none() {
    Listened one({macroDeleted(2, "B")});
    one.history.undoExactly(2);
    one.link.answerHistory({Outcome::Done, macroDeleted(2, "B")});
    QVERIFY(one.reports.at(0).result == Result::Done);
    one.history.undoExactly(2);
    one.link.answerHistory({Outcome::Outdated});
    QCOMPARE(one.reports.size(), 2U);
    QVERIFY(one.reports[1].result == Result::OtherCameBetween);
    QCOMPARE(one.reports[1].steps, 0);
    QTRY_COMPARE(one.link.historyRequests, (std::vector<Request>{{Call::Undo, 2}, {Call::Undo, 2}, {Call::Entries}}));
  }

  void what_another_program_changed_meanwhile_is_told_and_not_undone() {
    Listened one(macrosDeleted(3));
    for (int press = 0; press < 2; ++press) one.history.undo();
    one.link.answerHistory({Outcome::Outdated});
    const PropertyList other = ofAnother(sensitivityOf(4, "Work"));
    one.link.answerHistory(listed({other, macroDeleted(3, "M")}));
    QCOMPARE(one.link.historyRequests, (std::vector<Request>{{Call::Undo, 3}, {Call::Entries}}));
    QCOMPARE(one.reports.size(), 1U);
    QVERIFY(one.reports[0].result == Result::OtherCameBetween);
    // It has its name now, and can be undone.
    QVERIFY(one.history.nextUndo() == other);
    one.history.undo();
    QCOMPARE(one.link.historyRequests.back(), (Request{Call::Undo, 4}));
  }

  void what_this_window_has_just_changed_is_undone_before_it_has_a_name() {
    for (const bool isFirst : {true, false}) {
      Listened one(isFirst ? std::vector<PropertyList>() : macrosDeleted(1));
      one.history.undo();
      if (!isFirst) one.link.answerHistory({Outcome::Outdated});
      one.link.answerHistory(listed({sensitivityOf(2, "Work"), macroDeleted(1, "M")}));
      one.link.answerHistory({Outcome::Done, sensitivityOf(2, "Work")});
      QCOMPARE(one.link.historyRequests.back(), (Request{Call::Undo, 2}));
      QCOMPARE(one.reports.size(), 1U);
      QVERIFY(one.reports[0].result == Result::Done);
    }
  }

  void quick_presses_after_a_change_of_this_window_take_back_what_came_before_it_too() {
    Listened one(macrosDeleted(2));
    for (int press = 0; press < 3; ++press) one.history.undo();
    one.link.answerHistory({Outcome::Outdated});
    one.link.answerHistory(listed({sensitivityOf(3, "Work"), macroDeleted(2, "M"), macroDeleted(1, "M")}));
    one.history.redo();
    for (int step = 0; step < 4; ++step) one.link.answerHistory({Outcome::Done, macroDeleted(1, "M")});
    QCOMPARE(
        one.link.historyRequests,
        (std::vector<Request>{
            {Call::Undo, 2}, {Call::Entries}, {Call::Undo, 3}, {Call::Undo, 2}, {Call::Undo, 1}, {Call::Redo, 1}}));
    QCOMPARE(one.reports.size(), 2U);
    QVERIFY(one.reports[0].result == Result::Done && one.reports[1].result == Result::Done);
    QCOMPARE(one.reports[0].steps, 3);
  }

  void a_quick_redo_makes_the_change_of_this_window_again() {
    Listened one(macrosDeleted(1));
    one.history.undo();
    one.history.redo();
    one.link.answerHistory({Outcome::Outdated});
    one.link.answerHistory(listed({sensitivityOf(2, "Work"), macroDeleted(1, "M")}));
    for (int step = 0; step < 2; ++step) one.link.answerHistory({Outcome::Done, sensitivityOf(2, "Work")});
    QCOMPARE(one.link.historyRequests,
             (std::vector<Request>{{Call::Undo, 1}, {Call::Entries}, {Call::Undo, 2}, {Call::Redo, 2}}));
  }

  void quick_presses_stop_before_a_change_of_another_program_that_nobody_has_seen() {
    for (const bool isFirst : {true, false}) {
      Listened one(isFirst ? std::vector<PropertyList>() : macrosDeleted(1));
      const PropertyList other = ofAnother(sensitivityOf(2, "Work"));
      for (int press = 0; press < 2; ++press) one.history.undo();
      if (!isFirst) one.link.answerHistory({Outcome::Outdated});
      one.link.answerHistory(listed({sensitivityOf(3, "Work"), other, macroDeleted(1, "M")}));
      one.link.answerHistory({Outcome::Done, sensitivityOf(3, "Work")});
      // The one before it is unknown, and looked for.
      one.link.answerHistory(listed({undone(sensitivityOf(3, "Work")), other, macroDeleted(1, "M")}));
      QCOMPARE(one.reports.size(), 1U);
      QVERIFY(one.reports[0].result == Result::OtherCameBetween);
      QCOMPARE(one.reports[0].steps, 1);
      QCOMPARE(one.link.historyRequests.back(), (Request{Call::Entries}));
    }
  }

  void what_nobody_has_seen_is_not_undone() {
    // Another program has undone the change that was named, and an older one of this window comes next.
    Listened one(macrosDeleted(2));
    one.history.undo();
    one.link.answerHistory({Outcome::Outdated});
    one.link.answerHistory(listed({undone(macroDeleted(2, "M")), macroDeleted(1, "M")}));
    QVERIFY(one.reports.at(0).result == Result::OtherCameBetween);
    // And the change of another program where none was known at all.
    Listened two;
    two.history.undo();
    two.link.answerHistory(listed({ofAnother(macroDeleted(1, "M"))}));
    QCOMPARE(two.link.historyRequests, std::vector{Request{Call::Entries}});
    QVERIFY(two.reports.at(0).result == Result::OtherCameBetween);
  }

  void the_engine_is_asked_once_more_where_nothing_is_known_to_be_left() {
    Listened one(macrosDeleted(1));
    one.history.undo();
    one.history.undo();
    one.link.answerHistory({Outcome::Done, macroDeleted(1, "M")});
    one.link.answerHistory(listed({undone(macroDeleted(1, "M"))}));
    QCOMPARE(one.link.historyRequests, (std::vector<Request>{{Call::Undo, 1}, {Call::Entries}}));
    QVERIFY(one.reports.at(0).result == Result::NothingLeft);
    QCOMPARE(one.reports[0].steps, 1);
  }

  void what_was_done_has_its_name_before_the_engine_tells_it() {
    Listened one(macrosDeleted(2));
    one.history.undo();
    one.link.answerHistory({Outcome::Done, macroDeleted(2, "M")});
    QVERIFY(one.history.nextUndo() == macroDeleted(1, "M"));
    QVERIFY(one.history.nextRedo() == undone(macroDeleted(2, "M")));
    one.history.redo();
    one.link.answerHistory({Outcome::Done, macroDeleted(2, "M")});
    QVERIFY(one.history.nextUndo() == macroDeleted(2, "M"));
    QVERIFY(one.history.nextRedo().isNone());
  }

  void a_deletion_of_this_window_is_told_once() {
    Listened one({macroDeleted(1, "Old")});
    QVERIFY(one.deletions.empty());
    one.tell({macroDeleted(2, "New"), macroDeleted(1, "Old")});
    one.tell({macroDeleted(2, "New"), macroDeleted(1, "Old")});
    QVERIFY(one.deletions == std::vector{macroDeleted(2, "New")});
    const PropertyList profile = historyEntry(3, kinds::ProfileDeleted, {{words::Profile, "Work"}});
    one.tell({profile});
    const PropertyList allEvents = historyEntry(4, kinds::MacroEventsRemoved, {{words::Macro, "New"}});
    one.tell({allEvents});
    QVERIFY(one.deletions == (std::vector{macroDeleted(2, "New"), profile, allEvents}));
  }

  void nothing_else_is_told_as_a_deletion_of_this_window() {
    Listened one;
    one.tell({macroDeleted(1, "By another").with(words::SourceApp, "org.vorn.vornctl")});
    one.tell({macroDeleted(2, "By nobody").without(words::SourceApp)});
    one.tell({undone(macroDeleted(3, "Undone"))});
    one.tell({sensitivityOf(4, "Work")});
    one.tell({sensitivityOf(6, "Work"), macroDeleted(5, "Not the newest")});
    QVERIFY(one.deletions.empty());
  }

  void events_are_told_as_deleted_where_some_have_gone_and_not_where_they_have_changed() {
    Listened one;
    one.tell({historyEntry(1, kinds::MacroEvents, {{words::Macro, "Jump"}})});
    QVERIFY(one.deletions.empty());
    const PropertyList some = historyEntry(2, kinds::MacroEventsRemoved, {{words::Macro, "Jump"}, {words::Count, 2}});
    one.tell({some});
    one.tell({historyEntry(3, kinds::MacroDelays, {{words::Macro, "Jump"}})});
    QVERIFY(one.deletions == std::vector{some});
  }
};

SKARN_QTEST(SettingsHistoryTest)
#include "SettingsHistory_test.moc"
