// Serves the main thread's bus connection from Qt's event loop.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

#include "ports/BusConnection.h"

namespace skarn {

class BusNotifier : public QObject {
  Q_OBJECT

 public:
  // connection: the main thread's; it must outlive this object.
  explicit BusNotifier(vorn::BusConnection& connection, QObject* parent = nullptr);
  ~BusNotifier() override;

 private:
  void process();
  void arm();

  vorn::BusConnection& mConnection;
  std::unique_ptr<QSocketNotifier> mReadable;
  std::unique_ptr<QSocketNotifier> mWritable;
  QTimer mTimeout;
  int mDescriptor = -1;
};

}  // namespace skarn
