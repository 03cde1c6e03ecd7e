#include "profiles/ProfileMenu.h"

#include <QAction>

#include "platform/Localization.h"

namespace skarn {

std::vector<TaggedItem> profileMenuItems() {
  static constexpr const char* titles[] = {"lkeyRename",
                                           "lkeyNew",
                                           "lkeyImport",
                                           "lkeyExport",
                                           "lkeyDelete",
                                           "lkeyCopy",
                                           "lkeyAssignApplication",
                                           "lkeyRemoveApplication",
                                           "lkeyRestoreDefault"};
  std::vector<TaggedItem> items;
  int tag = static_cast<int>(ProfileItem::Rename);
  for (const char* title : titles) items.push_back({tag++, localized(title)});
  return items;
}

void explainItem(QAction& item, const QString& reason) {
  item.setEnabled(reason.isEmpty());
  item.setToolTip(reason);
}

}  // namespace skarn
