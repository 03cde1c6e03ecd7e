#include "macros/MacroDetailsDelegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "macros/MacroMenus.h"
#include "macros/NumberOnlyTextField.h"
#include "model/eventParser.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "widgets/FigureText.h"

namespace skarn {

using vorn::eventParser;

namespace {

constexpr int glyphSize = 16;
constexpr int laneTick = 4;  // how far a line bends towards its event
constexpr int eventTextLeft = MacroDetailsDelegate::pictureLeft + glyphSize + 8;
constexpr int delayTextLeft = eventTextLeft + 24;
constexpr int timeGap = 16;
constexpr int editorWidth = 96;

QString withoutLineBreaks(QString line) {
  while (line.endsWith(QLatin1Char('\n')) || line.endsWith(QChar::LineSeparator)) line.chop(1);
  return line;
}

// Empty for an event that is neither a key's nor a button's.
QString glyphName(const QString& line) {
  switch (eventParser::kindOfLine(line.toStdString())) {
    case eventParser::LineKind::KeyPress:
      return QStringLiteral("keyDown.png");
    case eventParser::LineKind::KeyRelease:
      return QStringLiteral("keyUp.png");
    case eventParser::LineKind::Button:
      return QStringLiteral("mouseButton.png");
    case eventParser::LineKind::Other:
      break;
  }
  return {};
}

// The time of an event, as it is read beside it; empty for a delay.
QString timeText(const QModelIndex& index) {
  const QVariant elapsed = index.data(MacroDetailsModel::ElapsedRole);
  if (!elapsed.isValid()) return {};
  return QString::number(static_cast<double>(elapsed.toLongLong()) / 1000.0, 'f', 3) + QLatin1String(" s");
}

void drawLanes(QPainter& painter, const QRect& row, const PairLanes& lanes) {
  const int middle = row.top() + row.height() / 2;
  for (std::size_t lane = 0; lane < PairLanes::laneCount; ++lane) {
    const PairLanes::Part part = lanes.parts[lane];
    if (part == PairLanes::None) continue;
    const int x = row.left() + RowDelegate::sidePadding + static_cast<int>(lane) * MacroDetailsDelegate::laneWidth;
    const int top = part == PairLanes::Begins ? middle : row.top();
    const int bottom = part == PairLanes::Ends ? middle : row.bottom() + 1;
    painter.drawLine(x, top, x, bottom);
    if (part != PairLanes::Passes) painter.drawLine(x, middle, x + laneTick, middle);
  }
}

}  // namespace

void MacroDetailsDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  RowDelegate::initStyleOption(option, index);
  option->text = withoutLineBreaks(option->text);
}

QRect MacroDetailsDelegate::textPlace(const QStyleOptionViewItem& cell, const QModelIndex& index) const {
  const int left = isDelayLine(index.row()) ? delayTextLeft : eventTextLeft;
  const QString time = timeText(index);
  const int right = time.isEmpty() ? 0 : figureText::width(time, cell.fontMetrics) + timeGap;
  return cell.rect.adjusted(left, 0, -RowDelegate::sidePadding - right, 0);
}

void MacroDetailsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
  const bool isSelected = option.state & QStyle::State_Selected;
  const bool isEnabled = option.state & QStyle::State_Enabled;
  if (isSelected) painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));

  QStyleOptionViewItem line = option;
  initStyleOption(&line, index);
  const bool isDelay = isDelayLine(index.row());
  const QPalette::ColorRole selectedRole = isSelected ? QPalette::HighlightedText : QPalette::Text;
  const QPalette::ColorRole role = isDelay && !isSelected ? QPalette::PlaceholderText : selectedRole;
  const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
  QRect place = textPlace(line, index);
  // Beside the field stands what it counts.
  if (mEdited == index) {
    line.text = localized("lkeyMilliseconds");
    place.setLeft(option.rect.left() + delayTextLeft + editorWidth);
  }
  const QString text = line.fontMetrics.elidedText(line.text, line.textElideMode, place.width());

  painter->save();
  painter->setFont(line.font);
  const QPalette::ColorGroup laneGroup = isEnabled ? QPalette::Normal : QPalette::Disabled;
  painter->setPen(QPen(option.palette.color(laneGroup, QPalette::PlaceholderText), 1));
  drawLanes(*painter, option.rect, index.data(MacroDetailsModel::LanesRole).value<PairLanes>());
  if (isDelay) {
    figureText::draw(*painter, *style, place, line.palette, isEnabled, text, role);
  } else {
    style->drawItemText(painter, place, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), line.palette, isEnabled,
                        text, role);
    const QPalette::ColorGroup group = isEnabled ? QPalette::Normal : QPalette::Disabled;
    const QPixmap glyph = tintedImage(glyphName(index.data().toString()), option.palette.color(group, selectedRole));
    const int top = option.rect.top() + (option.rect.height() - glyphSize) / 2;
    if (!glyph.isNull()) painter->drawPixmap(option.rect.left() + pictureLeft, top, glyph);
    const QString time = timeText(index);
    const QRect timePlace(place.right() + timeGap, option.rect.top(), option.rect.right() - place.right() - timeGap,
                          option.rect.height());
    figureText::draw(*painter, *style, timePlace, line.palette, isEnabled, time,
                     isSelected ? QPalette::HighlightedText : QPalette::PlaceholderText);
  }
  painter->restore();
}

// --- A delay in place

QWidget* MacroDetailsDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                            const QModelIndex& index) const {
  auto* editor = new NumberOnlyTextField(parent);
  editor->setAccessibleName(localized("lkeyDelayInMilliseconds"));
  connect(editor, &NumberOnlyTextField::editRefused, this, &MacroDetailsDelegate::editRefused);
  mEditor = editor;
  mEdited = index;
  mEntered.reset();
  emit editingStarted(index.row());
  return editor;
}

void MacroDetailsDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* field = qobject_cast<NumberOnlyTextField*>(editor);
  if (field == nullptr || field->isModified()) return;
  field->setText(index.data(Qt::EditRole).toString());
  field->selectAll();
}

// What is entered is told when the editor is gone: the answer replaces the rows.
void MacroDetailsDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const {
  const auto* field = qobject_cast<NumberOnlyTextField*>(editor);
  const bool isOther =
      field != nullptr && !field->text().isEmpty() && field->integerValue() != index.data(Qt::EditRole).toLongLong();
  if (isOther) mEntered = field->integerValue();
}

void MacroDetailsDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  mEditor = nullptr;
  mEdited = QPersistentModelIndex();
  RowDelegate::destroyEditor(editor, index);
  emit editingEnded(std::exchange(mEntered, std::nullopt));
}

void MacroDetailsDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                                const QModelIndex&) const {
  const int height = std::min(editor->sizeHint().height(), option.rect.height());
  editor->setGeometry(option.rect.left() + delayTextLeft - RowDelegate::sidePadding,
                      option.rect.top() + (option.rect.height() - height) / 2, editorWidth, height);
}

void MacroDetailsDelegate::commitEdit() {
  if (!mEditor) return;
  NumberOnlyTextField* editor = mEditor;
  emit commitData(editor);
  emit closeEditor(editor, NoHint);
}

std::optional<QString> MacroDetailsDelegate::typedDelay() const {
  return mEditor && mEditor->isModified() ? std::optional(mEditor->text()) : std::nullopt;
}

void MacroDetailsDelegate::setTypedDelay(const QString& delay) {
  if (!mEditor) return;
  mEditor->setText(delay);
  mEditor->setModified(true);
}

void MacroDetailsDelegate::discardEdit() {
  if (mEditor) emit closeEditor(mEditor, RevertModelCache);
}

// The next row is an event, which is not edited in place.
bool MacroDetailsDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && watched == mEditor) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
      commitEdit();
      return true;
    }
  }
  return RowDelegate::eventFilter(watched, event);
}

}  // namespace skarn
