#include "core-engine/rules/SensitivityRules.h"

#include <gtest/gtest.h>

#include "core-engine/TestBundle.h"

namespace vorn::engine::test {
namespace {

PropertyList withStages(const PropertyList& current) {
  return plainProfile("Work")
      .with("Stages", PropertyList::array({stage(800, 800), stage(400, 1200, true), stage(400, 400)}))
      .with("StageValue", current);
}

PropertyList sensitivity(int x, int y, int isIndependent) {
  return PropertyList::dictionary({{"DPIX", x}, {"DPIY", y}, {"IndependentXYOn", isIndependent}});
}

TEST(SensitivityRulesTest, AStepTakesTheNextStageAndStopsAtTheEnds) {
  EXPECT_EQ(stageStep(withStages(0), 1), sensitivity(400, 1200, 1).with("StageValue", 1));
  EXPECT_EQ(stageStep(withStages(1), -1), sensitivity(800, 800, 0).with("StageValue", 0));
  EXPECT_EQ(stageStep(withStages(2), 5), sensitivity(400, 400, 0).with("StageValue", 2));
  EXPECT_EQ(stageStep(withStages(0), -1), sensitivity(800, 800, 0).with("StageValue", 0));
}

TEST(SensitivityRulesTest, ACurrentStageThatDoesNotExistCountsAsTheNearest) {
  EXPECT_EQ(stageStep(withStages(7), -1), sensitivity(400, 1200, 1).with("StageValue", 1));
  EXPECT_EQ(stageStep(withStages(-3), 1), sensitivity(400, 1200, 1).with("StageValue", 1));
  EXPECT_EQ(stageStep(withStages("x"), 0), sensitivity(800, 800, 0).with("StageValue", 0));
}

TEST(SensitivityRulesTest, WhatAStageLacksIsNotChanged) {
  const PropertyList halves = plainProfile("Work").with(
      "Stages", PropertyList::array({PropertyList::dictionary({{"dpix", 600}, {"dpiy", "x"}})}));
  EXPECT_EQ(stageStep(halves, 1), PropertyList::dictionary({{"DPIX", 600}, {"StageValue", 0}}));
}

TEST(SensitivityRulesTest, WithoutStagesThereIsNothingToChange) {
  EXPECT_EQ(stageStep(plainProfile("Work"), 1), PropertyList::dictionary());
  EXPECT_EQ(slowestSensitivity(plainProfile("Work")), PropertyList::dictionary());
}

TEST(SensitivityRulesTest, BothAxesStepWithinTheRangeOfTheMouse) {
  const auto stepped = [](const PropertyList& x, const PropertyList& y, int step) {
    return dpiStep(PropertyList::dictionary({{"DPIX", x}, {"DPIY", y}}), step);
  };
  const auto both = [](int x, int y) { return PropertyList::dictionary({{"DPIX", x}, {"DPIY", y}}); };
  EXPECT_EQ(stepped(800, 1200, 100), both(900, 1300));
  EXPECT_EQ(stepped(5550, 5600, 100), both(5600, 5600));
  EXPECT_EQ(stepped(150, 100, -100), both(100, 100));
  EXPECT_EQ(stepped(9000, "x", 100), both(5600, 200));
}

TEST(SensitivityRulesTest, TheSlowestIsTheFirstWithTheLowestX) {
  EXPECT_EQ(slowestSensitivity(withStages(0)), sensitivity(400, 1200, 1));
}

TEST(SensitivityRulesTest, LockedAxesAreSetTogether) {
  const PropertyList both = sensitivity(800, 800, 0);
  EXPECT_EQ(withLockedAxes(both.with("DPIX", 900), both), sensitivity(900, 900, 0));
  EXPECT_EQ(withLockedAxes(both.with("DPIY", 900), both), sensitivity(900, 900, 0));
  EXPECT_EQ(withLockedAxes(sensitivity(900, 1000, 0), both), sensitivity(900, 900, 0));
  EXPECT_EQ(withLockedAxes(sensitivity(900, 1000, 1), both), sensitivity(900, 1000, 1));
  const PropertyList apart = sensitivity(900, 1000, 1);
  EXPECT_EQ(withLockedAxes(apart.with("IndependentXYOn", 0), apart), sensitivity(900, 900, 0));
  EXPECT_EQ(withLockedAxes(sensitivity(900, 1200, 0), apart), sensitivity(1200, 1200, 0));
}

TEST(SensitivityRulesTest, AxesThatNobodyChangesStayAsTheyWere) {
  const PropertyList odd = sensitivity(800, 900, 0);
  EXPECT_EQ(withLockedAxes(odd.with("PollingRate", 125), odd), odd.with("PollingRate", 125));
  const PropertyList withoutLock = odd.without("IndependentXYOn");
  EXPECT_EQ(withLockedAxes(withoutLock.with("DPIX", 100), withoutLock), withoutLock.with("DPIX", 100));
}

TEST(SensitivityRulesTest, LockedAxesOfAStageAreSetTogether) {
  const PropertyList before = withStages(0);
  const auto changed = [&](const PropertyList& first, const PropertyList& second) {
    return before.with("Stages", PropertyList::array({first, second, stage(400, 400)}));
  };
  const PropertyList apart = stage(400, 1300, true);
  EXPECT_EQ(withLockedAxes(changed(stage(900, 800), apart), before), changed(stage(900, 900), apart));
  EXPECT_EQ(withLockedAxes(changed(stage(800, 900), apart), before), changed(stage(900, 900), apart));
  EXPECT_EQ(withLockedAxes(changed(stage(800, 800), stage(400, 1200)), before),
            changed(stage(800, 800), stage(400, 400)));
}

}  // namespace
}  // namespace vorn::engine::test
