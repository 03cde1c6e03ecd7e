#include "buttons/ControlRows.h"

#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

#include "buttons/ControlRow.h"
#include "buttons/MouseView.h"
#include "platform/Localization.h"
#include "widgets/PopUpButton.h"

namespace skarn {

ControlRows::ControlRows(QWidget& page, MouseView& picture, const std::array<Family, 3>& families)
    : mFamilies(families), mPicture(picture) {
  for (std::size_t index = 0; index < controlTable.size(); ++index) {
    const ControlDescriptor& control = controlTable[index];
    auto* row = new ControlRow(control, &page);
    mRows[index] = row;
    std::ranges::find(mFamilies, control.family, &Family::family)->rows->addWidget(row);
    connect(row, &ControlRow::hovered, this,
            [this, &control](bool isHovered) { highlight(isHovered ? &control : nullptr); });
  }
  connect(&mPicture, &MouseView::controlHovered, this, &ControlRows::highlight);
}

ControlRow& ControlRows::of(const ControlDescriptor& control) const {
  return *mRows[static_cast<std::size_t>(control.number - 1)];
}

void ControlRows::orderForKeyboard(QWidget* before) {
  for (const Family& family : mFamilies) {
    for (ControlRow* row : mRows) {
      if (row->control().family != family.family) continue;
      QWidget::setTabOrder(before, row->popUp());
      QWidget::setTabOrder(row->popUp(), row->repeatButton());
      before = row->repeatButton();
    }
  }
}

void ControlRows::highlight(const ControlDescriptor* control) {
  for (ControlRow* row : mRows) row->setHighlighted(&row->control() == control);
  mPicture.setHighlighted(control);
}

void ControlRows::countChanges() {
  for (const Family& family : mFamilies) {
    const auto changed = std::ranges::count_if(
        mRows, [&](const ControlRow* row) { return row->control().family == family.family && row->isChanged(); });
    family.changes->setText(changed == 0 ? QString() : localized("lkeyControlsChanged").arg(changed));
  }
}

void ControlRows::showMissing(const Controls& missing) {
  std::vector<const ControlDescriptor*> dimmed;
  for (std::size_t index = 0; index < mRows.size(); ++index) {
    mRows[index]->setMissing(missing.test(index));
    if (missing.test(index)) dimmed.push_back(&controlTable[index]);
  }
  mPicture.setMissing(std::move(dimmed));
}

void ControlRows::showFound(const std::optional<Controls>& found) {
  std::vector<const ControlDescriptor*> lit;
  for (std::size_t index = 0; index < mRows.size(); ++index) {
    const bool isFound = found && found->test(index);
    mRows[index]->setSearchResult(!found    ? ControlRow::SearchResult::NoSearch
                                  : isFound ? ControlRow::SearchResult::Found
                                            : ControlRow::SearchResult::Passed);
    if (isFound) lit.push_back(&controlTable[index]);
  }
  mPicture.setFound(found ? std::optional(lit) : std::nullopt);
}

}  // namespace skarn
