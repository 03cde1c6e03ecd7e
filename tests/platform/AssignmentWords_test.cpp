#include "platform/AssignmentWords.h"

#include <QTest>
#include <set>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

const PropertyList bundle = PropertyList::dictionary(
    {{"Macros", PropertyList::array({PropertyList::dictionary({{"MacroName", "Copy %1"}})})},
     {"Profiles", PropertyList::array({PropertyList::dictionary({{"ProfileName", "Work"}})})}});

PropertyList record(int command, const PropertyList& param1 = 0, int param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}});
}

}  // namespace

class AssignmentWordsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void everyControlHasItsOwnWords() {
    std::set<QString> words;
    for (const vorn::Control& control : vorn::controls) words.insert(controlWords(control));
    QCOMPARE(words.size(), vorn::controls.size());
    QCOMPARE(controlWords(vorn::controls[0]), QStringLiteral("1 (Tab)"));
    QCOMPARE(controlWords(vorn::controls[26]), QStringLiteral("27 (Up left)"));
  }

  void anAssignmentIsToldInWords_data() {
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<PropertyList>("assignment");
    QTest::addColumn<QString>("words");
    const auto add = [](const char* identifier, const PropertyList& assignment, const char* words) {
      QTest::addRow("%s", words) << QString::fromLatin1(identifier) << assignment << QString::fromUtf8(words);
    };
    add("43", record(45, 43), "Default");
    add("43", PropertyList(), "Default");
    add("06", record(18), "Default");
    add("06", record(45, 3), "Default");
    add("43", record(45, 4), "A");
    add("43", record(16, 6, 1), "Ctrl+C");
    add("43", record(16, 62), "F5");
    add("43", record(16, 0, 3), "Ctrl+Shift");
    add("43", record(10, 0, 1), "Macro “Copy %1”");
    add("43", record(10, 0, 3), "Macro “Copy %1”, 3 times");
    add("43", record(10, 0, 255), "Macro “Copy %1”, until let go");
    add("43", record(10, 0, 254), "Macro “Copy %1”, until pressed again");
    add("43", record(10, 4, 1), "Macro 5, which does not exist");
    add("43", record(17, 0), "Profile “Work”");
    add("43", record(17, 1), "Profile 2, which does not exist");
    add("43", record(50, 2), "Keymap 3");
    add("43", record(50, 2, 1), "Keymap 3, until let go");
    add("43", record(50, 255), "Cycle Keymaps");
    add("43", record(46, "/usr/share/applications/org.editor.desktop"), "Launch “org.editor”");
    add("43", record(9), "Double Click");
    add("06", record(19), "Scroll Down");
    add("43", record(20), "Disable");
    add("43", record(49), "Temporary DPI Switch");
    add("43", record(47), "Nothing that is known");
  }
  void anAssignmentIsToldInWords() {
    QFETCH(QString, identifier);
    QFETCH(PropertyList, assignment);
    QFETCH(QString, words);
    QCOMPARE(assignmentWords(assignment, *vorn::controlOf(identifier.toStdString()), bundle), words);
  }
};

SKARN_QTEST(AssignmentWordsTest)
#include "AssignmentWords_test.moc"
