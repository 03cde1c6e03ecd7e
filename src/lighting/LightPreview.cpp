#include "lighting/LightPreview.h"

#include <QEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QStyle>
#include <QTimerEvent>
#include <algorithm>

#include "platform/Images.h"

namespace skarn {

namespace {

constexpr int stepMilliseconds = 50;
constexpr int stepsPerCycle = 160;
constexpr qreal disabledOpacity = 0.45;
constexpr QSize pictureSize(420, 400);  // of the drawing, in device-independent pixels
constexpr int leastDivisor = 2;
constexpr int glowDivisor = 8;
constexpr int glowLayers = 2;

QColor spectrumColor(qreal share) {
  return QColor::fromHsvF(static_cast<float>(share), 1, 1);
}

// The lit parts as a mask, with a glow around them: the mask made small and large again.
QPixmap glowingMask() {
  const QPixmap mask = image(QStringLiteral("mouseLight.png"));
  if (mask.isNull()) return {};
  QPixmap glow = mask.scaled(mask.size() / glowDivisor, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     .scaled(mask.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  glow.setDevicePixelRatio(mask.devicePixelRatio());
  const QPixmap halo = glow;
  QPainter painter(&glow);
  for (int layer = 1; layer < glowLayers; ++layer) painter.drawPixmap(0, 0, halo);
  painter.drawPixmap(0, 0, mask);
  return glow;
}

}  // namespace

LightPreview::LightPreview(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void LightPreview::setLight(const Light& light) {
  if (mLight == light) return;
  mLight = light;
  startOrStop();
  update();
}

QSize LightPreview::sizeHint() const {
  return pictureSize;
}

QSize LightPreview::minimumSizeHint() const {
  return pictureSize / leastDivisor;
}

bool LightPreview::isLit() const {
  const bool hasColor =
      mLight.effect == Effect::SpectrumCycling || (mLight.effect == Effect::FixedColor && mLight.color.isValid());
  return isEnabled() && hasColor && mLight.strength > 0;
}

bool LightPreview::allowsMotion() const {
  return style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
}

void LightPreview::startOrStop() {
  const bool moves =
      isVisible() && !window()->isMinimized() && isLit() && mLight.effect == Effect::SpectrumCycling && allowsMotion();
  if (moves == mTimer.isActive()) return;
  if (moves) {
    mTimer.start(stepMilliseconds, this);
  } else {
    mTimer.stop();
  }
  update();
}

void LightPreview::timerEvent(QTimerEvent* event) {
  if (event->timerId() != mTimer.timerId()) return;
  mStep = (mStep + 1) % stepsPerCycle;
  update();
}

void LightPreview::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  window()->installEventFilter(this);
  startOrStop();
}

void LightPreview::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  window()->removeEventFilter(this);
  startOrStop();
}

void LightPreview::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange || event->type() == QEvent::StyleChange) startOrStop();
}

bool LightPreview::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && watched == window()) startOrStop();
  return QWidget::eventFilter(watched, event);
}

QBrush LightPreview::lightBrush(qreal width) const {
  if (mLight.effect == Effect::FixedColor) return mLight.color;
  if (allowsMotion()) return spectrumColor(static_cast<qreal>(mStep) / stepsPerCycle);
  constexpr int stops = 6;
  QLinearGradient spectrum(0, 0, width, 0);
  for (int stop = 0; stop <= stops; ++stop) {
    const qreal share = static_cast<qreal>(stop) / stops;
    spectrum.setColorAt(share, spectrumColor(share));
  }
  return spectrum;
}

void LightPreview::paintEvent(QPaintEvent*) {
  const QPixmap mouse = image(QStringLiteral("mouseUnlit.png"));
  if (mouse.isNull()) return;
  const QSize shown = pictureSize.scaled(size().boundedTo(pictureSize), Qt::KeepAspectRatio);
  const QRect place = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, shown, rect());
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setOpacity(isEnabled() ? 1 : disabledOpacity);
  painter.drawPixmap(place, mouse);
  if (!isLit()) return;
  if (mMask.isNull()) mMask = glowingMask();
  if (mMask.isNull()) return;
  QPixmap light = mMask;
  const QSizeF size = light.deviceIndependentSize();
  QPainter tint(&light);
  tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
  tint.fillRect(QRectF(QPointF(), size), lightBrush(size.width()));
  tint.end();
  painter.setOpacity(std::clamp(mLight.strength, 0.0, 1.0));
  painter.drawPixmap(place, light);
}

}  // namespace skarn
