// Applications as bundles and desktop entries: their information, icons, and which of them are installed.
#include "platform/ApplicationInfo.h"

#include <sys/stat.h>

#include <memory>

#include "model/PropertyListCodec.h"
#include "support/ApplicationsHome.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

QByteArray infoList(const QByteArray& members) {
  return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + members + "</dict></plist>";
}

}  // namespace

class ApplicationInfoTest : public QObject {
  Q_OBJECT

 private:
  QString inFolder(const QString& name) const { return mHome->inFolder(name); }
  QStringList installedNames() const {
    QStringList names;
    for (const auto& application : ApplicationInfo::installed()) names << application.name;
    return names;
  }
  static void compare(const PropertyList& actual, const PropertyList& expected) {
    QVERIFY2(actual == expected, actual.description().c_str());
  }

  std::unique_ptr<ApplicationsHome> mHome;

 private slots:
  void init() { mHome = std::make_unique<ApplicationsHome>(); }
  void cleanup() { mHome.reset(); }

  void aBundleGivesItsInformationWithItsPath_data() {
    QTest::addColumn<QString>("file");
    QTest::newRow("in Contents") << QStringLiteral("Game.app/Contents/Info.plist");
    QTest::newRow("in the folder itself") << QStringLiteral("Game.app/Info.plist");
    QTest::newRow("in capitals") << QStringLiteral("Game.APP/Info.plist");
  }
  void aBundleGivesItsInformationWithItsPath() {
    QFETCH(QString, file);
    QVERIFY(writeTestFile(inFolder(file), infoList("<key>CFBundleName</key><string>Gäme</string>"
                                                   "<key>CFBundleExecutable</key><string>game</string>"
                                                   "<key>Other</key><integer>5</integer>")));
    const QString path = inFolder(file.section(QLatin1Char('/'), 0, 0));
    const auto expected = PropertyList::dictionary({{"CFBundleName", "Gäme"},
                                                    {"CFBundleExecutable", "game"},
                                                    {"Other", 5},
                                                    {"NSBundleResolvedPath", path.toStdString()}});
    compare(ApplicationInfo::infoDictionary(path), expected);
    compare(ApplicationInfo::infoDictionary(path + QLatin1Char('/')), expected);
  }

  void aBundleWithoutUsableInformationHasOnlyItsPath_data() {
    QTest::addColumn<QByteArray>("information");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\xff\xfe garbage");
    QTest::newRow("no dictionary") << QByteArray("<plist><array/></plist>");
    QTest::newRow("too large") << QByteArray((1 << 20) + 1, ' ');
  }
  void aBundleWithoutUsableInformationHasOnlyItsPath() {
    QFETCH(QByteArray, information);
    const QString path = inFolder(QStringLiteral("Game.app"));
    QVERIFY(QDir().mkpath(path));
    if (!information.isEmpty()) QVERIFY(writeTestFile(path + QStringLiteral("/Info.plist"), information));
    compare(ApplicationInfo::infoDictionary(path),
            PropertyList::dictionary({{"NSBundleResolvedPath", path.toStdString()}}));
  }

  void aPipeInABundleIsNotWaitedFor() {
    const QString path = inFolder(QStringLiteral("Game.app"));
    QVERIFY(QDir().mkpath(path));
    QCOMPARE(::mkfifo(QFile::encodeName(path + QStringLiteral("/Info.plist")).constData(), 0600), 0);
    compare(ApplicationInfo::infoDictionary(path),
            PropertyList::dictionary({{"NSBundleResolvedPath", path.toStdString()}}));
  }

  void aDesktopEntryGivesTheFiveKeys() {
    const QString path = mHome->addEntry(QStringLiteral("maker/editor.desktop"),
                                         "Name=Editor\nName[de]=Schreiber\nName[fr]=Éditeur\n"
                                         "Exec=\"/opt/My Editor/run\" --new %F\nIcon=pen\n",
                                         QStringLiteral("system"));
    compare(ApplicationInfo::infoDictionary(path),
            PropertyList::dictionary({{"CFBundleName", "Schreiber"},
                                      {"CFBundleExecutable", "/opt/My Editor/run"},
                                      {"CFBundleIdentifier", "maker-editor.desktop"},
                                      {"CFBundleSignature", "????"},
                                      {"NSBundleResolvedPath", path.toStdString()}}));
  }

