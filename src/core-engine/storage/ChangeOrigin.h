// Who makes a change of the settings. It goes with the change from its begin to the news of it.
#pragma once

#include <string>

#include "protocol/EngineProtocol.h"

namespace vorn::engine {

struct ChangeOrigin {
  enum class Kind {
    Mouse,    // a control, or what goes back when it is let go
    Request,  // of a client
    History,  // changes are taken back or made again
  };

  Kind kind = Kind::Mouse;
  // Of a request:
  std::string client{};     // unique bus name of its connection
  std::string sourceApp{};  // empty where it gave none
  MessageID request{};
  bool isRestoring = false;     // it gives a profile all of its factory settings
  bool isContinuation = false;  // it goes on with what the client has asked for just before
  // Of a backup that is put in the place of the settings: its date.
  std::string backup{};
};

}  // namespace vorn::engine
