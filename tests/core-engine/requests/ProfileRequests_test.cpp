#include <gtest/gtest.h>

#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"

namespace vorn::engine::test {
namespace {

using Lines = std::vector<std::string>;

const std::string client = ":1.7";
const std::string port = "ClientPort";

PropertyList dictionary(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

PropertyList profilesNamed(std::initializer_list<const char*> names, std::int32_t active = 0) {
  std::vector<PropertyList> records;
  for (const char* name : names) records.push_back(profile(name));
  return bundleOf(std::move(records), active);
}

const PropertyList oneAndTwo = profilesNamed({"one", "two"});

// An engine with its dispatcher, and a client.
struct Engine : TestParts {
  explicit Engine(const PropertyList& settings = oneAndTwo) : TestParts(settings) {
    ports.names = {port};
    disk.work();  // operations count from here
  }

  // The only answer to the request; none for none or several.
  PropertyList answerTo(MessageID messageID, const PropertyList& body) {
    const PropertyList envelope = dictionary({{"ProductID", 273}, {"ResponseMsgPortName", port}});
    ports.answers.clear();
    dispatcher.receive(
        {static_cast<std::int32_t>(messageID), encodeBinaryPropertyList(body.merging(envelope)).value(), client});
    return ports.answers.size() == 1 ? ports.answers[0].body : PropertyList();
  }
  void putOwnDefaults(const PropertyList& settings) {
    disk.put(ownDefaults, encodeBinaryPropertyList(defaultsFile(settings)).value());
  }

  RequestDispatcher dispatcher{parts(), ports};
};

PropertyList answer(const PropertyList& bundle, std::int32_t status = 0) {
  return dictionary({{"ReturnDictionary", bundle}, {"ReturnStatus", status}});
}

PropertyList addition(const PropertyList& record) {
  return dictionary({{"DeviceSettingsDictionary", record}});
}

PropertyList reordering(std::initializer_list<PropertyList> order, std::initializer_list<PropertyList> names) {
  return dictionary({{"ProfileOrder", PropertyList::array(order)}, {"ProfileNames", PropertyList::array(names)}});
}

PropertyList update(std::int64_t profileID, const PropertyList& settings) {
  return dictionary({{"ProfileID", profileID}, {"DeviceSettingsDictionary", settings}});
}

// Settings that a message can just not carry, given to an engine by force.
PropertyList unsendable() {
  return oneAndTwo.with("Ballast", PropertyList::data(Bytes(maximumSize - 1000)));
}

TEST(ProfileRequestsTest, RefusesAChangeThatLeavesSettingsTooLargeToBeSent) {
  Engine engine(unsendable());
  engine.answerTo(MessageID::SwitchProfile, dictionary({{"ProfileID", 1}}));
  EXPECT_EQ(engine.store.bundle(), unsendable());
  ASSERT_FALSE(engine.lines.empty());
  EXPECT_EQ(engine.lines.front(),
            "vorn-core-engine: client :1.7: switch profile: the settings would be too large to be sent");
}

// One request of every kind, and what it makes of "one" and "two".
struct Example {
  MessageID messageID;
  PropertyList body;
  PropertyList after;
};

std::vector<Example> examples() {
  return {
      {MessageID::AddProfile, addition(profile("three")), profilesNamed({"one", "two", "three"})},
      {MessageID::UpdateProfile, update(1, dictionary({{"ProfileName", "new"}})), profilesNamed({"one", "new"})},
      {MessageID::ReplaceAllProfiles, dictionary({{"AllProfiles", PropertyList::array({profile("A")})}}),
       profilesNamed({"A"})},
      {MessageID::DeleteProfile, dictionary({{"ProfileID", 0}}), profilesNamed({"two"})},
      {MessageID::SwitchProfile, dictionary({{"ProfileID", 1}}), profilesNamed({"one", "two"}, 1)},
      {MessageID::ReorderProfiles, reordering({1, 0}, {"one", "two"}), profilesNamed({"two", "one"}, 1)},
  };
}

TEST(ProfileRequestsTest, AnswerWithTheNewSettings) {
  for (const Example& example : examples()) {
    Engine engine;
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), answer(example.after));
    EXPECT_EQ(engine.stored(), example.after);
    EXPECT_EQ(engine.lines, Lines());
  }
}

TEST(ProfileRequestsTest, AreAnsweredOnlyWhenTheChangeIsOnTheDisk) {
  for (const Example& example : examples()) {
    for (int operation = 1;; ++operation) {
      ASSERT_LT(operation, 100);
      Engine engine;
      engine.disk.crashAt(operation);
      try {
        EXPECT_EQ(engine.answerTo(example.messageID, example.body), answer(example.after));
      } catch (const MemoryFileSystem::Crash&) {
        EXPECT_TRUE(engine.ports.answers.empty()) << operation;
        continue;
      }
      for (const MemoryFileSystem& disk : engine.disk.afterCrash()) {
        engine.disk = disk;
        EXPECT_EQ(engine.stored(), example.after);
      }
      break;
    }
  }
}

TEST(ProfileRequestsTest, AnswerWithTheOldSettingsWhenTheDiskIsFull) {
  for (const Example& example : examples()) {
    Engine engine;
    engine.disk.failFrom(1, std::errc::no_space_on_device);
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), answer(oneAndTwo, 4));
    EXPECT_EQ(engine.stored(), oneAndTwo);
    EXPECT_EQ(engine.lines, Lines{"vorn-core-engine: cannot save the settings in /state: No space left on device"});
    engine.disk.work();
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), answer(example.after));
  }
}

