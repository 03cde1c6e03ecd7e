// Ends the application in the ordinary way, so that it releases the device, when the session or a terminal asks it to
// end (SIGTERM, SIGINT, SIGHUP).
#pragma once

#include <QSocketNotifier>

namespace skarn {

class QuitOnSignals {
 public:
  // The application object exists. One at a time.
  QuitOnSignals();
  // From then on the signals end the program at once again.
  ~QuitOnSignals();
  QuitOnSignals(const QuitOnSignals&) = delete;
  QuitOnSignals& operator=(const QuitOnSignals&) = delete;

  // Whether such a signal has come: true before the event loop gets to know of it. Any thread.
  static bool isAsked();

 private:
  QSocketNotifier mNotifier;
};

}  // namespace skarn
