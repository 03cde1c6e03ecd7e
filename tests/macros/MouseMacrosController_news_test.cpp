// What a list that comes from elsewhere, as after an undo, means for the lines that are shown.
#include "macros/SequenceFixture.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
namespace tags = macroDetailsMenuTags;

using Events = std::vector<PropertyList>;

namespace {

// A request for a change, and what the macro is afterwards.
struct Edit {
  const char* name;
  std::vector<int> selected;
  void (*made)(SequenceFixture& fixture);
  const char* request;
  Events left;
};

const Edit edits[] = {
    {"an event is removed",
     {2},
     [](SequenceFixture& fixture) { fixture.click("mDeleteMacroDetails"); },
     "removeEventAtIndex",
     {keyEvent(true, 0, keyOfA), keyEvent(false, 50, keyOfB), keyEvent(false, 200, keyOfA)}},
    {"an event is replaced",
     {0},
     [](SequenceFixture& fixture) {
       fixture.delegate.sequence = keyEvent(true, 0, keyOfA);
       fixture.choose(tags::Edit);
       fixture.press(keyOfC);
       fixture.click("mMacroEventEditOK");
     },
     "updateSequenceInfo",
     {keyEvent(true, 0, keyOfC), keyEvent(true, 100, keyOfB), keyEvent(false, 50, keyOfB),
      keyEvent(false, 200, keyOfA)}},
    {"all events are removed",
     {},
     [](SequenceFixture& fixture) {
       fixture.choose(tags::DeleteAllEvents);
       confirm(fixture.alert());
     },
     "removeAllEventsForMacroAtIndex",
     {}},
    {"a delay is given to all events",
     {3},
     [](SequenceFixture& fixture) { fixture.choose(tags::CopyDelay); },
     "setAllEventsDelay",
     {keyEvent(true, 50, keyOfA), keyEvent(true, 50, keyOfB), keyEvent(false, 50, keyOfB),
      keyEvent(false, 50, keyOfA)}},
    {"a delay is changed",
     {1},
     [](SequenceFixture& fixture) {
       fixture.choose(tags::Edit);
       QTest::keyClicks(fixture.find("mInputMacroDelay"), "7");
       fixture.click("mMacroDelayOK");
     },
     "setNewDelay",
     {keyEvent(true, 0, keyOfA), keyEvent(true, 7, keyOfB), keyEvent(false, 50, keyOfB), keyEvent(false, 200, keyOfA)}},
};

const QStringList fetched{"getMacroDetailsForMacroAtIndex(0)"};

// A tab in which the edit has been made, and the list is the one from before it.
struct EditedFixture : SequenceFixture {
  explicit EditedFixture(const Edit& edit) : before(engine) {
    select(edit.selected);
    delegate.onCall = [this, &edit](const QString& call) {
      if (call.startsWith(QLatin1String(edit.request))) take(0, edit.left);
      serve(call);
    };
    edit.made(*this);
    delegate.take();
  }
  bool shows(const PropertyList& macros) { return tab->mMacroDetailsArray() == linesOf(macros.at(0)); }
  int shownEvents() { return macros()->model()->index(0, 1).data().toInt(); }
  // The engine has another list, and says so.
  void bring(const PropertyList& list) {
    engine = list;
    serve({});
    reload(list);
  }

  const PropertyList before;
};

}  // namespace

class MouseMacrosControllerNewsTest : public QObject {
  Q_OBJECT

 private slots:
  void theLinesOfTheListFromBeforeAnEditAreFetchedWhenItComesBack_data() { eachEdit(); }
  void theLinesOfTheListFromBeforeAnEditAreFetchedWhenItComesBack() {
    QFETCH(int, edit);
    EditedFixture fixture(edits[edit]);
    QVERIFY(!fixture.shows(fixture.before));
    fixture.bring(fixture.before);
    QCOMPARE(fixture.delegate.take(), fetched);
    QVERIFY(fixture.shows(fixture.before));
    QCOMPARE(fixture.shownEvents(), 4);
    fixture.bring(fixture.before);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void theLinesAreNotFetchedAgainWhenTheListBringsTheEditItself_data() { eachEdit(); }
  void theLinesAreNotFetchedAgainWhenTheListBringsTheEditItself() {
    QFETCH(int, edit);
    EditedFixture fixture(edits[edit]);
    const PropertyList after = fixture.engine;
    fixture.bring(after);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QVERIFY(fixture.shows(after));
    fixture.bring(fixture.before);
    QCOMPARE(fixture.delegate.take(), fetched);
    QVERIFY(fixture.shows(fixture.before));
  }

  void theLinesComeBackAfterALookAtAnotherMacro_data() { eachEdit(); }
  void theLinesComeBackAfterALookAtAnotherMacro() {
    QFETCH(int, edit);
    EditedFixture fixture(edits[edit]);
    fixture.selectMacro(1);
    fixture.selectMacro(0);
    QVERIFY(!fixture.shows(fixture.before));
    fixture.bring(fixture.before);
    QCOMPARE(fixture.delegate.take(), fetched);
    QVERIFY(fixture.shows(fixture.before));
  }

  void aListThatIsStillTheOlderOneDoesNotHideWhatComesBackLater_data() { eachEdit(); }
  void aListThatIsStillTheOlderOneDoesNotHideWhatComesBackLater() {
    QFETCH(int, edit);
    EditedFixture fixture(edits[edit]);
    const PropertyList after = fixture.engine;
    // The engine has the edit; the list was under way before it.
    fixture.reload(fixture.before);
    QVERIFY(fixture.shows(after));
    fixture.delegate.take();
    fixture.bring(fixture.before);
    QCOMPARE(fixture.delegate.take(), fetched);
    QVERIFY(fixture.shows(fixture.before));
  }

  void anEditOfTheWholeSequenceComesBackToo() {
    SequenceFixture fixture;
    const PropertyList before = fixture.engine;
    const Events left{keyEvent(true, 0, keyOfA), keyEvent(false, 200, keyOfA)};
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith(QLatin1String("replaceSequence"))) fixture.take(0, left);
      fixture.serve(call);
    };
    fixture.select({2, 4});
    fixture.click("mDeleteMacroDetails");
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(left));
    fixture.engine = before;
    fixture.serve({});
    fixture.reload(before);
    QCOMPARE(fixture.delegate.take(), fetched);
    QCOMPARE(SequenceFixture::rowsOf(fixture.lines()).size(), 7);
  }

 private:
  static void eachEdit() {
    QTest::addColumn<int>("edit");
    for (int edit = 0; edit < static_cast<int>(std::size(edits)); ++edit) QTest::newRow(edits[edit].name) << edit;
  }
};

SKARN_QTEST(MouseMacrosControllerNewsTest)
#include "MouseMacrosController_news_test.moc"
