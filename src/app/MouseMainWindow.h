// The main window: header, six tabs and footer, which scroll where the window is too small for them. Layout only; the
// hub drives it.
#pragma once

#include <QWidget>
#include <memory>

namespace skarn {

namespace Ui {
class MouseMainWindow;
}

class HistoryLine;
class StateStrip;

class MouseMainWindow : public QWidget {
  Q_OBJECT

 public:
  explicit MouseMainWindow(QWidget* parent = nullptr);
  ~MouseMainWindow() override;

  // The controls by their names.
  Ui::MouseMainWindow& ui() { return *mUi; }

  void showProfileName(const QString& name);
  StateStrip& stateStrip() { return *mStateStrip; }
  HistoryLine& historyLine() { return *mHistoryLine; }
  // The pages and Apply; what tells of the start, help and the way out stay.
  void setSettingsEnabled(bool isEnabled);
  // Brings the window to the front, also from being minimised.
  void comeToFront(const QString& activationToken = {});

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void tintIcons();

  std::unique_ptr<Ui::MouseMainWindow> mUi;
  // Children.
  StateStrip* mStateStrip;
  HistoryLine* mHistoryLine;
};

}  // namespace skarn
