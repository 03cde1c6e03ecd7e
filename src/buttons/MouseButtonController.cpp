#include "buttons/MouseButtonController.h"

#include <QAction>
#include <QShortcut>
#include <QToolButton>
#include <algorithm>
#include <utility>
#include <vector>

#include "buttons/AssignmentChanges.h"
#include "buttons/AssignmentMenus.h"
#include "buttons/CommonChords.h"
#include "buttons/ControlRow.h"
#include "buttons/ControlRows.h"
#include "buttons/ControlSearch.h"
#include "buttons/MacroRepeatSheet.h"
#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "protocol/EngineProtocol.h"
#include "ui_MouseButtonController.h"
#include "widgets/LabelState.h"
#include "widgets/Notice.h"
#include "widgets/PopUpButton.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

QString searchTip() {
  return localized("lkeyFindControlTip").arg(QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText));
}

}  // namespace

MouseButtonController::MouseButtonController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseButtonController>()) {
  mUi->setupUi(this);
  mRows = std::make_unique<ControlRows>(
      *this, *mUi->mMainSkarn,
      std::array{ControlRows::Family{ControlFamily::ThumbGrid, mUi->thumbGridRows, mUi->mThumbGridChanges},
                 ControlRows::Family{ControlFamily::DirectionPad, mUi->directionPadRows, mUi->mDirectionPadChanges},
                 ControlRows::Family{ControlFamily::Wheel, mUi->wheelRows, mUi->mWheelChanges}});
  setTabOrder(mUi->mProfileListPopUp, mUi->mControlSearch);
  setTabOrder(mUi->mControlSearch, mUi->mKeymapMenuButton);
  setTabOrder(mUi->mKeymapMenuButton, mUi->mKeymapSegment);
  mRows->orderForKeyboard(mUi->mKeymapSegment);
  connectControls();
  addSearch();
  addKeymapMenus();
  describeKeymaps();
}

MouseButtonController::~MouseButtonController() {
  // A row loses the keyboard when the tab goes.
  mSearch.reset();
  mRows.reset();
  setMNotificationCenter(nullptr);
}

void MouseButtonController::connectControls() {
  connect(mUi->mKeymapSegment, &SegmentedControl::segmentChosen, this, &MouseButtonController::selectKeymapSegment);
  connect(mUi->mProfileListPopUp, &QComboBox::activated, this, &MouseButtonController::selectProfile);
  for (ControlRow* row : mRows->all()) {
    const ControlDescriptor& control = row->control();
    row->popUp()->setValidator([this](const QAction& item) { return validateMenuItem(item); });
    connect(row->popUp(), &PopUpButton::itemChosen, this, [this, &control] { chooseItem(control); });
    connect(row, &ControlRow::menuAsked, this, &MouseButtonController::showControlMenu);
    connect(row->repeatButton(), &QToolButton::clicked, this, [this, &control] { clickMacroRepeatButton(control); });
  }
  mUi->mMainSkarn->setDescription([this](const ControlDescriptor& control) { return describe(control); });
  connect(mUi->mMainSkarn, &MouseView::menuAsked, this, &MouseButtonController::showControlMenu);
  connect(mUi->mMainSkarn, &MouseView::controlClicked, this,
          [this](const ControlDescriptor* control) { mRows->of(*control).popUp()->openMenu(); });
}

void MouseButtonController::addSearch() {
  mSearch = std::make_unique<ControlSearch>(*mUi->mControlSearch, *mUi->mControlsFound, *mRows,
                                            [this](const ControlDescriptor& control) { return wordsOf(control); });
  mUi->mControlSearch->setToolTip(searchTip());
  auto* findKey = new QShortcut(QKeySequence(QKeySequence::Find), this);
  connect(findKey, &QShortcut::activated, this, [this] { mSearch->begin(); });
}

QString MouseButtonController::describe(const ControlDescriptor& control) const {
  const PopUpButton* popUp = mRows->of(control).popUp();
  const QString words = popUp->accessibleName() + QLatin1Char('\n') + popUp->shownTitle();
  return popUp->note().isEmpty() ? words : words + QLatin1Char('\n') + popUp->note();
}

