#include "buttons/AssignmentMenus.h"

#include <QAction>
#include <QMenu>
#include <QPalette>
#include <algorithm>
#include <vector>

#include "buttons/RepeatModes.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "widgets/PopUpButton.h"
#include "widgets/PullDownButton.h"

namespace skarn {

namespace {

std::vector<TaggedItem> mouseButtonItems(const AssignmentText&) {
  std::vector<TaggedItem> items;
  for (const char* key : mouseButtonNameKeys) items.push_back({static_cast<int>(items.size()), localized(key)});
  return items;
}

std::vector<TaggedItem> keymapItems(const AssignmentText& text) {
  std::vector<TaggedItem> items{{0, localized(keymapCycleNameKey)}};
  for (int keymap = 0; keymap < static_cast<int>(keymapNameKeys.size()); ++keymap)
    items.push_back({keymap + 1, text.namedKeymap(keymap)});
  return items;
}

std::vector<TaggedItem> macroItems(const AssignmentText& text) {
  std::vector<TaggedItem> items;
  for (int index = 0; index < static_cast<int>(text.mAllMacros().size()); ++index)
    items.push_back({index + 1, text.macroName(index)});
  return items;
}

std::vector<TaggedItem> profileItems(const AssignmentText& text) {
  std::vector<TaggedItem> items;
  for (int index = 0; index < static_cast<int>(text.mAllProfiles().size()); ++index)
    items.push_back({index + 1, text.profileName(index)});
  return items;
}

struct SubmenuDescriptor {
  AssignmentCategory category;
  const char* operation;   // behind the control's stem
  const char* objectName;  // behind the control's name
  const char* manageKey;   // of the item with the tag 0 that stands apart; nullptr for none
  const char* sheetKey;    // of the last item, which does what the category itself does; nullptr for none
  const char* ControlDescriptor::*stem;
  std::vector<TaggedItem> (*items)(const AssignmentText&);
};

constexpr SubmenuDescriptor submenus[] = {
    {AssignmentCategory::MouseButton, "MouseButtonMenuSelector", "MouseButtonMenu", nullptr, nullptr,
     &ControlDescriptor::submenuStem, mouseButtonItems},
    {AssignmentCategory::Keymap, "KeymapMenuSelector", "KeymapMenu", nullptr, "lkeyKeymapSheet",
     &ControlDescriptor::submenuStem, keymapItems},
    {AssignmentCategory::Macro, "MacroMenuSelector", "MacroMenu", "lkeyManageMacro", nullptr,
     &ControlDescriptor::submenuStem, macroItems},
    {AssignmentCategory::Profile, "ProfileMenuSelector", "ProfileMenu", "lkeyManageProfile", nullptr,
     &ControlDescriptor::profileActionStem, profileItems},
};

// What a submenu belongs to.
struct Place {
  const SubmenuDescriptor& submenu;
  const ControlDescriptor& control;
  QAction* category;
};

void tick(const QList<QAction*>& items, int tag) {
  for (QAction* item : items) {
    item->setCheckable(true);
    item->setChecked(tagOf(*item) == tag);
  }
}

// A mode that is none plays once.
int shownMode(const std::vector<RepeatMode>& modes, int mode) {
  return std::ranges::any_of(modes, [mode](const RepeatMode& one) { return one.value == mode; }) ? mode : playOnce;
}

void addRepeatModes(QMenu& menu, const Place& place, const AssignmentText& text, const AssignmentHandlers& handlers) {
  menu.addSeparator();
  QMenu* submenu = menu.addMenu(localized("lkeyMacroRepeat"));
  submenu->setObjectName(QLatin1String(place.control.repeatButton) + QStringLiteral("Menu"));
  submenu->setAccessibleName(localized("lkeyControlRepeat").arg(place.control.number));
  const std::vector<RepeatMode> modes = repeatModes(vorn::isWheelTurn(place.control.identifier));
  std::vector<TaggedItem> items;
  for (const RepeatMode& mode : modes) items.push_back({mode.value, localized(mode.nameKey)});
  const int present = shownMode(modes, text.optionOfAssignment(place.control.identifier, place.control.groupType()));
  addTaggedItems(*submenu, items, QLatin1String(place.control.repeatButton),
                 [chosen = handlers.repeatChosen, present](int mode) {
                   if (mode != present) chosen(mode);
                 });
  tick(submenu->actions(), present);
}

void addSwitchBack(QMenu& menu, const Place& place, const AssignmentText& text, bool isCycle,
                   const AssignmentHandlers& handlers) {
  const bool isWheelTurn = vorn::isWheelTurn(place.control.identifier);
  const bool isOn = !isCycle && text.optionOfAssignment(place.control.identifier, place.control.groupType()) != 0;
  addTaggedItems(menu, {{switchBackTag, localized("lkeySwitchBackItem")}}, QLatin1String(place.control.actionName),
                 [chosen = handlers.switchBackChosen, isOn](int) { chosen(!isOn); });
  QAction* item = menu.actions().constLast();
  item->setCheckable(true);
  item->setChecked(isOn);
  if (isCycle || isWheelTurn)
    explainItem(*item, localized(isCycle ? "lkeyNoSwitchBackCycle" : "lkeyNoSwitchBackWheel"));
  menu.setToolTipsVisible(!item->isEnabled());
}

void fillSubmenu(QMenu& menu, const Place& place, const AssignmentText& text, const AssignmentHandlers& handlers) {
  const SubmenuDescriptor& submenu = place.submenu;
  const QString operation = QLatin1String(place.control.*submenu.stem) + QLatin1String(submenu.operation);
  const auto choose = [chosen = handlers.chosen, category = submenu.category](int tag) { chosen(category, tag); };
  if (submenu.manageKey != nullptr) {
    addTaggedItems(menu, {{0, localized(submenu.manageKey)}}, operation, choose);
    menu.addSeparator();
  }
  const qsizetype first = menu.actions().size();
  addTaggedItems(menu, submenu.items(text), operation, choose);
  const int present = text.tagOfAssignment(submenu.category, place.control.identifier, place.control.groupType());
  tick(menu.actions().mid(first), present);
  const bool isPresent = present >= 0;
  if (isPresent && submenu.category == AssignmentCategory::Macro) addRepeatModes(menu, place, text, handlers);
  if (submenu.sheetKey == nullptr) return;
  menu.addSeparator();
  if (isPresent) addSwitchBack(menu, place, text, present == 0, handlers);
  addTaggedItems(menu, {{categoryTag, localized(isPresent ? "lkeyKeymapSheetBoth" : submenu.sheetKey)}},
                 QLatin1String(place.control.actionName), [item = place.category](int) { item->trigger(); });
}

void attachSubmenu(PopUpButton& popUp, const Place& place, const AssignmentText& text,
                   const AssignmentHandlers& handlers) {
  const QString objectName = QLatin1String(place.control.fieldName) + QLatin1String(place.submenu.objectName);
  const auto fill = [place, &text, &popUp, handlers](QMenu& menu) {
    menu.setAccessibleName(popUp.accessibleName() + QStringLiteral(": ") + titleOf(*place.category));
    fillSubmenu(menu, place, text, handlers);
  };
  popUp.setSubmenu(place.category, objectName, fill);
}

QStringList titlesOf(const PopUpButton& popUp) {
  QStringList titles;
  for (int index = 0; index < popUp.numberOfItems(); ++index) titles << popUp.itemTitle(index);
  return titles;
}

void addItems(PopUpButton& popUp, const QStringList& titles, const ControlDescriptor& control,
              const AssignmentText& text, const AssignmentHandlers& handlers) {
  popUp.removeAllItems();
  for (const QString& title : titles) popUp.addItem(title)->setObjectName(QLatin1String(control.actionName));
  const int pictureItems = control.directionPicture != nullptr ? 1 : 0;
  for (const SubmenuDescriptor& submenu : submenus) {
    QAction* item = popUp.itemAt(pictureItems + static_cast<int>(submenu.category));
    attachSubmenu(popUp, {submenu, control, item}, text, handlers);
  }
}

}  // namespace

void buildAssignmentMenu(PopUpButton& popUp, const ControlDescriptor& control, AssignmentText& text,
                         const AssignmentHandlers& handlers, bool isForSomethingElse) {
  QStringList titles;
  if (control.directionPicture != nullptr) titles << QLatin1String(plainDefaultTitle);
  for (const AssignmentCategory category : assignmentCategories) {
    titles << text.titleOfCategory(category, control.identifier, control.groupType());
  }
  // Most redraws change no title, and 27 menus are made of more than 200 items.
  if (titlesOf(popUp) != titles || (isForSomethingElse && popUp.menu()->isVisible())) {
    addItems(popUp, titles, control, text, handlers);
  } else {
    popUp.selectItem(-1);
  }
  if (control.directionPicture != nullptr) {
    popUp.itemAt(0)->setIcon(
        tintedIcon(QLatin1String(control.directionPicture), popUp.palette().color(QPalette::Active, QPalette::Text)));
  }
}

}  // namespace skarn
