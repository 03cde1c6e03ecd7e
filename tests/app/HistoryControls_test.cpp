#include "app/HistoryControls.h"

#include <QAccessible>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include "app/HistoryFixture.h"
#include "macros/MouseMacrosController.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::HistoryAnswer;
using vorn::MessageID;
using vorn::PropertyList;
namespace kinds = vorn::history::kinds;
namespace words = vorn::history::keys;

namespace {

using Call = HistoryFixture::Call;
using Request = HistoryFixture::Request;
using Outcome = HistoryFixture::Outcome;

const PropertyList assigned = historyEntry(2, kinds::Assignment,
                                           {{words::Profile, "Work"},
                                            {words::Keymap, 0},
                                            {words::Control, "8"},
                                            {words::Command, 10},
                                            {words::Param1, "0"},
                                            {words::Param2, "1"},
                                            {words::Target, "Copy"}});

// What is not answered would count as an engine that is silent.
void answerMacros(ScriptedLink& link) {
  for (const MessageID id : {MessageID::GetMacroDetails, MessageID::RenameMacro, MessageID::StartMacroRecording,
                             MessageID::StopMacroRecording, MessageID::SaveRecordedEvents}) {
    link.answer(id, statusAnswer(0));
  }
}

// Every control that a person can press, where it is seen in the window.
QList<QRect> controlsOf(QWidget& window) {
  QList<QRect> places;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->window() != &window || !widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
    const bool isPage = qobject_cast<QTabWidget*>(widget) || qobject_cast<QStackedWidget*>(widget->parentWidget());
    if (isPage || qobject_cast<QAbstractScrollArea*>(widget)) continue;
    places << QRect(widget->mapTo(&window, QPoint()), widget->size());
  }
  return places;
}

}  // namespace

class HistoryControlsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void the_buttons_name_the_change() {
    HistoryFixture fixture({undone(macroDeleted(3, "Jump")), assigned});
    QVERIFY(fixture.undoButton().isEnabled() && fixture.redoButton().isEnabled());
    QCOMPARE(fixture.undoButton().toolTip(), QStringLiteral("Undo: Button 4 to Copy"));
    QCOMPARE(fixture.redoButton().toolTip(), QStringLiteral("Redo: Macro “Jump” deleted"));
    QCOMPARE(QAccessible::queryAccessibleInterface(&fixture.undoButton())->text(QAccessible::Name),
             QStringLiteral("Undo"));
  }

  void a_button_without_a_change_says_so() {
    HistoryFixture fixture;
    QVERIFY(!fixture.undoButton().isEnabled() && !fixture.redoButton().isEnabled());
    QCOMPARE(fixture.undoButton().toolTip(), localized("lkeyNothingToUndo"));
    QCOMPARE(fixture.redoButton().toolTip(), localized("lkeyNothingToRedo"));
    QVERIFY(fixture.historyButton().isEnabled());
    fixture.tell({assigned});
    QVERIFY(fixture.undoButton().isEnabled() && !fixture.redoButton().isEnabled());
  }

  void an_engine_without_a_history_is_told() {
    HubFixture hub;
    hub.startConnected(bundleWith({"Work"}));
    hub.link.answerHistory({Outcome::NoHistory});
    for (QToolButton* button :
         {hub.window.ui().mUndoButton, hub.window.ui().mRedoButton, hub.window.ui().mHistoryButton}) {
      QVERIFY(!button->isEnabled());
      QCOMPARE(button->toolTip(), localized("lkeyHistoryNotKept"));
    }
  }

  void without_engine_or_mouse_nothing_is_asked_and_the_buttons_say_why() {
    HistoryFixture fixture({assigned});
    fixture.link.engineChanged(false);
    QVERIFY(!fixture.undoButton().isEnabled());
    QCOMPARE(fixture.undoButton().toolTip(), localized("lkeyHistoryNoEngine"));
    fixture.press(Qt::Key_Z);
    fixture.press(Qt::Key_H);
    QVERIFY(fixture.hasAskedNothing());
    QVERIFY(fixture.window.findChild<QDialog*>(QStringLiteral("mHistorySheet")) == nullptr);
    fixture.link.engineChanged(true);
    QVERIFY(fixture.isAsked({{Call::Entries}}));
    fixture.answerEntries({assigned});
    QVERIFY(fixture.undoButton().isEnabled());
    fixture.notifications.post("Device Removed 273", "", {});
    QCOMPARE(fixture.undoButton().toolTip(), localized("lkeyNoMouseConnected"));
  }

  void buttons_and_keys_ask_for_one_change_each() {
    HistoryFixture fixture({undone(macroDeleted(3, "Jump")), assigned});
    const auto done = [&fixture] { QVERIFY(fixture.link.answerHistory({Outcome::Done, assigned})); };
    fixture.click(fixture.undoButton());
    QVERIFY(fixture.isAsked({{Call::Undo, 2}}));
    done();
    fixture.click(fixture.redoButton());
    QVERIFY(fixture.isAsked({{Call::Redo, 2}}));
    done();
    fixture.press(Qt::Key_Z);
    QVERIFY(fixture.isAsked({{Call::Undo, 2}}));
    done();
    fixture.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(fixture.isAsked({{Call::Redo, 2}}));
    done();
    QVERIFY(fixture.link.requests.empty());
  }

  void five_quick_presses_undo_five() {
    std::vector<PropertyList> entries;
    for (int id = 5; id > 0; --id) entries.push_back(macroDeleted(id, "M"));
    HistoryFixture fixture(entries);
    for (int press = 0; press < 5; ++press) fixture.press(Qt::Key_Z);
    for (int step = 0; step < 5; ++step) QVERIFY(fixture.link.answerHistory({Outcome::Done, assigned}));
    QVERIFY(fixture.isAsked({{Call::Undo, 5}, {Call::Undo, 4}, {Call::Undo, 3}, {Call::Undo, 2}, {Call::Undo, 1}}));
    QCOMPARE(fixture.lineText(), QStringLiteral("5 changes undone"));
  }

  void what_was_done_and_what_stays_is_told() {
    HistoryFixture fixture({assigned});
    const auto told = [&fixture](const HistoryAnswer& answer) {
      fixture.tell({assigned});
      fixture.press(Qt::Key_Z);
      fixture.link.answerHistory(answer);
      return fixture.lineText();
    };
    QCOMPARE(told({Outcome::Done, assigned}), QStringLiteral("Undone: Button 4 to Copy"));
    QCOMPARE(told({Outcome::Done, assigned, 1}),
             QStringLiteral("Undone: Button 4 to Copy; one value has been changed since and stays"));
    QCOMPARE(told({Outcome::Done, assigned, 3}),
             QStringLiteral("Undone: Button 4 to Copy; 3 values have been changed since and stay"));
    QCOMPARE(told({Outcome::NothingLeft}), localized("lkeyNothingToUndo"));
    QCOMPARE(told({Outcome::ChangedSince}), localized("lkeyUndoChangedSince"));
    QCOMPARE(told({Outcome::NotSaved}), localized("lkeyUndoNotSaved"));
    QCOMPARE(told({Outcome::NoAnswer}), localized("lkeyHistoryNoAnswer"));
    QVERIFY(fixture.window.findChild<QMessageBox*>() == nullptr);
  }

  void what_was_done_elsewhere_is_told_with_its_place() {
    for (const auto& [profile, keymap, place] : {std::tuple("Work", 0, ""), std::tuple("Work", 5, " (Keymap 6)"),
                                                 std::tuple("Play", 0, " (Play, Keymap 1)")}) {
      const PropertyList entry = assigned.with(words::Profile, profile).with(words::Keymap, keymap);
      HistoryFixture fixture({entry});
      fixture.press(Qt::Key_Z);
      QVERIFY(fixture.link.answerHistory({Outcome::Done, entry}));
      QCOMPARE(fixture.lineText(), QLatin1String("Undone: Button 4 to Copy") + QLatin1String(place));
    }
  }

  void a_field_keeps_the_keys_as_long_as_it_has_something_to_undo() {
    HistoryFixture fixture({assigned});
    QLineEdit field(&fixture.window);
    field.show();
    field.setFocus();
    QTest::keyClicks(&field, QStringLiteral("ab"));
    fixture.press(Qt::Key_Z);
    QCOMPARE(field.text(), QString());
    QVERIFY(fixture.hasAskedNothing());
    fixture.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(field.text(), QStringLiteral("ab"));
    QVERIFY(fixture.hasAskedNothing());
    fixture.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(fixture.isAsked({{Call::Entries}}));
    fixture.answerEntries({assigned});
    QVERIFY(fixture.hasAskedNothing());
    fixture.press(Qt::Key_Z);
    fixture.press(Qt::Key_Z);
    QVERIFY(fixture.isAsked({{Call::Undo, 2}}));
    QVERIFY(field.hasFocus());
  }

  void a_name_that_is_half_typed_is_entered_first() {
    HistoryFixture fixture({assigned});
    answerMacros(fixture.link);
    fixture.hub().selectTabAtIndex(2);
    auto* macros = fixture.window.findChild<MouseMacrosController*>();
    macros->mMacroTableView()->selectRow(0);
    fixture.link.requests.clear();
    macros->mMacroTableView()->setFocus();
    fixture.press(Qt::Key_F2, Qt::NoModifier);
    auto* editor = macros->mMacroTableView()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, QStringLiteral("Leap"));
    fixture.click(fixture.undoButton());
    QVERIFY(!fixture.link.requests.empty());
    QVERIFY(fixture.link.requests.front().messageID == MessageID::RenameMacro);
    QCOMPARE(QString::fromStdString(
                 fixture.link.requests.front().body[vorn::requestKeys::MacroContents]["MacroName"].toString()),
             QStringLiteral("Leap"));
    // And then it is the change that is undone, which has no name here yet.
    QVERIFY(fixture.isAsked({{Call::Undo, 2}}));
    fixture.link.answerHistory({Outcome::Outdated});
    const PropertyList renamed =
        historyEntry(3, kinds::MacroRenamed, {{words::Macro, "Jump"}, {words::NewName, "Leap"}});
    fixture.answerEntries({renamed, assigned});
    QVERIFY(fixture.isAsked({{Call::Entries}, {Call::Undo, 3}}));
  }

  void nothing_is_undone_while_a_macro_is_recorded() {
    HistoryFixture fixture({assigned});
    answerMacros(fixture.link);
    fixture.hub().selectTabAtIndex(2);
    auto* macros = fixture.window.findChild<MouseMacrosController*>();
    macros->mMacroTableView()->selectRow(0);
    fixture.click(*macros->mRecordMacroDetails());
    QVERIFY(macros->mIsRecording());
    QTRY_VERIFY(!fixture.undoButton().isEnabled());
    QCOMPARE(fixture.undoButton().toolTip(), localized("lkeyHistoryRecording"));
    fixture.link.typed.clear();
    fixture.press(Qt::Key_Z);
    QVERIFY(fixture.hasAskedNothing());
    QVERIFY(!fixture.link.typed.empty());
    fixture.click(*macros->mRecordMacroDetails());
    QVERIFY(!macros->mIsRecording());
    QTRY_VERIFY(fixture.undoButton().isEnabled());
  }

  void the_keyboard_does_not_go_on_to_redo_when_nothing_is_left_to_undo() {
    HistoryFixture fixture({assigned});
    fixture.undoButton().setFocus();
    fixture.tell({undone(assigned)});
    QVERIFY(fixture.redoButton().isEnabled());
    QVERIFY(fixture.window.ui().mMouseTabView->tabBar()->hasFocus());
    fixture.tell({assigned});
    QVERIFY(fixture.undoButton().hasFocus());
  }

  // --- The line after a deletion

  void a_deletion_of_this_window_can_be_undone_in_a_line() {
    HistoryFixture fixture;
    fixture.tell({macroDeleted(1, "Copy and Paste")});
    QCOMPARE(fixture.lineText(), QStringLiteral("Deleted Copy and Paste"));
    QCOMPARE(fixture.lineButton().text(), QStringLiteral("Undo"));
    fixture.click(fixture.lineButton());
    QVERIFY(fixture.isAsked({{Call::Undo, 1}}));
    fixture.link.answerHistory({Outcome::Done, macroDeleted(1, "Copy and Paste")});
    QCOMPARE(fixture.lineText(), QStringLiteral("Undone: Macro “Copy and Paste” deleted"));
    QVERIFY(!fixture.lineButton().isVisible());
  }

  void the_line_goes_when_another_change_comes() {
    HistoryFixture fixture;
    fixture.tell({macroDeleted(1, "Jump")});
    fixture.tell({sensitivityOf(2, "Work"), macroDeleted(1, "Jump")});
    QCOMPARE(fixture.lineText(), QString());
    fixture.tell({macroDeleted(3, "Leap")});
    fixture.tell({undone(macroDeleted(3, "Leap"))});
    QCOMPARE(fixture.lineText(), QString());
  }

  void the_line_undoes_the_deletion_or_nothing() {
    HistoryFixture fixture;
    fixture.tell({macroDeleted(1, "Jump")});
    fixture.click(fixture.lineButton());
    QVERIFY(fixture.isAsked({{Call::Undo, 1}}));
    fixture.link.answerHistory({Outcome::Outdated});
    QCOMPARE(fixture.lineText(), localized("lkeyUndoOtherBetween"));
    QTRY_COMPARE(fixture.link.historyRequests, (std::vector<Request>{{Call::Entries}}));
    fixture.answerEntries({sensitivityOf(2, "Work"), macroDeleted(1, "Jump")});
    QCOMPARE(fixture.undoButton().toolTip(), QStringLiteral("Undo: Sensitivity of Work"));
    QCOMPARE(fixture.lineText(), localized("lkeyUndoOtherBetween"));
  }

  void the_line_stays_eight_seconds_and_as_long_as_the_keyboard_is_in_it() {
    HistoryFixture fixture;
    fixture.tell({macroDeleted(1, "Jump")});
    auto* timer = fixture.line().findChild<QTimer*>();
    QCOMPARE(timer->intervalAsDuration(), std::chrono::milliseconds(std::chrono::seconds(8)));
    fixture.lineButton().setFocus();
    timer->start(0);
    QTRY_VERIFY(!timer->isActive());
    QVERIFY(fixture.line().isVisible());
    fixture.press(Qt::Key_Escape, Qt::NoModifier);
    QVERIFY(!fixture.line().isVisible());
    QVERIFY(fixture.window.ui().mMouseTabView->tabBar()->hasFocus());
    fixture.tell({macroDeleted(2, "Leap")});
    timer->start(0);
    QTRY_VERIFY(!fixture.line().isVisible());
  }

  void the_line_stays_for_as_long_as_it_is_told_to() {
    HistoryFixture fixture;
    fixture.line().setLifetime(std::nullopt);
    fixture.tell({macroDeleted(1, "Jump")});
    auto* timer = fixture.line().findChild<QTimer*>();
    QVERIFY(fixture.line().isVisible() && !timer->isActive());
    fixture.line().setLifetime(std::chrono::milliseconds(0));
    fixture.tell({macroDeleted(2, "Leap")});
    QTRY_VERIFY(!fixture.line().isVisible());
  }

  void the_line_is_reached_with_the_keyboard() {
    HistoryFixture fixture;
    fixture.tell({macroDeleted(1, "Jump")});
    fixture.window.ui().mMouseTabView->tabBar()->setFocus();
    for (int press = 0; press < 200 && !fixture.lineButton().hasFocus(); ++press)
      fixture.press(Qt::Key_Tab, Qt::NoModifier);
    QVERIFY(fixture.lineButton().hasFocus());
    fixture.press(Qt::Key_Space, Qt::NoModifier);
    QVERIFY(fixture.isAsked({{Call::Undo, 1}}));
  }

  void the_line_moves_nothing_and_covers_no_control_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("tab");
    for (const QSize& size : {QSize(1024, 680), QSize(1180, 760)}) {
      for (int tab = 0; tab < 6; ++tab) QTest::addRow("%d at %d", tab, size.width()) << size << tab;
    }
  }
  void the_line_moves_nothing_and_covers_no_control() {
    QFETCH(QSize, size);
    QFETCH(int, tab);
    HistoryFixture fixture;
    fixture.window.resize(size);
    fixture.hub().selectTabAtIndex(tab);
    QTRY_COMPARE(fixture.window.size(), size);
    const QList<QRect> before = controlsOf(fixture.window);
    QVERIFY(before.size() > 10);
    fixture.tell({macroDeleted(1, std::string(200, 'm'))});
    QVERIFY(fixture.window.rect().contains(fixture.line().geometry()));
    QVERIFY(fixture.lineButton().width() >= fixture.lineButton().sizeHint().width());
    QList<QRect> after = controlsOf(fixture.window);
    after.removeOne(QRect(fixture.lineButton().mapTo(&fixture.window, QPoint()), fixture.lineButton().size()));
    QCOMPARE(after, before);
    for (const QRect& control : before) QVERIFY(!control.intersects(fixture.line().geometry()));
  }

  void a_name_with_markup_is_shown_as_it_stands() {
    HistoryFixture fixture({macroDeleted(1, "<b>Jump</b>")});
    QCOMPARE(fixture.undoButton().toolTip(), QStringLiteral("Undo: Macro “<b>Jump</b>” deleted"));
    fixture.tell({macroDeleted(2, "<b>&Leap</b>")});
    QCOMPARE(fixture.lineText(), QStringLiteral("Deleted <b>&Leap</b>"));
  }
};

SKARN_QTEST(HistoryControlsTest)
#include "HistoryControls_test.moc"
