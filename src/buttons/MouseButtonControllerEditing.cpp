// What the Buttons tab does with whole assignments: where a change goes whatever is shown meanwhile, and the
// right-click menu of a control, which resets, copies, pastes and swaps.
#include <QMenu>
#include <vector>

#include "buttons/AssignmentChanges.h"
#include "buttons/ControlRow.h"
#include "buttons/ControlRows.h"
#include "buttons/MouseButtonController.h"
#include "platform/AssignmentWords.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "widgets/PopUpButton.h"
#include "widgets/PullDownButton.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

// The values are the items' tags.
enum class ControlItem { Reset = 1, Copy, Paste, Swap };

std::vector<TaggedItem> controlItems() {
  const auto item = [](ControlItem tag, const char* key) { return TaggedItem{static_cast<int>(tag), localized(key)}; };
  return {item(ControlItem::Reset, "lkeyReset"), item(ControlItem::Copy, "lkeyCopy"),
          item(ControlItem::Paste, "lkeyPaste"), item(ControlItem::Swap, "lkeySwapWith")};
}

}  // namespace

QWidget* MouseButtonController::sheetWindow() {
  return buttonWindow ? buttonWindow.data() : window();
}

QString MouseButtonController::controlName(const SheetContext& context) const {
  for (const ControlDescriptor& control : controlTable) {
    if (control.groupIdentifier() == context.identifier && control.identifier == context.button)
      return spokenName(control);
  }
  return {};
}

QString MouseButtonController::subjectOf(const SheetContext& context) const {
  const QString control = controlName(context);
  if (!context.profile) return control;
  const QString profile = shownName(QString::fromStdString(context.profile->name()));
  const QString keymap = namedKeymap(context.keymap, allProfiles.at(placeOf(context).value_or(-1)));
  if (control.isEmpty()) return localized("lkeyKeymapSubject").arg(profile, keymap);
  return localized("lkeySheetSubject").arg(control, profile, keymap);
}

// --- Where a sheet's assignment goes

MouseButtonController::SheetContext MouseButtonController::contextOf(std::string_view button, int identifier,
                                                                     AssignmentCommand mapping) const {
  SheetContext context{identifier, std::string(button), mapping, std::nullopt, mActiveKeymap};
  const int active = deviceSettingsDict[keys::ActiveProfile].toInt();
  if (allProfiles.at(active).isDictionary()) context.profile.emplace(allProfiles, active, keys::ProfileName);
  return context;
}

std::optional<int> MouseButtonController::placeOf(const SheetContext& context) const {
  if (!context.profile) return deviceSettingsDict[keys::ActiveProfile].toInt();
  const auto found = context.profile->placeIn(allProfiles);
  if (!found) return std::nullopt;
  const int place = static_cast<int>(*found);
  const bool isThere = isShown(context, place) || groupOf(context, place).isDictionary();
  return isThere ? std::optional(place) : std::nullopt;
}

bool MouseButtonController::isShown(const SheetContext& context, int place) const {
  return place == deviceSettingsDict[keys::ActiveProfile].toInt() && context.keymap == mActiveKeymap;
}

PropertyList MouseButtonController::groupsOf(const SheetContext& context, int place) const {
  if (isShown(context, place))
    return PropertyList::dictionary({{keys::Keys, mKeysDict}, {keys::Buttons, mTopViewSettingsDict}});
  const PropertyList& profile = allProfiles.at(place);
  const bool isInForce = profile[keys::KeymapID].toInt() == context.keymap;
  const PropertyList& holder = isInForce ? profile : profile[keys::Keymap].at(context.keymap);
  return PropertyList::dictionary({{keys::Keys, holder[keys::Keys]}, {keys::Buttons, holder[keys::Buttons]}});
}

PropertyList MouseButtonController::groupOf(const SheetContext& context, int place) const {
  return groupsOf(context, place)[groupKeyOf(context.identifier)];
}

void MouseButtonController::write(const SheetContext& context, int place, const PropertyList& groups) {
  const PropertyList& profile = allProfiles.at(place);
  if (isShown(context, place)) {
    send(groups.with(keys::KeymapID, mActiveKeymap));
  } else if (profile[keys::KeymapID].toInt() == context.keymap) {
    send(groups, place);
  } else {
    const PropertyList& keymaps = profile[keys::Keymap];
    const PropertyList changed = keymaps.replacing(context.keymap, keymaps.at(context.keymap).merging(groups));
    send(PropertyList::dictionary({{keys::Keymap, changed}}), place);
  }
}

void MouseButtonController::writeChange(const SheetContext& context, int place, const PropertyList& changed) {
  const PropertyList before = groupsOf(context, place);
  PropertyList groups = PropertyList::dictionary();
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    if (changed[group] != before[group]) groups = groups.with(group, changed[group]);
  }
  if (groups.isEmpty()) return;
  PropertyList keymaps = allProfiles.at(place)[keys::Keymap];
  const std::vector<const ControlDescriptor*> cycles = newCycles(before, changed);
  if (cycles.empty() || keymaps.isEmpty()) {
    write(context, place, groups);
    return;
  }
  keymaps = keymaps.replacing(context.keymap, keymaps.at(context.keymap).merging(groups));
  for (const ControlDescriptor* control : cycles)
    keymaps = keymapsWithCycle(keymaps, control->group, control->identifier);
  if (isShown(context, place)) {
    send(groups.with(keys::Keymap, keymaps).with(keys::KeymapID, mActiveKeymap));
  } else {
    send(PropertyList::dictionary({{keys::Keymap, keymaps}}), place);
  }
}

