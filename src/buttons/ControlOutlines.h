// Where the controls lie in the drawing of the mouse. Read from mouse.svg, the one drawing that the pictures are
// rendered from, so what is seen, what is pointed at and what is lit are the same. Main thread.
#pragma once

#include <QPainterPath>
#include <QSizeF>
#include <array>

#include "buttons/ControlTable.h"

class QIODevice;

namespace skarn {

struct ControlOutlines {
  QSizeF drawing;                                       // the drawing's own size; empty when it cannot be read
  std::array<QPainterPath, controlTable.size()> paths;  // in the order of the table; empty for a control not found

  // nullptr where there is none. In the drawing's coordinates.
  const ControlDescriptor* controlAt(const QPointF& position) const;
  const QPainterPath& of(const ControlDescriptor& control) const;
};

// Reads the outline of each group whose id is a control's field name: the group's first path, of absolute M, L, C and Z
// commands. Whatever does not fit that is left out.
ControlOutlines readControlOutlines(QIODevice& drawing);

// Those of the application's drawing, read once.
const ControlOutlines& controlOutlines();

}  // namespace skarn
