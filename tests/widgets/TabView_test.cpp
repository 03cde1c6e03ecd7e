// Tabs and where the keyboard goes with them.
#include "widgets/TabView.h"

#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QVBoxLayout>

#include "support/QtTests.h"

using namespace skarn;

class TabViewTest : public QObject {
  Q_OBJECT

 private slots:
  // A control that got the keyboard would be scrolled to in a small window, and the tabs out of it.
  void aClickOnATabLeavesTheKeyboardAtTheTabs() {
    TabView tabs;
    for (const char* title : {"One", "Two"}) {
      auto* page = new QWidget;
      auto* layout = new QVBoxLayout(page);
      layout->addWidget(new QPushButton(page));
      tabs.addTab(page, QString::fromLatin1(title));
    }
    tabs.show();
    tabs.widget(0)->findChild<QPushButton*>()->setFocus();
    QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(1).center());
    QCOMPARE(tabs.currentIndex(), 1);
    QCOMPARE(tabs.focusWidget(), tabs.tabBar());
  }
};

SKARN_QTEST(TabViewTest)
#include "TabView_test.moc"
