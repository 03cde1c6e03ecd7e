#include "core-engine/device/MouseInUse.h"

namespace vorn::engine {

void MouseInUse::take(Device& device) {
  mDevice = &device;
  mDevice->apply(mValues);
  mDevice->setListening(mIsListening);
  mDevice->setEventHandler([this](const DeviceEvent& event) { notify(event); });
}

void MouseInUse::leave() {
  mDevice->setEventHandler({});
  mDevice->setListening(false);
  mDevice->apply({});
}

void MouseInUse::use(Device& other) {
  if (&other == mDevice) return;
  const bool wasPresent = isPresent();
  mIsLeaving = true;
  if (wasPresent) notify(ConnectionChanged{});
  leave();
  take(other);
  mIsLeaving = false;
  if (isPresent()) notify(ConnectionChanged{});
  notify(AbilitiesChanged{});
}

void MouseInUse::apply(const DeviceValues& values) {
  if (values == mValues) return;
  mValues = values;
  mDevice->apply(values);
}

void MouseInUse::setListening(bool isListening) {
  if (isListening == mIsListening) return;
  mIsListening = isListening;
  mDevice->setListening(isListening);
}

}  // namespace vorn::engine
