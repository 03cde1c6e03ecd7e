#include "core-engine/device/linux/ControlMap.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/device/linux/KernelEvents.h"
#include "model/Controls.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine::test {
namespace {

// The controls that can be taught.
std::vector<std::string> taughtControls() {
  std::vector<std::string> all(fixedKeys.begin(), fixedKeys.end());
  for (const Control& control : controls) all.emplace_back(control.identifier);
  return all;
}

KernelEvent eventOf(const EventSource& source) {
  return {source.type, source.code, source.type == EV_KEY ? 1 : source.direction};
}

TEST(ControlMapTest, BeginsAsTheIdentifiersSay) {
  const std::map<std::string, EventSource> own = {
      {"43", keySource(KEY_TAB)},        {"20", keySource(KEY_Q)},          {"26", keySource(KEY_W)},
      {"8", keySource(KEY_E)},           {"21", keySource(KEY_R)},          {"57", keySource(KEY_CAPSLOCK)},
      {"4", keySource(KEY_A)},           {"22", keySource(KEY_S)},          {"7", keySource(KEY_D)},
      {"9", keySource(KEY_F)},           {"225", keySource(KEY_LEFTSHIFT)}, {"29", keySource(KEY_Z)},
      {"27", keySource(KEY_X)},          {"6", keySource(KEY_C)},           {"44", keySource(KEY_SPACE)},
      {"226", keySource(KEY_LEFTALT)},   {"82", keySource(KEY_UP)},         {"79", keySource(KEY_RIGHT)},
      {"81", keySource(KEY_DOWN)},       {"80", keySource(KEY_LEFT)},       {"03", keySource(BTN_MIDDLE)},
      {"06", wheelSource(REL_WHEEL, 1)}, {"07", wheelSource(REL_WHEEL, -1)}};
  const ControlMap map;
  for (const std::string& control : taughtControls()) {
    const auto found = own.find(control);
    EXPECT_EQ(map.sourceOf(control), found == own.end() ? std::nullopt : std::optional(found->second)) << control;
    EXPECT_FALSE(map.isTaught(control)) << control;
    if (found == own.end()) continue;
    EXPECT_EQ(map.controlOf("any node", eventOf(found->second)), control);
  }
  EXPECT_EQ(map.sourceOf("5"), std::nullopt);
  EXPECT_EQ(map.record(), PropertyList::dictionary());
}

TEST(ControlMapTest, KnowsAControlByEachEventOfIt) {
  const ControlMap map;
  for (const std::int32_t value : {0, 1, 2}) EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_A, value)), "4");
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_WHEEL, 3)), "06");
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_WHEEL_HI_RES, 1)), "06");
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_WHEEL, -1)), "07");
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_WHEEL_HI_RES, -15)), "07");
  for (const KernelEvent& event :
       {key(KEY_B, 1), key(BTN_LEFT, 1), motion(REL_X, 1), motion(REL_HWHEEL, 1), motion(REL_WHEEL, 0),
        hat(ABS_HAT0X, 1), scanCode(KEY_A), endOfReport, KernelEvent{EV_LED, KEY_A, 1}})
    EXPECT_EQ(map.controlOf(pointerNode, event), "") << testing::PrintToString(event);
}

TEST(ControlMapTest, ATaughtControlSendsWhatItWasTaughtAndNothingElse) {
  ControlMap map;
  EXPECT_TRUE(map.teach("43", keySource(KEY_1, keyboardNode)));
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_1, 1)), "43");
  EXPECT_EQ(map.controlOf(pointerNode, key(KEY_1, 1)), "");
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_TAB, 1)), "");
  EXPECT_EQ(map.sourceOf("43"), keySource(KEY_1, keyboardNode));
  EXPECT_TRUE(map.isTaught("43"));
  EXPECT_TRUE(map.teach("43", keySource(KEY_2)));
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_1, 1)), "");
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_2, 1)), "43");
  EXPECT_EQ(map.controlOf(pointerNode, key(KEY_2, 1)), "43");
}

TEST(ControlMapTest, TeachesDiagonalsFixedKeysHatsAndTheHorizontalWheel) {
  ControlMap map;
  EXPECT_TRUE(map.teach("232", {"", EV_ABS, ABS_HAT0X, -1}));
  EXPECT_TRUE(map.teach("233", {"", EV_ABS, ABS_HAT0X, 1}));
  EXPECT_TRUE(map.teach(keymapKey, wheelSource(REL_HWHEEL, 1, pointerNode)));
  EXPECT_TRUE(map.teach(stageUpKey, keySource(BTN_EXTRA)));
  EXPECT_EQ(map.controlOf(keyboardNode, hat(ABS_HAT0X, -1)), "232");
  EXPECT_EQ(map.controlOf(keyboardNode, hat(ABS_HAT0X, 1)), "233");
  EXPECT_EQ(map.controlOf(keyboardNode, hat(ABS_HAT0X, 0)), "");
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_HWHEEL_HI_RES, 8)), keymapKey);
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_HWHEEL, -1)), "");
  EXPECT_EQ(map.controlOf(pointerNode, key(BTN_EXTRA, 1)), stageUpKey);
  EXPECT_EQ(map.controlOf(pointerNode, motion(REL_WHEEL, 1)), "06");
}