TEST(ProfileRequestsTest, OfAClientThatShowsDefaultsForWantOfAMouseChangeNothing) {
  for (const Example& example : examples()) {
    Engine engine;
    engine.device.setConnection(Device::Connection::Absent);
    EXPECT_EQ(engine.answerTo(MessageID::RegisterDevice, {}), dictionary({{"ReturnStatus", false}}));
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), dictionary({{"ReturnStatus", 8}}));
    EXPECT_EQ(engine.stored(), oneAndTwo);
    // Once it has read the settings, it shows the user's.
    engine.answerTo(MessageID::GetAllSettings, {});
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), answer(example.after));
  }
}

TEST(ProfileRequestsTest, BeginWithTheDefaultSettings) {
  for (const Example& example : examples()) {
    Engine engine{PropertyList()};
    engine.putOwnDefaults(oneAndTwo);
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), answer(example.after));
  }
}

TEST(ProfileRequestsTest, AnswerWithAStatusAloneWithoutAnySettings) {
  for (const Example& example : examples()) {
    Engine engine{PropertyList()};
    EXPECT_EQ(engine.answerTo(example.messageID, example.body), dictionary({{"ReturnStatus", 1}}));
  }
}

TEST(ProfileRequestsTest, WriteNothingWhereNothingChanges) {
  const PropertyList settings = profilesNamed({"one", "two"}, 1);
  Engine engine(settings);
  EXPECT_EQ(engine.answerTo(MessageID::SwitchProfile, dictionary({{"ProfileID", 1}})), answer(settings));
  EXPECT_EQ(engine.answerTo(MessageID::UpdateProfile, update(0, profile("one"))), answer(settings));
  EXPECT_EQ(engine.answerTo(MessageID::UpdateProfile, update(0, dictionary({}))), answer(settings));
  EXPECT_EQ(engine.answerTo(MessageID::ReorderProfiles, reordering({0, 1}, {"one", "two"})), answer(settings));
  EXPECT_EQ(engine.disk.operations(), 0);
}

TEST(ProfileRequestsTest, CompleteANewProfileFromTheFactorySettings) {
  Engine engine;
  engine.putOwnDefaults(bundleOf({profile("factory").with("DPIX", 1600)}));
  EXPECT_EQ(engine.answerTo(MessageID::AddProfile, addition(dictionary({{"ProfileName", "three"}}))),
            answer(bundleOf({profile("one"), profile("two"), profile("three").with("DPIX", 1600)})));
}

