// An engine link without an engine: records what is sent and answers as the test says.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "link/EngineLink.h"

namespace skarn::test {

class ScriptedLink : public vorn::EngineLink {
 public:
  struct Request {
    vorn::MessageID messageID;
    vorn::PropertyList body;
    friend bool operator==(const Request&, const Request&) = default;
  };
  struct Wait {
    int polls;
    std::chrono::milliseconds interval;
    friend bool operator==(const Wait&, const Wait&) = default;
  };

  // The answer to every further request of that ID; none for no answer.
  void answer(vorn::MessageID messageID, vorn::PropertyList reply) { mAnswers[messageID] = std::move(reply); }
  // Puts something into the reply slot, as a late answer would.
  void store(vorn::PropertyList reply) { mSlot = std::move(reply); }

  std::vector<Request> requests;
  std::vector<vorn::TypedKey> typed;
  std::vector<Wait> unansweredWaits;
  int lookUps = 0;
  bool isAvailable = true;
  int starts = 0;  // how often the bus was asked to start the engine
  // How that ends, at once; without one it takes until a test calls startEnded.
  std::optional<vorn::ServiceStart> startOutcome = vorn::ServiceStart{vorn::ServiceStart::Status::NotInstalled, "no"};
  std::function<void(const vorn::ServiceStart&)> startEnded;
  bool hasPort = false;
  std::function<void(const Request&)> onSend;
  std::function<void(bool isThere)> engineChanged;  // tells the hub of the engine's port
  std::function<bool()> whileWaiting;               // what the hub does during a wait
  int turnsOfAWait = 0;                             // how often an unanswered wait calls it

  std::vector<vorn::HistoryRequest> historyRequests;
  std::function<void()> historyChanged;  // tells the hub of the engine's history
  std::size_t unansweredHistory() const { return mHistoryAsked.size(); }
  // Answers the oldest call to the history that has no answer yet; false where there is none.
  bool answerHistory(const vorn::HistoryAnswer& answer) { return answerOldest(mHistoryAsked, answer); }

  std::vector<vorn::MiceRequest> miceRequests;
  vorn::MiceNews miceNews;  // tells the hub of the mice
  std::size_t unansweredMice() const { return mMiceAsked.size(); }
  // The same of the mice.
  bool answerMice(const vorn::MiceAnswer& answer) { return answerOldest(mMiceAsked, answer); }

  std::function<void()> focusChanged;  // tells the hub of the application in front
  std::size_t unansweredFocus() const { return mFocusAsked.size(); }
  bool answerFocus(const vorn::PropertyList& state) { return answerOldest(mFocusAsked, state); }

  bool createLocalPort() override { return hasPort = true; }
  bool isEngineAvailable() override {
    ++lookUps;
    return isAvailable;
  }
  bool watchEngine(std::function<void(bool isThere)> changed) override {
    engineChanged = std::move(changed);
    return isAvailable;
  }
  void startEngine(std::function<void(const vorn::ServiceStart&)> done) override {
    ++starts;
    startEnded = std::move(done);
    if (startOutcome) startEnded(*startOutcome);
  }
  void setWhileWaiting(std::function<bool()> work) override { whileWaiting = std::move(work); }
  int send(const vorn::PropertyList& request, vorn::MessageID messageID) override {
    requests.push_back({messageID, request});
    if (onSend) onSend(requests.back());
    const auto found = mAnswers.find(messageID);
    if (found != mAnswers.end() && !found->second.isNone()) mSlot = found->second;
    return vorn::sendRequestResult;
  }
  void post(const vorn::PropertyList& request, vorn::MessageID messageID) override {
    requests.push_back({messageID, request});
    if (onSend) onSend(requests.back());
  }
  void type(const vorn::TypedKey& key) override { typed.push_back(key); }
  void watchHistory(std::function<void()> changed) override { historyChanged = std::move(changed); }
  void askHistory(const vorn::HistoryRequest& request, std::function<void(const vorn::HistoryAnswer&)> done) override {
    historyRequests.push_back(request);
    mHistoryAsked.push_back(std::move(done));
  }
  void watchMice(vorn::MiceNews news) override { miceNews = std::move(news); }
  void askMice(const vorn::MiceRequest& request, std::function<void(const vorn::MiceAnswer&)> done) override {
    miceRequests.push_back(request);
    mMiceAsked.push_back(std::move(done));
  }
  void watchFocus(std::function<void()> changed) override { focusChanged = std::move(changed); }
  void askFocus(std::function<void(const vorn::PropertyList&)> done) override {
    mFocusAsked.push_back(std::move(done));
  }
  bool waitForReply(int polls, std::chrono::milliseconds interval) override {
    if (!mSlot.isNone()) return true;
    unansweredWaits.push_back({polls, interval});
    for (int turn = 0; turn < turnsOfAWait && whileWaiting(); ++turn) {
    }
    return !mSlot.isNone();
  }
  vorn::PropertyList reply() const override { return mSlot; }
  void emptySlot() override { mSlot = {}; }

 private:
  template <typename Answer>
  static bool answerOldest(std::deque<std::function<void(const Answer&)>>& asked, const Answer& answer) {
    if (asked.empty()) return false;
    const auto done = asked.front();
    asked.pop_front();
    done(answer);
    return true;
  }

  std::map<vorn::MessageID, vorn::PropertyList> mAnswers;
  vorn::PropertyList mSlot;
  std::deque<std::function<void(const vorn::HistoryAnswer&)>> mHistoryAsked;
  std::deque<std::function<void(const vorn::MiceAnswer&)>> mMiceAsked;
  std::deque<std::function<void(const vorn::PropertyList&)>> mFocusAsked;
};

}  // namespace skarn::test
