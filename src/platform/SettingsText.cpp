#include "platform/SettingsText.h"

namespace skarn {

QString textOf(const vorn::PropertyList& dictionary, std::string_view key) {
  const std::string_view text = dictionary[key].string();
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<std::int32_t> numberOf(const vorn::PropertyList& dictionary, std::string_view key) {
  const vorn::PropertyList& value = dictionary[key];
  if (!value.isNumber()) return std::nullopt;
  return value.toInt();
}

}  // namespace skarn
