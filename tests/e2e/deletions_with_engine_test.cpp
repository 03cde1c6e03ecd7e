// A deleted macro or profile, with the real engine: by the window and by the real vornctl, with the same outcome.
#include <map>

#include "ctl/VornCtl.h"
#include "e2e/OpenWindow.h"
#include "e2e/OtherClient.h"
#include "model/Assignments.h"
#include "platform/Localization.h"
#include "support/FakeEngineProcess.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::AssignmentCommand;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;

namespace {

constexpr int macroCount = 4;

std::vector<std::string> identifiersOf(keys::Key group) {
  if (group == keys::Keys) return {keys::keyIdentifiers.begin(), keys::keyIdentifiers.end()};
  return {keys::buttonIdentifiers.begin(), keys::buttonIdentifiers.end()};
}

// A third of the controls plays macros, a third switches to profiles; in every keymap in another way.
PropertyList groupsOf(int seed) {
  PropertyList holder = PropertyList::dictionary();
  int number = seed;
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    PropertyList records = PropertyList::dictionary();
    for (const std::string& identifier : identifiersOf(group)) {
      PropertyList record = vorn::factoryAssignment(identifier);
      if (number % 3 == 0)
        record = vorn::assignmentRecord(AssignmentCommand::Macro, number / 3 % macroCount, number % 5);
      if (number % 3 == 1) record = vorn::assignmentRecord(AssignmentCommand::Profile, number / 3 % 5);
      records = records.with(identifier, record);
      ++number;
    }
    holder = holder.with(group, records);
  }
  return holder;
}

PropertyList fiveProfiles(const PropertyList& factory) {
  std::vector<PropertyList> profiles;
  for (int position = 0; position < 5; ++position) {
    std::vector<PropertyList> keymaps;
    for (int keymap = 0; keymap < 8; ++keymap) keymaps.push_back(groupsOf(7 * position + 11 * keymap));
    const PropertyList inForce = keymaps.at(static_cast<std::size_t>(position) + 2);
    profiles.push_back(factory.merging(inForce)
                           .with(keys::ProfileName, "Profile " + std::to_string(position))
                           .with(keys::KeymapID, position + 2)
                           .with(keys::Keymap, PropertyList::array(std::move(keymaps))));
  }
  return PropertyList::array(std::move(profiles));
}

std::vector<std::string> namesOf(const PropertyList& records, keys::Key nameKey) {
  std::vector<std::string> names;
  for (const PropertyList& record : records.elements()) names.push_back(record[nameKey].toString());
  return names;
}

// What each control of the bundle does, told by the names of what it plays or switches to.
std::map<std::string, std::string> deedsOf(const PropertyList& bundle, const std::string& deletedName) {
  const std::vector<std::string> macros = namesOf(bundle[keys::Macros], keys::MacroName);
  const std::vector<std::string> profiles = namesOf(bundle[keys::Profiles], keys::ProfileName);
  std::map<std::string, std::string> deeds;
  const auto collect = [&](const PropertyList& holder, const std::string& where) {
    for (const keys::Key group : {keys::Keys, keys::Buttons}) {
      for (const std::string_view identifier : holder[group].keys()) {
        const PropertyList& record = holder[group][identifier];
        std::string deed = record.description();
        const auto target = static_cast<std::size_t>(record[keys::Param1].toInt());
        const std::string mode = " " + record[keys::Param2].description();
        if (vorn::commandOf(record) == AssignmentCommand::Macro) deed = "plays " + macros.at(target) + mode;
        if (vorn::commandOf(record) == AssignmentCommand::Profile) deed = "goes to " + profiles.at(target) + mode;
        const bool isLost = !deletedName.empty() && deed.find(" " + deletedName + " ") != std::string::npos;
        deeds[where + " " + std::string(identifier)] =
            isLost ? vorn::factoryAssignment(identifier).description() : deed;
      }
    }
  };
  for (const PropertyList& profile : bundle[keys::Profiles].elements()) {
    const std::string name = profile[keys::ProfileName].toString();
    if (name == deletedName) continue;
    collect(profile, name);
    for (std::int64_t keymap = 0; keymap < 8; ++keymap) {
      collect(profile[keys::Keymap].at(keymap), name + " keymap " + std::to_string(keymap));
    }
  }
  return deeds;
}

}  // namespace

class DeletionsWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }

  void a_deletion_changes_no_other_control_and_is_the_same_from_everywhere_data() {
    QTest::addColumn<bool>("isMacro");
    QTest::addColumn<int>("position");
    for (const int position : {0, 1, macroCount - 1}) QTest::addRow("macro %d", position) << true << position;
    for (const int position : {0, 2, 4}) QTest::addRow("profile %d", position) << false << position;
  }
  void a_deletion_changes_no_other_control_and_is_the_same_from_everywhere() {
    QFETCH(bool, isMacro);
    QFETCH(int, position);
    EngineSession engine;
    engine.begin();
    PropertyList before;
    PropertyList byWindow;
    {
      OtherClient other;
      before = fill(other);
      OpenWindow window;
      if (isMacro) window.hub().deleteMacroAtIndex(position);
      if (!isMacro) window.hub().deleteProfileWithProfileID(position);
      byWindow = other.bundle();
      QVERIFY(window.hub().mProfilesArray() == byWindow[keys::Profiles]);
    }
    engine.end();
    engine.begin();
    PropertyList byCommand;
    {
      OtherClient other;
      QVERIFY(fill(other) == before);
      const auto ended =
          vorn::ctl::test::runVornCtl({isMacro ? "macros" : "profiles", "delete", std::to_string(position + 1)});
      QCOMPARE(ended.output, std::string());
      QCOMPARE(ended.status, 0);
      byCommand = other.bundle();
    }
    engine.end();

    QVERIFY(byWindow[keys::Profiles] == byCommand[keys::Profiles]);
    QVERIFY(byWindow[keys::Macros] == byCommand[keys::Macros]);
    const std::string deleted = (isMacro ? "Macro " : "Profile ") + std::to_string(position);
    QVERIFY(deedsOf(byWindow, {}) == deedsOf(before, deleted));
  }

  // From an engine that garbles its answers, in the place of the real one.
  void a_deletion_whose_answer_tells_no_success_changes_no_assignment_data() {
    QTest::addColumn<bool>("isMacro");
    QTest::addColumn<QString>("answer");
    for (const bool isMacro : {true, false}) {
      const char* what = isMacro ? "macro" : "profile";
      QTest::addRow("%s, undecodable", what) << isMacro << "data 62706c6973743030ff";
      QTest::addRow("%s, empty", what) << isMacro << "reply %1";
    }
  }
  void a_deletion_whose_answer_tells_no_success_changes_no_assignment() {
    QFETCH(bool, isMacro);
    QFETCH(QString, answer);
    EngineSession engine;
    engine.begin();
    PropertyList settings;
    {
      OtherClient other;
      settings = PropertyList::dictionary({{vorn::replyKeys::AllDevSettings, fill(other)}});
    }
    engine.kill();
    const vorn::test::PropertyListFile loaded(settings);
    const vorn::test::PropertyListFile registered(PropertyList::dictionary({{vorn::replyKeys::ReturnStatus, true}}));
    const vorn::test::PropertyListFile empty(PropertyList::dictionary());
    const vorn::test::PropertyListFile changed(
        PropertyList::dictionary({{vorn::replyKeys::ReturnStatus, 0},
                                  {vorn::replyKeys::ReturnDictionary, settings[vorn::replyKeys::AllDevSettings]}}));
    const std::string deletion =
        std::to_string(static_cast<int>(isMacro ? MessageID::DeleteMacro : MessageID::DeleteProfile));
    vorn::test::FakeEngineProcess fake(
        {"on 0 reply " + registered.path(), "on 4 reply " + loaded.path(), "on 6 reply " + changed.path(),
         "on " + deletion + " " + answer.arg(QString::fromStdString(empty.path())).toStdString()});
    OpenWindow window;
    QVERIFY(window.hub().mProfilesArray() == settings[vorn::replyKeys::AllDevSettings][keys::Profiles]);
    if (isMacro) window.hub().deleteMacroAtIndex(1);
    if (!isMacro) window.hub().deleteProfileWithProfileID(1);
    QCOMPARE(window.requests(isMacro ? MessageID::DeleteMacro : MessageID::DeleteProfile), 1);
    QCOMPARE(window.profileUpdates(), 0);
    QCOMPARE(window.requests(MessageID::ReplaceAllProfiles), 0);
    QCOMPARE(window.requests(MessageID::SwitchProfile), 0);
    QVERIFY(window.hub().mProfilesArray() == settings[vorn::replyKeys::AllDevSettings][keys::Profiles]);
  }

 private:
  // Gives the engine macros and profiles that refer to each other; its bundle then.
  static PropertyList fill(OtherClient& other) {
    for (int macro = 0; macro < macroCount; ++macro) {
      other.ask(MessageID::AddMacro,
                PropertyList::dictionary(
                    {{requestKeys::MacroContents,
                      PropertyList::dictionary({{keys::MacroName, "Macro " + std::to_string(macro)}})}}));
    }
    const PropertyList profiles = fiveProfiles(other.bundle()[keys::Profiles].at(0));
    other.change(MessageID::ReplaceAllProfiles, PropertyList::dictionary({{requestKeys::AllProfiles, profiles}}));
    PropertyList bundle = other.bundle();
    if (bundle[keys::Profiles] != profiles) QTest::qFail("the engine takes the profiles", __FILE__, __LINE__);
    if (bundle[keys::Macros].size() != macroCount) QTest::qFail("the engine takes the macros", __FILE__, __LINE__);
    return bundle;
  }
};

SKARN_QTEST(DeletionsWithEngineTest)
#include "deletions_with_engine_test.moc"
