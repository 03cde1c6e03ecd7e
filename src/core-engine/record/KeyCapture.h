// Catches single keys for a client's sheet and broadcasts each press as "SingleKeyEvent273" (an assignment is edited)
// or "SingleKeyEvent1050" (an event of a macro is edited), with "singleKey" and "singleKeyModif". There is one capture
// at a time; it belongs to the client that began it. One thread, the engine's.
//
//   pressed                        singleKey   singleKeyModif
//   a key (usage 4 to 223)         its usage   the modifiers held with it, bits as in a keyboard report
//   a modifier, for an assignment  0           all modifiers held now, as bits
//   a modifier, for a macro event  0           its own usage, 224 to 231: it becomes the key of the event
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/device/Device.h"
#include "core-engine/news/NewsPort.h"

namespace vorn::engine {

class KeyCapture {
 public:
  enum class Purpose { Assignment, MacroEvent };
  using ClientHandler = std::function<void(const std::string& client)>;

  explicit KeyCapture(NewsPort& news) : mNews(news) {}  // the news outlive the capture

  // Is told whose capture runs, or an empty name, at once when that changes.
  void setClientHandler(ClientHandler handler) { mClientHandler = std::move(handler); }

  // In the place of a capture that runs, whoever began it. No modifier counts as held yet. client: name of its port;
  // connection: unique bus name of the connection that asked for it.
  void start(Purpose purpose, std::string_view client, std::string connection = {});
  // False, and nothing happens, when the client has no capture.
  bool stop(std::string_view client);
  bool isCapturing() const { return mIsCapturing; }
  // Whose capture runs; empty without one.
  const std::string& client() const { return mClient; }
  // Which connection began it; empty without one.
  const std::string& connection() const { return mConnection; }
  // Looks at a key while capturing; ignored otherwise. Mouse buttons are no keys.
  void note(const KeyChanged& key);

 private:
  void setClient(std::string_view client);
  void post(std::int32_t key, std::int32_t modifier);

  NewsPort& mNews;
  Purpose mPurpose = Purpose::Assignment;
  ClientHandler mClientHandler;
  std::string mClient;
  std::string mConnection;
  bool mIsCapturing = false;
  std::uint8_t mModifiers = 0;  // held now, as in a keyboard report: bit 0 Left Control (usage 224) to bit 7
};

}  // namespace vorn::engine
