// The order of the profiles in the real window, with the real engine in another process.
#include "e2e/OpenProfiles.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "e2e/Vornctl.h"
#include "platform/Localization.h"
#include "profiles/ProfileMenu.h"
#include "support/QtTests.h"
#include "widgets/Notice.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

class ProfileOrderWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() {
    mEngine.begin();
    mWindow = std::make_unique<OpenProfiles>();
    mOther = std::make_unique<OtherClient>();
    for (const char* name : {"Work", "Play"}) mWindow->add(QLatin1String(name));
  }
  void cleanup() {
    mOther.reset();
    mWindow.reset();
    mEngine.end();
  }

  void a_dragged_profile_takes_its_place_and_what_switches_to_it_follows() {
    mOther->assign("43", 17, 2);
    QTRY_COMPARE_WITH_TIMEOUT(targetOf(mWindow->hub().mDefaultProfileDict()), 2, deadline);
    drag(2, 0);
    verifyShows({"Play", "Default", "Work"}, 1);
    QCOMPARE(targetOf(mOther->bundle()[keys::Profiles].at(1)), 0);
    QCOMPARE(mWindow->requests(MessageID::ReorderProfiles), 1);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
    QCOMPARE(mWindow->requests(MessageID::ReplaceAllProfiles), 0);
    QVERIFY(VirtualMouse::click("43"));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 0, deadline);
    verifyShows({"Play", "Default", "Work"}, 0);
  }

  void a_drag_that_ends_where_it_began_asks_for_nothing() {
    drag(1, 1);
    verifyShows({"Default", "Work", "Play"}, 0);
    QCOMPARE(mWindow->requests(MessageID::ReorderProfiles), 0);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
  }

  void the_keyboard_and_the_menus_move_profiles_too() {
    QTest::keyClick(&mWindow->table(), Qt::Key_Down, Qt::AltModifier);
    verifyShows({"Work", "Default", "Play"}, 1);
    QMenu* menu = mWindow->rightClick(1);
    QVERIFY(menu != nullptr);
    OpenProfiles::chooseIn(*menu, static_cast<int>(ProfileListItem::MoveDown));
    verifyShows({"Work", "Play", "Default"}, 2);
    mWindow->tab().selectListItem(static_cast<int>(ProfileListItem::MoveUp));
    verifyShows({"Work", "Default", "Play"}, 1);
    QCOMPARE(mWindow->requests(MessageID::ReorderProfiles), 3);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
    mWindow->undo("Order of the profiles");
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), (QStringList{"Work", "Play", "Default"}), deadline);
    verifyShows({"Work", "Play", "Default"}, 2);
  }

  // The window has not heard of it yet.
  void an_order_chosen_from_another_list_moves_nothing_and_says_so() {
    mOther->change(MessageID::DeleteProfile, PropertyList::dictionary({{vorn::requestKeys::ProfileID, 1}}));
    mWindow->tab().moveProfile(0, 2);
    verifyShows({"Default", "Play"}, 0);
    QCOMPARE(mWindow->find<Notice>("mProfileNotice")->text(), localized("lkeyProfilesChangedMeanwhile"));
  }

  void what_the_disk_does_not_take_moves_nothing_and_is_told() {
    mEngine.takeDisk();
    QTest::keyClick(&mWindow->table(), Qt::Key_Down, Qt::AltModifier);
    verifyShows({"Default", "Work", "Play"}, 0);
    QVERIFY(mWindow->find<Notice>("mProfileNotice")->text().contains(QLatin1String("disk")));
  }

  void a_move_on_the_command_line_is_seen_in_the_window() {
    QVERIFY(runVornctl({"profiles", "move", "Default", "3"}));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), (QStringList{"Work", "Play", "Default"}), deadline);
    verifyShows({"Work", "Play", "Default"}, 2);
    QVERIFY(!runVornctl({"profiles", "move", "Default", "4"}));
    verifyShows({"Work", "Play", "Default"}, 2);
  }

 private:
  // What the profile's key "43" switches to.
  static int targetOf(const PropertyList& profile) { return profile[keys::Keys]["43"][keys::Param1].toInt(); }

  // Onto the upper half of another row.
  void drag(int row, int over) {
    QWidget* viewport = mWindow->table().viewport();
    const auto rect = [this](int each) {
      return mWindow->table().visualRect(mWindow->table().model()->index(each, 1));
    };
    const QPoint to = rect(over).center() - QPoint(0, rect(over).height() / 4);
    QTest::mousePress(viewport, Qt::LeftButton, {}, rect(row).center());
    for (const QPoint& at : {viewport->rect().bottomLeft() - QPoint(-20, 5), to}) {
      QMouseEvent move(QEvent::MouseMove, at, viewport->mapToGlobal(QPointF(at)), Qt::NoButton, Qt::LeftButton, {});
      QApplication::sendEvent(viewport, &move);
    }
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, to);
  }

  void verifyShows(const QStringList& names, int active) {
    const PropertyList bundle = mOther->bundle();
    QStringList held;
    for (const PropertyList& profile : bundle[keys::Profiles].elements()) {
      held << QString::fromStdString(profile[keys::ProfileName].toString());
    }
    QCOMPARE(held, names);
    QCOMPARE(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt(), active);
    QCOMPARE(mWindow->names(), names);
    QCOMPARE(mWindow->selectedRow(), active);
  }

  EngineSession mEngine;
  std::unique_ptr<OpenProfiles> mWindow;
  std::unique_ptr<OtherClient> mOther;
};

SKARN_QTEST(ProfileOrderWithEngineTest)
#include "profile_order_with_engine_test.moc"
