#include "app/MouseControls.h"

#include <QHelpEvent>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>
#include <chrono>
#include <utility>

#include "app/HistoryLine.h"
#include "app/MouseChoice.h"
#include "app/MouseMainWindow.h"
#include "app/MouseSheet.h"
#include "app/MouseText.h"
#include "app/StateStrip.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "ui_MouseMainWindow.h"
#include "widgets/FieldUndo.h"
#include "widgets/PlainToolTip.h"

namespace skarn {

namespace {

// It comes once, so there is time to read it.
constexpr std::chrono::seconds offerLifetime{30};

}  // namespace

MouseControls::MouseControls(MouseMainWindow& window, MouseChoice& choice, WindowMemory memory)
    : mWindow(window), mChoice(choice), mMemory(std::move(memory)) {
  connect(window.ui().mChooseMouse, &QToolButton::clicked, this, &MouseControls::openSheet);
  // What is said there has the name of a device in it.
  window.ui().mChooseMouse->installEventFilter(this);
  connect(&choice, &MouseChoice::changed, this, [this] {
    refresh();
    withdrawOffer();
    offerOnce();
    emit changed();
  });
  refresh();
}

MouseControls::~MouseControls() {
  // It looks at the choice.
  delete mSheet;
}

bool MouseControls::canChoose() const {
  return obstacle().isEmpty();
}

QString MouseControls::obstacle() const {
  if (mIsRecording) return localized("lkeyChooseMouseRecording");
  if (mChoice.isRefused()) return localized("lkeyMiceNotOffered");
  return mChoice.isKnown() ? QString() : localized("lkeyMiceUnknown");
}

void MouseControls::setRecording(bool isRecording) {
  mIsRecording = isRecording;
  refresh();
  withdrawOffer();
}

void MouseControls::refresh() {
  QToolButton* button = mWindow.ui().mChooseMouse;
  const QString why = obstacle();
  // The keyboard would go on to some other control.
  if (!why.isEmpty() && mWindow.focusWidget() == button) mWindow.ui().mMouseTabView->tabBar()->setFocus();
  button->setEnabled(why.isEmpty());
  button->setToolTip(why.isEmpty() ? toolTip() : why);
  if (mSheet && !mChoice.isKnown()) mSheet->reject();
}

QString MouseControls::toolTip() const {
  const MouseDescription* used = mChoice.inUse();
  return used == nullptr ? localized("lkeyChooseMouse")
                         : localized("lkeyChooseOtherMouse").arg(shownName(used->name), stateText(*used));
}

bool MouseControls::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
  QToolButton* button = mWindow.ui().mChooseMouse;
  showPlainToolTip(*static_cast<QHelpEvent*>(event), button->toolTip(), button);
  return true;
}

void MouseControls::openSheet() {
  if (!canChoose() || (mSheet && mSheet->isVisible())) return;
  endTyping(mWindow);
  mSheet = MouseSheet::open(&mWindow, mChoice);
  withdrawOffer();
}

QDialog* MouseControls::sheet() const {
  return mSheet;
}

StripButton MouseControls::stripButton() const {
  if (!mChoice.isKnown()) return {};
  return {localized("lkeyChooseMouse"), localized("lkeyChooseMouseHint"), canChoose()};
}

// --- The offer

const MouseDescription* MouseControls::better() const {
  const MouseDescription* used = mChoice.inUse();
  if (!canChoose() || used == nullptr || !used->isVirtual()) return nullptr;
  const auto isUsable = [](const MouseDescription& mouse) {
    return !mouse.isVirtual() && mouse.isPresent && mouse.isAllowed;
  };
  const auto found = std::ranges::find_if(mChoice.mice(), isUsable);
  return found == mChoice.mice().end() ? nullptr : &*found;
}

void MouseControls::offerOnce() {
  const MouseDescription* mouse = better();
  if (mHasOffered || mouse == nullptr || mSheet || !mWindow.historyLine().text().isEmpty()) return;
  mHasOffered = true;
  // What cannot be remembered would be offered again and again.
  if (mMemory.isMouseOffered() || !mMemory.setMouseOffered()) return;
  mOffer = localized("lkeyMouseOffer").arg(shownName(mouse->name));
  mWindow.historyLine().say(mOffer, {localized("lkeyChooseMouse"), [this] { openSheet(); }, offerLifetime});
}

void MouseControls::withdrawOffer() {
  if (mOffer.isEmpty()) return;
  const MouseDescription* mouse = better();
  const bool isStill = mouse != nullptr && mOffer == localized("lkeyMouseOffer").arg(shownName(mouse->name));
  if (isStill && !mSheet) return;
  if (mWindow.historyLine().text() == mOffer) mWindow.historyLine().fallSilent();
  mOffer.clear();
}

}  // namespace skarn
