#include <array>
#include <cstdint>
#include <ctime>
#include <limits>
#include <string>

#include "ctl/Commands.h"
#include "ctl/EngineObject.h"
#include "ctl/HistoryWords.h"
#include "ctl/Numbers.h"
#include "ctl/Text.h"
#include "protocol/EngineProtocol.h"
#include "protocol/History.h"

namespace vorn::ctl {

namespace {

namespace methods = history::methods;
namespace words = history::keys;

Result<std::vector<PropertyList>> call(const Context& context, const std::string& method,
                                       const std::vector<BusInput>& inputs = {}) {
  static const BusTarget target{history::busName, history::objectPath, history::interface};
  return callEngineObject(context, target, "the history", method, inputs);
}

// In the time of this place.
std::string timeOf(const PropertyList& entry) {
  const std::time_t time = entry[words::Time].toInt64();
  std::tm local{};
  std::array<char, 32> text{};
  if (localtime_r(&time, &local) == nullptr) return "?";
  return {text.data(), std::strftime(text.data(), text.size(), "%F %T", &local)};
}

std::string sourceOf(const PropertyList& entry) {
  const std::string_view source = entry[words::SourceApp].string();
  if (source == configuratorIdentifier) return "window";
  if (source == vornctlIdentifier) return "vornctl";
  return source.empty() ? "-" : std::string(source);
}

std::string lineOf(const PropertyList& entry) {
  constexpr std::size_t widthOfID = 6;
  constexpr std::size_t widthOfSource = 9;
  return padded(std::to_string(entry[words::ID].toInt64()), widthOfID) + timeOf(entry) + "  " +
         padded(sourceOf(entry), widthOfSource) + wordsOfChange(entry) +
         (entry[words::IsUndone].toBool() ? " (undone)" : "");
}

std::string noteOfConflicts(std::int64_t conflicts) {
  if (conflicts == 0) return {};
  return "; values that have been changed since stay as they are: " + std::to_string(conflicts);
}

Outcome change(const Context& context, const std::string& method, const std::string& done) {
  const auto values = call(context, method, {{"t", 0}});
  if (!values) return values.failure();
  const PropertyList& entry = values->at(0);
  const std::int64_t conflicts = values->at(1).toInt64();
  context.output.either(done + wordsOfChange(entry) + noteOfConflicts(conflicts), entry.with("conflicts", conflicts));
  return std::nullopt;
}

// To the time right after the change with this number.
Outcome goTo(const Context& context, const std::string& word) {
  const auto id = numberOf(word, 0, std::numeric_limits<std::int64_t>::max());
  if (!id) return Failure{ExitStatus::Usage, "CHANGE is a number that \"vornctl history\" prints, or 0"};
  const auto values = call(context, methods::GoTo, {{"t", *id}});
  if (!values) return values.failure();
  const std::int64_t changes = values->at(0).toInt64();
  const std::int64_t conflicts = values->at(1).toInt64();
  context.output.either("Changes undone or made again: " + std::to_string(changes) + noteOfConflicts(conflicts),
                        PropertyList::dictionary({{"changes", changes}, {"conflicts", conflicts}}));
  return std::nullopt;
}

}  // namespace

Outcome listHistory(Context& context, const Arguments&) {
  const auto values = call(context, methods::Entries);
  if (!values) return values.failure();
  std::vector<std::string> lines;
  for (const PropertyList& entry : values->at(0).elements()) lines.push_back(lineOf(entry));
  context.output.either(lines, values->at(0));
  return std::nullopt;
}

Outcome undoChange(Context& context, const Arguments&) {
  return change(context, methods::Undo, "Undone: ");
}

Outcome redoChange(Context& context, const Arguments&) {
  return change(context, methods::Redo, "Made again: ");
}

Outcome listBackups(Context& context, const Arguments&) {
  const auto values = call(context, methods::Backups);
  if (!values) return values.failure();
  std::vector<std::string> lines;
  for (const PropertyList& each : values->at(0).elements()) {
    lines.push_back(each[words::Date].toString() + "  written " + timeOf(each) + "  " +
                    std::to_string(each[history::backupKeys::Size].toInt64()) + " bytes");
  }
  context.output.either(lines, values->at(0));
  return std::nullopt;
}

Outcome restoreBackup(Context& context, const Arguments& arguments) {
  const auto values = call(context, methods::RestoreBackup, {{"s", arguments[0]}});
  return values ? std::nullopt : Outcome(values.failure());
}

Outcome goToChange(Context& context, const Arguments& arguments) {
  return goTo(context, arguments[0]);
}

}  // namespace vorn::ctl
