// What vornctl asks of an engine, request by request.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "ctl/Assignment.h"
#include "ctl/RecordFile.h"
#include "ctl/VornCtl.h"
#include "model/ProfileFolder.h"
#include "model/SettingsKeys.h"
#include "support/FakeEngineProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl::test {
namespace {

using engine::test::TemporaryFolder;
using vorn::test::FakeEngineProcess;
using vorn::test::PropertyListFile;

PropertyList dictionary(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

PropertyList record(int command, const PropertyList& param1 = 0, const PropertyList& param2 = 0) {
  return dictionary({{"command", command}, {"param1", param1}, {"param2", param2}, {"further", 1}});
}

const PropertyList keysGroup = dictionary({{"43", record(10, 1, 1)}, {"20", record(45, 20)}});
const PropertyList buttonsGroup = dictionary({{"03", record(17, 1)}, {"06", record(18)}});

PropertyList profile(std::string_view name, int keymapID) {
  const PropertyList keymap = dictionary({{"Keys", keysGroup}, {"Buttons", buttonsGroup}});
  return dictionary({{"ProfileName", name},
                     {"Keys", keysGroup},
                     {"Buttons", buttonsGroup},
                     {"KeymapID", keymapID},
                     {"Keymap", PropertyList::array({keymap, keymap})},
                     {"DPIX", 800},
                     {"Stages", PropertyList::array({dictionary({{"dpix", 400}, {"dpiy", 500}})})}});
}

PropertyList macro(std::string_view name, int id) {
  return dictionary({{"MacroName", name}, {"macroID", id}, {"delay", 20}});
}

const PropertyList bundle = dictionary({{"Profiles", PropertyList::array({profile("One", 0), profile("Two", 1)})},
                                        {"Macros", PropertyList::array({macro("Jump", 0), macro("Run", 1)})},
                                        {"DeviceSettings", dictionary({{"ActiveProfile", 1}})}});

// All profiles with another record under a control, in their groups and keymaps.
PropertyList withChanged(std::string_view group, std::string_view identifier, const PropertyList& changed) {
  std::vector<PropertyList> profiles;
  for (const PropertyList& each : bundle["Profiles"].elements()) {
    const PropertyList newGroup = each[group].with(identifier, changed);
    const PropertyList keymap = each["Keymap"].at(0).with(group, newGroup);
    profiles.push_back(each.with(group, newGroup).with("Keymap", PropertyList::array({keymap, keymap})));
  }
  return PropertyList::array(std::move(profiles));
}

class VornCtlRequestsTest : public testing::Test {
 protected:
  // Runs the command and gives the requests after the one for all settings, without the keys that all have.
  std::vector<FakeEngineProcess::Request> requestsOf(const Words& words) {
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.status, 0) << run.output;
    output = run.output;
    std::vector<FakeEngineProcess::Request> requests;
    for (FakeEngineProcess::Request& request : engine.takeRequests()) {
      EXPECT_EQ(request.body["ProductID"], PropertyList(273));
      EXPECT_EQ(request.body["ResponseMsgPortName"], PropertyList("VornCtlReplyPort" + std::to_string(run.id)));
      EXPECT_EQ(request.body["Source App"], PropertyList("org.vorn.vornctl"));
      EXPECT_EQ(request.body["IsVisitor"], PropertyList(true));
      request.body = request.body.without("ProductID").without("ResponseMsgPortName").without("Source App");
      request.body = request.body.without("IsVisitor");
      if (request.messageID == 4) {
        EXPECT_EQ(request.body, dictionary({}));
      } else {
        requests.push_back(std::move(request));
      }
    }
    return requests;
  }
  using Expected = std::vector<FakeEngineProcess::Request>;

  static Expected update(int profileID, const PropertyList& settings) {
    return {{6, dictionary({{"ProfileID", profileID}, {"DeviceSettingsDictionary", settings}})}};
  }

  vorn::test::PrivateBus bus;
  TemporaryFolder folder;
  PropertyListFile settings{dictionary({{"AllDevSettings", bundle}, {"ReturnStatus", 0}})};
  PropertyListFile changed{dictionary({{"ReturnDictionary", bundle}, {"ReturnStatus", 0}})};
  FakeEngineProcess engine{{"on 4 reply " + settings.path(), "on * reply " + changed.path()}};
  std::string output;
};

TEST_F(VornCtlRequestsTest, SwitchRenameAddAndCopyProfiles) {
  EXPECT_EQ(requestsOf({"profiles", "switch", "1"}), (Expected{{10, dictionary({{"ProfileID", 0}})}}));
  EXPECT_EQ(requestsOf({"profiles", "switch", "Two"}), (Expected{{10, dictionary({{"ProfileID", 1}})}}));
  const auto moved = [](std::initializer_list<PropertyList> order) {
    return Expected{{102, dictionary({{"ProfileOrder", PropertyList::array(order)},
                                      {"ProfileNames", PropertyList::array({"One", "Two"})}})}};
  };
  EXPECT_EQ(requestsOf({"profiles", "move", "One", "2"}), moved({1, 0}));
  EXPECT_EQ(requestsOf({"profiles", "move", "2", "1"}), moved({1, 0}));
  EXPECT_EQ(requestsOf({"profiles", "move", "2", "2"}), moved({0, 1}));
  EXPECT_EQ(requestsOf({"profiles", "rename", "2", "One"}), update(1, dictionary({{"ProfileName", "One(2)"}})));
  EXPECT_EQ(output, "Profile 2 \"One(2)\"\n");
  EXPECT_EQ(requestsOf({"profiles", "rename", "2", "Two", "--json"}), update(1, dictionary({{"ProfileName", "Two"}})));
  EXPECT_EQ(output, "{\"id\":1,\"name\":\"Two\"}\n");
  const auto added = [](const PropertyList& settingsOfIt) {
    return Expected{{5, dictionary({{"DeviceSettingsDictionary", settingsOfIt}})}};
  };
  EXPECT_EQ(requestsOf({"profiles", "add"}), added(dictionary({{"ProfileName", "Untitled Profile"}})));
  EXPECT_EQ(output, "Profile 3 \"Untitled Profile\"\n");
  EXPECT_EQ(requestsOf({"profiles", "add", "One"}), added(dictionary({{"ProfileName", "One(2)"}})));
  EXPECT_EQ(requestsOf({"profiles", "copy", "1"}), added(profile("One(2)", 0)));
  EXPECT_EQ(requestsOf({"profiles", "copy", "One", "Three"}), added(profile("Three", 0)));
}

TEST_F(VornCtlRequestsTest, DeleteAProfileAndWhatPointsAtIt) {
  const PropertyList shorter = bundle.with("Profiles", bundle["Profiles"].removing(1));
  const PropertyListFile deleted{dictionary({{"ReturnDictionary", shorter}, {"ReturnStatus", 0}})};
  ASSERT_TRUE(engine.obey("on 9 reply " + deleted.path()));
  const PropertyList cleaned = withChanged("Buttons", "03", record(3).without("further")).removing(1);
  EXPECT_EQ(requestsOf({"profiles", "delete", "2"}),
            (Expected{{9, dictionary({{"ProfileID", 1}})}, {7, dictionary({{"AllProfiles", cleaned}})}}));
}

TEST_F(VornCtlRequestsTest, CompareProfilesAndAskForNothing) {
  EXPECT_EQ(requestsOf({"profiles", "compare", "One", "1"}), Expected());
  EXPECT_EQ(output, "no differences\n");
  EXPECT_EQ(requestsOf({"profiles", "compare", "One", "1", "--json"}), Expected());
  EXPECT_EQ(output, "[]\n");
  const PropertyList two = bundle["Profiles"].at(1);
  const PropertyList other = two.with("Keys", two["Keys"].with("43", dictionary({{"command", 17}, {"param1", 0}})));
  const PropertyListFile different{dictionary(
      {{"AllDevSettings", bundle.with("Profiles", bundle["Profiles"].replacing(1, other))}, {"ReturnStatus", 0}})};
  ASSERT_TRUE(engine.obey("on 4 reply " + different.path()));
  EXPECT_EQ(requestsOf({"profiles", "compare", "One", "Two"}), Expected());
  EXPECT_EQ(output,
            "controls\n"
            "  KeymapID: 0 | 1\n"
            "  keymap 2, 1 Tab: macro \"Run\" | profile \"One\"\n");
  EXPECT_EQ(requestsOf({"profiles", "compare", "Two", "One", "--json"}), Expected());
  EXPECT_EQ(output,
            "[{\"key\":\"KeymapID\",\"left\":1,\"part\":\"controls\",\"right\":0},"
            "{\"control\":1,\"key\":\"Keys\",\"keymap\":1,"
            "\"left\":{\"command\":17,\"param1\":0},\"part\":\"controls\","
            "\"right\":{\"command\":10,\"further\":1,\"param1\":1,\"param2\":1}}]\n");
}

TEST_F(VornCtlRequestsTest, ExportAndImportAllProfiles) {
  EXPECT_EQ(requestsOf({"profiles", "export", "--all", folder.path("p")}), Expected());
  const std::string all = folder.path("p.SkarnProfiles");
  EXPECT_EQ(*readRecord(all + "/2 Two.SkarnProfile", RecordKind::Profile), profile("Two", 1));
  const auto added = [](const char* name, int keymap) {
    return FakeEngineProcess::Request{5, dictionary({{"DeviceSettingsDictionary", profile(name, keymap)}})};
  };
  FakeEngineProcess::Request further = added("Two(2)", 1);
  further.body = further.body.with("IsContinuation", true);
  EXPECT_EQ(requestsOf({"profiles", "import", "--all", all}), (Expected{added("One(2)", 0), further}));
  EXPECT_EQ(output, "Profile 3 \"One(2)\"\nProfile 4 \"Two(2)\"\n");
  EXPECT_EQ(requestsOf({"profiles", "import", "--all", all, "--json"}).size(), 2U);
  EXPECT_EQ(output, "[{\"id\":2,\"name\":\"One(2)\"},{\"id\":3,\"name\":\"Two(2)\"}]\n");
}

TEST_F(VornCtlRequestsTest, WriteAllProfilesToNoStandardOutput) {
  const Ended run = runVornCtl({"profiles", "export", "--all", "-"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output, "vornctl: all profiles go into a folder, not to standard output\n");
  EXPECT_FALSE(std::filesystem::exists("-.SkarnProfiles"));
}

TEST_F(VornCtlRequestsTest, TellFirstWhatOfAllProfilesDoesNotFit) {
  ASSERT_FALSE(writeProfileFolder(
      folder.path("all"), PropertyList::array({profile("A", 0), profile("B", 0), profile("C", 0), profile("D", 0)})));
  const Ended run = runVornCtl({"profiles", "import", "--all", folder.path("all")});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, "not imported: " + folder.path("all/4 D.SkarnProfile") +
                            ": the mouse holds five profiles\nProfile 3 \"A\"\nProfile 4 \"B\"\nProfile 5 \"C\"\n"
                            "vornctl: 1 of 4 files was not imported\n");
}

TEST_F(VornCtlRequestsTest, TellWhatWasAddedWhereALaterProfileIsRefused) {
  ASSERT_FALSE(writeProfileFolder(folder.path("all"), PropertyList::array({profile("A", 0), profile("B", 0)})));
  const PropertyListFile refusal{dictionary({{"ReturnStatus", 4}})};
  const std::pair<const char*, std::vector<std::string>> outputs[] = {
      {"--no-start", {"Profile 3 \"A\"", "vornctl: the engine could not save the change"}},
      {"--json",
       {R"([{"id":2,"name":"A"}])",
        R"({"error":"refused","message":"the engine could not save the change","status":1})"}},
  };
  for (const auto& [option, expected] : outputs) {
    engine.takeRequests();
    ASSERT_TRUE(engine.obey("on 5 silent"));
    vorn::test::ChildProcess run(vornctlCommandLine({"profiles", "import", "--all", folder.path("all"), option}));
    ASSERT_TRUE(engine.waitForRequest(5));
    // The first is done, the next is refused.
    ASSERT_TRUE(engine.obey("on 5 reply " + refusal.path()));
    ASSERT_TRUE(engine.obey("reply " + changed.path()));
    std::vector<std::string> lines;
    while (const auto line = run.waitForLine([](const std::string&) { return true; })) lines.push_back(*line);
    EXPECT_EQ(run.waitForEnd(), 1);
    EXPECT_EQ(lines, expected);
  }
}

TEST_F(VornCtlRequestsTest, ExportAndImportProfiles) {
  EXPECT_EQ(requestsOf({"profiles", "export", "2", folder.path("p")}), Expected());
  EXPECT_EQ(*readRecord(folder.path("p.SkarnProfile"), RecordKind::Profile), profile("Two", 1));
  EXPECT_EQ(requestsOf({"profiles", "import", folder.path("p.SkarnProfile")}),
            (Expected{{5, dictionary({{"DeviceSettingsDictionary", profile("Two(2)", 1)}})}}));
}

TEST_F(VornCtlRequestsTest, GetAndSetValues) {
  EXPECT_EQ(requestsOf({"get", "DPIX"}), Expected());
  EXPECT_EQ(output, "800\n");
  EXPECT_EQ(requestsOf({"get", "ProfileName", "--profile", "1", "--json"}), Expected());
  EXPECT_EQ(output, "\"One\"\n");
  EXPECT_EQ(requestsOf({"set", "DPIX", "900"}), update(1, dictionary({{"DPIX", 900}})));
  EXPECT_EQ(output, "");
  EXPECT_EQ(requestsOf({"set", "Stages/0/dpiy", "900", "--profile", "One"}),
            update(0, dictionary({{"Stages", PropertyList::array({dictionary({{"dpix", 400}, {"dpiy", 900}})})}})));
}

TEST_F(VornCtlRequestsTest, FindNamesAndKeysInAnyCase) {
  EXPECT_EQ(requestsOf({"profiles", "switch", "two"}), (Expected{{10, dictionary({{"ProfileID", 1}})}}));
  EXPECT_EQ(requestsOf({"get", "stages/0/DPIY", "--profile", "ONE"}), Expected());
  EXPECT_EQ(output, "500\n");
  EXPECT_EQ(requestsOf({"set", "dpix", "900"}), update(1, dictionary({{"DPIX", 900}})));
}

TEST_F(VornCtlRequestsTest, AskWhichOfTwoNamesIsMeant) {
  const PropertyList twins = bundle.with("Macros", PropertyList::array({macro("Jump", 0), macro("JUMP", 1)}));
  const PropertyListFile twinSettings{dictionary({{"AllDevSettings", twins}, {"ReturnStatus", 0}})};
  ASSERT_TRUE(engine.obey("on 4 reply " + twinSettings.path()));
  EXPECT_EQ(requestsOf({"macros", "delete", "JUMP"}).front().body, dictionary({{"macroID", 1}}));
  const Ended run = runVornCtl({"macros", "delete", "jump"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, "vornctl: \"jump\" may be macro 1 \"Jump\" or 2 \"JUMP\"; give the number\n");
}

TEST_F(VornCtlRequestsTest, NeverGiveNamesToTheTerminalAsTheyAre) {
  const std::string name = "A\n* 2  B\x1b]0;x\u009b\u202e";
  const PropertyList hostile = bundle.with("Profiles", PropertyList::array({profile(name, 0)}));
  const PropertyListFile hostileSettings{dictionary(
      {{"AllDevSettings", hostile.with("DeviceSettings", PropertyList::dictionary())}, {"ReturnStatus", 0}})};
  ASSERT_TRUE(engine.obey("on 4 reply " + hostileSettings.path()));
  const std::string shown = R"(A\n* 2  B\u001b]0;x\u009b\u202e)";
  requestsOf({"profiles", "list"});
  EXPECT_EQ(output, "* 1  " + shown + "\n");
  requestsOf({"get", "profilename"});
  EXPECT_EQ(output, shown + "\n");
  requestsOf({"profiles", "list", "--json"});
  EXPECT_EQ(output, "[{\"id\":0,\"isActive\":true,\"name\":\"" + shown + "\"}]\n");
  EXPECT_EQ(runVornCtl({"profiles", "switch", name + "B"}).output,
            "vornctl: there is no profile \"" + shown + "B\"; did you mean \"" + shown + "\"?\n");
}

TEST_F(VornCtlRequestsTest, ExportToStandardOutputTheRecordAlone) {
  const auto exported = [&](const Words& words) {
    const std::string path = folder.path("out.plist");
    Words commandLine = {"/bin/sh", "-c", "path=$1; shift; exec \"$0\" \"$@\" > \"$path\"", VORNCTL_PROGRAM, path};
    commandLine.insert(commandLine.end(), words.begin(), words.end());
    vorn::test::ChildProcess process(commandLine);
    EXPECT_EQ(process.waitForEnd(), 0);
    return path;
  };
  EXPECT_EQ(*readRecord(exported({"profiles", "export", "2", "-"}), RecordKind::Profile), profile("Two", 1));
  EXPECT_EQ(*readRecord(exported({"macros", "export", "Jump", "-", "--json"}), RecordKind::Macro),
            macro("Jump", 0).without("macroID"));
}

TEST_F(VornCtlRequestsTest, ListWhatEveryControlDoes) {
  EXPECT_EQ(requestsOf({"assignments"}), Expected());
  EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 27);
  EXPECT_EQ(output.find(" 1  Tab          macro \"Run\"\n 2  Q            default\n"), 0U) << output;
  EXPECT_NE(output.find("\n17  Wheel        profile \"Two\"\n"), std::string::npos) << output;
  EXPECT_EQ(requestsOf({"assignments", "--profile", "One", "--keymap", "2", "--json"}), Expected());
  EXPECT_EQ(output.find(R"([{"action":"macro \"Run\"","command":10,"control":"Tab","identifier":"43","number":1,)"
                        R"("param1":1,"param2":1},)"),
            0U)
      << output;
}

