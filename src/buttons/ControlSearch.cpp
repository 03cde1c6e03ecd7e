#include "buttons/ControlSearch.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <utility>

#include "buttons/ControlRow.h"
#include "buttons/ControlRows.h"
#include "platform/Localization.h"
#include "widgets/PopUpButton.h"

namespace skarn {

namespace {

QStringList wordsOfText(const QString& text) {
  static const QRegularExpression between(QStringLiteral("[^\\p{L}\\p{N}]+"));
  return text.split(between, Qt::SkipEmptyParts);
}

bool isNumber(const QString& word) {
  return std::ranges::all_of(word, [](QChar letter) { return letter.isDigit(); });
}

}  // namespace

bool holdsAll(const QString& text, const QString& wanted) {
  const QStringList words = wordsOfText(text);
  const QStringList parts = wanted.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
  return std::ranges::all_of(parts, [&](const QString& part) {
    const bool isLetter = part.size() == 1 && part.front().isLetter();
    if (isLetter || isNumber(part)) return words.contains(part, Qt::CaseInsensitive);
    return text.contains(part, Qt::CaseInsensitive);
  });
}

ControlSearch::ControlSearch(QLineEdit& field, QLabel& count, ControlRows& rows, WordsOf wordsOf)
    : mField(field), mCount(count), mRows(rows), mWordsOf(std::move(wordsOf)) {
  mField.installEventFilter(this);
  connect(&mField, &QLineEdit::textChanged, this, &ControlSearch::refresh);
}

void ControlSearch::refresh() {
  const QString wanted = mField.text().simplified();
  std::optional<ControlRows::Controls> found;
  QString count;
  if (!wanted.isEmpty()) {
    found.emplace();
    for (std::size_t index = 0; index < controlTable.size(); ++index)
      found->set(index, holdsAll(mWordsOf(controlTable[index]), wanted));
    count = found->none() ? localized("lkeyNoControlFound") : localized("lkeyControlsFound").arg(found->count());
  }
  mRows.showFound(found);
  if (mCount.text() == count) return;
  mCount.setText(count);
  if (count.isEmpty()) return;
  QAccessibleEvent told(&mCount, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void ControlSearch::begin() {
  mField.setFocus(Qt::ShortcutFocusReason);
  mField.selectAll();
}

void ControlSearch::clear() {
  mField.clear();
}

void ControlSearch::goToFirst() {
  for (ControlRow* row : mRows.all()) {
    if (row->searchResult() != ControlRow::SearchResult::Found || !row->popUp()->isEnabled()) continue;
    row->popUp()->setFocus(Qt::TabFocusReason);
    return;
  }
}

bool ControlSearch::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      clear();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      goToFirst();
      return true;
    default:
      return QObject::eventFilter(watched, event);
  }
}

}  // namespace skarn
