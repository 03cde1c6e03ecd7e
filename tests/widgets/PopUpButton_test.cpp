// The pop-up button: its items, its menu by hand and by keyboard, and what happens when its items are replaced at a bad
// moment.
#include "widgets/PopUpButton.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QWindow>

#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

namespace {

const QStringList titles = {QStringLiteral("Tab (Default)"), QStringLiteral("Macro : Fire & Ice"),
                            QStringLiteral("Keymap"), QStringLiteral("Disable"), QStringLiteral("Disable")};
constexpr int category = 2;

// A shown button with the titles; the third item has a submenu with "One", a separator and "Two".
struct Fixture {
  Fixture() {
    button.setObjectName(QStringLiteral("mButtonOne"));
    button.setAccessibleName(QStringLiteral("Button 1, Tab key"));
    fill();
    button.resize(200, 26);
    button.show();
    chosen = std::make_unique<QSignalSpy>(&button, &PopUpButton::itemChosen);
  }

  void fill() {
    for (const QString& title : titles) button.addItem(title);
    button.setSubmenu(button.itemAt(category), QStringLiteral("keymaps"), [this](QMenu& menu) {
      ++fills;
      menu.addAction(QStringLiteral("One"), [this] { picked << QStringLiteral("One"); });
      menu.addSeparator();
      menu.addAction(QStringLiteral("Two"), [this] { picked << QStringLiteral("Two"); });
    });
  }

  QMenu* menu() const { return button.menu(); }
  QMenu* submenu() const { return button.itemAt(category)->menu(); }
  QPoint placeOf(int index) const { return menu()->actionGeometry(button.itemAt(index)).center(); }
  QList<int> indexesChosen() const {
    QList<int> indexes;
    for (const QList<QVariant>& call : *chosen) indexes << call.at(0).toInt();
    return indexes;
  }
  // Presses on the button and lets go on an item.
  void dragTo(int index) {
    QTest::mousePress(&button, Qt::LeftButton);
    for (const QPoint& place : {placeOf(0), placeOf(index)}) {
      const QPointF global = menu()->mapToGlobal(place);
      QMouseEvent drag(QEvent::MouseMove, place, global, Qt::NoButton, Qt::LeftButton, {});
      QApplication::sendEvent(menu(), &drag);
    }
    QTest::mouseRelease(menu(), Qt::LeftButton, {}, placeOf(index));
  }
  void openSubmenu() {
    button.openMenu();
    menu()->setActiveAction(button.itemAt(category));
    QTest::keyClick(menu(), Qt::Key_Right);
  }

  PopUpButton button;
  std::unique_ptr<QSignalSpy> chosen;
  int fills = 0;
  QStringList picked;
};

QStringList shownTitles(const QMenu& menu) {
  QStringList shown;
  for (const QAction* item : menu.actions()) {
    if (item->isVisible() && !item->isSeparator()) shown << titleOf(*item);
  }
  return shown;
}

}  // namespace

class PopUpButtonTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void cleanup() {
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    QToolTip::hideText();
  }

  void aNewButtonIsEmpty() {
    PopUpButton button;
    QCOMPARE(button.numberOfItems(), 0);
    QCOMPARE(button.indexOfSelectedItem(), -1);
    QCOMPARE(button.titleOfSelectedItem(), QString());
    QCOMPARE(button.shownTitle(), QString());
    button.show();
    button.openMenu();
    QVERIFY(!button.menu()->isVisible());
  }

  void titlesStandAsTheyWereGiven() {
    Fixture fixture;
    QCOMPARE(fixture.button.numberOfItems(), 5);
    for (int index = 0; index < titles.size(); ++index) QCOMPARE(fixture.button.itemTitle(index), titles[index]);
    QCOMPARE(fixture.button.itemTitle(-1), QString());
    QCOMPARE(fixture.button.itemTitle(5), QString());
    QCOMPARE(fixture.button.itemAt(5), nullptr);
    // Shown as they stand: an escaped ampersand is no mnemonic.
    QCOMPARE(fixture.button.itemAt(1)->text(), QStringLiteral("Macro : Fire && Ice"));
  }

  void anyTitleComesBack_data() {
    QTest::addColumn<QString>("title");
    for (const char* title : {"&", "&&", "a && b", "&File", "two  blanks ", "tab\tstop", "line\nbreak", "<b>bold</b>"})
      QTest::newRow(title) << QString::fromLatin1(title);
    QTest::newRow("long") << QString(256, QLatin1Char('W'));
  }

  void anyTitleComesBack() {
    QFETCH(QString, title);
    PopUpButton button;
    button.addItem(QStringLiteral("other"));
    button.addItem(title);
    QCOMPARE(button.itemTitle(1), title);
    QVERIFY(button.selectItemWithTitle(title));
    QCOMPARE(button.indexOfSelectedItem(), 1);
    QCOMPARE(button.titleOfSelectedItem(), title);
    QCOMPARE(button.shownTitle(), title);
  }

  void selectingByCodeIsSilent() {
    Fixture fixture;
    fixture.button.selectItem(1);
    QCOMPARE(fixture.button.titleOfSelectedItem(), titles[1]);
    QVERIFY(fixture.button.selectItemWithTitle(titles[0]));
    QCOMPARE(fixture.button.indexOfSelectedItem(), 0);
    fixture.button.selectItem(17);
    QCOMPARE(fixture.button.indexOfSelectedItem(), -1);
    QCOMPARE(fixture.button.shownTitle(), QString());
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void ofEqualTitlesTheFirstIsSelected() {
    Fixture fixture;
    QVERIFY(fixture.button.selectItemWithTitle(QStringLiteral("Disable")));
    QCOMPARE(fixture.button.indexOfSelectedItem(), 3);
  }

  void aTitleOfNoItemIsShownAsPlainText() {
    Fixture fixture;
    fixture.button.selectItem(1);
    QVERIFY(!fixture.button.selectItemWithTitle(QStringLiteral("Forward & back")));
    QCOMPARE(fixture.button.indexOfSelectedItem(), -1);
    QCOMPARE(fixture.button.titleOfSelectedItem(), QString());
    QCOMPARE(fixture.button.shownTitle(), QStringLiteral("Forward & back"));
  }

  void removingAllItemsEmptiesTheButton() {
    Fixture fixture;
    fixture.button.selectItem(1);
    const QPointer<QAction> item = fixture.button.itemAt(1);
    fixture.button.removeAllItems();
    QCOMPARE(fixture.button.numberOfItems(), 0);
    QCOMPARE(fixture.button.indexOfSelectedItem(), -1);
    QCOMPARE(fixture.button.shownTitle(), QString());
    QVERIFY(fixture.button.findChildren<QAction*>().isEmpty() ||
            !fixture.button.findChildren<QAction*>().contains(item.data()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(item.isNull());
  }

  void aClickOpensTheMenuUnderTheButton() {
    Fixture fixture;
    QTest::mouseClick(&fixture.button, Qt::LeftButton);
    QVERIFY(fixture.menu()->isVisible());
    QCOMPARE(shownTitles(*fixture.menu()), titles);
    QVERIFY(fixture.menu()->width() >= fixture.button.width());
    QCOMPARE(fixture.menu()->pos(), fixture.button.mapToGlobal(QPoint(0, fixture.button.height())));
    QCOMPARE(fixture.menu()->accessibleName(), QStringLiteral("Button 1, Tab key"));
  }

  // Through the window, as the pointer does it: the first click opens, the press of the second one closes.
  void aClickOnTheButtonClosesItsOpenMenu() {
    Fixture fixture;
    QWindow* window = fixture.button.windowHandle();
    const QPoint place = fixture.button.rect().center();
    for (int time = 0; time < 3; ++time) {
      QTest::mouseClick(window, Qt::LeftButton, {}, place);
      QVERIFY(fixture.menu()->isVisible());
      QTest::mouseClick(window, Qt::LeftButton, {}, place);
      QVERIFY(!fixture.menu()->isVisible());
    }
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void aPressThatIsDraggedToAnItemChoosesIt() {
    Fixture fixture;
    fixture.dragTo(1);
    QCOMPARE(fixture.indexesChosen(), QList<int>{1});
    QVERIFY(!fixture.menu()->isVisible());
  }

  void aPressThatIsDraggedToACategoryOpensItsSubmenu() {
    Fixture fixture;
    fixture.dragTo(category);
    QTRY_VERIFY(fixture.submenu()->isVisible());
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void otherMouseButtonsDoNotOpenTheMenu() {
    Fixture fixture;
    QTest::mouseClick(&fixture.button, Qt::RightButton);
    QTest::mouseClick(&fixture.button, Qt::MiddleButton);
    QVERIFY(!fixture.menu()->isVisible());
  }

  void keysOpenTheMenu_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::newRow("Space") << Qt::Key_Space << Qt::NoModifier;
    QTest::newRow("Return") << Qt::Key_Return << Qt::NoModifier;
    QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeypadModifier;
    QTest::newRow("Down") << Qt::Key_Down << Qt::NoModifier;
    QTest::newRow("Alt+Down") << Qt::Key_Down << Qt::AltModifier;
    QTest::newRow("F4") << Qt::Key_F4 << Qt::NoModifier;
  }

  void keysOpenTheMenu() {
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifier, modifier);
    Fixture fixture;
    fixture.button.selectItem(1);
    QTest::keyClick(&fixture.button, key, modifier);
    QVERIFY(fixture.menu()->isVisible());
    QCOMPARE(fixture.menu()->activeAction(), fixture.button.itemAt(1));
  }

  void otherKeysDoNotOpenTheMenu() {
    Fixture fixture;
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Left, Qt::Key_Escape, Qt::Key_F5})
      QTest::keyClick(&fixture.button, key);
    QVERIFY(!fixture.menu()->isVisible());
  }

  void theHoverEndsWithTheMenuWhereThePointerLeftTheButton_data() {
    QTest::addColumn<bool>("isChosen");
    QTest::addColumn<bool>("isOverButton");
    QTest::newRow("an item that opens a sheet") << true << false;
    QTest::newRow("Escape") << false << false;
    QTest::newRow("Escape over the button") << false << true;
  }

  void theHoverEndsWithTheMenuWhereThePointerLeftTheButton() {
    QFETCH(bool, isChosen);
    QFETCH(bool, isOverButton);
    Fixture fixture;
    const QImage normal = fixture.button.grab().toImage();
    QDialog sheet(&fixture.button);
    connect(&fixture.button, &PopUpButton::itemChosen, &sheet, &QDialog::open);
    fixture.button.openMenu();
    if (isOverButton) {
      QTest::mouseMove(&fixture.button);
    } else {
      QTest::mouseMove(fixture.menu(), fixture.placeOf(1));
    }
    // As the window system has it that tells no leave while a menu is open.
    fixture.button.setAttribute(Qt::WA_UnderMouse);
    QVERIFY(fixture.button.grab().toImage() != normal);
    if (isChosen) {
      QTest::mouseClick(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(1));
    } else {
      QTest::keyClick(fixture.menu(), Qt::Key_Escape);
    }
    QVERIFY(!fixture.menu()->isVisible());
    QCOMPARE(sheet.isVisible(), isChosen);
    fixture.button.selectItem(-1);
    QCOMPARE(fixture.button.underMouse(), isOverButton);
    QCOMPARE(fixture.button.grab().toImage() == normal, !isOverButton);
  }

  void theHoverEndsWithASheetThatAKeyOpensFromTheMenu() {
    Fixture fixture;
    QDialog sheet(&fixture.button);
    sheet.setWindowModality(Qt::WindowModal);
    connect(&fixture.button, &PopUpButton::itemChosen, &sheet, &QDialog::open);
    QTest::mouseMove(&fixture.button);
    fixture.button.openMenu();
    fixture.button.setAttribute(Qt::WA_UnderMouse);
    QTest::keyClick(fixture.menu(), Qt::Key_Down);
    QTest::keyClick(fixture.menu(), Qt::Key_Return);
    QVERIFY(sheet.isVisible());
    QVERIFY(!fixture.button.underMouse());
  }

  void aDisabledButtonDoesNotOpen() {
    Fixture fixture;
    fixture.button.setEnabled(false);
    QTest::mouseClick(&fixture.button, Qt::LeftButton);
    fixture.button.openMenu();
    QVERIFY(!fixture.menu()->isVisible());
  }

  void aClickOnAnItemChoosesIt() {
    Fixture fixture;
    fixture.button.selectItem(0);
    fixture.button.openMenu();
    QTest::mouseClick(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(1));
    QCOMPARE(fixture.indexesChosen(), QList<int>{1});
    QCOMPARE(fixture.button.titleOfSelectedItem(), titles[1]);
    QVERIFY(!fixture.menu()->isVisible());
  }

  void theSelectedItemCanBeChosenAgain() {
    Fixture fixture;
    for (int time = 0; time < 2; ++time) {
      fixture.button.openMenu();
      QTest::mouseClick(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(1));
    }
    QCOMPARE(fixture.indexesChosen(), (QList<int>{1, 1}));
    fixture.button.openMenu();
    QVERIFY(fixture.button.itemAt(1)->isChecked());
  }

  void itemsAreChosenByKeyboard_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
  }

  void itemsAreChosenByKeyboard() {
    QFETCH(Qt::Key, key);
    Fixture fixture;
    QTest::keyClick(&fixture.button, Qt::Key_Down);
    QTest::keyClick(fixture.menu(), Qt::Key_D);
    QTest::keyClick(fixture.menu(), key);
    QCOMPARE(fixture.indexesChosen(), QList<int>{3});
  }

  void typingFindsTheItemThatBeginsSo_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("index");
    QTest::newRow("one letter") << QStringLiteral("d") << 3;
    QTest::newRow("the same letter again goes on") << QStringLiteral("dd") << 4;
    QTest::newRow("and round") << QStringLiteral("ddd") << 3;
    QTest::newRow("capitals") << QStringLiteral("K") << 2;
    QTest::newRow("several letters") << QStringLiteral("mac") << 1;
    QTest::newRow("letters of none leave it") << QStringLiteral("maq") << 1;
  }

  void typingFindsTheItemThatBeginsSo() {
    QFETCH(QString, typed);
    QFETCH(int, index);
    Fixture fixture;
    fixture.button.selectItem(0);
    fixture.button.openMenu();
    QTest::keyClicks(fixture.menu(), typed);
    QCOMPARE(fixture.menu()->activeAction(), fixture.button.itemAt(index));
    QCOMPARE(fixture.fills, 0);
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void whatWasTypedIsForgottenWithTheMenu() {
    Fixture fixture;
    fixture.button.openMenu();
    QTest::keyClick(fixture.menu(), Qt::Key_K);
    QTest::keyClick(fixture.menu(), Qt::Key_Escape);
    fixture.button.openMenu();
    QTest::keyClick(fixture.menu(), Qt::Key_M);
    QCOMPARE(fixture.menu()->activeAction(), fixture.button.itemAt(1));
  }

  void typingDoesNotFindRefusedItems() {
    Fixture fixture;
    fixture.button.setValidator([](const QAction& item) { return titleOf(item) != titles[1]; });
    fixture.button.openMenu();
    QTest::keyClicks(fixture.menu(), QStringLiteral("m"));
    QCOMPARE(fixture.menu()->activeAction(), nullptr);
  }

  void theSelectedItemIsMarked() {
    Fixture fixture;
    fixture.button.selectItem(1);
    fixture.button.openMenu();
    for (int index = 0; index < titles.size(); ++index) QCOMPARE(fixture.button.itemAt(index)->isChecked(), index == 1);
    fixture.menu()->close();
    fixture.button.selectItemWithTitle(QStringLiteral("nothing of that"));
    fixture.button.openMenu();
    for (int index = 0; index < titles.size(); ++index) QVERIFY(!fixture.button.itemAt(index)->isChecked());
  }

  void escapeChoosesNothing() {
    Fixture fixture;
    fixture.button.selectItem(1);
    fixture.button.openMenu();
    QTest::keyClick(fixture.menu(), Qt::Key_Escape);
    QVERIFY(!fixture.menu()->isVisible());
    QCOMPARE(fixture.chosen->count(), 0);
    QCOMPARE(fixture.button.indexOfSelectedItem(), 1);
  }

  void aClickOnACategoryOpensItsSubmenuAndChoosesNothing() {
    Fixture fixture;
    fixture.button.selectItem(1);
    fixture.button.openMenu();
    QTest::mouseClick(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(category));
    QTRY_VERIFY(fixture.submenu()->isVisible());
    QVERIFY(fixture.menu()->isVisible());
    QTest::mouseClick(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(category));
    QCOMPARE(fixture.chosen->count(), 0);
    QCOMPARE(fixture.button.indexOfSelectedItem(), 1);
  }

  void keysOpenTheSubmenuOfACategoryAndChooseNothing_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Right") << Qt::Key_Right;
  }

  void keysOpenTheSubmenuOfACategoryAndChooseNothing() {
    QFETCH(Qt::Key, key);
    Fixture fixture;
    fixture.button.selectItem(category);
    fixture.button.openMenu();
    QVERIFY(!fixture.submenu()->isVisible());
    QTest::keyClick(fixture.menu(), key);
    QTRY_VERIFY(fixture.submenu()->isVisible());
    QCOMPARE(titleOf(*fixture.submenu()->activeAction()), QStringLiteral("One"));
    QCOMPARE(fixture.chosen->count(), 0);
    // From there the keyboard goes on, and Escape leads back step by step.
    QTest::keyClick(fixture.submenu(), Qt::Key_Escape);
    QVERIFY(!fixture.submenu()->isVisible() && fixture.menu()->isVisible());
    QTest::keyClick(fixture.menu(), Qt::Key_Escape);
    QVERIFY(!fixture.menu()->isVisible());
    QCOMPARE(fixture.chosen->count(), 0);
    QVERIFY(fixture.picked.isEmpty());
  }

  void codeStillChoosesACategory() {
    Fixture fixture;
    fixture.button.itemAt(category)->trigger();
    QCOMPARE(fixture.indexesChosen(), QList<int>{category});
    QCOMPARE(fixture.button.indexOfSelectedItem(), category);
  }

  void theReleaseOfTheOpeningPressChoosesNothing() {
    Fixture fixture;
    QTest::mousePress(&fixture.button, Qt::LeftButton);
    QTest::mouseRelease(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(category));
    QCOMPARE(fixture.chosen->count(), 0);
    QVERIFY(fixture.menu()->isVisible());
  }

  void rightOpensTheSubmenuAndLeftClosesIt() {
    Fixture fixture;
    fixture.openSubmenu();
    QVERIFY(fixture.submenu()->isVisible());
    QCOMPARE(fixture.submenu()->objectName(), QStringLiteral("keymaps"));
    QCOMPARE(shownTitles(*fixture.submenu()), (QStringList{QStringLiteral("One"), QStringLiteral("Two")}));
    QTest::keyClick(fixture.submenu(), Qt::Key_Left);
    QVERIFY(!fixture.submenu()->isVisible());
    QVERIFY(fixture.menu()->isVisible());
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void hoveringOpensTheSubmenu() {
    Fixture fixture;
    fixture.button.openMenu();
    QTest::mouseMove(fixture.menu(), fixture.placeOf(0));
    QTest::mouseMove(fixture.menu(), fixture.placeOf(category));
    QTRY_VERIFY(fixture.submenu()->isVisible());
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void anItemOfTheSubmenuIsNoItemOfTheButton() {
    Fixture fixture;
    fixture.openSubmenu();
    QTest::keyClick(fixture.submenu(), Qt::Key_T);
    QTest::keyClick(fixture.submenu(), Qt::Key_Return);
    QCOMPARE(fixture.picked, QStringList{QStringLiteral("Two")});
    QCOMPARE(fixture.chosen->count(), 0);
    QVERIFY(!fixture.menu()->isVisible());
  }

  void theSubmenuIsFilledAnewEachTime() {
    Fixture fixture;
    fixture.button.openMenu();
    QCOMPARE(fixture.fills, 0);
    fixture.menu()->close();
    for (int time = 1; time <= 3; ++time) {
      fixture.openSubmenu();
      QCOMPARE(fixture.fills, time);
      QCOMPARE(fixture.submenu()->actions().size(), 3);
      fixture.menu()->close();
    }
  }

  void refusedItemsAreHiddenAndDisabledEverywhere() {
    Fixture fixture;
    QStringList refused = {titles[1], QStringLiteral("Two")};
    fixture.button.setValidator([&refused](const QAction& item) { return !refused.contains(titleOf(item)); });
    fixture.openSubmenu();
    QStringList left = titles;
    left.removeAt(1);
    QCOMPARE(shownTitles(*fixture.menu()), left);
    QVERIFY(!fixture.button.itemAt(1)->isEnabled());
    QCOMPARE(shownTitles(*fixture.submenu()), QStringList{QStringLiteral("One")});
    fixture.menu()->close();
    refused.clear();
    fixture.openSubmenu();
    QCOMPARE(shownTitles(*fixture.menu()), titles);
    QVERIFY(fixture.button.itemAt(1)->isEnabled());
    QCOMPARE(shownTitles(*fixture.submenu()).size(), 2);
  }

  void itemsMayBeReplacedWhileTheMenuIsOpen() {
    Fixture fixture;
    fixture.openSubmenu();
    fixture.button.removeAllItems();
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    fixture.fill();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    fixture.openSubmenu();
    QCOMPARE(shownTitles(*fixture.menu()), titles);
    QVERIFY(fixture.submenu()->isVisible());
  }

  void itemsMayBeReplacedByTheHandlerOfAnItem_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("byKeyboard");
    for (const int index : {0, 3}) {
      for (const bool byKeyboard : {false, true})
        QTest::addRow("item %d by %s", index, byKeyboard ? "keyboard" : "mouse") << index << byKeyboard;
    }
  }

  void itemsMayBeReplacedByTheHandlerOfAnItem() {
    QFETCH(int, index);
    QFETCH(bool, byKeyboard);
    Fixture fixture;
    connect(&fixture.button, &PopUpButton::itemChosen, [&fixture] {
      fixture.button.removeAllItems();
      fixture.fill();
      fixture.button.selectItem(1);
    });
    for (int time = 1; time <= 2; ++time) {
      fixture.button.openMenu();
      if (byKeyboard) {
        fixture.menu()->setActiveAction(fixture.button.itemAt(index));
        QTest::keyClick(fixture.menu(), Qt::Key_Return);
      } else {
        QTest::mouseClick(fixture.menu(), Qt::LeftButton, {}, fixture.placeOf(index));
      }
      QCOMPARE(fixture.chosen->count(), time);
      QCOMPARE(fixture.button.indexOfSelectedItem(), 1);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  void itemsMayBeReplacedByTheHandlerOfASubmenuItem() {
    Fixture fixture;
    fixture.button.removeAllItems();
    fixture.button.addItem(QStringLiteral("Macro"));
    int runs = 0;
    const auto fill = [&fixture, &runs](QMenu& menu) {
      menu.addAction(QStringLiteral("One"), [&fixture, &runs] {
        ++runs;
        fixture.button.removeAllItems();
        fixture.button.addItem(QStringLiteral("Other"));
      });
    };
    fixture.button.setSubmenu(fixture.button.itemAt(0), QStringLiteral("macros"), fill);
    fixture.button.openMenu();
    fixture.menu()->setActiveAction(fixture.button.itemAt(0));
    QTest::keyClick(fixture.menu(), Qt::Key_Right);
    QMenu* submenu = fixture.button.itemAt(0)->menu();
    QTest::mouseClick(submenu, Qt::LeftButton, {}, submenu->actionGeometry(submenu->actions().constFirst()).center());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(runs, 1);
    QCOMPARE(fixture.button.itemTitle(0), QStringLiteral("Other"));
  }

  void theButtonMayGoAwayWhileItsHandlerRuns() {
    auto button = std::make_unique<PopUpButton>();
    button->addItem(QStringLiteral("One"));
    button->show();
    int runs = 0;
    connect(button.get(), &PopUpButton::itemChosen, [&button, &runs] {
      ++runs;
      button->deleteLater();
      std::ignore = button.release();
    });
    button->openMenu();
    button->menu()->setActiveAction(button->itemAt(0));
    QTest::keyClick(button->menu(), Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(runs, 1);
  }

  void aLongTitleMakesNeitherMenuWide() {
    Fixture fixture;
    const QString name(256, QLatin1Char('W'));
    fixture.button.addItem(name);
    fixture.button.setSubmenu(fixture.button.itemAt(category), QStringLiteral("keymaps"),
                              [&name](QMenu& menu) { menu.addAction(name); });
    fixture.openSubmenu();
    QVERIFY2(fixture.menu()->width() <= 540, qPrintable(QString::number(fixture.menu()->width())));
    QVERIFY2(fixture.submenu()->width() <= 540, qPrintable(QString::number(fixture.submenu()->width())));
  }

  void aThousandItemsStayInOneColumn() {
    Fixture fixture;
    fixture.button.setSubmenu(fixture.button.itemAt(category), QStringLiteral("keymaps"), [](QMenu& menu) {
      for (int number = 0; number < 1000; ++number) menu.addAction(QStringLiteral("Macro %1").arg(number));
    });
    fixture.openSubmenu();
    QVERIFY(fixture.submenu()->height() <= fixture.button.screen()->geometry().height());
    QVERIFY(fixture.submenu()->width() < 300);
    QTest::keyClick(fixture.submenu(), Qt::Key_Up);
    QCOMPARE(titleOf(*fixture.submenu()->activeAction()), QStringLiteral("Macro 999"));
    const QRect last = fixture.submenu()->actionGeometry(fixture.submenu()->activeAction());
    QVERIFY(fixture.submenu()->rect().contains(last.center()));
  }

  void theMenuStaysOnTheScreen() {
    Fixture fixture;
    const QRect screen = fixture.button.screen()->availableGeometry();
    fixture.button.move(screen.right() - 40, screen.bottom() - 20);
    fixture.button.openMenu();
    QVERIFY2(screen.contains(fixture.menu()->geometry()), "the menu leaves the screen");
    QVERIFY(fixture.menu()->geometry().bottom() < fixture.button.geometry().top() + 1);
  }

  void theTooltipSaysTheWholeTitle() {
    Fixture fixture;
    fixture.button.selectItemWithTitle(QStringLiteral("Macro : <i>Fire</i> & &lt; Ice"));
    QHelpEvent help(QEvent::ToolTip, {10, 10}, fixture.button.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&fixture.button, &help);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), fixture.button.shownTitle());
  }

  void theTooltipWrapsLongTitlesOnly() {
    Fixture fixture;
    const auto linesOfTip = [&](const QString& title) {
      fixture.button.selectItemWithTitle(title);
      QHelpEvent help(QEvent::ToolTip, {10, 10}, fixture.button.mapToGlobal(QPoint(10, 10)));
      QApplication::sendEvent(&fixture.button, &help);
      QTextDocument tip;
      tip.setHtml(QToolTip::text());
      return tip.toPlainText().count(QLatin1Char('\n')) + 1;
    };
    QCOMPARE(linesOfTip(QStringLiteral("Single Key : Left Control + Left Shift + Left Alt + F12")), 1);
    QVERIFY(linesOfTip(QStringLiteral("Macro : ") + QStringLiteral("Words ").repeated(100)) > 1);
  }

  void aDisabledButtonSaysWhyInstead() {
    Fixture fixture;
    fixture.button.selectItem(0);
    fixture.button.setEnabled(false);
    fixture.button.setToolTip(QStringLiteral("No mouse connected"));
    QHelpEvent help(QEvent::ToolTip, {10, 10}, fixture.button.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&fixture.button, &help);
    QCOMPARE(QToolTip::text(), QStringLiteral("No mouse connected"));
  }

  void screenReadersHearTheControlAndItsTitle() {
    Fixture fixture;
    fixture.button.selectItem(1);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&fixture.button);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Button 1, Tab key"));
    QCOMPARE(accessible->text(QAccessible::Description), titles[1]);
    QCOMPARE(accessible->role(), QAccessible::ButtonDropDown);
  }

  void fewerWordsAreDrawnAndTheWholeTitleIsSaid() {
    Fixture fixture;
    const QString whole = QStringLiteral("Single Key : Left Control + Left Shift + K");
    const QStringList shorter = {QStringLiteral("Single Key : Ctrl+Shift+K"), QStringLiteral("Ctrl+Shift+K")};
    fixture.button.selectItemWithTitle(whole);
    QCOMPARE(fixture.button.drawnText(), whole);
    fixture.button.setShorterTexts(shorter);
    fixture.button.resize(fixture.button.widthOf(shorter[0]), 26);
    QCOMPARE(fixture.button.drawnText(), shorter[0]);
    const QImage drawn = fixture.button.grab().toImage();
    fixture.button.resize(fixture.button.widthOf(shorter[0]) - 1, 26);
    QCOMPARE(fixture.button.drawnText(), shorter[1]);
    fixture.button.resize(20, 26);
    QCOMPARE(fixture.button.drawnText(), shorter[1]);
    QCOMPARE(fixture.button.shownTitle(), whole);
    QCOMPARE(fixture.button.accessibleDescription(), whole);
    QHelpEvent help(QEvent::ToolTip, {10, 10}, fixture.button.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&fixture.button, &help);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), whole);
    // They belong to this title.
    fixture.button.resize(fixture.button.widthOf(shorter[0]), 26);
    fixture.button.selectItemWithTitle(shorter[0]);
    QCOMPARE(fixture.button.drawnText(), shorter[0]);
    QCOMPARE(fixture.button.grab().toImage(), drawn);
    fixture.button.selectItemWithTitle(whole);
    QCOMPARE(fixture.button.drawnText(), whole);
  }

  void aMutedTitleIsDrawnMutedUntilAnotherOneComes() {
    Fixture fixture;
    fixture.button.selectItem(0);
    const QImage full = fixture.button.grab().toImage();
    fixture.button.setMuted(true);
    QVERIFY(fixture.button.isMuted());
    QVERIFY(fixture.button.grab().toImage() != full);
    fixture.button.selectItem(1);
    QVERIFY(!fixture.button.isMuted());
  }

  void aLockShowsAndSaysItsReason() {
    Fixture fixture;
    const QString reason = QStringLiteral("One left click has to stay");
    fixture.button.selectItem(0);
    fixture.button.setEnabled(false);
    const QImage disabled = fixture.button.grab().toImage();
    fixture.button.setLockReason(reason);
    QVERIFY(fixture.button.grab().toImage() != disabled);
    QCOMPARE(fixture.button.accessibleDescription(), titles[0] + QStringLiteral(". ") + reason);
    QHelpEvent help(QEvent::ToolTip, {10, 10}, fixture.button.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&fixture.button, &help);
    QCOMPARE(QToolTip::text(), reason);
    fixture.button.selectItem(1);
    QCOMPARE(fixture.button.accessibleDescription(), titles[1] + QStringLiteral(". ") + reason);
    fixture.button.selectItem(0);
    fixture.button.setLockReason(QString());
    QCOMPARE(fixture.button.grab().toImage(), disabled);
    QCOMPARE(fixture.button.accessibleDescription(), titles[0]);
  }

  void aButtonThatIsDisabledClosesItsMenu() {
    Fixture fixture;
    fixture.openSubmenu();
    QTRY_VERIFY(fixture.submenu()->isVisible());
    fixture.button.setEnabled(false);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QCOMPARE(fixture.chosen->count(), 0);
  }

  void aLongTitleIsCutInTheClosedButton() {
    Fixture fixture;
    fixture.button.selectItemWithTitle(QString(80, QLatin1Char('W')));
    const QImage whole = fixture.button.grab().toImage();
    fixture.button.selectItemWithTitle(QString(256, QLatin1Char('W')));
    // Both are cut in the middle to the same picture.
    QCOMPARE(fixture.button.grab().toImage(), whole);
    fixture.button.selectItemWithTitle(QStringLiteral("W"));
    QVERIFY(fixture.button.grab().toImage() != whole);
  }
};

SKARN_QTEST(PopUpButtonTest)
#include "PopUpButton_test.moc"
