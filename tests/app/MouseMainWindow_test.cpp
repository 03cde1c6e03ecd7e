// The main window itself: its parts by name, its buttons, its errors.
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QWheelEvent>
#include <memory>

#include "app/CommandLine.h"
#include "app/HubFixture.h"
#include "app/VRCDeviceManager.h"
#include "app/VRCEngineInterface.h"
#include "app/VRCErrorHandler.h"
#include "support/PaintCounter.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

QList<QMessageBox*> alertsOf(QWidget& window) {
  return window.findChildren<QMessageBox*>(QStringLiteral("alert"));
}

QWidget* helpWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == QLatin1String("helpWindow")) return widget;
  }
  return nullptr;
}

QString shownPage(const QWidget& help) {
  return help.findChild<QTextBrowser*>()->source().fileName();
}

}  // namespace

class MouseMainWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void every_control_is_found_by_its_name_data();
  void every_control_is_found_by_its_name();
  void the_six_tabs_stand_in_their_order();
  void selecting_a_tab_by_index_shows_it_and_sends_nothing();
  void everything_fits_at_1024_by_680();
  void a_window_that_is_filled_by_its_contents_is_painted_itself();
  void a_smaller_window_scrolls_to_all_of_it();
  void a_turn_of_the_wheel_that_scrolls_the_window_changes_no_setting();
  void a_profile_name_of_any_length_does_not_widen_the_window();
  void the_community_buttons_open_one_address_each();
  void looking_for_updates_opens_the_support_page();
  void the_help_button_opens_the_first_page_of_the_help_book();
  void the_help_key_opens_the_page_of_the_tab_in_front_data();
  void the_help_key_opens_the_page_of_the_tab_in_front();
  void error_codes_zero_and_one_show_their_texts_data();
  void error_codes_zero_and_one_show_their_texts();
  void any_other_error_code_shows_nothing_data();
  void any_other_error_code_shows_nothing();
  void a_missing_text_is_shown_as_no_translation();
  void an_alert_with_two_buttons_shows_both_in_their_order();
  void hiding_the_connection_sheet_while_it_is_not_shown_has_no_effect();
  void the_connection_sheet_can_be_shown_again_after_it_was_closed();
  void a_missing_engine_installation_is_told();
  void an_installed_engine_is_not_talked_about();
  void the_device_manager_knows_its_product();
  void the_command_line_is_read_whole_data();
  void the_command_line_is_read_whole();
};

void MouseMainWindowTest::every_control_is_found_by_its_name_data() {
  QTest::addColumn<QString>("name");
  for (const char* name : {"mMouseTabView",
                           "mAppySettings",
                           "mDeviceLogo",
                           "mDeviceConnectivity",
                           "mBattery",
                           "mBusyIndicator",
                           "mDeviceConnectionWindow",
                           "mDeviceConnectionAlertTitle",
                           "mDeviceConnectionAlertDesc",
                           "mDeviceConnectionOK",
                           "mCommunityFBLink",
                           "mCommunityTwitterLink",
                           "mCommunityVornGuildLink",
                           "mRestoringStateWindow",
                           "mRestoringStateProgress",
                           "mHelpButton",
                           "MouseButtonController",
                           "MouseProfilesController",
                           "MouseMacrosController",
                           "MousePerformanceController",
                           "MouseLightingController",
                           "MouseMaintenanceController"}) {
    QTest::newRow(name) << name;
  }
}

void MouseMainWindowTest::every_control_is_found_by_its_name() {
  QFETCH(QString, name);
  HubFixture fixture;
  fixture.create();
  QCOMPARE(fixture.window.objectName(), QStringLiteral("mMouseMainView"));
  QCOMPARE(fixture.window.findChildren<QWidget*>(name).size(), 1);
}

void MouseMainWindowTest::the_six_tabs_stand_in_their_order() {
  HubFixture fixture;
  auto* tabs = fixture.window.ui().mMouseTabView;
  QStringList pages;
  QStringList titles;
  for (int i = 0; i < tabs->count(); ++i) {
    pages << tabs->widget(i)->objectName();
    titles << tabs->tabText(i);
  }
  QCOMPARE(pages, (QStringList{"MouseButtonController", "MouseProfilesController", "MouseMacrosController",
                               "MousePerformanceController", "MouseLightingController", "MouseMaintenanceController"}));
  QCOMPARE(titles, (QStringList{"Buttons", "Profiles", "Macros", "Performance", "Lighting", "Maintenance"}));
}

