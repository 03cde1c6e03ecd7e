// One control of the mouse as a row: its number, what it sends by default, and what it does now.
#pragma once

#include <QWidget>

#include "buttons/ControlTable.h"

class QLabel;

namespace skarn {

class ControlRow : public QWidget {
  Q_OBJECT

 public:
  ControlRow(const ControlDescriptor& control, QWidget* parent);

  const ControlDescriptor& control() const { return mControl; }

  // An empty text shows nothing.
  void showAssignment(const QString& text);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  const ControlDescriptor& mControl;
  QLabel* mName;  // named after the control, for example mButtonOneLabel
  QLabel* mAssignment;
};

}  // namespace skarn
