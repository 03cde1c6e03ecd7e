#include "macros/MacroPlaySheet.h"

#include <utility>

#include "macros/TrialField.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "ui_MacroPlaySheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace {

int delayOf(const vorn::PropertyList& event) {
  return event[vorn::keys::Delay].toInt();
}

QString lineOf(const vorn::PropertyList& event) {
  return QString::fromStdString(vorn::eventParser::parseSequence(event).at(1).toString()).trimmed();
}

}  // namespace

MacroPlaySheet::MacroPlaySheet(QWidget* window, const QString& name, vorn::MacroEventList events)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::MacroPlaySheet>()), mEvents(std::move(events)) {
  mUi->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  mUi->mPlayTitle->setTextFormat(Qt::PlainText);
  mUi->mPlayTitle->setText(localized("lkeyPlayMacro").arg(shownName(name)));
  mTimer.setSingleShot(true);
  mTimer.setTimerType(Qt::PreciseTimer);
  connect(&mTimer, &QTimer::timeout, this, &MacroPlaySheet::step);
  connect(mUi->mPlayStart, &QPushButton::clicked, this, [this] { mIsPlaying ? stop() : start(); });
  connect(mUi->mPlayClose, &QPushButton::clicked, this, &MacroPlaySheet::reject);
  mUi->mPlayStart->setFocus();
}

MacroPlaySheet::~MacroPlaySheet() = default;

void MacroPlaySheet::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) start();
}

void MacroPlaySheet::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  if (!event->spontaneous()) stop();
}

void MacroPlaySheet::setPlaying(bool isPlaying) {
  mIsPlaying = isPlaying;
  mUi->mPlayStart->setText(localized(isPlaying ? "lkeyStopAction" : "lkeyPlayAction"));
}

void MacroPlaySheet::tell(const QString& text) {
  mUi->mPlayProgress->setText(text);
}

void MacroPlaySheet::start() {
  mUi->mPlayField->begin();
  mNext = 0;
  tell({});
  setPlaying(true);
  mTimer.start(mEvents.empty() ? 0 : delayOf(mEvents.front()));
}

void MacroPlaySheet::stop() {
  if (!mIsPlaying) return;
  mTimer.stop();
  setPlaying(false);
  tell(localized("lkeyPlayStopped").arg(static_cast<int>(mNext)).arg(static_cast<int>(mEvents.size())));
}

void MacroPlaySheet::step() {
  if (mNext < mEvents.size()) {
    const vorn::PropertyList& event = mEvents[mNext++];
    mUi->mPlayField->play(event);
    tell(localized("lkeyPlayProgress")
             .arg(static_cast<int>(mNext))
             .arg(static_cast<int>(mEvents.size()))
             .arg(lineOf(event)));
  }
  if (mNext < mEvents.size()) {
    mTimer.start(delayOf(mEvents[mNext]));
    return;
  }
  setPlaying(false);
  tell(mEvents.size() == 1 ? localized("lkeyPlayEndedOne")
                           : localized("lkeyPlayEnded").arg(static_cast<int>(mEvents.size())));
}

}  // namespace skarn
