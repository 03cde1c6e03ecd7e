#include "app/HistorySheet.h"

#include <QLabel>
#include <QStyledItemDelegate>
#include <QTableView>

#include "app/HistoryFixture.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

using Call = HistoryFixture::Call;
using Outcome = HistoryFixture::Outcome;

// With the sheet open.
struct OpenHistory : HistoryFixture {
  explicit OpenHistory(const std::vector<PropertyList>& entries = {}) : HistoryFixture(entries) {
    click(historyButton());
    if (!isOpen()) QTest::qFail("the sheet opens", __FILE__, __LINE__);
    QApplication::setActiveWindow(sheet("mHistorySheet"));
  }
  bool isOpen() { return isShown("mHistorySheet"); }
  QTableView& table() { return *sheet("mHistorySheet")->findChild<QTableView*>(); }
  QPushButton& button(const char* name) {
    return *sheet("mHistorySheet")->findChild<QPushButton*>(QLatin1String(name));
  }
  QPushButton& go() { return button("mHistoryGo"); }
  QStringList column(int number) {
    QStringList texts;
    for (int row = 0; row < table().model()->rowCount(); ++row)
      texts << table().model()->index(row, number).data().toString();
    return texts;
  }
  int selectedRow() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.constFirst().row() : -1;
  }
  QString notice() { return sheet("mHistorySheet")->findChild<QLabel*>(QStringLiteral("mHistoryNotice"))->text(); }
};

const PropertyList third = sensitivityOf(3, "Work").with("sourceApp", "org.vorn.vornctl");

}  // namespace

class HistorySheetTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void it_lists_when_what_and_who_and_the_time_before_all() {
    OpenHistory one({undone(macroDeleted(4, "Leap")), third, macroDeleted(2, "Jump")});
    QCOMPARE(one.column(1), (QStringList{"Macro “Leap” deleted (undone)", "Sensitivity of Work", "Macro “Jump” deleted",
                                         "Before these changes"}));
    QCOMPARE(one.column(2), (QStringList{"This window", "vornctl", "This window", ""}));
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1'000'000'003);
    QVERIFY(one.column(0).at(1).contains(QLocale().toString(time.time(), QLocale::ShortFormat)));
    QVERIFY(one.column(0).at(1).contains(QLocale().toString(time.date(), QLocale::ShortFormat)));
  }

  void it_begins_where_the_settings_are_now() {
    OpenHistory one({undone(macroDeleted(4, "Leap")), third, macroDeleted(2, "Jump")});
    QCOMPARE(one.selectedRow(), 1);
    QVERIFY(!one.go().isEnabled());
    QCOMPARE(one.go().toolTip(), localized("lkeyHistoryIsHere"));
    QVERIFY(one.table().hasFocus());
  }

  void it_goes_back_and_forward_by_one_request() {
    OpenHistory one({undone(macroDeleted(4, "Leap")), third, macroDeleted(2, "Jump")});
    one.press(Qt::Key_Down, Qt::NoModifier);
    QCOMPARE(one.go().text(), QStringLiteral("Go Back to Here"));
    one.click(one.go());
    QVERIFY(one.isAsked({{Call::GoTo, 2}}));
    QVERIFY(one.link.answerHistory({Outcome::Done, 1}));
    QCOMPARE(one.notice(), QStringLiteral("Undone: Sensitivity of Work"));
    one.table().selectRow(0);
    QCOMPARE(one.go().text(), QStringLiteral("Go Forward to Here"));
    one.press(Qt::Key_Return, Qt::NoModifier);
    QVERIFY(one.isAsked({{Call::GoTo, 4}}));
    QVERIFY(one.link.answerHistory({Outcome::Done, 2, 1}));
    QCOMPARE(one.notice(), QStringLiteral("2 changes redone; one value has been changed since and stays"));
    one.table().selectRow(3);
    one.click(one.go());
    QVERIFY(one.isAsked({{Call::GoTo, 0}}));
    QVERIFY(one.link.answerHistory({Outcome::NotSaved}));
    QCOMPARE(one.notice(), localized("lkeyUndoNotSaved"));
    QVERIFY(one.isOpen());
    QCOMPARE(one.lineText(), QString());
  }

  void what_is_undone_is_muted_but_for_the_selected_row() {
    OpenHistory one({undone(macroDeleted(4, "Leap")), third});
    // How the delegate of the table would draw it.
    struct Drawn : QStyledItemDelegate {
      static QPalette paletteOf(const QTableView& table, const QModelIndex& index) {
        QStyleOptionViewItem option;
        option.palette = table.palette();
        const auto* delegate = qobject_cast<const QStyledItemDelegate*>(table.itemDelegateForIndex(index));
        (delegate->*(&Drawn::initStyleOption))(&option, index);
        return option.palette;
      }
    };
    const QPalette plain = one.table().palette();
    const QPalette drawn = Drawn::paletteOf(one.table(), one.table().model()->index(0, 1));
    QVERIFY(plain.color(QPalette::PlaceholderText) != plain.color(QPalette::Text));
    QCOMPARE(drawn.color(QPalette::Text), plain.color(QPalette::PlaceholderText));
    QCOMPARE(drawn.color(QPalette::HighlightedText), plain.color(QPalette::HighlightedText));
  }

  void it_follows_changes_and_keeps_what_is_selected() {
    OpenHistory one({third, macroDeleted(2, "Jump")});
    one.table().selectRow(1);
    one.tell({macroDeleted(5, "Leap").with("sourceApp", "org.example.Other"), third, macroDeleted(2, "Jump")});
    QCOMPARE(one.column(1).size(), 4);
    QCOMPARE(one.selectedRow(), 2);
    one.tell({undone(third)});
    QCOMPARE(one.column(1), (QStringList{"Sensitivity of Work (undone)", "Before these changes"}));
    QCOMPARE(one.selectedRow(), 1);
    QVERIFY(!one.go().isEnabled());
  }

  void an_empty_history_says_so() {
    OpenHistory one;
    QVERIFY(!one.table().isVisible());
    QVERIFY(one.sheet("mHistorySheet")->findChild<QLabel*>(QStringLiteral("mHistoryEmpty"))->isVisible());
    QVERIFY(!one.go().isEnabled());
    QCOMPARE(one.go().toolTip(), localized("lkeyHistoryEmpty"));
    one.tell({third});
    QVERIFY(one.table().isVisible());
  }

  void escape_closes_it_and_asks_for_nothing() {
    OpenHistory one({third});
    one.press(Qt::Key_Escape, Qt::NoModifier);
    QVERIFY(!one.isOpen());
    QVERIFY(one.hasAskedNothing());
    QVERIFY(one.link.requests.empty());
  }

  void it_closes_when_the_mouse_or_the_engine_goes() {
    OpenHistory one({third});
    one.notifications.post("Device Removed 273", "", {});
    QVERIFY(!one.isOpen());
    OpenHistory other({third});
    other.link.engineChanged(false);
    QVERIFY(!other.isOpen());
    QVERIFY(other.hasAskedNothing());
  }

  void it_opens_by_the_keyboard() {
    HistoryFixture fixture({third});
    fixture.press(Qt::Key_H);
    QVERIFY(fixture.isShown("mHistorySheet"));
  }
};

SKARN_QTEST(HistorySheetTest)
#include "HistorySheet_test.moc"
