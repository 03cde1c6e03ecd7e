// The items that the gear menu and the right-click menu of the profiles table share. Main thread.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "widgets/PullDownButton.h"

namespace skarn {

// The values are the items' tags.
enum class ProfileItem {
  Rename = 1,
  New,
  Import,
  Export,
  Delete,
  Copy,
  AssignApplication,
  RemoveApplication,
  RestoreDefault,
};

// What both menus have below those, about the order of the list and about several profiles. The values are the items'
// tags, apart from those above.
enum class ProfileListItem {
  MoveUp = 101,
  MoveDown,
  Compare,
  ImportAll,
  ExportAll,
};

inline constexpr int firstListItem = static_cast<int>(ProfileListItem::MoveUp);

// In the order of their tags, titled in the language in use.
std::vector<TaggedItem> profileMenuItems();

// The items of both menus, in their order, and the lines between them.
void addProfileItems(QMenu& menu, const std::function<void(int tag)>& selectMenuItem,
                     const std::function<void(int tag)>& selectListItem);

}  // namespace skarn
