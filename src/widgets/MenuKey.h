// Shift+F10, the menu key of keyboards that have none: opens the same menu. Where something takes every key that is
// typed, it must see them first: be installed later. Main thread.
#pragma once

#include <QObject>

namespace skarn {

class MenuKey : public QObject {
 public:
  // For all windows of the application, as long as it lives.
  MenuKey();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace skarn
