#include "macros/MouseMacrosController.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMouseEvent>
#include <QShortcut>
#include <QTableView>

#include "macros/MacroDetailsDelegate.h"
#include "macros/MacroDetailsModel.h"
#include "macros/MacroMenus.h"
#include "macros/MacroNameDelegate.h"
#include "macros/MacroSheets.h"
#include "macros/MacrosTableModel.h"
#include "macros/NumberOnlyTextField.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "ui_MouseMacrosController.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr float disabledGearOpacity = 0.73F;
constexpr int recordingTick = 250;  // milliseconds

// Of several the first.
int selectedRow(const QTableView& table) {
  int first = -1;
  for (const QModelIndex& index : table.selectionModel()->selectedRows()) {
    if (first < 0 || index.row() < first) first = index.row();
  }
  return first;
}

}  // namespace

// --- Wiring

MouseMacrosController::MouseMacrosController(QWidget* parent)
    : QWidget(parent),
      mUi(std::make_unique<Ui::MouseMacrosController>()),
      mModel(new MacrosTableModel(this)),
      mDetailsModel(new MacroDetailsModel(this)),
      mNames(new MacroNameDelegate(this)),
      mDelays(new MacroDetailsDelegate(this)),
      mEditDelayWindow(new MacroDelaySheet(this)),
      mEditEventWindow(new MacroEventSheet(this)),
      mBeep([] { QApplication::beep(); }) {
  mUi->setupUi(this);
  awakeFromNib();
}

MouseMacrosController::~MouseMacrosController() {
  setMNotificationCenter(nullptr);
}

void MouseMacrosController::awakeFromNib() {
  setUpTables();
  setUpButtons();
  setupSettingsMenus();
  setUpSheets();
  editedRow = 0;
  mMacroEventEditHIDCode = 0;
  mCountDecimal = 0;
  mIsDecimalPointDuplicate = false;
  setRecordTitle(true);
  refreshTableDisplay();
}

