#include "widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

#include "support/QtTests.h"

using namespace skarn;

namespace {

// The lines that are shown.
QStringList shown(const QString& text) {
  QWidget widget;
  widget.show();
  showPlainToolTip(QHelpEvent(QEvent::ToolTip, QPoint(), widget.mapToGlobal(QPoint())), text, &widget);
  QTextDocument document;
  document.setHtml(QToolTip::text());
  return document.toPlainText().split(QLatin1Char('\n'));
}

}  // namespace

class PlainToolTipTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() { QToolTip::hideText(); }

  void aTextStandsAsItIs() {
    const QString text = QStringLiteral("<b>Bold</b> & “plain”\nand a second line");
    QCOMPARE(shown(text).join(QLatin1Char('\n')), text);
  }

  void aLongTextHasLinesOfAtMost80CharactersThatEndBetweenWords() {
    const QString text = QString(QStringLiteral("seven77 ")).repeated(25).trimmed();
    const QStringList lines = shown(text);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), QString(QStringLiteral("seven77 ")).repeated(10).trimmed());
    QCOMPARE(lines.join(QLatin1Char(' ')), text);
  }

  void aLongWordIsCutBetweenCharacters() {
    const QString clef = QString::fromUcs4(U"\U0001D11E");
    const QStringList lines = shown(QLatin1Char('a') + clef.repeated(60));
    QCOMPARE(lines, (QStringList{QLatin1Char('a') + clef.repeated(39), clef.repeated(21)}));
  }
};

SKARN_QTEST(PlainToolTipTest)
#include "PlainToolTip_test.moc"
