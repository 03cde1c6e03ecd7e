#include "platform/Images.h"

#include <QDir>
#include <QTest>

#include "platform/Bundle.h"
#include "support/QtTests.h"

using namespace skarn;

class ImagesTest : public QObject {
  Q_OBJECT

 private slots:
  void everyKeymapPictureHasItsExactName() {
    const QDir images(Bundle::mainBundle().resourcePath(QStringLiteral("images")));
    const QStringList present = images.entryList(QDir::Files);
    for (int number = 1; number <= 8; ++number) {
      const QString name = QStringLiteral("%1karn_keymap%2.png").arg(QLatin1Char(number == 8 ? 'S' : 's')).arg(number);
      QVERIFY2(present.contains(name), qPrintable(name));
      QVERIFY2(!image(name).isNull(), qPrintable(name));
    }
    QVERIFY(!present.contains(QStringLiteral("skarn_keymap8.png")));
  }

  void aMissingPictureIsEmpty() {
    QVERIFY(image(QStringLiteral("nothing.png")).isNull());
    QVERIFY(tintedImage(QStringLiteral("nothing.png"), Qt::red).isNull());
    QVERIFY(tintedIcon(QStringLiteral("nothing.png"), Qt::red).isNull());
  }

  void aTintedPictureHasTheColourAndKeepsItsShape() {
    const QString name = QStringLiteral("usb.png");
    const QImage mask = image(name).toImage().convertToFormat(QImage::Format_ARGB32);
    const QImage tinted = tintedImage(name, QColor(10, 200, 30)).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(tinted.size(), mask.size());
    bool hasInk = false;
    for (int y = 0; y < mask.height(); ++y) {
      for (int x = 0; x < mask.width(); ++x) {
        QCOMPARE(qAlpha(tinted.pixel(x, y)), qAlpha(mask.pixel(x, y)));
        if (qAlpha(mask.pixel(x, y)) != 255) continue;
        hasInk = true;
        QCOMPARE(QColor(tinted.pixel(x, y)), QColor(10, 200, 30));
      }
    }
    QVERIFY(hasInk);
    const QIcon icon = tintedIcon(name, Qt::black);
    QCOMPARE(icon.availableSizes().isEmpty(), false);
  }
};

SKARN_QTEST(ImagesTest)
#include "Images_test.moc"
