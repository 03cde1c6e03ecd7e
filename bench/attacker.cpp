// A program that behaves badly towards the engine, for bench/attack.py:
//
//   bench-attacker flood RATE       sends changes, RATE a second; 0 for as many as the bus takes
//   bench-attacker silent           asks for all settings over and over on a port that it never reads
//   bench-attacker big              sends four requests of 60 MB
//   bench-attacker come-and-go      sends 8 changes of 4 MB twice a second, each on a connection that goes at once
//   bench-attacker crowd COUNT      sends a change a second on each of COUNT connections
//   bench-attacker forge NAME RATE  broadcasts forged notifications, RATE a second
//
// Goes on until it is ended, but for big, which waits then.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"
#include "ports/BusConnection.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "protocol/EngineProtocol.h"

namespace {

namespace keys = vorn::keys;
using vorn::PropertyList;
using vorn::requestKeys::ResponseMsgPortName;
using namespace std::chrono_literals;

void serveBus() {
  vorn::BusConnection::forThisThread().process();
}

// Does the work RATE times a second, in batches of 10 ms; 0 without a pause.
[[noreturn]] void repeat(int rate, const std::function<void(int)>& work) {
  const int batch = rate == 0 ? 100 : std::max(rate / 100, 1);
  auto next = std::chrono::steady_clock::now();
  for (int count = 0;;) {
    for (int each = 0; each < batch; ++each) work(count++);
    serveBus();
    if (rate == 0) continue;
    next += 10ms;
    std::this_thread::sleep_until(next);
  }
}

void send(vorn::MessageID messageID, const PropertyList& body) {
  // Of the thread's own connection.
  static thread_local const auto port = vorn::RemoteMessagePort::lookUp(vorn::enginePortName);
  if (!port) std::exit(1);
  port->post(static_cast<std::int32_t>(messageID), vorn::encodeBinaryPropertyList(body).value());
}

PropertyList request(std::string_view replyPort) {
  return PropertyList::dictionary({{vorn::requestKeys::ProductID, 273}, {ResponseMsgPortName, replyPort}});
}

PropertyList change(int number) {
  return request("AttackerReplyPort")
      .with(vorn::requestKeys::ProfileID, 0)
      .with(vorn::requestKeys::DeviceSettingsDictionary, PropertyList::dictionary({{keys::DPIX, 400 + number % 1000}}));
}

void flood(int rate) {
  const auto port = vorn::LocalMessagePort::create(
      "AttackerReplyPort", [](const vorn::LocalMessagePort::Message&) { return vorn::Bytes(); });
  repeat(rate, [](int count) { send(vorn::MessageID::UpdateProfile, change(count)); });
}

void beSilent() {
  const auto port = vorn::LocalMessagePort::create(
      "AttackerReplyPort", [](const vorn::LocalMessagePort::Message&) { return vorn::Bytes(); });
  // Written by hand of the loop: nothing that comes is ever read.
  while (true) {
    for (int each = 0; each < 20; ++each) send(vorn::MessageID::GetAllSettings, request("AttackerReplyPort"));
    std::this_thread::sleep_for(10ms);
  }
}

void sendBig() {
  for (int count = 0; count < 4; ++count) {
    send(vorn::MessageID::GetAllSettings,
         request("AttackerReplyPort").with("Ballast", PropertyList::data(vorn::Bytes(60'000'000))));
  }
  while (true) {
    serveBus();
    std::this_thread::sleep_for(10ms);
  }
}

// Each of the threads has a connection of its own as long as it lives.
void inThreads(int count, const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < count; ++thread) threads.emplace_back(work, thread);
  for (std::thread& thread : threads) thread.join();
}

void comeAndGo() {
  const PropertyList ballast = PropertyList::data(vorn::Bytes(4'000'000));
  for (int count = 0;; ++count) {
    inThreads(8, [&](int thread) {
      send(vorn::MessageID::UpdateProfile, change(8 * count + thread).with("Ballast", ballast));
    });
    std::this_thread::sleep_for(500ms);
  }
}

void beCrowd(int size) {
  inThreads(size, [](int member) {
    for (int count = 0;; ++count) {
      send(vorn::MessageID::UpdateProfile, change(member + count));
      serveBus();
      std::this_thread::sleep_for(1s);
    }
  });
}

void forge(const std::string& name, int rate) {
  repeat(rate, [&](int count) {
    vorn::DistributedNotificationCenter::defaultCenter().post(
        name, {}, PropertyList::dictionary({{"Updated Keymap Profile", PropertyList::dictionary({{"n", count}})}}));
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 2 && words[0] == "flood") flood(std::stoi(words[1]));
  if (words.size() == 1 && words[0] == "silent") beSilent();
  if (words.size() == 1 && words[0] == "big") sendBig();
  if (words.size() == 1 && words[0] == "come-and-go") comeAndGo();
  if (words.size() == 2 && words[0] == "crowd") beCrowd(std::stoi(words[1]));
  if (words.size() == 3 && words[0] == "forge") forge(words[1], std::stoi(words[2]));
  return 2;
}
