#include "core-engine/requests/ReplyPorts.h"

#include <map>
#include <optional>
#include <string>

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

class BusReplyPorts::State {
 public:
  using Number = std::uint64_t;  // of a message

  // Nothing where too much is unread.
  std::optional<Number> add(const std::string& client, const std::string& port, std::size_t size);
  // Who has read a message has read what came to the port before.
  void noteRead(const std::string& port, Number number);
  void remove(const std::string& port, Number number);
  // The bus keeps nothing for a port that is gone.
  void removeAll(const std::string& port);
  bool contains(const std::string& port, Number number) const {
    const auto entry = mPorts.find(port);
    return entry != mPorts.end() && entry->second.messages.contains(number);
  }

 private:
  struct Unread {
    std::size_t count = 0;
    std::size_t size = 0;

    bool hasRoom(std::size_t more, std::size_t maximum, std::size_t maximumSize) const {
      return count == 0 || (count < maximum && size + more <= maximumSize);
    }
    void add(std::size_t more) {
      ++count;
      size += more;
    }
    void remove(std::size_t less) {
      --count;
      size -= less;
    }
  };
  struct Message {
    std::string client;
    std::size_t size = 0;
  };
  struct Port {
    Unread unread;
    std::map<Number, Message> messages;
  };

  bool hasRoom(const std::string& client, const std::string& port, std::size_t size) const;
  void forget(Port& port, const Message& message);

  std::map<std::string, Unread> mClients;  // those who have messages unread
  std::map<std::string, Port> mPorts;
  Unread mTotal;
  Number mLast = 0;
};

bool BusReplyPorts::State::hasRoom(const std::string& client, const std::string& port, std::size_t size) const {
  const auto ofClient = mClients.find(client);
  const auto ofPort = mPorts.find(port);
  const bool isClientFirst = ofClient == mClients.end();
  const bool isPortFirst = ofPort == mPorts.end();
  if (!isClientFirst && !ofClient->second.hasRoom(size, maximumUnread, maximumUnreadSize)) return false;
  if (!isPortFirst && !ofPort->second.unread.hasRoom(size, maximumUnread, maximumUnreadSize)) return false;
  if (mTotal.hasRoom(size, maximumTotal, maximumTotalSize)) return true;
  // Those who read get theirs also while others fill the bus, and a large one as well.
  return isClientFirst && isPortFirst &&
         mTotal.hasRoom(0, maximumTotal + maximumFirst, maximumTotalSize + maximumFirstSize);
}

std::optional<BusReplyPorts::State::Number> BusReplyPorts::State::add(const std::string& client,
                                                                      const std::string& port, std::size_t size) {
  if (!hasRoom(client, port, size)) return std::nullopt;
  Port& receiving = mPorts[port];
  receiving.messages.emplace(++mLast, Message{client, size});
  for (Unread* each : {&mClients[client], &receiving.unread, &mTotal}) each->add(size);
  return mLast;
}

void BusReplyPorts::State::forget(Port& port, const Message& message) {
  const auto client = mClients.find(message.client);
  for (Unread* each : {&client->second, &port.unread, &mTotal}) each->remove(message.size);
  if (client->second.count == 0) mClients.erase(client);
}

void BusReplyPorts::State::noteRead(const std::string& port, Number number) {
  const auto entry = mPorts.find(port);
  if (entry == mPorts.end()) return;
  std::map<Number, Message>& messages = entry->second.messages;
  while (!messages.empty() && messages.begin()->first <= number) {
    forget(entry->second, messages.begin()->second);
    messages.erase(messages.begin());
  }
  if (messages.empty()) mPorts.erase(entry);
}

void BusReplyPorts::State::remove(const std::string& port, Number number) {
  const auto entry = mPorts.find(port);
  if (entry == mPorts.end()) return;
  if (const auto message = entry->second.messages.extract(number)) forget(entry->second, message.mapped());
  if (entry->second.messages.empty()) mPorts.erase(entry);
}

void BusReplyPorts::State::removeAll(const std::string& port) {
  noteRead(port, mLast);
}

BusReplyPorts::BusReplyPorts()
    : mState(std::make_shared<State>()), mLosses([this](const std::string& portName) {
        mState->removeAll(portName);
        tellLost(portName);
      }) {}

BusReplyPorts::~BusReplyPorts() = default;

void BusReplyPorts::lookUp(std::string_view portName, std::function<void(bool exists)> done) {
  const auto told = [state = std::weak_ptr(mState), done = std::move(done)](RemoteMessagePort::Status status) {
    if (!state.expired()) done(status == RemoteMessagePort::Status::Success);
  };
  RemoteMessagePort::ping(portName, told);
}

void BusReplyPorts::post(std::string_view client, std::string_view portName, std::int32_t messageID, BytesView data,
                         Done done) {
  const std::string port(portName);
  const auto number = mState->add(std::string(client), port, data.size());
  if (!number) return done(Outcome::Unread);
  // The bus may tell the outcome when these ports are gone.
  const auto read = [this, state = std::weak_ptr(mState), port, number = *number,
                     done = std::move(done)](RemoteMessagePort::Status status) {
    const std::shared_ptr<State> alive = state.lock();
    if (!alive) return;
    const bool isRead = status == RemoteMessagePort::Status::Success;
    const bool wasLost = !alive->contains(port, number);
    if (isRead) {
      alive->noteRead(port, number);
    } else {
      alive->remove(port, number);
    }
    if (status == RemoteMessagePort::Status::InvalidPort) tellLost(port);
    done(wasLost && !isRead ? Outcome::Gone : outcomeOf(status));
  };
  RemoteMessagePort::postTracked(portName, messageID, data, read);
}

}  // namespace vorn::engine
