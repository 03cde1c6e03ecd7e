// Files of single records: what is read, what is refused and why, and that a failed write leaves nothing.
#include "platform/RecordFile.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QAbstractButton>
#include <memory>

#include "model/PropertyListCodec.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using Type = RecordMember::Type;

namespace {

const std::vector<RecordMember> members{
    {"ProfileName", Type::Name}, {"Keys", Type::Dictionary}, {"Keymap", Type::Array}};

PropertyList goodRecord() {
  return PropertyList::dictionary({{"ProfileName", "Work & <Play> é"},
                                   {"Keys", PropertyList::dictionary({{"57", 1}})},
                                   {"Keymap", PropertyList::array({PropertyList::dictionary()})},
                                   {"from another version", PropertyList::array({1, 2.5, true})}});
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
  QString problemOf(const QByteArray& bytes) const {
    const QString path = inFolder(QStringLiteral("record"));
    if (!writeTestFile(path, bytes)) return QStringLiteral("the test cannot write");
    const RecordFileContents contents = readRecordFile(path, members);
    if (!contents.problem.isEmpty() && !contents.record.isNone()) return QStringLiteral("a problem with a record");
    return contents.problem;
  }
  void press(int index) {
    QTest::mouseClick(alertOf(*mWindow)->buttons().at(index), Qt::LeftButton);
    QTRY_VERIFY(!alertOf(*mWindow));
  }

  std::unique_ptr<QTemporaryDir> mFolder;
  std::unique_ptr<QWidget> mWindow;

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

  void aWrittenRecordIsReadBackWithAllItsKeys() {
    const QString path = inFolder(QStringLiteral("Work.SkarnProfile"));
    QCOMPARE(writeRecordFile(path, goodRecord()), QString());
    QCOMPARE(bytesOf(path), encoded(goodRecord()));
    QVERIFY(bytesOf(path).startsWith("bplist00"));
    const RecordFileContents contents = readRecordFile(path, members);
    QCOMPARE(contents.problem, QString());
    QVERIFY(contents.record == goodRecord());
    QCOMPARE(filesInFolder(), QStringList{QStringLiteral("Work.SkarnProfile")});
  }

  void anXmlPropertyListIsReadToo() {
    const QString path = inFolder(QStringLiteral("record"));
    QVERIFY(writeTestFile(path,
                          "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>ProfileName</key>"
                          "<string>Work</string><key>Keys</key><dict/><key>Keymap</key><array/></dict></plist>"));
    const RecordFileContents contents = readRecordFile(path, members);
    QCOMPARE(contents.problem, QString());
    QVERIFY(contents.record ==
            PropertyList::dictionary(
                {{"ProfileName", "Work"}, {"Keys", PropertyList::dictionary()}, {"Keymap", PropertyList::array()}}));
  }

  void aLinkToAFileIsRead() {
    QCOMPARE(writeRecordFile(inFolder(QStringLiteral("real")), goodRecord()), QString());
    QVERIFY(QFile::link(inFolder(QStringLiteral("real")), inFolder(QStringLiteral("link"))));
    QVERIFY(readRecordFile(inFolder(QStringLiteral("link")), members).record == goodRecord());
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
    for (const char* key : {"Keys", "Keymap"}) {
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

  void onlyAnOrdinaryFileIsRead() {
    const QString notRegular = localized("lkeyFileIsNotRegular");
    QCOMPARE(readRecordFile(mFolder->path(), members).problem, notRegular);
    QCOMPARE(readRecordFile(QStringLiteral("/dev/zero"), members).problem, notRegular);
    const QString pipe = inFolder(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(readRecordFile(pipe, members).problem, notRegular);
    QCOMPARE(writeRecordFile(pipe, goodRecord()), notRegular);
  }

  void aSocketIsNoFile() {
    const QByteArray path = QFile::encodeName(inFolder(QStringLiteral("socket")));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    QVERIFY(path.size() < static_cast<qsizetype>(sizeof address.sun_path));
    std::copy(path.begin(), path.end(), address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int bound = ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    const QString problem = readRecordFile(QString::fromLocal8Bit(path), members).problem;
    ::close(descriptor);
    QCOMPARE(bound, 0);
    QCOMPARE(problem, localized("lkeyFileIsNotRegular"));
  }

  void aMissingFileIsTold() {
    QCOMPARE(readRecordFile(inFolder(QStringLiteral("none")), members).problem, localized("lkeyFileIsMissing"));
    QVERIFY(QFile::link(inFolder(QStringLiteral("none")), inFolder(QStringLiteral("link"))));
    QCOMPARE(readRecordFile(inFolder(QStringLiteral("link")), members).problem, localized("lkeyFileIsMissing"));
    QCOMPARE(readRecordFile(QString(QChar::Null), members).problem, localized("lkeyFileIsMissing"));
  }

  void aFileBeyondTheBoundIsRefusedUnread() {
    const QString path = inFolder(QStringLiteral("large"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(static_cast<qint64>(vorn::maximumSize) + 1));
    QCOMPARE(readRecordFile(path, members).problem, localized("lkeyFileIsTooLarge"));
  }

  void aLargeFileWithinTheBoundIsJudgedByItsContents() {
    const QString path = inFolder(QStringLiteral("large"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(qint64{50} * 1024 * 1024));
    QCOMPARE(readRecordFile(path, members).problem, localized("lkeyFileIsNoRecord"));
  }

  void aFailedWriteLeavesNothing() {
    const QString inNoFolder = inFolder(QStringLiteral("none/Work"));
    QVERIFY(writeRecordFile(inNoFolder, goodRecord()).startsWith(QLatin1String("The file cannot be written: ")));
    const QString tooLong = inFolder(QString(300, QLatin1Char('n')));
    QVERIFY(writeRecordFile(tooLong, goodRecord()).startsWith(QLatin1String("The file cannot be written: ")));
    QCOMPARE(writeRecordFile(inFolder(QStringLiteral("Work")), PropertyList()), localized("lkeyRecordIsNotWritable"));
    QCOMPARE(filesInFolder(), QStringList());
  }

  void aFileIsReplacedWholeAndItsLinkKept() {
    const QString path = inFolder(QStringLiteral("real"));
    QVERIFY(writeTestFile(path, QByteArray(100000, 'x')));
    QVERIFY(QFile::link(path, inFolder(QStringLiteral("link"))));
    QCOMPARE(writeRecordFile(inFolder(QStringLiteral("link")), goodRecord()), QString());
    QCOMPARE(bytesOf(path), encoded(goodRecord()));
    QVERIFY(QFileInfo(inFolder(QStringLiteral("link"))).isSymLink());
  }

  void anExportToANewFileAsksNothing() {
    exportRecord(mWindow.get(), inFolder(QStringLiteral("Work")), goodRecord());
    QVERIFY(!alertOf(*mWindow));
    QCOMPARE(bytesOf(inFolder(QStringLiteral("Work"))), encoded(goodRecord()));
  }

  void anExportAsksBeforeItReplaces() {
    const QString path = inFolder(QStringLiteral("Work"));
    QVERIFY(writeTestFile(path, "before"));
    exportRecord(mWindow.get(), path, goodRecord());
    QCOMPARE(alertTexts(*mWindow),
             (QStringList{QStringLiteral("“Work” already exists"), localized("lkeyReplaceFileDesc")}));
    QCOMPARE(alertOf(*mWindow)->windowModality(), Qt::WindowModal);
    QCOMPARE(bytesOf(path), QByteArray("before"));
    press(1);
    QCOMPARE(bytesOf(path), QByteArray("before"));

    exportRecord(mWindow.get(), path, goodRecord());
    QCOMPARE(alertOf(*mWindow)->buttons().at(0)->text(), localized("lkeyReplace"));
    QCOMPARE(alertOf(*mWindow)->buttons().at(1)->text(), localized("lkeyCancel"));
    press(0);
    QCOMPARE(bytesOf(path), encoded(goodRecord()));
    QCOMPARE(filesInFolder(), QStringList{QStringLiteral("Work")});
  }

  void aFailedExportIsTold() {
    exportRecord(mWindow.get(), inFolder(QStringLiteral("none/Work")), goodRecord());
    const QStringList texts = alertTexts(*mWindow);
    QCOMPARE(texts.value(0), QStringLiteral("“Work” could not be exported"));
    QVERIFY2(texts.value(1).startsWith(QLatin1String("The file cannot be written: ")), qPrintable(texts.value(1)));
    press(0);
    exportRecord(mWindow.get(), mFolder->path(), goodRecord());
    QCOMPARE(alertTexts(*mWindow).value(1), localized("lkeyFileIsNotRegular"));
    QCOMPARE(filesInFolder(), QStringList());
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
