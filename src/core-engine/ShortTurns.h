// How the system's scheduler treats the engine.
#pragma once

namespace vorn::engine {

// Asks for short turns on the processor for the calling thread, so that it gets one as soon as it needs it also while
// others compute: the engine always needs little, but a program that floods it fills the bus within milliseconds. No
// more processor time is asked for. A thread or program started later has the usual turns. Systems that do not know of
// this (before Linux 6.12) ignore it.
void askForShortTurns();

}  // namespace vorn::engine
