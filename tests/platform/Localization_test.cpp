#include "platform/Localization.h"

#include <QTest>

#include "support/QtTests.h"

using namespace skarn;

class LocalizationTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void aKeyGivesItsText() {
    QCOMPARE(localized("lkeyOK"), QStringLiteral("OK"));
    QCOMPARE(localized("lkeyNoMouseConnected"), QStringLiteral("No mouse connected"));
  }

  void aKeyWithoutATextGivesNoTranslation() {
    QCOMPARE(localized("lkeyThatNobodyWrote"), QStringLiteral("No Translation"));
    QCOMPARE(localized(""), QStringLiteral("No Translation"));
  }

  void anUnknownLanguageFallsBackOnEnglish() {
    QVERIFY(installTranslations(QStringLiteral("xx")));
    QCOMPARE(localized("lkeyOK"), QStringLiteral("OK"));
    QVERIFY(installTranslations(QStringLiteral("../../../etc/passwd")));
    QCOMPARE(localized("lkeyCancel"), QStringLiteral("Cancel"));
  }
};

SKARN_QTEST(LocalizationTest)
#include "Localization_test.moc"
