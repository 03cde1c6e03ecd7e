#include "platform/HistoryText.h"

#include <QTest>
#include <set>

#include "platform/Localization.h"
#include "protocol/History.h"
#include "support/QtTests.h"

using namespace skarn;
using vorn::PropertyList;
namespace kinds = vorn::history::kinds;
namespace words = vorn::history::keys;

namespace {

PropertyList entry(std::string_view kind, std::vector<PropertyList::Pair> subject = {}) {
  subject.emplace_back(words::Kind, kind);
  return PropertyList::dictionary(std::move(subject));
}

PropertyList assignment(std::string_view control, int command, const char* param1, const char* param2,
                        const PropertyList& target = {}) {
  const PropertyList made = entry(kinds::Assignment, {{words::Profile, "Work"},
                                                      {words::Keymap, 1},
                                                      {words::Control, control},
                                                      {words::Command, command},
                                                      {words::Param1, param1},
                                                      {words::Param2, param2}});
  return target.isNone() ? made : made.with(words::Target, target);
}

}  // namespace

class HistoryTextTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void every_kind_has_a_sentence_of_its_own() {
    std::set<QString> sentences;
    for (const kinds::Kind kind : kinds::all) {
      const QString text =
          changeText(entry(kind, {{words::Profile, "Work"}, {words::Macro, "Jump"}, {words::Keymap, 2}}));
      QVERIFY2(!text.isEmpty() && !text.contains(QLatin1String("No Translation")), qPrintable(text));
      QVERIFY2(!text.contains(QLatin1Char('%')) || kind == kinds::Settings, qPrintable(text));
      sentences.insert(text);
    }
    // Several settings of one profile and settings of any kind read alike.
    QCOMPARE(sentences.size(), kinds::all.size() - 1);
  }

  void a_kind_that_is_not_known_has_a_general_sentence() {
    QCOMPARE(changeText(entry("invention")), QStringLiteral("Settings"));
    QCOMPARE(changeText(entry("invention", {{words::Profile, "Work"}})), QStringLiteral("Settings of Work"));
    QCOMPARE(changeText(PropertyList()), QStringLiteral("Settings"));
  }

  void an_assignment_names_the_control_and_what_it_does_now() {
    QCOMPARE(changeText(assignment("8", 10, "0", "1", "Copy")), QStringLiteral("Button 4 to Copy"));
    QCOMPARE(changeText(assignment("29", 16, "14", "3")), QStringLiteral("Button 12 to Ctrl+Shift+K"));
    QCOMPARE(changeText(assignment("43", 17, "0", "0", "Play")), QStringLiteral("Button 1 to Profile “Play”"));
    QCOMPARE(changeText(assignment("43", 50, "2", "0")), QStringLiteral("Button 1 to Keymap 3"));
    QCOMPARE(changeText(assignment("03", 1, "0", "0")), QStringLiteral("Button 17 to Left Click"));
    QCOMPARE(changeText(assignment("8", 45, "8", "0")), QStringLiteral("Button 4 to Default"));
    QCOMPARE(changeText(assignment("8", 10, "7", "1")), QStringLiteral("Button 4 to Macro 8, which does not exist"));
  }

  void several_assignments_are_counted() {
    QCOMPARE(changeText(entry(kinds::Assignment, {{words::Count, 24}})), QStringLiteral("24 assignments"));
    QCOMPARE(changeText(entry(kinds::Assignment, {{words::Count, 1}})), QStringLiteral("An assignment"));
    QCOMPARE(changeText(assignment("no control", 1, "0", "0")), QStringLiteral("An assignment"));
  }

  void two_or_three_assignments_name_their_controls() {
    const auto controls = [](std::vector<PropertyList> identifiers) {
      const auto count = static_cast<int>(identifiers.size());
      return changeText(entry(kinds::Assignment,
                              {{words::Controls, PropertyList::array(std::move(identifiers))}, {words::Count, count}}));
    };
    QCOMPARE(controls({"29", "8"}), QStringLiteral("Buttons 4 and 12"));
    QCOMPARE(controls({"29", "43", "8"}), QStringLiteral("Buttons 1, 4 and 12"));
    QCOMPARE(controls({"no control", "8"}), QStringLiteral("2 assignments"));
  }

  void the_place_of_an_assignment_is_told_where_another_one_is_shown() {
    const PropertyList copied = assignment("8", 10, "0", "1", "Copy");
    const auto beside = [&](const char* profile, int keymap) {
      return changeTextBeside(copied, PropertyList::dictionary({{"ProfileName", profile}, {"KeymapID", keymap}}));
    };
    QCOMPARE(beside("Work", 1), QStringLiteral("Button 4 to Copy"));
    QCOMPARE(beside("Work", 0), QStringLiteral("Button 4 to Copy (Keymap 2)"));
    QCOMPARE(beside("Play", 1), QStringLiteral("Button 4 to Copy (Work, Keymap 2)"));
  }

  void the_place_of_an_assignment_is_told_where_it_it_is_asked_for() {
    QCOMPARE(changeTextWithPlace(assignment("8", 10, "0", "1", "Copy")),
             QStringLiteral("Button 4 to Copy (Work, Keymap 2)"));
    QCOMPARE(changeTextWithPlace(entry(kinds::Assignment, {{words::Count, 2}})), QStringLiteral("2 assignments"));
    QCOMPARE(changeTextWithPlace(entry(kinds::KeymapInForce, {{words::Profile, "Work"}, {words::Keymap, 2}})),
             QStringLiteral("Switched to Keymap 3 (Work)"));
    QCOMPARE(changeTextWithPlace(entry(kinds::Sensitivity, {{words::Profile, "Work"}})),
             QStringLiteral("Sensitivity of Work"));
  }

  void records_are_named_or_counted() {
    QCOMPARE(changeText(entry(kinds::ProfileDeleted, {{words::Profile, "Work"}})),
             QStringLiteral("Profile “Work” deleted"));
    QCOMPARE(changeText(entry(kinds::MacroDeleted, {{words::Macro, "Jump"}, {words::Count, 3}})),
             QStringLiteral("3 macros deleted"));
    QCOMPARE(changeText(entry(kinds::MacroRenamed, {{words::Macro, "%2"}, {words::NewName, "%1"}})),
             QStringLiteral("Macro “%2” renamed to “%1”"));
    QCOMPARE(changeText(entry(kinds::ProfileSwitched, {{words::Profile, "Work"}})),
             QStringLiteral("Switched to profile “Work”"));
  }

  void a_deletion_is_told_by_the_name_of_what_is_gone() {
    QCOMPARE(deletionText(entry(kinds::MacroDeleted, {{words::Macro, "Copy and Paste"}})),
             QStringLiteral("Deleted Copy and Paste"));
    QCOMPARE(deletionText(entry(kinds::ProfileDeleted, {{words::Profile, "Work"}})), QStringLiteral("Deleted Work"));
    QCOMPARE(deletionText(entry(kinds::ProfileDeleted, {{words::Profile, "Work"}, {words::Count, 2}})),
             QStringLiteral("2 profiles deleted"));
    for (const PropertyList& count : {PropertyList(), PropertyList(1), PropertyList(3)}) {
      const PropertyList removed = entry(kinds::MacroEventsRemoved, {{words::Macro, "Jump"}});
      QCOMPARE(deletionText(count.isNone() ? removed : removed.with(words::Count, count)),
               QStringLiteral("Deleted events of Jump"));
    }
  }

  void removed_events_are_counted_unless_they_are_all() {
    const PropertyList removed = entry(kinds::MacroEventsRemoved, {{words::Macro, "%1"}});
    QCOMPARE(changeText(removed), QStringLiteral("All events of macro “%1” deleted"));
    QCOMPARE(changeText(removed.with(words::Count, 1)), QStringLiteral("1 event of macro “%1” deleted"));
    QCOMPARE(changeText(removed.with(words::Count, 3)), QStringLiteral("3 events of macro “%1” deleted"));
  }

  void what_is_restored_is_named() {
    QCOMPARE(changeText(entry(kinds::ProfileRestored, {{words::Profile, "Work"}})),
             QStringLiteral("Profile “Work” restored to its factory settings"));
    QCOMPARE(changeText(entry(kinds::BackupRestored, {{words::Date, "2026-11-22"}})),
             QStringLiteral("Backup of 2026-11-22 restored"));
  }

  void a_long_name_is_cut() {
    const std::string name(300, 'n');
    QVERIFY(changeText(entry(kinds::MacroDeleted, {{words::Macro, name}})).size() < 100);
    QVERIFY(changeText(assignment("8", 10, "0", "1", name)).size() < 100);
    QVERIFY(authorText(PropertyList::dictionary({{words::SourceApp, name}})).size() < 100);
  }

  void the_author_is_told_in_words_where_it_is_known() {
    const auto author = [](const PropertyList& name) {
      return authorText(PropertyList::dictionary({{words::SourceApp, name}}));
    };
    QCOMPARE(author("org.vorn.SkarnConfigurator"), QStringLiteral("This window"));
    QCOMPARE(author("org.vorn.vornctl"), QStringLiteral("vornctl"));
    QCOMPARE(author("org.example.Client"), QStringLiteral("org.example.Client"));
    QCOMPARE(authorText(PropertyList::dictionary()), QStringLiteral("Another program"));
  }
};

SKARN_QTEST(HistoryTextTest)
#include "HistoryText_test.moc"
