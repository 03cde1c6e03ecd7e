// A row of segments of equal width, shown as the numbers from 1, of which one can be selected. Main thread.
//
// Left, Right, Home and End move among the segments without choosing; Space and Return choose the one reached. The
// selected segment is told by weight as well as by the accent. A segment can carry a dot. Screen readers find a group
// with a radio button per segment.
#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

class QAccessibleInterface;
class QPainter;

namespace skarn {

class SegmentedControl : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int segmentCount READ segmentCount WRITE setSegmentCount)

 public:
  explicit SegmentedControl(QWidget* parent = nullptr);

  int segmentCount() const { return static_cast<int>(mSegments.size()); }
  void setSegmentCount(int count);
  // What screen readers and tooltips call the segments.
  void setSegmentNames(const QStringList& names);
  QString segmentName(int segment) const;
  // Puts a dot under the segment's number; tooltip and screen readers say these words for it. Empty for no dot.
  void setMark(int segment, const QString& words);
  bool isMarked(int segment) const;

  int selectedSegment() const { return mSelected; }  // -1 for none
  // Without a signal; a segment out of range selects none.
  void selectSegment(int segment);

  // The place of a segment, in the control's coordinates.
  QRect segmentRect(int segment) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  // By the user; also for the segment that is selected already.
  void segmentChosen(int segment);
  // By the right button on a segment, or by the Menu key on the one that the keyboard has reached.
  void menuAsked(int segment, const QPoint& globalPosition);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  class Segment;
  class AccessibleSegment;
  static QAccessibleInterface* makeAccessible(const QString& className, QObject* object);

  int segmentAt(const QPointF& position) const;
  void choose(int segment);
  void moveTo(int segment);
  void drawSegment(QPainter& painter, int segment) const;
  void drawFocus(QPainter& painter) const;
  QString wordsOfMark(int segment) const;

  std::vector<Segment*> mSegments;
  int mSelected = -1;
  int mHovered = -1;
  int mPressed = -1;
  int mCurrent = 0;  // the one that the keyboard has reached
};

}  // namespace skarn
