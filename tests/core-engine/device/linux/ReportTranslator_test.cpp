#include "core-engine/device/linux/ReportTranslator.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "core-engine/device/linux/KernelEvents.h"

namespace vorn::engine::test {
namespace {

using Report = std::vector<KernelEvent>;

ControlChanged down(const std::string& control) {
  return {control, true};
}
ControlChanged up(const std::string& control) {
  return {control, false};
}

class ReportTranslatorTest : public testing::Test {
 protected:
  // With the SYN_REPORT that the kernel ends it with.
  TranslatedEvents translate(Report report) {
    report.push_back(endOfReport);
    return translator.translate(report, rules);
  }
  void take(std::initializer_list<std::string> controls) { rules.taken = controls; }

  TranslationRules rules;
  ReportTranslator translator{std::string(pointerNode), {.vertical = true, .horizontal = false}};
};

TEST_F(ReportTranslatorTest, PassesAReportAsItCame) {
  const Report report{scanCode(0x90001),
                      key(BTN_LEFT, 1),
                      motion(REL_X, 3),
                      motion(REL_Y, -2),
                      motion(REL_WHEEL, 1),
                      motion(REL_WHEEL_HI_RES, 120),
                      motion(REL_HWHEEL, -1),
                      motion(REL_DIAL, 4),
                      KernelEvent{EV_MSC, MSC_TIMESTAMP, 99},
                      hat(ABS_HAT0X, 1),
                      hat(ABS_X, 12),
                      KernelEvent{EV_SYN, SYN_CONFIG, 0},
                      scanCode(7)};
  TranslatedEvents all(report.begin(), report.end());
  all.emplace_back(endOfReport);
  EXPECT_EQ(translate(report), all);
}

TEST_F(ReportTranslatorTest, LeavesNothingOfAReportThatHoldsNothing) {
  EXPECT_EQ(translate({}), TranslatedEvents());
  EXPECT_EQ(translate({KernelEvent{EV_SYN, SYN_DROPPED, 0}}), TranslatedEvents());
  EXPECT_EQ(translator.translate(Report{motion(REL_X, 1)}, rules), (TranslatedEvents{motion(REL_X, 1), endOfReport}));
}

TEST_F(ReportTranslatorTest, TellsOfATakenKeyAndPassesTheRestInTheOrderOfTheReport) {
  take({"4", "03"});
  EXPECT_EQ(translate({scanCode(0x70004), key(KEY_A, 1), scanCode(0x70005), key(KEY_B, 1), scanCode(0x90003),
                       key(BTN_MIDDLE, 1), motion(REL_X, 1)}),
            (TranslatedEvents{down("4"), scanCode(0x70005), key(KEY_B, 1), endOfReport, down("03"), motion(REL_X, 1),
                              endOfReport}));
  EXPECT_EQ(translate({scanCode(0x70004), key(KEY_A, 0)}), TranslatedEvents{up("4")});
  EXPECT_EQ(translate({scanCode(0x70005), key(KEY_B, 0), scanCode(0x90003), key(BTN_MIDDLE, 0)}),
            (TranslatedEvents{scanCode(0x70005), key(KEY_B, 0), endOfReport, up("03")}));
}

TEST_F(ReportTranslatorTest, NeverPassesARepeatOrWhatChangesNothing) {
  take({"4"});
  translate({key(KEY_A, 1), key(KEY_B, 1)});
  EXPECT_EQ(translate({key(KEY_A, 2), scanCode(5), key(KEY_B, 2)}), TranslatedEvents());
  EXPECT_EQ(translate({key(KEY_A, 1), scanCode(5), key(KEY_B, 1)}), TranslatedEvents());
  translate({key(KEY_A, 0), key(KEY_B, 0)});
  EXPECT_EQ(translate({key(KEY_A, 0), scanCode(5), key(KEY_B, 0), key(KEY_C, 2), key(KEY_C, 0)}), TranslatedEvents());
}

TEST_F(ReportTranslatorTest, ReleasesAKeyWhereItWasPressed) {
  translate({key(KEY_A, 1)});
  take({"4", "20"});
  EXPECT_EQ(translate({key(KEY_Q, 1), scanCode(5), key(KEY_A, 0)}),
            (TranslatedEvents{down("20"), scanCode(5), key(KEY_A, 0), endOfReport}));
  take({});
  rules.map.teach("20", keySource(KEY_1));
  EXPECT_EQ(translate({scanCode(5), key(KEY_Q, 0), key(KEY_A, 1)}),
            (TranslatedEvents{up("20"), key(KEY_A, 1), endOfReport}));
}

TEST_F(ReportTranslatorTest, TellsOnceOfAControlThatTwoKeysHoldInTurn) {
  take({"4"});
  EXPECT_EQ(translate({key(KEY_A, 1)}), TranslatedEvents{down("4")});
  rules.map.teach("4", keySource(KEY_1));
  EXPECT_EQ(translate({key(KEY_1, 1), key(KEY_A, 0)}), TranslatedEvents());
  EXPECT_EQ(translate({key(KEY_1, 0)}), TranslatedEvents{up("4")});
}

TEST_F(ReportTranslatorTest, TakesOnlyWhatComesFromItsNode) {
  rules.map.teach("4", keySource(KEY_1, keyboardNode));
  take({"4"});
  EXPECT_EQ(translate({key(KEY_1, 1)}), (TranslatedEvents{key(KEY_1, 1), endOfReport}));
  rules.map.teach("4", keySource(KEY_2, pointerNode));
  EXPECT_EQ(translate({key(KEY_2, 1)}), (TranslatedEvents{down("4")}));
}

TEST_F(ReportTranslatorTest, MakesStepsOfATakenWheelAndPassesTheOtherDirectionInBothKinds) {
  take({"06"});
  EXPECT_EQ(translate({motion(REL_WHEEL, 1), motion(REL_WHEEL_HI_RES, 120)}), (TranslatedEvents{down("06"), up("06")}));
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 90)}), TranslatedEvents());
  EXPECT_EQ(translate({motion(REL_WHEEL, 2), motion(REL_WHEEL_HI_RES, 160)}),
            (TranslatedEvents{down("06"), up("06"), down("06"), up("06")}));
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 110)}), (TranslatedEvents{down("06"), up("06")}));
  EXPECT_EQ(translate({motion(REL_WHEEL, -1), motion(REL_WHEEL_HI_RES, -130)}),
            (TranslatedEvents{motion(REL_WHEEL, -1), motion(REL_WHEEL_HI_RES, -130), endOfReport}));
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 119)}), TranslatedEvents());
}

