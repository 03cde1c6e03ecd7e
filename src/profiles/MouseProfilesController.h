// The Profiles tab: the device's profiles in a table that adds, copies, renames, deletes, restores, switches, exports
// and imports them, and ties them to applications. It never talks to the engine: each action is one request to its
// delegate, which answers by handing over new slices and asking for a redraw before it returns. Until then the working
// copy of the list is ahead of the engine's. Main thread; alerts and panels are sheets whose results arrive later.
// Slices of a wrong shape are survived: what cannot be read shows nothing.
//
// The delegate's requests come back into this class while they run, so flags tell what is under way: mIsAddProfile an
// add or a copy (the new row is selected and must not be switched to), mNeedsUpdate a delete, mNeedsProfileEditing that
// the last row's name is to be edited after the reload that an add causes, mIsFirstLaunch that no row has been selected
// yet. A change of the selection is handled alike, whether the user or the code made it.
#pragma once

#include <QPointer>
#include <QVariant>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"
#include "profiles/ProfileControllerDelegate.h"
#include "profiles/ProfileMenu.h"
#include "profiles/ProfileTarget.h"

class QAbstractItemDelegate;
class QAction;
class QDialog;
class QMenu;
class QTableView;

namespace skarn {

class AutoSwitchCell;
class ProfileComparisonSheet;
class ProfileImportSheet;
class ProfilesTableDelegate;
class ProfilesTableModel;
struct ProfileCandidate;

namespace Ui {
class MouseProfilesController;
}

class MouseProfilesController : public QWidget {
  Q_OBJECT

 public:
  // What an alert or a panel was opened for. The values are passed as contextInfo.
  enum Context {
    ApplicationContext = 1,
    ProfileFileContext = 2,
    ProfileFolderContext = 3,
    DeleteContext = 5,
    RestoreContext = 9,
    ExportContext = 10
  };

  explicit MouseProfilesController(QWidget* parent = nullptr);
  ~MouseProfilesController() override;

  // --- What the owner hands over. Delegate and window are not owned. Without a delegate no action does anything.
  const vorn::PropertyList& mProfileSettingsDict() const { return profileSettingsDict; }
  void setMProfileSettingsDict(const vorn::PropertyList& profile) { profileSettingsDict = profile; }
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  void setMDeviceSettingsDict(const vorn::PropertyList& deviceSettings) { deviceSettingsDict = deviceSettings; }
  const vorn::PropertyList& mProfilesArray() const { return profilesArray; }
  // What the tab has told of them is gone where they have changed.
  void setMProfilesArray(const vorn::PropertyList& profiles);
  // What the positions of macros in assignments mean.
  void setMMacrosArray(const vorn::PropertyList& macros) { macrosArray = macros.arrayOrEmpty(); }
  const vorn::PropertyList& mDefaultDict() const { return defaultDict; }
  void setMDefaultDict(const vorn::PropertyList& defaultProfile) { defaultDict = defaultProfile; }
  ProfileControllerDelegate* mProfileDelegate() const { return profileDelegate; }
  void setMProfileDelegate(ProfileControllerDelegate* delegate) { profileDelegate = delegate; }
  // Sheets are shown on it; on the tab's own window as long as there is none.
  QWidget* mProfilesWindow() const { return profilesWindow; }
  void setMProfilesWindow(QWidget* window) { profilesWindow = window; }
  // What the engine knows of the application in front (protocol/Focus.h); none where it does not tell.
  void setFocusState(const vorn::PropertyList& state);
  // The record of the last rename; empty before the first.
  const vorn::PropertyList& mUserSettingsDict() const { return userSettingsDict; }

  // The table of profiles; a row is a profile ID. At most one row is selected.
  QTableView* mProfilesTableView() const;

  // --- Drawing
  // Redraws and selects the active profile's row, no row when "ActiveProfile" is outside the list. During an add the
  // selection stays as it is.
  void updateUISettings();
  // Reloads the table; the selected row stays selected by its index.
  void refreshTableDisplay();
  void enableControlsState(bool enabled);
  // The controls under the table. Add follows the number of profiles alone, so it can be used during an add.
  void enableControlsForAddProfiles(bool enabled);

  // --- Actions
  void clickAdd();
  void clickDelete();
  void tickEnableOnScreen(bool on);
  // tag: of a menu item (ProfileMenu.h); any other does nothing.
  void selectMenuItem(int tag);
  // The same of the items below those.
  void selectListItem(int tag);
  // Asks for a profile at another place, both rows of the table, and says what came of it.
  void moveProfile(int from, int to);
  // Is this item of the gear menu enabled?
  bool validateMenuItem(const QAction& item) const;
  // Why a menu item is disabled while a mouse is connected, as a text for the user; empty when it is enabled.
  QString reasonAgainst(int tag) const;
  // Adds the nine items, each of which calls selectMenuItem, and those below them, which call selectListItem.
  void addMenuItems(QMenu& menu);
  // The next action is for this row's profile, whatever row is selected then, until the menu closes that is being
  // opened.
  void rememberTarget(int row);

