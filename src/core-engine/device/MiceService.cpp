#include "core-engine/device/MiceService.h"

#include <string_view>
#include <utility>

#include "protocol/Mice.h"

namespace vorn::engine {

namespace {

namespace methods = mice::methods;
namespace words = mice::keys;
using Fault = Mice::Fault;
using Way = DeviceAbilities::Way;

const char* nameOf(Fault fault) {
  switch (fault) {
    case Fault::NotFound:
      return mice::errors::NotFound;
    case Fault::NotAllowed:
      return mice::errors::NotAllowed;
    case Fault::NotTeachable:
      return mice::errors::NotTeachable;
    case Fault::BadArgument:
      return mice::errors::BadArgument;
    case Fault::Busy:
      return mice::errors::Busy;
    case Fault::NotSaved:
    case Fault::None:
      break;
  }
  return mice::errors::NotSaved;
}

std::string_view wordOf(Way way) {
  switch (way) {
    case Way::Hardware:
      return mice::sensitivities::Hardware;
    case Way::Scaled:
      return mice::sensitivities::Scaled;
    case Way::Missing:
      break;
  }
  return mice::sensitivities::Missing;
}

std::string_view connectionOf(const FoundMouse& mouse) {
  if (mouse.id == mice::virtualMouse) return mice::connections::Virtual;
  return mouse.connection == Device::Connection::Wireless ? mice::connections::Wireless : mice::connections::Wired;
}

template <typename Texts>
PropertyList arrayOf(const Texts& texts) {
  return PropertyList::array(std::vector<PropertyList>(texts.begin(), texts.end()));
}

std::vector<std::string> forbiddenOf(const FoundMouse& mouse) {
  std::vector<std::string> files = mouse.forbidden;
  if (mouse.isOutputForbidden) files.emplace_back(mice::outputNode);
  return files;
}

PropertyList told(const Mice::Listed& listed) {
  const FoundMouse& mouse = listed.mouse;
  PropertyList result = PropertyList::dictionary({{words::ID, mouse.id},
                                                  {words::Name, mouse.name},
                                                  {words::IsInUse, listed.isInUse},
                                                  {words::IsPresent, listed.isPresent},
                                                  {words::IsAllowed, mouse.isAllowed()},
                                                  {words::Forbidden, arrayOf(forbiddenOf(mouse))},
                                                  {words::Nodes, arrayOf(mouse.nodes)},
                                                  {words::Controls, arrayOf(mouse.controls)},
                                                  {words::Taught, arrayOf(listed.taught)},
                                                  {words::Resolution, listed.resolution}});
  if (listed.isPresent || mouse.id == mice::virtualMouse) result = result.with(words::Connection, connectionOf(mouse));
  if (!listed.abilities) return result;
  return result.merging(PropertyList::dictionary({{words::Sensitivity, wordOf(listed.abilities->sensitivity)},
                                                  {words::HasPollingRate, listed.abilities->hasPollingRate},
                                                  {words::HasLight, listed.abilities->hasLight},
                                                  {words::HasPower, listed.abilities->hasPower},
                                                  {words::HasBattery, listed.abilities->hasBattery},
                                                  {words::Held, arrayOf(listed.abilities->held)},
                                                  {words::Busy, arrayOf(listed.abilities->busy)}}));
}

}  // namespace

MiceService::MiceService(Mice& mice) : mMice(mice) {
  mMice.setChangeHandler([this] {
    if (mObject) mObject->emit(mice::signalNames::Changed, {});
  });
  mMice.setTaughtHandler([this](const Mice::Taught& taught) {
    mTeacher.reset();
    if (mObject)
      mObject->emit(mice::signalNames::Taught, {taught.control, taught.isTaught, taught.source, taught.former});
  });
}

MiceService::~MiceService() {
  mMice.setChangeHandler({});
  mMice.setTaughtHandler({});
}

bool MiceService::start(std::string& error) {
  BusObjectDescription description{mice::busName, mice::objectPath, mice::interface, {}, {}};
  description.methods = {
      {methods::List, {}, {{"aa{sv}", "mice"}}, [this](const Values&) { return BusReply::success({list()}); }},
      method(methods::Choose, {{"s", "id"}},
             [this](const Values& given, const std::string&, const Mice::Done& done) {
               mMice.choose(given[0].toString(), done);
             }),
      method(methods::Teach, {{"s", "control"}},
             [this](const Values& given, const std::string& connection, const Mice::Done& done) {
               teach(given[0].toString(), connection, done);
             }),
      method(methods::Forget, {{"s", "control"}},
             [this](const Values& given, const std::string&, const Mice::Done& done) {
               mMice.forget(given[0].toString(), done);
             }),
      method(methods::SetResolution, {{"u", "resolution"}},
             [this](const Values& given, const std::string&, const Mice::Done& done) {
               mMice.setResolution(static_cast<std::uint32_t>(given[0].toUnsigned()), done);
             }),
  };
  description.signals = {
      {mice::signalNames::Changed, {}},
      {mice::signalNames::Taught, {{"s", "control"}, {"b", "isTaught"}, {"s", "source"}, {"s", "former"}}}};
  mObject = BusObject::create(std::move(description), &error);
  return mObject != nullptr;
}

BusMethod MiceService::method(const char* name, std::vector<BusArgument> inputs, const Work& work) {
  BusMethod result{name, std::move(inputs), {}, {}};
  result.callLater = [work](const Values& given, const std::string& connection, const BusReturn& answer) {
    work(given, connection, [answer](const Mice::Outcome& outcome) {
      answer(outcome.fault == Fault::None ? BusReply::success()
                                          : BusReply::failure(nameOf(outcome.fault), outcome.text));
    });
  };
  return result;
}

PropertyList MiceService::list() const {
  std::vector<PropertyList> result;
  for (const Mice::Listed& each : mMice.list()) result.push_back(told(each));
  return PropertyList::array(std::move(result));
}

void MiceService::teach(const std::string& control, const std::string& connection, const Mice::Done& done) {
  mMice.teach(control, connection, [this, control, connection, done](const Mice::Outcome& outcome) {
    if (outcome.fault == Fault::None && !control.empty()) {
      mTeacher = std::make_unique<NameWatch>(Bus::Session, connection, [this, connection](const std::string& owner) {
        if (owner.empty()) mMice.teacherLost(connection);
      });
    }
    done(outcome);
  });
}

}  // namespace vorn::engine
