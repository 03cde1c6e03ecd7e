// The picture of the mouse and the rows of its controls: what is drawn, what is pointed at, what is lit.
#include "buttons/MouseView.h"

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QHelpEvent>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolButton>
#include <QToolTip>

#include "buttons/ControlOutlines.h"
#include "buttons/ControlRow.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/PopUpButton.h"
#include "widgets/SkarnStyle.h"

Q_DECLARE_METATYPE(const skarn::ControlDescriptor*)

using namespace skarn;

namespace {

void addControls() {
  QTest::addColumn<const ControlDescriptor*>("control");
  for (const ControlDescriptor& control : controlTable) QTest::newRow(control.fieldName) << &control;
}

ControlOutlines outlinesOf(const QByteArray& drawing) {
  QByteArray bytes = drawing;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  return readControlOutlines(buffer);
}

// A shown view that records what it reports.
struct View {
  explicit View(QSize size = {400, 400}) {
    view.resize(size);
    view.setKeymapPicture(0);
    view.show();
    QObject::connect(&view, &MouseView::controlHovered,
                     [this](const ControlDescriptor* control) { hovered << control; });
    QObject::connect(&view, &MouseView::controlClicked,
                     [this](const ControlDescriptor* control) { clicked << control; });
  }

  void moveTo(const QPointF& place) {
    QMouseEvent event(QEvent::MouseMove, place, view.mapToGlobal(place), Qt::NoButton, {}, {});
    QApplication::sendEvent(&view, &event);
  }
  QString tooltipAt(const QPoint& place) {
    QHelpEvent help(QEvent::ToolTip, place, view.mapToGlobal(place));
    QApplication::sendEvent(&view, &help);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
  }

  MouseView view;
  QList<const ControlDescriptor*> hovered;
  QList<const ControlDescriptor*> clicked;
};

// A shown row that records what it reports.
struct Row {
  explicit Row(const ControlDescriptor& control) : row(control, nullptr) {
    row.popUp()->addItem(QStringLiteral("Macro : Fire"));
    row.resize(320, 27);
    row.show();
    QObject::connect(&row, &ControlRow::hovered, [this](bool isHovered) { hovered << isHovered; });
  }

  void focus(QWidget* widget, QEvent::Type type, Qt::FocusReason reason) {
    QFocusEvent event(type, reason);
    QApplication::sendEvent(widget, &event);
  }

  ControlRow row;
  QList<bool> hovered;
};

}  // namespace

class MouseViewTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    QApplication::setStyle(new SkarnStyle);
    QApplication::setPalette(lightPalette());
  }

  void cleanup() {
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    QToolTip::hideText();
  }

  void everyControlHasAnOutlineInTheDrawing_data() { addControls(); }

  void everyControlHasAnOutlineInTheDrawing() {
    QFETCH(const ControlDescriptor*, control);
    const ControlOutlines& outlines = controlOutlines();
    const QPainterPath& outline = outlines.of(*control);
    QVERIFY(QRectF(QPointF(), outlines.drawing).contains(outline.boundingRect()));
    // Large enough to be hit, even when the picture shrinks to three quarters.
    QVERIFY(outline.boundingRect().width() > 20 && outline.boundingRect().height() > 16);
    QCOMPARE(outlines.controlAt(outline.boundingRect().center()), control);
  }

  void outlinesDoNotOverlap() {
    for (const ControlDescriptor& one : controlTable) {
      for (const ControlDescriptor& other : controlTable) {
        if (&one != &other) QVERIFY(!controlOutlines().of(one).intersects(controlOutlines().of(other)));
      }
    }
  }

  void theDrawingHasTheShapeOfThePictures() {
    QCOMPARE(image(QStringLiteral("skarn_keymap1.png")).deviceIndependentSize(), controlOutlines().drawing);
  }

  void outlinesAreReadFromGroupsNamedAsControls() {
    const ControlOutlines outlines = outlinesOf(
        "<svg width='40' height='30'><g id='mButtonTwo'><path d='M1 1 L9,1 C9 4 9 6 9 9 L1 9 Z'/>"
        "<path d='M20 20 L30 20 L30 30 Z'/></g><g id='other'><path d='M0 0 L5 0 L5 5 Z'/></g></svg>");
    QCOMPARE(outlines.drawing, QSizeF(40, 30));
    QCOMPARE(outlines.of(controlTable[1]).boundingRect(), QRectF(1, 1, 8, 8));
    QCOMPARE(outlines.controlAt({5, 5}), &controlTable[1]);
    QCOMPARE(outlines.controlAt({25, 22}), nullptr);
    QVERIFY(outlines.of(controlTable[0]).isEmpty());
  }

  void aDrawingOfAnotherShapeHasNoOutlines_data() {
    QTest::addColumn<QByteArray>("drawing");
    const auto pathOf = [](const QByteArray& data) {
      return QByteArray("<svg width='9' height='9'><g id='mButtonOne'><path d='" + data + "'/></g></svg>");
    };
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("\x89PNG");
    QTest::newRow("cut") << QByteArray("<svg><g id='mButtonOne'><path d='M0 0");
    QTest::newRow("no numbers") << pathOf("M L Z");
    QTest::newRow("half a point") << pathOf("M0 0 L1");
    QTest::newRow("an unknown command") << pathOf("M0 0 Q1 1 2 2 Z");
    QTest::newRow("numbers alone") << pathOf("1 2 3 4");
    QTest::newRow("no number") << pathOf("M1.2.3 4 L-- 5 Z");
    QTest::newRow("no data") << QByteArray("<svg><g id='mButtonOne'><path/></g></svg>");
  }

  void aDrawingOfAnotherShapeHasNoOutlines() {
    QFETCH(QByteArray, drawing);
    const ControlOutlines outlines = outlinesOf(drawing);
    for (const ControlDescriptor& control : controlTable) QVERIFY(outlines.of(control).isEmpty());
    QCOMPARE(outlines.controlAt({0, 0}), nullptr);
  }

  void everyKeymapHasItsPicture() {
    View shown;
    for (int keymap = 0; keymap < 8; ++keymap) {
      shown.view.setKeymapPicture(keymap);
      const QString name =
          QStringLiteral("%1karn_keymap%2.png").arg(QLatin1Char(keymap == 7 ? 'S' : 's')).arg(keymap + 1);
      QCOMPARE(shown.view.pixmap(Qt::ReturnByValue).cacheKey(), image(name).cacheKey());
    }
  }

  void aKeymapOutsideTheRangeLeavesThePicture() {
    View shown;
    shown.view.setKeymapPicture(3);
    const qint64 before = shown.view.pixmap(Qt::ReturnByValue).cacheKey();
    for (const int keymap : {8, -1, 255}) {
      shown.view.setKeymapPicture(keymap);
      QCOMPARE(shown.view.pixmap(Qt::ReturnByValue).cacheKey(), before);
    }
  }

  void thePictureWaitsUntilItIsSeen() {
    MouseView view;
    view.setKeymapPicture(0);
    QVERIFY(view.pixmap(Qt::ReturnByValue).isNull());
    QCOMPARE(view.controlAt({100, 100}), nullptr);
    view.show();
    QVERIFY(!view.pixmap(Qt::ReturnByValue).isNull());
  }

  void controlsAreWhereThePictureShowsThem_data() { addControls(); }

  void controlsAreWhereThePictureShowsThem() {
    QFETCH(const ControlDescriptor*, control);
    // As it is, shrunk, and with room to spare.
    for (const QSize size : {QSize(420, 412), QSize(300, 380), QSize(700, 600)}) {
      View shown(size);
      const QPointF place = shown.view.placeOf(*control);
      QCOMPARE(shown.view.controlAt(place), control);
      // The control's ground is painted there, not the window's.
      const QImage picture = shown.view.grab().toImage();
      QVERIFY(picture.pixelColor(place.toPoint()) != shown.view.palette().color(QPalette::Window));
    }
  }

  void pointingAtAControlReportsItOnce_data() { addControls(); }

  void pointingAtAControlReportsItOnce() {
    QFETCH(const ControlDescriptor*, control);
    View shown;
    const QPointF place = shown.view.placeOf(*control);
    shown.moveTo(place);
    shown.moveTo(place + QPointF(1, 1));
    QCOMPARE(shown.hovered, QList<const ControlDescriptor*>{control});
    shown.moveTo({1, 1});
    QCOMPARE(shown.hovered, (QList<const ControlDescriptor*>{control, nullptr}));
  }

  void leavingThePictureLeavesTheControl() {
    View shown;
    shown.moveTo(shown.view.placeOf(controlTable[4]));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&shown.view, &leave);
    QCOMPARE(shown.hovered, (QList<const ControlDescriptor*>{&controlTable[4], nullptr}));
  }

  void aClickReportsItsControl_data() { addControls(); }

  void aClickReportsItsControl() {
    QFETCH(const ControlDescriptor*, control);
    View shown;
    QTest::mouseClick(&shown.view, Qt::LeftButton, {}, shown.view.placeOf(*control).toPoint());
    QCOMPARE(shown.clicked, QList<const ControlDescriptor*>{control});
  }

  void onlyALeftClickOnOneControlIsAClick() {
    View shown;
    const QPoint one = shown.view.placeOf(controlTable[0]).toPoint();
    const QPoint other = shown.view.placeOf(controlTable[1]).toPoint();
    QTest::mouseClick(&shown.view, Qt::RightButton, {}, one);
    QTest::mousePress(&shown.view, Qt::LeftButton, {}, one);
    QTest::mouseRelease(&shown.view, Qt::LeftButton, {}, other);
    QTest::mouseClick(&shown.view, Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(shown.clicked, QList<const ControlDescriptor*>());
  }

  void aLitControlIsOutlinedInTheAccent_data() { addControls(); }

  void aLitControlIsOutlinedInTheAccent() {
    QFETCH(const ControlDescriptor*, control);
    View shown;
    const QImage before = shown.view.grab().toImage();
    shown.view.setHighlighted(control);
    const QImage lit = shown.view.grab().toImage();
    QVERIFY(lit != before);
    // Nothing changes but the control and its outline.
    const QPointF center = shown.view.placeOf(*control);
    for (const ControlDescriptor& other : controlTable) {
      if (&other == control) continue;
      const QPoint place = shown.view.placeOf(other).toPoint();
      QCOMPARE(lit.pixel(place), before.pixel(place));
    }
    QVERIFY(lit.pixel(center.toPoint()) != before.pixel(center.toPoint()));
    shown.view.setHighlighted(nullptr);
    QCOMPARE(shown.view.grab().toImage(), before);
  }

  void aDisabledPictureIsDeaf() {
    View shown;
    shown.view.setHighlighted(&controlTable[0]);
    shown.view.setEnabled(false);
    const QImage faint = shown.view.grab().toImage();
    shown.view.setHighlighted(nullptr);
    QCOMPARE(shown.view.grab().toImage(), faint);
    QTest::mouseClick(&shown.view, Qt::LeftButton, {}, shown.view.placeOf(controlTable[0]).toPoint());
    QCOMPARE(shown.clicked, QList<const ControlDescriptor*>());
  }

  void theTooltipDescribesTheControl() {
    View shown;
    const QPoint place = shown.view.placeOf(controlTable[11]).toPoint();
    QCOMPARE(shown.tooltipAt(place), QStringLiteral("Button 12, Z key"));
    shown.view.setDescription([](const ControlDescriptor& control) {
      return QStringLiteral("%1: <b>Fire</b>\nof & Co").arg(control.number);
    });
    QCOMPARE(shown.tooltipAt(place), QStringLiteral("12: <b>Fire</b>\nof & Co"));
  }

  void thePictureIsNoStopOfTheKeyboard() {
    View shown;
    QCOMPARE(shown.view.focusPolicy(), Qt::NoFocus);
  }

  void everyRowNamesItsParts_data() { addControls(); }

  void everyRowNamesItsParts() {
    QFETCH(const ControlDescriptor*, control);
    Row shown(*control);
    const QString field = QLatin1String(control->fieldName);
    QCOMPARE(shown.row.objectName(), field + QStringLiteral("Row"));
    QCOMPARE(shown.row.popUp()->objectName(), field);
    QCOMPARE(shown.row.repeatButton()->objectName(), QLatin1String(control->repeatButton));
    QVERIFY(shown.row.findChild<QLabel*>(field + QStringLiteral("Label")) != nullptr);
    const QString name = localized(control->nameKey);
    const QString spoken = shown.row.popUp()->accessibleName();
    QVERIFY2(spoken.startsWith(QStringLiteral("Button %1, %2").arg(control->number).arg(name)), qPrintable(spoken));
    QCOMPARE(shown.row.repeatButton()->accessibleName(), QStringLiteral("Repeat of button %1").arg(control->number));
    QVERIFY(!shown.row.repeatButton()->toolTip().isEmpty());
    shown.row.repeatButton()->show();
    QVERIFY(!shown.row.repeatButton()->icon().isNull());
  }

  void theRepeatButtonTakesItsPlaceFromThePopUpAndDoesNotMoveTheColumns() {
    Row shown(controlTable[0]);
    shown.row.resize(400, 27);
    shown.row.layout()->activate();
    QVERIFY(!shown.row.repeatButton()->isVisible());
    const QRect place = shown.row.popUp()->geometry();
    const QSize least = shown.row.minimumSizeHint();
    const QSize natural = shown.row.sizeHint();
    QCOMPARE(place.right(), shown.row.rect().right());
    shown.row.repeatButton()->show();
    shown.row.layout()->activate();
    QCOMPARE(shown.row.popUp()->geometry().topLeft(), place.topLeft());
    QVERIFY(shown.row.popUp()->geometry().right() < shown.row.repeatButton()->geometry().left());
    QCOMPARE(shown.row.repeatButton()->geometry().right(), place.right());
    QCOMPARE(shown.row.minimumSizeHint(), least);
    QCOMPARE(shown.row.sizeHint(), natural);
  }

  void rowsOfAColumnHaveTheirPopUpsInOneColumn() {
    QSet<int> left, right;
    for (const ControlDescriptor& control : controlTable) {
      const Row shown(control);
      (control.family == ControlFamily::ThumbGrid ? left : right) << shown.row.popUp()->geometry().left();
    }
    QCOMPARE(left.size(), 1);
    QCOMPARE(right.size(), 1);
  }

  void pointingAtARowReportsIt() {
    Row shown(controlTable[0]);
    QEnterEvent enter({5, 5}, {5, 5}, {5, 5});
    QApplication::sendEvent(&shown.row, &enter);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&shown.row, &leave);
    QCOMPARE(shown.hovered, (QList<bool>{true, false}));
  }

  void theKeyboardReportsTheRowThatItReaches() {
    for (const bool repeat : {false, true}) {
      Row shown(controlTable[0]);
      QWidget* widget = repeat ? static_cast<QWidget*>(shown.row.repeatButton()) : shown.row.popUp();
      shown.focus(widget, QEvent::FocusIn, Qt::TabFocusReason);
      QCOMPARE(shown.hovered, QList<bool>{true});
      shown.focus(widget, QEvent::FocusOut, Qt::BacktabFocusReason);
      QCOMPARE(shown.hovered, (QList<bool>{true, false}));
    }
  }

  void focusByAClickOrByTheWindowReportsNothing() {
    Row shown(controlTable[0]);
    for (const Qt::FocusReason reason : {Qt::MouseFocusReason, Qt::ActiveWindowFocusReason, Qt::OtherFocusReason}) {
      shown.focus(shown.row.popUp(), QEvent::FocusIn, reason);
      shown.focus(shown.row.popUp(), QEvent::FocusOut, reason);
    }
    QCOMPARE(shown.hovered, QList<bool>());
  }

  void aRowStaysReportedWhileItsMenuIsOpen() {
    Row shown(controlTable[0]);
    shown.row.popUp()->openMenu();
    QCOMPARE(shown.hovered, QList<bool>{true});
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&shown.row, &leave);
    QCOMPARE(shown.hovered, QList<bool>{true});
    shown.row.popUp()->menu()->close();
    QCOMPARE(shown.hovered, (QList<bool>{true, false}));
  }

  // In every palette: the drawing has colours of its own.
  void missingControlsAreDarkerButForTheOneThatIsLit() {
    View shown;
    const auto brightnessOf = [&](const ControlDescriptor& control) {
      const QImage picture = shown.view.grab().toImage();
      const QRect place(shown.view.placeOf(control).toPoint() - QPoint(6, 6), QSize(13, 13));
      int sum = 0;
      for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x) sum += qGray(picture.pixel(x, y));
      return sum;
    };
    const ControlDescriptor& missing = controlTable[11];
    const ControlDescriptor& other = controlTable[1];
    const int before = brightnessOf(missing);
    const int beforeOfOther = brightnessOf(other);
    shown.view.setMissing({&missing});
    QVERIFY(brightnessOf(missing) < before);
    QCOMPARE(brightnessOf(other), beforeOfOther);
    const int dark = brightnessOf(missing);
    shown.view.setHighlighted(&missing);
    QVERIFY(brightnessOf(missing) > dark);
    shown.view.setHighlighted(nullptr);
    shown.view.setMissing({});
    QCOMPARE(brightnessOf(missing), before);
  }

  void aHighlightedRowHasAGroundOfItsOwn() {
    Row shown(controlTable[0]);
    const QImage before = shown.row.grab().toImage();
    shown.row.setHighlighted(true);
    QVERIFY(shown.row.isHighlighted());
    QVERIFY(shown.row.grab().toImage() != before);
    shown.row.setHighlighted(false);
    QCOMPARE(shown.row.grab().toImage(), before);
  }
};

SKARN_QTEST(MouseViewTest)
#include "MouseView_test.moc"