void MouseMainWindowTest::selecting_a_tab_by_index_shows_it_and_sends_nothing() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.hub().selectTabAtIndex(2);
  QCOMPARE(fixture.window.ui().mMouseTabView->currentWidget()->objectName(), QStringLiteral("MouseMacrosController"));
  fixture.hub().selectTabAtIndex(99);
  QCOMPARE(fixture.window.ui().mMouseTabView->currentWidget()->objectName(), QStringLiteral("MouseMacrosController"));
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainWindowTest::everything_fits_at_1024_by_680() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.window.resize(1024, 680);
  const QScrollArea* area = fixture.window.ui().mScrollArea;
  QTRY_COMPARE(area->viewport()->size(), QSize(1024, 680));
  QCOMPARE(fixture.window.ui().MouseMainViewController->size(), QSize(1024, 680));
  const QSize least = fixture.window.ui().MouseMainViewController->layout()->minimumSize();
  QVERIFY(least.width() <= 1024 && least.height() <= 680);
}

// What waits for the first paint would wait for the time-out of desktops that show no frames.
void MouseMainWindowTest::a_window_that_is_filled_by_its_contents_is_painted_itself() {
  MouseMainWindow window;
  window.resize(1180, 760);
  window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&window));
  QTRY_COMPARE(window.ui().mScrollArea->viewport()->size(), window.size());
  PaintCounter counter(&window);
  window.repaint();
  QCOMPARE(counter.paints, 1);
}

void MouseMainWindowTest::a_smaller_window_scrolls_to_all_of_it() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.window.resize(800, 500);
  const QScrollArea* area = fixture.window.ui().mScrollArea;
  QTRY_VERIFY(area->verticalScrollBar()->isVisible() && area->horizontalScrollBar()->isVisible());
  QVERIFY(fixture.window.ui().MouseMainViewController->height() >= 680);
  const auto isSeen = [&](const QWidget* control) {
    const QRect place(control->mapTo(area->viewport(), QPoint(0, 0)), control->size());
    return area->viewport()->rect().contains(place);
  };
  QWidget* apply = fixture.window.ui().mAppySettings;
  QVERIFY(!isSeen(apply));
  // What takes the keyboard comes into view.
  fixture.window.activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&fixture.window));
  fixture.window.ui().mHelpButton->setFocus();
  for (int i = 0; i < 3 && !apply->hasFocus(); ++i) QTest::keyClick(fixture.window.focusWidget(), Qt::Key_Tab);
  QVERIFY(apply->hasFocus());
  QVERIFY(isSeen(apply));
}

void MouseMainWindowTest::a_turn_of_the_wheel_that_scrolls_the_window_changes_no_setting() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.hub().selectTabAtIndex(3);
  auto* slider = fixture.window.findChild<QAbstractSlider*>(QStringLiteral("mXDpiSlider"));
  QVERIFY(slider != nullptr);
  const auto turnOver = [&] {
    const QPointF middle = slider->rect().center();
    QWheelEvent turn(middle, slider->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(slider, &turn);
  };
  fixture.window.resize(1024, 500);
  const QScrollBar* bar = fixture.window.ui().mScrollArea->verticalScrollBar();
  QTRY_VERIFY(bar->maximum() > 0);
  turnOver();
  QVERIFY(bar->value() > 0);
  QVERIFY(fixture.link.requests.empty());
  // Where nothing scrolls, the slider takes it.
  fixture.window.resize(1024, 700);
  QTRY_COMPARE(bar->maximum(), 0);
  const int before = slider->value();
  turnOver();
  QVERIFY(slider->value() != before);
}

void MouseMainWindowTest::a_profile_name_of_any_length_does_not_widen_the_window() {
  HubFixture fixture;
  const std::string name = "<b>" + std::string(300, 'W');
  fixture.startConnected(bundleWith({name}));
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QString::fromStdString(name));
  QCOMPARE(fixture.window.ui().mHeaderProfileName->textFormat(), Qt::PlainText);
  const QLayout* content = fixture.window.ui().MouseMainViewController->layout();
  QVERIFY2(content->minimumSize().width() <= 1024, qPrintable(QString::number(content->minimumSize().width())));
}

void MouseMainWindowTest::looking_for_updates_opens_the_support_page() {
  HubFixture fixture;
  fixture.create();
  auto* button = fixture.window.findChild<QAbstractButton*>(QStringLiteral("mCheckUpdates"));
  button->click();
  QCOMPARE(fixture.opened, std::vector<std::string>{addressOf(WebPage::Support).toString().toStdString()});
  QVERIFY(fixture.link.requests.empty());
  // The window outlives the hub and its services.
  fixture.delegate.reset();
  button->click();
  QCOMPARE(fixture.opened.size(), std::size_t{1});
}

