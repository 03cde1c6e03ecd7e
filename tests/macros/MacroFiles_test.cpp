// The Macros tab: exporting a macro to a file, and importing one.
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "macros/MacroMenus.h"
#include "macros/MacrosFixture.h"
#include "model/PropertyListCodec.h"
#include "model/VrCoreUtility.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "widgets/Notice.h"

using namespace skarn;
using namespace skarn::test;

namespace {

struct FilesFixture : MacrosFixture {
  using MacrosFixture::MacrosFixture;

  QString path(const QString& name) { return folder.filePath(name); }
  void write(const QString& name, const QByteArray& bytes) {
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
  }
  void write(const QString& name, const PropertyList& record) {
    const auto bytes = vorn::VrCoreUtility::convertDictionaryToData(record);
    QVERIFY(bytes.has_value());
    write(name, QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size())));
  }
  PropertyList read(const QString& name) {
    const auto record = vorn::readPropertyListFile(path(name).toStdString());
    return record ? *record : PropertyList();
  }

  QFileDialog* panel(const char* name) {
    auto* dialog = window.findChild<QFileDialog*>(QLatin1String(name));
    return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
  }
  void choose(const char* panelName, const QString& chosen) {
    QFileDialog* dialog = panel(panelName);
    QVERIFY(dialog != nullptr);
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    // A field without the focus takes the name of the file that the list selects for it.
    QApplication::setActiveWindow(dialog);
    name->setFocus();
    name->setText(chosen);
    QTest::keyClick(name, Qt::Key_Return);
  }
  void exportTo(const QString& chosen) {
    chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    choose("mMacrosSaveAsPanel", chosen);
  }
  void importFrom(const QString& name) {
    chooseFromGear("mSettingsMacro", macroMenuTags::Import);
    choose("mMacrosPanel", path(name));
  }
  QTemporaryDir folder;
};

PropertyList sampleRecord() {
  return macro("Fireball", {macroEvent(1, 9), macroEvent(0, 9)})
      .with(keys::MacroID, 4)
      .with(keys::Delay, 35)
      .with("comment", "mine");
}

}  // namespace

class MacroFilesTest : public QObject {
  Q_OBJECT

 private slots:
  void an_export_writes_the_record_without_its_id() {
    FilesFixture at;
    at.tab->setMMacrosSettingsArray(PropertyList::array({sampleRecord()}));
    at.tab->refreshTableDisplay();
    at.selectMacro(0);
    at.exportTo(at.path("mine"));
    QVERIFY(at.panel("mMacrosSaveAsPanel") == nullptr);
    QVERIFY(at.read("mine.SkarnMacro") == sampleRecord().without(keys::MacroID));
    QFile file(at.path("mine.SkarnMacro"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(8), QByteArray("bplist00"));
    QVERIFY(at.alert() == nullptr);
    QCOMPARE(at.delegate.take(), QStringList{"reloadMacros()"});
  }

  void the_panel_suggests_the_name_of_the_macro() {
    FilesFixture at;
    at.tab->setMMacrosSettingsArray(macrosNamed({"Up/down"}));
    at.tab->refreshTableDisplay();
    at.selectMacro(0);
    at.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    auto* name = at.panel("mMacrosSaveAsPanel")->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QCOMPARE(name->text(), QStringLiteral("Up-down"));
    QCOMPARE(at.panel("mMacrosSaveAsPanel")->windowTitle(), QStringLiteral("Export Macro"));
  }

  void a_cancelled_panel_writes_nothing() {
    FilesFixture at;
    at.selectMacro(0);
    at.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    QTest::keyClick(at.panel("mMacrosSaveAsPanel"), Qt::Key_Escape);
    QVERIFY(at.panel("mMacrosSaveAsPanel") == nullptr);
    QVERIFY(QDir(at.folder.path()).isEmpty());
    QVERIFY(at.alert() == nullptr);
  }

  void an_existing_file_is_replaced_only_when_that_is_wanted_data() {
    QTest::addColumn<bool>("isWanted");
    QTest::newRow("replaced") << true;
    QTest::newRow("kept") << false;
  }
  void an_existing_file_is_replaced_only_when_that_is_wanted() {
    QFETCH(bool, isWanted);
    FilesFixture at;
    at.write("mine.SkarnMacro", QByteArray("old"));
    at.selectMacro(0);
    at.exportTo(at.path("mine"));
    QVERIFY(at.alert() != nullptr);
    if (isWanted) {
      confirm(at.alert());
    } else {
      QTest::keyClick(at.alert(), Qt::Key_Escape);
    }
    QFile file(at.path("mine.SkarnMacro"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll() == QByteArray("old"), !isWanted);
  }

  void a_failed_export_is_told_and_leaves_no_file_data() {
    QTest::addColumn<QString>("target");
    QTest::newRow("a full disk") << "device.SkarnMacro";
    QTest::newRow("a folder in the way") << "folder.SkarnMacro";
  }
  void a_failed_export_is_told_and_leaves_no_file() {
    QFETCH(QString, target);
    FilesFixture at;
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), at.path("device.SkarnMacro")));
    QVERIFY(QDir(at.folder.path()).mkdir(QStringLiteral("folder.SkarnMacro")));
    const QStringList before = QDir(at.folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    at.selectMacro(0);
    at.exportTo(at.path(QFileInfo(target).baseName()));
    QVERIFY(at.alert() != nullptr);
    QVERIFY(at.alert()->text().contains(target));
    QVERIFY(!at.alert()->informativeText().isEmpty());
    QCOMPARE(QDir(at.folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot), before);
  }

