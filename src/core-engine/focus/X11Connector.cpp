#include "core-engine/focus/X11Connector.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <system_error>
#include <utility>

#include "core-engine/focus/LocalSocket.h"
#include "core-engine/focus/X11Authority.h"
#include "model/RegularFile.h"

namespace vorn::engine {

namespace {

constexpr std::size_t maximumAuthority = std::size_t{1} << 20;

// Takes the descriptor. None where there is an error.
X11Connection connectTo(int descriptor, int display, const std::string& authority) {
  Bytes file;
  readRegularFile(authority, maximumAuthority, file);
  auto key = x11KeyIn(file, localHostName(), display);
  xcb_auth_info_t info{};
  if (key) {
    info = {static_cast<int>(key->name.size()), key->name.data(), static_cast<int>(key->data.size()), key->data.data()};
  }
  X11Connection connection(xcb_connect_to_fd(descriptor, key ? &info : nullptr));
  if (xcb_connection_has_error(connection.get()) != 0) connection.reset();
  return connection;
}

// Signals are for the engine's thread.
std::thread threadWithoutSignals(const std::function<void()>& work) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  std::thread thread;
  try {
    thread = std::thread(work);
  } catch (const std::system_error&) {
    // No thread is left.
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return thread;
}

}  // namespace

std::string localHostName() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string();
}

struct X11Connector::Attempt {
  explicit Attempt(int descriptor) : socket(descriptor) {}
  FileDescriptor socket;     // the same as the connection's, to end it
  X11Connection connection;  // the thread's, until it has ended
};

X11Connector::X11Connector(RunLoop& loop, Scheduler& scheduler, const std::string& socketPath, int display,
                           const std::string& authority, std::function<void(X11Connection)> done)
    : mScheduler(scheduler), mDone(std::move(done)) {
  const FileDescriptor socket = connectedSocket(socketPath);
  mAttempt = std::make_shared<Attempt>(fcntl(socket.get(), F_DUPFD_CLOEXEC, 0));
  const int given = fcntl(socket.get(), F_DUPFD_CLOEXEC, 0);
  const std::weak_ptr<Attempt> attempt = mAttempt;
  const auto tellEnd = [this, attempt] {
    if (!attempt.expired()) end();
  };
  if (given >= 0) {
    // The attempt outlives the thread, and so does the loop.
    mThread = threadWithoutSignals([&loop, raw = mAttempt.get(), given, display, authority, tellEnd] {
      raw->connection = connectTo(given, display, authority);
      loop.perform(tellEnd);
    });
  }
  if (mThread.joinable()) {
    mLimit = mScheduler.after(longest, [this] {
      mLimit = 0;
      shutdown(mAttempt->socket.get(), SHUT_RDWR);
    });
  } else {
    if (given >= 0) close(given);
    loop.perform(tellEnd);
  }
}

X11Connector::~X11Connector() {
  mScheduler.cancel(mLimit);
  if (!mThread.joinable()) return;
  shutdown(mAttempt->socket.get(), SHUT_RDWR);
  mThread.join();
}

void X11Connector::end() {
  mScheduler.cancel(std::exchange(mLimit, 0));
  if (mThread.joinable()) mThread.join();
  const std::shared_ptr<Attempt> attempt = std::move(mAttempt);
  // Which may end this.
  const auto done = mDone;
  done(std::move(attempt->connection));
}

}  // namespace vorn::engine
