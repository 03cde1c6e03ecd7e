#include "ports/BusService.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cerrno>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ports/RunLoop.h"
#include "support/LoopPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

constexpr const char* name = "org.vorn.ServiceTest";
constexpr const char* path = "/org/vorn/ServiceTest";
constexpr const char* interface = "org.vorn.ServiceTest1";

// A service on the system bus, on a thread of its own: an object with properties and two methods.
class Lamp {
 public:
  explicit Lamp(const char* busName = name) : mName(busName) {
    mThread.run([this] {
      static const sd_bus_vtable table[] = {
          SD_BUS_VTABLE_START(0),
          SD_BUS_WRITABLE_PROPERTY("Level", "u", nullptr, setLevel, offsetof(Values, level),
                                   SD_BUS_VTABLE_UNPRIVILEGED | SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
          SD_BUS_WRITABLE_PROPERTY("Any", "v", getAny, setAny, 0, SD_BUS_VTABLE_UNPRIVILEGED),
          SD_BUS_PROPERTY("Share", "d", nullptr, offsetof(Values, share), 0),
          SD_BUS_PROPERTY("Next", "o", getNext, 0, 0),
          SD_BUS_PROPERTY("Faults", "ay", getFaults, 0, SD_BUS_VTABLE_PROPERTY_EMITS_INVALIDATION),
          SD_BUS_METHOD("Refuse", "", "", refuse, SD_BUS_VTABLE_UNPRIVILEGED),
          SD_BUS_METHOD("Think", "", "", think, SD_BUS_VTABLE_UNPRIVILEGED),
          SD_BUS_VTABLE_END};
      sd_bus_add_object_vtable(handle(), &mSlot, path, interface, table, &mValues);
      EXPECT_GE(sd_bus_request_name(handle(), mName, 0), 0);
    });
  }
  ~Lamp() {
    mThread.run([this] {
      sd_bus_slot_unref(mSlot);
      BusConnection::forThisThread(Bus::System).close();
    });
  }
  Lamp(const Lamp&) = delete;
  Lamp& operator=(const Lamp&) = delete;

  void setLevel(std::uint32_t level) {
    mThread.run([&] {
      mValues.level = level;
      sd_bus_emit_properties_changed(handle(), path, interface, "Level", "Faults", nullptr);
    });
  }
  // A signal to that connection alone.
  void forge(const std::string& connection) {
    mThread.run([&] {
      sd_bus_message* message = nullptr;
      sd_bus_message_new_signal(handle(), &message, path, propertiesInterface, propertiesChanged);
      sd_bus_message_append(message, "sa{sv}as", interface, 1, "Level", "u", 99U, 0);
      EXPECT_GE(sd_bus_send_to(handle(), message, connection.c_str(), nullptr), 0);
      sd_bus_message_unref(message);
      sd_bus_flush(handle());
    });
  }

 private:
  struct Values {
    std::uint32_t level = 3;
    std::uint32_t pair[2] = {800, 900};
    double share = 0.5;
  };

  static sd_bus* handle() { return BusConnection::forThisThread(Bus::System).handle(); }
  static int setLevel(sd_bus*, const char*, const char*, const char*, sd_bus_message* value, void* level,
                      sd_bus_error*) {
    return sd_bus_message_read(value, "u", static_cast<std::uint32_t*>(level));
  }
  static int getAny(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self, sd_bus_error*) {
    const auto& values = *static_cast<const Values*>(self);
    return sd_bus_message_append(reply, "v", "(uu)", values.pair[0], values.pair[1]);
  }
  static int setAny(sd_bus*, const char*, const char*, const char*, sd_bus_message* value, void* self, sd_bus_error*) {
    auto& values = *static_cast<Values*>(self);
    return sd_bus_message_read(value, "v", "(uu)", &values.pair[0], &values.pair[1]);
  }
  static int getNext(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "o", "/org/vorn/Next");
  }
  static int getFaults(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "ay", 2, 7, 9);
  }
  static int refuse(sd_bus_message*, void*, sd_bus_error* error) {
    return sd_bus_error_set(error, "org.vorn.ServiceTest1.Error.No", "No!");
  }
  static int think(sd_bus_message*, void*, sd_bus_error*) { return 1; }

  const char* mName;
  sd_bus_slot* mSlot = nullptr;
  Values mValues;
  test::LoopThread mThread;
};

