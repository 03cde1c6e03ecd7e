// Follows who has a bus name, without ever waiting. Belongs to the thread that made it, whose run loop calls the
// handler.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ports/BusConnection.h"

namespace vorn {

class NameWatch {
 public:
  // Gets the connection (unique bus name) that has the name, or an empty text for none. May end the watch.
  using Handler = std::function<void(const std::string& owner)>;

  // Tells soon how it stands, and from then on whenever that changes. When the connection to the bus is lost, nobody
  // has the name, and nothing more is told. Without a bus nothing is told at all.
  NameWatch(Bus bus, const std::string& busName, Handler changed);
  ~NameWatch();
  NameWatch(const NameWatch&) = delete;
  NameWatch& operator=(const NameWatch&) = delete;

  // Empty while nobody has the name, or that is not known yet.
  const std::string& owner() const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