QString MouseButtonController::wordsOf(const ControlDescriptor& control) {
  QStringList words{spokenName(control), mRows->of(control).popUp()->shownTitle()};
  words += shorterLabels(control.identifier, control.groupType());
  const PropertyList& record = recordAt(control.identifier, control.groupType());
  if (vorn::commandOf(record) == AssignmentCommand::Macro)
    words << getMacroRepeatOptionUsingValue(record[keys::Param2].toInt());
  if (vorn::commandOf(record) == AssignmentCommand::SingleKey) words << commonMeaning(record);
  if (vorn::commandOf(record) == AssignmentCommand::Keymap) words << namedKeymap(record[keys::Param1].toInt());
  return words.join(QLatin1Char('\n'));
}

void MouseButtonController::setMNotificationCenter(vorn::NotificationCenter* center) {
  if (notificationCenter != nullptr && notificationCenter != center) notificationCenter->removeObserver(this);
  notificationCenter = center;
}

void MouseButtonController::registerNotification() {
  if (notificationCenter == nullptr) return;
  notificationCenter->addObserver(this, vorn::notificationNames::singleKeyEvent(vorn::wiredProductID),
                                  [this](const vorn::Notification& news) { singleKeyEvents(news); });
}

// --- Drawing

PropertyList MouseButtonController::menuSubject() const {
  std::vector<PropertyList> names{deviceSettingsDict[keys::ActiveProfile], mActiveKeymap,
                                  buttonsSettingsDict[keys::KeymapNames]};
  for (const PropertyList& profile : allProfiles.elements()) names.push_back(profile[keys::ProfileName]);
  names.emplace_back();
  for (const PropertyList& macro : allMacros.elements()) names.push_back(macro[keys::MacroName]);
  return PropertyList::array(std::move(names));
}

void MouseButtonController::populateUISettings() {
  forgetWords();
  const PropertyList subject = menuSubject();
  const bool isForSomethingElse = std::exchange(mMenuSubject, subject) != subject;
  if (isForSomethingElse && mContextMenu) mContextMenu->close();
  if (isForSomethingElse) mUi->mKeymapMenuButton->menu()->close();
  for (ControlRow* row : mRows->all()) {
    const ControlDescriptor& control = row->control();
    const AssignmentHandlers handlers{
        [this, &control](AssignmentCategory submenu, int tag) { chooseSubmenuItem(control, submenu, tag); },
        [this, &control](int mode) { chooseOption(control, AssignmentCommand::Macro, mode); },
        [this, &control](bool isOn) { chooseOption(control, AssignmentCommand::Keymap, isOn ? 1 : 0); }};
    buildAssignmentMenu(*row->popUp(), control, *this, handlers, isForSomethingElse);
  }
}

void MouseButtonController::updateUISettings() {
  ++mRedraws;
  populateProfileListPopUpMenu();
  if (mMacroRepeatWindow && !mMacroRepeatWindow->isVisible()) populateMacroRepeatOptions(false);
  mShownProfile = buttonsSettingsDict;
  mTopViewSettingsDict = buttonsSettingsDict[keys::Buttons].dictionaryOrEmpty();
  mButtonsDict = mTopViewSettingsDict;
  mKeysDict = buttonsSettingsDict[keys::Keys].dictionaryOrEmpty();
  mAllKeymaps = buttonsSettingsDict[keys::Keymap].arrayOrEmpty();
  mActiveKeymap = buttonsSettingsDict[keys::KeymapID].toInt();
  const int shownKeymap = numberOf(buttonsSettingsDict, keys::KeymapID).value_or(-1);
  mUi->mKeymapSegment->selectSegment(shownKeymap);
  changeKeymapImage(shownKeymap);
  hideAllMacroConfigButtons();
  populateUISettings();
  for (ControlRow* row : mRows->all()) selectAssignment(*row);
  mRows->countChanges();
  describeKeymaps();
  mSearch->refresh();
  redrawSwapSheet();
  if (mIsTabEnabled) checkForLeftClickAssigned();
}

void MouseButtonController::selectAssignment(ControlRow& row) {
  const ControlDescriptor& control = row.control();
  const int command = commandAt(control.identifier, control.groupType());
  row.popUp()->selectItemWithTitle(stringForButtonValue(command, control.identifier, control.groupType()));
  row.popUp()->setShorterTexts(shorterLabels(control.identifier, control.groupType()));
  row.setChanged(!isDefaultAt(control.identifier, control.groupType()));
}

