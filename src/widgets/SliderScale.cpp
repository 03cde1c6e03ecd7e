#include "widgets/SliderScale.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QSlider>
#include <QStyle>
#include <algorithm>

namespace skarn {

namespace {

constexpr int tickHeight = 6;
constexpr int gap = 3;  // between slider, ticks and labels

}  // namespace

SliderScale::SliderScale(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSlider* SliderScale::slider() const {
  return findChild<QSlider*>(QString(), Qt::FindDirectChildrenOnly);
}

QList<QLabel*> SliderScale::labels() const {
  QList<QLabel*> scale = findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
  scale.removeIf([](const QLabel* label) { return !label->property(positionProperty).isValid(); });
  return scale;
}

QSize SliderScale::sizeHint() const {
  int width = 0;
  int labelHeight = 0;
  for (const QLabel* label : labels()) {
    width += label->sizeHint().width() + 2 * gap;
    labelHeight = std::max(labelHeight, label->sizeHint().height());
  }
  const QSlider* control = slider();
  const int sliderHeight = control ? control->sizeHint().height() : 0;
  return {width, sliderHeight + gap + tickHeight + (labelHeight > 0 ? gap + labelHeight : 0)};
}

QSize SliderScale::minimumSizeHint() const {
  return sizeHint();
}

int SliderScale::middleAt(const QSlider& slider, int position) const {
  const int handle = style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &slider);
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  return slider.x() + handle / 2 +
         QStyle::sliderPositionFromValue(slider.minimum(), slider.maximum(), position, slider.width() - handle,
                                         slider.invertedAppearance() != isMirrored);
}

void SliderScale::placeChildren() {
  QSlider* control = slider();
  if (control == nullptr) return;
  const int sliderHeight = control->sizeHint().height();
  control->setGeometry(0, 0, width(), sliderHeight);
  const int top = sliderHeight + gap + tickHeight + gap;
  for (QLabel* label : labels()) {
    const QSize size = label->sizeHint();
    const int middle = middleAt(*control, label->property(positionProperty).toInt());
    const int left = std::clamp(middle - size.width() / 2, 0, std::max(0, width() - size.width()));
    label->setGeometry(left, top, size.width(), size.height());
  }
  update();
}

void SliderScale::resizeEvent(QResizeEvent*) {
  placeChildren();
}

// Fonts and texts of the labels are settled by then.
void SliderScale::showEvent(QShowEvent*) {
  placeChildren();
}

void SliderScale::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange &&
      event->type() != QEvent::LayoutDirectionChange) {
    return;
  }
  updateGeometry();
  placeChildren();
}

void SliderScale::paintEvent(QPaintEvent*) {
  const QSlider* control = slider();
  if (control == nullptr) return;
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Dark), 1));
  const int top = control->sizeHint().height() + gap;
  for (const QLabel* label : labels()) {
    const int x = middleAt(*control, label->property(positionProperty).toInt());
    painter.drawLine(x, top, x, top + tickHeight - 1);
  }
}

}  // namespace skarn