class BusServiceTest : public testing::Test {
 protected:
  bool isTrue(const std::function<bool()>& what) { return test::runUntil(mLoop, what); }
  void noteChanges() {
    mService.emplace(Bus::System, name, [this] { mNews.push_back(mService->isThere()); });
  }
  PropertyList properties() {
    std::optional<PropertyList> answer;
    mService->getProperties(path, interface, [&](const PropertyList& given) { answer = given; });
    EXPECT_TRUE(isTrue([&] { return answer.has_value(); }));
    return answer.value_or(PropertyList());
  }

  test::PrivateBus mSession;
  test::PrivateBus mSystem{test::PrivateBus::systemAddress};
  RunLoop mLoop;
  std::vector<bool> mNews;
  std::optional<BusService> mService;
};

TEST_F(BusServiceTest, IsFollowedAsItComesAndGoes) {
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mNews.size() == 1; }));
  for (std::size_t round = 1; round < 3; ++round) {
    {
      const Lamp lamp;
      ASSERT_TRUE(isTrue([&] { return mNews.size() == 2 * round; }));
    }
    ASSERT_TRUE(isTrue([&] { return mNews.size() == 2 * round + 1; }));
  }
  EXPECT_EQ(mNews, (std::vector<bool>{false, true, false, true, false}));
}

TEST_F(BusServiceTest, TellsAndTakesPropertiesOfEveryType) {
  const Lamp lamp;
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  const auto expected = [](int level, const PropertyList& any) {
    return PropertyList::dictionary({{"Level", level},
                                     {"Any", any},
                                     {"Share", 0.5},
                                     {"Next", "/org/vorn/Next"},
                                     {"Faults", PropertyList::array({7, 9})}});
  };
  EXPECT_EQ(properties(), expected(3, PropertyList::array({800, 900})));
  std::vector<BusAnswer::Status> answers;
  const auto note = [&](const BusAnswer& answer) { answers.push_back(answer.status); };
  mService->setProperty(path, interface, "Level", {"u", 5}, note);
  mService->setProperty(path, interface, "Any", {"v<(uu)>", PropertyList::array({400, 500})}, note);
  mService->setProperty(path, interface, "Any", {"v<u>", 7}, note);
  mService->setProperty(path, interface, "Level", {"u", "no number"}, note);
  ASSERT_TRUE(isTrue([&] { return answers.size() == 4; }));
  using Status = BusAnswer::Status;
  EXPECT_EQ(answers, (std::vector{Status::Invalid, Status::Success, Status::Success, Status::Error}));
  EXPECT_EQ(properties(), expected(5, PropertyList::array({400, 500})));
}

TEST_F(BusServiceTest, HearsWhatChangesAndWhatOnlyIsNoLongerTrue) {
  Lamp lamp;
  noteChanges();
  std::vector<PropertyList> changes;
  int incomplete = 0;
  mService->watchAllBelow("/org/vorn", propertiesInterface, propertiesChanged, [&](const ReceivedSignal& received) {
    EXPECT_EQ(received.path, path);
    EXPECT_FALSE(propertyChangesOf(received, "org.vorn.Other1"));
    const auto told = propertyChangesOf(received, interface);
    ASSERT_TRUE(told);
    changes.push_back(told->changed);
    incomplete += told->isIncomplete ? 1 : 0;
  });
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  lamp.setLevel(8);
  ASSERT_TRUE(isTrue([&] { return !changes.empty(); }));
  EXPECT_EQ(changes, std::vector{PropertyList::dictionary({{"Level", 8}})});
  EXPECT_EQ(incomplete, 1);
}

