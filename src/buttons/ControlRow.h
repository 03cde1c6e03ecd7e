// One control of the mouse as a row: its number, what it sends by default, the pop-up with what it does now, and the
// button for a macro's repeat mode. Main thread.
#pragma once

#include <QWidget>

#include "buttons/ControlTable.h"

class QLabel;
class QToolButton;

namespace skarn {

class NumberBadge;
class PopUpButton;

// What people call a control: "Button 12, Z key".
QString spokenName(const ControlDescriptor& control);

class ControlRow : public QWidget {
  Q_OBJECT

 public:
  ControlRow(const ControlDescriptor& control, QWidget* parent);

  const ControlDescriptor& control() const { return mControl; }
  // Named after the control, for example mButtonOne.
  PopUpButton* popUp() const { return mPopUp; }
  // Named as the table says; hidden at first. It takes its place from the pop-up, and the row stays as wide.
  QToolButton* repeatButton() const { return mRepeatButton; }

  // Whether the control does something else than out of the box: its badge is filled, and the pop-up in full strength.
  void setChanged(bool changed);
  bool isChanged() const;

  // That the mouse in use has no such control, which the tooltips then say. It is assigned as before.
  void setMissing(bool isMissing);
  bool isMissing() const { return mIsMissing; }

  void setHighlighted(bool highlighted);
  bool isHighlighted() const { return mIsHighlighted; }

  // What a search says of the control: one that was found stands out, one that it passed by is muted, as readable as
  // any caption, and can be used as before.
  enum class SearchResult { NoSearch, Found, Passed };
  void setSearchResult(SearchResult result);
  SearchResult searchResult() const { return mSearchResult; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  // True: the pointer came, the keyboard reached one of the row's controls, or its menu opened. False: that ended.
  void hovered(bool isHovered);
  // By the right button or the Menu key, wherever in the row.
  void menuAsked(const skarn::ControlDescriptor& control, const QPoint& globalPosition);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void makeRepeatButton();
  void updateStrength();
  int roomForRepeatButton() const;
  // Few of the repeat buttons are ever seen: their icon comes with the first showing.
  void tintRepeatIcon();

  const ControlDescriptor& mControl;
  NumberBadge* mBadge;
  QLabel* mName;  // named after the control, for example mButtonOneLabel
  PopUpButton* mPopUp;
  QToolButton* mRepeatButton;
  bool mIsHighlighted = false;
  bool mIsMissing = false;
  SearchResult mSearchResult = SearchResult::NoSearch;
  bool mIsReached = false;  // by the keyboard
};

}  // namespace skarn