void MouseButtonController::enableControlsState(bool enabled) {
  const QString whyNot = localized("lkeyNoMouseConnected");
  mIsTabEnabled = enabled;
  setLabelsEnabled(*this, enabled, whyNot);
  mUi->mProfileListPopUp->setEnabled(enabled);
  mUi->mKeymapSegment->setEnabled(enabled);
  mUi->mKeymapMenuButton->setEnabled(enabled);
  mUi->mKeymapMenuButton->setToolTip(enabled ? mUi->mKeymapMenuButton->accessibleName() : whyNot);
  mUi->mControlSearch->setEnabled(enabled);
  mUi->mControlSearch->setToolTip(enabled ? searchTip() : whyNot);
  if (!enabled) mSearch->clear();
  if (!enabled) mUi->mButtonNotice->fallSilent();
  for (ControlRow* row : mRows->all()) {
    row->popUp()->setEnabled(enabled);
    row->popUp()->setLockReason(QString());
    row->repeatButton()->setEnabled(enabled);
    row->repeatButton()->setToolTip(enabled ? localized("lkeyMacroRepeat") : whyNot);
  }
  setMissingControls(mMissing);
}

void MouseButtonController::setMissingControls(const std::bitset<controlTable.size()>& missing) {
  mMissing = missing;
  // Without a mouse there is nothing that it lacks.
  mRows->showMissing(mIsTabEnabled ? mMissing : decltype(mMissing)());
}

void MouseButtonController::enableAllPopupButtons() {
  for (ControlRow* row : mRows->all()) {
    row->popUp()->setEnabled(true);
    row->popUp()->setLockReason(QString());
  }
}

void MouseButtonController::hideAllMacroConfigButtons() {
  for (ControlRow* row : mRows->all()) row->repeatButton()->hide();
}

void MouseButtonController::updateMacroRepeatButton(std::string_view button) {
  const int code = numberOfIdentifier(button);
  for (ControlRow* row : mRows->all()) {
    if (row->control().repeatCode == code) row->repeatButton()->show();
  }
}

void MouseButtonController::populateProfileListPopUpMenu() {
  QComboBox* list = mUi->mProfileListPopUp;
  const QString current = textOf(buttonsSettingsDict, keys::ProfileName);
  list->clear();
  int selected = 0;
  for (int index = static_cast<int>(allProfiles.size()); index-- > 0;) {
    const QString name = profileName(index);
    list->insertItem(0, name);
    if (name == current) selected = index;
  }
  list->setCurrentIndex(selected);
}

void MouseButtonController::checkForLeftClickAssigned() {
  const QString click = word("lkeyLeftClick");
  const QString label = mouseButtonLabel(static_cast<int>(AssignmentCommand::LeftClick));
  enableAllPopupButtons();
  PopUpButton* only = nullptr;
  int clicks = 0;
  for (std::size_t index = 0; index < leftClickCandidates; ++index) {
    const QString title = mRows->all()[index]->popUp()->titleOfSelectedItem();
    if (title != click && title != label) continue;
    only = mRows->all()[index]->popUp();
    ++clicks;
  }
  if (clicks != 1) return;
  only->setEnabled(false);
  only->setLockReason(localized("lkeyLastLeftClick"));
}

bool MouseButtonController::validateMenuItem(const QAction& item) {
  if (allProfiles.isEmpty()) allProfiles = deviceSettingsDict[vorn::requestKeys::AllProfiles].arrayOrEmpty();
  const PropertyList& active = allProfiles.at(deviceSettingsDict[keys::ActiveProfile].toInt());
  return !active.contains(keys::ProfileName) || titleOf(item) != textOf(active, keys::ProfileName);
}

// --- Choices

