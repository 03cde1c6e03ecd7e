// How an alert looks: its texts and the order of its buttons.
#include "widgets/Alert.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "support/QtTests.h"
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
};

SKARN_QTEST(AlertTest)
#include "Alert_test.moc"