void MouseButtonController::assign(const SheetContext& context, int command, const PropertyList& param1,
                                   const PropertyList& param2) {
  const std::optional<int> place = placeOf(context);
  if (!place) {
    tellGone(*context.profile);
    return;
  }
  const PropertyList group = withAssignment(groupOf(context, *place), context.button, command, param1, param2);
  write(context, *place, PropertyList::dictionary({{groupKeyOf(context.identifier), group}}));
}

void MouseButtonController::assignCycle(const SheetContext& context) {
  const std::optional<int> place = placeOf(context);
  if (!place) {
    tellGone(*context.profile);
  } else if (isShown(context, *place)) {
    changeKeymapsKeymapCycleMappingForButton(context.button, context.identifier);
  } else {
    const PropertyList& keymaps = allProfiles.at(*place)[keys::Keymap];
    const PropertyList changed = keymapsWithCycle(keymaps, groupKeyOf(context.identifier), context.button);
    send(PropertyList::dictionary({{keys::Keymap, changed}}), place);
  }
}

// --- The right-click menu of a control

QString MouseButtonController::reasonFor(TransferProblem problem, const std::string& gone) {
  switch (problem) {
    case TransferProblem::None:
      return {};
    case TransferProblem::Diagonal:
      return localized("lkeyProblemDiagonal");
    case TransferProblem::NeverHeld:
      return localized("lkeyProblemNeverHeld");
    case TransferProblem::Gone:
      return localized("lkeyRecordGoneTitle").arg(shownName(QString::fromStdString(gone)));
    case TransferProblem::OwnProfile:
      return localized("lkeyProblemOwnProfile");
    case TransferProblem::Cycle:
      return localized("lkeyProblemCycle");
    case TransferProblem::LastLeftClick:
      return localized("lkeyLastLeftClick");
    case TransferProblem::NoChange:
      return localized("lkeyProblemNoChange");
  }
  return {};
}

Lists MouseButtonController::lists() const {
  return {allMacros, allProfiles, deviceSettingsDict[keys::ActiveProfile].toInt()};
}

QMenu& MouseButtonController::newContextMenu(const char* name) {
  if (mContextMenu) mContextMenu->close();
  mContextMenu = new QMenu(this);
  mContextMenu->setObjectName(QLatin1String(name));
  mContextMenu->setToolTipsVisible(true);
  connect(mContextMenu, &QMenu::aboutToHide, mContextMenu, &QObject::deleteLater);
  return *mContextMenu;
}

void MouseButtonController::showControlMenu(const ControlDescriptor& control, const QPoint& globalPosition) {
  QMenu& menu = newContextMenu("mControlMenu");
  menu.setAccessibleName(spokenName(control));
  addTaggedItems(menu, controlItems(), QStringLiteral("selectControlMenuItem"),
                 [this, &control](int tag) { selectControlMenuItem(control, tag); });
  for (QAction* item : menu.actions()) explainItem(*item, reasonAgainst(control, tagOf(*item)));
  menu.insertSeparator(menu.actions().at(1));
  mRows->highlight(&control);
  connect(&menu, &QMenu::aboutToHide, this, [this] { mRows->highlight(nullptr); });
  menu.popup(globalPosition);
}

QString MouseButtonController::reasonAgainst(const ControlDescriptor& control, int tag) {
  if (!mIsTabEnabled) return localized("lkeyNoMouseConnected");
  switch (static_cast<ControlItem>(tag)) {
    case ControlItem::Reset:
      if (isDefaultAt(control.identifier, control.groupType())) return localized("lkeyProblemDefault");
      return givesAwayLeftClick(control, AssignmentCommand::DefaultKey) ? localized("lkeyLastLeftClick") : QString();
    case ControlItem::Paste: {
      if (!mCopiedControl) return localized("lkeyNothingCopied");
      const Transfer paste = pasteOnto(control);
      return reasonFor(paste.problem, paste.gone);
    }
    default:
      return {};
  }
}

bool MouseButtonController::givesAwayLeftClick(const ControlDescriptor& control, AssignmentCommand command) const {
  const SheetContext context = contextOf(control.identifier, control.groupIdentifier(), command);
  const PropertyList before = groupsOf(context, deviceSettingsDict[keys::ActiveProfile].toInt());
  return skarn::givesAwayLeftClick(before, withAssignment(before, control, {static_cast<int>(command)}));
}

