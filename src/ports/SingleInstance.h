// One running program per user: the first one owns the bus name of its identifier, a further one asks it to come to
// the front. The request is Activate(a{sv}) of org.freedesktop.Application (Desktop Entry Specification 1.5,
// "D-Bus activation") on the object path made of the identifier.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class SingleInstance {
 public:
  // The handler runs on this thread, from its connection's process(); token is the desktop's activation token of the
  // program that asked, or empty.
  using ActivateHandler = std::function<void(const std::string& token)>;

  // Claims the identifier on this thread's connection. Null when another program owns it or there is no bus;
  // *isTaken tells which.
  static std::unique_ptr<SingleInstance> claim(std::string_view identifier, ActivateHandler handler,
                                               bool* isTaken = nullptr);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Asks the running program to come to the front; false when it did not answer.
  static bool activateOther(std::string_view identifier, const std::string& token);

 private:
  SingleInstance();
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
