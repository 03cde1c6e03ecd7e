// The Buttons tab on a window of its own, over a delegate that writes down what is asked of it.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <functional>
#include <vector>

#include "buttons/AssignmentMenus.h"
#include "buttons/ControlRow.h"
#include "buttons/MouseButtonController.h"
#include "platform/Localization.h"
#include "support/RecordingNotificationCenter.h"
#include "support/SampleSettings.h"
#include "widgets/PopUpButton.h"
#include "widgets/SegmentedControl.h"

namespace skarn::test {

// Every call as an array of its name and its arguments, in their order.
class RecordingButtonDelegate : public MouseButtonDelegate {
 public:
  void updateButtonAssignmentWithSettings(const PropertyList& settings) override {
    note({"updateButtonAssignmentWithSettings", settings});
    if (onUpdate) onUpdate(settings);
  }
  void updateButtonAssignmentWithSettings(const PropertyList& settings, int toProfileIndex) override {
    note({"updateButtonAssignmentWithSettings", settings, toProfileIndex});
    if (onUpdateOfProfile) onUpdateOfProfile(settings, toProfileIndex);
  }
  void updateProfileKeyInDictionaryWithDictionary(const PropertyList& profiles) override {
    note({"updateProfileKeyInDictionaryWithDictionary", profiles});
  }
  void startSingleKeyRecording() override { note({"startSingleKeyRecording"}); }
  void stopSingleKeyRecording() override { note({"stopSingleKeyRecording"}); }
  void selectTabAtIndex(int index) override { note({"selectTabAtIndex", index}); }
  void switchProfileWithID(int profileID) override { note({"switchProfileWithID", profileID}); }

  std::vector<PropertyList> calls;
  std::function<void(const PropertyList&)> onUpdate;
  std::function<void(const PropertyList&, int)> onUpdateOfProfile;

 private:
  void note(std::vector<PropertyList> call) { calls.push_back(PropertyList::array(std::move(call))); }
};

inline PropertyList call(std::vector<PropertyList> nameAndArguments) {
  return PropertyList::array(std::move(nameAndArguments));
}

inline const char* groupKey(const ControlDescriptor& control) {
  return control.groupType() == 1 ? "Keys" : "Buttons";
}

// The keymaps of a profile, each like the factory's but for one key that tells them apart.
inline PropertyList keymaps() {
  std::vector<PropertyList> all;
  for (int number = 0; number < 8; ++number) {
    all.push_back(PropertyList::dictionary(
        {{keys::Keys, factoryGroup(1).with("43", assignment(16, 30 + number)).with("note", number)},
         {keys::Buttons, factoryGroup(2)},
         {"name", number}}));
  }
  return PropertyList::array(std::move(all));
}

// What a person does with the tab, by the names of its parts. The tab may stand in any window.
class ButtonsDriver {
 public:
  explicit ButtonsDriver(MouseButtonController& driven) : tab(driven) {}

  ControlRow& row(const ControlDescriptor& control) {
    return *tab.findChild<ControlRow*>(QLatin1String(control.fieldName) + QStringLiteral("Row"));
  }
  PopUpButton& popUp(const ControlDescriptor& control) {
    return *tab.findChild<PopUpButton*>(QLatin1String(control.fieldName));
  }
  PopUpButton& popUp(int ordinal) { return popUp(control(ordinal)); }
  static const ControlDescriptor& control(int ordinal) { return controlTable[static_cast<std::size_t>(ordinal - 1)]; }
  QStringList titles(const ControlDescriptor& control) {
    QStringList all;
    for (int index = 0; index < popUp(control).numberOfItems(); ++index) all << popUp(control).itemTitle(index);
    return all;
  }
  // Of a category's item; a direction has its picture item before them.
  QAction* item(const ControlDescriptor& control, AssignmentCategory category) {
    return popUp(control).itemAt(static_cast<int>(category) + (control.directionPicture ? 1 : 0));
  }