  void the_import_offers_only_macro_files_from_the_documents_on() {
    FilesFixture at;
    at.chooseFromGear("mSettingsMacro", macroMenuTags::Import);
    const QFileDialog* panel = at.panel("mMacrosPanel");
    QVERIFY(panel != nullptr);
    QCOMPARE(panel->windowTitle(), QStringLiteral("Import Macro"));
    QCOMPARE(panel->nameFilters(), QStringList{QStringLiteral("Skarn macros (*.SkarnMacro)")});
    // The folder is not there on this system; the user's own documents are meant.
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = QDir(documents).exists() ? documents : QDir::homePath();
    QCOMPARE(QFileInfo(panel->directory().path()), QFileInfo(folder));
  }

  void an_imported_macro_is_added_under_a_free_name_and_selected() {
    FilesFixture at;
    at.selectMacro(1);
    const PropertyList record = sampleRecord().without(keys::MacroID);
    at.write("mine.SkarnMacro", record);
    const PropertyList added = record.with(keys::MacroName, "Fireball(2)");
    at.importFrom("mine.SkarnMacro");
    QCOMPARE(at.delegate.take(), (QStringList{"addMacroWithSettings(" + RecordingMacros::text(added) + ")",
                                              "getMacroDetailsForMacroAtIndex(3)"}));
    QVERIFY(at.tab->mMacrosSettingsArray().at(3) == added);
    QCOMPARE(at.rowsOf(at.macros()), (QStringList{"Fireball", "Greeting", "Build order", "Fireball(2)"}));
    QCOMPARE(at.selectedRow(at.macros()), 3);
    QVERIFY(at.alert() == nullptr);
  }

  void an_import_that_the_engine_refuses_is_told_and_adds_nothing() {
    FilesFixture at;
    at.selectMacro(1);
    at.write("mine.SkarnMacro", sampleRecord());
    at.delegate.answerToAdd = vorn::ReturnStatus::OutOfRange;
    at.importFrom("mine.SkarnMacro");
    QCOMPARE(at.alert()->text(), QStringLiteral("“mine.SkarnMacro” could not be imported"));
    QCOMPARE(at.alert()->informativeText(), localized("lkeyNoRoomForMacro"));
    QCOMPARE(at.rowsOf(at.macros()), (QStringList{"Fireball", "Greeting", "Build order"}));
    QVERIFY(at.tab->mMacrosSettingsArray() == macrosNamed({"Fireball", "Greeting", "Build order"}));
    QCOMPARE(at.selectedRow(at.macros()), 1);
    QVERIFY(at.tab->mMacroDetailsArray() == linesOfEvents(1));
  }

