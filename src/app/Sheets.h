// The two sheets of the main window.
#pragma once

#include <QDialog>
#include <memory>

namespace skarn {

namespace Ui {
class DeviceConnectionSheet;
class RestoringStateSheet;
}  // namespace Ui

// Says that no mouse is connected; its texts are fixed in its layout.
class DeviceConnectionSheet : public QDialog {
  Q_OBJECT

 public:
  explicit DeviceConnectionSheet(QWidget* window);
  ~DeviceConnectionSheet() override;

 signals:
  void okClicked();

 private:
  std::unique_ptr<Ui::DeviceConnectionSheet> mUi;
};

// Shown while the settings are fetched at start-up. It cannot be closed by the user.
class RestoringStateSheet : public QDialog {
  Q_OBJECT

 public:
  explicit RestoringStateSheet(QWidget* window);
  ~RestoringStateSheet() override;

  // Shows the sheet with its indicator turning.
  void begin();
  void end();
  // Does nothing: neither Escape nor the desktop may close it.
  void reject() override {}

 private:
  std::unique_ptr<Ui::RestoringStateSheet> mUi;
};

}  // namespace skarn
