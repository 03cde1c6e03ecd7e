// Profile and macro files: what the user is told about them, and asked before one is replaced.
#include "platform/RecordFile.h"

#include <sys/stat.h>

#include <QAbstractButton>
#include <memory>

#include "model/PropertyListCodec.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "widgets/Notice.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::RecordKind;

namespace {

PropertyList goodRecord() {
  return PropertyList::dictionary({{"ProfileName", "Work & <Play> é"},
                                   {"Keys", PropertyList::dictionary({{"57", 1}})},
                                   {"Buttons", PropertyList::dictionary()},
                                   {"from another version", PropertyList::array({1, 2.5, true})}});
}

PropertyList macroWith(std::vector<PropertyList> events) {
  const PropertyList sequence = PropertyList::dictionary({{"events", PropertyList::array(std::move(events))}});
  return PropertyList::dictionary({{"MacroName", "Jump"}, {"sequence", sequence}});
}

QByteArray encoded(const PropertyList& value) {
  const auto bytes = vorn::encodeBinaryPropertyList(value);
  return bytes ? QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size()))
               : QByteArray();
}

QByteArray bytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

}  // namespace

class RecordFileTest : public QObject {
  Q_OBJECT

 private:
  QString inFolder(const QString& name) const { return mFolder->filePath(name); }
  QStringList filesInFolder() const {
    return QDir(mFolder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
  QString problemOf(const QByteArray& bytes, RecordKind kind = RecordKind::Profile) const {
    const QString path = inFolder(QStringLiteral("record"));
    if (!writeTestFile(path, bytes)) return QStringLiteral("the test cannot write");
    const ImportedRecord contents = importRecord(path, kind);
    if (!contents.problem.isEmpty() && !contents.record.isNone()) return QStringLiteral("a problem with a record");
    return contents.problem;
  }
  void press(int index) {
    QTest::mouseClick(alertOf(*mWindow)->buttons().at(index), Qt::LeftButton);
    QTRY_VERIFY(!alertOf(*mWindow));
  }

  std::unique_ptr<QTemporaryDir> mFolder;
  std::unique_ptr<QWidget> mWindow;

 public:
  static void initMain() { useOwnHome(); }

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mFolder = std::make_unique<QTemporaryDir>();
    mWindow = std::make_unique<QWidget>();
    mWindow->show();
  }
  void cleanup() {
    mWindow.reset();
    mFolder.reset();
  }

  void anExportedRecordIsImportedWithAllItsKeys() {
    const QString path = inFolder(QStringLiteral("Work é.SkarnProfile"));
    exportRecord(mWindow.get(), path, goodRecord(), RecordKind::Profile);
    QCOMPARE(bytesOf(path), encoded(goodRecord()));
    const ImportedRecord contents = importRecord(path, RecordKind::Profile);
    QCOMPARE(contents.problem, QString());
    QVERIFY(contents.record == goodRecord());
    QCOMPARE(filesInFolder(), QStringList{QStringLiteral("Work é.SkarnProfile")});
  }

  // The texts are the user's: they speak of profiles and macros, not of how files are written.
  void aFileThatIsNoPropertyListIsRefused() {
    QCOMPARE(problemOf(""), QStringLiteral("This file is empty."));
    const QByteArray whole = encoded(goodRecord());
    for (const QByteArray& bytes : {QByteArray("hello"), QByteArray("bplist00"), QByteArray(1000, '\0'),
                                    QByteArray(1000, '\xff'), whole.left(whole.size() / 2), QByteArray("<plist><di")}) {
      QCOMPARE(problemOf(bytes),
               QStringLiteral("This file is not a profile or macro that Skarn can read. It may be damaged, or made by "
                              "another program."));
    }
  }

  void aPropertyListThatIsNoRecordIsRefused() {
    const QString problem = localized("lkeyFileIsNoRecord");
    for (const PropertyList& value : {PropertyList(3), PropertyList("text"), PropertyList::array({goodRecord()})}) {
      QCOMPARE(problemOf(encoded(value)), problem);
    }
  }

  void aRecordWithoutAMemberIsRefused_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("wrong");
    const QString noName = QStringLiteral("This file has no name for what it holds.");
    QTest::newRow("name") << "ProfileName" << noName << noName;
    for (const char* key : {"Keys", "Buttons"}) {
      const QString name = QLatin1String(key);
      QTest::newRow(key)
          << name << QStringLiteral("A part of this file is missing: “%1”. The file may be damaged.").arg(name)
          << QStringLiteral("A part of this file cannot be used: “%1”. The file may be damaged.").arg(name);
    }
  }
  void aRecordWithoutAMemberIsRefused() {
    QFETCH(QString, key);
    QFETCH(QString, missing);
    QFETCH(QString, wrong);
    QCOMPARE(problemOf(encoded(goodRecord().without(key.toStdString()))), missing);
    for (const PropertyList& value : {PropertyList(1), PropertyList(""), PropertyList(true)}) {
      QCOMPARE(problemOf(encoded(goodRecord().with(key.toStdString(), value))), wrong);
    }
  }

