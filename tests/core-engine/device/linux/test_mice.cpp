// A real mouse in use, worked from standard input and told of on standard output: for tests/guest/mice_test.py, which
// has the mice.
//
//   mice                                   tells every mouse: "mouse ID|name|connection|resolution|nodes|forbidden|
//                                          output allowed or forbidden|controls"
//   use ID                                 this mouse from now on
//   values X,Y ASSIGNED OTHERS POINTER CHANGES   sensitivity, the controls assigned, those assigned in other keymaps,
//                                          whether one clicks and whether one changes the sensitivity (1 or 0); lists
//                                          with commas, "-" for an empty one
//   nothing                                no values are in force
//   record RESOLUTION [CONTROL NODE TYPE CODE DIRECTION]   what is known of the mouse: NODE with "_" for blanks
//   play CONTROL PAGE USAGE                what the control presses and releases
//   emit PAGE USAGE VALUE
//   listen 1|0, teach 1|0
//
// Each command is answered with "done" after all that it has told at once. What happens is told as "control ID 1",
// "key PAGE USAGE 1 MILLISECONDS", "heard NODE|TYPE|CODE|DIRECTION", "connection NAME", "changed". Ends with its input.
#include <fcntl.h>
#include <unistd.h>

#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/Scheduler.h"
#include "core-engine/device/MouseInUse.h"
#include "core-engine/device/VirtualDevice.h"
#include "core-engine/device/linux/LinuxMice.h"
#include "ports/RunLoop.h"

namespace vorn::engine {
namespace {

template <typename Texts>
std::string joined(const Texts& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ",") + text;
  return result;
}

ControlSet controlSet(const std::string& list) {
  ControlSet set;
  std::istringstream stream(list == "-" ? "" : list);
  for (std::string control; std::getline(stream, control, ',');) set.insert(control);
  return set;
}

const char* nameOf(Device::Connection connection) {
  switch (connection) {
    case Device::Connection::Wired:
      return "wired";
    case Device::Connection::Wireless:
      return "wireless";
    default:
      return "absent";
  }
}

class Program {
 public:
  Program() {
    mInUse.setEventHandler([this](const DeviceEvent& event) { tell(event); });
    mMice.setChangeHandler([] { std::cout << "changed" << std::endl; });
    ::fcntl(STDIN_FILENO, F_SETFL, O_NONBLOCK);
    mLoop.watch(STDIN_FILENO, [this] { read(); });
  }
  ~Program() { mInUse.use(mVirtual); }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  int run() { return mLoop.run() ? 0 : 1; }

 private:
  void read() {
    char buffer[4096];
    const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (size == 0) return mLoop.stop();
    if (size > 0) mInput.append(buffer, static_cast<std::size_t>(size));
    for (std::size_t end = 0; (end = mInput.find('\n')) != std::string::npos;) {
      std::istringstream line(mInput.substr(0, end));
      mInput.erase(0, end + 1);
      std::string command;
      line >> command;
      obey(command, line);
      std::cout << "done" << std::endl;
    }
  }

  void obey(const std::string& command, std::istringstream& words) {
    if (command == "mice") return tellMice();
    if (command == "use") return use(words);
    if (command == "values") return apply(words);
    if (command == "nothing") return mInUse.apply({});
    if (command == "record") return setRecord(words);
    if (command == "play") return play(words);
    if (command == "emit") return emit(words);
    int flag = 0;
    words >> flag;
    if (command == "listen") return mInUse.setListening(flag != 0);
    if (command == "teach") return teach(flag != 0);
    std::cout << "unknown " << command << std::endl;
  }

  void tellMice() {
    for (const FoundMouse& mouse : mMice.mice()) {
      std::cout << "mouse " << mouse.id << '|' << mouse.name << '|' << nameOf(mouse.connection) << '|'
                << mouse.resolution << '|' << joined(mouse.nodes) << '|' << joined(mouse.forbidden) << '|'
                << (mouse.isOutputForbidden ? "forbidden" : "allowed") << '|' << joined(mouse.controls) << std::endl;
    }
  }

  void use(std::istringstream& words) {
    std::string id;
    words >> id;
    mInUse.use(mVirtual);
    mMouse = mMice.make(id);
    mInUse.use(*mMouse);
  }

  void apply(std::istringstream& words) {
    DeviceValues values;
    char comma = 0;
    std::string assigned;
    std::string others;
    words >> values.sensitivity.x >> comma >> values.sensitivity.y >> assigned >> others >> values.needsPointer >>
        values.changesSensitivity;
    values.assigned = controlSet(assigned);
    values.assignedInAnyKeymap = controlSet(others);
    values.assignedInAnyKeymap.insert(values.assigned.begin(), values.assigned.end());
    mInUse.apply(values);
  }

  void setRecord(std::istringstream& words) {
    MouseRecord record;
    words >> record.resolution;
    std::string control;
    EventSource source;
    int direction = 0;
    while (words >> control >> source.node >> source.type >> source.code >> direction) {
      std::replace(source.node.begin(), source.node.end(), '_', ' ');
      source.direction = static_cast<std::int8_t>(direction);
      if (!record.controls.teach(control, source)) std::cout << "refused " << control << std::endl;
    }
    mMouse->setRecord(record);
  }

  void play(std::istringstream& words) {
    std::string control;
    OutputEvent event;
    words >> control >> event.usagePage >> event.usage;
    mPlayed[control] = event;
  }

  void emit(std::istringstream& words) {
    OutputEvent event;
    words >> event.usagePage >> event.usage >> event.value;
    mInUse.emit(event);
  }

  void teach(bool isOn) {
    if (!isOn) return mMouse->teach({});
    mMouse->teach([](const EventSource& source) {
      std::cout << "heard " << source.node << '|' << source.type << '|' << source.code << '|'
                << static_cast<int>(source.direction) << std::endl;
    });
  }

  void tell(const DeviceEvent& event) {
    if (const auto* const control = std::get_if<ControlChanged>(&event)) {
      std::cout << "control " << control->control << ' ' << control->isPressed << std::endl;
      const auto played = mPlayed.find(control->control);
      if (played == mPlayed.end()) return;
      OutputEvent output = played->second;
      output.value = control->isPressed ? 1 : 0;
      mInUse.emit(output);
    } else if (const auto* const key = std::get_if<KeyChanged>(&event)) {
      std::cout << "key " << key->usagePage << ' ' << key->usage << ' ' << key->isPressed << ' '
                << key->time.value_or(std::chrono::milliseconds(-1)).count() << std::endl;
    } else if (std::holds_alternative<ConnectionChanged>(event)) {
      std::cout << "connection " << nameOf(mInUse.connection()) << std::endl;
    }
  }

  RunLoop mLoop;
  RunLoopScheduler mScheduler{mLoop};
  Log mLog;
  LinuxMice mMice{mLoop, mScheduler, mLog};
  VirtualDevice mVirtual{Device::Connection::Absent};
  std::unique_ptr<RealMouse> mMouse;
  MouseInUse mInUse{mVirtual};
  std::map<std::string, OutputEvent> mPlayed;
  std::string mInput;
};

}  // namespace
}  // namespace vorn::engine

int main() {
  vorn::engine::Program program;
  return program.run();
}