void MouseButtonController::chooseItem(const ControlDescriptor& control) {
  const QString title = mRows->of(control).popUp()->titleOfSelectedItem();
  const int command = intValueOfSelectedString(title, control.identifier, control.groupType());
  const bool isTicked = title == stringForButtonValue(commandAt(control.identifier, control.groupType()),
                                                      control.identifier, control.groupType());
  const bool writesAtOnce = command == static_cast<int>(AssignmentCommand::DefaultKey) ||
                            command == static_cast<int>(AssignmentCommand::Disable);
  if (command == 0 || (isTicked && writesAtOnce)) {
    // The lists have changed since the menu was built, or the control does that already.
    updateUISettings();
  } else {
    checkSelectedValue(command, control.identifier, control.groupIdentifier());
  }
}

void MouseButtonController::chooseSubmenuItem(const ControlDescriptor& control, AssignmentCategory submenu, int tag) {
  constexpr int profilesTab = 1;
  constexpr int macrosTab = 2;
  if (tag == tagOfAssignment(submenu, control.identifier, control.groupType())) return;
  const auto write = [&](AssignmentCommand command, int param1, int param2) {
    changeButton(control.identifier, static_cast<int>(command), param1, param2, control.groupIdentifier());
  };
  switch (submenu) {
    case AssignmentCategory::MouseButton:
      write(static_cast<AssignmentCommand>(mouseButtonMappingValueForTagValue(tag)), 0, 0);
      break;
    case AssignmentCategory::Keymap:
      write(AssignmentCommand::Keymap, tag == 0 ? vorn::nextKeymap : tag - 1, 0);
      break;
    case AssignmentCategory::Macro:
      if (tag == 0) {
        openTabAtIndex(macrosTab);
      } else {
        write(AssignmentCommand::Macro, tag - 1, playOnce);
      }
      break;
    case AssignmentCategory::Profile:
      if (tag == 0) {
        openTabAtIndex(profilesTab);
      } else {
        write(AssignmentCommand::Profile, tag - 1, 0);
      }
      break;
    default:
      break;
  }
}

void MouseButtonController::chooseOption(const ControlDescriptor& control, AssignmentCommand of, int option) {
  const PropertyList& record = recordAt(control.identifier, control.groupType());
  // Meanwhile another program may have given the control something else to do.
  if (vorn::commandOf(record) != of) return;
  changeButton(control.identifier, static_cast<int>(of), record[keys::Param1].toInt(), option,
               control.groupIdentifier());
}

void MouseButtonController::checkSelectedValue(int command, std::string_view forButton, int withIdentifier) {
  const SheetContext context = contextOf(forButton, withIdentifier, static_cast<AssignmentCommand>(command));
  switch (context.mapping) {
    case AssignmentCommand::SingleKey:
      openSingleKeySheet(context);
      break;
    case AssignmentCommand::LaunchProgram:
      openApplicationPanel(context);
      break;
    case AssignmentCommand::Keymap:
      openKeymapSheet(context);
      break;
    case AssignmentCommand::Disable:
      disableButton(forButton, withIdentifier);
      break;
    case AssignmentCommand::DefaultKey:
      resetToDefault(forButton, withIdentifier);
      break;
    default:
      changeButton(forButton, command, 0, 0, withIdentifier);
  }
}

void MouseButtonController::changeButton(std::string_view button, const Assignment& to, int identifier) {
  const PropertyList group = withAssignment(groupToChange(identifier), button, to);
  send(PropertyList::dictionary({{groupKeyOf(identifier), group}, {keys::KeymapID, mActiveKeymap}}));
}

void MouseButtonController::disableButton(std::string_view button, int identifier) {
  changeButton(button, disabledAssignment(groupKeyOf(identifier), button, defaultDict[keys::Profiles].at(0)),
               identifier);
}

void MouseButtonController::resetToDefault(std::string_view button, int identifier) {
  if (!isGroupIdentifier(identifier)) return;
  changeButton(button, defaultAssignment(groupKeyOf(identifier), button, defaultDict[keys::Profiles].at(0)),
               identifier);
}

void MouseButtonController::selectProfile(int index) {
  const bool isOther = index != deviceSettingsDict[keys::ActiveProfile].toInt();
  if (buttonDelegate == nullptr || !isOther || !allProfiles.at(index).isDictionary()) return;
  buttonDelegate->switchProfileWithID(index);
  // Without an answer the profile is the one that it was.
  populateProfileListPopUpMenu();
}

