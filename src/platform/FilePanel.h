// Open and save panels as sheets on a window. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QFileDialog;
class QWidget;

namespace skarn {

class FilePanel {
 public:
  FilePanel() = delete;

  static constexpr int cancelButton = 0;
  static constexpr int okButton = 1;

  // returnCode: okButton with the chosen path, or cancelButton with an empty one.
  using Ended = std::function<void(int returnCode, const QString& path)>;

  // Both show a window-modal panel with this object name, a child of the window, and return at once. The panel deletes
  // itself when it ends; ended is then called once, unless the window goes first. directory is a path or a file URL;
  // where there is no such folder, the panel begins in the user's documents.

  // One existing file with one of the extensions (without a dot; none: any file). A folder whose name has the
  // extension, as an application bundle is, counts as a file.
  static QFileDialog* open(QWidget* window, const QString& name, const QStringList& types, const QString& directory,
                           Ended ended);
  // A name to write to, existing or not; nobody is asked here whether an existing file may be replaced. There is no
  // choice of a type: the caller decides on the extension.
  static QFileDialog* save(QWidget* window, const QString& name, const QString& suggestedName, const QString& directory,
                           Ended ended);
};

}  // namespace skarn
