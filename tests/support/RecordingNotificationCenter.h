// A notification centre in memory: delivers what the test posts and tells who observes what.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "model/NotificationCenter.h"

namespace skarn::test {

class RecordingNotificationCenter : public vorn::NotificationCenter {
 public:
  // Names observed now, in the order of their registration.
  std::vector<std::string> observed() const {
    std::vector<std::string> names;
    for (const auto& entry : mEntries) names.push_back(entry.name);
    return names;
  }
  // Everything that was added ("+name") and removed ("-name") since the last clear().
  std::vector<std::string> log;

  void addObserver(Observer observer, std::string_view name, Handler handler) override {
    log.push_back("+" + std::string(name));
    mEntries.push_back({observer, std::string(name), std::move(handler)});
  }
  void removeObserver(Observer observer, std::string_view name) override {
    log.push_back("-" + std::string(name));
    std::erase_if(mEntries, [&](const Entry& entry) { return entry.observer == observer && entry.name == name; });
  }
  void removeObserver(Observer observer) override {
    std::erase_if(mEntries, [&](const Entry& entry) { return entry.observer == observer; });
  }
  void post(std::string_view name, std::string_view object, const vorn::PropertyList& userInfo) override {
    const vorn::Notification news{std::string(name), std::string(object), userInfo};
    const auto entries = mEntries;
    for (const auto& entry : entries) {
      if (entry.name == name) entry.handler(news);
    }
  }

 private:
  struct Entry {
    Observer observer;
    std::string name;
    Handler handler;
  };
  std::vector<Entry> mEntries;
};

}  // namespace skarn::test
