#include "profiles/ProfilesTableModel.h"

#include <array>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"

namespace skarn {

namespace keys = vorn::keys;

namespace {

constexpr std::array<const char*, 4> headerKeys = {"lkeyProfileNumberColumn", "lkeyProfileNameColumn",
                                                   "lkeyProfileApplicationColumn", "lkeyProfileAutoSwitchColumn"};

}  // namespace

void ProfilesTableModel::setProfiles(const vorn::PropertyList& profiles, int activeProfile) {
  beginResetModel();
  mProfiles = profiles.arrayOrEmpty();
  mActiveProfile = activeProfile;
  endResetModel();
}

int ProfilesTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mProfiles.size());
}

int ProfilesTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headerKeys.size());
}

QVariant ProfilesTableModel::data(const QModelIndex& index, int role) const {
  const vorn::PropertyList& profile = mProfiles.at(index.row());
  if (role == IsActiveRole) return index.row() == mActiveProfile;
  if (role == Qt::DisplayRole) {
    switch (index.column()) {
      case Id:
        return index.row() + 1;
      case Name:
        return textOf(profile, keys::ProfileName);
      case Application:
        return textOf(profile[keys::AppInfo], keys::Application);
      default:
        return {};
    }
  }
  if (index.column() == AutoSwitch) {
    const bool isOn = numberOf(profile, keys::AutoSwitchOn).value_or(0) != 0;
    if (role == Qt::CheckStateRole) return static_cast<int>(isOn ? Qt::Checked : Qt::Unchecked);
    if (role == Qt::AccessibleTextRole) return localized(isOn ? "lkeyOn" : "lkeyOff");
  }
  if (index.column() == Id && role == Qt::AccessibleDescriptionRole && index.row() == mActiveProfile) {
    return localized("lkeyActiveProfile");
  }
  return {};
}

QVariant ProfilesTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return localized(headerKeys[static_cast<std::size_t>(section)]);
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>(section == AutoSwitch ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
  }
  return {};
}

}  // namespace skarn
