// The Buttons tab of the real window finds, resets, copies, pastes and swaps what the real engine holds.
#include <QContextMenuEvent>
#include <QLineEdit>

#include "buttons/ButtonsFixture.h"
#include "buttons/MouseView.h"
#include "e2e/OpenWindow.h"
#include "e2e/OtherClient.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const ControlDescriptor& control(int number) {
  return ButtonsDriver::control(number);
}

struct EditingWindow {
  EditingWindow() : driver(*window.window().findChild<MouseButtonController*>()) { window.awaitAnnouncement(); }

  // Of a menu that opens where it is asked for.
  void choose(QWidget& widget, const QPoint& place, const char* menuName, const QString& title) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    for (QMenu* menu : driver.tab.findChildren<QMenu*>(QLatin1String(menuName))) {
      for (QAction* item : menu->actions()) {
        if (menu->isVisible() && item->isEnabled() && titleOf(*item) == title) {
          QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
          return;
        }
      }
    }
    QTest::qFail(qPrintable(QStringLiteral("there is no ") + title), __FILE__, __LINE__);
  }
  void chooseOf(const ControlDescriptor& control, const char* title) {
    choose(driver.row(control), {2, 2}, "mControlMenu", QString::fromUtf8(title));
  }
  SegmentedControl& segments() { return *driver.find<SegmentedControl>("mKeymapSegment"); }
  void chooseOfKeymap(int keymap, const char* title) {
    choose(segments(), segments().segmentRect(keymap).center(), "mKeymapMenu", QString::fromUtf8(title));
  }
  PropertyList stored(int profile, const char* group) { return other.bundle()[keys::Profiles].at(profile)[group]; }
  // What the engine stores for the control of the keymap in force.
  PropertyList record(const ControlDescriptor& control, int profile = 0) {
    return stored(profile, groupKey(control))[control.identifier];
  }
  QString shown(int number) { return driver.popUp(number).shownTitle(); }
  // A key for a control, and what it is stored as.
  PropertyList give(int number, int usage, int modifiers = 0) {
    driver.tab.changeButton(control(number).identifier, 16, usage, modifiers, control(number).groupIdentifier());
    return assignment(16, usage, modifiers);
  }

  OpenWindow window;
  ButtonsDriver driver;
  OtherClient other;
};

}  // namespace

class ButtonsEditingWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    mSession = std::make_unique<EngineSession>();
  }
  void init() { mSession->begin(); }
  void cleanup() { mSession->end(); }

  void a_control_is_found_by_what_it_was_given_to_do() {
    EditingWindow edited;
    edited.give(9, 6, 3);
    auto* field = edited.driver.find<QLineEdit>("mControlSearch");
    QTest::keyClicks(field, QStringLiteral("ctrl+shift+c"));
    QCOMPARE(edited.driver.find<QLabel>("mControlsFound")->text(), QStringLiteral("1 found"));
    QVERIFY(edited.driver.row(control(9)).searchResult() == ControlRow::SearchResult::Found);
    QCOMPARE(edited.window.profileUpdates(), 1);
  }

  void a_control_is_reset() {
    EditingWindow edited;
    edited.give(9, 6, 3);
    edited.chooseOf(control(9), "Reset");
    COMPARE_LISTS(edited.record(control(9)), assignment(45, 7));
    QCOMPARE(edited.shown(9), QStringLiteral("D (Default)"));
  }

  void a_control_is_reset_at_its_place_in_the_picture() {
    EditingWindow edited;
    edited.give(9, 6, 3);
    auto* picture = edited.driver.find<MouseView>("mMainSkarn");
    edited.choose(*picture, picture->placeOf(control(9)).toPoint(), "mControlMenu", QStringLiteral("Reset"));
    COMPARE_LISTS(edited.record(control(9)), assignment(45, 7));
    QCOMPARE(edited.window.profileUpdates(), 2);
  }

  void a_pasted_cycle_is_there_in_every_keymap() {
    EditingWindow edited;
    edited.driver.openKeymapSheet(control(17));
    edited.driver.press("mKeymapOK");
    edited.chooseOf(control(17), "Copy");
    edited.chooseOf(control(4), "Paste");
    COMPARE_LISTS(edited.record(control(4)), assignment(50, 255));
    const PropertyList keymaps = edited.stored(0, "Keymap");
    for (const PropertyList& keymap : keymaps.elements()) {
      COMPARE_LISTS(keymap["Keys"][control(4).identifier], assignment(50, 255));
    }
    QCOMPARE(edited.window.profileUpdates(), 2);
  }

  void what_a_control_does_is_copied_to_another_one_also_in_another_profile() {
    EditingWindow edited;
    const PropertyList given = edited.give(9, 6, 3);
    edited.chooseOf(control(9), "Copy");
    edited.chooseOf(control(17), "Paste");
    COMPARE_LISTS(edited.record(control(17)), given);
    COMPARE_LISTS(edited.record(control(9)), given);
    edited.other.addProfile(PropertyList::dictionary({{keys::ProfileName, "Travel"}}));
    edited.other.switchProfile(1);
    QTRY_COMPARE_WITH_TIMEOUT(edited.window.profileName(), QStringLiteral("Travel"), deadline);
    edited.chooseOf(control(20), "Paste");
    COMPARE_LISTS(edited.record(control(20), 1), given);
    QCOMPARE(edited.window.profileUpdates(), 3);
  }

  void two_controls_are_swapped_and_swapped_back() {
    EditingWindow edited;
    const PropertyList given = edited.give(9, 6, 3);
    const PropertyList before = edited.other.bundle();
    for (const bool isBack : {false, true}) {
      edited.chooseOf(control(9), "Swap With…");
      auto* list = edited.driver.find<QComboBox>("mSwapPopUp");
      list->setFocus();
      for (int step = list->findData(18) - list->currentIndex(); step > 0; --step) QTest::keyClick(list, Qt::Key_Down);
      edited.driver.press("mSwapOK");
      if (isBack) continue;
      COMPARE_LISTS(edited.record(control(18)), given);
      COMPARE_LISTS(edited.record(control(9)), assignment(18));
    }
    COMPARE_LISTS(edited.other.bundle(), before);
    QCOMPARE(edited.window.profileUpdates(), 3);
  }

  void the_options_of_a_macro_and_of_a_keymap_are_chosen_in_their_submenus() {
    EditingWindow edited;
    edited.window.hub().addMacroWithSettings(macro("Greeting", {}));
    edited.driver.chooseInSubmenu(control(4), AssignmentCategory::Macro, 1);
    const QMenu* macros = edited.driver.openSubmenu(control(4), AssignmentCategory::Macro);
    macros->actions().constLast()->menu()->actions().constLast()->trigger();
    edited.driver.popUp(4).menu()->close();
    COMPARE_LISTS(edited.record(control(4)), assignment(10, 0, 10));
    edited.driver.chooseInSubmenu(control(5), AssignmentCategory::Keymap, 3);
    edited.driver.chooseInSubmenu(control(5), AssignmentCategory::Keymap, switchBackTag);
    COMPARE_LISTS(edited.record(control(5)), assignment(50, 2, 1));
    QCOMPARE(edited.window.profileUpdates(), 4);
  }

  void a_keymap_is_named_and_the_name_goes_with_an_export() {
    EditingWindow edited;
    edited.chooseOfKeymap(3, "Name…");
    edited.driver.find<QLineEdit>("mKeymapNameField")->setText(QStringLiteral("Build"));
    edited.driver.press("mKeymapNameOK");
    COMPARE_LISTS(edited.stored(0, "KeymapNames"), PropertyList::array({"", "", "", "Build", "", "", "", ""}));
    QCOMPARE(edited.segments().segmentName(3), QStringLiteral("Keymap 4 – Build"));
    // A profile that is made of the record, as an import does, has it too.
    edited.other.addProfile(edited.other.bundle()[keys::Profiles].at(0).with(keys::ProfileName, "Imported"));
    COMPARE_LISTS(edited.stored(1, "KeymapNames"), edited.stored(0, "KeymapNames"));
    QCOMPARE(edited.window.profileUpdates(), 1);
  }

  void a_keymap_is_copied_pasted_and_cleared() {
    EditingWindow edited;
    edited.give(9, 6, 3);
    const PropertyList before = edited.stored(0, "Keymap");
    edited.chooseOfKeymap(0, "Copy Keymap");
    edited.chooseOfKeymap(5, "Paste Keymap");
    COMPARE_LISTS(edited.stored(0, "Keymap"), before.replacing(5, before.at(0)));
    QVERIFY(edited.segments().isMarked(5));
    edited.chooseOfKeymap(0, "Clear Keymap");
    COMPARE_LISTS(edited.record(control(9)), assignment(45, 7));
    edited.chooseOfKeymap(5, "Clear Keymap");
    COMPARE_LISTS(edited.stored(0, "Keymap"), before.replacing(0, before.at(1)));
    QVERIFY(!edited.segments().isMarked(0) && !edited.segments().isMarked(5));
    QCOMPARE(edited.window.profileUpdates(), 4);
  }

  void the_last_left_click_stays() {
    EditingWindow edited;
    edited.driver.tab.changeButton(control(3).identifier, 1, 0, 0, control(3).groupIdentifier());
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2),
                            edited.driver.row(control(3)).mapToGlobal(QPoint()));
    QApplication::sendEvent(&edited.driver.row(control(3)), &event);
    auto* menu = edited.driver.tab.findChild<QMenu*>(QStringLiteral("mControlMenu"));
    QVERIFY(!menu->actions().constFirst()->isEnabled());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().constFirst()).center());
    COMPARE_LISTS(edited.record(control(3)), assignment(1));
    QCOMPARE(edited.window.profileUpdates(), 1);
  }

  void a_menu_that_is_open_while_the_profile_is_switched_closes_and_changes_nothing() {
    EditingWindow edited;
    edited.other.addProfile(PropertyList::dictionary({{keys::ProfileName, "Travel"}}));
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2),
                            edited.driver.row(control(3)).mapToGlobal(QPoint()));
    QApplication::sendEvent(&edited.driver.row(control(3)), &event);
    QVERIFY(QApplication::activePopupWidget() != nullptr);
    edited.other.switchProfile(1);
    QTRY_COMPARE_WITH_TIMEOUT(edited.window.profileName(), QStringLiteral("Travel"), deadline);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QCOMPARE(edited.window.profileUpdates(), 0);
  }

 private:
  std::unique_ptr<EngineSession> mSession;
};

SKARN_QTEST(ButtonsEditingWithEngineTest)
#include "buttons_editing_with_engine_test.moc"
