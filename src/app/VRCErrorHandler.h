// The one road of every alert: a warning sheet on a window.
#pragma once

#include <QString>

class QWidget;

namespace skarn {

class VRCErrorHandler {
 public:
  VRCErrorHandler() = delete;

  // Returns at once; the user's answer is not used. An empty alternativeButtonLabel shows one button only. The alert
  // is a child of toWindow named "alert" and deletes itself when it is closed. Main thread.
  static void showErrorWithTitle(const QString& title, const QString& errorDescription,
                                 const QString& defaultButtonLabel, const QString& alternativeButtonLabel,
                                 QWidget* toWindow);
};

}  // namespace skarn
