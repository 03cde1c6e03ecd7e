// Catches keys and mouse buttons with the times between them while a client records a macro. There is one recording at
// a time; it belongs to the client that began it.
//
// While it records, the lines of what came since the last batch are broadcast as "MacroSequence273" ("messagesArray"),
// in the layout of the details table, with the client whose recording it is ("ResponseMsgPortName") and its macro
// ("macroID"): all batches of a recording, one after the other, are the rows that it adds to the table. One thread, the
// engine's.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/device/Device.h"
#include "core-engine/news/NewsPort.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class MacroRecorder {
 public:
  // A batch leaves so long after its first event, so that a burst of keys is one notification.
  static constexpr Scheduler::Duration batchDelay = std::chrono::milliseconds(40);

  struct Task {
    std::string client;           // name of its port
    std::int64_t macro = -1;      // position of the macro that is recorded
    std::size_t room = 0;         // how many events fit in; what comes after them is not recorded
    bool isContinuing = false;    // the macro has events: the first line is the delay before the first new event
    std::int64_t firstDelay = 0;  // milliseconds; nobody knows how long a person thought before the first key
    std::string connection{};     // unique bus name of the connection that asked for it
  };

  using ClientHandler = std::function<void(const std::string& client)>;

  // Both outlive the recorder.
  MacroRecorder(NewsPort& news, Scheduler& scheduler) : mNews(news), mScheduler(scheduler) {}
  ~MacroRecorder() { drop(); }
  MacroRecorder(const MacroRecorder&) = delete;
  MacroRecorder& operator=(const MacroRecorder&) = delete;

  // Is told at once when that which client() says may have changed.
  void setClientHandler(ClientHandler handler) { mClientHandler = std::move(handler); }

  // Begins anew; a recording that runs or was not saved is dropped, whoever made it. Where that was another client, an
  // empty batch tells it at once.
  void start(Task task);
  // Ends the client's recording and broadcasts one last batch, empty or not. The events stay until they are discarded.
  // False, and nothing happens, when the client is not recording.
  bool stop(std::string_view client);
  bool isRecording() const { return mIsRecording; }
  // Notes an event while recording; ignored otherwise, and when it cannot stand in a macro.
  void note(const KeyChanged& key);

  // Whether this client's recording runs or waits to be saved.
  bool belongsTo(std::string_view client) const { return mTask.macro >= 0 && mTask.client == client; }
  std::int64_t macro() const { return mTask.macro; }  // -1 without a recording
  // Whose recording runs or waits to be saved; empty without one.
  const std::string& client() const { return mTask.client; }
  // Which connection began it; empty without one.
  const std::string& connection() const { return mTask.connection; }
  // The events caught, an array of { command, delay, page, argument }.
  PropertyList events() const { return PropertyList::array(mEvents); }
  void discard();
  // From start on, so many macros have gone and so many have come in their place: the recording of one that has gone is
  // discarded, that of one behind them moves with it.
  void macrosMoved(std::int64_t start, std::int64_t gone, std::int64_t come);

 private:
  void drop();
  void tellClient() const {
    if (mClientHandler) mClientHandler(mTask.client);
  }
  void postBatch();
  // Milliseconds from the event before, of this one that comes now.
  std::int64_t delayBefore(const KeyChanged& key, Scheduler::Duration now) const;

  NewsPort& mNews;
  Scheduler& mScheduler;
  ClientHandler mClientHandler;
  bool mIsRecording = false;
  Task mTask;
  std::vector<PropertyList> mEvents;
  std::size_t mPosted = 0;  // how many of the events were broadcast
  Scheduler::Ticket mBatch = 0;
  Scheduler::Duration mLastEvent{};
  std::optional<std::chrono::milliseconds> mLastOwnTime;  // of the last event, where it had one
};

}  // namespace vorn::engine
