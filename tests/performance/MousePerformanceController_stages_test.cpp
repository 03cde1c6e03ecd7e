// The sheet of the stages: a working copy of the profile's stages, sent whole by OK and by nothing else.
#include <QItemSelectionModel>
#include <QMessageBox>
#include <QSignalSpy>
#include <limits>

#include "performance/PerformanceTab.h"
#include "performance/StagesTableModel.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

PropertyList stages(std::vector<PropertyList> records) {
  return PropertyList::array(std::move(records));
}

PropertyList profileWith(const PropertyList& stages, int current = 0) {
  return profile("Work").with(keys::Stages, stages).with(keys::StageValue, current);
}

PropertyList sampleStages() {
  return profile("Work")[keys::Stages];
}

PropertyList accepted(const PropertyList& stages, int selected, int x, int y, int isIndependent) {
  return request(
      {{"Stages", stages}, {"StageValue", selected}, {"DPIX", x}, {"DPIY", y}, {"IndependentXYOn", isIndependent}});
}

// A tab with its sheet open.
class OpenSheet : public PerformanceTab {
 public:
  explicit OpenSheet(const PropertyList& active = profile("Work")) : PerformanceTab(active) {
    click("mSensitivityStages");
  }

  int selected() const {
    const QModelIndexList rows = table()->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.constFirst().row();
  }
  void select(int row) const {
    const QRect place = table()->visualRect(table()->model()->index(row, 0));
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
  }
  // The values of the stages, the selected one in brackets.
  QStringList rows() const {
    QStringList shown;
    for (int row = 0; row < table()->model()->rowCount(); ++row) {
      const QString text = table()->model()->index(row, StagesTableModel::StageValue).data().toString();
      shown << (row == selected() ? QStringLiteral("[%1]").arg(text) : text);
    }
    return shown;
  }
  // The box and the two sliders.
  QList<int> editors() const {
    return {isTicked("mStageEnableIndependentXY") ? 1 : 0, value("mStageXDpiSlider"), value("mStageYDpiSlider")};
  }
};

}  // namespace

class MousePerformanceControllerStagesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  // --- Opening

  void theSheetOpensOnTheWindowWithTheCurrentStage() {
    PerformanceTab open(profile("Work").with(keys::StageValue, 2));
    QVERIFY(!open.sheet()->isVisible());
    open.click("mSensitivityStages");
    QVERIFY(open.sheet()->isVisible());
    QCOMPARE(open.sheet()->windowModality(), Qt::WindowModal);
    QCOMPARE(open.sheet()->parentWidget(), &open.window);
    QCOMPARE(open.find<QLabel>("mStagesTitle")->text(), QStringLiteral("Sensitivity Stages of “Work”"));
    QCOMPARE(open.table()->selectionModel()->selectedRows().value(0).row(), 2);
    QVERIFY(open.isTicked("mStageEnableIndependentXY"));
    QCOMPARE(open.value("mStageXDpiSlider"), 1600);
    QCOMPARE(open.value("mStageYDpiSlider"), 800);
    QVERIFY(open.isEnabled("mStageYDpiSlider"));
    COMPARE_REQUESTS(open);
  }

  void withoutAWindowItOpensOnThatOfThePage() {
    PerformanceTab open;
    open.tab.setMPerformanceWindow(nullptr);
    QTest::keyClick(open.button("mSensitivityStages"), Qt::Key_Space);
    QVERIFY(open.sheet()->isVisible());
    QCOMPARE(open.sheet()->parentWidget()->window(), &open.window);
  }

  void theTableNumbersAndNamesTheStages() {
    OpenSheet open;
    const QAbstractItemModel* model = open.table()->model();
    QCOMPARE(model->columnCount(), 2);
    const auto header = [&](int column, int role) {
      return model->headerData(column, Qt::Horizontal, role).toString();
    };
    QCOMPARE(header(0, StagesTableModel::IdentifierRole), QStringLiteral("stage id"));
    QCOMPARE(header(1, StagesTableModel::IdentifierRole), QStringLiteral("stage value"));
    QCOMPARE(header(0, Qt::DisplayRole), QStringLiteral("Stage"));
    QCOMPARE(header(1, Qt::DisplayRole), QStringLiteral("Sensitivity"));
    for (int row = 0; row < 5; ++row) {
      QCOMPARE(model->index(row, 0).data().toInt(), row + 1);
      for (const int column : {0, 1}) {
        QCOMPARE(model->index(row, column).data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignCenter));
      }
    }
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "[800 DPI]", "X = 1600, Y = 800 DPI", "3200 DPI", "5600 DPI"}));
  }

  void theWholeTableIsSeen() {
    OpenSheet open(profileWith(stages(std::vector<PropertyList>(5, stage(5600, 5500, true)))));
    const QRect last = open.table()->visualRect(open.table()->model()->index(4, 1));
    QVERIFY(open.table()->viewport()->rect().contains(last));
    QVERIFY(last.width() >= open.table()->sizeHintForIndex(open.table()->model()->index(4, 1)).width());
  }

  // --- Selecting

  void theEditorsShowTheSelectedStage() {
    OpenSheet open;
    QCOMPARE(open.editors(), (QList<int>{0, 800, 800}));
    QVERIFY(!open.isEnabled("mStageYDpiSlider"));
    QVERIFY(open.toolTip("mStageYDpiSlider").contains(QStringLiteral("locked")));
    open.select(2);
    QCOMPARE(open.editors(), (QList<int>{1, 1600, 800}));
    QVERIFY(open.isEnabled("mStageYDpiSlider"));
    QTest::keyClick(open.table(), Qt::Key_Down);
    QCOMPARE(open.editors(), (QList<int>{0, 3200, 3200}));
    QCOMPARE(open.rows().at(3), QStringLiteral("[3200 DPI]"));
    COMPARE_REQUESTS(open);
  }

  void withoutASelectedStageNothingCanBeEditedOrAccepted() {
    for (const int current : {-1, 5}) {
      OpenSheet open(profile("Work").with(keys::StageValue, current));
      QCOMPARE(open.selected(), -1);
      for (const char* name : {"mStageEnableIndependentXY", "mStageXDpiSlider", "mStageYDpiSlider",
                               "mStageDeleteButton", "mStageOkButton"}) {
        QVERIFY2(!open.isEnabled(name), name);
        QCOMPARE(open.toolTip(name), QStringLiteral("No stage is selected."));
      }
      open.select(0);
      QVERIFY(open.isEnabled("mStageOkButton") && open.isEnabled("mStageDeleteButton"));
      QCOMPARE(open.toolTip("mStageOkButton"), QString());
      QCOMPARE(open.editors(), (QList<int>{0, 400, 400}));
    }
  }

  // --- Adding and deleting

  void thereAreOneToFiveStages_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("canAdd");
    QTest::addColumn<bool>("canDelete");
    QTest::newRow("1") << 1 << true << false;
    QTest::newRow("2") << 2 << true << true;
    QTest::newRow("4") << 4 << true << true;
    QTest::newRow("5") << 5 << false << true;
    QTest::newRow("more than there may be") << 7 << false << true;
  }
  void thereAreOneToFiveStages() {
    QFETCH(int, count);
    QFETCH(bool, canAdd);
    QFETCH(bool, canDelete);
    OpenSheet open(
        profileWith(stages(std::vector<PropertyList>(static_cast<std::size_t>(count), stage(400, 400, false)))));
    QCOMPARE(open.table()->model()->rowCount(), count);
    QCOMPARE(open.isEnabled("mStageAddButton"), canAdd);
    QCOMPARE(open.toolTip("mStageAddButton"),
             canAdd ? QString() : QStringLiteral("The mouse holds five stages at most."));
    QCOMPARE(open.isEnabled("mStageDeleteButton"), canDelete);
    QCOMPARE(open.toolTip("mStageDeleteButton"), canDelete ? QString() : QStringLiteral("One stage must remain."));
  }

  void anAddedStageIsTheFirstOneWithTheValuesOfTheSliders() {
    const PropertyList first = stage(400, 300, true).with("colour", 7).with("note", "first");
    const PropertyList second = stage(1600, 800, true);
    OpenSheet open(profileWith(stages({first, second}), 1));
    open.click("mStageAddButton");
    // The row that is asked for lies past the end, so the selection stays.
    QCOMPARE(open.rows(), (QStringList{"X = 400, Y = 300 DPI", "[X = 1600, Y = 800 DPI]", "1600 DPI"}));
    QCOMPARE(open.editors(), (QList<int>{1, 1600, 800}));
    open.select(2);
    COMPARE_REQUESTS(open);
    open.click("mStageOkButton");
    const PropertyList added = stage(1600, 800, false).with("colour", 7).with("note", "first");
    COMPARE_REQUESTS(open, accepted(stages({first, second, added}), 2, 1600, 800, 0));
  }

  void addingEndsAtFive() {
    OpenSheet open(profileWith(stages({stage(400, 400, false)})));
    for (int count = 2; count <= 5; ++count) {
      QVERIFY(open.isEnabled("mStageAddButton"));
      open.click("mStageAddButton");
      QCOMPARE(open.table()->model()->rowCount(), count);
      QVERIFY(open.isEnabled("mStageDeleteButton"));
    }
    QVERIFY(!open.isEnabled("mStageAddButton"));
    open.click("mStageAddButton");
    QCOMPARE(open.table()->model()->rowCount(), 5);
    COMPARE_REQUESTS(open);
  }

  void afterADeleteTheLastStageIsSelected() {
    OpenSheet open;
    open.click("mStageDeleteButton");
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "X = 1600, Y = 800 DPI", "3200 DPI", "[5600 DPI]"}));
    QCOMPARE(open.editors(), (QList<int>{0, 5600, 5600}));
    QVERIFY(open.isEnabled("mStageAddButton"));
    open.select(2);
    open.click("mStageDeleteButton");
    // The row is the same, the stage is not.
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "X = 1600, Y = 800 DPI", "[5600 DPI]"}));
    QCOMPARE(open.editors(), (QList<int>{0, 5600, 5600}));
    open.click("mStageDeleteButton");
    QCOMPARE(open.editors(), (QList<int>{1, 1600, 800}));
    open.click("mStageDeleteButton");
    QCOMPARE(open.rows(), (QStringList{"[400 DPI]"}));
    QVERIFY(!open.isEnabled("mStageDeleteButton"));
    COMPARE_REQUESTS(open);
  }

  // --- Editing

  void theSliderOfXMovesALockedStageAsAWhole() {
    OpenSheet open;
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_Right);
    QCOMPARE(open.editors(), (QList<int>{0, 850, 850}));
    QCOMPARE(open.rows().at(1), QStringLiteral("[850 DPI]"));
    open.press("mStageXDpiSlider", 850);
    open.drag("mStageXDpiSlider", 2000);
    const int x = open.value("mStageXDpiSlider");
    QCOMPARE(open.rows().at(1), QStringLiteral("[%1 DPI]").arg(x));
    open.release("mStageXDpiSlider", 2000);
    COMPARE_REQUESTS(open);
    open.click("mStageOkButton");
    COMPARE_REQUESTS(open, accepted(sampleStages().replacing(1, stage(x, x, false)), 1, x, x, 0));
  }

  void theAxesOfAnIndependentStageAreEditedApart() {
    OpenSheet open(profile("Work").with(keys::StageValue, 2));
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_PageUp);
    QCOMPARE(open.rows().at(2), QStringLiteral("[X = 1700, Y = 800 DPI]"));
    QTest::keyClick(open.slider("mStageYDpiSlider"), Qt::Key_PageDown);
    QCOMPARE(open.rows().at(2), QStringLiteral("[X = 1700, Y = 700 DPI]"));
    COMPARE_REQUESTS(open);
    open.click("mStageOkButton");
    COMPARE_REQUESTS(open, accepted(sampleStages().replacing(2, stage(1700, 700, true)), 2, 1700, 700, 1));
  }

  void aStageIsMadeIndependentAndLockedAgain() {
    OpenSheet open;
    open.click("mStageEnableIndependentXY");
    QVERIFY(open.isEnabled("mStageYDpiSlider"));
    QCOMPARE(open.rows().at(1), QStringLiteral("[X = 800, Y = 800 DPI]"));
    QTest::keyClick(open.slider("mStageYDpiSlider"), Qt::Key_End);
    QCOMPARE(open.editors(), (QList<int>{1, 800, 5600}));
    QTest::keyClick(open.button("mStageEnableIndependentXY"), Qt::Key_Space);
    QCOMPARE(open.editors(), (QList<int>{0, 800, 800}));
    QVERIFY(!open.isEnabled("mStageYDpiSlider"));
    COMPARE_REQUESTS(open);
    open.click("mStageOkButton");
    COMPARE_REQUESTS(open, accepted(sampleStages(), 1, 800, 800, 0));
  }

  void anEditKeepsTheOtherKeysOfAStage() {
    OpenSheet open(profileWith(stages({stage(400, 400, false).with("colour", 7)})));
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_Right);
    open.click("mStageOkButton");
    COMPARE_REQUESTS(open, accepted(stages({stage(450, 450, false).with("colour", 7)}), 0, 450, 450, 0));
  }

  // --- Ending

  void okClosesMovesTheControlsOfThePageAndSendsOnce() {
    OpenSheet open;
    open.select(2);
    bool wasOpen = true;
    QList<int> page;
    open.recorder.answer = [&](const PropertyList&) {
      wasOpen = open.sheet()->isVisible();
      page = {open.value("mXDpiSlider"), open.value("mYDpiSlider"), open.isTicked("mEnableIndependentXY") ? 1 : 0};
    };
    open.click("mStageOkButton");
    QVERIFY(!wasOpen);
    QCOMPARE(page, (QList<int>{1600, 800, 1}));
    COMPARE_REQUESTS(open, accepted(sampleStages(), 2, 1600, 800, 1));
  }

  void returnIsOk() {
    for (const char* name : {"mStagesTable", "mStageEnableIndependentXY", "mStageXDpiSlider", "mStageXDpiField"}) {
      OpenSheet open(profileWith(stages({stage(400, 400, false), stage(800, 800, false)}), 1));
      QTest::keyClick(open.find<QWidget>(name), Qt::Key_Return);
      QVERIFY2(!open.sheet()->isVisible(), name);
      COMPARE_REQUESTS(open, accepted(stages({stage(400, 400, false), stage(800, 800, false)}), 1, 800, 800, 0));
    }
  }

  void returnOnAnotherButtonIsThatButton() {
    OpenSheet open;
    open.find<QWidget>("mStageCancelButton")->setFocus();
    QTest::keyClick(open.find<QWidget>("mStageCancelButton"), Qt::Key_Return);
    QVERIFY(!open.sheet()->isVisible());
    COMPARE_REQUESTS(open, );
  }

  void okSaysWhenNothingHasBeenChanged() {
    const PropertyList profile = profileWith(stages({stage(400, 400, false), stage(800, 800, false)}), 1)
                                     .with(keys::DPIX, 800)
                                     .with(keys::DPIY, 800)
                                     .with(keys::IndependentXYOn, 0);
    OpenSheet open(profile);
    const auto said = [&] {
      QVERIFY(open.button("mStageOkButton")->isEnabled());
      QCOMPARE(open.button("mStageOkButton")->toolTip(), open.find<QLabel>("mStagesNote")->text());
    };
    const QLabel* note = open.find<QLabel>("mStagesNote");
    QCOMPARE(note->text(), localized("lkeyStagesUnchanged"));
    said();
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_Right);
    QCOMPARE(note->text(), QString());
    said();
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_Left);
    QCOMPARE(note->text(), localized("lkeyStagesUnchanged"));
    open.select(0);
    QCOMPARE(note->text(), QString());
    said();
    // The stage is the current one, but its sensitivity is not in force.
    OpenSheet other(profile.with(keys::DPIX, 900));
    QCOMPARE(other.find<QLabel>("mStagesNote")->text(), QString());
  }

  void aCancelSendsNothingAndDropsTheEdits_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"button", "escape", "close"}) QTest::newRow(way) << way;
  }
  void aCancelSendsNothingAndDropsTheEdits() {
    QFETCH(QString, way);
    OpenSheet open;
    open.click("mStageDeleteButton");
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_Home);
    if (way == QLatin1String("button")) {
      open.click("mStageCancelButton");
    } else if (way == QLatin1String("escape")) {
      QTest::keyClick(open.table(), Qt::Key_Escape);
    } else {
      open.sheet()->close();
    }
    QVERIFY(!open.sheet()->isVisible());
    COMPARE_REQUESTS(open);
    QCOMPARE(open.readout(), QStringLiteral("800 DPI"));
    open.click("mSensitivityStages");
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "[800 DPI]", "X = 1600, Y = 800 DPI", "3200 DPI", "5600 DPI"}));
    QCOMPARE(open.editors(), (QList<int>{0, 800, 800}));
  }

  void theLossOfTheMouseIsACancel() {
    OpenSheet open;
    open.click("mStageDeleteButton");
    QSignalSpy rejections(open.sheet(), &QDialog::rejected);
    open.tab.enableControlsState(true);
    QVERIFY(open.sheet()->isVisible());
    open.tab.enableControlsState(false);
    QVERIFY(!open.sheet()->isVisible());
    open.tab.enableControlsState(false);
    QCOMPARE(rejections.count(), 1);
    COMPARE_REQUESTS(open);
    open.tab.enableControlsState(true);
    open.click("mSensitivityStages");
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "[800 DPI]", "X = 1600, Y = 800 DPI", "3200 DPI", "5600 DPI"}));
    QVERIFY(open.isEnabled("mStageOkButton"));
  }

  void afterAnAnswerTheSheetOpensWithTheNewStages() {
    OpenSheet open;
    open.answerRequests();
    open.select(3);
    open.click("mStageDeleteButton");
    open.click("mStageOkButton");
    COMPARE_REQUESTS(open, accepted(sampleStages().removing(3), 3, 5600, 5600, 0));
    QCOMPARE(open.readout(), QStringLiteral("5600 DPI"));
    open.click("mSensitivityStages");
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "800 DPI", "X = 1600, Y = 800 DPI", "[5600 DPI]"}));
  }

  // --- Settings that come meanwhile

  void settingsThatComeMeanwhileBeginANewCopy() {
    OpenSheet open;
    open.click("mStageDeleteButton");
    open.hand(profile("Work").with(keys::StageValue, 2).with(keys::DPIX, 1600));
    QVERIFY(open.sheet()->isVisible());
    QCOMPARE(open.rows(), (QStringList{"400 DPI", "800 DPI", "[X = 1600, Y = 800 DPI]", "3200 DPI", "5600 DPI"}));
    QCOMPARE(open.editors(), (QList<int>{1, 1600, 800}));
    COMPARE_REQUESTS(open);
  }

  void anotherProfileClosesTheSheetAndSaysSo() {
    OpenSheet open;
    open.click("mStageDeleteButton");
    open.hand(profile("Other").with(keys::StageValue, 2));
    QVERIFY(!open.sheet()->isVisible());
    const auto* alert = open.window.findChild<QMessageBox*>(QStringLiteral("alert"));
    QVERIFY(alert != nullptr && alert->isVisible());
    QCOMPARE(alert->text(), QStringLiteral("“Work” is no longer the current profile"));
    COMPARE_REQUESTS(open);
  }

  void theEditorsFollowAStageThatChangedInItsRow() {
    OpenSheet open;
    open.hand(profile("Work").with(keys::Stages, sampleStages().replacing(1, stage(900, 950, true))));
    QCOMPARE(open.rows().at(1), QStringLiteral("[X = 900, Y = 950 DPI]"));
    QCOMPARE(open.editors(), (QList<int>{1, 900, 950}));
  }

  void aReloadSelectsTheCurrentStageWhileTheSheetIsClosed() {
    PerformanceTab open;
    open.hand(profile("Work").with(keys::StageValue, 4));
    QCOMPARE(open.table()->selectionModel()->selectedRows().value(0).row(), 4);
    COMPARE_REQUESTS(open);
  }

  void hostileStagesAreSurvived_data() {
    QTest::addColumn<PropertyList>("hostile");
    QTest::newRow("none") << PropertyList();
    QTest::newRow("text") << PropertyList("stages");
    QTest::newRow("dictionary") << PropertyList::dictionary({{"0", 1}});
    QTest::newRow("empty") << stages({});
    QTest::newRow("elements of other types") << stages({1, "x", PropertyList::array(), PropertyList()});
    QTest::newRow("members of other types") << stages({request({{"dpix", "fast"}, {"dpiy", PropertyList::array()}})});
    QTest::newRow("huge") << stages({stage(std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), true)});
  }
  void hostileStagesAreSurvived() {
    QFETCH(PropertyList, hostile);
    OpenSheet open(profileWith(hostile));
    const int count = open.table()->model()->rowCount();
    QCOMPARE(count, static_cast<int>(hostile.arrayOrEmpty().size()));
    open.click("mStageAddButton");
    QCOMPARE(open.table()->model()->rowCount(), count + 1);
    open.select(0);
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_End);
    QTest::keyClick(open.slider("mStageXDpiSlider"), Qt::Key_Home);
    open.click("mStageEnableIndependentXY");
    open.select(0);
    open.click("mStageOkButton");
    const std::vector<PropertyList> sent = open.takeRequests();
    QCOMPARE(sent.size(), std::size_t{1});
    QCOMPARE(sent[0]["DPIX"].toInt(), 100);
    QCOMPARE(static_cast<int>(sent[0]["Stages"].size()), count + 1);
  }

  void theSheetMayGoWithItsWindow() {
    auto window = std::make_unique<QWidget>();
    PerformanceTab open;
    open.tab.setMPerformanceWindow(window.get());
    QTest::mouseClick(open.button("mSensitivityStages"), Qt::LeftButton);
    QCOMPARE(window->findChildren<QDialog*>().size(), 1);
    window.reset();
    open.hand(profile("Other"));
    open.tab.enableControlsState(false);
    open.tab.enableControlsState(true);
    open.click("mSensitivityStages");
    QCOMPARE(open.find<QLabel>("mProfileNameLabel")->text(), QStringLiteral("Other"));
  }

  void everyControlIsReachedByTab() {
    OpenSheet open(profileWith(stages({stage(400, 300, true), stage(800, 800, false)})));
    open.sheet()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(open.sheet()));
    QStringList reached;
    for (int step = 0; step < 10; ++step) {
      QWidget* at = QApplication::focusWidget();
      QVERIFY(at != nullptr);
      QVERIFY2(!at->accessibleName().isEmpty() || qobject_cast<QAbstractButton*>(at), qPrintable(at->objectName()));
      reached << at->objectName();
      QTest::keyClick(at, Qt::Key_Tab);
    }
    QCOMPARE(reached, (QStringList{"mStagesTable", "mStageAddButton", "mStageDeleteButton", "mStageEnableIndependentXY",
                                   "mStageXDpiSlider", "mStageXDpiField", "mStageYDpiSlider", "mStageYDpiField",
                                   "mStageCancelButton", "mStageOkButton"}));
  }
};

SKARN_QTEST(MousePerformanceControllerStagesTest)
#include "MousePerformanceController_stages_test.moc"
