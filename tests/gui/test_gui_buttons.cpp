// The Buttons tab and its table of controls.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QSet>
#include <QTest>

#include "SampleSettings.h"
#include "buttons/AssignmentCleanUp.h"
#include "buttons/ControlRow.h"
#include "buttons/MouseButtonController.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "widgets/PopUpButton.h"
#include "widgets/SegmentedControl.h"

using namespace skarn;
using namespace skarn::test;

namespace {

class RecordingDelegate : public MouseButtonDelegate {
 public:
  void updateButtonAssignmentWithSettings(const PropertyList&) override { ++otherCalls; }
  void updateButtonAssignmentWithSettings(const PropertyList&, int) override { ++otherCalls; }
  void updateProfileKeyInDictionaryWithDictionary(const PropertyList& all) override { replaced.push_back(all); }
  void startSingleKeyRecording() override { ++otherCalls; }
  void stopSingleKeyRecording() override { ++otherCalls; }
  void selectTabAtIndex(int) override { ++otherCalls; }
  void switchProfileWithID(int) override { ++otherCalls; }

  std::vector<PropertyList> replaced;
  int otherCalls = 0;
};

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

QStringList everywhere(const QString& text) {
  return QStringList(27, text);
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

class ButtonsTest : public QObject {
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
      (control.groupType == 1 ? keyGroup : buttonGroup).push_back(control.identifier);
      // The two numberings of the groups are opposite to each other.
      QCOMPARE(control.groupIdentifier, 3 - control.groupType);
      QCOMPARE(control.ordinal, static_cast<int>(&control - controlTable.data()) + 1);
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
      if (control.ordinal == 13 || control.ordinal == 14) continue;
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
    QStringList expected = everywhere(QStringLiteral("Default"));
    expected[1] = QStringLiteral("Assigned");
    expected[2] = QString();
    expected[16] = QStringLiteral("Assigned");
    QCOMPARE(assignments(tab), expected);
  }

  void aRecordEqualToTheDefaultOneIsTheDefault() {
    MouseButtonController tab;
    hand(tab, profile("Work"));
    QCOMPARE(assignments(tab), everywhere(QStringLiteral("Default")));
    tab.setMDefaultDict(PropertyList());
    tab.populateUISettings();
    QStringList expected = everywhere(QStringLiteral("Default"));
    for (int button = 16; button <= 18; ++button) expected[button] = QStringLiteral("Assigned");
    QCOMPARE(assignments(tab), expected);
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

  void hostileSettingsShowNothing_data() {
    QTest::addColumn<int>("number");
    for (int number = 0; number < 5; ++number) QTest::addRow("settings %d", number) << number;
  }

  void hostileSettingsShowNothing() {
    QFETCH(int, number);
    const PropertyList hostile[] = {
        PropertyList(), PropertyList("text"), PropertyList::array({1, 2}),
        PropertyList::dictionary({{keys::ProfileName, 5}, {keys::Keys, "x"}, {keys::Buttons, 1}, {keys::KeymapID, 9}}),
        PropertyList::dictionary(
            {{keys::KeymapID, "1"},
             {keys::Keys, PropertyList::dictionary({{"43", 45}, {"20", PropertyList::array()}})}})};
    MouseButtonController tab;
    hand(tab, profile("Work"));
    tab.setMAllProfiles(PropertyList("none"));
    tab.setMAllMacros(PropertyList(1));
    tab.setMDeviceSettingsDict(PropertyList(true));
    tab.setMButtonsSettingsDict(hostile[number]);
    tab.updateUISettings();
    QCOMPARE(shownProfile(tab), QString());
    QCOMPARE(shownKeymap(tab), -1);
    QCOMPARE(assignments(tab), everywhere(QString()));
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

  void aDeletedMacroLeavesNoAssignmentBehind() {
    const PropertyList factory = profile("Default");
    const PropertyList before = profile("Work")
                                    .with(keys::Keys, factoryGroup(1)
                                                          .with("20", assignment(10, 1, 1))
                                                          .with("26", assignment(10, 0, 254))
                                                          .with("8", assignment(10, 7, 1))
                                                          .with("31", assignment(10, 1, 1)))
                                    .with(keys::Buttons, factoryGroup(2).with("06", assignment(10, 1, 1)));
    const PropertyList after = remappedProfiles(PropertyList::array({before, factory}), factory, 10, 1, 3);
    const PropertyList expected =
        before.with(keys::Keys, before[keys::Keys].with("20", assignment(45, 20)).with("8", assignment(45, 8)))
            .with(keys::Buttons, factoryGroup(2));
    // Identifier 31 has no default record and is kept.
    QVERIFY(after == PropertyList::array({expected, factory}));
  }

  void aButtonIdentifierIsLookedUpWithTwoDigits() {
    const PropertyList factory = profile("Default");
    const PropertyList group =
        PropertyList::dictionary({{"3", assignment(2)}, {"03", assignment(17, 0)}, {"junk", assignment(17, 0)}});
    const PropertyList before = PropertyList::array({PropertyList::dictionary({{keys::Buttons, group}}), "no profile"});
    const PropertyList after = remappedProfiles(before, factory, 17, 0, 2);
    QVERIFY(after.at(0)[keys::Buttons] == group.with("03", assignment(3)));
    QVERIFY(after.at(1) == PropertyList("no profile"));
  }

  void theCleanUpHandsAllProfilesToTheDelegate() {
    MouseButtonController tab;
    tab.removeMacroProfileMappings(0, 10);
    RecordingDelegate delegate;
    tab.setMButtonDelegate(&delegate);
    PropertyList changed = profile("Default");
    changed = changed.with(keys::Keys, changed[keys::Keys].with("20", assignment(17, 3)).with("26", assignment(10, 2)));
    hand(tab, changed);
    tab.setMAllProfiles(PropertyList::array({changed, changed}));
    tab.removeMacroProfileMappings(0, 17);
    tab.removeMacroProfileMappings(0, 10);
    // Two profiles: profile 3 is past the end. Three macros: macro 2 still exists.
    const PropertyList reset = changed.with(keys::Keys, changed[keys::Keys].with("20", assignment(45, 20)));
    QCOMPARE(delegate.replaced.size(), std::size_t(2));
    QVERIFY(delegate.replaced[0] == PropertyList::array({reset, reset}));
    QVERIFY(delegate.replaced[1] == PropertyList::array({changed, changed}));
    QCOMPARE(delegate.otherCalls, 0);
  }
};

QTEST_MAIN(ButtonsTest)
#include "test_gui_buttons.moc"
