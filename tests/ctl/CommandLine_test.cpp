#include "ctl/CommandLine.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "ctl/CommandTable.h"

namespace vorn::ctl {
namespace {

using Words = std::vector<const char*>;

CommandLine parsed(const Words& words) {
  const auto line = parseCommandLine(words);
  EXPECT_TRUE(line) << line.failure().text;
  return line ? *line : CommandLine();
}

std::string complaint(const Words& words) {
  const auto line = parseCommandLine(words);
  if (!line) return line.failure().status == ExitStatus::Usage ? line.failure().text : "another status";
  const auto invocation = findCommand(*line);
  if (invocation) return "";
  return invocation.failure().status == ExitStatus::Usage ? invocation.failure().text : "another status";
}

TEST(CommandLineTest, TakesOptionsAnywhere) {
  CommandLine expected;
  expected.isJson = true;
  expected.timeout = std::chrono::milliseconds(1500);
  expected.profile = "Games";
  expected.modifiers = {"Control", "Left Shift"};
  expected.commandOptions = {"--with", "--profile", "--with"};
  expected.words = {"assign", "5", "key", "F5"};
  EXPECT_EQ(parsed({"--json", "assign", "--with", "Control", "5", "key", "--profile=Games", "F5", "--timeout", "1.5",
                    "--with=Left Shift"}),
            expected);
}

TEST(CommandLineTest, TakesNegativeNumbersHyphensAndWhatFollowsTwoHyphensForWords) {
  EXPECT_EQ(parsed({"set", "A", "-5"}).words, (Arguments{"set", "A", "-5"}));
  EXPECT_EQ(parsed({"assign", "1", "key", "-"}).words, (Arguments{"assign", "1", "key", "-"}));
  EXPECT_EQ(parsed({"profiles", "add", "--", "--json"}).words, (Arguments{"profiles", "add", "--json"}));
}

TEST(CommandLineTest, TellsWhatIsWrong) {
  const std::pair<Words, std::string> table[] = {
      {{}, "no command; --help lists them"},
      {{"frob"}, "unknown command \"frob\"; --help lists them"},
      {{"profiles", "frob"},
       "unknown command \"profiles frob\"; \"profiles\" takes list, switch, add, copy, rename, delete, move, compare, "
       "export or "
       "import"},
      {{"--frob"}, "unknown option --frob"},
      {{"--json=1"}, "unknown option --json=1"},
      {{"--jsn"}, "unknown option --jsn; did you mean \"--json\"?"},
      {{"--profil=1"}, "unknown option --profil=1; did you mean \"--profile\"?"},
      {{"get", "DPIX", "--profile"}, "--profile needs a value"},
      {{"get", "DPIX", "--profile="}, "--profile cannot be \"\""},
      {{"status", "--timeout", "0"}, "--timeout cannot be \"0\""},
      {{"status", "--timeout", "nan"}, "--timeout cannot be \"nan\""},
      {{"status", "--timeout", "5s"}, "--timeout cannot be \"5s\""},
      {{"status", "--timeout", "1e9"}, "--timeout cannot be \"1e9\""},
      {{"status", "now"}, "usage: vornctl status"},
      {{"set"}, "usage: vornctl set KEY VALUE"},
      {{"profiles", "copy"}, "usage: vornctl profiles copy PROFILE [NAME]"},
      {{"profiles", "copy", "1", "A", "B"}, "usage: vornctl profiles copy PROFILE [NAME]"},
      {{"assign", "1"}, "usage: vornctl assign CONTROL ACTION..."},
      {{"get", "DPIX", "--repeat", "3"}, "get takes no option --repeat"},
      {{"device", "state", "--failing"}, "device state takes no option --failing"},
  };
  for (const auto& [words, expected] : table) EXPECT_EQ(complaint(words), expected);
}

TEST(CommandLineTest, FindsEveryCommandOfTheTableByItsName) {
  std::set<std::string_view> names;
  for (const Command& command : commandTable()) {
    EXPECT_TRUE(names.insert(command.name).second) << command.name;
    CommandLine line;
    const std::size_t blank = command.name.find(' ');
    line.words.emplace_back(command.name.substr(0, blank));
    if (blank != std::string_view::npos) line.words.emplace_back(command.name.substr(blank + 1));
    line.words.resize(line.words.size() + command.minimum, "x");
    const auto found = findCommand(line);
    ASSERT_TRUE(found) << command.name;
    EXPECT_EQ(found->command, &command);
    EXPECT_EQ(found->arguments, Arguments(command.minimum, "x"));
    EXPECT_NE(helpText().find("  " + std::string(command.name) + " "), std::string::npos) << command.name;
  }
}

TEST(CommandLineTest, HelpsWithTheFolderOfAllProfilesAndKeepsTheCommandsOfTheHistoryTogether) {
  EXPECT_NE(helpText().find("\n  --all FOLDER "), std::string::npos);
  std::vector<std::string_view> lines;
  for (const Command& command : commandTable()) {
    if (command.name.starts_with("history"))
      lines.push_back(command.name);
    else if (!lines.empty() && lines.size() < 3)
      ADD_FAILURE() << command.name << " stands between them";
  }
  EXPECT_EQ(lines, (std::vector<std::string_view>{"history list", "history go", "history"}));
}

std::string contentOf(const char* path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(CommandLineTest, TellsOfEveryOptionInTheHelpAndTheManualPage) {
  const std::string manual = contentOf(MANUAL_PAGE);
  for (const Command& command : commandTable()) {
    std::istringstream options{std::string(command.options)};
    for (std::string option; options >> option;) {
      std::string escaped = option;
      for (std::size_t at = 0; (at = escaped.find('-', at)) != std::string::npos; at += 2) escaped.insert(at, 1, '\\');
      EXPECT_NE(helpText().find(option), std::string::npos) << option;
      EXPECT_NE(manual.find(escaped), std::string::npos) << option;
    }
  }
}

}  // namespace
}  // namespace vorn::ctl
