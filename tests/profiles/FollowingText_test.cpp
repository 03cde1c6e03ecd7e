#include "profiles/FollowingText.h"

#include <QLabel>

#include "profiles/ProfilesTabTest.h"
#include "protocol/Focus.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

namespace words = vorn::focus::keys;

PropertyList worksBy(std::string_view source) {
  return PropertyList::dictionary({{words::Source, source}, {words::Needs, ""}});
}
PropertyList needs(std::string_view need) {
  return PropertyList::dictionary({{words::Source, ""}, {words::Needs, need}});
}
QString works(const char* teller) {
  return localized("lkeyFollowingWorks").arg(localized(teller));
}
QString offer(const char* teller) {
  return localized("lkeyFollowingOffer").arg(localized(teller));
}

}  // namespace

class FollowingTextTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void nothing_is_told_while_nothing_is_known() {
    QCOMPARE(followingText({}, true), QString());
    QCOMPARE(followingText(PropertyList("x11"), true), QString());
    QCOMPARE(followingText(needs(""), false), QString());
  }

  void who_tells_is_named_where_a_profile_asks_for_it() {
    QCOMPARE(followingText(worksBy("x11"), true), works("lkeyFollowingX11"));
    QCOMPARE(followingText(worksBy("wlroots"), true), works("lkeyFollowingWayland"));
    QCOMPARE(followingText(worksBy("kwin"), true), works("lkeyFollowingKDE"));
    QCOMPARE(followingText(worksBy("bus"), true), works("lkeyFollowingProgram"));
    QCOMPARE(works("lkeyFollowingKDE"),
             QStringLiteral("Auto switch works on this desktop: KDE Plasma tells which application is in front."));
  }

  void it_is_offered_where_no_profile_asks_for_it() {
    QCOMPARE(followingText(worksBy("x11"), false), offer("lkeyFollowingX11"));
    QCOMPARE(followingText(worksBy("bus"), false), offer("lkeyFollowingProgram"));
    QCOMPARE(offer("lkeyFollowingWayland"),
             QStringLiteral("Auto switch makes a profile active while its application is in front. It works on this "
                            "desktop, by what the Wayland desktop tells."));
  }

  void what_is_missing_is_told_in_any_case() {
    for (const bool isAskedFor : {false, true}) {
      QCOMPARE(followingText(needs("gnome-extension"), isAskedFor), localized("lkeyFollowingNeedsExtension"));
      QCOMPARE(followingText(needs("kde"), isAskedFor), localized("lkeyFollowingNeedsKDE"));
      QCOMPARE(followingText(needs("display"), isAskedFor), localized("lkeyFollowingNeedsDisplay"));
      QCOMPARE(followingText(needs("compositor"), isAskedFor), localized("lkeyFollowingNeedsDesktop"));
      QCOMPARE(followingText(needs("something new"), isAskedFor), localized("lkeyFollowingNeedsDesktop"));
    }
  }

  void the_tab_tells_it_under_its_table_and_follows_the_profiles() {
    ProfilesTab tab;
    tab.delegate.list = namedProfiles({"One", "Two"});
    tab.show();
    const auto* line = tab.find<QLabel>("mFollowing");
    QVERIFY(line != nullptr);
    QVERIFY(line->geometry().top() > tab.table().geometry().bottom());
    QCOMPARE(line->text(), QString());
    const int height = tab.table().height();
    tab.tab->setFocusState(worksBy("kwin"));
    QCOMPARE(line->text(), offer("lkeyFollowingKDE"));
    tab.delegate.list = tab.delegate.list.replacing(1, tab.delegate.list.at(1).with(keys::AutoSwitchOn, 1));
    tab.delegate.reload();
    QCOMPARE(line->text(), works("lkeyFollowingKDE"));
    QApplication::processEvents();
    QCOMPARE(tab.table().height(), height);
    tab.tab->setFocusState({});
    QCOMPARE(line->text(), QString());
    VERIFY_CALLS(tab.delegate.calls, {});
  }
};

SKARN_QTEST(FollowingTextTest)
#include "FollowingText_test.moc"
