#include "app/BusNotifier.h"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace skarn {

BusNotifier::BusNotifier(vorn::BusConnection& connection, QObject* parent) : QObject(parent), mConnection(connection) {
  mTimeout.setSingleShot(true);
  connect(&mTimeout, &QTimer::timeout, this, &BusNotifier::process);
  // A blocking call may leave messages in the connection that its descriptor does not tell of.
  mConnection.setQueuedHandler([this] { mTimeout.start(0); });
  arm();
}

BusNotifier::~BusNotifier() {
  mConnection.setQueuedHandler({});
}

void BusNotifier::process() {
  mConnection.process();
  arm();
}

void BusNotifier::arm() {
  if (mConnection.descriptor() != mDescriptor) {
    // This may run inside a notifier's own signal.
    for (auto* notifier : {&mReadable, &mWritable}) {
      if (!*notifier) continue;
      (*notifier)->setEnabled(false);
      notifier->release()->deleteLater();
    }
    mDescriptor = mConnection.descriptor();
    if (mDescriptor >= 0) {
      mReadable = std::make_unique<QSocketNotifier>(mDescriptor, QSocketNotifier::Read);
      mWritable = std::make_unique<QSocketNotifier>(mDescriptor, QSocketNotifier::Write);
      connect(mReadable.get(), &QSocketNotifier::activated, this, &BusNotifier::process);
      connect(mWritable.get(), &QSocketNotifier::activated, this, &BusNotifier::process);
    }
  }
  if (mDescriptor < 0) return;
  const short events = mConnection.pollEvents();
  mReadable->setEnabled((events & POLLIN) != 0);
  mWritable->setEnabled((events & POLLOUT) != 0);
  if (const auto timeout = mConnection.timeout()) {
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(*timeout).count();
    mTimeout.start(static_cast<int>(std::clamp<std::int64_t>(milliseconds, 0, std::numeric_limits<int>::max())));
  } else {
    mTimeout.stop();
  }
}

}  // namespace skarn
