// The program itself on a bus of its own, spoken to as a client speaks to it.
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/TestBundle.h"
#include "link/PortEngineLink.h"
#include "model/PropertyListCodec.h"
#include "ports/BusConnection.h"
#include "ports/BusMethodCall.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "ports/ServiceActivation.h"
#include "protocol/EngineProtocol.h"
#include "support/BusPump.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::ChildProcess;
using vorn::test::serveBusUntil;
using namespace std::chrono_literals;
using vorn::test::PrivateBus;
using Arguments = std::vector<std::string>;

const PropertyList accepted = PropertyList::dictionary({{"ReturnStatus", true}});
const PropertyList refused = PropertyList::dictionary({{"ReturnStatus", false}});

PropertyList allSettings(const PropertyList& bundle) {
  return PropertyList::dictionary({{"AllDevSettings", bundle}, {"ReturnStatus", 0}});
}

PropertyList changed(const PropertyList& bundle) {
  return PropertyList::dictionary({{"ReturnDictionary", bundle}, {"ReturnStatus", 0}});
}

PropertyList notSaved(const PropertyList& bundle) {
  return PropertyList::dictionary({{"ReturnDictionary", bundle}, {"ReturnStatus", 4}});
}

// The program with its log on the output that ChildProcess reads. The shell runs it with the prefix before its words.
std::unique_ptr<ChildProcess> start(const Arguments& arguments, const Arguments& environment = {},
                                    const std::string& prefix = "exec") {
  Arguments commandLine = {"env"};
  commandLine.insert(commandLine.end(), environment.begin(), environment.end());
  const std::string script = prefix + " \"$0\" \"$@\" 2>&1";
  for (const std::string& word : Arguments{"/bin/sh", "-c", script, CORE_ENGINE_PROGRAM}) commandLine.push_back(word);
  commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
  return std::make_unique<ChildProcess>(commandLine);
}

std::optional<std::string> firstLine(ChildProcess& process) {
  return process.waitForLine([](const std::string&) { return true; });
}

bool saysSoon(ChildProcess& process, std::string_view text) {
  return process.waitForLine([&](const std::string& line) { return line.find(text) != std::string::npos; }).has_value();
}

// Stops all threads of a child but its first one, so that a save of the engine takes as long as the test wants.
class HeldThreads {
 public:
  explicit HeldThreads(pid_t process) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
      const pid_t thread = std::stoi(entry.path().filename());
      if (thread == process || ptrace(PTRACE_SEIZE, thread, nullptr, nullptr) != 0) continue;
      ptrace(PTRACE_INTERRUPT, thread, nullptr, nullptr);
      if (waitpid(thread, nullptr, __WALL) == thread) mThreads.push_back(thread);
    }
  }
  ~HeldThreads() {
    for (const pid_t thread : mThreads) ptrace(PTRACE_DETACH, thread, nullptr, nullptr);
  }
  HeldThreads(const HeldThreads&) = delete;
  HeldThreads& operator=(const HeldThreads&) = delete;

  bool isEmpty() const { return mThreads.empty(); }

 private:
  std::vector<pid_t> mThreads;
};

class CoreEngineProgramTest : public testing::Test {
 protected:
  // Starts an engine on the state folder and waits until it is ready.
  std::unique_ptr<ChildProcess> startEngine(const Arguments& more = {}, const std::string& prefix = "exec") {
    Arguments arguments = {"--state-dir", state};
    arguments.insert(arguments.end(), more.begin(), more.end());
    auto engine = start(arguments, {}, prefix);
    EXPECT_TRUE(saysSoon(*engine, "ready, "));
    return engine;
  }

  PropertyList request() const {
    return PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", replyPort}});
  }
  PropertyList registration() const { return request().with("DefaultVrPlistPath", defaults); }

  // What the engine answers; none when it does not.
  PropertyList answerTo(MessageID messageID, const PropertyList& body) {
    if (!link.createLocalPort()) return {};
    link.emptySlot();
    link.send(body, messageID);
    return link.waitForReply() ? link.reply() : PropertyList();
  }

  PropertyList renaming(std::string_view name) const {
    return request()
        .with("ProfileID", 0)
        .with("DeviceSettingsDictionary", PropertyList::dictionary({{"ProfileName", name}}));
  }

  const std::string replyPort = "CoreEngineTestReplyPort";
  PrivateBus bus;
  TemporaryFolder folder;
  const std::string state = folder.path("state");
  const std::string defaults =
      folder.write("Skarn.plist", encodeBinaryPropertyList(defaultsFile(bundle("factory"))).value());
  PortEngineLink link{replyPort};
};

