#include "ctl/Assignment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "model/SettingsKeys.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl {
namespace {

PropertyList record(int command, const PropertyList& param1 = 0, const PropertyList& param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}});
}

const PropertyList bundle =
    PropertyList::dictionary({{"Profiles", PropertyList::array({PropertyList::dictionary({{"ProfileName", "One"}}),
                                                                PropertyList::dictionary({{"ProfileName", "Two"}})})},
                              {"Macros", PropertyList::array({PropertyList::dictionary({{"MacroName", "Jump"}}),
                                                              PropertyList::dictionary({{"MacroName", "7"}})})}});

// The words after "assign".
Result<PropertyList> action(const std::vector<const char*>& words) {
  const auto line = parseCommandLine(words);
  if (!line) return line.failure();
  const Control* control = controlNamed(line->words[0]);
  const auto parsed = parseAction(*control, Arguments(line->words.begin() + 1, line->words.end()), *line);
  if (!parsed) return parsed.failure();
  return resolvedAction(*parsed, bundle);
}

TEST(AssignmentTest, BecomesAnAssignmentRecord) {
  const std::pair<std::vector<const char*>, PropertyList> table[] = {
      {{"1", "default"}, record(45, 43)},
      {{"27", "default"}, record(45, 232)},
      {{"17", "default"}, record(3)},
      {{"18", "default"}, record(18)},
      {{"19", "default"}, record(19)},
      {{"1", "disable"}, record(20)},
      {{"20", "disable"}, record(20, 82)},
      {{"17", "disable"}, record(20)},
      {{"1", "key", "F5"}, record(16, 62)},
      {{"1", "key", "a", "--with", "Control", "--with=Right-Command"}, record(16, 4, 129)},
      {{"1", "macro", "Jump"}, record(10, 0, 1)},
      {{"1", "macro", "2", "--repeat", "10"}, record(10, 1, 10)},
      {{"1", "macro", "1", "--repeat", "toggle"}, record(10, 0, 254)},
      {{"1", "macro", "1", "--repeat", "held"}, record(10, 0, 255)},
      {{"1", "profile", "Two"}, record(17, 1)},
      {{"1", "keymap", "1"}, record(50)},
      {{"1", "keymap", "8", "--switch-back"}, record(50, 7, 1)},
      {{"1", "keymap", "cycle"}, record(50, 255)},
      {{"1", "button", "5"}, record(5)},
      {{"1", "button", "double"}, record(9)},
      {{"1", "scroll", "up"}, record(18)},
      {{"1", "scroll", "down"}, record(19)},
      {{"1", "stage", "up"}, record(11)},
      {{"1", "stage", "down"}, record(12)},
      {{"1", "forward"}, record(13)},
      {{"1", "backward"}, record(14)},
      {{"1", "sensitivity", "on-the-fly"}, record(15)},
      {{"1", "sensitivity", "temporary"}, record(49)},
      {{"1", "key", "ctrl+shift+k"}, record(16, 14, 3)},
      {{"1", "key", "ctrl+a", "--with", "Right-Command"}, record(16, 4, 129)},
      {{"1", "macro", "jump"}, record(10, 0, 1)},
  };
  for (const auto& [words, expected] : table) {
    const auto made = action(words);
    ASSERT_TRUE(made) << made.failure().text;
    EXPECT_EQ(*made, expected) << words[1];
  }
}

TEST(AssignmentTest, LaunchesWhatTheEngineCanLaunch) {
  const engine::test::TemporaryFolder folder;
  const auto launch = [&](const std::string& name) { return action({"1", "launch", folder.path(name).c_str()}); };
  std::ofstream(folder.path("Editor.desktop")) << "[Desktop Entry]\nType=Application\nExec=editor\n";
  std::ofstream(folder.path("Empty.desktop"));
  std::filesystem::create_directories(folder.path("Empty.app"));
  std::filesystem::create_directories(folder.path("Mac.app/Contents"));
  std::ofstream(folder.path("Mac.app/Contents/Info.plist"))
      << "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>mac</string></dict></plist>";
  for (const char* name : {"Editor.desktop", "Mac.app", "./Mac.app"}) {
    const auto made = launch(name);
    ASSERT_TRUE(made) << made.failure().text;
    EXPECT_EQ(*made, record(46, std::filesystem::path(folder.path(name)).lexically_normal().string(), ""));
  }
  for (const char* name : {"Empty.desktop", "Empty.app"}) EXPECT_FALSE(launch(name)) << name;
}

TEST(AssignmentTest, IsRefusedWithTheReason) {
  struct Row {
    std::vector<const char*> words;
    ExitStatus status;
    std::string text;
  };
  const Row table[] = {
      {{"1", "frob"}, ExitStatus::Usage, "unknown action \"frob\"; --help lists them"},
      {{"1", "key"}, ExitStatus::Usage, "key takes one word"},
      {{"1", "default", "x"}, ExitStatus::Usage, "default takes no words"},
      {{"1", "scroll", "left"}, ExitStatus::Usage, "unknown action \"scroll left\"; --help lists them"},
      {{"1", "key", "Frob"}, ExitStatus::Usage, "there is no key \"Frob\"; vornctl keys lists them"},
      {{"1", "key", "A", "--with", "B"}, ExitStatus::Usage, "there is no modifier \"B\""},
      {{"1", "disable", "--with", "Shift"}, ExitStatus::Usage, "disable takes no option --with"},
      {{"1", "key", "A", "--repeat", "2"}, ExitStatus::Usage, "key takes no option --repeat"},
      {{"1", "macro", "1", "--repeat", "11"}, ExitStatus::Usage, "--repeat takes 1 to 10, held or toggle"},
      {{"18", "macro", "1", "--repeat", "held"}, ExitStatus::Usage, "the wheel repeats a macro 1 to 10 times"},
      {{"1", "macro", "jmp"}, ExitStatus::Refused, "there is no macro \"jmp\"; did you mean \"Jump\"?"},
      {{"1", "macro", "7"}, ExitStatus::Refused, "there is no macro \"7\""},
      {{"1", "profile", "3"}, ExitStatus::Refused, "there is no profile \"3\""},
      {{"1", "keymap", "9"}, ExitStatus::Usage, "keymap takes 1 to 8 or cycle"},
      {{"1", "keymap", "cycle", "--switch-back"}, ExitStatus::Usage, "keymap cycle cannot switch back"},
      {{"19", "keymap", "2", "--switch-back"}, ExitStatus::Usage, "the wheel cannot switch back"},
      {{"1", "button", "9"}, ExitStatus::Usage, "button takes 1 to 8 or double"},
      {{"1", "scrol", "up"}, ExitStatus::Usage, "unknown action \"scrol up\"; did you mean \"scroll up\"?"},
      {{"1", "launch", "/nonexistent"},
       ExitStatus::FileError,
       "/nonexistent: no such application; launch takes an application folder NAME.app or a file NAME.desktop"},
      {{"1", "launch", "/bin/ls"},
       ExitStatus::FileError,
       "/bin/ls: neither an application bundle nor a desktop entry; launch takes an application folder NAME.app or a "
       "file "
       "NAME.desktop"},
  };
  for (const Row& row : table) {
    const auto made = action(row.words);
    ASSERT_FALSE(made) << row.text;
    EXPECT_EQ(made.failure().text, row.text);
    EXPECT_EQ(made.failure().status, row.status) << row.text;
  }
}

}  // namespace
}  // namespace vorn::ctl
