// The look of the application: a flat style over Fusion that takes every colour from the palette.
//
// A label states its role in the dynamic property "textRole", set before it is first shown:
//   heading   semibold, 1.4 of the base size: the window's own name
//   title     semibold, 1.1 of the base size: group titles
//   caption   muted, 0.92 of the base size: captions and notes
//   muted     muted, base size: secondary values
//   value     semibold, base size: what a page is about, such as the profile's name
//   readout   2.2 of the base size: the one number that a page is about
// Labels without a role are plain text. A group box whose dynamic property "isDimmed" is true has a disabled title.
#pragma once

#include <QProxyStyle>

namespace skarn {

class SkarnStyle : public QProxyStyle {
  Q_OBJECT

 public:
  static constexpr const char* textRoleProperty = "textRole";
  static constexpr const char* isDimmedProperty = "isDimmed";
  static constexpr int cornerRadius = 6;  // device-independent pixels

  SkarnStyle();

  // Whether anything may move (SH_Widget_Animation_Duration is 0 otherwise), at first yes. Every widget is told by a
  // style change.
  void setAnimated(bool isAnimated);

  void polish(QWidget* widget) override;
  using QProxyStyle::polish;
  void unpolish(QWidget* widget) override;
  using QProxyStyle::unpolish;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget = nullptr) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget = nullptr) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget = nullptr) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                       const QWidget* widget = nullptr) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget = nullptr) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                  const QWidget* widget = nullptr) const override;
  int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                QStyleHintReturn* result = nullptr) const override;
  QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption* option = nullptr,
                     const QWidget* widget = nullptr) const override;

 protected:
  // Frames dialogs with a hairline: sheets have no border of their own on desktops that draw none.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool mIsAnimated = true;
};

}  // namespace skarn
