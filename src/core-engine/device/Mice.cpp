#include "core-engine/device/Mice.h"

#include <libevdev/libevdev.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "model/Controls.h"

namespace vorn::engine {

namespace {

using Fault = Mice::Fault;

ControlSet allControls() {
  ControlSet result(fixedKeys.begin(), fixedKeys.end());
  for (const Control& each : controls) result.emplace(each.identifier);
  return result;
}

std::string nameOf(const EventSource& source) {
  const char* known = libevdev_event_code_get_name(source.type, source.code);
  std::string name;
  if (known != nullptr) {
    name = known;
  } else {
    std::array<char, 16> text{};
    name.assign(text.data(),
                static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "KEY_0x%x", source.code)));
  }
  if (source.direction == 0) return name;
  return name + (source.direction > 0 ? " +" : " -");
}

// The control that has it now; empty for none.
std::string controlOf(const ControlMap& controls, const EventSource& source) {
  const std::int32_t value = source.type == EV_KEY ? 1 : source.direction;
  return std::string(controls.controlOf(source.node, {source.type, source.code, value}));
}

std::vector<std::string> taughtOf(const ControlMap& known) {
  std::vector<std::string> result;
  for (const std::string& each : allControls()) {
    if (known.isTaught(each)) result.push_back(each);
  }
  return result;
}

// Of an ID what all mice of the same bus, vendor and product have in common.
std::string_view kindOf(std::string_view id) {
  return id.substr(0, id.find('-', id.find('-') + 1));
}

std::string textOfForbidden(const FoundMouse& mouse) {
  std::string text = "You may not use " + mouse.name + ": no access to ";
  for (const std::string& node : mouse.forbidden) text += node + ", ";
  if (mouse.isOutputForbidden) text += std::string(mice::outputNode) + ", ";
  text.resize(text.size() - 2);
  return text + "; \"vornctl doctor\" says what mends it";
}

}  // namespace

Mice::Mice(const Parts& parts, const std::string& folder) : mParts(parts), mFile(parts.files, parts.log, folder) {
  mParts.realMice.setRecords([this](const std::string& id) { return mKnown.of(id).record; });
  mParts.realMice.setChangeHandler([this] {
    followSoon();
    tellChanged();
  });
}

Mice::~Mice() {
  mChanged = {};
  mTaught = {};
  callOff();
  mParts.inUse.use(mParts.virtualMouse);
  mParts.scheduler.cancel(mEndOfFormer);
  mParts.scheduler.cancel(mFollowing);
  mParts.realMice.setChangeHandler({});
  mParts.realMice.setRecords({});
}

void Mice::load() {
  mKnown = mFile.load();
  if (mKnown.chosen != mice::virtualMouse) use(mKnown.chosen);
}

void Mice::tellChanged() const {
  if (mChanged) mChanged();
}

std::vector<Mice::Listed> Mice::list() const {
  std::vector<Listed> result;
  bool isInUsePresent = isVirtualInUse();
  for (const FoundMouse& each : mParts.realMice.mice()) {
    result.push_back(listed(each, true));
    isInUsePresent = isInUsePresent || each.id == mKnown.chosen;
  }
  if (!isInUsePresent) {
    FoundMouse absent;
    absent.id = mKnown.chosen;
    absent.name = mKnown.of(mKnown.chosen).name;
    absent.connection = Device::Connection::Absent;
    result.push_back(listed(absent, false));
    std::stable_sort(result.begin(), result.end(),
                     [](const Listed& left, const Listed& right) { return left.mouse.name < right.mouse.name; });
  }
  result.push_back(listedVirtual());
  return result;
}

Mice::Listed Mice::listed(const FoundMouse& found, bool isPresent) const {
  const MouseRecord record = mKnown.of(found.id).record;
  Listed result{found, found.id == mKnown.chosen, isPresent, taughtOf(record.controls), found.resolution};
  if (record.resolution != 0) result.resolution = record.resolution;
  if (!result.isInUse) return result;
  if (isPresent) result.resolution = mReal->resolution();
  result.abilities = mReal->abilities();
  return result;
}

