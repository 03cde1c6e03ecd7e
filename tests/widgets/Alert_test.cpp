#include "widgets/Alert.h"

#include <QApplication>
#include <QPointer>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

class AlertTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
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
