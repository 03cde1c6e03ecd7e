#include "widgets/MenuKey.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>

namespace skarn {

MenuKey::MenuKey() {
  qApp->installEventFilter(this);
}

bool MenuKey::eventFilter(QObject* watched, QEvent* event) {
  // The native window gets a key first, and knows which widget a menu is asked for.
  if (event->type() != QEvent::KeyPress || !watched->isWindowType()) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F10 || key->modifiers() != Qt::ShiftModifier) return false;
  if (key->isAutoRepeat() || QApplication::activePopupWidget() != nullptr) return false;
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(), QPoint(), Qt::NoModifier);
  QCoreApplication::sendEvent(watched, &asked);
  return true;
}

}  // namespace skarn
