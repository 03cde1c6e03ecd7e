// What other programs ask the real engine about the mouse, beside the real window.
#include <QTest>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "e2e/OpenWindow.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "platform/Localization.h"
#include "support/ChildProcess.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

// Everything that the engine tells about the mouse, in the order in which it is heard.
class Listener {
 public:
  Listener() {
    namespace names = vorn::notificationNames;
    for (const std::int32_t product : {vorn::wiredProductID, vorn::wirelessProductID}) {
      for (const std::string& name : {names::commandReply(product), names::deviceAttached(product)}) {
        mCenter.addObserver(this, name, [this](const vorn::Notification& news) { mHeard.push_back(news); });
      }
    }
  }
  ~Listener() { mCenter.removeObserver(this); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  std::size_t count() const { return mHeard.size(); }
  template <typename Predicate>
  bool hasHeard(Predicate isMeant) const {
    return std::ranges::any_of(mHeard, isMeant);
  }

 private:
  vorn::DistributedNotificationCenter& mCenter = vorn::DistributedNotificationCenter::defaultCenter();
  std::vector<vorn::Notification> mHeard;
};

}  // namespace

class QueriesWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void a_status_on_the_command_line_is_heard_by_nobody_else_data() {
    QTest::addColumn<QString>("connection");
    QTest::addColumn<QString>("connectivity");
    QTest::newRow("cable") << QStringLiteral("wired") << QStringLiteral("usb");
    QTest::newRow("receiver") << QStringLiteral("wireless") << QStringLiteral("wireless");
  }
  void a_status_on_the_command_line_is_heard_by_nobody_else() {
    QFETCH(QString, connection);
    QFETCH(QString, connectivity);
    OpenWindow open;
    open.awaitAnnouncement();
    awaitAnnouncementToTheOther();
    QVERIFY(VirtualMouse::plug(connection.toStdString()));
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), connectivity, deadline);
    awaitNews(open, "Before");
    const QString battery = open.battery();
    const int asked = open.requests(MessageID::GetAllSettings);

    const Listener listener;
    vorn::test::ChildProcess status({VORNCTL_PROGRAM, "status"});
    QCOMPARE(status.waitForEnd(), std::optional<int>(0));
    awaitNews(open, "Behind");
    QCOMPARE(listener.count(), std::size_t(0));
    QCOMPARE(open.battery(), battery);
    QCOMPARE(open.connectivity(), connectivity);
    QCOMPARE(open.requests(MessageID::GetAllSettings), asked + 1);  // for the news that ended the wait
  }

  void a_query_that_everybody_hears_tells_no_battery_of_a_mouse_on_its_cable() {
    OpenWindow open;
    open.awaitAnnouncement();
    awaitAnnouncementToTheOther();
    const Listener listener;
    mOther.tell(MessageID::QueryBatteryLevel);
    QTRY_VERIFY_WITH_TIMEOUT(listener.hasHeard([](const vorn::Notification& news) {
      return news.userInfo.contains(vorn::newsKeys::BatteryPercentLevel);
    }),
                             deadline);
    awaitNews(open, "Behind");
    QCOMPARE(open.battery(), QString());
  }

 private:
  // The engine announces the mouse once to a client that it has not heard of.
  void awaitAnnouncementToTheOther() {
    const Listener listener;
    mOther.bundle();
    QTRY_VERIFY_WITH_TIMEOUT(listener.hasHeard([](const vorn::Notification& news) {
      return news.name == vorn::notificationNames::deviceAttached(vorn::wiredProductID);
    }),
                             deadline);
  }
  // Until the window shows a name that is given now, and so everything that was told before.
  void awaitNews(OpenWindow& open, const char* name) {
    mOther.updateProfile(0, PropertyList::dictionary({{keys::ProfileName, name}}));
    QTRY_COMPARE_WITH_TIMEOUT(open.profileName(), QString::fromLatin1(name), deadline);
  }

  EngineSession mEngine;
  OtherClient mOther;
};

SKARN_QTEST(QueriesWithEngineTest)
#include "queries_with_engine_test.moc"
