#include "core-engine/record/HeardKeys.h"

namespace vorn::engine {

using Origin = EchoFilter::Origin;

bool HeardKeys::isNew(EchoFilter& filter, Origin origin, const KeyChanged& key) const {
  return !mDevice.abilities().reachesDesktop || !filter.isEcho(origin, key, mScheduler.now());
}

void HeardKeys::fromDevice(const KeyChanged& key) {
  if (mRecorder.isRecording() && isNew(mRecorded, Origin::Device, key)) mRecorder.note(key);
  if (mCapture.isCapturing() && isNew(mCaught, Origin::Device, key)) mCapture.note(key);
}

void HeardKeys::fromWindow(const KeyChanged& key, bool isRecorded, bool isCaught) {
  if (isRecorded && isNew(mRecorded, Origin::Window, key)) mRecorder.note(key);
  if (isCaught && isNew(mCaught, Origin::Window, key)) mCapture.note(key);
}

}  // namespace vorn::engine
