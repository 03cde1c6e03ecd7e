#include "app/TypedKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <array>
#include <utility>

#include "app/KeyUsages.h"
#include "widgets/KeyCaptureField.h"

namespace skarn {

namespace hid = vorn::hid;
using std::chrono::milliseconds;
using vorn::HidUsage;

namespace {

bool isModifier(HidUsage usage) {
  return usage.page == hid::keyboardPage && usage.usage >= hid::firstModifier && usage.usage <= hid::lastModifier;
}

// The display systems whose native scan codes are the kernel's keys.
bool tellsScanCodes() {
  const QString platform = QGuiApplication::platformName();
  return platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"));
}

milliseconds timeOf(const QInputEvent& event) {
  if (event.timestamp() != 0) return milliseconds(event.timestamp());
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

// The widget that is the window to which the receiver belongs: keys come to the native window first, and from there to
// what has the focus in it.
const QWidget* windowOf(const QObject* receiver) {
  if (const auto* const native = qobject_cast<const QWindow*>(receiver)) return QWidget::find(native->winId());
  const auto* const widget = qobject_cast<const QWidget*>(receiver);
  return widget != nullptr ? widget->window() : nullptr;
}

// What tells a key from all others as long as it is down.
quint64 identityOf(const QKeyEvent& event) {
  const quint32 code = event.nativeScanCode();
  return code != 0 ? code : (quint64{1} << 32 | static_cast<quint32>(event.key()));
}

}  // namespace

TypedKeys::TypedKeys(vorn::EngineLink& link, QWidget& window, TypedRecording recording)
    : mLink(link), mWindow(window), mRecording(std::move(recording)) {
  // Much longer than what belongs together takes to arrive. The delays of a macro are those of the events all the same.
  mSettling.setInterval(100);
  mSettling.setSingleShot(true);
  connect(&mSettling, &QTimer::timeout, this, &TypedKeys::settleLetGo);
  qApp->installEventFilter(this);
}

TypedKeys::~TypedKeys() = default;

bool TypedKeys::isRecordingIn(const QWidget* window) const {
  // A sheet or a menu over the window has its own use for the keyboard, and so has another window.
  return mRecording.isRunning() && window == &mWindow && QApplication::activeModalWidget() == nullptr &&
         QApplication::activePopupWidget() == nullptr;
}

bool TypedKeys::listensIn(const QWidget* window) const {
  return KeyCaptureField::listeningIn(window) != nullptr || isRecordingIn(window);
}

bool TypedKeys::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      // Accepted, no shortcut has it; the key press follows.
      if (!takesShortcut(windowOf(watched), *static_cast<QKeyEvent*>(event))) return false;
      event->accept();
      return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return takesKey(windowOf(watched), *static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
      return takesButton(watched, *static_cast<QMouseEvent*>(event));
    case QEvent::ApplicationStateChange:
      if (QGuiApplication::applicationState() == Qt::ApplicationActive) return false;
      releaseAll();
      mTaken.clear();
      return false;
    default:
      return false;
  }
}

bool TypedKeys::isRepetition(const QKeyEvent& event) const {
  return mLetGo && event.timestamp() != 0 && mLetGo->identity == identityOf(event) && mLetGo->time == timeOf(event);
}

bool TypedKeys::takesShortcut(const QWidget* window, const QKeyEvent& event) const {
  return listensIn(window) || mTaken.contains(identityOf(event)) || isRepetition(event);
}

bool TypedKeys::takesKey(const QWidget* window, const QKeyEvent& event) {
  const quint64 identity = identityOf(event);
  if (event.type() == QEvent::KeyPress && isRepetition(event)) {
    mTaken.insert(identity);
    mLetGo.reset();
    return true;
  }
  const bool wasTaken = mTaken.contains(identity);
  if (event.isAutoRepeat() && wasTaken) return true;
  settleLetGo();
  if (event.type() == QEvent::KeyRelease) {
    mTaken.remove(identity);
    const auto usage = usageOf(event, tellsScanCodes());
    if (usage && wasTaken && event.timestamp() != 0 && !isModifier(*usage)) {
      letGo(event, *usage);
    } else if (usage) {
      takeRelease(KeyCaptureField::listeningIn(window), *usage, timeOf(event));
    }
    return wasTaken;
  }
  if (!listensIn(window)) return false;
  if (event.isAutoRepeat()) return true;
  mTaken.insert(identity);
  const auto usage = usageOf(event, tellsScanCodes());
  return !usage || takesPress(KeyCaptureField::listeningIn(window), event, *usage);
}

bool TypedKeys::takesPress(KeyCaptureField* field, const QKeyEvent& event, HidUsage usage) {
  constexpr hid::Usage pauseKey = 72;
  if (field == nullptr && usage == HidUsage{hid::keyboardPage, pauseKey}) {
    if (event.modifiers().testFlag(Qt::ShiftModifier)) {
      mRecording.discard();
    } else {
      mRecording.stop();
    }
    return true;
  }
  const milliseconds time = timeOf(event);
  if (!isModifier(usage)) pressModifiers(event, time);
  press(usage, time);
  if (field == nullptr) return true;
  field->noteTyped(isModifier(usage), true);
  if (!field->isListening()) releaseAll();
  return true;
}

void TypedKeys::letGo(const QKeyEvent& event, HidUsage usage) {
  mLetGo = {identityOf(event), usage, timeOf(event)};
  mSettling.start();
}

void TypedKeys::settleLetGo() {
  mSettling.stop();
  if (!mLetGo) return;
  const LetGo settled = *std::exchange(mLetGo, std::nullopt);
  release(settled.usage, settled.time);
}

void TypedKeys::takeRelease(KeyCaptureField* field, HidUsage usage, milliseconds time) {
  if (!release(usage, time) || field == nullptr) return;
  field->noteTyped(isModifier(usage), false);
  if (!field->isListening()) releaseAll();
}

bool TypedKeys::takesButton(const QObject* watched, const QMouseEvent& event) {
  const auto* const widget = qobject_cast<const QWidget*>(watched);
  const auto usage = usageOf(event.button());
  if (widget == nullptr || !usage || !mRecording.isRunning()) return false;
  settleLetGo();
  const QWidget* const area = mRecording.captureArea();
  if (event.type() == QEvent::MouseButtonRelease) return release(*usage, timeOf(event));
  if (!isRecordingIn(widget->window()) || (widget != area && !area->isAncestorOf(widget))) return false;
  press(*usage, timeOf(event));
  return true;
}

void TypedKeys::pressModifiers(const QKeyEvent& event, milliseconds time) {
  constexpr std::array<std::pair<Qt::KeyboardModifier, hid::Usage>, 4> modifiers = {{
      {Qt::ControlModifier, hid::leftControl},
      {Qt::ShiftModifier, hid::leftShift},
      {Qt::AltModifier, hid::leftAlt},
      {Qt::MetaModifier, hid::leftCommand},
  }};
  for (const auto& [modifier, left] : modifiers) {
    constexpr hid::Usage toRight = hid::rightControl - hid::leftControl;
    const auto isHeld = [&](hid::Usage usage) {
      return std::ranges::find(mHeld, HidUsage{hid::keyboardPage, usage}) != mHeld.end();
    };
    if (event.modifiers().testFlag(modifier) && !isHeld(left) && !isHeld(static_cast<hid::Usage>(left + toRight)))
      press({hid::keyboardPage, left}, time);
  }
}

void TypedKeys::press(HidUsage usage, milliseconds time) {
  if (std::ranges::find(mHeld, usage) != mHeld.end()) return;
  mHeld.push_back(usage);
  mLatest = time;
  mLink.type({usage.page, usage.usage, true, time});
}

bool TypedKeys::release(HidUsage usage, milliseconds time) {
  const auto found = std::ranges::find(mHeld, usage);
  if (found == mHeld.end()) return false;
  mHeld.erase(found);
  mLatest = time;
  mLink.type({usage.page, usage.usage, false, time});
  return true;
}

void TypedKeys::releaseAll() {
  settleLetGo();
  // The last one pressed goes first, as fingers do it.
  while (!mHeld.empty()) release(mHeld.back(), mLatest);
}

}  // namespace skarn
