// Each kind of change as clients ask for it, from the request to its entry, and back.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/TestParts.h"
#include "core-engine/history/History.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "core-engine/rules/ProfileRules.h"

namespace vorn::engine::test {
namespace {

using Entries = std::vector<PropertyList::Pair>;

PropertyList words(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

std::vector<PropertyList> events() {
  return {keyPress(4, 10), keyRelease(4, 50), keyPress(5, 20), keyRelease(5, 30)};
}

// Three profiles with all settings and three macros; controls of the second profile play the second and third macro,
// one of the third switches to the first profile.
PropertyList startBundle() {
  std::vector<PropertyList> profiles;
  for (const char* name : {"Home", "Work", "Games"}) {
    profiles.push_back(vorn::test::profile(name).merging(engine::test::profile(name)));
  }
  const PropertyList bundle =
      bundleOf(std::move(profiles), 1)
          .with("Macros",
                PropertyList::array({macro("Hi", 0, events()), macro("Jump", 1, events()), macro("Run", 2, events())}));
  const auto keysGroup = [](int usage, const PropertyList& record) {
    return words({{"Keys", words({{std::to_string(usage), record}})}});
  };
  const PropertyList jumps = *withUpdatedProfile(bundle, 1, keysGroup(43, assignment(10, 1, 1))).bundle;
  const PropertyList runs = *withUpdatedProfile(jumps, 1, keysGroup(20, assignment(10, 2, 1))).bundle;
  return *withUpdatedProfile(runs, 2, keysGroup(43, assignment(17, 0, 0))).bundle;
}

class HistoryRequestsTest : public testing::Test, protected TestParts {
 protected:
  HistoryRequestsTest() : TestParts(startBundle()) {
    ports.names = {"ClientPort"};
    store.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
      history.note(before, after, origin);
    });
  }

  // A request of a client, which is answered with this status.
  void ask(MessageID message, Entries entries, ReturnStatus status = ReturnStatus::Done) {
    ports.answers.clear();
    entries.emplace_back("ProductID", 273);
    entries.emplace_back("ResponseMsgPortName", "ClientPort");
    const Bytes data = encodeBinaryPropertyList(PropertyList::dictionary(std::move(entries))).value();
    dispatcher.receive({static_cast<std::int32_t>(message), data, ":1.7"});
    ASSERT_EQ(ports.answers.size(), 1U);
    EXPECT_EQ(ports.answers[0].body["ReturnStatus"], PropertyList(static_cast<int>(status)));
  }
  void update(const PropertyList& settings, int profileID = 1) {
    ask(MessageID::UpdateProfile, {{"ProfileID", profileID}, {"DeviceSettingsDictionary", settings}});
  }
  void press(std::uint16_t usage) {
    recorder.note({7, usage, true});
    recorder.note({7, usage, false});
  }

  History::Outcome undo() { return outcomeOf(&History::undo); }
  History::Outcome redo() { return outcomeOf(&History::redo); }

  // What the requests do is one entry, which can be taken back and made again exactly.
  void expectOne(const PropertyList& description, const std::function<void()>& requests) {
    SCOPED_TRACE(description.description());
    const PropertyList before = store.bundle();
    const std::size_t count = history.entries().all().size();
    requests();
    const PropertyList after = store.bundle();
    EXPECT_NE(before, after);
    ASSERT_EQ(history.entries().all().size(), count + 1);
    EXPECT_EQ(history.entries().all().back().description, description);
    EXPECT_EQ(undo(), History::Outcome::Done);
    EXPECT_EQ(store.bundle(), before);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(redo(), History::Outcome::Done);
    EXPECT_EQ(store.bundle(), after);
    EXPECT_EQ(stored(), after);
    // Nothing of it is part of the next gesture.
    scheduler.advance(std::chrono::minutes(1));
  }
  void expectNone(const std::function<void()>& work) {
    const PropertyList before = store.bundle();
    work();
    EXPECT_NE(store.bundle(), before);
    EXPECT_EQ(history.entries().all().size(), 0U);
  }

