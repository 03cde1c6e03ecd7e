// A table to be read: rows under the titles of their groups. Main thread.
#pragma once

#include <QStringList>
#include <QTableView>

class QStandardItemModel;

namespace skarn {

class GroupedTable : public QTableView {
  Q_OBJECT

 public:
  explicit GroupedTable(QWidget* parent = nullptr);

  // Takes everything away. A header without any text is not shown.
  void begin(const QStringList& headers);
  void addGroup(const QString& title);
  // One text a column.
  void addRow(const QStringList& texts);

 private:
  QStandardItemModel* mRows;
  bool mAreNamesWhole = false;
};

}  // namespace skarn
