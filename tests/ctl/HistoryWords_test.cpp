#include "ctl/HistoryWords.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

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

TEST(HistoryWordsTest, HaveAGeneralSentenceForAKindThatIsNotKnown) {
  EXPECT_EQ(wordsOfChange(PropertyList::dictionary({{history::keys::Kind, "invention"}})), "Settings");
}

}  // namespace
}  // namespace vorn::ctl