void MouseMacrosController::setUpTables() {
  NSTableViewMacroSubClass& macros = *mUi->mMacroTableView;
  macros.setMMacrosController(this);
  macros.setModel(mModel);
  macros.setItemDelegate(mNames);
  macros.horizontalHeader()->setSectionResizeMode(MacrosTableModel::Name, QHeaderView::Stretch);
  macros.horizontalHeader()->setSectionResizeMode(MacrosTableModel::Events, QHeaderView::Fixed);
  connect(macros.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MouseMacrosController::macroTableViewSelectionDidChange);
  connect(mModel, &MacrosTableModel::nameEdited, this, &MouseMacrosController::nameEdited);
  connect(mNames, &MacroNameDelegate::editingStarted, this, &MouseMacrosController::nameEditingStarted);
  connect(mNames, &MacroNameDelegate::editingEnded, this, &MouseMacrosController::nameEditingEnded);

  connect(&macros, &RightClickMenuTable::deletionAsked, mUi->mDeleteMacro, &QToolButton::click);
  mUi->mNoMacrosView->installEventFilter(this);
  mUi->mNothingFoundLabel->hide();

  NSTableViewMacroDetailsSubClass& lines = *mUi->mMacroDetailsTableView;
  lines.setMMacrosController(this);
  lines.setModel(mDetailsModel);
  lines.setItemDelegate(mDelays);
  connect(mDelays, &MacroDetailsDelegate::editingStarted, this, &MouseMacrosController::delayEditingStarted);
  connect(mDelays, &MacroDetailsDelegate::editingEnded, this, &MouseMacrosController::delayEditingEnded);
  connect(mDelays, &MacroDetailsDelegate::editRefused, this, [this] { mBeep(); });
  connect(lines.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MouseMacrosController::detailsTableViewSelectionDidChange);
  connect(&lines, &RightClickMenuTable::deletionAsked, mUi->mDeleteMacroDetails, &QToolButton::click);
  // Return or a double click.
  connect(&lines, &QTableView::activated, this, &MouseMacrosController::editLineInPlace);
  for (QLabel* label : {mUi->mNoEventsTitle, mUi->mNoEventsLabel})
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void MouseMacrosController::setUpButtons() {
  connect(mUi->mAddMacro, &QToolButton::clicked, this, &MouseMacrosController::clickAddMacro);
  connect(mUi->mDeleteMacro, &QToolButton::clicked, this, &MouseMacrosController::clickDeleteMacro);
  connect(mUi->mAddMacroDetails, &QToolButton::clicked, this, &MouseMacrosController::clickAddMacroDetails);
  connect(mUi->mDeleteMacroDetails, &QToolButton::clicked, this, &MouseMacrosController::clickDeleteMacroDetails);
  connect(mUi->mRecordMacroDetails, &QPushButton::clicked, this, &MouseMacrosController::clickRecordMacroDetails);
  connect(mUi->mDiscardRecording, &QPushButton::clicked, this, &MouseMacrosController::clickDiscardRecording);
  connect(mUi->mUndoDiscard, &QPushButton::clicked, this, &MouseMacrosController::clickUndoDiscard);
  connect(mUi->mTypeText, &QPushButton::clicked, this,
          [this] { clickMacroDetailsSettingsMenuItem(macroDetailsMenuTags::TypeText); });
  connect(mUi->mInsertKey, &QPushButton::clicked, this,
          [this] { clickMacroDetailsSettingsMenuItem(macroDetailsMenuTags::insertAfter + macroDetailsMenuTags::Key); });
  connect(mUi->mMacroSearch, &QLineEdit::textChanged, this, &MouseMacrosController::searchAnew);
  mUi->mMacroSearch->installEventFilter(this);
  auto* findKey = new QShortcut(QKeySequence(QKeySequence::Find), this);
  connect(findKey, &QShortcut::activated, this, [this] {
    mUi->mMacroSearch->setFocus(Qt::ShortcutFocusReason);
    mUi->mMacroSearch->selectAll();
  });
  mRecordingTicks.setInterval(recordingTick);
  connect(&mRecordingTicks, &QTimer::timeout, this, &MouseMacrosController::tellRecordingProgress);
  tintIcons();
}

void MouseMacrosController::tintIcons() {
  const QColor color = palette().color(QPalette::WindowText);
  for (QToolButton* button : {mUi->mAddMacro, mUi->mAddMacroDetails}) {
    button->setIcon(tintedIcon(QStringLiteral("add.png"), color));
  }
  for (QToolButton* button : {mUi->mDeleteMacro, mUi->mDeleteMacroDetails}) {
    button->setIcon(tintedIcon(QStringLiteral("remove.png"), color));
  }
  QColor faint = color;
  faint.setAlphaF(disabledGearOpacity);
  QIcon gear;
  gear.addPixmap(tintedImage(QStringLiteral("GearOn.png"), color), QIcon::Normal);
  gear.addPixmap(tintedImage(QStringLiteral("GearOff.png"), faint), QIcon::Disabled);
  for (QToolButton* button : {mUi->mSettingsMacro, mUi->mSettingsMacroDetails}) button->setIcon(gear);
}

void MouseMacrosController::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) tintIcons();
}

// An empty list has its menu too.
bool MouseMacrosController::eventFilter(QObject* watched, QEvent* event) {
  if (watched == mUi->mMacroSearch && event->type() == QEvent::KeyPress)
    return takesSearchKey(static_cast<QKeyEvent&>(*event));
  if (watched != mUi->mNoMacrosView || event->type() != QEvent::MouseButtonPress) return false;
  const auto* press = static_cast<QMouseEvent*>(event);
  if (press->button() != Qt::RightButton) return false;
  mUi->mMacroTableView->showMenuAt(press->globalPosition().toPoint());
  return true;
}

void MouseMacrosController::setUpSheets() {
  connect(mEditDelayWindow, &MacroDelaySheet::confirmed, this, &MouseMacrosController::clickMacroDelayOK);
  connect(mEditDelayWindow, &MacroDelaySheet::cancelled, this, &MouseMacrosController::clickMacroDelayCancel);
  connect(&mEditDelayWindow->mInputMacroDelay(), &NumberOnlyTextField::editRefused, this, [this] { mBeep(); });
  connect(mEditEventWindow, &MacroEventSheet::confirmed, this, &MouseMacrosController::clickMacroEventOK);
  connect(mEditEventWindow, &MacroEventSheet::cancelled, this, &MouseMacrosController::clickMacroEventCancel);
  connect(mEditEventWindow, &MacroEventSheet::keyChosen, this, &MouseMacrosController::takeCaughtKey);
}

