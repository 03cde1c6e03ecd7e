// Sheets of the Buttons tab while the mouse or another program switches and changes profiles, keymaps and macros: each
// belongs to what it was opened for.
#include <QLineEdit>

#include "buttons/ButtonsFixture.h"
#include "support/ApplicationsHome.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

enum class Sheet { SingleKey, Keymap, Cycle, Repeat, Application };

const ControlDescriptor& fourth() {
  return ButtonsFixture::control(4);
}

// The tab on the second profile, "Work", in its keymap 2; control 4 plays the macro "Greeting" there.
struct PlacesFixture : ButtonsFixture {
  PlacesFixture() {
    const PropertyList playing = current[keys::Keys].with(fourth().identifier, assignment(10, 2, 5));
    show(current.with(keys::Keys, playing)
             .with(keys::Keymap, keymaps().replacing(2, keymaps().at(2).with(keys::Keys, playing))));
  }

  PropertyList list() const { return tab.mAllProfiles(); }

  void open(Sheet sheet) {
    switch (sheet) {
      case Sheet::SingleKey:
        choose(fourth(), AssignmentCategory::SingleKey);
        tab.singleKeyEvents({"", "", PropertyList::dictionary({{"singleKey", 5}, {"singleKeyModif", 2}})});
        break;
      case Sheet::Keymap:
      case Sheet::Cycle:
        openKeymapSheet(fourth());
        find<QComboBox>("mKeymapValuePopUp")->setFocus();
        if (sheet == Sheet::Keymap) QTest::keyClick(find<QComboBox>("mKeymapValuePopUp"), Qt::Key_End);
        break;
      case Sheet::Repeat:
        QTest::mouseClick(row(fourth()).repeatButton(), Qt::LeftButton);
        QTest::keyClick(find<QComboBox>("mMacroPlaybackPopUp"), Qt::Key_End);
        break;
      case Sheet::Application:
        choose(fourth(), AssignmentCategory::LaunchProgram);
        QTest::keyClicks(find<QLineEdit>("mApplicationSearch"), QStringLiteral("Paint"));
        break;
    }
    delegate.calls.clear();
  }
  void confirm(Sheet sheet) {
    switch (sheet) {
      case Sheet::SingleKey:
        press("mSingleKeyOK");
        delegate.calls.erase(delegate.calls.begin());  // the end of the capture
        break;
      case Sheet::Keymap:
      case Sheet::Cycle:
        press("mKeymapOK");
        break;
      case Sheet::Repeat:
        press("mMacroRepeatOK");
        break;
      case Sheet::Application:
        press("mApplicationOK");
        break;
    }
  }
  PropertyList recordOf(Sheet sheet) const {
    switch (sheet) {
      case Sheet::SingleKey:
        return assignment(16, 5, 2);
      case Sheet::Keymap:
        return assignment(50, 7);
      case Sheet::Cycle:
        return assignment(50, 255);
      case Sheet::Repeat:
        return assignment(10, 2, 10);
      case Sheet::Application:
        break;
    }
    return PropertyList::dictionary({{keys::Command, 46}, {keys::Param1, entry.toStdString()}, {keys::Param2, ""}});
  }
  // The profile's keymaps with the sheet's assignment: that of the cycle in each of them.
  static PropertyList keymapsWith(const PropertyList& profile, int keymap, Sheet sheet, const PropertyList& record) {
    PropertyList changed = profile[keys::Keymap];
    for (int index = 0; index < 8; ++index) {
      if (index != keymap && sheet != Sheet::Cycle) continue;
      const PropertyList& before = changed.at(index);
      changed = changed.replacing(index, before.with(keys::Keys, before[keys::Keys].with(fourth().identifier, record)));
    }
    return changed;
  }

  ApplicationsHome home;
  QString entry = home.addEntry(QStringLiteral("org.example.Paint.desktop"), "Name=Paint\nExec=/bin/sh\n");
};

void addSheetRows() {
  QTest::addColumn<Sheet>("sheet");
  QTest::newRow("single key") << Sheet::SingleKey;
  QTest::newRow("keymap") << Sheet::Keymap;
  QTest::newRow("cycle") << Sheet::Cycle;
  QTest::newRow("repeat mode") << Sheet::Repeat;
  QTest::newRow("application") << Sheet::Application;
}

}  // namespace

