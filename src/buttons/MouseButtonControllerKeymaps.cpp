// The keymaps of the Buttons tab: which one is shown, which are in use, what they are called, and the menu that names,
// copies, pastes and clears them.
#include <QMenu>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "buttons/KeymapNameSheet.h"
#include "buttons/MouseButtonController.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "ui_MouseButtonController.h"
#include "widgets/Notice.h"
#include "widgets/PullDownButton.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

// The values are the items' tags.
enum class KeymapItem { Name = 1, Copy, Paste, Clear };

constexpr const char* keyOfLeftOut = "lkeyLeftOut";
constexpr const char* keyOfKept = "lkeyLeftAsItIs";

std::vector<TaggedItem> keymapMenuItems() {
  std::vector<TaggedItem> items;
  for (const char* key : {"lkeyKeymapName", "lkeyKeymapCopy", "lkeyKeymapPaste", "lkeyKeymapClear"})
    items.push_back({static_cast<int>(items.size()) + 1, localized(key)});
  return items;
}

}  // namespace

// --- The keymap that is shown

void MouseButtonController::changeKeymapImage(int keymap) {
  mUi->mMainSkarn->setKeymapPicture(keymap);
}

void MouseButtonController::selectKeymapSegment(int segment) {
  if (segment == mActiveKeymap) return;
  const PropertyList& keymap = mAllKeymaps.at(segment);
  if (keymap[keys::Keys].isDictionary() && keymap[keys::Buttons].isDictionary()) {
    send(PropertyList::dictionary(
        {{keys::KeymapID, segment}, {keys::Keys, keymap[keys::Keys]}, {keys::Buttons, keymap[keys::Buttons]}}));
  } else {
    mUi->mKeymapSegment->selectSegment(mActiveKeymap);
  }
}

void MouseButtonController::describeKeymaps() {
  const QString words = localized("lkeyKeymapInUse");
  QStringList names;
  for (int keymap = 0; keymap < mUi->mKeymapSegment->segmentCount(); ++keymap) {
    names << namedKeymap(keymap);
    mUi->mKeymapSegment->setMark(keymap, isInUse(keymap) ? words : QString());
  }
  mUi->mKeymapSegment->setSegmentNames(names);
}

bool MouseButtonController::isInUse(int keymap) const {
  const PropertyList& groups = keymap == mActiveKeymap ? buttonsSettingsDict : mAllKeymaps.at(keymap);
  return std::ranges::any_of(controlTable, [&](const ControlDescriptor& control) {
    return !isDefault(groups[control.group][control.identifier], control.identifier, control.groupType());
  });
}

// --- The menu of a keymap

void MouseButtonController::addKeymapMenus() {
  PullDownButton* button = mUi->mKeymapMenuButton;
  button->menu()->setToolTipsVisible(true);
  connect(button->menu(), &QMenu::aboutToShow, this, [this, button] {
    button->menu()->clear();
    fillKeymapMenu(*button->menu(), mActiveKeymap);
  });
  connect(mUi->mKeymapSegment, &SegmentedControl::menuAsked, this, &MouseButtonController::showKeymapMenu);
  tintIcons();
}

void MouseButtonController::tintIcons() {
  mUi->mKeymapMenuButton->setIcon(tintedIcon(QStringLiteral("GearOn.png"), palette().color(QPalette::WindowText)));
}

void MouseButtonController::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) tintIcons();
}

void MouseButtonController::fillKeymapMenu(QMenu& menu, int keymap) {
  menu.setAccessibleName(namedKeymap(keymap));
  addTaggedItems(menu, keymapMenuItems(), QStringLiteral("selectKeymapMenuItem"),
                 [this, keymap](int tag) { selectKeymapMenuItem(keymap, tag); });
  for (QAction* item : menu.actions()) explainItem(*item, reasonAgainstKeymap(keymap, tagOf(*item)));
  menu.insertSeparator(menu.actions().at(1));
}

void MouseButtonController::showKeymapMenu(int keymap, const QPoint& globalPosition) {
  QMenu& menu = newContextMenu("mKeymapMenu");
  fillKeymapMenu(menu, keymap);
  menu.popup(globalPosition);
}

MouseButtonController::SheetContext MouseButtonController::contextOfKeymap(int keymap) const {
  SheetContext context = contextOf({}, buttonsGroupIdentifier, {});
  context.keymap = keymap;
  return context;
}

QString MouseButtonController::reasonAgainstKeymap(int keymap, int tag) const {
  if (!mIsTabEnabled) return localized("lkeyNoMouseConnected");
  if (!placeOf(contextOfKeymap(keymap))) return localized("lkeyNoSuchKeymap");
  switch (static_cast<KeymapItem>(tag)) {
    case KeymapItem::Paste:
      return mCopiedKeymap ? reasonAgainstPasteInto(keymap) : localized("lkeyNoKeymapCopied");
    case KeymapItem::Clear: {
      const bool hasNothingToClear = clearing(keymap).problem != TransferProblem::None;
      return hasNothingToClear ? localized("lkeyKeymapIsClear") : QString();
    }
    default:
      return {};
  }
}

