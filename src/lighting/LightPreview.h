// The mouse as its main light shows it: in one colour, through the spectrum, or dark. Main thread.
//
// The spectrum moves only while somebody can see it: there is no timer while the widget is hidden, disabled or on
// another tab, while its window is minimised, or where the style asks for no animation (SH_Widget_Animation_Duration
// of 0), and then the colours of the spectrum stand side by side.
#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QPixmap>
#include <QWidget>

namespace skarn {

class LightPreview : public QWidget {
  Q_OBJECT

 public:
  enum class Effect { None, FixedColor, SpectrumCycling };

  struct Light {
    Effect effect = Effect::None;
    QColor color;        // of the fixed colour; none when invalid
    qreal strength = 0;  // from 0, dark, to 1
    friend bool operator==(const Light&, const Light&) = default;
  };

  explicit LightPreview(QWidget* parent = nullptr);

  const Light& light() const { return mLight; }
  void setLight(const Light& light);
  bool isAnimated() const { return mTimer.isActive(); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;  // the window's state

 private:
  bool isLit() const;
  bool allowsMotion() const;
  QBrush lightBrush(qreal width) const;
  void startOrStop();

  Light mLight;
  QPixmap mMask;  // of the lit parts; made when it is first needed
  QBasicTimer mTimer;
  int mStep = 0;
};

}  // namespace skarn
