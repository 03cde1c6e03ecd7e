// What the window offers for the history of changes: the buttons of the footer, their keys, the line that tells what
// was done, and the sheet with the list. Main thread.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "model/PropertyList.h"

class QKeyEvent;
class QToolButton;

namespace skarn {

class HistorySheet;
class MouseMainWindow;
class SettingsHistory;
struct HistoryReport;

class HistoryControls : public QObject {
  Q_OBJECT

 public:
  // Both outlive the controls. isRecording: whether the window records, so that the keyboard and what was recorded so
  // far are not to be touched; shownProfile: the record of the profile that the window shows.
  HistoryControls(MouseMainWindow& window, SettingsHistory& history, std::function<bool()> isRecording,
                  std::function<vorn::PropertyList()> shownProfile);
  ~HistoryControls() override;

  // Why nothing can be undone, as there is no mouse or no engine; empty where there are both. What is shown closes.
  void setObstacle(const QString& why);
  // Looks again whether the window records.
  void refresh();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void wireButtons();
  void wireKeys();
  // Why nothing can be undone or made again now, whatever has been changed; empty for no such reason.
  QString obstacle() const;
  void set(QToolButton& button, const QString& why, const QString& tip);
  void undo();
  void redo();
  void undoDeletion();
  void openSheet();
  void showDeletion(std::int64_t id, const QString& text);
  void endDeletionUnlessNewest();
  void tell(const HistoryReport& report);
  void say(const QString& text);
  // The keyboard leaves a button that is switched off for the tabs, where the same key does nothing, and comes back.
  void keepKeyboard(QToolButton& button, bool isEnabled);
  bool isForTheSettings(const QKeyEvent& key) const;

  MouseMainWindow& mWindow;
  SettingsHistory& mHistory;
  std::function<bool()> mIsRecording;
  std::function<vorn::PropertyList()> mShownProfile;
  QString mObstacle;
  QPointer<HistorySheet> mSheet;
  QPointer<QToolButton> mLostKeyboard;
  std::optional<std::int64_t> mDeletion;  // which the line offers to take back
};

}  // namespace skarn
