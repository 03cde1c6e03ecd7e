// The rows of the profiles table: a row is a profile ID. The model shows what it was given last and changes nothing by
// itself; what the user enters is told by edited, and appears with the next list. Main thread.
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include "model/PropertyList.h"

namespace skarn {

class ProfilesTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Id, Name, Application, AutoSwitch };
  // Of a cell: true in the active profile's row.
  static constexpr int IsActiveRole = Qt::UserRole;
  // Of a column's header: its identifier, one of those below.
  static constexpr int IdentifierRole = Qt::UserRole;
  static constexpr const char* idColumn = "id";
  static constexpr const char* nameColumn = "name";
  static constexpr const char* applicationColumn = "application";
  static constexpr const char* autoSwitchColumn = "auto switch";

  using QAbstractTableModel::QAbstractTableModel;

  // profiles: array of profile records; activeProfile: index into it, -1 for none. Rows come and go at the end, so that
  // selection and editing stay where they are by index.
  void setProfiles(const vorn::PropertyList& profiles, int activeProfile);

  static QString identifierOf(int column);
  // The row's number, counted from 1, the texts of name and application, 1 or 0 for auto switch; nothing for another
  // column.
  QVariant tableViewObjectValueForTableColumn(const QString& column, int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // A name in the role for editing, a state in the role for checks.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 signals:
  // value: the text of a name, 1 or 0 for a check.
  void edited(const QVariant& value, const QString& column, int row);

 private:
  QVariant valueAt(const QModelIndex& index) const;
  // For what application a profile comes into force by itself, or how to bring that about.
  QString switchingOf(int row) const;
  QIcon applicationIcon(int row) const;

  vorn::PropertyList mProfiles;
  int mActiveProfile = -1;
  // Finding an application's icon reads files: once for each identifier.
  mutable QHash<QString, QIcon> mIcons;
};

}  // namespace skarn
