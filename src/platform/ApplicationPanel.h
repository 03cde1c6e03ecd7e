// The application chooser: a sheet with the installed applications, a search field, and Browse for others.
#pragma once

#include <QDialog>
#include <QStringList>
#include <memory>

#include "platform/FilePanel.h"

class QSortFilterProxyModel;

namespace skarn {

namespace Ui {
class ApplicationPanel;
}

class ApplicationPanel : public QDialog {
  Q_OBJECT

 public:
  // Shows a window-modal chooser named "applicationPanel" on the window and returns at once. Browse opens a file panel
  // with the given object name, types and directory on the chooser; where the types have application bundles it takes
  // desktop entries as well. Cancelling that returns to the chooser. ended is called once with the chosen application's
  // path, unless the window goes first; the chooser deletes itself.
  // Its parts are named mApplicationSearch, mApplicationList, mApplicationBrowse, mApplicationOK, mApplicationCancel;
  // mApplicationNote stands in the list's place while that is empty.
  static ApplicationPanel* open(QWidget* window, const QString& filePanelName, const QStringList& types,
                                const QString& directory, FilePanel::Ended ended);
  ~ApplicationPanel() override;

 protected:
  // The keys that move in the list do so from the search field, too, and begin with its first row.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit ApplicationPanel(QWidget* window);
  using QDialog::open;

  void search(const QString& text);
  void updateState();
  void browse(const QString& name, const QStringList& types, const QString& directory);
  void chooseSelected();
  void choose(const QString& path);

  std::unique_ptr<Ui::ApplicationPanel> mUi;
  QSortFilterProxyModel* mShown;
  QString mChosen;
};

}  // namespace skarn