Q_DECLARE_METATYPE(Sheet)

class MouseButtonControllerPlacesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void a_sheet_writes_into_its_profile_after_a_switch_data() { addSheetRows(); }

  void a_sheet_writes_into_its_profile_after_a_switch() {
    QFETCH(Sheet, sheet);
    PlacesFixture fixture;
    fixture.open(sheet);
    const PropertyList work = fixture.current;
    fixture.hand(fixture.list(), 3);
    fixture.confirm(sheet);
    const PropertyList record = fixture.recordOf(sheet);
    const PropertyList settings =
        sheet == Sheet::Cycle
            ? PropertyList::dictionary({{"Keymap", PlacesFixture::keymapsWith(work, 2, sheet, record)}})
            : PropertyList::dictionary({{"Keys", work[keys::Keys].with(fourth().identifier, record)}});
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings", settings, 1}));
    // The profile that is shown keeps what it has.
    QCOMPARE(fixture.popUp(4).shownTitle(), QStringLiteral("E (Default)"));
    QVERIFY(alertOf(fixture.tab) == nullptr);
  }

  void a_sheet_writes_into_its_keymap_after_another_one_came_into_force_data() { addSheetRows(); }

  void a_sheet_writes_into_its_keymap_after_another_one_came_into_force() {
    QFETCH(Sheet, sheet);
    PlacesFixture fixture;
    fixture.open(sheet);
    const PropertyList work = fixture.current;
    const PropertyList other = work[keys::Keymap].at(5);
    const PropertyList switched = work.with(keys::KeymapID, 5).with(keys::Keys, other[keys::Keys]);
    for (const int active : {1, 3}) {
      if (active == 3) fixture.open(sheet);
      fixture.hand(fixture.list().replacing(1, switched), active);
      fixture.confirm(sheet);
      const PropertyList keymaps = PlacesFixture::keymapsWith(work, 2, sheet, fixture.recordOf(sheet));
      COMPARE_CALLS(fixture.delegate.calls,
                    call({"updateButtonAssignmentWithSettings", PropertyList::dictionary({{"Keymap", keymaps}}), 1}));
      fixture.hand(fixture.list().replacing(1, work), 1);
    }
  }

  void a_sheet_follows_its_profile_to_another_place_data() { addSheetRows(); }

  void a_sheet_follows_its_profile_to_another_place() {
    QFETCH(Sheet, sheet);
    PlacesFixture fixture;
    fixture.open(sheet);
    // The first profile was deleted: the active one has moved.
    const PropertyList work = fixture.current;
    fixture.hand(PropertyList::array({work, profile("Racing")}), 0);
    fixture.confirm(sheet);
    PropertyList settings = PropertyList::dictionary(
        {{"Keys", work[keys::Keys].with(fourth().identifier, fixture.recordOf(sheet))}, {"KeymapID", 2}});
    if (sheet == Sheet::Cycle)
      settings = settings.with("Keymap", PlacesFixture::keymapsWith(work, 2, sheet, fixture.recordOf(sheet)));
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings", settings}));
    QVERIFY(alertOf(fixture.tab) == nullptr);
  }

  void a_sheet_whose_profile_is_gone_closes_as_by_cancel_and_says_so_data() { addSheetRows(); }

  void a_sheet_whose_profile_is_gone_closes_as_by_cancel_and_says_so() {
    QFETCH(Sheet, sheet);
    PlacesFixture fixture;
    fixture.open(sheet);
    fixture.hand(PropertyList::array({profile("Default"), profile("Racing")}), 1);
    fixture.confirm(sheet);
    QTRY_COMPARE(alertTexts(fixture.tab),
                 QStringList({QStringLiteral("“Work” is no longer there"), localized("lkeyRecordGoneDesc")}));
    QVERIFY(fixture.delegate.calls.empty());
    for (const char* name : {"mSingleKey", "mKeymapWindow", "mMacroRepeatWindow", "applicationPanel"})
      QVERIFY(!fixture.isOpen(name));
    QCOMPARE(fixture.popUp(4).shownTitle(), QStringLiteral("E (Default)"));
    QVERIFY(!fixture.tab.mIsScrollWheelMacroRepeatOption());
  }

  void a_cancelled_sheet_whose_profile_is_gone_says_nothing_data() { addSheetRows(); }

  void a_cancelled_sheet_whose_profile_is_gone_says_nothing() {
    QFETCH(Sheet, sheet);
    PlacesFixture fixture;
    fixture.open(sheet);
    fixture.hand(PropertyList::array({profile("Default")}), 0);
    for (const char* name : {"mSingleKey", "mKeymapWindow", "mMacroRepeatWindow", "applicationPanel"}) {
      if (fixture.isOpen(name)) QTest::keyClick(fixture.find<QDialog>(name), Qt::Key_Escape);
    }
    QTRY_VERIFY(!fixture.isOpen("applicationPanel"));
    std::vector<PropertyList> expected;
    if (sheet == Sheet::SingleKey) expected.push_back(call({"stopSingleKeyRecording"}));
    COMPARE_LISTS(PropertyList::array(fixture.delegate.calls), PropertyList::array(expected));
    QVERIFY(alertOf(fixture.tab) == nullptr);
  }

  void a_repeat_mode_follows_its_macro_to_another_place() {
    PlacesFixture fixture;
    fixture.open(Sheet::Repeat);
    const PropertyList moved =
        fixture.current.with(keys::Keys, fixture.current[keys::Keys].with(fourth().identifier, assignment(10, 0, 5)));
    fixture.hand(fixture.list().replacing(1, moved), 1, PropertyList::array({macros().at(2)}));
    fixture.confirm(Sheet::Repeat);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fourth(), assignment(10, 0, 10)));
  }

  void a_repeat_mode_whose_macro_is_gone_is_not_written() {
    PlacesFixture fixture;
    fixture.open(Sheet::Repeat);
    fixture.hand(fixture.list(), 1, PropertyList::array({macros().at(0), macros().at(1)}));
    fixture.confirm(Sheet::Repeat);
    QTRY_COMPARE(alertTexts(fixture.tab),
                 QStringList({QStringLiteral("“Greeting” is no longer there"), localized("lkeyRecordGoneDesc")}));
    QVERIFY(fixture.delegate.calls.empty());
  }

  void a_repeat_mode_whose_control_does_something_else_by_now_is_not_written() {
    PlacesFixture fixture;
    fixture.open(Sheet::Repeat);
    const PropertyList other =
        fixture.current.with(keys::Keys, fixture.current[keys::Keys].with(fourth().identifier, assignment(2)));
    fixture.hand(fixture.list().replacing(1, other), 1);
    fixture.confirm(Sheet::Repeat);
    QTRY_COMPARE(alertTexts(fixture.tab), QStringList({QStringLiteral("Button 4, E key no longer plays “Greeting”"),
                                                       localized("lkeyAssignmentGoneDesc")}));
    QVERIFY(fixture.delegate.calls.empty());
    QCOMPARE(fixture.popUp(4).shownTitle(), QStringLiteral("Mouse Button: Right Click"));
  }

  void a_sheet_says_what_it_changes() {
    PlacesFixture fixture;
    const QString subject = QStringLiteral("Button 4, E key · Work, Keymap 3");
    const std::pair<Sheet, const char*> labels[] = {{Sheet::SingleKey, "mSingleKeyControl"},
                                                    {Sheet::Keymap, "mKeymapControl"},
                                                    {Sheet::Repeat, "mMacroRepeatControl"}};
    for (const auto& [sheet, label] : labels) {
      fixture.open(sheet);
      QCOMPARE(fixture.find<QLabel>(label)->text(), subject);
      fixture.confirm(sheet);
    }
  }

  void an_open_menu_closes_when_the_profile_is_switched() {
    PlacesFixture fixture;
    const QMenu* submenu = fixture.openSubmenu(fourth(), AssignmentCategory::MouseButton);
    QTRY_VERIFY(submenu->isVisible());
    fixture.hand(fixture.list(), 3);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QVERIFY(fixture.delegate.calls.empty());
    QCOMPARE(fixture.popUp(4).shownTitle(), QStringLiteral("E (Default)"));
  }
};

SKARN_QTEST(MouseButtonControllerPlacesTest)
#include "MouseButtonController_places_test.moc"
