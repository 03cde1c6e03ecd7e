#include "buttons/MouseView.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTransform>
#include <array>
#include <utility>

#include "buttons/ControlOutlines.h"
#include "buttons/ControlRow.h"
#include "platform/Images.h"
#include "widgets/Palettes.h"
#include "widgets/PlainToolTip.h"

namespace skarn {

namespace {

constexpr qreal glowWidth = 2;
constexpr float groundOpacity = 0.22F;
constexpr float veilOpacity = 0.6F;
// Of a control that recedes into the drawing, which is as dark in every palette.
constexpr QRgb drawnGround = qRgba(0x20, 0x21, 0x24, 0xA0);

// The eighth begins with a capital letter.
constexpr std::array<const char*, vorn::keys::keymapCount> pictures = {
    "skarn_keymap1.png", "skarn_keymap2.png", "skarn_keymap3.png", "skarn_keymap4.png",
    "skarn_keymap5.png", "skarn_keymap6.png", "skarn_keymap7.png", "Skarn_keymap8.png"};

}  // namespace

MouseView::MouseView(QWidget* parent) : PictureLabel(parent) {
  setMouseTracking(true);
}

void MouseView::setKeymapPicture(int keymap) {
  if (keymap < 0 || keymap >= static_cast<int>(pictures.size())) return;
  mKeymap = keymap;
  if (isVisible()) showPicture();
}

void MouseView::setHighlighted(const ControlDescriptor* control) {
  if (std::exchange(mHighlighted, control) != control) update();
}

void MouseView::setFound(std::optional<std::vector<const ControlDescriptor*>> found) {
  if (mFound == found) return;
  mFound = std::move(found);
  update();
}

void MouseView::setMissing(std::vector<const ControlDescriptor*> missing) {
  if (mMissing == missing) return;
  mMissing = std::move(missing);
  update();
}

void MouseView::setDescription(std::function<QString(const ControlDescriptor&)> description) {
  mDescription = std::move(description);
}

const ControlDescriptor* MouseView::controlAt(const QPointF& position) const {
  bool isInvertible = false;
  const QTransform back = placement().inverted(&isInvertible);
  return isInvertible ? controlOutlines().controlAt(back.map(position)) : nullptr;
}

QPointF MouseView::placeOf(const ControlDescriptor& control) const {
  const QPainterPath outline = placement().map(controlOutlines().of(control));
  return outline.boundingRect().center();
}

void MouseView::showEvent(QShowEvent* event) {
  PictureLabel::showEvent(event);
  showPicture();
}

void MouseView::showPicture() {
  if (mKeymap < 0 || std::exchange(mShownKeymap, mKeymap) == mKeymap) return;
  setPixmap(image(QLatin1String(pictures[static_cast<std::size_t>(mKeymap)])));
}

QTransform MouseView::placement() const {
  const QRectF shown = shownRect();
  const QSizeF drawing = controlOutlines().drawing;
  if (shown.isEmpty() || drawing.isEmpty()) return QTransform::fromScale(0, 0);
  return QTransform::fromTranslate(shown.x(), shown.y())
      .scale(shown.width() / drawing.width(), shown.height() / drawing.height());
}

bool MouseView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !isEnabled()) return PictureLabel::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const ControlDescriptor* control = controlAt(help->pos());
  if (control == nullptr) return PictureLabel::event(event);
  showPlainToolTip(*help, descriptionOf(*control), this);
  return true;
}

QString MouseView::descriptionOf(const ControlDescriptor& control) const {
  return mDescription ? mDescription(control) : spokenName(control);
}

void MouseView::paintEvent(QPaintEvent* event) {
  PictureLabel::paintEvent(event);
  if (!isEnabled() || shownRect().isEmpty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!mMissing.empty()) paintMissing(painter);
  if (mFound) paintFound(painter);
  if (mHighlighted != nullptr) light(painter, *mHighlighted);
}

void MouseView::paintMissing(QPainter& painter) const {
  for (const ControlDescriptor* control : mMissing) {
    // What is lit is to be read.
    if (control != mHighlighted)
      painter.fillPath(placement().map(controlOutlines().of(*control)), QColor::fromRgba(drawnGround));
  }
}

void MouseView::paintFound(QPainter& painter) const {
  QPainterPath veil;
  veil.addRect(shownRect());
  for (const ControlDescriptor* control : *mFound) veil -= placement().map(controlOutlines().of(*control));
  QColor ground = palette().color(QPalette::Window);
  ground.setAlphaF(veilOpacity);
  painter.fillPath(veil, ground);
  for (const ControlDescriptor* control : *mFound) light(painter, *control);
}

void MouseView::light(QPainter& painter, const ControlDescriptor& control) const {
  const QColor accent = accentColor(palette());
  QColor ground = accent;
  ground.setAlphaF(groundOpacity);
  painter.setPen(QPen(accent, glowWidth));
  painter.setBrush(ground);
  painter.drawPath(placement().map(controlOutlines().of(control)));
}

void MouseView::mousePressEvent(QMouseEvent* event) {
  mPressed = event->button() == Qt::LeftButton ? controlAt(event->position()) : nullptr;
}

void MouseView::mouseMoveEvent(QMouseEvent* event) {
  hover(controlAt(event->position()));
}

void MouseView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const ControlDescriptor* pressed = std::exchange(mPressed, nullptr);
  if (pressed != nullptr && pressed == controlAt(event->position())) emit controlClicked(pressed);
}

void MouseView::contextMenuEvent(QContextMenuEvent* event) {
  if (const ControlDescriptor* control = controlAt(event->pos())) {
    emit menuAsked(*control, event->globalPos());
  } else {
    PictureLabel::contextMenuEvent(event);
  }
}

void MouseView::leaveEvent(QEvent* event) {
  hover(nullptr);
  PictureLabel::leaveEvent(event);
}

void MouseView::hover(const ControlDescriptor* control) {
  if (std::exchange(mHovered, control) == control) return;
  if (control == nullptr) {
    unsetCursor();
  } else {
    setCursor(Qt::PointingHandCursor);
  }
  emit controlHovered(control);
}

}  // namespace skarn
