#include "app/QuitOnSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace skarn {

namespace {

constexpr int signalsToQuit[] = {SIGTERM, SIGINT, SIGHUP};

// Written by the handler: only what is safe in a signal handler may be done there.
volatile sig_atomic_t eventDescriptor = -1;
std::atomic<bool> hasCome{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void noteSignal(int) {
  hasCome = true;
  const int interrupted = errno;
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(eventDescriptor, &one, sizeof one);
  errno = interrupted;
}

int openEvent() {
  eventDescriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  return eventDescriptor;
}

}  // namespace

QuitOnSignals::QuitOnSignals() : mNotifier(openEvent(), QSocketNotifier::Read) {
  QObject::connect(&mNotifier, &QSocketNotifier::activated, &mNotifier, [this] {
    mNotifier.setEnabled(false);
    // A quit would first ask every window, and a sheet may refuse.
    QCoreApplication::exit();
  });
  struct sigaction action {};
  action.sa_handler = noteSignal;
  action.sa_flags = SA_RESTART;
  for (const int signal : signalsToQuit) sigaction(signal, &action, nullptr);
}

QuitOnSignals::~QuitOnSignals() {
  for (const int number : signalsToQuit) signal(number, SIG_DFL);
  mNotifier.setEnabled(false);
  close(eventDescriptor);
}

bool QuitOnSignals::isAsked() {
  return hasCome;
}

}  // namespace skarn