  // --- The table's data source and delegate. The rest of it is ProfilesTableModel. A column is one of its identifiers.
  // Enables Delete by the number of rows.
  int numberOfRowsInTableView();
  // What draws a column and edits it.
  QAbstractItemDelegate* tableViewDataCellForTableColumn(const QString& column) const;
  // What the user entered. column: "name" with a text, or "auto switch" with 1 or 0; others are not editable.
  void tableViewSetObjectValueForTableColumn(const QVariant& value, const QString& column, int row);
  void tableViewSelectionDidChange();

  // --- Sheets
  // Opens the application chooser or the panel for profile files; any other identifier a panel that leads nowhere.
  void loadPanelForIdentifier(int identifier);
  void loadSaveAsPanel();
  // returnCode: 1 with the chosen path, 0 when cancelled.
  void openPanelDidEnd(int returnCode, const QString& path, int contextInfo);
  // returnCode: of an alert's button (1000, 1001), or of the save panel (1 with a path, 0).
  void sheetDidEnd(int returnCode, int contextInfo, const QString& path = {});

  // --- Steps of the actions
  static std::string checkForDuplicateName(const vorn::PropertyList& profiles, std::string_view usingDefaultName);
  void deleteProfile();
  void restoreProfileToDefaultSettings();
  void updateValue(int value, std::string_view ofSetting);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QString reasonAgainst(ProfileItem item) const;
  QString reasonAgainst(ProfileListItem item) const;
  int activeProfile() const;  // -1 when there is none in the list
  int selectedRow() const;
  bool isFull() const;
  void tellFollowing();
  QWidget* sheetParent() const;

  void setUpTable();
  void setUpGearMenu();
  void tintIcons();
  void selectRow(int row, bool byExtending = false);
  void deselect();
  void selectLastRow();
  void editName(int row);
  // Before the list is shown: ends an edit whose row will not be the selected one, or becomes another profile's.
  void discardStaleEdit(int rowToBeSelected);
  void explainControls();
  void enableAddByCount();

  vorn::PropertyList bundle() const;  // "Profiles" and "Macros"
  void compareProfile(int row);
  void copyProfile();
  static bool isAdded(std::optional<vorn::ReturnStatus> status);
  // The engine has not taken the profile that was shown at the end of the list. before: the list without it.
  void takeBack(const vorn::PropertyList& profile, const vorn::PropertyList& before);
  void tellRefusal(const vorn::PropertyList& profile, std::optional<vorn::ReturnStatus> status);
  void renameProfile(int row, const QString& name);
  void setAutoSwitch(int row, int value);
  int targetRow() const;
  const vorn::PropertyList& targetProfile() const { return profilesArray.at(targetRow()); }
  int takeTargetRow();
  // Is the profile gone that the action was to be for? Says so then, and the action is over.
  bool isTargetGone();
  // Takes a typed name over. The action that is beginning is for the row that was edited.
  void endEdit();
  void editTarget();
  // Opened for the target, whose name goes into the title. title, action: keys of texts; the action's word is on the
  // first button.
  void showAlert(const char* title, const QString& informativeText, const char* action, int contextInfo);
  // Where the profile stands now that the sheet was confirmed for, which is over; says so and gives nothing when it is
  // gone. Without a sheet: the target.
  std::optional<int> takeConfirmedRow();
  // An update of this row's profile, also of one that is not selected.
  void updateProfile(int row, const vorn::PropertyList& settings);

  void exportProfile(const QString& path);
  void importProfile(const QString& path);
  void importFolder(const QString& path);
  // Tells what the files hold, and imports what fits when that is confirmed.
  void openImportSheet(std::vector<ProfileCandidate> candidates, bool isFolder);
  // The new profile is selected, and so switched to.
  void addImported(const ProfileCandidate& candidate);
  // The same profile stays in force.
  void addAllImported(const std::vector<ProfileCandidate>& candidates);
  void exportAll();
  void assignApplication(int row, const QString& path);
  void removeApplication();

  std::unique_ptr<Ui::MouseProfilesController> mUi;
  ProfilesTableModel* mModel;
  ProfilesTableDelegate* mCells;
  AutoSwitchCell* mAutoSwitchCell;
  vorn::PropertyList profileSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList profilesArray = vorn::PropertyList::array();
  vorn::PropertyList macrosArray = vorn::PropertyList::array();
  vorn::PropertyList focusState;
  vorn::PropertyList defaultDict = vorn::PropertyList::dictionary();
  vorn::PropertyList userSettingsDict = vorn::PropertyList::dictionary();
  QVariant mTableObjectValue;  // the value that "auto switch" was last ticked with
  ProfileControllerDelegate* profileDelegate = nullptr;
  QPointer<QWidget> profilesWindow;
  QPointer<QDialog> mProfileOpenPanel;
  QPointer<QDialog> mProfileSavePanel;
  QPointer<ProfileComparisonSheet> mComparison;
  QPointer<ProfileImportSheet> mImport;

  ProfileTarget mTarget;

  bool mIsAddProfile = false;
  bool mNeedsUpdate = false;
  bool mIsFirstLaunch = true;
  bool mHasDeviceConnected = true;
  bool mNeedsProfileEditing = false;
  bool mIsReloading = false;  // the table changes its rows, and with them its selection
};

}  // namespace skarn
