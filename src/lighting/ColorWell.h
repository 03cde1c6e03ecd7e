// A colour well: a button that shows a colour and lets a person choose another one in a colour panel, a sheet on the
// window. Nothing but an outline without a colour. Main thread.
//
// The panel is a QColorDialog named after the well ("mMainColorPanel"); it closes without a choice when the well is
// disabled.
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QPointer>

class QColorDialog;

namespace skarn {

class ColorWell : public QAbstractButton {
  Q_OBJECT

 public:
  explicit ColorWell(QWidget* parent = nullptr);

  // An invalid colour stands for none.
  QColor color() const { return mColor; }
  void setColor(const QColor& color);
  // The colour in the open panel, otherwise the well's own.
  QColor previewedColor() const;

  QSize sizeHint() const override { return {64, 30}; }

  // Closes the panel without a choice. False when none was open.
  bool closePanel();

 signals:
  // The panel shows another colour, or it has closed.
  void colorPreviewed();
  // The panel was accepted and color() is what it showed. Once for each panel, never when it is cancelled.
  void colorChosen();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void openPanel();
  void closed(int result);
  // Says that the colour of the panel is the present one.
  void explainOK();

  QColor mColor;
  QPointer<QColorDialog> mPanel;
};

}  // namespace skarn
