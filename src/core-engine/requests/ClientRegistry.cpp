#include "core-engine/requests/ClientRegistry.h"

#include <algorithm>
#include <utility>

namespace vorn::engine {

void ClientRegistry::add(Client client) {
  std::erase_if(mClients, [&](const Client& known) { return known.replyPort == client.replyPort; });
  if (mClients.size() == maximumClients) mClients.erase(mClients.begin());
  mClients.push_back(std::move(client));
}

std::vector<std::string> ClientRegistry::release(std::string_view sender) {
  std::vector<std::string> ports;
  for (const Client& client : mClients) {
    if (client.sender == sender) ports.push_back(client.replyPort);
  }
  std::erase_if(mClients, [&](const Client& client) { return client.sender == sender; });
  return ports;
}

void ClientRegistry::readsSettings(std::string_view replyPort) {
  for (Client& client : mClients) {
    if (client.replyPort == replyPort) client.showsDefaults = false;
  }
}

bool ClientRegistry::showsDefaults(std::string_view replyPort) const {
  return std::ranges::any_of(
      mClients, [&](const Client& client) { return client.replyPort == replyPort && client.showsDefaults; });
}

void ClientRegistry::portLost(std::string_view replyPort) {
  std::erase_if(mClients, [&](const Client& client) { return client.replyPort == replyPort; });
}

}  // namespace vorn::engine
