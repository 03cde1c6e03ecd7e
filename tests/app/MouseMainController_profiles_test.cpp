// The Profiles tab in the real window: every action is proved to send its requests once, and nothing comes back as a
// further request.
#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>

#include "app/HubFixture.h"
#include "model/Assignments.h"
#include "profiles/MouseProfilesController.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;

namespace {

using Requests = std::vector<ScriptedLink::Request>;

PropertyList request(const std::vector<PropertyList::Pair>& further) {
  return PropertyList::dictionary(
             {{requestKeys::ProductID, 273}, {requestKeys::ResponseMsgPortName, vorn::configuratorReplyPortName}})
      .merging(PropertyList::dictionary(further));
}
ScriptedLink::Request added(const PropertyList& profile) {
  return {MessageID::AddProfile, request({{requestKeys::DeviceSettingsDictionary, profile}})};
}
ScriptedLink::Request updated(int profileID, const PropertyList& settings) {
  return {MessageID::UpdateProfile,
          request({{requestKeys::ProfileID, profileID}, {requestKeys::DeviceSettingsDictionary, settings}})};
}
ScriptedLink::Request switchedTo(int profileID) {
  return {MessageID::SwitchProfile, request({{requestKeys::ProfileID, profileID}})};
}

// Requests as text, without what fills the records.
std::string described(const Requests& requests) {
  std::string text = std::to_string(requests.size()) + " requests:";
  for (const auto& each : requests) {
    const PropertyList& settings = each.body[requestKeys::DeviceSettingsDictionary];
    text += " " + std::to_string(static_cast<int>(each.messageID)) + " to " +
            each.body[requestKeys::ProfileID].description() + " " + settings[keys::ProfileName].toString() + " of " +
            std::to_string(settings.size());
  }
  return text;
}

#define VERIFY_REQUESTS(...)                                                                      \
  do {                                                                                            \
    const Requests expectedRequests __VA_ARGS__;                                                  \
    const std::string shown =                                                                     \
        "\nsent " + described(mHub->link.requests) + "\nexpected " + described(expectedRequests); \
    QVERIFY2(mHub->link.requests == expectedRequests, shown.c_str());                             \
  } while (false)

}  // namespace

class MouseMainControllerProfilesTest : public QObject {
  Q_OBJECT

 private:
  // Answers each request from the bundle as an engine does.
  void serve(const ScriptedLink::Request& sent) {
    const PropertyList& profiles = mBundle[keys::Profiles];
    const PropertyList& settings = sent.body[requestKeys::DeviceSettingsDictionary];
    const int profileID = sent.body[requestKeys::ProfileID].toInt();
    switch (sent.messageID) {
      case MessageID::AddProfile:
        mBundle = mBundle.with(keys::Profiles, profiles.appending(settings));
        break;
      case MessageID::UpdateProfile:
        mBundle = mBundle.with(keys::Profiles, profiles.replacing(profileID, profiles.at(profileID).merging(settings)));
        break;
      case MessageID::ReplaceAllProfiles:
        mBundle = mBundle.with(keys::Profiles, sent.body[requestKeys::AllProfiles]);
        break;
      case MessageID::DeleteProfile:
        mBundle = mBundle.with(keys::Profiles, profiles.removing(profileID));
        break;
      case MessageID::SwitchProfile:
        mBundle = withActive(profileID);
        break;
      default:
        break;
    }
    const bool isRead = sent.messageID == MessageID::GetAllSettings;
    mHub->link.answer(sent.messageID, isRead ? allSettingsAnswer(mBundle) : changeAnswer(mBundle));
  }
  PropertyList withActive(int active) const {
    return mBundle.with(keys::DeviceSettings, mBundle[keys::DeviceSettings].with(keys::ActiveProfile, active));
  }

