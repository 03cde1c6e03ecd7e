#include "ctl/AssignmentWords.h"

#include <gtest/gtest.h>

#include <regex>

#include "ctl/Assignment.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {
namespace {

PropertyList record(int command, const PropertyList& param1 = 0, const PropertyList& param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}});
}

PropertyList named(std::string_view key, const std::vector<const char*>& names) {
  PropertyList records = PropertyList::array();
  for (const char* name : names) records = records.appending(PropertyList::dictionary({{key, name}}));
  return records;
}

const PropertyList bundle = PropertyList::dictionary(
    {{"Profiles", named("ProfileName", {"One", "Two"})},
     {"Macros", named("MacroName", {"Quick save", "7", "Twice", "Twice", "A \"quoted\" one", "--repeat", ""})}});

// What `assign` makes of the words.
PropertyList assigned(const Control& control, const std::string& words) {
  std::vector<std::string> arguments;
  const std::regex word("\"([^\"]*)\"|(\\S+)");
  for (std::sregex_iterator each(words.begin(), words.end(), word), end; each != end; ++each) {
    arguments.push_back((*each)[1].matched ? (*each)[1] : (*each)[2]);
  }
  std::vector<const char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
  const auto line = parseCommandLine(pointers);
  if (!line) return PropertyList(line.failure().text);
  const auto parsed = parseAction(control, line->words, *line);
  if (!parsed) return PropertyList(parsed.failure().text);
  const auto resolved = resolvedAction(*parsed, bundle);
  return resolved ? *resolved : PropertyList(resolved.failure().text);
}

TEST(AssignmentWordsTest, AreThoseThatAssignTheSameAgain) {
  std::vector<PropertyList> records = {record(9),        record(10, 0, 1), record(10, 1, 255), record(10, 3, 254),
                                       record(10, 4, 7), record(10, 5, 1), record(10, 6, 1),   record(17, 1),
                                       record(20),       record(50, 2),    record(50, 7, 1),   record(50, 255)};
  for (const int command : {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 18, 19, 49}) records.push_back(record(command));
  for (int usage = 4; usage < 224; ++usage) {
    records.push_back(record(16, usage));
    records.push_back(record(16, usage, 0x21));
  }
  for (int modifiers = 1; modifiers <= 255; ++modifiers) records.push_back(record(16, 0, modifiers));
  const Control& tab = *controlNamed("Tab");
  for (const PropertyList& each : records) {
    const std::string words = wordsOf(each, tab, bundle);
    EXPECT_EQ(assigned(tab, words), each) << words;
  }
}

TEST(AssignmentWordsTest, SayWhatTheControlDoes) {
  const std::tuple<const char*, PropertyList, const char*> table[] = {
      {"Tab", record(45, 43), "default"},
      {"wheel", record(45), "default"},
      {"wheel", record(3), "default"},
      {"Tab", record(45, 4), "key A"},
      {"Tab", record(16, 14, 3), "key Control+Shift+K"},
      {"Tab", record(16, 14, 16), "key \"Right Control+K\""},
      {"Tab", record(10, 0, 255), "macro \"Quick save\" --repeat held"},
      {"Tab", record(10, 9, 1), "macro 10"},
      {"Tab", record(10, 2, 1), "macro 3"},
      {"Up-Right", record(20, 233), "disable"},
      {"Tab", record(46, "/a b.app", ""), "launch \"/a b.app\""},
      {"Tab", record(47), "command 47"},
      {"Tab", PropertyList(), "command 0"},
  };
  for (const auto& [control, assignment, expected] : table) {
    EXPECT_EQ(wordsOf(assignment, *controlNamed(control), bundle), expected);
  }
}

}  // namespace
}  // namespace vorn::ctl
