#include "app/HistorySheet.h"

#include <QHeaderView>
#include <QPushButton>

#include "app/HistoryModel.h"
#include "app/SettingsHistory.h"
#include "platform/Localization.h"
#include "ui_HistorySheet.h"
#include "widgets/RowDelegate.h"
#include "widgets/SheetFlags.h"
#include "widgets/TextRoles.h"

namespace skarn {

namespace {

// What is undone is muted, but for the selected row, on whose colour it could not be read, and where the settings are
// now stands out.
class HistoryRows : public RowDelegate {
 public:
  using RowDelegate::RowDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    RowDelegate::initStyleOption(option, index);
    const QModelIndex what = index.siblingAtColumn(HistoryModel::What);
    if (what.data(HistoryModel::IsNowRole).toBool() && index.column() == HistoryModel::What)
      option->font = semibold(option->font);
    if (!what.data(HistoryModel::IsUndoneRole).toBool() && index.column() == HistoryModel::What) return;
    option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
  }
};

}  // namespace

HistorySheet* HistorySheet::open(QWidget* window, SettingsHistory& history) {
  auto* sheet = new HistorySheet(window, history);
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  sheet->QDialog::open();
  return sheet;
}

HistorySheet::HistorySheet(QWidget* window, SettingsHistory& history)
    : QDialog(window, sheetFlags),
      mUi(std::make_unique<Ui::HistorySheet>()),
      mHistory(history),
      mModel(new HistoryModel(this)) {
  mUi->setupUi(this);
  setUpTable();
  connect(&history, &SettingsHistory::changed, this, &HistorySheet::showEntries);
  connect(mUi->mHistoryGo, &QPushButton::clicked, this, &HistorySheet::go);
  connect(mUi->mHistoryClose, &QPushButton::clicked, this, &HistorySheet::reject);
  showEntries();
  mUi->mHistoryTable->setFocus();
}

HistorySheet::~HistorySheet() = default;

void HistorySheet::setUpTable() {
  QTableView* table = mUi->mHistoryTable;
  table->setModel(mModel);
  table->setItemDelegate(new HistoryRows(this));
  QHeaderView* header = table->horizontalHeader();
  header->setSectionResizeMode(HistoryModel::Time, QHeaderView::ResizeToContents);
  header->setSectionResizeMode(HistoryModel::What, QHeaderView::Stretch);
  header->setSectionResizeMode(HistoryModel::Who, QHeaderView::ResizeToContents);
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &HistorySheet::updateButton);
  connect(table, &QTableView::doubleClicked, this, &HistorySheet::go);
}

void HistorySheet::say(const QString& text) {
  mUi->mHistoryNotice->say(text);
}

int HistorySheet::selectedRow() const {
  const QModelIndexList rows = mUi->mHistoryTable->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void HistorySheet::selectRow(int row) {
  mUi->mHistoryTable->selectRow(row);
  mUi->mHistoryTable->scrollTo(mModel->index(row, HistoryModel::What));
}

void HistorySheet::showEntries() {
  const int before = selectedRow();
  const bool wasAtNow = before < 0 || before == mModel->rowOfNow();
  const qint64 id = mModel->index(before, HistoryModel::What).data(HistoryModel::IdRole).toLongLong();
  mModel->setEntries(mHistory.entries());
  const int row = before < 0 ? -1 : mModel->rowOf(id);
  selectRow(row < 0 || wasAtNow ? mModel->rowOfNow() : row);
  const bool isEmpty = mModel->rowCount() == 0;
  mUi->mHistoryTable->setVisible(!isEmpty);
  mUi->mHistoryEmpty->setVisible(isEmpty);
  updateButton();
}

void HistorySheet::updateButton() {
  const QModelIndex row = mModel->index(selectedRow(), HistoryModel::What);
  const bool isUndone = row.data(HistoryModel::IsUndoneRole).toBool();
  const bool isElsewhere = row.isValid() && !row.data(HistoryModel::IsNowRole).toBool();
  QPushButton* button = mUi->mHistoryGo;
  button->setText(localized(isUndone ? "lkeyHistoryGoForward" : "lkeyHistoryGoBack"));
  button->setEnabled(isElsewhere);
  button->setToolTip(isElsewhere ? QString() : localized(row.isValid() ? "lkeyHistoryIsHere" : "lkeyHistoryEmpty"));
}

void HistorySheet::go() {
  const QModelIndex row = mModel->index(selectedRow(), HistoryModel::What);
  if (row.isValid() && mUi->mHistoryGo->isEnabled()) mHistory.goTo(row.data(HistoryModel::IdRole).toLongLong());
}

}  // namespace skarn
