// An application's description on a desktop: the group "Desktop Entry" of a file as the freedesktop.org "Desktop Entry
// Specification", version 1.5, has it. Immutable; any thread. Takes hostile bytes; texts come back as they lie in the
// file, which should be UTF-8 but need not be.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

class DesktopEntry {
 public:
  // Nothing for a text that holds a null byte. Of a key that comes twice the first value counts; lines that cannot be
  // understood are passed over.
  static std::optional<DesktopEntry> read(std::string_view text);

  // The value with its escapes taken off; empty where the key is missing.
  std::string text(std::string_view key) const;
  // The value for a locale of the form lang_COUNTRY.ENCODING@MODIFIER, whose parts after lang may be missing: that of
  // the most exact match that the entry has, else the one without a locale.
  std::string localizedText(std::string_view key, std::string_view locale) const;
  bool isTrue(std::string_view key) const { return text(key) == "true"; }
  // The elements of a list, separated by semicolons.
  std::vector<std::string> list(std::string_view key) const;
  bool contains(std::string_view key) const { return mValues.find(key) != mValues.end(); }

  // The program and arguments of Exec for a start without files: quotes taken off and field codes filled in; path is
  // where the entry lies. Nothing where there is no Exec that can be used.
  std::optional<std::vector<std::string>> command(const std::string& path) const;

 private:
  std::map<std::string, std::string, std::less<>> mValues;  // as they stand in the file; KEY[LOCALE] is a key
};

}  // namespace vorn
