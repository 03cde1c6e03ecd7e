// How an alert looks: its texts and the order of its buttons.
#include "widgets/Alert.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

class AlertTest : public QObject {
  Q_OBJECT

 private:
  static QLabel* labelWith(const Alert& alert, const QString& text) {
    for (QLabel* label : alert.findChildren<QLabel*>()) {
      if (label->text() == text) return label;
    }
    return nullptr;
  }
  static QAbstractButton* buttonWith(const Alert& alert, const QString& text) {
    for (QAbstractButton* button : alert.buttons()) {
      if (button->text() == text) return button;
    }
    return nullptr;
  }

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void cancelStandsAtTheLeftOfWhatIsDoneAsInTheSheets() {
    QWidget window;
    window.show();
    Alert* alert = Alert::show(&window, QStringLiteral("Delete?"), QStringLiteral("It is gone then."),
                               {QStringLiteral("OK"), QStringLiteral("Cancel")});
    QVERIFY(QTest::qWaitForWindowExposed(alert));
    const QAbstractButton* ok = buttonWith(*alert, QStringLiteral("OK"));
    const QAbstractButton* cancel = buttonWith(*alert, QStringLiteral("Cancel"));
    QVERIFY(ok && cancel);
    QVERIFY(cancel->geometry().right() < ok->geometry().left());
    QCOMPARE(static_cast<const QAbstractButton*>(alert->defaultButton()), ok);
  }

  void theMessageIsATitleAndTheRestIsPlain_data() {
    QTest::addColumn<QString>("informativeText");
    QTest::newRow("another text") << QStringLiteral("It is gone then.");
    QTest::newRow("the same text") << QStringLiteral("Delete?");
    QTest::newRow("none") << QString();
  }
  void theMessageIsATitleAndTheRestIsPlain() {
    QFETCH(QString, informativeText);
    QWidget window;
    window.show();
    Alert* alert = Alert::show(&window, QStringLiteral("Delete?"), informativeText, {QStringLiteral("OK")});
    QVERIFY(QTest::qWaitForWindowExposed(alert));
    QCOMPARE(labelWith(*alert, QStringLiteral("Delete?"))->font().weight(), int(QFont::DemiBold));
    int plain = 0;
    for (const QLabel* label : alert->findChildren<QLabel*>()) {
      if (label->text() != informativeText || label->font().weight() != QFont::Normal || label->text().isEmpty())
        continue;
      QCOMPARE(label->textFormat(), Qt::PlainText);
      ++plain;
    }
    QCOMPARE(plain, informativeText.isEmpty() ? 0 : 1);
  }

  void init() { QApplication::setPalette(lightPalette()); }

  void anAlertTellsWhichButtonEndedIt() {
    QWidget window;
    window.show();
    for (int pressed = 0; pressed < 2; ++pressed) {
      QList<int> codes;
      QPointer<Alert> alert =
          Alert::show(&window, QStringLiteral("Delete?"), QStringLiteral("It is gone then."),
                      {QStringLiteral("OK"), QStringLiteral("Cancel")}, [&codes](int code) { codes << code; });
      QCOMPARE(window.findChild<QMessageBox*>(QStringLiteral("alert")), alert.data());
      QCOMPARE(alert->text(), QStringLiteral("Delete?"));
      QCOMPARE(alert->informativeText(), QStringLiteral("It is gone then."));
      QCOMPARE(alert->windowModality(), Qt::WindowModal);
      for (QAbstractButton* button : alert->buttons()) {
        if (button->text() == (pressed == 0 ? QStringLiteral("OK") : QStringLiteral("Cancel"))) button->click();
      }
      QCOMPARE(codes, QList<int>{Alert::firstButtonReturn + pressed});
      QTRY_VERIFY(alert.isNull());
    }
  }

  void escapePressesTheLastButtonOfAnAlert() {
    QWidget window;
    window.show();
    QList<int> codes;
    const auto note = [&codes](int code) { codes << code; };
    Alert* both = Alert::show(&window, QStringLiteral("A"), {}, {QStringLiteral("OK"), QStringLiteral("Cancel")}, note);
    QTest::keyClick(both, Qt::Key_Escape);
    Alert* one = Alert::show(&window, QStringLiteral("B"), {}, {QStringLiteral("OK")}, note);
    QTest::keyClick(one, Qt::Key_Escape);
    QCOMPARE(codes, (QList<int>{1001, 1000}));
  }

  void anAlertShowsItsTextsAsTheyStand() {
    QWidget window;
    Alert* alert = Alert::show(&window, QStringLiteral("<b>Bold</b>"), {}, {QStringLiteral("Save & Go")});
    QCOMPARE(alert->textFormat(), Qt::PlainText);
    QCOMPARE(alert->buttons().constFirst()->text(), QStringLiteral("Save && Go"));
  }
};

SKARN_QTEST(AlertTest)
#include "Alert_test.moc"
