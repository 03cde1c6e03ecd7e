// The hub: owns the working copy of the settings and the link to the engine, hands every tab its slices and carries
// out what the tabs ask for.
//
// Settings are never edited in place. Each change goes to the engine, and the bundle that comes back replaces the
// working copy whole; then setProperties hands out new slices and updateUISettings redraws. A command that gets no
// answer changes nothing.
//
// Everything runs on the main thread, but for setDriverVersions and checkBatteryStatus, which any thread may call.
// A waiting command blocks for up to about 6 s (12 s for adding a macro) and runs no event loop meanwhile.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "app/RepeatingThread.h"
#include "app/VRCDeviceManager.h"
#include "app/VRCEngineInterface.h"
#include "buttons/MouseButtonDelegate.h"
#include "lighting/MouseLightingDelegate.h"
#include "link/EngineLink.h"
#include "macros/MacroControllerDelegate.h"
#include "maintenance/MouseMaintenanceDelegate.h"
#include "model/NotificationCenter.h"
#include "model/References.h"
#include "model/VRCDictionaryInspector.h"
#include "performance/MousePerformanceDelegate.h"
#include "platform/WebPages.h"
#include "profiles/ProfileControllerDelegate.h"

class QLabel;
class QPushButton;
class QTabWidget;
class QToolButton;

