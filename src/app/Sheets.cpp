#include "app/Sheets.h"

#include <QCloseEvent>
#include <QShortcut>

#include "ui_DeviceConnectionSheet.h"
#include "ui_RestoringStateSheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

DeviceConnectionSheet::DeviceConnectionSheet(QWidget* window)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::DeviceConnectionSheet>()) {
  mUi->setupUi(this);
  connect(mUi->mDeviceConnectionOK, &QPushButton::clicked, this, &DeviceConnectionSheet::okClicked);
}

DeviceConnectionSheet::~DeviceConnectionSheet() = default;

RestoringStateSheet::RestoringStateSheet(QWidget* window)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::RestoringStateSheet>()) {
  mUi->setupUi(this);
  // The window's own does not reach past a sheet; this one may stay for as long as no engine comes.
  new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this, this, &QWidget::close);
}

RestoringStateSheet::~RestoringStateSheet() = default;

void RestoringStateSheet::closeEvent(QCloseEvent* event) {
  event->ignore();
  emit closed();
}

void RestoringStateSheet::begin() {
  mUi->mRestoringStateProgress->start();
  open();
}

void RestoringStateSheet::end() {
  mUi->mRestoringStateProgress->stop();
  accept();
}

}  // namespace skarn
