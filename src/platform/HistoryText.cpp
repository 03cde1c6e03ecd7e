#include "platform/HistoryText.h"

#include <QStringList>
#include <algorithm>
#include <iterator>
#include <set>

#include "model/Assignments.h"
#include "model/Controls.h"
#include "model/SettingsKeys.h"
#include "platform/AssignmentWords.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "protocol/EngineProtocol.h"
#include "protocol/History.h"

namespace skarn {

namespace keys = vorn::keys;
namespace kinds = vorn::history::kinds;
namespace words = vorn::history::keys;
using vorn::PropertyList;

namespace {

QString nameIn(const PropertyList& entry, words::Key key) {
  return shownName(textOf(entry, key));
}

// "Buttons 4 and 6"; empty where the entry names no controls.
QString controlsText(const PropertyList& entry) {
  std::set<int> numbers;
  for (const PropertyList& identifier : entry[words::Controls].arrayOrEmpty().elements()) {
    if (const vorn::Control* control = vorn::controlOf(identifier.string())) numbers.insert(control->number);
  }
  QStringList texts;
  for (const int number : numbers) texts << QString::number(number);
  if (texts.size() == 2) return localized("lkeyHistoryTwoControls").arg(texts[0], texts[1]);
  if (texts.size() == 3) return localized("lkeyHistoryThreeControls").arg(texts[0], texts[1], texts[2]);
  return {};
}

QString assignmentText(const PropertyList& entry) {
  const vorn::Control* control = vorn::controlOf(entry[words::Control].string());
  if (control == nullptr) {
    if (const QString named = controlsText(entry); !named.isEmpty()) return named;
    const int count = std::max(entry[words::Count].toInt(), 1);
    return count == 1 ? localized("lkeyHistoryAssignment") : localized("lkeyHistoryAssignments").arg(count);
  }
  // A macro or profile is told by its name: here it is the first of a list of one.
  const bool hasTarget = entry.contains(words::Target);
  const PropertyList record =
      PropertyList::dictionary({{keys::Command, entry[words::Command]},
                                {keys::Param1, hasTarget ? PropertyList(0) : entry[words::Param1]},
                                {keys::Param2, entry[words::Param2]}});
  const auto listWith = [&](keys::Key nameKey) {
    if (!hasTarget) return PropertyList();
    return PropertyList::array({PropertyList::dictionary({{nameKey, entry[words::Target]}})});
  };
  const PropertyList bundle = PropertyList::dictionary(
      {{keys::Macros, listWith(keys::MacroName)}, {keys::Profiles, listWith(keys::ProfileName)}});
  const bool isMacro = hasTarget && vorn::commandOf(record) == vorn::AssignmentCommand::Macro;
  const QString action = isMacro ? nameIn(entry, words::Target) : assignmentWords(record, *control, bundle);
  return localized("lkeyHistoryControlTo").arg(QString::number(control->number), action);
}

QString keymapName(const PropertyList& entry) {
  if (!entry[words::Keymap].isNumber()) return {};
  return localized("lkeyKeymapNumbered").arg(entry[words::Keymap].toInt64() + 1);
}

// --- Kinds

enum class Subject {
  Assignment,
  Keymap,
  Profiles,
  Macros,
  Profile,
  Macro,
  Events,
  Backup,
  RenamedProfile,
  RenamedMacro,
  Values,
  None
};

struct KindText {
  kinds::Kind kind;
  Subject subject;
  const char* text;                 // with the subject's name as %1, a renamed one's new name as %2
  const char* ofSeveral = nullptr;  // with their number as %1
};

// The texts of Values are put into "%1 of %2" where a profile is named.
constexpr KindText kindTexts[] = {
    {kinds::Assignment, Subject::Assignment, nullptr},
    {kinds::KeymapInForce, Subject::Keymap, "lkeyHistorySwitchedTo"},
    {kinds::ProfileAdded, Subject::Profiles, "lkeyHistoryProfileAdded", "lkeyHistoryProfilesAdded"},
    {kinds::ProfileDeleted, Subject::Profiles, "lkeyHistoryProfileDeleted", "lkeyHistoryProfilesDeleted"},
    {kinds::ProfileRenamed, Subject::RenamedProfile, "lkeyHistoryProfileRenamed"},
    {kinds::ProfileSwitched, Subject::Profile, "lkeyHistoryProfileSwitched"},
    {kinds::ProfilesReordered, Subject::None, "lkeyHistoryProfilesReordered"},
    {kinds::ProfileRestored, Subject::Profile, "lkeyHistoryProfileRestored"},
    {kinds::ProfileChanged, Subject::Values, "lkeyHistorySettings"},
    {kinds::MacroAdded, Subject::Macros, "lkeyHistoryMacroAdded", "lkeyHistoryMacrosAdded"},
    {kinds::MacroDeleted, Subject::Macros, "lkeyHistoryMacroDeleted", "lkeyHistoryMacrosDeleted"},
    {kinds::MacroRenamed, Subject::RenamedMacro, "lkeyHistoryMacroRenamed"},
    {kinds::MacroEvents, Subject::Macro, "lkeyHistoryMacroEvents"},
    {kinds::MacroDelays, Subject::Macro, "lkeyHistoryMacroDelays"},
    {kinds::MacroRecorded, Subject::Macro, "lkeyHistoryMacroRecorded"},
    {kinds::MacroEventsRemoved, Subject::Events, "lkeyHistoryMacroEventsRemoved", "lkeyHistoryMacroSomeEventsRemoved"},
    {kinds::Sensitivity, Subject::Values, "lkeySensitivityGroup"},
    {kinds::Stages, Subject::Values, "lkeyHistoryStages"},
    {kinds::PollingRate, Subject::Values, "lkeyPollingRate"},
    {kinds::Acceleration, Subject::Values, "lkeyAcceleration"},
    {kinds::Light, Subject::Values, "lkeyLight"},
    {kinds::Power, Subject::Values, "lkeyHistoryPower"},
    {kinds::Application, Subject::Values, "lkeyProfileApplicationColumn"},
    {kinds::Messages, Subject::Values, "lkeyHistoryMessages"},
    {kinds::BackupRestored, Subject::Backup, "lkeyHistoryBackupRestored"},
    {kinds::Settings, Subject::Values, "lkeyHistorySettings"},
};

const KindText& kindTextOf(const PropertyList& entry) {
  static constexpr KindText unknown{{}, Subject::Values, "lkeyHistorySettings"};
  const auto* const found = std::ranges::find(kindTexts, entry[words::Kind].string(), &KindText::kind);
  return found == std::end(kindTexts) ? unknown : *found;
}

QString recordsText(const KindText& kind, const PropertyList& entry, words::Key name) {
  if (entry.contains(words::Count)) return localized(kind.ofSeveral).arg(entry[words::Count].toInt());
  return localized(kind.text).arg(nameIn(entry, name));
}

// Of some events, where not of all.
QString eventsText(const KindText& kind, const PropertyList& entry) {
  const QString macro = nameIn(entry, words::Macro);
  if (!entry.contains(words::Count)) return localized(kind.text).arg(macro);
  const int count = entry[words::Count].toInt();
  if (count == 1) return localized("lkeyHistoryMacroEventRemoved").arg(macro);
  return localized(kind.ofSeveral).arg(QString::number(count), macro);
}

QString renamingText(const KindText& kind, const PropertyList& entry, words::Key name) {
  return localized(kind.text).arg(nameIn(entry, name), nameIn(entry, words::NewName));
}

QString valuesText(const KindText& kind, const PropertyList& entry) {
  const QString profile = nameIn(entry, words::Profile);
  const QString values = localized(kind.text);
  return profile.isEmpty() ? values : localized("lkeyHistoryOfProfile").arg(values, profile);
}

}  // namespace

QString changeText(const PropertyList& entry) {
  const KindText& kind = kindTextOf(entry);
  switch (kind.subject) {
    case Subject::Assignment:
      return assignmentText(entry);
    case Subject::Keymap: {
      const QString keymap = keymapName(entry);
      return keymap.isEmpty() ? localized("lkeyHistorySettings") : localized(kind.text).arg(keymap);
    }
    case Subject::Profiles:
      return recordsText(kind, entry, words::Profile);
    case Subject::Macros:
      return recordsText(kind, entry, words::Macro);
    case Subject::Profile:
      return localized(kind.text).arg(nameIn(entry, words::Profile));
    case Subject::Macro:
      return localized(kind.text).arg(nameIn(entry, words::Macro));
    case Subject::Events:
      return eventsText(kind, entry);
    case Subject::Backup:
      return localized(kind.text).arg(nameIn(entry, words::Date));
    case Subject::RenamedProfile:
      return renamingText(kind, entry, words::Profile);
    case Subject::RenamedMacro:
      return renamingText(kind, entry, words::Macro);
    case Subject::None:
      return localized(kind.text);
    case Subject::Values:
      break;
  }
  return valuesText(kind, entry);
}

QString changeTextWithPlace(const PropertyList& entry) {
  return changeTextBeside(entry, {});
}

QString changeTextBeside(const PropertyList& entry, const PropertyList& shownProfile) {
  const Subject subject = kindTextOf(entry).subject;
  const bool isOfShown = entry[words::Profile] == shownProfile[keys::ProfileName];
  const bool isOfShownKeymap = isOfShown && entry[words::Keymap] == shownProfile[keys::KeymapID];
  QStringList place;
  if ((subject == Subject::Assignment || subject == Subject::Keymap) && !isOfShown)
    place << nameIn(entry, words::Profile);
  if (subject == Subject::Assignment && !isOfShownKeymap) place << keymapName(entry);
  place.removeAll(QString());
  if (place.isEmpty()) return changeText(entry);
  return localized("lkeyHistoryInPlace").arg(changeText(entry), place.join(QLatin1String(", ")));
}

QString deletionText(const PropertyList& entry) {
  const KindText& kind = kindTextOf(entry);
  const bool isEvents = kind.subject == Subject::Events;
  if (entry.contains(words::Count) && !isEvents) return changeText(entry);
  const words::Key name = kind.subject == Subject::Profiles ? words::Profile : words::Macro;
  return localized(isEvents ? "lkeyHistoryDeletedEvents" : "lkeyHistoryDeleted").arg(nameIn(entry, name));
}

QString authorText(const PropertyList& entry) {
  const std::string_view author = entry[words::SourceApp].string();
  if (author.empty()) return localized("lkeyHistoryByUnknown");
  if (author == vorn::configuratorIdentifier) return localized("lkeyHistoryByWindow");
  if (author == vorn::vornctlIdentifier) return localized("lkeyHistoryByCommandLine");
  return nameIn(entry, words::SourceApp);
}

}  // namespace skarn
