#include <string>
#include <string_view>
#include <vector>

#include "ctl/Commands.h"
#include "ctl/Completion.h"
#include "ctl/EngineObject.h"
#include "ctl/Settings.h"
#include "ctl/Text.h"
#include "model/SettingsKeys.h"
#include "protocol/History.h"
#include "protocol/Mice.h"

namespace vorn::ctl {

namespace {

Names namesOfRecords(const Context& context, keys::Key records, keys::Key name) {
  Names names;
  const auto bundle = allSettings(context.engine);
  if (!bundle) return names;
  for (const PropertyList& record : (*bundle)[records].elements()) names.push_back(record[name].toString());
  return names;
}

Names namesOfObject(const Context& context, const BusTarget& target, const std::string& method, std::string_view key) {
  Names names;
  const auto values = callEngineObject(context, target, "", method);
  if (!values || values->empty()) return names;
  for (const PropertyList& each : values->front().elements()) {
    const PropertyList& value = each[key];
    names.push_back(value.isInteger() ? std::to_string(value.toInt64()) : value.toString());
  }
  return names;
}

// Nothing where no engine answers.
Names namesOf(const Context& context, NameKind kind) {
  static const BusTarget mouseChoice{mice::busName, mice::objectPath, mice::interface};
  static const BusTarget changes{history::busName, history::objectPath, history::interface};
  switch (kind) {
    case NameKind::Profiles:
      return namesOfRecords(context, keys::Profiles, keys::ProfileName);
    case NameKind::Macros:
      return namesOfRecords(context, keys::Macros, keys::MacroName);
    case NameKind::Mice:
      return namesOfObject(context, mouseChoice, mice::methods::List, mice::keys::ID);
    case NameKind::Changes:
      return namesOfObject(context, changes, history::methods::Entries, history::keys::ID);
    case NameKind::Backups:
      return namesOfObject(context, changes, history::methods::Backups, history::keys::Date);
  }
  return {};
}

PropertyList valueOf(const Offers& offers) {
  PropertyList words = PropertyList::array();
  for (const Offer& each : offers.words) {
    words = words.appending(PropertyList::dictionary({{"word", each.word}, {"description", each.description}}));
  }
  return words;
}

}  // namespace

Outcome complete(Context& context, const Arguments& arguments) {
  const Offers offers = offersFor(arguments, [&](NameKind kind) { return namesOf(context, kind); });
  if (context.output.isJson()) {
    context.output.json(valueOf(offers));
    return std::nullopt;
  }
  for (const Offer& each : offers.words) {
    if (each.word.empty()) continue;  // which would stand for files
    std::vector<std::string> columns = {each.word};
    if (!each.description.empty()) columns.emplace_back(each.description);
    context.output.columns(columns);
  }
  if (offers.files == Offers::Files::Folders) context.output.columns({"", "folders"});
  if (offers.files == Offers::Files::Any) context.output.columns({"", "files", std::string(offers.extension)});
  return std::nullopt;
}

}  // namespace vorn::ctl