PropertyList MouseButtonController::groupsOfKeymap(int keymap) const {
  return groupsOf(contextOfKeymap(keymap), deviceSettingsDict[keys::ActiveProfile].toInt());
}

GroupsChange MouseButtonController::pasteInto(int keymap) const {
  return pasted(groupsOfKeymap(keymap), mCopiedKeymap->groups, mCopiedKeymap->lists, lists(),
                defaultDict[keys::Profiles].at(0));
}

QString MouseButtonController::reasonAgainstPasteInto(int keymap) const {
  const GroupsChange change = pasteInto(keymap);
  const bool isAllLeftOut = change.problem == TransferProblem::NoChange && !change.leftOut.empty();
  return isAllLeftOut ? leftOutWords(keyOfLeftOut, change) : reasonFor(change.problem);
}

GroupsChange MouseButtonController::clearing(int keymap) const {
  return cleared(groupsOfKeymap(keymap), defaultDict[keys::Profiles].at(0));
}

void MouseButtonController::selectKeymapMenuItem(int keymap, int tag) {
  // Meanwhile another program may have changed what the menu was opened for.
  if (!reasonAgainstKeymap(keymap, tag).isEmpty()) return;
  const SheetContext context = contextOfKeymap(keymap);
  switch (static_cast<KeymapItem>(tag)) {
    case KeymapItem::Name:
      openKeymapNameSheet(context);
      break;
    case KeymapItem::Copy:
      mCopiedKeymap = CopiedKeymap{groupsOfKeymap(keymap), lists()};
      break;
    case KeymapItem::Paste:
      changeKeymap(keymap, pasteInto(keymap), keyOfLeftOut);
      break;
    case KeymapItem::Clear:
      changeKeymap(keymap, clearing(keymap), keyOfKept);
      break;
  }
}

void MouseButtonController::changeKeymap(int keymap, const GroupsChange& change, const char* leftOutKey) {
  const SheetContext context = contextOfKeymap(keymap);
  mUi->mButtonNotice->fallSilent();
  writeChange(context, *placeOf(context), change.groups);
  const QString words = leftOutWords(leftOutKey, change);
  if (!words.isEmpty()) mUi->mButtonNotice->say(words);
}

QString MouseButtonController::leftOutWords(const char* key, const GroupsChange& change) {
  std::vector<std::pair<QString, QStringList>> numbersByReason;
  for (const LeftOut& one : change.leftOut) {
    const QString reason =
        one.problem == TransferProblem::Cycle ? localized("lkeyLeftOutCycle") : reasonFor(one.problem, one.gone);
    auto found = std::ranges::find(numbersByReason, reason, &std::pair<QString, QStringList>::first);
    if (found == numbersByReason.end()) found = numbersByReason.insert(found, {reason, {}});
    found->second << QString::number(one.control->number);
  }
  QStringList parts;
  for (const auto& [reason, numbers] : numbersByReason) {
    const char* controls = numbers.size() == 1 ? "lkeyLeftOutControl" : "lkeyLeftOutControls";
    // In one step: a name of a macro may hold a place holder.
    parts << localized(controls).arg(numbers.join(QStringLiteral(", ")), reason);
  }
  return parts.isEmpty() ? QString() : localized(key).arg(parts.join(QStringLiteral("; ")));
}

// --- Names

void MouseButtonController::openKeymapNameSheet(const SheetContext& context) {
  if (!mKeymapNameWindow) {
    mKeymapNameWindow = new KeymapNameSheet(sheetWindow());
    connect(mKeymapNameWindow, &AssignmentSheet::okClicked, this, &MouseButtonController::clickKeymapNameOK);
    connect(mKeymapNameWindow, &AssignmentSheet::cancelClicked, mKeymapNameWindow, &AssignmentSheet::end);
  }
  mKeymapNameContext = context;
  const QString name = QString::fromStdString(buttonsSettingsDict[keys::KeymapNames].at(context.keymap).toString());
  mKeymapNameWindow->begin(subjectOf(context), name);
}

void MouseButtonController::clickKeymapNameOK() {
  if (!mKeymapNameWindow || !mKeymapNameWindow->isVisible()) return;
  mKeymapNameWindow->end();
  const std::optional<int> place = placeOf(mKeymapNameContext);
  if (!place) {
    tellGone(*mKeymapNameContext.profile);
    return;
  }
  const PropertyList& present = allProfiles.at(*place)[keys::KeymapNames];
  std::vector<PropertyList> names;
  for (std::size_t keymap = 0; keymap < keys::keymapCount; ++keymap)
    names.emplace_back(present.at(static_cast<std::int64_t>(keymap)).toString());
  names[static_cast<std::size_t>(mKeymapNameContext.keymap)] = mKeymapNameWindow->name().toStdString();
  send(PropertyList::dictionary({{keys::KeymapNames, PropertyList::array(std::move(names))}}), place);
}

}  // namespace skarn
