#include "app/MouseMainController.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QToolButton>
#include <utility>

#include "app/FocusState.h"
#include "app/HistoryControls.h"
#include "app/MouseChoice.h"
#include "app/MouseControls.h"
#include "app/MouseMainWindow.h"
#include "app/NamedImageView.h"
#include "app/SettingsHistory.h"
#include "app/Sheets.h"
#include "app/StateStrip.h"
#include "app/TrayControls.h"
#include "app/TypedKeys.h"
#include "app/VRCErrorHandler.h"
#include "buttons/MouseButtonController.h"
#include "lighting/MouseLightingController.h"
#include "macros/MouseMacrosController.h"
#include "maintenance/MouseMaintenanceController.h"
#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"
#include "performance/MousePerformanceController.h"
#include "platform/Bundle.h"
#include "platform/HelpBook.h"
#include "platform/Localization.h"
#include "profiles/MouseProfilesController.h"
#include "ui_MouseMainWindow.h"
#include "widgets/BusyIndicator.h"

namespace skarn {

using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;
namespace replyKeys = vorn::replyKeys;

namespace {

constexpr const char* helpBookTitle = "Skarn Help";
constexpr const char* helpBookFirstPage = "index.html";
constexpr const char* helpPageProperty = "helpPage";  // of a tab: its page in the help book

}  // namespace

MouseMainController::MouseMainController(MouseMainWindow& window, HubServices services)
    : mServices(std::move(services)),
      mWindow(window),
      mMouseTabView(window.ui().mMouseTabView),
      mAppySettings(window.ui().mAppySettings),
      mDeviceLogo(window.ui().mDeviceLogo),
      mDeviceConnectivity(window.ui().mDeviceConnectivity),
      mBattery(window.ui().mBattery),
      mBusyIndicator(window.ui().mBusyIndicator),
      mDeviceConnectionWindow(new DeviceConnectionSheet(&window)),
      mCommunityFBLink(window.ui().mCommunityFBLink),
      mCommunityTwitterLink(window.ui().mCommunityTwitterLink),
      mCommunityVornGuildLink(window.ui().mCommunityVornGuildLink),
      restoringStateWindow(new RestoringStateSheet(&window)),
      mMouseButtonController(window.ui().MouseButtonController),
      mMousePerformanceController(window.ui().MousePerformanceController),
      mMouseProfilesController(window.ui().MouseProfilesController),
      mMouseMacrosController(window.ui().MouseMacrosController),
      mMouseLightingController(window.ui().MouseLightingController),
      mMouseMaintenenceController(window.ui().MouseMaintenanceController),
      mFirmwareThread(mServices.sleep),
      mBatteryThread(mServices.sleep),
      mChargingThread(mServices.sleep) {
  mNewsTimer.setSingleShot(true);
  connect(&mNewsTimer, &QTimer::timeout, this, [this] {
    if (std::exchange(mHasMoreNews, false)) reloadForNews();
  });
}

MouseMainController::~MouseMainController() {
  mMessagePortRunning = false;
  if (mNotificationCenter) mNotificationCenter->removeObserver(this);
  mServices.link.watchEngine({});
  mServices.link.setWhileWaiting({});
  leaveTabs();
}

// The window with its tabs lives longer than the hub.
void MouseMainController::leaveTabs() {
  mMouseProfilesController->setMProfileDelegate(nullptr);
  mMouseMacrosController->setMMacroDelegate(nullptr);
  mMouseMacrosController->setMNotificationCenter(nullptr);
  mMousePerformanceController->setMMousePerformanceDelegate(nullptr);
  mMouseButtonController->setMButtonDelegate(nullptr);
  mMouseButtonController->setMNotificationCenter(nullptr);
  mMouseMaintenenceController->setMMouseMaintenanceDelegate(nullptr);
  mMouseMaintenenceController->setOpenAddress({});
  mMouseLightingController->setMLightingDelegate(nullptr);
}

void MouseMainController::awakeFromNib() {
  mNotificationCenter = &mServices.notifications;
  mDeviceManager = std::make_unique<VRCDeviceManager>();
  mEngineInterface = std::make_unique<VRCEngineInterface>(mDeviceManager.get());
  defaultProfileDict = PropertyList::dictionary();
  deviceSettingsDict = PropertyList::dictionary();
  profilesArray = PropertyList::array();
  macrosArray = PropertyList::array();
  mBusyIndicator->stop();
  mMessagePortRunning = false;
  createLocalPort();
  mServices.link.setWhileWaiting([this] { return goOnWaiting(); });
  mIsEngineThere = mServices.link.watchEngine([this](bool isThere) { isThere ? engineCame() : engineWent(); });
  wireHistory();
  wireMice();
  wireTray();
  wireFocus();
  // Looks at events before what was made earlier.
  mTypedKeys = std::make_unique<TypedKeys>(
      mServices.link, mWindow,
      TypedRecording{.isRunning = [this] { return mMouseMacrosController->mIsRecording(); },
                     .captureArea = [this] { return mMouseMacrosController->captureArea(); },
                     .stop = [this] { checkMacroRecordingStatus(); },
                     .discard = [this] { mMouseMacrosController->clickDiscardRecording(); }});
  batteryStatus = unknownBatteryStatus;
  mDeletedProfileID = 0;
  mProfileDeleted = false;
  mBattery->clearImage();
  mDeviceConnectivity->clearImage();
  setMFirmwareVersionString({});
  mMouseButtonController->setMNotificationCenter(mNotificationCenter);
  mMouseButtonController->registerNotification();
  mMouseMacrosController->setMNotificationCenter(mNotificationCenter);
  mMouseMaintenenceController->setOpenAddress(mServices.openAddress);
  wireControls();
}

void MouseMainController::wireControls() {
  const auto tabChanged = [this] {
    mMouseMacrosController->tabViewDidSelectTabViewItem(mMouseTabView->currentWidget());
    askForFocus();
  };
  connect(mMouseTabView, &QTabWidget::currentChanged, this, tabChanged);
  // The window may open on the Macros tab.
  tabChanged();
  connect(&mWindow.stateStrip(), &StateStrip::buttonClicked, this, [this] {
    if (mPresence == Presence::NoDevice) return mMouseControls->openSheet();
    startEngine(true);
  });
  connect(mAppySettings, &QPushButton::clicked, this, &MouseMainController::clickApplySettings);
  connect(restoringStateWindow, &RestoringStateSheet::closed, this, [] { QCoreApplication::exit(); });
  connect(mDeviceConnectionWindow, &DeviceConnectionSheet::okClicked, this, &MouseMainController::clickOKButton);
  connect(mWindow.ui().mHelpButton, &QToolButton::clicked, this, &MouseMainController::clickHelpButton);
  auto* helpKey = new QShortcut(QKeySequence(QKeySequence::HelpContents), &mWindow);
  connect(helpKey, &QShortcut::activated, this, &MouseMainController::openHelpOfTab);
  const auto opens = [this](QToolButton* link, WebPage page) {
    link->setVisible(!addressOf(page).isEmpty());
    connect(link, &QToolButton::clicked, this, [this, page] { openPage(&mWindow, page, mServices.openAddress); });
  };
  opens(mCommunityFBLink, WebPage::Community);
  opens(mCommunityTwitterLink, WebPage::News);
  opens(mCommunityVornGuildLink, WebPage::Guild);
}

void MouseMainController::wireHistory() {
  mHistory = std::make_unique<SettingsHistory>(mServices.link);
  mHistoryControls = std::make_unique<HistoryControls>(
      mWindow, *mHistory, [this] { return mMouseMacrosController->mIsRecording(); },
      [this] { return defaultProfileDict; });
  // It is turned whenever a recording begins or ends; the tab knows of that a moment later.
  connect(mMouseMacrosController->mRecordMacroDetails(), &QAbstractButton::toggled, mHistoryControls.get(),
          &HistoryControls::refresh, Qt::QueuedConnection);
  offerHistory();
}

void MouseMainController::wireMice() {
  mMouseChoice = std::make_unique<MouseChoice>(mServices.link);
  mMouseControls = std::make_unique<MouseControls>(mWindow, *mMouseChoice, WindowMemory(mServices.memoryFile));
  connect(
      mMouseMacrosController->mRecordMacroDetails(), &QAbstractButton::toggled, mMouseControls.get(),
      [this] { mMouseControls->setRecording(mMouseMacrosController->mIsRecording()); }, Qt::QueuedConnection);
  connect(mMouseControls.get(), &MouseControls::changed, this, [this] {
    showWhatMouseLacks();
    if (mPresence == Presence::NoDevice && !mShowsWait) sayPresence();
  });
}

void MouseMainController::wireTray() {
  mTrayControls = std::make_unique<TrayControls>(mWindow, WindowMemory(mServices.memoryFile));
  connect(mTrayControls.get(), &TrayControls::profileChosen, this, [this](int profile, const QString& name) {
    // The profiles may have changed since the menu opened.
    if (profilesArray.at(profile)[keys::ProfileName].toString() == name.toStdString()) switchProfileWithID(profile);
  });
  connect(mMouseMacrosController->mRecordMacroDetails(), &QAbstractButton::toggled, this,
          &MouseMainController::tellTray, Qt::QueuedConnection);
}

void MouseMainController::wireFocus() {
  mFocusState = std::make_unique<FocusState>(mServices.link);
  connect(mFocusState.get(), &FocusState::changed, mMouseProfilesController,
          [this] { mMouseProfilesController->setFocusState(mFocusState->state()); });
}

void MouseMainController::createLocalPort() {
  mServices.link.createLocalPort();
}

QWidget* MouseMainController::mMouseMainView() const {
  return mouseMainView;
}

void MouseMainController::setMMouseMainView(QWidget* window) {
  mouseMainView = window;
}

void MouseMainController::showRestoringStateWindow() {
  restoringStateWindow->begin();
}

QWidget* MouseMainController::mRestoringStateWindow() const {
  return restoringStateWindow;
}

void MouseMainController::initializeDevice() {
  mEngineInterface->setMParentWindow(mouseMainView);
  QElapsedTimer clock;
  clock.start();
  const bool engineFound = mServices.link.isEngineAvailable();
  mServices.report(engineFound ? "engine found" : "no engine: waiting for an answer all the same");

  const PropertyList answer = registerDevice();
  loadDefaultDict();
  restoringStateWindow->end();

  devicePID = vorn::wiredProductID;
  observe(vorn::notificationNames::commandReply(vorn::wiredProductID), &MouseMainController::commandReplyReceived);
  isWiredDevice = true;

  if (answer[replyKeys::ReturnStatus].toBool()) {
    mServices.report("registered");
    loadLatestSettings();
    setProperties();
    populateUISettings();
    setPresence(Presence::Connected);
    updateUISettings();
    mServices.report("settings loaded: " + std::to_string(profilesArray.size()) + " profiles, " +
                     std::to_string(macrosArray.size()) + " macros, in " + std::to_string(clock.elapsed()) + " ms");
  } else if (!answer.isNone()) {
    mServices.report("not registered: no mouse is connected; showing the default settings");
    setMFirmwareVersionString("-");
    redrawDefaults();
    setPresence(Presence::NoDevice);
    showErrorDialog();
  } else {
    mServices.report("not registered: no answer after " + std::to_string(clock.elapsed()) +
                     " ms; showing the default settings");
    redrawDefaults();
    setPresence(Presence::NoEngine);
    showErrorForErrorCode(0);
  }

  mHasStarted = true;
  mTrayControls->begin();
  askForMice();
  askForFocus();
  registerNotifications();
  registerHelpBook();
  FWQueryThreadAboutToRun();
}

void MouseMainController::redrawDefaults() {
  loadDictionariesWithDefaultDict();
  setProperties();
  populateUISettings();
  updateUISettings();
  updateControlsWithState(false);
}

void MouseMainController::loadDefaultDict() {
  const QString path = Bundle::mainBundle().resourcePath(defaultSettingsFile);
  std::string error;
  const auto file = vorn::readPropertyListFile(path.toStdString(), &error);
  if (!file) mServices.report("default settings not read: " + error);
  defaultSettingsDict = file ? (*file)[keys::DefaultSettings].dictionaryOrEmpty() : PropertyList::dictionary();
  mMouseButtonController->setMDefaultDict(defaultSettingsDict);
}

void MouseMainController::loadDictionariesWithDefaultDict() {
  profilesArray = defaultSettingsDict[keys::Profiles].arrayOrEmpty();
  defaultProfileDict = profilesArray.at(0).dictionaryOrEmpty();
  macrosArray = defaultSettingsDict[keys::Macros].arrayOrEmpty();
  mShowsDefaults = true;
}

void MouseMainController::loadLatestSettings() {
  const PropertyList answer = sendAndWait(MessageID::GetAllSettings, envelope());
  if (answer.isNone()) return;
  const PropertyList& bundle = answer[replyKeys::AllDevSettings];
  if (bundle.isDictionary()) updateToLatestSettings(bundle);
  mServices.link.emptySlot();
}

void MouseMainController::updateToLatestSettings(const PropertyList& bundle) {
  deviceSettingsDict = bundle[keys::DeviceSettings].dictionaryOrEmpty();
  profilesArray = bundle[keys::Profiles].arrayOrEmpty();
  defaultProfileDict = profilesArray.at(deviceSettingsDict[keys::ActiveProfile].toInt64()).dictionaryOrEmpty();
  macrosArray = bundle[keys::Macros].arrayOrEmpty();
  mShowsDefaults = false;
}

void MouseMainController::setProperties() {
  const PropertyList defaultProfile = defaultSettingsDict[keys::Profiles].at(0).dictionaryOrEmpty();

  mMouseButtonController->setMButtonsSettingsDict(defaultProfileDict);
  mMouseButtonController->setMAllProfiles(profilesArray);
  mMouseButtonController->setMAllMacros(macrosArray);
  mMouseButtonController->setMDeviceSettingsDict(deviceSettingsDict);

  mMousePerformanceController->setMPerformanceSettingsDict(defaultProfileDict);
  mMousePerformanceController->setMDeviceSettingsDict(deviceSettingsDict);

  mMouseProfilesController->setMProfileSettingsDict(defaultProfileDict);
  mMouseProfilesController->setMDeviceSettingsDict(deviceSettingsDict);
  mMouseProfilesController->setMProfilesArray(profilesArray);
  mMouseProfilesController->setMMacrosArray(macrosArray);
  mMouseProfilesController->setMDefaultDict(defaultProfile);

  mMouseMacrosController->setMMacrosSettingsArray(macrosArray);
  mMouseMacrosController->setMAllProfiles(profilesArray);

  mMouseLightingController->setMLightingDict(defaultProfileDict);
  mMouseLightingController->setMDeviceSettingsDict(deviceSettingsDict);
  mMouseLightingController->setMAllProfiles(profilesArray);
  mMouseLightingController->setShowsDevice(!mShowsDefaults);

  mMouseMaintenenceController->setMMaintenanceSettingsDict(deviceSettingsDict);
  mMouseMaintenenceController->setMMaintenanceDict(defaultProfileDict);
  mMouseMaintenenceController->setMDefaultDict(defaultProfile);

  mMouseProfilesController->setMProfileDelegate(this);
  mMouseMacrosController->setMMacroDelegate(this);
  mMousePerformanceController->setMMousePerformanceDelegate(this);
  mMouseButtonController->setMButtonDelegate(this);
  mMouseMaintenenceController->setMMouseMaintenanceDelegate(this);
  mMouseLightingController->setMLightingDelegate(this);

  mMouseButtonController->setMButtonWindow(mouseMainView);
  mMousePerformanceController->setMPerformanceWindow(mouseMainView);
  mMouseProfilesController->setMProfilesWindow(mouseMainView);
  mMouseMacrosController->setMMacrosWindow(mouseMainView);
  mMouseMaintenenceController->setMMaintenanceWindow(mouseMainView);
}

void MouseMainController::populateUISettings() {
  mMouseButtonController->populateUISettings();
  mMousePerformanceController->populateUISettings();
}

void MouseMainController::updateUISettings() {
  mWindow.showProfileName(QString::fromStdString(defaultProfileDict[keys::ProfileName].toString()));
  mMouseButtonController->updateUISettings();
  mMousePerformanceController->updateUISettings();
  mMouseProfilesController->updateUISettings();
  mMouseLightingController->updateUISettings();
  mMouseMaintenenceController->updateUISettings();
  // The Macros tab is refreshed through its table only.
  refreshControllersTableDisplay();
  tellTray();
}

void MouseMainController::refreshControllersTableDisplay() {
  mMouseProfilesController->refreshTableDisplay();
  mMouseMacrosController->refreshTableDisplay();
}

void MouseMainController::reload() {
  loadLatestSettings();
  setProperties();
  updateUISettings();
}

void MouseMainController::registerHelpBook() {
  HelpBook::registerBook(QLatin1String(helpBookTitle), Bundle::mainBundle().resourcePath(QStringLiteral("help")));
}

void MouseMainController::openRegisteredHelpBook() {
  HelpBook::openPage(QLatin1String(helpBookTitle), QLatin1String(helpBookFirstPage));
}

void MouseMainController::clickHelpButton() {
  openRegisteredHelpBook();
}

void MouseMainController::openHelpOfTab() {
  const QString page = mMouseTabView->currentWidget()->property(helpPageProperty).toString();
  HelpBook::openPage(QLatin1String(helpBookTitle), page);
}

void MouseMainController::selectTabAtIndex(int index) {
  mMouseTabView->setCurrentIndex(index);
}

void MouseMainController::showErrorForErrorCode(int code) {
  struct Texts {
    const char* title;
    const char* description;
    const char* button;
  };
  static constexpr Texts texts[] = {
      {"lkeyCommErrorTitle", "lkeyCommErrorDesc", "lkeyOK"},
      {"lkeyDeviceNotFoundTitle", "lkeyDeviceNotFoundDesc", "lkeyOK"},
  };
  if (code < 0 || code >= static_cast<int>(std::size(texts))) return;
  const Texts& text = texts[code];
  VRCErrorHandler::showErrorWithTitle(localized(text.title), localized(text.description), localized(text.button),
                                      QString(), mouseMainView);
}

void MouseMainController::showErrorDialog() {
  mDeviceConnectionWindow->open();
}

void MouseMainController::hideErrorDialog() {
  mDeviceConnectionWindow->close();
}

void MouseMainController::clickOKButton() {
  hideErrorDialog();
}

}  // namespace skarn
