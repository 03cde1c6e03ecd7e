// Where the keyboard is in a table whose rows are selected as a whole. Main thread.
#pragma once

class QTableView;

namespace skarn {

// Draws the frame of the focus around the selected row, of several the current one, or around the whole table where no
// row is selected. At the end of the table's own paintEvent; without the focus it draws nothing.
void drawRowFocus(QTableView& table);

}  // namespace skarn
