#include "widgets/SkarnStyle.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTableView>

#include "widgets/ControlPainting.h"
#include "widgets/Palettes.h"
#include "widgets/RowDelegate.h"
#include "widgets/TextRoles.h"

namespace skarn {

namespace {

constexpr int titleGap = 8;
constexpr int pageMargin = 24;
constexpr int tabSidePadding = 24;
constexpr int tabVerticalPadding = 20;
constexpr int underlineHeight = 3;
constexpr int checkBoxSize = 16;
constexpr int headerHeight = 32;
constexpr int headerPadding = RowDelegate::sidePadding;  // the titles of columns stand over their texts
constexpr QSize buttonPadding(16, 6);
constexpr int controlHeight = 30;
constexpr int smallestThumb = 32;
constexpr int listTextInset = 1;  // of a list's text in its place
constexpr int menuMargin = 4;
constexpr int submenuDelay = 150;       // milliseconds
constexpr int animationDuration = 140;  // milliseconds

void drawTabShape(const QStyleOptionTab* tab, QPainter* painter) {
  const bool selected = tab->state & QStyle::State_Selected;
  const bool hovered = (tab->state & QStyle::State_MouseOver) && (tab->state & QStyle::State_Enabled);
  if (!selected && !hovered) return;
  const QRect line(tab->rect.left() + tabSidePadding / 2, tab->rect.bottom() - underlineHeight + 1,
                   tab->rect.width() - tabSidePadding, underlineHeight);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(selected ? accentColor(tab->palette) : tab->palette.color(QPalette::Mid));
  painter->drawRoundedRect(QRectF(line), underlineHeight / 2.0, underlineHeight / 2.0);
  painter->restore();
}

// The whole bar is its groove: there are no arrow buttons.
QRect scrollBarPart(const QStyleOptionSlider* bar, QStyle::SubControl part) {
  const bool isVertical = bar->orientation == Qt::Vertical;
  const int length = isVertical ? bar->rect.height() : bar->rect.width();
  const qint64 range = qint64{bar->maximum} - bar->minimum;
  const int thumb = range <= 0 ? length
                               : std::clamp(static_cast<int>(qint64{length} * bar->pageStep / (range + bar->pageStep)),
                                            std::min(smallestThumb, length), length);
  const int before =
      QStyle::sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb, bar->upsideDown);
  int from = 0;
  int size = 0;
  switch (part) {
    case QStyle::SC_ScrollBarGroove:
      size = length;
      break;
    case QStyle::SC_ScrollBarSlider:
      from = before;
      size = thumb;
      break;
    case QStyle::SC_ScrollBarSubPage:
      size = before;
      break;
    case QStyle::SC_ScrollBarAddPage:
      from = before + thumb;
      size = length - from;
      break;
    default:
      return {};
  }
  const QRect rect = isVertical ? QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), size)
                                : QRect(bar->rect.left() + from, bar->rect.top(), size, bar->rect.height());
  return QStyle::visualRect(bar->direction, bar->rect, rect);
}

QSize menuItemSize(const QStyleOptionMenuItem& item, const QSize& fallback) {
  if (item.menuItemType == QStyleOptionMenuItem::Separator) return {fallback.width(), 2 * menuMargin + 1};
  const QFontMetrics metrics(item.font);
  int width = 0;
  for (const QString& part : item.text.split(QLatin1Char('\t')))
    width += metrics.horizontalAdvance(part) + menuSidePadding;
  return {menuMarkWidth + width + menuMarkWidth, std::max(menuItemHeight, metrics.height() + 8)};
}

}  // namespace

SkarnStyle::SkarnStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("fusion"))) {}

void SkarnStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QDialog*>(widget)) widget->installEventFilter(this);
  if (auto* label = qobject_cast<QLabel*>(widget)) {
    const QVariant role = label->property(textRoleProperty);
    if (role.isValid()) applyTextRole(*label, role.toString());
  } else if (auto* table = qobject_cast<QTableView*>(widget); table && table->frameShape() == QFrame::NoFrame) {
    // A table without a frame lies on the page itself.
    table->viewport()->setBackgroundRole(QPalette::Window);
  }
}

void SkarnStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  switch (element) {
    case PE_FrameTabWidget:
    case PE_FrameGroupBox:
      return;
    case PE_FrameTabBarBase: {
      painter->setPen(QPen(option->palette.color(QPalette::Mid), 1));
      painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
      return;
    }
    case PE_PanelButtonCommand:
      drawButtonPanel(option, painter, false);
      return;
    case PE_PanelButtonTool:
      drawButtonPanel(option, painter, true);
      return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      drawCheckBox(option, painter);
      return;
    case PE_IndicatorRadioButton:
      drawRadioButton(option, painter);
      return;
    case PE_IndicatorArrowLeft:
      drawArrow(option, painter, Qt::LeftArrow);
      return;
    case PE_IndicatorArrowRight:
      drawArrow(option, painter, Qt::RightArrow);
      return;
    case PE_IndicatorArrowUp:
      drawArrow(option, painter, Qt::UpArrow);
      return;
    case PE_IndicatorArrowDown:
      drawArrow(option, painter, Qt::DownArrow);
      return;
    case PE_PanelLineEdit:
      if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option); frame && frame->lineWidth > 0) {
        drawFieldFrame(option, painter);
      }
      return;
    case PE_PanelMenu:
      painter->fillRect(option->rect, option->palette.color(QPalette::Base));
      return;
    case PE_FrameMenu:
      painter->setPen(QPen(option->palette.color(QPalette::Mid), 1));
      painter->setBrush(Qt::NoBrush);
      painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
      return;
    case PE_FrameFocusRect:
      drawRounded(painter, option->rect, Qt::NoBrush, QPen(option->palette.color(QPalette::Dark), 1));
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void SkarnStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  switch (element) {
    case CE_MenuItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) drawMenuItem(item, painter);
      return;
    case CE_PushButton:
      QProxyStyle::drawControl(element, option, painter, widget);
      if (option->state & State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(*option);
        focus.rect = subElementRect(SE_PushButtonFocusRect, option, widget);
        proxy()->drawPrimitive(PE_FrameFocusRect, &focus, painter, widget);
      }
      return;
    case CE_MenuEmptyArea:
      painter->fillRect(option->rect, option->palette.color(QPalette::Base));
      return;
    case CE_ComboBoxLabel:
      if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
        QStyleOptionComboBox cut(*list);
        const int width = proxy()->subControlRect(CC_ComboBox, list, SC_ComboBoxEditField, widget).width();
        cut.currentText = cut.fontMetrics.elidedText(cut.currentText, Qt::ElideRight, width - 2 * listTextInset);
        QProxyStyle::drawControl(element, &cut, painter, widget);
      }
      return;
    case CE_TabBarTabShape:
      if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) drawTabShape(tab, painter);
      return;
    case CE_TabBarTabLabel:
      if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
        const bool selected = tab->state & State_Selected;
        painter->save();
        painter->setFont(selected ? semibold(painter->font()) : painter->font());
        drawItemText(painter, tab->rect, Qt::AlignCenter | Qt::TextShowMnemonic, tab->palette,
                     tab->state & State_Enabled, tab->text,
                     selected ? QPalette::WindowText : QPalette::PlaceholderText);
        if (tab->state & State_HasFocus) {
          QStyleOptionFocusRect focus;
          focus.QStyleOption::operator=(*tab);
          focus.rect = tab->rect.adjusted(tabSidePadding / 4, tabVerticalPadding / 4, -tabSidePadding / 4,
                                          -tabVerticalPadding / 4 - underlineHeight);
          proxy()->drawPrimitive(PE_FrameFocusRect, &focus, painter, widget);
        }
        painter->restore();
      }
      return;
    case CE_HeaderSection:
      painter->fillRect(option->rect, option->palette.color(QPalette::Window));
      painter->setPen(QPen(option->palette.color(QPalette::Mid), 1));
      painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
      return;
    case CE_HeaderEmptyArea:
      painter->fillRect(option->rect, option->palette.color(QPalette::Window));
      return;
    case CE_HeaderLabel:
      if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
        painter->save();
        painter->setFont(captionFont(painter->font()));
        Qt::Alignment alignment = header->textAlignment;
        if (!(alignment & Qt::AlignVertical_Mask)) alignment |= Qt::AlignVCenter;
        const QRect place = header->rect.adjusted(headerPadding, 0, -headerPadding, 0);
        drawItemText(painter, place, static_cast<int>(alignment), header->palette, header->state & State_Enabled,
                     painter->fontMetrics().elidedText(header->text, Qt::ElideRight, place.width()),
                     QPalette::PlaceholderText);
        painter->restore();
      }
      return;
    default:
      QProxyStyle::drawControl(element, option, painter, widget);
  }
}

void SkarnStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
  if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
    if (control == CC_Slider && slider->orientation == Qt::Horizontal) {
      drawSlider(slider, subControlRect(control, option, SC_SliderGroove, widget),
                 subControlRect(control, option, SC_SliderHandle, widget), painter);
      return;
    }
    if (control == CC_ScrollBar) {
      painter->fillRect(option->rect, option->palette.color(widget ? widget->backgroundRole() : QPalette::Window));
      drawScrollBar(slider, subControlRect(control, option, SC_ScrollBarSlider, widget), painter);
      return;
    }
  }
  if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option); list && !list->editable) {
    drawPopUpList(list, painter);
    return;
  }
  const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  if (control != CC_GroupBox || box == nullptr || (box->subControls & SC_GroupBoxCheckBox)) {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    return;
  }
  const bool isDimmed = widget != nullptr && widget->property(isDimmedProperty).toBool();
  painter->save();
  painter->setFont(titleFont(widget));
  QPalette palette = box->palette;
  if (isDimmed) palette.setCurrentColorGroup(QPalette::Disabled);
  drawItemText(painter, subControlRect(CC_GroupBox, box, SC_GroupBoxLabel, widget), Qt::AlignLeft | Qt::AlignVCenter,
               palette, (box->state & State_Enabled) && !isDimmed, box->text, QPalette::WindowText);
  painter->restore();
}

QRect SkarnStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                 const QWidget* widget) const {
  if (control == CC_ScrollBar) {
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option)) return scrollBarPart(bar, subControl);
  }
  if (control == CC_ComboBox && subControl == SC_ComboBoxEditField) {
    const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (list != nullptr && !list->editable) return popUpListText(list);
  }
  const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  if (control != CC_GroupBox || box == nullptr || (box->subControls & SC_GroupBoxCheckBox)) {
    return QProxyStyle::subControlRect(control, option, subControl, widget);
  }
  const int titleHeight = QFontMetrics(titleFont(widget)).height();
  switch (subControl) {
    case SC_GroupBoxLabel:
      return {box->rect.left(), box->rect.top(), box->rect.width(), titleHeight};
    case SC_GroupBoxContents:
    case SC_GroupBoxFrame:
      return box->text.isEmpty() ? box->rect : box->rect.adjusted(0, titleHeight + titleGap, 0, 0);
    default:
      return QProxyStyle::subControlRect(control, option, subControl, widget);
  }
}

