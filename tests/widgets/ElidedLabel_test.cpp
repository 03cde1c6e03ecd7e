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
};

SKARN_QTEST(ElidedLabelTest)
#include "ElidedLabel_test.moc"
