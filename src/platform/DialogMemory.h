// What the toolkit's own dialogs remember. Main thread.
#pragma once

namespace skarn {

// Files and colours of the toolkit's dialogs would be kept in a file that all programs of the user share,
// QtProject.conf. After this, nothing is read from there or written to it. Before such a dialog is made; again does
// nothing more.
void withholdDialogMemory();

}  // namespace skarn
