#include "core-engine/record/HeardKeys.h"

#include "model/HidUsages.h"

namespace vorn::engine {

using Origin = EchoFilter::Origin;

bool HeardKeys::isNew(EchoFilter& filter, Origin origin, const KeyChanged& key) const {
  return !mDevice.abilities().reachesDesktop || !filter.isEcho(origin, key, mScheduler.now());
}

void HeardKeys::fromDevice(const KeyChanged& key) {
  const bool isForWindow =
      key.usagePage == hid::buttonPage && (key.usage == hid::primaryButton || key.usage == hid::secondaryButton);
  if (!isForWindow || !mDevice.abilities().reachesDesktop) note(key);
}

void HeardKeys::played(const KeyChanged& key) {
  note(key);
}

void HeardKeys::note(const KeyChanged& key) {
  if (mRecorder.isRecording() && isNew(mRecorded, Origin::Device, key)) mRecorder.note(key);
  if (mCapture.isCapturing() && isNew(mCaught, Origin::Device, key)) mCapture.note(key);
}

void HeardKeys::fromWindow(const KeyChanged& key, bool isRecorded, bool isCaught) {
  if (isRecorded && isNew(mRecorded, Origin::Window, key)) mRecorder.note(key);
  if (isCaught && isNew(mCaught, Origin::Window, key)) mCapture.note(key);
}

}  // namespace vorn::engine
