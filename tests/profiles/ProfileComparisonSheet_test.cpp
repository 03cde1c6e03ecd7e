#include "profiles/ProfileComparisonSheet.h"

#include <QComboBox>
#include <QLabel>
#include <QTableView>

#include "profiles/ProfileMenu.h"
#include "profiles/ProfilesTabTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

constexpr int compareTag = static_cast<int>(ProfileListItem::Compare);

PropertyList withTab(const PropertyList& profile, const PropertyList& assignment) {
  return profile.with(keys::Keys, profile[keys::Keys].with("43", assignment));
}

PropertyList assigned(int command, int param1, int param2 = 0) {
  return PropertyList::dictionary({{keys::Command, command}, {keys::Param1, param1}, {keys::Param2, param2}});
}

}  // namespace

class ProfileComparisonSheetTest : public QObject {
  Q_OBJECT

 private:
  QDialog* sheet() { return mTest->find<QDialog>("profileComparisonSheet"); }
  QComboBox& choice() { return *sheet()->findChild<QComboBox*>(QStringLiteral("mComparedProfile")); }
  QString heading() { return sheet()->findChild<QLabel*>(QStringLiteral("mComparisonTitle"))->text(); }
  bool isVisible(const char* name) { return sheet()->findChild<QWidget*>(QLatin1String(name))->isVisible(); }
  // The differences; a group as its title alone.
  QStringList rows() {
    const QAbstractItemModel& model = *sheet()->findChild<QTableView*>(QStringLiteral("mComparisonList"))->model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column) {
        const QString text = model.index(row, column).data().toString();
        if (!text.isEmpty()) cells << text;
      }
      rows << cells.join(QStringLiteral(" | "));
    }
    return rows;
  }
  void show(const PropertyList& list, int active) {
    mTest->delegate.list = list;
    mTest->delegate.active = active;
    mTest->tab->setMMacrosArray(PropertyList::array({PropertyList::dictionary({{keys::MacroName, "Greet"}})}));
    mTest->show();
  }

  std::unique_ptr<ProfilesTab> mTest;

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() { mTest = std::make_unique<ProfilesTab>(); }
  void cleanup() { mTest.reset(); }

  void theDifferencesAreToldInWordsAndNothingIsSent() {
    const PropertyList work = withTab(profile("Work"), assigned(10, 0, 255));
    const PropertyList application = PropertyList::dictionary({{keys::Application, "Editor"}});
    const PropertyList color = PropertyList::dictionary({{keys::Red, 1.0}, {keys::Green, 0.5}, {keys::Blue, 0.0}});
    const PropertyList play = withTab(profile("Play"), assigned(16, 6, 1))
                                  .with(keys::AppInfo, application)
                                  .with(keys::DPIX, 1234)
                                  .with(keys::LEDColors, PropertyList::array({color}));
    show(PropertyList::array({work, play}), 0);
    mTest->choose(compareTag);
    QVERIFY(sheet());
    QCOMPARE(heading(), QStringLiteral("What differs from “Work”"));
    QCOMPARE(choice().count(), 1);
    QCOMPARE(choice().currentText(), QStringLiteral("Play"));
    QCOMPARE(rows(), (QStringList{
                         "Application",
                         "Tied to | None | Editor",
                         "Buttons",
                         "1 (Tab), keymap 1 | Macro “Greet”, until let go | Ctrl+C",
                         "Performance",
                         "Sensitivity X | 800 DPI | 1234 DPI",
                         "Lighting",
                         "Colour | #FF8000, #0000FF, #00FF00 | #FF8000",
                     }));
    QVERIFY(isVisible("mComparisonList"));
    QTest::keyClick(sheet(), Qt::Key_Escape);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void profilesWithoutADifferenceAreToldToHaveNone() {
    show(namedProfiles({"A", "B"}), 0);
    mTest->choose(compareTag);
    QVERIFY(sheet());
    QVERIFY(isVisible("mNoDifference"));
    QVERIFY(!isVisible("mComparisonList"));
    QTest::keyClick(sheet(), Qt::Key_Return);
    QTRY_VERIFY(!sheet());
  }

  void anotherProfileIsChosenInTheSheet() {
    const PropertyList list = PropertyList::array(
        {profile("A"), withTab(profile("B"), assigned(20, 0)), withTab(profile("C"), assigned(17, 1))});
    show(list, 1);
    QMenu* menu = mTest->rightClick(1, 1);
    QVERIFY(menu);
    mTest->chooseIn(*menu, compareTag);
    QVERIFY(sheet());
    QCOMPARE(choice().currentText(), QStringLiteral("A"));
    QCOMPARE(rows(), (QStringList{"Buttons", "1 (Tab), keymap 1 | Disable | Default"}));
    QTest::keyClick(&choice(), Qt::Key_Down);
    QCOMPARE(choice().currentText(), QStringLiteral("C"));
    QCOMPARE(rows(), (QStringList{"Buttons", "1 (Tab), keymap 1 | Disable | Profile “B”"}));
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void theSheetFollowsItsProfilesThroughAReload() {
    const PropertyList a = profile("A");
    const PropertyList b = withTab(profile("B"), assigned(20, 0));
    const PropertyList c = profile("C");
    show(PropertyList::array({a, b, c}), 1);
    mTest->choose(compareTag);
    QVERIFY(sheet());
    mTest->delegate.list = PropertyList::array({c, withTab(a, assigned(9, 0)), b});
    mTest->delegate.active = 2;
    mTest->delegate.reload();
    QCOMPARE(heading(), QStringLiteral("What differs from “B”"));
    QCOMPARE(choice().currentText(), QStringLiteral("A"));
    QCOMPARE(rows(), (QStringList{"Buttons", "1 (Tab), keymap 1 | Disable | Double Click"}));
    // The other one goes: there is one left to compare with.
    mTest->delegate.list = PropertyList::array({c, b});
    mTest->delegate.active = 1;
    mTest->delegate.reload();
    QCOMPARE(choice().currentText(), QStringLiteral("C"));
    QVERIFY(!mTest->alert());
  }

  void theSheetClosesAndSaysSoWhenItsProfileIsGone() {
    show(namedProfiles({"A", "B", "C"}), 1);
    mTest->choose(compareTag);
    QVERIFY(sheet());
    mTest->delegate.list = namedProfiles({"A", "C"});
    mTest->delegate.reload();
    // News may come again before the sheet has gone: it is told once.
    mTest->delegate.reload();
    QTRY_VERIFY(!sheet());
    QVERIFY(mTest->alert());
    mTest->alert()->close();
    QTRY_VERIFY(!mTest->alert());
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void aSingleProfileHasNothingToBeComparedWith() {
    show(namedProfiles({"A"}), 0);
    QCOMPARE(mTest->tab->reasonAgainst(compareTag), localized("lkeyNoOtherProfile"));
    mTest->tab->selectListItem(compareTag);
    QVERIFY(!sheet());
  }
};

SKARN_QTEST(ProfileComparisonSheetTest)
#include "ProfileComparisonSheet_test.moc"
