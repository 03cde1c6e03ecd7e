#include "FakeRatbag.h"

#include <algorithm>
#include <cstddef>
#include <deque>

namespace vorn::test {

namespace {

constexpr const char* busName = "org.freedesktop.ratbag1";
constexpr const char* root = "/org/freedesktop/ratbag1";
constexpr const char* managerInterface = "org.freedesktop.ratbag1.Manager";
constexpr const char* deviceInterface = "org.freedesktop.ratbag1.Device";
constexpr const char* profileInterface = "org.freedesktop.ratbag1.Profile";
constexpr const char* resolutionInterface = "org.freedesktop.ratbag1.Resolution";
constexpr const char* ledInterface = "org.freedesktop.ratbag1.Led";
constexpr std::uint32_t resolutions[] = {200, 400, 800, 1200, 1600, 3200};
constexpr std::uint32_t reportRates[] = {125, 250, 500, 1000};
constexpr auto changes = SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE;
constexpr auto writes = SD_BUS_VTABLE_UNPRIVILEGED | SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE;

// What is set in a mouse.
struct Values {
  std::uint32_t resolution[2][2][2] = {{{400, 400}, {800, 800}}, {{800, 800}, {1600, 1200}}};
  int isActive[2][2] = {{1, 0}, {0, 1}};
  std::uint32_t rate[2] = {125, 1000};
  std::uint32_t mode[2][2] = {{0, 0}, {1, 1}};
  std::uint32_t color[2][2][3] = {{{0, 0, 0}, {0, 0, 0}}, {{255, 0, 0}, {0, 255, 0}}};
  std::uint32_t brightness[2][2] = {{255, 255}, {255, 255}};
  std::uint32_t duration[2][2] = {{1000, 1000}, {1000, 1000}};
};

}  // namespace

// Which object of which mouse, for the tables.
struct FakePart {
  FakeMouse* mouse = nullptr;
  std::uint32_t profile = 0;
  std::uint32_t index = 0;
  std::string path;
};

struct FakeMouse {
  sd_bus* bus = nullptr;
  std::string sysname;
  std::string model;
  std::string firmware;  // empty: it does not tell
  bool hasSeparateAxes = true;
  Values values;
  Values committed;
  std::string refused;
  std::uint32_t highest = UINT32_MAX;
  bool failsToCommit = false;
  std::deque<FakePart> parts;
  std::vector<sd_bus_slot*> slots;

  ~FakeMouse() {
    for (sd_bus_slot* slot : slots) sd_bus_slot_unref(slot);
  }
  std::string path(const char* kind, int profile = -1, const char* letter = "", std::uint32_t index = 0) const {
    std::string result = std::string(root) + "/" + kind + "/" + sysname;
    if (profile >= 0) result += "/p" + std::to_string(profile);
    if (*letter != '\0') result += std::string("/") + letter + std::to_string(index);
    return result;
  }
  void publish(const std::string& path, const char* interface, const sd_bus_vtable* table, std::uint32_t profile,
               std::uint32_t index) {
    FakePart& part = parts.emplace_back(FakePart{this, profile, index, path});
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus, &slot, path.c_str(), interface, table, &part);
    slots.push_back(slot);
  }
  void publishAll();
};

