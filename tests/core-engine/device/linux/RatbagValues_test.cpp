#include "core-engine/device/linux/RatbagValues.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorn::engine {
namespace {

using Mode = RatbagLed::Mode;
using ColorDepth = RatbagLed::ColorDepth;
using Numbers = std::vector<std::uint32_t>;

TEST(RatbagValuesTest, FindTheNearestAllowedValue) {
  const Numbers allowed = {200, 400, 800, 1600};
  struct Case {
    std::uint32_t wanted;
    std::uint32_t nearest;
  };
  for (const auto& [wanted, nearest] :
       {Case{0, 200}, Case{200, 200}, Case{299, 200}, Case{300, 200}, Case{301, 400}, Case{800, 800}, Case{1199, 800},
        Case{1201, 1600}, Case{5600, 1600}, Case{std::numeric_limits<std::uint32_t>::max(), 1600}}) {
    EXPECT_EQ(nearestAllowed(allowed, wanted), nearest) << wanted;
  }
  EXPECT_EQ(nearestAllowed({}, 800), std::nullopt);
}

TEST(RatbagValuesTest, FindTheNearestResolutionOfBothAxesOrOfOneForBoth) {
  RatbagState state;
  EXPECT_EQ(nearestResolution(state, {800, 800}), std::nullopt);
  state.resolutions = {400, 800};
  EXPECT_EQ(nearestResolution(state, {790, 410}), (RatbagResolution{800, 800}));
  state.hasSeparateAxes = true;
  EXPECT_EQ(nearestResolution(state, {790, 410}), (RatbagResolution{800, 400}));
}

TEST(RatbagValuesTest, GiveALedWhatItCanDoOfALight) {
  RatbagLed led;
  led.modes = {Mode::Off, Mode::On, Mode::Cycle};
  led.colorDepth = ColorDepth::EightBits;
  const auto lit = [&led](Mode mode, RatbagColor color, std::uint8_t brightness) {
    RatbagLed result = led;
    result.mode = mode;
    result.color = color;
    result.brightness = brightness;
    return result;
  };
  const std::vector<RatbagColor> colors = {{255, 100, 0}, {0, 200, 9}};
  EXPECT_EQ(ledFor({true, false, 255, colors}, led, 0), lit(Mode::On, {255, 100, 0}, 255));
  EXPECT_EQ(ledFor({true, false, 255, colors}, led, 1), lit(Mode::On, {0, 200, 9}, 255));
  EXPECT_EQ(ledFor({true, false, 255, colors}, led, 7), lit(Mode::On, {0, 200, 9}, 255));
  EXPECT_EQ(ledFor({true, false, 255, {}}, led, 0), lit(Mode::On, {255, 255, 255}, 255));
  EXPECT_EQ(ledFor({true, false, 51, colors}, led, 0), lit(Mode::On, {51, 20, 0}, 255));
  EXPECT_EQ(ledFor({true, true, 51, colors}, led, 0), lit(Mode::Cycle, {}, 51));
  EXPECT_EQ(ledFor({false, true, 51, colors}, led, 0), lit(Mode::Off, {}, 0));
  EXPECT_EQ(ledFor({true, false, 0, colors}, led, 0), lit(Mode::Off, {}, 0));

  led.modes = {Mode::On};
  EXPECT_EQ(ledFor({true, true, 255, colors}, led, 0), lit(Mode::On, {255, 100, 0}, 255));
  EXPECT_EQ(ledFor({false, true, 255, colors}, led, 0), lit(Mode::On, {}, 255));
  led.colorDepth = ColorDepth::OneBit;
  EXPECT_EQ(ledFor({true, false, 51, colors}, led, 1), lit(Mode::On, {0, 255, 0}, 255));
  led.colorDepth = ColorDepth::Monochrome;
  EXPECT_EQ(ledFor({true, false, 51, colors}, led, 0), lit(Mode::On, {}, 51));
  EXPECT_EQ(ledFor({false, false, 51, colors}, led, 0), lit(Mode::On, {}, 0));

  led.modes = {Mode::Breathing};
  EXPECT_EQ(ledFor({true, false, 255, colors}, led, 0), led);
}

TEST(RatbagValuesTest, TakeOverWhatRatbagSays) {
  RatbagState state;
  takeDevice(PropertyList::dictionary({{"Name", "Acme"}, {"Model", "usb:1:2:0"}, {"FirmwareVersion", "1.2"}}), state);
  takeProfile(PropertyList::dictionary({{"ReportRate", 500}, {"ReportRates", PropertyList::array({500, 125})}}), state);
  takeResolution(PropertyList::dictionary({{"Resolution", PropertyList::array({800, 400})},
                                           {"Resolutions", PropertyList::array({800, 400, 400})}}),
                 state);
  RatbagState expected{"Acme", "usb:1:2:0", "1.2", {400, 800}, true, {800, 400}, {125, 500}, 500, {}};
  EXPECT_EQ(state, expected);
  takeResolution(PropertyList::dictionary({{"Resolution", 1200}}), state);
  expected.hasSeparateAxes = false;
  expected.resolution = {1200, 1200};
  EXPECT_EQ(state, expected);

  RatbagLed led;
  takeLed(PropertyList::dictionary({{"Mode", 2},
                                    {"Modes", PropertyList::array({0, 2, 2, 9})},
                                    {"Color", PropertyList::array({1, 2, 3})},
                                    {"ColorDepth", 1},
                                    {"Brightness", 77}}),
          led);
  EXPECT_EQ(led, (RatbagLed{{Mode::Off, Mode::Cycle}, ColorDepth::EightBits, Mode::Cycle, {1, 2, 3}, 77}));
}

TEST(RatbagValuesTest, StayAsTheyAreWhereRatbagMakesNoSense) {
  const RatbagState state{"Acme", "usb:1:2:0", "1.2", {400}, true, {800, 400}, {125}, 125, {}};
  const RatbagLed led{{Mode::On}, ColorDepth::EightBits, Mode::On, {1, 2, 3}, 77};
  const std::string longText(10'000, 'x');
  for (const PropertyList& nonsense :
       {PropertyList(), PropertyList(-1), PropertyList(1'000'001), PropertyList(~std::uint64_t{0}), PropertyList(0.5),
        PropertyList(true), PropertyList(longText), PropertyList::dictionary({{"a", 1}}),
        PropertyList::dictionary({{"a", 1}, {"b", 2}, {"c", 3}})}) {
    std::vector<PropertyList::Pair> all;
    for (const char* key : {"Name", "Model", "FirmwareVersion", "ReportRate", "ReportRates", "Resolution",
                            "Resolutions", "Mode", "Modes", "Color", "ColorDepth", "Brightness"})
      all.emplace_back(key, nonsense);
    const PropertyList properties = PropertyList::dictionary(all);
    RatbagState taken = state;
    takeDevice(properties, taken);
    takeProfile(properties, taken);
    takeResolution(properties, taken);
    EXPECT_EQ(taken, state);
    RatbagLed takenLed = led;
    takeLed(properties, takenLed);
    EXPECT_EQ(takenLed, led);
    EXPECT_TRUE(ratbagPaths(nonsense).empty());
  }
}

TEST(RatbagValuesTest, BoundHowManyObjectsAndNumbersAreTaken) {
  EXPECT_EQ(ratbagPaths(PropertyList::array({"/a", 5, "no path", "/b"})), (std::vector<std::string>{"/a", "/b"}));
  EXPECT_EQ(ratbagPaths(PropertyList::array(std::vector<PropertyList>(1000, "/a"))).size(), maximumRatbagObjects);
  std::vector<PropertyList> numbers;
  for (int number = 1; number <= 100'000; ++number) numbers.emplace_back(number);
  RatbagState state;
  takeResolution(PropertyList::dictionary({{"Resolutions", PropertyList::array(numbers)}}), state);
  EXPECT_EQ(state.resolutions.size(), 4096U);
}

}  // namespace
}  // namespace vorn::engine
