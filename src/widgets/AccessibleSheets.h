// Sheets for screen readers. Main thread.
#pragma once

namespace skarn {

// From now on a dialog that is closed holds nothing for screen readers: Qt tells the cells of its lists as shown. Once
// for the application; again does nothing.
void installAccessibleSheets();

}  // namespace skarn
