// The parts of the toolkit's file dialog are found without its names, and a panel does without those it does not find.
#include "platform/FileDialogParts.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "platform/FilePanel.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class FileDialogPartsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    useOwnHome();
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  void everyPartIsFoundWhateverItsName() {
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* types = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    auto* back = dialog.findChild<QToolButton*>(QStringLiteral("backButton"));
    auto* deletion = dialog.findChild<QAction*>(QStringLiteral("qt_delete_action"));
    QVERIFY(name && types && back && deletion);
    for (QObject* part : dialog.findChildren<QObject*>()) part->setObjectName(QStringLiteral("renamed"));
    QCOMPARE(fileDialogParts::nameField(dialog), name);
    QCOMPARE(fileDialogParts::typeField(dialog), types);
    QVERIFY(fileDialogParts::typeCaption(dialog));
    QCOMPARE(fileDialogParts::tool(dialog, "Back"), back);
    QCOMPARE(fileDialogParts::deletion(dialog), deletion);
  }

  void aPartThatIsNotThereIsNull() {
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    for (QLabel* label : dialog.findChildren<QLabel*>()) label->setBuddy(nullptr);
    for (QComboBox* list : dialog.findChildren<QComboBox*>()) list->clear();
    for (QAction* action : dialog.findChildren<QAction*>()) action->setText(QString());
    QCOMPARE(fileDialogParts::nameField(dialog), nullptr);
    QCOMPARE(fileDialogParts::typeField(dialog), nullptr);
    QCOMPARE(fileDialogParts::tool(dialog, "Sideways"), nullptr);
    QCOMPARE(fileDialogParts::deletion(dialog), nullptr);
  }

  void aPanelWhoseNameFieldIsNotFoundChoosesWhatIsNamedAllTheSame() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Fire.SkarnMacro"));
    QVERIFY(writeTestFile(path, "x"));
    QWidget window;
    window.show();
    RecordedEnds ends;
    QFileDialog* panel = FilePanel::open(&window, QStringLiteral("mPanel"), QStringLiteral("Import Macro"),
                                         {{QStringLiteral("SkarnMacro")}, QStringLiteral("Skarn macros (%1)")},
                                         folder.path(), ends.recorder());
    QVERIFY(QTest::qWaitForWindowExposed(panel));
    QLineEdit* name = fileDialogParts::nameField(*panel);
    QVERIFY(name);
    for (QLabel* label : panel->findChildren<QLabel*>()) label->setBuddy(nullptr);
    QTest::keyClicks(name, QStringLiteral("Fire.SkarnMacro"));
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(ends.ends, (std::vector<std::pair<int, QString>>{{FilePanel::okButton, path}}));
  }
};

SKARN_QTEST(FileDialogPartsTest)
#include "FileDialogParts_test.moc"
