// Asks what a mouse counts in an inch. Main thread.
#pragma once

#include <QDialog>
#include <memory>

namespace skarn {

namespace Ui {
class MouseResolutionSheet;
}

class MouseResolutionSheet : public QDialog {
  Q_OBJECT

 public:
  // resolution: that is in force, in DPI; 0 where nobody knows.
  MouseResolutionSheet(QWidget* window, int resolution);
  ~MouseResolutionSheet() override;

  // In DPI; 0 for what the system knows.
  int resolution() const;

 private:
  void updateOK();

  std::unique_ptr<Ui::MouseResolutionSheet> mUi;
};

}  // namespace skarn
