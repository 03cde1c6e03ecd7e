#include "widgets/Hover.h"

#include <QCursor>
#include <QWidget>

namespace skarn {

void endHoverUnlessUnderPointer(QWidget& widget) {
  if (!widget.rect().contains(widget.mapFromGlobal(QCursor::pos()))) widget.setAttribute(Qt::WA_UnderMouse, false);
  widget.update();
}

}  // namespace skarn
