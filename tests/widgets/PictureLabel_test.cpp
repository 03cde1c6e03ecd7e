#include "widgets/PictureLabel.h"

#include <QApplication>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

class PictureLabelTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void aPictureKeepsItsProportionsAndNeverGrows() {
    QPixmap picture(40, 20);
    picture.fill(Qt::red);
    PictureLabel label;
    label.setPixmap(picture);
    const auto redArea = [&label](QSize size) {
      label.resize(size);
      const QImage seen = label.grab().toImage();
      QRect area;
      for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x) {
          if (QColor(seen.pixel(x, y)) == QColor(Qt::red)) area |= QRect(x, y, 1, 1);
        }
      }
      return area.size();
    };
    QCOMPARE(redArea({100, 100}), QSize(40, 20));
    QCOMPARE(redArea({20, 100}), QSize(20, 10));
  }
};

SKARN_QTEST(PictureLabelTest)
#include "PictureLabel_test.moc"
