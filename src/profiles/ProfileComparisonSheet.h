// The sheet that tells what differs between two profiles: one that it is opened for and another one that is chosen in
// it. It follows both while the settings change under it, and ends when the first one is gone. It changes nothing. Main
// thread.
#pragma once

#include <QDialog>
#include <memory>

#include "model/PropertyList.h"
#include "model/RememberedRecord.h"

namespace skarn {

namespace Ui {
class ProfileComparisonSheet;
}

class ProfileComparisonSheet : public QDialog {
  Q_OBJECT

 public:
  // Shows the sheet on the window and returns at once. bundle: "Profiles", two or more, and "Macros". row: the profile
  // that it is for. At first that is compared with the active one, or, being that, with the one behind or before it.
  static ProfileComparisonSheet* open(QWidget* window, const vorn::PropertyList& bundle, int row, int activeProfile);
  ~ProfileComparisonSheet() override;

  // The settings are these now. Closes, and says so on its window, where the profile is gone.
  void setSettings(const vorn::PropertyList& bundle);

 private:
  ProfileComparisonSheet(QWidget* window, const vorn::PropertyList& bundle, int row, int other);

  void showProfiles(int row, int other);
  void compare();

  std::unique_ptr<Ui::ProfileComparisonSheet> mUi;
  vorn::PropertyList mBundle;
  vorn::RememberedRecord mProfile;
  vorn::RememberedRecord mOther;
  int mRow = -1;
};

}  // namespace skarn
