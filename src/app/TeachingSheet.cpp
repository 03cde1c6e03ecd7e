#include "app/TeachingSheet.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>
#include <utility>
#include <vector>

#include "app/MouseText.h"
#include "buttons/ControlRow.h"
#include "buttons/ControlTable.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "ui_TeachingSheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace {

struct Step {
  std::string identifier;
  const ControlDescriptor* control;  // nullptr for a fixed key, which the picture does not show
};

// By the numbers on the mouse, then the fixed keys.
const std::vector<Step>& steps() {
  static const std::vector<Step> all = [] {
    std::vector<Step> steps;
    for (const ControlDescriptor& control : controlTable) steps.push_back({std::string(control.identifier), &control});
    for (const std::string_view key : vorn::fixedKeys) steps.push_back({std::string(key), nullptr});
    return steps;
  }();
  return all;
}

QString nameOf(const Step& step) {
  return step.control == nullptr ? controlText(step.identifier) : spokenName(*step.control);
}

constexpr int rowHeight = 28;  // of the summary

bool isWheel(const std::string& source) {
  return source.starts_with("REL_");
}

}  // namespace

TeachingSheet* TeachingSheet::open(QWidget* window, MouseChoice& choice) {
  auto* sheet = new TeachingSheet(window, choice);
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  sheet->QDialog::open();
  sheet->ask(0);
  return sheet;
}

TeachingSheet::TeachingSheet(QWidget* window, MouseChoice& choice)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::TeachingSheet>()), mChoice(choice) {
  mUi->setupUi(this);
  const MouseDescription* mouse = choice.inUse();
  if (mouse != nullptr) {
    mMouse = mouse->id;
    mUi->mTeachingTitle->setText(localized("lkeyTeachingOf").arg(shownName(mouse->name)));
  }
  mUi->mTeachingTitle->setTextFormat(Qt::PlainText);
  mUi->mTeachingPicture->setKeymapPicture(0);
  mUi->mTeachingList->viewport()->setAutoFillBackground(false);
  mRest.setSingleShot(true);
  setFocusPolicy(Qt::StrongFocus);
  wire();
  showMouse();
}

TeachingSheet::~TeachingSheet() = default;

void TeachingSheet::wire() {
  connect(mUi->mTeachingSkip, &QPushButton::clicked, this, &TeachingSheet::skip);
  connect(mUi->mTeachingBack, &QPushButton::clicked, this, &TeachingSheet::back);
  connect(mUi->mTeachingAgain, &QPushButton::clicked, this, [this] { ask(mStep); });
  connect(mUi->mTeachingFinish, &QPushButton::clicked, this, &TeachingSheet::finish);
  connect(mUi->mTeachingResume, &QPushButton::clicked, this, [this] { ask(std::min(mStep, steps().size() - 1)); });
  connect(mUi->mTeachingClose, &QPushButton::clicked, this, &TeachingSheet::accept);
  connect(mUi->mTeachingPicture, &MouseView::controlClicked, this,
          [this](const ControlDescriptor* control) { ask(static_cast<std::size_t>(control->number - 1)); });
  connect(&mRest, &QTimer::timeout, this, &TeachingSheet::skip);
  connect(&mChoice, &MouseChoice::taught, this, &TeachingSheet::taught);
  connect(&mChoice, &MouseChoice::changed, this, &TeachingSheet::showMouse);
  const auto key = [this](const QKeySequence& sequence, QPushButton* button) {
    auto* shortcut = new QShortcut(sequence, this);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, button, [button] {
      if (button->isVisible()) button->click();
    });
    const QString text = QKeySequence(sequence).toString(QKeySequence::NativeText);
    if (button->toolTip().isEmpty()) button->setToolTip(text);
  };
  key(QKeySequence(Qt::CTRL | Qt::Key_Right), mUi->mTeachingSkip);
  key(QKeySequence(Qt::CTRL | Qt::Key_Left), mUi->mTeachingBack);
  key(QKeySequence(Qt::CTRL | Qt::Key_Down), mUi->mTeachingAgain);
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) key(QKeySequence(Qt::CTRL | enter), mUi->mTeachingFinish);
}

void TeachingSheet::showMouse() {
  const MouseDescription* mouse = mChoice.inUse();
  if (mouse == nullptr || mouse->id != mMouse || !mouse->isTeachable()) return reject();
  std::vector<const ControlDescriptor*> missing;
  for (const ControlDescriptor& control : controlTable) {
    if (!mouse->controls.contains(control.identifier)) missing.push_back(&control);
  }
  mUi->mTeachingPicture->setMissing(std::move(missing));
  showStep();
}

// --- Asking

void TeachingSheet::ask(std::size_t step) {
  mRest.stop();
  mStep = step;
  mIsAsking = true;
  mIsHeard = false;
  mUi->mTeachingPages->setCurrentWidget(mUi->mTeachingWalk);
  setFocus();
  showStep();
  mChoice.teach(steps()[step].identifier,
                [sheet = QPointer(this), question = ++mQuestion](MouseChoice::Outcome outcome) {
                  if (!sheet || sheet->mQuestion != question || !sheet->mIsAsking) return;
                  sheet->mIsHeard = outcome == MouseChoice::Outcome::Done;
                  sheet->mIsHeard ? sheet->showStep() : sheet->pause(failureText(outcome));
                });
}