TEST_F(BusServiceTest, IsNotTakenForAnotherProgramThatSendsItsSignals) {
  Lamp lamp;
  Lamp forger("org.vorn.Forger");
  noteChanges();
  std::vector<PropertyList> changes;
  mService->watch(path, propertiesInterface, propertiesChanged,
                  [&](const ReceivedSignal& received) { changes.push_back(received.values.at(1)); });
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  const char* own = nullptr;
  sd_bus_get_unique_name(BusConnection::forThisThread(Bus::System).handle(), &own);
  forger.forge(own);
  lamp.setLevel(8);
  ASSERT_TRUE(isTrue([&] { return !changes.empty(); }));
  EXPECT_EQ(changes, std::vector{PropertyList::dictionary({{"Level", 8}})});
}

TEST_F(BusServiceTest, TellsWhenItRefuses) {
  const Lamp lamp;
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  std::optional<BusAnswer> answer;
  mService->call(path, interface, "Refuse", {}, [&](const BusAnswer& given) { answer = given; });
  ASSERT_TRUE(isTrue([&] { return answer.has_value(); }));
  EXPECT_EQ(answer->status, BusAnswer::Status::Error);
  EXPECT_EQ(answer->errorName, "org.vorn.ServiceTest1.Error.No");
}

TEST_F(BusServiceTest, ThatGoesAnswersNothingAnyMore) {
  auto lamp = std::make_unique<Lamp>();
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  int answers = 0;
  mService->call(path, interface, "Think", {}, [&](const BusAnswer&) { ++answers; });
  lamp.reset();
  ASSERT_TRUE(isTrue([&] { return !mService->isThere(); }));
  mService->call(path, interface, "Refuse", {}, [&](const BusAnswer&) { ++answers; });
  lamp = std::make_unique<Lamp>();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  properties();
  EXPECT_EQ(answers, 0);
}

TEST_F(BusServiceTest, MayEndWhileACallIsUnderWayAndInItsHandlers) {
  const Lamp lamp;
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  mService->call(path, interface, "Refuse", {}, [](const BusAnswer&) { FAIL(); });
  mService.reset();
  mService.emplace(Bus::System, name, [&] { mService.reset(); });
  EXPECT_TRUE(isTrue([&] { return !mService; }));
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  mService->call(path, interface, "Refuse", {}, [&](const BusAnswer&) { mService.reset(); });
  EXPECT_TRUE(isTrue([&] { return !mService; }));
}

TEST_F(BusServiceTest, GoesWithItsBus) {
  const Lamp lamp;
  noteChanges();
  ASSERT_TRUE(isTrue([&] { return mService->isThere(); }));
  mService->call(path, interface, "Think", {}, [](const BusAnswer&) {});
  mSystem.end();
  ASSERT_TRUE(isTrue([&] { return mNews.size() == 2; }));
  EXPECT_FALSE(mService->isThere());
}

TEST_F(BusServiceTest, IsStartedByTheBusWhereOneIsInstalled) {
  noteChanges();
  std::vector<ServiceStart::Status> starts;
  const auto note = [&](const ServiceStart& start) { starts.push_back(start.status); };
  mService->start(note);
  ASSERT_TRUE(isTrue([&] { return starts.size() == 1; }));
  mSystem.installService(name, "/bin/true");
  const Lamp lamp;
  mService->start(note);
  ASSERT_TRUE(isTrue([&] { return starts.size() == 2; }));
  EXPECT_EQ(starts, (std::vector{ServiceStart::Status::NotInstalled, ServiceStart::Status::Running}));
}

TEST_F(BusServiceTest, IsNotThereWithoutABus) {
  mSystem.end();
  noteChanges();
  EXPECT_FALSE(mService->hasBus());
  std::vector<ServiceStart::Status> starts;
  mService->start([&](const ServiceStart& start) { starts.push_back(start.status); });
  EXPECT_EQ(starts, std::vector{ServiceStart::Status::NoBus});
  EXPECT_FALSE(mService->isThere());
}

}  // namespace
}  // namespace vorn
