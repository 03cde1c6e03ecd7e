// The field that shows the key to be assigned: what it swallows, when it lets go of the keyboard, and what it takes.
#include "widgets/KeyCaptureField.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

#include "support/QtTests.h"

using namespace skarn;

namespace {

// A sheet with a field, a Cancel button before OK, and OK as the default button.
struct Sheet {
  Sheet() : ok(new QPushButton), cancel(new QPushButton), field(new KeyCaptureField) {
    auto* layout = new QHBoxLayout(&dialog);
    for (QWidget* widget : std::initializer_list<QWidget*>{field, cancel, ok}) layout->addWidget(widget);
    cancel->setAutoDefault(false);
    ok->setDefault(true);
    field->setUp(ok, {QStringLiteral("none yet"), QStringLiteral("nameless"), QStringLiteral("press one")});
    field->begin();
    dialog.show();
  }

  bool isInField() const { return dialog.focusWidget() == field; }
  bool isOnOK() const { return dialog.focusWidget() == ok; }

  QDialog dialog;
  QPushButton* ok;
  QPushButton* cancel;
  KeyCaptureField* field;
};

void addKeys() {
  QTest::addColumn<int>("key");
  QTest::newRow("a letter") << int(Qt::Key_A);
  QTest::newRow("Return") << int(Qt::Key_Return);
  QTest::newRow("Enter") << int(Qt::Key_Enter);
  QTest::newRow("Tab") << int(Qt::Key_Tab);
  QTest::newRow("Backtab") << int(Qt::Key_Backtab);
  QTest::newRow("Space") << int(Qt::Key_Space);
  QTest::newRow("Down") << int(Qt::Key_Down);
  QTest::newRow("Backspace") << int(Qt::Key_Backspace);
  QTest::newRow("F1") << int(Qt::Key_F1);
  QTest::newRow("a modifier") << int(Qt::Key_Shift);
}

}  // namespace

class KeyCaptureFieldTest : public QObject {
  Q_OBJECT

 private slots:
  void itBeginsEmptyWithTheKeyboardAndWithoutOK() {
    Sheet sheet;
    for (int time = 0; time < 2; ++time) {
      QVERIFY(sheet.isInField());
      QVERIFY(sheet.field->isReadOnly());
      QCOMPARE(sheet.field->text(), QString());
      QCOMPARE(sheet.field->placeholderText(), QStringLiteral("none yet"));
      QVERIFY(!sheet.ok->isEnabled());
      QCOMPARE(sheet.ok->toolTip(), QStringLiteral("press one"));
      QTest::keyPress(sheet.field, Qt::Key_A);
      sheet.field->showKey(QStringLiteral("A"));
      QTest::keyRelease(sheet.field, Qt::Key_A);
      QVERIFY(sheet.isOnOK());
      sheet.field->begin();
    }
  }

