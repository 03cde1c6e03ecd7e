#include "ctl/HistoryWords.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "protocol/History.h"

namespace vorn::ctl {
namespace {

TEST(HistoryWordsTest, TellEveryKindInWordsOfItsOwn) {
  std::set<std::string> sentences;
  for (const history::kinds::Kind kind : history::kinds::all) {
    sentences.insert(wordsOfChange(PropertyList::dictionary({{history::keys::Kind, kind},
                                                             {history::keys::Profile, "Work"},
                                                             {history::keys::Macro, "Jump"},
                                                             {history::keys::NewName, "Other"},
                                                             {history::keys::Keymap, 2}})));
  }
  EXPECT_EQ(sentences.size(), history::kinds::all.size());
}

TEST(HistoryWordsTest, CountRemovedEventsUnlessTheyAreAll) {
  const PropertyList removed = PropertyList::dictionary(
      {{history::keys::Kind, history::kinds::MacroEventsRemoved}, {history::keys::Macro, "Jump"}});
  EXPECT_EQ(wordsOfChange(removed), "All events of macro \"Jump\" removed");
  EXPECT_EQ(wordsOfChange(removed.with(history::keys::Count, 1)), "1 event of macro \"Jump\" removed");
  EXPECT_EQ(wordsOfChange(removed.with(history::keys::Count, 3)), "3 events of macro \"Jump\" removed");
}

TEST(HistoryWordsTest, NameTwoOrThreeControls) {
  const auto ofControls = [](const std::vector<PropertyList>& identifiers) {
    return wordsOfChange(PropertyList::dictionary({{history::keys::Kind, history::kinds::Assignment},
                                                   {history::keys::Profile, "Work"},
                                                   {history::keys::Keymap, 1},
                                                   {history::keys::Controls, PropertyList::array(identifiers)},
                                                   {history::keys::Count, 3}}));
  };
  EXPECT_EQ(ofControls({"29", "8"}), "Controls 4 and 12, profile \"Work\", keymap 2");
  EXPECT_EQ(ofControls({"29", "43", "8"}), "Controls 1, 4 and 12, profile \"Work\", keymap 2");
  EXPECT_EQ(ofControls({}), "3 assignments, profile \"Work\", keymap 2");
}

TEST(HistoryWordsTest, HaveAGeneralSentenceForAKindThatIsNotKnown) {
  EXPECT_EQ(wordsOfChange(PropertyList::dictionary({{history::keys::Kind, "invention"}})), "Settings");
}

}  // namespace
}  // namespace vorn::ctl
