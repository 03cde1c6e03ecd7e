// Ten thousand requests of every kind, good and bad: the settings stay whole.
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "core-engine/rules/BundleRules.h"
#include "model/Controls.h"
#include "model/ProfileOrder.h"
#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"

namespace vorn::engine::test {
namespace {

const std::string client = ":1.7";
const std::string port = "ClientPort";

// With the seed of what is random.
class RequestDispatcherRandomTest : public testing::TestWithParam<unsigned>, protected TestParts {
 protected:
  std::uint32_t below(std::size_t limit) { return static_cast<std::uint32_t>(mRandom() % limit); }
  int anyPosition() { return static_cast<int>(below(9)) - 2; }

  PropertyList anyScalar() {
    switch (below(6)) {
      case 0:
        return anyPosition();
      case 1:
        return below(2) == 0;
      case 2:
        return "text " + std::to_string(below(4));
      case 3:
        return static_cast<double>(below(100)) / 7;
      case 4:
        return PropertyList::array({1, "x"});
      default:
        return PropertyList::dictionary({{"command", 1}});
    }
  }

  PropertyList anyAssignment() {
    if (below(8) == 0) return anyScalar();
    return PropertyList::dictionary(
        {{"command", below(60)}, {"param1", static_cast<int>(below(300)) - 5}, {"param2", below(256)}});
  }

  PropertyList anyGroup(std::span<const keys::Key> identifiers) {
    std::vector<PropertyList::Pair> entries;
    for (const keys::Key identifier : identifiers) {
      if (below(3) != 0) entries.emplace_back(identifier, anyAssignment());
    }
    if (below(6) == 0) entries.emplace_back("99", anyAssignment());
    return PropertyList::dictionary(std::move(entries));
  }

  PropertyList anyProfile() {
    static constexpr keys::Key plainKeys[] = {
        keys::ProfileName, keys::KeymapID,   keys::DPIX,          keys::DPIY,      keys::StageValue,
        keys::PollingRate, keys::PowerSaver, keys::AutoSwitchOn,  keys::AppInfo,   keys::LEDColors,
        keys::Stages,      keys::Keymap,     keys::ActiveProfile, keys::ScrollLED, "further"};
    PropertyList profile = PropertyList::dictionary();
    for (std::uint32_t i = below(5); i > 0; --i) {
      profile = profile.with(plainKeys[below(std::size(plainKeys))], anyScalar());
    }
    if (below(3) == 0) profile = profile.with(keys::KeymapID, static_cast<int>(below(10)) - 1);
    if (below(3) == 0) profile = profile.with(keys::Keys, anyGroup(keys::keyIdentifiers));
    if (below(3) == 0) profile = profile.with(keys::Buttons, anyGroup(keys::buttonIdentifiers));
    return below(20) == 0 ? anyScalar() : profile;
  }

  PropertyList anyMacro() {
    const PropertyList event = PropertyList::dictionary(
        {{"command", below(3)}, {"delay", below(100)}, {"page", below(2) == 0 ? 7 : 9}, {"argument", below(12)}});
    return PropertyList::dictionary(
        {{"MacroName", "macro " + std::to_string(below(5))},
         {"macroID", anyPosition()},
         {"sequence", PropertyList::dictionary({{"events", PropertyList::array({event, event})}})}});
  }

  // Of as many profiles as there are, and now and then of one more.
  PropertyList anyOrder() {
    const std::size_t count = store.bundle()[keys::Profiles].size() + (below(8) == 0 ? 1 : 0);
    return orderRecord(orderAfterMove(count, below(count), below(count)));
  }

