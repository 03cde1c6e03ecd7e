#include "app/MouseControls.h"

#include <QTabBar>
#include <QToolButton>
#include <algorithm>
#include <chrono>
#include <utility>

#include "app/HistoryLine.h"
#include "app/MouseChoice.h"
#include "app/MouseMainWindow.h"
#include "app/MouseSheet.h"
#include "app/StateStrip.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "ui_MouseMainWindow.h"
#include "widgets/FieldUndo.h"

namespace skarn {

namespace {

// It comes once, so there is time to read it.
constexpr std::chrono::seconds offerLifetime{30};

}  // namespace

MouseControls::MouseControls(MouseMainWindow& window, MouseChoice& choice, WindowMemory memory)
    : mWindow(window), mChoice(choice), mMemory(std::move(memory)) {
  connect(window.ui().mChooseMouse, &QToolButton::clicked, this, &MouseControls::openSheet);
  connect(&choice, &MouseChoice::changed, this, [this] {
    refresh();
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
}

void MouseControls::refresh() {
  QToolButton* button = mWindow.ui().mChooseMouse;
  const QString why = obstacle();
  // The keyboard would go on to some other control.
  if (!why.isEmpty() && mWindow.focusWidget() == button) mWindow.ui().mMouseTabView->tabBar()->setFocus();
  button->setEnabled(why.isEmpty());
  button->setToolTip(why.isEmpty() ? localized("lkeyChooseMouse") : why);
  if (mSheet && !mChoice.isKnown()) mSheet->reject();
}

void MouseControls::openSheet() {
  if (!canChoose() || (mSheet && mSheet->isVisible())) return;
  endTyping(mWindow);
  mSheet = MouseSheet::open(&mWindow, mChoice);
}

QDialog* MouseControls::sheet() const {
  return mSheet;
}

StripButton MouseControls::stripButton() const {
  if (!mChoice.isKnown()) return {};
  return {localized("lkeyChooseMouse"), localized("lkeyChooseMouseHint"), canChoose()};
}

void MouseControls::offerOnce() {
  if (mHasOffered || !canChoose() || mSheet || !mWindow.historyLine().text().isEmpty()) return;
  const MouseDescription* used = mChoice.inUse();
  if (used == nullptr || !used->isVirtual()) return;
  const auto isUsable = [](const MouseDescription& mouse) {
    return !mouse.isVirtual() && mouse.isPresent && mouse.isAllowed;
  };
  const auto found = std::ranges::find_if(mChoice.mice(), isUsable);
  if (found == mChoice.mice().end()) return;
  mHasOffered = true;
  // What cannot be remembered would be offered again and again.
  if (mMemory.isMouseOffered() || !mMemory.setMouseOffered()) return;
  mWindow.historyLine().say(localized("lkeyMouseOffer").arg(shownName(found->name)),
                            {localized("lkeyChooseMouse"), [this] { openSheet(); }, offerLifetime});
}

}  // namespace skarn
