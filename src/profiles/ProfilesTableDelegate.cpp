#include "profiles/ProfilesTableDelegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

#include "platform/Localization.h"
#include "profiles/ProfilesTableModel.h"
#include "widgets/Palettes.h"

namespace skarn {

namespace {

constexpr int dotSize = 8;
constexpr int dotFromRight = 8;
constexpr int editorMargin = 2;

void paintDot(QPainter* painter, const QStyleOptionViewItem& option) {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush((option.state & QStyle::State_Enabled) ? accentColor(option.palette)
                                                           : option.palette.color(QPalette::Disabled, QPalette::Text));
  painter->drawEllipse(QRectF(option.rect.right() - dotFromRight - dotSize,
                              option.rect.center().y() - dotSize / 2.0 + 0.5, dotSize, dotSize));
  painter->restore();
}

}  // namespace

void ProfilesTableDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  RowDelegate::initStyleOption(option, index);
  if (index.column() == ProfilesTableModel::Name && index.data(ProfilesTableModel::IsActiveRole).toBool()) {
    option->font.setWeight(QFont::DemiBold);
  }
  const QModelIndex box = index.siblingAtColumn(ProfilesTableModel::AutoSwitch);
  if (index.column() == ProfilesTableModel::Application && box.data(Qt::CheckStateRole).toInt() != Qt::Checked) {
    // An application that nothing is switched for.
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::HighlightedText}) {
      option->palette.setColor(role, option->palette.color(QPalette::PlaceholderText));
    }
  }
  if (index.column() == ProfilesTableModel::Id) option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
}

void ProfilesTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
  RowDelegate::paint(painter, option, index);
  if (index.column() == ProfilesTableModel::Id && index.data(ProfilesTableModel::IsActiveRole).toBool()) {
    paintDot(painter, option);
  }
}

void ProfilesTableDelegate::restartEdit() {
  if (auto* name = qobject_cast<QLineEdit*>(mEditor)) {
    name->setFocus();
    name->selectAll();
  }
}

void ProfilesTableDelegate::discardEdit() {
  if (mEditor) emit closeEditor(mEditor, RevertModelCache);
}

void ProfilesTableDelegate::takeEditOver() {
  const auto* edit = qobject_cast<QLineEdit*>(mEditor);
  if (edit == nullptr) return;
  const QString name = edit->text();
  const QPersistentModelIndex index = mEditedIndex;
  emit closeEditor(mEditor, NoHint);
  if (name.isEmpty()) {
    emit editAbandoned();
  } else {
    emit nameEntered(index, name);
  }
}

QWidget* ProfilesTableDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                             const QModelIndex& index) const {
  auto* name = new QLineEdit(parent);
  name->setAccessibleName(localized("lkeyProfileNameColumn"));
  name->setText(index.data().toString());
  mEditor = name;
  mEditedIndex = index;
  mNameBefore = name->text();
  return name;
}

// Called with every new list, too.
void ProfilesTableDelegate::setEditorData(QWidget*, const QModelIndex&) const {}

// The table takes an edit over whenever its current row changes, which is not the user's doing.
void ProfilesTableDelegate::setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const {}

void ProfilesTableDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                                 const QModelIndex&) const {
  editor->setGeometry(option.rect.adjusted(0, editorMargin, 0, -editorMargin - 1));
}

void ProfilesTableDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  if (editor == mEditor) mEditor = nullptr;
  RowDelegate::destroyEditor(editor, index);
}

bool ProfilesTableDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (watched != mEditor) return RowDelegate::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut) {
    // The menu of the line edit takes the keyboard for a while, and leaves it the focus.
    if (!mEditor->isActiveWindow() || QApplication::focusWidget() != mEditor) takeEditOver();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return RowDelegate::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      discardEdit();
      emit editAbandoned();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      takeEditOver();
      return true;
    default:
      return RowDelegate::eventFilter(watched, event);
  }
}

}  // namespace skarn