TEST_F(CoreEngineProgramTest, TellsWhenItIsReady) {
  const auto engine = start({"--state-dir", state});
  EXPECT_EQ(firstLine(*engine), "vorn-core-engine: ready, profiles: 0, macros: 0, settings in " + state);
}

TEST_F(CoreEngineProgramTest, RegistersAClientAndGivesItAllSettings) {
  const auto engine = startEngine();
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, RegistersNobodyWhileTheMouseIsAbsent) {
  const auto engine = startEngine({"--device", "absent"});
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), refused);
}

TEST_F(CoreEngineProgramTest, TakesTheDefaultsOfItsCommandLineForAClientWithoutAny) {
  const auto engine = startEngine({"--defaults", defaults});
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, FindsTheDefaultsThatItWasBuiltWith) {
  const auto engine = startEngine();
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, request()), accepted);
  const PropertyList settings = answerTo(MessageID::GetAllSettings, request())["AllDevSettings"];
  EXPECT_EQ(settings, readPropertyListFile(BUILT_DEFAULTS).value()["Default Settings"]);
}

TEST_F(CoreEngineProgramTest, KeepsTheSettingsWhenItIsKilled) {
  auto engine = startEngine();
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
  engine->signal(SIGKILL);
  EXPECT_EQ(engine->waitForEnd(), 128 + SIGKILL);
  std::filesystem::remove(defaults);
  engine = start({"--state-dir", state});
  EXPECT_EQ(firstLine(*engine), "vorn-core-engine: ready, profiles: 1, macros: 0, settings in " + state);
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, MovesDamagedSettingsAside) {
  std::filesystem::create_directory(state);
  folder.write("state/settings.plist", Bytes{'n', 'o'});
  const auto engine = startEngine();
  EXPECT_EQ(folder.read("state/settings.plist.damaged-1"), (Bytes{'n', 'o'}));
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
  EXPECT_EQ(readPropertyListFile(folder.path("state/settings.plist")), bundle("factory"));
}

TEST_F(CoreEngineProgramTest, ServesTheDefaultsWhereNothingCanBeWritten) {
  folder.write("file", {});
  const std::string impossible = folder.path("file") + "/state";
  const auto engine = start({"--state-dir", impossible});
  EXPECT_TRUE(saysSoon(*engine, "cannot write to " + impossible + ": Not a directory"));
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
  EXPECT_TRUE(saysSoon(*engine, "cannot save the settings in " + impossible + ": Not a directory"));
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, KeepsAndServesWhatIsStoredWhenTheDiskTakesNoMore) {
  auto engine = startEngine({"--defaults", defaults});
  EXPECT_EQ(answerTo(MessageID::UpdateProfile, renaming("stored")), changed(bundle("stored")));
  engine.reset();
  // No file may grow beyond 512 bytes.
  engine = startEngine({}, "ulimit -f 1; exec");
  EXPECT_EQ(answerTo(MessageID::UpdateProfile, renaming("refused")), notSaved(bundle("stored")));
  EXPECT_TRUE(saysSoon(*engine, "cannot save the settings in " + state + ": File too large"));
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("stored")));
  engine.reset();
  engine = startEngine();
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("stored")));
  EXPECT_EQ(answerTo(MessageID::UpdateProfile, renaming("new")), changed(bundle("new")));
}

