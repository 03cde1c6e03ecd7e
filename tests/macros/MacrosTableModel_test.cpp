// The two tables of the Macros tab and the record button: what is drawn and how.
#include "macros/MacrosTableModel.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "macros/MacroDetailsDelegate.h"
#include "macros/MacroDetailsModel.h"
#include "macros/MacroNameDelegate.h"
#include "macros/MacrosFixture.h"
#include "macros/RecordButton.h"
#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

class Style : public SkarnStyle {
 public:
  explicit Style(int animationDuration) : mDuration(animationDuration) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    return hint == SH_Widget_Animation_Duration ? mDuration : SkarnStyle::styleHint(hint, option, widget, result);
  }

 private:
  int mDuration;
};

// The columns of a row that hold anything but its ground.
QList<int> inkedColumns(const QTableView& table, int row) {
  const QImage seen = const_cast<QTableView&>(table).viewport()->grab().toImage();
  const QRect cell = table.visualRect(table.model()->index(row, 0));
  const QRgb ground = seen.pixel(cell.right(), cell.center().y());
  QList<int> columns;
  for (int x = cell.left(); x <= cell.right(); ++x) {
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
      if (seen.pixel(x, y) == ground) continue;
      columns << x - cell.left();
      break;
    }
  }
  return columns;
}

struct LinesFixture : MacrosFixture {
  explicit LinesFixture(const PropertyList& shownLines) {
    delegate.lines[0] = shownLines;
    selectMacro(0);
  }
};

QStringList textsOf(const QAbstractItemModel& model) {
  QStringList texts;
  for (int row = 0; row < model.rowCount(); ++row) texts << model.index(row, 0).data().toString();
  return texts;
}

}  // namespace

Q_DECLARE_METATYPE(vorn::PropertyList)

class MacrosTableModelTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new Style(200));
    QApplication::setPalette(lightPalette());
  }

  void the_lines_are_kept_as_they_were_supplied() {
    MacroDetailsModel model;
    const QAbstractItemModelTester tester(&model);
    const PropertyList lines =
        PropertyList::array({"Key Press A", "0.020 seconds delay\n", 7, PropertyList(), "x\n\n"});
    model.setLines(lines);
    QCOMPARE(textsOf(model), (QStringList{"Key Press A", "0.020 seconds delay\n", "", "", "x\n\n"}));
    QVERIFY(model.lines() == lines);
  }

  void appended_lines_follow_without_a_reset() {
    MacroDetailsModel model;
    const QAbstractItemModelTester tester(&model);
    model.setLines(PropertyList::array({"Key Press A"}));
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.appendLines(PropertyList::array({"0.020 seconds delay\n", "Key Release A"}));
    model.appendLines(PropertyList::array());
    model.appendLines(PropertyList("text"));
    QCOMPARE(textsOf(model), (QStringList{"Key Press A", "0.020 seconds delay\n", "Key Release A"}));
    QCOMPARE(resets.count(), 0);
    QCOMPARE(inserted.count(), 1);
  }

  void a_trailing_line_break_is_not_drawn() {
    LinesFixture with(PropertyList::array({"Left Button down\n", "0.020 seconds delay\n"}));
    LinesFixture without(PropertyList::array({"Left Button down", "0.020 seconds delay"}));
    // The line break tells a button's line; its text begins behind the picture.
    constexpr int textLeft = MacroDetailsDelegate::pictureLeft + 16 + 4;
    const auto text = [](QList<int> columns) {
      columns.removeIf([](int x) { return x < textLeft; });
      return columns;
    };
    QVERIFY(!text(inkedColumns(*with.lines(), 0)).isEmpty());
    QCOMPARE(text(inkedColumns(*with.lines(), 0)), text(inkedColumns(*without.lines(), 0)));
    QCOMPARE(inkedColumns(*with.lines(), 1), inkedColumns(*without.lines(), 1));
  }

  void events_have_a_picture_and_delays_are_indented() {
    LinesFixture at(
        PropertyList::array({"Key Press A", "0.020 seconds delay\n", "Key Release A", "0.020 seconds delay\n",
                             "Left Button down\n", "0.020 seconds delay\n", "Something else"}));
    // Behind the lines that join pairs.
    constexpr int pictureLeft = MacroDetailsDelegate::pictureLeft;
    const auto first = [&](int row) {
      QList<int> columns = inkedColumns(*at.lines(), row);
      columns.removeIf([](int x) { return x < pictureLeft; });
      return columns.value(0, -1);
    };
    constexpr int pictureEnd = pictureLeft + 16;
    for (const int row : {0, 2, 4}) QVERIFY(first(row) >= pictureLeft && first(row) < pictureEnd);
    QVERIFY(first(6) > pictureEnd);
    for (const int row : {1, 3, 5}) QVERIFY(first(row) > first(6));
  }

  void a_press_a_release_and_a_button_have_different_pictures() {
    LinesFixture at(PropertyList::array({"Key Press A", "", "Key Release A", "", "Left Button down\n"}));
    const QImage seen = at.lines()->viewport()->grab().toImage();
    QList<QImage> pictures;
    for (const int row : {0, 2, 4}) {
      const QRect cell = at.lines()->visualRect(at.lines()->model()->index(row, 0));
      pictures << seen.copy(cell.left() + MacroDetailsDelegate::pictureLeft, cell.top(), 16, cell.height());
    }
    QVERIFY(pictures[0] != pictures[1]);
    QVERIFY(pictures[1] != pictures[2]);
    QVERIFY(pictures[0] != pictures[2]);
  }

  void the_rows_of_the_lines_are_equally_high() {
    LinesFixture at(linesOfEvents(5000));
    QCOMPARE(at.lines()->model()->rowCount(), 9999);
    QCOMPARE(at.lines()->verticalHeader()->length(), 9999 * at.lines()->rowHeight(0));
  }

  void the_table_follows_a_recording() {
    LinesFixture at(PropertyList::array());
    at.click("mRecordMacroDetails");
    at.record(linesOfEvents(200));
    QScrollBar* bar = at.lines()->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());
    at.record(PropertyList::array({"0.020 seconds delay\n", "Key Press A"}));
    QCOMPARE(bar->value(), bar->maximum());
  }

  void macros_are_added_and_removed_without_a_reset() {
    MacrosTableModel model;
    const QAbstractItemModelTester tester(&model);
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    for (const QStringList& names :
         {QStringList{"A", "B"}, QStringList{"A", "B", "C", "D"}, QStringList{"D"}, QStringList{"E"}, QStringList{}}) {
      model.setMacros(macrosNamed(names));
      QCOMPARE(textsOf(model), names);
    }
    QCOMPARE(resets.count(), 0);
  }

  void macros_are_listed_with_the_number_of_their_events_data() {
    QTest::addColumn<PropertyList>("macros");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("events");
    QTest::newRow("good records") << skarn::test::macros()
                                  << QStringList{"Fireball", "Build order, first two minutes, second base", "Greeting"}
                                  << QStringList{"2", "0", "3"};
    const PropertyList nameless = PropertyList::dictionary({{keys::MacroName, PropertyList::array()}});
    QTest::newRow("records of a wrong shape")
        << PropertyList::array({5, nameless, nameless.with(keys::Sequence, "x"),
                                nameless.with(keys::Sequence, PropertyList::array({macroEvent(1, 4)})),
                                macro("Mixed", {macroEvent(1, 4), "junk", macroEvent(0, 4)})})
        << QStringList{"", "", "", "", "Mixed"} << QStringList{"", "0", "0", "0", "2"};
    QTest::newRow("no array") << PropertyList("text") << QStringList() << QStringList();
  }
  void macros_are_listed_with_the_number_of_their_events() {
    QFETCH(PropertyList, macros);
    QFETCH(QStringList, names);
    QFETCH(QStringList, events);
    MacrosTableModel model;
    model.setMacros(macros);
    QCOMPARE(textsOf(model), names);
    QStringList counts;
    for (int row = 0; row < model.rowCount(); ++row) {
      counts << model.index(row, MacrosTableModel::Events).data().toString();
    }
    QCOMPARE(counts, events);
  }

  void only_names_can_be_edited() {
    MacrosTableModel model;
    model.setMacros(macrosNamed({"A", "B"}));
    QSignalSpy edited(&model, &MacrosTableModel::nameEdited);
    QVERIFY(model.flags(model.index(1, MacrosTableModel::Name)) & Qt::ItemIsEditable);
    QVERIFY(!(model.flags(model.index(1, MacrosTableModel::Events)) & Qt::ItemIsEditable));
    QVERIFY(!model.setData(model.index(1, MacrosTableModel::Events), 7, Qt::EditRole));
    QVERIFY(model.setData(model.index(1, MacrosTableModel::Name), "New", Qt::EditRole));
    QCOMPARE(edited.count(), 1);
    QCOMPARE(edited.first(), (QVariantList{1, "New"}));
    // The owner decides what the name becomes.
    QCOMPARE(textsOf(model), (QStringList{"A", "B"}));
  }

  void the_number_of_events_follows_the_lines_until_the_macros_are_renewed() {
    MacrosFixture at;
    const auto events = [&](int row) {
      return at.macros()->model()->index(row, MacrosTableModel::Events).data().toInt();
    };
    QCOMPARE(events(0), 0);
    at.selectMacro(0);
    QCOMPARE(events(0), 3);
    at.tab->refreshTableDisplay();
    QCOMPARE(events(0), 3);
    at.delegate.answersDetails = false;
    at.tab->setMMacrosSettingsArray(PropertyList::array({macro("Fireball", {macroEvent(1, 9)})}));
    at.tab->refreshTableDisplay();
    QCOMPARE(events(0), 1);
  }

  void a_name_is_edited_with_its_text_selected() {
    MacrosFixture at;
    at.macros()->edit(at.macros()->model()->index(1, 0));
    auto* editor = at.macros()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    QCOMPARE(editor->selectedText(), QStringLiteral("Greeting"));
  }

  void what_is_being_typed_outlives_a_reload() {
    MacrosFixture at;
    at.macros()->edit(at.macros()->model()->index(1, 0));
    auto* editor = at.macros()->findChild<QLineEdit*>();
    QTest::keyClicks(editor, QStringLiteral("Half a na"));
    at.tab->setMMacrosSettingsArray(macrosNamed({"One", "Two", "Three", "Four"}));
    at.tab->refreshTableDisplay();
    QCOMPARE(at.macros()->findChild<QLineEdit*>(), editor);
    QCOMPARE(editor->text(), QStringLiteral("Half a na"));
  }

  void a_name_that_is_cut_has_a_tooltip_with_the_whole_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasMouse");
    QTest::addColumn<QString>("shown");
    const QString longName = QStringLiteral("<b>Opening</b> & ").repeated(20);
    QTest::newRow("a long name") << longName << true << longName;
    QTest::newRow("a short name") << "Jump" << true << "";
    QTest::newRow("a long name in a table that is disabled") << longName << false << "No mouse connected";
  }
  void a_name_that_is_cut_has_a_tooltip_with_the_whole() {
    QFETCH(QString, name);
    QFETCH(bool, hasMouse);
    QFETCH(QString, shown);
    MacrosFixture at(QStringList{name});
    at.tab->enableControlsState(hasMouse);
    const QPoint place = at.placeOf(at.macros(), 0);
    QWidget* viewport = at.macros()->viewport();
    QHelpEvent hover(QEvent::ToolTip, place, viewport->mapToGlobal(place));
    QApplication::sendEvent(viewport, &hover);
    // Markup in a name is shown as it stands, in several lines.
    const QString tip = QToolTip::text();
    QCOMPARE(shown == name ? QTextDocumentFragment::fromHtml(tip).toPlainText().simplified() : tip, shown.simplified());
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
  }

  void the_beginning_and_the_end_of_editing_are_told() {
    MacrosFixture at;
    auto* names = qobject_cast<MacroNameDelegate*>(at.macros()->itemDelegate());
    QVERIFY(names != nullptr);
    QSignalSpy started(names, &MacroNameDelegate::editingStarted);
    const QSignalSpy ended(names, &MacroNameDelegate::editingEnded);
    at.macros()->edit(at.macros()->model()->index(2, 0));
    QCOMPARE(started.count(), 1);
    QCOMPARE(started.first(), QVariantList{2});
    QCOMPARE(ended.count(), 0);
    QTest::keyClick(at.macros()->findChild<QLineEdit*>(), Qt::Key_Escape);
    QTRY_COMPARE(ended.count(), 1);
  }

  void the_record_button_pulses_only_while_it_is_on_and_seen() {
    RecordButton button;
    button.setText(QStringLiteral("Record"));
    button.setChecked(true);
    QVERIFY(!button.isPulsing());
    button.show();
    QVERIFY(button.isPulsing());
    button.setEnabled(false);
    QVERIFY(!button.isPulsing());
    button.setEnabled(true);
    QVERIFY(button.isPulsing());
    button.setChecked(false);
    QVERIFY(!button.isPulsing());
    button.setChecked(true);
    button.hide();
    QVERIFY(!button.isPulsing());
  }

  void the_record_button_keeps_still_where_no_motion_is_wanted() {
    Style still(0);
    RecordButton button;
    button.setStyle(&still);
    button.setChecked(true);
    button.show();
    QVERIFY(!button.isPulsing());
    button.setStyle(QApplication::style());
  }

  void the_record_button_has_the_accent_while_it_records() {
    Style still(0);
    RecordButton button;
    button.setStyle(&still);
    button.resize(120, 32);
    button.show();
    const auto ground = [&] { return QColor(button.grab().toImage().pixel(60, 3)); };
    QVERIFY(std::abs(ground().hue() - accentColor(lightPalette()).hue()) > 5 || ground().saturation() < 40);
    button.setChecked(true);
    QVERIFY(std::abs(ground().hue() - accentColor(lightPalette()).hue()) <= 5);
    QVERIFY(ground().saturation() > 100);
    button.setStyle(QApplication::style());
  }
};

SKARN_QTEST(MacrosTableModelTest)
#include "MacrosTableModel_test.moc"
