#include "ctl/Values.h"

#include <cmath>
#include <locale>
#include <optional>
#include <sstream>

#include "ctl/Json.h"
#include "ctl/Names.h"
#include "ctl/Numbers.h"

namespace vorn::ctl {

namespace {

std::string_view headOf(std::string_view path) {
  return path.substr(0, path.find('/'));
}

std::optional<std::string_view> tailOf(std::string_view path) {
  const std::size_t slash = path.find('/');
  return slash == std::string_view::npos ? std::nullopt : std::optional(path.substr(slash + 1));
}

PropertyList memberOf(const PropertyList& container, std::string_view name) {
  if (container.isArray()) return container.at(numberOf(name).value_or(-1));
  return container[name];
}

PropertyList withMember(const PropertyList& container, std::string_view name, const PropertyList& value) {
  if (container.isArray()) return container.replacing(numberOf(name).value_or(-1), value);
  return container.with(name, value);
}

std::optional<bool> flagOf(std::string_view word) {
  if (word == "on" || word == "true" || word == "yes" || word == "1") return true;
  if (word == "off" || word == "false" || word == "no" || word == "0") return false;
  return std::nullopt;
}

std::optional<double> realOf(std::string_view word) {
  std::istringstream stream{std::string(word)};
  stream.imbue(std::locale::classic());
  double value = 0;
  const bool isWhole = (stream >> value) && stream.peek() == std::istringstream::traits_type::eof();
  return isWhole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// The key of the dictionary that the word names; the word itself where none does.
Result<std::string> keyNamed(const PropertyList& dictionary, const std::string& word) {
  const std::vector<std::string_view> keys = dictionary.keys();
  const Names names(keys.begin(), keys.end());
  Names candidates;
  for (const std::size_t position : positionsNamed(names, word)) candidates.push_back(names[position]);
  if (candidates.size() < 2) return candidates.empty() ? word : candidates.front();
  return Failure{ExitStatus::Refused, "\"" + word + "\" may be " + alternatives(candidates)};
}

Failure wrong(std::string_view word, std::string_view expected) {
  return {ExitStatus::Usage, std::string("\"").append(word).append("\" is not ").append(expected)};
}

}  // namespace

PropertyList valueAt(const PropertyList& container, std::string_view path) {
  PropertyList value = memberOf(container, headOf(path));
  for (auto rest = tailOf(path); rest; rest = tailOf(*rest)) value = memberOf(value, headOf(*rest));
  return value;
}

Result<std::string> resolvedPath(const PropertyList& container, std::string_view path) {
  std::string resolved;
  PropertyList place = container;
  for (std::optional rest(path); rest; rest = tailOf(*rest)) {
    std::string key(headOf(*rest));
    if (place.isDictionary()) {
      auto named = keyNamed(place, key);
      if (!named) return named;
      key = *named;
    }
    place = memberOf(place, key);
    resolved += (resolved.empty() ? "" : "/") + key;
  }
  return resolved;
}

PropertyList withValueAt(const PropertyList& container, std::string_view path, const PropertyList& value) {
  const std::string_view head = headOf(path);
  const auto rest = tailOf(path);
  return withMember(container, head, rest ? withValueAt(memberOf(container, head), *rest, value) : value);
}

Result<PropertyList> parseValue(std::string_view word, const PropertyList& present) {
  const auto flag = flagOf(word);
  if (present.isBoolean()) return flag ? Result(PropertyList(*flag)) : wrong(word, "on or off");
  if (present.isInteger()) {
    if (const auto number = numberOf(word)) return PropertyList(*number);
    return flag ? Result(PropertyList(*flag ? 1 : 0)) : wrong(word, "a whole number");
  }
  if (present.isReal()) {
    const auto number = realOf(word);
    return number ? Result(PropertyList(*number)) : wrong(word, "a number");
  }
  if (present.isString()) return PropertyList(word);
  return Failure{ExitStatus::Usage, "that is no single value; name one inside of it, as in Stages/0/dpix"};
}

std::string textOf(const PropertyList& value) {
  return value.isString() ? value.toString() : jsonOf(value);
}

}  // namespace vorn::ctl
