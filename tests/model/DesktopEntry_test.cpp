#include "model/DesktopEntry.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

using Texts = std::vector<std::string>;

DesktopEntry read(const std::string& lines) {
  return DesktopEntry::read("[Desktop Entry]\n" + lines).value();
}

TEST(DesktopEntryTest, ReadsItsOwnGroupOnlyAndTheFirstOfTwoValues) {
  const auto entry = DesktopEntry::read(
      "# Name=comment\r\nName=before\n[Other]\nName=other\n[Desktop Entry]\r\n Name = right \r\nName=second\nno pair\n"
      "=no key\n[Desktop Action new]\nName=action\nIcon=wrong\n");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->text("Name"), "right");
  EXPECT_FALSE(entry->contains("Icon"));
  EXPECT_EQ(entry->text("Icon"), "");
}

TEST(DesktopEntryTest, TakesOffItsEscapes) {
  EXPECT_EQ(read(R"(Name=a\sb\nc\td\re\\f\qg\)").text("Name"), "a b\nc\td\re\\f\\qg\\");
}

TEST(DesktopEntryTest, TakesTheMostExactTextOfALocale) {
  const std::string names =
      "Name=any\nName[sr]=language\nName[sr@latin]=script\nName[sr_RS]=country\nName[sr_RS@latin]=all\n";
  const auto name = [](const std::string& lines, const char* locale) {
    return read(lines).localizedText("Name", locale);
  };
  EXPECT_EQ(name(names, "sr_RS.UTF-8@latin"), "all");
  EXPECT_EQ(name(names, "sr_RS@latin"), "all");
  EXPECT_EQ(name(names, "sr_RS.UTF-8"), "country");
  EXPECT_EQ(name(names, "sr_RS@cyrillic"), "country");
  EXPECT_EQ(name(names, "sr_ME@latin"), "script");
  EXPECT_EQ(name(names, "sr_ME"), "language");
  EXPECT_EQ(name(names, "sr"), "language");
  EXPECT_EQ(name("Name=any\nName[sr@latin]=script\nName[sr_RS]=country\n", "sr_RS@latin"), "country");
  for (const char* locale : {"de_DE.UTF-8", "C", "POSIX", "", "@", ".", "_", "srx"}) {
    EXPECT_EQ(name(names, locale), "any") << locale;
  }
}

TEST(DesktopEntryTest, KeepsAnEmptyTextOfALocale) {
  EXPECT_EQ(read("Name=any\nName[de]=\n").localizedText("Name", "de"), "");
}

TEST(DesktopEntryTest, SeparatesItsLists) {
  EXPECT_EQ(read("OnlyShowIn=One;Two;").list("OnlyShowIn"), (Texts{"One", "Two"}));
  EXPECT_EQ(read("OnlyShowIn=One;Two").list("OnlyShowIn"), (Texts{"One", "Two"}));
  EXPECT_EQ(read(R"(OnlyShowIn=a\;b;c\sd\\;)").list("OnlyShowIn"), (Texts{"a;b", "c d\\"}));
  EXPECT_EQ(read("OnlyShowIn=").list("OnlyShowIn"), Texts());
  EXPECT_EQ(read("").list("OnlyShowIn"), Texts());
}

TEST(DesktopEntryTest, IsTrueOnlyWhenItSaysSo) {
  EXPECT_TRUE(read("NoDisplay=true").isTrue("NoDisplay"));
  for (const char* value : {"false", "1", "TRUE", "", "true;"}) {
    EXPECT_FALSE(read("NoDisplay=" + std::string(value)).isTrue("NoDisplay")) << value;
  }
}

TEST(DesktopEntryTest, GivesTheCommandOfExec) {
  EXPECT_EQ(read(R"(Exec="/opt/My Editor/run" --new %F)").command("/apps/a.desktop"),
            (Texts{"/opt/My Editor/run", "--new"}));
  EXPECT_EQ(read("Exec=editor %k").command("/apps/a.desktop"), (Texts{"editor", "/apps/a.desktop"}));
  EXPECT_EQ(read("Exec=\"open").command("/apps/a.desktop"), std::nullopt);
  EXPECT_EQ(read("Name=a").command("/apps/a.desktop"), std::nullopt);
}

TEST(DesktopEntryTest, SurvivesAnyBytes) {
  EXPECT_EQ(DesktopEntry::read(std::string_view("[Desktop Entry]\nName=a\0", 23)), std::nullopt);
  EXPECT_FALSE(DesktopEntry::read("")->contains("Name"));
  EXPECT_FALSE(DesktopEntry::read("[Desktop Entry")->contains("Name"));
  EXPECT_EQ(read("Name=\xff\xfe\n").text("Name"), "\xff\xfe");
  EXPECT_EQ(read("Name=" + std::string(500000, '\\')).text("Name"), std::string(250000, '\\'));
  EXPECT_EQ(read("Exec=" + std::string(500000, '%')).command("a")->front(), std::string(250000, '%'));
}

}  // namespace
}  // namespace vorn::test
