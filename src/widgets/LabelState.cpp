#include "widgets/LabelState.h"

#include <QGroupBox>
#include <QLabel>

#include "widgets/SkarnStyle.h"

namespace skarn {

void setLabelsEnabled(QWidget& page, bool enabled, const QString& whyNot) {
  for (QLabel* label : page.findChildren<QLabel*>()) label->setEnabled(enabled);
  // A group box that is disabled would disable what it holds.
  for (QGroupBox* box : page.findChildren<QGroupBox*>()) {
    box->setProperty(SkarnStyle::isDimmedProperty, !enabled);
    box->update();
  }
  page.setToolTip(enabled ? QString() : whyNot);
}

}  // namespace skarn
