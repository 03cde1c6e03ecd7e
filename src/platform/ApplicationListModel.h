// Applications as the rows of a list: name, icon, and the path as tooltip. An icon is looked up when it is first asked
// for, so that a list costs only the rows that are seen. Main thread.
#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <vector>

#include "platform/ApplicationInfo.h"

namespace skarn {

class ApplicationListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  static constexpr int pathRole = Qt::UserRole;

  explicit ApplicationListModel(std::vector<ApplicationInfo::Installed> applications, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  // An application without an icon has its initial in a frame.
  const QIcon& iconOf(std::size_t row) const;

  std::vector<ApplicationInfo::Installed> mApplications;
  mutable std::vector<QIcon> mIcons;  // null until looked up
};

}  // namespace skarn
