#include "core-engine/ClientRegistry.h"

#include <utility>

namespace vorn::engine {

void ClientRegistry::add(Client client) {
  std::erase_if(mClients, [&](const Client& known) { return known.replyPort == client.replyPort; });
  if (mClients.size() == maximumClients) present();
  if (mClients.size() == maximumClients) mClients.erase(mClients.begin());
  mClients.push_back(std::move(client));
}

bool ClientRegistry::release(std::string_view sender) {
  return std::erase_if(mClients, [&](const Client& client) { return client.sender == sender; }) > 0;
}

const std::vector<Client>& ClientRegistry::present() {
  std::erase_if(mClients, [&](const Client& client) { return !mPorts.exists(client.replyPort); });
  return mClients;
}

}  // namespace vorn::engine
