// The Macros tab: the list of macros, and beside it the events of the selected one as lines of text. It never talks to
// the engine; it keeps copies of the slices that its owner hands it, asks its delegate for every change and fetches the
// lines again afterwards. Main thread. Slices of a wrong shape are survived: what cannot be read shows nothing. A call
// of the delegate blocks and may call back: setMMacrosSettingsArray, refreshTableDisplay,
// updateSelectedMacroWithMacroDetails and the two setState operations are safe at any time.
//
// The title of the record button, "Record" or "Stop" in every language, is the state of the tab: under "Stop" a
// recording or the capture of one key runs, and the button ends it. The button begins with "Stop" and turns to "Record"
// when the tab is first shown.
//
// Rows of the details table: even rows are events, odd rows the delays between them. A single line is edited by the
// request for it. An event is read and replaced under 8-bit numbers, so one beyond row 255, or of a macro beyond row
// 255, is edited by replacing the whole sequence, as is everything that concerns several lines or moves or adds some.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "macros/MacroControllerDelegate.h"
#include "model/MacroEdits.h"
#include "model/MacroLines.h"
#include "model/NotificationCenter.h"
#include "model/PropertyList.h"
#include "model/RememberedRecord.h"

class QAction;
class QDialog;
class QKeyEvent;
class QMenu;
class QPushButton;
class QTableView;

namespace skarn {

class MacroDelaySheet;
class MacroDetailsDelegate;
class MacroDetailsModel;
class MacroEventSheet;
class MacroNameDelegate;
class MacrosTableModel;
struct MacroMenuEntry;
struct MacroMenuState;

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
  // Where they are others than before, an open menu of the tab closes: it was opened for a row as it was.
  void setMMacrosSettingsArray(const vorn::PropertyList& macros);
  // All profiles, to tell which controls play a macro and which ones a deletion concerns.
  void setMAllProfiles(const vorn::PropertyList& profiles);
  MacroControllerDelegate* mMacroDelegate() const { return macroDelegate; }
  void setMMacroDelegate(MacroControllerDelegate* delegate) { macroDelegate = delegate; }
  QWidget* mMacrosWindow() const { return macrosWindow; }
  void setMMacrosWindow(QWidget* window) { macrosWindow = window; }
  vorn::NotificationCenter* mNotificationCenter() const { return notificationCenter; }
  // Observes the recorded lines and the caught keys there, and no longer in an earlier centre. A centre must be taken
  // away (null) before it goes.
  void setMNotificationCenter(vorn::NotificationCenter* center);
  // Sounds where an edit is refused; the desktop's beep unless set otherwise.
  void setBeep(std::function<void()> beep) { mBeep = std::move(beep); }

  // --- State
  // The lines of the selected macro: an array of strings, an event each, with a delay line between two events.
  vorn::PropertyList mMacroDetailsArray() const;
  // The table of macros; a row is a macro ID.
  QTableView* mMacroTableView() const;
  QTableView* mMacroDetailsTableView() const;
  QPushButton* mRecordMacroDetails() const;
  // A recording runs, a new or an appended one.
  bool mIsRecording() const { return isRecording; }
  void setMIsRecording(bool recording) { isRecording = recording; }
  bool mIsRenamingMacroName() const { return isRenamingMacroName; }
  int mEditedRow() const { return editedRow; }  // of the table of macros, -1 once no name is being edited

  // --- Drawing
  void updateUISettings();
  // Reloads the table of macros; the selected row stays selected by its index.
  void refreshTableDisplay();
  // Replaces the lines of the selected macro and redraws them. lines: array of finished lines, or of macro events,
  // which become lines here.
  void updateSelectedMacroWithMacroDetails(const vorn::PropertyList& lines);
  // The add, delete and gear buttons of both tables, as far as the selection allows them.
  void setStateOfTableButtonsWithState(bool enabled);
  void setStateOfMacroTableWithState(bool enabled);
  // A mouse is there or not.
  void enableControlsState(bool enabled);