TEST_F(VornCtlRequestsTest, RenameDeleteExportAndImportMacros) {
  const auto renamed = [](int id, std::string_view name) {
    return Expected{{25, dictionary({{"MacroContents", dictionary({{"MacroName", name}, {"macroID", id}})}})}};
  };
  EXPECT_EQ(requestsOf({"macros", "rename", "1", "Run"}), renamed(0, "Run(2)"));
  EXPECT_EQ(output, "Macro 1 \"Run(2)\"\n");
  EXPECT_EQ(requestsOf({"macros", "rename", "Run", "Run"}), renamed(1, "Run"));
  EXPECT_EQ(requestsOf({"macros", "delete", "1"}),
            (Expected{{22, dictionary({{"macroID", 0}})},
                      {7, dictionary({{"AllProfiles", withChanged("Keys", "43", record(10, 0, 1))}})}}));
  EXPECT_EQ(requestsOf({"macros", "export", "2", folder.path("m.SkarnMacro")}), Expected());
  EXPECT_EQ(requestsOf({"macros", "import", folder.path("m.SkarnMacro")}),
            (Expected{{32, dictionary({{"MacroContents", macro("Run(2)", 0).without("macroID")}})}}));
  EXPECT_EQ(output, "Macro 3 \"Run(2)\"\n");
}

