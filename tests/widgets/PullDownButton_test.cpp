// Menus whose items are told apart by a tag.
#include "widgets/PullDownButton.h"

#include <QApplication>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

namespace {

const std::vector<TaggedItem> items = {{1, QStringLiteral("Rename")}, {3, QStringLiteral("Cut & Paste")}};

QAction* itemOf(QMenu& menu, int tag) {
  for (QAction* item : menu.actions()) {
    if (tagOf(*item) == tag) return item;
  }
  return nullptr;
}

}  // namespace

class PullDownButtonTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void theHoverEndsWithTheMenuWhereThePointerLeftTheButton() {
    QWidget window;
    window.resize(300, 200);
    PullDownButton button(&window);
    button.setAutoRaise(true);
    button.setItems(items, QStringLiteral("selectMenuItem"), [](int) {});
    window.show();
    QTest::mouseMove(&window, QPoint(250, 150));
    const QImage normal = button.grab().toImage();
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseMove(button.menu(), QPoint(5, 5));
    // As the window system has it that tells no leave while a menu is open.
    button.setAttribute(Qt::WA_UnderMouse);
    QVERIFY(button.grab().toImage() != normal);
    QTest::mouseMove(&window, QPoint(250, 150));
    QTest::keyClick(button.menu(), Qt::Key_Escape);
    QVERIFY(!button.underMouse());
    QCOMPARE(button.grab().toImage(), normal);
  }

  void eachItemCarriesTheOperationItsTagAndItsTitleAsItStands() {
    PullDownButton button;
    button.setItems(items, QStringLiteral("selectMenuItem"), [](int) {});
    QStringList found;
    for (const QAction* item : button.menu()->actions()) {
      found << QStringLiteral("%1 %2 %3").arg(item->objectName()).arg(tagOf(*item)).arg(titleOf(*item));
    }
    QCOMPARE(found, QStringList({"selectMenuItem 1 Rename", "selectMenuItem 3 Cut & Paste"}));
  }

  void choosingAnItemGivesItsTagOnce() {
    PullDownButton button;
    QList<int> chosen;
    button.setItems(items, QStringLiteral("selectMenuItem"), [&](int tag) { chosen << tag; });
    itemOf(*button.menu(), 3)->trigger();
    QCOMPARE(chosen, QList<int>{3});
  }

  void itemsStandInSubmenusUnderLinesAndWithTheirKeys() {
    PullDownButton button;
    QList<int> chosen;
    button.setItems({{1, QStringLiteral("Cut"), QKeySequence(Qt::CTRL | Qt::Key_X)},
                     {2, QStringLiteral("Key"), {}, QStringLiteral("Before"), true},
                     {3, QStringLiteral("Key"), {}, QStringLiteral("After")},
                     {4, QStringLiteral("Delay"), {}, QStringLiteral("Before")},
                     {5, QStringLiteral("Together"), {}, {}, false, true}},
                    QStringLiteral("selectMenuItem"), [&](int tag) { chosen << tag; });
    QStringList shown;
    for (const QAction* action : button.menu()->actions()) shown << (action->isSeparator() ? "-" : titleOf(*action));
    QCOMPARE(shown, (QStringList{"Cut", "-", "Before", "After", "Together"}));
    QList<int> tags;
    for (QAction* item : taggedItems(*button.menu())) {
      tags << tagOf(*item);
      item->trigger();
    }
    QCOMPARE(tags, (QList<int>{1, 2, 4, 3, 5}));
    QCOMPARE(chosen, tags);
    QCOMPARE(itemOf(*button.menu(), 1)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_X));
    QVERIFY(itemOf(*button.menu(), 5)->isCheckable());
  }

  void itemsSetAnewReplaceTheOldOnes() {
    PullDownButton button;
    button.setItems(items, QStringLiteral("selectMenuItem"), [](int) {});
    button.setItems({{7, QStringLiteral("Delete")}}, QStringLiteral("selectMenuItem"), [](int) {});
    QCOMPARE(button.menu()->actions().size(), 1);
    QCOMPARE(tagOf(*button.menu()->actions().constFirst()), 7);
  }

  void itemsAreValidatedEachTimeTheMenuOpens() {
    PullDownButton button;
    button.setItems(items, QStringLiteral("selectMenuItem"), [](int) {});
    int allowed = 1;
    button.setValidator([&](const QAction& item) { return tagOf(item) == allowed; });
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    const auto opened = [&] {
      button.menu()->popup(button.mapToGlobal(QPoint()));
      const std::pair<bool, bool> state(itemOf(*button.menu(), 1)->isEnabled(), itemOf(*button.menu(), 3)->isEnabled());
      button.menu()->close();
      return state;
    };
    QCOMPARE(opened(), std::make_pair(true, false));
    allowed = 3;
    QCOMPARE(opened(), std::make_pair(false, true));
  }

  void theMenuOpensByAPressAndByKeyboard_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("press") << 0;
    QTest::newRow("Space") << static_cast<int>(Qt::Key_Space);
    QTest::newRow("Return") << static_cast<int>(Qt::Key_Return);
    QTest::newRow("Down") << static_cast<int>(Qt::Key_Down);
    QTest::newRow("F4") << static_cast<int>(Qt::Key_F4);
  }
  void theMenuOpensByAPressAndByKeyboard() {
    QFETCH(int, key);
    PullDownButton button;
    button.setItems(items, QStringLiteral("selectMenuItem"), [](int) {});
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    if (key == 0) {
      QTest::mousePress(&button, Qt::LeftButton);
    } else {
      QTest::keyClick(&button, static_cast<Qt::Key>(key));
    }
    // The event has been handled by now: no event loop runs inside it.
    QVERIFY(button.menu()->isVisible());
    QVERIFY(button.isDown());
    QTest::keyClick(button.menu(), Qt::Key_Escape);
    QVERIFY(!button.menu()->isVisible());
    QVERIFY(!button.isDown());
  }
};

SKARN_QTEST(PullDownButtonTest)
#include "PullDownButton_test.moc"
