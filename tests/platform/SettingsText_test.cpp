#include "platform/SettingsText.h"

#include <QTest>

#include "model/SettingsKeys.h"
#include "support/QtTests.h"

using namespace skarn;
using vorn::PropertyList;

class SettingsTextTest : public QObject {
  Q_OBJECT

 private slots:
  void settingsOfAnotherTypeShowNothing() {
    const PropertyList settings = PropertyList::dictionary({{vorn::keys::ProfileName, "Work"},
                                                            {vorn::keys::DPIX, 800},
                                                            {vorn::keys::DPIY, "800"},
                                                            {vorn::keys::LEDColors, 3}});
    QCOMPARE(textOf(settings, vorn::keys::ProfileName), QStringLiteral("Work"));
    QCOMPARE(textOf(settings, vorn::keys::DPIX), QString());
    QCOMPARE(textOf(PropertyList("text"), vorn::keys::DPIX), QString());
    QCOMPARE(numberOf(settings, vorn::keys::DPIX), std::optional<std::int32_t>(800));
    QCOMPARE(numberOf(settings, vorn::keys::DPIY), std::optional<std::int32_t>());
    QCOMPARE(numberOf(PropertyList(), vorn::keys::DPIX), std::optional<std::int32_t>());
  }
};

SKARN_QTEST(SettingsTextTest)
#include "SettingsText_test.moc"
