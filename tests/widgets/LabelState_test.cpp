#include "widgets/LabelState.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "support/QtTests.h"
#include "widgets/PaintedPixels.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

class LabelStateTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void disabledLabelsAreGreyAndSayWhy() {
    QWidget page;
    auto* layout = new QVBoxLayout(&page);
    auto* label = new QLabel(QStringLiteral("Text"));
    auto* box = new QGroupBox(QStringLiteral("Title"));
    auto* button = new QPushButton(QStringLiteral("Go"));
    layout->addWidget(label);
    layout->addWidget(box);
    layout->addWidget(button);
    const auto color = [label] { return label->palette().color(label->foregroundRole()); };
    setLabelsEnabled(page, false, QStringLiteral("No mouse"));
    QCOMPARE(color(), lightPalette().color(QPalette::Disabled, QPalette::WindowText));
    QVERIFY(box->isEnabled());
    QVERIFY(button->isEnabled());
    QCOMPARE(page.toolTip(), QStringLiteral("No mouse"));
    QVERIFY(!shows(*box, lightPalette().color(QPalette::WindowText)));
    setLabelsEnabled(page, true, QStringLiteral("No mouse"));
    QCOMPARE(color(), lightPalette().color(QPalette::Active, QPalette::WindowText));
    QCOMPARE(page.toolTip(), QString());
    QVERIFY(shows(*box, lightPalette().color(QPalette::WindowText)));
  }
};

SKARN_QTEST(LabelStateTest)
#include "LabelState_test.moc"