TEST_F(ReportTranslatorTest, CountsThePlainEventsOfAWheelThatHasNoOthers) {
  rules.map.teach("20", wheelSource(REL_HWHEEL, -1));
  take({"20"});
  EXPECT_EQ(translate({motion(REL_HWHEEL, -2), motion(REL_HWHEEL, 1)}),
            (TranslatedEvents{down("20"), up("20"), down("20"), up("20"), motion(REL_HWHEEL, 1), endOfReport}));
}

TEST_F(ReportTranslatorTest, AWheelThatIsGivenBackPassesAtOnceAndBeginsAnewWhenItIsTaken) {
  take({"06"});
  translate({motion(REL_WHEEL_HI_RES, 90)});
  take({});
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 15)}), (TranslatedEvents{motion(REL_WHEEL_HI_RES, 15), endOfReport}));
  take({"06"});
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 105)}), TranslatedEvents());
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 15)}), (TranslatedEvents{down("06"), up("06")}));
}

TEST_F(ReportTranslatorTest, AControlThatAKeyHoldsIsNotSteppedBesides) {
  rules.map.teach("06", keySource(KEY_1));
  take({"06"});
  EXPECT_EQ(translate({key(KEY_1, 1)}), TranslatedEvents{down("06")});
  rules.map.forget("06");
  EXPECT_EQ(translate({motion(REL_WHEEL_HI_RES, 120)}), TranslatedEvents());
  EXPECT_EQ(translate({key(KEY_1, 0), motion(REL_WHEEL_HI_RES, 120)}),
            (TranslatedEvents{up("06"), down("06"), up("06")}));
}

