// The real engine, with profiles that follow applications, and a client that sees what it does. ENGINE_PROGRAM names
// it.
#pragma once

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "core-engine/TestBundle.h"
#include "e2e/EngineClient.h"
#include "ports/DistributedNotificationCenter.h"
#include "protocol/Focus.h"
#include "support/ChildProcess.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::test {

// A profile that is tied to the application with this identifier.
inline PropertyList followingProfile(std::string_view name, std::string_view identifier, bool isOn = true) {
  return engine::test::profile(name)
      .with(keys::AppInfo, PropertyList::dictionary({{keys::Application, identifier}, {keys::Identifier, identifier}}))
      .with(keys::AutoSwitchOn, isOn ? 1 : 0);
}

class FollowedEngine {
 public:
  static constexpr std::chrono::seconds patience{30};

  // Home is active; Game follows "chess", and Draw "paint".
  explicit FollowedEngine(bool isOn = true) {
    const PropertyList bundle =
        engine::test::bundleOf({engine::test::profile("Home"), followingProfile("Game", "chess", isOn),
                                followingProfile("Draw", "paint", isOn)});
    std::filesystem::create_directory(mFolder.path("state"));
    mFolder.write("state/settings.plist", encodeBinaryPropertyList(bundle).value_or(Bytes()));
    mNewsLoop.run([this] {
      DistributedNotificationCenter::defaultCenter().addObserver(
          this, notificationNames::profileUpdated(wiredProductID), [this](const Notification& news) {
            const std::lock_guard lock(mMutex);
            mNews.push_back(news.userInfo);
          });
    });
  }
  ~FollowedEngine() {
    mNewsLoop.run([this] { DistributedNotificationCenter::defaultCenter().removeObserver(this); });
  }
  FollowedEngine(const FollowedEngine&) = delete;
  FollowedEngine& operator=(const FollowedEngine&) = delete;

  // With the environment of now. True when it is ready.
  bool start() {
    mProcess = std::make_unique<ChildProcess>(std::vector<std::string>{
        "sh", "-c", "exec \"$@\" 2>&1", "sh", ENGINE_PROGRAM, "--state-dir", mFolder.path("state")});
    return mProcess->waitForLine([](const std::string& line) { return line.find("ready, ") != std::string::npos; })
        .has_value();
  }
  void kill() {
    mProcess->signal(SIGKILL);
    mProcess->waitForEnd();
  }

  PropertyList bundle() {
    return mClient.ask(MessageID::GetAllSettings).value_or(PropertyList())[replyKeys::AllDevSettings];
  }
  std::string profile() {
    const PropertyList now = bundle();
    const std::int64_t active = now[keys::DeviceSettings][keys::ActiveProfile].toInt64();
    return now[keys::Profiles].at(active)[keys::ProfileName].toString();
  }
  // Waits until it is the active one, and returns the one that is.
  std::string profileWhen(const std::string& name) {
    comesTrue([&] { return profile() == name; });
    return profile();
  }
  void choose(int profileID) {
    mClient.ask(MessageID::SwitchProfile, PropertyList::dictionary({{requestKeys::ProfileID, profileID}}));
  }
  void update(int profileID, const PropertyList& settings) {
    mClient.ask(MessageID::UpdateProfile,
                PropertyList::dictionary(
                    {{requestKeys::ProfileID, profileID}, {requestKeys::DeviceSettingsDictionary, settings}}));
  }
  // What can be undone.
  PropertyList history() {
    const BusAnswer answer = mClient.callHistory(history::methods::Entries);
    return answer.values.empty() ? PropertyList() : answer.values.front();
  }
  static BusAnswer call(const char* method, const std::vector<BusInput>& inputs = {}) {
    return callBusMethod({focus::busName, focus::objectPath, focus::interface}, method, inputs,
                         std::chrono::seconds(20));
  }
  PropertyList state() {
    const BusAnswer answer = call(focus::methods::State);
    return answer.values.empty() ? PropertyList() : answer.values.front();
  }
  std::vector<PropertyList> news() {
    const std::lock_guard lock(mMutex);
    return mNews;
  }

  // How many sockets, watches of files and threads it has open.
  std::size_t openThings() const {
    const std::string process = "/proc/" + std::to_string(mProcess->id());
    std::size_t count = 0;
    std::error_code error;
    for (const auto& each : std::filesystem::directory_iterator(process + "/fd", error)) {
      const std::string target = std::filesystem::read_symlink(each.path(), error);
      if (target.starts_with("socket:") || target.find("inotify") != std::string::npos) ++count;
    }
    for (const auto& each : std::filesystem::directory_iterator(process + "/task", error))
      if (each.exists()) ++count;
    return count;
  }
  // Waits until it has so many.
  bool hasOpenWhen(std::size_t count) const {
    return comesTrue([&] { return openThings() == count; });
  }
  static bool comesTrue(const std::function<bool()>& isTrue) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!isTrue()) {
      if (std::chrono::steady_clock::now() >= end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
  }
  // How often one of its threads has gone to sleep.
  long wakeUps() const {
    constexpr std::string_view word = "voluntary_ctxt_switches:";
    long count = 0;
    std::error_code error;
    for (const auto& each :
         std::filesystem::directory_iterator("/proc/" + std::to_string(mProcess->id()) + "/task", error)) {
      std::ifstream status(each.path() / "status");
      for (std::string line; std::getline(status, line);) {
        if (line.starts_with(word)) count += std::stol(line.substr(word.size()));
      }
    }
    return count;
  }

  ChildProcess& process() { return *mProcess; }

 private:
  engine::test::TemporaryFolder mFolder;
  std::mutex mMutex;
  std::vector<PropertyList> mNews;
  LoopThread mNewsLoop;
  EngineClient mClient{"FollowedEngineReplyPort"};
  std::unique_ptr<ChildProcess> mProcess;
};

}  // namespace vorn::test