  void aMacroThatCannotBePlayedIsRefusedInWords() {
    const PropertyList press = PropertyList::dictionary({{"command", 1}, {"delay", 0}, {"page", 7}, {"argument", 4}});
    const auto problem = [&](const PropertyList& macro) { return problemOf(encoded(macro), RecordKind::Macro); };
    QCOMPARE(problem(macroWith({press})), QString());
    QCOMPARE(problem(macroWith({press, press.with("argument", 3)})),
             QStringLiteral("Event 2 of this macro is no key and no mouse button that the mouse can play."));
    QCOMPARE(problem(macroWith(std::vector<PropertyList>(15'001, press))),
             QStringLiteral("This macro is too long: it has more than 15,000 events."));
    QCOMPARE(problem(macroWith({}).with("delay", -1)),
             QStringLiteral("A part of this file cannot be used: “delay”. The file may be damaged."));
    QCOMPARE(problem(macroWith({}).with("comment", std::string(1024 * 1024, 'x'))),
             QStringLiteral("This profile or macro is too large for the mouse."));
  }

  void onlyAnOrdinaryFileIsRead() {
    const QString notRegular = localized("lkeyFileIsNotRegular");
    QCOMPARE(importRecord(mFolder->path(), RecordKind::Profile).problem, notRegular);
    QCOMPARE(importRecord(QStringLiteral("/dev/zero"), RecordKind::Profile).problem, notRegular);
    const QString pipe = inFolder(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(importRecord(pipe, RecordKind::Profile).problem, notRegular);
  }

  void aMissingFileIsTold() {
    QCOMPARE(importRecord(inFolder(QStringLiteral("none")), RecordKind::Profile).problem,
             localized("lkeyFileIsMissing"));
    QVERIFY(QFile::link(inFolder(QStringLiteral("none")), inFolder(QStringLiteral("link"))));
    QCOMPARE(importRecord(inFolder(QStringLiteral("link")), RecordKind::Profile).problem,
             localized("lkeyFileIsMissing"));
    QCOMPARE(importRecord(QString(QChar::Null), RecordKind::Profile).problem, localized("lkeyFileIsMissing"));
  }

  void aFileBeyondTheBoundIsRefusedUnread() {
    const QString path = inFolder(QStringLiteral("large"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(static_cast<qint64>(vorn::maximumSize) + 1));
    QCOMPARE(importRecord(path, RecordKind::Profile).problem, localized("lkeyFileIsTooLarge"));
  }

  void anExportToANewFileAsksNothing() {
    exportRecord(mWindow.get(), inFolder(QStringLiteral("Work")), goodRecord(), RecordKind::Profile);
    QVERIFY(!alertOf(*mWindow));
    QCOMPARE(bytesOf(inFolder(QStringLiteral("Work"))), encoded(goodRecord()));
  }

  void anExportAsksBeforeItReplaces() {
    const QString path = inFolder(QStringLiteral("Work"));
    QVERIFY(writeTestFile(path, "before"));
    exportRecord(mWindow.get(), path, goodRecord(), RecordKind::Profile);
    QCOMPARE(alertTexts(*mWindow),
             (QStringList{QStringLiteral("“Work” already exists"), localized("lkeyReplaceFileDesc")}));
    QCOMPARE(alertOf(*mWindow)->windowModality(), Qt::WindowModal);
    QCOMPARE(bytesOf(path), QByteArray("before"));
    press(1);
    QCOMPARE(bytesOf(path), QByteArray("before"));

    exportRecord(mWindow.get(), path, goodRecord(), RecordKind::Profile);
    QCOMPARE(alertOf(*mWindow)->buttons().at(0)->text(), localized("lkeyReplace"));
    QCOMPARE(alertOf(*mWindow)->buttons().at(1)->text(), localized("lkeyCancel"));
    press(0);
    QCOMPARE(bytesOf(path), encoded(goodRecord()));
    QCOMPARE(filesInFolder(), QStringList{QStringLiteral("Work")});
  }

  void aFailedExportIsTold() {
    exportRecord(mWindow.get(), inFolder(QStringLiteral("none/Work")), goodRecord(), RecordKind::Profile);
    const QStringList texts = alertTexts(*mWindow);
    QCOMPARE(texts.value(0), QStringLiteral("“Work” could not be exported"));
    QVERIFY2(texts.value(1).startsWith(QLatin1String("The file cannot be written: ")), qPrintable(texts.value(1)));
    press(0);
    exportRecord(mWindow.get(), mFolder->path(), goodRecord(), RecordKind::Profile);
    QCOMPARE(alertTexts(*mWindow).value(1), localized("lkeyFileIsNotRegular"));
    press(0);
    exportRecord(mWindow.get(), inFolder(QStringLiteral("Work")), PropertyList(), RecordKind::Profile);
    QCOMPARE(alertTexts(*mWindow).value(1), localized("lkeyRecordIsNotWritable"));
    QCOMPARE(filesInFolder(), QStringList());
  }

  void whereAnExportWentIsSaidOnTheNoticeOnceItIsWritten() {
    Notice notice(mWindow.get());
    const QString path = inFolder(QStringLiteral("Work"));
    exportRecord(mWindow.get(), path, goodRecord(), RecordKind::Profile, &notice);
    QCOMPARE(notice.text(), QStringLiteral("Exported to %1").arg(path));
    notice.fallSilent();

    exportRecord(mWindow.get(), path, goodRecord(), RecordKind::Profile, &notice);
    press(1);
    QCOMPARE(notice.text(), QString());
    exportRecord(mWindow.get(), path, goodRecord(), RecordKind::Profile, &notice);
    QCOMPARE(notice.text(), QString());
    press(0);
    QCOMPARE(notice.text(), QStringLiteral("Exported to %1").arg(path));
    notice.fallSilent();

    exportRecord(mWindow.get(), inFolder(QStringLiteral("none/Work")), goodRecord(), RecordKind::Profile, &notice);
    QCOMPARE(notice.text(), QString());
  }

  void theFolderOfThePersonIsSaidAsPeopleWriteIt() {
    Notice notice(mWindow.get());
    const QString path = QDir::homePath() + QStringLiteral("/Jump é.SkarnMacro");
    exportRecord(mWindow.get(), path, macroWith({}), RecordKind::Macro, &notice);
    QCOMPARE(notice.text(), QStringLiteral("Exported to ~/Jump é.SkarnMacro"));
    QVERIFY(QFile::remove(path));
  }

  void anImportProblemIsTold() {
    showImportProblem(mWindow.get(), QStringLiteral("/a/%1 & b.SkarnMacro"), QStringLiteral("It is %1."));
    QCOMPARE(alertTexts(*mWindow),
             (QStringList{QStringLiteral("“%1 & b.SkarnMacro” could not be imported"), QStringLiteral("It is %1.")}));
  }

  void aLongNameIsShownWithoutItsMiddle() {
    const QString name = QString(100, QLatin1Char('a')) + QString(100, QLatin1Char('b'));
    showImportProblem(mWindow.get(), QStringLiteral("/a/") + name, QStringLiteral("No."));
    QCOMPARE(alertTexts(*mWindow).value(0),
             QStringLiteral("“%1…%2” could not be imported").arg(name.left(30), name.right(30)));
  }
};

SKARN_QTEST(RecordFileTest)
#include "RecordFile_test.moc"
