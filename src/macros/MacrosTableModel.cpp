#include "macros/MacrosTableModel.h"

#include <algorithm>
#include <array>

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
  beginResetModel();
  mMacros = macros.arrayOrEmpty();
  endResetModel();
}

int MacrosTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mMacros.size());
}

int MacrosTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headerKeys.size());
}

QVariant MacrosTableModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::DisplayRole) {
    const vorn::PropertyList& macro = mMacros.at(index.row());
    if (index.column() == Name) return textOf(macro, keys::MacroName);
    if (!macro.isDictionary()) return {};
    return eventCount(macro[keys::Sequence]);
  }
  if (role == Qt::TextAlignmentRole && index.column() == Events) {
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  }
  return {};
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
