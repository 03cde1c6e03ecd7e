// The picture of the mouse, whose controls can be pointed at and lit. It is no stop of the keyboard: every control has
// a row besides. The picture is decoded when the view is first seen. Main thread.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "buttons/ControlTable.h"
#include "widgets/PictureLabel.h"

namespace skarn {

class MouseView : public PictureLabel {
  Q_OBJECT

 public:
  explicit MouseView(QWidget* parent = nullptr);

  // The mouse with the number of a keymap, 0 to 7; any other value leaves the picture as it is.
  void setKeymapPicture(int keymap);
  // Lights up a control; nullptr none.
  void setHighlighted(const ControlDescriptor* control);
  const ControlDescriptor* highlighted() const { return mHighlighted; }
  // The controls that a search has found: all else of the picture recedes. Nothing without a search.
  void setFound(std::optional<std::vector<const ControlDescriptor*>> found);
  // The controls that the mouse in use lacks recede.
  void setMissing(std::vector<const ControlDescriptor*> missing);
  const std::vector<const ControlDescriptor*>& missing() const { return mMissing; }
  // What the tooltip says about a control; without it the control's number and name.
  void setDescription(std::function<QString(const ControlDescriptor&)> description);

  // The control at a place of the view; nullptr where there is none.
  const ControlDescriptor* controlAt(const QPointF& position) const;
  // A place of the view that lies on the control; a null point while nothing is shown.
  QPointF placeOf(const ControlDescriptor& control) const;

 signals:
  void controlHovered(const skarn::ControlDescriptor* control);  // nullptr when the pointer left the last one
  void controlClicked(const skarn::ControlDescriptor* control);
  void menuAsked(const skarn::ControlDescriptor& control, const QPoint& globalPosition);  // by the right button

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void showPicture();
  void paintMissing(QPainter& painter) const;
  void paintFound(QPainter& painter) const;
  void light(QPainter& painter, const ControlDescriptor& control) const;
  void hover(const ControlDescriptor* control);
  QString descriptionOf(const ControlDescriptor& control) const;
  // From the drawing's coordinates to the view's.
  QTransform placement() const;

  int mKeymap = -1;
  int mShownKeymap = -1;
  const ControlDescriptor* mHighlighted = nullptr;
  std::optional<std::vector<const ControlDescriptor*>> mFound;
  std::vector<const ControlDescriptor*> mMissing;
  const ControlDescriptor* mHovered = nullptr;
  const ControlDescriptor* mPressed = nullptr;
  std::function<QString(const ControlDescriptor&)> mDescription;
};

}  // namespace skarn
