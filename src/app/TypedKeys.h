// Hands what a person types into the window on to the engine while a key is captured or a macro recorded, as a desktop
// shows the keyboard to nobody else. Keys that are taken work nothing in the window, neither do their repetitions and
// their release. Mouse buttons are taken over the capture area of a recording only. Main thread.
#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "link/EngineLink.h"
#include "model/KernelKeys.h"

class QKeyEvent;
class QMouseEvent;
class QWidget;

namespace skarn {

class KeyCaptureField;

// What records, as far as typing is concerned.
struct TypedRecording {
  std::function<bool()> isRunning;
  std::function<const QWidget*()> captureArea;  // where clicks belong to the recording
  std::function<void()> stop;                   // what the Pause key does, as no other key is free
  std::function<void()> discard;                // what it does with Shift
};

class TypedKeys : public QObject {
  Q_OBJECT

 public:
  // Looks at the events of the whole application until it goes. The link outlives it. window: that which records.
  TypedKeys(vorn::EngineLink& link, QWidget& window, TypedRecording recording);
  ~TypedKeys() override;

  // Tells the engine that nothing is held any more: before a capture or recording ends, and when the focus goes.
  void releaseAll();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The last key that was taken and let go. X11 tells a key that repeats by a release and a press at the same moment,
  // and whether Qt knows them for that depends on how fast it reads: the release counts when no such press follows.
  struct LetGo {
    quint64 identity = 0;
    vorn::HidUsage usage;
    std::chrono::milliseconds time{};
  };

  // The window: which the key is given to. Not the active one: displays bring the first keys of a window before or
  // after Qt counts it as active.
  bool isRecordingIn(const QWidget* window) const;
  bool listensIn(const QWidget* window) const;
  bool isRepetition(const QKeyEvent& event) const;
  // Whether no shortcut may have it.
  bool takesShortcut(const QWidget* window, const QKeyEvent& event) const;
  void letGo(const QKeyEvent& event, vorn::HidUsage usage);
  void settleLetGo();
  bool takesKey(const QWidget* window, const QKeyEvent& event);
  bool takesPress(KeyCaptureField* field, const QKeyEvent& event, vorn::HidUsage usage);
  void takeRelease(KeyCaptureField* field, vorn::HidUsage usage, std::chrono::milliseconds time);
  bool takesButton(const QObject* watched, const QMouseEvent& event);
  void press(vorn::HidUsage usage, std::chrono::milliseconds time);
  // False when the engine was not told of a press.
  bool release(vorn::HidUsage usage, std::chrono::milliseconds time);
  // Modifiers that went down before anything listened, and those of on-screen keyboards, which have no keys.
  void pressModifiers(const QKeyEvent& event, std::chrono::milliseconds time);

  vorn::EngineLink& mLink;
  QWidget& mWindow;
  TypedRecording mRecording;
  std::vector<vorn::HidUsage> mHeld;  // told as pressed, in that order
  QSet<quint64> mTaken;               // keys that are down and were taken: all they do until they are up is
  std::chrono::milliseconds mLatest{};
  std::optional<LetGo> mLetGo;
  QTimer mSettling;
};

}  // namespace skarn
