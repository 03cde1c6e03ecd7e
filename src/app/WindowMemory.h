// The little that the window keeps for itself, in a file of its own. The settings of the mouse are the engine's. Main
// thread.
#pragma once

#include <QString>

namespace skarn {

class WindowMemory {
 public:
  // Nothing is read or written before it is asked for. An empty path: nothing is kept.
  explicit WindowMemory(QString file) : mFile(std::move(file)) {}

  // In the user's configuration folder.
  static QString usualFile();

  // Whether the choice of a mouse has been offered; so it is where nothing can be kept.
  bool isMouseOffered() const;
  // False where that could not be kept.
  bool setMouseOffered();

 private:
  QString mFile;
};

}  // namespace skarn
