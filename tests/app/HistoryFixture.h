// The real window over a scripted link whose engine keeps a history of changes.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QToolButton>
#include <string>
#include <vector>

#include "app/HistoryLine.h"
#include "app/HubFixture.h"
#include "protocol/History.h"

namespace skarn::test {

// An entry of the engine's list.
inline vorn::PropertyList historyEntry(std::int64_t id, std::string_view kind,
                                       std::initializer_list<vorn::PropertyList::Pair> subject = {},
                                       bool isUndone = false) {
  namespace words = vorn::history::keys;
  vorn::PropertyList entry = vorn::PropertyList::dictionary({{words::ID, id},
                                                             {words::Time, 1'000'000'000 + id},
                                                             {words::Kind, kind},
                                                             {words::IsUndone, isUndone},
                                                             {words::SourceApp, vorn::configuratorIdentifier}});
  for (const auto& [key, value] : subject) entry = entry.with(key, value);
  return entry;
}

inline vorn::PropertyList macroDeleted(std::int64_t id, std::string_view name) {
  return historyEntry(id, vorn::history::kinds::MacroDeleted, {{vorn::history::keys::Macro, name}});
}
inline vorn::PropertyList sensitivityOf(std::int64_t id, std::string_view profile) {
  return historyEntry(id, vorn::history::kinds::Sensitivity, {{vorn::history::keys::Profile, profile}});
}
inline vorn::PropertyList undone(const vorn::PropertyList& entry) {
  return entry.with(vorn::history::keys::IsUndone, true);
}

struct HistoryFixture : HubFixture {
  using Call = vorn::HistoryCall;
  using Request = vorn::HistoryRequest;
  using Outcome = vorn::HistoryAnswer::Outcome;

  // Connected to an engine with these changes, the newest first, in a window that is in front.
  explicit HistoryFixture(std::vector<vorn::PropertyList> entries = {}) {
    startConnected(bundleWith({"Work"}, {"Jump"}));
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) QTest::qFail("the window is active", __FILE__, __LINE__);
    answerEntries(std::move(entries));
    link.historyRequests.clear();
  }

  void answerEntries(std::vector<vorn::PropertyList> entries) {
    if (!link.answerHistory({Outcome::Done, vorn::PropertyList::array(std::move(entries))}))
      QTest::qFail("the entries are asked for", __FILE__, __LINE__);
  }
  // The engine has these changes from now on, and says so.
  void tell(std::vector<vorn::PropertyList> entries) {
    link.historyRequests.clear();
    link.historyChanged();
    const auto isAsked = [this] { return link.historyRequests == std::vector{Request{Call::Entries}}; };
    if (!QTest::qWaitFor(isAsked)) QTest::qFail("the entries are asked for anew", __FILE__, __LINE__);
    answerEntries(std::move(entries));
    link.historyRequests.clear();
  }
  // Nothing but this has been asked of the history since the last look.
  bool isAsked(const std::vector<Request>& requests) {
    return std::exchange(link.historyRequests, std::vector<Request>()) == requests;
  }
  bool hasAskedNothing() { return isAsked({}); }

  QToolButton& undoButton() { return *window.ui().mUndoButton; }
  QToolButton& redoButton() { return *window.ui().mRedoButton; }
  QToolButton& historyButton() { return *window.ui().mHistoryButton; }
  static void click(QAbstractButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
  // To whatever has the keyboard.
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : QApplication::activeWindow(), key, modifiers);
  }
  HistoryLine& line() { return window.historyLine(); }
  QString lineText() { return line().isVisible() ? line().text() : QString(); }
  QPushButton& lineButton() { return *line().findChild<QPushButton*>(); }
};

}  // namespace skarn::test
