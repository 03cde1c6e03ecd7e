#include "app/MouseSheet.h"

#include <QAccessible>
#include <QLabel>
#include <QSpinBox>

#include "app/MiceFixture.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

using Call = MiceFixture::Call;
using Outcome = MiceFixture::Outcome;
using Request = MiceFixture::Request;

const PropertyList acme = realMouse("usb-1", "Acme");
const PropertyList other = realMouse("usb-2", "Other");

// With the sheet open.
struct OpenMice : MiceFixture {
  explicit OpenMice(const std::vector<PropertyList>& mice) : MiceFixture(mice) { openSheet(); }
  QPushButton& ok() { return button("mMouseOK"); }
  // Seen, and not only there.
  bool shows(const char* label) { return page(label)->isVisible(); }
};

}  // namespace

class MouseSheetTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void it_lists_the_mice_and_begins_at_the_one_in_use() {
    OpenMice one({forbidden(acme), inUse(other), absent(realMouse("usb-3", "Away")), virtualMouse()});
    QCOMPARE(one.column(0), (QStringList{"Acme", "Other", "Away", "Virtual mouse"}));
    QCOMPARE(one.column(1), (QStringList{"Cable", "Cable", "", "None: to try things"}));
    QCOMPARE(one.column(2), (QStringList{"Not allowed", "In use", "Not plugged in", ""}));
    QCOMPARE(one.selectedRow(), 1);
    QVERIFY(one.table().hasFocus());
    QVERIFY(!one.ok().isEnabled());
    QCOMPARE(one.ok().toolTip(), localized("lkeyMiceIsInUse"));
  }

  void what_keeps_a_mouse_from_being_used_is_told_with_the_command_that_mends_it() {
    OpenMice one({forbidden(acme), inUse(virtualMouse())});
    QVERIFY(!one.shows("mMouseCommand"));
    one.table().selectRow(0);
    QVERIFY(one.text("mMouseAbout").contains(QStringLiteral("/dev/input/event5")));
    QVERIFY(one.text("mMouseCommand").contains(QStringLiteral("udevadm")));
    QVERIFY(one.shows("mMouseCommand"));
    auto* command = one.window.findChild<QLabel*>(QStringLiteral("mMouseCommand"));
    QVERIFY(command->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    const auto said = [&](QAccessible::Text which) {
      return QAccessible::queryAccessibleInterface(command)->text(which);
    };
    QCOMPARE(said(QAccessible::Name), command->text());
    QCOMPARE(said(QAccessible::Description), localized("lkeyMouseCommand"));
    QVERIFY(one.shows("mMouseDoctor"));
    QVERIFY(!one.ok().isEnabled());
    QCOMPARE(one.ok().toolTip(), localized("lkeyMiceNotAllowed"));
  }

  void only_the_button_chooses() {
    OpenMice one({acme, inUse(virtualMouse())});
    one.table().selectRow(0);
    QVERIFY(one.isAsked({}));
    one.click(one.ok());
    QVERIFY(one.isAsked({{Call::Choose, "usb-1"}}));
    QVERIFY(!one.ok().isEnabled());
    one.answer(Outcome::Done, {inUse(acme), virtualMouse()});
    QCOMPARE(one.text("mMouseNotice"), QStringLiteral("“Acme” is in use. Teach it the controls that it lacks."));
    QCOMPARE(one.ok().toolTip(), localized("lkeyMiceIsInUse"));
    QVERIFY(one.button("mMouseTeach").isEnabled());
    one.table().selectRow(1);
    QTest::keyClick(&one.table(), Qt::Key_Return);
    QVERIFY(one.isAsked({{Call::Choose, "virtual"}}));
    one.answer(Outcome::NotSaved, {inUse(acme), virtualMouse()});
    QCOMPARE(one.text("mMouseNotice"), localized("lkeyMiceNotSaved"));
    QVERIFY(one.ok().isEnabled());
  }

  void what_comes_and_goes_leaves_the_selection() {
    OpenMice one({other, inUse(virtualMouse())});
    one.table().selectRow(0);
    one.tell({acme, other, inUse(virtualMouse())});
    QCOMPARE(one.column(0).at(one.selectedRow()), QStringLiteral("Other"));
    one.tell({acme, inUse(virtualMouse())});
    QCOMPARE(one.column(0).at(one.selectedRow()), QStringLiteral("Virtual mouse"));
  }

  void whole_rows_are_shown_up_to_some() {
    std::vector<PropertyList> mice{acme, other, absent(realMouse("usb-3", "Away")), inUse(virtualMouse())};
    OpenMice one(mice);
    const auto lastRow = [&] {
      return one.table().visualRect(one.table().model()->index(one.table().model()->rowCount() - 1, 0));
    };
    QVERIFY(one.table().viewport()->rect().contains(lastRow()));
    mice.insert(mice.begin(), realMouse("usb-4", "Fifth"));
    one.tell(mice);
    QVERIFY(QTest::qWaitFor([&] { return one.table().viewport()->rect().contains(lastRow()); }));
    for (int number = 6; number < 9; ++number)
      mice.insert(mice.begin(), realMouse("usb-" + std::to_string(number), "More"));
    one.tell(mice);
    const int rowHeight = lastRow().height();
    QVERIFY(QTest::qWaitFor([&] { return one.table().viewport()->height() == 6 * rowHeight; }));
  }

  void only_a_mouse_in_use_can_be_told_something() {
    OpenMice one({acme, inUse(virtualMouse())});
    const auto tips = [&] {
      QStringList said;
      for (const char* name : {"mMouseTeach", "mMouseResolution", "mMouseForget"})
        said << (one.button(name).isEnabled() ? QStringLiteral("-") : one.button(name).toolTip());
      return said;
    };
    const auto all = [](const char* key) { return QStringList{localized(key), localized(key), localized(key)}; };
    QCOMPARE(tips(), all("lkeyMiceVirtualKnown"));
    one.table().selectRow(0);
    QCOMPARE(tips(), all("lkeyMiceFirstUse"));
    one.tell({inUse(acme), virtualMouse()});
    QCOMPARE(tips(), (QStringList{"-", "-", localized("lkeyMiceNothingTaught")}));
    const PropertyList taught = inUse(acme).with("taught", stringArray({"03"}));
    one.tell({taught, virtualMouse()});
    QCOMPARE(tips(), (QStringList{"-", "-", "-"}));
    one.tell({absent(taught), virtualMouse()});
    QCOMPARE(tips(), (QStringList{localized("lkeyMiceNotPlugged"), "-", "-"}));
  }

  void the_resolution_is_corrected_by_a_number_or_made_automatic() {
    OpenMice one({inUse(acme), virtualMouse()});
    one.click(one.button("mMouseResolution"));
    auto* field = one.window.findChild<QSpinBox*>(QStringLiteral("mResolutionField"));
    QCOMPARE(field->value(), 1600);
    field->setValue(99);
    QVERIFY(!one.button("mResolutionOK").isEnabled());
    QCOMPARE(one.button("mResolutionOK").toolTip(), QStringLiteral("A resolution is 100 to 32000 DPI, or 0"));
    field->setValue(1200);
    one.click(one.button("mResolutionOK"));
    QVERIFY(one.isAsked({{.call = Call::SetResolution, .resolution = 1200}}));
    one.answer(Outcome::Done, {inUse(acme).with("resolution", 1200), virtualMouse()});
    QCOMPARE(one.text("mMouseNotice"), QStringLiteral("The resolution is 1200 DPI"));
    QVERIFY(QTest::qWaitFor(
        [&] { return one.window.findChild<QSpinBox*>() == nullptr || !one.isShown("mResolutionSheet"); }));
  }

  void the_resolution_is_told_by_return_and_by_nothing_else() {
    OpenMice one({inUse(acme), virtualMouse()});
    one.button("mMouseResolution").setFocus(Qt::TabFocusReason);
    QTest::keyClick(&one.button("mMouseResolution"), Qt::Key_Return);
    QApplication::setActiveWindow(one.sheet("mResolutionSheet"));
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("mResolutionField"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1200"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!one.isShown("mResolutionSheet"));
    QVERIFY(one.isShown("mMouseSheet"));
    QVERIFY(one.isAsked({}));
    QApplication::setActiveWindow(one.sheet("mMouseSheet"));
    QCOMPARE(QApplication::focusWidget(), &one.button("mMouseResolution"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    one.click(one.button("mMouseResolution"));
    QApplication::setActiveWindow(one.sheet("mResolutionSheet"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("900"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(one.isAsked({{.call = Call::SetResolution, .resolution = 900}}));
  }

  void forgetting_is_one_request() {
    const PropertyList taught = inUse(acme).with("taught", stringArray({"03"}));
    OpenMice one({taught, virtualMouse()});
    one.click(one.button("mMouseForget"));
    QVERIFY(one.isAsked({{Call::Forget}}));
    one.answer(Outcome::Done, {inUse(acme), virtualMouse()});
    QCOMPARE(one.text("mMouseNotice"), localized("lkeyForgotten"));
  }

  void it_stays_while_the_mouse_changes_and_closes_with_the_engine() {
    OpenMice one({acme, inUse(virtualMouse())});
    one.table().selectRow(0);
    one.click(one.ok());
    one.link.miceRequests.clear();
    one.notifications.post("Device Removed 273", "", {});
    // Nobody misses a mouse that is just being exchanged.
    QVERIFY(!one.isShown("mDeviceConnectionWindow"));
    one.notifications.post("Device Attached 273", "", {});
    QVERIFY(one.isShown("mMouseSheet"));
    one.link.engineChanged(false);
    QVERIFY(!one.isShown("mMouseSheet"));
  }
};

SKARN_QTEST(MouseSheetTest)
#include "MouseSheet_test.moc"
