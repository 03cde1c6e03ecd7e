// Which key of the keyboard a key event of the window came from, and which button of the mouse. Pure; any thread.
#pragma once

#include <QKeyEvent>
#include <Qt>
#include <optional>

#include "model/KernelKeys.h"

namespace skarn {

// The kernel's key of the event's native scan code, which X11 and Wayland tell, as the place on the keyboard is what
// counts and not the letter that the layout puts there. The key as Qt names it (a keyboard of the United States for
// characters) is taken where there is no scan code, and where the two cannot be the same key: on-screen keyboards and
// remote desktops number their keys as they like. tellsScanCodes: the display system's scan codes are kernel keys.
std::optional<vorn::HidUsage> usageOf(const QKeyEvent& event, bool tellsScanCodes);
std::optional<vorn::HidUsage> usageOf(Qt::MouseButton button);

}  // namespace skarn
