#include "app/HistoryControls.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QTabBar>
#include <QToolButton>
#include <utility>

#include "app/HistoryLine.h"
#include "app/HistorySheet.h"
#include "app/MouseMainWindow.h"
#include "app/SettingsHistory.h"
#include "platform/HistoryText.h"
#include "platform/Localization.h"
#include "protocol/History.h"
#include "ui_MouseMainWindow.h"
#include "widgets/FieldUndo.h"
#include "widgets/PlainToolTip.h"

namespace skarn {

namespace words = vorn::history::keys;
using vorn::PropertyList;
using Result = HistoryReport::Result;

namespace {

const QKeySequence undoKey(Qt::CTRL | Qt::Key_Z);
const QKeySequence redoKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);

// Ours, and what the desktop has for it.
QList<QKeySequence> keysFor(QKeySequence::StandardKey standard, const QKeySequence& own) {
  QList<QKeySequence> sequences = QKeySequence::keyBindings(standard);
  if (!sequences.contains(own)) sequences.prepend(own);
  return sequences;
}

bool isOneOf(const QKeyEvent& key, const QList<QKeySequence>& sequences) {
  return sequences.contains(QKeySequence(key.keyCombination()));
}

QString failureText(const HistoryReport& report) {
  const auto either = [&](const char* undo, const char* redo) { return localized(report.isRedo ? redo : undo); };
  switch (report.result) {
    case Result::NothingLeft:
      return either("lkeyNothingToUndo", "lkeyNothingToRedo");
    case Result::ChangedSince:
      return either("lkeyUndoChangedSince", "lkeyRedoChangedSince");
    case Result::NotSaved:
      return either("lkeyUndoNotSaved", "lkeyRedoNotSaved");
    case Result::NoHistory:
      return localized("lkeyHistoryNotKept");
    case Result::NoAnswer:
      return localized("lkeyHistoryNoAnswer");
    case Result::OtherCameBetween:
      return either("lkeyUndoOtherBetween", "lkeyRedoOtherBetween");
    case Result::Done:
      break;
  }
  return {};
}

QString doneText(const HistoryReport& report, const PropertyList& shownProfile) {
  if (report.steps == 0) return {};
  const QString last = changeTextBeside(report.last, shownProfile);
  const QString done = report.steps == 1
                           ? localized(report.isRedo ? "lkeyRedoDone" : "lkeyUndoDone").arg(last)
                           : localized(report.isRedo ? "lkeyRedoDoneSeveral" : "lkeyUndoDoneSeveral").arg(report.steps);
  if (report.conflicts == 0) return done;
  return done +
         (report.conflicts == 1 ? localized("lkeyUndoConflict") : localized("lkeyUndoConflicts").arg(report.conflicts));
}

}  // namespace

HistoryControls::HistoryControls(MouseMainWindow& window, SettingsHistory& history, std::function<bool()> isRecording,
                                 std::function<PropertyList()> shownProfile)
    : mWindow(window), mHistory(history), mIsRecording(std::move(isRecording)), mShownProfile(std::move(shownProfile)) {
  wireButtons();
  wireKeys();
  connect(&history, &SettingsHistory::changed, this, [this] {
    endDeletionUnlessNewest();
    refresh();
  });
  connect(&history, &SettingsHistory::stepsEnded, this, &HistoryControls::tell);
  connect(&history, &SettingsHistory::deleted, this,
          [this](const PropertyList& entry) { showDeletion(entry[words::ID].toInt64(), deletionText(entry)); });
  qApp->installEventFilter(this);
  refresh();
}

HistoryControls::~HistoryControls() {
  // It looks at the history.
  delete mSheet;
}

void HistoryControls::wireButtons() {
  const auto& ui = mWindow.ui();
  connect(ui.mUndoButton, &QToolButton::clicked, this, &HistoryControls::undo);
  connect(ui.mRedoButton, &QToolButton::clicked, this, &HistoryControls::redo);
  connect(ui.mHistoryButton, &QToolButton::clicked, this, &HistoryControls::openSheet);
}

void HistoryControls::wireKeys() {
  const auto wire = [this](const QList<QKeySequence>& sequences, void (HistoryControls::*operation)()) {
    auto* shortcut = new QShortcut(&mWindow);
    shortcut->setKeys(sequences);
    // A key that is held down would take back more than is seen.
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, operation);
  };
  wire(keysFor(QKeySequence::Undo, undoKey), &HistoryControls::undo);
  wire(keysFor(QKeySequence::Redo, redoKey), &HistoryControls::redo);
  wire({QKeySequence(Qt::CTRL | Qt::Key_H)}, &HistoryControls::openSheet);
}

// --- What can be done

void HistoryControls::setObstacle(const QString& why) {
  mObstacle = why;
  if (!why.isEmpty()) {
    mDeletion.reset();
    mWindow.historyLine().fallSilent();
    if (mSheet) mSheet->reject();
  }
  refresh();
}