  PropertyList anyBody() {
    PropertyList body = PropertyList::dictionary({{"ProductID", below(20) == 0 ? 31 : 273},
                                                  {"ResponseMsgPortName", port},
                                                  {"macroID", anyPosition()},
                                                  {"ProfileID", anyPosition()},
                                                  {"sequenceIdx", anyPosition()},
                                                  {"macroEventTableIndex", anyPosition()},
                                                  {"IndexOfMacroSequence", anyPosition()},
                                                  {"delay", anyPosition()},
                                                  {"HasNoDelay", below(2) == 0},
                                                  {"isAppendRecording", below(2)}});
    body = body.with("DeviceSettingsDictionary", anyProfile()).with("MacroContents", anyMacro());
    body = body.with("sequence", anyMacro()["sequence"]["events"].at(0));
    if (below(4) == 0) {
      std::vector<PropertyList> records;
      for (std::uint32_t i = below(7); i > 0; --i) records.push_back(anyProfile());
      body = body.with("AllProfiles", PropertyList::array(std::move(records)));
    } else if (below(4) == 0) {
      const PropertyList& present = store.bundle()[keys::Profiles];
      body = body.with("AllProfiles", present.replacing(0, present.at(0).with("further", anyScalar())));
    }
    body = body.with("ProfileOrder", anyOrder()).with("ProfileNames", profileNames(store.bundle()[keys::Profiles]));
    // Now and then a key is missing or has another type.
    const auto names = body.keys();
    const std::string name(names[below(names.size())]);
    if (below(5) == 0) return body.without(name);
    if (below(8) == 0 && name != "ResponseMsgPortName") return body.with(name, anyScalar());
    return body;
  }

  void expectWhole(const PropertyList& bundle, int round) {
    ASSERT_TRUE(isCompleteBundle(bundle)) << "after request " << round;
    const std::size_t count = bundle[keys::Profiles].size();
    ASSERT_GE(count, 1U);
    ASSERT_LE(count, keys::maximumProfiles);
    const auto active = bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
    ASSERT_TRUE(active >= 0 && active < static_cast<std::int64_t>(count)) << "after request " << round;
    for (const PropertyList& profile : bundle[keys::Profiles].elements()) {
      ASSERT_EQ(profile[keys::Keymap].size(), keys::keymapCount);
      expectWholeGroups(profile);
      const PropertyList& inForce = profile[keys::Keymap].at(profile[keys::KeymapID].toInt64());
      ASSERT_EQ(profile[keys::Keys], inForce[keys::Keys]) << "after request " << round;
      ASSERT_EQ(profile[keys::Buttons], inForce[keys::Buttons]) << "after request " << round;
      for (const PropertyList& keymap : profile[keys::Keymap].elements()) expectWholeGroups(keymap);
    }
  }

  static void expectWholeGroups(const PropertyList& holder) {
    for (const keys::Key identifier : keys::keyIdentifiers) ASSERT_TRUE(isAssignment(holder[keys::Keys][identifier]));
    for (const keys::Key identifier : keys::buttonIdentifiers) {
      ASSERT_TRUE(isAssignment(holder[keys::Buttons][identifier]));
    }
  }

  RequestDispatcher dispatcher{parts(), ports};

 private:
  std::mt19937 mRandom{GetParam()};
};

// Four times as many as each of them does; they run beside each other.
TEST_P(RequestDispatcherRandomTest, NeverBreakTheSettings) {
  static constexpr std::int32_t messages[] = {0,  37, 37, 4,  5,  6,  6,  6,  6,  7,  9,  10, 10, 14, 15, 16, 18, 19,
                                              20, 21, 22, 23, 24, 25, 27, 28, 29, 30, 32, 33, 34, 37, 38, 11, 99, 102};
  ports.names = {port};
  store.fill(bundle("Start"));
  PropertyList last;
  std::set<std::int32_t> changing;
  for (int round = 0; round < 2'500; ++round) {
    const std::int32_t message = messages[below(std::size(messages))];
    if (below(20) == 0) disk.failAt(static_cast<int>(below(8)) + 1, std::errc::no_space_on_device);
    dispatcher.receive({message, *encodeBinaryPropertyList(anyBody()), client});
    disk.work();
    for (const MemoryPorts::Answer& answer : ports.answers) {
      const PropertyList& returned = answer.body["ReturnDictionary"];
      ASSERT_TRUE(returned.isNone() || returned == store.bundle()) << "after request " << round;
    }
    ports.answers.clear();
    if (store.bundle() == last) continue;
    last = store.bundle();
    changing.insert(message);
    expectWhole(last, round);
    if (HasFatalFailure()) return;
    ASSERT_EQ(stored(), last) << "after request " << round;
  }
  // Requests that are all refused would break nothing either.
  for (const std::int32_t message : {5, 6, 7, 9, 10, 22, 23, 24, 25, 32, 33, 34, 37, 102})
    EXPECT_TRUE(changing.contains(message)) << message;
}

INSTANTIATE_TEST_SUITE_P(Seeds, RequestDispatcherRandomTest, testing::Values(20261U, 20262U, 20263U, 20264U));

}  // namespace
}  // namespace vorn::engine::test
