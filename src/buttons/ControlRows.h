// The rows of all controls and the picture of the mouse: what is lit in one is lit in the other. Main thread.
#pragma once

#include <QObject>
#include <array>
#include <bitset>
#include <optional>

#include "buttons/ControlTable.h"

class QLabel;
class QVBoxLayout;

namespace skarn {

class ControlRow;
class MouseView;

class ControlRows : public QObject {
  Q_OBJECT

 public:
  // Where the rows of a family stand, and the label that counts those that were changed.
  struct Family {
    ControlFamily family;
    QVBoxLayout* rows;
    QLabel* changes;
  };
  // By the places of the controls in the table.
  using Controls = std::bitset<controlTable.size()>;

  // Fills the layouts. families: in the order in which the keyboard goes through them. All belong to the page, as do
  // the rows.
  ControlRows(QWidget& page, MouseView& picture, const std::array<Family, 3>& families);

  ControlRow& of(const ControlDescriptor& control) const;
  // In the order of the table.
  const std::array<ControlRow*, controlTable.size()>& all() const { return mRows; }

  // By column, as the rows are seen, and not by the numbers of the controls.
  void orderForKeyboard(QWidget* before);
  void highlight(const ControlDescriptor* control);  // nullptr none
  void countChanges();
  // That the mouse in use lacks these.
  void showMissing(const Controls& missing);
  // What a search has found stands out, and all others recede; without a search nothing does.
  void showFound(const std::optional<Controls>& found);

 private:
  std::array<ControlRow*, controlTable.size()> mRows{};
  std::array<Family, 3> mFamilies;
  MouseView& mPicture;
};

}  // namespace skarn
