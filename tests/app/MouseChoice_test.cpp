#include "app/MouseChoice.h"

#include <optional>

#include "app/MiceFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MiceCall;
using vorn::MiceRequest;
using vorn::PropertyList;
using Outcome = MouseChoice::Outcome;

namespace {

const PropertyList acme = realMouse("usb-1", "Acme");

struct FollowedMice {
  FollowedMice() {
    QObject::connect(&choice, &MouseChoice::changed, [this] { ++changes; });
    choice.begin();
  }
  bool answer(std::vector<PropertyList> mice) {
    return link.answerMice({Outcome::Done, PropertyList::array(std::move(mice))});
  }
  std::size_t asked() const { return link.miceRequests.size(); }

  ScriptedLink link;
  MouseChoice choice{link};
  int changes = 0;
};

}  // namespace

class MouseChoiceTest : public QObject {
  Q_OBJECT

 private slots:
  void it_reads_what_the_engine_tells_of_a_mouse() {
    FollowedMice one;
    QVERIFY(!one.choice.isKnown());
    QVERIFY(one.answer({acme.with(miceKeys::IsInUse, true)
                            .with(miceKeys::Connection, "wireless")
                            .with(miceKeys::Taught, stringArray({"03"}))
                            .with(miceKeys::Sensitivity, "hardware")
                            .with(miceKeys::HasLight, true)
                            .with(miceKeys::HasBattery, true)
                            .with(miceKeys::Held, stringArray({"/dev/input/event5"}))
                            .with(miceKeys::Busy, stringArray({"/dev/input/event4"})),
                        virtualMouse()}));
    QVERIFY(one.choice.isKnown());
    QCOMPARE(one.choice.mice().size(), 2U);
    const MouseDescription expected{.id = "usb-1",
                                    .name = "Acme",
                                    .connection = MouseDescription::Connection::Wireless,
                                    .isInUse = true,
                                    .isPresent = true,
                                    .isAllowed = true,
                                    .forbidden = {},
                                    .controls = {"03", "06", "07"},
                                    .taught = {"03"},
                                    .resolution = 1600,
                                    .sensitivity = MouseDescription::Sensitivity::Hardware,
                                    .hasLight = true,
                                    .hasBattery = true,
                                    .held = {"/dev/input/event5"},
                                    .busy = {"/dev/input/event4"}};
    QVERIFY(one.choice.inUse() != nullptr && *one.choice.inUse() == expected);
    QVERIFY(one.choice.mice()[1].isVirtual());
  }

  void what_has_no_name_to_choose_it_by_is_left_out() {
    FollowedMice one;
    QVERIFY(one.answer({PropertyList(7), PropertyList::dictionary({{"name", "Nobody"}}), acme.with("controls", 3)}));
    QCOMPARE(one.choice.mice().size(), 1U);
    QVERIFY(one.choice.mice()[0].controls.empty());
  }

  void news_that_come_while_it_asks_are_asked_for_once() {
    FollowedMice one;
    for (int news = 0; news < 5; ++news) one.link.miceNews.changed();
    QCOMPARE(one.asked(), 1U);
    QVERIFY(one.answer({acme}));
    QCOMPARE(one.asked(), 2U);
    QVERIFY(one.answer({acme}));
    QCOMPARE(one.asked(), 2U);
    // The same again is no change.
    QCOMPARE(one.changes, 1);
  }

  void an_engine_without_mice_is_known_as_such() {
    FollowedMice one;
    QVERIFY(one.link.answerMice({Outcome::NoMice}));
    QVERIFY(one.choice.isRefused());
    QVERIFY(!one.choice.isKnown());
    QCOMPARE(one.changes, 1);
  }

  void an_answer_of_an_engine_that_has_gone_is_nobodys() {
    FollowedMice one;
    std::optional<Outcome> outcome;
    one.choice.choose("usb-1", [&](Outcome told) { outcome = told; });
    one.choice.end();
    one.choice.begin();
    QVERIFY(one.answer({acme}));
    QVERIFY(one.link.answerMice({Outcome::Done}));
    QVERIFY(!one.choice.isKnown());
    QVERIFY(!outcome);
    QVERIFY(!one.choice.isChoosing());
    QVERIFY(one.answer({acme, virtualMouse()}));
    QCOMPARE(one.choice.mice().size(), 2U);
    one.choice.end();
    QVERIFY(one.choice.mice().empty());
  }

  void each_change_is_one_request_and_the_list_is_asked_for_after_it() {
    FollowedMice one;
    QVERIFY(one.answer({acme}));
    one.link.miceRequests.clear();
    std::vector<Outcome> outcomes;
    const auto note = [&](Outcome outcome) { outcomes.push_back(outcome); };
    one.choice.choose("usb-1", note);
    QVERIFY(one.choice.isChoosing());
    QVERIFY(one.link.answerMice({Outcome::NotAllowed}));
    QVERIFY(!one.choice.isChoosing());
    QVERIFY(one.answer({acme}));
    one.choice.teach("29", note);
    one.choice.forget({}, note);
    one.choice.setResolution(1200, note);
    for (int answers = 0; answers < 3; ++answers) QVERIFY(one.link.answerMice({Outcome::Done}));
    const std::vector<MiceRequest> expected = {{MiceCall::Choose, "usb-1"},
                                               {},
                                               {MiceCall::Teach, "29"},
                                               {MiceCall::Forget},
                                               {.call = MiceCall::SetResolution, .resolution = 1200},
                                               {}};
    QVERIFY(one.link.miceRequests == expected);
    QVERIFY((outcomes == std::vector{Outcome::NotAllowed, Outcome::Done, Outcome::Done, Outcome::Done}));
  }

  void without_an_engine_nothing_is_asked() {
    ScriptedLink link;
    MouseChoice choice(link);
    std::optional<Outcome> outcome;
    choice.forget("29", [&](Outcome told) { outcome = told; });
    QVERIFY(outcome == Outcome::NoEngine);
    QVERIFY(link.miceRequests.empty());
  }
};

SKARN_QTEST(MouseChoiceTest)
#include "MouseChoice_test.moc"
