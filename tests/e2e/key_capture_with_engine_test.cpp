// What is typed is told to everybody on the bus while a window captures keys, and no longer than that.
#include <QEventLoop>
#include <csignal>
#include <iostream>

#include "buttons/ButtonsFixture.h"
#include "e2e/OpenMacros.h"
#include "e2e/Vornctl.h"
#include "macros/MacroMenus.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::test::VirtualMouse;

namespace {

constexpr const char* held = "SKARN_TEST_HELD";

// Opens what captures keys in the window.
void capture(OpenMacros& open, const QString& what) {
  open.awaitAnnouncement();
  if (what == QLatin1String("key sheet")) {
    open.showTab("MouseButtonController");
    ButtonsDriver driver(*open.window().findChild<MouseButtonController*>());
    driver.choose(ButtonsDriver::control(1), AssignmentCategory::SingleKey);
    QVERIFY(driver.isOpen("mSingleKey"));
  } else {
    open.find<QTableView>("mMacroTableView")->selectRow(0);
    open.clickLine(0);
    open.chooseFromGear("mSettingsMacroDetails", macroDetailsMenuTags::Edit);
    QVERIFY(open.hasSheet("mEditEventWindow"));
  }
}

// Everything that the engine tells, as another program of the session hears it.
class Monitor {
 public:
  Monitor() {
    mProgram.waitForLine([](const std::string& line) { return line.starts_with("listening"); });
  }

  // Is a key told that is typed now? News come in their order: what was told of it comes before a new name.
  bool hearsWhatIsTyped() {
    const std::string name = "Name " + std::to_string(++mNames);
    if (!VirtualMouse::type(keyboardPage, keyA) || !runVornctl({"profiles", "rename", "1", name})) return true;
    bool isHeard = false;
    while (const auto line = mProgram.waitForLine([](const std::string&) { return true; })) {
      if (line->starts_with("Profile Updated")) return isHeard;
      isHeard |= line->starts_with("SingleKeyEvent");
    }
    return true;
  }

 private:
  vorn::test::ChildProcess mProgram{{VORNCTL_PROGRAM, "monitor"}};
  int mNames = 0;
};

}  // namespace

// A program of its own, which captures until it is killed. It is started by the tests below and is none itself.
class HeldCapture : public QObject {
  Q_OBJECT

 private slots:
  void captures_until_it_is_killed() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    const BusNotifier notifier{vorn::BusConnection::forThisThread()};
    OpenMacros open;
    capture(open, qEnvironmentVariable(held));
    std::cout << "captures" << std::endl;
    QEventLoop().exec();
  }
};

[[maybe_unused]] static const bool isHeldCaptureAdded = skarn::test::addTest(
    "HeldCapture", {[] { return std::unique_ptr<QObject>(std::make_unique<HeldCapture>()); }, [] {}});

class KeyCaptureWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mEngine.begin();
    OtherClient other;
    addMacro(other, 2);
  }
  void cleanup() { mEngine.end(); }

  void nothing_that_is_typed_is_told_after_the_window_quits_data() { addCaptures(); }
  void nothing_that_is_typed_is_told_after_the_window_quits() {
    QFETCH(QString, what);
    Monitor monitor;
    QVERIFY(!monitor.hearsWhatIsTyped());
    {
      OpenMacros open;
      capture(open, what);
      QVERIFY(monitor.hearsWhatIsTyped());
    }
    QVERIFY(!monitor.hearsWhatIsTyped());
  }

  void nothing_that_is_typed_is_told_after_the_window_died_data() { addCaptures(); }
  void nothing_that_is_typed_is_told_after_the_window_died() {
    QFETCH(QString, what);
    Monitor monitor;
    qputenv(held, what.toUtf8());
    vorn::test::ChildProcess window({QCoreApplication::applicationFilePath().toStdString(), "HeldCapture"});
    qunsetenv(held);
    QVERIFY(window.waitForLine([](const std::string& line) { return line == "captures"; }));
    QVERIFY(monitor.hearsWhatIsTyped());
    window.signal(SIGKILL);
    window.waitForEnd();
    // The bus notices the end by itself.
    QTRY_VERIFY_WITH_TIMEOUT(!monitor.hearsWhatIsTyped(), deadline);
  }

 private:
  static void addCaptures() {
    QTest::addColumn<QString>("what");
    for (const char* what : {"key sheet", "event sheet"}) QTest::addRow("%s", what) << QString::fromLatin1(what);
  }

  EngineSession mEngine;
};

SKARN_QTEST(KeyCaptureWithEngineTest)
#include "key_capture_with_engine_test.moc"