  // --- Recording
  // Records anew or, under "Stop", ends the recording or capture that runs: the engine keeps what it caught, and the
  // lines are fetched again.
  void clickRecordMacroDetails();
  // Ends a recording without saving it; the macro has its events again.
  void clickDiscardRecording();
  // Saves what was discarded last after all, unless the macro has other lines by now.
  void clickUndoDiscard();
  // Records at the end of the macro.
  void clickAddMacroDetails();
  // Ends a recording or capture as the record button does; without one it does nothing.
  // Where mouse buttons are recorded.
  const QWidget* captureArea() const;
  void stopAllMacroRecording();
  // Puts "Stop" on the record button, whatever runs.
  void setRecordButtonToStop() { setRecordTitle(true); }
  // page: the page that the tab view shows now.
  void tabViewDidSelectTabViewItem(const QWidget* page);

  // --- Macros
  // The name itself, or with a number in parentheses where macros of the list have it already.
  static std::string checkForDuplicateMacroName(const vorn::PropertyList& macros, std::string_view usingDefaultName);
  void clickAddMacro();
  void clickDeleteMacro();
  void clickMacroSettingsMenuItem(int tag);
  void loadPanel();
  void loadSaveAsPanel();

  // --- Lines
  void clickDeleteMacroDetails();
  void clickMacroDetailsSettingsMenuItem(int tag);
  void clickMacroDelayOK();
  void clickMacroDelayCancel();
  void clickMacroEventOK();
  void clickMacroEventCancel();
  // A delay in place, anything else on its sheet.
  void editLineInPlace();
  // Whether a key of the table is a shortcut of the menu; it is carried out then, or refused with a beep.
  bool takesLineKey(const QKeyEvent& key);
  bool takesMacroKey(const QKeyEvent& key);

  // --- Menus
  // A right-click menu with the items of the gear menu, enabled as they are now.
  void fillMacroMenu(QMenu& menu);
  void fillMacroDetailsMenu(QMenu& menu);
  // Whether an item of the menus, known by its title, can be chosen now.
  bool validateMenuItem(const QAction& item) const;

 protected:
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Menu {
    std::span<const MacroMenuEntry> entries;
    QString operation;
    void (MouseMacrosController::*chosen)(int tag);
  };
  // An edit of a name that had to end because its macro moved or is gone.
  struct InterruptedEdit {
    std::string macro;             // its name
    int row;                       // where it stands now, -1 when it is gone
    std::optional<QString> typed;  // none as long as nothing has been typed
  };
  // What an open sheet for a line is for, or the edit of a delay in place.
  struct EditedLine {
    vorn::RememberedRecord macro;
    vorn::RememberedLine line;
    bool isInPlace = false;
    std::optional<QString> typed{};  // in place, while other lines take the place of those that are shown
  };
  // An open sheet for an edit of several lines.
  struct MeantSheet {
    vorn::RememberedRecord macro;
    QPointer<QDialog> sheet;
  };
  // What an edit is for: the lines that are selected when it begins, whatever others change meanwhile.
  struct MeantLines {
    vorn::RememberedRecord macro;
    vorn::PropertyList lines;
    std::vector<int> rows;  // ascending
  };
  // A key that is to be inserted, as long as the sheet asks for it.
  struct InsertedKey {
    MeantLines meant;
    bool isBefore;
  };
  // A macro as the engine has it now.
  struct OpenedSequence {
    int macro;
    vorn::PropertyList record;
    vorn::MacroEventList events;
  };
  using SequenceEdit =
      std::function<std::optional<vorn::EditedEvents>(const OpenedSequence& sequence, const std::vector<int>& rows)>;
  using EventMaker = std::function<vorn::MacroEventList(const OpenedSequence& sequence)>;
  using EventMove = std::optional<vorn::EditedEvents> (*)(const vorn::MacroEventList& events,
                                                          const vorn::Places& chosen, bool keepsPairs);
  enum class Needs { Nothing, Macro, Line };  // of a button, besides a mouse

  // Wiring
  void awakeFromNib();
  void setUpTables();
  void setUpButtons();
  void setupSettingsMenus();
  void setUpSheets();
  void registerNotifications();

  // State
  int selectedMacro() const;  // -1 when none is selected
  int selectedLine() const;   // the first of several
  std::vector<int> selectedLines() const;
  bool isSessionRunning() const { return isRecording || mIsAppendMacro || mIsEditingMacro; }
  MacroMenuState menuState() const;
  void setRecordTitle(bool isStop);
  bool isRecordTitleStop() const;
  void setStateOfTables(bool enabled);  // the table buttons and the table of macros
  void updateControls();
  void updateVisibleParts();
  void tellHowToBegin();  // an empty macro
  QString whyDisabled(Needs needs, bool isOffered) const;
  void tintIcons();

