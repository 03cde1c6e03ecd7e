// What requests act on, in memory: an engine's parts on a disk, a bus and a clock of their own.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/MemoryPorts.h"
#include "core-engine/TestBundle.h"
#include "core-engine/device/VirtualDevice.h"
#include "core-engine/requests/Request.h"

namespace vorn::engine::test {

// Keeps the news instead of broadcasting them.
class RecordingNewsPort : public NewsPort {
 public:
  struct News {
    std::string name;
    PropertyList userInfo;
    std::string receiver = {};  // empty: everybody
    friend bool operator==(const News&, const News&) = default;
  };

  std::vector<News> posted;

  void post(std::string_view name, const PropertyList& userInfo) override {
    posted.push_back({std::string(name), userInfo});
  }
  void postTo(std::string_view receiver, std::string_view name, const PropertyList& userInfo) override {
    posted.push_back({std::string(name), userInfo, std::string(receiver)});
  }
};

// A clock that stands still until it is moved.
class ManualScheduler : public Scheduler {
 public:
  Duration now() const override { return mNow; }
  Ticket after(Duration delay, std::function<void()> work) override {
    mWork.push_back({++mLastTicket, mNow + std::max(delay, Duration(0)), std::move(work)});
    return mLastTicket;
  }
  void cancel(Ticket ticket) override {
    std::erase_if(mWork, [&](const Work& work) { return work.ticket == ticket; });
  }

  // Lets the time pass and does the work that becomes due, in the order of its times, with the clock standing at each.
  void advance(Duration duration) {
    const Duration end = mNow + duration;
    const auto isEarlier = [](const Work& left, const Work& right) { return left.time < right.time; };
    while (!mWork.empty()) {
      const auto next = std::min_element(mWork.begin(), mWork.end(), isEarlier);
      if (next->time > end) break;
      mNow = next->time;
      const std::function<void()> work = std::move(next->work);
      mWork.erase(next);
      work();
    }
    mNow = end;
  }
  std::size_t pending() const { return mWork.size(); }

 private:
  struct Work {
    Ticket ticket = 0;
    Duration time{};
    std::function<void()> work;
  };

  Duration mNow{};
  Ticket mLastTicket = 0;
  std::vector<Work> mWork;
};

// The answer of a handler that changes nothing, or whose changes are saved at once.
inline Answer answerOf(const RequestHandler& handler, EngineParts& parts, const Request& request) {
  Answer result;
  handler(parts, request, [&result](const Answer& answer) { result = answer; });
  return result;
}

struct TestParts {
  // An engine whose settings are the bundle, a complete one; none for an engine without settings. With a thread for its
  // saves, or without.
  explicit TestParts(const PropertyList& bundle = {}, DiskThread* diskThread = nullptr) : store(file, log, diskThread) {
    if (!bundle.isNone()) store.fill(bundle);
    ports.setLostHandler([this](const std::string& portName) { clients.portLost(portName); });
  }
  TestParts(const TestParts&) = delete;
  TestParts& operator=(const TestParts&) = delete;

  EngineParts parts() {
    return {store, device, clients, defaults, log, news, scheduler, recorder, capture, heard, profiles};
  }

  // What a start of the engine would find on the disk now.
  PropertyList stored() const {
    MemoryFileSystem copy = disk;
    copy.work();
    Log silent([](const std::string&) {});
    SettingsFile storedFile(copy, silent, file.folder());
    SettingsStore storedSettings(storedFile, silent);
    storedSettings.load([] { return PropertyList(); });
    return storedSettings.bundle();
  }

  inline static const std::string ownDefaults = "/own/Skarn.plist";  // not there unless a test puts it

  std::vector<std::string> lines;  // of the log
  Log log{[this](const std::string& line) { lines.push_back(line); }};
  MemoryFileSystem disk;
  MemoryPorts ports;
  SettingsFile file{disk, log, "/state"};
  SettingsStore store;
  FactoryDefaults defaults{disk, ownDefaults};
  VirtualDevice device;
  ClientRegistry clients;
  RecordingNewsPort news;
  ManualScheduler scheduler;
  MacroRecorder recorder{news, scheduler};
  KeyCapture capture{news};
  HeardKeys heard{device, scheduler, recorder, capture};
  ProfileChanger profiles{store};
};

}  // namespace vorn::engine::test