  void where_an_export_went_is_said_beside_the_buttons() {
    FilesFixture at;
    at.selectMacro(0);
    const auto* notice = at.find<Notice>("mMacroNotice");
    QVERIFY(!notice->isVisible());
    at.exportTo(at.path("mine"));
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("Exported to %1").arg(at.path("mine.SkarnMacro")));
  }

  void an_export_writes_the_events_that_the_engine_has_by_then() {
    FilesFixture at({"Fireball"});
    at.selectMacro(0);
    at.delegate.onCall = [&](const QString& call) {
      if (call == QLatin1String("reloadMacros()")) at.reload(PropertyList::array({sampleRecord()}));
    };
    at.exportTo(at.path("mine"));
    QVERIFY(at.read("mine.SkarnMacro") == sampleRecord().without(keys::MacroID));
  }

  void an_export_writes_the_macro_that_its_panel_was_opened_for() {
    FilesFixture at;
    at.selectMacro(1);
    at.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    at.reload(macrosNamed({"Greeting", "Build order"}));
    at.choose("mMacrosSaveAsPanel", at.path("mine"));
    QCOMPARE(QString::fromStdString(at.read("mine.SkarnMacro")[keys::MacroName].toString()),
             QStringLiteral("Greeting"));
  }

  void an_export_of_a_macro_that_is_gone_writes_nothing_and_says_so_data() {
    QTest::addColumn<bool>("isGoneAtOnce");
    QTest::newRow("when the settings are asked for") << true;
    QTest::newRow("while the panel is open") << false;
  }
  void an_export_of_a_macro_that_is_gone_writes_nothing_and_says_so() {
    QFETCH(bool, isGoneAtOnce);
    FilesFixture at;
    at.selectMacro(1);
    const PropertyList left = macrosNamed({"Fireball", "Build order"});
    at.delegate.onCall = [&](const QString& call) {
      if (isGoneAtOnce && call == QLatin1String("reloadMacros()")) at.reload(left);
    };
    at.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    QCOMPARE(at.panel("mMacrosSaveAsPanel") == nullptr, isGoneAtOnce);
    if (!isGoneAtOnce) {
      at.reload(left);
      at.choose("mMacrosSaveAsPanel", at.path("mine"));
    }
    QCOMPARE(at.alert()->text(), QStringLiteral("“Greeting” is no longer there"));
    QVERIFY(QDir(at.folder.path()).isEmpty());
  }

  void a_macro_is_also_read_from_an_xml_file() {
    FilesFixture at;
    at.write("mine.SkarnMacro",
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                        "<key>MacroName</key><string>Read</string><key>sequence</key><dict/></dict></plist>\n"));
    at.importFrom("mine.SkarnMacro");
    QCOMPARE(at.rowsOf(at.macros()).last(), QStringLiteral("Read"));
  }

  void a_macro_without_a_sequence_is_one_without_events() {
    FilesFixture at;
    at.write("mine.SkarnMacro", PropertyList::dictionary({{keys::MacroName, "Bare"}}));
    at.importFrom("mine.SkarnMacro");
    QCOMPARE(at.rowsOf(at.macros()).last(), QStringLiteral("Bare"));
    QVERIFY(at.alert() == nullptr);
  }

  void a_cancelled_import_adds_nothing() {
    FilesFixture at;
    at.chooseFromGear("mSettingsMacro", macroMenuTags::Import);
    QTest::keyClick(at.panel("mMacrosPanel"), Qt::Key_Escape);
    QCOMPARE(at.delegate.take(), QStringList());
    QVERIFY(at.alert() == nullptr);
  }

  void what_is_no_macro_is_told_and_adds_nothing_data() {
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* name, const PropertyList& value) {
      const vorn::Bytes bytes = *vorn::encodeBinaryPropertyList(value);
      QTest::newRow(name) << QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                        static_cast<qsizetype>(bytes.size()));
      return bytes;
    };
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("hello\n");
    QTest::newRow("broken XML") << QByteArray("<?xml version=\"1.0\"?><plist><dict><key>MacroName</key>");
    const vorn::Bytes good = row("an array", PropertyList::array({sampleRecord()}));
    QTest::newRow("a truncated file") << QByteArray(reinterpret_cast<const char*>(good.data()),
                                                    static_cast<qsizetype>(good.size() / 2));
    row("a number", 7);
    row("an empty record", PropertyList::dictionary());
    row("no name", sampleRecord().without(keys::MacroName));
    row("an empty name", sampleRecord().with(keys::MacroName, ""));
    row("a number for a name", sampleRecord().with(keys::MacroName, 3));
    row("a text for a sequence", sampleRecord().with(keys::Sequence, "x"));
    row("a text for the events", sampleRecord().with(keys::Sequence, PropertyList::dictionary({{keys::Events, "x"}})));
    row("a number among the events",
        sampleRecord().with(keys::Sequence,
                            PropertyList::dictionary({{keys::Events, PropertyList::array({macroEvent(1, 4), 5})}})));
    row("an event that no key or button has",
        sampleRecord().with(keys::Sequence,
                            PropertyList::dictionary({{keys::Events, PropertyList::array({macroEvent(1, 3)})}})));
    row("a delay out of range", sampleRecord().with(keys::Delay, 1'000'000));
    row("more than a mouse takes", sampleRecord().with("comment", std::string(1024 * 1024, 'x')));
    QTest::newRow("a file of 50 MB") << QByteArray(50 * 1024 * 1024, 'x');
  }
  void what_is_no_macro_is_told_and_adds_nothing() {
    QFETCH(QByteArray, bytes);
    FilesFixture at;
    at.write("bad.SkarnMacro", bytes);
    at.importFrom("bad.SkarnMacro");
    QVERIFY(at.alert() != nullptr);
    QVERIFY(at.alert()->isVisible());
    QVERIFY(at.alert()->text().contains(QStringLiteral("bad.SkarnMacro")));
    QVERIFY(!at.alert()->informativeText().isEmpty());
    QCOMPARE(at.delegate.take(), QStringList());
    QCOMPARE(at.rowsOf(at.macros()), (QStringList{"Fireball", "Greeting", "Build order"}));
  }

  void a_file_that_vanishes_is_told_in_the_panel() {
    FilesFixture at;
    at.importFrom("gone.SkarnMacro");
    QFileDialog* panel = at.panel("mMacrosPanel");
    QVERIFY(panel != nullptr);
    QVERIFY(panel->findChild<QMessageBox*>(QStringLiteral("alert")) != nullptr);
    QCOMPARE(at.delegate.take(), QStringList());
  }
};

SKARN_QTEST(MacroFilesTest)
#include "MacroFiles_test.moc"
