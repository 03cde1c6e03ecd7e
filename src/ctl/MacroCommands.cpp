#include "ctl/Commands.h"
#include "ctl/RecordFile.h"
#include "ctl/Settings.h"
#include "ctl/Text.h"
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"

namespace vorn::ctl {

namespace {

struct Chosen {
  PropertyList bundle;
  std::int64_t position = 0;
  const PropertyList& macro() const { return bundle[keys::Macros].at(position); }
};

Result<Chosen> choose(Context& context, const std::string& word) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto position = macroNamed(*bundle, word);
  if (!position) return position.failure();
  return Chosen{*bundle, *position};
}

void tell(Context& context, std::int64_t position, const std::string& name) {
  context.output.either(titleOf("Macro", position, name), PropertyList::dictionary({{"id", position}, {"name", name}}));
}

}  // namespace

Outcome listMacros(Context& context, const Arguments&) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  PropertyList list = PropertyList::array();
  std::int64_t position = 0;
  for (const PropertyList& macro : (*bundle)[keys::Macros].elements()) {
    const std::string name = macro[keys::MacroName].toString();
    if (!context.output.isJson()) context.output.line("  " + std::to_string(position + 1) + "  " + name);
    list = list.appending(PropertyList::dictionary({{"id", position}, {"name", name}}));
    ++position;
  }
  if (context.output.isJson()) context.output.json(list);
  return std::nullopt;
}

Outcome showMacro(Context& context, const Arguments& arguments) {
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  if (context.output.isJson()) {
    context.output.json(chosen->macro());
    return std::nullopt;
  }
  const auto answer = change(context.engine, MessageID::GetMacroDetails,
                             PropertyList::dictionary({{requestKeys::IndexOfMacroSequence, chosen->position}}));
  if (!answer) return answer.failure();
  for (const PropertyList& line : (*answer)[replyKeys::MacroSequences].elements()) {
    context.output.line(withoutLineBreak(line.string()));
  }
  return std::nullopt;
}

Outcome renameMacro(Context& context, const Arguments& arguments) {
  if (arguments[1].empty()) return Failure{ExitStatus::Usage, "a macro needs a name"};
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  // Its own name does not stand in its way.
  const PropertyList others =
      chosen->bundle[keys::Macros].replacing(chosen->position, chosen->macro().with(keys::MacroName, ""));
  const std::string name = VrCoreUtility::generateName(others, arguments[1], keys::MacroName);
  const PropertyList contents = PropertyList::dictionary({{keys::MacroName, name}, {keys::MacroID, chosen->position}});
  const auto answer = change(context.engine, MessageID::RenameMacro,
                             PropertyList::dictionary({{requestKeys::MacroContents, contents}}));
  if (!answer) return answer.failure();
  tell(context, chosen->position, name);
  return std::nullopt;
}

Outcome deleteMacro(Context& context, const Arguments& arguments) {
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  return deleteMacroAt(context.engine, chosen->bundle, chosen->position);
}

Outcome exportMacro(Context& context, const Arguments& arguments) {
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  return exportRecord(context.output, arguments[1], chosen->macro(), RecordKind::Macro);
}

Outcome importMacro(Context& context, const Arguments& arguments) {
  const auto record = readRecord(arguments[0], RecordKind::Macro);
  if (!record) return record.failure();
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const PropertyList& macros = (*bundle)[keys::Macros];
  const std::string name = VrCoreUtility::generateName(macros, (*record)[keys::MacroName].string(), keys::MacroName);
  const auto answer =
      change(context.engine, MessageID::AddMacro,
             PropertyList::dictionary({{requestKeys::MacroContents, record->with(keys::MacroName, name)}}));
  if (!answer) return answer.failure();
  tell(context, static_cast<std::int64_t>(macros.size()), name);
  return std::nullopt;
}

}  // namespace vorn::ctl
