#include "buttons/MouseButtonController.h"

#include <QVBoxLayout>
#include <optional>

#include "buttons/AssignmentCleanUp.h"
#include "buttons/ControlRow.h"
#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "ui_MouseButtonController.h"
#include "widgets/LabelState.h"
#include "widgets/PopUpButton.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr int macroCommand = 10;
constexpr int profileCommand = 17;
constexpr int defaultCommand = 45;

}  // namespace

MouseButtonController::MouseButtonController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseButtonController>()) {
  mUi->setupUi(this);
  for (std::size_t index = 0; index < controlTable.size(); ++index) {
    QVBoxLayout* family = nullptr;
    switch (controlTable[index].family) {
      case ControlFamily::ThumbGrid:
        family = mUi->thumbGridRows;
        break;
      case ControlFamily::Wheel:
        family = mUi->wheelRows;
        break;
      case ControlFamily::DirectionPad:
        family = mUi->directionPadRows;
        break;
    }
    mRows[index] = new ControlRow(controlTable[index], this);
    family->addWidget(mRows[index]);
  }
}

MouseButtonController::~MouseButtonController() = default;

void MouseButtonController::populateUISettings() {
  for (ControlRow* row : mRows) row->popUp()->selectItemWithTitle(assignmentText(row->control()));
}

void MouseButtonController::updateUISettings() {
  mButtonsDict = buttonsSettingsDict[keys::Buttons].dictionaryOrEmpty();
  mKeysDict = buttonsSettingsDict[keys::Keys].dictionaryOrEmpty();
  mUi->mProfileListPopUp->clear();
  mUi->mProfileListPopUp->addItem(textOf(buttonsSettingsDict, keys::ProfileName));
  const int keymap = numberOf(buttonsSettingsDict, keys::KeymapID).value_or(-1);
  mUi->mKeymapSegment->selectSegment(keymap);
  changeKeymapImage(keymap);
  populateUISettings();
}

void MouseButtonController::enableControlsState(bool enabled) {
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
}

void MouseButtonController::changeKeymapImage(int keymap) {
  mUi->mMainSkarn->setKeymapPicture(keymap);
}

void MouseButtonController::removeMacroProfileMappings(int deletedIndex, int forMapping) {
  if (buttonDelegate == nullptr) return;
  std::size_t listSize = 0;
  if (forMapping == macroCommand) listSize = allMacros.size();
  if (forMapping == profileCommand) listSize = allProfiles.size();
  buttonDelegate->updateProfileKeyInDictionaryWithDictionary(remappedProfiles(
      allProfiles, defaultDict[keys::Profiles].at(0), forMapping, deletedIndex, static_cast<int>(listSize)));
}

QString MouseButtonController::assignmentText(const ControlDescriptor& control) const {
  const PropertyList& group = control.groupType == 1 ? mKeysDict : mButtonsDict;
  const PropertyList& record = group[control.identifier];
  if (!record[keys::Command].isNumber()) return {};
  const PropertyList& factory = defaultDict[keys::Profiles].at(0)[control.groupKey()][control.identifier];
  const bool isDefault = record[keys::Command].toInt() == defaultCommand || record == factory;
  return localized(isDefault ? "lkeyDefaultKey" : "lkeyAssigned");
}

}  // namespace skarn