TEST_F(ReportTranslatorTest, LetsGoOfADirectionOfAHatBeforeTheNext) {
  rules.map.teach("79", {"", EV_ABS, ABS_HAT0X, 1});
  rules.map.teach("80", {"", EV_ABS, ABS_HAT0X, -1});
  take({"79"});
  EXPECT_EQ(translate({hat(ABS_HAT0X, 1), hat(ABS_HAT0Y, 1)}),
            (TranslatedEvents{down("79"), hat(ABS_HAT0Y, 1), endOfReport}));
  EXPECT_EQ(translate({hat(ABS_HAT0X, -1)}), (TranslatedEvents{up("79"), hat(ABS_HAT0X, -1), endOfReport}));
  EXPECT_EQ(translate({hat(ABS_HAT0X, -1)}), TranslatedEvents());
  EXPECT_EQ(translate({hat(ABS_HAT0X, 1)}), (TranslatedEvents{hat(ABS_HAT0X, 0), endOfReport, down("79")}));
  EXPECT_EQ(translate({hat(ABS_HAT0X, 0)}), TranslatedEvents{up("79")});
  EXPECT_EQ(translate({hat(ABS_HAT0X, 0)}), TranslatedEvents());
  take({"79", "80"});
  EXPECT_EQ(translate({hat(ABS_HAT0X, 1)}), TranslatedEvents{down("79")});
  EXPECT_EQ(translate({hat(ABS_HAT0X, -1)}), (TranslatedEvents{up("79"), down("80")}));
  take({});
  EXPECT_EQ(translate({hat(ABS_HAT0X, 0), hat(ABS_HAT0X, 1), hat(ABS_HAT0X, -1), hat(ABS_HAT0X, 0)}),
            (TranslatedEvents{up("80"), hat(ABS_HAT0X, 1), hat(ABS_HAT0X, -1), hat(ABS_HAT0X, 0), endOfReport}));
}

TEST_F(ReportTranslatorTest, ScalesMotionAndLeavesOutWhatMovesNothing) {
  rules.scale = {{400, 800}, {1600, 800}};
  EXPECT_EQ(translate({motion(REL_X, 1)}), TranslatedEvents());
  EXPECT_EQ(translate({motion(REL_X, 2), motion(REL_Y, -2)}),
            (TranslatedEvents{motion(REL_X, 1), motion(REL_Y, -4), endOfReport}));
  EXPECT_EQ(translate({motion(REL_X, 1), motion(REL_Z, 1)}),
            (TranslatedEvents{motion(REL_X, 1), motion(REL_Z, 1), endOfReport}));
  rules.scale = {};
  EXPECT_EQ(translate({motion(REL_X, 1)}), (TranslatedEvents{motion(REL_X, 1), endOfReport}));
}

TEST_F(ReportTranslatorTest, ReleasesAllThatIsDownTheLastFirst) {
  take({"4", "06"});
  translate({key(KEY_A, 1), key(BTN_LEFT, 1), hat(ABS_HAT0X, -1), key(KEY_Q, 1), motion(REL_WHEEL_HI_RES, 90)});
  translate({key(KEY_Q, 0)});
  EXPECT_FALSE(translator.isAtRest());
  EXPECT_EQ(translator.releaseAll(), (TranslatedEvents{hat(ABS_HAT0X, 0), key(BTN_LEFT, 0), endOfReport, up("4")}));
  EXPECT_TRUE(translator.isAtRest());
  EXPECT_EQ(translator.releaseAll(), TranslatedEvents());
  EXPECT_EQ(translate({key(KEY_A, 0), key(BTN_LEFT, 0), hat(ABS_HAT0X, 0), motion(REL_WHEEL_HI_RES, 30)}),
            TranslatedEvents());
}

}  // namespace
}  // namespace vorn::engine::test
