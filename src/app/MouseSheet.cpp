#include "app/MouseSheet.h"

#include <QFontDatabase>
#include <QHeaderView>
#include <QPushButton>
#include <algorithm>

#include "app/MouseModel.h"
#include "app/MouseResolutionSheet.h"
#include "app/MouseText.h"
#include "app/TeachingSheet.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "ui_MouseSheet.h"
#include "widgets/RowDelegate.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace {

constexpr int fewestRows = 4;
constexpr int mostRows = 6;

void offer(QPushButton& button, const char* whyNot) {
  button.setEnabled(whyNot == nullptr);
  button.setToolTip(whyNot == nullptr ? QString() : localized(whyNot));
}

// Why nothing can be told of the mouse; nullptr where that can be.
const char* whyNotTold(const MouseDescription* mouse) {
  if (mouse == nullptr) return "lkeyMiceNoneSelected";
  if (mouse->isVirtual()) return "lkeyMiceVirtualKnown";
  return mouse->isInUse ? nullptr : "lkeyMiceFirstUse";
}

const char* whyNotUsed(const MouseDescription* mouse) {
  if (mouse == nullptr) return "lkeyMiceNoneSelected";
  if (mouse->isInUse) return "lkeyMiceIsInUse";
  if (mouse->isVirtual()) return nullptr;
  if (!mouse->isPresent) return "lkeyMiceNotPlugged";
  return mouse->isAllowed ? nullptr : "lkeyMiceNotAllowed";
}

}  // namespace

MouseSheet* MouseSheet::open(QWidget* window, MouseChoice& choice) {
  auto* sheet = new MouseSheet(window, choice);
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  sheet->QDialog::open();
  return sheet;
}

MouseSheet::MouseSheet(QWidget* window, MouseChoice& choice)
    : QDialog(window, sheetFlags),
      mUi(std::make_unique<Ui::MouseSheet>()),
      mChoice(choice),
      mModel(new MouseModel(this)) {
  mUi->setupUi(this);
  mUi->mMouseCommand->setText(permissionCommand());
  mUi->mMouseCommand->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setUpTable();
  wireButtons();
  connect(&choice, &MouseChoice::changed, this, &MouseSheet::showMice);
  showMice();
  mUi->mMouseTable->setFocus();
}

MouseSheet::~MouseSheet() = default;

void MouseSheet::setUpTable() {
  QTableView* table = mUi->mMouseTable;
  table->setModel(mModel);
  table->setItemDelegate(new RowDelegate(this));
  QHeaderView* header = table->horizontalHeader();
  header->setSectionResizeMode(MouseModel::Name, QHeaderView::Stretch);
  header->setSectionResizeMode(MouseModel::Connection, QHeaderView::ResizeToContents);
  header->setSectionResizeMode(MouseModel::State, QHeaderView::ResizeToContents);
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MouseSheet::showSelected);
  connect(table, &QTableView::doubleClicked, this, &MouseSheet::use);
}

void MouseSheet::wireButtons() {
  connect(mUi->mMouseOK, &QPushButton::clicked, this, &MouseSheet::use);
  connect(mUi->mMouseCancel, &QPushButton::clicked, this, &MouseSheet::reject);
  connect(mUi->mMouseTeach, &QPushButton::clicked, this, &MouseSheet::teach);
  connect(mUi->mMouseResolution, &QPushButton::clicked, this, &MouseSheet::correctResolution);
  connect(mUi->mMouseForget, &QPushButton::clicked, this, &MouseSheet::forget);
}

// Whole rows, and the sheet does not change with every mouse that comes or goes.
void MouseSheet::fitTable() {
  const int rows = std::clamp(mModel->rowCount(), fewestRows, mostRows);
  mUi->mMouseTable->setFixedHeight(mUi->mMouseTable->horizontalHeader()->sizeHint().height() +
                                   rows * RowDelegate::rowHeight);
}

// --- Showing

