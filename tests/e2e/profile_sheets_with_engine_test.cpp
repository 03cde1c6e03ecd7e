// Which profile an alert, a panel, a menu or a name on the Profiles tab is for, while the mouse and other programs
// switch, move and delete profiles of the real engine.
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

#include "e2e/OpenProfiles.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "e2e/Vornctl.h"
#include "model/PropertyListCodec.h"
#include "model/RecordFile.h"
#include "platform/Localization.h"
#include "profiles/ProfileMenu.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

constexpr const char* toFirstProfile = "8";  // the control that switches to it

constexpr int tag(ProfileItem item) {
  return static_cast<int>(item);
}

}  // namespace

class ProfileSheetsWithEngineTest : public QObject {
  Q_OBJECT

 public:
  static void initMain() { useOwnHome(); }

 private slots:
  void initTestCase() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    QVERIFY(writeTestFile(qEnvironmentVariable("XDG_DATA_HOME") + "/applications/editor.desktop",
                          "[Desktop Entry]\nType=Application\nName=Editor\nExec=editor\n"));
  }
  // Three profiles that differ from the factory's, of which the first is in force.
  void init() {
    mFolder = std::make_unique<QTemporaryDir>();
    mEngine.begin();
    mOther = std::make_unique<OtherClient>();
    const PropertyList factory = mOther->bundle()[keys::Profiles].at(0);
    const PropertyList control = PropertyList::dictionary({{keys::Command, 17}, {keys::Param1, 0}, {keys::Param2, 0}});
    const PropertyList changed =
        PropertyList::dictionary({{keys::DPIX, 1234}, {keys::Keys, factory[keys::Keys].with(toFirstProfile, control)}});
    for (const char* name : {"Work", "Play"}) mOther->addProfile(factory.with(keys::ProfileName, name));
    for (int profile = 0; profile < 3; ++profile) mOther->updateProfile(profile, changed);
    mWindow = std::make_unique<OpenProfiles>();
    mWindow->awaitAnnouncement();
  }
  void cleanup() {
    mWindow.reset();
    mOther.reset();
    mEngine.end();
  }

  void a_comparison_follows_its_profiles_in_the_engine_and_asks_for_nothing() {
    mWindow->tab().selectListItem(static_cast<int>(ProfileListItem::Compare));
    QVERIFY(mWindow->dialog<QDialog>("profileComparisonSheet"));
    QCOMPARE(comparison(), QStringList());
    mOther->updateProfile(1, PropertyList::dictionary({{keys::DPIX, 2000}}));
    QTRY_COMPARE_WITH_TIMEOUT(
        comparison(),
        (QStringList{QStringLiteral("Sensitivity X: 2000 DPI"), QStringLiteral("Sensitivity Y: 2000 DPI")}), deadline);
    mOther->change(MessageID::DeleteProfile, PropertyList::dictionary({{vorn::requestKeys::ProfileID, 0}}));
    QTRY_VERIFY_WITH_TIMEOUT(!mWindow->dialog<QDialog>("profileComparisonSheet"), deadline);
    mWindow->acceptAlert();
    QCOMPARE(mWindow->requests(MessageID::UpdateProfile), 0);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
  }

  void what_follows_a_typed_name_means_the_profile_that_was_named_data() {
    QTest::addColumn<bool>("isCopy");
    QTest::addColumn<QString>("control");
    for (const bool isCopy : {false, true}) {
      for (const char* control : {"mDeleteProfile", "mSettingsButton", "right button"})
        QTest::addRow("%s, %s", isCopy ? "copy" : "add", control) << isCopy << QString::fromLatin1(control);
    }
  }
  void what_follows_a_typed_name_means_the_profile_that_was_named() {
    QFETCH(bool, isCopy);
    QFETCH(QString, control);
    const PropertyList before = profiles();
    if (isCopy) mWindow->choose(tag(ProfileItem::Copy));
    if (!isCopy) QTest::mouseClick(mWindow->find<QToolButton>("mAddProfile"), Qt::LeftButton);
    QVERIFY(mWindow->editor());
    QTest::keyClicks(mWindow->editor(), QStringLiteral("Mine"));
    if (control == QLatin1String("right button")) {
      QMenu* menu = mWindow->rightClick(3);
      QVERIFY(menu);
      OpenProfiles::chooseIn(*menu, tag(ProfileItem::Delete));
    } else {
      auto* button = mWindow->find<QToolButton>(control.toLatin1().constData());
      QTest::mouseClick(button, Qt::LeftButton);
      if (button->menu()) OpenProfiles::chooseIn(*button->menu(), tag(ProfileItem::Delete));
    }
    QCOMPARE(alertTexts(mWindow->window()).value(0), QStringLiteral("Delete Profile “Mine”?"));
    mWindow->acceptAlert();
    QVERIFY(profiles() == before);
    QCOMPARE(mWindow->requests(MessageID::DeleteProfile), 1);
  }

  void a_right_click_switches_to_its_profile_and_its_menu_acts_on_it() {
    QMenu* menu = mWindow->rightClick(2);
    QVERIFY(menu);
    QCOMPARE(mWindow->selectedRow(), 2);
    QCOMPARE(mOther->bundle()[keys::DeviceSettings][keys::ActiveProfile].toInt(), 2);
    OpenProfiles::chooseIn(*menu, tag(ProfileItem::Copy));
    mWindow->enterName(QStringLiteral("Raid"));
    const PropertyList after = profiles();
    QVERIFY(after.at(3) == after.at(2).with(keys::ProfileName, "Raid"));
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 1);
  }

  void a_sheet_acts_on_the_profile_that_it_was_opened_for_data() {
    QTest::addColumn<int>("item");
    QTest::addColumn<bool>("isDeleted");
    for (const bool isDeleted : {false, true}) {
      const char* event = isDeleted ? "vornctl deletes the one before" : "the mouse switches";
      QTest::addRow("deletion, %s", event) << tag(ProfileItem::Delete) << isDeleted;
      QTest::addRow("restore, %s", event) << tag(ProfileItem::RestoreDefault) << isDeleted;
      QTest::addRow("export, %s", event) << tag(ProfileItem::Export) << isDeleted;
      QTest::addRow("application, %s", event) << tag(ProfileItem::AssignApplication) << isDeleted;
      QTest::addRow("cancelled application, %s", event) << -tag(ProfileItem::AssignApplication) << isDeleted;
    }
  }
  void a_sheet_acts_on_the_profile_that_it_was_opened_for() {
    QFETCH(int, item);
    QFETCH(bool, isDeleted);
    openForWork(std::abs(item));
    if (isDeleted) {
      QVERIFY(runVornctl({"profiles", "delete", "Default"}));
      QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), (QStringList{"Work", "Play"}), deadline);
      QVERIFY(runVornctl({"profiles", "switch", "Play"}));
      QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 1, deadline);
    } else {
      QVERIFY(VirtualMouse::click(toFirstProfile));
      QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 0, deadline);
    }
    const int work = isDeleted ? 0 : 1;
    const PropertyList before = profiles();
    const PropertyList exported = confirm(item);
    const PropertyList after = profiles();
    if (item == tag(ProfileItem::Export)) {
      QVERIFY(exported == before.at(work));
      QVERIFY(after == before);
    } else if (item == tag(ProfileItem::Delete)) {
      QVERIFY(after == before.removing(work));
    } else {
      QVERIFY(after.replacing(work, PropertyList()) == before.replacing(work, PropertyList()));
      verifyChanged(item, after.at(work));
    }
  }

  void a_sheet_whose_profile_is_gone_says_so_and_changes_nothing_data() {
    QTest::addColumn<int>("item");
    QTest::newRow("deletion") << tag(ProfileItem::Delete);
    QTest::newRow("restore") << tag(ProfileItem::RestoreDefault);
    QTest::newRow("export") << tag(ProfileItem::Export);
    QTest::newRow("application") << tag(ProfileItem::AssignApplication);
  }
  void a_sheet_whose_profile_is_gone_says_so_and_changes_nothing() {
    QFETCH(int, item);
    openForWork(item);
    QVERIFY(runVornctl({"profiles", "delete", "Work"}));
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->names(), (QStringList{"Default", "Play"}), deadline);
    const PropertyList before = mOther->bundle();
    QVERIFY(confirm(item).isNone());
    QTRY_COMPARE(alertTexts(mWindow->window()).value(0), QStringLiteral("“Work” is no longer there"));
    QVERIFY(mOther->bundle() == before);
  }

  void an_import_that_the_disk_does_not_take_is_told_and_switches_nothing() {
    const PropertyList before = profiles();
    mWindow->exportTo(path());
    mEngine.takeDisk();
    mWindow->importFile(path() + QStringLiteral(".SkarnProfile"));
    QCOMPARE(alertTexts(mWindow->window()),
             (QStringList{QStringLiteral("“exported.SkarnProfile” could not be imported"),
                          localized("lkeyEngineDidNotSave")}));
    QCOMPARE(mWindow->names(), (QStringList{"Default", "Work", "Play"}));
    QCOMPARE(mWindow->selectedRow(), 0);
    QCOMPARE(mWindow->requests(MessageID::SwitchProfile), 0);
    QVERIFY(profiles() == before);
  }

  void an_import_with_values_that_cannot_be_used_is_told_beside_the_buttons() {
    const QString file = path() + QStringLiteral(".SkarnProfile");
    QVERIFY(!vorn::writeRecordFile(file.toStdString(), profiles().at(1).with(keys::DPIX, 1'000'000),
                                   vorn::RecordKind::Profile));
    mWindow->importFile(file);
    QCOMPARE(mWindow->names(), (QStringList{"Default", "Work", "Play", "Work(2)"}));
    QCOMPARE(mWindow->text("mProfileNotice"), localized("lkeyImportedPartly"));
    QVERIFY(profiles().at(3)[keys::DPIX] == mWindow->tab().mDefaultDict()[keys::DPIX]);
  }

 private:
  PropertyList profiles() { return mOther->bundle()[keys::Profiles]; }
  QString path() const { return mFolder->filePath(QStringLiteral("exported")); }

  // "Work" is in force and a sheet is open for it.
  void openForWork(int item) {
    mWindow->click(1);
    QTRY_COMPARE_WITH_TIMEOUT(mWindow->selectedRow(), 1, deadline);
    if (item == tag(ProfileItem::AssignApplication))
      mOther->updateProfile(1, PropertyList::dictionary({{keys::AutoSwitchOn, 1}}));
    mWindow->choose(item);
  }
  // Ends the sheet for the item; a negative one is cancelled. What was exported.
  PropertyList confirm(int item) {
    if (item == tag(ProfileItem::Export)) {
      mWindow->enterPath("mProfileSavePanel", path());
      return vorn::readPropertyListFile(path().toStdString() + ".SkarnProfile").value_or(PropertyList());
    }
    auto* chooser = mWindow->dialog<QDialog>("applicationPanel");
    if (item < 0) {
      QTest::keyClick(chooser, Qt::Key_Escape);
    } else if (item == tag(ProfileItem::AssignApplication)) {
      QTest::keyClicks(chooser->findChild<QLineEdit*>(QStringLiteral("mApplicationSearch")), QStringLiteral("Editor"));
      QTest::mouseClick(chooser->findChild<QPushButton*>(QStringLiteral("mApplicationOK")), Qt::LeftButton);
    } else {
      skarn::test::confirm(mWindow->dialog<QMessageBox>("alert"));
    }
    return {};
  }
  void verifyChanged(int item, const PropertyList& work) {
    QVERIFY(work[keys::ProfileName] == PropertyList("Work"));
    if (item == tag(ProfileItem::RestoreDefault)) {
      QVERIFY(work == mWindow->tab().mDefaultDict().with(keys::ProfileName, "Work"));
    } else {
      QCOMPARE(work[keys::AutoSwitchOn].toInt(), item < 0 ? 0 : 1);
      QVERIFY(work[keys::AppInfo][keys::Application] == PropertyList(item < 0 ? "" : "Editor"));
    }
  }

  // The rows of the sheet that compares, without the titles of groups.
  QStringList comparison() {
    QStringList rows;
    const auto* sheet = mWindow->dialog<QDialog>("profileComparisonSheet");
    if (sheet == nullptr) return rows;
    const QAbstractItemModel& model = *sheet->findChild<QTableView*>(QStringLiteral("mComparisonList"))->model();
    for (int row = 0; row < model.rowCount(); ++row) {
      const QString right = model.index(row, 2).data().toString();
      if (!right.isEmpty()) rows << model.index(row, 0).data().toString() + ": " + right;
    }
    return rows;
  }

  EngineSession mEngine;
  std::unique_ptr<OtherClient> mOther;
  std::unique_ptr<OpenProfiles> mWindow;
  std::unique_ptr<QTemporaryDir> mFolder;
};

SKARN_QTEST(ProfileSheetsWithEngineTest)
#include "profile_sheets_with_engine_test.moc"