QSize SkarnStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  switch (type) {
    case CT_TabBarTab:
      // The current tab's semibold text must not move its neighbours.
      if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
        const QFont font = widget ? widget->font() : qApp->font();
        size.rwidth() +=
            QFontMetrics(semibold(font)).horizontalAdvance(tab->text) - QFontMetrics(font).horizontalAdvance(tab->text);
      }
      return size;
    case CT_PushButton:
      return QSize(contents + 2 * buttonPadding).expandedTo({0, controlHeight});
    case CT_ComboBox:
      return {contents.width() + 2 * fieldPadding + listChevronWidth, std::max(size.height(), controlHeight)};
    case CT_LineEdit:
      return {size.width(), std::max(size.height(), controlHeight)};
    case CT_SpinBox:
      // Its field is padded as any other.
      return {size.width() + 2 * fieldPadding, std::max(size.height(), controlHeight)};
    case CT_MenuItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) return menuItemSize(*item, size);
      return size;
    case CT_HeaderSection:
      return {size.width() + 2 * headerPadding, std::max(size.height(), headerHeight)};
    default:
      return size;
  }
}

QRect SkarnStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  QRect rect = QProxyStyle::subElementRect(element, option, widget);
  if (element == SE_HeaderArrow) rect.moveTop(option->rect.center().y() - rect.height() / 2);
  if (element == SE_LineEditContents) return rect.adjusted(fieldPadding - 2, 0, 2 - fieldPadding, 0);
  // The first tab's text stands at the page's margin.
  if (element == SE_TabWidgetTabBar) return rect.adjusted(pageMargin - tabSidePadding / 2, 0, 0, 0);
  return rect;
}

int SkarnStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
      return checkBoxSize;
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return checkBoxSize;
    case PM_SliderLength:
    case PM_SliderControlThickness:
      return sliderHandle;
    case PM_SliderThickness:
      return sliderHandle + 2;
    case PM_ScrollBarExtent:
      return scrollBarExtent;
    case PM_HeaderMargin:
      // The room around a title is its section's padding.
      return 0;
    case PM_MenuPanelWidth:
      return 1;
    case PM_MenuVMargin:
      return menuMargin;
    case PM_TabBarTabHSpace:
      return tabSidePadding;
    case PM_TabBarTabVSpace:
      return tabVerticalPadding;
    case PM_TabBarTabOverlap:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabShiftHorizontal:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int SkarnStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* result) const {
  switch (hint) {
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_AllowWheelScrolling:
      return 0;
    case SH_DialogButtonLayout:
      // Cancel at the left of what is done, as in the sheets, whatever the desktop's own order is.
      return QDialogButtonBox::GnomeLayout;
    case SH_Slider_AbsoluteSetButtons:
      // A click on the track moves the handle there.
      return Qt::LeftButton;
    case SH_ComboBox_Popup:
      // The list of a pop-up list looks like the menus.
      return 1;
    case SH_Menu_Scrollable:
      return 1;
    case SH_Menu_SubMenuPopupDelay:
      return submenuDelay;
    case SH_TabBar_Alignment:
      return Qt::AlignLeft;
    case SH_UnderlineShortcut:
      return 0;
    case SH_Widget_Animation_Duration:
      return mIsAnimated ? animationDuration : 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

void SkarnStyle::setAnimated(bool isAnimated) {
  if (mIsAnimated == isAnimated) return;
  mIsAnimated = isAnimated;
  for (QWidget* widget : QApplication::allWidgets()) {
    QEvent change(QEvent::StyleChange);
    QApplication::sendEvent(widget, &change);
  }
}

void SkarnStyle::unpolish(QWidget* widget) {
  widget->removeEventFilter(this);
  QProxyStyle::unpolish(widget);
}

bool SkarnStyle::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint) {
    if (auto* dialog = qobject_cast<QDialog*>(watched)) {
      QPainter painter(dialog);
      painter.setPen(QPen(dialog->palette().color(QPalette::Mid), 1));
      painter.drawRect(dialog->rect().adjusted(0, 0, -1, -1));
    }
  }
  return QProxyStyle::eventFilter(watched, event);
}

QIcon SkarnStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  if (icon != SP_MessageBoxWarning) return QProxyStyle::standardIcon(icon, option, widget);
  return warningIcon(widget ? widget->palette() : qApp->palette(), widget ? widget->devicePixelRatioF() : 1);
}

}  // namespace skarn
