#include "Script.h"

#include <charconv>

#include "model/PropertyListCodec.h"

namespace vorn::test {

namespace {

// Words are separated by blanks; "..." holds one word with blanks, and \ takes the next character as it is.
std::vector<std::string> wordsOf(std::string_view line) {
  std::vector<std::string> words;
  bool isInWord = false;
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    char character = line[i];
    if (character == ' ' && !isQuoted) {
      isInWord = false;
      continue;
    }
    if (!isInWord) words.emplace_back();
    isInWord = true;
    if (character == '"') {
      isQuoted = !isQuoted;
      continue;
    }
    if (character == '\\' && i + 1 < line.size()) character = line[++i];
    words.back() += character;
  }
  return words;
}

template <typename Number>
std::optional<Number> numberOf(std::string_view text, int base = 10) {
  Number number{};
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<Bytes> bytesOfHex(std::string_view text) {
  Bytes bytes;
  if (text.size() % 2 != 0) return std::nullopt;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    const auto byte = numberOf<std::uint8_t>(text.substr(i, 2), 16);
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

// The words of one action, read from the front.
class Words {
 public:
  explicit Words(std::vector<std::string> words) : mWords(std::move(words)) {}

  bool isAtEnd() const { return mNext == mWords.size(); }
  std::string take() { return isAtEnd() ? std::string() : mWords[mNext++]; }
  // Up to the next ";".
  Words takeAction() {
    std::vector<std::string> action;
    while (!isAtEnd()) {
      std::string word = take();
      if (word == ";") break;
      action.push_back(std::move(word));
    }
    return Words(std::move(action));
  }

 private:
  std::vector<std::string> mWords;
  std::size_t mNext = 0;
};

bool readReply(Words& words, Action& action, std::string* error) {
  const std::optional<PropertyList> body = readPropertyListFile(words.take(), error);
  if (!body) return false;
  const std::optional<Bytes> data = encodeBinaryPropertyList(*body, error);
  if (!data) return false;
  action.kind = Action::Kind::Data;
  action.data = *data;
  return true;
}

bool readPost(Words& words, Action& action, std::string* error) {
  action.kind = Action::Kind::Post;
  action.name = words.take();
  action.object = words.take();
  if (words.isAtEnd()) return true;
  const std::optional<PropertyList> userInfo = readPropertyListFile(words.take(), error);
  if (!userInfo) return false;
  action.userInfo = *userInfo;
  return true;
}

bool readVerb(Words& words, Action& action, std::string* error) {
  std::string verb = words.take();
  if (verb == "after") {
    const auto delay = numberOf<unsigned>(words.take());
    if (!delay) return false;
    action.delay = std::chrono::milliseconds(*delay);
    verb = words.take();
  }
  if (verb == "reply") return readReply(words, action, error);
  if (verb == "post") return readPost(words, action, error);
  if (verb == "data") {
    const auto data = bytesOfHex(words.take());
    action.kind = Action::Kind::Data;
    if (data) action.data = *data;
    return data.has_value();
  }
  if (verb == "empty") {
    action.kind = Action::Kind::Data;
    return true;
  }
  if (verb == "exit") {
    const auto status = words.isAtEnd() ? 0 : numberOf<int>(words.take());
    action.kind = Action::Kind::Exit;
    action.status = status.value_or(0);
    return status.has_value();
  }
  if (verb == "freeze") action.kind = Action::Kind::Freeze;
  return verb == "freeze" || verb == "silent";
}

}  // namespace

std::optional<Command> parseCommand(std::string_view line, std::string* error) {
  Command command;
  Words words(wordsOf(line));
  if (line.starts_with("on ")) {
    command.kind = Command::Kind::OnRequest;
    words.take();
    const std::string id = words.take();
    if (id != "*" && !(command.messageID = numberOf<std::int32_t>(id))) {
      *error = "no message ID: " + id;
      return std::nullopt;
    }
  } else if (line == "quit") {
    command.kind = Command::Kind::Quit;
    return command;
  }
  do {
    Words one = words.takeAction();
    Action action;
    error->clear();
    if (!readVerb(one, action, error) || !one.isAtEnd()) {
      if (error->empty()) *error = "no such command";
      return std::nullopt;
    }
    command.actions.push_back(std::move(action));
  } while (!words.isAtEnd());
  return command;
}

std::string hexOf(BytesView bytes) {
  static constexpr std::string_view digits = "0123456789abcdef";
  if (bytes.empty()) return "-";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const std::uint8_t byte : bytes) {
    text += digits[byte >> 4U];
    text += digits[byte & 15U];
  }
  return text;
}

}  // namespace vorn::test
