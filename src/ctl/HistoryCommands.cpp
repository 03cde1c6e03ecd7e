#include <array>
#include <ctime>
#include <string>

#include "ctl/Commands.h"
#include "ctl/EngineObject.h"
#include "ctl/HistoryWords.h"
#include "protocol/History.h"

namespace vorn::ctl {

namespace {

namespace methods = history::methods;
namespace words = history::keys;

Result<std::vector<PropertyList>> call(const Context& context, const std::string& method) {
  static const BusTarget target{history::busName, history::objectPath, history::interface};
  return callEngineObject(context, target, "a history", method);
}

// In the time of this place.
std::string timeOf(const PropertyList& entry) {
  const std::time_t time = entry[words::Time].toInt64();
  std::tm local{};
  std::array<char, 32> text{};
  if (localtime_r(&time, &local) == nullptr) return "?";
  return {text.data(), std::strftime(text.data(), text.size(), "%F %T", &local)};
}

std::string lineOf(const PropertyList& entry) {
  const std::string source = entry.contains(words::SourceApp) ? entry[words::SourceApp].toString() : "-";
  return timeOf(entry) + "  " + wordsOfChange(entry) + "  (" + source + ")" +
         (entry[words::IsUndone].toBool() ? "  undone" : "");
}

Outcome change(const Context& context, const std::string& method, const std::string& done) {
  const auto values = call(context, method);
  if (!values) return values.failure();
  const PropertyList& entry = values->at(0);
  const std::int64_t conflicts = values->at(1).toInt64();
  std::string text = done + wordsOfChange(entry);
  if (conflicts > 0) text += "; values that have been changed since stay as they are: " + std::to_string(conflicts);
  context.output.either(text, entry.with("conflicts", conflicts));
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

}  // namespace vorn::ctl
