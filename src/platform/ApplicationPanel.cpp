#include "platform/ApplicationPanel.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QSortFilterProxyModel>

#include "platform/ApplicationListModel.h"
#include "platform/Localization.h"
#include "ui_ApplicationPanel.h"
#include "widgets/RowDelegate.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace {

bool movesInList(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

QStringList typesToBrowse(QStringList types) {
  const QString entries = QStringLiteral("desktop");
  if (types.contains(QStringLiteral("app")) && !types.contains(entries)) types << entries;
  return types;
}

}  // namespace

ApplicationPanel::ApplicationPanel(QWidget* window)
    : QDialog(window, sheetFlags),
      mUi(std::make_unique<Ui::ApplicationPanel>()),
      mShown(new QSortFilterProxyModel(this)) {
  mUi->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);

  auto* applications = new ApplicationListModel(ApplicationInfo::installed(), this);
  mShown->setSourceModel(applications);
  mShown->setFilterCaseSensitivity(Qt::CaseInsensitive);
  mUi->mApplicationList->setModel(mShown);
  mUi->mApplicationList->setItemDelegate(new RowDelegate(this));

  mUi->mApplicationSearch->installEventFilter(this);
  mUi->mApplicationList->installEventFilter(this);
  connect(mUi->mApplicationSearch, &QLineEdit::textChanged, this, &ApplicationPanel::search);
  connect(mUi->mApplicationList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ApplicationPanel::updateState);
  connect(mUi->mApplicationList, &QListView::doubleClicked, this, &ApplicationPanel::chooseSelected);
  connect(mUi->mApplicationOK, &QPushButton::clicked, this, &ApplicationPanel::chooseSelected);
  connect(mUi->mApplicationCancel, &QPushButton::clicked, this, &QDialog::reject);
  mUi->mApplicationSearch->setFocus();
  updateState();
}

ApplicationPanel::~ApplicationPanel() = default;

ApplicationPanel* ApplicationPanel::open(QWidget* window, const QString& filePanelName, const QStringList& types,
                                         const QString& directory, FilePanel::Ended ended) {
  auto* panel = new ApplicationPanel(window);
  connect(panel->mUi->mApplicationBrowse, &QPushButton::clicked, panel,
          [panel, filePanelName, types = typesToBrowse(types), directory] {
            panel->browse(filePanelName, types, directory);
          });
  connect(panel, &QDialog::finished, panel, [panel, ended = std::move(ended)](int result) {
    if (!ended) return;
    if (result == QDialog::Accepted) {
      ended(FilePanel::okButton, panel->mChosen);
    } else {
      ended(FilePanel::cancelButton, QString());
    }
  });
  panel->open();
  return panel;
}

bool ApplicationPanel::eventFilter(QObject* watched, QEvent* event) {
  QListView* list = mUi->mApplicationList;
  if (event->type() != QEvent::KeyPress || !movesInList(static_cast<QKeyEvent*>(event)->key())) {
    return QDialog::eventFilter(watched, event);
  }
  if (watched == mUi->mApplicationSearch) {
    QCoreApplication::sendEvent(list, event);
    return true;
  }
  // The list would move on from a row that it takes for current, though nobody chose it.
  if (list->selectionModel()->hasSelection()) return false;
  list->setCurrentIndex(mShown->index(0, 0));
  return true;
}

void ApplicationPanel::search(const QString& text) {
  mShown->setFilterFixedString(text.simplified());
  QListView* list = mUi->mApplicationList;
  // The best guess is ready for Return; an empty field is no guess.
  if (!list->selectionModel()->hasSelection() && !text.isEmpty()) list->setCurrentIndex(mShown->index(0, 0));
  list->scrollTo(list->currentIndex());
  updateState();
}

void ApplicationPanel::updateState() {
  const bool hasSelection = mUi->mApplicationList->selectionModel()->hasSelection();
  mUi->mApplicationOK->setEnabled(hasSelection);
  mUi->mApplicationOK->setToolTip(hasSelection ? QString() : localized("lkeyNoApplicationSelected"));
  const bool isEmpty = mShown->rowCount() == 0;
  if (isEmpty) {
    const bool hasNone = mShown->sourceModel()->rowCount() == 0;
    mUi->mApplicationNote->setText(
        hasNone ? localized("lkeyNoApplications")
                : localized("lkeyNoApplicationFound").arg(mUi->mApplicationSearch->text().simplified()));
  }
  mUi->mApplicationPages->setCurrentWidget(isEmpty ? mUi->mApplicationNotePage : mUi->mApplicationListPage);
}

void ApplicationPanel::browse(const QString& name, const QStringList& types, const QString& directory) {
  const FileTypes applications{types, localized("lkeyApplicationFiles")};
  FilePanel::open(this, name, windowTitle(), applications, directory, [this](int returnCode, const QString& path) {
    if (returnCode == FilePanel::okButton) choose(path);
  });
}

void ApplicationPanel::chooseSelected() {
  const QModelIndexList selected = mUi->mApplicationList->selectionModel()->selectedIndexes();
  if (!selected.isEmpty()) choose(selected.first().data(ApplicationListModel::pathRole).toString());
}

void ApplicationPanel::choose(const QString& path) {
  mChosen = path;
  accept();
}

}  // namespace skarn