void MouseButtonController::openTabAtIndex(int index) {
  if (buttonDelegate != nullptr) buttonDelegate->selectTabAtIndex(index);
}

// --- Writing

const PropertyList& MouseButtonController::groupToChange(int identifier) const {
  return identifier == buttonsGroupIdentifier ? mTopViewSettingsDict : mKeysDict;
}

void MouseButtonController::send(const PropertyList& settings, std::optional<int> profileIndex) {
  if (buttonDelegate == nullptr) return;
  const unsigned redraws = mRedraws;
  if (profileIndex) {
    buttonDelegate->updateButtonAssignmentWithSettings(settings, *profileIndex);
  } else {
    buttonDelegate->updateButtonAssignmentWithSettings(settings);
  }
  // Without an answer the assignment is the one that it was.
  if (mRedraws == redraws) updateUISettings();
}

void MouseButtonController::changeButton(std::string_view button, int withCommand, int andParamOne, int andParamTwo,
                                         int withIdentifier) {
  changeButton(button, {withCommand, andParamOne, andParamTwo}, withIdentifier);
}

void MouseButtonController::changeButton(std::string_view button, int withCommand, int andParamOne, int andParamTwo,
                                         int withIdentifier, int toProfileIndex, const PropertyList& withSettings) {
  if (buttonDelegate == nullptr) return;
  const PropertyList group = withAssignment(withSettings, button, withCommand, andParamOne, andParamTwo);
  buttonDelegate->updateButtonAssignmentWithSettings(PropertyList::dictionary({{groupKeyOf(withIdentifier), group}}),
                                                     toProfileIndex);
}

void MouseButtonController::changeKeymapsKeymapCycleMappingForButton(std::string_view button, int inGroup) {
  if (!isGroupIdentifier(inGroup)) return;
  if (mAllKeymaps.isEmpty()) {
    changeButton(button, static_cast<int>(AssignmentCommand::Keymap), vorn::nextKeymap, 0, inGroup);
    return;
  }
  const std::string_view groupKey = groupKeyOf(inGroup);
  const PropertyList keymaps = keymapsWithCycle(mAllKeymaps, groupKey, button);
  const PropertyList& active = keymaps.at(mActiveKeymap)[groupKey][button];
  const PropertyList& group = groupToChange(inGroup);
  send(PropertyList::dictionary({{keys::Keymap, keymaps},
                                 {groupKey, active.isDictionary() ? group.with(button, active) : group},
                                 {keys::KeymapID, mActiveKeymap}}));
}

// --- Clean-up

void MouseButtonController::resetAssignments(AssignmentCommand mapping, int deletedIndex) {
  for (std::size_t profile = 0; profile < allProfiles.size(); ++profile) {
    for (const AssignmentReset& reset : assignmentResets) {
      // Read anew each time: every answer brings new profiles.
      const int index = static_cast<int>(profile);
      const PropertyList group = allProfiles.at(index)[reset.groupKey];
      const PropertyList& record = group[reset.identifier];
      if (vorn::commandOf(record) != mapping || record[keys::Param1].toInt() != deletedIndex) continue;
      changeButton(reset.identifier, static_cast<int>(reset.command), reset.param1, 0, reset.groupIdentifier, index,
                   group);
    }
  }
}

void MouseButtonController::removeButtonMacroAssignment(int deletedIndex) {
  resetAssignments(AssignmentCommand::Macro, deletedIndex);
}

void MouseButtonController::removeButtonProfileAssignment(int deletedIndex) {
  resetAssignments(AssignmentCommand::Profile, deletedIndex);
}

void MouseButtonController::removeMacroProfileMappings(int deletedIndex, int forMapping) {
  if (buttonDelegate == nullptr) return;
  std::size_t listSize = 0;
  if (forMapping == static_cast<int>(AssignmentCommand::Macro)) listSize = allMacros.size();
  if (forMapping == static_cast<int>(AssignmentCommand::Profile)) listSize = allProfiles.size();
  buttonDelegate->updateProfileKeyInDictionaryWithDictionary(remappedProfiles(
      allProfiles, defaultDict[keys::Profiles].at(0), forMapping, deletedIndex, static_cast<int>(listSize)));
}

}  // namespace skarn