Mice::Listed Mice::listedVirtual() const {
  FoundMouse mouse;
  mouse.id = mice::virtualMouse;
  mouse.name = "Virtual mouse";
  mouse.connection = mParts.virtualMouse.connection();
  mouse.controls = allControls();
  Listed result{mouse, isVirtualInUse(), mParts.virtualMouse.isPresent(), {}, 0};
  if (result.isInUse) result.abilities = mParts.virtualMouse.abilities();
  return result;
}

void Mice::choose(const std::string& id, const Done& done) {
  mParts.turns.whenSaved([this, id, done] { chooseNow(id, done); });
}

void Mice::chooseNow(const std::string& id, const Done& done) {
  if (id == mKnown.chosen) return done({});
  std::string name;
  if (id != mice::virtualMouse) {
    const std::vector<FoundMouse> mice = mParts.realMice.mice();
    const auto found = std::find_if(mice.begin(), mice.end(), [&id](const FoundMouse& each) { return each.id == id; });
    if (found == mice.end()) return done({Fault::NotFound, "There is no mouse \"" + id + "\""});
    if (!found->isAllowed()) return done({Fault::NotAllowed, textOfForbidden(*found)});
    name = found->name;
  }
  keep(
      mKnown.withChosen(id, name), [this, id] { use(id); }, done);
}

void Mice::use(const std::string& id) {
  callOff();
  if (mLeaving) mLeaving();
  // The one before lasts until the other one is in use, and until none of its handlers runs.
  mFormer.push_back(std::exchange(mReal, id == mice::virtualMouse ? nullptr : mParts.realMice.make(id)));
  mParts.scheduler.cancel(mEndOfFormer);
  mEndOfFormer = mParts.scheduler.after(Scheduler::Duration(0), [this] { mFormer.clear(); });
  if (isVirtualInUse()) return mParts.inUse.use(mParts.virtualMouse);
  mReal->setRecord(mKnown.of(id).record);
  mParts.virtualMouse.letGo();
  mParts.inUse.use(*mReal);
  mBeside.clear();
  followSoon();
}

void Mice::followSoon() {
  if (isVirtualInUse()) return;
  mParts.scheduler.cancel(mFollowing);
  mFollowing = mParts.scheduler.after(Scheduler::Duration(0), [this] {
    mFollowing = 0;
    mParts.turns.whenSaved([this] { follow(); });
  });
}

void Mice::follow() {
  if (isVirtualInUse()) return;
  std::vector<FoundMouse> mice = mParts.realMice.mice();
  std::erase_if(mice, [this](const FoundMouse& each) { return kindOf(each.id) != kindOf(mKnown.chosen); });
  if (mReal->isPresent()) {
    for (const FoundMouse& each : mice) mBeside.insert(each.id);
    return;
  }
  // Of several nobody knows which it is, and one that was there before, or was told something, is another one.
  if (mice.size() != 1) return;
  const FoundMouse& moved = mice.front();
  const bool isOther = mBeside.contains(moved.id) || mKnown.mice.contains(moved.id);
  if (isOther || !moved.isMarkedByPlace || !moved.isAllowed()) return;
  keep(
      mKnown.withChosenAs(moved.id, moved.name), [this, id = moved.id] { use(id); }, [](const Outcome&) {});
}

Mice::Outcome Mice::refusalToTeach(const std::string& control) const {
  if (!VirtualDevice::isControl(control))
    return {Fault::BadArgument, "No mouse of this kind has a control \"" + control + "\""};
  if (isVirtualInUse()) return {Fault::NotTeachable, "The virtual mouse has all controls already"};
  if (!mReal->isPresent()) return {Fault::NotTeachable, "The mouse in use is not plugged in"};
  return {};
}

void Mice::teach(const std::string& control, const std::string& teacher, const Done& done) {
  mParts.turns.whenSaved([this, control, teacher, done] { teachNow(control, teacher, done); });
}

