#include "widgets/ControlPainting.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyle>
#include <algorithm>

#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

constexpr qreal checkBoxRadius = 4;
constexpr qreal checkStroke = 1.75;
constexpr qreal chevronStroke = 1.5;
constexpr int scrollThumbInset = 3;

bool isOn(const QStyleOption* option, QStyle::StateFlag flag) {
  return option->state & flag;
}

QColor inkOf(const QStyleOption* option) {
  return option->palette.color(isOn(option, QStyle::State_Enabled) ? QPalette::Normal : QPalette::Disabled,
                               QPalette::Text);
}

// The outline of boxes and fields that take input.
QColor outlineOf(const QStyleOption* option) {
  return isOn(option, QStyle::State_Enabled) ? option->palette.color(QPalette::PlaceholderText) : inkOf(option);
}

QColor groundOf(const QStyleOption* option) {
  return option->palette.color(isOn(option, QStyle::State_Sunken) ? QPalette::Midlight : QPalette::Base);
}

// Saves and restores the painter around smooth painting.
class SmoothPainting {
 public:
  explicit SmoothPainting(QPainter* painter) : mPainter(painter) {
    mPainter->save();
    mPainter->setRenderHint(QPainter::Antialiasing);
  }
  ~SmoothPainting() { mPainter->restore(); }
  SmoothPainting(const SmoothPainting&) = delete;
  SmoothPainting& operator=(const SmoothPainting&) = delete;

 private:
  QPainter* mPainter;
};

}  // namespace

void drawRounded(QPainter* painter, const QRect& rect, const QBrush& fill, const QPen& outline) {
  const SmoothPainting smooth(painter);
  painter->setBrush(fill);
  painter->setPen(outline);
  painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), SkarnStyle::cornerRadius,
                           SkarnStyle::cornerRadius);
}

void drawButtonPanel(const QStyleOption* option, QPainter* painter, bool flat) {
  const bool pressed = option->state & (QStyle::State_Sunken | QStyle::State_On);
  const bool hovered = isOn(option, QStyle::State_MouseOver) && isOn(option, QStyle::State_Enabled);
  if (flat && !pressed && !hovered) return;
  const QPalette& palette = option->palette;
  const QPalette::ColorRole fill =
      pressed ? QPalette::Mid : (hovered ? QPalette::Midlight : (flat ? QPalette::Window : QPalette::Button));
  // The button that Return presses stands out by its outline.
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  const bool isDefault = button != nullptr && (button->features & QStyleOptionButton::DefaultButton) &&
                         isOn(option, QStyle::State_Enabled);
  drawRounded(painter, option->rect, palette.color(fill),
              flat ? QPen(Qt::NoPen) : QPen(palette.color(isDefault ? QPalette::PlaceholderText : QPalette::Mid), 1));
}

