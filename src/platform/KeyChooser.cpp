#include "platform/KeyChooser.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <utility>

#include "model/HidUsages.h"
#include "platform/Localization.h"
#include "ui_KeyChooser.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace hid = vorn::hid;

namespace {

constexpr int usageRole = Qt::UserRole;
constexpr int shortModifiers = 4;  // the left ones

QString text(std::string_view name) {
  return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

// Two keys read "Delete".
QString shownKey(hid::Usage usage) {
  const std::string_view other = hid::otherKeyName(usage);
  return other.empty() ? text(hid::keyName(usage)) : text(hid::keyName(usage)) + " (" + text(other) + ")";
}

}  // namespace

KeyChooser* KeyChooser::open(QWidget* window, Offers offers, Chosen chosen) {
  auto* chooser = new KeyChooser(window, offers, std::move(chosen));
  chooser->setAttribute(Qt::WA_DeleteOnClose);
  chooser->QDialog::open();
  return chooser;
}

KeyChooser::KeyChooser(QWidget* window, Offers offers, Chosen chosen)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::KeyChooser>()), mChosen(std::move(chosen)) {
  mUi->setupUi(this);
  fillList();
  mUi->mKeyModifiers->setVisible(offers == Offers::KeysAndModifiers);
  if (offers == Offers::KeysAndModifiers) addModifiers();
  mUi->mKeySearch->installEventFilter(this);
  window->installEventFilter(this);
  connect(mUi->mKeySearch, &QLineEdit::textChanged, this, &KeyChooser::search);
  connect(mUi->mKeyList, &QListView::doubleClicked, this, &KeyChooser::accept);
  connect(mUi->mKeyChooserOK, &QPushButton::clicked, this, &KeyChooser::accept);
  connect(mUi->mKeyChooserCancel, &QPushButton::clicked, this, &KeyChooser::reject);
  search({});
  mUi->mKeySearch->setFocus();
}

KeyChooser::~KeyChooser() = default;

void KeyChooser::fillList() {
  auto* keys = new QStandardItemModel(this);
  for (hid::Usage usage = hid::firstKey; usage <= hid::lastModifier; ++usage) {
    if (hid::keyName(usage).empty()) continue;
    auto* item = new QStandardItem(shownKey(usage));
    item->setData(usage, usageRole);
    keys->appendRow(item);
  }
  auto* found = new QSortFilterProxyModel(this);
  found->setSourceModel(keys);
  found->setFilterCaseSensitivity(Qt::CaseInsensitive);
  mUi->mKeyList->setModel(found);
}

void KeyChooser::addModifiers() {
  for (int modifier = 0; modifier < shortModifiers; ++modifier) {
    auto* box = new QCheckBox(text(hid::keyName(hid::firstModifier + modifier)), mUi->mKeyModifiers);
    box->setProperty("modifier", 1 << modifier);
    mUi->modifierLayout->addWidget(box, modifier / 2, modifier % 2);
  }
}

void KeyChooser::search(const QString& text) {
  auto* found = static_cast<QSortFilterProxyModel*>(mUi->mKeyList->model());
  found->setFilterFixedString(text);
  // The key of just that name comes before those that have the text in theirs.
  const QModelIndexList exact = found->match(found->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchFixedString);
  mUi->mKeyList->setCurrentIndex(exact.isEmpty() ? found->index(0, 0) : exact.constFirst());
  const bool isFound = found->rowCount() > 0;
  mUi->mKeyChooserOK->setEnabled(isFound);
  mUi->mKeyChooserOK->setToolTip(isFound ? QString() : localized("lkeyNoKeyFound"));
}

int KeyChooser::chosenModifiers() const {
  int modifiers = 0;
  for (const QCheckBox* box : mUi->mKeyModifiers->findChildren<QCheckBox*>()) {
    if (box->isChecked()) modifiers |= box->property("modifier").toInt();
  }
  return modifiers;
}

void KeyChooser::accept() {
  const QModelIndex current = mUi->mKeyList->currentIndex();
  if (!current.isValid()) return;
  const int usage = current.data(usageRole).toInt();
  const int modifiers = chosenModifiers();
  const Chosen chosen = std::exchange(mChosen, {});
  QDialog::accept();
  if (chosen) chosen(usage, modifiers);
}

bool KeyChooser::eventFilter(QObject* watched, QEvent* event) {
  // Whom the key is for is gone.
  if (watched == parent() && event->type() == QEvent::Hide) reject();
  // The list can be walked without leaving the search.
  if (watched == mUi->mKeySearch && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        QCoreApplication::sendEvent(mUi->mKeyList, event);
        return true;
      default:
        break;
    }
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace skarn
