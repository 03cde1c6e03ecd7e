// One change of every kind in the real window: the real engine takes each back and makes each again, exactly.
#include <QToolButton>

#include "buttons/MouseButtonController.h"
#include "e2e/EditedMacro.h"
#include "model/ProfileOrder.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "support/SampleSettings.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

// One change as the window sends it, and what the undo button calls it then. No two neighbours are called the same.
struct Change {
  const char* words;
  void (*made)(OpenMacros& open);
};

void set(OpenMacros& open, PropertyList::Pair value) {
  open.hub().updateValueForSetting(PropertyList::dictionary({std::move(value)}));
}

PropertyList withNameOfKeymap(int keymap, const char* name) {
  const PropertyList none = PropertyList::array({"", "", "", "", "", "", "", ""});
  return PropertyList::dictionary({{keys::KeymapNames, none.replacing(keymap, name)}});
}

void recordInOther(OpenMacros& open) {
  open.find<QTableView>("mMacroTableView")->selectRow(1);
  QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 0, deadline);
  open.click("mRecordMacroDetails");
  QVERIFY(VirtualMouse::type(keyboardPage, keyC));
  QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 3, deadline);
  open.click("mRecordMacroDetails");
}

void duplicateInCombo(OpenMacros& open) {
  open.find<QTableView>("mMacroTableView")->selectRow(0);
  open.clickLine(0);
  QTest::keyClick(open.find("mMacroDetailsTableView"), Qt::Key_D, Qt::ControlModifier);
}

const Change ofAssignments[] = {
    {"Button 4 to Ctrl+Shift+C",
     [](OpenMacros& open) {
       open.find<MouseButtonController>("MouseButtonController")->changeButton("8", 16, keyC, 3, 2);
     }},
    {"Buttons 1, 2 and 4",
     [](OpenMacros& open) {
       const PropertyList keymaps = open.hub().mDefaultProfileDict()[keys::Keymap];
       open.hub().updateButtonAssignmentWithSettings(
           PropertyList::dictionary({{keys::Keymap, keymaps.replacing(5, keymaps.at(0))}}), 0);
     }},
    {"Settings of Default",
     [](OpenMacros& open) { open.hub().updateButtonAssignmentWithSettings(withNameOfKeymap(5, "Build"), 0); }},
};

const Change ofSettings[] = {
    {"Sensitivity of Default",
     [](OpenMacros& open) {
       open.hub().updateValueForSetting(PropertyList::dictionary({{keys::DPIX, 1250}, {keys::DPIY, 1250}}));
     }},
    {"Sensitivity stages of Default",
     [](OpenMacros& open) {
       set(open, {keys::Stages, PropertyList::array({vorn::test::stage(500, 500)})});
     }},
    {"Polling rate of Default",
     [](OpenMacros& open) {
       set(open, {keys::PollingRate, 500});
     }},
    {"Acceleration of Default",
     [](OpenMacros& open) {
       set(open, {keys::Acceleration, 7});
     }},
    {"Light of Default",
     [](OpenMacros& open) {
       set(open, {keys::LEDEffects, 4});
     }},
    {"Power settings of Default",
     [](OpenMacros& open) {
       set(open, {keys::PowerSaver, 2});
     }},
};

const Change ofMacros[] = {
    {"Macro “New” added", [](OpenMacros& open) { open.hub().addMacroWithSettings(vorn::test::macro("New", {})); }},
    {"Macro “New” renamed to “Newer”", [](OpenMacros& open) { open.hub().renameMacroAtIndex(2, "Newer"); }},
    {"Macro “Other” recorded", recordInOther},
    {"Events of macro “Combo”",
     [](OpenMacros& open) {
       open.hub().updateSequenceInfo(0, 0, open.hub().getSequenceDetails(0, 0).with(keys::Argument, keyZ));
     }},
    {"Delays of macro “Combo”", [](OpenMacros& open) { open.hub().setNewDelay(75, 1, 0); }},
    {"1 event of macro “Combo” deleted", [](OpenMacros& open) { open.hub().removeEventAtIndex(2, 0); }},
    {"Delays of macro “Combo”", [](OpenMacros& open) { open.hub().setAllEventsDelay(1, 0, false); }},
    {"Events of macro “Combo”", duplicateInCombo},
    {"Delays of macro “Combo”", [](OpenMacros& open) { open.hub().setAllEventsDelay(0, 0, true); }},
    {"All events of macro “Combo” deleted", [](OpenMacros& open) { open.hub().removeAllEventsForMacroAtIndex(0); }},
    // With what plays it.
    {"Macro “Combo” deleted", [](OpenMacros& open) { open.hub().deleteMacroAtIndex(0); }},
};

