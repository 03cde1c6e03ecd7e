// What opens the sheets for a line, and what does not.
#include <QTest>

#include "macros/EditingFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class MouseMacrosControllerEditingTest : public QObject {
  Q_OBJECT

 private slots:
  void returnAndADoubleClickEditALine() {
    EditingFixture fixture(1);
    QTest::keyClick(fixture.lines(), Qt::Key_Return);
    auto* delay = fixture.lines()->viewport()->findChild<QLineEdit*>();
    QVERIFY(delay != nullptr && delay->isVisible());
    QVERIFY(!fixture.isShown("mEditDelayWindow"));
    QTest::keyClick(delay, Qt::Key_Escape);
    const QPoint place = fixture.placeOf(fixture.lines(), 2);
    QTest::mouseClick(fixture.lines()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(fixture.lines()->viewport(), Qt::LeftButton, {}, place);
    QVERIFY(fixture.isShown("mEditEventWindow"));
  }

  void duringARecordingReturnEditsNothing() {
    EditingFixture fixture(1);
    fixture.click("mAddMacroDetails");
    fixture.clickRow(fixture.lines(), 1);
    QTest::keyClick(fixture.lines(), Qt::Key_Return);
    QVERIFY(fixture.lines()->viewport()->findChild<QLineEdit*>() == nullptr);
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(YES, 0)"});
  }

  void withoutADelegateNoSheetIsOpened() {
    for (const int line : {1, 2}) {
      EditingFixture fixture(line);
      fixture.tab->setMMacroDelegate(nullptr);
      QTest::keyClick(fixture.lines(), Qt::Key_Return);
      QVERIFY(fixture.lines()->viewport()->findChild<QLineEdit*>() == nullptr);
      QVERIFY(!fixture.isShown("mEditEventWindow"));
    }
  }

  void noLineSelectedOpensNoSheet() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->clickMacroDetailsSettingsMenuItem(2);
    QVERIFY(!fixture.find("mEditDelayWindow")->isVisible());
    QVERIFY(!fixture.find("mEditEventWindow")->isVisible());
    QCOMPARE(fixture.delegate.take(), QStringList());
  }
};

SKARN_QTEST(MouseMacrosControllerEditingTest)
#include "MouseMacrosController_editing_test.moc"
