#include "profiles/ProfileMenu.h"

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

void addProfileItems(QMenu& menu, const std::function<void(int tag)>& selectMenuItem,
                     const std::function<void(int tag)>& selectListItem) {
  const auto addGroup = [&](const std::vector<TaggedItem>& items) {
    menu.addSeparator();
    addTaggedItems(menu, items, QStringLiteral("selectListItem"), selectListItem);
  };
  addTaggedItems(menu, profileMenuItems(), QStringLiteral("selectMenuItem"), selectMenuItem);
  addGroup(
      {{static_cast<int>(ProfileListItem::MoveUp), localized("lkeyMoveUp"), QKeySequence(Qt::ALT | Qt::Key_Up)},
       {static_cast<int>(ProfileListItem::MoveDown), localized("lkeyMoveDown"), QKeySequence(Qt::ALT | Qt::Key_Down)}});
  addGroup({{static_cast<int>(ProfileListItem::Compare), localized("lkeyCompareProfile")}});
  addGroup({{static_cast<int>(ProfileListItem::ImportAll), localized("lkeyImportAll")},
            {static_cast<int>(ProfileListItem::ExportAll), localized("lkeyExportAll")}});
}

}  // namespace skarn