const MouseDescription* MouseSheet::selected() const {
  const QModelIndexList rows = mUi->mMouseTable->selectionModel()->selectedRows();
  return rows.isEmpty() ? nullptr : mModel->mouseAt(rows.constFirst().row());
}

void MouseSheet::select(int row) {
  mUi->mMouseTable->selectRow(row);
  mUi->mMouseTable->scrollTo(mModel->index(row, MouseModel::Name));
}

void MouseSheet::showMice() {
  const MouseDescription* before = selected();
  const QString id = before == nullptr ? QString() : before->id;
  mModel->setMice(mChoice.mice());
  fitTable();
  const int row = mModel->rowOf(id);
  select(row < 0 ? mModel->rowInUse() : row);
  showSelected();
}

void MouseSheet::showSelected() {
  const MouseDescription* mouse = selected();
  describe(mouse);
  updateOK(mouse);
  updateTools(mouse);
}

void MouseSheet::describe(const MouseDescription* mouse) {
  const bool isForbidden = mouse != nullptr && mouse->isPresent && !mouse->isAllowed && !mouse->isVirtual();
  QStringList about;
  if (isForbidden) about << forbiddenText(*mouse);
  if (mouse != nullptr && !isForbidden) about << abilityTexts(*mouse);
  mUi->mMouseAbout->setText(about.join(QLatin1Char('\n')));
  mUi->mMouseCommand->setVisible(isForbidden);
  mUi->mMouseDoctor->setVisible(isForbidden);
}

void MouseSheet::updateOK(const MouseDescription* mouse) {
  offer(*mUi->mMouseOK, mChoice.isChoosing() ? "lkeyMiceChoosing" : whyNotUsed(mouse));
}

void MouseSheet::updateTools(const MouseDescription* mouse) {
  const char* whyNot = whyNotTold(mouse);
  const char* whyNotTaught = whyNot == nullptr && !mouse->isPresent ? "lkeyMiceNotPlugged" : whyNot;
  offer(*mUi->mMouseTeach, whyNotTaught);
  offer(*mUi->mMouseResolution, whyNot);
  offer(*mUi->mMouseForget, whyNot == nullptr && mouse->taught.empty() ? "lkeyMiceNothingTaught" : whyNot);
}

void MouseSheet::say(const QString& done, MouseChoice::Outcome outcome) {
  const QString failure = failureText(outcome);
  mUi->mMouseNotice->say(failure.isEmpty() ? done : failure);
}

// --- Doing

void MouseSheet::use() {
  const MouseDescription* mouse = selected();
  if (mouse == nullptr || !mUi->mMouseOK->isEnabled()) return;
  const QString done =
      localized(mouse->isVirtual() ? "lkeyMiceVirtualUsed" : "lkeyMiceUsed").arg(shownName(mouse->name));
  mChoice.choose(mouse->id, [sheet = QPointer(this), done](MouseChoice::Outcome outcome) {
    if (!sheet) return;
    sheet->say(done, outcome);
    sheet->showSelected();
  });
  showSelected();
}

void MouseSheet::teach() {
  if (!mTeaching) mTeaching = TeachingSheet::open(this, mChoice);
}

void MouseSheet::correctResolution() {
  const MouseDescription* mouse = selected();
  if (mouse == nullptr || mResolution) return;
  mResolution = new MouseResolutionSheet(this, mouse->resolution);
  mResolution->setAttribute(Qt::WA_DeleteOnClose);
  connect(mResolution, &QDialog::accepted, this, [this] {
    const int resolution = mResolution->resolution();
    mChoice.setResolution(resolution, [sheet = QPointer(this), resolution](MouseChoice::Outcome outcome) {
      if (!sheet) return;
      sheet->say(resolution == 0 ? localized("lkeyResolutionCleared") : localized("lkeyResolutionSet").arg(resolution),
                 outcome);
    });
  });
  mResolution->open();
}

void MouseSheet::forget() {
  mChoice.forget({}, [sheet = QPointer(this)](MouseChoice::Outcome outcome) {
    if (sheet) sheet->say(localized("lkeyForgotten"), outcome);
  });
}

}  // namespace skarn