  void aKeyIsShownAndCanBeConfirmed_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("named") << "Left Shift + A";
    QTest::newRow("nameless") << "";
  }
  void aKeyIsShownAndCanBeConfirmed() {
    QFETCH(QString, name);
    Sheet sheet;
    sheet.field->showKey(QStringLiteral("B"));
    sheet.field->showKey(name);
    QCOMPARE(sheet.field->text(), name);
    QCOMPARE(sheet.field->placeholderText(), QStringLiteral("nameless"));
    QVERIFY(sheet.ok->isEnabled());
    QCOMPARE(sheet.ok->toolTip(), QString());
    QVERIFY(sheet.isInField());
  }

  void aSwallowedKeyWorksNothing_data() { addKeys(); }
  void aSwallowedKeyWorksNothing() {
    QFETCH(int, key);
    Sheet sheet;
    QShortcut shortcut(QKeySequence(key), &sheet.dialog);
    const QSignalSpy worked(&shortcut, &QShortcut::activated);
    const QSignalSpy confirmed(sheet.ok, &QPushButton::clicked);
    const QSignalSpy ended(&sheet.dialog, &QDialog::finished);
    QVERIFY(QTest::qWaitForWindowActive(&sheet.dialog));
    sheet.field->showKey(QStringLiteral("shown"));
    QTest::keyPress(sheet.field, static_cast<Qt::Key>(key));
    QVERIFY(sheet.isInField());
    QTest::keyRelease(sheet.field, static_cast<Qt::Key>(key));
    QVERIFY(sheet.isOnOK());
    QCOMPARE(sheet.field->text(), QStringLiteral("shown"));
    QVERIFY(worked.isEmpty() && confirmed.isEmpty() && ended.isEmpty());
  }

  void escapeIsLeftToTheSheet() {
    Sheet sheet;
    const QSignalSpy rejected(&sheet.dialog, &QDialog::rejected);
    QTest::keyClick(sheet.field, Qt::Key_Escape);
    QCOMPARE(rejected.size(), 1);
    QVERIFY(!sheet.dialog.isVisible());
  }

  void itMovesOnWhenTheKeyIsLetGoAndShownInEitherOrder() {
    for (int moment = 0; moment < 3; ++moment) {
      Sheet sheet;
      if (moment == 0) sheet.field->showKey(QStringLiteral("A"));
      QTest::keyPress(sheet.field, Qt::Key_A);
      if (moment == 1) sheet.field->showKey(QStringLiteral("A"));
      QVERIFY(sheet.isInField());
      QTest::keyRelease(sheet.field, Qt::Key_A);
      QCOMPARE(sheet.isOnOK(), moment != 2);
      if (moment == 2) sheet.field->showKey(QStringLiteral("A"));
      QVERIFY(sheet.isOnOK());
    }
  }

  void aKeyThatWentDownElsewhereDoesNotMoveItOn() {
    Sheet sheet;
    sheet.field->showKey(QStringLiteral("A"));
    QTest::keyRelease(sheet.field, Qt::Key_Return);
    QVERIFY(sheet.isInField());
    // Nor does its repetition, as long as it is held.
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease, QEvent::KeyPress}) {
      QKeyEvent repeated(type, Qt::Key_Return, Qt::NoModifier, QString(), true);
      QApplication::sendEvent(sheet.field, &repeated);
    }
    QTest::keyRelease(sheet.field, Qt::Key_Return);
    QVERIFY(sheet.isInField());
  }

  void aKeyBeforeTheFieldWasReachedAnewDoesNotCount() {
    Sheet sheet;
    QTest::keyClick(sheet.field, Qt::Key_A);
    sheet.cancel->setFocus();
    sheet.field->showKey(QStringLiteral("A"));
    QCOMPARE(sheet.dialog.focusWidget(), sheet.cancel);
    QVERIFY(QTest::qWaitForWindowActive(&sheet.dialog));
    sheet.field->setFocus();
    sheet.field->showKey(QStringLiteral("B"));
    QVERIFY(sheet.isInField());
    QTest::keyClick(sheet.field, Qt::Key_B);
    QVERIFY(sheet.isOnOK());
  }

  void inTheFieldEveryKeyIsTaken() {
    const Sheet sheet;
    for (int usage = 0; usage < 256; ++usage) QVERIFY(sheet.field->takesKey(usage));
  }

  void onAButtonTheKeysThatWorkItAreNotTaken() {
    const Sheet sheet;
    sheet.field->showKey(QStringLiteral("A"));
    const QList<int> working = {0, 40, 41, 43, 44, 79, 80, 81, 82, 88};
    for (QPushButton* button : {sheet.ok, sheet.cancel}) {
      button->setFocus();
      for (int usage = 0; usage < 256; ++usage) QCOMPARE(sheet.field->takesKey(usage), !working.contains(usage));
    }
  }
};

SKARN_QTEST(KeyCaptureFieldTest)
#include "KeyCaptureField_test.moc"
