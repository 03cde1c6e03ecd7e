// How the style paints single controls; every colour comes from the option's palette. Main thread.
#pragma once

#include <QBrush>
#include <QIcon>
#include <QPen>
#include <QRect>
#include <QStyleOption>

class QPainter;
class QPainterPath;

namespace skarn {

// A rectangle with the application's round corners, its outline on pixel centres so that a line of one pixel stays one.
void drawRounded(QPainter* painter, const QRect& rect, const QBrush& fill, const QPen& outline);

// flat: nothing but its content until it is hovered, pressed or on.
void drawButtonPanel(const QStyleOption* option, QPainter* painter, bool flat);
void drawCheckBox(const QStyleOption* option, QPainter* painter);
void drawRadioButton(const QStyleOption* option, QPainter* painter);
// The ground of a text field or of a pop-up list; the outline tells the focus.
void drawFieldFrame(const QStyleOption* option, QPainter* painter);
// A chevron of one-and-a-half pixels in the middle of the rectangle.
void drawChevron(QPainter* painter, const QRect& rect, const QColor& color, Qt::ArrowType direction);

// A closed padlock in lines, in the middle of the rectangle.
void drawLock(QPainter* painter, const QRect& rect, const QColor& color);

// A chevron as large as the option's rectangle allows, in the colour of its text.
void drawArrow(const QStyleOption* option, QPainter* painter, Qt::ArrowType direction);

constexpr int fieldPadding = 8;       // beside the text of a text field or of a pop-up list
constexpr int listChevronWidth = 24;  // the place of a pop-up list's chevron, at the end of its text
// A pop-up list's ground and, among its subcontrols, chevron; its text is the control's label.
void drawPopUpList(const QStyleOptionComboBox* list, QPainter* painter);
QRect popUpListText(const QStyleOptionComboBox* list);

constexpr int sliderHandle = 16;  // diameter
constexpr int sliderTrack = 4;    // height
void drawSlider(const QStyleOptionSlider* option, const QRect& groove, const QRect& handle, QPainter* painter);

// The thumb of a scroll bar: round, without arrows, on the ground of what it scrolls.
constexpr int scrollBarExtent = 12;
void drawScrollBar(const QStyleOptionSlider* option, const QRect& thumb, QPainter* painter);

// An entry of a menu: its mark or icon at the left, its text, and a chevron where it has a submenu.
constexpr int menuItemHeight = 28;
constexpr int menuSidePadding = 12;
constexpr int menuMarkWidth = 28;
void drawMenuItem(const QStyleOptionMenuItem* option, QPainter* painter);

// A triangle with an exclamation mark, in lines.
QIcon warningIcon(const QPalette& palette, qreal devicePixelRatio);

}  // namespace skarn
