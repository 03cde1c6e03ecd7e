#include "FakeEngine.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "model/PropertyListCodec.h"
#include "ports/DistributedNotificationCenter.h"
#include "protocol/EngineProtocol.h"

namespace vorn::test {

namespace {

std::string statusText(RemoteMessagePort::Status status) {
  switch (status) {
    case RemoteMessagePort::Status::Success:
      return "success";
    case RemoteMessagePort::Status::Timeout:
      return "timeout";
    case RemoteMessagePort::Status::InvalidPort:
      return "no-port";
    case RemoteMessagePort::Status::TransportError:
      break;
  }
  return "failed";
}

std::string sendAnswer(const std::string& portName, std::int32_t messageID, BytesView data) {
  const auto port = RemoteMessagePort::lookUp(portName);
  return port ? statusText(port->sendRequest(messageID, data, sendTimeout)) : "no-port";
}

}  // namespace

void say(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

bool FakeEngine::open(const std::string& portName) {
  std::string error;
  mPort = LocalMessagePort::create(
      portName, [this](const LocalMessagePort::Message& message) { return receive(message); }, nullptr, &error);
  if (mPort)
    say("ready");
  else
    std::fprintf(stderr, "fake-engine: %s\n", error.c_str());
  return mPort != nullptr;
}

bool FakeEngine::obey(const std::string& line, std::string* error) {
  const std::optional<Command> command = parseCommand(line, error);
  if (!command) return false;
  switch (command->kind) {
    case Command::Kind::OnRequest:
      (command->messageID ? mActionsOfMessage[*command->messageID] : mOtherwise) = command->actions;
      break;
    case Command::Kind::Do:
      for (const Action& action : command->actions) start(action, mLatestMessageID, mLatestReplyPort, false);
      break;
    case Command::Kind::Quit:
      mLoop.stop();
      break;
  }
  return true;
}

Bytes FakeEngine::receive(const LocalMessagePort::Message& message) {
  const PropertyList request = decodePropertyList(message.data).value_or(PropertyList());
  say("request " + std::to_string(message.messageID) + " " + hexOf(message.data) + " " + request.description());
  mLatestMessageID = message.messageID;
  if (request.contains(requestKeys::ResponseMsgPortName))
    mLatestReplyPort = request[requestKeys::ResponseMsgPortName].toString();
  const auto found = mActionsOfMessage.find(message.messageID);
  for (const Action& action : found != mActionsOfMessage.end() ? found->second : mOtherwise)
    start(action, message.messageID, mLatestReplyPort, true);
  return {};
}

void FakeEngine::start(const Action& action, std::int32_t messageID, const std::string& replyPort, bool isInsideSend) {
  const bool endsSend = action.kind == Action::Kind::Exit || action.kind == Action::Kind::Freeze;
  if (isInsideSend && endsSend && action.delay.count() == 0) return perform(action, messageID, replyPort);
  mLoop.addTimer(action.delay, [=, this] { perform(action, messageID, replyPort); });
}

void FakeEngine::perform(const Action& action, std::int32_t messageID, const std::string& replyPort) {
  switch (action.kind) {
    case Action::Kind::Silent:
      break;
    case Action::Kind::Data:
      say("sent " + replyPort + " " + sendAnswer(replyPort, messageID, action.data));
      break;
    case Action::Kind::Post:
      DistributedNotificationCenter::defaultCenter().post(action.name, action.object, action.userInfo);
      break;
    case Action::Kind::Exit:
      std::_Exit(action.status);
    case Action::Kind::Freeze:
      while (true) pause();
  }
}

}  // namespace vorn::test
