#include "profiles/GroupedTable.h"

#include <QHeaderView>
#include <QStandardItemModel>

#include "widgets/RowDelegate.h"
#include "widgets/TextRoles.h"

namespace skarn {

namespace {

constexpr int readingHeight = 32;

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
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
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
}

}  // namespace skarn