// --- State

PropertyList MouseMacrosController::mMacroDetailsArray() const {
  return mDetailsModel->lines();
}

QTableView* MouseMacrosController::mMacroTableView() const {
  return mUi->mMacroTableView;
}

QTableView* MouseMacrosController::mMacroDetailsTableView() const {
  return mUi->mMacroDetailsTableView;
}

QPushButton* MouseMacrosController::mRecordMacroDetails() const {
  return mUi->mRecordMacroDetails;
}

int MouseMacrosController::selectedMacro() const {
  return selectedRow(*mUi->mMacroTableView);
}

int MouseMacrosController::selectedLine() const {
  return selectedRow(*mUi->mMacroDetailsTableView);
}

int MouseMacrosController::macroToAsk() const {
  return macroDelegate == nullptr ? -1 : selectedMacro();
}

void MouseMacrosController::setStateOfTableButtonsWithState(bool enabled) {
  mAreTableButtonsOffered = enabled;
  updateControls();
}

void MouseMacrosController::setStateOfMacroTableWithState(bool enabled) {
  mIsMacroTableOffered = enabled;
  updateControls();
}

void MouseMacrosController::setStateOfTables(bool enabled) {
  setStateOfTableButtonsWithState(enabled);
  setStateOfMacroTableWithState(enabled);
}

void MouseMacrosController::enableControlsState(bool enabled) {
  mHasDeviceConnected = enabled;
  // A table that is disabled would take the typed name over.
  if (!enabled) {
    mNames->discardEdit();
    mDelays->discardEdit();
  }
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
  if (enabled && !isSessionRunning()) setStateOfTables(true);
  updateControls();
}

// Empty when nothing stands in the way.
QString MouseMacrosController::whyDisabled(Needs needs, bool isOffered) const {
  if (!mHasDeviceConnected) return localized("lkeyNoMouseConnected");
  if (!isOffered) return localized("lkeyStopRecordingFirst");
  if (needs == Needs::Nothing) return {};
  if (selectedMacro() < 0) return localized("lkeySelectMacroFirst");
  if (isRenamingMacroName) return localized("lkeyFinishNameFirst");
  if (needs == Needs::Line && !mIsLineDeletionOffered) return localized("lkeySelectLineFirst");
  return {};
}

void MouseMacrosController::updateControls() {
  struct Rule {
    QWidget* control;
    QString why;
  };
  const bool areOffered = mAreTableButtonsOffered;
  const Rule rules[] = {
      {mUi->mAddMacro, whyDisabled(Needs::Nothing, areOffered)},
      {mUi->mSettingsMacro, whyDisabled(Needs::Nothing, areOffered)},
      {mUi->mDeleteMacro,
       selectedMacro() < 0 ? whyDisabled(Needs::Macro, areOffered) : whyDisabled(Needs::Nothing, areOffered)},
      {mUi->mAddMacroDetails, whyDisabled(Needs::Macro, areOffered)},
      {mUi->mSettingsMacroDetails, whyDisabled(Needs::Macro, areOffered)},
      {mUi->mDeleteMacroDetails, whyDisabled(Needs::Line, areOffered)},
      // What records can always be stopped.
      {mUi->mRecordMacroDetails, whyDisabled(isSessionRunning() ? Needs::Nothing : Needs::Macro, true)},
      {mUi->mMacroTableView, whyDisabled(Needs::Nothing, mIsMacroTableOffered)},
      {mUi->mMacroSearch, whyDisabled(Needs::Nothing, mIsMacroTableOffered)},
      {mUi->mMacroDetailsTableView, whyDisabled(Needs::Nothing, true)},
      {mUi->mTypeText, whyDisabled(Needs::Macro, areOffered)},
      {mUi->mInsertKey, whyDisabled(Needs::Macro, areOffered)},
  };
  for (const Rule& rule : rules) {
    const bool isButton = qobject_cast<QToolButton*>(rule.control) != nullptr;
    rule.control->setToolTip(rule.why.isEmpty() && isButton ? rule.control->accessibleName() : rule.why);
    rule.control->setEnabled(rule.why.isEmpty());
  }
  if (mUi->mMacroSearch->isEnabled())
    mUi->mMacroSearch->setToolTip(
        localized("lkeySearchMacrosTip").arg(QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText)));
  tellRecordingProgress();
  tellHowToBegin();
  if (isRecording && mHasDeviceConnected) mUi->mRecordMacroDetails->setToolTip(localized("lkeyWhileRecording"));
}

