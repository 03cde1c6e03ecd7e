#include "profiles/ProfilesTableModel.h"

#include <array>

#include "model/SettingsKeys.h"
#include "platform/ApplicationInfo.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"

namespace skarn {

namespace keys = vorn::keys;

namespace {

struct ColumnTexts {
  const char* identifier;
  const char* title;
};

constexpr std::array<ColumnTexts, 4> columns = {{
    {ProfilesTableModel::idColumn, "lkeyProfileNumberColumn"},
    {ProfilesTableModel::nameColumn, "lkeyProfileNameColumn"},
    {ProfilesTableModel::applicationColumn, "lkeyProfileApplicationColumn"},
    {ProfilesTableModel::autoSwitchColumn, "lkeyProfileAutoSwitchColumn"},
}};

}  // namespace

QString ProfilesTableModel::identifierOf(int column) {
  return QLatin1String(columns[static_cast<std::size_t>(column)].identifier);
}

void ProfilesTableModel::setProfiles(const vorn::PropertyList& profiles, int activeProfile) {
  const vorn::PropertyList next = profiles.arrayOrEmpty();
  const int before = rowCount();
  const int after = static_cast<int>(next.size());
  if (after < before) {
    beginRemoveRows({}, after, before - 1);
  } else if (after > before) {
    beginInsertRows({}, before, after - 1);
  }
  mProfiles = next;
  mActiveProfile = activeProfile;
  if (after < before) {
    endRemoveRows();
  } else if (after > before) {
    endInsertRows();
  }
  if (after > 0) emit dataChanged(index(0, 0), index(after - 1, columnCount() - 1));
}

int ProfilesTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mProfiles.size());
}

int ProfilesTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant ProfilesTableModel::tableViewObjectValueForTableColumn(const QString& column, int row) const {
  const vorn::PropertyList& profile = mProfiles.at(row);
  if (column == QLatin1String(idColumn)) return row + 1;
  if (column == QLatin1String(nameColumn)) return textOf(profile, keys::ProfileName);
  if (column == QLatin1String(applicationColumn)) return textOf(profile[keys::AppInfo], keys::Application);
  if (column == QLatin1String(autoSwitchColumn)) return numberOf(profile, keys::AutoSwitchOn).value_or(0) != 0 ? 1 : 0;
  return {};
}

QVariant ProfilesTableModel::valueAt(const QModelIndex& index) const {
  return tableViewObjectValueForTableColumn(identifierOf(index.column()), index.row());
}

QString ProfilesTableModel::switchingOf(int row) const {
  const QString application = tableViewObjectValueForTableColumn(QLatin1String(applicationColumn), row).toString();
  if (application.isEmpty()) return localized("lkeySwitchesForNone");
  const bool isOn = tableViewObjectValueForTableColumn(QLatin1String(autoSwitchColumn), row).toBool();
  return localized(isOn ? "lkeySwitchesFor" : "lkeySwitchesNotFor").arg(shownName(application));
}

QIcon ProfilesTableModel::applicationIcon(int row) const {
  const QString identifier = textOf(mProfiles.at(row)[keys::AppInfo], keys::Identifier);
  if (identifier.isEmpty()) return {};
  const auto known = mIcons.constFind(identifier);
  if (known != mIcons.constEnd()) return *known;
  return *mIcons.insert(identifier, ApplicationInfo::iconForIdentifier(identifier));
}

QVariant ProfilesTableModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const bool isActive = index.row() == mActiveProfile;
  const bool isBox = index.column() == AutoSwitch;
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return isBox ? QVariant() : valueAt(index);
    case Qt::DecorationRole:
      // Without an icon, an application's name still begins where the others do.
      if (index.column() != Application || valueAt(index).toString().isEmpty()) return {};
      return applicationIcon(index.row());
    case Qt::CheckStateRole:
      if (!isBox) return {};
      return static_cast<int>(valueAt(index).toBool() ? Qt::Checked : Qt::Unchecked);
    case Qt::AccessibleTextRole:
      return isBox ? localized(valueAt(index).toBool() ? "lkeyOn" : "lkeyOff") : QVariant();
    case Qt::ToolTipRole:
      return isBox ? switchingOf(index.row()) : QVariant();
    case Qt::AccessibleDescriptionRole:
      if (isBox) return switchingOf(index.row());
      return isActive && index.column() == Id ? localized("lkeyActiveProfile") : QVariant();
    case IsActiveRole:
      return isActive;
    default:
      return {};
  }
}

QVariant ProfilesTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return localized(columns[static_cast<std::size_t>(section)].title);
    case Qt::TextAlignmentRole:
      return static_cast<int>(section == AutoSwitch ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    case IdentifierRole:
      return identifierOf(section);
    default:
      return {};
  }
}

Qt::ItemFlags ProfilesTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  switch (index.column()) {
    case Name:
      return flags | Qt::ItemIsEditable;
    case AutoSwitch:
      return flags | Qt::ItemIsUserCheckable;
    default:
      return flags;
  }
}

bool ProfilesTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const bool isName = index.column() == Name && role == Qt::EditRole;
  const bool isCheck = index.column() == AutoSwitch && role == Qt::CheckStateRole;
  if (!index.isValid() || (!isName && !isCheck)) return false;
  const QString column = identifierOf(index.column());
  if (isName) {
    emit edited(value.toString(), column, index.row());
  } else {
    emit edited(value.toInt() == Qt::Unchecked ? 0 : 1, column, index.row());
  }
  return true;
}

}  // namespace skarn