  History history{store, scheduler, [] { return std::int64_t{1'700'000'000}; }};
  RequestDispatcher dispatcher{parts(), ports};

 private:
  History::Outcome outcomeOf(void (History::*operation)(std::uint64_t, const History::Done&)) {
    History::Outcome outcome{};
    (history.*operation)(0, [&outcome](const History::Result& result) { outcome = result.outcome; });
    return outcome;
  }
};

TEST_F(HistoryRequestsTest, KeepTheAssignmentOfAControl) {
  const PropertyList group = store.bundle()["Profiles"].at(1)["Keys"];
  const auto assigned = [](int command, const char* param1, const char* param2) {
    return words({{"kind", "assignment"},
                  {"profile", "Work"},
                  {"keymap", 0},
                  {"control", "43"},
                  {"command", command},
                  {"param1", param1},
                  {"param2", param2}});
  };
  // The window sends the whole group, others the control alone.
  expectOne(assigned(16, "6", "1"), [&] { update(words({{"Keys", group.with("43", assignment(16, 6, 1))}})); });
  expectOne(assigned(10, "2", "1").with("target", "Run"), [&] {
    update(words({{"Keys", words({{"43", assignment(10, 2, 1)}})}}));
  });
  expectOne(assigned(17, "0", "0").with("target", "Home"), [&] {
    update(words({{"Keys", words({{"43", assignment(17, 0, 0)}})}}));
  });
}

TEST_F(HistoryRequestsTest, KeepTheCopyAndTheClearingOfAKeymap) {
  const PropertyList& keymaps = store.bundle()["Profiles"].at(1)["Keymap"];
  const PropertyList copied = keymaps.replacing(4, keymaps.at(0));
  expectOne(words({{"kind", "assignment"},
                   {"profile", "Work"},
                   {"keymap", 4},
                   {"controls", PropertyList::array({"20", "43"})},
                   {"count", 2}}),
            [&] {
              update(words({{"Keymap", copied}}));
            });
  expectOne(words({{"kind", "assignment"},
                   {"profile", "Work"},
                   {"keymap", 0},
                   {"controls", PropertyList::array({"20", "43"})},
                   {"count", 2}}),
            [&] {
              update(words({{"Keymap", copied.replacing(0, factoryKeymap())}}));
            });
}

TEST_F(HistoryRequestsTest, KeepWhatBecomesOfProfiles) {
  const PropertyList record = engine::test::profile("Imported").with("PollingRate", 500);
  expectOne(words({{"kind", "profileAdded"}, {"profile", "Imported"}}), [&] {
    ask(MessageID::AddProfile, {{"DeviceSettingsDictionary", record}});
  });
  expectOne(words({{"kind", "profileRenamed"}, {"profile", "Imported"}, {"newName", "Mine"}}),
            [&] { update(record.with("ProfileName", "Mine"), 3); });
  expectOne(words({{"kind", "profileSwitched"}, {"profile", "Mine"}}), [&] {
    ask(MessageID::SwitchProfile, {{"ProfileID", 3}});
  });
  const PropertyList records = store.bundle()["Profiles"];
  expectOne(words({{"kind", "profilesReordered"}}), [&] {
    ask(MessageID::ReplaceAllProfiles,
        {{"AllProfiles", PropertyList::array({records.at(2), records.at(0), records.at(1), records.at(3)})}});
  });
  // To the factory settings: everything but its name.
  expectOne(words({{"kind", "profileChanged"}, {"profile", "Home"}}), [&] {
    update(vorn::test::profile("Home").with("PollingRate", 125).with("ScrollLED", 0).with("DPIX", 4000), 1);
  });
}

TEST_F(HistoryRequestsTest, KeepADeletedProfileWithTheSwitchAndTheReferences) {
  // As the window does it: deletion, switch, clean-up, and once more where references moved.
  const PropertyList& home = store.bundle()["Profiles"].at(0);
  const PropertyList& games = store.bundle()["Profiles"].at(2);
  const PropertyList cleaned =
      *withUpdatedProfile(store.bundle(), 2, words({{"Keys", words({{"43", assignment(45, 43)}})}})).bundle;
  expectOne(words({{"kind", "profileDeleted"}, {"profile", "Work"}}), [&] {
    ask(MessageID::DeleteProfile, {{"ProfileID", 1}});
    ask(MessageID::SwitchProfile, {{"ProfileID", 1}});
    ask(MessageID::ReplaceAllProfiles, {{"AllProfiles", PropertyList::array({home, cleaned["Profiles"].at(2)})}});
    scheduler.advance(std::chrono::seconds(1));
    ask(MessageID::ReplaceAllProfiles, {{"AllProfiles", PropertyList::array({home, games})}});
  });
}

TEST_F(HistoryRequestsTest, KeepADeletedMacroWithTheAssignmentsThatTheDeletionTook) {
  const PropertyList after =
      *withUpdatedProfile(store.bundle(), 1,
                          words({{"Keys", words({{"43", assignment(45, 43)}, {"20", assignment(10, 1, 1)}})}}))
           .bundle;
  expectOne(words({{"kind", "macroDeleted"}, {"macro", "Jump"}}), [&] {
    ask(MessageID::DeleteMacro, {{"macroID", 1}});
    ask(MessageID::ReplaceAllProfiles, {{"AllProfiles", after["Profiles"]}});
  });
}

TEST_F(HistoryRequestsTest, KeepASwitchOfProfilesAfterADeletedMacroAsOneOfItsOwn) {
  ask(MessageID::DeleteMacro, {{"macroID", 0}});
  expectOne(words({{"kind", "profileSwitched"}, {"profile", "Games"}}), [&] {
    ask(MessageID::SwitchProfile, {{"ProfileID", 2}});
  });
}

TEST_F(HistoryRequestsTest, KeepWhatBecomesOfMacros) {
  const auto macroWords = [](const char* kind, const char* name) { return words({{"kind", kind}, {"macro", name}}); };
  const PropertyList event = keyPress(9, 70);
  expectOne(macroWords("macroAdded", "New"), [&] {
    ask(MessageID::AddMacro, {{"MacroContents", words({{"MacroName", "New"}})}});
  });
  expectOne(macroWords("macroRenamed", "New").with("newName", "Old"), [&] {
    ask(MessageID::RenameMacro, {{"MacroContents", words({{"macroID", 3}, {"MacroName", "Old"}})}});
  });
  expectOne(macroWords("macroEvents", "Jump"), [&] {
    ask(MessageID::UpdateMacroEvent, {{"macroID", 1}, {"sequenceIdx", 2}, {"sequence", event}});
  });
  expectOne(macroWords("macroEventsRemoved", "Jump").with("count", 1), [&] {
    ask(MessageID::RemoveMacroEvent, {{"macroID", 1}, {"macroEventTableIndex", 4}});
  });
  expectOne(macroWords("macroDelays", "Jump"), [&] {
    ask(MessageID::RemoveMacroEvent, {{"macroID", 1}, {"macroEventTableIndex", 1}});
  });
  expectOne(macroWords("macroDelays", "Run"), [&] {
    ask(MessageID::SetEventDelay, {{"macroID", 2}, {"sequenceIdx", 1}, {"delay", 999}});
  });
  expectOne(macroWords("macroDelays", "Run"), [&] {
    ask(MessageID::SetAllEventsDelay, {{"macroID", 2}, {"delay", 1}, {"HasNoDelay", false}});
  });
  expectOne(macroWords("macroDelays", "Run"), [&] {
    ask(MessageID::SetAllEventsDelay, {{"macroID", 2}, {"HasNoDelay", true}});
  });
  const PropertyList shorter = sequenceOf({keyPress(4, 0), keyRelease(4, 0)});
  expectOne(macroWords("macroEventsRemoved", "Run").with("count", 2), [&] {
    ask(MessageID::ReplaceMacroSequence,
        {{"MacroContents", words({{"macroID", 2}, {"MacroName", "Run"}, {"sequence", shorter}})}});
  });
  expectOne(macroWords("macroEventsRemoved", "Run"), [&] { ask(MessageID::RemoveAllMacroEvents, {{"macroID", 2}}); });
}

TEST_F(HistoryRequestsTest, KeepARecordingAsOneChange) {
  for (const int isAppending : {0, 1}) {
    expectOne(words({{"kind", "macroRecorded"}, {"macro", "Jump"}}), [&] {
      ask(MessageID::StartMacroRecording, {{"macroID", 1}, {"isAppendRecording", isAppending}});
      for (const auto usage : std::initializer_list<std::uint16_t>{4, 5, 6}) press(usage);
      ask(MessageID::StopMacroRecording, {});
      ask(MessageID::SaveRecordedEvents, {{"macroID", 1}, {"isAppendRecording", isAppending}});
    });
  }
}

TEST_F(HistoryRequestsTest, KeepTheValuesOfAProfile) {
  const PropertyList stages = PropertyList::array({stage(500, 500), stage(900, 900)});
  const std::pair<const char*, PropertyList> values[] = {
      {"sensitivity", words({{"DPIX", 1300}, {"DPIY", 1300}})},
      {"sensitivity", words({{"IndependentXYOn", 1}})},
      {"stages", words({{"Stages", stages}, {"StageValue", 1}, {"DPIX", 900}, {"DPIY", 900}})},
      {"pollingRate", words({{"PollingRate", 125}})},
      {"acceleration", words({{"AccelerationOn", 0}})},
      {"acceleration", words({{"Acceleration", 3}, {"AccelerationOn", 1}})},
      {"light", words({{"LEDEffects", 2}, {"ScrollLED", 0}})},
      {"light", words({{"LEDColors", PropertyList::array({color(0, 0, 0), color(1, 1, 1), color(0, 1, 0)})}})},
      {"power", words({{"PowerSaver", 2}})},
      {"power", words({{"BrightnessNormal", 1}, {"BrightnessBattery", 1}, {"BatteryCriticalLevel", 2}})},
      {"application", words({{"AppInfo", words({{"application", "Editor"}})}, {"AutoSwitchOn", 1}})},
      {"messages", words({{"SensitivityOSDOn", 0}})},
  };
  for (const auto& [kind, settings] : values) {
    expectOne(words({{"kind", kind}, {"profile", "Work"}}), [this, given = settings] { update(given); });
  }
}

TEST_F(HistoryRequestsTest, KeepNothingOfAnotherKeymapInForce) {
  expectNone([&] { update(words({{"KeymapID", 3}})); });
  // The window sends its groups along.
  const PropertyList keymap = store.bundle()["Profiles"].at(1)["Keymap"].at(5);
  expectNone([&] { update(words({{"KeymapID", 5}, {"Keys", keymap["Keys"]}, {"Buttons", keymap["Buttons"]}})); });
}

TEST_F(HistoryRequestsTest, KeepTheProfilesOfOneImportAsOneChange) {
  const auto add = [this](const char* name, Entries further) {
    further.emplace_back("DeviceSettingsDictionary", engine::test::profile(name));
    ask(MessageID::AddProfile, std::move(further));
  };
  expectOne(words({{"kind", "profileAdded"}, {"profile", "A"}, {"count", 2}}), [&] {
    add("A", {});
    add("B", {{"IsContinuation", true}});
  });
}

TEST_F(HistoryRequestsTest, KeepAPressAndItsReleaseThatAreEditedTogetherAsOneChange) {
  const PropertyList event = keyPress(9, 70);
  expectOne(words({{"kind", "macroEvents"}, {"macro", "Jump"}}), [&] {
    ask(MessageID::UpdateMacroEvent, {{"macroID", 1}, {"sequenceIdx", 0}, {"sequence", event}});
    ask(MessageID::UpdateMacroEvent,
        {{"macroID", 1}, {"sequenceIdx", 2}, {"sequence", event}, {"IsContinuation", true}});
  });
}

TEST_F(HistoryRequestsTest, KeepAnAddedProfileWithTheSwitchToIt) {
  expectOne(words({{"kind", "profileAdded"}, {"profile", "A"}}), [&] {
    ask(MessageID::AddProfile, {{"DeviceSettingsDictionary", engine::test::profile("A")}});
    ask(MessageID::SwitchProfile, {{"ProfileID", 3}});
  });
}

TEST_F(HistoryRequestsTest, KeepAProfileThatGetsItsFactorySettingsAsRestored) {
  const PropertyList factory = vorn::test::profile("New").merging(engine::test::profile("New")).with("DPIX", 700);
  disk.put(ownDefaults, encodeBinaryPropertyList(defaultsFile(bundleOf({factory}))).value());
  const PropertyList asNew = defaults.ownProfile().with("ProfileName", "Work");
  const PropertyList restored = words({{"kind", "profileRestored"}, {"profile", "Work"}});
  update(words({{"KeymapID", 5}}));
  const PropertyList other = words({{"PollingRate", 125}, {"ScrollLED", 0}});
  expectOne(words({{"kind", "profileChanged"}, {"profile", "Work"}}), [&] { update(other); });
  expectOne(restored, [&] { update(asNew); });
  // Also where little has been changed, with a boolean for a flag, and right after a slider.
  update(words({{"DPIX", 1300}}));
  expectOne(restored, [&] { update(asNew.with("ProfileOSDOn", asNew["ProfileOSDOn"].toBool())); });
  // A record that is not the factory's, and one value that makes the profile what it was from the factory.
  expectOne(words({{"kind", "profileChanged"}, {"profile", "Work"}}), [&] { update(asNew.merging(other)); });
  update(asNew.with("ScrollLED", 0));
  scheduler.advance(std::chrono::minutes(1));
  expectOne(words({{"kind", "light"}, {"profile", "Work"}}), [&] {
    update(words({{"ScrollLED", asNew["ScrollLED"]}}));
  });
}

TEST_F(HistoryRequestsTest, KeepANewProfileThatIsNamedAsRenamed) {
  const PropertyList factory = vorn::test::profile("New").merging(engine::test::profile("New"));
  disk.put(ownDefaults, encodeBinaryPropertyList(defaultsFile(bundleOf({factory}))).value());
  const PropertyList asNew = defaults.ownProfile();
  update(asNew.with("ProfileName", "Untitled"));
  // A client sends the whole record along.
  expectOne(words({{"kind", "profileRenamed"}, {"profile", "Untitled"}, {"newName", "Travel"}}),
            [&] { update(asNew.with("ProfileName", "Travel")); });
}

TEST_F(HistoryRequestsTest, KeepNothingOfWhatTheMouseSwitches) {
  expectNone([&] { profiles.switchTo(2); });
  expectNone([&] { profiles.change(words({{"KeymapID", 5}})); });
  expectNone([&] { profiles.change(words({{"StageValue", 2}, {"DPIX", 400}, {"DPIY", 400}})); });
  expectNone([&] { profiles.changeWhileHeld("43", words({{"DPIX", 100}})); });
  expectNone([&] { profiles.release("43"); });
}

TEST_F(HistoryRequestsTest, KeepNothingOfWhatIsRefusedOrChangesNothing) {
  ask(MessageID::DeleteProfile, {{"ProfileID", 7}}, ReturnStatus::OutOfRange);
  ask(MessageID::RenameMacro, {{"MacroContents", words({{"macroID", 1}})}}, ReturnStatus::Malformed);
  update(words({{"ScrollLED", store.bundle()["Profiles"].at(1)["ScrollLED"]}}));
  disk.failFrom(1, std::errc::no_space_on_device);
  ask(MessageID::RemoveAllMacroEvents, {{"macroID", 2}}, ReturnStatus::NotSaved);
  EXPECT_EQ(history.entries().all().size(), 0U);
  EXPECT_EQ(store.bundle(), startBundle());
}

}  // namespace
}  // namespace vorn::engine::test
