#include "core-engine/news/Announcer.h"

#include <algorithm>
#include <utility>

#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

bool holds(const std::vector<Client>& clients, std::string_view port) {
  return std::any_of(clients.begin(), clients.end(), [&](const Client& client) { return client.replyPort == port; });
}

}  // namespace

Announcer::Announcer(ClientRegistry& clients, ReplyPorts& ports, const Device& device, DeviceNews& news,
                     Scheduler& scheduler)
    : mClients(clients), mPorts(ports), mDevice(device), mNews(news), mScheduler(scheduler) {}

Announcer::~Announcer() {
  for (const Newcomer& newcomer : mNewcomers) mScheduler.cancel(newcomer.ticket);
}

void Announcer::noteServed(MessageID messageID, const Request& request) {
  const std::string port = request.replyPort();
  const bool isFirst = !request.isOfVisitor() && isNew(port);
  if (messageID == MessageID::RegisterDevice) {
    welcome(port);
    return;
  }
  if (isFirst) meet(port);
  const auto newcomer = find(port);
  if (newcomer == mNewcomers.end()) return;
  switch (messageID) {
    case MessageID::GetAllSettings:
      noteSettingsRead(newcomer);
      break;
    case MessageID::QueryFirmwareVersion:
    case MessageID::QueryBatteryLevel:
    case MessageID::QueryChargingStatus:
      noteQuery(newcomer, messageID);
      break;
    default:
      break;
  }
}

void Announcer::welcome(const std::string& port) {
  const std::vector<Client>& clients = mClients.present();
  std::erase_if(mNewcomers, [&](const Newcomer& newcomer) {
    const bool isStale = newcomer.port == port || !(newcomer.stage == Stage::Stranger || holds(clients, newcomer.port));
    if (isStale) mScheduler.cancel(newcomer.ticket);
    return isStale;
  });
  // A registration that was refused.
  if (!holds(clients, port)) return;
  Newcomer newcomer{.port = port};
  if (!mDevice.isPresent()) {
    // The answer tells it, but the mouse may come before the client listens.
    newcomer.stage = Stage::Absent;
    newcomer.ticket = mScheduler.after(patience, [this, port] {
      if (mDevice.isPresent()) {
        announceTo(port);
      } else {
        forget(find(port));
      }
    });
  }
  mNewcomers.push_back(std::move(newcomer));
}

bool Announcer::isNew(const std::string& port) {
  if (port.empty() || std::find(mKnownPorts.begin(), mKnownPorts.end(), port) != mKnownPorts.end()) return false;
  if (mKnownPorts.size() == maximumKnownPorts) mKnownPorts.pop_front();
  mKnownPorts.push_back(port);
  return true;
}

void Announcer::meet(const std::string& port) {
  const auto isStranger = [](const Newcomer& newcomer) { return newcomer.stage == Stage::Stranger; };
  const auto strangers = std::ranges::count_if(mNewcomers, isStranger);
  if (!mDevice.isPresent() || std::cmp_greater_equal(strangers, maximumStrangers)) return;
  Newcomer newcomer{.port = port, .stage = Stage::Stranger};
  newcomer.ticket = mScheduler.after(announcementDelay, [this, port] {
    const auto stranger = find(port);
    stranger->ticket = 0;
    forget(stranger);
    mPorts.lookUp(port, [this](bool exists) {
      if (exists && mDevice.isPresent()) mNews.announce();
    });
  });
  mNewcomers.push_back(std::move(newcomer));
}

void Announcer::noteSettingsRead(Newcomers::iterator newcomer) {
  switch (newcomer->stage) {
    case Stage::Registered:
      newcomer->stage = Stage::Due;
      newcomer->ticket = mScheduler.after(announcementDelay, [this, port = newcomer->port] { announceTo(port); });
      break;
    case Stage::Absent:
      forget(newcomer);
      break;
    case Stage::Due:
    case Stage::Stranger:
      break;
    case Stage::Announced:
      if (hasHeard(*newcomer)) forget(newcomer);
      break;
  }
}

void Announcer::noteQuery(Newcomers::iterator newcomer, MessageID messageID) {
  if (newcomer->stage != Stage::Announced) return;
  if (!hasHeard(*newcomer)) {
    forget(newcomer);
    mNews.announce();
  } else if (messageID == MessageID::QueryFirmwareVersion) {
    forget(newcomer);
  }
}

void Announcer::announceTo(const std::string& port) {
  const auto newcomer = find(port);
  if (newcomer == mNewcomers.end()) return;
  newcomer->ticket = 0;
  if (!holds(mClients.present(), port)) {
    forget(newcomer);
    return;
  }
  newcomer->stage = Stage::Announced;
  newcomer->announced = mScheduler.now();
  mNews.announce();
}

// Whether a request that arrives now can be the client's reaction to the announcement.
bool Announcer::hasHeard(const Newcomer& newcomer) const {
  return mScheduler.now() - newcomer.announced <= patience;
}

void Announcer::forget(Newcomers::iterator newcomer) {
  if (newcomer == mNewcomers.end()) return;
  mScheduler.cancel(newcomer->ticket);
  mNewcomers.erase(newcomer);
}

Announcer::Newcomers::iterator Announcer::find(std::string_view port) {
  return std::find_if(mNewcomers.begin(), mNewcomers.end(),
                      [&](const Newcomer& newcomer) { return newcomer.port == port; });
}

}  // namespace vorn::engine
