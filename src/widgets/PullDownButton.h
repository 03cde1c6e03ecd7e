// Menus whose items are told apart by a tag: the gear menu of a table and the right-click menu that repeats it.
// Main thread.
#pragma once

#include <QKeySequence>
#include <QMenu>
#include <QString>
#include <QToolButton>
#include <functional>
#include <vector>

namespace skarn {

struct TaggedItem {
  int tag;
  QString title;
  // Shown beside the title, for keys that the table of the menu takes itself.
  QKeySequence shortcut{};
  // The title of the submenu that the item stands in; none for the menu itself.
  QString submenu{};
  bool beginsGroup = false;  // under a line
  bool isCheckable = false;
};

// Adds an action per item: its object name is the operation that it calls, its tag stands in the dynamic property
// "tag", its title is shown as it stands ("&" is no mnemonic; titleOf gives it back unescaped). chosen gets the tag.
void addTaggedItems(QMenu& menu, const std::vector<TaggedItem>& items, const QString& operation,
                    const std::function<void(int tag)>& chosen);
// The items of a menu and of its submenus, in their order.
QList<QAction*> taggedItems(const QMenu& menu);
QString titleOf(const QAction& item);
int tagOf(const QAction& item);
// Enables the item, or disables it with the reason as its tooltip when there is one.
void explainItem(QAction& item, const QString& reason);

// A button that pulls down a menu: on a press, Space, Return, Down or F4. Its icon says so; there is no arrow.
class PullDownButton : public QToolButton {
  Q_OBJECT

 public:
  explicit PullDownButton(QWidget* parent = nullptr);

  // Replaces the items.
  void setItems(const std::vector<TaggedItem>& items, const QString& operation,
                const std::function<void(int tag)>& chosen);
  // Asked for every item whenever the menu is about to be shown: is it enabled?
  void setValidator(std::function<bool(const QAction& item)> isEnabled);
  // Returns at once.
  void openMenu();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void initStyleOption(QStyleOptionToolButton* option) const override;

 private:
  std::function<bool(const QAction& item)> mIsEnabled;
};

}  // namespace skarn
