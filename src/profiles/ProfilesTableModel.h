// The rows of the profiles table: a row is a profile ID.
#pragma once

#include <QAbstractTableModel>

#include "model/PropertyList.h"

namespace skarn {

class ProfilesTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Id, Name, Application, AutoSwitch };
  // True for the active profile's row.
  static constexpr int IsActiveRole = Qt::UserRole;

  using QAbstractTableModel::QAbstractTableModel;

  // profiles: array of profile records; activeProfile: index into it, -1 for none. Resets the model.
  void setProfiles(const vorn::PropertyList& profiles, int activeProfile);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  vorn::PropertyList mProfiles;
  int mActiveProfile = -1;
};

}  // namespace skarn
