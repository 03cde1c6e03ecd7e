#include "model/DesktopEntry.h"

#include <algorithm>
#include <utility>

namespace vorn {

namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Takes off the escapes that every text of an entry has.
std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] != '\\' || index + 1 == text.size()) {
      result += text[index];
      continue;
    }
    switch (const char escape = text[++index]) {
      case 's':
        result += ' ';
        break;
      case 'n':
        result += '\n';
        break;
      case 't':
        result += '\t';
        break;
      case 'r':
        result += '\r';
        break;
      case '\\':
        result += '\\';
        break;
      default:
        // One that only Exec knows.
        result += {'\\', escape};
    }
  }
  return result;
}

class ExecReader {
 public:
  ExecReader(const DesktopEntry& entry, const std::string& path) : mEntry(entry), mPath(path) {}

  // Nothing for an Exec with an open quote or an unknown field code.
  std::optional<std::vector<std::string>> read(std::string_view exec) {
    for (mRest = exec; !mRest.empty();) {
      const char character = take();
      if (character == ' ' || character == '\t' || character == '\n') {
        endArgument();
      } else if (character == '"') {
        mIsArgument = true;
        if (!readQuoted()) return std::nullopt;
      } else if (character == '%') {
        if (!readFieldCode()) return std::nullopt;
      } else {
        mIsArgument = true;
        mArgument += character;
      }
    }
    endArgument();
    return std::move(mArguments);
  }

 private:
  char take() {
    const char character = mRest.front();
    mRest.remove_prefix(1);
    return character;
  }

  void endArgument() {
    if (mIsArgument) mArguments.push_back(std::exchange(mArgument, {}));
    mIsArgument = false;
  }

  bool readQuoted() {
    while (!mRest.empty()) {
      char character = take();
      if (character == '"') return true;
      if (character == '\\' && !mRest.empty()) character = take();
      mArgument += character;
    }
    return false;
  }

  bool readFieldCode() {
    if (mRest.empty()) return false;
    switch (take()) {
      case '%':
        return append("%");
      case 'c':
        return append(mEntry.text("Name"));
      case 'k':
        return append(mPath);
      case 'i':
        return appendIcon();
      // There are no files, and the old codes stand for nothing any more.
      case 'f':
      case 'F':
      case 'u':
      case 'U':
      case 'd':
      case 'D':
      case 'n':
      case 'N':
      case 'v':
      case 'm':
        return true;
      default:
        return false;
    }
  }

  bool append(const std::string& text) {
    mIsArgument = true;
    mArgument += text;
    return true;
  }

  bool appendIcon() {
    const std::string icon = mEntry.text("Icon");
    endArgument();
    if (icon.empty()) return true;
    mArguments.insert(mArguments.end(), {"--icon", icon});
    return true;
  }

  const DesktopEntry& mEntry;
  const std::string& mPath;
  std::string_view mRest;
  std::vector<std::string> mArguments;
  std::string mArgument;
  bool mIsArgument = false;
};

// The suffixes of a key for a locale, the most exact first.
std::vector<std::string> suffixesFor(std::string_view locale) {
  const std::size_t at = locale.find('@');
  const std::string modifier(at == std::string_view::npos ? std::string_view() : locale.substr(at));
  const std::string_view place = locale.substr(0, std::min(at, locale.find('.')));
  const std::string country(place);
  const std::string language(place.substr(0, place.find('_')));
  std::vector<std::string> suffixes;
  for (const std::string& one : {country + modifier, country, language + modifier, language}) {
    suffixes.push_back("[" + one + "]");
  }
  return suffixes;
}

}  // namespace

std::optional<DesktopEntry> DesktopEntry::read(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  DesktopEntry entry;
  bool isInGroup = false;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[') {
      isInGroup = line == "[Desktop Entry]";
      continue;
    }
    const std::size_t separator = line.find('=');
    if (!isInGroup || separator == std::string_view::npos) continue;
    entry.mValues.emplace(trimmed(line.substr(0, separator)), trimmed(line.substr(separator + 1)));
  }
  return entry;
}

std::string DesktopEntry::text(std::string_view key) const {
  const auto found = mValues.find(key);
  return found == mValues.end() ? std::string() : unescaped(found->second);
}

std::string DesktopEntry::localizedText(std::string_view key, std::string_view locale) const {
  for (const std::string& suffix : suffixesFor(locale)) {
    const std::string localizedKey = std::string(key) + suffix;
    if (contains(localizedKey)) return text(localizedKey);
  }
  return text(key);
}

std::vector<std::string> DesktopEntry::list(std::string_view key) const {
  const auto found = mValues.find(key);
  if (found == mValues.end()) return {};
  std::vector<std::string> elements;
  std::string element;
  const std::string& raw = found->second;
  for (std::size_t index = 0; index < raw.size(); ++index) {
    if (raw[index] == '\\' && index + 1 < raw.size()) {
      const char escape = raw[++index];
      element += escape == ';' ? std::string(1, ';') : unescaped(std::string{'\\', escape});
    } else if (raw[index] == ';') {
      elements.push_back(std::exchange(element, {}));
    } else {
      element += raw[index];
    }
  }
  // The last separator may be missing.
  if (!element.empty()) elements.push_back(std::move(element));
  return elements;
}

std::optional<std::vector<std::string>> DesktopEntry::command(const std::string& path) const {
  auto arguments = ExecReader(*this, path).read(text("Exec"));
  if (!arguments || arguments->empty() || arguments->front().empty()) return std::nullopt;
  return arguments;
}

}  // namespace vorn
