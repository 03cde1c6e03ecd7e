#include "buttons/ControlRow.h"

#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>

#include "platform/Images.h"
#include "platform/Localization.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NumberBadge.h"
#include "widgets/PopUpButton.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

// Rows share one width, so equal shares line up as columns.
constexpr int nameShare = 3;
constexpr int popUpShare = 7;
constexpr int columnGap = 8;
constexpr int sidePadding = 4;
constexpr int naturalHeight = 32;
constexpr int leastHeight = 22;
constexpr int repeatButtonSize = 22;
constexpr int repeatIconSize = 16;

bool isKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

}  // namespace

ControlRow::ControlRow(const ControlDescriptor& control, QWidget* parent)
    : QWidget(parent),
      mControl(control),
      mName(new ElidedLabel(this)),
      mPopUp(new PopUpButton(this)),
      mRepeatButton(new QToolButton(this)) {
  const QString field = QLatin1String(control.fieldName);
  setObjectName(field + QStringLiteral("Row"));
  auto* badge = new NumberBadge(this);
  badge->setText(QString::number(control.ordinal));
  badge->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("caption"));
  mName->setObjectName(field + QStringLiteral("Label"));
  mName->setText(localized(control.nameKey));
  mName->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("muted"));
  mName->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  mPopUp->setObjectName(field);
  mPopUp->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  mPopUp->setAccessibleName(localized("lkeyControlName").arg(control.ordinal).arg(localized(control.nameKey)));
  mRepeatButton->setObjectName(QLatin1String(control.repeatButton));
  mRepeatButton->setAccessibleName(localized("lkeyControlRepeat").arg(control.ordinal));
  mRepeatButton->setToolTip(localized("lkeyMacroRepeat"));
  mRepeatButton->setFixedSize(repeatButtonSize, repeatButtonSize);
  mRepeatButton->setIconSize({repeatIconSize, repeatIconSize});
  mRepeatButton->setFocusPolicy(Qt::StrongFocus);
  QSizePolicy place = mRepeatButton->sizePolicy();
  place.setRetainSizeWhenHidden(true);
  mRepeatButton->setSizePolicy(place);
  mRepeatButton->hide();
  for (QWidget* widget : {static_cast<QWidget*>(mPopUp), static_cast<QWidget*>(mRepeatButton)})
    widget->installEventFilter(this);

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(sidePadding, 0, 0, 0);
  layout->setSpacing(columnGap);
  layout->addWidget(badge);
  layout->addWidget(mName, nameShare);
  layout->addWidget(mPopUp, popUpShare);
  layout->addWidget(mRepeatButton);
  tintRepeatIcon();
}

QSize ControlRow::sizeHint() const {
  return {QWidget::sizeHint().width(), naturalHeight};
}

QSize ControlRow::minimumSizeHint() const {
  return {QWidget::minimumSizeHint().width(), leastHeight};
}

void ControlRow::setHighlighted(bool highlighted) {
  if (highlighted == mIsHighlighted) return;
  mIsHighlighted = highlighted;
  update();
}

bool ControlRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    if (isKeyboard(static_cast<QFocusEvent*>(event)->reason())) emit hovered(true);
  } else if (event->type() == QEvent::FocusOut) {
    if (isKeyboard(static_cast<QFocusEvent*>(event)->reason())) emit hovered(false);
  }
  return QWidget::eventFilter(watched, event);
}

void ControlRow::enterEvent(QEnterEvent* event) {
  emit hovered(true);
  QWidget::enterEvent(event);
}

void ControlRow::leaveEvent(QEvent* event) {
  emit hovered(false);
  QWidget::leaveEvent(event);
}

void ControlRow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) tintRepeatIcon();
  QWidget::changeEvent(event);
}

void ControlRow::paintEvent(QPaintEvent*) {
  if (!mIsHighlighted) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().brush(QPalette::Midlight));
  painter.drawRoundedRect(QRectF(rect()), SkarnStyle::cornerRadius, SkarnStyle::cornerRadius);
}

void ControlRow::tintRepeatIcon() {
  mRepeatButton->setIcon(tintedIcon(QStringLiteral("repeat.png"), palette().color(QPalette::ButtonText)));
}

}  // namespace skarn
