// What is done to several lines at once, or cannot be said of a single one: the whole sequence is read, changed and
// sent back.
#include <QItemSelectionModel>
#include <QTableView>
#include <algorithm>
#include <utility>

#include "macros/MacroClipboard.h"
#include "macros/MacroDetailsModel.h"
#include "macros/MacroMenus.h"
#include "macros/MacroPlaySheet.h"
#include "macros/MacroSheets.h"
#include "macros/MacroTextSheet.h"
#include "macros/MouseMacrosController.h"
#include "macros/NumberOnlyTextField.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "platform/AddProblem.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "ui_MouseMacrosController.h"
#include "widgets/Alert.h"

namespace skarn {

using vorn::EditedEvents;
using vorn::HidUsage;
using vorn::MacroEventList;
using vorn::Places;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace hid = vorn::hid;
namespace tags = macroDetailsMenuTags;

namespace {

// The events whose rows are among these, and those whose delays are.
Places eventsIn(const std::vector<int>& rows) {
  Places events;
  for (const int row : rows) {
    if (!isDelayLine(row)) events.insert(vorn::eventOfRow(static_cast<std::size_t>(row)));
  }
  return events;
}

Places delaysIn(const std::vector<int>& rows) {
  Places delays;
  for (const int row : rows) {
    if (isDelayLine(row)) delays.insert(vorn::eventOfRow(static_cast<std::size_t>(row)));
  }
  return delays;
}

// Where something comes before or behind the rows; without rows it is the beginning or the end.
std::size_t placeBefore(const std::vector<int>& rows) {
  return rows.empty() ? 0 : vorn::eventOfRow(static_cast<std::size_t>(rows.front()));
}
std::size_t placeBehind(const std::vector<int>& rows, std::size_t end) {
  if (rows.empty()) return end;
  const std::size_t event = vorn::eventOfRow(static_cast<std::size_t>(rows.back()));
  return isDelayLine(rows.back()) ? event : event + 1;
}

HidUsage clickOf(int inserted) {
  switch (inserted) {
    case tags::RightClick:
      return {hid::buttonPage, hid::secondaryButton};
    case tags::MiddleClick:
      return {hid::buttonPage, hid::firstFurtherButton};
    default:
      return {hid::buttonPage, hid::primaryButton};
  }
}

}  // namespace

// --- Selection

std::vector<int> MouseMacrosController::selectedLines() const {
  std::vector<int> rows;
  for (const QModelIndex& row : mUi->mMacroDetailsTableView->selectionModel()->selectedRows())
    rows.push_back(row.row());
  std::ranges::sort(rows);
  return rows;
}

void MouseMacrosController::selectLines(const std::vector<int>& rows) {
  QItemSelection selection;
  for (const int row : rows) {
    if (row >= 0 && row < mDetailsModel->rowCount())
      selection.select(mDetailsModel->index(row), mDetailsModel->index(row));
  }
  QItemSelectionModel& selected = *mUi->mMacroDetailsTableView->selectionModel();
  if (selection.isEmpty()) return selected.clear();
  const QModelIndex current = selection.indexes().constFirst();
  selected.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
  // Without regard to the keys that are held: a shortcut is no click.
  selected.select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  mUi->mMacroDetailsTableView->scrollTo(current);
}

MacroMenuState MouseMacrosController::menuState() const {
  MacroMenuState state{.macro = selectedMacro(),
                       .line = selectedLine(),
                       .lineCount = mDetailsModel->rowCount(),
                       .isRecording = isSessionRunning()};
  for (const int row : selectedLines()) {
    ++(isDelayLine(row) ? state.selectedDelays : state.selectedEvents);
    const std::optional<int> partner = mDetailsModel->partnerOf(row);
    state.hasPair = state.hasPair || partner;
    state.hasLastLine = state.hasLastLine || row == state.lineCount - 1;
    for (const int moved : {row, mKeepsPairs ? partner.value_or(row) : row}) {
      state.touchesFirst = state.touchesFirst || moved == 0;
      state.touchesLast = state.touchesLast || moved == state.lineCount - 1;
    }
  }
  state.canPaste = macroClipboard::held() != macroClipboard::Held::Nothing;
  return state;
}

// --- One edit

MouseMacrosController::MeantLines MouseMacrosController::meantLines() const {
  return {vorn::RememberedRecord(macrosSettingsArray, selectedMacro(), keys::MacroName), mDetailsModel->lines(),
          selectedLines()};
}

std::optional<MouseMacrosController::OpenedSequence> MouseMacrosController::openSequence(const MeantLines& meant) {
  if (macroToAsk() < 0 || isSessionRunning()) {
    mBeep();
    return std::nullopt;
  }
  // Edits of single events have not renewed the list.
  macroDelegate->reloadMacros();
  const int row = selectMeantMacro(meant.macro);
  if (row < 0) return std::nullopt;
  const PropertyList record = macrosSettingsArray.at(row);
  const PropertyList events = vorn::macroEvents(record);
  if (!(vorn::eventParser::getMessagesArray(events) == meant.lines)) {
    fetchLines();
    lineIsGone(meant.macro.name());
    return std::nullopt;
  }
  return OpenedSequence{row, record, MacroEventList(events.elements().begin(), events.elements().end())};
}

void MouseMacrosController::rememberMeantSheet(const MeantLines& meant, QDialog& sheet) {
  mMeantSheet.emplace(MeantSheet{meant.macro, &sheet});
}

void MouseMacrosController::followMeantSheet() {
  if (!mMeantSheet || mMeantSheet->macro.placeIn(macrosSettingsArray)) return;
  const MeantSheet meant = *std::exchange(mMeantSheet, std::nullopt);
  // One that has been closed since has acted, or will not.
  if (!meant.sheet || !meant.sheet->isVisible()) return;
  meant.sheet->reject();
  showGoneAlert(sheetWindow(), QString::fromStdString(meant.macro.name()));
}

void MouseMacrosController::editSequence(const MeantLines& meant, const SequenceEdit& edit) {
  const auto opened = openSequence(meant);
  if (!opened) return;
  const std::optional<EditedEvents> edited = edit(*opened, meant.rows);
  if (!edited) {
    mBeep();
    return;
  }
  const PropertyList sequence =
      opened->record[keys::Sequence].dictionaryOrEmpty().with(keys::Events, PropertyList::array(edited->events));
  const auto status = macroDelegate->replaceSequence(sequence, opened->macro, opened->record);
  // So that a list that brings the older events back, as an undo does, is seen to be another one.
  if (status == vorn::ReturnStatus::Done && selectedMacro() == opened->macro)
    macrosSettingsArray = macrosSettingsArray.replacing(opened->macro, opened->record.with(keys::Sequence, sequence));
  // Another program was quicker.
  if (status == vorn::ReturnStatus::Outdated) macroDelegate->reloadMacros();
  fetchLines();
  if (status != vorn::ReturnStatus::Done) {
    const QString name = shownName(QString::fromStdString(meant.macro.name()));
    const bool hasChanged = status == vorn::ReturnStatus::OutOfRange || status == vorn::ReturnStatus::Outdated;
    Alert::show(
        sheetWindow(), localized("lkeyEditFailedTitle").arg(name),
        hasChanged ? localized("lkeyLineGoneDesc").arg(name) : reasonAgainstAdding(vorn::RecordKind::Macro, status),
        {localized("lkeyOK")});
    return;
  }
  std::vector<int> rows;
  for (const std::size_t event : edited->chosen) rows.push_back(static_cast<int>(vorn::rowOfEvent(event)));
  selectLines(rows);
  mUi->mMacroDetailsTableView->setFocus();
}

void MouseMacrosController::insertEvents(const MeantLines& meant, bool isBefore, const EventMaker& made) {
  editSequence(meant, [&](const OpenedSequence& sequence, const std::vector<int>& rows) {
    const std::size_t place = isBefore ? placeBefore(rows) : placeBehind(rows, sequence.events.size());
    return vorn::withInserted(sequence.events, place, made(sequence));
  });
}

// --- The entries of the menu

bool MouseMacrosController::takesLineKey(const QKeyEvent& key) {
  const MacroMenuEntry* entry = entryOfKey(macroDetailsMenuEntries(), key);
  // A line is deleted by the button, which may be off.
  if (entry == nullptr || entry->tag == tags::DeleteEvent) return false;
  if (key.isAutoRepeat() && entry->tag != tags::MoveUp && entry->tag != tags::MoveDown) return true;
  if (entry->missing(menuState()) != nullptr) {
    mBeep();
  } else if (entry->tag == tags::Edit) {
    editLineInPlace();
  } else {
    clickMacroDetailsSettingsMenuItem(entry->tag);
  }
  return true;
}

void MouseMacrosController::clickSequenceMenuItem(int tag) {
  switch (tag) {
    case tags::Cut:
      if (copySelectedEvents()) deleteSelectedLines();
      break;
    case tags::Copy:
      copySelectedEvents();
      break;
    case tags::Paste:
      pasteEvents();
      break;
    case tags::DuplicateEvents:
      editSequence(meantLines(), [](const OpenedSequence& sequence, const std::vector<int>& rows) {
        return vorn::withDuplicates(sequence.events, eventsIn(rows));
      });
      break;
    case tags::DeletePair:
      editSequence(meantLines(), [](const OpenedSequence& sequence, const std::vector<int>& rows) {
        return vorn::withoutEvents(sequence.events, vorn::withPartners(sequence.events, eventsIn(rows)));
      });
      break;
    case tags::MoveUp:
      moveEvents(&vorn::movedUp);
      break;
    case tags::MoveDown:
      moveEvents(&vorn::movedDown);
      break;
    case tags::KeepPairs:
      mKeepsPairs = !mKeepsPairs;
      break;
    case tags::TypeText:
      openTextSheet({});
      break;
    case tags::Play:
      openPlaySheet();
      break;
    default:
      insertByMenu(tag);
  }
}

void MouseMacrosController::insertByMenu(int tag) {
  const bool isBefore = tag < tags::insertAfter;
  const int inserted = tag - (isBefore ? tags::insertBefore : tags::insertAfter);
  if (inserted < tags::Key || inserted > tags::Delay) return;
  const MeantLines meant = meantLines();
  if (inserted == tags::Key) {
    openInsertSheet(meant, isBefore);
  } else if (inserted == tags::Delay) {
    openAddedDelay(meant, isBefore);
  } else {
    insertStroke(meant, isBefore, clickOf(inserted));
  }
}

void MouseMacrosController::insertStroke(const MeantLines& meant, bool isBefore, HidUsage usage) {
  insertEvents(meant, isBefore, [usage](const OpenedSequence& sequence) {
    return vorn::stroke(usage, sequence.record[keys::Delay].toInt64());
  });
}

void MouseMacrosController::openAddedDelay(const MeantLines& meant, bool isBefore) {
  // The delay's own row stands for itself.
  int row = isBefore ? meant.rows.front() : meant.rows.back();
  if (!isDelayLine(row)) row += isBefore ? -1 : 1;
  if (row < 1 || row >= mDetailsModel->rowCount()) return;
  mDelayEntered = [this, meant, row](int milliseconds) {
    const auto opened = openSequence(meant);
    if (!opened) return;
    const std::int64_t present = opened->events[vorn::eventOfRow(static_cast<std::size_t>(row))][keys::Delay].toInt64();
    const std::int64_t longer = std::min(present + milliseconds, vorn::maximumDelay);
    macroDelegate->setNewDelay(static_cast<int>(longer), row, opened->macro);
    fetchLines();
    selectLines({row});
  };
  mEditDelayWindow->beginAdding(mDetailsModel->index(row).data().toString());
  rememberMeantSheet(meant, *mEditDelayWindow);
}

void MouseMacrosController::openDelaysOfMany() {
  const MeantLines meant = meantLines();
  mDelayEntered = [this, meant](int milliseconds) {
    editSequence(meant, [milliseconds](const OpenedSequence& sequence, const std::vector<int>& rows) {
      return vorn::withDelays(sequence.events, delaysIn(rows), milliseconds);
    });
    selectLines(meant.rows);
  };
  mEditDelayWindow->beginForMany(static_cast<int>(delaysIn(meant.rows).size()));
  rememberMeantSheet(meant, *mEditDelayWindow);
}

void MouseMacrosController::deleteSelectedLines() {
  editSequence(meantLines(), [](const OpenedSequence& sequence, const std::vector<int>& rows) {
    // As a single delay is deleted.
    const auto undelayed = vorn::withDelays(sequence.events, delaysIn(rows), 0);
    const MacroEventList& events = undelayed ? undelayed->events : sequence.events;
    const Places chosen = eventsIn(rows);
    return chosen.empty() ? undelayed : vorn::withoutEvents(events, chosen);
  });
}

bool MouseMacrosController::copySelectedEvents() {
  const MeantLines meant = meantLines();
  const auto opened = openSequence(meant);
  if (!opened) return false;
  MacroEventList copied;
  for (const std::size_t event : eventsIn(meant.rows)) copied.push_back(opened->events[event]);
  macroClipboard::put(copied);
  return true;
}

void MouseMacrosController::pasteEvents() {
  if (const QString text = macroClipboard::foreignText(); !text.isEmpty()) {
    openTextSheet(text);
    return;
  }
  const auto pasted = macroClipboard::events();
  if (!pasted) {
    mBeep();
    return;
  }
  insertEvents(meantLines(), false, [&pasted](const OpenedSequence&) { return *pasted; });
}

void MouseMacrosController::moveEvents(EventMove moved) {
  editSequence(meantLines(), [this, moved](const OpenedSequence& sequence, const std::vector<int>& rows) {
    const Places chosen = eventsIn(rows);
    return moved(sequence.events, mKeepsPairs ? vorn::withPartners(sequence.events, chosen) : chosen, mKeepsPairs);
  });
}

void MouseMacrosController::replaceUsage(const MeantLines& meant, HidUsage usage, bool changesPartner) {
  editSequence(meant, [usage, changesPartner](const OpenedSequence& sequence, const std::vector<int>& rows) {
    const Places chosen = eventsIn(rows);
    return vorn::withUsage(sequence.events, changesPartner ? vorn::withPartners(sequence.events, chosen) : chosen,
                           usage);
  });
}

// --- Sheets

void MouseMacrosController::openTextSheet(const QString& text) {
  const MeantLines meant = meantLines();
  auto* sheet = new MacroTextSheet(sheetWindow(), macrosSettingsArray.at(selectedMacro())[keys::Delay].toInt(), text);
  connect(sheet, &MacroTextSheet::confirmed, this, [this, meant](const MacroEventList& events) {
    insertEvents(meant, false, [&events](const OpenedSequence&) { return events; });
  });
  sheet->open();
  rememberMeantSheet(meant, *sheet);
}

void MouseMacrosController::openPlaySheet() {
  const auto opened = openSequence(meantLines());
  if (!opened) return;
  auto* sheet = new MacroPlaySheet(sheetWindow(), QString::fromStdString(opened->record[keys::MacroName].toString()),
                                   opened->events);
  sheet->open();
}

}  // namespace skarn