TEST_F(VornCtlRequestsTest, ShowTheEventsOfAMacro) {
  const PropertyListFile lines(dictionary(
      {{"MacroSequences", PropertyList::array({"A pressed", "0.020 seconds delay\n"})}, {"ReturnStatus", 0}}));
  ASSERT_TRUE(engine.obey("on 27 reply " + lines.path()));
  EXPECT_EQ(requestsOf({"macros", "show", "Run"}), (Expected{{27, dictionary({{"IndexOfMacroSequence", 1}})}}));
  EXPECT_EQ(output, "A pressed\n0.020 seconds delay\n");
  EXPECT_EQ(requestsOf({"macros", "show", "Run", "--json"}), Expected());
  EXPECT_EQ(output, "{\"MacroName\":\"Run\",\"delay\":20,\"macroID\":1}\n");
}

TEST_F(VornCtlRequestsTest, AssignInTheActiveProfileWithItsKeymap) {
  EXPECT_EQ(requestsOf({"assign", "1", "key", "F5", "--with", "Shift"}),
            update(1, dictionary({{"Keys", keysGroup.with("43", record(16, 62, 2))}, {"KeymapID", 1}})));
  EXPECT_EQ(requestsOf({"assign", "wheel-up", "scroll", "down"}),
            update(1, dictionary({{"Buttons", buttonsGroup.with("06", record(19))}, {"KeymapID", 1}})));
}

