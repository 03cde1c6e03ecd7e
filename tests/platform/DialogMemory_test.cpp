// The toolkit's own dialogs leave nothing behind in the user's configuration.
#include "platform/DialogMemory.h"

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QStandardPaths>

#include "platform/FilePanel.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class DialogMemoryTest : public QObject {
  Q_OBJECT

 private:
  static QStringList configuration() {
    const QDir folder(qEnvironmentVariable("XDG_CONFIG_HOME"));
    return folder.entryList(QDir::Files | QDir::Hidden);
  }

 private slots:
  void initTestCase() {
    useOwnHome();
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  void aFilePanelThatWasUsedLeavesNoFile() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Work"));
    QWidget window;
    window.show();
    RecordedEnds ends;
    QPointer<QFileDialog> panel = FilePanel::save(&window, QStringLiteral("mPanel"), QStringLiteral("Export Profile"),
                                                  QStringLiteral("Work"), folder.path(), ends.recorder());
    QVERIFY(QTest::qWaitForWindowExposed(panel));
    QTest::keyClick(panel->findChild<QLineEdit*>(), Qt::Key_Return);
    QTRY_VERIFY(panel.isNull());
    QCOMPARE(ends.ends, (std::vector<std::pair<int, QString>>{{FilePanel::okButton, path}}));
    QCOMPARE(configuration(), QStringList());
  }
};

SKARN_QTEST(DialogMemoryTest)
#include "DialogMemory_test.moc"
