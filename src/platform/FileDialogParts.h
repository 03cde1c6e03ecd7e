// The parts of the toolkit's file dialog, known by what they do and say: their names are the toolkit's own affair. A
// part that another version of the toolkit lacks is null. Main thread.
#pragma once

class QAction;
class QComboBox;
class QFileDialog;
class QLabel;
class QLineEdit;
class QToolButton;

namespace skarn::fileDialogParts {

// Where a file is named.
QLineEdit* nameField(const QFileDialog& dialog);
// Where a kind of file is chosen, and its caption.
QComboBox* typeField(const QFileDialog& dialog);
QLabel* typeCaption(const QFileDialog& dialog);
// The button with this tooltip, in English.
QToolButton* tool(const QFileDialog& dialog, const char* toolTip);
// What deletes the selected file.
QAction* deletion(const QFileDialog& dialog);

}  // namespace skarn::fileDialogParts
