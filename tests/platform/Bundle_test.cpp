#include "platform/Bundle.h"

#include <QFile>
#include <QTest>

#include "support/QtTests.h"

using namespace skarn;

class BundleTest : public QObject {
  Q_OBJECT

 private slots:
  void theBundleKnowsItsVersion() {
    const QStringList parts = Bundle::mainBundle().version().split(QLatin1Char('.'));
    QCOMPARE(parts.size(), 3);
    for (const QString& part : parts) {
      bool isNumber = false;
      part.toUInt(&isNumber);
      QVERIFY2(isNumber, qPrintable(part));
    }
  }

  void resourcesLieInTheBundlesFolder() {
    const Bundle bundle(QStringLiteral("/somewhere"));
    QCOMPARE(bundle.resourcePath(QStringLiteral("Skarn.plist")), QStringLiteral("/somewhere/Skarn.plist"));
    QCOMPARE(bundle.imagePath(QStringLiteral("usb.png")), QStringLiteral("/somewhere/images/usb.png"));
  }

  void theEnvironmentNamesTheBundlesFolder() {
    QCOMPARE(Bundle::mainBundle().path(), qEnvironmentVariable("SKARN_SHARE_DIR"));
    QVERIFY(QFile::exists(Bundle::mainBundle().resourcePath(QStringLiteral("Skarn.plist"))));
  }
};

SKARN_QTEST(BundleTest)
#include "Bundle_test.moc"
