// Who registered for the mouse. A registration ends with its release, with another one on its port, or with the port.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::engine {

struct Client {
  std::string sender;          // unique bus name of its connection
  std::string replyPort;       // name of its message port
  std::int32_t productID = 0;  // the product that it registered for
  // It was told that no mouse is connected and has read no settings since: what it shows are defaults of its own.
  bool showsDefaults = false;
  friend bool operator==(const Client&, const Client&) = default;
};

class ClientRegistry {
 public:
  static constexpr std::size_t maximumClients = 64;

  // A port has one registration, the latest. Where there are too many, the oldest goes.
  void add(Client client);
  // Forgets the registrations of this connection. Their ports; empty when it had none.
  std::vector<std::string> release(std::string_view sender);
  // The client with this port reads the settings.
  void readsSettings(std::string_view replyPort);
  bool showsDefaults(std::string_view replyPort) const;
  // The port is gone.
  void portLost(std::string_view replyPort);
  // The oldest first.
  const std::vector<Client>& present() const { return mClients; }

 private:
  std::vector<Client> mClients;
};

}  // namespace vorn::engine
