// A press and its release, of which one changes with the other.
#include <QCheckBox>
#include <QTest>

#include "macros/EditingFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// A macro in which A is held while B is pressed, with the sheet for one of its lines.
struct ReleaseFixture : EditingFixture {
  explicit ReleaseFixture(int line) : EditingFixture(0) {
    delegate.lines[0] = PropertyList::array({"Key Press A", "0.020 seconds delay\n", "Key Press B",
                                             "0.020 seconds delay\n", "Key Release B", "0.020 seconds delay\n",
                                             "Key Release A", "0.020 seconds delay\n", "Key Release B"});
    delegate.sequences = {{0, eventOf(1, 7, 4)},
                          {2, eventOf(1, 7, 5)},
                          {4, eventOf(0, 7, 5)},
                          {6, eventOf(0, 7, 4)},
                          {8, eventOf(0, 7, 5)}};
    tab->updateSelectedMacroWithMacroDetails(delegate.lines[0]);
    clickRow(lines(), line);
    edit();
    delegate.take();
  }
  QCheckBox* box() { return find<QCheckBox>("mChangesPartner"); }
  QStringList sent() {
    press(29);
    click("mMacroEventEditOK");
    return delegate.take();
  }
};

QString text(int command, int key) {
  return RecordingMacros::text(eventOf(command, 7, key));
}

}  // namespace

class MouseMacrosControllerReleaseTest : public QObject {
  Q_OBJECT

 private slots:
  void theReleaseChangesWithThePress() {
    ReleaseFixture fixture(0);
    QVERIFY(fixture.box()->isVisible());
    QVERIFY(fixture.box()->isChecked());
    QCOMPARE(fixture.box()->text(), QStringLiteral("Also change its release"));
    QCOMPARE(fixture.sent(), (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 0)",
                                          "getSequenceDetails(0, 6)", "updateSequenceInfo(0, 0, " + text(1, 29) + ")",
                                          "updateFurtherSequenceInfo(0, 6, " + text(0, 29) + ")",
                                          "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void withoutTheBoxThePressChangesAlone() {
    ReleaseFixture fixture(2);
    QTest::keyClick(fixture.box(), Qt::Key_Space);
    QCOMPARE(fixture.sent(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)",
                          "updateSequenceInfo(0, 2, " + text(1, 29) + ")", "getMacroDetailsForMacroAtIndex(0)"}));
    // The next sheet offers it again.
    fixture.edit();
    QVERIFY(fixture.box()->isChecked());
  }

  void thePressChangesWithTheRelease() {
    ReleaseFixture fixture(4);
    QVERIFY(fixture.box()->isVisible());
    QVERIFY(fixture.box()->isChecked());
    QCOMPARE(fixture.box()->text(), QStringLiteral("Also change its press"));
    QCOMPARE(fixture.sent(), (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 4)",
                                          "getSequenceDetails(0, 2)", "updateSequenceInfo(0, 4, " + text(0, 29) + ")",
                                          "updateFurtherSequenceInfo(0, 2, " + text(1, 29) + ")",
                                          "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void withoutTheBoxTheReleaseChangesAlone() {
    ReleaseFixture fixture(6);
    QTest::keyClick(fixture.box(), Qt::Key_Space);
    QCOMPARE(fixture.sent(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 6)",
                          "updateSequenceInfo(0, 6, " + text(0, 29) + ")", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void aReleaseWithoutAPressOffersNothing() {
    ReleaseFixture fixture(8);
    QVERIFY(!fixture.box()->isVisible());
    QCOMPARE(fixture.sent(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 8)",
                          "updateSequenceInfo(0, 8, " + text(0, 29) + ")", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void aReleaseOfAnotherKeyOfTheSameNameStaysAsItIs() {
    ReleaseFixture fixture(0);
    fixture.delegate.sequences[6] = eventOf(0, 7, 76);
    QCOMPARE(fixture.sent(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 0)", "getSequenceDetails(0, 6)",
                          "updateSequenceInfo(0, 0, " + text(1, 29) + ")", "getMacroDetailsForMacroAtIndex(0)"}));
  }
};

SKARN_QTEST(MouseMacrosControllerReleaseTest)
#include "MouseMacrosController_release_test.moc"
