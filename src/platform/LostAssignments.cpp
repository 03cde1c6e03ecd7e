#include "platform/LostAssignments.h"

#include <QStringList>
#include <map>
#include <set>

#include "model/Controls.h"
#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"

namespace skarn {

namespace keys = vorn::keys;
using vorn::PropertyList;

QString assignmentsTo(const PropertyList& profiles, const vorn::Deletion& entry) {
  std::map<std::size_t, std::set<int>> numbersOfProfiles;
  for (const vorn::Reference& reference : vorn::referencesTo(profiles, entry)) {
    // A record of no control of this mouse concerns nobody.
    if (const vorn::Control* control = vorn::controlOf(reference.identifier)) {
      numbersOfProfiles[reference.profile].insert(control->number);
    }
  }
  QStringList parts;
  for (const auto& [profile, numbers] : numbersOfProfiles) {
    QStringList shown;
    for (const int number : numbers) shown << QString::number(number);
    const PropertyList& record = profiles.at(static_cast<std::int64_t>(profile));
    parts << localized("lkeyLostAssignmentsOfProfile")
                 .arg(shown.join(QLatin1String(", ")), shownName(textOf(record, keys::ProfileName)));
  }
  return parts.join(QLatin1String("; "));
}

QString withLostAssignments(const QString& text, const PropertyList& profiles, const vorn::Deletion& deletion) {
  const QString lost = assignmentsTo(profiles, deletion);
  return lost.isEmpty() ? text : text + QLatin1String("\n\n") + localized("lkeyLostAssignments").arg(lost);
}

}  // namespace skarn
