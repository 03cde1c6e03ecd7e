// The settings of a profile in one table: the reference of the file formats and the controls of the layouts say the
// same.
#include "model/ProfileKeys.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

std::string contentsOf(const fs::path& path) {
  std::ifstream file(path);
  std::ostringstream contents;
  contents << file.rdbuf();
  return contents.str();
}

const std::map<SettingType, std::string> typeNames = {
    {SettingType::Text, "string"}, {SettingType::Integer, "integer"}, {SettingType::Flag, "flag"},
    {SettingType::Array, "array"}, {SettingType::Keymaps, "array"},   {SettingType::Stages, "array"},
    {SettingType::Texts, "array"}, {SettingType::Colors, "array"},    {SettingType::Dictionary, "dictionary"}};
const std::map<SettingUnit, std::string> unitNames = {
    {SettingUnit::None, ""}, {SettingUnit::Dpi, " DPI"}, {SettingUnit::Hertz, " Hz"}};

std::string rangeText(const ProfileKey& setting) {
  const auto text = [](const SettingRange& range) {
    return std::to_string(range.minimum) + " to " + std::to_string(range.maximum);
  };
  if (setting.range == SettingRange()) return "any";
  if (typeNames.at(setting.type) != "array") return text(setting.range);
  const std::string count = text(setting.range) + " elements";
  return setting.elements == SettingRange() ? count : count + ", " + text(setting.elements);
}

// The rows of the table without their last column, which is for people.
Lines documentedSettings() {
  Lines rows;
  std::istringstream page(contentsOf(fs::path(SOURCE_FOLDER) / "docs" / "file-formats.md"));
  bool isInSection = false;
  bool isInTable = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("## ")) isInSection = line == "## Profile files";
    if (isInTable && line.empty()) break;
    if (isInTable) rows.push_back(line.substr(0, line.rfind(" | ")));
    if (isInSection && line.starts_with("|---")) isInTable = true;
  }
  return rows;
}

TEST(ProfileKeysTest, AreOnceInTheReferenceOfTheFileFormats) {
  Lines expected;
  for (const ProfileKey& setting : profileKeys) {
    expected.push_back("| \"" + std::string(setting.key) + "\" | " + typeNames.at(setting.type) + " | " +
                       rangeText(setting) + " |" + unitNames.at(setting.unit) +
                       (setting.scope == SettingScope::Device ? " | device" : " | profile"));
  }
  EXPECT_EQ(documentedSettings(), expected);
}

TEST(ProfileKeysTest, StandInTheTableOnce) {
  std::set<std::string_view> names;
  for (const ProfileKey& setting : profileKeys) names.insert(setting.key);
  EXPECT_EQ(names.size(), profileKeys.size());
}

// --- Layouts

struct Slider {
  std::string name;
  SettingRange range;
};

int numberIn(const std::string& element, const char* property, int preset) {
  const std::regex pattern("<property name=\"" + std::string(property) + "\">\\s*<number>(-?\\d+)</number>");
  std::smatch match;
  return std::regex_search(element, match, pattern) ? std::stoi(match[1]) : preset;
}

// Whatever has a range in a layout. Such widgets hold no others.
std::vector<Slider> slidersOf(const std::string& layout) {
  static const std::regex opening(
      R"re(<widget class="(?:\w+::)?\w*(?:Slider|SpinBox|Dial|ScrollBar)" name="(\w+)">)re");
  std::vector<Slider> sliders;
  for (std::sregex_iterator match(layout.begin(), layout.end(), opening), end; match != end; ++match) {
    const auto begin = static_cast<std::size_t>(match->position());
    const std::string element = layout.substr(begin, layout.find("</widget>", begin) - begin);
    sliders.push_back({(*match)[1], {numberIn(element, "minimum", 0), numberIn(element, "maximum", 99)}});
  }
  return sliders;
}

std::vector<Slider> slidersOfAllLayouts() {
  std::vector<Slider> sliders;
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_FOLDER) / "src")) {
    if (entry.path().extension() != ".ui") continue;
    for (const Slider& slider : slidersOf(contentsOf(entry.path()))) sliders.push_back(slider);
  }
  return sliders;
}

SettingRange rangeOf(keys::Key key) {
  for (const ProfileKey& setting : profileKeys) {
    if (setting.key == key) return setting.type == SettingType::Stages ? setting.elements : setting.range;
  }
  return {};
}

struct Editor {
  keys::Key key;
  SettingRange narrower = {};  // where the control offers less than the engine accepts
  const char* reason = "";
};