TEST(ControlMapTest, WhatOneControlIsTaughtNoOtherSends) {
  ControlMap map;
  EXPECT_TRUE(map.teach("43", keySource(KEY_A, keyboardNode)));
  EXPECT_EQ(map.sourceOf("4"), std::nullopt);
  EXPECT_EQ(map.controlOf(pointerNode, key(KEY_A, 1)), "");
  EXPECT_TRUE(map.teach("20", keySource(KEY_A, keyboardNode)));
  EXPECT_EQ(map.sourceOf("43"), keySource(KEY_TAB));
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_A, 1)), "20");
  EXPECT_TRUE(map.teach("26", keySource(KEY_A, pointerNode)));
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_A, 1)), "20");
  EXPECT_EQ(map.controlOf(pointerNode, key(KEY_A, 1)), "26");
  EXPECT_TRUE(map.teach("8", keySource(KEY_A)));
  EXPECT_EQ(map.sourceOf("20"), keySource(KEY_Q));
  EXPECT_EQ(map.sourceOf("26"), keySource(KEY_W));
  EXPECT_EQ(map.controlOf(pointerNode, key(KEY_A, 1)), "8");
}

TEST(ControlMapTest, ForgettingGivesBackWhatTheMouseSendsByItself) {
  ControlMap map;
  map.teach("43", keySource(KEY_A));
  map.forget("4");
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_A, 1)), "43");
  map.forget("43");
  EXPECT_EQ(map, ControlMap());
  map.teach("06", wheelSource(REL_HWHEEL, 1));
  map.teach("07", wheelSource(REL_HWHEEL, -1));
  map.forgetAll();
  EXPECT_EQ(map, ControlMap());
}

TEST(ControlMapTest, AControlThatIsTaughtItsOwnSourceIsTiedToANodeButNotTaught) {
  ControlMap map;
  EXPECT_TRUE(map.teach("4", keySource(KEY_A, keyboardNode)));
  EXPECT_FALSE(map.isTaught("4"));
  EXPECT_EQ(map.controlOf(keyboardNode, key(KEY_A, 1)), "4");
  EXPECT_EQ(map.controlOf(pointerNode, key(KEY_A, 1)), "");
}

TEST(ControlMapTest, TeachesNoOtherControlsAndNoOtherSources) {
  const std::string longNode(ControlMap::maximumNodeLength + 1, 'n');
  ControlMap map;
  for (const char* control : {"", "5", "236", "3", "Keymap"})
    EXPECT_FALSE(map.teach(control, keySource(KEY_1))) << control;
  for (const EventSource& source :
       {EventSource{}, keySource(KEY_RESERVED), keySource(KEY_MAX + 1), EventSource{"", EV_KEY, KEY_1, 1},
        wheelSource(REL_WHEEL, 0), wheelSource(REL_WHEEL, 2), wheelSource(REL_WHEEL_HI_RES, 1), wheelSource(REL_X, 1),
        EventSource{"", EV_ABS, ABS_X, 1}, EventSource{"", EV_ABS, ABS_HAT0X, 0}, EventSource{"", EV_MSC, MSC_SCAN, 1},
        keySource(KEY_1, longNode)})
    EXPECT_FALSE(map.teach("4", source)) << testing::PrintToString(source);
  EXPECT_EQ(map, ControlMap());
  EXPECT_TRUE(map.teach("4", keySource(KEY_MAX, longNode.substr(1))));
}

TEST(ControlMapTest, TellsWhatAnEventTeaches) {
  EXPECT_EQ(sourceOfEvent(keyboardNode, key(KEY_1, 1)), keySource(KEY_1, keyboardNode));
  EXPECT_EQ(sourceOfEvent(pointerNode, motion(REL_WHEEL, -3)), wheelSource(REL_WHEEL, -1, pointerNode));
  EXPECT_EQ(sourceOfEvent(pointerNode, motion(REL_WHEEL_HI_RES, 15)), wheelSource(REL_WHEEL, 1, pointerNode));
  EXPECT_EQ(sourceOfEvent(pointerNode, motion(REL_HWHEEL_HI_RES, -15)), wheelSource(REL_HWHEEL, -1, pointerNode));
  EXPECT_EQ(sourceOfEvent("", hat(ABS_HAT3Y, 1)), (EventSource{"", EV_ABS, ABS_HAT3Y, 1}));
  for (const KernelEvent& event : {key(KEY_RESERVED, 1), key(KEY_MAX + 1, 1), motion(REL_X, 3), motion(REL_WHEEL, 0),
                                   hat(ABS_HAT0X, 0), hat(ABS_X, 1), scanCode(1), endOfReport})
    EXPECT_EQ(sourceOfEvent(pointerNode, event), std::nullopt) << testing::PrintToString(event);
}

