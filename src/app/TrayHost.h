// Whether the desktop shows status items, which most people call the tray: org.kde.StatusNotifierWatcher on the session
// bus with a host registered ("StatusNotifierItem" of freedesktop.org). Followed from its creation on, without waiting.
// Main thread.
#pragma once

#include <QObject>
#include <memory>

#include "model/PropertyList.h"

namespace vorn {
class BusService;
}

namespace skarn {

class TrayHost : public QObject {
  Q_OBJECT

 public:
  TrayHost();
  ~TrayHost() override;

  // False until the desktop has answered.
  bool isThere() const { return mIsThere; }

 signals:
  void changed();

 private:
  void follow();
  void ask();
  void set(bool isThere);

  std::unique_ptr<vorn::BusService> mWatcher;
  bool mIsThere = false;
};

}  // namespace skarn