const std::map<std::string, Editor> editors = {
    {"mXDpiSlider", {keys::DPIX}},
    {"mYDpiSlider", {keys::DPIY}},
    {"mStageXDpiSlider", {keys::Stages}},
    {"mStageYDpiSlider", {keys::Stages}},
    {"mAccelerationSlider", {keys::Acceleration, {1, 10}, "ten levels; 0 is what switching it off writes"}},
    {"mBrightnessValue", {keys::BrightnessKBNormal, {1, 4}, "four steps: off, dim, normal, bright"}},
    {"mLightBrightnessSlider", {keys::BrightnessBattery, {1, 4}, "four steps: off, dim, normal, bright"}},
    {"mSleepModeSlider", {keys::PowerSaver, {1, 4}, "four times: 1, 5, 10, 15 minutes"}},
    {"mFLashScrollWheelSlider", {keys::BatteryCriticalLevel, {1, 5}, "five levels: 5, 10, 15, 20, 25 percent"}},
};

TEST(ProfileKeysTest, TakeUpToEightNamesOfKeymaps) {
  const ProfileKey& names = *profileKeyOf("KeymapNames");
  const auto texts = [](std::size_t count) { return PropertyList::array(std::vector<PropertyList>(count, "Build")); };
  EXPECT_TRUE(fits(names, texts(1)));
  EXPECT_TRUE(fits(names, texts(8)));
  EXPECT_TRUE(fits(names, PropertyList::array({"", "Build"})));
  for (const PropertyList& value : {texts(0), texts(9), PropertyList("Build"), PropertyList::array({"Build", 2}),
                                    PropertyList::dictionary({{"0", "Build"}})}) {
    EXPECT_FALSE(fits(names, value)) << value.description();
  }
  EXPECT_EQ(expectation(names), "an array of 1 to 8 texts");
}

TEST(ProfileKeysTest, OfferOnlyTheRatesThatTheMouseKnows) {
  const ProfileKey& rate = *profileKeyOf("PollingRate");
  for (const int value : {125, 500, 1000}) EXPECT_TRUE(isChoice(rate, value)) << value;
  for (const PropertyList& value : {PropertyList(300), PropertyList(0), PropertyList(2000), PropertyList("500")}) {
    EXPECT_FALSE(isChoice(rate, value)) << value.description();
  }
  EXPECT_EQ(choiceExpectation(rate), "125, 500 or 1000 Hz");
  // What is stored already stays.
  EXPECT_TRUE(fits(rate, 300));
  EXPECT_EQ(expectation(rate), "a whole number from 125 to 1000 Hz");
}

TEST(ProfileKeysTest, OfferWhateverIsAcceptedOfOtherSettings) {
  for (const ProfileKey& setting : profileKeys) {
    if (setting.key == keys::PollingRate) continue;
    EXPECT_TRUE(choicesOf(setting).empty()) << setting.key;
    EXPECT_EQ(choiceExpectation(setting), expectation(setting)) << setting.key;
  }
  EXPECT_TRUE(isChoice(*profileKeyOf("DPIX"), 5600));
  EXPECT_FALSE(isChoice(*profileKeyOf("DPIX"), 5601));
  EXPECT_EQ(expectation(*profileKeyOf("ScrollLED")), "0 or 1 (off, on)");
}

// Edits what is known of the mouse, which is no setting of a profile.
const std::string fieldOfTheMouse = "mResolutionField";

TEST(ProfileKeysTest, HaveTheRangesOfTheirSliders) {
  std::set<std::string> found;
  for (const Slider& slider : slidersOfAllLayouts()) {
    if (slider.name == fieldOfTheMouse) continue;
    EXPECT_TRUE(found.insert(slider.name).second) << slider.name << " is in two layouts";
    const auto editor = editors.find(slider.name);
    ASSERT_NE(editor, editors.end()) << slider.name << " edits no setting that is known here";
    const auto& [key, narrower, reason] = editor->second;
    const SettingRange accepted = rangeOf(key);
    const SettingRange offered = narrower == SettingRange() ? accepted : narrower;
    EXPECT_EQ(slider.range, offered) << slider.name << ": " << slider.range.minimum << " to " << slider.range.maximum;
    EXPECT_TRUE(offered.minimum >= accepted.minimum && offered.maximum <= accepted.maximum) << slider.name;
    EXPECT_EQ(offered != accepted, *reason != '\0') << slider.name;
  }
  EXPECT_EQ(found.size(), editors.size());
}

}  // namespace
}  // namespace vorn
