#include "core-engine/record/ListeningClient.h"

namespace vorn::engine {

void ListeningClient::become(const std::string& portName) {
  if (portName == mPortName) return;
  mPortName = portName;
  mOwner.reset();
  if (!portName.empty()) mOwner.emplace(portName, mLost);
}

void ListeningClient::portLost(const std::string& portName) {
  if (!portName.empty() && portName == mPortName) mLost();
}

bool ListeningClient::isConnection(const std::string& connection) const {
  return mOwner && !connection.empty() && mOwner->connection() == connection;
}

}  // namespace vorn::engine
