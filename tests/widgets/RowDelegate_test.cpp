#include "widgets/RowDelegate.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "support/QtTests.h"
#include "widgets/PaintedPixels.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

class RowDelegateTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void theTitleOfAColumnStandsOverItsTexts_data() {
    QTest::addColumn<int>("alignment");
    QTest::newRow("left") << int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("right") << int(Qt::AlignRight | Qt::AlignVCenter);
  }
  void theTitleOfAColumnStandsOverItsTexts() {
    QFETCH(int, alignment);
    QStandardItemModel model(1, 1);
    // As wide as high, and without room at its sides in any size.
    const QString mark(QChar(0x2588));
    model.setHeaderData(0, Qt::Horizontal, mark);
    model.setHeaderData(0, Qt::Horizontal, alignment, Qt::TextAlignmentRole);
    model.setData(model.index(0, 0), mark);
    model.setData(model.index(0, 0), alignment, Qt::TextAlignmentRole);
    QTableView table;
    table.setModel(&model);
    table.setItemDelegate(new RowDelegate(&table));
    table.setFrameShape(QFrame::NoFrame);
    table.verticalHeader()->hide();
    table.setColumnWidth(0, 120);
    const auto ink = [](QWidget* part, const QRect& rect) {
      return inkColumns(part->grab().toImage(), rect.adjusted(0, 0, 0, -2));
    };
    QHeaderView* header = table.horizontalHeader();
    const auto title = ink(header->viewport(), QRect(0, 0, 120, header->height()));
    const auto cell = ink(table.viewport(), table.visualRect(model.index(0, 0)));
    QVERIFY(title.first > 0 && cell.first > 0);
    const bool isLeft = alignment & Qt::AlignLeft;
    const int off = isLeft ? title.first - cell.first : title.second - cell.second;
    QVERIFY2(std::abs(off) <= 1, qPrintable(QString::number(off)));
  }

  void aCellTellsItsTooltipOrElseATextThatIsCut_data() {
    QTest::addColumn<QString>("tip");
    QTest::addColumn<bool>("isCut");
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<QString>("expected");
    const QString text = QStringLiteral("<b>Fire & Ice</b>");
    const QString tip = QStringLiteral("<i>/usr & local</i>");
    QTest::newRow("a text that fits") << "" << false << true << "";
    QTest::newRow("a text that is cut") << "" << true << true << text;
    QTest::newRow("a tooltip, and a text that fits") << tip << false << true << tip;
    QTest::newRow("a tooltip, and a text that is cut") << tip << true << true << tip;
    // It says why it is disabled.
    QTest::newRow("a table that is disabled") << tip << true << false << "No mouse";
  }
  void aCellTellsItsTooltipOrElseATextThatIsCut() {
    QFETCH(QString, tip);
    QFETCH(bool, isCut);
    QFETCH(bool, isEnabled);
    QFETCH(QString, expected);
    const QString text = QStringLiteral("<b>Fire & Ice</b>");
    QStandardItemModel model(1, 1);
    const QModelIndex cell = model.index(0, 0);
    model.setData(cell, text);
    model.setData(cell, tip, Qt::ToolTipRole);
    model.setData(cell, QIcon(), Qt::DecorationRole);
    QFont font;
    font.setBold(true);
    model.setData(cell, font, Qt::FontRole);
    QTableView table;
    table.setModel(&model);
    table.setItemDelegate(new RowDelegate(&table));
    table.setShowGrid(false);
    table.setIconSize({20, 20});
    table.setEnabled(isEnabled);
    if (!isEnabled) table.setToolTip(QStringLiteral("No mouse"));
    // Padding left and right of the text, and before it the place of the icon.
    const int whole = QFontMetrics(font, &table).horizontalAdvance(text) + 3 * RowDelegate::sidePadding + 20;
    table.setColumnWidth(0, isCut ? whole - 1 : whole);
    table.show();
    const auto ask = [&table](const QPoint& place) {
      QHelpEvent help(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
      QApplication::sendEvent(table.viewport(), &help);
      return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    };
    QCOMPARE(ask(table.visualRect(cell).center()), expected);
    // Beside the cells there is nothing to tell.
    if (isEnabled) ask(table.viewport()->rect().bottomRight());
    if (!isEnabled) QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
  }
};

SKARN_QTEST(RowDelegateTest)
#include "RowDelegate_test.moc"