void TeachingSheet::skip() {
  if (mStep + 1 < steps().size()) return ask(mStep + 1);
  finish();
}

void TeachingSheet::back() {
  if (mStep > 0) ask(mStep - 1);
}

void TeachingSheet::pause(const QString& why) {
  mRest.stop();
  mIsAsking = false;
  say(why);
  showStep();
}

void TeachingSheet::taught(const vorn::TaughtControl& taught) {
  const bool isAsked = mIsAsking && mIsHeard && taught.control == steps()[mStep].identifier;
  if (taught.isTaught) note(taught);
  if (!isAsked) return;
  // Nothing was pressed for as long as the engine waits.
  if (!taught.isTaught) return pause(localized("lkeyTeachingTimeout"));
  mIsAsking = false;
  mRest.start(isWheel(taught.source) ? restOfWheel : rest);
  showStep();
}

void TeachingSheet::note(const vorn::TaughtControl& taught) {
  mResults[taught.control] = sourceText(taught.source);
  QString text = localized("lkeyTeachingDone").arg(controlText(taught.control), sourceText(taught.source));
  if (!taught.former.empty()) {
    mResults[taught.former] = QString();
    text += QLatin1Char('\n') + localized("lkeyTeachingLost").arg(controlText(taught.former));
  }
  say(text);
}

void TeachingSheet::finish() {
  mRest.stop();
  mIsAsking = false;
  mChoice.teach({}, [](MouseChoice::Outcome) {});
  QStringList lines;
  for (const Step& step : steps()) {
    const auto found = mResults.find(step.identifier);
    if (found == mResults.end()) continue;
    const QString control = controlText(step.identifier);
    lines << (found->second.isEmpty() ? localized("lkeyTeachingListLost").arg(control)
                                      : localized("lkeyTeachingListLine").arg(control, found->second));
  }
  mUi->mTeachingList->clear();
  mUi->mTeachingList->addItems(lines);
  for (int row = 0; row < mUi->mTeachingList->count(); ++row)
    mUi->mTeachingList->item(row)->setSizeHint(QSize(0, rowHeight));
  mUi->mTeachingList->setVisible(!lines.isEmpty());
  mUi->mTeachingSummary->setText(localized(lines.isEmpty() ? "lkeyTeachingNothing" : "lkeyTeachingSummary"));
  mUi->mTeachingPages->setCurrentWidget(mUi->mTeachingEnd);
  // Return has no button here: the last key of the mouse may still arrive.
  mUi->mTeachingList->isVisibleTo(this) ? mUi->mTeachingList->setFocus() : setFocus();
}

void TeachingSheet::done(int result) {
  mRest.stop();
  if (std::exchange(mIsAsking, false)) mChoice.teach({}, [](MouseChoice::Outcome) {});
  QDialog::done(result);
}

// --- Showing

void TeachingSheet::showStep() {
  const MouseDescription* mouse = mChoice.inUse();
  if (mouse == nullptr) return;
  const Step& step = steps()[mStep];
  const char* now = "lkeyTeachingNowNothing";
  if (mouse->taught.contains(step.identifier)) {
    now = "lkeyTeachingNowTaught";
  } else if (mouse->controls.contains(step.identifier)) {
    now = "lkeyTeachingNowUsual";
  }
  // What is pressed before the engine listens would be lost.
  const bool isListening = mIsAsking && mIsHeard;
  const char* prompt = "lkeyTeachingPaused";
  if (mIsAsking) prompt = isListening ? "lkeyTeachingPrompt" : "lkeyTeachingWait";
  if (mRest.isActive()) prompt = "lkeyTeachingNext";
  mUi->mTeachingPicture->setHighlighted(step.control);
  mUi->mTeachingPlace->setText(localized("lkeyTeachingPlace").arg(mStep + 1).arg(steps().size()));
  mUi->mTeachingControl->setText(nameOf(step));
  mUi->mTeachingPrompt->setText(localized(prompt));
  mUi->mTeachingNow->setText(localized(now));
  mUi->mTeachingBack->setEnabled(mStep > 0);
  mUi->mTeachingAgain->setVisible(!mIsAsking && !mRest.isActive());
  mUi->mTeachingControl->setAccessibleName(isListening ? nameOf(step) + QStringLiteral(". ") + localized(prompt)
                                                       : nameOf(step));
  if (!isListening) return;
  QAccessibleEvent told(mUi->mTeachingControl, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void TeachingSheet::say(const QString& text) {
  mUi->mTeachingResult->setText(text);
  QAccessibleEvent told(mUi->mTeachingResult, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

// --- What the mouse may send here too

void TeachingSheet::keyPressEvent(QKeyEvent* event) {
  const bool isAtEnd = mUi->mTeachingPages->currentWidget() == mUi->mTeachingEnd;
  if (isAtEnd && event->key() == Qt::Key_Escape) return reject();
  event->accept();
}

bool TeachingSheet::focusNextPrevChild(bool isNext) {
  return mUi->mTeachingPages->currentWidget() == mUi->mTeachingEnd && QDialog::focusNextPrevChild(isNext);
}

bool TeachingSheet::event(QEvent* event) {
  // The wheel is still turning.
  if (event->type() == QEvent::Wheel && mRest.isActive()) mRest.start(restOfWheel);
  return QDialog::event(event);
}

}  // namespace skarn