  // With the mouse, as a person does.
  void click(const ControlDescriptor& control, QAction* item) {
    popUp(control).openMenu();
    QMenu* menu = popUp(control).menu();
    QTRY_VERIFY(menu->isVisible());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
  }
  // A category without a submenu.
  void choose(const ControlDescriptor& control, AssignmentCategory category) {
    click(control, item(control, category));
  }
  // What a category with a submenu does itself: for it there is no click.
  void perform(const ControlDescriptor& control, AssignmentCategory category) { item(control, category)->trigger(); }
  // The sheet that asks for keymap and switch-back.
  void openKeymapSheet(const ControlDescriptor& control) {
    chooseInSubmenu(control, AssignmentCategory::Keymap, categoryTag);
  }
  QMenu* openSubmenu(const ControlDescriptor& control, AssignmentCategory category) {
    popUp(control).openMenu();
    QMenu* menu = popUp(control).menu();
    QAction* category_ = item(control, category);
    menu->setActiveAction(category_);
    QTest::keyClick(menu, Qt::Key_Right);
    return category_->menu();
  }
  void chooseInSubmenu(const ControlDescriptor& control, AssignmentCategory category, int tag) {
    QMenu* submenu = openSubmenu(control, category);
    QTRY_VERIFY(submenu->isVisible());
    for (QAction* action : submenu->actions()) {
      if (action->isSeparator() || tagOf(*action) != tag) continue;
      QTest::mouseClick(submenu, Qt::LeftButton, {}, submenu->actionGeometry(action).center());
      return;
    }
    QFAIL("no item with this tag");
  }

  template <typename Widget>
  Widget* find(const char* name) {
    return tab.window()->findChild<Widget*>(QLatin1String(name));
  }
  bool isOpen(const char* sheet) {
    const auto* dialog = find<QDialog>(sheet);
    return dialog != nullptr && dialog->isVisible();
  }
  void press(const char* button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }

  MouseButtonController& tab;
};

// A tab with a delegate; it is made before the driver that knows it.
struct TabWithDelegate {
  RecordingNotificationCenter notifications;
  RecordingButtonDelegate delegate;
  PropertyList current;
  MouseButtonController page;
};

struct ButtonsFixture : TabWithDelegate, ButtonsDriver {
  ButtonsFixture() : ButtonsDriver(page) {
    tab.setMButtonDelegate(&delegate);
    tab.resize(1180, 560);
    show(sample());
    tab.show();
  }

  // The profile that is shown at first.
  static const PropertyList& sample() {
    static const PropertyList work = profile("Work").with(keys::KeymapID, 2).with(keys::Keymap, keymaps());
    return work;
  }

  // Hands out the slices of a bundle with four profiles, of which this, the second, is active.
  void show(const PropertyList& active) {
    current = active;
    tab.setMButtonsSettingsDict(active);
    tab.setMAllProfiles(profiles().replacing(1, active));
    tab.setMAllMacros(macros());
    tab.setMDeviceSettingsDict(deviceSettings());
    tab.setMDefaultDict(defaultSettings());
    tab.updateUISettings();
  }
  // Like a person who waits for what it brings: what the redraw replaces is deleted.
  void give(const ControlDescriptor& control, const PropertyList& record) {
    show(current.with(groupKey(control), current[groupKey(control)].with(control.identifier, record)));
    deleteReplaced();
  }
  // What another program's change brings.
  void hand(const PropertyList& profileList, int active, const PropertyList& macroList = macros()) {
    current = profileList.at(active);
    tab.setMButtonsSettingsDict(current);
    tab.setMAllProfiles(profileList);
    tab.setMAllMacros(macroList);
    tab.setMDeviceSettingsDict(deviceSettings().with(keys::ActiveProfile, active));
    tab.updateUISettings();
    deleteReplaced();
  }
  static void deleteReplaced() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  // The request that changes this record of the current profile.
  PropertyList request(const ControlDescriptor& control, const PropertyList& record) const {
    return call(
        {"updateButtonAssignmentWithSettings",
         PropertyList::dictionary({{groupKey(control), current[groupKey(control)].with(control.identifier, record)},
                                   {keys::KeymapID, current[keys::KeymapID]}})});
  }
};

// The 27 controls as rows of a data-driven test, with their position in the table.
inline void addControlRows() {
  QTest::addColumn<int>("ordinal");
  for (const ControlDescriptor& control : controlTable) QTest::newRow(control.fieldName) << control.number;
}

}  // namespace skarn::test

// Compares property lists, and says what differs.
#define COMPARE_LISTS(actual, expected) \
  QVERIFY2((actual) == (expected), ((actual).description() + "\ninstead of\n" + (expected).description()).c_str())
#define COMPARE_CALLS(actual, ...)                 \
  COMPARE_LISTS(vorn::PropertyList::array(actual), \
                vorn::PropertyList::array(std::vector<vorn::PropertyList>{__VA_ARGS__}))
