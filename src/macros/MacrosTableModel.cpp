#include "macros/MacrosTableModel.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"

namespace skarn {

namespace keys = vorn::keys;

namespace {

constexpr std::array<const char*, 2> headerKeys = {"lkeyMacroNameColumn", "lkeyMacroEventsColumn"};

int eventCount(const vorn::PropertyList& sequence) {
  const auto events = sequence[keys::Events].elements();
  return static_cast<int>(std::ranges::count_if(events, &vorn::PropertyList::isDictionary));
}

}  // namespace

void MacrosTableModel::setMacros(const vorn::PropertyList& macros) {
  const vorn::PropertyList next = macros.arrayOrEmpty();
  if (!(next == mMacros)) mEventCounts.clear();
  const int before = rowCount();
  const int after = static_cast<int>(next.size());
  const int kept = std::min(before, after);
  // Rows come and go while those before them are as they were.
  std::vector<vorn::PropertyList> rows(mMacros.elements().begin(), mMacros.elements().begin() + kept);
  rows.insert(rows.end(), next.elements().begin() + kept, next.elements().end());
  if (after > before) {
    beginInsertRows({}, before, after - 1);
    mMacros = vorn::PropertyList::array(std::move(rows));
    endInsertRows();
  } else if (after < before) {
    beginRemoveRows({}, after, before - 1);
    mMacros = vorn::PropertyList::array(std::move(rows));
    endRemoveRows();
  }
  mMacros = next;
  if (kept > 0) emit dataChanged(index(0, 0), index(kept - 1, Events));
}

void MacrosTableModel::setEventCount(int macro, int events) {
  if (macro < 0 || macro >= rowCount()) return;
  mEventCounts[macro] = events;
  emit dataChanged(index(macro, Events), index(macro, Events));
}

int MacrosTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mMacros.size());
}

int MacrosTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headerKeys.size());
}

QVariant MacrosTableModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::DisplayRole || role == Qt::EditRole) {
    const vorn::PropertyList& macro = mMacros.at(index.row());
    if (index.column() == Name) return textOf(macro, keys::MacroName);
    if (!macro.isDictionary()) return {};
    if (const auto told = mEventCounts.find(index.row()); told != mEventCounts.end()) return told->second;
    return eventCount(macro[keys::Sequence]);
  }
  if (role == Qt::TextAlignmentRole && index.column() == Events) {
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  }
  return {};
}

Qt::ItemFlags MacrosTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.isValid() && index.column() == Name ? flags | Qt::ItemIsEditable : flags;
}

bool MacrosTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || index.column() != Name) return false;
  emit nameEdited(index.row(), value.toString());
  return true;
}

QVariant MacrosTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return localized(headerKeys[static_cast<std::size_t>(section)]);
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>((section == Events ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

}  // namespace skarn
