// The sheet that tells what profile files hold before their profiles are added, and what does not fit and why. It
// follows the settings while it is open: room and free names change under it. It adds nothing itself. Main thread.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "model/PropertyList.h"

namespace skarn {

namespace Ui {
class ProfileImportSheet;
}

// A file that was read.
struct ProfileCandidate {
  QString path;
  vorn::PropertyList record;  // none where there is a problem
  QString problem;            // a sentence for the user; empty when all is well
};

class ProfileImportSheet : public QDialog {
  Q_OBJECT

 public:
  // Called once with the candidates that fit, in their order, when Import is pressed.
  using Accepted = std::function<void(const std::vector<ProfileCandidate>& fitting)>;

  // Shows the sheet on the window and returns at once. bundle: "Profiles" and "Macros".
  static ProfileImportSheet* open(QWidget* window, std::vector<ProfileCandidate> candidates,
                                  const vorn::PropertyList& bundle, Accepted accepted);
  ~ProfileImportSheet() override;

  void setSettings(const vorn::PropertyList& bundle);

  void accept() override;

 private:
  ProfileImportSheet(QWidget* window, std::vector<ProfileCandidate> candidates, Accepted accepted);

  void tellContents(const vorn::PropertyList& record, const vorn::PropertyList& bundle);

  std::unique_ptr<Ui::ProfileImportSheet> mUi;
  std::vector<ProfileCandidate> mCandidates;
  std::vector<ProfileCandidate> mFitting;
  Accepted mAccepted;
};

}  // namespace skarn
