// The Buttons tab: the 27 programmable controls of the mouse with what each of them does in the current profile and
// keymap. It never talks to the engine; it keeps copies of the slices that its owner hands it, redraws from them, and
// hands a changed group of assignments to its delegate.
//
// Nothing is changed in place: the delegate's command ends in new slices and a call of updateUISettings, which may come
// while the operation that sent the command still runs. When none came, the tab redraws from what it has, so it always
// shows what is stored.
//
// "button" is a control's identifier. Readers take a group type (1 keys, 2 buttons), writers a group identifier
// (1 buttons, 2 keys); see ControlTable.h. Slices of a wrong shape are survived: what cannot be read shows nothing.
// Main thread.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <bitset>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "buttons/AssignmentText.h"
#include "buttons/AssignmentTransfer.h"
#include "buttons/ControlTable.h"
#include "buttons/MouseButtonDelegate.h"
#include "buttons/SwapSheet.h"
#include "model/Assignments.h"
#include "model/NotificationCenter.h"
#include "model/PropertyList.h"
#include "model/RememberedRecord.h"

class QAction;
class QMenu;

namespace skarn {

class ApplicationPanel;
class ControlRow;
class ControlRows;
class ControlSearch;
class KeymapNameSheet;
class KeymapSheet;
class MacroRepeatSheet;
class SingleKeySheet;

namespace Ui {
class MouseButtonController;
}

class MouseButtonController : public QWidget, public AssignmentText {
  Q_OBJECT

 public:
  explicit MouseButtonController(QWidget* parent = nullptr);
  ~MouseButtonController() override;

  // --- What the owner hands over, besides the lists and defaults of AssignmentText. Delegate, window and centre are
  // not owned; the centre outlives the tab or is taken back with nullptr. Sheets are shown on the window, without one
  // on the tab's own.
  const vorn::PropertyList& mButtonsSettingsDict() const { return buttonsSettingsDict; }
  void setMButtonsSettingsDict(const vorn::PropertyList& profile) { buttonsSettingsDict = profile; }
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  void setMDeviceSettingsDict(const vorn::PropertyList& deviceSettings) { deviceSettingsDict = deviceSettings; }
  MouseButtonDelegate* mButtonDelegate() const { return buttonDelegate; }
  void setMButtonDelegate(MouseButtonDelegate* delegate) { buttonDelegate = delegate; }
  QWidget* mButtonWindow() const { return buttonWindow; }
  void setMButtonWindow(QWidget* window) { buttonWindow = window; }
  vorn::NotificationCenter* mNotificationCenter() const { return notificationCenter; }
  void setMNotificationCenter(vorn::NotificationCenter* center);
  // Starts to listen for captured keys.
  void registerNotification();

  // --- Drawing
  // Builds the menus from the groups that the last updateUISettings took over; nothing is selected in them.
  void populateUISettings();
  // Takes the groups and the keymaps out of the profile record and redraws the tab. While the repeat sheet is open its
  // list of modes stays as it is.
  void updateUISettings();
  void enableControlsState(bool enabled);
  // Those of the table that the mouse in use lacks; at first none. They stay assignable.
  void setMissingControls(const std::bitset<controlTable.size()>& missing);
  void enableAllPopupButtons();
  void hideAllMacroConfigButtons();
  void populateProfileListPopUpMenu();
  // Shows the mouse with the keymap's number; a keymap outside 0 to 7 leaves the picture as it is.
  void changeKeymapImage(int keymap);
  // Enables every pop-up but the only one among the first five that is the left click; that is locked, and says how it
  // is unlocked.
  void checkForLeftClickAssigned();
  // False for an item called like the active profile: it is not offered.
  bool validateMenuItem(const QAction& item);

  // --- Choices
  // The chosen item of a control's menu: writes an assignment, or opens the sheet that asks for more.
  void checkSelectedValue(int command, std::string_view forButton, int withIdentifier);
  // Switches to another profile.
  void selectProfile(int index);
  // Makes another keymap the current one. Nothing is sent for a keymap that lacks one of its groups.
  void selectKeymapSegment(int segment);
  void openTabAtIndex(int index);

  // --- Writing; one request each
  void changeButton(std::string_view button, int withCommand, int andParamOne, int andParamTwo, int withIdentifier);
  // The same in another profile, whose group is given.
  void changeButton(std::string_view button, int withCommand, int andParamOne, int andParamTwo, int withIdentifier,
                    int toProfileIndex, const vorn::PropertyList& withSettings);
  // Lets the button step through the keymaps from each of them. Nothing for an unknown group identifier.
  void changeKeymapsKeymapCycleMappingForButton(std::string_view button, int inGroup);

  // --- Single-key sheet
  void singleKeyEvents(const vorn::Notification& notification);
  void clickSingleKeyOK();
  void clickSingleKeyCancel();
  int mSingleKeyHIDCode() const { return singleKeyHIDCode; }
  int mSingleKeyModifier() const { return singleKeyModifier; }