TEST(ProfileRequestsTest, ChangeNothingWithBadInputAndTellItOnce) {
  struct Bad {
    MessageID messageID;
    PropertyList body;
    std::int32_t status;
    std::string line;
  };
  const PropertyList large = dictionary({{"Note", std::string(2 * 1024 * 1024, 'x')}});
  const std::string tooLarge = "the record is larger than 1 MiB or has more than 32 levels";
  const std::vector<Bad> requests = {
      {MessageID::AddProfile, addition("three"), 2,
       "add profile: \"DeviceSettingsDictionary\" takes a dictionary (\"three\")"},
      {MessageID::AddProfile, addition(large), 5, "add profile: " + tooLarge},
      {MessageID::UpdateProfile, update(2, dictionary({})), 3, "update profile: there is no such profile (2)"},
      {MessageID::UpdateProfile, update(1, large), 5, "update profile: " + tooLarge},
      {MessageID::ReplaceAllProfiles, dictionary({{"AllProfiles", PropertyList::array()}}), 3,
       "replace all profiles: \"AllProfiles\" takes 1 to 5 profiles (0)"},
      {MessageID::DeleteProfile, dictionary({{"ProfileID", "1"}}), 2,
       "delete profile: \"ProfileID\" takes an integer (\"1\")"},
      {MessageID::SwitchProfile, dictionary({{"ProfileID", -1}}), 3, "switch profile: there is no such profile (-1)"},
      {MessageID::ReorderProfiles, reordering({1, 1}, {"one", "two"}), 2,
       "reorder profiles: \"ProfileOrder\" takes each position once, as many as names ([1, 1])"},
      {MessageID::ReorderProfiles, reordering({1, 0}, {"two", "one"}), 9,
       "reorder profiles: the profiles are others than the client saw ([\"two\", \"one\"])"},
  };
  for (const Bad& bad : requests) {
    Engine engine;
    for (int repetition = 0; repetition < 9; ++repetition) {
      EXPECT_EQ(engine.answerTo(bad.messageID, bad.body), answer(oneAndTwo, bad.status));
    }
    EXPECT_EQ(engine.lines, Lines{"vorn-core-engine: client :1.7: " + bad.line});
    EXPECT_EQ(engine.stored(), oneAndTwo);
  }
}

TEST(ProfileRequestsTest, NeverReadAMissingPositionAsTheFirst) {
  for (const MessageID messageID : {MessageID::UpdateProfile, MessageID::DeleteProfile, MessageID::SwitchProfile}) {
    Engine engine(profilesNamed({"one", "two"}, 1));
    EXPECT_EQ(engine.answerTo(messageID, addition(dictionary({{"ProfileName", "new"}}))),
              answer(profilesNamed({"one", "two"}, 1), 2));
  }
}

TEST(ProfileRequestsTest, TakeTheUsableSettingsAndTellTheOthers) {
  Engine engine;
  EXPECT_EQ(engine.answerTo(MessageID::UpdateProfile, update(0, dictionary({{"DPIX", 400}, {"DPIY", "fast"}}))),
            answer(bundleOf({profile("one").with("DPIX", 400), profile("two")}), 6));
  EXPECT_EQ(engine.lines, Lines{"vorn-core-engine: client :1.7: update profile: \"DPIY\" takes a whole number from 100 "
                                "to 5600 DPI (\"fast\")"});
}

TEST(ProfileRequestsTest, FindNoRoomForASixthProfileAndKeepTheLast) {
  const PropertyList five = profilesNamed({"1", "2", "3", "4", "5"});
  EXPECT_EQ(Engine(five).answerTo(MessageID::AddProfile, addition(profile("6"))), answer(five, 3));
  const PropertyList one = profilesNamed({"one"});
  EXPECT_EQ(Engine(one).answerTo(MessageID::DeleteProfile, dictionary({{"ProfileID", 0}})), answer(one, 3));
}

}  // namespace
}  // namespace vorn::engine::test
