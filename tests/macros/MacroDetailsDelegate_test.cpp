// The rows of a macro: delays that are edited in place, the lines that join pairs, and the times.
#include "macros/MacroDetailsDelegate.h"

#include "macros/MacroDetailsModel.h"
#include "macros/SequenceFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QLineEdit* editorIn(QTableView* table) {
  for (auto* field : table->viewport()->findChildren<QLineEdit*>()) {
    if (field->isVisible()) return field;
  }
  return nullptr;
}

QStringList lanesOf(const MacroDetailsModel& model) {
  QStringList rows;
  for (int row = 0; row < model.rowCount(); ++row) {
    QString text;
    for (const PairLanes::Part part : model.index(row).data(MacroDetailsModel::LanesRole).value<PairLanes>().parts) {
      text += QLatin1String(".b|e").at(part);
    }
    rows << text;
  }
  return rows;
}

}  // namespace

class MacroDetailsDelegateTest : public QObject {
  Q_OBJECT

 private slots:
  void aDelayIsEditedInPlace_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("by F2") << static_cast<int>(Qt::Key_F2);
    QTest::newRow("by Return") << static_cast<int>(Qt::Key_Return);
    QTest::newRow("by a double click") << 0;
  }
  void aDelayIsEditedInPlace() {
    QFETCH(int, key);
    SequenceFixture fixture;
    fixture.select({3});
    if (key != 0) {
      QTest::keyClick(fixture.lines(), static_cast<Qt::Key>(key));
    } else {
      QTest::mouseDClick(fixture.lines()->viewport(), Qt::LeftButton, {}, fixture.placeOf(fixture.lines(), 3));
    }
    QVERIFY(editorIn(fixture.lines()) != nullptr);
    QCOMPARE(editorIn(fixture.lines())->text(), QStringLiteral("50"));
    QCOMPARE(editorIn(fixture.lines())->selectedText(), QStringLiteral("50"));
    QTest::keyClicks(editorIn(fixture.lines()), QStringLiteral("75"));
    QTest::keyClick(editorIn(fixture.lines()), Qt::Key_Return);
    QTRY_VERIFY(editorIn(fixture.lines()) == nullptr);
    QCOMPARE(fixture.delegate.take(), (QStringList{"setNewDelay(75, 3, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(fixture.selected() == std::vector<int>{3});
    QTRY_VERIFY(fixture.lines()->hasFocus());
  }

  void anEditWithoutAnotherDelaySendsNothing() {
    SequenceFixture fixture;
    fixture.select({3});
    const auto ended = [&](const QString& typed, Qt::Key by) {
      QTest::keyClick(fixture.lines(), Qt::Key_F2);
      QLineEdit* editor = editorIn(fixture.lines());
      if (editor == nullptr) return false;
      QTest::keyClicks(editor, typed);
      if (typed.isEmpty()) editor->clear();
      QTest::keyClick(editor, by);
      return QTest::qWaitFor([&] { return editorIn(fixture.lines()) == nullptr; });
    };
    QVERIFY(ended(QStringLiteral("75"), Qt::Key_Escape));
    QVERIFY(ended(QStringLiteral("50"), Qt::Key_Return));
    QVERIFY(ended(QString(), Qt::Key_Return));
    QCOMPARE(fixture.delegate.take(), QStringList());
    // Tab takes it over, as in a field.
    QVERIFY(ended(QStringLiteral("60"), Qt::Key_Tab));
    QCOMPARE(fixture.delegate.take(), (QStringList{"setNewDelay(60, 3, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void onlyDigitsAreTakenInPlace() {
    SequenceFixture fixture;
    fixture.select({3});
    QTest::keyClick(fixture.lines(), Qt::Key_F2);
    QTest::keyClicks(editorIn(fixture.lines()), QStringLiteral("1.5"));
    QCOMPARE(editorIn(fixture.lines())->text(), QStringLiteral("15"));
    QCOMPARE(fixture.beeps, 1);
  }

  void anEditEndsWithoutADelayWhenTheMouseGoesOrTheLinesBecomeOthers() {
    SequenceFixture fixture;
    for (const bool isGone : {true, false}) {
      fixture.select({3});
      QTest::keyClick(fixture.lines(), Qt::Key_F2);
      QTest::keyClicks(editorIn(fixture.lines()), QStringLiteral("75"));
      if (isGone) {
        fixture.tab->enableControlsState(false);
        fixture.tab->enableControlsState(true);
      } else {
        fixture.tab->updateSelectedMacroWithMacroDetails(linesOfEvents(1));
      }
      QVERIFY(editorIn(fixture.lines()) == nullptr);
      QCOMPARE(fixture.delegate.take(), QStringList());
    }
  }

  void anEventIsEditedOnItsSheet() {
    SequenceFixture fixture;
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Return}) {
      fixture.select({2});
      QTest::keyClick(fixture.lines(), key);
      QVERIFY(fixture.find("mEditEventWindow")->isVisible());
      fixture.click("mMacroEventEditCancel");
    }
  }

  void pairsAreJoinedByLinesInLanesOfTheirOwn() {
    MacroDetailsModel model;
    model.setLines(vorn::eventParser::getMessagesArray(PropertyList::array(SequenceFixture::nested())));
    QCOMPARE(lanesOf(model), (QStringList{"b...", "|...", "|b..", "||..", "|e..", "|...", "e..."}));
    model.appendLines(PropertyList::array({"0.020 seconds delay\n", "Key Press C"}));
    QCOMPARE(lanesOf(model).mid(7), (QStringList{"....", "...."}));
  }

  void anEventTellsItsTimeFromTheFirstOne() {
    MacroDetailsModel model;
    model.setLines(vorn::eventParser::getMessagesArray(PropertyList::array(SequenceFixture::nested())));
    QList<QVariant> times;
    for (int row = 0; row < model.rowCount(); ++row) times << model.index(row).data(MacroDetailsModel::ElapsedRole);
    QCOMPARE(times, (QList<QVariant>{0LL, {}, 100LL, {}, 150LL, {}, 350LL}));
  }

  void theLinesOfPairsAndTheTimesAreDrawn() {
    SequenceFixture fixture;
    const QImage paired = fixture.lines()->viewport()->grab().toImage();
    fixture.tab->updateSelectedMacroWithMacroDetails(
        PropertyList::array({"Key Press A", "0.100 seconds delay\n", "Key Press B", "0.050 seconds delay\n",
                             "Key Release B", "0.200 seconds delay\n", "Key Release C"}));
    const QImage unpaired = fixture.lines()->viewport()->grab().toImage();
    // Left of the pictures of the first row, and the whole last time.
    const int row = fixture.lines()->rowHeight(0);
    QVERIFY(paired.copy(0, 0, 20, row) != unpaired.copy(0, 0, 20, row));
    const QRect time(paired.width() - 70, 6 * row, 70, row);
    QCOMPARE(paired.copy(time), unpaired.copy(time));
    QVERIFY(paired.copy(time) != paired.copy(time.translated(0, -row)));
  }
};

SKARN_QTEST(MacroDetailsDelegateTest)
#include "MacroDetailsDelegate_test.moc"