void Mice::teachNow(const std::string& control, const std::string& teacher, const Done& done) {
  const bool isOthers = isTeaching() && mTeaching.teacher != teacher;
  if (control.empty()) {
    if (!isOthers) callOff();
    return done({});
  }
  const Outcome refusal = refusalToTeach(control);
  if (refusal.fault != Fault::None) return done(refusal);
  if (isOthers) return done({Fault::Busy, "Another program teaches the mouse now"});
  callOff();
  mTeaching = {teacher, control, mParts.scheduler.after(teachingTime, [this] { callOff(); })};
  mReal->teach([this](const EventSource& source) { hear(source); });
  done({});
}

void Mice::teacherLost(const std::string& teacher) {
  if (mTeaching.teacher == teacher && mTeaching.end != 0) callOff();
}

void Mice::callOff() {
  if (isTeaching()) end({mTeaching.control});
}

void Mice::end(const Taught& taught) {
  mParts.scheduler.cancel(mTeaching.end);
  mTeaching = {};
  if (mReal) mReal->teach({});
  if (mTaught) mTaught(taught);
}

void Mice::hear(const EventSource& source) {
  // The first one counts, which waits for its turn.
  if (mTeaching.end == 0) return;
  mParts.scheduler.cancel(std::exchange(mTeaching.end, 0));
  mParts.turns.whenSaved([this, control = mTeaching.control, source] { take(control, source); });
}

void Mice::take(const std::string& control, const EventSource& source) {
  // It was called off meanwhile, and perhaps begun anew.
  if (mTeaching.control != control || mTeaching.end != 0) return;
  std::string former = controlOf(mKnown.of(mKnown.chosen).record.controls, source);
  if (former == control) former.clear();
  changeRecord([control, source](MouseRecord& record) { record.controls.teach(control, source); },
               [this, taught = Taught{control, true, nameOf(source), former}](const Outcome& outcome) {
                 end(outcome.fault == Fault::None ? taught : Taught{taught.control});
               });
}

void Mice::forget(const std::string& control, const Done& done) {
  if (!control.empty() && !VirtualDevice::isControl(control)) return done(refusalToTeach(control));
  mParts.turns.whenSaved([this, control, done] {
    changeRecord(
        [&control](MouseRecord& record) {
          control.empty() ? record.controls.forgetAll() : record.controls.forget(control);
        },
        done);
  });
}

void Mice::setResolution(std::uint32_t resolution, const Done& done) {
  const bool isOne = resolution >= static_cast<std::uint32_t>(mice::minimumResolution) &&
                     resolution <= static_cast<std::uint32_t>(mice::maximumResolution);
  if (resolution != 0 && !isOne)
    return done({Fault::BadArgument, "The resolution is a number from 100 to 32000 DPI, or 0 for what is known of it"});
  mParts.turns.whenSaved([this, resolution, done] {
    changeRecord([resolution](MouseRecord& record) { record.resolution = static_cast<std::int32_t>(resolution); },
                 done);
  });
}

void Mice::changeRecord(const std::function<void(MouseRecord&)>& change, const Done& done) {
  if (isVirtualInUse()) return done({Fault::NotTeachable, "The virtual mouse is what it is"});
  KnownMouse mouse = mKnown.of(mKnown.chosen);
  change(mouse.record);
  if (mouse == mKnown.of(mKnown.chosen)) return done({});
  keep(
      mKnown.with(mKnown.chosen, mouse), [this] { mReal->setRecord(mKnown.of(mKnown.chosen).record); }, done);
}

void Mice::keep(const KnownMice& known, const std::function<void()>& work, const Done& done) {
  const auto error = std::make_shared<std::error_code>();
  mParts.store.useDisk(
      [this, known, error] { *error = mFile.save(known); },
      [this, known, error, work, done] {
        if (*error) {
          mParts.log.line("cannot save what is known of the mice: " + error->message());
          return done({Fault::NotSaved, "It cannot be saved, so nothing has been changed: " + error->message()});
        }
        mKnown = known;
        work();
        done({});
        tellChanged();
      });
}

}  // namespace vorn::engine
