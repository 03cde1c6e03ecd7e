#include "ports/BusConnection.h"

#include <poll.h>
#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>

#include "ports/BusCall.h"

namespace vorn {

namespace {

// How long the bus may take to greet a new connection, and to take what is still to be written at the end.
constexpr std::chrono::milliseconds greetingTimeout{5000};
constexpr std::chrono::milliseconds farewellTimeout{150};
// So many messages are handled in one go; a flood must not keep the event loop from its other work.
constexpr int maximumMessagesInOneGo = 256;

bool hasHungUp(sd_bus* bus) {
  pollfd watched{sd_bus_get_fd(bus), POLLHUP, 0};
  return watched.fd >= 0 && poll(&watched, 1, 0) > 0 && (watched.revents & POLLHUP) != 0;
}

}  // namespace

struct BusConnection::State {
  Bus kind = Bus::Session;
  sd_event* loop = nullptr;  // of the system bus
  bus::BusReference bus;
  std::string error;
  std::function<void()> queuedHandler;

  // Also sees a connection whose end sd-bus has not read yet.
  bool isAlive() const { return bus && sd_bus_is_open(bus.get()) > 0 && !hasHungUp(bus.get()); }

  const char* name() const { return kind == Bus::Session ? "session bus" : "system bus"; }
  void open();
  void close();
  void abandon();

 private:
  int greet();
  void writeQueued();
};

void BusConnection::State::open() {
  sd_bus* opened = nullptr;
  int result = kind == Bus::Session ? sd_bus_open_user(&opened) : sd_bus_open_system(&opened);
  bus.reset(opened);
  if (result >= 0 && kind == Bus::Session) result = greet();
  if (result >= 0 && loop != nullptr) result = sd_bus_attach_event(bus.get(), loop, SD_EVENT_PRIORITY_NORMAL);
  if (result >= 0) {
    error.clear();
    return;
  }
  error = std::string("No ") + name() + ": " + std::strerror(-result);
  close();
}

int BusConnection::State::greet() {
  const std::uint64_t deadline = bus::monotonicMicroseconds() + std::chrono::microseconds(greetingTimeout).count();
  while (true) {
    const int isReady = sd_bus_is_ready(bus.get());
    if (isReady != 0) return isReady;
    const int processed = sd_bus_process(bus.get(), nullptr);
    if (processed < 0) return processed;
    if (processed > 0) continue;
    const std::uint64_t now = bus::monotonicMicroseconds();
    if (now >= deadline) return -ETIMEDOUT;
    const int waited = sd_bus_wait(bus.get(), deadline - now);
    if (waited < 0 && waited != -EINTR) return waited;
  }
}

// sd-bus goes on writing for as long as the bus does not take it; what ends that in time is the end of the socket.
// Handling messages until it is written would call handlers whose objects may be gone.
void BusConnection::State::writeQueued() {
  const int descriptor = sd_bus_get_fd(bus.get());
  std::mutex mutex;
  std::condition_variable_any changed;
  const auto waitForEnd = [&](const std::stop_token& stop) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, stop, farewellTimeout, [] { return false; });
    if (!stop.stop_requested()) shutdown(descriptor, SHUT_RDWR);
  };
  try {
    const std::jthread limit(waitForEnd);
    sd_bus_flush(bus.get());
  } catch (const std::system_error&) {
    // Without a thread it would be without a limit.
  }
}

void BusConnection::State::close() {
  if (!bus) return;
  std::uint64_t unwritten = 0;
  if (sd_bus_is_ready(bus.get()) > 0 && sd_bus_get_n_queued_write(bus.get(), &unwritten) >= 0 && unwritten > 0)
    writeQueued();
  if (loop != nullptr) sd_bus_detach_event(bus.get());
  sd_bus_close(bus.get());
  bus.reset();
}

// Of a lost connection. Whoever has watches on it still holds it, and hears of its end from the event loop.
void BusConnection::State::abandon() {
  if (loop == nullptr) return close();
  bus.reset();
}

BusConnection& BusConnection::ofThisThread(Bus bus) {
  thread_local BusConnection session(Bus::Session);
  thread_local BusConnection system(Bus::System);
  return bus == Bus::Session ? session : system;
}

BusConnection& BusConnection::forThisThread(Bus bus) {
  BusConnection& connection = ofThisThread(bus);
  State& state = *connection.mState;
  if (state.isAlive()) return connection;
  const bool wasOpen = state.bus != nullptr;
  state.abandon();
  state.open();
  // The event loop still watches the descriptor of the lost connection.
  if (wasOpen && state.queuedHandler) state.queuedHandler();
  return connection;
}

void BusConnection::serveSystemBus(sd_event* loop) {
  State& state = *ofThisThread(Bus::System).mState;
  if (state.bus && state.loop != nullptr) sd_bus_detach_event(state.bus.get());
  state.loop = loop;
  if (state.bus && loop != nullptr) sd_bus_attach_event(state.bus.get(), loop, SD_EVENT_PRIORITY_NORMAL);
}

BusConnection::BusConnection(Bus bus) : mState(std::make_unique<State>()) {
  mState->kind = bus;
}

BusConnection::~BusConnection() {
  mState->close();
}

bool BusConnection::isOpen() const {
  return mState->bus && sd_bus_is_open(mState->bus.get()) > 0;
}

const std::string& BusConnection::error() const {
  return mState->error;
}

int BusConnection::descriptor() const {
  return isOpen() ? std::max(sd_bus_get_fd(mState->bus.get()), -1) : -1;
}

short BusConnection::pollEvents() const {
  if (!isOpen()) return 0;
  return static_cast<short>(std::max(sd_bus_get_events(mState->bus.get()), 0));
}

std::optional<std::chrono::microseconds> BusConnection::timeout() const {
  std::uint64_t until = 0;
  if (!isOpen() || sd_bus_get_timeout(mState->bus.get(), &until) <= 0 || until == UINT64_MAX) return std::nullopt;
  const std::uint64_t now = bus::monotonicMicroseconds();
  return std::chrono::microseconds(until > now ? until - now : 0);
}

bool BusConnection::process() {
  // A handler may make a call that replaces a lost connection by a new one.
  const bus::BusReference alive = bus::share(mState->bus.get());
  if (!alive) return false;
  for (int handled = 0; handled < maximumMessagesInOneGo; ++handled) {
    const int result = sd_bus_process(alive.get(), nullptr);
    if (result <= 0) break;
  }
  if (sd_bus_is_open(alive.get()) <= 0) {
    if (mState->bus == alive) mState->error = std::string("The ") + mState->name() + " closed the connection";
    return false;
  }
  announceQueuedMessages();
  return true;
}

void BusConnection::close() {
  mState->close();
}

void BusConnection::setQueuedHandler(std::function<void()> handler) {
  mState->queuedHandler = std::move(handler);
}

sd_bus* BusConnection::handle() const {
  return mState->bus.get();
}

void BusConnection::announceQueuedMessages() {
  if (!mState->queuedHandler || !isOpen()) return;
  std::uint64_t unread = 0;
  std::uint64_t unwritten = 0;
  sd_bus_get_n_queued_read(mState->bus.get(), &unread);
  sd_bus_get_n_queued_write(mState->bus.get(), &unwritten);
  if (unread > 0 || unwritten > 0) mState->queuedHandler();
}

void BusConnection::announceTimeout() {
  if (mState->queuedHandler) mState->queuedHandler();
}

}  // namespace vorn