TEST_F(CoreEngineProgramTest, KeepsWhatIsStoredInAFolderThatCannotBeWrittenAndTakesChangesAgainWhenItCan) {
  // Nothing is forbidden to root as long as it has its capabilities.
  const bool isRoot = geteuid() == 0;
  const std::string prefix = isRoot ? "exec setpriv --inh-caps=-all --bounding-set=-all" : "exec";
  const auto engine = startEngine({"--defaults", defaults}, prefix);
  EXPECT_EQ(answerTo(MessageID::UpdateProfile, renaming("stored")), changed(bundle("stored")));
  namespace fs = std::filesystem;
  fs::permissions(state, fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_EQ(answerTo(MessageID::UpdateProfile, renaming("refused")), notSaved(bundle("stored")));
  EXPECT_TRUE(saysSoon(*engine, "cannot save the settings in " + state + ": Permission denied"));
  EXPECT_EQ(readPropertyListFile(folder.path("state/settings.plist")), bundle("stored"));
  fs::permissions(state, fs::perms::owner_all);
  EXPECT_EQ(answerTo(MessageID::UpdateProfile, renaming("new")), changed(bundle("new")));
  EXPECT_TRUE(saysSoon(*engine, "the settings are saved again"));
  EXPECT_EQ(readPropertyListFile(folder.path("state/settings.plist")), bundle("new"));
}

TEST_F(CoreEngineProgramTest, EndsCleanlyOnSignals) {
  for (const int number : {SIGTERM, SIGINT}) {
    const auto engine = startEngine();
    engine->signal(number);
    EXPECT_EQ(engine->waitForEnd(), 0);
  }
}

TEST_F(CoreEngineProgramTest, AnswersWhatItHasTakenBeforeItEndsOnASignal) {
  const auto engine = startEngine({"--defaults", defaults});
  std::vector<PropertyList> answers;
  const auto local = LocalMessagePort::create(replyPort, [&](const LocalMessagePort::Message& message) {
    answers.push_back(decodeBinaryPropertyList(message.data).value_or(PropertyList()));
    return Bytes();
  });
  const auto port = RemoteMessagePort::lookUp(enginePortName);
  ASSERT_TRUE(local && port);
  constexpr std::size_t count = 40;
  for (std::size_t number = 0; number < count; ++number) {
    const Bytes data = encodeBinaryPropertyList(renaming(std::to_string(number))).value();
    // Returns when the engine has taken the request.
    ASSERT_EQ(port->sendRequest(6, data, sendTimeout), RemoteMessagePort::Status::Success);
  }
  engine->signal(SIGTERM);
  EXPECT_EQ(engine->waitForEnd(), 0);
  ASSERT_TRUE(serveBusUntil([&] { return answers.size() == count; }));
  // The first ones are done, and what the time did not suffice for is refused.
  std::size_t saved = 0;
  while (saved < count && answers[saved] == changed(bundle(std::to_string(saved)))) ++saved;
  EXPECT_GT(saved, 0U);
  const PropertyList last = bundle(std::to_string(saved - 1));
  for (std::size_t number = saved; number < count; ++number) EXPECT_EQ(answers[number], notSaved(last)) << number;
  EXPECT_EQ(readPropertyListFile(folder.path("state/settings.plist")), last);
}

TEST_F(CoreEngineProgramTest, RunsOnceInASession) {
  const auto engine = startEngine();
  const auto second = start({"--state-dir", folder.path("other")});
  EXPECT_EQ(firstLine(*second), "vorn-core-engine: another engine already runs in this session");
  EXPECT_EQ(second->waitForEnd(), 3);
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
}

TEST_F(CoreEngineProgramTest, IsThereWhenTheBusSaysThatItHasStartedIt) {
  bus.installService(engineServiceName, std::string(CORE_ENGINE_PROGRAM) + " --state-dir " + state);
  const ServiceStart started = startServiceAndWait(engineServiceName, 20s);
  EXPECT_EQ(started.status, ServiceStart::Status::Running) << started.error;
  EXPECT_TRUE(RemoteMessagePort::lookUp(enginePortName));
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
}

TEST_F(CoreEngineProgramTest, ServesThoughAnotherProgramHasItsServiceName) {
  const auto name = ServiceName::claim(engineServiceName);
  const auto engine = start({"--state-dir", state});
  EXPECT_EQ(
      firstLine(*engine),
      "vorn-core-engine: the engine cannot be started on demand: Another program has the name: org.vorn.CoreEngine");
  EXPECT_TRUE(saysSoon(*engine, "ready, "));
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
}

TEST_F(CoreEngineProgramTest, HasItsSettingsForItselfAcrossSessions) {
  const auto engine = startEngine();
  const PrivateBus otherSession;
  const auto second = start({"--state-dir", state});
  EXPECT_EQ(firstLine(*second), "vorn-core-engine: another engine uses the settings in " + state);
  EXPECT_EQ(second->waitForEnd(), 3);
}

TEST_F(CoreEngineProgramTest, NeedsABus) {
  const auto engine = start({"--state-dir", state}, {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"});
  EXPECT_TRUE(saysSoon(*engine, "vorn-core-engine: cannot reach the session bus: "));
  EXPECT_EQ(engine->waitForEnd(), 1);
}

TEST_F(CoreEngineProgramTest, EndsWithItsBus) {
  const auto engine = startEngine();
  bus.end();
  EXPECT_EQ(firstLine(*engine), "vorn-core-engine: the session bus is gone");
  EXPECT_EQ(engine->waitForEnd(), 1);
}

TEST_F(CoreEngineProgramTest, NeedsAFolderForItsSettings) {
  const auto engine = start({}, {"-u", "HOME", "-u", "XDG_STATE_HOME"});
  EXPECT_EQ(firstLine(*engine),
            "vorn-core-engine: neither XDG_STATE_HOME nor HOME names a folder for the settings; use --state-dir");
  EXPECT_EQ(engine->waitForEnd(), 1);
}

TEST_F(CoreEngineProgramTest, RefusesAWrongCommandLine) {
  const auto engine = start({"--fast"});
  EXPECT_EQ(firstLine(*engine), "vorn-core-engine: unknown option --fast; --help lists the options");
  EXPECT_EQ(engine->waitForEnd(), 2);
}

TEST_F(CoreEngineProgramTest, PrintsItsHelpAndItsVersion) {
  const auto help = start({"--help"});
  EXPECT_EQ(firstLine(*help), "Usage: vorn-core-engine [OPTION]...");
  EXPECT_EQ(help->waitForEnd(), 0);
  const auto version = start({"--version"});
  EXPECT_EQ(firstLine(*version), "vorn-core-engine " SKARN_VERSION);
  EXPECT_EQ(version->waitForEnd(), 0);
}

TEST_F(CoreEngineProgramTest, ReturnsNothingToTheSendItself) {
  const auto engine = startEngine();
  const auto port = RemoteMessagePort::lookUp(enginePortName);
  ASSERT_TRUE(port);
  Bytes returned = {1};
  const Bytes data = encodeBinaryPropertyList(registration()).value();
  EXPECT_EQ(port->sendRequest(0, data, sendTimeout, &returned), RemoteMessagePort::Status::Success);
  EXPECT_EQ(returned, Bytes());
}

TEST_F(CoreEngineProgramTest, SurvivesMessagesThatMakeNoSense) {
  const auto engine = startEngine({"--defaults", defaults});
  const auto port = RemoteMessagePort::lookUp(enginePortName);
  ASSERT_TRUE(port);
  const Bytes garbage = {0, 255, '\n', 'x'};
  EXPECT_EQ(port->sendRequest(99, garbage, sendTimeout), RemoteMessagePort::Status::Success);
  EXPECT_TRUE(saysSoon(*engine, ": unknown message 99"));
  EXPECT_EQ(port->sendRequest(4, garbage, sendTimeout), RemoteMessagePort::Status::Success);
  EXPECT_TRUE(saysSoon(*engine, ": request 4 (get all settings) cannot be decoded: "));
  EXPECT_EQ(port->sendRequest(4, {}, sendTimeout), RemoteMessagePort::Status::Success);
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, TakesLargeRequestsAndRefusesThoseThatNoRequestNeeds) {
  const auto engine = startEngine({"--defaults", defaults});
  const auto withBallast = [this](std::size_t size) {
    return request().with("Ballast", PropertyList::data(Bytes(size)));
  };
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, withBallast(4'000'000)), allSettings(bundle("factory")));
  const auto port = RemoteMessagePort::lookUp(enginePortName);
  ASSERT_TRUE(port);
  EXPECT_EQ(port->sendRequest(4, encodeBinaryPropertyList(withBallast(4'200'000)).value(), sendTimeout),
            RemoteMessagePort::Status::TransportError);
  EXPECT_TRUE(saysSoon(*engine, "messages refused: 1, the last one of client :"));
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, DoesNotWaitForAClientThatTakesNoAnswers) {
  const auto engine = startEngine({"--defaults", defaults});
  // This thread never serves the port it creates here.
  const auto deaf = LocalMessagePort::create("DeafPort", [](const LocalMessagePort::Message&) { return Bytes(); });
  ASSERT_TRUE(deaf);
  for (int count = 0; count < 200; ++count) {
    sendRequest(request().with("ResponseMsgPortName", "DeafPort"), MessageID::GetAllSettings);
  }
  EXPECT_TRUE(saysSoon(*engine, "no answer to request 4 (get all settings): too many answers are unread"));
  EXPECT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
}

TEST_F(CoreEngineProgramTest, HearsTheMouseAndItsClientsWhileTheDiskTakesItsTime) {
  const auto engine = startEngine({"--defaults", defaults});
  ASSERT_EQ(answerTo(MessageID::GetAllSettings, request()), allSettings(bundle("factory")));
  const BusTarget mouse{"org.vorn.VirtualMouse", "/org/vorn/VirtualMouse", "org.vorn.VirtualMouse1"};
  const auto succeeds = [&](const char* method, const std::vector<BusInput>& inputs) {
    return callBusMethod(mouse, method, inputs, 20s).status == BusAnswer::Status::Success;
  };
  const auto keymap = [&] {
    return readPropertyListFile(folder.path("state/settings.plist")).value()["Profiles"].at(0)["KeymapID"];
  };
  {
    const HeldThreads held(engine->id());
    ASSERT_FALSE(held.isEmpty());
    sendRequest(renaming("new"), MessageID::UpdateProfile);
    EXPECT_TRUE(succeeds("SetBattery", {{"i", 50}}));
    EXPECT_TRUE(succeeds("Type", {{"u", 7}, {"u", 4}, {"b", true}}));
    // What a control does waits for the save, and what comes behind it waits with it; nobody else does.
    EXPECT_TRUE(postBusMethod(mouse, "Press", {{"s", "keymap"}}));
    EXPECT_TRUE(postBusMethod(mouse, "Release", {{"s", "keymap"}}));
    sendRequest(request(), MessageID::GetAllSettings);
    EXPECT_TRUE(succeeds("State", {}));
    EXPECT_EQ(keymap(), PropertyList(0));
  }
  EXPECT_TRUE(succeeds("Press", {{"s", "keymap"}}));
  EXPECT_EQ(keymap(), PropertyList(2));
}

TEST_F(CoreEngineProgramTest, TellsNoMoreKeysWhenTheClientThatCapturesThemVanishes) {
  const auto engine = startEngine();
  int keys = 0;
  auto& center = DistributedNotificationCenter::defaultCenter();
  center.addObserver(this, "SingleKeyEvent273", [&](const Notification&) { ++keys; });
  const auto type = [] {
    for (const bool isPressed : {true, false}) {
      callBusMethod({"org.vorn.VirtualMouse", "/org/vorn/VirtualMouse", "org.vorn.VirtualMouse1"}, "Type",
                    {{"u", 7}, {"u", 4}, {"b", isPressed}}, 20s);
    }
  };
  {
    PortEngineLink other("VanishingReplyPort");
    ASSERT_TRUE(other.createLocalPort());
    other.send(request().with("ResponseMsgPortName", "VanishingReplyPort"), MessageID::StartSingleKeyRecording);
    ASSERT_TRUE(other.waitForReply());
    type();
    ASSERT_TRUE(serveBusUntil([&] { return keys == 1; }));
  }
  // As soon as the bus knows that the port is gone, so does the engine before it hears the next call.
  ASSERT_TRUE(serveBusUntil([] { return !RemoteMessagePort::lookUp("VanishingReplyPort"); }));
  type();
  EXPECT_EQ(answerTo(MessageID::StopSingleKeyRecording, request())["ReturnStatus"], PropertyList(7));
  ASSERT_TRUE(BusConnection::forThisThread().process());
  EXPECT_EQ(keys, 1);
  center.removeObserver(this);
}

TEST_F(CoreEngineProgramTest, DoesNotCaptureForAClientThatHasNoPort) {
  const auto engine = startEngine({"--verbose"});
  int keys = 0;
  auto& center = DistributedNotificationCenter::defaultCenter();
  center.addObserver(this, "SingleKeyEvent273", [&](const Notification&) { ++keys; });
  const std::string asked = "request 29 (start single-key recording) of :";
  for (const auto& [port, said] : std::vector<std::pair<std::string, std::string>>{
           {"", asked},
           {"VornCoreEngineMsgPort", asked},
           {"MissingPort", "answer 29 (start single-key recording) to MissingPort"}}) {
    sendRequest(request().with("ResponseMsgPortName", port), MessageID::StartSingleKeyRecording);
    ASSERT_TRUE(saysSoon(*engine, said));
    callBusMethod({"org.vorn.VirtualMouse", "/org/vorn/VirtualMouse", "org.vorn.VirtualMouse1"}, "Type",
                  {{"u", 7}, {"u", 4}, {"b", true}}, 20s);
  }
  answerTo(MessageID::GetAllSettings, request());
  ASSERT_TRUE(BusConnection::forThisThread().process());
  EXPECT_EQ(keys, 0);
  center.removeObserver(this);
}

TEST_F(CoreEngineProgramTest, LogsRequestsAndAnswersWhenAskedTo) {
  const auto engine = startEngine({"--verbose"});
  EXPECT_EQ(answerTo(MessageID::RegisterDevice, registration()), accepted);
  EXPECT_TRUE(saysSoon(*engine, "request 0 (register device) of :"));
  EXPECT_TRUE(saysSoon(*engine, "answer 0 (register device) to " + replyPort + ": "));
}

}  // namespace
}  // namespace vorn::engine::test
