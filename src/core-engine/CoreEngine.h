// The engine as a whole: its parts, put together and run until it is told to end.
#pragma once

#include "core-engine/Log.h"
#include "core-engine/Options.h"
#include "core-engine/Scheduler.h"
#include "core-engine/device/Mice.h"
#include "core-engine/device/MiceService.h"
#include "core-engine/device/MouseInUse.h"
#include "core-engine/device/RealMice.h"
#include "core-engine/device/VirtualDevice.h"
#include "core-engine/device/VirtualMouseService.h"
#include "core-engine/focus/FocusService.h"
#include "core-engine/focus/FocusSources.h"
#include "core-engine/focus/ProfileFollowing.h"
#include "core-engine/focus/SessionDisplays.h"
#include "core-engine/history/History.h"
#include "core-engine/history/HistoryJournal.h"
#include "core-engine/history/HistoryService.h"
#include "core-engine/news/Announcer.h"
#include "core-engine/news/BusNewsPort.h"
#include "core-engine/news/DeviceNews.h"
#include "core-engine/news/News.h"
#include "core-engine/news/NotificationScreen.h"
#include "core-engine/news/ScreenMessages.h"
#include "core-engine/news/ScreenTexts.h"
#include "core-engine/play/AssignmentPlayer.h"
#include "core-engine/play/ProfileChanger.h"
#include "core-engine/play/ProgramLauncher.h"
#include "core-engine/record/HeardKeys.h"
#include "core-engine/record/KeyCapture.h"
#include "core-engine/record/ListeningClient.h"
#include "core-engine/record/MacroRecorder.h"
#include "core-engine/record/TypedKeysService.h"
#include "core-engine/requests/ClientRegistry.h"
#include "core-engine/requests/ReplyPorts.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "core-engine/requests/RequestIntake.h"
#include "core-engine/storage/DiskThread.h"
#include "core-engine/storage/FactoryDefaults.h"
#include "core-engine/storage/PosixFileSystem.h"
#include "core-engine/storage/SettingsBackups.h"
#include "core-engine/storage/SettingsFile.h"
#include "core-engine/storage/SettingsStore.h"
#include "core-engine/storage/SettingsTurns.h"
#include "ports/ConnectionProcess.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

class CoreEngine : private RequestObserver {
 public:
  // The paths in the options are absolute; an empty defaultsFile is none. The log outlives the engine.
  CoreEngine(const Options& options, Log& log);
  ~CoreEngine() override;
  CoreEngine(const CoreEngine&) = delete;
  CoreEngine& operator=(const CoreEngine&) = delete;

  // Takes the engine's port and the settings folder, and serves requests until SIGTERM or SIGINT. Returns the exit
  // status of the program: 0, 3 where another engine is there, 1 after any other failure. The log has the reason. Call
  // it once, on the thread that made the engine; nobody else begins a thread before.
  int run();

 private:
  bool claimFolder();
  // Gives everybody an answer whose request has arrived; what the time does not suffice for is refused.
  void end();
  void logReady();
  std::optional<Bytes> receive(const LocalMessagePort::Message& message);
  // Soon after the start, a request or another mouse the memory that it took is given back to the system.
  void giveMemoryBackLater();
  void hasServed(const RequestKind& kind, const Request& request) override;
  void serve(const LocalMessagePort::Message& message, std::function<void()> done);
  // Does the work when the requests that the connection has sent before are served.
  bool takeInTurn(const std::string& connection, const RequestIntake::Work& work);
  void handle(const DeviceEvent& event);
  // Brings the mouse to the settings in force, and has it tell of its keys while somebody records or captures.
  void updateDevice();
  // A save may have ended.
  void noteSaved();
  // Lets go of everything that is held, and waits until what that changes is saved.
  void releaseAll();
  void portLost(const std::string& portName);
  // What the sources say of the application in front has become another.
  void focusChanged();
  // A key from the window of a client. False when the connection is none of those that record or capture.
  bool noteTyped(const std::string& connection, const KeyChanged& key);

  Log& mLog;
  RunLoop mLoop;
  PosixFileSystem mFiles;
  BusReplyPorts mReplyPorts;
  SettingsFile mFile;
  RunLoopScheduler mScheduler{mLoop};
  // What goes along with the changes to the disk lasts longer than the store.
  History mHistory;
  HistoryJournal mHistoryJournal;
  SettingsBackups mBackups;
  DiskThread mDisk{[this] { mLoop.perform([this] { noteSaved(); }); }};
  SettingsStore mStore;
  SettingsTurns mTurns{mStore};
  FactoryDefaults mDefaults;
  VirtualDevice mVirtualDevice;
  std::unique_ptr<RealMice> mRealMice;
  MouseInUse mDevice{mVirtualDevice};
  Mice mMice;
  ClientRegistry mClients;
  BusNewsPort mNewsPort;
  News mNews{mNewsPort, mScheduler};
  HistoryService mHistoryService{mHistory, mBackups, mStore, [this](const std::string& connection, const auto& work) {
                                   return takeInTurn(connection, work);
                                 }};
  DeviceNews mDeviceNews{mDevice, mNewsPort};
  NotificationScreen mScreen{mScheduler};
  ScreenMessages mScreenMessages{mDevice, mScreen, screenTextsFor(localeOfMessages())};
  Announcer mAnnouncer{mClients, mReplyPorts, mDevice, mDeviceNews, mScheduler};
  // Whose recording and whose capture runs.
  ListeningClient mRecordingClient{[this] { mRecorder.discard(); }};
  ListeningClient mCapturingClient{[this] { mCapture.stop(mCapture.client()); }};
  MacroRecorder mRecorder{mNewsPort, mScheduler};
  KeyCapture mCapture{mNewsPort};
  HeardKeys mHeard{mDevice, mScheduler, mRecorder, mCapture};
  ProfileChanger mProfiles{mStore};
  ProfileFollowing mFollowing;
  SessionDisplays mDisplays{mLoop, mScheduler};
  FocusSources mFocusSources;
  FocusService mFocusService;
  std::unique_ptr<ProgramLauncher> mLauncher;
  EngineParts mParts{mStore,     mDevice,   mClients, mDefaults, mLog,     mNewsPort,
                     mScheduler, mRecorder, mCapture, mHeard,    mProfiles};
  AssignmentPlayer mPlayer{mParts, *mLauncher};
  VirtualMouseService mVirtualMouse{mVirtualDevice, mScheduler, mTurns, [this] { return mMice.isVirtualInUse(); }};
  MiceService mMiceService{mMice};
  TypedKeysService mTypedKeys{
      [this](const std::string& connection, const KeyChanged& key) { return noteTyped(connection, key); }};
  RequestDispatcher mDispatcher{mParts, mReplyPorts};
  RequestIntake mIntake{mLog, mScheduler,
                        [this](const auto& message, const std::function<void()>& done) { serve(message, done); },
                        askForProcess};
  bool mIsGivingMemoryBack = false;
  PropertyList mAppliedSettings;  // by the mouse
};

}  // namespace vorn::engine
