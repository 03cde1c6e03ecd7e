#include "platform/FileDialogParts.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

namespace skarn::fileDialogParts {

namespace {

template <typename Part, typename Condition>
Part* partOf(const QFileDialog& dialog, Condition isIt) {
  const QList<Part*> parts = dialog.findChildren<Part*>();
  const auto found = std::find_if(parts.begin(), parts.end(), isIt);
  return found == parts.end() ? nullptr : *found;
}

QLabel* caption(const QFileDialog& dialog, QFileDialog::DialogLabel which) {
  const QString text = dialog.labelText(which);
  return partOf<QLabel>(dialog, [&text](const QLabel* label) { return label->text() == text; });
}

}  // namespace

QLineEdit* nameField(const QFileDialog& dialog) {
  const QLabel* label = caption(dialog, QFileDialog::FileName);
  return label ? qobject_cast<QLineEdit*>(label->buddy()) : nullptr;
}

QComboBox* typeField(const QFileDialog& dialog) {
  const QStringList types = dialog.nameFilters();
  return partOf<QComboBox>(dialog, [&types](const QComboBox* list) {
    return list->count() == types.size() && !types.isEmpty() && list->itemText(0) == types.constFirst();
  });
}

QLabel* typeCaption(const QFileDialog& dialog) {
  return caption(dialog, QFileDialog::FileType);
}

QToolButton* tool(const QFileDialog& dialog, const char* toolTip) {
  const QString text = QFileDialog::tr(toolTip);
  return partOf<QToolButton>(dialog, [&text](const QToolButton* button) { return button->toolTip() == text; });
}

QAction* deletion(const QFileDialog& dialog) {
  const QString text = QFileDialog::tr("&Delete");
  return partOf<QAction>(dialog, [&text](const QAction* action) { return action->text() == text; });
}

}  // namespace skarn::fileDialogParts
