#include "widgets/SkarnStyle.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTest>
#include <memory>

#include "support/QtTests.h"
#include "widgets/PaintedPixels.h"
#include "widgets/Palettes.h"

using namespace skarn;
using namespace skarn::test;

class SkarnStyleTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void aLabelTakesTheLookOfItsRole() {
    const QFont base = QApplication::font();
    const auto polished = [](const char* role) {
      auto label = std::make_unique<QLabel>(QStringLiteral("Text"));
      if (role) label->setProperty(SkarnStyle::textRoleProperty, QLatin1String(role));
      label->ensurePolished();
      return label;
    };
    QCOMPARE(polished(nullptr)->font(), base);
    QCOMPARE(polished("unknown")->font(), base);
    QVERIFY(polished("title")->font().pointSizeF() > base.pointSizeF());
    QCOMPARE(polished("title")->font().weight(), int(QFont::DemiBold));
    QVERIFY(polished("caption")->font().pointSizeF() < base.pointSizeF());
    QCOMPARE(polished("caption")->foregroundRole(), QPalette::PlaceholderText);
    QCOMPARE(polished("muted")->foregroundRole(), QPalette::PlaceholderText);
    QCOMPARE(polished("value")->font().weight(), int(QFont::DemiBold));
    QVERIFY(polished("readout")->font().pointSizeF() > 2 * base.pointSizeF());
  }

  void aTitleThatDoesNotFitItsColumnEndsInAnEllipsis() {
    constexpr int narrow = 60;
    const auto pictureOf = [](const QString& text, int width) {
      QStandardItemModel model(1, 1);
      model.setHorizontalHeaderLabels({text});
      QHeaderView header(Qt::Horizontal);
      header.setModel(&model);
      header.setSectionResizeMode(QHeaderView::Fixed);
      header.setMinimumSectionSize(0);
      header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
      header.resizeSection(0, width);
      header.resize(400, header.sizeHint().height());
      return header.grab(QRect(0, 0, narrow, header.height())).toImage();
    };
    const QString title(40, QLatin1Char('i'));
    const QImage shown = pictureOf(title, narrow);
    bool hasEllipsis = false;
    // With room for all of it.
    for (int letters = 0; letters < title.size() && !hasEllipsis; ++letters)
      hasEllipsis = pictureOf(title.left(letters) + QChar(0x2026), 400) == shown;
    QVERIFY(hasEllipsis);
  }

  void onlyTheCurrentTabHasTheAccentsUnderline() {
    QTabBar bar;
    bar.addTab(QStringLiteral("First"));
    bar.addTab(QStringLiteral("Second"));
    bar.resize(bar.sizeHint());
    const auto underlined = [&bar](int index) {
      const QImage seen = bar.grab().toImage();
      const QRect tab = bar.tabRect(index);
      return QColor(seen.pixel(tab.center().x(), tab.bottom() - 1)) == accentColor(bar.palette());
    };
    QVERIFY(underlined(0) && !underlined(1));
    const QRect before = bar.tabRect(1);
    bar.setCurrentIndex(1);
    QVERIFY(!underlined(0) && underlined(1));
    QCOMPARE(bar.tabRect(1), before);
  }

  void theTextOfAListBeginsWhereThatOfAFieldDoes() {
    const QString mark(QChar(0x2588));
    QComboBox list;
    list.addItem(mark);
    QLineEdit field(mark);
    const auto inkStart = [](QWidget& control) {
      control.resize(100, control.sizeHint().height());
      // Inside the frame, before the chevron.
      return inkColumns(control.grab().toImage(), QRect(3, 8, 60, control.height() - 16)).first;
    };
    QCOMPARE(inkStart(list), inkStart(field));
  }

  void aListsTextThatIsTooLongEndsInAnEllipsis() {
    const auto pictureOf = [](const QString& text) {
      QComboBox list;
      list.addItem(text);
      list.resize(160, list.sizeHint().height());
      return list.grab().toImage();
    };
    const QString beginning = QStringLiteral("Play with a rather ");
    const QImage cut = pictureOf(beginning + QString(40, QLatin1Char('M')));
    QCOMPARE(cut, pictureOf(beginning + QString(90, QLatin1Char('M'))));
    // What stands at its end are the three dots, and no half of a letter.
    bool isFound = false;
    for (int letters = 0; letters < 40 && !isFound; ++letters) {
      const QString whole = beginning + QString(40, QLatin1Char('M'));
      isFound = cut == pictureOf(whole.left(letters) + QChar(0x2026));
    }
    QVERIFY(isFound);
  }

  void aButtonShowsThatTheKeyboardIsThere_data() {
    QTest::addColumn<bool>("isDefault");
    QTest::newRow("any button") << false;
    QTest::newRow("the button that Return presses") << true;
  }

  void aButtonShowsThatTheKeyboardIsThere() {
    QFETCH(bool, isDefault);
    QDialog window;
    QPushButton button(QStringLiteral("Restore"), &window);
    QLineEdit field(&window);
    button.setAutoDefault(false);
    button.setDefault(isDefault);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    field.setFocus();
    const QImage without = button.grab().toImage();
    button.setFocus();
    QVERIFY(button.hasFocus());
    QVERIFY(button.grab().toImage() != without);
  }

  void colorsFollowAChangeOfThePalette() {
    QWidget window;
    QPushButton button(QStringLiteral("Apply"), &window);
    // Away from the mouse.
    button.move(40, 40);
    window.show();
    QVERIFY(shows(button, lightPalette().color(QPalette::Button)));
    QApplication::setPalette(darkPalette());
    QTRY_COMPARE(button.palette().color(QPalette::Button), darkPalette().color(QPalette::Button));
    QVERIFY(shows(button, darkPalette().color(QPalette::Button)));
  }
};

SKARN_QTEST(SkarnStyleTest)
#include "SkarnStyle_test.moc"
