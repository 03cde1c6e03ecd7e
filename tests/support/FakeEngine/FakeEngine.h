// fake-engine: a peer in the engine's place that does what a script says, for tests of the link and of the
// configurator in which the engine is slow, silent, dying or talking nonsense.
//
//   fake-engine [--port NAME] [--do COMMAND]... [--ignore-input]
//
// --port NAME      the message port to own, by default the engine's
// --do COMMAND     a command to obey before the port exists; may be given again
// --ignore-input   do not read standard input; otherwise its end ends the program
//
// Commands, one a line on standard input (words with blanks in "...", \ before a " or \ inside a word):
//
//   on ID ACTION [; ACTION]...   what to do for each further request with this message ID; replaces what was said
//                                before. ID * is for all requests that have no command of their own.
//   ACTION [; ACTION]...         do it now; an answer goes to the reply port of the latest request that named one
//   quit                         end with status 0
//
// Actions, each with "after MS" before it to wait so many milliseconds first:
//
//   reply FILE                   answer with this property list (XML or binary), sent as a binary one
//   data HEX                     answer with these bytes, also bytes that are no property list
//   empty                        answer with no data
//   silent                       nothing; also what happens to a request that nothing was said about
//   post NAME [OBJECT [FILE]]    post a distributed notification, its user information from the file
//   exit [STATUS]                end at once; without a delay before Send returns, as a crash does
//   freeze                       never do anything again; without a delay Send never returns
//
// Two answers: on 4 reply first.plist ; reply second.plist
//
// Output, one line each, flushed:
//
//   ready                        the port exists
//   request ID HEX TEXT          a request came: its data in hexadecimal ("-" for none), and as readable text
//   sent PORT STATUS             an answer was sent: success, no-port, timeout or failed
//   ok LINE / error REASON       a command of standard input was obeyed or not understood
//
// Status 0 after quit or the end of input, 2 for a wrong command line, 3 when the port cannot be had.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Script.h"
#include "ports/MessagePort.h"
#include "ports/RunLoop.h"

namespace vorn::test {

class FakeEngine {
 public:
  explicit FakeEngine(RunLoop& loop) : mLoop(loop) {}

  // Takes the port and announces itself; false when that fails.
  bool open(const std::string& portName);

  // Obeys one line; false, with the reason in error, when it is no command.
  bool obey(const std::string& line, std::string* error);

 private:
  Bytes receive(const LocalMessagePort::Message& message);
  void start(const Action& action, std::int32_t messageID, const std::string& replyPort, bool isInsideSend);
  void perform(const Action& action, std::int32_t messageID, const std::string& replyPort);

  RunLoop& mLoop;
  std::unique_ptr<LocalMessagePort> mPort;
  std::map<std::int32_t, std::vector<Action>> mActionsOfMessage;
  std::vector<Action> mOtherwise;
  std::int32_t mLatestMessageID = 0;
  std::string mLatestReplyPort;
};

// One line of output.
void say(const std::string& line);

}  // namespace vorn::test
