#include "lighting/ColorWell.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionFocusRect>

#include "platform/DialogMemory.h"
#include "platform/Localization.h"
#include "widgets/SheetFlags.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

constexpr float disabledOpacity = 0.35F;
constexpr int focusGap = 3;  // pixels between the outline and the colour

}  // namespace

ColorWell::ColorWell(QWidget* parent) : QAbstractButton(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  connect(this, &QAbstractButton::clicked, this, &ColorWell::openPanel);
}

void ColorWell::setColor(const QColor& color) {
  setAccessibleDescription(color.isValid() ? color.name(QColor::HexRgb).toUpper() : QString());
  if (mColor == color) return;
  mColor = color;
  update();
}

QColor ColorWell::previewedColor() const {
  return mPanel ? mPanel->currentColor() : mColor;
}

void ColorWell::openPanel() {
  if (mPanel) return;
  withholdDialogMemory();
  mPanel = new QColorDialog(mColor.isValid() ? mColor : QColor(Qt::white), window());
  mPanel->setWindowFlags(sheetFlags);
  mPanel->setObjectName(objectName() + QLatin1String("Panel"));
  mPanel->setWindowTitle(localized("lkeyLightColor"));
  mPanel->setAttribute(Qt::WA_DeleteOnClose);
  mPanel->setWindowModality(Qt::WindowModal);
  mPanel->setOption(QColorDialog::DontUseNativeDialog);
  connect(mPanel, &QColorDialog::currentColorChanged, this, &ColorWell::colorPreviewed);
  connect(mPanel, &QColorDialog::currentColorChanged, this, &ColorWell::explainOK);
  connect(mPanel, &QDialog::finished, this, &ColorWell::closed);
  mPanel->open();
  explainOK();
}

void ColorWell::explainOK() {
  const auto* buttons = mPanel ? mPanel->findChild<QDialogButtonBox*>() : nullptr;
  QPushButton* ok = buttons ? buttons->button(QDialogButtonBox::Ok) : nullptr;
  if (ok != nullptr) ok->setToolTip(mPanel->currentColor() == mColor ? localized("lkeyColorIsSo") : QString());
}

void ColorWell::closed(int result) {
  const QColor chosen = mPanel ? mPanel->currentColor() : QColor();
  mPanel = nullptr;
  if (result == QDialog::Accepted && chosen.isValid()) {
    setColor(chosen);
    emit colorChosen();
  }
  emit colorPreviewed();
}

void ColorWell::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() == QEvent::EnabledChange && !isEnabled()) closePanel();
}

bool ColorWell::closePanel() {
  if (!mPanel) return false;
  mPanel->reject();
  return true;
}

void ColorWell::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void ColorWell::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  qreal inset = 0.5;
  if (hasFocus()) {
    inset += focusGap;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
  }
  const bool isPointedAt = isEnabled() && (underMouse() || isDown());
  painter.setPen(QPen(palette().color(isPointedAt ? QPalette::Dark : QPalette::Mid), 1));
  QColor fill = mColor;
  if (fill.isValid() && !isEnabled()) fill.setAlphaF(disabledOpacity);
  painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
  const qreal radius = SkarnStyle::cornerRadius - inset / 2;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace skarn
