#include "macros/MacroDetailsDelegate.h"

namespace skarn {

namespace {

constexpr int delayIndent = 3;  // em spaces

}  // namespace

void MacroDetailsDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  RowDelegate::initStyleOption(option, index);
  while (option->text.endsWith(QLatin1Char('\n')) || option->text.endsWith(QChar::LineSeparator)) option->text.chop(1);
  if (index.row() % 2 == 0) return;
  option->text.prepend(QString(delayIndent, QChar(0x2003)));
  option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
}

}  // namespace skarn