TEST_F(VornCtlRequestsTest, AssignInAnotherProfileWithoutAKeymap) {
  EXPECT_EQ(requestsOf({"assign", "2", "macro", "Run", "--profile", "One"}),
            update(0, dictionary({{"Keys", keysGroup.with("20", record(10, 1, 1))}})));
}

TEST_F(VornCtlRequestsTest, AssignTheKeymapCycleInAllKeymaps) {
  const PropertyList group = keysGroup.with("20", record(50, 255));
  const PropertyList keymap = dictionary({{"Keys", group}, {"Buttons", buttonsGroup}});
  EXPECT_EQ(
      requestsOf({"assign", "2", "keymap", "cycle"}),
      update(1, dictionary({{"Keys", group}, {"Keymap", PropertyList::array({keymap, keymap})}, {"KeymapID", 1}})));
}

TEST_F(VornCtlRequestsTest, ListsProfilesAndMacros) {
  requestsOf({"profiles", "list"});
  EXPECT_EQ(output, "  1  One\n* 2  Two\n");
  requestsOf({"profiles", "list", "--json"});
  EXPECT_EQ(output, R"([{"id":0,"isActive":false,"name":"One"},{"id":1,"isActive":true,"name":"Two"}])"
                    "\n");
  requestsOf({"macros", "list"});
  EXPECT_EQ(output, "  1  Jump\n  2  Run\n");
  requestsOf({"macros", "list", "--json"});
  EXPECT_EQ(output, R"([{"id":0,"name":"Jump"},{"id":1,"name":"Run"}])"
                    "\n");
}

}  // namespace
}  // namespace vorn::ctl::test
