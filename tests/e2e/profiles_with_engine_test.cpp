// The Profiles tab in the real window, with the real engine in another process: the table always shows the engine's
// list, and the selected row is the active profile.
#include <QCheckBox>
#include <QTemporaryDir>

#include "e2e/OpenProfiles.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "model/PropertyListCodec.h"
#include "platform/Localization.h"
#include "profiles/ProfileMenu.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::engine::test::TemporaryFolder;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

class ProfilesWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() {
    mFolder = std::make_unique<TemporaryFolder>();
    mEngine.begin();
    mWindow = std::make_unique<OpenProfiles>();
    mOther = std::make_unique<OtherClient>();
  }
  void cleanup() {
    mOther.reset();
    mWindow.reset();
    mEngine.end();
    mFolder.reset();
  }

  void five_profiles_are_added_under_unique_names_and_no_sixth() {
    fill();
    verifyShows({"Default", "Work", "Play", "Work(2)", "Raid"}, 0);
    QVERIFY(!mWindow->find<QToolButton>("mAddProfile")->isEnabled());
    mWindow->choose(2);
    mWindow->choose(6);
    QCOMPARE(mWindow->requests(MessageID::AddProfile), 4);
    QCOMPARE(mWindow->requests(MessageID::UpdateProfile), 4);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
  }

  void a_copy_has_the_settings_of_its_original() {
    mWindow->add(QStringLiteral("Work"));
    mWindow->click(1);
    verifyShows({"Default", "Work"}, 1);
    mOther->updateProfile(1, PropertyList::dictionary({{keys::DPIX, 1234}}));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->hub().mDefaultProfileDict()[keys::DPIX].toInt(), 1234, deadline);
    mWindow->choose(6);
    mWindow->enterName(QStringLiteral("Copy"));
    verifyShows({"Default", "Work", "Copy"}, 1);
    const PropertyList profiles = mOther->bundle()[keys::Profiles];
    QVERIFY(profiles.at(2) == profiles.at(1).with(keys::ProfileName, "Copy"));
  }

  void profiles_are_renamed_to_clashing_names() {
    fill();
    mWindow->click(2);
    for (const char* name : {"Work", "Raid", "Play", "Play"}) {
      mWindow->choose(1);
      mWindow->enterName(QLatin1String(name));
      QCOMPARE(mWindow->names().count(mWindow->names().at(2)), 1);
      verifyShows(mWindow->names(), 2);
    }
    verifyShows({"Default", "Work", "Play", "Work(2)", "Raid"}, 2);
  }

  void profiles_are_deleted_in_every_position_down_to_the_last() {
    fill();
    mWindow->deleteRow(4);
    verifyShows({"Default", "Work", "Play", "Work(2)"}, 3);
    mWindow->deleteRow(1);
    verifyShows({"Default", "Play", "Work(2)"}, 0);
    mWindow->deleteRow(0);
    verifyShows({"Play", "Work(2)"}, 0);
    mWindow->deleteRow(1);
    verifyShows({"Play"}, 0);
    QVERIFY(!mWindow->find<QToolButton>("mDeleteProfile")->isEnabled());
    mWindow->tab().deleteProfile();
    QCOMPARE(mWindow->requests(MessageID::DeleteProfile), 4);
  }

  // The mouse switches profile while a sheet is open.
  void a_sheet_acts_on_the_profile_that_it_was_opened_for() {
    mWindow->add(QStringLiteral("Work"));
    mWindow->add(QStringLiteral("Play"));
    for (int profile = 0; profile < 3; ++profile) {
      const PropertyList keysGroup = mOther->bundle()[keys::Profiles].at(profile)[keys::Keys];
      const PropertyList toFirst =
          PropertyList::dictionary({{keys::Command, 17}, {keys::Param1, 0}, {keys::Param2, 0}});
      mOther->updateProfile(profile, PropertyList::dictionary({{keys::Keys, keysGroup.with("8", toFirst)}}));
    }
    mWindow->click(1);
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 1, deadline);
    QTest::mouseClick(mWindow->find<QToolButton>("mDeleteProfile"), Qt::LeftButton);
    QVERIFY(vorn::test::VirtualMouse::click("8"));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 0, deadline);
    mWindow->acceptAlert();
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), (QStringList{"Default", "Play"}), deadline);

    mWindow->click(1);
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 1, deadline);
    mWindow->choose(4);
    QVERIFY(vorn::test::VirtualMouse::click("8"));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 0, deadline);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("exported"));
    mWindow->enterPath("mProfileSavePanel", path);
    const auto exported = vorn::readPropertyListFile((path + QStringLiteral(".SkarnProfile")).toStdString());
    QVERIFY(exported);
    QCOMPARE((*exported)[keys::ProfileName].toString(), std::string("Play"));
  }

  void a_profile_is_restored_under_its_name() {
    mWindow->add(QStringLiteral("Work"));
    mWindow->click(1);
    mWindow->hub().updateProfileWithID(1, PropertyList::dictionary({{keys::DPIX, 1234}, {keys::AutoSwitchOn, 1}}));
    mWindow->choose(9);
    mWindow->acceptAlert();
    verifyShows({"Default", "Work"}, 1);
    const PropertyList profiles = mOther->bundle()[keys::Profiles];
    QVERIFY(profiles.at(1)[keys::DPIX] == mWindow->tab().mDefaultDict()[keys::DPIX]);
    QCOMPARE(profiles.at(1)[keys::AutoSwitchOn].toInt(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->find<QToolButton>("mUndoButton")->toolTip(),
                              QStringLiteral("Undo: Profile “Work” restored to its factory settings"), deadline);
  }

  void a_profile_survives_export_and_import() {
    const QString path = QString::fromStdString(mFolder->path("Kept"));
    mWindow->hub().updateProfileWithID(0, PropertyList::dictionary({{keys::DPIX, 1234}}));
    mWindow->exportTo(path);
    const auto file = vorn::readPropertyListFile(mFolder->path("Kept.SkarnProfile"));
    QVERIFY(file && *file == mOther->bundle()[keys::Profiles].at(0));
    QCOMPARE(mWindow->text("mProfileNotice"), QStringLiteral("Exported to %1.SkarnProfile").arg(path));
    mWindow->importFile(path + QStringLiteral(".SkarnProfile"));
    // The imported row is selected and so becomes the active one, by one switch.
    verifyShows({"Default", "Default(2)"}, 1);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 1);
    const PropertyList profiles = mOther->bundle()[keys::Profiles];
    QVERIFY(profiles.at(1) == profiles.at(0).with(keys::ProfileName, "Default(2)"));
    mWindow->undo("Profile “Default(2)” added");
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), QStringList{"Default"}, deadline);
    verifyShows({"Default"}, 0);
  }

  void all_profiles_survive_export_and_import_in_their_order() {
    mWindow->add(QStringLiteral("Work"));
    const PropertyList before = mOther->bundle()[keys::Profiles];
    const QString path = QString::fromStdString(mFolder->path("All"));
    mWindow->tab().selectListItem(static_cast<int>(ProfileListItem::ExportAll));
    mWindow->enterPath("mProfileSavePanel", path);
    mWindow->tab().selectListItem(static_cast<int>(ProfileListItem::ImportAll));
    mWindow->enterPath("mProfileOpenPanel", path + QStringLiteral(".SkarnProfiles"));
    QCOMPARE(mWindow->requests(MessageID::AddProfile), 1);
    mWindow->confirmImport();
    verifyShows({"Default", "Work", "Default(2)", "Work(2)"}, 0);
    QCOMPARE(mWindow->requests(MessageID::AddProfile), 3);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
    const PropertyList after = mOther->bundle()[keys::Profiles];
    for (int profile = 0; profile < 2; ++profile) {
      QVERIFY(after.at(profile + 2) ==
              before.at(profile).with(keys::ProfileName, after.at(profile + 2)[keys::ProfileName]));
    }
    mWindow->undo("2 profiles added");
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), (QStringList{"Default", "Work"}), deadline);
    verifyShows({"Default", "Work"}, 0);
    QVERIFY(mOther->bundle()[keys::Profiles] == before);
  }

  void a_full_list_offers_no_import_and_takes_none() {
    const QString path = QString::fromStdString(mFolder->path("Kept"));
    mWindow->exportTo(path);
    fill();
    QVERIFY(!mWindow->tab().reasonAgainst(3).isEmpty());
    mWindow->importFile(path + QStringLiteral(".SkarnProfile"));
    mWindow->acceptAlert();
    verifyShows({"Default", "Work", "Play", "Work(2)", "Raid"}, 0);
    // With room again, the same file is taken.
    mWindow->deleteRow(4);
    mWindow->importFile(path + QStringLiteral(".SkarnProfile"));
    verifyShows({"Default", "Work", "Play", "Work(2)", "Default(2)"}, 4);
  }

  // Another program was quicker, and the window has not heard of it yet.
  void what_finds_no_room_in_the_engine_is_told_and_leaves_no_row() {
    const QString path = QString::fromStdString(mFolder->path("Kept"));
    mWindow->exportTo(path);
    const PropertyList profile = mWindow->hub().mDefaultProfileDict();
    for (const int how : {2, 6, 3}) {
      while (mOther->bundle()[keys::Profiles].size() < 5) mOther->addProfile(profile.with(keys::ProfileName, "Other"));
      if (how == 3) {
        mWindow->tab().openPanelDidEnd(1, path + QStringLiteral(".SkarnProfile"), 2);
        mWindow->confirmImport();
      } else {
        mWindow->choose(how);
      }
      verifyTold(QStringLiteral("five profiles"));
      verifyShows({"Default", "Other", "Other", "Other", "Other"}, 0);
      mOther->change(MessageID::DeleteProfile, PropertyList::dictionary({{vorn::requestKeys::ProfileID, 4}}));
      QTRY_COMPARE_WITH_TIMEOUT(mWindow->names().size(), 4, deadline);
    }
    QCOMPARE(mWindow->requests(MessageID::AddProfile), 3);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
    QCOMPARE(mWindow->requests(MessageID::UpdateProfile), 0);
  }

  void what_the_disk_does_not_take_is_told_and_leaves_no_row() {
    mEngine.takeDisk();
    mWindow->choose(2);
    verifyTold(QStringLiteral("disk"));
    verifyShows({"Default"}, 0);
    mWindow->choose(6);
    verifyTold(QStringLiteral("disk"));
    verifyShows({"Default"}, 0);
  }

  void an_item_of_the_gear_means_the_profile_whose_name_was_being_typed() {
    QTest::mouseClick(mWindow->find<QToolButton>("mAddProfile"), Qt::LeftButton);
    QTest::keyClicks(mWindow->editor(), QStringLiteral("Work"));
    auto* gear = mWindow->find<QToolButton>("mSettingsButton");
    QTest::mouseClick(gear, Qt::LeftButton);
    QVERIFY(!mWindow->editor());
    gear->menu()->actions().constFirst()->trigger();
    gear->menu()->close();
    QVERIFY(mWindow->editor());
    QCOMPARE(mWindow->editor()->text(), QStringLiteral("Work"));
    mWindow->enterName(QStringLiteral("Play"));
    verifyShows({"Default", "Play"}, 0);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
  }

  void switches_on_the_mouse_are_followed_and_not_answered() {
    fill();
    mOther->assign("43", 17, 3);
    QVERIFY(VirtualMouse::click("43"));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 3, deadline);
    mOther->switchProfile(1);
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 1, deadline);
    mOther->switchProfile(0);
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 0, deadline);
    verifyShows({"Default", "Work", "Play", "Work(2)", "Raid"}, 0);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
  }

  void a_switch_on_the_mouse_ends_an_edit_without_a_rename() {
    fill();
    mOther->assign("43", 17, 2);
    mWindow->choose(1);
    QTest::keyClicks(mWindow->editor(), QStringLiteral("Half a na"));
    const int before = mWindow->requests(MessageID::UpdateProfile);
    QVERIFY(VirtualMouse::click("43"));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 2, deadline);
    QVERIFY(!mWindow->editor());
    QCOMPARE(mWindow->requests(MessageID::UpdateProfile), before);
    verifyShows({"Default", "Work", "Play", "Work(2)", "Raid"}, 2);
  }

  void boxes_and_the_on_screen_display_reach_the_engine() {
    mWindow->add(QStringLiteral("Work"));
    const QString entry = QString::fromStdString(mFolder->path("editor.desktop"));
    QFile file(entry);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nName=Editor\nExec=editor\n");
    file.close();
    mWindow->click(1);
    mWindow->tab().openPanelDidEnd(1, entry, 1);
    verifyShows({"Default", "Work"}, 1);
    PropertyList work = mOther->bundle()[keys::Profiles].at(1);
    QVERIFY(work[keys::AppInfo][keys::Application] == PropertyList("Editor"));
    QCOMPARE(work[keys::AutoSwitchOn].toInt(), 1);
    mWindow->click(0);
    mWindow->click(1, 3);
    verifyShows({"Default", "Work"}, 1);
    QCOMPARE(mOther->bundle()[keys::Profiles].at(1)[keys::AutoSwitchOn].toInt(), 0);
    mWindow->choose(8);
    work = mOther->bundle()[keys::Profiles].at(1);
    QVERIFY(work[keys::AppInfo][keys::Application] == PropertyList(""));
    auto* onScreen = mWindow->find<QCheckBox>("mEnableOnScreenDisplay");
    const int on = onScreen->isChecked() ? 0 : 1;
    QTest::keyClick(onScreen, Qt::Key_Space);
    QCOMPARE(mOther->bundle()[keys::DeviceSettings][keys::ProfileOSDOn].toInt(), on);
    QCOMPARE(onScreen->isChecked(), on == 1);
  }

 private:
  void fill() {
    for (const char* name : {"Work", "Play", "Work", "Raid"}) mWindow->add(QLatin1String(name));
  }
  void verifyTold(const QString& reason) {
    const auto* alert = mWindow->dialog<QMessageBox>("alert");
    QVERIFY(alert);
    QVERIFY2(alert->informativeText().contains(reason), qPrintable(alert->informativeText()));
    QVERIFY(!mWindow->editor());
    mWindow->acceptAlert();
  }
  void verifyShows(const QStringList& names, int active) {
    const PropertyList bundle = mOther->bundle();
    QStringList held;
    for (const PropertyList& profile : bundle[keys::Profiles].elements()) {
      held << QString::fromStdString(profile[keys::ProfileName].toString());
    }
    QCOMPARE(held, names);
    QCOMPARE(mWindow->names(), names);
    QCOMPARE(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt(), active);
    QCOMPARE(mWindow->selectedRow(), active);
  }

  EngineSession mEngine;
  std::unique_ptr<TemporaryFolder> mFolder;
  std::unique_ptr<OpenProfiles> mWindow;
  std::unique_ptr<OtherClient> mOther;
};

SKARN_QTEST(ProfilesWithEngineTest)
#include "profiles_with_engine_test.moc"
