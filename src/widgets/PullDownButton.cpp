#include "widgets/PullDownButton.h"

#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionToolButton>

#include "widgets/Hover.h"
#include "widgets/TitleText.h"

namespace skarn {

namespace {

constexpr const char* tagProperty = "tag";

// The submenu of this title, a new one at the end of the menu where there is none.
QMenu* submenuOf(QMenu& menu, const QString& title) {
  for (QAction* action : menu.actions()) {
    if (action->menu() != nullptr && titleOf(*action) == title) return action->menu();
  }
  return menu.addMenu(escapedTitle(title));
}

}  // namespace

void addTaggedItems(QMenu& menu, const std::vector<TaggedItem>& items, const QString& operation,
                    const std::function<void(int tag)>& chosen) {
  for (const TaggedItem& item : items) {
    if (item.beginsGroup) menu.addSeparator();
    QMenu& place = item.submenu.isEmpty() ? menu : *submenuOf(menu, item.submenu);
    QAction* action = place.addAction(escapedTitle(item.title));
    action->setCheckable(item.isCheckable);
    if (!item.shortcut.isEmpty()) {
      action->setShortcut(item.shortcut);
      // The table takes the key; here it is to be read.
      action->setShortcutContext(Qt::WidgetShortcut);
      action->setShortcutVisibleInContextMenu(true);
    }
    action->setObjectName(operation);
    action->setProperty(tagProperty, item.tag);
    QObject::connect(action, &QAction::triggered, &menu, [chosen, tag = item.tag] { chosen(tag); });
  }
}

QList<QAction*> taggedItems(const QMenu& menu) {
  QList<QAction*> items;
  for (QAction* action : menu.actions()) {
    if (action->menu() != nullptr) {
      items += taggedItems(*action->menu());
    } else if (action->property(tagProperty).isValid()) {
      items << action;
    }
  }
  return items;
}

QString titleOf(const QAction& item) {
  return unescapedTitle(item.text());
}

int tagOf(const QAction& item) {
  return item.property(tagProperty).toInt();
}

void explainItem(QAction& item, const QString& reason) {
  item.setEnabled(reason.isEmpty());
  item.setToolTip(reason);
}

PullDownButton::PullDownButton(QWidget* parent) : QToolButton(parent) {
  auto* menu = new QMenu(this);
  // A click beside the open menu closes it and does nothing else.
  menu->setAttribute(Qt::WA_NoMouseReplay);
  setMenu(menu);
  connect(this, &QToolButton::clicked, this, &PullDownButton::openMenu);
  connect(menu, &QMenu::aboutToShow, this, [this, menu] {
    if (!mIsEnabled) return;
    for (QAction* item : taggedItems(*menu)) item->setEnabled(mIsEnabled(*item));
  });
  connect(menu, &QMenu::aboutToHide, this, [this] { setDown(false); });
  endHoverWithMenu(*this, *menu);
}

void PullDownButton::openMenu() {
  setDown(true);
  menu()->popup(mapToGlobal(rect().bottomLeft() + QPoint(0, 1)));
}

// The button's own way of opening a menu runs an event loop of its own until the menu closes.
void PullDownButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) openMenu();
}

void PullDownButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
    case Qt::Key_F4:
      openMenu();
      break;
    default:
      QToolButton::keyPressEvent(event);
  }
}

void PullDownButton::initStyleOption(QStyleOptionToolButton* option) const {
  QToolButton::initStyleOption(option);
  option->features &= ~QStyleOptionToolButton::HasMenu;
}

void PullDownButton::setItems(const std::vector<TaggedItem>& items, const QString& operation,
                              const std::function<void(int tag)>& chosen) {
  menu()->clear();
  addTaggedItems(*menu(), items, operation, chosen);
}

void PullDownButton::setValidator(std::function<bool(const QAction& item)> isEnabled) {
  mIsEnabled = std::move(isEnabled);
}

}  // namespace skarn
