// A person edits lines in the real window, and what the real engine undoes then is seen there, whoever asked for it.
#include <QToolButton>

#include "e2e/EditedMacro.h"
#include "e2e/Vornctl.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::test::VirtualMouse;
namespace tags = macroDetailsMenuTags;

namespace {

// An edit by the request for it.
struct Edit {
  const char* name;
  void (*made)(EditedMacro& open);
  MessageID request;
  int requests = 1;
};

const Edit edits[] = {
    {"an event is removed",
     [](EditedMacro& open) {
       open.select({2});
       open.press(Qt::Key_Delete);
     },
     MessageID::RemoveMacroEvent},
    {"an event becomes that of another key",
     [](EditedMacro& open) {
       open.select({6});
       open.press(Qt::Key_Return);
       QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
       QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
       open.leavePartner();
       open.click("mMacroEventEditOK");
     },
     MessageID::UpdateMacroEvent},
    {"a press and its release become those of another key",
     [](EditedMacro& open) {
       open.select({0});
       open.press(Qt::Key_Return);
       QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
       QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
       open.click("mMacroEventEditOK");
     },
     MessageID::UpdateMacroEvent, 2},
    {"all events are removed",
     [](EditedMacro& open) {
       open.choose(tags::DeleteAllEvents);
       confirm(open.find<QMessageBox>("alert"));
     },
     MessageID::RemoveAllMacroEvents},
    {"a delay is given to all events",
     [](EditedMacro& open) {
       open.select({3});
       open.choose(tags::CopyDelay);
     },
     MessageID::SetAllEventsDelay},
    {"a delay is changed in its line",
     [](EditedMacro& open) {
       open.select({1});
       open.press(Qt::Key_F2);
       auto* field = open.table()->viewport()->findChild<QLineEdit*>();
       QVERIFY(field != nullptr);
       QTest::keyClicks(field, QStringLiteral("75"));
       QTest::keyClick(field, Qt::Key_Return);
     },
     MessageID::SetEventDelay},
    {"several events are removed",
     [](EditedMacro& open) {
       open.select({0, 2});
       open.press(Qt::Key_Delete);
     },
     MessageID::ReplaceMacroSequence},
};

}  // namespace

class MacroUndoWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() {
    mEngine.begin();
    OtherClient other;
    add(other, "Combo", twoStrokes());
  }
  void cleanup() { mEngine.end(); }

  void an_edited_line_is_as_it_was_after_its_undo_data() {
    QTest::addColumn<int>("edit");
    QTest::addColumn<bool>("isUndoneHere");
    for (int edit = 0; edit < static_cast<int>(std::size(edits)); ++edit) {
      QTest::addRow("%s, undone in the window", edits[edit].name) << edit << true;
      QTest::addRow("%s, undone by vornctl", edits[edit].name) << edit << false;
    }
  }
  void an_edited_line_is_as_it_was_after_its_undo() {
    QFETCH(int, edit);
    QFETCH(bool, isUndoneHere);
    EditedMacro open;
    const QStringList before = open.lines();
    QVERIFY(open.has(twoStrokes()));
    const auto undoTip = [&] { return open.find<QToolButton>("mUndoButton")->toolTip(); };
    QTRY_COMPARE_WITH_TIMEOUT(undoTip(), QStringLiteral("Undo: Macro “Combo” added"), deadline);
    edits[edit].made(open);
    QTRY_VERIFY_WITH_TIMEOUT(open.lines() != before, deadline);
    QCOMPARE(open.requests(edits[edit].request), edits[edit].requests);
    const int fetched = open.requests(MessageID::GetMacroDetails);
    if (isUndoneHere) {
      QTRY_VERIFY_WITH_TIMEOUT(undoTip() != QStringLiteral("Undo: Macro “Combo” added"), deadline);
      open.click("mUndoButton");
    } else {
      QVERIFY(runVornctl({"undo"}));
    }
    QTRY_COMPARE_WITH_TIMEOUT(open.lines(), before, deadline);
    QVERIFY(open.has(twoStrokes()));
    QCOMPARE(open.requests(MessageID::GetMacroDetails), fetched + 1);
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(MacroUndoWithEngineTest)
#include "macro_undo_with_engine_test.moc"
