// Tells a client that the engine hears of for the first time whether the mouse is here. A client that registers begins
// to listen for news only at the end of its start-up, so the engine announces the mouse a little later, and once more
// when the client does not seem to have heard it. One that sends anything else first has started before the engine: it
// is told of a mouse that is here, unless it is gone again by then; a visitor (Request.h) is told nothing. Nothing is
// scheduled but within a second after a registration or the first request of a client. One thread, the engine's.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/device/Device.h"
#include "core-engine/news/DeviceNews.h"
#include "core-engine/requests/ClientRegistry.h"
#include "core-engine/requests/ReplyPorts.h"
#include "core-engine/requests/Request.h"

namespace vorn::engine {

class Announcer {
 public:
  // So many ports are remembered as heard of.
  static constexpr std::size_t maximumKnownPorts = 256;
  // So many clients that did not register are met at a time; further ones are told nothing.
  static constexpr std::size_t maximumStrangers = 64;
  // From the client's first message 4, or from the first request of one that did not register, to the announcement.
  static constexpr Scheduler::Duration announcementDelay = std::chrono::milliseconds(250);
  // A client that heard the announcement sends message 4 or 14 within this time. One that did not is told once more at
  // its next query (14, 15 or 16).
  static constexpr Scheduler::Duration patience = std::chrono::seconds(1);

  // All of them outlive the announcer.
  Announcer(ClientRegistry& clients, ReplyPorts& ports, const Device& device, DeviceNews& news, Scheduler& scheduler);
  ~Announcer();
  Announcer(const Announcer&) = delete;
  Announcer& operator=(const Announcer&) = delete;

  // Looks at a request that has been served.
  void noteServed(MessageID messageID, const Request& request);

 private:
  enum class Stage {
    Registered,  // waits for its first message 4
    Absent,      // registered without a mouse; looked at again when it has started
    Due,         // the announcement is scheduled
    Stranger,    // the same for one that did not register
    Announced,   // has heard it or not
  };
  // A client of which it is not yet certain that it knows; by its port, as it may send from several connections.
  struct Newcomer {
    std::string port;
    Stage stage = Stage::Registered;
    Scheduler::Ticket ticket = 0;
    Scheduler::Duration announced{};
  };
  using Newcomers = std::vector<Newcomer>;

  void welcome(const std::string& port);
  // True the first time; remembers the port.
  bool isNew(const std::string& port);
  void meet(const std::string& port);
  void noteSettingsRead(Newcomers::iterator newcomer);
  void noteQuery(Newcomers::iterator newcomer, MessageID messageID);
  void announceTo(const std::string& port);
  bool hasHeard(const Newcomer& newcomer) const;
  void forget(Newcomers::iterator newcomer);
  Newcomers::iterator find(std::string_view port);

  ClientRegistry& mClients;
  ReplyPorts& mPorts;
  const Device& mDevice;
  DeviceNews& mNews;
  Scheduler& mScheduler;
  Newcomers mNewcomers;
  std::deque<std::string> mKnownPorts;  // the oldest first
};

}  // namespace vorn::engine
