// The shared widgets and the style, painted offscreen where it is about what is seen.
#include "widgets/SkarnStyle.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QVBoxLayout>
#include <cmath>

#include "support/QtTests.h"
#include "widgets/Alert.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FigureLabel.h"
#include "widgets/LabelState.h"
#include "widgets/NumberBadge.h"
#include "widgets/Palettes.h"
#include "widgets/PictureLabel.h"
#include "widgets/RowDelegate.h"

using namespace skarn;

namespace {

double luminance(const QColor& color) {
  const auto linear = [](double share) {
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(static_cast<double>(color.redF())) + 0.7152 * linear(static_cast<double>(color.greenF())) +
         0.0722 * linear(static_cast<double>(color.blueF()));
}

// As the accessibility guidelines of the web define it: 1 to 21.
double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

bool shows(QWidget& widget, const QColor& color) {
  const QImage picture = widget.grab().toImage();
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (QColor(picture.pixel(x, y)) == color) return true;
    }
  }
  return false;
}

// The columns of pixels from the first to the last that is not all ground, in a picture or a part of it.
QPair<int, int> inkColumns(const QImage& picture, const QRect& part) {
  const QRgb ground = picture.pixel(part.topLeft());
  QPair<int, int> ink(-1, -1);
  for (int x = part.left(); x <= part.right(); ++x) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
      if (picture.pixel(x, y) == ground) continue;
      if (ink.first < 0) ink.first = x;
      ink.second = x;
    }
  }
  return ink;
}

}  // namespace

class WidgetsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void textIsReadableInBothPalettes() {
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
      const QColor window = palette.color(QPalette::Window);
      QVERIFY(contrast(palette.color(QPalette::WindowText), window) >= 7);
      QVERIFY(contrast(palette.color(QPalette::PlaceholderText), window) >= 4.5);
      QVERIFY(contrast(palette.color(QPalette::Text), palette.color(QPalette::Base)) >= 7);
      QVERIFY(contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)) >= 4.5);
      QVERIFY(contrast(palette.color(QPalette::Link), window) >= 4.5);
      QVERIFY(contrast(accentColor(palette), window) >= 3);
      QVERIFY(palette.color(QPalette::Disabled, QPalette::WindowText) != palette.color(QPalette::WindowText));
    }
  }

  void theAccentFollowsThePalette() {
    QVERIFY(!isDark(lightPalette()));
    QVERIFY(isDark(darkPalette()));
    QCOMPARE(accentColor(lightPalette()).name(), QStringLiteral("#e4572e"));
    QCOMPARE(accentColor(darkPalette()).name(), QStringLiteral("#ff7a52"));
  }

  void anAlertTellsWhichButtonEndedIt() {
    QWidget window;
    window.show();
    for (int pressed = 0; pressed < 2; ++pressed) {
      QList<int> codes;
      QPointer<Alert> alert =
          Alert::show(&window, QStringLiteral("Delete?"), QStringLiteral("It is gone then."),
                      {QStringLiteral("OK"), QStringLiteral("Cancel")}, [&codes](int code) { codes << code; });
      QCOMPARE(window.findChild<QMessageBox*>(QStringLiteral("alert")), alert.data());
      QCOMPARE(alert->text(), QStringLiteral("Delete?"));
      QCOMPARE(alert->informativeText(), QStringLiteral("It is gone then."));
      QCOMPARE(alert->windowModality(), Qt::WindowModal);
      for (QAbstractButton* button : alert->buttons()) {
        if (button->text() == (pressed == 0 ? QStringLiteral("OK") : QStringLiteral("Cancel"))) button->click();
      }
      QCOMPARE(codes, QList<int>{Alert::firstButtonReturn + pressed});
      QTRY_VERIFY(alert.isNull());
    }
  }

  void escapePressesTheLastButtonOfAnAlert() {
    QWidget window;
    window.show();
    QList<int> codes;
    const auto note = [&codes](int code) { codes << code; };
    Alert* both = Alert::show(&window, QStringLiteral("A"), {}, {QStringLiteral("OK"), QStringLiteral("Cancel")}, note);
    QTest::keyClick(both, Qt::Key_Escape);
    Alert* one = Alert::show(&window, QStringLiteral("B"), {}, {QStringLiteral("OK")}, note);
    QTest::keyClick(one, Qt::Key_Escape);
    QCOMPARE(codes, (QList<int>{1001, 1000}));
  }

  void anAlertShowsItsTextsAsTheyStand() {
    QWidget window;
    Alert* alert = Alert::show(&window, QStringLiteral("<b>Bold</b>"), {}, {QStringLiteral("Save & Go")});
    QCOMPARE(alert->textFormat(), Qt::PlainText);
    QCOMPARE(alert->buttons().constFirst()->text(), QStringLiteral("Save && Go"));
  }

  void aLongTextIsCutAndItsWholeIsTheTooltip() {
    ElidedLabel label;
    const QString text = QStringLiteral("<i>A profile with a name that is much too long for its place</i>");
    label.setText(text);
    QVERIFY(label.minimumSizeHint().width() < label.sizeHint().width() / 2);
    label.resize(label.minimumSizeHint());
    label.show();
    QHelpEvent ask(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&label, &ask);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), text);
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
  }

  void digitsTakeTheSameWidth() {
    FigureLabel label;
    // A font whose digits differ in width would show it.
    label.setFont(QFont(QStringLiteral("URW Bookman")));
    label.setText(QStringLiteral("1111 DPI"));
    const int width = label.sizeHint().width();
    label.setText(QStringLiteral("8888 DPI"));
    QCOMPARE(label.sizeHint().width(), width);
    label.setText(QStringLiteral("88888 DPI"));
    QVERIFY(label.sizeHint().width() > width);
  }

  void aBadgeIsAsWideForOneDigitAsForTwo() {
    NumberBadge one;
    one.setText(QStringLiteral("1"));
    NumberBadge two;
    two.setText(QStringLiteral("27"));
    QCOMPARE(one.sizeHint(), two.sizeHint());
  }

  void aPictureKeepsItsProportionsAndNeverGrows() {
    QPixmap picture(40, 20);
    picture.fill(Qt::red);
    PictureLabel label;
    label.setPixmap(picture);
    const auto redArea = [&label](QSize size) {
      label.resize(size);
      const QImage seen = label.grab().toImage();
      QRect area;
      for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x) {
          if (QColor(seen.pixel(x, y)) == QColor(Qt::red)) area |= QRect(x, y, 1, 1);
        }
      }
      return area.size();
    };
    QCOMPARE(redArea({100, 100}), QSize(40, 20));
    QCOMPARE(redArea({20, 100}), QSize(20, 10));
  }

  void disabledLabelsAreGreyAndSayWhy() {
    QWidget page;
    auto* layout = new QVBoxLayout(&page);
    auto* label = new QLabel(QStringLiteral("Text"));
    auto* box = new QGroupBox(QStringLiteral("Title"));
    auto* button = new QPushButton(QStringLiteral("Go"));
    layout->addWidget(label);
    layout->addWidget(box);
    layout->addWidget(button);
    const auto color = [label] { return label->palette().color(label->foregroundRole()); };
    setLabelsEnabled(page, false, QStringLiteral("No mouse"));
    QCOMPARE(color(), lightPalette().color(QPalette::Disabled, QPalette::WindowText));
    QVERIFY(box->isEnabled());
    QVERIFY(button->isEnabled());
    QCOMPARE(page.toolTip(), QStringLiteral("No mouse"));
    QVERIFY(!shows(*box, lightPalette().color(QPalette::WindowText)));
    setLabelsEnabled(page, true, QStringLiteral("No mouse"));
    QCOMPARE(color(), lightPalette().color(QPalette::Active, QPalette::WindowText));
    QCOMPARE(page.toolTip(), QString());
    QVERIFY(shows(*box, lightPalette().color(QPalette::WindowText)));
  }

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

  void theTitleOfAColumnStandsOverItsTexts_data() {
    QTest::addColumn<int>("alignment");
    QTest::newRow("left") << int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("right") << int(Qt::AlignRight | Qt::AlignVCenter);
  }
  void theTitleOfAColumnStandsOverItsTexts() {
    QFETCH(int, alignment);
    QStandardItemModel model(1, 1);
    // As wide as high, and without room at its sides in any size.
    const QString mark(QChar(0x2588));
    model.setHeaderData(0, Qt::Horizontal, mark);
    model.setHeaderData(0, Qt::Horizontal, alignment, Qt::TextAlignmentRole);
    model.setData(model.index(0, 0), mark);
    model.setData(model.index(0, 0), alignment, Qt::TextAlignmentRole);
    QTableView table;
    table.setModel(&model);
    table.setItemDelegate(new RowDelegate(&table));
    table.setFrameShape(QFrame::NoFrame);
    table.verticalHeader()->hide();
    table.setColumnWidth(0, 120);
    const auto ink = [](QWidget* part, const QRect& rect) {
      return inkColumns(part->grab().toImage(), rect.adjusted(0, 0, 0, -2));
    };
    QHeaderView* header = table.horizontalHeader();
    const auto title = ink(header->viewport(), QRect(0, 0, 120, header->height()));
    const auto cell = ink(table.viewport(), table.visualRect(model.index(0, 0)));
    QVERIFY(title.first > 0 && cell.first > 0);
    const bool isLeft = alignment & Qt::AlignLeft;
    const int off = isLeft ? title.first - cell.first : title.second - cell.second;
    QVERIFY2(std::abs(off) <= 1, qPrintable(QString::number(off)));
  }

  void aCellTellsItsTooltipOrElseATextThatIsCut_data() {
    QTest::addColumn<QString>("tip");
    QTest::addColumn<bool>("isCut");
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<QString>("expected");
    const QString text = QStringLiteral("<b>Fire & Ice</b>");
    const QString tip = QStringLiteral("<i>/usr & local</i>");
    QTest::newRow("a text that fits") << "" << false << true << "";
    QTest::newRow("a text that is cut") << "" << true << true << text;
    QTest::newRow("a tooltip, and a text that fits") << tip << false << true << tip;
    QTest::newRow("a tooltip, and a text that is cut") << tip << true << true << tip;
    // It says why it is disabled.
    QTest::newRow("a table that is disabled") << tip << true << false << "No mouse";
  }
  void aCellTellsItsTooltipOrElseATextThatIsCut() {
    QFETCH(QString, tip);
    QFETCH(bool, isCut);
    QFETCH(bool, isEnabled);
    QFETCH(QString, expected);
    const QString text = QStringLiteral("<b>Fire & Ice</b>");
    QStandardItemModel model(1, 1);
    const QModelIndex cell = model.index(0, 0);
    model.setData(cell, text);
    model.setData(cell, tip, Qt::ToolTipRole);
    model.setData(cell, QIcon(), Qt::DecorationRole);
    QFont font;
    font.setBold(true);
    model.setData(cell, font, Qt::FontRole);
    QTableView table;
    table.setModel(&model);
    table.setItemDelegate(new RowDelegate(&table));
    table.setShowGrid(false);
    table.setIconSize({20, 20});
    table.setEnabled(isEnabled);
    if (!isEnabled) table.setToolTip(QStringLiteral("No mouse"));
    // Padding left and right of the text, and before it the place of the icon.
    const int whole = QFontMetrics(font, &table).horizontalAdvance(text) + 3 * RowDelegate::sidePadding + 20;
    table.setColumnWidth(0, isCut ? whole - 1 : whole);
    table.show();
    const auto ask = [&table](const QPoint& place) {
      QHelpEvent help(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
      QApplication::sendEvent(table.viewport(), &help);
      return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    };
    QCOMPARE(ask(table.visualRect(cell).center()), expected);
    // Beside the cells there is nothing to tell.
    if (isEnabled) ask(table.viewport()->rect().bottomRight());
    if (!isEnabled) QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
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

SKARN_QTEST(WidgetsTest)
#include "SkarnStyle_test.moc"
