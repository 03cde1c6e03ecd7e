// Text fields and what is typed into them: what a field can undo by itself is its own, what is half typed can be ended.
// Main thread.
#pragma once

class QWidget;

namespace skarn {

// Whether the field can take back, or make again, something that was typed into it. What a spin box has as its value is
// no longer typed. False for what is no text field.
bool canUndoTyping(const QWidget* field);
bool canRedoTyping(const QWidget* field);

// Whether text is typed into it: a line, several, a spin box, or a box to choose from that can be typed into.
bool isTextField(const QWidget* field);

// Ends what is half typed into the field with the keyboard, as a click elsewhere in its window does: an edit of a cell
// is closed and its name entered, a field keeps the keyboard.
void endTyping(QWidget& window);

}  // namespace skarn
