// The labels of a scale stand under the positions that they name.
#include "widgets/SliderScale.h"

#include <QApplication>
#include <QLabel>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTest>
#include <cstdlib>

#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

namespace {

struct Scale {
  Scale(int minimum, int maximum, const QList<int>& positions) {
    slider = new QSlider(Qt::Horizontal, &scale);
    slider->setRange(minimum, maximum);
    for (const int position : positions) {
      auto* label = new QLabel(QString::number(position), &scale);
      label->setProperty(SliderScale::positionProperty, position);
      labels << label;
    }
    scale.resize(600, scale.sizeHint().height());
    scale.show();
  }
  // Where a press puts the slider: the middle of the handle at that position.
  int handleMiddle(int position) {
    slider->setValue(position);
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = Qt::Horizontal;
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->value();
    return slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider).center().x() +
           slider->x();
  }

  SliderScale scale;
  QSlider* slider;
  QList<QLabel*> labels;
};

}  // namespace

class SliderScaleTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void aLabelStandsUnderTheHandleAtItsPosition() {
    Scale scale(100, 5600, {100, 1000, 2000, 3000, 4000, 5000, 5600});
    for (QLabel* label : scale.labels.mid(1, 5)) {
      const int expected = scale.handleMiddle(label->property(SliderScale::positionProperty).toInt());
      QVERIFY2(std::abs(label->geometry().center().x() - expected) <= 2, qPrintable(label->text()));
      QVERIFY(label->y() > scale.slider->geometry().bottom());
    }
  }

  void theLabelsAtTheEndsStayInside() {
    Scale scale(1, 4, {1, 2, 3, 4});
    scale.labels.first()->setText(QStringLiteral("switched off altogether"));
    scale.scale.resize(601, scale.scale.height());
    for (const QLabel* label : scale.labels) {
      QVERIFY(label->x() >= 0);
      QVERIFY(label->geometry().right() <= scale.scale.width());
    }
  }

  void labelsOfOnePositionStandSideBySideUnderIt() {
    Scale scale(1, 4, {1, 2, 2, 3, 4});
    scale.labels[2]->setText(QStringLiteral("min"));
    scale.scale.resize(601, scale.scale.height());
    const QRect number = scale.labels[1]->geometry();
    const QRect unit = scale.labels[2]->geometry();
    QVERIFY(unit.left() > number.right() && unit.left() <= number.right() + 8);
    QCOMPARE(unit.bottom(), number.bottom());
    QVERIFY(std::abs((number | unit).center().x() - scale.handleMiddle(2)) <= 2);
    QVERIFY(!unit.intersects(scale.labels[3]->geometry()));
    QCOMPARE(scale.scale.textAt(2), QStringLiteral("2 min"));
    QCOMPARE(scale.scale.textAt(4), QStringLiteral("4"));
    QCOMPARE(scale.scale.textAt(5), QString());
  }

  void theScaleFollowsItsWidth() {
    Scale scale(0, 10, {5});
    const int before = scale.labels.first()->geometry().center().x();
    scale.scale.resize(900, scale.scale.height());
    QVERIFY(std::abs(scale.labels.first()->geometry().center().x() - before - 150) <= 2);
    QCOMPARE(scale.slider->width(), 900);
  }

  void aClickOnTheTrackMovesTheHandleThere() {
    Scale scale(0, 100, {});
    QTest::mouseClick(scale.slider, Qt::LeftButton, {}, QPoint(450, scale.slider->height() / 2));
    QVERIFY2(std::abs(scale.slider->value() - 75) <= 2, qPrintable(QString::number(scale.slider->value())));
  }

  void aLabelWithoutAPositionIsLeftAlone() {
    Scale scale(0, 10, {5});
    auto* other = new QLabel(QStringLiteral("note"), &scale.scale);
    other->setGeometry(7, 9, 11, 13);
    scale.scale.resize(700, scale.scale.height());
    QCOMPARE(other->geometry(), QRect(7, 9, 11, 13));
  }
};

SKARN_QTEST(SliderScaleTest)
#include "SliderScale_test.moc"
