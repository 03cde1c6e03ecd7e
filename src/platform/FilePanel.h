// Open and save panels as sheets on a window. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QFileDialog;
class QWidget;

namespace skarn {

// What an open panel lists.
struct FileTypes {
  QStringList extensions;  // without a dot; none: any file
  QString description;     // "Skarn profiles (%1)", with %1 for the extensions; not needed without them
};

class FilePanel {
 public:
  FilePanel() = delete;

  static constexpr int cancelButton = 0;
  static constexpr int okButton = 1;

  // returnCode: okButton with the chosen path, or cancelButton with an empty one.
  using Ended = std::function<void(int returnCode, const QString& path)>;

  // Both show a window-modal panel with this object name and title, a child of the window, and return at once. The
  // panel deletes itself when it ends; ended is then called once, unless the window goes first. directory is a path or
  // a file URL; where there is no such folder, the panel begins in the user's documents.

  // One existing file of one of the types. A folder whose name has the extension, as an application bundle is, counts
  // as a file.
  static QFileDialog* open(QWidget* window, const QString& name, const QString& title, const FileTypes& types,
                           const QString& directory, Ended ended);
  // A name to write to, existing or not; nobody is asked here whether an existing file may be replaced. There is no
  // choice of a type: the caller decides on the extension.
  static QFileDialog* save(QWidget* window, const QString& name, const QString& title, const QString& suggestedName,
                           const QString& directory, Ended ended);
};

}  // namespace skarn
