#include "buttons/ControlRow.h"

#include <QHBoxLayout>

#include "platform/Localization.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NumberBadge.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

// Rows share one width, so equal shares line up as columns.
constexpr int nameShare = 5;
constexpr int assignmentShare = 6;
constexpr int columnGap = 8;
constexpr int naturalHeight = 27;
constexpr int leastHeight = 22;

ElidedLabel* columnLabel(QWidget* parent) {
  auto* label = new ElidedLabel(parent);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  return label;
}

}  // namespace

ControlRow::ControlRow(const ControlDescriptor& control, QWidget* parent)
    : QWidget(parent), mControl(control), mName(columnLabel(this)), mAssignment(columnLabel(this)) {
  setObjectName(QLatin1String(control.fieldName) + QStringLiteral("Row"));
  auto* badge = new NumberBadge(this);
  badge->setText(QString::number(control.ordinal));
  badge->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("caption"));
  mName->setObjectName(QLatin1String(control.fieldName) + QStringLiteral("Label"));
  mName->setText(localized(control.nameKey));
  mAssignment->setObjectName(QStringLiteral("assignment"));
  mAssignment->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("muted"));

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(columnGap);
  layout->addWidget(badge);
  layout->addWidget(mName, nameShare);
  layout->addWidget(mAssignment, assignmentShare);
}

QSize ControlRow::sizeHint() const {
  return {QWidget::sizeHint().width(), naturalHeight};
}

QSize ControlRow::minimumSizeHint() const {
  return {QWidget::minimumSizeHint().width(), leastHeight};
}

void ControlRow::showAssignment(const QString& text) {
  mAssignment->setText(text);
}

}  // namespace skarn
