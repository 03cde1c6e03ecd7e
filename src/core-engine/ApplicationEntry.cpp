#include "core-engine/ApplicationEntry.h"

#include <map>
#include <utility>

namespace vorn::engine {

namespace {

using Entry = std::map<std::string, std::string, std::less<>>;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The keys of the group "Desktop Entry". Those of a language have it in their name and stay apart.
Entry readGroup(std::string_view text) {
  Entry entry;
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
    entry.emplace(trimmed(line.substr(0, separator)), trimmed(line.substr(separator + 1)));
  }
  return entry;
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

std::string textAt(const Entry& entry, std::string_view key) {
  const auto found = entry.find(key);
  return found == entry.end() ? std::string() : unescaped(found->second);
}

class ExecReader {
 public:
  ExecReader(const Entry& entry, const std::string& path) : mEntry(entry), mPath(path) {}

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
        return append(textAt(mEntry, "Name"));
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
    const std::string icon = textAt(mEntry, "Icon");
    endArgument();
    if (icon.empty()) return true;
    mArguments.insert(mArguments.end(), {"--icon", icon});
    return true;
  }

  const Entry& mEntry;
  const std::string& mPath;
  std::string_view mRest;
  std::vector<std::string> mArguments;
  std::string mArgument;
  bool mIsArgument = false;
};

}  // namespace

std::optional<LaunchCommand> readDesktopEntry(std::string_view text, const std::string& path, std::string& error) {
  const auto fail = [&error](const char* reason) {
    error = reason;
    return std::nullopt;
  };
  if (text.find('\0') != std::string_view::npos) return fail("no desktop entry");
  const Entry entry = readGroup(text);
  if (textAt(entry, "Type") != "Application") return fail("no desktop entry of an application");
  if (textAt(entry, "Hidden") == "true") return fail("the desktop entry is hidden");
  const std::string exec = textAt(entry, "Exec");
  auto arguments = ExecReader(entry, path).read(exec);
  if (!arguments || arguments->empty() || arguments->front().empty()) {
    return fail("the desktop entry has no usable Exec");
  }
  return LaunchCommand{std::move(*arguments), textAt(entry, "Path"), textAt(entry, "Terminal") == "true"};
}

std::optional<std::string> bundleExecutable(const PropertyList& information, std::string& error) {
  std::string name = information["CFBundleExecutable"].toString();
  if (name.empty() || name == "." || name == ".." ||
      name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
    error = "the application bundle names no program";
    return std::nullopt;
  }
  return name;
}

}  // namespace vorn::engine