void drawCheckBox(const QStyleOption* option, QPainter* painter) {
  const QRectF box = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  const SmoothPainting smooth(painter);
  painter->setPen(QPen(isOn(option, QStyle::State_Off) ? outlineOf(option) : inkOf(option), 1));
  painter->setBrush(groundOf(option));
  painter->drawRoundedRect(box, checkBoxRadius, checkBoxRadius);
  painter->setPen(QPen(inkOf(option), checkStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  // Points of the marks as shares of the box.
  const auto at = [&box](qreal x, qreal y) { return QPointF(box.x() + x * box.width(), box.y() + y * box.height()); };
  if (isOn(option, QStyle::State_On)) {
    painter->drawPolyline(QPolygonF({at(0.24, 0.52), at(0.43, 0.71), at(0.77, 0.31)}));
  } else if (isOn(option, QStyle::State_NoChange)) {
    painter->drawLine(at(0.26, 0.5), at(0.74, 0.5));
  }
}

void drawRadioButton(const QStyleOption* option, QPainter* painter) {
  const QRectF circle = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  const bool isChosen = isOn(option, QStyle::State_On);
  const SmoothPainting smooth(painter);
  painter->setPen(QPen(isChosen ? inkOf(option) : outlineOf(option), 1));
  painter->setBrush(groundOf(option));
  painter->drawEllipse(circle);
  if (!isChosen) return;
  painter->setPen(Qt::NoPen);
  painter->setBrush(inkOf(option));
  painter->drawEllipse(circle.center(), circle.width() / 4, circle.height() / 4);
}

void drawFieldFrame(const QStyleOption* option, QPainter* painter) {
  const bool hasFocus = isOn(option, QStyle::State_HasFocus) && isOn(option, QStyle::State_Enabled);
  const QPalette& palette = option->palette;
  drawRounded(painter, option->rect,
              palette.color(isOn(option, QStyle::State_Enabled) ? QPalette::Base : QPalette::Window),
              QPen(palette.color(hasFocus ? QPalette::Dark : QPalette::Mid), 1));
}

void drawChevron(QPainter* painter, const QRect& rect, const QColor& color, Qt::ArrowType direction) {
  const SmoothPainting smooth(painter);
  painter->setPen(QPen(color, chevronStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->setBrush(Qt::NoBrush);
  painter->translate(QRectF(rect).center());
  switch (direction) {
    case Qt::RightArrow:
      painter->rotate(-90);
      break;
    case Qt::LeftArrow:
      painter->rotate(90);
      break;
    case Qt::UpArrow:
      painter->rotate(180);
      break;
    default:
      break;
  }
  painter->drawPolyline(QPolygonF({QPointF(-4, -2), QPointF(0, 2), QPointF(4, -2)}));
}

void drawLock(QPainter* painter, const QRect& rect, const QColor& color) {
  const SmoothPainting smooth(painter);
  painter->setPen(QPen(color, chevronStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->setBrush(Qt::NoBrush);
  painter->translate(QRectF(rect).center());
  painter->drawRoundedRect(QRectF(-4.5, -0.5, 9, 6.5), 1.5, 1.5);
  QPainterPath shackle(QPointF(-2.75, -0.5));
  shackle.lineTo(-2.75, -2.5);
  shackle.arcTo(QRectF(-2.75, -5.25, 5.5, 5.5), 180, -180);
  shackle.lineTo(2.75, -0.5);
  painter->drawPath(shackle);
}

void drawSlider(const QStyleOptionSlider* option, const QRect& groove, const QRect& handle, QPainter* painter) {
  const QPalette& palette = option->palette;
  const bool isEnabled = isOn(option, QStyle::State_Enabled);
  const QPointF middle = QRectF(handle).center();
  const QRectF track(groove.left() + sliderHandle / 2.0, middle.y() - sliderTrack / 2.0, groove.width() - sliderHandle,
                     sliderTrack);
  const SmoothPainting smooth(painter);
  painter->setPen(Qt::NoPen);
  painter->setBrush(palette.color(QPalette::Mid));
  painter->drawRoundedRect(track, sliderTrack / 2.0, sliderTrack / 2.0);
  QRectF filled = track;
  if (option->upsideDown) {
    filled.setLeft(middle.x());
  } else {
    filled.setRight(middle.x());
  }
  painter->setBrush(isEnabled ? palette.color(QPalette::PlaceholderText) : palette.color(QPalette::Mid));
  painter->drawRoundedRect(filled, sliderTrack / 2.0, sliderTrack / 2.0);

  const QRectF knob(middle.x() - sliderHandle / 2.0 + 0.5, middle.y() - sliderHandle / 2.0 + 0.5, sliderHandle - 1,
                    sliderHandle - 1);
  const bool isHeld = isOn(option, QStyle::State_Sunken) && (option->activeSubControls & QStyle::SC_SliderHandle);
  const bool isMarked = isEnabled && (isHeld || isOn(option, QStyle::State_HasFocus));
  painter->setPen(QPen(isMarked ? palette.color(QPalette::Text) : outlineOf(option), isMarked ? 2 : 1));
  painter->setBrush(palette.color(isHeld ? QPalette::Midlight : QPalette::Base));
  painter->drawEllipse(knob);
}

void drawScrollBar(const QStyleOptionSlider* option, const QRect& thumb, QPainter* painter) {
  const QPalette& palette = option->palette;
  if (option->maximum <= option->minimum) return;
  const bool isMarked = isOn(option, QStyle::State_Enabled) &&
                        (option->activeSubControls & QStyle::SC_ScrollBarSlider) &&
                        (option->state & (QStyle::State_MouseOver | QStyle::State_Sunken));
  QRectF knob = QRectF(thumb);
  if (option->orientation == Qt::Vertical) {
    knob.adjust(scrollThumbInset, 1, -scrollThumbInset, -1);
  } else {
    knob.adjust(1, scrollThumbInset, -1, -scrollThumbInset);
  }
  const qreal radius = std::min(knob.width(), knob.height()) / 2;
  const SmoothPainting smooth(painter);
  painter->setPen(Qt::NoPen);
  painter->setBrush(palette.color(isMarked ? QPalette::PlaceholderText : QPalette::Dark));
  painter->drawRoundedRect(knob, radius, radius);
}

void drawMenuItem(const QStyleOptionMenuItem* option, QPainter* painter) {
  const QPalette& palette = option->palette;
  if (option->menuItemType == QStyleOptionMenuItem::Separator) {
    const int y = option->rect.center().y();
    painter->setPen(QPen(palette.color(QPalette::Mid), 1));
    painter->drawLine(option->rect.left() + menuSidePadding, y, option->rect.right() - menuSidePadding, y);
    return;
  }
  const bool isEnabled = isOn(option, QStyle::State_Enabled);
  if (isOn(option, QStyle::State_Selected) && isEnabled) {
    drawRounded(painter, option->rect.adjusted(4, 1, -4, -1), palette.color(QPalette::Highlight), Qt::NoPen);
  }
  const QColor ink = inkOf(option);
  const QRect mark(option->rect.left() + menuSidePadding, option->rect.top(), menuMarkWidth - menuSidePadding,
                   option->rect.height());
  if (option->checked) {
    const SmoothPainting smooth(painter);
    painter->setPen(QPen(ink, checkStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF middle = QRectF(mark).center();
    painter->drawPolyline(QPolygonF({middle + QPointF(-5, 0), middle + QPointF(-2, 3), middle + QPointF(4, -4)}));
  } else if (!option->icon.isNull()) {
    option->icon.paint(painter, mark, Qt::AlignCenter, isEnabled ? QIcon::Normal : QIcon::Disabled);
  }
  const bool hasSubmenu = option->menuItemType == QStyleOptionMenuItem::SubMenu;
  const int chevron = hasSubmenu ? menuMarkWidth : menuSidePadding;
  const QRect text = option->rect.adjusted(menuMarkWidth + menuSidePadding / 2, 0, -chevron, 0);
  const QStringList parts = option->text.split(QLatin1Char('\t'));
  painter->save();
  painter->setFont(option->font);
  painter->setPen(ink);
  constexpr int flags = Qt::AlignVCenter | Qt::TextHideMnemonic | Qt::TextSingleLine;
  painter->drawText(text, Qt::AlignLeft | flags,
                    painter->fontMetrics().elidedText(parts.constFirst(), Qt::ElideMiddle, text.width(), flags));
  if (parts.size() > 1) {
    painter->setPen(isEnabled ? palette.color(QPalette::PlaceholderText) : ink);
    painter->drawText(text, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, parts.at(1));
  }
  painter->restore();
  if (hasSubmenu) {
    const QRect arrow(option->rect.right() - menuMarkWidth, option->rect.top(), menuMarkWidth, option->rect.height());
    drawChevron(painter, arrow, ink, Qt::RightArrow);
  }
}

void drawArrow(const QStyleOption* option, QPainter* painter, Qt::ArrowType direction) {
  drawChevron(painter, option->rect, inkOf(option), direction);
}

void drawPopUpList(const QStyleOptionComboBox* list, QPainter* painter) {
  const bool isEnabled = list->state & QStyle::State_Enabled;
  if (isEnabled && (list->state & QStyle::State_MouseOver)) {
    drawRounded(painter, list->rect, list->palette.color(QPalette::Midlight),
                QPen(list->palette.color(QPalette::Mid), 1));
    if (list->state & QStyle::State_HasFocus) {
      drawRounded(painter, list->rect, Qt::NoBrush, QPen(list->palette.color(QPalette::Dark), 1));
    }
  } else {
    drawFieldFrame(list, painter);
  }
  if (!(list->subControls & QStyle::SC_ComboBoxArrow)) return;
  const QRect chevron = QStyle::visualRect(
      list->direction, list->rect,
      QRect(list->rect.right() - listChevronWidth, list->rect.top(), listChevronWidth, list->rect.height()));
  drawChevron(painter, chevron,
              list->palette.color(isEnabled ? QPalette::Normal : QPalette::Disabled, QPalette::PlaceholderText),
              Qt::DownArrow);
}

QRect popUpListText(const QStyleOptionComboBox* list) {
  return QStyle::visualRect(list->direction, list->rect, list->rect.adjusted(fieldPadding, 0, -listChevronWidth, 0));
}

QIcon warningIcon(const QPalette& palette, qreal devicePixelRatio) {
  constexpr int side = 40;
  QPixmap pixmap(QSize(side, side) * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette.color(QPalette::WindowText), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolygon(QPolygonF({{20, 5}, {36, 34}, {4, 34}}));
  painter.drawLine(QPointF(20, 15), QPointF(20, 23));
  painter.drawPoint(QPointF(20, 28.5));
  return QIcon(pixmap);
}

}  // namespace skarn