  // --- Keymap sheet
  // Reads the chosen target: 0 to 7, or 255 for the cycle.
  void getKeymapOptionValue();
  int mKeymapOptionValue() const { return keymapOptionValue; }
  // The place of the button's target in the pop-up; that of the cycle also for keymap 0. Takes over the record's
  // switch-back state.
  int getIndexValueOfAssignedKeyMapForButton(std::string_view button, int withIdentifier);
  int mKeymapSwitchOptionValue() const { return keymapSwitchOptionValue; }
  // A cycle and the directions of the wheel never switch back.
  void updateStateOfKeyMapSwitchOptionButton();
  void checkForScrollUpDownButton(std::string_view button);
  bool mIsScrollUpDown() const { return isScrollUpDown; }
  void clickKeymapOK();
  void clickKeymapCancel();

  // --- Repeat sheet
  // Fills the list of modes: all twelve, or without the two open-ended ones for the directions of the wheel.
  void populateMacroRepeatOptions(bool isScrollVariant);
  // The mode at a place of the list; 1 for a place outside.
  int getIntValueOfMacroRepeatOptionUsingValue(int index) const;
  // Shows the button of the control with this identifier ("700" to "702" for the wheel); nothing for any other.
  void updateMacroRepeatButton(std::string_view button) override;
  void clickMacroRepeatButton(const ControlDescriptor& control);
  void clickMacroPlayback();
  void clickMacroRepeatOK();
  void clickMacroRepeatCancel();
  bool mIsScrollWheelMacroRepeatOption() const { return isScrollWheelMacroRepeatOption; }

  // --- Clean-up
  // In every profile, puts back each record of a fixed list that plays the deleted macro or switches to the deleted
  // profile; a request for each.
  void removeButtonMacroAssignment(int deletedIndex);
  void removeButtonProfileAssignment(int deletedIndex);
  // After a macro (forMapping 10) or a profile (17) was deleted: in every profile, puts back to its default each
  // record that points at the deleted index or past the end of the present list, and hands all profiles to the
  // delegate. Any other mapping counts as an empty list.
  void removeMacroProfileMappings(int deletedIndex, int forMapping);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  // What a sheet is about. It stays so whatever profile and keymap are shown when the sheet ends.
  struct SheetContext {
    int identifier = 0;  // of the group
    std::string button;
    vorn::AssignmentCommand mapping{};              // what OK assigns
    std::optional<vorn::RememberedRecord> profile;  // nothing where no profile was shown
    int keymap = 0;
  };

  void connectControls();
  void addSearch();
  QString describe(const ControlDescriptor& control) const;
  // All that a control can be found by.
  QString wordsOf(const ControlDescriptor& control);
  void selectAssignment(ControlRow& row);
  // The names of the keymaps, and a mark on those in which a control does something else than out of the box.
  void describeKeymaps();
  bool isInUse(int keymap) const;
  // What an open menu is for, and what its submenus list.
  vorn::PropertyList menuSubject() const;

  void chooseItem(const ControlDescriptor& control);
  void chooseSubmenuItem(const ControlDescriptor& control, AssignmentCategory submenu, int tag);
  void changeButton(std::string_view button, const Assignment& to, int identifier);
  // The repeat mode of the control's macro, or whether it switches back from its keymap.
  void chooseOption(const ControlDescriptor& control, vorn::AssignmentCommand of, int option);
  void disableButton(std::string_view button, int identifier);
  void resetToDefault(std::string_view button, int identifier);
  void takeCaughtKey(int usage, int modifiers);
  void openSingleKeySheet(const SheetContext& context);
  // Writes what the sheet was opened for, unless it was cancelled.
  void sheetDidEnd(const SheetContext& context);
  void openApplicationPanel(const SheetContext& context);
  void openPanelDidEnd(int returnCode, const QString& path, const SheetContext& context);
  void openKeymapSheet(const SheetContext& context);
  // Where OK would change nothing its tooltip says so.
  void explainKeymapOK();
  void explainRepeatOK();
  KeymapSheet& keymapSheet();
  MacroRepeatSheet& repeatSheet();
  void resetAssignments(vorn::AssignmentCommand mapping, int deletedIndex);

  SheetContext contextOf(std::string_view button, int identifier, vorn::AssignmentCommand mapping) const;
  // Where the sheet's profile stands now; nothing when it, or its keymap, is gone.
  std::optional<int> placeOf(const SheetContext& context) const;
  bool isShown(const SheetContext& context, int place) const;
  // "Keys" and "Buttons" of the sheet's keymap.
  vorn::PropertyList groupsOf(const SheetContext& context, int place) const;
  vorn::PropertyList groupOf(const SheetContext& context, int place) const;
  // Puts one or both groups into the sheet's keymap.
  void write(const SheetContext& context, int place, const vorn::PropertyList& groups);
  // The same of those that differ from what is there. What begins to cycle the keymaps does so in every one.
  void writeChange(const SheetContext& context, int place, const vorn::PropertyList& changed);
  // Writes an assignment to where the sheet was opened for. When that is gone, nothing is written and an alert says so.
  void assign(const SheetContext& context, int command, const vorn::PropertyList& param1,
              const vorn::PropertyList& param2);
  void assignCycle(const SheetContext& context);
  // Unless the macro is gone, or its control does something else by now.
  void writeRepeatMode(int mode);
  void tellGone(const vorn::RememberedRecord& record);

