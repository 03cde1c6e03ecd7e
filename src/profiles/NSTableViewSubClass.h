// The table of profiles.
#pragma once

#include <QTableView>

namespace skarn {

class MouseProfilesController;

class NSTableViewSubClass : public QTableView {
  Q_OBJECT

 public:
  explicit NSTableViewSubClass(QWidget* parent = nullptr);

  // Set by the controller when it is made; not owned.
  MouseProfilesController* mouseProfilesController = nullptr;
};

}  // namespace skarn