void MouseMacrosController::updateVisibleParts() {
  const bool hasMacros = mModel->rowCount() > 0;
  const bool hasMacro = selectedMacro() >= 0;
  mUi->mMacroNameScrollView->setVisible(hasMacros);
  mUi->mNoMacrosView->setVisible(!hasMacros);
  // The keyboard must not end up on a button.
  if (!hasMacro && mUi->mMacroDetailsTableView->hasFocus()) mUi->mMacroTableView->setFocus();
  mUi->mMacroDetailsScrollView->setVisible(hasMacro);
  mUi->mNoMacroSelectedLabel->setVisible(!hasMacro);
  mUi->mNoMacroSelectedLabel->setText(hasMacros ? localized("lkeyNoMacroSelected") : QString());
  mUi->mMacroSearch->setVisible(hasMacros);
  tellHowToBegin();
  tellPressedAtEnd();
}

void MouseMacrosController::tellHowToBegin() {
  const bool isEmpty = mDetailsModel->rowCount() == 0;
  mUi->mNoEventsLabel->setVisible(isEmpty);
  mUi->mNoEventsLabel->setText(localized(isRecording ? "lkeyTypeEvents" : "lkeyHowToBegin"));
  mUi->mNoEventsTitle->setVisible(isEmpty && !isRecording);
  mUi->mBeginningView->setVisible(isEmpty && !isRecording);
}

// --- Drawing and selections

void MouseMacrosController::updateUISettings() {
  refreshTableDisplay();
}

void MouseMacrosController::refreshTableDisplay() {
  const int selected = selectedMacro();
  const auto interrupted = interruptNameEdit();
  // A row that stays selected is no news to anybody.
  mIsReloading = true;
  if (selected >= static_cast<int>(macrosSettingsArray.size())) deselectMacro();
  mModel->setMacros(macrosSettingsArray);
  mIsReloading = false;
  if (mRecorded) {
    followRecordedMacro();
  } else if (!isLineEdited() || !followEditedMacro()) {
    const int row = selectedMacro();
    if (row < 0 ? selected >= 0 : !areLinesOf(row)) macroTableViewSelectionDidChange();
  }
  searchMacros();
  tellWhoPlays();
  updateVisibleParts();
  updateControls();
  followMeantSheet();
  if (interrupted) resumeNameEdit(*interrupted);
}

void MouseMacrosController::macroTableViewSelectionDidChange() {
  if (mIsReloading) return;
  // The lines of another macro must not stay where its own do not come.
  showLines(PropertyList::array());
  tellWhoPlays();
  updateControls();
  fetchLines();
}

bool MouseMacrosController::areLinesOf(int row) {
  const PropertyList& record = macrosSettingsArray.at(row);
  if (record == mShownRecord) return true;
  const bool isSame = record[keys::MacroName] == mShownRecord[keys::MacroName] && areShownLinesOf(record);
  if (isSame) {
    mShownRecord = record;
    mAreLinesNewer = false;
  }
  return isSame;
}

bool MouseMacrosController::areShownLinesOf(const PropertyList& record) const {
  return vorn::eventParser::getMessagesArray(vorn::macroEvents(record)) == mDetailsModel->lines();
}

void MouseMacrosController::deselectMacro() {
  mUi->mMacroTableView->selectionModel()->clear();
}

void MouseMacrosController::selectMacroRow(int row) {
  // What is selected is seen, whatever is sought.
  mUi->mMacroTableView->setRowHidden(row, false);
  mUi->mNothingFoundLabel->hide();
  mUi->mMacroTableView->selectRow(row);
  mUi->mMacroTableView->scrollTo(mModel->index(row, MacrosTableModel::Name));
}

void MouseMacrosController::fetchLines() {
  const int macro = macroToAsk();
  if (macro < 0) return;
  mShownRecord = macrosSettingsArray.at(macro);
  // The engine knows nothing of a macro that is being added.
  if (!mIsAddMacro) macroDelegate->getMacroDetailsForMacroAtIndex(macro);
}

}  // namespace skarn