void MouseMainWindowTest::the_community_buttons_open_one_address_each() {
  HubFixture fixture;
  fixture.create();
  fixture.window.ui().mCommunityFBLink->click();
  fixture.window.ui().mCommunityTwitterLink->click();
  fixture.window.ui().mCommunityVornGuildLink->click();
  QCOMPARE(fixture.opened.size(), std::size_t{3});
  const WebPage pages[] = {WebPage::Community, WebPage::News, WebPage::Guild};
  for (std::size_t i = 0; i < 3; ++i) QCOMPARE(fixture.opened[i], addressOf(pages[i]).toString().toStdString());
  fixture.opensAddresses = false;
  fixture.window.ui().mCommunityTwitterLink->click();
  const auto* alert = fixture.window.findChild<QMessageBox*>(QStringLiteral("alert"));
  QVERIFY(alert != nullptr && alert->isVisible());
  QVERIFY(alert->informativeText().endsWith(addressOf(WebPage::News).toString()));
}

void MouseMainWindowTest::the_help_button_opens_the_first_page_of_the_help_book() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.window.ui().mHelpButton->click();
  const std::unique_ptr<QWidget> help(helpWindow());
  QVERIFY(help && help->isVisible());
  QCOMPARE(shownPage(*help), QStringLiteral("index.html"));
}

void MouseMainWindowTest::the_help_key_opens_the_page_of_the_tab_in_front_data() {
  QTest::addColumn<QString>("page");
  QTest::newRow("MouseButtonController") << "buttons.html";
  QTest::newRow("MouseProfilesController") << "profiles.html";
  QTest::newRow("MouseMacrosController") << "macros.html";
  QTest::newRow("MousePerformanceController") << "performance.html";
  QTest::newRow("MouseLightingController") << "lighting.html";
  QTest::newRow("MouseMaintenanceController") << "maintenance.html";
}

void MouseMainWindowTest::the_help_key_opens_the_page_of_the_tab_in_front() {
  QFETCH(QString, page);
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.window.activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&fixture.window));
  QTabWidget* tabs = fixture.window.ui().mMouseTabView;
  tabs->setCurrentWidget(fixture.page(QTest::currentDataTag()));
  QTest::keyClick(&fixture.window, Qt::Key_F1);
  const std::unique_ptr<QWidget> help(helpWindow());
  QVERIFY(help && help->isVisible());
  QCOMPARE(shownPage(*help), page);
}

void MouseMainWindowTest::error_codes_zero_and_one_show_their_texts_data() {
  QTest::addColumn<int>("code");
  QTest::addColumn<QString>("title");
  QTest::addColumn<QString>("description");
  installTranslations(QStringLiteral("en"));
  QTest::newRow("0") << 0 << localized("lkeyCommErrorTitle") << localized("lkeyCommErrorDesc");
  QTest::newRow("1") << 1 << localized("lkeyDeviceNotFoundTitle") << localized("lkeyDeviceNotFoundDesc");
}

void MouseMainWindowTest::error_codes_zero_and_one_show_their_texts() {
  QFETCH(int, code);
  QFETCH(QString, title);
  QFETCH(QString, description);
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.hub().showErrorForErrorCode(code);
  QCOMPARE(alertsOf(fixture.window).size(), 1);
  const QMessageBox* alert = alertsOf(fixture.window).constFirst();
  QCOMPARE(alert->text(), title);
  QCOMPARE(alert->informativeText(), description);
  QCOMPARE(alert->windowModality(), Qt::WindowModal);
  QCOMPARE(alert->parentWidget(), &fixture.window);
  QVERIFY(title != QStringLiteral("No Translation"));
}

void MouseMainWindowTest::any_other_error_code_shows_nothing_data() {
  QTest::addColumn<int>("code");
  QTest::newRow("2") << 2;
  QTest::newRow("-1") << -1;
  QTest::newRow("the largest") << std::numeric_limits<int>::max();
}

void MouseMainWindowTest::any_other_error_code_shows_nothing() {
  QFETCH(int, code);
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.hub().showErrorForErrorCode(code);
  QVERIFY(alertsOf(fixture.window).isEmpty());
}

void MouseMainWindowTest::a_missing_text_is_shown_as_no_translation() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  VRCErrorHandler::showErrorWithTitle(localized("lkeyThatNobodyWrote"), localized("lkeyNorThis"), localized("lkeyOK"),
                                      QString(), &fixture.window);
  const QMessageBox* alert = alertsOf(fixture.window).constFirst();
  QCOMPARE(alert->text(), QStringLiteral("No Translation"));
  QCOMPARE(alert->informativeText(), QStringLiteral("No Translation"));
  QCOMPARE(alert->buttons().constFirst()->text(), QStringLiteral("OK"));
}