namespace {

FakePart& partOf(void* part) {
  return *static_cast<FakePart*>(part);
}

int appendPaths(sd_bus_message* reply, const std::vector<std::string>& paths) {
  sd_bus_message_open_container(reply, 'a', "o");
  for (const std::string& path : paths) sd_bus_message_append(reply, "o", path.c_str());
  return sd_bus_message_close_container(reply);
}

// Refuses where it is told to; else tells of the new value.
int accept(const FakePart& part, const char* property, const std::string& value, sd_bus_error* error) {
  if (part.mouse->refused == property) return sd_bus_error_set(error, "org.freedesktop.DBus.Error.Failed", "Refused");
  say("set " + part.path + " " + property + " " + value);
  return 0;
}

int readNumber(sd_bus_message* message, const FakePart& part, const char* property, std::uint32_t& number,
               sd_bus_error* error) {
  std::uint32_t value = 0;
  if (const int result = sd_bus_message_read(message, "u", &value); result < 0) return result;
  if (const int result = accept(part, property, std::to_string(value), error); result < 0) return result;
  number = value;
  return 0;
}

#define GETTER(NAME)                                                                               \
  int NAME(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* property, \
           sd_bus_message* reply, void* self, sd_bus_error* /*error*/)
#define SETTER(NAME)                                                                                          \
  int NAME(sd_bus* bus, const char* path, const char* interface, const char* property, sd_bus_message* value, \
           void* self, sd_bus_error* error)

GETTER(getVersion) {
  static_cast<void>(property);
  static_cast<void>(self);
  return sd_bus_message_append(reply, "i", 1);
}
GETTER(getText) {
  const FakeMouse& mouse = *partOf(self).mouse;
  const std::string what = property;
  if (what == "FirmwareVersion") return sd_bus_message_append(reply, "s", mouse.firmware.c_str());
  return sd_bus_message_append(reply, "s", what == "Model" ? mouse.model.c_str() : "Acme Mouse");
}
GETTER(getProfiles) {
  static_cast<void>(property);
  const FakeMouse& mouse = *partOf(self).mouse;
  return appendPaths(reply, {mouse.path("profile", 0), mouse.path("profile", 1)});
}
GETTER(getParts) {
  const FakePart& part = partOf(self);
  const auto profile = static_cast<int>(part.profile);
  const std::string what = property;
  if (what == "Buttons") return appendPaths(reply, {});
  const bool isLeds = what == "Leds";
  const char* const kind = isLeds ? "led" : "resolution";
  const char* const letter = isLeds ? "l" : "r";
  return appendPaths(reply, {part.mouse->path(kind, profile, letter, 0), part.mouse->path(kind, profile, letter, 1)});
}
GETTER(getNumbers) {
  const std::string what = property;
  const FakePart& part = partOf(self);
  std::vector<std::uint32_t> numbers;
  if (what == "ReportRates") numbers.assign(std::begin(reportRates), std::end(reportRates));
  if (what == "Resolutions") numbers.assign(std::begin(resolutions), std::end(resolutions));
  if (what == "Modes")
    numbers = part.index == 0 ? std::vector<std::uint32_t>{0, 1, 2, 3} : std::vector<std::uint32_t>{0, 1};
  return sd_bus_message_append_array(reply, 'u', numbers.data(), numbers.size() * sizeof(std::uint32_t));
}
GETTER(getFlag) {
  const FakePart& part = partOf(self);
  const std::string what = property;
  if (what == "Enabled") return sd_bus_message_append(reply, "b", 1);
  if (what == "IsDefault") return sd_bus_message_append(reply, "b", part.index == 0 ? 1 : 0);
  return sd_bus_message_append(reply, "b", part.profile == 1 ? 1 : 0);
}
GETTER(getResolutionFlag) {
  static_cast<void>(property);
  const FakePart& part = partOf(self);
  return sd_bus_message_append(reply, "b", part.mouse->values.isActive[part.profile][part.index]);
}
GETTER(getNumber) {
  const FakePart& part = partOf(self);
  const Values& values = part.mouse->values;
  const std::string what = property;
  std::uint32_t number = part.index;
  if (what == "ReportRate") number = values.rate[part.profile];
  if (what == "Mode") number = values.mode[part.profile][part.index];
  if (what == "Brightness") number = values.brightness[part.profile][part.index];
  if (what == "EffectDuration") number = values.duration[part.profile][part.index];
  if (what == "ColorDepth") number = part.index == 0 ? 1 : 2;
  return sd_bus_message_append(reply, "u", number);
}
SETTER(setNumber) {
  const FakePart& part = partOf(self);
  Values& values = part.mouse->values;
  const std::string what = property;
  std::uint32_t& number = what == "ReportRate"   ? values.rate[part.profile]
                          : what == "Mode"       ? values.mode[part.profile][part.index]
                          : what == "Brightness" ? values.brightness[part.profile][part.index]
                                                 : values.duration[part.profile][part.index];
  const int result = readNumber(value, part, property, number, error);
  return result < 0 ? result : sd_bus_emit_properties_changed(bus, path, interface, property, nullptr);
}
GETTER(getResolution) {
  static_cast<void>(property);
  const FakePart& part = partOf(self);
  const auto& value = part.mouse->values.resolution[part.profile][part.index];
  return part.mouse->hasSeparateAxes ? sd_bus_message_append(reply, "v", "(uu)", value[0], value[1])
                                     : sd_bus_message_append(reply, "v", "u", value[0]);
}
SETTER(setResolution) {
  const FakePart& part = partOf(self);
  std::uint32_t x = 0;
  std::uint32_t y = 0;
  const int result = part.mouse->hasSeparateAxes ? sd_bus_message_read(value, "v", "(uu)", &x, &y)
                                                 : sd_bus_message_read(value, "v", "u", &x);
  if (result < 0) return result;
  if (!part.mouse->hasSeparateAxes) y = x;
  for (const std::uint32_t each : {x, y}) {
    if (std::find(std::begin(resolutions), std::end(resolutions), each) == std::end(resolutions))
      return sd_bus_error_set(error, "org.freedesktop.DBus.Error.InvalidArgs", "No such resolution");
  }
  const int accepted = accept(part, property, std::to_string(x) + "x" + std::to_string(y), error);
  if (accepted < 0) return accepted;
  auto& values = part.mouse->values.resolution[part.profile][part.index];
  values[0] = std::min(x, part.mouse->highest);
  values[1] = std::min(y, part.mouse->highest);
  return sd_bus_emit_properties_changed(bus, path, interface, property, nullptr);
}
GETTER(getColor) {
  static_cast<void>(property);
  const FakePart& part = partOf(self);
  const auto& color = part.mouse->values.color[part.profile][part.index];
  return sd_bus_message_append(reply, "(uuu)", color[0], color[1], color[2]);
}
SETTER(setColor) {
  const FakePart& part = partOf(self);
  std::uint32_t color[3] = {};
  const int result = sd_bus_message_read(value, "(uuu)", &color[0], &color[1], &color[2]);
  if (result < 0) return result;
  std::string text;
  for (const std::uint32_t component : color) text += (text.empty() ? "" : ",") + std::to_string(component);
  const int accepted = accept(part, property, text, error);
  if (accepted < 0) return accepted;
  std::copy(std::begin(color), std::end(color), part.mouse->values.color[part.profile][part.index]);
  return sd_bus_emit_properties_changed(bus, path, interface, property, nullptr);
}

int commit(sd_bus_message* call, void* self, sd_bus_error* /*error*/) {
  const FakePart& part = partOf(self);
  FakeMouse& mouse = *part.mouse;
  say("commit");
  const int sent = sd_bus_reply_method_return(call, "u", 0U);
  if (!mouse.failsToCommit) {
    mouse.committed = mouse.values;
    return sent;
  }
  mouse.failsToCommit = false;
  mouse.values = mouse.committed;
  sd_bus_emit_signal(mouse.bus, part.path.c_str(), deviceInterface, "Resync", "");
  return sent;
}

int nothing(sd_bus_message* call, void* /*self*/, sd_bus_error* /*error*/) {
  return sd_bus_reply_method_return(call, "u", 0U);
}

const sd_bus_vtable deviceTable[] = {SD_BUS_VTABLE_START(0),
                                     SD_BUS_PROPERTY("Model", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                     SD_BUS_PROPERTY("Name", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                     SD_BUS_PROPERTY("FirmwareVersion", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                     SD_BUS_PROPERTY("Profiles", "ao", getProfiles, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                     SD_BUS_METHOD("Commit", "", "u", commit, SD_BUS_VTABLE_UNPRIVILEGED),
                                     SD_BUS_SIGNAL("Resync", "", 0),
                                     SD_BUS_VTABLE_END};
const sd_bus_vtable profileTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Name", "s", getText, 0, changes),
    SD_BUS_PROPERTY("Enabled", "b", getFlag, 0, changes),
    SD_BUS_PROPERTY("Index", "u", getNumber, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Capabilities", "au", getNumbers, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Resolutions", "ao", getParts, 0, 0),
    SD_BUS_PROPERTY("Buttons", "ao", getParts, 0, 0),
    SD_BUS_PROPERTY("Leds", "ao", getParts, 0, 0),
    SD_BUS_PROPERTY("IsActive", "b", getFlag, 0, changes),
    SD_BUS_WRITABLE_PROPERTY("ReportRate", "u", getNumber, setNumber, 0, writes),
    SD_BUS_PROPERTY("ReportRates", "au", getNumbers, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("SetActive", "", "u", nothing, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};
const sd_bus_vtable resolutionTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Index", "u", getNumber, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IsActive", "b", getResolutionFlag, 0, changes),
    SD_BUS_PROPERTY("IsDefault", "b", getFlag, 0, changes),
    SD_BUS_WRITABLE_PROPERTY("Resolution", "v", getResolution, setResolution, 0, writes),
    SD_BUS_PROPERTY("Resolutions", "au", getNumbers, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("SetActive", "", "u", nothing, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("SetDefault", "", "u", nothing, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};
const sd_bus_vtable ledTable[] = {SD_BUS_VTABLE_START(0),
                                  SD_BUS_PROPERTY("Index", "u", getNumber, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                  SD_BUS_PROPERTY("Modes", "au", getNumbers, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                  SD_BUS_WRITABLE_PROPERTY("Mode", "u", getNumber, setNumber, 0, writes),
                                  SD_BUS_WRITABLE_PROPERTY("Color", "(uuu)", getColor, setColor, 0, writes),
                                  SD_BUS_PROPERTY("ColorDepth", "u", getNumber, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                  SD_BUS_WRITABLE_PROPERTY("EffectDuration", "u", getNumber, setNumber, 0, writes),
                                  SD_BUS_WRITABLE_PROPERTY("Brightness", "u", getNumber, setNumber, 0, writes),
                                  SD_BUS_VTABLE_END};

}  // namespace

void FakeMouse::publishAll() {
  publish(path("device"), deviceInterface, deviceTable, 0, 0);
  for (std::uint32_t profile = 0; profile < 2; ++profile) {
    const auto number = static_cast<int>(profile);
    publish(path("profile", number), profileInterface, profileTable, profile, profile);
    for (std::uint32_t index = 0; index < 2; ++index) {
      publish(path("resolution", number, "r", index), resolutionInterface, resolutionTable, profile, index);
      publish(path("led", number, "l", index), ledInterface, ledTable, profile, index);
    }
  }
}

FakeRatbag::FakeRatbag(sd_bus* bus) : mBus(bus) {}
FakeRatbag::~FakeRatbag() = default;

int FakeRatbag::getDevices(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self,
                           sd_bus_error*) {
  std::vector<std::string> paths;
  for (const auto& [sysname, mouse] : static_cast<const FakeRatbag*>(self)->mMice)
    paths.push_back(mouse->path("device"));
  return appendPaths(reply, paths);
}

// Answers to questions for properties that make no sense.
int FakeRatbag::garble(sd_bus_message* message, void* self, sd_bus_error*) {
  const std::string& kind = static_cast<const FakeRatbag*>(self)->mGarbage;
  if (kind == "off" || sd_bus_message_is_method_call(message, "org.freedesktop.DBus.Properties", "GetAll") <= 0)
    return 0;
  if (kind == "error") sd_bus_reply_method_errorf(message, "org.freedesktop.DBus.Error.Failed", "No");
  if (kind == "empty") sd_bus_reply_method_return(message, "a{sv}", 0);
  if (kind == "text") sd_bus_reply_method_return(message, "s", "no properties");
  if (kind == "version") sd_bus_reply_method_return(message, "a{sv}", 1, "APIVersion", "i", 99);
  if (kind == "types") {
    sd_bus_reply_method_return(message, "a{sv}", 12, "APIVersion", "i", 1, "Devices", "as", 2, "no path", "/x/hidraw3",
                               "Model", "i", -1, "Name", "as", 1, "?", "Profiles", "as", 3, "", "/", "/a//b",
                               "Resolutions", "as", 2, "/", "/x", "Leds", "as", 2, "/", "/x", "IsActive", "s", "yes",
                               "ReportRate", "i", -5, "Resolution", "ai", 3, 1, 2, 3, "Color", "as", 3, "r", "g", "b",
                               "Modes", "u", 7U);
  }
  return 1;
}

bool FakeRatbag::publish() {
  static const sd_bus_vtable table[] = {SD_BUS_VTABLE_START(0),
                                        SD_BUS_PROPERTY("APIVersion", "i", getVersion, 0, SD_BUS_VTABLE_PROPERTY_CONST),
                                        SD_BUS_PROPERTY("Devices", "ao", getDevices, 0, changes), SD_BUS_VTABLE_END};
  if (!mIsPublished) sd_bus_add_object_vtable(mBus, nullptr, root, managerInterface, table, this);
  if (!mIsPublished) sd_bus_add_filter(mBus, nullptr, garble, this);
  mIsPublished = true;
  return true;
}

bool FakeRatbag::emitDevices() {
  return sd_bus_emit_properties_changed(mBus, root, managerInterface, "Devices", nullptr) >= 0;
}

bool FakeRatbag::add(const std::string& sysname, const std::string& model, bool hasSeparateAxes) {
  auto mouse = std::make_unique<FakeMouse>();
  mouse->bus = mBus;
  mouse->sysname = sysname;
  mouse->model = model;
  mouse->hasSeparateAxes = hasSeparateAxes;
  mouse->publishAll();
  mMice[sysname] = std::move(mouse);
  return !mIsPublished || emitDevices();
}

bool FakeRatbag::change(const std::string& what, FakeMouse& mouse, Words& words) {
  const auto tell = [&mouse](const std::string& path, const char* interface, const char* property) {
    return sd_bus_emit_properties_changed(mouse.bus, path.c_str(), interface, property, nullptr) >= 0;
  };
  Values& values = mouse.values;
  if (what == "firmware") {
    mouse.firmware = words.next();
    return true;
  }
  if (what == "resolution") {
    for (std::uint32_t& axis : values.resolution[1][1]) axis = words.number();
    return tell(mouse.path("resolution", 1, "r", 1), resolutionInterface, "Resolution");
  }
  if (what == "rate") {
    values.rate[1] = words.number();
    return tell(mouse.path("profile", 1), profileInterface, "ReportRate");
  }
  if (what == "color") {
    for (std::uint32_t& component : values.color[1][0]) component = words.number();
    return tell(mouse.path("led", 1, "l", 0), ledInterface, "Color");
  }
  if (what != "activate") return false;
  const std::uint32_t index = words.number();
  for (std::uint32_t each = 0; each < 2; ++each) {
    values.isActive[1][each] = each == index ? 1 : 0;
    tell(mouse.path("resolution", 1, "r", each), resolutionInterface, "IsActive");
  }
  return true;
}

bool FakeRatbag::obey(Words& words) {
  const std::string what = words.next();
  if (what == "start") return publish() && sd_bus_request_name(mBus, busName, 0) >= 0;
  if (what == "stop") return sd_bus_release_name(mBus, busName) >= 0;
  if (what == "garble") {
    return sd_bus_emit_signal(mBus, root, "org.freedesktop.DBus.Properties", "PropertiesChanged", "ssx",
                              managerInterface, "?", std::int64_t{5}) >= 0;
  }
  const std::string word = words.next();
  if (what == "garbage") {
    mGarbage = word;
    return true;
  }
  if (what == "add" || what == "add-plain") return add(word, words.next(), what == "add");
  if (what == "remove") return mMice.erase(word) == 1 && emitDevices();
  if (what == "refuse" || what == "clamp" || what == "fail") {
    for (auto& [sysname, mouse] : mMice) {
      if (what == "refuse") mouse->refused = word;
      if (what == "clamp") mouse->highest = static_cast<std::uint32_t>(std::stoul(word));
      if (what == "fail") mouse->failsToCommit = true;
    }
    return true;
  }
  const auto found = mMice.find(word);
  return found != mMice.end() && change(what, *found->second, words);
}

}  // namespace vorn::test
