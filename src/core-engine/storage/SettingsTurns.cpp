#include "core-engine/storage/SettingsTurns.h"

#include <utility>

namespace vorn::engine {

void SettingsTurns::add(Turn turn) {
  while (mWaiting.size() >= maximumWaiting) {
    mStore.settle();
    goOn();
  }
  if (isEmpty() && mayBegin(turn)) return turn.work();
  mWaiting.push_back(std::move(turn));
}

void SettingsTurns::goOn() {
  while (!mWaiting.empty() && mayBegin(mWaiting.front())) {
    const Turn turn = std::move(mWaiting.front());
    mWaiting.pop_front();
    turn.work();
  }
}

}  // namespace vorn::engine
