// Keys that the engine hears of, from the mouse and from the windows of its clients, on their way to the recording and
// to the key capture: each counts once. One thread, the engine's.
#pragma once

#include "core-engine/Scheduler.h"
#include "core-engine/device/Device.h"
#include "core-engine/record/EchoFilter.h"
#include "core-engine/record/KeyCapture.h"
#include "core-engine/record/MacroRecorder.h"

namespace vorn::engine {

class HeardKeys {
 public:
  // All of them outlive the keys.
  HeardKeys(const Device& device, const Scheduler& scheduler, MacroRecorder& recorder, KeyCapture& capture)
      : mDevice(device), mScheduler(scheduler), mRecorder(recorder), mCapture(capture) {}

  // What the mouse tells of while it listens. Not the left and the right button of one that reaches the desktop: with
  // these a person works the window, that which ends the recording too, and the window itself tells of what counts.
  void fromDevice(const KeyChanged& key);
  // What an assignment sends.
  void played(const KeyChanged& key);
  // What a client's window has received: for its recording, its capture, or both.
  void fromWindow(const KeyChanged& key, bool isRecorded, bool isCaught);

  // Another recording, or another capture, may begin: what was told before it has no echo in it.
  void recordingChanged() { mRecorded.clear(); }
  void captureChanged() { mCaught.clear(); }

 private:
  void note(const KeyChanged& key);
  bool isNew(EchoFilter& filter, EchoFilter::Origin origin, const KeyChanged& key) const;

  const Device& mDevice;
  const Scheduler& mScheduler;
  MacroRecorder& mRecorder;
  KeyCapture& mCapture;
  EchoFilter mRecorded;
  EchoFilter mCaught;
};

}  // namespace vorn::engine
