// The Buttons tab and its table of controls.
#include <QApplication>
#include <QSet>

#include "buttons/ButtonsFixture.h"
#include "buttons/MouseView.h"
#include "platform/Images.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QString textOfLabel(const QWidget& page, const char* name) {
  const auto* label = page.findChild<QLabel*>(QLatin1String(name));
  return label ? label->text() : QStringLiteral("(no label %1)").arg(QLatin1String(name));
}

// What each control shows of its assignment, in the order of the table.
QStringList assignments(const QWidget& page) {
  QStringList texts;
  for (const ControlDescriptor& control : controlTable) {
    const auto* row = page.findChild<ControlRow*>(QLatin1String(control.fieldName) + QStringLiteral("Row"));
    texts << row->popUp()->shownTitle();
  }
  return texts;
}

QString shownProfile(const QWidget& page) {
  return page.findChild<QComboBox*>(QStringLiteral("mProfileListPopUp"))->currentText();
}

int shownKeymap(const QWidget& page) {
  return page.findChild<SegmentedControl*>(QStringLiteral("mKeymapSegment"))->selectedSegment();
}

void hand(MouseButtonController& tab, const PropertyList& active) {
  tab.setMButtonsSettingsDict(active);
  tab.setMAllProfiles(profiles());
  tab.setMAllMacros(macros());
  tab.setMDeviceSettingsDict(deviceSettings());
  tab.setMDefaultDict(defaultSettings());
  tab.populateUISettings();
  tab.updateUISettings();
}

}  // namespace

class MouseButtonControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void theTableNamesEveryControlOnce() {
    QSet<QString> names, identifiers, repeatButtons, actions;
    QSet<int> repeatCodes;
    for (const ControlDescriptor& control : controlTable) {
      names << QLatin1String(control.fieldName);
      identifiers << QLatin1String(control.identifier);
      repeatButtons << QLatin1String(control.repeatButton);
      actions << QLatin1String(control.actionName);
      repeatCodes << control.repeatCode;
    }
    QCOMPARE(names.size(), 27);
    QCOMPARE(identifiers.size(), 27);
    QCOMPARE(repeatButtons.size(), 27);
    QCOMPARE(actions.size(), 27);
    QCOMPARE(repeatCodes.size(), 27);
  }

  void theTableHasTheIdentifiersOfBothGroups() {
    std::vector<std::string_view> keyGroup, buttonGroup;
    for (const ControlDescriptor& control : controlTable) {
      (control.groupType() == 1 ? keyGroup : buttonGroup).push_back(control.identifier);
      // The two numberings of the groups are opposite to each other.
      QCOMPARE(control.groupIdentifier(), 3 - control.groupType());
      QCOMPARE(control.number, static_cast<int>(&control - controlTable.data()) + 1);
    }
    QVERIFY(std::equal(keyGroup.begin(), keyGroup.end(), keys::keyIdentifiers.begin(), keys::keyIdentifiers.end()));
    QVERIFY(std::equal(buttonGroup.begin(), buttonGroup.end(), keys::buttonIdentifiers.begin(),
                       keys::buttonIdentifiers.end()));
  }

  void theTableKeepsGivenSpellings() {
    const auto row = [](int ordinal) { return controlTable[static_cast<std::size_t>(ordinal - 1)]; };
    QCOMPARE(row(1).fieldName, "mButtonOne");
    QCOMPARE(row(1).actionName, "selectButtonOneValue");
    QCOMPARE(row(1).repeatButton, "mMacroRepeatConfigButtonOne");
    QCOMPARE(row(13).submenuStem, "buttonThirteen");
    QCOMPARE(row(13).profileActionStem, "buttonThirten");
    QCOMPARE(row(14).submenuStem, "buttonFourteen");
    QCOMPARE(row(14).profileActionStem, "buttonFourten");
    QCOMPARE(row(15).submenuStem, "ThumbGridOne");
    QCOMPARE(row(27).profileActionStem, "ThumbGridThirteen");
    QCOMPARE(row(27).repeatButton, "mMacroRepeatConfigButtonTwentySeven");
    for (const ControlDescriptor& control : controlTable) {
      if (control.number == 13 || control.number == 14) continue;
      QCOMPARE(control.profileActionStem, control.submenuStem);
    }
  }

  void everyDirectionHasItsArrow() {
    QStringList pictures;
    for (const ControlDescriptor& control : controlTable) {
      QCOMPARE(control.directionPicture != nullptr, control.family == ControlFamily::DirectionPad);
      if (control.directionPicture == nullptr) continue;
      pictures << QLatin1String(control.directionPicture);
      QVERIFY2(!image(pictures.constLast()).isNull(), control.directionPicture);
    }
    QCOMPARE(pictures, (QStringList{"arrow2.png", "arrow3.png", "arrow5.png", "arrow8.png", "arrow7.png", "arrow6.png",
                                    "arrow4.png", "arrow1.png"}));
  }

  void everyControlHasARowAndEveryRowAControl() {
    MouseButtonController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MouseButtonController"));
    QList<const ControlDescriptor*> shown;
    for (const ControlRow* row : tab.findChildren<ControlRow*>()) {
      shown << &row->control();
      QCOMPARE(row->objectName(), QLatin1String(row->control().fieldName) + QStringLiteral("Row"));
    }
    QCOMPARE(shown.size(), 27);
    for (const ControlDescriptor& control : controlTable) QCOMPARE(shown.count(&control), 1);
  }

  void everyControlIsNamedByWhatItSends() {
    MouseButtonController tab;
    QStringList names;
    for (const ControlDescriptor& control : controlTable) {
      names << textOfLabel(tab, (std::string(control.fieldName) + "Label").c_str());
    }
    QCOMPARE(names, (QStringList{"Tab",
                                 "Q",
                                 "W",
                                 "E",
                                 "R",
                                 "Caps Lock",
                                 "A",
                                 "S",
                                 "D",
                                 "F",
                                 "Left Shift",
                                 "Z",
                                 "X",
                                 "C",
                                 "Space",
                                 "Left Alt",
                                 "Wheel button",
                                 "Wheel up",
                                 "Wheel down",
                                 "Up",
                                 "Up right",
                                 "Right",
                                 "Down right",
                                 "Down",
                                 "Down left",
                                 "Left",
                                 "Up left"}));
    QCOMPARE(textOfLabel(tab, "mThumbAssignButtonLabel"), QStringLiteral("Thumb grid"));
  }

  void allControlsFitIntoTheSmallestWindow() {
    MouseButtonController tab;
    hand(tab, profile("Work"));
    tab.resize(1024, 476);
    tab.show();
    for (const ControlRow* row : tab.findChildren<ControlRow*>()) {
      const QRect place(row->mapTo(&tab, QPoint()), row->size());
      QVERIFY2(tab.rect().contains(place), row->control().fieldName);
      for (const QLabel* label : row->findChildren<QLabel*>()) {
        QVERIFY2(row->rect().contains(label->geometry()), row->control().fieldName);
        QVERIFY2(label->height() >= label->fontMetrics().height(), row->control().fieldName);
      }
      // What the mouse does as it leaves the factory, and any function of a mouse button, is not cut.
      const PopUpButton* popUp = row->popUp();
      QVERIFY2(popUp->width() >= popUp->widthOf(popUp->shownTitle()), row->control().fieldName);
      for (const int command : {1, 2, 3, 4, 5, 9, 18, 19})
        QVERIFY2(popUp->width() >= popUp->widthOf(tab.mouseButtonLabel(command)), row->control().fieldName);
    }
  }

  void theTabShowsProfileKeymapAndAssignments() {
    MouseButtonController tab;
    PropertyList active = profile("Work").with(keys::KeymapID, 2);
    active = active.with(keys::Keys, active[keys::Keys].with("20", assignment(16, 4)).without("26"));
    active = active.with(keys::Buttons, active[keys::Buttons].with("03", assignment(1)));
    hand(tab, active);
    QCOMPARE(shownProfile(tab), QStringLiteral("Work"));
    QCOMPARE(shownKeymap(tab), 2);
    const QStringList shown = assignments(tab);
    QCOMPARE(shown.mid(0, 4), QStringList({"Tab (Default)", "Single Key : A", "", "E (Default)"}));
    QCOMPARE(shown.mid(16, 4), QStringList({"Mouse Button: Left Click", "Mouse Button: Scroll Up",
                                            "Mouse Button: Scroll Down", "(Default)"}));
  }

  void everyKeymapHasItsPicture() {
    MouseButtonController tab;
    tab.show();
    const auto* picture = tab.findChild<QLabel*>(QStringLiteral("mMainSkarn"));
    for (int keymap = 0; keymap < 8; ++keymap) {
      tab.changeKeymapImage(keymap);
      const QString name =
          QStringLiteral("%1karn_keymap%2.png").arg(QLatin1Char(keymap == 7 ? 'S' : 's')).arg(keymap + 1);
      QCOMPARE(picture->pixmap(Qt::ReturnByValue).cacheKey(), image(name).cacheKey());
    }
  }

  void aKeymapOutsideTheRangeLeavesThePicture() {
    MouseButtonController tab;
    tab.show();
    const auto* picture = tab.findChild<QLabel*>(QStringLiteral("mMainSkarn"));
    tab.changeKeymapImage(3);
    const qint64 before = picture->pixmap(Qt::ReturnByValue).cacheKey();
    for (const int keymap : {8, -1, 255}) {
      tab.changeKeymapImage(keymap);
      QCOMPARE(picture->pixmap(Qt::ReturnByValue).cacheKey(), before);
    }
  }

  void thePictureWaitsUntilTheTabIsSeen() {
    MouseButtonController tab;
    const auto* picture = tab.findChild<QLabel*>(QStringLiteral("mMainSkarn"));
    tab.changeKeymapImage(0);
    QVERIFY(picture->pixmap(Qt::ReturnByValue).isNull());
    tab.show();
    QVERIFY(!picture->pixmap(Qt::ReturnByValue).isNull());
  }

  void withoutADeviceEveryLabelIsGreyAndSaysWhy() {
    MouseButtonController tab;
    hand(tab, profile("Work"));
    const auto color = [&tab](const QString& name) {
      const auto* label = tab.findChild<QLabel*>(name);
      return label->palette().color(label->foregroundRole());
    };
    const QPalette palette = tab.palette();
    for (const bool enabled : {false, true}) {
      tab.enableControlsState(enabled);
      const QColor expected = palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
      for (const ControlDescriptor& control : controlTable) {
        QCOMPARE(color(QLatin1String(control.fieldName) + QStringLiteral("Label")), expected);
      }
      QCOMPARE(color(QStringLiteral("mThumbAssignButtonLabel")), expected);
      QCOMPARE(tab.toolTip(), enabled ? QString() : QStringLiteral("No mouse connected"));
    }
  }

  void withoutADeviceNoControlCanBeUsed() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(2), assignment(10, 0, 1));
    for (const bool enabled : {false, true}) {
      fixture.tab.enableControlsState(enabled);
      QCOMPARE(fixture.find<QComboBox>("mProfileListPopUp")->isEnabled(), enabled);
      QCOMPARE(fixture.find<SegmentedControl>("mKeymapSegment")->isEnabled(), enabled);
      for (const ControlDescriptor& control : controlTable) {
        QCOMPARE(fixture.popUp(control).isEnabled(), enabled);
        QToolButton* repeat = fixture.row(control).repeatButton();
        QCOMPARE(repeat->isEnabled(), enabled);
        QCOMPARE(repeat->toolTip(), localized(enabled ? "lkeyMacroRepeat" : "lkeyNoMouseConnected"));
      }
    }
    QVERIFY(fixture.delegate.calls.empty());
  }

  void aRedrawLeavesADisabledTabDisabled() {
    ButtonsFixture fixture;
    fixture.tab.enableControlsState(false);
    fixture.tab.updateUISettings();
    for (const ControlDescriptor& control : controlTable) QVERIFY(!fixture.popUp(control).isEnabled());
    fixture.tab.enableAllPopupButtons();
    for (const ControlDescriptor& control : controlTable) {
      QVERIFY(fixture.popUp(control).isEnabled());
      QVERIFY(!fixture.row(control).repeatButton()->isEnabled());
    }
    QVERIFY(!fixture.find<QComboBox>("mProfileListPopUp")->isEnabled());
    QVERIFY(!fixture.find<SegmentedControl>("mKeymapSegment")->isEnabled());
  }

  void theLastLeftClickCannotBeGivenAway_data() {
    QTest::addColumn<QList<int>>("leftClicks");
    QTest::addColumn<int>("disabled");
    QTest::newRow("none") << QList<int>{} << 0;
    for (int ordinal = 1; ordinal <= 5; ++ordinal) QTest::addRow("%d", ordinal) << QList<int>{ordinal} << ordinal;
    QTest::newRow("2 and 4") << QList<int>{2, 4} << 0;
    QTest::newRow("1, 3 and 5") << QList<int>{1, 3, 5} << 0;
    QTest::newRow("6 only") << QList<int>{6} << 0;
    QTest::newRow("3 and 6") << QList<int>{3, 6} << 3;
    QTest::newRow("17 only") << QList<int>{17} << 0;
  }

  void theLastLeftClickCannotBeGivenAway() {
    QFETCH(QList<int>, leftClicks);
    QFETCH(int, disabled);
    ButtonsFixture fixture;
    for (const int ordinal : leftClicks) fixture.give(fixture.control(ordinal), assignment(1));
    for (const ControlDescriptor& control : controlTable) {
      const PopUpButton& popUp = fixture.popUp(control);
      QCOMPARE(popUp.isEnabled(), control.number != disabled);
      QCOMPARE(popUp.toolTip().isEmpty(), control.number != disabled);
    }
  }

  void theLockSaysHowItIsOpened() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(3), assignment(1));
    const QString reason = fixture.popUp(3).lockReason();
    QVERIFY2(reason.endsWith(QStringLiteral("give another of the controls 1 to 5 the left click first")),
             qPrintable(reason));
    QCOMPARE(fixture.popUp(3).toolTip(), reason);
    QCOMPARE(fixture.popUp(3).accessibleDescription(), QStringLiteral("Mouse Button: Left Click. ") + reason);
    for (const ControlDescriptor& control : controlTable)
      QCOMPARE(fixture.popUp(control).lockReason().isEmpty(), control.number != 3);
    // As it says.
    fixture.give(fixture.control(5), assignment(1));
    QVERIFY(fixture.popUp(3).lockReason().isEmpty() && fixture.popUp(3).isEnabled());
    // Without a mouse that is the reason, and no lock.
    fixture.give(fixture.control(5), assignment(2));
    fixture.tab.enableControlsState(false);
    QVERIFY(fixture.popUp(3).lockReason().isEmpty());
  }

  void aMenuClosesWhenItsControlBecomesTheLastLeftClick() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(1), assignment(1));
    fixture.give(fixture.control(2), assignment(1));
    fixture.popUp(2).openMenu();
    fixture.give(fixture.control(1), assignment(2));
    QVERIFY(!fixture.popUp(2).menu()->isVisible());
    QVERIFY(!fixture.popUp(2).isEnabled());
  }

  void whatWasChangedStandsOutAndIsCounted() {
    ButtonsFixture fixture;
    const auto counts = [&fixture] {
      QStringList texts;
      for (const char* label : {"mThumbGridChanges", "mDirectionPadChanges", "mWheelChanges"})
        texts << fixture.find<QLabel>(label)->text();
      return texts;
    };
    QCOMPARE(counts(), QStringList({"", "", ""}));
    for (const ControlDescriptor& control : controlTable) QVERIFY(fixture.popUp(control).isMuted());
    for (const int ordinal : {2, 16, 27, 18}) fixture.give(fixture.control(ordinal), assignment(20));
    QCOMPARE(counts(), QStringList({"2 changed", "1 changed", "1 changed"}));
    for (const ControlDescriptor& control : controlTable) {
      const bool isChanged = QList<int>{2, 16, 27, 18}.contains(control.number);
      QCOMPARE(fixture.row(control).isChanged(), isChanged);
      QCOMPARE(fixture.popUp(control).isMuted(), !isChanged);
    }
    fixture.give(fixture.control(2), assignment(45, 20));
    QCOMPARE(counts(), QStringList({"1 changed", "1 changed", "1 changed"}));
  }

  void theRightColumnEndsWhereTheKeymapsEnd() {
    ButtonsFixture fixture;
    for (const QSize& size : {QSize(1180, 560), QSize(1024, 476)}) {
      fixture.tab.resize(size);
      const auto right = [&fixture](const QWidget& widget) {
        return widget.mapTo(&fixture.tab, QPoint(widget.width(), 0)).x();
      };
      for (const int ordinal : {17, 20, 27})
        QCOMPARE(right(fixture.popUp(ordinal)), right(*fixture.find<SegmentedControl>("mKeymapSegment")));
    }
  }

  void theTabKeyGoesThroughTheColumns() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(4), assignment(10, 0, 1));
    fixture.give(fixture.control(22), assignment(10, 0, 1));
    fixture.tab.activateWindow();
    QStringList expected = {"mProfileListPopUp", "mControlSearch", "mKeymapMenuButton", "mKeymapSegment"};
    const auto expectRow = [&expected](int ordinal) {
      const ControlDescriptor& control = ButtonsFixture::control(ordinal);
      expected << QLatin1String(control.fieldName);
      if (ordinal == 4 || ordinal == 22) expected << QLatin1String(control.repeatButton);
    };
    for (int ordinal = 1; ordinal <= 16; ++ordinal) expectRow(ordinal);
    for (int ordinal = 20; ordinal <= 27; ++ordinal) expectRow(ordinal);
    for (int ordinal = 17; ordinal <= 19; ++ordinal) expectRow(ordinal);
    auto* first = fixture.find<QComboBox>("mProfileListPopUp");
    first->setFocus();
    QTRY_VERIFY(first->hasFocus());
    QStringList reached;
    do {
      reached << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && reached.size() <= expected.size());
    QCOMPARE(reached, expected);
  }

  void everyMenuIsWorkedByKeyboardAlone_data() { addControlRows(); }

  void everyMenuIsWorkedByKeyboardAlone() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    fixture.give(control, assignment(20));
    fixture.tab.activateWindow();
    fixture.find<SegmentedControl>("mKeymapSegment")->setFocus();
    QTRY_VERIFY(fixture.find<SegmentedControl>("mKeymapSegment")->hasFocus());
    PopUpButton& popUp = fixture.popUp(control);
    for (int step = 0; step < 27 && !popUp.hasFocus(); ++step)
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(popUp.hasFocus());
    const auto type = [](Qt::Key key) {
      QWidget* open = QApplication::activePopupWidget();
      QTest::keyClick(open ? open : QApplication::focusWidget(), key);
    };
    // Opened, into the submenu of the profiles, and escaped from step by step.
    type(Qt::Key_Return);
    QTRY_VERIFY(popUp.menu()->isVisible());
    type(Qt::Key_P);
    type(Qt::Key_Right);
    const QMenu* submenu = fixture.item(control, AssignmentCategory::Profile)->menu();
    QTRY_VERIFY(submenu->isVisible());
    type(Qt::Key_Escape);
    QTRY_VERIFY(!submenu->isVisible());
    type(Qt::Key_Escape);
    QTRY_VERIFY(!popUp.menu()->isVisible());
    QVERIFY(popUp.hasFocus());
    QVERIFY(fixture.delegate.calls.empty());
    // Opened again, and an entry of the mouse buttons chosen.
    type(Qt::Key_Space);
    QTRY_VERIFY(popUp.menu()->isVisible());
    for (int step = 0; step < 3; ++step) type(Qt::Key_Up);
    type(Qt::Key_Return);
    submenu = fixture.item(control, AssignmentCategory::MouseButton)->menu();
    QTRY_VERIFY(submenu->isVisible());
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(2)));
    QVERIFY(popUp.hasFocus());
  }

  void theBareLeftClickTextIsALeftClickToo() {
    ButtonsFixture fixture;
    fixture.popUp(2).addItem(QStringLiteral("Left Click"));
    QVERIFY(fixture.popUp(2).selectItemWithTitle(QStringLiteral("Left Click")));
    fixture.tab.checkForLeftClickAssigned();
    QVERIFY(!fixture.popUp(2).isEnabled());
    fixture.popUp(2).selectItem(0);
    fixture.tab.checkForLeftClickAssigned();
    QVERIFY(fixture.popUp(2).isEnabled());
    QCOMPARE(fixture.popUp(2).toolTip(), QString());
  }

  void theProfileListShowsAllProfilesAndTheCurrentOne() {
    ButtonsFixture fixture;
    const auto* list = fixture.find<QComboBox>("mProfileListPopUp");
    QStringList names;
    for (int index = 0; index < list->count(); ++index) names << list->itemText(index);
    QCOMPARE(names,
             QStringList({"Default", "Work", "Raid: Molten Depths, healer set-up for the second boss", "Racing"}));
    QCOMPARE(list->currentIndex(), 1);
    fixture.tab.setMButtonsSettingsDict(profile("Unknown"));
    fixture.tab.populateProfileListPopUpMenu();
    QCOMPARE(list->currentIndex(), 0);
    fixture.tab.setMAllProfiles(PropertyList::array());
    fixture.tab.populateProfileListPopUpMenu();
    QCOMPARE(list->count(), 0);
    QVERIFY(fixture.delegate.calls.empty());
  }

  void anotherProfileInTheListIsSwitchedToAndTheCurrentOneIsNot() {
    ButtonsFixture fixture;
    auto* list = fixture.find<QComboBox>("mProfileListPopUp");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    COMPARE_CALLS(fixture.delegate.calls, call({"switchProfileWithID", 2}));
    // Nothing came back: the list shows the profile that is still in force.
    QCOMPARE(list->currentIndex(), 1);
    fixture.tab.selectProfile(1);
    fixture.tab.selectProfile(4);
    fixture.tab.selectProfile(-1);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
  }

  void aControlLightsUpInThePictureAndInItsRow() {
    ButtonsFixture fixture;
    auto* picture = fixture.find<MouseView>("mMainSkarn");
    const ControlDescriptor& control = fixture.control(12);
    emit picture->controlHovered(&control);
    QVERIFY(fixture.row(control).isHighlighted());
    QVERIFY(!fixture.row(fixture.control(11)).isHighlighted());
    emit picture->controlHovered(nullptr);
    QVERIFY(!fixture.row(control).isHighlighted());
    emit fixture.row(control).hovered(true);
    QCOMPARE(picture->highlighted(), &control);
    QVERIFY(fixture.row(control).isHighlighted());
    emit fixture.row(control).hovered(false);
    QVERIFY(picture->highlighted() == nullptr);
  }

  void aControlInThePictureOpensItsMenu() {
    ButtonsFixture fixture;
    auto* picture = fixture.find<MouseView>("mMainSkarn");
    const ControlDescriptor& control = fixture.control(12);
    QTRY_VERIFY(!picture->placeOf(control).isNull());
    QTest::mouseClick(picture, Qt::LeftButton, {}, picture->placeOf(control).toPoint());
    QTRY_VERIFY(fixture.popUp(control).menu()->isVisible());
    QVERIFY(fixture.delegate.calls.empty());
  }
};

SKARN_QTEST(MouseButtonControllerTest)
#include "MouseButtonController_test.moc"