namespace skarn {

class BusyIndicator;
class DeviceConnectionSheet;
class FocusState;
class HistoryControls;
class MouseButtonController;
class MouseChoice;
class MouseControls;
class MouseLightingController;
class MouseMacrosController;
class MouseMainWindow;
class MouseMaintenanceController;
class MousePerformanceController;
class MouseProfilesController;
class NamedImageView;
class RestoringStateSheet;
class SettingsHistory;
class TrayControls;
class TypedKeys;

// What the hub reaches outside itself; tests answer in place of the system.
struct HubServices {
  vorn::EngineLink& link;
  vorn::NotificationCenter& notifications;
  OpenAddress openAddress;                               // the default web browser
  std::function<void(const std::string& line)> report;   // start-up report, a line without a line break each
  StoppableSleep sleep = systemSleep();                  // of the timer threads
  std::function<bool()> mustEnd = [] { return false; };  // the program is asked to end: no wait goes on
  QString memoryFile{};                                  // of the window; empty: nothing is kept
};

class MouseMainController : public QObject,
                            public MouseButtonDelegate,
                            public ProfileControllerDelegate,
                            public MacroControllerDelegate,
                            public MousePerformanceDelegate,
                            public MouseLightingDelegate,
                            public MouseMaintenanceDelegate {
  Q_OBJECT

 public:
  // The window holds the tabs and outlives the hub. Call awakeFromNib once before anything else.
  MouseMainController(MouseMainWindow& window, HubServices services);
  ~MouseMainController() override;

  // --- Start-up
  void awakeFromNib();
  QWidget* mMouseMainView() const;
  void setMMouseMainView(QWidget* window);
  // Says in the window that it waits for the engine, before the wait blocks it.
  void showThatItWaits() { setPresence(Presence::Starting); }
  // Whether somebody owns the engine's port, as last told.
  bool isEngineThere() const { return mIsEngineThere; }
  // Asks the session bus to start the engine, unless it has been asked and has not answered yet. The strip says so
  // meanwhile; engineStartEnded tells when the engine is there or will not come by that. Where a person asked for it,
  // an alert tells why it failed.
  void startEngine(bool isAskedFor = false);
  bool isStartingEngine() const { return mIsStartingEngine; }
  void showRestoringStateWindow();
  QWidget* mRestoringStateWindow() const;
  // Registers with the engine, loads settings or falls back on the defaults, draws, and starts to listen.
  void initializeDevice();
  // The body of the reply thread is the link's; this starts it.
  void createLocalPort();
  // Two operations without effect: the wait is part of each command, and observers are removed by name.
  void waitForReply() {}
  void removeSelfAsNotificationObserver() {}

  // --- Settings
  void loadDefaultDict();
  void loadDictionariesWithDefaultDict();
  void loadLatestSettings();
  void updateToLatestSettings(const vorn::PropertyList& bundle);
  void setProperties();
  void populateUISettings();
  void updateUISettings();
  void refreshControllersTableDisplay();
  const vorn::PropertyList& mDefaultSettingsDict() const { return defaultSettingsDict; }
  const vorn::PropertyList& mDefaultProfileDict() const { return defaultProfileDict; }  // the active profile
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  const vorn::PropertyList& mProfilesArray() const { return profilesArray; }
  const vorn::PropertyList& mMacrosArray() const { return macrosArray; }

  // --- Controls of the window
  void updateControlsWithState(bool state);
  void updateProfilesControlState(bool state);
  void clickApplySettings();
  void registerHelpBook();
  void openRegisteredHelpBook();
  void clickHelpButton();
  // The page of the help book about the tab in front; F1.
  void openHelpOfTab();
  void selectTabAtIndex(int index) override;

  // --- Errors
  void showErrorForErrorCode(int code);
  void showErrorDialog();
  void hideErrorDialog();
  void clickOKButton();

  // --- News from the engine
  void registerNotifications();
  void addObserverDeviceAttachment();
  void removeObserverDeviceAttachment();
  void addObserverDeviceRemoval();
  void removeObserverDeviceRemoval();
  void addObserverProfileUpdate();
  void removeObserverProfileUpdate();
  void addObserverDPIUpdate();
  void removeObserverDPIUpdate();
  void addObserverKeymapPressed();
  void removeObserverKeymapPressed();
  void deviceConnectedNotification(const vorn::Notification& notification);
  void deviceDisconnectedNotification(const vorn::Notification& notification);
  void deamonProfileUpdateNotification(const vorn::Notification& notification);
  void deamonDPIUpdateNotification(const vorn::Notification& notification);
  void deamonKeyMapPressed(const vorn::Notification& notification);
  void commandReplyReceived(const vorn::Notification& notification);

  // --- Device presence
  void updateDeviceConnectivityIcon();
  void checkBatteryLevel();
  void checkBatteryStatus();
  // Asks for the firmware version as long as it is not known. Any thread.
  void setDriverVersions();
  void updateFWVersion(const vorn::PropertyList& info);
  void updateBatteryLevel(const vorn::PropertyList& info);
  void updateBatteryStatus(const vorn::PropertyList& info);
  void runChargingBattery();
  void FWQueryThreadAboutToRun();    // asks every 3 s, as long as the version is not known
  void batteryThreadAboutToRun();    // asks for the charging status every 10 s; nothing starts it
  void chargingBatteryAboutToRun();  // steps the battery icon once a second, the first time at once
  std::string mFirmwareVersionString() const;
  std::uint32_t mBatteryStatus() const { return batteryStatus; }
  std::uint32_t mDevicePID() const { return devicePID; }
  bool mIsWiredDevice() const { return isWiredDevice; }

  // --- Shutdown
  // Tells the engine that the device is free again; waits for nothing.
  void releaseVornDeviceInstance();
  // Ends a macro recording that is under way.
  void checkMacroRecordingStatus();

  // --- Profiles
  std::optional<vorn::ReturnStatus> addNewProfileWithSettings(const vorn::PropertyList& profile) override;
  std::optional<vorn::ReturnStatus> addFurtherProfileWithSettings(const vorn::PropertyList& profile) override;
  // A negative ID means the active profile.
  void updateProfileWithID(int profileID, const vorn::PropertyList& andSettings);
  void updateProfileWithSettings(const vorn::PropertyList& settings) override;
  void updateButtonAssignmentWithSettings(const vorn::PropertyList& settings) override;
  void updateButtonAssignmentWithSettings(const vorn::PropertyList& settings, int toProfileIndex) override;
  void updateValueForSetting(const vorn::PropertyList& settings) override;
  void renameProfileWithProfileID(int profileID, const vorn::PropertyList& andSettings) override;
  void updateProfileKeyInDictionaryWithDictionary(const vorn::PropertyList& profiles) override;
  void deleteProfileWithProfileID(int profileID) override;
  void switchProfileWithID(int profileID) override;
  std::optional<vorn::ReturnStatus> reorderProfiles(const vorn::ProfileOrder& order,
                                                    const vorn::PropertyList& names) override;
  // What the last successful add, update or switch would tell other programs: name, bundle and this application's
  // identifier. It is not sent anywhere.
  const vorn::PropertyList& changeNote() const { return mChangeNote; }

  // --- Macros and key capture
  std::optional<vorn::ReturnStatus> addMacroWithSettings(const vorn::PropertyList& macro) override;
  void deleteMacroAtIndex(int macro) override;
  void renameMacroAtIndex(int macro, std::string_view withNewName) override;
  void reloadMacros() override;
  void getMacroDetailsForMacroAtIndex(int macro) override;
  vorn::PropertyList getSequenceDetails(std::uint8_t macro, std::uint8_t eventIndex) override;
  void updateSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex, const vorn::PropertyList& newDict) override;
  void updateFurtherSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex,
                                 const vorn::PropertyList& newDict) override;
  std::optional<vorn::ReturnStatus> replaceSequence(const vorn::PropertyList& sequence, int ofMacroAtIndex,
                                                    const vorn::PropertyList& macro) override;
  void removeEventAtIndex(int event, int forMacroAtIndex) override;
  void removeAllEventsForMacroAtIndex(int macro) override;
  void setAllEventsDelay(int delay, int forMacroAtIndex, bool hasNoDelay) override;
  void setNewDelay(int milliseconds, int atMacroEventIndex, int forMacroAtIndex) override;
  void startMacroRecording(bool append, int macroIndex) override;
  void stopMacroRecording() override;
  void saveRecordedEventsForMacroAtIndex(int macro, bool isNewRecording) override;
  void startEditHID() override;
  void startSingleKeyRecording() override;
  void stopSingleKeyRecording() override;

 signals:
  void engineStartEnded();

 private:
  // What the strip beside the tabs says.
  enum class Presence { Starting, Connected, NoDevice, NoEngine, EngineSilent };

  static constexpr const char* defaultSettingsFile = "Skarn.plist";
  static constexpr std::chrono::milliseconds newsRest{100};
  // None of the charging statuses, so that the first one told counts as a change.
  static constexpr std::uint32_t unknownBatteryStatus = 255;

  vorn::PropertyList envelope() const;  // the keys that every request carries
  void updateSequence(const vorn::PropertyList& update);
  // Sends the request and waits. The answer stays in the reply slot; none when the wait ended without one.
  vorn::PropertyList sendAndWait(vorn::MessageID messageID, const vorn::PropertyList& request,
                                 std::chrono::milliseconds interval = vorn::pollInterval);
  // The same for commands that need no more of the answer than its status, which is taken out of the slot.
  std::optional<int> statusOf(vorn::MessageID messageID, const vorn::PropertyList& request,
                              std::chrono::milliseconds interval = vorn::pollInterval);
  // The bundle of a profile command's answer; none when the answer lacks it. The answer is taken out of the slot.
  // Takes what the engine holds after the request, whatever it said of it. profileName: for the note of the change.
  std::optional<vorn::ReturnStatus> changeProfiles(vorn::MessageID messageID, const vorn::PropertyList& request,
                                                   std::string_view profileName);
  vorn::PropertyList bundleOf(vorn::MessageID messageID, const vorn::PropertyList& request);
  void applyChange(const vorn::PropertyList& bundle, std::string_view profileName);
  void takeBundle(const vorn::PropertyList& bundle);  // the working copy is replaced, and all tabs are redrawn
  void noteChange(const vorn::PropertyList& bundle, std::string_view profileName);
  // The bundle of an answered switch, with what a deletion before it leaves to do. Redraws nothing.
  void takeSwitch(const vorn::PropertyList& bundle, int profileID);
  // After a deletion and its clean-up: where another control would do something else than before, sends the profiles
  // once more as they must be, and redraws. before: the profiles before the deletion.
  void keepReferences(const vorn::PropertyList& before, const vorn::Deletion& deletion);
  int profileTableRow() const;
  void reload();  // loadLatestSettings, setProperties, updateUISettings
  // Every menu, sheet, alert and panel of a tab closes as by its Cancel, so that nothing is written. The hub's own
  // stay.
  void closeSheetsOfTabs();
  void closeMenus();
  // Message 0 and its answer; none where there was none.
  vorn::PropertyList registerDevice();
  // The engine's port went or came.
  void engineWent();
  void engineCame();
  void endEngineStart();
  void tellWhyNotStarted(const vorn::ServiceStart& outcome);
  // Nothing of the mouse is shown any more, what records ends, and all tabs are disabled.
  void forgetDevice();
  // A turn of a wait that blocks the thread: paints that there is one. False when the wait must end.
  bool goOnWaiting();
  void beginShowingWait();
  void endShowingWait();
  void redrawDefaults();  // shows the default settings in place of the engine's
  void setPresence(Presence presence);
  void sayPresence();
  // The history can be asked as long as there are an engine and a mouse.
  void offerHistory();
  void wireHistory();
  void wireMice();
  // The mice are asked for as long as there is an engine, with a mouse or without.
  void askForMice();
  void wireFocus();
  // The application in front is asked for while the Profiles tab tells of it.
  void askForFocus();
  // The tabs learn what the mouse in use lacks.
  void showWhatMouseLacks();
  void wireTray();
  // The item in the tray says what the window says.
  void tellTray();
  QString textOf(Presence presence) const;
  // The strip follows whether an engine that was there answers.
  void noteAnswer(bool isAnswered);
  void setMFirmwareVersionString(const std::string& version);
  void observe(const std::string& name, void (MouseMainController::*handler)(const vorn::Notification&));
  void reloadUnlessOurs(const vorn::Notification& notification);
  // Reloads at once, but for what comes within newsRest of a reload: all of that is one more.
  void reloadForNews();
  void sendQuery(vorn::MessageID messageID);
  void stopChargingAnimation();
  void sayBatteryInWords();
  void observeDeviceAttached(std::int32_t product);
  void leaveTabs();
  void wireControls();

  HubServices mServices;
  MouseMainWindow& mWindow;

  // Controls, in the window's layout; not owned.
  QTabWidget* mMouseTabView;
  QPushButton* mAppySettings;
  QLabel* mDeviceLogo;
  NamedImageView* mDeviceConnectivity;
  NamedImageView* mBattery;
  BusyIndicator* mBusyIndicator;
  DeviceConnectionSheet* mDeviceConnectionWindow;
  QToolButton* mCommunityFBLink;
  QToolButton* mCommunityTwitterLink;
  QToolButton* mCommunityVornGuildLink;
  RestoringStateSheet* restoringStateWindow;

  MouseButtonController* mMouseButtonController;
  MousePerformanceController* mMousePerformanceController;
  MouseProfilesController* mMouseProfilesController;
  MouseMacrosController* mMouseMacrosController;
  MouseLightingController* mMouseLightingController;
  MouseMaintenanceController* mMouseMaintenenceController;

  QPointer<QWidget> mouseMainView;
  vorn::PropertyList defaultSettingsDict;
  vorn::PropertyList defaultProfileDict;
  vorn::PropertyList deviceSettingsDict;
  vorn::NotificationCenter* mNotificationCenter = nullptr;
  vorn::PropertyList profilesArray;
  vorn::PropertyList macrosArray;
  vorn::Bytes mCallbackData;  // not used
  mutable std::mutex mFirmwareVersionMutex;
  std::string firmwareVersionString;                   // empty until known, "-" without a device
  std::atomic<std::uint32_t> devicePID{0};             // that of every request, once registered
  std::uint32_t batteryStatus = unknownBatteryStatus;  // as last told
  std::optional<int> mBatteryPercent;                  // as last told
  std::uint32_t mDeletedProfileID = 0;
  bool isWiredDevice = false;
  Presence mPresence = Presence::Starting;
  bool mProfileDeleted = false;
  std::unique_ptr<VRCDeviceManager> mDeviceManager;
  std::unique_ptr<VRCEngineInterface> mEngineInterface;
  std::unique_ptr<vorn::VRCDictionaryInspector> mDictionaryInspector;  // stays empty
  bool mMessagePortRunning = false;

  std::unique_ptr<SettingsHistory> mHistory;
  std::unique_ptr<HistoryControls> mHistoryControls;
  std::unique_ptr<FocusState> mFocusState;
  std::unique_ptr<MouseChoice> mMouseChoice;
  std::unique_ptr<MouseControls> mMouseControls;
  std::unique_ptr<TrayControls> mTrayControls;
  std::unique_ptr<TypedKeys> mTypedKeys;
  QTimer mNewsTimer;  // runs for newsRest after a reload for news
  bool mHasMoreNews = false;
  bool mHasStarted = false;
  bool mIsEngineThere = false;
  bool mIsStartingEngine = false;
  unsigned mEngineStarts = 0;              // counts them, to tell the outcome of an earlier one
  std::atomic<bool> mIsEngineGone{false};  // nothing is sent then, as nobody would take it
  bool mShowsWait = false;
  bool mWasBusyBeforeWait = false;
  bool mAreTabsEnabled = true;  // false while no mouse is there, or its engine is not
  bool mShowsDefaults = false;  // the working copy comes from the default file
  vorn::PropertyList mChangeNote;

  // Last, so that the threads end before anything that they use goes.
  RepeatingThread mFirmwareThread;
  RepeatingThread mBatteryThread;
  RepeatingThread mChargingThread;
  unsigned mChargingAnimation = 0;  // counts the animations, to tell a step of an earlier one
};

}  // namespace skarn
