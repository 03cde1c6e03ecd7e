#include "platform/LostAssignments.h"

#include <QTest>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "support/SampleSettings.h"

using namespace skarn;
using namespace vorn::test;
using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

class LostAssignmentsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void theControlsThatPlayTheMacroAreNamedByProfileInTheOrderOfTheirNumbers() {
    const PropertyList work = plainProfile("Work").with(
        keys::Keys, factoryGroup(1).with("29", assignment(10, 2)).with("8", assignment(10, 2)));
    const PropertyList play =
        plainProfile("Play & more").with(keys::Buttons, factoryGroup(2).with("03", assignment(10, 2)));
    const PropertyList other = plainProfile("Other").with(keys::Keys, factoryGroup(1).with("8", assignment(10, 1)));
    QCOMPARE(withLostAssignments(QStringLiteral("Sure?"), PropertyList::array({work, other, play}),
                                 {AssignmentCommand::Macro, 2, 3}),
             QStringLiteral("Sure?\n\nThese controls go back to their default: 4, 12 of “Work”; 17 of “Play & more”."));
  }

  void aDeletionThatConcernsNoControlAddsNothing() {
    QCOMPARE(withLostAssignments(QStringLiteral("Sure?"), PropertyList::array({plainProfile("Work")}),
                                 {AssignmentCommand::Macro, 0, 1}),
             QStringLiteral("Sure?"));
  }

  void theControlsOfTheDeletedProfileAreNotNamed() {
    const auto switching = [](const char* name, int profile) {
      return plainProfile(name).with(keys::Keys, factoryGroup(1).with("8", assignment(17, profile)));
    };
    QCOMPARE(withLostAssignments(QStringLiteral("Sure?"), PropertyList::array({switching("A", 1), switching("B", 1)}),
                                 {AssignmentCommand::Profile, 1, 2}),
             QStringLiteral("Sure?\n\nThese controls go back to their default: 4 of “A”."));
  }
};

SKARN_QTEST(LostAssignmentsTest)
#include "LostAssignments_test.moc"
