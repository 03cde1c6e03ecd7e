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
  // Whether the window is to have an item in the tray. False where nothing can be kept.
  bool isInTray() const;
  bool setInTray(bool isInTray);
  // Whether a person has been told that the closed window lives on in the tray.
  bool isTrayExplained() const;
  bool setTrayExplained();

 private:
  bool value(const QString& key, bool otherwise) const;
  bool setValue(const QString& key, bool value);

  QString mFile;
};

}  // namespace skarn
