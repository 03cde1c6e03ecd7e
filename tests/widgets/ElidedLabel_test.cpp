#include "widgets/ElidedLabel.h"

#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

class ElidedLabelTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void aLongTextIsCutAndItsWholeIsTheTooltip() {
    ElidedLabel label;
    const QString text = QStringLiteral("<i>A profile with a name that is much too long for its place</i>");
    label.setText(text);
    QVERIFY(label.minimumSizeHint().width() < label.sizeHint().width() / 2);
    label.resize(label.minimumSizeHint());
    label.show();
    QHelpEvent ask(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&label, &ask);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), text);
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
  }

  void aTextIsCutWhereItIsTold() {
    ElidedLabel label;
    label.setText(QStringLiteral("A profile with a name that is much too long"));
    label.resize(120, 20);
    const QString inTheMiddle = label.shownText();
    QVERIFY(inTheMiddle.contains(QChar(0x2026)) && inTheMiddle.endsWith(QStringLiteral("ng")));
    label.setElideMode(Qt::ElideRight);
    QVERIFY(label.shownText().startsWith(QStringLiteral("A prof")));
    QVERIFY(label.shownText().endsWith(QChar(0x2026)));
  }
};

SKARN_QTEST(ElidedLabelTest)
#include "ElidedLabel_test.moc"
