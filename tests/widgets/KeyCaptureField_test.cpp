// The field that shows a caught key: when it listens, and what it leaves to the sheet.
#include "widgets/KeyCaptureField.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "support/QtTests.h"

using namespace skarn;

namespace {

// A sheet with a field, a button to listen anew, a Cancel button before OK, and OK as the default button.
struct Sheet {
  explicit Sheet(KeyCaptureField::Confirms confirms = KeyCaptureField::Confirms::CaughtKey)
      : field(new KeyCaptureField), again(new QPushButton), cancel(new QPushButton), ok(new QPushButton) {
    auto* layout = new QHBoxLayout(&dialog);
    for (QWidget* widget : std::initializer_list<QWidget*>{field, again, cancel, ok}) layout->addWidget(widget);
    again->setAutoDefault(false);
    cancel->setAutoDefault(false);
    ok->setDefault(true);
    field->setUp(
        ok, confirms, again,
        {QStringLiteral("press"), QStringLiteral("none yet"), QStringLiteral("nameless"), QStringLiteral("first")});
    dialog.show();
    dialog.activateWindow();
    isActive = QTest::qWaitForWindowActive(&dialog);
    field->begin();
  }

  QDialog dialog;
  KeyCaptureField* field;
  QPushButton* again;
  QPushButton* cancel;
  QPushButton* ok;
  bool isActive = false;
};

}  // namespace

class KeyCaptureFieldTest : public QObject {
  Q_OBJECT

 private slots:
  void itBeginsEmptyAndListens() {
    Sheet sheet;
    for (int time = 0; time < 2; ++time) {
      QVERIFY(sheet.isActive && sheet.field->isListening());
      QCOMPARE(KeyCaptureField::listeningIn(&sheet.dialog), sheet.field);
      QVERIFY(sheet.field->hasFocus() && sheet.field->isReadOnly());
      QCOMPARE(sheet.field->text(), QString());
      QCOMPARE(sheet.field->placeholderText(), QStringLiteral("press"));
      QVERIFY(!sheet.again->isEnabled());
      QVERIFY(!sheet.ok->isEnabled());
      QCOMPARE(sheet.ok->toolTip(), QStringLiteral("first"));
      sheet.field->noteTyped(false, true);
      sheet.field->showKey(QStringLiteral("A"));
      QVERIFY(sheet.ok->isEnabled());
      sheet.field->begin();
    }
  }

  void aKeyIsShownAndCanBeConfirmedListeningOrNot_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("named") << "Left Shift + A";
    QTest::newRow("nameless") << "";
  }
  void aKeyIsShownAndCanBeConfirmedListeningOrNot() {
    QFETCH(QString, name);
    Sheet sheet;
    for (const bool listens : {true, false}) {
      if (!listens) sheet.field->stopListening();
      sheet.field->showKey(QStringLiteral("B"));
      sheet.field->showKey(name);
      QCOMPARE(sheet.field->text(), name);
      QCOMPARE(sheet.field->placeholderText(), QStringLiteral("nameless"));
      QVERIFY(sheet.ok->isEnabled());
      QCOMPARE(sheet.ok->toolTip(), QString());
      QCOMPARE(sheet.field->isListening(), listens);
    }
  }

  void theFirstKeyEndsTheListening() {
    Sheet sheet;
    sheet.field->noteTyped(true, true);
    QVERIFY(sheet.field->isListening());
    sheet.field->noteTyped(false, true);
    QVERIFY(!sheet.field->isListening());
    QCOMPARE(KeyCaptureField::listeningIn(&sheet.dialog), nullptr);
    QVERIFY(sheet.again->isEnabled());
    // The engine's word is still to come.
    QCOMPARE(sheet.field->placeholderText(), QStringLiteral("none yet"));
  }

  void aModifierAloneEndsTheListeningWhenItIsLetGo() {
    Sheet sheet;
    sheet.field->noteTyped(true, true);
    sheet.field->noteTyped(true, true);
    QVERIFY(sheet.field->isListening());
    sheet.field->noteTyped(true, false);
    QVERIFY(!sheet.field->isListening());
  }

  void theReleaseOfAModifierFromBeforeEndsNothing() {
    Sheet sheet;
    sheet.field->noteTyped(true, false);
    sheet.field->noteTyped(false, false);
    QVERIFY(sheet.field->isListening());
  }

  void returnConfirmsWhatWasCaught() {
    Sheet sheet;
    const QSignalSpy confirmed(sheet.ok, &QPushButton::clicked);
    sheet.field->showKey(QStringLiteral("A"));
    sheet.field->noteTyped(false, true);
    QVERIFY(sheet.ok->hasFocus());
    QTest::keyClick(sheet.dialog.focusWidget(), Qt::Key_Return);
    QCOMPARE(confirmed.size(), 1);
  }

  void okCanBeConfirmedWithoutAKeyWhereThatIsWanted() {
    Sheet sheet(KeyCaptureField::Confirms::Always);
    QVERIFY(sheet.ok->isEnabled());
    QCOMPARE(sheet.ok->toolTip(), QStringLiteral("first"));
    sheet.field->showKey(QStringLiteral("A"));
    QCOMPARE(sheet.ok->toolTip(), QString());
    sheet.field->begin();
    QVERIFY(sheet.ok->isEnabled());
    QCOMPARE(sheet.ok->toolTip(), QStringLiteral("first"));
  }

  void theButtonAndAClickListenAnew() {
    Sheet sheet;
    sheet.field->showKey(QStringLiteral("A"));
    sheet.field->noteTyped(false, true);
    sheet.again->click();
    QVERIFY(sheet.field->isListening() && sheet.field->hasFocus());
    // What was caught can still be confirmed.
    QCOMPARE(sheet.field->text(), QStringLiteral("A"));
    QVERIFY(sheet.ok->isEnabled());
    sheet.field->noteTyped(false, true);
    QTest::mouseClick(sheet.field, Qt::LeftButton);
    QVERIFY(sheet.field->isListening());
  }

  void itListensForTheKeysOfItsOwnSheetActiveOrNot() {
    Sheet sheet;
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(sheet.field->isListening());
    QCOMPARE(KeyCaptureField::listeningIn(&other), nullptr);
    QCOMPARE(KeyCaptureField::listeningIn(nullptr), nullptr);
    QCOMPARE(KeyCaptureField::listeningIn(&sheet.dialog), sheet.field);
    // What is caught before the sheet counts as the active window is confirmed by Return all the same.
    sheet.field->showKey(QStringLiteral("A"));
    sheet.field->noteTyped(false, true);
    QCOMPARE(sheet.dialog.focusWidget(), sheet.ok);
    sheet.field->listen();
    sheet.dialog.hide();
    QVERIFY(!sheet.field->isListening());
    QCOMPARE(KeyCaptureField::listeningIn(&sheet.dialog), nullptr);
  }

  void oneListensAtATime() {
    Sheet first;
    Sheet second;
    QVERIFY(!first.field->isListening() && second.field->isListening());
    QCOMPARE(first.field->placeholderText(), QStringLiteral("none yet"));
    QVERIFY(first.again->isEnabled());
  }
};

SKARN_QTEST(KeyCaptureFieldTest)
#include "KeyCaptureField_test.moc"
