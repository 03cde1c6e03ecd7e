#include "platform/HelpBook.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include "platform/HelpWindow.h"

namespace skarn {

namespace {

QHash<QString, QString>& registeredBooks() {
  static QHash<QString, QString> books;
  return books;
}

}  // namespace

bool HelpBook::registerBook(const QString& title, const QString& folder) {
  const QFileInfo info(folder);
  if (folder.isEmpty() || !info.isDir()) return false;
  registeredBooks().insert(title, info.absoluteFilePath());
  return true;
}

QWidget* HelpBook::openPage(const QString& title, const QString& page) {
  const QString folder = registeredBooks().value(title);
  if (folder.isEmpty() || page.isEmpty()) return nullptr;
  const QString path = QDir(folder).filePath(page);
  if (!QFileInfo(path).isFile()) return nullptr;
  HelpWindow& window = HelpWindow::shared();
  window.showPage(title, path);
  return &window;
}

}  // namespace skarn