  // Menus
  static Menu macroMenu();
  static Menu macroDetailsMenu();
  void fillMenu(QMenu& shown, const Menu& menu);
  // Enables what can be chosen now; the tooltips of all else say why not.
  void offerMenuItems(QMenu& menu) const;

  // Selections
  void macroTableViewSelectionDidChange();
  void detailsTableViewSelectionDidChange();
  void deselectMacro();
  void selectMacroRow(int row);
  void selectLine(int row) { selectLines({row}); }
  void selectLines(const std::vector<int>& rows);
  void offerLineDeletion(bool offered);

  // Requests
  QWidget* sheetWindow() const { return macrosWindow ? macrosWindow.data() : window(); }
  int macroToAsk() const;  // the selected macro, -1 without one or without anybody to ask
  void fetchLines();
  bool areShownLinesOf(const vorn::PropertyList& record) const;
  // Whether the lines that are shown are those of the macro in this row.
  bool areLinesOf(int row);
  void showLines(const vorn::PropertyList& lines);
  void beginRecording();
  void endRecording();
  void rememberRecordedMacro(int row);
  void beginRecordingProgress();
  void tellRecordingProgress();
  void tellPressedAtEnd();
  // A new list has come: the recorded macro stays the selected one wherever it stands now.
  void followRecordedMacro();
  // The engine has dropped the recording; an alert says why. reason: a text with the name of the macro in it.
  void recordingIsLost(const char* reason);
  // The engine has not taken the macro that was shown at the end of the list. before: the list without it; selected:
  // the row that was selected then, -1 for none.
  void takeBack(const vorn::PropertyList& macro, const vorn::PropertyList& before, int selected);
  // An alert whose title names the macro in this row. confirmed is then called with its row, which is selected.
  void askAboutMacro(int row, const char* title, const QString& description,
                     void (MouseMacrosController::*confirmed)(int row));
  // Its row; -1 when it is gone, which is said, or when there is nobody to ask.
  int selectMeantMacro(const vorn::RememberedRecord& macro);
  void deleteMacro(int row);
  void nameEdited(int place, const QString& text);
  void nameEditingStarted(int row);
  void nameEditingEnded();
  // Takes a name or a delay over that is being typed; whatever begins then is meant for the macro that was edited,
  // which is selected.
  void endEdits();
  std::optional<InterruptedEdit> interruptNameEdit();
  void resumeNameEdit(const InterruptedEdit& edit);
  void renameSelectedMacro();
  void duplicateSelectedMacro();
  // Adds the record, its name made unique, and selects it. What the engine said.
  std::optional<vorn::ReturnStatus> addRecord(const vorn::PropertyList& record);
  bool hasSoughtName(int row) const;
  void searchAnew();    // another text is sought: what is hidden then is not selected
  void searchMacros();  // a selected macro stays shown
  bool takesSearchKey(const QKeyEvent& key);
  // The first macro that is shown is selected where none is.
  void goToList();
  void selectMacroNear(int row);  // one that has the sought name
  void tellWhoPlays();
  void importMacro(const vorn::PropertyList& macro, const QString& path);
  void exportMacro(const vorn::RememberedRecord& macro, const QString& path);
  void editSelectedLine();
  void openEventSheet();
  void openInsertSheet(const MeantLines& meant, bool isBefore);
  void beginEventCapture();
  // In a sheet or in place.
  bool isLineEdited() const;
  void rememberEditedLine(int macro, int line);
  // The macro and the line that are edited stay the selected ones wherever they stand now. False when one is gone: the
  // edit is cancelled then, and that is said. True without an edit.
  bool followEditedMacro();
  bool followEditedLine();
  void cancelLineEdit();
  void lineIsGone(const std::string& macro);  // says so
  void endEventCapture();
  void endEventEditing();
  // Shown, and stored when the sheet is confirmed. 0: none.
  void takeCaughtKey(int usage);
  void storeCaughtKey(bool setsPage, bool changesPartner);
  vorn::PropertyList withCaughtKey(const vorn::PropertyList& event, bool setsPage) const;
  void deleteAllLines(int macro);