QString HistoryControls::obstacle() const {
  if (!mObstacle.isEmpty()) return mObstacle;
  if (mIsRecording()) return localized("lkeyHistoryRecording");
  if (!mHistory.isKnown()) return localized("lkeyHistoryUnknown");
  return mHistory.isKept() ? QString() : localized("lkeyHistoryNotKept");
}

void HistoryControls::refresh() {
  const auto& ui = mWindow.ui();
  const QString why = obstacle();
  const auto offer = [&](QToolButton& button, const PropertyList& next, const char* tip, const char* nothing) {
    const bool isOffered = why.isEmpty() && next.isDictionary();
    if (isOffered) {
      set(button, {}, localized(tip).arg(changeText(next)));
    } else {
      set(button, why.isEmpty() ? localized(nothing) : why, {});
    }
  };
  offer(*ui.mUndoButton, mHistory.nextUndo(), "lkeyUndoTip", "lkeyNothingToUndo");
  offer(*ui.mRedoButton, mHistory.nextRedo(), "lkeyRedoTip", "lkeyNothingToRedo");
  set(*ui.mHistoryButton, why, localized("lkeyHistoryTip"));
  if (mDeletion && mIsRecording()) mWindow.historyLine().fallSilent();
}

void HistoryControls::set(QToolButton& button, const QString& why, const QString& tip) {
  const bool isEnabled = why.isEmpty();
  keepKeyboard(button, isEnabled);
  button.setToolTip(isEnabled ? tip : why);
}

void HistoryControls::keepKeyboard(QToolButton& button, bool isEnabled) {
  QTabBar* refuge = mWindow.ui().mMouseTabView->tabBar();
  if (!isEnabled && mWindow.focusWidget() == &button) {
    refuge->setFocus();
    mLostKeyboard = &button;
  }
  button.setEnabled(isEnabled);
  if (!isEnabled || mLostKeyboard != &button) return;
  mLostKeyboard.clear();
  if (mWindow.focusWidget() == refuge) button.setFocus();
}

// --- Doing it

void HistoryControls::undo() {
  // The list may not know of a change yet that the window has just made.
  if (const QString why = obstacle(); !why.isEmpty()) return say(why);
  endTyping(mWindow);
  mHistory.undo();
}

void HistoryControls::redo() {
  if (const QString why = obstacle(); !why.isEmpty()) return say(why);
  endTyping(mWindow);
  mHistory.redo();
}

void HistoryControls::undoDeletion() {
  if (const auto id = std::exchange(mDeletion, std::nullopt)) mHistory.undoExactly(*id);
  mWindow.historyLine().fallSilent();
}

void HistoryControls::openSheet() {
  if (const QString why = obstacle(); !why.isEmpty()) return say(why);
  endTyping(mWindow);
  if (!mSheet) mSheet = HistorySheet::open(&mWindow, mHistory);
}

// --- Telling

void HistoryControls::showDeletion(std::int64_t id, const QString& text) {
  mWindow.historyLine().say(text, {localized("lkeyUndo"), [this] { undoDeletion(); }});
  mDeletion = id;
}

void HistoryControls::endDeletionUnlessNewest() {
  if (!mDeletion || mHistory.nextUndo()[words::ID].toInt64() == *mDeletion) return;
  mDeletion.reset();
  mWindow.historyLine().fallSilent();
}

void HistoryControls::tell(const HistoryReport& report) {
  const QString done = doneText(report, mShownProfile());
  const QString failure = failureText(report);
  if (!done.isEmpty() && !failure.isEmpty()) return say(localized("lkeyHistoryThen").arg(done, failure));
  // Nothing is to be told of going where the settings are.
  if (const QString text = done + failure; !text.isEmpty()) say(text);
}

void HistoryControls::say(const QString& text) {
  if (mSheet) return mSheet->say(text);
  mDeletion.reset();
  mWindow.historyLine().say(text);
}

// --- Keys and tooltips

bool HistoryControls::isForTheSettings(const QKeyEvent& key) const {
  const QWidget* field = QApplication::focusWidget();
  if (field == nullptr || field->window() != &mWindow) return false;
  if (isOneOf(key, keysFor(QKeySequence::Undo, undoKey))) return !canUndoTyping(field);
  return isOneOf(key, keysFor(QKeySequence::Redo, redoKey)) && !canRedoTyping(field);
}

bool HistoryControls::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // A text field claims these keys even where it has nothing to undo.
    if (!isForTheSettings(*static_cast<QKeyEvent*>(event))) return false;
    event->ignore();
    return true;
  }
  if (event->type() != QEvent::ToolTip) return false;
  const auto& ui = mWindow.ui();
  auto* button = qobject_cast<QToolButton*>(watched);
  if (button == nullptr || (button != ui.mUndoButton && button != ui.mRedoButton)) return false;
  // It has names that the user gave.
  showPlainToolTip(*static_cast<QHelpEvent*>(event), button->toolTip(), button);
  return true;
}

}  // namespace skarn
