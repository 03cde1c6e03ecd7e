#include "core-engine/requests/RequestDispatcher.h"

#include <gtest/gtest.h>

#include <set>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {
namespace {

using Answers = std::vector<MemoryPorts::Answer>;
using Lines = std::vector<std::string>;
using Connection = Device::Connection;

const std::string client = ":1.7";
const std::string port = "ClientPort";

PropertyList dictionary(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

PropertyList registration(const PropertyList& product = 273) {
  return dictionary({{"ProductName", "Skarn"},
                     {"ProductID", product},
                     {"IsDeviceWired", 1},
                     {"DefaultVrPlistPath", "/app/Skarn.plist"},
                     {"ResponseMsgPortName", port}});
}

PropertyList plainRequest() {
  return dictionary({{"ProductID", 273}, {"ResponseMsgPortName", port}});
}

class RequestDispatcherTest : public testing::Test, protected TestParts {
 protected:
  RequestDispatcherTest() {
    ports.names = {port};
    putDefaults();
  }

  void putDefaults() {
    put("/app/Skarn.plist", defaultsFile(bundle("application")));
    put(ownDefaults, defaultsFile(bundle("own")));
  }

  void put(const std::string& path, const PropertyList& contents) {
    disk.put(path, encodeBinaryPropertyList(contents).value());
  }
  void sendBytes(std::int32_t messageID, const Bytes& data) { dispatcher.receive({messageID, data, client}); }
  void send(std::int32_t messageID, const PropertyList& body) {
    sendBytes(messageID, encodeBinaryPropertyList(body).value());
  }
  // The only answer to this request.
  PropertyList answerTo(std::int32_t messageID, const PropertyList& body) {
    ports.answers.clear();
    send(messageID, body);
    if (ports.answers.size() != 1 || ports.answers[0].port != port || ports.answers[0].messageID != messageID) {
      ADD_FAILURE() << ports.answers.size() << " answers";
      return {};
    }
    return ports.answers[0].body;
  }

  RequestDispatcher dispatcher{parts(), ports};
};

const PropertyList accepted = PropertyList::dictionary({{"ReturnStatus", true}});
const PropertyList refused = PropertyList::dictionary({{"ReturnStatus", false}});

PropertyList allSettings(const PropertyList& bundle) {
  return dictionary({{"AllDevSettings", bundle}, {"ReturnStatus", 0}});
}

TEST_F(RequestDispatcherTest, RegistersAClientAndTakesItsDefaultSettings) {
  EXPECT_EQ(answerTo(0, registration()), accepted);
  EXPECT_EQ(store.bundle(), bundle("application"));
  EXPECT_EQ(clients.present(), (std::vector<Client>{{client, port, 273}}));
}

TEST_F(RequestDispatcherTest, RegistersForTheWirelessProductToo) {
  EXPECT_EQ(answerTo(0, registration(0)), accepted);
  EXPECT_EQ(clients.present(), (std::vector<Client>{{client, port, 0}}));
}

TEST_F(RequestDispatcherTest, RegistersWithTheEnginesOwnDefaultSettingsWhereNoneAreNamed) {
  EXPECT_EQ(answerTo(0, registration().without("DefaultVrPlistPath")), accepted);
  EXPECT_EQ(store.bundle(), bundle("own"));
}

TEST_F(RequestDispatcherTest, ChangesNothingForAnUnknownProduct) {
  store.fill(bundle("Old"));
  const PropertyList before = store.bundle();
  const PropertyList request = plainRequest()
                                   .with("ProductID", 999)
                                   .with("ProfileID", 0)
                                   .with("DeviceSettingsDictionary", dictionary({{"ProfileName", "New"}}));
  EXPECT_EQ(answerTo(6, request), dictionary({{"ReturnStatus", 3}}));
  EXPECT_EQ(store.bundle(), before);
  EXPECT_EQ(lines, Lines{"vorn-core-engine: client :1.7: request 6 (update profile) is for the unknown product 999"});
}

TEST_F(RequestDispatcherTest, ServesForAnUnknownProductOnlyWhatLooksAtTheProductItself) {
  struct Observer : RequestObserver {
    void hasServed(const RequestKind& kind, const Request&) override {
      served.insert(static_cast<std::int32_t>(kind.messageID));
    }
    std::set<std::int32_t> served;
  } observer;
  dispatcher.setObserver(&observer);
  for (const RequestKind& kind : requestKinds()) {
    send(static_cast<std::int32_t>(kind.messageID), plainRequest().with("ProductID", 999));
  }
  EXPECT_EQ(observer.served, (std::set<std::int32_t>{0, 14, 15, 16, 38}));
}

TEST_F(RequestDispatcherTest, TellsThatTheMouseIsAbsentAndRemembersTheClient) {
  device.setConnection(Connection::Absent);
  EXPECT_EQ(answerTo(0, registration()), refused);
  EXPECT_EQ(store.bundle(), bundle("application"));
  EXPECT_EQ(clients.present().size(), 1U);
}

TEST_F(RequestDispatcherTest, RegistersWhileTheMouseIsWireless) {
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(answerTo(0, registration()), accepted);
}

TEST_F(RequestDispatcherTest, RefusesOtherProducts) {
  EXPECT_EQ(answerTo(0, registration(274)), refused);
  EXPECT_TRUE(store.isEmpty());
  EXPECT_TRUE(clients.present().empty());
  EXPECT_EQ(lines, Lines{"vorn-core-engine: client :1.7: registers the unknown product 274"});
}

TEST_F(RequestDispatcherTest, RefusesARegistrationWhoseDefaultSettingsAreUnusable) {
  EXPECT_EQ(answerTo(0, registration().with("DefaultVrPlistPath", "/none")), refused);
  EXPECT_TRUE(store.isEmpty());
  EXPECT_TRUE(clients.present().empty());
  EXPECT_EQ(lines, Lines{"vorn-core-engine: client :1.7: there are no settings yet and /none gives none: No such file "
                         "or directory"});
}

TEST_F(RequestDispatcherTest, KeepsStoredSettingsWhateverARegistrationBrings) {
  store.fill(bundle("mine"));
  EXPECT_EQ(answerTo(0, registration()), accepted);
  EXPECT_EQ(answerTo(0, registration().with("DefaultVrPlistPath", "relative")), accepted);
  EXPECT_EQ(store.bundle(), bundle("mine"));
}

TEST_F(RequestDispatcherTest, AnswersOnlyAfterTheSettingsAreOnTheDisk) {
  for (int operation = 1;; ++operation) {
    disk = MemoryFileSystem();
    putDefaults();
    disk.crashAt(operation);
    try {
      send(0, registration());
      break;
    } catch (const MemoryFileSystem::Crash&) {
      EXPECT_EQ(ports.answers, Answers()) << operation;
    }
    ASSERT_LT(operation, 100);
  }
  EXPECT_EQ(ports.answers, (Answers{{port, 0, accepted}}));
}

TEST_F(RequestDispatcherTest, GivesAllSettings) {
  store.fill(bundleOf({profile("one"), profile("two")}, 1));
  EXPECT_EQ(answerTo(4, plainRequest()), allSettings(bundleOf({profile("one"), profile("two")}, 1)));
}

TEST_F(RequestDispatcherTest, GivesItsOwnDefaultSettingsBeforeAnyRegistration) {
  EXPECT_EQ(answerTo(4, plainRequest()), allSettings(bundle("own")));
}

TEST_F(RequestDispatcherTest, GivesAStatusWithoutAnySettings) {
  disk.remove(ownDefaults);
  EXPECT_EQ(answerTo(4, plainRequest()), dictionary({{"ReturnStatus", 1}}));
  EXPECT_EQ(lines, Lines{"vorn-core-engine: client :1.7: there are no settings yet and /own/Skarn.plist gives none: No "
                         "such file or directory"});
}

TEST_F(RequestDispatcherTest, GivesSettingsOfALargeDevice) {
  std::vector<PropertyList> macros(1000, dictionary({{"MacroName", "M"}, {"sequence", dictionary({})}}));
  const PropertyList large = bundle().with("Macros", PropertyList::array(std::move(macros)));
  store.fill(large);
  EXPECT_EQ(answerTo(4, plainRequest()), allSettings(large));
}

TEST_F(RequestDispatcherTest, ReleasesAClientWithoutAnAnswer) {
  send(0, registration());
  ports.answers.clear();
  send(38, dictionary({{"ProductID", 273}}));
  EXPECT_EQ(ports.answers, Answers());
  EXPECT_TRUE(clients.present().empty());
  EXPECT_EQ(lines, Lines{"vorn-core-engine: took the default settings of /app/Skarn.plist"});
}

TEST_F(RequestDispatcherTest, SurvivesMessagesThatItDoesNotKnow) {
  for (const std::int32_t messageID : {-1, 1, 3, 2'000'000'000}) send(messageID, plainRequest());
  EXPECT_EQ(ports.answers, Answers());
  EXPECT_EQ(lines, Lines{"vorn-core-engine: client :1.7: unknown message -1"});
}

TEST_F(RequestDispatcherTest, SurvivesBodiesThatAreNoDictionary) {
  sendBytes(4, {});
  sendBytes(0, {'b', 'p', 'l', 'i', 's', 't', '0', '0'});
  send(4, PropertyList::array({1, 2}));
  EXPECT_EQ(ports.answers, Answers());
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_TRUE(lines[0].starts_with("vorn-core-engine: client :1.7: request 4 (get all settings) cannot be decoded: "))
      << lines[0];
  EXPECT_EQ(lines[1], "vorn-core-engine: client :1.7: request 4 (get all settings) is no dictionary");
}

TEST_F(RequestDispatcherTest, SurvivesBodiesCutOffAnywhere) {
  const Bytes whole = encodeBinaryPropertyList(registration()).value();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    sendBytes(0, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
  }
  EXPECT_EQ(ports.answers, Answers());
  EXPECT_TRUE(store.isEmpty());
}

TEST_F(RequestDispatcherTest, SurvivesValuesOfOtherTypes) {
  const PropertyList odd = PropertyList::array({dictionary({})});
  EXPECT_EQ(answerTo(0, dictionary({{"ProductID", odd}, {"DefaultVrPlistPath", odd}, {"ResponseMsgPortName", port}})),
            accepted);
  send(0, registration().with("ResponseMsgPortName", odd));
  EXPECT_EQ(ports.answers.size(), 1U);
}

TEST_F(RequestDispatcherTest, TellsWhyARequestHasNoAnswer) {
  store.fill(bundle());
  send(4, dictionary({}));
  send(4, plainRequest().with("ResponseMsgPortName", "Gone"));
  ports.isBroken = true;
  send(4, plainRequest());
  EXPECT_EQ(lines, (Lines{"vorn-core-engine: client :1.7: no answer to request 4 (get all settings): it names no port "
                          "of a client ()",
                          "vorn-core-engine: client :1.7: no answer to request 4 (get all settings): there is no such "
                          "port (Gone)",
                          "vorn-core-engine: client :1.7: no answer to request 4 (get all settings): the port cannot "
                          "be reached (ClientPort)"}));
}

TEST_F(RequestDispatcherTest, NeverAnswersItself) {
  ports.names.insert("VornCoreEngineMsgPort");
  send(4, plainRequest().with("ResponseMsgPortName", "VornCoreEngineMsgPort"));
  EXPECT_EQ(ports.answers, Answers());
}

TEST_F(RequestDispatcherTest, TracesRequestsAndAnswersWhenAskedTo) {
  log.setVerbose(true);
  device.setConnection(Connection::Absent);
  store.fill(bundle());
  send(0, dictionary({{"ResponseMsgPortName", port}}));
  EXPECT_EQ(lines, (Lines{"vorn-core-engine: request 0 (register device) of :1.7: " +
                              dictionary({{"ResponseMsgPortName", port}}).description(),
                          "vorn-core-engine: answer 0 (register device) to ClientPort: " + refused.description()}));
}

TEST_F(RequestDispatcherTest, TellsItsObserverOfARequestWhenItsAnswerHasLeft) {
  struct Observer : RequestObserver {
    explicit Observer(const MemoryPorts& ports) : mPorts(ports) {}
    void hasServed(const RequestKind& kind, const Request& request) override {
      calls.push_back(std::string(kind.name) + " of " + request.sender +
                      ", answers: " + std::to_string(mPorts.answers.size()));
    }
    const MemoryPorts& mPorts;
    Lines calls;
  } observer(ports);
  dispatcher.setObserver(&observer);
  send(4, plainRequest());
  send(38, plainRequest());
  send(99, plainRequest());
  sendBytes(4, {});
  EXPECT_EQ(observer.calls, (Lines{"get all settings of :1.7, answers: 1", "release device of :1.7, answers: 1"}));
  dispatcher.setObserver(nullptr);
  send(4, plainRequest());
  EXPECT_EQ(observer.calls.size(), 2U);
}

}  // namespace
}  // namespace vorn::engine::test
