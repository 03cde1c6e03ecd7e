// The choice of the mouse in the real window with the real engine. Machines with mice of their own list these besides.
#include <QAbstractItemModel>
#include <QTableView>
#include <QToolButton>

#include "app/MouseSheet.h"
#include "e2e/OpenWindow.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

class OpenMice : public OpenWindow {
 public:
  QToolButton& header() { return *find<QToolButton>("mChooseMouse"); }
  bool isSheetOpen() {
    const auto* sheet = window().findChild<QWidget*>(QStringLiteral("mMouseSheet"));
    return sheet != nullptr && sheet->isVisible();
  }
  QStringList columnOf(const QString& mouse) {
    const QAbstractItemModel& model = *find<QTableView>("mMouseTable")->model();
    for (int row = 0; row < model.rowCount(); ++row) {
      if (model.index(row, 0).data().toString() != mouse) continue;
      return {model.index(row, 1).data().toString(), model.index(row, 2).data().toString()};
    }
    return {};
  }
};

}  // namespace

class MouseChoiceWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void the_header_opens_the_list_with_the_virtual_mouse_in_use() {
    OpenMice open;
    QTRY_VERIFY_WITH_TIMEOUT(open.header().isEnabled(), deadline);
    QTest::mouseClick(&open.header(), Qt::LeftButton);
    QVERIFY(open.isSheetOpen());
    QCOMPARE(open.columnOf(localized("lkeyVirtualMouse")),
             (QStringList{localized("lkeyMouseVirtual"), localized("lkeyMouseInUse")}));
    for (const char* button : {"mMouseTeach", "mMouseResolution", "mMouseForget"})
      QVERIFY(!open.find<QPushButton>(button)->isEnabled());
  }

  void the_sheet_closes_with_the_engine() {
    OpenMice open;
    QTRY_VERIFY_WITH_TIMEOUT(open.header().isEnabled(), deadline);
    QTest::mouseClick(&open.header(), Qt::LeftButton);
    mEngine.kill();
    QTRY_VERIFY_WITH_TIMEOUT(!open.isSheetOpen(), deadline);
    QTRY_VERIFY_WITH_TIMEOUT(!open.header().isEnabled(), deadline);
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(MouseChoiceWithEngineTest)
#include "mouse_choice_with_engine_test.moc"
