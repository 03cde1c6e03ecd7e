// A Wayland compositor of a test's own: Sway without a screen, which does not run as root.
#pragma once

#include <memory>
#include <string>

namespace vorn::test {

class ChildProcess;

class Sway {
 public:
  // In an empty folder, which holds its socket, with some lines of configuration besides the screen's. Waits until it
  // takes clients. Null, with a message on standard error, when it does not start.
  static std::unique_ptr<Sway> start(const std::string& folder, const std::string& configuration = {});
  ~Sway();  // ends it
  Sway(const Sway&) = delete;
  Sway& operator=(const Sway&) = delete;

  const std::string& socket() const { return mSocket; }  // the absolute path
  // Whether it did what it was told, in the words of sway(5); it has done it then.
  bool obeys(const std::string& command) const;
  // As seen by programs whose compositor dies, or hangs for a while.
  void kill();
  void pause();
  void resume();

 private:
  Sway();

  std::string mFolder;
  std::string mSocket;
  std::unique_ptr<ChildProcess> mProcess;
};

}  // namespace vorn::test
