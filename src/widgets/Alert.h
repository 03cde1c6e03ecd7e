// An alert as a sheet on a window. Main thread.
#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <functional>

namespace skarn {

class Alert : public QMessageBox {
  Q_OBJECT

 public:
  // Return codes: the first button gives 1000, the second 1001, and so on.
  static constexpr int firstButtonReturn = 1000;
  static constexpr int secondButtonReturn = 1001;

  using Ended = std::function<void(int returnCode)>;

  // Shows a warning with at least one button and returns at once. The alert is a child of the window named "alert",
  // is window-modal and deletes itself when it ends; ended is then called once, unless the window goes first. Return
  // presses the first button, Escape the last. All texts are shown as they stand.
  static Alert* show(QWidget* window, const QString& message, const QString& informativeText,
                     const QStringList& buttons, Ended ended = {});

  // Asks in the same way before something is lost. The buttons are the action's and Cancel, and Return presses Cancel,
  // too: nothing is lost by a slip of a key.
  static Alert* ask(QWidget* window, const QString& message, const QString& informativeText, const QString& action,
                    const QString& cancel, Ended ended);

  // Lets the user select and copy the text below the message.
  void makeTextSelectable();

 private:
  explicit Alert(QWidget* window);
  QLabel* labelOf(const QString& shown, const QLabel* other = nullptr) const;
  void layOutTexts();
};

}  // namespace skarn
