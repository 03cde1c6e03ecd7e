// Names that are being typed while something else begins, or while the list changes.
#include <QTest>

#include "macros/MacroMenus.h"
#include "macros/MacrosFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// The second of three macros is selected, and a name is typed for it.
struct NamingFixture : MacrosFixture {
  NamingFixture() {
    selectMacro(1);
    chooseFromGear("mSettingsMacro", macroMenuTags::Rename);
    QTest::keyClicks(editor(), "Jump");
  }
  // From a menu that leaves the keyboard to the name.
  void choose(int tag) { tab->clickMacroSettingsMenuItem(tag); }
  // The engine deletes the first macro for another program, and the reload after the rename brings that.
  void loseTheFirstMacroMeanwhile() {
    delegate.onCall = [this](const QString& call) {
      if (call.startsWith("renameMacroAtIndex")) reload(macrosNamed({"Jump", "Build order"}));
    };
  }
};

}  // namespace

class MouseMacrosControllerNamingTest : public QObject {
  Q_OBJECT

 private slots:
  void renameFromAMenuTakesTheTypedNameOverAndBeginsAnew() {
    NamingFixture fixture;
    fixture.choose(macroMenuTags::Rename);
    QCOMPARE(fixture.delegate.take(), QStringList{"renameMacroAtIndex(1, Jump)"});
    QVERIFY(fixture.editor() != nullptr);
    QCOMPARE(fixture.editor()->selectedText(), QStringLiteral("Jump"));
    QCOMPARE(fixture.tab->mEditedRow(), 1);
    QVERIFY(fixture.tab->mIsRenamingMacroName());
  }

  void renameActsOnTheMacroThatWasEditedWhereverItStandsThen() {
    NamingFixture fixture;
    fixture.loseTheFirstMacroMeanwhile();
    fixture.choose(macroMenuTags::Rename);
    QCOMPARE(fixture.tab->mEditedRow(), 0);
    QCOMPARE(fixture.editor()->selectedText(), QStringLiteral("Jump"));
  }

  void aClickOnTheDeleteButtonMeansTheMacroThatWasEdited() {
    NamingFixture fixture;
    fixture.loseTheFirstMacroMeanwhile();
    fixture.click("mDeleteMacro");
    QCOMPARE(fixture.alert()->text(), QStringLiteral("Delete Macro “Jump”?"));
  }

  void whatBeginsMeanwhileTakesTheTypedNameOverFirst_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<QStringList>("then");
    QTest::newRow("new") << int(macroMenuTags::New)
                         << QStringList{added("Untitled Macro"), "getMacroDetailsForMacroAtIndex(3)"};
    QTest::newRow("import") << int(macroMenuTags::Import) << QStringList();
    QTest::newRow("export") << int(macroMenuTags::Export) << QStringList{"reloadMacros()"};
    QTest::newRow("delete") << int(macroMenuTags::Delete) << QStringList();
    QTest::newRow("record") << -1 << QStringList{"startMacroRecording(NO, 1)"};
    QTest::newRow("append") << -2 << QStringList{"startMacroRecording(YES, 1)"};
  }
  void whatBeginsMeanwhileTakesTheTypedNameOverFirst() {
    QFETCH(int, tag);
    QFETCH(QStringList, then);
    NamingFixture fixture;
    if (tag == -1) {
      fixture.tab->clickRecordMacroDetails();
    } else if (tag == -2) {
      fixture.tab->clickAddMacroDetails();
    } else {
      fixture.choose(tag);
    }
    QCOMPARE(fixture.delegate.take(), QStringList{"renameMacroAtIndex(1, Jump)"} + then);
    // The new macro is named, and nothing else.
    QCOMPARE(fixture.tab->mEditedRow(), tag == macroMenuTags::New ? 3 : -1);
  }

  void aNameFollowsItsMacroWhenTheListChanges() {
    NamingFixture fixture;
    fixture.reload(macrosNamed({"Greeting", "Build order"}));
    QVERIFY(fixture.editor() != nullptr);
    QCOMPARE(fixture.editor()->text(), QStringLiteral("Jump"));
    QCOMPARE(fixture.tab->mEditedRow(), 0);
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
    fixture.delegate.take();
    QTest::keyClicks(fixture.editor(), "!");
    QTest::keyClick(fixture.editor(), Qt::Key_Return);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.delegate.take(), QStringList{"renameMacroAtIndex(0, Jump!)"});
  }

  void aNameThatNobodyHasTypedYetFollowsAsAWhole() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.chooseFromGear("mSettingsMacro", macroMenuTags::Rename);
    fixture.reload(macrosNamed({"Build order"}));
    QCOMPARE(fixture.editor()->selectedText(), QStringLiteral("Build order"));
    QCOMPARE(fixture.tab->mEditedRow(), 0);
  }

  void theNameOfAMacroThatIsGoneEndsAndThatIsSaid() {
    NamingFixture fixture;
    fixture.reload(macrosNamed({"Fireball", "Build order"}));
    QVERIFY(fixture.editor() == nullptr);
    QCOMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Greeting” is no longer there"));
    QVERIFY(!fixture.delegate.take().join(QString()).contains("rename"));
  }
};

SKARN_QTEST(MouseMacrosControllerNamingTest)
#include "MouseMacrosController_naming_test.moc"