  // --- The right-click menu of a control
  struct CopiedControl {
    vorn::PropertyList record;
    const ControlDescriptor* control;
    Lists lists;  // when it was copied
  };
  static QString reasonFor(TransferProblem problem, const std::string& gone = {});
  Lists lists() const;
  // In the place of the one that is open.
  QMenu& newContextMenu(const char* name);
  void showControlMenu(const ControlDescriptor& control, const QPoint& globalPosition);
  // Why the item cannot be chosen; empty when it can.
  QString reasonAgainst(const ControlDescriptor& control, int tag);
  void selectControlMenuItem(const ControlDescriptor& control, int tag);
  bool givesAwayLeftClick(const ControlDescriptor& control, vorn::AssignmentCommand command) const;
  Transfer pasteOnto(const ControlDescriptor& control) const;
  void paste(const ControlDescriptor& control);
  void openSwapSheet(const ControlDescriptor& control);
  // What the control does where the sheet was opened for.
  QString wordsForSwap(const ControlDescriptor& control) const;
  std::vector<SwapSheet::Choice> swapChoices() const;
  void redrawSwapSheet();
  GroupsChange swapWith(const ControlDescriptor& other) const;
  const ControlDescriptor& chosenForSwap() const;
  void updateSwapProblem();
  void clickSwapOK();

  // --- The menu of a keymap
  struct CopiedKeymap {
    vorn::PropertyList groups;
    Lists lists;  // when it was copied
  };
  void addKeymapMenus();
  void tintIcons();
  void fillKeymapMenu(QMenu& menu, int keymap);
  void showKeymapMenu(int keymap, const QPoint& globalPosition);
  SheetContext contextOfKeymap(int keymap) const;
  QString reasonAgainstKeymap(int keymap, int tag) const;
  vorn::PropertyList groupsOfKeymap(int keymap) const;
  GroupsChange pasteInto(int keymap) const;
  QString reasonAgainstPasteInto(int keymap) const;
  GroupsChange clearing(int keymap) const;
  void selectKeymapMenuItem(int keymap, int tag);
  // Changes the keymap, and says what was left out.
  void changeKeymap(int keymap, const GroupsChange& change, const char* leftOutKey);
  // "Left out: button 4 – …"; empty when nothing was left out. key: of the words around the controls.
  static QString leftOutWords(const char* key, const GroupsChange& change);
  void openKeymapNameSheet(const SheetContext& context);
  void clickKeymapNameOK();

  const vorn::PropertyList& groupToChange(int identifier) const;
  // To the profile that is shown, or to another one.
  void send(const vorn::PropertyList& settings, std::optional<int> profileIndex = std::nullopt);
  QWidget* sheetWindow();
  QString controlName(const SheetContext& context) const;
  // What a sheet says it changes.
  QString subjectOf(const SheetContext& context) const;

  std::unique_ptr<Ui::MouseButtonController> mUi;
  std::unique_ptr<ControlRows> mRows;
  std::unique_ptr<ControlSearch> mSearch;
  // Made when they are first needed.
  QPointer<SingleKeySheet> mSingleKey;
  QPointer<KeymapSheet> mKeymapWindow;
  QPointer<MacroRepeatSheet> mMacroRepeatWindow;
  QPointer<ApplicationPanel> mApplicationPanel;
  QPointer<SwapSheet> mSwapWindow;
  QPointer<KeymapNameSheet> mKeymapNameWindow;
  QPointer<QMenu> mContextMenu;

  vorn::PropertyList buttonsSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList mTopViewSettingsDict;  // "Buttons" once more: what the writers start from
  vorn::PropertyList mAllKeymaps;
  int mActiveKeymap = 0;
  vorn::PropertyList mMenuSubject;
  bool mIsTabEnabled = true;
  std::bitset<controlTable.size()> mMissing;
  unsigned mRedraws = 0;

  SheetContext mSingleKeyContext;
  int singleKeyHIDCode = 0;
  int singleKeyModifier = 0;
  bool mIsCancelSingleKey = false;

  SheetContext mKeymapContext;
  int keymapOptionValue = vorn::nextKeymap;
  int keymapSwitchOptionValue = 0;
  bool isScrollUpDown = false;
  bool mIsCancelKeymap = false;

  std::string mButtonSelected;
  int mButtonSelectedIdentifier = 0;
  int mParamOne = 0;
  SheetContext mRepeatContext;
  std::optional<vorn::RememberedRecord> mRepeatMacro;  // nothing where the record pointed at no macro
  bool isScrollWheelMacroRepeatOption = false;

  std::optional<CopiedControl> mCopiedControl;
  const ControlDescriptor* mSwapControl = nullptr;
  SheetContext mSwapContext;
  std::optional<CopiedKeymap> mCopiedKeymap;
  SheetContext mKeymapNameContext;

  MouseButtonDelegate* buttonDelegate = nullptr;
  QPointer<QWidget> buttonWindow;
  vorn::NotificationCenter* notificationCenter = nullptr;
};

}  // namespace skarn
