// What the hub takes from the file of default settings, which is one of the test's own here.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/HubFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;

class MouseMainControllerDefaultSettingsTest : public QObject {
  Q_OBJECT

 private slots:
  // The program's resources but for the file. Before anything asks where they are.
  void initTestCase() {
    const QDir built(qEnvironmentVariable("SKARN_SHARE_DIR"));
    const QString file = QStringLiteral("Skarn.plist");
    for (const QString& name : built.entryList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
      if (name != file) QVERIFY(QFile::link(built.filePath(name), mResources.filePath(name)));
    }
    const auto factory = vorn::readPropertyListFile(built.filePath(file).toStdString());
    QVERIFY(factory.has_value());
    const PropertyList settings = (*factory)[keys::DefaultSettings];
    const PropertyList second = settings[keys::Profiles].at(0).with(keys::ProfileName, "Second");
    const auto bytes = vorn::encodeBinaryPropertyList(PropertyList::dictionary(
        {{keys::DefaultSettings,
          settings.with(keys::Profiles, settings[keys::Profiles].appending(second))
              .with(keys::DeviceSettings, settings[keys::DeviceSettings].with(keys::ActiveProfile, 1))}}));
    QVERIFY(bytes.has_value());
    QFile own(mResources.filePath(file));
    QVERIFY(own.open(QIODevice::WriteOnly));
    own.write(reinterpret_cast<const char*>(bytes->data()), static_cast<qint64>(bytes->size()));
    QVERIFY(own.flush());
    qputenv("SKARN_SHARE_DIR", QFile::encodeName(mResources.path()));
  }

  void the_default_profile_is_the_first_of_the_file_whatever_profile_it_calls_active() {
    QCOMPARE(factorySettings()[keys::Profiles].size(), std::size_t{2});
    QCOMPARE(factorySettings()[keys::DeviceSettings][keys::ActiveProfile].toInt(), 1);
    const PropertyList first = factorySettings()[keys::Profiles].at(0);
    HubFixture fixture;
    fixture.link.answer(MessageID::RegisterDevice, statusAnswer(false));
    fixture.start({});
    QVERIFY(fixture.hub().mProfilesArray() == factorySettings()[keys::Profiles]);
    QVERIFY(fixture.hub().mDefaultProfileDict() == first);
    QVERIFY(fixture.window.ui().MouseProfilesController->mDefaultDict() == first);
    QVERIFY(fixture.window.ui().MouseMaintenanceController->mDefaultDict() == first);
  }

 private:
  QTemporaryDir mResources;
};

SKARN_QTEST(MouseMainControllerDefaultSettingsTest)
#include "MouseMainController_default_settings_test.moc"
