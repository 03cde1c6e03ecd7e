#include "widgets/FigureLabel.h"

#include <QApplication>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

class FigureLabelTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void digitsTakeTheSameWidth() {
    FigureLabel label;
    // A font whose digits differ in width would show it.
    label.setFont(QFont(QStringLiteral("URW Bookman")));
    label.setText(QStringLiteral("1111 DPI"));
    const int width = label.sizeHint().width();
    label.setText(QStringLiteral("8888 DPI"));
    QCOMPARE(label.sizeHint().width(), width);
    label.setText(QStringLiteral("88888 DPI"));
    QVERIFY(label.sizeHint().width() > width);
  }
};

SKARN_QTEST(FigureLabelTest)
#include "FigureLabel_test.moc"
