#include "profiles/GroupedTable.h"

#include <QHeaderView>
#include <QStandardItemModel>

#include "widgets/RowDelegate.h"
#include "widgets/TextRoles.h"

namespace skarn {

namespace {

constexpr int readingHeight = 32;
// Beside a text, for the cell's edges and the gap to the next column.
constexpr int cellMargins = 32;

}  // namespace

GroupedTable::GroupedTable(QWidget* parent) : QTableView(parent), mRows(new QStandardItemModel(this)) {
  setModel(mRows);
  setItemDelegate(new RowDelegate(this));
  setFrameShape(NoFrame);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setSelectionBehavior(SelectRows);
  setTabKeyNavigation(false);
  setVerticalScrollMode(ScrollPerPixel);
  setShowGrid(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(readingHeight);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setMinimumSectionSize(0);
}

void GroupedTable::begin(const QStringList& headers) {
  clearSpans();
  mRows->clear();
  mRows->setHorizontalHeaderLabels(headers);
  for (int column = 0; column < headers.size(); ++column) {
    mRows->setHeaderData(column, Qt::Horizontal, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                         Qt::TextAlignmentRole);
  }
  horizontalHeader()->setVisible(!headers.join(QString()).isEmpty());
  // What the rows are called is shown whole where there are no columns to compare.
  mAreNamesWhole = headers.size() == 2;
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  if (!mAreNamesWhole) return;
  horizontalHeader()->setSectionResizeMode(0, QHeaderView::Fixed);
  horizontalHeader()->resizeSection(0, 0);
}

void GroupedTable::addGroup(const QString& title) {
  auto* item = new QStandardItem(title);
  item->setFont(semibold(font()));
  item->setFlags(Qt::ItemIsEnabled);
  mRows->appendRow(item);
  setSpan(mRows->rowCount() - 1, 0, 1, mRows->columnCount());
}

void GroupedTable::addRow(const QStringList& texts) {
  QList<QStandardItem*> cells;
  for (const QString& text : texts) {
    cells << new QStandardItem(text);
    cells.constLast()->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  }
  mRows->appendRow(cells);
  if (!mAreNamesWhole) return;
  const int width = fontMetrics().horizontalAdvance(texts.constFirst()) + cellMargins;
  if (width > columnWidth(0)) horizontalHeader()->resizeSection(0, width);
}

}  // namespace skarn