  void anEntryOutsideOfTheDataFoldersHasItsNameForAnIdentifier() {
    const QString path = inFolder(QStringLiteral("deep/er/editor.desktop"));
    QVERIFY(writeTestFile(path, "[Desktop Entry]\nType=Application\nName=Editor\nExec=editor\n"));
    compare(ApplicationInfo::infoDictionary(path),
            PropertyList::dictionary({{"CFBundleName", "Editor"},
                                      {"CFBundleExecutable", "editor"},
                                      {"CFBundleIdentifier", "editor.desktop"},
                                      {"CFBundleSignature", "????"},
                                      {"NSBundleResolvedPath", path.toStdString()}}));
  }

  void whatAnEntryLacksIsLeftOut() {
    const QString path = mHome->addEntry(QStringLiteral("bare.desktop"), "Exec=\"open\n");
    compare(ApplicationInfo::infoDictionary(path),
            PropertyList::dictionary({{"CFBundleIdentifier", "bare.desktop"},
                                      {"CFBundleSignature", "????"},
                                      {"NSBundleResolvedPath", path.toStdString()}}));
  }

  void theLanguageIsThatOfTheMessages_data() {
    QTest::addColumn<QString>("all");
    QTest::addColumn<QString>("messages");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("name");
    const QString german = QStringLiteral("de_DE.UTF-8");
    const QString french = QStringLiteral("fr_FR");
    QTest::newRow("LC_ALL") << german << french << french << QStringLiteral("Schreiber");
    QTest::newRow("LC_MESSAGES") << QString() << german << french << QStringLiteral("Schreiber");
    QTest::newRow("LANG") << QString() << QString() << german << QStringLiteral("Schreiber");
    QTest::newRow("none") << QString() << QString() << QString() << QStringLiteral("Editor");
    QTest::newRow("C") << QStringLiteral("C") << german << german << QStringLiteral("Editor");
  }
  void theLanguageIsThatOfTheMessages() {
    QFETCH(QString, all);
    QFETCH(QString, messages);
    QFETCH(QString, language);
    QFETCH(QString, name);
    mHome->set("LC_ALL", all);
    mHome->set("LC_MESSAGES", messages);
    mHome->set("LANG", language);
    const QString path = mHome->addEntry(QStringLiteral("editor.desktop"), "Name=Editor\nName[de]=Schreiber\n");
    QCOMPARE(QString::fromStdString(ApplicationInfo::infoDictionary(path)[ApplicationInfo::nameKey].toString()), name);
  }