Transfer MouseButtonController::pasteOnto(const ControlDescriptor& control) const {
  const Transfer moved =
      transferred(mCopiedControl->record, *mCopiedControl->control, control, defaultDict[keys::Profiles].at(0));
  if (!moved.assignment) return moved;
  const Transfer now = retargeted(*moved.assignment, mCopiedControl->lists, lists());
  if (!now.assignment) return now;
  if (*now.assignment == assignmentOf(recordAt(control.identifier, control.groupType())))
    return {std::nullopt, TransferProblem::NoChange};
  const auto command = static_cast<AssignmentCommand>(now.assignment->command);
  if (givesAwayLeftClick(control, command)) return {std::nullopt, TransferProblem::LastLeftClick};
  return now;
}

void MouseButtonController::selectControlMenuItem(const ControlDescriptor& control, int tag) {
  // Meanwhile another program may have changed what the menu was opened for.
  if (!reasonAgainst(control, tag).isEmpty()) return;
  switch (static_cast<ControlItem>(tag)) {
    case ControlItem::Reset:
      resetToDefault(control.identifier, control.groupIdentifier());
      break;
    case ControlItem::Copy:
      mCopiedControl = CopiedControl{recordAt(control.identifier, control.groupType()), &control, lists()};
      break;
    case ControlItem::Paste:
      paste(control);
      break;
    case ControlItem::Swap:
      openSwapSheet(control);
      break;
  }
}

void MouseButtonController::paste(const ControlDescriptor& control) {
  const Transfer transfer = pasteOnto(control);
  if (!transfer.assignment) return;
  const Assignment& assignment = *transfer.assignment;
  const auto command = static_cast<AssignmentCommand>(assignment.command);
  const SheetContext context = contextOf(control.identifier, control.groupIdentifier(), command);
  if (command == AssignmentCommand::Keymap && assignment.param1.toInt() == vorn::nextKeymap) {
    assignCycle(context);
  } else {
    assign(context, assignment.command, assignment.param1, assignment.param2);
  }
}

// --- Swap sheet

void MouseButtonController::openSwapSheet(const ControlDescriptor& control) {
  if (!mSwapWindow) {
    mSwapWindow = new SwapSheet(sheetWindow());
    connect(mSwapWindow, &AssignmentSheet::okClicked, this, &MouseButtonController::clickSwapOK);
    connect(mSwapWindow, &AssignmentSheet::cancelClicked, mSwapWindow, &AssignmentSheet::end);
    connect(mSwapWindow, &SwapSheet::controlChosen, this, &MouseButtonController::updateSwapProblem);
  }
  mSwapControl = &control;
  mSwapContext = contextOf(control.identifier, control.groupIdentifier(), {});
  int first = 0;
  for (const ControlDescriptor& other : controlTable) {
    if (first == 0 && &other != &control && swapWith(other).problem == TransferProblem::None) first = other.number;
  }
  mSwapWindow->begin(subjectOf(mSwapContext), swapChoices(), first);
  updateSwapProblem();
}

QString MouseButtonController::wordsForSwap(const ControlDescriptor& control) const {
  const int place = *placeOf(mSwapContext);
  if (isShown(mSwapContext, place)) return mRows->of(control).popUp()->shownTitle();
  return assignmentWords(recordIn(groupsOf(mSwapContext, place), control), control,
                         PropertyList::dictionary({{keys::Macros, allMacros}, {keys::Profiles, allProfiles}}));
}

std::vector<SwapSheet::Choice> MouseButtonController::swapChoices() const {
  std::vector<SwapSheet::Choice> choices;
  for (const ControlDescriptor& other : controlTable) {
    if (&other == mSwapControl) continue;
    choices.push_back({other.number, spokenName(other) + QStringLiteral(" – ") + wordsForSwap(other)});
  }
  return choices;
}

void MouseButtonController::redrawSwapSheet() {
  if (!mSwapWindow || !mSwapWindow->isVisible() || !placeOf(mSwapContext)) return;
  mSwapWindow->describe(subjectOf(mSwapContext), swapChoices());
  updateSwapProblem();
}

GroupsChange MouseButtonController::swapWith(const ControlDescriptor& other) const {
  const std::optional<int> place = placeOf(mSwapContext);
  const PropertyList groups = place ? groupsOf(mSwapContext, *place) : PropertyList();
  return swapped(groups, *mSwapControl, other, defaultDict[keys::Profiles].at(0));
}

const ControlDescriptor& MouseButtonController::chosenForSwap() const {
  return controlTable[static_cast<std::size_t>(mSwapWindow->selectedNumber() - 1)];
}

void MouseButtonController::updateSwapProblem() {
  if (!mSwapWindow || !mSwapWindow->isVisible() || !placeOf(mSwapContext)) return;
  mSwapWindow->setProblem(reasonFor(swapWith(chosenForSwap()).problem));
}

void MouseButtonController::clickSwapOK() {
  if (!mSwapWindow || !mSwapWindow->isVisible()) return;
  const std::optional<int> place = placeOf(mSwapContext);
  const GroupsChange change = swapWith(chosenForSwap());
  if (place && change.problem != TransferProblem::None) {
    updateSwapProblem();
    return;
  }
  mSwapWindow->end();
  if (place) {
    writeChange(mSwapContext, *place, change.groups);
  } else {
    tellGone(*mSwapContext.profile);
  }
}

}  // namespace skarn
