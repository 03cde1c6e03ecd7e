// The engine's side of the requests about macros, and a client that sends them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "protocol/ReturnStatus.h"

namespace vorn::engine::test::requests {

using Entries = std::vector<PropertyList::Pair>;

inline const std::string client = "ClientPort";
inline const std::string otherClient = "OtherPort";

// The answer to a request without anything to read.
inline PropertyList status(ReturnStatus value) {
  return PropertyList::dictionary({{"ReturnStatus", static_cast<std::int32_t>(value)}});
}

inline std::vector<PropertyList> twoEvents() {
  return {keyPress(4, 0), keyRelease(4, 50)};
}

inline PropertyList startBundle() {
  return bundleWithMacros({macro("a", 0), macro("b", 1, twoEvents()), macro("c", 2)});
}

class MacroRequestsFixture : public testing::Test, protected TestParts {
 protected:
  MacroRequestsFixture() : TestParts(startBundle()) { ports.names = {client, otherClient}; }

  PropertyList ask(MessageID message, Entries entries, const std::string& port = client) {
    ports.answers.clear();
    entries.emplace_back("ProductID", 273);
    entries.emplace_back("ResponseMsgPortName", port);
    const Bytes data = encodeBinaryPropertyList(PropertyList::dictionary(std::move(entries))).value();
    dispatcher.receive({static_cast<std::int32_t>(message), data, senderOf(port)});
    if (ports.answers.size() != 1 || ports.answers[0].port != port) {
      ADD_FAILURE() << ports.answers.size() << " answers";
      return {};
    }
    return ports.answers[0].body;
  }
  PropertyList startRecording(std::int32_t macro, bool isAppending, const std::string& port = client) {
    return ask(MessageID::StartMacroRecording, {{"macroID", macro}, {"isAppendRecording", isAppending ? 1 : 0}}, port);
  }
  PropertyList stopRecording(const std::string& port = client) { return ask(MessageID::StopMacroRecording, {}, port); }
  PropertyList saveRecording(std::int32_t macro, bool isAppending, const std::string& port = client) {
    return ask(MessageID::SaveRecordedEvents, {{"macroID", macro}, {"isAppendRecording", isAppending ? 1 : 0}}, port);
  }
  // The connection that ask() comes from.
  static std::string senderOf(const std::string& port) { return ":1." + std::to_string(port.size()); }
  void releaseBy(const std::string& connection) {
    const Bytes data = encodeBinaryPropertyList(PropertyList::dictionary({{"ProductID", 273}})).value();
    dispatcher.receive({static_cast<std::int32_t>(MessageID::ReleaseDevice), data, connection});
  }
  void press(std::uint16_t usage) { recorder.note({7, usage, true}); }

  // The change is in force and on the disk.
  void expectSettings(const PropertyList& expected) {
    EXPECT_EQ(store.bundle(), expected) << store.bundle().description();
    EXPECT_EQ(stored(), expected);
  }

  const PropertyList done = status(ReturnStatus::Done);
  const PropertyList notRunning = status(ReturnStatus::NotRunning);
  RequestDispatcher dispatcher{parts(), ports};
};

}  // namespace vorn::engine::test::requests