  void whatIsNoApplicationGivesAnEmptyDictionary_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("missing") << QStringLiteral("none.desktop") << QByteArray();
    QTest::newRow("no path") << QString() << QByteArray();
    QTest::newRow("another file") << QStringLiteral("notes.txt") << QByteArray("[Desktop Entry]\nType=Application\n");
    QTest::newRow("empty") << QStringLiteral("a.desktop") << QByteArray("\n");
    QTest::newRow("link") << QStringLiteral("a.desktop") << QByteArray("[Desktop Entry]\nType=Link\nName=a\n");
    QTest::newRow("null byte") << QStringLiteral("a.desktop")
                               << QByteArray("[Desktop Entry]\nType=Application\nName=a\0", 41);
    QTest::newRow("too large") << QStringLiteral("a.desktop")
                               << "[Desktop Entry]\nType=Application\nName=" + QByteArray(1 << 20, 'a');
    QTest::newRow("folder that is no bundle") << QStringLiteral("folder/Info.plist") << infoList({});
  }
  void whatIsNoApplicationGivesAnEmptyDictionary() {
    QFETCH(QString, name);
    QFETCH(QByteArray, contents);
    QString path = name.isEmpty() ? QString() : inFolder(name);
    if (!contents.isEmpty()) QVERIFY(writeTestFile(path, contents));
    if (name.endsWith(QLatin1String("Info.plist"))) path = QFileInfo(path).absolutePath();
    compare(ApplicationInfo::infoDictionary(path), PropertyList::dictionary());
    QVERIFY(ApplicationInfo::icon(path).isNull());
  }

  void anEntrysIconComesFromTheThemeOrItsFile_data() {
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QColor>("color");
    QTest::newRow("theme") << QStringLiteral("pen") << QColor(Qt::red);
    QTest::newRow("theme, with the ending of a file") << QStringLiteral("pen.png") << QColor(Qt::red);
    QTest::newRow("file") << QStringLiteral("%1/pictures/blue.png") << QColor(Qt::blue);
    QTest::newRow("unknown") << QStringLiteral("no-such-icon") << QColor();
    QTest::newRow("missing file") << QStringLiteral("/none/none.png") << QColor();
    QTest::newRow("no picture") << QStringLiteral("%1/pictures/text.png") << QColor();
    QTest::newRow("device") << QStringLiteral("/dev/zero") << QColor();
    QTest::newRow("relative path") << QStringLiteral("pictures/blue.png") << QColor();
    QTest::newRow("none") << QString() << QColor();
  }
  void anEntrysIconComesFromTheThemeOrItsFile() {
    QFETCH(QString, icon);
    QFETCH(QColor, color);
    QVERIFY(mHome->addThemeIcon(QStringLiteral("pen"), Qt::red));
    QVERIFY(mHome->addPicture(inFolder(QStringLiteral("pictures/blue.png")), Qt::blue));
    QVERIFY(writeTestFile(inFolder(QStringLiteral("pictures/text.png")), "text"));
    if (icon.contains(QLatin1String("%1"))) icon = icon.arg(mHome->inFolder(QStringLiteral(".")));
    const QString path =
        mHome->addEntry(QStringLiteral("maker/ed-itor.desktop"), "Name=Editor\nExec=editor\nIcon=" + icon.toUtf8());
    QCOMPARE(colorOf(ApplicationInfo::icon(path)), color);
    QCOMPARE(colorOf(ApplicationInfo::iconForIdentifier(QStringLiteral("maker-ed-itor.desktop"))), color);
    QCOMPARE(colorOf(ApplicationInfo::iconForIdentifier(QStringLiteral("maker-ed-itor"))), color);
  }

  void aBundlesIconComesFromItsResources_data() {
    QTest::addColumn<QString>("file");
    QTest::newRow("in Contents") << QStringLiteral("/Contents");
    QTest::newRow("in the folder itself") << QString();
  }
  void aBundlesIconComesFromItsResources() {
    QFETCH(QString, file);
    const QString path = inFolder(QStringLiteral("home/Applications/Game.app"));
    QVERIFY(writeTestFile(path + file + QStringLiteral("/Info.plist"),
                          infoList("<key>CFBundleIdentifier</key><string>com.maker.game</string>"
                                   "<key>CFBundleIconFile</key><string>game</string>")));
    QVERIFY(mHome->addPicture(path + file + QStringLiteral("/Resources/game.png"), Qt::green));
    QCOMPARE(colorOf(ApplicationInfo::icon(path)), QColor(Qt::green));
    QCOMPARE(colorOf(ApplicationInfo::iconForIdentifier(QStringLiteral("com.maker.game"))), QColor(Qt::green));
  }

  void aBundlesIconLiesInItsResourcesOnly() {
    const QString path = inFolder(QStringLiteral("Game.app"));
    QVERIFY(writeTestFile(path + QStringLiteral("/Info.plist"),
                          infoList("<key>CFBundleIconFile</key><string>../../outside.png</string>")));
    QVERIFY(mHome->addPicture(inFolder(QStringLiteral("outside.png")), Qt::green));
    QVERIFY(QDir().mkpath(path + QStringLiteral("/Resources")));
    QVERIFY(ApplicationInfo::icon(path).isNull());
  }

  void anIdentifierNeverLeadsOutOfTheFolders_data() {
    QTest::addColumn<QString>("identifier");
    for (const char* identifier : {"", ".", "..", "../outside.desktop", "..-outside.desktop",
                                   "sub-..-..-outside.desktop", "sub/inner.desktop", "unknown", "-", "sub-", "sub"}) {
      QTest::newRow(identifier) << QString::fromLatin1(identifier);
    }
    QTest::newRow("long") << QString(100000, QLatin1Char('-'));
    QTest::newRow("null") << QString(QChar::Null);
  }
  void anIdentifierNeverLeadsOutOfTheFolders() {
    QFETCH(QString, identifier);
    QVERIFY(mHome->addThemeIcon(QStringLiteral("pen"), Qt::red));
    mHome->addEntry(QStringLiteral("sub/inner.desktop"), "Name=Inner\nExec=a\nIcon=pen\n");
    QVERIFY(writeTestFile(inFolder(QStringLiteral("data/outside.desktop")),
                          "[Desktop Entry]\nType=Application\nName=Outside\nIcon=pen\n"));
    QVERIFY(ApplicationInfo::iconForIdentifier(identifier).isNull());
    QVERIFY(!ApplicationInfo::iconForIdentifier(QStringLiteral("sub-inner.desktop")).isNull());
  }

  void installedApplicationsComeByName() {
    mHome->addEntry(QStringLiteral("b.desktop"), "Name=game 10\nExec=a\n");
    const QString path =
        mHome->addEntry(QStringLiteral("sub/c.desktop"), "Name=x\nName[de]=Game 9\nExec=a\n", QStringLiteral("system"));
    mHome->addEntry(QStringLiteral("a.desktop"), "Name=  Zoo\\nwide \nExec=a\n", QStringLiteral("shared"));
    QCOMPARE(installedNames(),
             (QStringList{QStringLiteral("Game 9"), QStringLiteral("game 10"), QStringLiteral("Zoo wide")}));
    QCOMPARE(ApplicationInfo::installed().front().path, path);
  }

  void whatAMenuDoesNotShowIsLeftOut_data() {
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<bool>("isShown");
    const auto row = [](const char* name, const QByteArray& lines, bool isShown) {
      QTest::newRow(name) << lines << isShown;
    };
    row("ordinary", "Name=a\nExec=a\n", true);
    row("NoDisplay", "Name=a\nExec=a\nNoDisplay=true\n", false);
    row("NoDisplay false", "Name=a\nExec=a\nNoDisplay=false\n", true);
    row("Hidden", "Name=a\nExec=a\nHidden=true\n", false);
    row("for this desktop", "Name=a\nExec=a\nOnlyShowIn=One;Two;\n", true);
    row("for another desktop", "Name=a\nExec=a\nOnlyShowIn=One;\n", false);
    row("not for this desktop", "Name=a\nExec=a\nNotShowIn=Three;\n", false);
    row("not for another desktop", "Name=a\nExec=a\nNotShowIn=One;\n", true);
    row("program found", "Name=a\nExec=a\nTryExec=sh\n", true);
    row("program found by its path", "Name=a\nExec=a\nTryExec=/bin/sh\n", true);
    row("program missing", "Name=a\nExec=a\nTryExec=no-such-program-here\n", false);
    row("path missing", "Name=a\nExec=a\nTryExec=/bin/no-such-program\n", false);
    row("no program", "Name=a\nExec=a\nTryExec=/etc/passwd\n", false);
    row("no name", "Exec=a\n", false);
    row("no Exec", "Name=a\n", false);
    row("another type", "Name=a\nExec=a\n[Other]\nHidden=true\n", true);
  }
  void whatAMenuDoesNotShowIsLeftOut() {
    QFETCH(QByteArray, lines);
    QFETCH(bool, isShown);
    mHome->set("XDG_CURRENT_DESKTOP", QStringLiteral("Two:Three"));
    mHome->addEntry(QStringLiteral("a.desktop"), lines);
    QCOMPARE(installedNames(), isShown ? QStringList{QStringLiteral("a")} : QStringList());
  }

  void theFirstOfTwoEntriesWithOneIdentifierCounts() {
    mHome->addEntry(QStringLiteral("sub/a.desktop"), "Name=own\nExec=a\n");
    mHome->addEntry(QStringLiteral("sub-a.desktop"), "Name=shared\nExec=a\n", QStringLiteral("shared"));
    mHome->addEntry(QStringLiteral("b.desktop"), "Name=hidden\nExec=a\nHidden=true\n", QStringLiteral("shared"));
    mHome->addEntry(QStringLiteral("b.desktop"), "Name=seen\nExec=a\n", QStringLiteral("system"));
    QCOMPARE(installedNames(), QStringList{QStringLiteral("own")});
  }

  void foldersThatAreMissingOrLoopAreSurvived() {
    QCOMPARE(installedNames(), QStringList());
    const QString folder = inFolder(QStringLiteral("data/applications"));
    mHome->addEntry(QStringLiteral("a.desktop"), "Name=a\nExec=a\n");
    QVERIFY(QFile::link(folder, folder + QStringLiteral("/loop")));
    QVERIFY(QFile::link(QStringLiteral("/none"), folder + QStringLiteral("/dangling.desktop")));
    QVERIFY(QDir(folder).mkdir(QStringLiteral("folder.desktop")));
    mHome->set("XDG_DATA_DIRS", QStringLiteral("relative::/none"));
    QCOMPARE(installedNames(), QStringList{QStringLiteral("a")});
  }
};

SKARN_QTEST(ApplicationInfoTest)
#include "ApplicationInfo_test.moc"
