// A button with a menu that shows the title of the menu's selected item. Drawn as the pop-up lists are; unlike them its
// items can have submenus. Main thread.
//
// Titles are shown as they stand ("&" is no mnemonic; titleOf gives them back). The closed button may be given fewer
// words to draw; a text that is too long for it is cut in its middle. The tooltip and screen readers say the whole
// title. One that is too long for the menu is cut there too.
//
// The menu (menu()) takes over the items, and submenus come into being, when it is about to be shown; so items are
// cheap to replace. Typing finds an item of the open menu by the beginning of its title. Everything may be called from
// a handler of an item that the user has just chosen, and while the menu is open, which then closes.
#pragma once

#include <QStringList>
#include <QToolButton>
#include <functional>
#include <vector>

#include "widgets/PullDownButton.h"

class QAction;
class QMenu;

namespace skarn {

class PopUpButton : public QToolButton {
  Q_OBJECT

 public:
  explicit PopUpButton(QWidget* parent = nullptr);
  ~PopUpButton() override;

  // No item, nothing selected, an empty title.
  void removeAllItems();
  // Appended. The item belongs to the button and lives until removeAllItems.
  QAction* addItem(const QString& title);
  // Makes an item a category: fill is called with the empty submenu whenever that is about to be shown. Whatever a
  // person does with the item (pointing at it, a click, Right, Return or Space) opens the submenu; the item itself is
  // chosen by code alone (QAction::trigger). fill changes nothing but the submenu.
  void setSubmenu(QAction* item, const QString& objectName, std::function<void(QMenu&)> fill);

  int numberOfItems() const { return static_cast<int>(mItems.size()); }
  // Empty and nullptr for an index out of range.
  QString itemTitle(int index) const;
  QAction* itemAt(int index) const;

  int indexOfSelectedItem() const { return mSelected; }  // -1 for none
  QString titleOfSelectedItem() const { return itemTitle(mSelected); }
  // Selects without a signal; an index out of range selects none and shows nothing.
  void selectItem(int index);
  // Selects, without a signal, the first item with exactly this title. When there is none, nothing is selected, the
  // button shows the title as plain text, and false is returned.
  bool selectItemWithTitle(const QString& title);
  // What the closed button shows.
  const QString& shownTitle() const { return mShownTitle; }

  // How the closed button draws its title, until it shows another one: the first of these texts that fits in the place
  // of the title, none for the title itself; and muted, as what nobody has chosen.
  void setShorterTexts(const QStringList& texts);
  void setMuted(bool muted);
  bool isMuted() const { return mIsMuted; }
  // The text before it is cut.
  QString drawnText() const;
  // Why the button is disabled: shown by a lock in the place of the chevron, and said by the tooltip and to screen
  // readers. Empty for no lock. Enabling stays with the caller.
  void setLockReason(const QString& reason);
  const QString& lockReason() const { return mLockReason; }
  // What else is to be known, after the title in the tooltip and for screen readers. Empty for nothing.
  void setNote(const QString& note);
  const QString& note() const { return mNote; }

  // Asked for every item of the menu and of its submenus when they are about to be shown; one that it refuses is hidden
  // and disabled.
  void setValidator(std::function<bool(const QAction&)> validator);

  // As a click does. Nothing happens without items, or while the button is disabled.
  void openMenu();

  // The width at which the closed button shows this title, without an icon, uncut.
  int widthOf(const QString& title) const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  // By the user: the item has become the selected one.
  void itemChosen(int index);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class ItemMenu;
  struct Item {
    QAction* action;
    QString submenuName;
    std::function<void(QMenu&)> fill;  // empty without a submenu
  };

  void prepareMenu();
  void fillSubmenu(QAction* item, QMenu& submenu);
  void validateItems(const QMenu& menu) const;
  void choose(const QAction* item);
  int indexOf(const QAction* item) const;
  void showTitle(const QString& title);
  void describe();
  // The place of the text; the icon, if any, stands before it.
  QRect textRect() const;
  QPoint placeOfMenu() const;

  ItemMenu* mMenu;
  std::vector<Item> mItems;
  int mSelected = -1;
  QString mShownTitle;
  QString mNote;
  QStringList mShorterTexts;
  bool mIsMuted = false;
  QString mLockReason;
  std::function<bool(const QAction&)> mValidator;
};

}  // namespace skarn