  // Whole sequences
  MeantLines meantLines() const;
  void rememberMeantSheet(const MeantLines& meant, QDialog& sheet);
  // Closes it, and says why, when its macro is gone.
  void followMeantSheet();
  // Reads the macro anew. Nothing, and the user is told, when it is gone or has other lines than those that are meant.
  std::optional<OpenedSequence> openSequence(const MeantLines& meant);
  // Sends what the edit makes of the macro and selects what it was about; a beep where it makes nothing.
  void editSequence(const MeantLines& meant, const SequenceEdit& edit);
  void insertEvents(const MeantLines& meant, bool isBefore, const EventMaker& made);
  void clickSequenceMenuItem(int tag);
  void insertStroke(const MeantLines& meant, bool isBefore, vorn::HidUsage usage);
  void insertByMenu(int tag);
  void openAddedDelay(const MeantLines& meant, bool isBefore);
  void openDelaysOfMany();
  void deleteSelectedLines();
  bool copySelectedEvents();
  void pasteEvents();
  void moveEvents(EventMove moved);
  void replaceUsage(const MeantLines& meant, vorn::HidUsage usage, bool changesPartner);
  void delayEditingStarted(int row);
  void delayEditingEnded(std::optional<int> milliseconds);
  // Around an exchange of the lines.
  void interruptDelayEdit();
  void resumeDelayEdit();
  void openTextSheet(const QString& text);  // proposed
  void openPlaySheet();

  // News
  void recordedMessages(const vorn::Notification& notification);
  void singleKeyEvents(const vorn::Notification& notification);

  std::unique_ptr<Ui::MouseMacrosController> mUi;
  MacrosTableModel* mModel;
  MacroDetailsModel* mDetailsModel;
  MacroNameDelegate* mNames;
  MacroDetailsDelegate* mDelays;
  MacroDelaySheet* mEditDelayWindow;
  MacroEventSheet* mEditEventWindow;
  std::function<void()> mBeep;

  vorn::PropertyList mShownRecord;                  // whose lines are shown
  bool mAreLinesNewer = false;                      // they have come, but are others than those of that record
  std::optional<vorn::RememberedRecord> mRecorded;  // while a recording runs: what it is for
  std::size_t mMacroCountAtRecording = 0;
  // What the engine still has of a discarded recording, until the next one begins.
  struct DiscardedRecording {
    MeantLines left;  // the macro without it: it is not saved over anything newer
    bool wasAppended;
  };
  std::optional<DiscardedRecording> mDiscarded;
  QElapsedTimer mRecordingTime;
  QTimer mRecordingTicks;
  int mEventsBeforeRecording = 0;
  std::optional<EditedLine> mEdited;
  std::optional<MeantSheet> mMeantSheet;
  std::optional<InsertedKey> mInsertedKey;
  std::function<void(int milliseconds)> mDelayEntered;  // what OK of the delay sheet does, where it is not for one line
  bool mKeepsPairs = true;                              // a press and its release move together
  std::optional<vorn::RememberedRecord> mNamed;         // whose name is being edited
  vorn::PropertyList macrosSettingsArray = vorn::PropertyList::array();
  vorn::PropertyList allProfiles = vorn::PropertyList::array();
  MacroControllerDelegate* macroDelegate = nullptr;
  QPointer<QWidget> macrosWindow;
  vorn::NotificationCenter* notificationCenter = nullptr;

  vorn::PropertyList mSequenceDict = vorn::PropertyList::dictionary();  // the event that the sheet edits
  std::uint8_t mMacroEventEditHIDCode = 0;                              // caught for the sheet; 0 = none
  bool mIsMacroEventEdit = false;                                       // the event sheet is open
  bool mIsLastDiscarded = false;                                        // the last recording was
  bool mIsStopRecording = false;  // a recording was just stopped: the next batch of lines is the last one again
  bool mIsAddMacro = false;       // a new macro is being added
  bool mIsAppendMacro = false;    // the recording that runs appends
  bool isRecording = false;
  bool mIsEditingMacro = false;  // a key is captured for an event
  bool mHasDeviceConnected = true;
  bool isRenamingMacroName = false;
  int editedRow = 0;
  int mCountDecimal = 0;  // the delay input consults neither of these two
  bool mIsDecimalPointDuplicate = false;

  bool mAreTableButtonsOffered = true;
  bool mIsMacroTableOffered = true;
  bool mIsLineDeletionOffered = false;
  bool mIsReloading = false;
  bool mIsSearching = false;
};

}  // namespace skarn
