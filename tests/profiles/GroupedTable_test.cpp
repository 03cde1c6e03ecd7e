// A table to be read, with rows under the titles of their groups.
#include "profiles/GroupedTable.h"

#include <QHeaderView>
#include <QTest>

#include "support/QtTests.h"

using namespace skarn;

class GroupedTableTest : public QObject {
  Q_OBJECT

 private slots:
  void what_rows_are_called_takes_the_room_it_needs_and_the_rest_is_for_what_they_say() {
    GroupedTable table;
    table.resize(600, 300);
    table.begin({QString(), QString()});
    table.addGroup(QStringLiteral("A title that is much longer than whatever the rows below it are called"));
    table.addRow({QStringLiteral("Why"), QStringLiteral("The mouse holds five profiles. Delete one first.")});
    table.addRow({QStringLiteral("Buttons"), QStringLiteral("2")});
    table.show();
    const int needed = table.fontMetrics().horizontalAdvance(QStringLiteral("Buttons"));
    QVERIFY(table.columnWidth(0) > needed && table.columnWidth(0) < needed + 50);
    QCOMPARE(table.columnWidth(0) + table.columnWidth(1), table.viewport()->width());
    // Anew, it begins small again.
    table.begin({QString(), QString()});
    table.addRow({QStringLiteral("Why"), QStringLiteral("Because")});
    QVERIFY(table.columnWidth(0) < needed + 20);
  }

  void columns_that_are_compared_are_equally_wide() {
    GroupedTable table;
    table.resize(600, 300);
    table.begin({QStringLiteral("What"), QStringLiteral("Work"), QStringLiteral("Games")});
    table.addRow({QStringLiteral("Polling rate"), QStringLiteral("500"), QStringLiteral("1000")});
    table.show();
    QCOMPARE(table.columnWidth(1), table.columnWidth(0));
    QVERIFY(!table.horizontalHeader()->isHidden());
  }
};

SKARN_QTEST(GroupedTableTest)
#include "GroupedTable_test.moc"