TEST(ControlMapTest, ReadsNothingFromWhatIsNoMap) {
  const PropertyList good =
      PropertyList::dictionary({{"node", keyboardNode}, {"type", EV_KEY}, {"code", KEY_1}, {"direction", 0}});
  const auto read = [](const PropertyList& entry) {
    return ControlMap::fromRecord(PropertyList::dictionary({{"4", entry}}));
  };
  EXPECT_EQ(read(good).sourceOf("4"), keySource(KEY_1, keyboardNode));
  const PropertyList none;
  for (const PropertyList& entry :
       {none, PropertyList("1"), PropertyList::array({good}), good.without("node"), good.without("type"),
        good.without("code"), good.without("direction"), good.with("node", 1), good.with("type", "1"),
        good.with("type", 1.0), good.with("type", true), good.with("type", 0x10001), good.with("code", -1),
        good.with("code", 0x10002), good.with("code", std::numeric_limits<std::uint64_t>::max()),
        good.with("direction", 256), good.with("type", EV_MSC)})
    EXPECT_EQ(read(entry), ControlMap()) << entry.description();
  for (const PropertyList& record :
       {none, PropertyList(1), PropertyList::array({good}), PropertyList::dictionary({{"5", good}, {"", good}})})
    EXPECT_EQ(ControlMap::fromRecord(record), ControlMap()) << record.description();
}

// Beside a list of (control, source) that is searched from end to end.
class ControlMapModel {
 public:
  void teach(const std::string& control, const EventSource& source) {
    std::erase_if(mTaught, [&](const auto& entry) {
      return entry.first == control ||
             (isSame(entry.second, source) &&
              (entry.second.node == source.node || entry.second.node.empty() || source.node.empty()));
    });
    mTaught.emplace_back(control, source);
  }
  void forget(const std::string& control) {
    std::erase_if(mTaught, [&](const auto& entry) { return entry.first == control; });
  }
  std::optional<EventSource> sourceOf(const std::string& control) const {
    for (const auto& [taught, source] : mTaught) {
      if (taught == control) return source;
    }
    const auto own = ControlMap().sourceOf(control);
    for (const auto& [taught, source] : mTaught) {
      if (own && isSame(source, *own)) return std::nullopt;
    }
    return own;
  }
  std::string controlOf(std::string_view node, const EventSource& source) const {
    for (const std::string& control : taughtControls()) {
      const auto own = sourceOf(control);
      if (own && isSame(*own, source) && (own->node.empty() || own->node == node)) return control;
    }
    return {};
  }

 private:
  static bool isSame(const EventSource& one, const EventSource& other) {
    return one.type == other.type && one.code == other.code && one.direction == other.direction;
  }

  std::vector<std::pair<std::string, EventSource>> mTaught;
};

TEST(ControlMapTest, StaysTrueThroughAnyTeachingAndForgettingAndOverTheDisk) {
  const std::vector<std::string> all = taughtControls();
  const std::vector<std::string> nodes = {"", std::string(keyboardNode), std::string(pointerNode)};
  std::vector<EventSource> sources = {keySource(KEY_1),
                                      keySource(BTN_SIDE),
                                      wheelSource(REL_HWHEEL, 1),
                                      wheelSource(REL_HWHEEL, -1),
                                      {"", EV_ABS, ABS_HAT0X, 1}};
  for (const char* control : {"43", "20", "03", "06", "07"}) sources.push_back(*ControlMap().sourceOf(control));
  Random random{27};
  ControlMap map;
  ControlMapModel model;
  for (int round = 0; round < 300; ++round) {
    const std::string control = random.of(all);
    if (random.oneIn(3)) {
      map.forget(control);
      model.forget(control);
    } else {
      EventSource source = random.of(sources);
      source.node = random.of(nodes);
      ASSERT_TRUE(map.teach(control, source));
      model.teach(control, source);
    }
    for (const std::string& each : all) ASSERT_EQ(map.sourceOf(each), model.sourceOf(each)) << each;
    for (const EventSource& each : sources) {
      for (const std::string_view node : {keyboardNode, pointerNode})
        ASSERT_EQ(map.controlOf(node, eventOf(each)), model.controlOf(node, each)) << testing::PrintToString(each);
    }
    const auto stored = encodeBinaryPropertyList(map.record());
    ASSERT_TRUE(stored.has_value());
    ASSERT_EQ(ControlMap::fromRecord(decodeBinaryPropertyList(*stored).value()), map);
  }
}

}  // namespace
}  // namespace vorn::engine::test
