#include "macros/MacroDetailsDelegate.h"

#include <QApplication>
#include <QPainter>

#include "macros/MacroMenus.h"
#include "model/eventParser.h"
#include "platform/Images.h"
#include "widgets/FigureText.h"

namespace skarn {

using vorn::eventParser;

namespace {

constexpr int glyphSize = 16;
constexpr int eventTextLeft = RowDelegate::sidePadding + glyphSize + 8;
constexpr int delayTextLeft = eventTextLeft + 24;

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

}  // namespace

void MacroDetailsDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  RowDelegate::initStyleOption(option, index);
  option->text = withoutLineBreaks(option->text);
}

QRect MacroDetailsDelegate::textPlace(const QStyleOptionViewItem& cell, const QModelIndex& index) const {
  const int left = isDelayLine(index.row()) ? delayTextLeft : eventTextLeft;
  return cell.rect.adjusted(left, 0, -RowDelegate::sidePadding, 0);
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
  const QRect place = textPlace(line, index);
  const QString text = line.fontMetrics.elidedText(line.text, line.textElideMode, place.width());

  painter->save();
  painter->setFont(line.font);
  if (isDelay) {
    figureText::draw(*painter, *style, place, line.palette, isEnabled, text, role);
  } else {
    style->drawItemText(painter, place, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), line.palette, isEnabled,
                        text, role);
    const QPalette::ColorGroup group = isEnabled ? QPalette::Normal : QPalette::Disabled;
    const QPixmap glyph = tintedImage(glyphName(index.data().toString()), option.palette.color(group, selectedRole));
    const int top = option.rect.top() + (option.rect.height() - glyphSize) / 2;
    if (!glyph.isNull()) painter->drawPixmap(option.rect.left() + RowDelegate::sidePadding, top, glyph);
  }
  painter->restore();
}

}  // namespace skarn
