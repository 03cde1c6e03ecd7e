#include "widgets/Notice.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

namespace {

// A notice between two buttons, as under a table.
struct Row {
  Row() {
    auto* layout = new QHBoxLayout(&window);
    layout->addWidget(before);
    layout->addWidget(notice);
    layout->addWidget(after);
    window.resize(600, 60);
    window.show();
  }
  QTimer& timer() { return *notice->findChild<QTimer*>(); }

  QWidget window;
  QPushButton* before = new QPushButton(&window);
  Notice* notice = new Notice(&window);
  QPushButton* after = new QPushButton(&window);
};

}  // namespace

class NoticeTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void it_says_a_text_until_its_time_is_over() {
    Row row;
    QVERIFY(!row.notice->isVisible());
    row.notice->say(QStringLiteral("Exported to ~/A & B <i>"));
    QVERIFY(row.notice->isVisible());
    QCOMPARE(row.notice->text(), QStringLiteral("Exported to ~/A & B <i>"));
    QCOMPARE(row.timer().intervalAsDuration(), std::chrono::milliseconds(Notice::lifetime));
    row.timer().start(0);
    QTRY_VERIFY(!row.notice->isVisible());
    QCOMPARE(row.notice->text(), QString());
  }

  void a_second_text_takes_the_place_of_the_first_and_has_its_whole_time() {
    Row row;
    row.notice->say(QStringLiteral("One"));
    row.timer().start(std::chrono::hours(1));
    row.notice->say(QStringLiteral("Two"));
    QCOMPARE(row.notice->text(), QStringLiteral("Two"));
    QCOMPARE(row.timer().intervalAsDuration(), std::chrono::milliseconds(Notice::lifetime));
  }

  void it_moves_nothing_beside_it_however_long_the_text() {
    Row row;
    const auto places = [&row] {
      return QList<QRect>{row.before->geometry(), row.after->geometry(), row.window.geometry()};
    };
    const QList<QRect> before = places();
    const int leastWidth = row.window.minimumSizeHint().width();
    row.notice->say(QString(500, QLatin1Char('m')));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(places(), before);
    QCOMPARE(row.window.minimumSizeHint().width(), leastWidth);
    row.notice->fallSilent();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(places(), before);
  }

  void a_screen_reader_knows_it_as_a_notification_with_what_it_says() {
    Row row;
    row.notice->say(QStringLiteral("Exported to ~/Jump.SkarnMacro"));
    const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(row.notice);
    QCOMPARE(read->role(), QAccessible::Notification);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Exported to ~/Jump.SkarnMacro"));
    QVERIFY(!read->state().invisible);
    row.notice->fallSilent();
    QCOMPARE(read->text(QAccessible::Name), QString());
    QVERIFY(read->state().invisible);
  }
};

SKARN_QTEST(NoticeTest)
#include "Notice_test.moc"