const Change ofProfiles[] = {
    {"Profile “Play” added",
     [](OpenMacros& open) {
       open.hub().addNewProfileWithSettings(open.hub().mDefaultProfileDict().with(keys::ProfileName, "Play"));
     }},
    {"Profile “Work” renamed to “Travel”",
     [](OpenMacros& open) {
       const PropertyList profile = open.hub().mProfilesArray().at(1);
       open.hub().renameProfileWithProfileID(1, profile.with(keys::ProfileName, "Travel"));
     }},
    {"Order of the profiles",
     [](OpenMacros& open) {
       const PropertyList& list = open.hub().mProfilesArray();
       open.hub().reorderProfiles(vorn::orderAfterMove(list.size(), 2, 0), vorn::profileNames(list));
     }},
    {"Switched to profile “Play”", [](OpenMacros& open) { open.hub().switchProfileWithID(0); }},
    // With what switches to it, and with the switch to the one before it.
    {"Profile “Travel” deleted", [](OpenMacros& open) { open.hub().deleteProfileWithProfileID(2); }},
    {"Profile “Default” restored to its factory settings",
     [](OpenMacros& open) {
       const auto* tab = open.find<MouseProfilesController>("MouseProfilesController");
       open.hub().updateProfileWithSettings(
           tab->mDefaultDict().with(keys::ProfileName, open.hub().mDefaultProfileDict()[keys::ProfileName]));
     }},
};

}  // namespace

class UndoWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() {
    mEngine.begin();
    OtherClient other;
    add(other, "Combo", twoStrokes());
    add(other, "Other", {});
    other.addProfile(other.bundle()[keys::Profiles].at(0).with(keys::ProfileName, "Work"));
    other.assign("43", 10, 0);
    other.assign("20", 17, 1);
  }
  void cleanup() { mEngine.end(); }

  void every_kind_of_change_is_undone_and_made_again_exactly_data() {
    QTest::addColumn<std::vector<Change>>("changes");
    QTest::newRow("assignments and keymaps") << listOf(ofAssignments);
    QTest::newRow("settings") << listOf(ofSettings);
    QTest::newRow("macros") << listOf(ofMacros);
    QTest::newRow("profiles") << listOf(ofProfiles);
  }
  void every_kind_of_change_is_undone_and_made_again_exactly() {
    QFETCH(std::vector<Change>, changes);
    OpenMacros open;
    open.awaitAnnouncement();
    OtherClient other;
    auto* undo = open.find<QToolButton>("mUndoButton");
    auto* redo = open.find<QToolButton>("mRedoButton");
    QTRY_VERIFY_WITH_TIMEOUT(undo->isEnabled(), deadline);
    const QString first = undo->toolTip();
    const auto words = [&](std::size_t done) {
      return done == 0 ? first : QStringLiteral("Undo: ") + QString::fromUtf8(changes[done - 1].words);
    };
    std::vector<PropertyList> bundles{other.bundle()};
    for (std::size_t done = 1; done <= changes.size(); ++done) {
      changes[done - 1].made(open);
      bundles.push_back(other.bundle());
      QVERIFY2(bundles[done] != bundles[done - 1], changes[done - 1].words);
      QTRY_COMPARE_WITH_TIMEOUT(undo->toolTip(), words(done), deadline);
    }
    for (std::size_t done = changes.size(); done > 0; --done) {
      QTest::mouseClick(undo, Qt::LeftButton);
      QTRY_COMPARE_WITH_TIMEOUT(undo->toolTip(), words(done - 1), deadline);
      QVERIFY2(other.bundle() == bundles[done - 1], changes[done - 1].words);
    }
    for (std::size_t done = 1; done <= changes.size(); ++done) {
      QTest::mouseClick(redo, Qt::LeftButton);
      QTRY_COMPARE_WITH_TIMEOUT(undo->toolTip(), words(done), deadline);
      QVERIFY2(other.bundle() == bundles[done], changes[done - 1].words);
    }
    // The window shows what the engine has.
    QTRY_VERIFY_WITH_TIMEOUT(open.hub().mProfilesArray() == bundles.back()[keys::Profiles], deadline);
    QTRY_VERIFY_WITH_TIMEOUT(open.hub().mMacrosArray() == bundles.back()[keys::Macros], deadline);
  }

 private:
  template <std::size_t count>
  static std::vector<Change> listOf(const Change (&changes)[count]) {
    return {std::begin(changes), std::end(changes)};
  }

  EngineSession mEngine;
};

SKARN_QTEST(UndoWithEngineTest)
#include "undo_with_engine_test.moc"
