// The Macros tab: the list of macros, and the events of the one that is selected as lines of text. It never talks to
// the engine; it keeps copies of the slices that its owner hands it and redraws from them. Main thread. Slices of a
// wrong shape are survived: what cannot be read shows nothing.
#pragma once

#include <QPointer>
#include <QStringListModel>
#include <QWidget>
#include <memory>

#include "macros/MacroControllerDelegate.h"
#include "model/NotificationCenter.h"
#include "model/PropertyList.h"

class QTableView;

namespace skarn {

class MacrosTableModel;

namespace Ui {
class MouseMacrosController;
}

class MouseMacrosController : public QWidget {
  Q_OBJECT

 public:
  explicit MouseMacrosController(QWidget* parent = nullptr);
  ~MouseMacrosController() override;

  // --- What the owner hands over. Delegate, window and centre are not owned.
  const vorn::PropertyList& mMacrosSettingsArray() const { return macrosSettingsArray; }
  void setMMacrosSettingsArray(const vorn::PropertyList& macros) { macrosSettingsArray = macros; }
  MacroControllerDelegate* mMacroDelegate() const { return macroDelegate; }
  void setMMacroDelegate(MacroControllerDelegate* delegate) { macroDelegate = delegate; }
  QWidget* mMacrosWindow() const { return macrosWindow; }
  void setMMacrosWindow(QWidget* window) { macrosWindow = window; }
  vorn::NotificationCenter* mNotificationCenter() const { return notificationCenter; }
  void setMNotificationCenter(vorn::NotificationCenter* center) { notificationCenter = center; }

  // The lines of the selected macro: an array of strings, an event each, with a delay line between two events.
  const vorn::PropertyList& mMacroDetailsArray() const { return macroDetailsArray; }
  // The table of macros; a row is a macro ID.
  QTableView* mMacroTableView() const;
  QTableView* mMacroDetailsTableView() const;
  bool mIsRecording() const { return isRecording; }
  void setMIsRecording(bool recording) { isRecording = recording; }

  // --- Drawing
  void updateUISettings();
  // Reloads the table of macros; the selected row stays selected by its index.
  void refreshTableDisplay();
  // Replaces the lines of the selected macro and redraws them.
  void updateSelectedMacroWithMacroDetails(const vorn::PropertyList& lines);
  void setStateOfMacroTableWithState(bool enabled);
  // Ends a recording that is under way: the engine stops it and keeps what it caught, and the lines are fetched again.
  // Without a recording it does nothing.
  void stopAllMacroRecording();
  void enableControlsState(bool enabled);

 private:
  void macroTableViewSelectionDidChange();
  int selectedMacro() const;  // -1 when none is selected

  std::unique_ptr<Ui::MouseMacrosController> mUi;
  MacrosTableModel* mModel;
  QStringListModel* mDetailsModel;
  vorn::PropertyList macrosSettingsArray = vorn::PropertyList::array();
  vorn::PropertyList macroDetailsArray = vorn::PropertyList::array();
  MacroControllerDelegate* macroDelegate = nullptr;
  QPointer<QWidget> macrosWindow;
  vorn::NotificationCenter* notificationCenter = nullptr;
  bool isRecording = false;
  bool mIsReloading = false;
};

}  // namespace skarn
