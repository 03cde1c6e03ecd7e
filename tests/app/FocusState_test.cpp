#include "app/FocusState.h"

#include "app/HubFixture.h"
#include "protocol/Focus.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

PropertyList known(std::string_view source) {
  return PropertyList::dictionary({{vorn::focus::keys::Source, source}});
}

struct FollowedFocus {
  FollowedFocus() {
    QObject::connect(&focus, &FocusState::changed, [this] { ++changes; });
  }

  ScriptedLink link;
  FocusState focus{link};
  int changes = 0;
};

// The window with an engine, on one of its tabs.
struct FocusHub : HubFixture {
  void show(QWidget* page) { window.ui().mMouseTabView->setCurrentWidget(page); }
  QString told() const { return window.findChild<QLabel*>(QStringLiteral("mFollowing"))->text(); }
};

}  // namespace

class FocusStateTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void it_asks_when_somebody_begins_to_look() {
    FollowedFocus one;
    QCOMPARE(one.link.unansweredFocus(), 0U);
    one.focus.begin();
    one.focus.begin();
    QCOMPARE(one.link.unansweredFocus(), 1U);
    QVERIFY(one.focus.state().isNone());
    QVERIFY(one.link.answerFocus(known("x11")));
    QCOMPARE(one.focus.state(), known("x11"));
    QCOMPARE(one.changes, 1);
  }

  void news_are_asked_for_and_those_that_come_meanwhile_once() {
    FollowedFocus one;
    one.focus.begin();
    for (int news = 0; news < 5; ++news) one.link.focusChanged();
    QCOMPARE(one.link.unansweredFocus(), 1U);
    QVERIFY(one.link.answerFocus(known("x11")));
    QCOMPARE(one.link.unansweredFocus(), 1U);
    QVERIFY(one.link.answerFocus(known("x11")));
    QCOMPARE(one.link.unansweredFocus(), 0U);
    QCOMPARE(one.changes, 1);
  }

  void what_is_known_stays_while_nobody_looks() {
    FollowedFocus one;
    one.focus.begin();
    QVERIFY(one.link.answerFocus(known("x11")));
    one.focus.rest();
    QVERIFY(!one.link.focusChanged);
    QCOMPARE(one.focus.state(), known("x11"));
    one.focus.begin();
    QVERIFY(one.link.answerFocus(known("kwin")));
    QCOMPARE(one.focus.state(), known("kwin"));
  }

  void an_answer_that_comes_when_nobody_looks_is_nobodys() {
    FollowedFocus one;
    one.focus.begin();
    one.focus.rest();
    one.focus.begin();
    QCOMPARE(one.link.unansweredFocus(), 2U);
    QVERIFY(one.link.answerFocus(known("old")));
    QVERIFY(one.focus.state().isNone());
    QVERIFY(one.link.answerFocus(known("x11")));
    QCOMPARE(one.focus.state(), known("x11"));
  }

  void nothing_is_known_without_an_engine() {
    FollowedFocus one;
    one.focus.begin();
    QVERIFY(one.link.answerFocus(known("x11")));
    one.focus.end();
    QVERIFY(one.focus.state().isNone());
    QVERIFY(!one.link.focusChanged);
    QCOMPARE(one.changes, 2);
  }

  void the_window_asks_while_the_profiles_tab_is_in_sight() {
    FocusHub one;
    one.startConnected(bundleWith({"Work"}));
    one.show(one.window.ui().MouseButtonController);
    QCOMPARE(one.link.unansweredFocus(), 0U);
    one.show(one.window.ui().MouseProfilesController);
    QCOMPARE(one.link.unansweredFocus(), 1U);
    QVERIFY(one.link.answerFocus(known("x11")));
    QCOMPARE(one.told(), localized("lkeyFollowingOffer").arg(localized("lkeyFollowingX11")));
    QVERIFY(one.link.focusChanged);
    one.show(one.window.ui().MouseButtonController);
    QVERIFY(!one.link.focusChanged);
    QCOMPARE(one.told(), localized("lkeyFollowingOffer").arg(localized("lkeyFollowingX11")));
  }

  void the_window_tells_nothing_when_the_engine_goes_and_asks_when_it_comes() {
    FocusHub one;
    one.startConnected(bundleWith({"Work"}));
    one.show(one.window.ui().MouseProfilesController);
    QVERIFY(one.link.answerFocus(known("x11")));
    one.link.engineChanged(false);
    QCOMPARE(one.told(), QString());
    QVERIFY(!one.link.focusChanged);
    one.link.engineChanged(true);
    QCOMPARE(one.link.unansweredFocus(), 1U);
  }
};

SKARN_QTEST(FocusStateTest)
#include "FocusState_test.moc"
