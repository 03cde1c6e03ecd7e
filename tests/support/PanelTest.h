// What tests of panels share: a window, folders of the test's own, and the ends that were reported.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <utility>
#include <vector>

namespace skarn::test {

// Every end of a panel, as it was told.
struct RecordedEnds {
  std::vector<std::pair<int, QString>> ends;

  auto recorder() {
    return [this](int returnCode, const QString& path) { ends.emplace_back(returnCode, path); };
  }
};

inline bool writeTestFile(const QString& path, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QMessageBox* alertOf(const QWidget& window) {
  return window.findChild<QMessageBox*>(QStringLiteral("alert"));
}

// Presses the first button of an alert that asks.
inline void confirm(const QMessageBox* alert) {
  QVERIFY(alert != nullptr);
  for (QAbstractButton* button : alert->buttons()) {
    if (alert->buttonRole(button) == QMessageBox::AcceptRole) return QTest::mouseClick(button, Qt::LeftButton);
  }
  QFAIL("the alert has no button to confirm it");
}

// The alert's two texts, or nothing when none is shown.
inline QStringList alertTexts(const QWidget& window) {
  const QMessageBox* alert = alertOf(window);
  return alert ? QStringList{alert->text(), alert->informativeText()} : QStringList();
}

// Settings and caches of the toolkit's dialogs go to a folder that is removed at the end. Before QApplication.
inline void useOwnHome() {
  static QTemporaryDir home;
  for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
    qputenv(name, QFile::encodeName(home.path()));
  }
}

}  // namespace skarn::test
