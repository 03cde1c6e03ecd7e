// What a person types into the real window is captured and recorded by the real engine.
#include <QAbstractButton>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

#include "buttons/ButtonsFixture.h"
#include "e2e/OpenWindow.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "model/HidUsages.h"
#include "ports/BusMethodCall.h"
#include "protocol/TypedKeys.h"
#include "support/QtTests.h"
#include "widgets/KeyCaptureField.h"

using namespace skarn;
using namespace skarn::test;
using namespace std::chrono_literals;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;
namespace typedKeys = vorn::typedKeys;

namespace {

// A key event with a time of its own, as the desktop gives one.
void type(QWidget& to, QEvent::Type kind, int key, quint64 time, Qt::KeyboardModifiers modifiers = {}) {
  QKeyEvent event(kind, key, modifiers);
  event.setTimestamp(time);
  QApplication::sendEvent(&to, &event);
}

// An event of a macro as "+A 40": press or release, key, delay.
QStringList eventsOf(const PropertyList& macro) {
  QStringList all;
  for (const PropertyList& event : macro[keys::Sequence][keys::Events].elements()) {
    const auto usage = event[keys::Argument].toInt64();
    const bool isButton = event[keys::Page].toInt() == 9;
    const QString name = isButton ? QStringLiteral("button %1").arg(usage)
                                  : QString::fromStdString(std::string(vorn::hid::keyName(usage)));
    all << QStringLiteral("%1%2 %3")
               .arg(QLatin1String(event[keys::Command].toInt() == 1 ? "+" : "-"), name)
               .arg(event[keys::Delay].toInt());
  }
  return all;
}

}  // namespace

class TypedKeysWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mEngine.begin();
    mOther = std::make_unique<OtherClient>();
    mOther->ask(
        MessageID::AddMacro,
        PropertyList::dictionary({{requestKeys::MacroContents, PropertyList::dictionary({{keys::MacroName, "M"}})}}));
    mOpen = std::make_unique<OpenWindow>();
    mOpen->awaitAnnouncement();
    mOpen->window().activateWindow();
    QTRY_VERIFY(mOpen->window().isActiveWindow());
  }
  void cleanup() {
    mOpen.reset();
    mOther.reset();
    mEngine.end();
  }

  void a_typed_chord_is_assigned_and_return_confirms_it() {
    const auto [control, field] = openKeySheet();
    type(*field, QEvent::KeyPress, Qt::Key_Control, 100);
    type(*field, QEvent::KeyPress, Qt::Key_Return, 150, Qt::ControlModifier);
    type(*field, QEvent::KeyRelease, Qt::Key_Return, 200, Qt::ControlModifier);
    type(*field, QEvent::KeyRelease, Qt::Key_Control, 250);
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QStringLiteral("Left Control + Return"), deadline);
    QTest::keyClick(field->window()->focusWidget(), Qt::Key_Return);
    QVERIFY(!field->window()->isVisible());
    QCOMPARE(shown(control), QStringLiteral("Single Key : Left Control + Return"));
  }

  void escape_is_assigned_like_any_key_and_then_cancels() {
    const auto [control, field] = openKeySheet();
    QTest::keyClick(field, Qt::Key_Escape);
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QStringLiteral("Escape"), deadline);
    QVERIFY(field->window()->isVisible());
    QTest::keyClick(field->window(), Qt::Key_Escape);
    QVERIFY(!field->window()->isVisible());
    QCOMPARE(shown(control), QStringLiteral("E (Default)"));
  }

  void a_modifier_alone_is_assigned_when_it_is_let_go() {
    const auto [control, field] = openKeySheet();
    type(*field, QEvent::KeyPress, Qt::Key_Shift, 100);
    type(*field, QEvent::KeyRelease, Qt::Key_Shift, 200);
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QStringLiteral("Left Shift"), deadline);
    QTest::keyClick(field->window()->focusWidget(), Qt::Key_Return);
    QCOMPARE(shown(control), QStringLiteral("Single Key : Left Shift"));
  }

  void a_macro_is_recorded_as_it_is_typed_with_the_times_of_typing() {
    QWidget& table = startRecording();
    type(table, QEvent::KeyPress, Qt::Key_Control, 1000);
    type(table, QEvent::KeyPress, Qt::Key_C, 1040, Qt::ControlModifier);
    type(table, QEvent::KeyRelease, Qt::Key_C, 1100, Qt::ControlModifier);
    type(table, QEvent::KeyRelease, Qt::Key_Control, 1130);
    quint64 time = 2000;
    for (const int key : {int(Qt::Key_Tab), int(Qt::Key_Space), int(Qt::Key_Return), int(Qt::Key_Escape)}) {
      type(table, QEvent::KeyPress, key, time);
      type(table, QEvent::KeyRelease, key, time + 10);
      time += 100;
    }
    QVERIFY(isRecording());
    record().click();
    QCOMPARE(eventsOf(macro()),
             (QStringList{"+Left Control 0", "+C 40", "-C 60", "-Left Control 30", "+Tab 870", "-Tab 10", "+Space 90",
                          "-Space 10", "+Return 90", "-Return 10", "+Escape 90", "-Escape 10"}));
  }

  void clicks_on_the_list_of_events_are_recorded_and_others_work_the_window() {
    startRecording();
    QWidget* viewport = mOpen->find<QTableView>("mMacroDetailsTableView")->viewport();
    QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(20, 20));
    record().click();
    QVERIFY(!isRecording());
    const QStringList events = eventsOf(macro());
    QCOMPARE(events.size(), 2);
    QVERIFY(events[0].startsWith(QLatin1String("+button 2")) && events[1].startsWith(QLatin1String("-button 2")));
  }

  void what_is_held_when_the_focus_goes_is_released_and_the_recording_is_saved() {
    QWidget& table = startRecording();
    type(table, QEvent::KeyPress, Qt::Key_Shift, 1000);
    type(table, QEvent::KeyPress, Qt::Key_A, 1050, Qt::ShiftModifier);
    // As the program does when another one comes to the front.
    mOpen->hub().checkMacroRecordingStatus();
    QVERIFY(!isRecording());
    QCOMPARE(eventsOf(macro()), (QStringList{"+Left Shift 0", "+A 50", "-A 0", "-Left Shift 0"}));
  }

  void the_pause_key_ends_a_recording() {
    QWidget& table = startRecording();
    QTest::keyClick(&table, Qt::Key_A);
    QTest::keyClick(&table, Qt::Key_Pause);
    QVERIFY(!isRecording());
    QCOMPARE(macro()[keys::Sequence][keys::Events].size(), std::size_t{2});
  }

  void nobody_else_can_type_into_a_recording() {
    startRecording();
    const auto answer =
        vorn::callBusMethod({typedKeys::busName, typedKeys::objectPath, typedKeys::interface}, typedKeys::methods::Type,
                            {{"q", 7}, {"q", 4}, {"b", true}, {"t", std::uint64_t{1}}}, 20s);
    QCOMPARE(answer.status, vorn::BusAnswer::Status::Error);
    record().click();
    QCOMPARE(eventsOf(macro()), QStringList());
  }

 private:
  std::pair<const ControlDescriptor&, KeyCaptureField*> openKeySheet() {
    const ControlDescriptor& control = ButtonsDriver::control(4);
    ButtonsDriver(*mOpen->find<MouseButtonController>("MouseButtonController"))
        .choose(control, AssignmentCategory::SingleKey);
    auto* field = mOpen->find<KeyCaptureField>("mInputSingleKey");
    field->window()->activateWindow();
    if (!QTest::qWaitFor([&] { return KeyCaptureField::listeningIn(field->window()) == field; }))
      QTest::qFail("the field listens", __FILE__, __LINE__);
    return {control, field};
  }
  QString shown(const ControlDescriptor& control) {
    return ButtonsDriver(*mOpen->find<MouseButtonController>("MouseButtonController")).popUp(control).shownTitle();
  }
  QAbstractButton& record() { return *mOpen->find<QAbstractButton>("mRecordMacroDetails"); }
  bool isRecording() { return record().text() == QStringLiteral("Stop"); }
  QWidget& startRecording() {
    mOpen->showTab("MouseMacrosController");
    auto* table = mOpen->find<QTableView>("mMacroTableView");
    table->selectRow(0);
    record().click();
    return *table;
  }
  PropertyList macro() { return mOther->bundle()[keys::Macros].at(0); }

  EngineSession mEngine;
  std::unique_ptr<OtherClient> mOther;
  std::unique_ptr<OpenWindow> mOpen;
};

SKARN_QTEST(TypedKeysWithEngineTest)
#include "typed_keys_with_engine_test.moc"
