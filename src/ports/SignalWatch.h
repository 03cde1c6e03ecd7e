// Hears a signal of an object on the session bus. Belongs to the thread that made it, whose run loop calls the handler.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace vorn {

class SignalWatch {
 public:
  // Called with the unique bus name of the connection that has sent the signal; anybody can send it. May end the watch.
  using Handler = std::function<void(const std::string& sender)>;

  // Without a bus nothing is heard.
  SignalWatch(const std::string& path, const std::string& interface, const std::string& signal, Handler received);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
