#include "widgets/MenuKey.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <vector>

#include "support/QtTests.h"

using namespace skarn;

namespace {

class Asked : public QPushButton {
 public:
  using QPushButton::QPushButton;
  std::vector<QContextMenuEvent::Reason> reasons;

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override { reasons.push_back(event->reason()); }
};

struct Window : QWidget {
  Window() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(first);
    layout->addWidget(second);
    show();
    activateWindow();
    if (!QTest::qWaitForWindowActive(this)) QTest::qFail("the window is active", __FILE__, __LINE__);
    second->setFocus();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers) { QTest::keyClick(windowHandle(), key, modifiers); }

  Asked* first = new Asked(this);
  Asked* second = new Asked(this);
};

using Reasons = std::vector<QContextMenuEvent::Reason>;

}  // namespace

class MenuKeyTest : public QObject {
  Q_OBJECT

 private slots:
  void shift_and_f10_ask_for_the_menu_of_what_the_keyboard_has_reached() {
    const MenuKey menuKey;
    Window window;
    window.press(Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(window.second->reasons == Reasons{QContextMenuEvent::Keyboard});
    QVERIFY(window.first->reasons.empty());
  }

  void no_other_key_does() {
    const MenuKey menuKey;
    Window window;
    window.press(Qt::Key_F10, Qt::NoModifier);
    window.press(Qt::Key_F10, Qt::ShiftModifier | Qt::ControlModifier);
    window.press(Qt::Key_F9, Qt::ShiftModifier);
    QVERIFY(window.second->reasons.empty());
  }

  void an_open_menu_keeps_the_keyboard() {
    const MenuKey menuKey;
    Window window;
    QMenu menu;
    menu.addAction(QStringLiteral("one"));
    menu.popup(window.mapToGlobal(QPoint()));
    window.press(Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(menu.isVisible());
    QVERIFY(window.second->reasons.empty());
  }
};

SKARN_QTEST(MenuKeyTest)
#include "MenuKey_test.moc"
