// The changes of the settings as a list, from which a person goes back to an earlier state or forward again. It follows
// the history while it is open. Main thread.
#pragma once

#include <QDialog>
#include <memory>

namespace skarn {

namespace Ui {
class HistorySheet;
}

class HistoryModel;
class SettingsHistory;

class HistorySheet : public QDialog {
  Q_OBJECT

 public:
  // Opens on the window and deletes itself when it closes. The history outlives it.
  static HistorySheet* open(QWidget* window, SettingsHistory& history);
  ~HistorySheet() override;

  // Says for some seconds what has been done.
  void say(const QString& text);

 private:
  HistorySheet(QWidget* window, SettingsHistory& history);
  void setUpTable();
  void showEntries();
  void updateButton();
  void go();
  int selectedRow() const;
  void selectRow(int row);

  std::unique_ptr<Ui::HistorySheet> mUi;
  SettingsHistory& mHistory;
  HistoryModel* mModel;
};

}  // namespace skarn
