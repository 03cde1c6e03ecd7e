#include "core-engine/record/KeyCapture.h"

#include <utility>

#include "model/HidUsages.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

void KeyCapture::start(Purpose purpose, std::string_view client, std::string connection) {
  mPurpose = purpose;
  mIsCapturing = true;
  mModifiers = 0;
  mConnection = std::move(connection);
  setClient(client);
}

bool KeyCapture::stop(std::string_view client) {
  if (!mIsCapturing || client != mClient) return false;
  mIsCapturing = false;
  mConnection.clear();
  setClient({});
  return true;
}

void KeyCapture::setClient(std::string_view client) {
  if (client == mClient) return;
  mClient = client;
  if (mClientHandler) mClientHandler(mClient);
}

void KeyCapture::note(const KeyChanged& key) {
  if (!mIsCapturing || key.usagePage != hid::keyboardPage) return;
  if (key.usage < hid::firstKey || key.usage > hid::lastModifier) return;
  if (key.usage < hid::firstModifier) {
    if (key.isPressed) post(key.usage, mModifiers);
    return;
  }
  const auto bit = static_cast<std::uint8_t>(1U << (key.usage - hid::firstModifier));
  mModifiers = static_cast<std::uint8_t>(key.isPressed ? mModifiers | bit : mModifiers & ~bit);
  if (key.isPressed) post(0, mPurpose == Purpose::Assignment ? mModifiers : key.usage);
}

void KeyCapture::post(std::int32_t key, std::int32_t modifier) {
  const std::int32_t number =
      mPurpose == Purpose::Assignment ? notificationNames::assignmentCapture : notificationNames::macroEventCapture;
  mNews.post(notificationNames::singleKeyEvent(number),
             PropertyList::dictionary({{newsKeys::SingleKey, key}, {newsKeys::SingleKeyModif, modifier}}));
}

}  // namespace vorn::engine