void MouseMainWindowTest::an_alert_with_two_buttons_shows_both_in_their_order() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  VRCErrorHandler::showErrorWithTitle("Title", "Description", "Yes", "No", &fixture.window);
  const QMessageBox* alert = alertsOf(fixture.window).constFirst();
  QCOMPARE(alert->buttons().size(), 2);
  QCOMPARE(alert->defaultButton()->text(), QStringLiteral("Yes"));
}

void MouseMainWindowTest::hiding_the_connection_sheet_while_it_is_not_shown_has_no_effect() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.hub().hideErrorDialog();
  QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
  QVERIFY(fixture.window.isVisible());
}

void MouseMainWindowTest::the_connection_sheet_can_be_shown_again_after_it_was_closed() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  for (int round = 0; round < 2; ++round) {
    fixture.hub().showErrorDialog();
    QVERIFY(fixture.isShown("mDeviceConnectionWindow"));
    fixture.hub().clickOKButton();
    QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
  }
}

void MouseMainWindowTest::a_missing_engine_installation_is_told() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  const QTemporaryDir folder;
  VRCEngineInterface interface(nullptr, folder.filePath("VrCoreEngine.framework"));
  interface.setMParentWindow(&fixture.window);
  interface.checkEngine();
  const QMessageBox* alert = alertsOf(fixture.window).constFirst();
  QCOMPARE(alert->text(), QStringLiteral("File is missing"));
  QCOMPARE(alert->informativeText(), QStringLiteral("Software component necessary for the operation is missing. "
                                                    "Please install the software from the software CD-ROM"));
  QCOMPARE(alert->buttons().constFirst()->text(), QStringLiteral("OK"));
}

void MouseMainWindowTest::an_installed_engine_is_not_talked_about() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  const QTemporaryDir folder;
  VRCEngineInterface interface(nullptr, folder.path());
  interface.setMParentWindow(&fixture.window);
  interface.checkEngine();
  QVERIFY(alertsOf(fixture.window).isEmpty());
}

void MouseMainWindowTest::the_device_manager_knows_its_product() {
  const VRCDeviceManager manager;
  QCOMPARE(manager.mProductName(), QStringLiteral("Tavikon"));
  QCOMPARE(manager.mProductPID(), 31U);
}

void MouseMainWindowTest::the_command_line_is_read_whole_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<int>("isDefaultLaunch");  // -1 for no key
  QTest::addColumn<bool>("isVerbose");
  QTest::addColumn<QString>("picture");
  QTest::addColumn<QString>("tab");
  QTest::addColumn<bool>("isBad");
  QTest::newRow("nothing") << QStringList{} << 1 << false << ""
                           << "" << false;
  QTest::newRow("background") << QStringList{"--launch-in-background"} << 0 << false << ""
                              << "" << false;
  QTest::newRow("no key") << QStringList{"--no-launch-key", "--verbose"} << -1 << true << ""
                          << "" << false;
  QTest::newRow("values") << QStringList{"--picture", "a.png", "--tab=macros"} << 1 << false << "a.png"
                          << "macros" << false;
  QTest::newRow("missing value") << QStringList{"--picture"} << 1 << false << ""
                                 << "" << true;
  QTest::newRow("unknown tab") << QStringList{"--tab", "x"} << 1 << false << ""
                               << "x" << true;
  QTest::newRow("unknown appearance") << QStringList{"--appearance", "x"} << 1 << false << ""
                                      << "" << true;
  QTest::newRow("unknown option") << QStringList{"--nonsense"} << 1 << false << ""
                                  << "" << true;
  QTest::newRow("a stray word") << QStringList{"word"} << 1 << false << ""
                                << "" << true;
}

void MouseMainWindowTest::the_command_line_is_read_whole() {
  QFETCH(QStringList, arguments);
  QFETCH(int, isDefaultLaunch);
  QFETCH(bool, isVerbose);
  QFETCH(QString, picture);
  QFETCH(QString, tab);
  QFETCH(bool, isBad);
  const CommandLine line = CommandLine::parse(arguments);
  QCOMPARE(line.launch.isDefaultLaunch.has_value(), isDefaultLaunch >= 0);
  if (isDefaultLaunch >= 0) QCOMPARE(*line.launch.isDefaultLaunch, isDefaultLaunch == 1);
  QCOMPARE(line.isVerbose, isVerbose);
  QCOMPARE(line.picture, picture);
  QCOMPARE(line.tab, tab);
  QCOMPARE(!line.error.isEmpty(), isBad);
}

SKARN_QTEST(MouseMainWindowTest)
#include "MouseMainWindow_test.moc"
