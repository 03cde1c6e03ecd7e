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

// Shown while the settings are fetched at start-up. Escape does not close it; closing it gives the start up.
class RestoringStateSheet : public QDialog {
  Q_OBJECT

 public:
  explicit RestoringStateSheet(QWidget* window);
  ~RestoringStateSheet() override;

  // Shows the sheet with its indicator turning.
  void begin();
  void end();
  void reject() override {}

 signals:
  void closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  std::unique_ptr<Ui::RestoringStateSheet> mUi;
};

}  // namespace skarn
