#include "core-engine/requests/ReplyPorts.h"

#include <map>

#include "ports/MessagePort.h"

namespace vorn::engine {

namespace {

ReplyPorts::Outcome outcomeOf(RemoteMessagePort::Status status) {
  switch (status) {
    case RemoteMessagePort::Status::Success:
      return ReplyPorts::Outcome::Sent;
    case RemoteMessagePort::Status::InvalidPort:
      return ReplyPorts::Outcome::NoSuchPort;
    default:
      return ReplyPorts::Outcome::Failed;
  }
}

}  // namespace

struct BusReplyPorts::State {
  struct Unread {
    std::size_t count = 0;
    std::size_t size = 0;
    std::size_t losses = 0;  // of the port, since the first of them left
  };
  std::map<std::string, Unread, std::less<>> unread;  // by port
};

BusReplyPorts::BusReplyPorts()
    : mState(std::make_shared<State>()), mLosses([this](const std::string& portName) {
        if (const auto entry = mState->unread.find(portName); entry != mState->unread.end()) ++entry->second.losses;
        tellLost(portName);
      }) {}

BusReplyPorts::~BusReplyPorts() = default;

void BusReplyPorts::lookUp(std::string_view portName, std::function<void(bool exists)> done) {
  const auto told = [state = std::weak_ptr(mState), done = std::move(done)](RemoteMessagePort::Status status) {
    if (!state.expired()) done(status == RemoteMessagePort::Status::Success);
  };
  RemoteMessagePort::ping(portName, told);
}

void BusReplyPorts::post(std::string_view portName, std::int32_t messageID, BytesView data, Done done) {
  const std::string port(portName);
  State::Unread& unread = mState->unread[port];
  if (unread.count > 0 && (unread.count >= maximumUnread || unread.size + data.size() > maximumUnreadSize)) {
    return done(Outcome::Unread);
  }
  ++unread.count;
  unread.size += data.size();
  // The bus may tell the outcome when these ports are gone.
  const auto read = [this, state = std::weak_ptr(mState), port, size = data.size(), losses = unread.losses,
                     done = std::move(done)](RemoteMessagePort::Status status) {
    const std::shared_ptr<State> alive = state.lock();
    if (!alive) return;
    const auto entry = alive->unread.find(port);
    entry->second.size -= size;
    const bool wasThere = entry->second.losses > losses;
    if (--entry->second.count == 0) alive->unread.erase(entry);
    if (status == RemoteMessagePort::Status::InvalidPort) tellLost(port);
    done(wasThere && status != RemoteMessagePort::Status::Success ? Outcome::Gone : outcomeOf(status));
  };
  RemoteMessagePort::postTracked(portName, messageID, data, read);
}

}  // namespace vorn::engine