  template <typename Widget>
  Widget* find(const char* name) {
    return mHub->window.findChild<Widget*>(QLatin1String(name));
  }
  MouseProfilesController& tab() { return *mHub->window.ui().MouseProfilesController; }
  QTableView& table() { return *tab().mProfilesTableView(); }
  int selectedRow() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.constFirst().row() : -1;
  }
  void click(int row, int column) {
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                      table().visualRect(table().model()->index(row, column)).center());
  }
  QLineEdit* editor() {
    for (auto* edit : table().viewport()->findChildren<QLineEdit*>()) {
      if (edit->isVisible()) return edit;
    }
    return nullptr;
  }
  void typeName(const QString& name) {
    QVERIFY(editor());
    QTest::keyClicks(editor(), name);
    QTest::keyClick(editor(), Qt::Key_Return);
  }
  void confirmAlert() {
    auto* alert = find<QMessageBox>("alert");
    QVERIFY(alert);
    confirm(alert);
    QTRY_VERIFY(!find<QMessageBox>("alert"));
  }
  PropertyList profileAt(int row) { return mBundle[keys::Profiles].at(row); }
  // What the window shows is what the engine has.
  void verifyInStep() {
    QVERIFY(tab().mProfilesArray() == mBundle[keys::Profiles]);
    QCOMPARE(table().model()->rowCount(), static_cast<int>(mBundle[keys::Profiles].size()));
    for (int row = 0; row < table().model()->rowCount(); ++row) {
      QCOMPARE(table().model()->index(row, 1).data().toString().toStdString(),
               profileAt(row)[keys::ProfileName].toString());
    }
    QCOMPARE(selectedRow(), mBundle[keys::DeviceSettings][keys::ActiveProfile].toInt());
  }

  PropertyList mBundle;
  std::unique_ptr<HubFixture> mHub;

 private slots:
  void init() {
    mHub = std::make_unique<HubFixture>();
    mBundle = bundleWith({"Work", "Play", "Draw"}, {}, 1);
    mHub->startConnected(mBundle);
    mHub->link.onSend = [this](const ScriptedLink::Request& sent) { serve(sent); };
    mHub->window.ui().mMouseTabView->setCurrentWidget(&tab());
    mHub->window.show();
    mHub->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&mHub->window));
  }
  void cleanup() { mHub.reset(); }

  void theStartSelectsTheActiveProfileAndSendsNothing() {
    VERIFY_REQUESTS({});
    verifyInStep();
  }

  void clicksAndKeysSwitchOnceEach() {
    click(2, 1);
    click(2, 1);
    QTest::keyClick(&table(), Qt::Key_Up);
    VERIFY_REQUESTS({switchedTo(2), switchedTo(1)});
    verifyInStep();
  }

  void addingAndNamingSendsTwoRequests() {
    QTest::mouseClick(find<QToolButton>("mAddProfile"), Qt::LeftButton);
    const PropertyList record = tab().mDefaultDict().with(keys::ProfileName, "Untitled Profile");
    VERIFY_REQUESTS({added(record)});
    typeName(QStringLiteral("Work"));
    VERIFY_REQUESTS({added(record), updated(3, record.with(keys::ProfileName, "Work(2)"))});
    verifyInStep();
  }

  void copyingSendsOneRequest() {
    const PropertyList copy = profileAt(1).with(keys::ProfileName, "Play(2)");
    tab().selectMenuItem(6);
    VERIFY_REQUESTS({added(copy)});
    QTest::keyClick(editor(), Qt::Key_Escape);
    VERIFY_REQUESTS({added(copy)});
    verifyInStep();
  }

  void renamingSendsTheWholeRecordOnce() {
    const PropertyList record = profileAt(1);
    tab().selectMenuItem(1);
    typeName(QStringLiteral("Draw"));
    VERIFY_REQUESTS({updated(1, record.with(keys::ProfileName, "Draw(2)"))});
    verifyInStep();
  }

  void deletingSendsTheDocumentedFourRequests_data() {
    QTest::addColumn<int>("row");
    for (const int row : {0, 1, 2}) QTest::addRow("row %d", row) << row;
  }
  void deletingSendsTheDocumentedFourRequests() {
    QFETCH(int, row);
    if (row != 1) click(row, 1);
    mHub->link.requests.clear();
    QTest::mouseClick(find<QToolButton>("mDeleteProfile"), Qt::LeftButton);
    VERIFY_REQUESTS({});
    confirmAlert();
    std::vector<MessageID> sent;
    for (const auto& each : mHub->link.requests) sent.push_back(each.messageID);
    QVERIFY(sent == (std::vector<MessageID>{MessageID::DeleteProfile, MessageID::SwitchProfile,
                                            MessageID::ReplaceAllProfiles, MessageID::GetAllSettings}));
    QVERIFY(mHub->link.requests[0].body == request({{requestKeys::ProfileID, row}}));
    QVERIFY(mHub->link.requests[1] == switchedTo(std::max(row - 1, 0)));
    QVERIFY(table().isEnabled());
    verifyInStep();
  }

  void deletingSendsTheProfilesOnceMoreWhereAnotherControlWouldChange() {
    const auto switchTo = [](int position) {
      return vorn::assignmentRecord(vorn::AssignmentCommand::Profile, position);
    };
    const auto withKeys = [&](const PropertyList& profile, int four, int seven) {
      return profile.with(keys::Keys, profile[keys::Keys].with("4", switchTo(four)).with("7", switchTo(seven)));
    };
    const PropertyList elsewhere =
        PropertyList::dictionary({{keys::Keys, PropertyList::dictionary({{"4", switchTo(2)}})}});
    PropertyList profiles = mBundle[keys::Profiles];
    profiles = profiles.replacing(0, withKeys(profileAt(0), 2, 0).with(keys::Keymap, PropertyList::array({elsewhere})));
    mBundle = mBundle.with(keys::Profiles, profiles.replacing(1, withKeys(profileAt(1), 1, 0)));
    mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
    mHub->link.requests.clear();
    const PropertyList draw = profileAt(2);
    const PropertyList work = profileAt(0);
    QTest::mouseClick(find<QToolButton>("mDeleteProfile"), Qt::LeftButton);
    confirmAlert();

    QCOMPARE(mHub->link.requests.size(), std::size_t{5});
    const PropertyList moved = PropertyList::dictionary({{keys::Keys, PropertyList::dictionary({{"4", switchTo(1)}})}});
    const PropertyList kept =
        PropertyList::array({withKeys(work, 1, 0).with(keys::Keymap, PropertyList::array({moved})), draw});
    QVERIFY(mHub->link.requests[4] ==
            (ScriptedLink::Request{MessageID::ReplaceAllProfiles, request({{requestKeys::AllProfiles, kept}})}));
    QVERIFY(mBundle[keys::Profiles] == kept);
    QVERIFY(table().isEnabled());
    verifyInStep();
  }

  void restoringSendsTheDefaultsUnderTheName() {
    tab().selectMenuItem(9);
    confirmAlert();
    VERIFY_REQUESTS({updated(1, tab().mDefaultDict().with(keys::ProfileName, "Play"))});
    verifyInStep();
  }

  void theOnScreenDisplayIsASettingOfTheActiveProfile() {
    auto* box = find<QCheckBox>("mEnableOnScreenDisplay");
    const int on = box->isChecked() ? 0 : 1;
    QTest::keyClick(box, Qt::Key_Space);
    VERIFY_REQUESTS({updated(1, PropertyList::dictionary({{keys::ProfileOSDOn, on}}))});
  }

  void aBoxOfAnotherRowSwitchesAndThenChangesThatProfile() {
    const PropertyList appInfo = PropertyList::dictionary({{keys::Application, "Editor"}});
    mBundle =
        mBundle.with(keys::Profiles, mBundle[keys::Profiles].replacing(2, profileAt(2).with(keys::AppInfo, appInfo)));
    mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
    mHub->link.requests.clear();
    click(2, 3);
    VERIFY_REQUESTS({switchedTo(2), updated(2, PropertyList::dictionary({{keys::AutoSwitchOn, 1}}))});
    verifyInStep();
  }

  void theApplicationGoesToTheSelectedProfile() {
    QTemporaryDir folder;
    tab().openPanelDidEnd(1, folder.filePath(QStringLiteral("gone.app")), 1);
    QCOMPARE(mHub->link.requests.size(), std::size_t{1});
    QVERIFY(mHub->link.requests[0].messageID == MessageID::UpdateProfile);
    QCOMPARE(mHub->link.requests[0].body[requestKeys::ProfileID].toInt(), 1);
    // What is left on by the assignment turns no later reload into a switch.
    for (const int active : {0, 2, 1}) {
      mBundle = withActive(active);
      mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
      QTRY_COMPARE(selectedRow(), active);
      verifyInStep();
    }
    for (const auto& each : mHub->link.requests) QVERIFY(each.messageID != MessageID::SwitchProfile);
  }

  void newsOnlyReads_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("active");
    QTest::newRow("another is active") << 3 << 0;
    QTest::newRow("the last one is gone") << 2 << 1;
    QTest::newRow("the selected one is gone") << 1 << 0;
    QTest::newRow("two more, the last active") << 5 << 4;
  }
  void newsOnlyReads() {
    QFETCH(int, count);
    QFETCH(int, active);
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) names.push_back("P" + std::to_string(i));
    mBundle = bundleWith(names, {}, active);
    mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
    VERIFY_REQUESTS({{MessageID::GetAllSettings, request({})}});
    verifyInStep();
  }

  void newsDuringAnEditKeepsWhatIsTyped() {
    tab().selectMenuItem(1);
    QTest::keyClicks(editor(), QStringLiteral("Tra"));
    mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
    QVERIFY(editor());
    QCOMPARE(editor()->text(), QStringLiteral("Tra"));
    mBundle = withActive(0);
    mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
    QTRY_VERIFY(!editor());
    VERIFY_REQUESTS({{MessageID::GetAllSettings, request({})}, {MessageID::GetAllSettings, request({})}});
    verifyInStep();
  }

  void requestsWithoutAnAnswerLeaveTheSettings() {
    const PropertyList before = mBundle;
    mHub->link.onSend = [this](const ScriptedLink::Request& sent) { mHub->link.answer(sent.messageID, {}); };
    click(2, 1);
    QTest::mouseClick(find<QToolButton>("mAddProfile"), Qt::LeftButton);
    QCOMPARE(mHub->link.requests.size(), std::size_t{2});
    mHub->link.onSend = [this](const ScriptedLink::Request& sent) { serve(sent); };
    mHub->notifications.post("Profile Updated 273", "", PropertyList::dictionary());
    QVERIFY(mBundle == before);
    verifyInStep();
  }

  void theMouseThatGoesTakesTheEditAlong() {
    tab().selectMenuItem(1);
    QTest::keyClicks(editor(), QStringLiteral("X"));
    tab().enableControlsState(false);
    QVERIFY(!editor());
    VERIFY_REQUESTS({});
  }
};

SKARN_QTEST(MouseMainControllerProfilesTest)
#include "MouseMainController_profiles_test.moc"
