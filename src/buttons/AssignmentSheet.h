// What the sheets of the Buttons tab share: an OK and a Cancel button that only report; whoever opened the sheet ends
// it. Return presses OK; Escape and closing the sheet cancel. Main thread.
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace skarn {

class AssignmentSheet : public QDialog {
  Q_OBJECT

 public:
  // What OK's tooltip and the note say; empty for nothing.
  void explainOK(const QString& words);
  // Closes the sheet; finished tells whoever opened it.
  void end() { QDialog::done(QDialog::Accepted); }

  void accept() override { emit okClicked(); }
  void reject() override { emit cancelClicked(); }

 signals:
  void okClicked();
  void cancelClicked();

 protected:
  explicit AssignmentSheet(QWidget* window);
  // note: where the sheet says why OK would change nothing; null for none.
  void connectButtons(QPushButton* ok, QPushButton* cancel, QLabel* note = nullptr);

 private:
  QPushButton* mOK = nullptr;
  QLabel* mNote = nullptr;
};

}  // namespace skarn
