// The configurator's command line, before and after Qt has taken its own options out.
#include "app/CommandLine.h"

#include <QTest>

#include "support/QtTests.h"

using namespace skarn;

class CommandLineTest : public QObject {
  Q_OBJECT

 private slots:
  void helpAndVersionAreFoundAmongOptionsOfQt() {
    const CommandLine help = CommandLine::parse({"-platform", "offscreen", "-style", "fusion", "--help"});
    QVERIFY(help.wantsHelp && !help.wantsVersion);
    const CommandLine version = CommandLine::parse({"--nonsense", "--version"});
    QVERIFY(version.wantsVersion && !version.wantsHelp);
  }

  void aPlatformIsNamedByEitherSpelling() {
    QVERIFY(CommandLine::parse({"-platform", "offscreen"}).namesPlatform);
    QVERIFY(CommandLine::parse({"--verbose", "--platform", "offscreen"}).namesPlatform);
    QVERIFY(!CommandLine::parse({"--verbose"}).namesPlatform);
    QVERIFY(!CommandLine::parse({"--picture", "-platform"}).namesPlatform);
  }

  void aPlatformAndItsNameAreNoErrors() {
    QCOMPARE(CommandLine::parse({"-platform", "offscreen", "--tab", "macros"}).error, QString());
    QCOMPARE(CommandLine::parse({"-platform"}).error, QString());
  }

  void theFirstProblemIsTold() {
    QCOMPARE(CommandLine::parse({"--nonsense", "--tab", "x", "--picture"}).error,
             QStringLiteral("unknown argument --nonsense"));
    QCOMPARE(CommandLine::parse({"--tab"}).error, QStringLiteral("option --tab needs a value"));
  }
};

SKARN_QTEST(CommandLineTest)
#include "CommandLine_test.moc"
