// The items that the gear menu and the right-click menu of the profiles table share. Main thread.
#pragma once

#include <QString>
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

// In the order of their tags, titled in the language in use.
std::vector<TaggedItem> profileMenuItems();

// Enables the item, or disables it with the reason as its tooltip when there is one.
void explainItem(QAction& item, const QString& reason);

}  // namespace skarn
