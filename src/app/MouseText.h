// What the window says of mice, and of what they send. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <string_view>

#include "app/MouseDescription.h"
#include "link/EngineLink.h"

namespace skarn {

// What a control is on a mouse, as a person reads it: "Side button" for "BTN_SIDE", "Z key" for "KEY_Z", "Wheel to the
// right" for "REL_HWHEEL +". A name that is not known is shown as it stands.
QString sourceText(std::string_view source);

// "12 (Z)", "Keymap key". Empty for what is no control.
QString controlText(std::string_view identifier);

QString connectionText(const MouseDescription& mouse);
// What there is to know at a glance: "In use", "Not plugged in", "Not allowed". Empty for nothing in particular.
QString stateText(const MouseDescription& mouse);
// What the mouse allows, a sentence each.
QStringList abilityTexts(const MouseDescription& mouse);
// Why it may not be used, and what mends that.
QString forbiddenText(const MouseDescription& mouse);
// The command that mends it.
QString permissionCommand();

// Why nothing was done; empty where it was.
QString failureText(vorn::MiceAnswer::Outcome outcome);

}  // namespace skarn
